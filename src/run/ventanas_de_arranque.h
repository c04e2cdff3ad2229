#pragma once
#include "run/cadenas.h"
#include <QStringList>
#include <optional>

namespace tolmo::run {

/// What the dialog of the SQL Server came back with.
struct AccesoSql {
    QString servidor{};
    bool integrada = true;       ///< integrated security
    Credenciales credenciales{}; ///< empty under integrated security
};

/// What the company dialog came back with.
struct EmpresaElegida {
    QString texto{};            ///< as it stood in the box; no check is made on it
    bool configuracion = false; ///< the parameter editor is to open first
};

/// The windows that the load of the main window opens, all modal. An error in one of them comes
/// out of the call as its exception.
class VentanasDeArranque {
  public:
    virtual ~VentanasDeArranque() = default;

    /// Nothing when the operator leaves it without accepting.
    virtual std::optional<AccesoSql> PideServidorSql(const QString& servidor) = 0;
    virtual std::optional<EmpresaElegida> EligeEmpresa(const QStringList& empresas) = 0;

    /// Whether the main window offers the feed.
    virtual void MuestraCmdSoloStock(bool visible) = 0;
    /// Whether the main window lets attributes and combinations be edited.
    virtual void HabilitaCmdAtributosValores(bool habilitado) = 0;

    /// The parameter editor on a company, by its code and description.
    virtual void AbreConfiguracion(const QString& empresa, const QString& descripcion) = 0;
    /// FrmSincronizar with this Tag.
    virtual void MuestraSincronizar(const QString& tag) = 0;
    /// FrmGenerarXMLsolostock with this Tag. \returns false when its job stayed undone and nobody
    /// can try again
    virtual bool MuestraSolostocks(const QString& tag) = 0;
};

} // namespace tolmo::run
