#pragma once
#include "data/errores.h"
#include "data/proveedor.h"
#include "data/valores.h"
#include <QStringList>
#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <optional>

/// A result laid out in a test:
///   HazFilas({"CODIGO", "NOMBRE"}, {{"001", "Uno"}, {"002", tolmo::data::Nulo()}})
/// The kind of a column is that of its first value that isn't Null. With `tabla` the result is one
/// that can be changed.
inline tolmo::data::Filas
HazFilas(std::initializer_list<const char*> columnas,
         std::initializer_list<std::initializer_list<tolmo::data::Valor>> filas,
         const QString& tabla = {})
{
    using namespace tolmo::data;
    Filas hechas;
    for (const char* columna : columnas)
        hechas.campos.push_back({.nombre = QString::fromUtf8(columna),
                                 .tabla = tabla,
                                 .columna = QString::fromUtf8(columna)});
    for (const auto& fila : filas) {
        if (fila.size() != columnas.size())
            throw std::logic_error("a row with another number of values than columns");
        hechas.valores.insert(hechas.valores.end(), fila.begin(), fila.end());
    }
    for (std::size_t i = 0; i < hechas.campos.size(); ++i)
        for (std::size_t j = i; j < hechas.valores.size(); j += hechas.campos.size()) {
            const Valor& valor = hechas.valores[j];
            if (EsNulo(valor))
                continue;
            const int clase = valor.typeId();
            hechas.campos[i].tipo = EsFecha(valor)               ? 135
                                    : clase == QMetaType::Bool   ? 11
                                    : clase == QMetaType::Double ? 5
                                    : EsNumero(valor)            ? 3
                                                                 : 202;
            break;
        }
    hechas.tabla = tabla;
    if (!tabla.isEmpty())
        for (std::size_t i = 0; i < filas.size(); ++i)
            hechas.claves.push_back(Valor(static_cast<int>(i) + 1));
    return hechas;
}

/// The result of a query that finds nothing.
inline const tolmo::data::Filas SinFilas{};

/// An engine of paper: it gives what the test announced, keeps what passed and refuses the rest.
/// A query or statement that nobody announced fails the test and raises ErrorSql, as does, at the
/// end, an announced one that never came. It plays no server: what servers do is tested on them.
///
///   ProveedorDePrueba tienda;
///   tienda.Espera("SELECT * FROM ps_tag", HazFilas({"id_tag"}, {{7}}));
///   tienda.EsperaOrden();
///   Conexion conexion(tienda.Fabrica());
class ProveedorDePrueba : public tolmo::data::Proveedor {
  public:
    struct Apertura {
        QString cadena{};
        QString usuario{};
        QString clave{};
        bool operator==(const Apertura&) const = default;
    };
    struct Cambio {
        QString tabla{};
        std::size_t fila = 0; ///< from 0; that of an added row means nothing
        tolmo::data::Cambios cambios{};
    };

    QStringList consultas{};                         ///< queries, in the order in which they came
    QStringList ejecutadas{};                        ///< statements, likewise
    QStringList todas{};                             ///< both
    std::vector<Apertura> aperturas{};               ///< connections that were opened
    std::vector<Cambio> actualizadas{};              ///< changed rows
    std::vector<Cambio> insertadas{};                ///< added rows
    std::vector<Cambio> borradas{};                  ///< deleted rows, without changes
    std::vector<tolmo::data::TablaEsquema> tablas{}; ///< what the schema lists
    std::optional<tolmo::data::ErrorSql> falloAlAbrir{}; ///< every opening fails with it

    ProveedorDePrueba() = default;
    ProveedorDePrueba(const ProveedorDePrueba&) = delete;
    ProveedorDePrueba& operator=(const ProveedorDePrueba&) = delete;

    ~ProveedorDePrueba() override
    {
        for (const Anuncio& anuncio : anuncios_)
            if (anuncio.exigido)
                ADD_FAILURE() << "announced and never asked for: "
                              << (anuncio.sql.isEmpty() ? "a statement" : qPrintable(anuncio.sql));
    }

    /// Announces a query of exactly this text, once. The same text announced again is another turn.
    void Espera(const QString& sql, const tolmo::data::Filas& filas)
    {
        anuncios_.push_back({.sql = sql, .filas = filas});
    }

    /// Announces a query that may come any number of times, or never.
    void Permite(const QString& sql, const tolmo::data::Filas& filas)
    {
        anuncios_.push_back({.sql = sql, .filas = filas, .exigido = false});
    }

    /// Announces one statement, of this text or (empty) of any.
    void EsperaOrden(const QString& sql = {}, long long filasAfectadas = 1)
    {
        anuncios_.push_back({.sql = sql, .orden = true, .afectadas = filasAfectadas});
    }

    /// Lets any number of statements pass, whatever their text.
    void PermiteOrdenes()
    {
        anuncios_.push_back({.orden = true, .afectadas = 1, .exigido = false});
    }

    /// Announces a query or statement that the engine refuses.
    void EsperaFallo(const QString& sql, const tolmo::data::ErrorSql& error)
    {
        anuncios_.push_back({.sql = sql, .cualquiera = true, .error = error});
    }

    /// Opens this very double, as often as it is asked.
    tolmo::data::FabricaProveedor Fabrica()
    {
        return [this](const QString& cadena, const QString& usuario, const QString& clave) {
            aperturas.push_back({cadena, usuario, clave});
            if (falloAlAbrir)
                throw *falloAlAbrir;
            return std::make_unique<Prestado>(*this);
        };
    }

    tolmo::data::Filas Consulta(const QString& sql, bool actualizable) override
    {
        consultas << sql;
        todas << sql;
        tolmo::data::Filas filas = Atiende(sql, false).filas;
        if (!actualizable)
            filas.tabla.clear();
        return filas;
    }

    long long Ejecuta(const QString& sql) override
    {
        ejecutadas << sql;
        todas << sql;
        return Atiende(sql, true).afectadas;
    }

    void Actualiza(const tolmo::data::Filas& filas, std::size_t fila,
                   const tolmo::data::Cambios& cambios) override
    {
        actualizadas.push_back({filas.tabla, fila, cambios});
    }

    tolmo::data::Valor Inserta(const tolmo::data::Filas& filas,
                               const tolmo::data::Cambios& cambios) override
    {
        insertadas.push_back({filas.tabla, filas.claves.size(), cambios});
        return static_cast<int>(filas.claves.size()) + 1;
    }

    void Borra(const tolmo::data::Filas& filas, std::size_t fila) override
    {
        borradas.push_back({filas.tabla, fila, {}});
    }

    std::vector<tolmo::data::TablaEsquema> Tablas() override { return tablas; }

  private:
    struct Anuncio {
        QString sql{};
        tolmo::data::Filas filas{};
        bool orden = false;
        long long afectadas = 0;
        bool exigido = true;
        bool cualquiera = false; ///< query or statement alike
        std::optional<tolmo::data::ErrorSql> error{};
    };

    /// What a connection owns: it hands everything on to the test's double.
    class Prestado : public tolmo::data::Proveedor {
      public:
        explicit Prestado(ProveedorDePrueba& dueno) : dueno_(dueno) {}
        tolmo::data::Filas Consulta(const QString& sql, bool actualizable) override
        {
            return dueno_.Consulta(sql, actualizable);
        }
        long long Ejecuta(const QString& sql) override { return dueno_.Ejecuta(sql); }
        void Actualiza(const tolmo::data::Filas& filas, std::size_t fila,
                       const tolmo::data::Cambios& cambios) override
        {
            dueno_.Actualiza(filas, fila, cambios);
        }
        tolmo::data::Valor Inserta(const tolmo::data::Filas& filas,
                                   const tolmo::data::Cambios& cambios) override
        {
            return dueno_.Inserta(filas, cambios);
        }
        void Borra(const tolmo::data::Filas& filas, std::size_t fila) override
        {
            dueno_.Borra(filas, fila);
        }
        std::vector<tolmo::data::TablaEsquema> Tablas() override { return dueno_.Tablas(); }

      private:
        ProveedorDePrueba& dueno_;
    };

    /// The first announcement that fits; one with the text itself goes before one for any.
    std::deque<Anuncio>::iterator Busca(const QString& sql, bool orden)
    {
        const auto fin = anuncios_.end();
        const auto cabe = [&](const Anuncio& a) { return a.cualquiera || a.orden == orden; };
        auto hallado = std::find_if(anuncios_.begin(), fin,
                                    [&](const Anuncio& a) { return cabe(a) && a.sql == sql; });
        if (hallado == fin && orden)
            hallado = std::find_if(anuncios_.begin(), fin,
                                   [&](const Anuncio& a) { return a.orden && a.sql.isEmpty(); });
        return hallado;
    }

    Anuncio Atiende(const QString& sql, bool orden)
    {
        const auto hallado = Busca(sql, orden);
        if (hallado == anuncios_.end()) {
            ADD_FAILURE() << "nobody announced: " << qPrintable(sql);
            throw tolmo::data::ErrorSql(tolmo::data::numero_error::Sentencia,
                                        QStringLiteral("no anunciada: ") + sql,
                                        QStringLiteral("ProveedorDePrueba"));
        }
        Anuncio anuncio = *hallado;
        if (anuncio.exigido)
            anuncios_.erase(hallado);
        if (anuncio.error)
            throw tolmo::data::ErrorSql(*anuncio.error);
        return anuncio;
    }

    std::deque<Anuncio> anuncios_{};
};
