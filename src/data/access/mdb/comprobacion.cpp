#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/comprobacion_indice.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/pagina_datos.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr qsizetype MasFaltas = 20;

/// Which table each page belongs to, so that none belongs to two.
class Propietarios {
  public:
    explicit Propietarios(quint32 cuantas) : tomadas_(cuantas, false) {}

    void Toma(const std::vector<quint32>& paginas, QStringList& faltas)
    {
        for (const quint32 pagina : paginas) {
            if (tomadas_[pagina])
                AnadeFalta(faltas,
                           QStringLiteral("la página %1 está tomada dos veces").arg(pagina));
            tomadas_[pagina] = true;
        }
    }

    bool Tomada(quint32 pagina) const { return tomadas_[pagina]; }

  private:
    std::vector<bool> tomadas_;
};

/// Runs a part of the check; what it throws is a fault, and the check goes on.
template <typename Parte> void Intenta(QStringList& faltas, Parte parte)
{
    try {
        parte();
    } catch (const ErrorMdb& error) {
        AnadeFalta(faltas, error.Descripcion());
    }
}

void CompruebaHueco(Paginas& paginas, quint32 numero, QStringList& faltas)
{
    if (paginas.Lee(numero).bytes.U8(0) == tipo_pagina::SinEscribir)
        return;
    const PaginaDatos pagina = LeePaginaDatos(paginas, numero);
    if (pagina.Libres() != pagina.Hueco())
        AnadeFalta(
            faltas,
            QStringLiteral("página %1: el espacio libre que dice no es el que tiene").arg(numero));
}

void CompruebaPaginas(const Tabla& tabla, Propietarios& propietarios, QStringList& faltas)
{
    const Definicion& definicion = tabla.definicion();
    propietarios.Toma(definicion.paginas, faltas);
    const auto deDatos = [&](Puntero mapa) {
        Intenta(faltas, [&] {
            const std::vector<quint32> paginas = PaginasEnUso(tabla.paginas(), mapa);
            propietarios.Toma(paginas, faltas);
            for (const quint32 pagina : paginas)
                Intenta(faltas, [&] { CompruebaHueco(tabla.paginas(), pagina, faltas); });
        });
    };
    deDatos(definicion.paginasPropias);
    for (const Columna& columna : definicion.columnas)
        deDatos(columna.paginasLargas);
    for (const IndiceReal& indice : definicion.indicesReales)
        Intenta(faltas,
                [&] { propietarios.Toma(PaginasEnUso(tabla.paginas(), indice.mapa), faltas); });
}

/// Counts the rows that an index should have an entry for.
class Esperadas {
  public:
    explicit Esperadas(const Definicion& definicion)
        : definicion_(definicion), cuentas_(definicion.indicesReales.size(), 0)
    {
    }

    void Anade(const std::vector<bool>& conValor)
    {
        for (std::size_t i = 0; i < cuentas_.size(); ++i) {
            const IndiceReal& indice = definicion_.indicesReales[i];
            const bool alguno = std::any_of(
                indice.columnas.begin(), indice.columnas.end(), [&](const ColumnaIndice& en) {
                    return en.numero < conValor.size() && conValor[en.numero];
                });
            cuentas_[i] += alguno || !indice.SinNulos() ? 1 : 0;
        }
    }

    quint64 operator[](std::size_t indice) const { return cuentas_[indice]; }

  private:
    const Definicion& definicion_;
    std::vector<quint64> cuentas_;
};

void CompruebaFila(const Definicion& definicion, const Fila& fila, Esperadas& esperadas,
                   QStringList& faltas)
{
    std::vector<bool> conValor(definicion.maxColumnas, false);
    for (const Columna& columna : definicion.columnas)
        Intenta(faltas, [&] { conValor[columna.numero] = !EsNulo(fila.Lee(columna)); });
    esperadas.Anade(conValor);
}

void CompruebaFilas(const Tabla& tabla, EstadoTabla& estado, Esperadas& esperadas)
{
    Cursor cursor(tabla);
    for (bool quedan = true; quedan;) {
        // After a fault the cursor stands behind it, so this ends.
        Intenta(estado.faltas, [&] {
            quedan = cursor.Siguiente();
            if (!quedan)
                return;
            ++estado.filas;
            CompruebaFila(tabla.definicion(), cursor.fila(), esperadas, estado.faltas);
        });
    }
}

EstadoTabla CompruebaTabla(const Base& base, const Objeto& objeto, Propietarios& propietarios)
{
    EstadoTabla estado{.nombre = objeto.nombre};
    Intenta(estado.faltas, [&] {
        const Tabla tabla = base.AbreTabla(objeto);
        if (propietarios.Tomada(tabla.definicion().pagina))
            Danado(QStringLiteral("Su definición es la de otra tabla"));
        estado.filasDeclaradas = tabla.definicion().filas;
        CompruebaPaginas(tabla, propietarios, estado.faltas);
        Esperadas esperadas(tabla.definicion());
        CompruebaFilas(tabla, estado, esperadas);
        for (std::size_t i = 0; i < tabla.definicion().indicesReales.size(); ++i)
            estado.indices.push_back(CompruebaIndice(tabla, i, esperadas[i]));
    });
    return estado;
}

void CompruebaLibres(Paginas& paginas, const Propietarios& propietarios, QStringList& faltas)
{
    Intenta(faltas, [&] {
        for (const quint32 pagina : LeeMapa(paginas, MapaGlobal).paginas) {
            if (propietarios.Tomada(pagina))
                AnadeFalta(
                    faltas,
                    QStringLiteral("la página %1 está en uso y consta como libre").arg(pagina));
        }
    });
}

} // namespace

bool Informe::Sano() const
{
    return faltas.isEmpty() && std::all_of(tablas.begin(), tablas.end(), [](const auto& tabla) {
               return tabla.faltas.isEmpty() &&
                      std::all_of(tabla.indices.begin(), tabla.indices.end(),
                                  [](const auto& indice) { return indice.faltas.isEmpty(); });
           });
}

Informe Comprueba(const Base& base)
{
    Informe informe;
    Propietarios propietarios(base.paginas().Cuantas());
    for (const Objeto& objeto : base.catalogo().Objetos()) {
        if (objeto.clase == clase_objeto::TablaLocal)
            informe.tablas.push_back(CompruebaTabla(base, objeto, propietarios));
    }
    CompruebaLibres(base.paginas(), propietarios, informe.faltas);
    return informe;
}

void AnadeFalta(QStringList& faltas, const QString& falta)
{
    if (faltas.size() < MasFaltas)
        faltas << falta;
}

} // namespace tolmo::data::access::mdb
