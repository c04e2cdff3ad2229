#pragma once
#include "data/errores.h"
#include "data/proveedor.h"
#include <QHash>
#include <QSet>
#include <QStringList>
#include <utility>
#include <vector>

/// A row as a test writes it down: columns and values.
using FilaDePrueba = std::vector<std::pair<QString, tolmo::data::Valor>>;

inline tolmo::data::Filas Resultado(const std::vector<FilaDePrueba>& filas)
{
    tolmo::data::Filas resultado;
    if (!filas.empty())
        for (const auto& [columna, valor] : filas.front())
            resultado.campos.push_back({.nombre = columna, .columna = columna});
    for (const FilaDePrueba& fila : filas)
        for (const auto& [columna, valor] : fila)
            resultado.valores.push_back(valor);
    return resultado;
}

/// Stands where the management database is opened: it keeps the connection texts and statements
/// that pass and answers what the test announced. Whatever else arrives is refused.
class GestionDePrueba {
  public:
    QStringList diario{}; ///< "ABRE text", "CIERRA text", "CONSULTA sql", "EJECUTA sql"
    QHash<QString, tolmo::data::Filas> consultas{};
    QSet<QString> ordenes{};
    QSet<QString> inalcanzables{}; ///< connection texts that nobody answers

    tolmo::data::FabricaProveedor Fabrica()
    {
        return [this](const QString& cadena, const QString& usuario,
                      const QString& clave) -> std::unique_ptr<tolmo::data::Proveedor> {
            if (!usuario.isEmpty() || !clave.isEmpty())
                throw std::logic_error("credentials stand in the connection text alone");
            diario << "ABRE " + cadena;
            if (inalcanzables.contains(cadena))
                Niega("no se encuentra " + cadena);
            return std::make_unique<Abierta>(*this, cadena);
        };
    }

    /// The entries of the diary that begin with this word.
    QStringList De(const QString& clase) const
    {
        QStringList elegidas;
        for (const QString& entrada : diario)
            if (entrada.startsWith(clase + ' '))
                elegidas << entrada.mid(clase.size() + 1);
        return elegidas;
    }

  private:
    [[noreturn]] static void Niega(const QString& motivo)
    {
        throw tolmo::data::ErrorSql(tolmo::data::numero_error::Sentencia, motivo, "prueba");
    }

    class Abierta : public tolmo::data::Proveedor {
      public:
        Abierta(GestionDePrueba& gestion, const QString& cadena)
            : gestion_(gestion), cadena_(cadena)
        {
        }
        ~Abierta() override { gestion_.diario << "CIERRA " + cadena_; }

        tolmo::data::Filas Consulta(const QString& sql, bool) override
        {
            gestion_.diario << "CONSULTA " + sql;
            if (!gestion_.consultas.contains(sql))
                Niega("nadie espera " + sql);
            return gestion_.consultas[sql];
        }
        long long Ejecuta(const QString& sql) override
        {
            gestion_.diario << "EJECUTA " + sql;
            if (!gestion_.ordenes.contains(sql))
                Niega("nadie espera " + sql);
            return 0;
        }
        void Actualiza(const tolmo::data::Filas&, std::size_t, const tolmo::data::Cambios&) override
        {
            Niega("no se esperan cambios");
        }
        tolmo::data::Valor Inserta(const tolmo::data::Filas&, const tolmo::data::Cambios&) override
        {
            Niega("no se esperan altas");
        }
        void Borra(const tolmo::data::Filas&, std::size_t) override
        {
            Niega("no se esperan bajas");
        }
        std::vector<tolmo::data::TablaEsquema> Tablas() override { return {}; }

      private:
        GestionDePrueba& gestion_;
        QString cadena_;
    };
};

/// The parameters of a company, all columns that are read, with this value for its configurator.
inline FilaDePrueba FilaDeParametros(bool modoConfigurador, const QString& servidor = "bd.prueba")
{
    FilaDePrueba fila{{"PS_MODOCONFIGURADOR", modoConfigurador}, {"Server_Bd", servidor}};
    for (const char* columna :
         {"User_Bd",           "Pass_Bd",        "Puerto_Bd",   "Nombre_Bd",     "User_Ftp",
          "Pass_Ftp",          "Puerto_Ftp",     "Server_Ftp",  "PS_PREFIJO",    "PS_INDICES1",
          "PS_INDICES2",       "Carpeta_tienda", "WWW",         "Ps_SufijoFoto", "Ps_pvpdef",
          "Ps_ProvReferencia", "PS_TABLAARTIC",  "PS_TABLAFAM", "CADACTIVOWEB",  "CAMPOFAMALT",
          "PS_PESO",           "PS_CANTMINIMA",  "PSAlmacenes", "PSGrupoMarcas", "PS_VERSION",
          "PS_IDIOMA"})
        fila.emplace_back(columna, QString());
    for (auto& [columna, valor] : fila)
        if (columna.startsWith("User_") || columna.startsWith("Pass_") || columna == "Nombre_Bd" ||
            columna == "Server_Ftp")
            valor = QString("x");
    return fila;
}

/// Announces what the load and the activation read of company 000001.
inline void EsperaParametros(GestionDePrueba& gestion, const std::vector<FilaDePrueba>& empresa)
{
    gestion.consultas["Select * from m_Empresa where codempresa='000001'"] = Resultado(empresa);
    gestion.consultas["SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA=1"] = {};
    gestion.consultas
        ["SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA<>1 ORDER BY IDIOMA"] = {};
}

inline const std::vector<FilaDePrueba> DosEmpresas{
    {{"CODEMPRESA", QString("000001")}, {"Descripcion", QString("Ferretería Norte")}},
    {{"CODEMPRESA", QString("000002")}, {"Descripcion", QString("Jardinería Sur")}}};

/// Announces the two companies and, for the first one, an empty set of parameters and its
/// temporary table under the clock of the tests.
inline void EsperaArranque(GestionDePrueba& gestion)
{
    gestion.consultas["select * from m_empresa"] = Resultado(DosEmpresas);
    gestion.consultas["Select * from m_empresa ORDER BY CODEMPRESA"] = Resultado(DosEmpresas);
    EsperaParametros(gestion, {FilaDeParametros(false)});
    gestion.ordenes << "CREATE TABLE WKOVTOLMO_ARTIC24031509050789 (CODART nvarchar(20))"
                    << "DROP TABLE WKOVTOLMO_ARTIC24031509050789";
}
