#include "e2e/faltas_apoyo.h"
#include "e2e/sentencias_esperadas.h"
#include <QCryptographicHash>
#include <QImage>
#include <QRandomGenerator>
#include <gmock/gmock.h>
#include <unistd.h>

namespace {

using Filas = std::vector<QStringList>;

/// What stands in the management database and can't be carried to the shop as it is.
class DatosMalos : public testing::Test {
  protected:
    TiendaDePrueba& tienda = TiendaDeFaltas();

    /// Two categories, of which the first one has two options.
    static QString SqlOpciones()
    {
        return "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('COL','Color');\n"
               "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('TEL','Tela');\n"
               "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES "
               "('COL','AZU','Azul');\n"
               "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES "
               "('COL','ROJ','Rojo');\n";
    }
    static QString SqlValor(const QString& codigo, const QString& categoria, const QString& valor,
                            int secuencia)
    {
        return "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,SECUENCIA,INC_PVP,PESO)"
               " VALUES ('" +
               codigo + "','" + categoria + "','" + valor + "'," + QString::number(secuencia) +
               ",0,0);\n";
    }
    static QString SqlDocumento(const QString& codigo, const QString& ruta,
                                const QString& descripcion)
    {
        return "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','" +
               codigo + "','" + ruta + "','" + descripcion + "');\n";
    }
    static QString Atributo(const QString& codigo, int n, const QString& atributo)
    {
        return Rellena(
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT {atributo},CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','{n}'),5))  From ps_product WHERE REFERENCE ='{codigo}'",
            {{"atributo", atributo}, {"n", Numero(n)}, {"codigo", codigo}});
    }
    /// The lines of the log behind the title of a batch, up to the next upload or step.
    static QStringList TrasElTitulo(const ResultadoCorrida& corrida, const QString& titulo,
                                    const QString& siguiente)
    {
        const QStringList tramo = Tramo(corrida.log, titulo, siguiente);
        return tramo.mid(1, tramo.size() - 2);
    }
};

// An option's number is its rank by code, so that of one that isn't there is its predecessor's.
TEST_F(DatosMalos, UnaOpcionQueFaltaEnSuMaestroTomaElAtributoDeLaAnterior)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlOpciones() + SqlCatalogo() + SqlValor("0101A", "COL", "NEG", 1) +
                SqlValor("0101A", "COL", "AAA", 2) + SqlValor("0101A", "COL", "ROJ", 3));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute_combination ")),
              EnLineas({Atributo("0101A", 1, "001001"), Atributo("0101A", 2, "001000"),
                        Atributo("0101A", 3, "001002")}));
    // The second one's combination stands in the shop with an attribute that the shop lacks.
    EXPECT_EQ(
        tienda.Sql(
            "SELECT c.id_product_attribute,c.id_attribute,l.name FROM ps_product_attribute_combination c LEFT JOIN ps_attribute_lang l USING (id_attribute) ORDER BY 1"),
        (Filas{
            {"100001", "1001", "Azul"}, {"100002", "1000", "NULL"}, {"100003", "1002", "Rojo"}}));
}

// Neither has it a number of its own: its options fall upon those of the category before it.
TEST_F(DatosMalos, UnaCategoriaQueFaltaEnSuMaestroTomaElRangoDeLaAnterior)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlOpciones() +
                "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES "
                "('MED','T1','Chico');\n" +
                SqlCatalogo() + SqlValor("0101A", "MED", "T1", 1) +
                SqlValor("0101A", "ZZZ", "T1", 1) + SqlArticulo("0101B") +
                SqlValor("0101B", "AAA", "T1", 1));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    // clang-format off
    EXPECT_EQ(EnLineas(TrasElTitulo(corrida, "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones", "CARGANDO FAMILIAS")),
              EnLineas(DetalleDeErrores({{"Duplicate entry '1001' for key 'PRIMARY'", "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (001001,1,'#000000',2)"},
                                {"Duplicate entry '1001-1' for key 'PRIMARY'", "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (001001,1,'Chico')"},
                                {"Duplicate entry '1001-1' for key 'PRIMARY'", "INSERT INTO ps_attribute_shop (ID_ATTRIBUTE,ID_SHOP) VALUES (001001,1)"}})));
    // clang-format on
    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute_combination ")),
              EnLineas({Atributo("0101A", 1, "001001"), Atributo("0101A", 1, "002000"),
                        Atributo("0101B", 1, "000000")}));
    EXPECT_EQ(tienda.Sql("SELECT id_product_attribute FROM ps_product_attribute ORDER BY 1"),
              (Filas{{"100001"}, {"200001"}}));
}

/// A configuration of the lots of an article with two combinations, blue and red.
struct CasoCadena {
    const char* cadena;                ///< Access literal
    QStringList atributos{};           ///< what it asks the shop for
    const char* error;                 ///< the server's text; empty when one combination answers
    const char* combinacion = "00001"; ///< its last five digits, then
};

const char* const VariasFilas = "Subquery returns more than 1 row";
const char* const SinFila = "Column 'id_product_attribute' cannot be null";

// Every "]" asks for an attribute, whatever stands before it; a text without any asks for nothing
// and meets all of the article's combinations.
TEST_F(DatosMalos, UnaCadenaVaciaOMalEscritaFallaSoloEnSuConfiguracion)
{
    const std::vector<CasoCadena> casos{{"Null", {}, VariasFilas},
                                        {"''", {}, VariasFilas},
                                        {"'COL:ROJ'", {}, VariasFilas},
                                        {"'[COL:ROJ'", {}, VariasFilas},
                                        {"'COL:ROJ]'", {"000000"}, SinFila},
                                        {"'[COL]'", {"001000"}, SinFila},
                                        {"'[COL:ROJ]]'", {"001002", "000000"}, SinFila},
                                        {"'[COL:NO]'", {"001001"}, ""},
                                        {"'[CO[L:ROJ]'", {"001002"}, "", "00002"},
                                        {"'[COL:ROJ][TEL:LAN]'", {"001002", "002000"}, SinFila}};
    EmpresaReal empresa(tienda, {{"PS_MODOCONFIGURADOR", "True"}});
    const QString anio = QString::number(QDate::currentDate().year());
    QString sql = SqlOpciones();
    QStringList esperadas;
    std::vector<std::pair<QString, QString>> errores;
    Filas filas;
    for (std::size_t i = 0; i < casos.size(); ++i) {
        const QString id = Numero(static_cast<int>(i) + 1);
        const QString codigo = "01" + id.rightJustified(2, u'0');
        sql +=
            SqlArticulo(codigo) +
            Rellena(
                "INSERT INTO CONF_ART_CAT (CODARTICULO,CODCATEGORIA,DESCRIPCION,TIPOVALOR) VALUES ('{c}','COL','Color','V');\n"
                "INSERT INTO CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,PVP1) VALUES ('{c}','COL','AZU',1,1,0);\n"
                "INSERT INTO CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,PVP1) VALUES ('{c}','COL','ROJ',2,2,0);\n"
                "INSERT INTO CONFCAD (CODARTICULO,ID,CADENA) VALUES ('{c}','000007',{cadena});\n"
                "INSERT INTO M_EXIST_LOTE (CODARTICULO,LOTE,IDCONF,ANIO,CODALMACEN,EXISTENCIAS) VALUES ('{c}','L','000007',{anio},'01',3);\n",
                {{"c", codigo}, {"cadena", casos[i].cadena}, {"anio", anio}});
        const QString sentencia =
            Lote({.id = id, .codigo = codigo}, "000007", casos[i].atributos, "3");
        esperadas << sentencia;
        if (*casos[i].error)
            errores.push_back({casos[i].error, sentencia});
        else
            filas.push_back({id + "000007", id + casos[i].combinacion, "3"});
    }
    empresa.Sql(sql);

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    QStringList deLotes;
    for (const QString& sentencia : corrida.Sentencias("INSERT INTO ps_stock_available "))
        if (sentencia.contains("(SELECT "))
            deLotes << sentencia;
    EXPECT_EQ(EnLineas(deLotes), EnLineas(esperadas));
    EXPECT_EQ(
        EnLineas(TrasElTitulo(corrida, "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                              "Error subiendo fichero " + empresa.Actual() + "\\creapath.txt")),
        EnLineas(DetalleDeErrores(errores)));
    EXPECT_EQ(
        tienda.Sql(
            "SELECT id_stock_available,id_product_attribute,quantity FROM ps_stock_available WHERE id_product_attribute>0 ORDER BY id_product"),
        filas);
}

TEST_F(DatosMalos, ConUnaSolaCombinacionLaCadenaVaciaLaEncuentra)
{
    EmpresaReal empresa(tienda, {{"PS_MODOCONFIGURADOR", "True"}});
    empresa.Sql(
        SqlOpciones() + SqlArticulo("01A") +
        "INSERT INTO CONF_ART_CAT (CODARTICULO,CODCATEGORIA,DESCRIPCION,TIPOVALOR) VALUES ('01A','COL','Color','V');\n"
        "INSERT INTO CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,PVP1) VALUES ('01A','COL','AZU',1,1,0);\n"
        "INSERT INTO CONFCAD (CODARTICULO,ID,CADENA) VALUES ('01A','000007','');\n"
        "INSERT INTO M_EXIST_LOTE (CODARTICULO,LOTE,IDCONF,ANIO,CODALMACEN,EXISTENCIAS) VALUES ('01A','L','000007'," +
        QString::number(QDate::currentDate().year()) + ",'01',3);\n");

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    EXPECT_EQ(
        tienda.Sql(
            "SELECT id_stock_available,id_product_attribute,quantity FROM ps_stock_available ORDER BY 1"),
        (Filas{{"1000000", "0", "0"}, {"1000007", "100001", "3"}}));
}

/// Pictures that can't be sent: one that isn't there, a folder, and one that may not be read; and a
/// good one behind them.
class FotosMalas : public DatosMalos {
  protected:
    EmpresaReal empresa{tienda};

    QString Ruta(const QString& nombre) const { return actual + "/" + nombre; }
    void SetUp() override
    {
        QImage foto(20, 20, QImage::Format_RGB32);
        foto.fill(Qt::red);
        for (const char* nombre : {"buena.jpg", "cerrada.jpg"})
            ASSERT_TRUE(foto.save(Ruta(nombre), "JPEG"));
        empresa.Carpeta().CreaCarpeta("carpeta.jpg");
        ASSERT_TRUE(QFile::setPermissions(Ruta("cerrada.jpg"), {}));
        // An administrator may read everything unless he gives that up.
        if (geteuid() == 0)
            empresa.delante = {"setpriv", "--bounding-set", "-dac_override,-dac_read_search"};
    }
    QStringList Fallida(const QString& nombre, const QString& remoto) const
    {
        return {"Subiendo imagen " + Ruta(nombre) + " -> " + remoto,
                "Error subiendo fichero " + Ruta(nombre), "ERROR SUBIENDO FICHERO " + remoto};
    }

    const QString actual = empresa.Actual();
};

// The rows of all four stand in the shop; the lists name what was to be sent, the unreadable too.
TEST_F(FotosMalas, DeArticuloDejanSusFilasSinFicheroYNoEstorbanALaSiguiente)
{
    empresa.Sql(SqlFamilia("01", 0, "Cocina") +
                SqlArticulo("0101A", {{"FOTO", "'" + Ruta("no hay.jpg") + "'"},
                                      {"FOTO2", "'" + Ruta("carpeta.jpg") + "'"},
                                      {"FOTO3", "'" + Ruta("cerrada.jpg") + "'"},
                                      {"FOTO4", "'" + Ruta("buena.jpg") + "'"}}));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(Tramo(corrida.log, "SUBIENDO FOTOS ARTICULOS...",
                             "Dimensionando rango de artículos subidos")),
              EnLineas(QStringList{"SUBIENDO FOTOS ARTICULOS..."} +
                       Fallida("cerrada.jpg", "3.jpg") +
                       QStringList{"Subiendo imagen " + Ruta("buena.jpg") + " -> 4.jpg",
                                   "Dimensionando rango de artículos subidos"}));
    EXPECT_EQ(
        EnLineas(Tramo(PasosFtp(corrida.ftp), "STOR 3.jpg", "STOR imgart.txt")),
        EnLineas({"STOR 3.jpg", "sesion", "STOR 4.jpg", "DELE imgart.txt", "STOR imgart.txt"}));
    EXPECT_EQ(corrida.Lineas("creapath.txt"), (QStringList{"3;", "4;"}));
    EXPECT_EQ(EnLineas(corrida.Lineas("imgart.txt")), EnLineas(LineasDeSubidas({"3", "4"})));
    EXPECT_EQ(tienda.Sql("SELECT id_image,position FROM ps_image ORDER BY 1"),
              (Filas{{"1", "1"}, {"2", "2"}, {"3", "3"}, {"4", "4"}}));
    EXPECT_TRUE(tienda.ExisteFichero("img/p/4/4.jpg"));
    EXPECT_TRUE(tienda.ExisteFichero("img/p/4/4-home_default.jpg"));
    // Of the third the server got a beginning without anything in it, and made no sizes.
    EXPECT_EQ(EnLineas(tienda.Ficheros("img/p").filter("/3-")), "");
    EXPECT_FALSE(tienda.ExisteFichero("img/p/3/3.jpg"));
}

// Those of families are not looked for beforehand.
TEST_F(FotosMalas, DeFamiliaSeIntentanTodasYNoEstorbanALaSiguiente)
{
    empresa.Sql(SqlFamilia("01", 0, "Uno", {{"FOTO", "'" + Ruta("no hay.jpg") + "'"}}) +
                SqlFamilia("02", 0, "Dos", {{"FOTO", "'" + Ruta("carpeta.jpg") + "'"}}) +
                SqlFamilia("03", 0, "Tres", {{"FOTO", "'" + Ruta("cerrada.jpg") + "'"}}) +
                SqlFamilia("04", 0, "Cuatro", {{"FOTO", "'" + Ruta("buena.jpg") + "'"}}));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(Tramo(corrida.log, "SUBIENDO FOTOS FAMILIAS...",
                             "Dimensionando rango de familias subidas")),
              EnLineas(QStringList{"SUBIENDO FOTOS FAMILIAS..."} + Fallida("no hay.jpg", "3.jpg") +
                       Fallida("carpeta.jpg", "4.jpg") + Fallida("cerrada.jpg", "5.jpg") +
                       QStringList{"Subiendo imagen " + Ruta("buena.jpg") + " -> 6.jpg",
                                   "Dimensionando rango de familias subidas"}));
    EXPECT_EQ(corrida.Lineas("imgfam.txt"),
              (QStringList{"img/c/3.jpg;", "img/c/4.jpg;", "img/c/5.jpg;", "img/c/6.jpg;"}));
    EXPECT_TRUE(tienda.ExisteFichero("img/c/6-category_default.jpg"));
}

/// A photo as no camera makes a larger one: 6000 by 4000, and no two neighbouring pixels alike.
QByteArray FotoEnorme(const QString& ruta)
{
    QImage foto(6000, 4000, QImage::Format_RGB32);
    QRandomGenerator dado(7);
    for (int y = 0; y < foto.height(); ++y)
        dado.fillRange(reinterpret_cast<quint32*>(foto.scanLine(y)), foto.width());
    foto.save(ruta, "JPEG", 98);
    QFile fichero(ruta);
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

TEST_F(DatosMalos, UnaFotoDeTreintaMegasLlegaEnteraYConSusTamanos)
{
    EmpresaReal empresa(tienda);
    const QByteArray enorme = FotoEnorme(empresa.Actual() + "/enorme.jpg");
    ASSERT_GT(enorme.size(), 30 * 1000 * 1000);
    empresa.Sql(SqlFamilia("01", 0, "Cocina") +
                SqlArticulo("0101A", {{"FOTO", "'" + empresa.Actual() + "/enorme.jpg'"}}));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(
        EnLineas(Tramo(corrida.log, "SUBIENDO FOTOS ARTICULOS...", "BORRANDO CACHÉ DE PRESTASHOP")),
        EnLineas({"SUBIENDO FOTOS ARTICULOS...",
                  "Subiendo imagen " + empresa.Actual() + "/enorme.jpg -> 1.jpg",
                  "Dimensionando rango de artículos subidos", "BORRANDO CACHÉ DE PRESTASHOP"}));
    EXPECT_TRUE(tienda.LeeFichero("img/p/1/1.jpg") == enorme);
    for (const char* tamano : {"cart", "home", "large", "medium", "small", "thickbox"})
        EXPECT_TRUE(tienda.ExisteFichero(QString("img/p/1/1-%1_default.jpg").arg(tamano)))
            << tamano;
}

/// A document that isn't there any more, or whose path leads to a folder.
class DocumentoPerdido : public DatosMalos, public testing::WithParamInterface<const char*> {};

TEST_P(DocumentoPerdido, AcabaLaCorridaYLaSiguienteEmpiezaDeCero)
{
    EmpresaReal empresa(tienda);
    const QString ficha = empresa.Actual() + "/ficha.pdf";
    const QString perdido = empresa.Actual() + "/" + GetParam();
    empresa.Carpeta().Escribe("ficha.pdf", "Ficha");
    empresa.Carpeta().CreaCarpeta("carpeta.pdf");
    QImage foto(20, 20, QImage::Format_RGB32);
    foto.fill(Qt::red);
    ASSERT_TRUE(foto.save(empresa.Actual() + "/rojo.jpg", "JPEG"));
    empresa.Sql(SqlFamilia("01", 0, "Cocina") +
                SqlArticulo("0101A", {{"FOTO", "'" + empresa.Actual() + "/rojo.jpg'"}}) +
                SqlDocumento("0101A", ficha, "Ficha") + SqlDocumento("0101A", perdido, "Perdido"));

    const ResultadoCorrida corrida = empresa.Corre();
    const QStringList lote =
        QString::fromLatin1(empresa.Carpeta().Lee("sentencias.sql")).split("\r\n");
    const QStringList temporales = TablasTemporales(empresa);
    const ResultadoCorrida siguiente = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    // The batch of the documents stays here; nothing comes behind them, the pictures neither.
    EXPECT_EQ(EnLineas(corrida.log.mid(corrida.log.indexOf("SUBIENDO FICHEROS ADJUNTOS..."))),
              EnLineas({"SUBIENDO FICHEROS ADJUNTOS...", "Subiendo adjunto " + ficha, ""}));
    EXPECT_EQ(corrida.http.last(), "GET /borracache.php 200");
    EXPECT_EQ(
        EnLineas(lote),
        EnLineas(
            {"INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (1,'ficha.pdf','ficha.pdf',5,'" +
                 ficha + "')||",
             "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'ficha.pdf','Ficha')||",
             "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,1)||", ""}));
    EXPECT_EQ(temporales.size(), TablasALaVista(1));
    // What had been sent stays, and nobody looks at it again: only the log tells.
    EXPECT_EQ(siguiente.estado, 0);
    EXPECT_EQ(EnLineas(siguiente.log.filter("rticulo 0101A")), "");
    EXPECT_FALSE(empresa.Carpeta().Existe("sentencias.sql"));
    EXPECT_EQ(tienda.Sql("SELECT reference FROM ps_product"), (Filas{{"0101A"}}));
    EXPECT_EQ(tienda.Sql("SELECT id_image FROM ps_image"), (Filas{{"1"}}));
    EXPECT_EQ(tienda.Sql("SELECT id_attachment FROM ps_attachment"), Filas{});
    EXPECT_EQ(tienda.LeeFichero("download/ficha.pdf"), "Ficha");
    EXPECT_FALSE(tienda.ExisteFichero("img/p/1/1.jpg"));
}

INSTANTIATE_TEST_SUITE_P(Rutas, DocumentoPerdido, testing::Values("perdido.pdf", "carpeta.pdf"),
                         [](const auto& caso) {
                             return caso.param == std::string("perdido.pdf") ? "QueNoEsta"
                                                                             : "QueEsUnaCarpeta";
                         });

// clang-format off
// Quotes are replaced in the texts of families and articles alone. Each of these breaks its own
// sentence, the server's text reaches the log, and all else is sent.
TEST_F(DatosMalos, UnaComillaDondeNoSeCambiaRompeSoloSuSentencia)
{
    EmpresaReal empresa(tienda, {{"PSGRUPOMARCAS", "'1'"}});
    const QString ficha = empresa.Actual() + "/ficha.pdf";
    empresa.Carpeta().Escribe("ficha.pdf", "Ficha");
    empresa.Sql("INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (1,7,'d''Hondt');\n"
                "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('COL','d''Ampla');\n"
                "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ('COL','AZU','d''Aigua');\n" +
                SqlFamilia("01", 0, "Cocina") + SqlArticulo("0101A", {{"CODALTERNATIVO", "'d''Alt'"}}) + SqlDocumento("0101A", ficha, "d''Uso"));

    const ResultadoCorrida corrida = empresa.Corre();

    const QString hoy = HoyMysql();
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(TrasElTitulo(corrida, "SINCRONIZANDO MARCAS FABRICANTES", "Comprobando articulos que ya no estan...")),
              EnLineas(DetalleDeErrores({{ErrorDeSintaxis("Hondt'," + hoy + "," + hoy + ",1)"), "INSERT INTO ps_manufacturer (id_manufacturer,name,date_add,date_upd,active) VALUES (7,'d'Hondt'," + hoy + "," + hoy + ",1)"},
                                {ErrorDeSintaxis("Hondt','d'Hondt','d'Hondt','d'Hondt','d'Hondt')"), "INSERT INTO ps_manufacturer_lang (id_manufacturer,id_lang,description,short_description,meta_title,meta_keywords,meta_description) VALUES (7,1,'d'Hondt','d'Hondt','d'Hondt','d'Hondt','d'Hondt')"}})));
    EXPECT_EQ(EnLineas(TrasElTitulo(corrida, "EJECUTANDO REMOTAMENTE Creando Tabla maestra de atributos", "SUBIENDO FICHERO sentencias.sql")),
              EnLineas(DetalleDeErrores({{ErrorDeSintaxis("Ampla','d'Ampla')"), "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (1,1,'d'Ampla','d'Ampla')"}})));
    EXPECT_EQ(EnLineas(TrasElTitulo(corrida, "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones", "CARGANDO FAMILIAS")),
              EnLineas(DetalleDeErrores({{ErrorDeSintaxis("Aigua')"), "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (001001,1,'d'Aigua')"}})));
    EXPECT_EQ(EnLineas(TrasElTitulo(corrida, "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)", "Error subiendo fichero " + empresa.Actual() + "\\creapath.txt")),
              EnLineas(DetalleDeErrores({{ErrorDeSintaxis("Alt',NULL,1.25,1,1,0,0,0,0,1,0," + hoy + "," + hoy + ",'1')"), "INSERT INTO ps_product (id_product,id_supplier,id_manufacturer,id_tax_rules_group,id_category_default,on_sale,ean13,ecotax,quantity,price,wholesale_price,reference,supplier_reference,location,weight,min"}})));
    EXPECT_EQ(EnLineas(TrasElTitulo(corrida, "EJECUTANDO REMOTAMENTE actualización de adjuntos", "SUBIENDO FOTOS ARTICULOS...")),
              EnLineas(DetalleDeErrores({{ErrorDeSintaxis("Uso')"), "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'ficha.pdf','d'Uso')"}})));
    EXPECT_EQ(tienda.Sql("SELECT id_manufacturer FROM ps_manufacturer_shop"), (Filas{{"7"}}));
    EXPECT_EQ(tienda.Sql("SELECT id_attribute_group FROM ps_attribute_group"), (Filas{{"1"}}));
    EXPECT_EQ(tienda.Sql("SELECT id_attribute FROM ps_attribute"), (Filas{{"1001"}}));
    EXPECT_EQ(tienda.Sql("SELECT name FROM ps_product_lang"), (Filas{{"Art 0101A"}}));
    EXPECT_EQ(tienda.Sql("SELECT file FROM ps_attachment"), (Filas{{"ficha.pdf"}}));
}

/// A quote that breaks a query, and the query.
struct CasoConsulta {
    const char* regla;
    const char* sql;
    const char* consulta;
};
void PrintTo(const CasoConsulta& caso, std::ostream* salida)
{
    *salida << caso.regla;
}

class ComillaEnConsulta : public DatosMalos, public testing::WithParamInterface<CasoConsulta> {};

// No sentence of the batch but a query: it closes the program, what was sent stays.
TEST_P(ComillaEnConsulta, CierraElPrograma)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo() + GetParam().sql);

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_THAT(corrida.errores.toStdString(), testing::StartsWith("ERROR: "));
    EXPECT_THAT(corrida.errores.toStdString(), testing::EndsWith("\n" + QString(GetParam().consulta).toStdString() + CierreDePrograma.toStdString()));
    EXPECT_EQ(EnLineas(corrida.log.filter("FIN VUELCO")), "");
    EXPECT_EQ(tienda.Sql("SELECT kov_familia FROM ps_category WHERE id_category>2"), (Filas{{"01"}}));
}

INSTANTIATE_TEST_SUITE_P(Datos, ComillaEnConsulta, testing::Values(
    CasoConsulta{"EnUnCodigoDeArticulo", "UPDATE M_ARTIC SET CODARTICULO='01''A';\n",
                 "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='01'A'"},
    CasoConsulta{"EnUnaEtiqueta", "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,TAG) VALUES ('000001',1,'ETIQUETAS');\nUPDATE M_ARTIC SET ETIQUETAS='d''or,';\n",
                 "SELECT * FROM ps_tag WHERE id_lang=1 AND name='d'or'"},
    CasoConsulta{"EnLaRutaDeUnDocumento", "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','0101A','C:\\d''or.pdf','x');\n",
                 "SELECT id_attachment from ps_attachment where mime='C:\\d'or.pdf'"}),
    [](const auto& caso) { return caso.param.regla; });
// clang-format on

} // namespace
