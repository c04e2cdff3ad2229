#pragma once
#include "apoyo/corrida_real.h"
#include "e2e/formas_de_tienda.h"

// What a run makes of each thing of the house of casa_entera.h.

/// A template with its places filled.
inline QString Rellena(QString plantilla,
                       std::initializer_list<std::pair<const char*, QString>> valores)
{
    for (const auto& [lugar, valor] : valores)
        plantilla.replace('{' + QString(lugar) + '}', valor);
    return plantilla;
}

inline QString Numero(int numero)
{
    return QString::number(numero);
}

/// All from the first to the last.
inline QStringList Numeros(int desde, int hasta)
{
    QStringList numeros;
    for (int i = desde; i <= hasta; ++i)
        numeros << Numero(i);
    return numeros;
}

// clang-format off
/// The shop's makers, of which there is one.
inline QStringList SentenciasDeMarcas()
{
    const QString hoy = HoyMysql();
    return {"DELETE FROM ps_manufacturer",
            "DELETE FROM ps_manufacturer_lang",
            "DELETE FROM ps_manufacturer_shop",
            "INSERT INTO ps_manufacturer (id_manufacturer,name,date_add,date_upd,active) VALUES (7,'Casa Uno'," + hoy + "," + hoy + ",1)",
            "INSERT INTO ps_manufacturer_shop (id_manufacturer,id_shop) VALUES (7,1)",
            "INSERT INTO ps_manufacturer_lang (id_manufacturer,id_lang,description,short_description,meta_title,meta_keywords,meta_description) VALUES (7,1,'Casa Uno','Casa Uno','Casa Uno','Casa Uno','Casa Uno')"};
}

inline QStringList SentenciasDeGrupos()
{
    QStringList sentencias{"DELETE FROM ps_attribute_group", "DELETE FROM ps_attribute_group_lang", "DELETE FROM ps_attribute_group_shop"};
    for (const auto& [ncat, nombre] : {std::pair("1", "Color"), std::pair("2", "Medida"), std::pair("3", "Tela")})
        for (const char* plantilla : {"INSERT INTO ps_attribute_group(ID_ATTRIBUTE_GROUP,IS_COLOR_GROUP,GROUP_TYPE,POSITION) VALUES ({NCAT},0,'select',{NCAT})",
                                      "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES ({NCAT},1,'{nombre}','{nombre}')",
                                      "INSERT INTO ps_attribute_group_shop(ID_ATTRIBUTE_GROUP,ID_SHOP) VALUES ({NCAT},1)"})
            sentencias << Rellena(plantilla, {{"NCAT", ncat}, {"nombre", nombre}});
    return sentencias;
}

/// In the order of their descriptions, over all groups.
inline QStringList SentenciasDeAtributos()
{
    QStringList sentencias{"DELETE FROM ps_attribute", "DELETE FROM ps_attribute_lang", "DELETE FROM ps_attribute_shop"};
    int posicion = 0;
    for (const auto& [id, nombre] : {std::pair("001001", "Azul"), std::pair("002001", "Chico"), std::pair("002002", "Grande"), std::pair("003001", "Lana"),
                                     std::pair("003002", "Lino"), std::pair("001002", "Rojo"), std::pair("001003", "Verde")}) {
        ++posicion;
        for (const char* plantilla : {"INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES ({id},{NCAT},'#000000',{posicion})",
                                      "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES ({id},1,'{nombre}')",
                                      "INSERT INTO ps_attribute_shop (ID_ATTRIBUTE,ID_SHOP) VALUES ({id},1)"})
            sentencias << Rellena(plantilla, {{"id", id}, {"NCAT", QString(id).mid(2, 1)}, {"posicion", Numero(posicion)}, {"nombre", nombre}});
    }
    return sentencias;
}

/// One family but for its right number.
inline QStringList AltaDeFamilia(const QString& clave, int id, int padre, int izquierda, int nivel, const QString& nombre, const QString& url)
{
    QStringList sentencias{Rellena("INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES ({id},{padre},{nr},0,{nivel},1,{hoy},{hoy},{clave},'{clave}')",
                                   {{"id", Numero(id)}, {"padre", Numero(padre)}, {"nr", Numero(izquierda)}, {"nivel", Numero(nivel)}, {"hoy", HoyMysql()}, {"clave", clave}})};
    for (int k = 1; k <= 8; ++k)
        sentencias << Rellena("INSERT INTO ps_category_group (id_category,id_group) VALUES ({id},{k})", {{"id", Numero(id)}, {"k", Numero(k)}});
    return sentencias << Rellena("INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES ({id},1,'{nombre}','{url}','','','{nombre}','')",
                                 {{"id", Numero(id)}, {"nombre", nombre}, {"url", url}})
                      << Rellena("INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES ({id},1,{clave})", {{"id", Numero(id)}, {"clave", clave}});
}

inline QString DerechaDe(const QString& clave, int derecha)
{
    return Rellena("UPDATE ps_category set nright={nr} WHERE kov_familia='{clave}'", {{"nr", Numero(derecha)}, {"clave", clave}});
}

/// The two families; with `conJardin` the third one that comes later.
inline QStringList SentenciasDeFamilias(bool conJardin)
{
    QStringList sentencias{"DELETE FROM ps_category WHERE id_category>2",
                           "DELETE FROM ps_category_group WHERE id_category>2",
                           "DELETE FROM ps_category_lang WHERE id_category>2",
                           "DELETE FROM ps_category_shop WHERE id_category>2",
                           "UPDATE ps_category set nleft=1 WHERE id_category=1",
                           "UPDATE ps_category set nleft=2 WHERE id_category=2"};
    sentencias << AltaDeFamilia("01", 3, 2, 3, 2, "Cocina", "cocina") << AltaDeFamilia("0101", 4, 3, 4, 3, "Ollas", "ollas")
               << DerechaDe("0101", 5) << DerechaDe("01", 6);
    if (conJardin)
        sentencias << AltaDeFamilia("02", 5, 2, 7, 2, "Jardin", "jardin") << DerechaDe("02", 8);
    const int ultimo = conJardin ? 9 : 7;
    return sentencias << Rellena("UPDATE ps_category set nright={nr} WHERE id_category=2", {{"nr", Numero(ultimo)}})
                      << Rellena("UPDATE ps_category set nright={nr} WHERE id_category=1", {{"nr", Numero(ultimo + 1)}});
}

/// A product as its first sentences name it.
struct ProductoEsperado {
    QString id{};
    QString codigo{};
    QString nombre{};
    QString url{};
    QString marca = "null";

    QString Rellena(const QString& plantilla) const
    {
        return ::Rellena(plantilla, {{"id", id}, {"codigo", codigo}, {"nombre", nombre}, {"url", url}, {"marca", marca}, {"hoy", HoyMysql()}});
    }
    QStringList Alta() const
    {
        return {Rellena("INSERT INTO ps_product (id_product,id_supplier,id_manufacturer,id_tax_rules_group,id_category_default,on_sale,ean13,ecotax,quantity,price,wholesale_price,reference,supplier_reference,location,weight,minimal_quantity,out_of_stock,quantity_discount,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,cache_has_attachments) VALUES ({id},null,{marca},1,3,0,null,0,0,10.5,0,'{codigo}','ALT{codigo}',NULL,1.25,1,1,0,0,0,0,1,0,{hoy},{hoy},'1')"),
                Rellena("INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES ({id},1,1,3,0,0,10.5,0,0,0,0,1,0,{hoy},{hoy},1)"),
                Rellena("INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES ({id},1,'{url}','','{nombre}','Notas {codigo}','{nombre}','Notas {codigo} ','Corta {codigo}')"),
                Rellena("DELETE FROM ps_product_tag where id_product='{id}'")};
    }
    QStringList Cambio() const
    {
        return {Rellena("UPDATE ps_product SET id_tax_rules_group=1,id_manufacturer={marca},supplier_reference='ALT{codigo}',id_category_default=3,price=10.5,on_sale=0,date_upd={hoy},weight=1.25,minimal_quantity=1,cache_has_attachments='1' WHERE id_product='{id}'"),
                Rellena("UPDATE ps_product_shop SET id_tax_rules_group=1,id_category_default=3,price=10.5,minimal_quantity=1,on_sale=0,date_upd={hoy} WHERE id_product='{id}'"),
                Rellena("UPDATE ps_product_lang SET link_rewrite='{url}',name='{nombre}',meta_keywords='',meta_title='{nombre}',meta_description='Notas {codigo}',description='Notas {codigo}',description_short='Corta {codigo}' WHERE id_product='{id}' AND id_lang=1"),
                Rellena("DELETE FROM ps_product_tag where id_product='{id}'")};
    }
};

inline QString Etiqueta(const QString& id, const QString& tag)
{
    return Rellena("INSERT INTO ps_product_tag (id_product,id_tag) Select '{id}',min(id_tag) FROM ps_tag WHERE id_lang=1 and name='{tag}'", {{"id", id}, {"tag", tag}});
}

inline QString Enlace(const QString& categoria, const QString& id)
{
    return Rellena("INSERT INTO ps_category_product (id_category,id_product,position) VALUES ({categoria},{id},{id})", {{"categoria", categoria}, {"id", id}});
}

inline QStringList BorraImagenes(const QStringList& imagenes)
{
    QStringList sentencias;
    for (const QString& img : imagenes)
        sentencias << "DELETE FROM ps_image_lang where id_image=" + img << "DELETE FROM ps_image where id_image=" + img << "DELETE FROM ps_image_shop where id_image=" + img;
    return sentencias;
}

/// The folder of a picture below img/p: a digit a level.
inline QString CarpetaDeImagen(const QString& img)
{
    QStringList cifras;
    for (const QChar cifra : img)
        cifras << cifra;
    return cifras.join('/');
}

/// The lines of a change for its old pictures.
inline QStringList LineasDeBorrado(const QStringList& imagenes)
{
    QStringList lineas;
    for (const QString& img : imagenes)
        for (const char* plantilla : {"img/p/{img}.jpg;", "img/p/{dir}/{img}-*.jpg;", "img/p/{dir}/{img}.jpg;"})
            lineas << Rellena(plantilla, {{"img", img}, {"dir", CarpetaDeImagen(img)}});
    return lineas;
}

inline QStringList LineasDeFamilias(const QStringList& ids)
{
    QStringList lineas;
    for (const QString& id : ids)
        lineas << "img/c/" + id + ".jpg;" << "img/c/" + id + "-*.jpg;";
    return lineas;
}

/// The list of pictures that have come up: the first field is 50 wide.
inline QStringList LineasDeSubidas(const QStringList& imagenes)
{
    QStringList lineas;
    for (const QString& img : imagenes)
        lineas << ("img/p/" + CarpetaDeImagen(img) + "/" + img + ".jpg").leftJustified(50) + "img/p/" + img + ".jpg;";
    return lineas;
}

inline QStringList Existencias(const QString& id, const QString& cantidad)
{
    return {Rellena("DELETE FROM ps_stock_available WHERE id_product='{id}' ", {{"id", id}}),
            Rellena("INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('{id}000000','{id}',0,1,0,{cantidad},0,0) ", {{"id", id}, {"cantidad", cantidad}})};
}

/// The stock of one configuration.
inline QString Lote(const ProductoEsperado& producto, const QString& idconf, const QStringList& atributos, const QString& cantidad)
{
    QString filtro;
    for (const QString& atributo : atributos)
        filtro += " AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute=" + atributo + ")";
    return Rellena("INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('{id}{IDCONF}','{id}', (SELECT ps_product_attribute.id_product_attribute FROM ps_product_attribute inner join ps_product on ps_product_attribute.id_product=ps_product.id_product  WHERE ps_product.reference='{codigo}'{filtro}),1,0,{cantidad},0,0) ",
                   {{"id", producto.id}, {"IDCONF", idconf}, {"codigo", producto.codigo}, {"filtro", filtro}, {"cantidad", cantidad}});
}

/// A value of a combination; the first use of its picture in the article brings the picture's rows.
struct ValorEsperado {
    QString atributo{};
    QString imagen{};
    bool nueva = false;
};
struct CombinacionEsperada {
    std::vector<ValorEsperado> valores{};
    QString inc = "0";
    QString pes = "0";
};

/// What hangs on the generation of the shop.
struct SentenciasDeTienda {
    FormasDeTienda formas{};

    static QStringList ConLeyenda(const QStringList& filas, const ProductoEsperado& producto, const QString& img)
    {
        return filas + QStringList{Rellena("INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES ({img},1,'{nombre}')", {{"img", img}, {"nombre", producto.nombre}})};
    }
    QStringList Foto(const ProductoEsperado& producto, const QString& img, int posicion) const
    {
        return ConLeyenda(formas.Foto(img, producto.id, posicion), producto, img);
    }
    QStringList Tarifas(const ProductoEsperado& producto, int n) const
    {
        return formas.Precios(n, producto.id.toInt()).mid(0, 5);
    }
    QStringList TarifasYOferta(const ProductoEsperado& producto, int n) const
    {
        return formas.Precios(n, producto.id.toInt());
    }
    static QStringList BorraPrecios(const ProductoEsperado& producto)
    {
        return {"DELETE FROM ps_specific_price WHERE id_product='" + producto.id + "'"};
    }
    QStringList BorraCombinaciones(const ProductoEsperado& p) const
    {
        const QString producto = "(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='" + p.codigo + "' LIMIT 1)";
        return {"DELETE FROM ps_product_attribute WHERE id_product=" + producto,
                "DELETE FROM ps_product_attribute_combination WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)=" + producto,
                formas.QuitaCombinacionesTienda(p.codigo),
                "DELETE FROM ps_product_attribute_image WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)=" + producto};
    }
    QStringList Combinaciones(const ProductoEsperado& producto, const std::vector<CombinacionEsperada>& filas) const
    {
        const QString desde = " From ps_product WHERE REFERENCE ='" + producto.codigo + "'";
        QStringList sentencias;
        int n = 0;
        for (const CombinacionEsperada& fila : filas) {
            const QString idcomb = Rellena("CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','{n}'),5))", {{"n", Numero(++n)}});
            int k = 0;
            for (const ValorEsperado& valor : fila.valores) {
                ++k;
                sentencias << "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT " + valor.atributo + "," + idcomb + " " + desde;
                if (valor.nueva)
                    sentencias << ConLeyenda(formas.FotoDeValor(valor.imagen, producto.id, k), producto, valor.imagen);
                if (!valor.imagen.isEmpty())
                    sentencias << "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT " + valor.imagen + "," + idcomb + " " + desde;
            }
            const QString def = n == 1 ? "1" : "NULL";
            sentencias << "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT " + idcomb + " , ID_PRODUCT," + fila.inc + "," + fila.pes + "," + def + desde
                       << formas.CombinacionEnTienda(n, fila.inc, fila.pes, def) + desde;
        }
        return sentencias;
    }
    QStringList Retirada(const QString& id, const QStringList& imagenes) const
    {
        const QString detras = " WHERE id_product='" + id + "'";
        const QString porCombinacion = " WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='" + id + "'";
        return BorraImagenes(imagenes) +
               QStringList{"DELETE FROM ps_product" + detras,
                           "DELETE FROM ps_product_shop" + detras,
                           "DELETE FROM ps_product_lang" + detras,
                           "DELETE FROM ps_category_product" + detras,
                           "DELETE FROM ps_specific_price" + detras,
                           "DELETE FROM ps_product_attribute" + detras,
                           "DELETE FROM ps_product_attribute_combination" + porCombinacion,
                           formas.RetiraCombinacionesTienda(id),
                           "DELETE FROM ps_product_tag" + detras,
                           "DELETE FROM ps_stock_available" + detras + " ",
                           "DELETE FROM ps_product_attribute_image" + porCombinacion};
    }
};
// clang-format on

/// The server's text for a sentence that it can't read, which quotes what follows the fault.
inline QString ErrorDeSintaxis(const QString& resto)
{
    return "You have an error in your SQL syntax; check the manual that corresponds to your MariaDB server version for the right syntax to use near '" +
           (resto.size() > 80 ? resto.left(77) + "..." : resto) + "' at line 1";
}

/// What the log says of a batch: the server's text and the beginning of the sentence for each.
inline QStringList DetalleDeErrores(const std::vector<std::pair<QString, QString>>& errores)
{
    const QString sangria(8, u' ');
    QStringList lineas{"ERRORES EJECUTANDO SENTENCIAS", ""};
    for (const auto& [mensaje, sentencia] : errores)
        lineas << sangria + "Error al ejecutar consulta: " + mensaje
               << sangria + sentencia.left(200).simplified();
    return lineas << sangria;
}
