#pragma once
#include "apoyo/forma_de_base.h"
#include "data/access/mdb/base_nueva.h"
#include "data/access/proveedor_access.h"
#include "data/errores.h"
#include "data/valores.h"
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <initializer_list>

/// Shown by GoogleTest when a comparison fails.
inline void PrintTo(const QString& texto, std::ostream* salida)
{
    *salida << '"' << texto.toStdString() << '"';
}

/// A database of its own for each test, in a folder that goes away with it.
class BaseDePrueba {
  public:
    BaseDePrueba()
    {
        using tolmo::data::access::Base;
        if (EnFicherosDeAccess())
            tolmo::data::access::mdb::CreaBase(Ruta());
        base_ = Conexion(Base::Modo::Nueva);
    }

    QDateTime ahora{QDate(2024, 3, 15), QTime(9, 5, 7)};

    QString Ruta() const { return FicheroDeBase(carpeta_.filePath("bd")); }
    QString Carpeta() const { return carpeta_.path(); }
    tolmo::data::access::ProveedorAccess& Proveedor() { return *base_; }
    /// The same database, as another process has it open.
    std::unique_ptr<tolmo::data::access::ProveedorAccess> Otro() const
    {
        return Conexion(tolmo::data::access::Base::Modo::Existente);
    }

    long long Haz(const QString& sql) { return base_->Ejecuta(sql); }
    void Haz(std::initializer_list<const char*> sentencias)
    {
        for (const char* sql : sentencias)
            base_->Ejecuta(QString::fromUtf8(sql));
    }
    tolmo::data::Filas Filas(const QString& sql, bool actualizable = false)
    {
        return base_->Consulta(sql, actualizable);
    }

    /// All rows, the values of a row parted by "|" and the rows by blanks; a Null as "NULL".
    QString Tabla(const QString& sql)
    {
        const auto filas = base_->Consulta(sql, false);
        QStringList lineas;
        const std::size_t columnas = filas.campos.size();
        for (std::size_t f = 0; columnas > 0 && f < filas.valores.size(); f += columnas) {
            QStringList linea;
            for (std::size_t c = 0; c < columnas; ++c)
                linea << Texto(filas.valores[f + c]);
            lineas << linea.join('|');
        }
        return lineas.join(' ');
    }

    QStringList Nombres(const QString& sql)
    {
        QStringList nombres;
        for (const auto& campo : base_->Consulta(sql, false).campos)
            nombres << campo.nombre;
        return nombres;
    }

    /// The first value of the first row.
    tolmo::data::Valor Uno(const QString& sql)
    {
        const auto filas = base_->Consulta(sql, false);
        return filas.valores.empty() ? tolmo::data::Valor() : filas.valores[0];
    }

    static QString Texto(const tolmo::data::Valor& valor)
    {
        return tolmo::data::EsNulo(valor) ? QStringLiteral("NULL") : tolmo::data::Texto(valor);
    }

    /// What the engine says to a statement that it refuses; empty when it doesn't.
    QString Fallo(const QString& sql)
    {
        try {
            base_->Consulta(sql, false);
        } catch (const tolmo::data::ErrorSql& error) {
            return error.Descripcion();
        }
        return {};
    }

  private:
    std::unique_ptr<tolmo::data::access::ProveedorAccess>
    Conexion(tolmo::data::access::Base::Modo modo) const
    {
        using namespace tolmo::data::access;
        const Ahora reloj = [this] { return ahora; };
        if (!EnFicherosDeAccess())
            return std::make_unique<ProveedorAccess>(Ruta(), modo, reloj);
        return std::make_unique<ProveedorAccess>(std::make_unique<FicheroAccess>(Ruta()), reloj);
    }

    QTemporaryDir carpeta_;
    std::unique_ptr<tolmo::data::access::ProveedorAccess> base_;
};
