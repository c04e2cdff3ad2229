#include "sync/articulos.h"
#include "data/rutas.h"
#include "sync/adjuntos.h"
#include "sync/articulo.h"
#include "sync/categorias.h"
#include "sync/combinaciones.h"
#include "sync/corrida.h"
#include "sync/etiquetas.h"
#include "sync/existencias.h"
#include "sync/imagenes.h"
#include "sync/precios.h"
#include "sync/producto.h"
#include <optional>

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlBorraNotas(u"DROP TABLE WKOVTOLMO_ARTIC{sufijo}");
constexpr Plantilla SqlCreaNotas(u"CREATE TABLE WKOVTOLMO_ARTIC{sufijo} (CODART nvarchar(20),{columnas})");
constexpr Plantilla SqlLlenaNotas(u"INSERT INTO WKOVTOLMO_ARTIC{sufijo} (CODART,{nombres}) SELECT CODARTICULO,{campos} FROM {PS_TABLAARTIC}");
constexpr Plantilla SqlMayorProducto(u"SELECT Max(ps_product.id_product) as martic FROM ps_product order by id_product");
constexpr Plantilla SqlMayorImagen(u"SELECT Max(ps_image.id_image) as mimage FROM ps_image");
constexpr Plantilla SqlMayorPrecio(u"SELECT MAX(id_specific_price) AS mprecio FROM ps_specific_price");

constexpr Plantilla AliasIdioma(u"{CampoDescripcion} AS PSCAMPODESCRIPCION{i},{campodescorta} AS PSCAMPODESCORTA{i},{Tag} AS PSTAG{i},{Keywords} AS PSKEYWORDS{i},{METATITULO_ART} AS PsMetaTituloArt{i},{METADESCRIPCION_ART} AS PsMetaDescripcionArt{i},");
constexpr Plantilla SqlArticulos(u"SELECT {alias}{CAMPOFAMALT} AS FAMALT,{PS_PESO} AS PS_PESO,{PS_CANTMINIMA} AS PS_CANTMINIMA,* FROM {PS_TABLAARTIC} LEFT JOIN WKOVTOLMO_ARTIC{sufijo} ON {PS_TABLAARTIC}.CODARTICULO=WKOVTOLMO_ARTIC{sufijo}.CODART WHERE (ACTIVOWEB IN ('{lista}') OR EMPRESASWEB LIKE '%,{empresa},%') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL){rango} ORDER BY CODARTICULO");
constexpr Plantilla RangoDeCodigos(u" AND CODARTICULO>='{Desde}' AND CODARTICULO<='{Hasta}'");
// No code fulfils it: a run of families walks the same pass and finds nothing.
constexpr Plantilla RangoVacio(u" AND CODARTICULO>'0' AND CODARTICULO<'0'");
constexpr Plantilla SqlProductos(u"SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='{CodArticulo}'");
constexpr Plantilla SqlReferencia(u"SELECT TOP 1 * FROM M_REFART WHERE CODARTICULO='{CodArticulo}'");
constexpr Plantilla TituloLote(u"EJECUTANDO REMOTAMENTE Actualización de artículos (...{posicion})");
// clang-format on

constexpr int ArticulosPorLote = 25;

/// One step of writing an article; `productos` are the shop's rows of it, one for each picture.
using Paso = void (*)(Corrida&, const Articulo&, data::Recordset& productos);

template <void (*Escribe)(Corrida&, const Articulo&)>
void SinProductos(Corrida& corrida, const Articulo& articulo, data::Recordset&)
{
    Escribe(corrida, articulo);
}

constexpr Paso PasosDeCambio[] = {
    SinProductos<CambiaProducto>,
    SinProductos<EscribeEtiquetas>,
    QuitaImagenes,
    SinProductos<AnadeImagenes>,
    SinProductos<BorraCategorias>,
    SinProductos<EnlazaCategoria>,
    SinProductos<BorraPrecios>,
    SinProductos<EscribePrecios>,
    SinProductos<BorraCombinaciones>,
    SinProductos<EscribeCombinaciones>,
    SinProductos<EscribeExistencias>,
    SinProductos<EnlazaInicio>,
    SinProductos<EnlazaFamiliasAlternativas>,
    SinProductos<RecogeAdjuntos>,
    SinProductos<BorraAdjuntos>,
};

/// A new product has nothing to be deleted, so the steps of the change that delete are missing.
constexpr Paso PasosDeAlta[] = {
    SinProductos<InsertaProducto>,
    SinProductos<EscribeEtiquetas>,
    SinProductos<AnadeImagenes>,
    SinProductos<EnlazaCategoria>,
    SinProductos<EscribePrecios>,
    SinProductos<EscribeCombinaciones>,
    SinProductos<EscribeExistencias>,
    SinProductos<EnlazaInicio>,
    SinProductos<EnlazaFamiliasAlternativas>,
    SinProductos<RecogeAdjuntos>,
};

QString AliasDeIdiomas(const data::Parametros& parametros)
{
    QString alias;
    for (std::size_t i = 0; i < parametros.Idiomas.size(); ++i) {
        const data::FichaIdioma& ficha = parametros.Idiomas[i];
        alias += AliasIdioma({{"CampoDescripcion", ficha.CampoDescripcion},
                              {"campodescorta", ficha.campodescorta},
                              {"Tag", ficha.Tag},
                              {"Keywords", ficha.Keywords},
                              {"METATITULO_ART", ficha.METATITULO_ART},
                              {"METADESCRIPCION_ART", ficha.METADESCRIPCION_ART},
                              {"i", QString::number(i)}});
    }
    return alias;
}

QString RangoDe(const Opciones& opciones)
{
    if (opciones.proceso == Proceso::Articulos)
        return RangoDeCodigos({{"Desde", opciones.desde}, {"Hasta", opciones.hasta}});
    return opciones.proceso == Proceso::Familias ? RangoVacio() : QString();
}

long long MayorId(Corrida& corrida, const Plantilla& sql, const char* columna)
{
    const auto fila = LeeTienda(corrida, sql());
    return static_cast<long long>(data::ValorNumerico(fila[columna]));
}

QString Nombre(const QString& codigo, const QString& codalternativo)
{
    return codigo + QStringLiteral(" / ") + codalternativo;
}

void CambiaArticulo(Corrida& corrida, const data::Recordset& fila, data::Recordset& productos)
{
    corrida.RegistraLog(QStringLiteral("Actualizando articulo ") +
                        Nombre(Texto(fila["CodArticulo"]), Texto(fila["codalternativo"])));
    const Articulo articulo =
        PreparaArticulo(corrida, fila, Texto(productos["id_product"]), Camino::Cambio);
    for (const Paso paso : PasosDeCambio)
        paso(corrida, articulo, productos);
}

void InsertaArticulo(Corrida& corrida, const data::Recordset& fila, data::Recordset& productos)
{
    const QString codigo = Texto(fila["CodArticulo"]);
    const QString id = QString::number(++corrida.contadores.martic);
    // Neither result is used; both must be there to be looked at, the table and the column.
    LeeLocal(corrida, SqlReferencia({{"CodArticulo", codigo}}));
    (void)data::ExisteFichero(Texto(fila["Foto"]));
    corrida.RegistraLog(QStringLiteral("Añadiendo artículo ") +
                        Nombre(codigo, Texto(fila["codalternativo"])));
    const Articulo articulo = PreparaArticulo(corrida, fila, id, Camino::Alta);
    for (const Paso paso : PasosDeAlta)
        paso(corrida, articulo, productos);
}

void PasaArticulo(Corrida& corrida, const data::Recordset& fila)
{
    const Opciones& opciones = corrida.opciones;
    auto productos = LeeTienda(corrida, SqlDeProductos(Texto(fila["CodArticulo"])));
    if (productos.Fin()) {
        if (opciones.proceso != Proceso::Familias)
            InsertaArticulo(corrida, fila, productos);
    } else if (opciones.proceso == Proceso::Stock && opciones.stock) {
        EscribeSoloExistencias(corrida, fila, productos);
    } else if (opciones.proceso == Proceso::Articulos ||
               (opciones.proceso != Proceso::Familias &&
                HaCambiado(productos["date_upd"], fila["FECHAMODIFICACION"],
                           corrida.programa.reloj.Hoy()))) {
        CambiaArticulo(corrida, fila, productos);
    }
}

/// Sends what stands in the batch, and the folders that its pictures will need.
void VuelcaArticulos(Corrida& corrida, int posicion)
{
    const QString creapath = QStringLiteral("creapath.txt");
    const QString& lista = corrida.lote.Ficheros().ListaCreaPath;
    site::Sitio& sitio = corrida.sitio;
    // A fresh session for every batch: the last one may have idled away during the local work.
    sitio.AbrirFTP();
    VuelcaLote(corrida, TituloLote({{"posicion", Texto(posicion)}}));
    sitio.BorrarFicheroWeb(creapath);
    if (!sitio.SubirFicheroWeb(lista, creapath, corrida.Parametros().Carpeta_tienda))
        corrida.RegistraLog(QStringLiteral("ERROR SUBIENDO FICHERO ") + creapath);
    sitio.RecuperaGuion(QStringLiteral("creapath.php"));
    batch::BorraFicheroLocal(lista);
}

} // namespace

void CreaTablaNotas(data::Programa& programa)
{
    programa.DialectoActivo = data::Dialecto::Access;
    try {
        programa.ConexionLocal.Ejecuta(SqlBorraNotas({{"sufijo", programa.SufijoTemporal}}));
    } catch (const data::ErrorDatos&) {
        // The table may not exist.
    }
    QStringList columnas;
    QStringList nombres;
    QStringList campos;
    for (const data::FichaIdioma& ficha : programa.parametros.Idiomas) {
        const QString nombre = QStringLiteral("PSNOTAS") + QString::number(nombres.size());
        nombres << nombre;
        columnas << nombre + QStringLiteral(" NTEXT");
        campos << ficha.CampoNotas;
    }
    QString sql =
        SqlCreaNotas({{"sufijo", programa.SufijoTemporal}, {"columnas", columnas.join(u',')}});
    data::EjecutaSql(programa, sql, programa.ConexionLocal);
    sql = SqlLlenaNotas({{"sufijo", programa.SufijoTemporal},
                         {"nombres", nombres.join(u',')},
                         {"campos", campos.join(u',')},
                         {"PS_TABLAARTIC", programa.parametros.PS_TABLAARTIC}});
    data::EjecutaSql(programa, sql, programa.ConexionLocal);
}

void LeeContadores(Corrida& corrida)
{
    corrida.contadores = {.martic = MayorId(corrida, SqlMayorProducto, "martic"),
                          .mimage = MayorId(corrida, SqlMayorImagen, "mimage"),
                          .mprecio = MayorId(corrida, SqlMayorPrecio, "mprecio")};
}

QString SqlDeArticulos(const Corrida& corrida)
{
    const data::Parametros& parametros = corrida.Parametros();
    return SqlArticulos({{"alias", AliasDeIdiomas(parametros)},
                         {"CAMPOFAMALT", parametros.CAMPOFAMALT},
                         {"PS_PESO", parametros.PS_PESO},
                         {"PS_CANTMINIMA", parametros.PS_CANTMINIMA},
                         {"PS_TABLAARTIC", parametros.PS_TABLAARTIC},
                         {"sufijo", corrida.programa.SufijoTemporal},
                         {"lista", ListaSql(parametros.CADACTIVOWEB)},
                         {"empresa", corrida.programa.CodigoEmpresa()},
                         {"rango", RangoDe(corrida.opciones)}});
}

QString SqlDeProductos(const QString& CodArticulo)
{
    return SqlProductos({{"CodArticulo", CodArticulo}});
}

bool HaCambiado(const data::Valor& date_upd, const data::Valor& FECHAMODIFICACION, const QDate& hoy)
{
    if (data::EstaVacio(FECHAMODIFICACION))
        return true;
    const QDateTime modificacion = data::EsFecha(FECHAMODIFICACION)
                                       ? data::MomentoDe(FECHAMODIFICACION)
                                       : data::LeeFecha(Texto(FECHAMODIFICACION));
    // The day alone: the shop itself may have dated the product later the same day.
    return modificacion.date() == hoy || data::EsNulo(date_upd) ||
           data::MomentoDe(date_upd) < modificacion;
}

void PasaArticulos(Corrida& corrida)
{
    corrida.programa.DialectoActivo = data::Dialecto::MySql;
    corrida.RegistraLog(QStringLiteral("Actualizando y modificando articulos"));
    auto articulos = LeeLocal(corrida, SqlDeArticulos(corrida));
    if (!articulos.Fin())
        batch::BorraFicheroLocal(corrida.lote.Ficheros().Sentencias);
    while (!articulos.Fin()) {
        PasaArticulo(corrida, articulos);
        corrida.progreso.Avanza(articulos.AbsolutePosition(), articulos.RecordCount());
        articulos.Siguiente();
        // Past the end the position is -3 and no record number; the title shows it as it is.
        const int posicion = articulos.AbsolutePosition();
        if (posicion != 0 && (articulos.Fin() || posicion % ArticulosPorLote == 0))
            VuelcaArticulos(corrida, posicion);
        corrida.progreso.CedeEventos();
    }
}

} // namespace tolmo::sync
