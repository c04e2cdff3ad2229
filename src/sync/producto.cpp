#include "sync/producto.h"
#include "sync/articulo.h"
#include "sync/corrida.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlCambiaProducto(u"UPDATE ps_product SET id_tax_rules_group={CODIVA},id_manufacturer={marca},supplier_reference='{codalternativo}',id_category_default={catdefecto},price={precio},on_sale=0,date_upd={hoy},weight={PS_PESO},minimal_quantity={cantidad},cache_has_attachments='1' WHERE id_product='{id}'||");
constexpr Plantilla SqlCambiaEnTienda(u"UPDATE ps_product_shop SET id_tax_rules_group={CODIVA},id_category_default={catdefecto},price={precio},minimal_quantity={cantidad},on_sale=0,date_upd={hoy} WHERE id_product='{id}'||");
constexpr Plantilla SqlCambiaTextos(u"UPDATE ps_product_lang SET link_rewrite='{url}',name='{nombre}',meta_keywords='{claves}',meta_title='{titulo}',meta_description='{metadesc}',description='{notas}',description_short='{corta}' WHERE id_product='{id}' AND id_lang={lang}||");
constexpr Plantilla SqlInsertaProducto(u"INSERT INTO ps_product (id_product,id_supplier,id_manufacturer,id_tax_rules_group,id_category_default,on_sale,ean13,ecotax,quantity,price,wholesale_price,reference,supplier_reference,location,weight,minimal_quantity,out_of_stock,quantity_discount,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,cache_has_attachments) VALUES ({id},null,{marca},{CODIVA},{catdefecto},0,null,0,0,{precio},0,'{CodArticulo}','{codalternativo}',NULL,{PS_PESO},{cantidad},1,0,0,0,0,1,0,{hoy},{hoy},'1')||");
constexpr Plantilla SqlInsertaEnTienda(u"INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES ({id},1,{CODIVA},{catdefecto},0,0,{precio},0,0,0,0,1,0,{hoy},{hoy},{cantidad})||");
constexpr Plantilla SqlInsertaTextos(u"INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES ({id},{lang},'{url}','{claves}','{titulo}','{metadesc}','{nombre}','{notas} ','{corta}')||");
// clang-format on

void EscribeTextos(Corrida& corrida, const Articulo& articulo, const Plantilla& plantilla)
{
    for (const TextosArticulo& textos : articulo.textos)
        corrida.lote.EscribeSentencia(plantilla({{"id", articulo.id},
                                                 {"lang", textos.lang},
                                                 {"url", textos.url},
                                                 {"nombre", textos.nombre},
                                                 {"claves", textos.claves},
                                                 {"titulo", textos.titulo},
                                                 {"metadesc", textos.metadesc},
                                                 {"notas", textos.notas},
                                                 {"corta", textos.corta}}));
}

} // namespace

void CambiaProducto(Corrida& corrida, const Articulo& articulo)
{
    const QString codiva = Texto(articulo.fila["CODIVA"]);
    corrida.lote.EscribeSentencia(SqlCambiaProducto({{"CODIVA", codiva},
                                                     {"marca", articulo.marca},
                                                     {"codalternativo", articulo.codalternativo},
                                                     {"catdefecto", articulo.catdefecto},
                                                     {"precio", articulo.precio},
                                                     {"hoy", articulo.hoy},
                                                     {"PS_PESO", Texto(articulo.fila["PS_PESO"])},
                                                     {"cantidad", articulo.cantidad},
                                                     {"id", articulo.id}}));
    corrida.lote.EscribeSentencia(SqlCambiaEnTienda({{"CODIVA", codiva},
                                                     {"catdefecto", articulo.catdefecto},
                                                     {"precio", articulo.precio},
                                                     {"cantidad", articulo.cantidad},
                                                     {"hoy", articulo.hoy},
                                                     {"id", articulo.id}}));
    EscribeTextos(corrida, articulo, SqlCambiaTextos);
}

void InsertaProducto(Corrida& corrida, const Articulo& articulo)
{
    const QString codiva = Texto(articulo.fila["CODIVA"]);
    corrida.lote.EscribeSentencia(SqlInsertaProducto({{"id", articulo.id},
                                                      {"marca", articulo.marca},
                                                      {"CODIVA", codiva},
                                                      {"catdefecto", articulo.catdefecto},
                                                      {"precio", articulo.precio},
                                                      {"CodArticulo", articulo.CodArticulo},
                                                      {"codalternativo", articulo.codalternativo},
                                                      {"PS_PESO", Texto(articulo.fila["PS_PESO"])},
                                                      {"cantidad", articulo.cantidad},
                                                      {"hoy", articulo.hoy}}));
    corrida.lote.EscribeSentencia(SqlInsertaEnTienda({{"id", articulo.id},
                                                      {"CODIVA", codiva},
                                                      {"catdefecto", articulo.catdefecto},
                                                      {"precio", articulo.precio},
                                                      {"hoy", articulo.hoy},
                                                      {"cantidad", articulo.cantidad}}));
    EscribeTextos(corrida, articulo, SqlInsertaTextos);
}

} // namespace tolmo::sync
