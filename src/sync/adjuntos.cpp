#include "sync/adjuntos.h"
#include "data/rutas.h"
#include "sync/articulo.h"
#include "sync/corrida.h"
#include <QFileInfo>
#include <QHash>

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// The shop's column `mime` holds no media type but the local path: it is the key by which a
// document that was published before is found again.
// clang-format off
constexpr Plantilla SqlDocumentos(u"SELECT * FROM GESTION_DOC WHERE TIPODOC='AR' AND TIPO='W' AND CLAVE='{CodArticulo}'");
constexpr Plantilla SqlDesenlaza(u"DELETE FROM ps_product_attachment WHERE id_product={id}||");
constexpr Plantilla SqlMayorAdjunto(u"SELECT Max(ps_attachment.id_attachment) as madjunto FROM ps_attachment order by id_attachment");
constexpr Plantilla SqlAdjuntoPorRuta(u"SELECT id_attachment from ps_attachment where mime='{ruta}'");
constexpr Plantilla SqlBorraAdjunto(u"DELETE FROM ps_attachment WHERE id_attachment={adj}||");
constexpr Plantilla SqlBorraTextos(u"DELETE FROM ps_attachment_lang WHERE id_attachment={adj}||");
constexpr Plantilla SqlInsertaAdjunto(u"INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES ({adj},'{nombre}','{nombre}',{tamano},'{ruta}')||");
constexpr Plantilla SqlInsertaTexto(u"INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES ({adj},{lang},'{nombre}','{Descripcion}')||");
constexpr Plantilla SqlEnlaza(u"INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES ({adj},{id})||");
// clang-format on

constexpr int FicheroNoEncontrado = 53;

/// Length in bytes.
/// \throws data::ErrorEjecucion for a document that is gone
QString Tamano(const QString& ruta)
{
    if (!data::ExisteFichero(ruta))
        throw data::ErrorEjecucion(FicheroNoEncontrado,
                                   QStringLiteral("No se ha encontrado el archivo"));
    return QString::number(QFileInfo(data::RutaLocal(ruta)).size());
}

long long MayorAdjunto(Corrida& corrida)
{
    const auto fila = LeeTienda(corrida, SqlMayorAdjunto());
    return static_cast<long long>(data::ValorNumerico(fila["madjunto"]));
}

/// The id under which a path goes out: the one that it has in the shop, which is then emptied for
/// it, or the next free one.
QString IdDeAdjunto(Corrida& corrida, const QString& ruta, long long& madjunto)
{
    const auto publicado = LeeTienda(corrida, SqlAdjuntoPorRuta({{"ruta", ruta}}));
    if (publicado.Fin())
        return QString::number(++madjunto);
    const QString adj = Texto(publicado["id_attachment"]);
    corrida.lote.EscribeSentencia(SqlBorraAdjunto({{"adj", adj}}));
    corrida.lote.EscribeSentencia(SqlBorraTextos({{"adj", adj}}));
    return adj;
}

void InsertaAdjunto(Corrida& corrida, const AdjuntoPendiente& adjunto, const QString& adj)
{
    const QString nombre = data::NombreEnDisco(adjunto.ruta);
    corrida.lote.EscribeSentencia(SqlInsertaAdjunto({{"adj", adj},
                                                     {"nombre", nombre},
                                                     {"tamano", Tamano(adjunto.ruta)},
                                                     {"ruta", adjunto.ruta}}));
    for (const data::FichaIdioma& idioma : corrida.Parametros().Idiomas)
        corrida.lote.EscribeSentencia(SqlInsertaTexto({{"adj", adj},
                                                       {"lang", Texto(idioma.Idioma)},
                                                       {"nombre", nombre},
                                                       {"Descripcion", adjunto.descripcion}}));
}

void SubeAdjunto(Corrida& corrida, const QString& ruta)
{
    const QString nombre = data::NombreEnDisco(ruta);
    if (nombre.isEmpty())
        return;
    const QString carpeta = QStringLiteral("download/");
    corrida.RegistraLog(QStringLiteral("Subiendo adjunto ") + ruta);
    corrida.sitio.BorrarFicheroWeb(carpeta + nombre);
    if (corrida.sitio.SubirFicheroWeb(ruta, nombre, corrida.Parametros().Carpeta_tienda + carpeta))
        return;
    corrida.RegistraLog(QStringLiteral("ERROR SUBIENDO FICHERO ") + ruta);
    corrida.sitio.AbrirFTP();
}

/// The products of each path, in the order in which they were gathered.
QHash<QString, QStringList> ProductosPorRuta(const std::vector<AdjuntoPendiente>& pendientes)
{
    QHash<QString, QStringList> productos;
    for (const AdjuntoPendiente& adjunto : pendientes)
        productos[adjunto.ruta] << adjunto.idProducto;
    return productos;
}

} // namespace

void RecogeAdjuntos(Corrida& corrida, const Articulo& articulo)
{
    if (!corrida.opciones.adjuntos)
        return;
    auto documentos = LeeLocal(corrida, SqlDocumentos({{"CodArticulo", articulo.CodArticulo}}));
    for (; !documentos.Fin(); documentos.Siguiente())
        corrida.PendientesAdjuntos.push_back({.codArticulo = articulo.CodArticulo,
                                              .idProducto = articulo.id,
                                              .ruta = TextoO(documentos["Ruta"]),
                                              .descripcion = TextoO(documentos["Descripcion"])});
}

void BorraAdjuntos(Corrida& corrida, const Articulo& articulo)
{
    if (corrida.opciones.adjuntos)
        corrida.lote.EscribeSentencia(SqlDesenlaza({{"id", articulo.id}}));
}

void PublicaAdjuntos(Corrida& corrida)
{
    ReconectaTienda(corrida.programa);
    corrida.RegistraLog(QStringLiteral("SUBIENDO FICHEROS ADJUNTOS..."));
    corrida.sitio.AbrirFTP();
    long long madjunto = MayorAdjunto(corrida);
    const auto total = static_cast<int>(corrida.PendientesAdjuntos.size());
    int posicion = 0;
    // One document of several articles is one attachment; its first description is the one used.
    auto productos = ProductosPorRuta(corrida.PendientesAdjuntos);
    for (const AdjuntoPendiente& adjunto : corrida.PendientesAdjuntos) {
        corrida.progreso.Avanza(++posicion, total);
        corrida.progreso.CedeEventos();
        if (adjunto.ruta.isEmpty() || !productos.contains(adjunto.ruta))
            continue;
        // An upload may have lasted; the connection must not have idled away behind it.
        ReconectaTienda(corrida.programa);
        const QString adj = IdDeAdjunto(corrida, adjunto.ruta, madjunto);
        InsertaAdjunto(corrida, adjunto, adj);
        for (const QString& id : productos.take(adjunto.ruta))
            corrida.lote.EscribeSentencia(SqlEnlaza({{"adj", adj}, {"id", id}}));
        SubeAdjunto(corrida, adjunto.ruta);
    }
    VuelcaLote(corrida, QStringLiteral("EJECUTANDO REMOTAMENTE actualización de adjuntos"));
}

} // namespace tolmo::sync
