#pragma once
#include "data/access/base.h"
#include "data/access/definiciones_mdb.h"
#include "data/access/esquema.h"
#include "data/access/fichero_access.h"
#include "data/access/funciones.h"
#include "data/access/indices_apoyo.h"
#include "data/access/lexico.h"
#include "data/access/traductor.h"
#include "data/proveedor.h"
#include <QCache>

namespace tolmo::data::access {

/// The engine behind an embedded database: it takes Access SQL, and keeps the translations and
/// prepared statements of the forms that it has seen lately.
class ProveedorAccess : public Proveedor {
  public:
    /// \throws ErrorSql when the file can't be opened
    ProveedorAccess(
        const QString& ruta, Base::Modo modo,
        Ahora ahora = [] { return QDateTime::currentDateTime(); });

    /// The same on an Access file. What the program makes for itself while it runs stays in a
    /// store of the connection and never reaches the file.
    explicit ProveedorAccess(
        std::unique_ptr<FicheroAccess> fichero,
        Ahora ahora = [] { return QDateTime::currentDateTime(); });

    Filas Consulta(const QString& sql, bool actualizable) override;
    long long Ejecuta(const QString& sql) override;
    void Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios) override;
    Valor Inserta(const Filas& filas, const Cambios& cambios) override;
    void Borra(const Filas& filas, std::size_t fila) override;
    std::vector<TablaEsquema> Tablas() override;

    /// What the engine is asked for a statement, for looking at its plans.
    Plan Traduccion(const QString& sql);
    const Base& Motor() const { return base_; }

  private:
    struct Lista {
        Plan plan{};
        std::vector<Preparada> preparadas{};
    };

    using EnFichero = std::optional<FicheroAccess::Sentencia>;
    using EnTurno = std::optional<FicheroAccess::Turno>;

    void NotaCambiosAjenos();
    void MiraElFichero(EnFichero& sentencia);
    bool EsDeFichero(const QString& tabla) const;
    bool HaceTablaDelFichero(const Plan& plan) const;
    bool PuedeApartar(const QString& sql) const;
    void ApartaReferencias();
    long long EjecutaUna(const QString& sql);
    void Olvida();
    Plan TraduceTexto(const QString& sql, const std::vector<Lexema>& lexemas, bool actualizable);
    Lista& Prepara(const QString& sql, std::vector<Lexema>& lexemas, bool actualizable,
                   Lista& suelta);
    Lista& PreparaEnTurno(const QString& sql, std::vector<Lexema>& lexemas, bool actualizable,
                          Lista& suelta, EnTurno& turno);
    const TablaVista& TablaEnTurno(const Filas& filas, EnTurno& turno);
    long long EjecutaPlan(const Plan& plan, const std::vector<Lexema>& lexemas);
    template <class Accion> auto ComoValor(Accion accion);

    Ahora ahora_;
    std::unique_ptr<FicheroAccess> fichero_{}; ///< behind the base, if any
    Base base_;
    Esquema esquema_;
    IndicesApoyo apoyos_;
    Preparada versionDatos_;
    Preparada versionEsquema_;
    qlonglong datosVistos_ = -1;
    qlonglong esquemaVisto_ = -1;
    QCache<QString, Lista> listas_;
    std::unique_ptr<DefinicionesMdb> definiciones_{}; ///< with a file only
};

} // namespace tolmo::data::access
