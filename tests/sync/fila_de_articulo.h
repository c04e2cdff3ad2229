#pragma once
#include "apoyo/proveedor_de_prueba.h"
#include "data/recordset.h"

/// The row of an article as the pass selects it, with every value telling and different; a test
/// changes the columns that it is about.
class FilaDeArticulo {
  public:
    FilaDeArticulo()
    {
        using tolmo::data::Nulo;
        Pon("CODARTICULO", "0101A");
        Pon("codalternativo", "ALT7");
        Pon("CODIVA", 2);
        Pon("CODGRUPO", 41);
        Pon("GRUPO2", 42);
        Pon("PVP1", 10.5);
        Pon("PVP2", 9.25);
        Pon("PVP3", 8);
        Pon("PVP4", 7.1);
        Pon("PVP5", 6.0005);
        Pon("FECHAMODIFICACION", QDateTime(QDate(2024, 1, 10), QTime(0, 0)));
        Pon("FAVORITO", false);
        Pon("FOTO", Nulo());
        Pon("PSCAMPODESCRIPCION0", "Olla d'acero");
        Pon("PSCAMPODESCORTA0", "corta 'x'\r\nfin");
        Pon("PSTAG0", Nulo());
        Pon("PSKEYWORDS0", "k'1");
        Pon("PsMetaTituloArt0", "t'1");
        Pon("PsMetaDescripcionArt0", "d'1");
        Pon("PSNOTAS0", "uno\r\n'dos'");
        Pon("FAMALT", Nulo());
        Pon("PS_PESO", 1.25);
        Pon("PS_CANTMINIMA", 4);
    }

    FilaDeArticulo& Pon(const char* columna, const tolmo::data::Valor& valor)
    {
        for (std::size_t i = 0; i < filas_.campos.size(); ++i)
            if (filas_.campos[i].nombre.compare(QLatin1String(columna), Qt::CaseInsensitive) == 0) {
                filas_.valores[i] = valor;
                return *this;
            }
        filas_.campos.push_back({.nombre = QString::fromLatin1(columna)});
        filas_.valores.push_back(valor);
        return *this;
    }

    const tolmo::data::Filas& Filas() const { return filas_; }
    tolmo::data::Recordset Fila() const { return tolmo::data::Recordset(filas_); }

  private:
    tolmo::data::Filas filas_{};
};
