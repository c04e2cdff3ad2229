#pragma once
#include "apoyo/tienda.h"

// What the forms of the sentences differ in, written out for each generation of the shop.

inline const QString InsertaPrecio =
    "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE";

/// Five tariffs and an offer of a net price on the first one; `n` is the last id before them.
inline QStringList PreciosSinImpuesto(int n, int producto = 1)
{
    const auto tarifa = [producto](int id, const QString& resto) {
        return InsertaPrecio + QString(") VALUES (%1,%2,0,0,0,").arg(id).arg(producto) + resto;
    };
    const auto oferta = [producto](int id, const QString& resto) {
        return InsertaPrecio + QString(",`from`,`to`) VALUES (%1,%2,0,0,0,").arg(id).arg(producto) +
               resto;
    };
    return {tarifa(n + 1, "4,10.5,1,0,'amount')"),
            tarifa(n + 2, "5,9.25,1,0,'amount')"),
            tarifa(n + 3, "6,8,1,0,'amount')"),
            tarifa(n + 4, "7,7.1,1,0,'amount')"),
            tarifa(n + 5, "8,6.0005,1,0,'amount')"),
            oferta(n + 6,
                   "1,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE))"),
            oferta(n + 7,
                   "2,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE))"),
            oferta(n + 8,
                   "3,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE))"),
            oferta(n + 9,
                   "4,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE))")};
}

inline QStringList PreciosConImpuesto(int n, int producto = 1)
{
    const auto tarifa = [producto](int id, const QString& resto) {
        return InsertaPrecio +
               QString(",reduction_tax) VALUES (%1,%2,0,0,0,").arg(id).arg(producto) + resto;
    };
    const auto oferta = [producto](int id, const QString& resto) {
        return InsertaPrecio +
               QString(",`from`,`to`,reduction_tax) VALUES (%1,%2,0,0,0,").arg(id).arg(producto) +
               resto;
    };
    return {
        tarifa(n + 1, "4,10.5,1,0,'amount',0)"),
        tarifa(n + 2, "5,9.25,1,0,'amount',0)"),
        tarifa(n + 3, "6,8,1,0,'amount',0)"),
        tarifa(n + 4, "7,7.1,1,0,'amount',0)"),
        tarifa(n + 5, "8,6.0005,1,0,'amount',0)"),
        oferta(n + 6,
               "1,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE),0)"),
        oferta(n + 7,
               "2,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE),0)"),
        oferta(n + 8,
               "3,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE),0)"),
        oferta(n + 9,
               "4,10.5,1,1.5,'amount',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE),0)")};
}

/// The forms of the older schema: the cover is the position, and a shop's row knows no product.
struct EsquemaAntiguo {
    static QStringList Foto(const QString& img, const QString& id, int posicion)
    {
        return {
            QString(
                "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (%1,%2,%3,%3)")
                .arg(img, id, QString::number(posicion)),
            QString("INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (%1,1,%2)")
                .arg(img, QString::number(posicion))};
    }
    /// `k` is the ordinal of the value's category.
    static QStringList FotoDeValor(const QString& img, const QString& id, int k)
    {
        return {
            QString(
                "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (%1,%2,11,%3)")
                .arg(img, id, QString::number(k)),
            QString("INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (%1,1,%2)")
                .arg(img, QString::number(k))};
    }
    /// Up to the words that find the product.
    static QString CombinacionEnTienda(int n, const QString& inc, const QString& pes,
                                       const QString& def)
    {
        return QString(
                   "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','%1'),5)) ,1,%2,%3,%4")
            .arg(QString::number(n), inc, pes, def);
    }
    static QStringList FotosDelAlta()
    {
        return {"INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (1,1,1,1)",
                "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (1,1,1)",
                "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (1,1,'Art 0101A')",
                "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (2,1,3,3)",
                "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (2,1,3)",
                "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (2,1,'Art 0101A')"};
    }
    static QStringList CombinacionesDelAlta()
    {
        return {
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 001002,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) , ID_PRODUCT,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','1'),5)) ,1,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 001001,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (3,1,11,1)",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (3,1,1)",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (3,1,'Art 0101A')",
            "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 3,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5)) , ID_PRODUCT,0,0,NULL From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','2'),5)) ,1,0,0,NULL From ps_product WHERE REFERENCE ='0101A'"};
    }
    static QString QuitaCombinacionesTienda(const QString& codigo = "0101A")
    {
        return "DELETE FROM ps_product_attribute_shop WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='" +
               codigo + "' LIMIT 1)";
    }
    static QString RetiraCombinacionesTienda(const QString& id = "50")
    {
        return "DELETE FROM ps_product_attribute_shop WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='" +
               id + "'";
    }
    static std::vector<QStringList> Imagenes()
    {
        return {{"2", "1", "1", "1"}, {"3", "1", "3", "3"}, {"4", "1", "11", "1"}};
    }
    static QString PorDefecto() { return "0"; } ///< default_on of the second combination
};

/// Those of the newer one.
struct EsquemaNuevo {
    static QStringList Foto(const QString& img, const QString& id, int posicion)
    {
        const QString tapa = posicion == 1 ? "1" : "Null";
        return {
            QString(
                "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (%1,%2,%3,%4)")
                .arg(img, id, QString::number(posicion), tapa),
            QString(
                "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (%1,%2,1,%3)")
                .arg(img, id, tapa)};
    }
    static QStringList FotoDeValor(const QString& img, const QString& id, int)
    {
        return {
            QString(
                "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (%1,%2,11,null)")
                .arg(img, id),
            QString(
                "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (%1,%2,1,null)")
                .arg(img, id)};
    }
    static QString CombinacionEnTienda(int n, const QString& inc, const QString& pes,
                                       const QString& def)
    {
        return QString(
                   "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','%1'),5)) , ID_PRODUCT, 1,%2,%3,%4")
            .arg(QString::number(n), inc, pes, def);
    }
    static QStringList FotosDelAlta()
    {
        return {"INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (1,1,1,1)",
                "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (1,1,1,1)",
                "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (1,1,'Art 0101A')",
                "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (2,1,3,Null)",
                "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (2,1,1,Null)",
                "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (2,1,'Art 0101A')"};
    }
    static QStringList CombinacionesDelAlta()
    {
        return {
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 001002,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) , ID_PRODUCT,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','1'),5)) , ID_PRODUCT, 1,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 001001,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (3,1,11,null)",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (3,1,1,null)",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (3,1,'Art 0101A')",
            "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 3,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5)) , ID_PRODUCT,0,0,NULL From ps_product WHERE REFERENCE ='0101A'",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','2'),5)) , ID_PRODUCT, 1,0,0,NULL From ps_product WHERE REFERENCE ='0101A'"};
    }
    static QString QuitaCombinacionesTienda(const QString& codigo = "0101A")
    {
        return "DELETE FROM ps_product_attribute_shop WHERE id_product=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='" +
               codigo + "' LIMIT 1)";
    }
    static QString RetiraCombinacionesTienda(const QString& id = "50")
    {
        return "DELETE FROM ps_product_attribute_shop WHERE id_product='" + id + "'";
    }
    static std::vector<QStringList> Imagenes()
    {
        return {{"2", "1", "1", "1"}, {"3", "1", "3", "NULL"}, {"4", "1", "11", "NULL"}};
    }
    static QString PorDefecto() { return "NULL"; }
};

struct Tienda156 : EsquemaAntiguo {
    static OpcionesTienda Opciones() { return {.generacion = "1.5.6", .idiomas = 1}; }
    static QStringList Precios(int n, int producto = 1) { return PreciosSinImpuesto(n, producto); }
    static QStringList Tamanos() { return {"home", "large", "medium", "small", "thickbox"}; }
    static QStringList TamanosDeFamilia() { return {"category", "large", "medium", "small"}; }
    static constexpr int AnchoInicio = 124;
    static constexpr bool ColumnaImpuesto = false;
};

/// The last version whose text asks for the column.
struct Tienda160Con : EsquemaAntiguo {
    static OpcionesTienda Opciones()
    {
        return {.generacion = "1.6.0", .version = "1.6.0.14", .idiomas = 1};
    }
    static QStringList Precios(int n, int producto = 1) { return PreciosConImpuesto(n, producto); }
    static QStringList Tamanos()
    {
        return {"cart", "home", "large", "medium", "small", "thickbox"};
    }
    static QStringList TamanosDeFamilia() { return {"category", "medium"}; }
    static constexpr int AnchoInicio = 250;
    static constexpr bool ColumnaImpuesto = true;
};

/// The first one whose text doesn't, though its table has the column.
struct Tienda160Sin : Tienda160Con {
    static OpcionesTienda Opciones()
    {
        return {.generacion = "1.6.0", .version = "1.6.0.15", .idiomas = 1};
    }
    static QStringList Precios(int n, int producto = 1) { return PreciosSinImpuesto(n, producto); }
};

struct Tienda161 : EsquemaNuevo {
    static OpcionesTienda Opciones() { return {.generacion = "1.6.1", .idiomas = 1}; }
    static QStringList Precios(int n, int producto = 1) { return PreciosConImpuesto(n, producto); }
    static QStringList Tamanos()
    {
        return {"cart", "home", "large", "medium", "small", "thickbox"};
    }
    static QStringList TamanosDeFamilia() { return {"category", "medium"}; }
    static constexpr int AnchoInicio = 250;
    static constexpr bool ColumnaImpuesto = true;
};

/// The same for tests that choose the shop as they run.
struct FormasDeTienda {
    OpcionesTienda opciones{};
    QStringList (*Precios)(int n, int producto) = nullptr;
    QStringList (*Foto)(const QString& img, const QString& id, int posicion) = nullptr;
    QStringList (*FotoDeValor)(const QString& img, const QString& id, int k) = nullptr;
    QString (*CombinacionEnTienda)(int n, const QString& inc, const QString& pes,
                                   const QString& def) = nullptr;
    QString (*QuitaCombinacionesTienda)(const QString& codigo) = nullptr;
    QString (*RetiraCombinacionesTienda)(const QString& id) = nullptr;
    QStringList tamanos{};
    QStringList tamanosDeFamilia{};
    QString porDefecto{};
};

template <class Tienda> FormasDeTienda FormasDe()
{
    return {.opciones = Tienda::Opciones(),
            .Precios = Tienda::Precios,
            .Foto = Tienda::Foto,
            .FotoDeValor = Tienda::FotoDeValor,
            .CombinacionEnTienda = Tienda::CombinacionEnTienda,
            .QuitaCombinacionesTienda = Tienda::QuitaCombinacionesTienda,
            .RetiraCombinacionesTienda = Tienda::RetiraCombinacionesTienda,
            .tamanos = Tienda::Tamanos(),
            .tamanosDeFamilia = Tienda::TamanosDeFamilia(),
            .porDefecto = Tienda::PorDefecto()};
}
