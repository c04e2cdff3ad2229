#include "sync/existencias.h"
#include "sync/articulo.h"
#include "sync/atributos.h"
#include "sync/corrida.h"
#include <utility>

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlExistencias(u"SELECT SUM(EXISTENCIAS) AS EXI from m_Exist WHERE CODARTICULO='{CodArticulo}' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('{almacenes}')");
constexpr Plantilla SqlConfiguraciones(u"SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='{CodArticulo}' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('{almacenes}') AND IDCONF<>'0'  AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA");
// The change's own copy has a blank less.
constexpr Plantilla SqlConfiguracionesEnCambio(u"SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='{CodArticulo}' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('{almacenes}') AND IDCONF<>'0' AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA");

constexpr Plantilla SqlBorraExistencias(u"DELETE FROM ps_stock_available WHERE id_product='{id}' ||");
constexpr Plantilla SqlInsertaArticulo(u"INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('{id}000000','{id}',0,1,0,{cantidad},0,0) ||");
constexpr Plantilla FiltroAtributo(u" AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute={atributo})");
// The shop finds the combination by itself: its id and the local configuration share nothing.
constexpr Plantilla SqlInsertaConfiguracion(u"INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('{id}{IDCONF}','{id}', (SELECT ps_product_attribute.id_product_attribute FROM ps_product_attribute inner join ps_product on ps_product_attribute.id_product=ps_product.id_product  WHERE ps_product.reference='{CodArticulo}'{filtro}),1,0,{cantidad},0,0) ||");
constexpr Plantilla ActualizandoStock(u"Actualizando STOCK articulo {CodArticulo} / {codalternativo}");
// clang-format on

/// What is on hand of an article, ready for its sentences.
struct Existencias {
    struct Configuracion {
        QString IDCONF{};
        QString filtro{};
        QString cantidad{};
    };
    QString CodArticulo{};
    QString cantidad{};
    std::vector<Configuracion> configuraciones{};
};

QString Cantidad(const data::Recordset& fila)
{
    return Texto(data::ValorNumerico(fila["EXI"]));
}

/// The condition that a combination has all the attributes that `cadena` names.
QString FiltroDe(BuscadorDeAtributos& busca, const QString& cadena)
{
    QString filtro;
    for (const ParDeCadena& par : ParteCadena(cadena))
        if (const auto atributo = busca(par.categoria, par.valor))
            filtro += FiltroAtributo({{"atributo", *atributo}});
    return filtro;
}

std::vector<Existencias::Configuracion> LeeConfiguraciones(Corrida& corrida, const QString& codigo,
                                                           const QString& almacenes, Camino camino)
{
    const Plantilla& sql =
        camino == Camino::Cambio ? SqlConfiguracionesEnCambio : SqlConfiguraciones;
    auto filas = LeeLocal(corrida, sql({{"CodArticulo", codigo}, {"almacenes", almacenes}}));
    BuscadorDeAtributos busca(corrida);
    std::vector<Existencias::Configuracion> configuraciones;
    for (; !filas.Fin(); filas.Siguiente())
        configuraciones.push_back({.IDCONF = Texto(filas["IDCONF"]),
                                   .filtro = FiltroDe(busca, Texto(filas["CADENA"])),
                                   .cantidad = Cantidad(filas)});
    return configuraciones;
}

Existencias LeeExistencias(Corrida& corrida, const QString& codigo, Camino camino)
{
    const data::Parametros& parametros = corrida.Parametros();
    const QString almacenes = ListaSql(parametros.PSAlmacenes);
    const auto fila =
        LeeLocal(corrida, SqlExistencias({{"CodArticulo", codigo}, {"almacenes", almacenes}}));
    Existencias existencias{.CodArticulo = codigo, .cantidad = Cantidad(fila)};
    if (parametros.PS_MODOCONFIGURADOR)
        existencias.configuraciones = LeeConfiguraciones(corrida, codigo, almacenes, camino);
    return existencias;
}

void Escribe(batch::Lote& lote, const Existencias& existencias, const QString& id)
{
    lote.EscribeSentencia(SqlBorraExistencias({{"id", id}}));
    lote.EscribeSentencia(SqlInsertaArticulo({{"id", id}, {"cantidad", existencias.cantidad}}));
    for (const Existencias::Configuracion& configuracion : existencias.configuraciones)
        lote.EscribeSentencia(SqlInsertaConfiguracion({{"id", id},
                                                       {"IDCONF", configuracion.IDCONF},
                                                       {"CodArticulo", existencias.CodArticulo},
                                                       {"filtro", configuracion.filtro},
                                                       {"cantidad", configuracion.cantidad}}));
}

} // namespace

std::vector<ParDeCadena> ParteCadena(const QString& Cadena)
{
    const QString marca = QStringLiteral("$");
    std::vector<ParDeCadena> pares;
    QString cat;
    QString val;
    for (const QChar c : Cadena) {
        if (c == u'[') {
            val = marca;
        } else if (c == u':') {
            val.clear();
        } else if (c == u']') {
            pares.push_back({std::exchange(cat, {}), std::exchange(val, {})});
        } else {
            (val == marca ? cat : val) += c;
        }
    }
    return pares;
}

void EscribeExistencias(Corrida& corrida, const Articulo& articulo)
{
    if (corrida.opciones.stock)
        Escribe(corrida.lote, LeeExistencias(corrida, articulo.CodArticulo, articulo.camino),
                articulo.id);
}

void EscribeSoloExistencias(Corrida& corrida, const data::Recordset& fila,
                            data::Recordset& productos)
{
    const QString codigo = Texto(fila["CodArticulo"]);
    corrida.RegistraLog(ActualizandoStock(
        {{"CodArticulo", codigo}, {"codalternativo", Texto(fila["codalternativo"])}}));
    // Its query is the one of a new article.
    const Existencias existencias = LeeExistencias(corrida, codigo, Camino::Alta);
    // A product with several pictures has several rows: each repetition clears the one before.
    for (; !productos.Fin(); productos.Siguiente())
        Escribe(corrida.lote, existencias, Texto(productos["id_product"]));
}

} // namespace tolmo::sync
