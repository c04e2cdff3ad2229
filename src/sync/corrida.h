#pragma once
#include "batch/lote.h"
#include "batch/registro.h"
#include "data/consultas.h"
#include "data/plantilla.h"
#include "site/sitio.h"
#include "sync/opciones.h"
#include <vector>

namespace tolmo::sync {

/// A picture that waits for its upload.
struct FotoPendiente {
    QString rutaLocal{};
    QString nombreRemoto{}; ///< "{id}.jpg"
};

/// A document of an article that waits for its upload.
struct AdjuntoPendiente {
    QString codArticulo{};
    QString idProducto{};
    QString ruta{};
    QString descripcion{};
};

/// The last ids of the shop's tables, read once after the families and then only raised here: the
/// ids are never reserved at the shop, so nothing else may write these tables during a run.
struct Contadores {
    long long martic = 0;  ///< id_product
    long long mimage = 0;  ///< id_image
    long long mprecio = 0; ///< id_specific_price
};

/// One pass: what it was started with, what it writes to and what it has gathered so far.
struct Corrida {
    data::Programa& programa;
    const Opciones& opciones;
    batch::Lote& lote;
    batch::Registro& registro;
    site::Sitio& sitio;
    data::Progreso& progreso;

    QString VersionTienda{}; ///< the shop's ps_version_db
    Contadores contadores{};
    // Element 0 of both stays empty and the pictures count from 1: groups of 15 close on the index.
    std::vector<FotoPendiente> PendientesFam{1};
    std::vector<FotoPendiente> PendientesArt{1};
    std::vector<AdjuntoPendiente> PendientesAdjuntos{};

    const data::Parametros& Parametros() const { return programa.parametros; }
    void RegistraLog(const QString& texto) { registro.RegistraLog(texto); }
};

/// Hands the batch to the server under `titulo`, and starts a new one.
void VuelcaLote(Corrida& corrida, const QString& titulo);

/// Opens a read-only row set on the management database: "ACCESS" holds for the statement, and
/// "MYSQL" from then on, so that no sentence or date is written in the other dialect.
data::Recordset LeeLocal(Corrida& corrida, QString sql);

/// Opens a read-only row set on the shop.
data::Recordset LeeTienda(Corrida& corrida, QString sql);

/// Closes the connection to the shop and opens it anew, as it may have idled away meanwhile.
void ReconectaTienda(data::Programa& programa);

/// Null as empty, as text.
QString TextoO(const data::Valor& valor);

/// Every "'" as "´": the one escape that the system has.
QString SinComillas(QString texto);

/// Every carriage return with line feed as "<br>".
QString ConSaltosHtml(QString texto);

/// "S,N" as "S','N": the inside of an IN list.
QString ListaSql(QString lista);

/// Today as a literal of the active dialect.
QString HoySql(const data::Programa& programa);

} // namespace tolmo::sync
