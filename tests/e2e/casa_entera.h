#pragma once
#include "apoyo/corrida_real.h"

// A company with everything that a run can send.

/// The values of the articles come either from the management program or from hand.
struct OrigenDeValores {
    bool gestion = false;

    QString Tabla() const { return gestion ? "CONF_ART_VAL" : "PS_CONF_ART_VAL"; }
    QString ColumnaFoto() const { return gestion ? "LINK" : "FOTO"; }
    /// The management program has no weight increment.
    QString Peso(const QString& peso) const { return gestion ? QString("0") : peso; }

    QString SqlCategoria(const QString& codigo, const QString& categoria) const
    {
        return "INSERT INTO " + QString(gestion ? "CONF_ART_CAT" : "PS_CONF_ART_CAT") +
               " (CODARTICULO,CODCATEGORIA,DESCRIPCION) VALUES ('" + codigo + "','" + categoria +
               "','x');\n";
    }
    /// `foto` is an Access literal.
    QString SqlValor(const QString& codigo, const QString& categoria, const QString& valor,
                     int secuencia, const QString& incremento, const QString& peso = "0",
                     const QString& foto = "Null") const
    {
        const QString columnas = gestion ? ",PVP1," : ",PESO,INC_PVP,";
        const QString pesoDeMano = gestion ? QString() : peso + ",";
        return "INSERT INTO " + Tabla() + " (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA" +
               columnas + ColumnaFoto() + ") VALUES ('" + codigo + "','" + categoria + "','" +
               valor + "',1," + QString::number(secuencia) + "," + pesoDeMano + incremento + "," +
               foto + ");\n";
    }
};

/// The tables of the house at its first run: four articles with none, one, two and three
/// attributes, all of the family "01".
inline QString SqlDeLaCasa(const QString& carpeta, const OrigenDeValores& valores)
{
    const QString anio = QString::number(QDate::currentDate().year());
    const auto foto = [&](const QString& nombre) { return "'" + carpeta + "/" + nombre + "'"; };
    const auto categoria = [](const QString& codigo, const QString& nombre) {
        return "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('" + codigo +
               "','" + nombre + "');\n";
    };
    const auto opcion = [](const QString& cat, const QString& codigo, const QString& nombre) {
        return "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ('" + cat +
               "','" + codigo + "','" + nombre + "');\n";
    };
    const auto existencias = [&](const QString& codigo, const QString& cantidad) {
        return "INSERT INTO M_EXIST (CODARTICULO,ANIO,CODALMACEN,EXISTENCIAS) VALUES ('" + codigo +
               "'," + anio + ",'01'," + cantidad + ");\n";
    };
    const auto lote = [&](const QString& codigo, const QString& idconf, const QString& cadena,
                          const QString& cantidad) {
        return "INSERT INTO CONFCAD (CODARTICULO,ID,CADENA) VALUES ('" + codigo + "','" + idconf +
               "','" + cadena + "');\n" +
               "INSERT INTO M_EXIST_LOTE (CODARTICULO,LOTE,IDCONF,ANIO,CODALMACEN,EXISTENCIAS) "
               "VALUES ('" +
               codigo + "','L','" + idconf + "'," + anio + ",'01'," + cantidad + ");\n";
    };
    const auto documento = [&](const QString& codigo, const QString& nombre,
                               const QString& descripcion) {
        return "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','" +
               codigo + "'," + foto(nombre) + ",'" + descripcion + "');\n";
    };
    return "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,TAG) VALUES ('000001',1,'ETIQUETAS');\n"
           "INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (1,7,'Casa Uno');\n" +
           categoria("COL", "Color") + opcion("COL", "AZU", "Azul") + opcion("COL", "ROJ", "Rojo") +
           opcion("COL", "VER", "Verde") + categoria("MED", "Medida") +
           opcion("MED", "T1", "Chico") + opcion("MED", "T2", "Grande") + categoria("TEL", "Tela") +
           opcion("TEL", "LAN", "Lana") + opcion("TEL", "LIN", "Lino") +
           SqlFamilia("01", 0, "Cocina", {{"FOTO", foto("rojo.jpg")}}) +
           SqlFamilia("0101", 1, "Ollas", {{"FOTO", foto("azul.jpg")}}) +
           SqlArticulo("01A", {{"FOTO", foto("rojo.jpg")},
                               {"FOTO2", foto("azul.jpg")},
                               {"CODGRUPO", "7"},
                               {"FAVORITO", "True"},
                               {"ETIQUETAS", "'rojo,azul,'"}}) +
           SqlArticulo("01B", {{"FOTO", foto("rojo.jpg")}, {"OTRASFAM", "'0101'"}}) +
           SqlArticulo("01C") + SqlArticulo("01D", {{"FOTO", foto("azul.jpg")}}) +
           "INSERT INTO OFERTAS (CODARTICULO,IDCONF,PRECIO,TARIFAOPROV,FECHADESDE,FECHAHASTA) "
           "VALUES ('01B','0',9,1,#03/01/2024#,#12/31/2024#);\n" +
           existencias("01A", "7") + existencias("01B", "6") + existencias("01C", "5") +
           existencias("01D", "4") + lote("01B", "000001", "[COL:ROJ]", "2") +
           lote("01C", "000002", "[COL:AZU][MED:T2]", "3") +
           lote("01D", "000003", "[COL:ROJ][MED:T1][TEL:LIN]", "1") +
           documento("01A", "ficha.pdf", "Ficha") + documento("01C", "ficha.pdf", "La misma") +
           documento("01C", "otra.pdf", "Otra") +
           // One attribute, two of whose values share a picture.
           valores.SqlCategoria("01B", "COL") +
           valores.SqlValor("01B", "COL", "ROJ", 1, "1.5", "0.25", foto("azul.jpg")) +
           valores.SqlValor("01B", "COL", "AZU", 2, "0", "0", foto("azul.jpg")) +
           valores.SqlValor("01B", "COL", "VER", 3, "2") +
           // Two, without pictures.
           valores.SqlCategoria("01C", "COL") + valores.SqlCategoria("01C", "MED") +
           valores.SqlValor("01C", "COL", "ROJ", 1, "1") +
           valores.SqlValor("01C", "COL", "AZU", 2, "2") +
           valores.SqlValor("01C", "MED", "T2", 1, "0.5") +
           valores.SqlValor("01C", "MED", "T1", 2, "0") +
           // Three, with pictures in the first and in the last, one of them the article's own.
           valores.SqlCategoria("01D", "COL") + valores.SqlCategoria("01D", "MED") +
           valores.SqlCategoria("01D", "TEL") +
           valores.SqlValor("01D", "COL", "ROJ", 1, "1", "0", foto("rojo.jpg")) +
           valores.SqlValor("01D", "COL", "AZU", 2, "2") +
           valores.SqlValor("01D", "MED", "T1", 1, "0") +
           valores.SqlValor("01D", "MED", "T2", 2, "0.25") +
           valores.SqlValor("01D", "TEL", "LAN", 1, "0") +
           valores.SqlValor("01D", "TEL", "LIN", 2, "0.125", "0.5", foto("azul.jpg"));
}
