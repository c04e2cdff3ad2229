#pragma once
#include "apoyo/base_de_prueba.h"
#include "apoyo/programa_de_prueba.h"
#include <QStringList>

/// The process over a real management database, empty at first, whose statements are kept.
struct ProgramaConBase : ProgramaDePrueba {
    QStringList sentencias{}; ///< queries and statements, in the order in which they came
    QStringList cambiables{}; ///< those that were opened to be changed
    int escrituras = 0;       ///< rows changed, added or deleted through a record set

    ProgramaConBase()
    {
        programa.DialectoActivo = tolmo::data::Dialecto::Access;
        CreaBase(Base());
        programa.ConexionLocal =
            tolmo::data::Conexion([this](const QString&, const QString&, const QString&) {
                return std::make_unique<Espia>(*this);
            });
        programa.ConexionLocal.Conecta(QStringLiteral("base"));
    }

    QString Base() const { return carpeta.Ruta(QStringLiteral("gestion")); }

    /// Runs statements on a connection of their own, as another program would.
    void Ejecuta(std::initializer_list<const char*> otras)
    {
        const auto base = AbreBase(Base());
        for (const char* sql : otras)
            base->Ejecuta(QString::fromUtf8(sql));
    }

    /// All rows of a query, the values of a row parted by "|" and the rows by blanks; a Null as
    /// "NULL".
    QString Tabla(const QString& sql)
    {
        const auto filas = AbreBase(Base())->Consulta(sql, false);
        const std::size_t columnas = filas.campos.size();
        QStringList lineas;
        for (std::size_t f = 0; columnas > 0 && f < filas.valores.size(); f += columnas) {
            QStringList linea;
            for (std::size_t c = 0; c < columnas; ++c) {
                const auto& valor = filas.valores[f + c];
                linea << (tolmo::data::EsNulo(valor) ? QStringLiteral("NULL")
                                                     : tolmo::data::Texto(valor));
            }
            lineas << linea.join('|');
        }
        return lineas.join(' ');
    }

  private:
    class Espia : public tolmo::data::Proveedor {
      public:
        explicit Espia(ProgramaConBase& dueno) : dueno_(dueno), base_(AbreBase(dueno.Base())) {}
        tolmo::data::Filas Consulta(const QString& sql, bool actualizable) override
        {
            dueno_.sentencias << sql;
            if (actualizable)
                dueno_.cambiables << sql;
            return base_->Consulta(sql, actualizable);
        }
        long long Ejecuta(const QString& sql) override
        {
            dueno_.sentencias << sql;
            return base_->Ejecuta(sql);
        }
        void Actualiza(const tolmo::data::Filas& filas, std::size_t fila,
                       const tolmo::data::Cambios& cambios) override
        {
            ++dueno_.escrituras;
            base_->Actualiza(filas, fila, cambios);
        }
        tolmo::data::Valor Inserta(const tolmo::data::Filas& filas,
                                   const tolmo::data::Cambios& cambios) override
        {
            ++dueno_.escrituras;
            return base_->Inserta(filas, cambios);
        }
        void Borra(const tolmo::data::Filas& filas, std::size_t fila) override
        {
            ++dueno_.escrituras;
            base_->Borra(filas, fila);
        }
        std::vector<tolmo::data::TablaEsquema> Tablas() override { return base_->Tablas(); }

      private:
        ProgramaConBase& dueno_;
        std::unique_ptr<tolmo::data::Proveedor> base_;
    };
};
