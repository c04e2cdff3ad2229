#include "e2e/casa_entera.h"
#include "e2e/sentencias_esperadas.h"
#include "e2e/ventana_real.h"
#include <QImage>
#include <gtest/gtest.h>
#include <map>
#include <memory>

namespace {

using namespace tolmo;
using Filas = std::vector<QStringList>;

/// A generation of the shop, and whether the values come from the management program.
template <class FormaDeTienda, bool DeLaGestion> struct Variante {
    using Tienda = FormaDeTienda;
    static constexpr bool Gestion = DeLaGestion;
};

/// What stands in the shop between two runs: rows by subject, and the pictures.
struct Vista {
    std::map<QString, Filas> filas{};
    QStringList fotos{};
};

/// A house with everything, through all modes of the command line and all buttons, one after the
/// other on one shop: each run starts from what the ones before have left.
template <class V> struct CasaEntera : testing::Test {
    using Tienda = typename V::Tienda;
    using DeTienda = Formas<Tienda>;

    static void SetUpTestSuite()
    {
        tienda = &TiendaComun(Tienda::Opciones());
        empresa = std::make_unique<EmpresaReal>(
            *tienda, QMap<QString, QString>{{"PS_MODOCONFIGURADOR", V::Gestion ? "True" : "False"},
                                            {"PSGRUPOMARCAS", "'1'"},
                                            {"CAMPOFAMALT", "'OTRASFAM'"}});
        EscribeFoto("rojo.jpg", Qt::red);
        EscribeFoto("azul.jpg", Qt::blue);
        EscribeFoto("verde.jpg", Qt::green);
        empresa->Carpeta().Escribe("ficha.pdf", "Ficha");
        empresa->Carpeta().Escribe("otra.pdf", "Otra");
        empresa->Sql(SqlDeLaCasa(empresa->Actual(), valores));
        CorreLosModos();
        PulsaLosBotones();
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static void CorreLosModos()
    {
        carga = empresa->Corre();
        trasCarga = Mira();

        empresa->Sql(SqlDeCambios());
        viejas["cambios"] = ImagenesEnSuOrden({"01A", "01B"});
        cambios = empresa->Corre();
        trasCambios = Mira();

        empresa->Sql(SqlSoloCambia("01D") + SqlExistencias("01D", "9"));
        viejas["soloArtic"] = ImagenesEnSuOrden({"01D"});
        soloArtic = empresa->Corre("/SOLOARTIC:000001");

        empresa->Sql(SqlExistencias("01D", "11"));
        viejas["sinStock"] = ImagenesEnSuOrden({"01D"});
        sinStock = empresa->Corre("/SOLOARTIC_SIN_STOCK:000001");
        trasSinStock = Mira();

        empresa->Sql(SqlExistencias("01A", "70") +
                     SqlArticulo("01F", {{"FOTO", Foto("rojo.jpg")}}) +
                     valores.SqlCategoria("01F", "COL") +
                     valores.SqlValor("01F", "COL", "ROJ", 1, "3", "0", Foto("rojo.jpg")) +
                     "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA) VALUES ('AR','W','01F'," +
                     Foto("otra.pdf") + ");\n");
        stock = empresa->Corre("/STOCK:000001");
        trasStock = Mira();
    }
    static void PulsaLosBotones()
    {
        using sync::Proceso;
        VentanaReal ventana(*empresa);
        empresa->Sql("UPDATE M_ARTIC SET ACTIVOWEB='N' WHERE CODARTICULO='01E';\n");
        viejas["articulos"] = ImagenesEnSuOrden({"01B", "01D"});
        articulos = ventana.Pulsa({.proceso = Proceso::Articulos,
                                   .desde = "01B",
                                   .hasta = "01D",
                                   .fotosArt = true,
                                   .adjuntos = true,
                                   .stock = true,
                                   .eliminaEnRango = true});
        trasArticulos = Mira();
        familias = ventana.Pulsa({.proceso = Proceso::Familias, .fotosFam = true});
        botonStock = ventana.Pulsa({.proceso = Proceso::Stock, .stock = true});
        empresa->Sql("INSERT INTO VALESDTO (CODVALE,CODARTICULOVALE,CODCLIENTE,ESTADO,TIPODTO,"
                     "VALOR,DESCRIPCION,FECHADESDE,FECHAHASTA,NUSOS) VALUES ('V10','VALE',Null,'1',"
                     "'D',10,'Verano',#01/02/2024#,#12/31/2024#,5);\n");
        vales = ventana.Pulsa({.proceso = Proceso::Vales});
        alFinal = Mira();
    }

    static void EscribeFoto(const QString& nombre, const QColor& color)
    {
        QImage foto(40, 20, QImage::Format_RGB32);
        foto.fill(color);
        ASSERT_TRUE(foto.save(empresa->Actual() + "/" + nombre, "JPEG"));
    }
    static QString Ruta(const QString& nombre) { return empresa->Actual() + "/" + nombre; }
    static QString Foto(const QString& nombre) { return "'" + Ruta(nombre) + "'"; }

    /// One article changes its pictures, one its values, one goes and one comes; a family changes
    /// its picture, one loses it, and a third one comes without any.
    static QString SqlDeCambios()
    {
        const QString cambiaFoto =
            "UPDATE " + valores.Tabla() + " SET " + valores.ColumnaFoto() + "=";
        const QString deB = " WHERE CODARTICULO='01B' AND VALOR=";
        return "UPDATE M_ARTIC SET DESCRIPCION='Nuevo A',FOTO=" + Foto("verde.jpg") +
               ",FOTO2=Null,FECHAMODIFICACION=Null WHERE CODARTICULO='01A';\n"
               "UPDATE M_ARTIC SET FECHAMODIFICACION=Null WHERE CODARTICULO='01B';\n"
               "UPDATE M_ARTIC SET ACTIVOWEB='N' WHERE CODARTICULO='01C';\n"
               "DELETE FROM " +
               valores.Tabla() + deB + "'VER';\n" + cambiaFoto + Foto("verde.jpg") + deB +
               "'ROJ';\n" + cambiaFoto + "Null" + deB + "'AZU';\n" +
               "UPDATE M_FAMILIA SET FOTO=" + Foto("verde.jpg") + " WHERE CLAVE='01';\n" +
               "UPDATE M_FAMILIA SET FOTO=Null WHERE CLAVE='0101';\n" +
               SqlFamilia("02", 0, "Jardin") + SqlExistencias("01A", "8") +
               SqlArticulo("01E", {{"FOTO", Foto("rojo.jpg")}}) +
               valores.SqlCategoria("01E", "COL") + valores.SqlValor("01E", "COL", "VER", 1, "2");
    }
    static QString SqlSoloCambia(const QString& codigo)
    {
        return "UPDATE M_ARTIC SET FECHAMODIFICACION=#01/10/2020#;\n"
               "UPDATE M_ARTIC SET FECHAMODIFICACION=Null WHERE CODARTICULO='" +
               codigo + "';\n";
    }
    static QString SqlExistencias(const QString& codigo, const QString& cantidad)
    {
        return "UPDATE M_EXIST SET EXISTENCIAS=" + cantidad + " WHERE CODARTICULO='" + codigo +
               "';\n";
    }

    /// The pictures that the shop has of each article, in the order in which it gives them to who
    /// asks without one.
    static QMap<QString, QStringList> ImagenesEnSuOrden(const QStringList& codigos)
    {
        QMap<QString, QStringList> imagenes;
        for (const QString& codigo : codigos)
            for (
                const QStringList& fila : tienda->Sql(
                    "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='" +
                    codigo + "'"))
                imagenes[codigo] << fila[2];
        return imagenes;
    }
    /// Those that a run found, which are these in some order.
    static QStringList Viejas(const QString& corrida, const QString& codigo,
                              const QStringList& imagenes)
    {
        QStringList ordenadas = viejas[corrida][codigo];
        ordenadas.sort();
        QStringList esperadas = imagenes;
        esperadas.sort();
        EXPECT_EQ(ordenadas, esperadas) << corrida.toStdString();
        return viejas[corrida][codigo];
    }

    static Vista Mira()
    {
        Vista vista{.filas = {}, .fotos = tienda->Ficheros("img").filter(".jpg")};
        // clang-format off
        for (const QStringList& fila : tienda->Sql(
                 "SELECT 'producto',id_product,reference,id_category_default,id_manufacturer FROM ps_product ORDER BY id_product;"
                 "SELECT 'texto',id_product,name,link_rewrite,description FROM ps_product_lang ORDER BY id_product;"
                 "SELECT 'enlace',id_product,id_category FROM ps_category_product ORDER BY id_product,id_category;"
                 "SELECT 'etiqueta',p.id_product,t.name FROM ps_product_tag p JOIN ps_tag t USING (id_tag) ORDER BY p.id_product,t.id_tag;"
                 "SELECT 'precio',id_product,COUNT(*),MIN(id_specific_price),MAX(id_specific_price) FROM ps_specific_price GROUP BY id_product ORDER BY id_product;"
                 "SELECT 'combinacion',a.id_product,a.id_product_attribute,GROUP_CONCAT(t.name ORDER BY t.id_attribute),a.price,s.price,a.weight,a.default_on FROM ps_product_attribute a JOIN ps_product_attribute_shop s ON s.id_product_attribute=a.id_product_attribute JOIN ps_product_attribute_combination c ON c.id_product_attribute=a.id_product_attribute JOIN ps_attribute_lang t USING (id_attribute) GROUP BY a.id_product_attribute ORDER BY a.id_product_attribute;"
                 "SELECT 'imagen',id_image,id_product,position,cover FROM ps_image ORDER BY id_image;"
                 "SELECT 'imagenDeCombinacion',id_product_attribute,id_image FROM ps_product_attribute_image ORDER BY 2,3;"
                 "SELECT 'existencia',id_stock_available,id_product,id_product_attribute,quantity FROM ps_stock_available ORDER BY id_stock_available;"
                 "SELECT 'familia',id_category,id_parent,nleft,nright,level_depth,kov_familia FROM ps_category ORDER BY id_category;"
                 "SELECT 'adjunto',a.id_attachment,a.file,p.id_product FROM ps_attachment a LEFT JOIN ps_product_attachment p USING (id_attachment) ORDER BY a.id_attachment,p.id_product;"
                 "SELECT 'marca',id_manufacturer,name FROM ps_manufacturer;"
                 "SELECT 'vale',id_cart_rule,code FROM ps_cart_rule"))
            vista.filas[fila[0]].push_back(fila.mid(1));
        // clang-format on
        return vista;
    }

    /// The files of pictures in their folders, each with all the sizes of its kind.
    static QStringList FotosEnSusTamanos(const QStringList& familias, const QStringList& imagenes)
    {
        QStringList ficheros;
        const auto anade = [&ficheros](const QString& base, const QStringList& tamanos) {
            ficheros << base + ".jpg";
            for (const QString& tamano : tamanos)
                ficheros << base + "-" + tamano + "_default.jpg";
        };
        for (const QString& id : familias)
            anade("img/c/" + id, Tienda::TamanosDeFamilia());
        for (const QString& img : imagenes)
            anade("img/p/" + CarpetaDeImagen(img) + "/" + img, Tienda::Tamanos());
        ficheros.sort();
        return ficheros;
    }
    /// The middle of a picture in the shop.
    static QColor ColorDe(const QString& fichero)
    {
        QImage foto;
        foto.loadFromData(tienda->LeeFichero(fichero), "JPEG");
        return foto.pixelColor(foto.width() / 2, foto.height() / 2);
    }
    static bool EsVerde(const QString& fichero)
    {
        const QColor color = ColorDe(fichero);
        return color.green() > 200 && color.red() < 60 && color.blue() < 60;
    }

    // What the articles make.

    static QString Peso(const QString& peso) { return valores.Peso(peso); }
    /// The rows of lots are written only for the configurations of the management program.
    static QStringList LoteDe(const ProductoEsperado& producto, const QString& idconf,
                              const QStringList& atributos, const QString& cantidad)
    {
        if (!V::Gestion)
            return {};
        return {Lote(producto, idconf, atributos, cantidad)};
    }
    static QStringList ExistenciasDeB()
    {
        return Existencias("2", "6") + LoteDe(B, "000001", {"001002"}, "2");
    }
    static QStringList ExistenciasDeD(const QString& cantidad)
    {
        return Existencias("4", cantidad) +
               LoteDe(D, "000003", {"001002", "002001", "003002"}, "1");
    }
    static std::vector<CombinacionEsperada> CombinacionesDeD(const QString& roja,
                                                             const QString& azul)
    {
        const ValorEsperado rojo{"001002", roja};
        const ValorEsperado azulado{"001001"};
        const ValorEsperado chico{"002001"}, grande{"002002"}, lana{"003001"}, lino{"003002", azul};
        const ValorEsperado rojoNuevo{"001002", roja, true}, linoNuevo{"003002", azul, true};
        const QString medio = Peso("0.5");
        return {{{rojoNuevo, chico, lana}, "1", "0"},   {{rojo, chico, linoNuevo}, "1.125", medio},
                {{rojo, grande, lana}, "1.25", "0"},    {{rojo, grande, lino}, "1.375", medio},
                {{azulado, chico, lana}, "2", "0"},     {{azulado, chico, lino}, "2.125", medio},
                {{azulado, grande, lana}, "2.25", "0"}, {{azulado, grande, lino}, "2.375", medio}};
    }
    /// Its three pictures are numbered from `primera`, its prices behind `n`.
    static QStringList CambioDeD(const QStringList& quitadas, int primera, int n,
                                 const QStringList& existencias)
    {
        return D.Cambio() + BorraImagenes(quitadas) + DeTienda::Foto(D, Numero(primera), 1) +
               QStringList{"DELETE FROM ps_category_product where id_product=4", Enlace("3", "4")} +
               DeTienda::BorraPrecios(D) + DeTienda::Tarifas(D, n) +
               DeTienda::BorraCombinaciones(D) +
               DeTienda::Combinaciones(D,
                                       CombinacionesDeD(Numero(primera + 1), Numero(primera + 2))) +
               existencias + QStringList{"DELETE FROM ps_product_attachment WHERE id_product=4"};
    }
    /// With one value less than at first, and a picture for the first one alone.
    static QStringList CambioDeB(const QStringList& quitadas, int primera, int n)
    {
        return B.Cambio() + BorraImagenes(quitadas) + DeTienda::Foto(B, Numero(primera), 1) +
               QStringList{"DELETE FROM ps_category_product where id_product=2", Enlace("3", "2")} +
               DeTienda::BorraPrecios(B) + DeTienda::TarifasYOferta(B, n) +
               DeTienda::BorraCombinaciones(B) +
               DeTienda::Combinaciones(
                   B, {{{{"001002", Numero(primera + 1), true}}, "1.5", Peso("0.25")},
                       {{{"001001"}}, "0", "0"}}) +
               ExistenciasDeB() +
               QStringList{Enlace("4", "2"),
                           "DELETE FROM ps_product_attachment WHERE id_product=2"};
    }

    // What the runs say.

    static QStringList LogDeMarcas()
    {
        return {"CARGANDO MARCAS FABRICANTES", "SUBIENDO FICHERO sentencias.sql",
                "SINCRONIZANDO MARCAS FABRICANTES"};
    }
    static QStringList LogDeMaestros()
    {
        return {"Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                "CARGANDO TABLA ATRIBUTOS Y VALORES",
                "SUBIENDO FICHERO sentencias.sql",
                "EJECUTANDO REMOTAMENTE Creando Tabla maestra de atributos",
                "SUBIENDO FICHERO sentencias.sql",
                "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones"};
    }
    static QStringList LogDeFamilias(const QStringList& claves)
    {
        QStringList log{"CARGANDO FAMILIAS", "Recopilando información de categorías"};
        for (const QString& clave : claves)
            log << "Actualizando Familia " + clave;
        return log << "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."
                   << "SUBIENDO FICHERO sentencias.sql"
                   << "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin";
    }
    /// A batch that has nothing in it.
    static QStringList LogDeLoteVacio(const QString& titulo)
    {
        return {"SUBIENDO FICHERO ", titulo,
                "Error subiendo fichero " + empresa->Actual() + "\\sentencias.sql",
                "ERROR SUBIENDO FICHERO sentencias.sql"};
    }
    static QStringList LogSinFamilias()
    {
        return QStringList{"ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."} +
               LogDeLoteVacio("EJECUTANDO REMOTAMENTE Actualización de familias ...Fin");
    }
    static QStringList LogDeArticulos(const QStringList& lineas)
    {
        return QStringList{"Actualizando y modificando articulos"} + lineas +
               QStringList{"SUBIENDO FICHERO sentencias.sql",
                           "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"};
    }
    static QStringList LogDeFotos(const QString& comienzo, const QStringList& subidas,
                                  const QString& final)
    {
        QStringList log{comienzo};
        for (const QString& subida : subidas)
            log << "Subiendo imagen " + Ruta(subida);
        return log << final;
    }
    static QStringList LogDeFotosFamilias(const QStringList& subidas)
    {
        return LogDeFotos("SUBIENDO FOTOS FAMILIAS...", subidas,
                          "Dimensionando rango de familias subidas");
    }
    static QStringList LogDeFotosArticulos(const QStringList& subidas)
    {
        return LogDeFotos("SUBIENDO FOTOS ARTICULOS...", subidas,
                          "Dimensionando rango de artículos subidos");
    }
    static QStringList LogDeCierre()
    {
        return {"REGENERANDO INDICES DE BÚSQUEDA...", "ELIMINANDO FOTOS ANTIGUAS..."};
    }

    // What they do by FTP.

    static QStringList PasosVacios() { return PasosDeLote().mid(0, 4); }
    static QStringList PasosDe(const QString& lista) { return {"DELE " + lista, "STOR " + lista}; }
    static QStringList PasosDeArticulos()
    {
        return QStringList{"sesion"} + PasosDeLote() + PasosDe("creapath.txt") +
               QStringList{"sesion"} + PasosDe("imgborra.txt");
    }
    static QStringList PasosDeFotos(const QStringList& nombres, const QString& lista)
    {
        QStringList pasos{"sesion"};
        for (const QString& nombre : nombres)
            pasos << "STOR " + nombre + ".jpg";
        return pasos + PasosDe(lista) + QStringList{"sesion"};
    }
    static QStringList Peticiones(const QStringList& paginas)
    {
        QStringList peticiones;
        for (const QString& pagina : paginas)
            peticiones << "GET /" + pagina + " 200";
        return peticiones;
    }

    static inline const OrigenDeValores valores{V::Gestion};
    static inline const ProductoEsperado A{"1", "01A", "Art 01A", "art-01a", "7"};
    static inline const ProductoEsperado B{"2", "01B", "Art 01B", "art-01b"};
    static inline const ProductoEsperado C{"3", "01C", "Art 01C", "art-01c"};
    static inline const ProductoEsperado D{"4", "01D", "Art 01D", "art-01d"};
    static inline const ProductoEsperado E{"5", "01E", "Art 01E", "art-01e"};
    static inline const ProductoEsperado G{"6", "01F", "Art 01F", "art-01f"};
    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida carga{}, cambios{}, soloArtic{}, sinStock{}, stock{};
    static inline ResultadoCorrida articulos{}, familias{}, botonStock{}, vales{};
    static inline Vista trasCarga{}, trasCambios{}, trasSinStock{}, trasStock{}, trasArticulos{},
        alFinal{};
    /// By run and article.
    static inline std::map<QString, QMap<QString, QStringList>> viejas{};
};

class NombreDeVariante {
  public:
    template <class T> static std::string GetName(int i)
    {
        constexpr const char* nombres[] = {"1_5_6",         "1_6_0_14",         "1_6_1",
                                           "1_5_6_Gestion", "1_6_0_14_Gestion", "1_6_1_Gestion"};
        return nombres[i];
    }
};
using Variantes = testing::Types<Variante<Tienda156, false>, Variante<Tienda160Con, false>,
                                 Variante<Tienda161, false>, Variante<Tienda156, true>,
                                 Variante<Tienda160Con, true>, Variante<Tienda161, true>>;
TYPED_TEST_SUITE(CasaEntera, Variantes, NombreDeVariante);

TYPED_TEST(CasaEntera, TodasLasCorridasTerminanYNingunaSentenciaFalla)
{
    for (const ResultadoCorrida& corrida :
         {this->carga, this->cambios, this->soloArtic, this->sinStock, this->stock, this->articulos,
          this->familias, this->botonStock, this->vales}) {
        EXPECT_EQ(corrida.estado, 0);
        EXPECT_EQ(corrida.errores, "");
        EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    }
}

// The first load.

TYPED_TEST(CasaEntera, LaCargaEnviaLosMaestrosYLasFamiliasEnSusLotes)
{
    ASSERT_EQ(this->carga.lotes.size(), 6);
    EXPECT_EQ(EnLineas(this->carga.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(this->carga.SentenciasDe(1)), EnLineas(SentenciasDeGrupos()));
    EXPECT_EQ(EnLineas(this->carga.SentenciasDe(2)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(EnLineas(this->carga.SentenciasDe(3)), EnLineas(SentenciasDeFamilias(false)));
}

TYPED_TEST(CasaEntera, LaCargaInsertaLosArticulosConSusCombinaciones)
{
    using Casa = CasaEntera<TypeParam>;
    using F = typename Casa::DeTienda;
    const QStringList deA =
        Casa::A.Alta() + QStringList{Etiqueta("1", "rojo"), Etiqueta("1", "azul")} +
        F::Foto(Casa::A, "1", 1) + F::Foto(Casa::A, "2", 2) + QStringList{Enlace("3", "1")} +
        F::Tarifas(Casa::A, 0) + Existencias("1", "7") + QStringList{Enlace("2", "1")};
    const QStringList deB =
        Casa::B.Alta() + F::Foto(Casa::B, "3", 1) + QStringList{Enlace("3", "2")} +
        F::TarifasYOferta(Casa::B, 5) +
        F::Combinaciones(Casa::B, {{{{"001002", "4", true}}, "1.5", Casa::Peso("0.25")},
                                   {{{"001001", "4"}}, "0", "0"},
                                   {{{"001003"}}, "2", "0"}}) +
        Casa::ExistenciasDeB() + QStringList{Enlace("4", "2")};
    const QStringList deC =
        Casa::C.Alta() + QStringList{Enlace("3", "3")} + F::Tarifas(Casa::C, 14) +
        F::Combinaciones(Casa::C, {{{{"001002"}, {"002002"}}, "1.5", "0"},
                                   {{{"001002"}, {"002001"}}, "1", "0"},
                                   {{{"001001"}, {"002002"}}, "2.5", "0"},
                                   {{{"001001"}, {"002001"}}, "2", "0"}}) +
        Existencias("3", "5") + Casa::LoteDe(Casa::C, "000002", {"001001", "002002"}, "3");
    const QStringList deD = Casa::D.Alta() + F::Foto(Casa::D, "5", 1) +
                            QStringList{Enlace("3", "4")} + F::Tarifas(Casa::D, 19) +
                            F::Combinaciones(Casa::D, Casa::CombinacionesDeD("6", "7")) +
                            Casa::ExistenciasDeD("4");

    EXPECT_EQ(EnLineas(this->carga.SentenciasDe(4)), EnLineas(deA + deB + deC + deD));
}

TYPED_TEST(CasaEntera, LaCargaPublicaUnaVezElDocumentoDeDosArticulos)
{
    // clang-format off
    EXPECT_EQ(EnLineas(this->carga.SentenciasDe(5)),
              EnLineas({"INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (1,'ficha.pdf','ficha.pdf',5,'" + this->Ruta("ficha.pdf") + "')",
                        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'ficha.pdf','Ficha')",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,1)",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,3)",
                        "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (2,'otra.pdf','otra.pdf',4,'" + this->Ruta("otra.pdf") + "')",
                        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (2,1,'otra.pdf','Otra')",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (2,3)"}));
    // clang-format on
}

TYPED_TEST(CasaEntera, LaCargaSeCuentaEnElRegistro)
{
    using Casa = CasaEntera<TypeParam>;
    EXPECT_EQ(EnLineas(this->carga.log),
              EnLineas(CabeceraDelLog() + Casa::LogDeMarcas() +
                       QStringList{"Comprobando articulos que ya no estan..."} +
                       Casa::LogDeMaestros() + Casa::LogDeFamilias({"01", "0101"}) +
                       Casa::LogDeArticulos(
                           {"Añadiendo artículo 01A / ALT01A", "Añadiendo artículo 01B / ALT01B",
                            "Añadiendo artículo 01C / ALT01C", "Añadiendo artículo 01D / ALT01D"}) +
                       Casa::LogDeCierre() +
                       Casa::LogDeFotosFamilias({"rojo.jpg -> 3.jpg", "azul.jpg -> 4.jpg"}) +
                       QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS...",
                                   "Subiendo adjunto " + this->Ruta("ficha.pdf"),
                                   "Subiendo adjunto " + this->Ruta("otra.pdf"),
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE actualización de adjuntos"} +
                       Casa::LogDeFotosArticulos({"rojo.jpg -> 1.jpg", "azul.jpg -> 2.jpg",
                                                  "rojo.jpg -> 3.jpg", "azul.jpg -> 4.jpg",
                                                  "azul.jpg -> 5.jpg", "rojo.jpg -> 6.jpg",
                                                  "azul.jpg -> 7.jpg"}) +
                       FinDelLog()));
}

TYPED_TEST(CasaEntera, LaCargaSigueElOrdenDeLaConversacion)
{
    using Casa = CasaEntera<TypeParam>;
    QStringList pasos = PasosDeCabecera();
    for (int lote = 0; lote < 4; ++lote) // makers, groups, attributes, families
        pasos += PasosDeLote();
    pasos += Casa::PasosDeArticulos() + Casa::PasosDeFotos({"3", "4"}, "imgfam.txt") +
             QStringList{"sesion"} + Casa::PasosDe("ficha.pdf") + Casa::PasosDe("otra.pdf") +
             PasosDeLote() + Casa::PasosDeFotos(Numeros(1, 7), "imgart.txt");
    EXPECT_EQ(EnLineas(PasosFtp(this->carga.ftp)), EnLineas(pasos));
    EXPECT_EQ(EnLineas(this->carga.http),
              EnLineas(Casa::Peticiones(
                  {"borracache.php", "ejecuta.php", "ejecuta.php", "ejecuta.php", "ejecuta.php",
                   "ejecuta.php", "creapath.php", "borraimg.php?sufijofoto=_default",
                   "dimensiona.php?fichero=imgfam.txt&sufijofoto=_default", "borracache.php",
                   "ejecuta.php", "dimensiona.php?fichero=imgart.txt&sufijofoto=_default",
                   "borracache.php"})));
}

TYPED_TEST(CasaEntera, LaCargaMandaSusListas)
{
    EXPECT_EQ(this->carga.Lineas("creapath.txt"),
              (QStringList{"1;", "2;", "3;", "4;", "5;", "6;", "7;"}));
    EXPECT_EQ(EnLineas(this->carga.Lineas("imgborra.txt")), EnLineas(LineasDeFamilias({"3", "4"})));
    EXPECT_EQ(this->carga.Lineas("imgfam.txt"), (QStringList{"img/c/3.jpg;", "img/c/4.jpg;"}));
    EXPECT_EQ(EnLineas(this->carga.Lineas("imgart.txt")), EnLineas(LineasDeSubidas(Numeros(1, 7))));
}

TYPED_TEST(CasaEntera, TrasLaCargaLaTiendaTieneLosArticulosConSusDatos)
{
    EXPECT_EQ(this->trasCarga.filas["producto"], (Filas{{"1", "01A", "3", "7"},
                                                        {"2", "01B", "3", "NULL"},
                                                        {"3", "01C", "3", "NULL"},
                                                        {"4", "01D", "3", "NULL"}}));
    EXPECT_EQ(this->trasCarga.filas["enlace"],
              (Filas{{"1", "2"}, {"1", "3"}, {"2", "3"}, {"2", "4"}, {"3", "3"}, {"4", "3"}}));
    EXPECT_EQ(this->trasCarga.filas["etiqueta"], (Filas{{"1", "rojo"}, {"1", "azul"}}));
    EXPECT_EQ(this->trasCarga.filas["precio"], (Filas{{"1", "5", "1", "5"},
                                                      {"2", "9", "6", "14"},
                                                      {"3", "5", "15", "19"},
                                                      {"4", "5", "20", "24"}}));
    EXPECT_EQ(this->trasCarga.filas["adjunto"],
              (Filas{{"1", "ficha.pdf", "1"}, {"1", "ficha.pdf", "3"}, {"2", "otra.pdf", "3"}}));
    EXPECT_EQ(this->trasCarga.filas["marca"], (Filas{{"7", "Casa Uno"}}));
    EXPECT_EQ(this->trasCarga.filas["familia"], (Filas{{"1", "0", "1", "8", "0", "NULL"},
                                                       {"2", "1", "2", "7", "1", "NULL"},
                                                       {"3", "2", "3", "6", "2", "01"},
                                                       {"4", "3", "4", "5", "3", "0101"}}));
}

// The product's id and the ordinal in five digits, however many zeros the literal has.
TYPED_TEST(CasaEntera, LaTiendaFormaLosNumerosDeLasCombinaciones)
{
    const QString ninguno = TypeParam::Tienda::PorDefecto();
    const QString cuarto = this->Peso("0.25") + (TypeParam::Gestion ? ".000000" : "0000");
    const QString medio = this->Peso("0.5") + (TypeParam::Gestion ? ".000000" : "00000");
    const auto fila = [](const QString& id, const QString& nombres, const QString& precio,
                         const QString& peso, const QString& defecto) {
        return QStringList{id.left(1), id, nombres, precio, precio, peso, defecto};
    };
    const QString nada = "0.000000";
    EXPECT_EQ(this->trasCarga.filas["combinacion"],
              (Filas{fila("200001", "Rojo", "1.500000", cuarto, "1"),
                     fila("200002", "Azul", "0.000000", nada, ninguno),
                     fila("200003", "Verde", "2.000000", nada, ninguno),
                     fila("300001", "Rojo,Grande", "1.500000", nada, "1"),
                     fila("300002", "Rojo,Chico", "1.000000", nada, ninguno),
                     fila("300003", "Azul,Grande", "2.500000", nada, ninguno),
                     fila("300004", "Azul,Chico", "2.000000", nada, ninguno),
                     fila("400001", "Rojo,Chico,Lana", "1.000000", nada, "1"),
                     fila("400002", "Rojo,Chico,Lino", "1.125000", medio, ninguno),
                     fila("400003", "Rojo,Grande,Lana", "1.250000", nada, ninguno),
                     fila("400004", "Rojo,Grande,Lino", "1.375000", medio, ninguno),
                     fila("400005", "Azul,Chico,Lana", "2.000000", nada, ninguno),
                     fila("400006", "Azul,Chico,Lino", "2.125000", medio, ninguno),
                     fila("400007", "Azul,Grande,Lana", "2.250000", nada, ninguno),
                     fila("400008", "Azul,Grande,Lino", "2.375000", medio, ninguno)}));
}

// In two values of one article once; that of the article itself counts for itself.
TYPED_TEST(CasaEntera, LaFotoDeVariosValoresDeUnArticuloEsUnaSolaImagen)
{
    const bool nuevo = TypeParam::Tienda::PorDefecto() == "NULL";
    const auto tapa = [nuevo](const QString& antigua) { return nuevo ? QString("NULL") : antigua; };
    EXPECT_EQ(this->trasCarga.filas["imagen"], (Filas{{"1", "1", "1", "1"},
                                                      {"2", "1", "2", tapa("2")},
                                                      {"3", "2", "1", "1"},
                                                      {"4", "2", "11", tapa("1")},
                                                      {"5", "4", "1", "1"},
                                                      {"6", "4", "11", tapa("1")},
                                                      {"7", "4", "11", tapa("3")}}));
    EXPECT_EQ(this->trasCarga.filas["imagenDeCombinacion"], (Filas{{"200001", "4"},
                                                                   {"200002", "4"},
                                                                   {"400001", "6"},
                                                                   {"400002", "6"},
                                                                   {"400002", "7"},
                                                                   {"400003", "6"},
                                                                   {"400004", "6"},
                                                                   {"400004", "7"},
                                                                   {"400006", "7"},
                                                                   {"400008", "7"}}));
}

TYPED_TEST(CasaEntera, LasExistenciasSonLasDelArticuloYConLaGestionLasDeSusCombinaciones)
{
    Filas esperadas{{"1000000", "1", "0", "7"}, {"2000000", "2", "0", "6"}};
    if (TypeParam::Gestion)
        esperadas.push_back({"2000001", "2", "200001", "2"});
    esperadas.push_back({"3000000", "3", "0", "5"});
    if (TypeParam::Gestion)
        esperadas.push_back({"3000002", "3", "300003", "3"});
    esperadas.push_back({"4000000", "4", "0", "4"});
    if (TypeParam::Gestion)
        esperadas.push_back({"4000003", "4", "400002", "1"});

    EXPECT_EQ(this->trasCarga.filas["existencia"], esperadas);
}

TYPED_TEST(CasaEntera, TrasLaCargaLasFotosEstanEnTodosSusTamanos)
{
    EXPECT_EQ(EnLineas(this->trasCarga.fotos),
              EnLineas(this->FotosEnSusTamanos({"3", "4"}, Numeros(1, 7))));
}

// A second run of everything, after changes.

TYPED_TEST(CasaEntera, LosCambiosRetiranElArticuloQueYaNoSePublica)
{
    using F = typename CasaEntera<TypeParam>::DeTienda;
    ASSERT_EQ(this->cambios.lotes.size(), 7);
    EXPECT_EQ(EnLineas(this->cambios.SentenciasDe(1)), EnLineas(F::Retirada("3", {})));
}

TYPED_TEST(CasaEntera, LosCambiosVuelvenAEnviarLosMaestrosYLasFamilias)
{
    EXPECT_EQ(EnLineas(this->cambios.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(this->cambios.SentenciasDe(2)), EnLineas(SentenciasDeGrupos()));
    EXPECT_EQ(EnLineas(this->cambios.SentenciasDe(3)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(EnLineas(this->cambios.SentenciasDe(4)), EnLineas(SentenciasDeFamilias(true)));
}

// What has not changed since is passed by; the numbers go on from the highest in the shop.
TYPED_TEST(CasaEntera, LosCambiosEscribenLoCambiadoYLoNuevo)
{
    using Casa = CasaEntera<TypeParam>;
    using F = typename Casa::DeTienda;
    const ProductoEsperado nuevoA{"1", "01A", "Nuevo A", "nuevo-a", "7"};
    const QStringList deA =
        nuevoA.Cambio() + QStringList{Etiqueta("1", "rojo"), Etiqueta("1", "azul")} +
        BorraImagenes(Casa::Viejas("cambios", "01A", {"1", "2"})) + F::Foto(nuevoA, "8", 1) +
        QStringList{"DELETE FROM ps_category_product where id_product=1", Enlace("3", "1")} +
        F::BorraPrecios(nuevoA) + F::Tarifas(nuevoA, 24) + F::BorraCombinaciones(nuevoA) +
        Existencias("1", "8") +
        QStringList{Enlace("2", "1"), "DELETE FROM ps_product_attachment WHERE id_product=1"};
    const QStringList deE = Casa::E.Alta() + F::Foto(Casa::E, "11", 1) +
                            QStringList{Enlace("3", "5")} + F::Tarifas(Casa::E, 38) +
                            F::Combinaciones(Casa::E, {{{{"001003"}}, "2", "0"}}) +
                            Existencias("5", "0");

    EXPECT_EQ(
        EnLineas(this->cambios.SentenciasDe(5)),
        EnLineas(deA + Casa::CambioDeB(Casa::Viejas("cambios", "01B", {"3", "4"}), 9, 29) + deE));
}

TYPED_TEST(CasaEntera, LosCambiosEscribenDeNuevoElDocumentoConSuNumero)
{
    // clang-format off
    EXPECT_EQ(EnLineas(this->cambios.SentenciasDe(6)),
              EnLineas({"DELETE FROM ps_attachment WHERE id_attachment=1",
                        "DELETE FROM ps_attachment_lang WHERE id_attachment=1",
                        "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (1,'ficha.pdf','ficha.pdf',5,'" + this->Ruta("ficha.pdf") + "')",
                        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'ficha.pdf','Ficha')",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,1)"}));
    // clang-format on
}

TYPED_TEST(CasaEntera, LosCambiosSeCuentanEnElRegistro)
{
    using Casa = CasaEntera<TypeParam>;
    EXPECT_EQ(
        EnLineas(this->cambios.log),
        EnLineas(CabeceraDelLog() + Casa::LogDeMarcas() +
                 QStringList{"Comprobando articulos que ya no estan...",
                             "Borrando Artículo 3 / ALT01C", "SUBIENDO FICHERO sentencias.sql",
                             "EJECUTANDO REMOTAMENTE Borrando artículos (...4)"} +
                 Casa::LogDeMaestros() + Casa::LogDeFamilias({"01", "0101", "02"}) +
                 Casa::LogDeArticulos({"Actualizando articulo 01A / ALT01A",
                                       "Actualizando articulo 01B / ALT01B",
                                       "Añadiendo artículo 01E / ALT01E"}) +
                 Casa::LogDeCierre() + Casa::LogDeFotosFamilias({"verde.jpg -> 3.jpg"}) +
                 QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS...",
                             "Subiendo adjunto " + this->Ruta("ficha.pdf"),
                             "SUBIENDO FICHERO sentencias.sql",
                             "EJECUTANDO REMOTAMENTE actualización de adjuntos"} +
                 Casa::LogDeFotosArticulos({"verde.jpg -> 8.jpg", "rojo.jpg -> 9.jpg",
                                            "verde.jpg -> 10.jpg", "rojo.jpg -> 11.jpg"}) +
                 FinDelLog()));
}

TYPED_TEST(CasaEntera, LosCambiosSiguenElOrdenDeLaConversacion)
{
    using Casa = CasaEntera<TypeParam>;
    QStringList pasos = PasosDeCabecera();
    for (int lote = 0; lote < 5; ++lote) // makers, withdrawn, groups, attributes, families
        pasos += PasosDeLote();
    pasos += Casa::PasosDeArticulos() + Casa::PasosDeFotos({"3"}, "imgfam.txt") +
             QStringList{"sesion"} + Casa::PasosDe("ficha.pdf") + PasosDeLote() +
             Casa::PasosDeFotos(Numeros(8, 11), "imgart.txt");
    EXPECT_EQ(EnLineas(PasosFtp(this->cambios.ftp)), EnLineas(pasos));
}

TYPED_TEST(CasaEntera, LosCambiosMandanSusListas)
{
    using Casa = CasaEntera<TypeParam>;
    EXPECT_EQ(this->cambios.Lineas("creapath.txt"), (QStringList{"8;", "9;", "1/0;", "1/1;"}));
    EXPECT_EQ(EnLineas(this->cambios.Lineas("imgborra.txt")),
              EnLineas(QStringList{"img/p/.jpg;", "img/p//.jpg;", "img/p//-*.jpg;"} +
                       LineasDeFamilias({"3", "4", "5"}) +
                       LineasDeBorrado(Casa::Viejas("cambios", "01A", {"1", "2"}) +
                                       Casa::Viejas("cambios", "01B", {"3", "4"}))));
    EXPECT_EQ(this->cambios.Lineas("imgfam.txt"), QStringList{"img/c/3.jpg;"});
    EXPECT_EQ(EnLineas(this->cambios.Lineas("imgart.txt")),
              EnLineas(LineasDeSubidas(Numeros(8, 11))));
}

// The links of the withdrawn article's documents stay.
TYPED_TEST(CasaEntera, TrasLosCambiosLaTiendaTieneLoNuevoYLoQueNoHaCambiado)
{
    EXPECT_EQ(this->trasCambios.filas["producto"], (Filas{{"1", "01A", "3", "7"},
                                                          {"2", "01B", "3", "NULL"},
                                                          {"4", "01D", "3", "NULL"},
                                                          {"5", "01E", "3", "NULL"}}));
    EXPECT_EQ(this->trasCambios.filas["texto"], (Filas{{"1", "Nuevo A", "nuevo-a", "Notas 01A"},
                                                       {"2", "Art 01B", "art-01b", "Notas 01B"},
                                                       {"4", "Art 01D", "art-01d", "Notas 01D "},
                                                       {"5", "Art 01E", "art-01e", "Notas 01E "}}));
    EXPECT_EQ(this->trasCambios.filas["precio"], (Filas{{"1", "5", "25", "29"},
                                                        {"2", "9", "30", "38"},
                                                        {"4", "5", "20", "24"},
                                                        {"5", "5", "39", "43"}}));
    EXPECT_EQ(this->trasCambios.filas["adjunto"],
              (Filas{{"1", "ficha.pdf", "1"}, {"1", "ficha.pdf", "3"}, {"2", "otra.pdf", "3"}}));
    QStringList combinaciones;
    for (const QStringList& fila : this->trasCambios.filas["combinacion"])
        combinaciones << fila[1] + " " + fila[2];
    EXPECT_EQ(
        EnLineas(combinaciones),
        EnLineas({"200001 Rojo", "200002 Azul", "400001 Rojo,Chico,Lana", "400002 Rojo,Chico,Lino",
                  "400003 Rojo,Grande,Lana", "400004 Rojo,Grande,Lino", "400005 Azul,Chico,Lana",
                  "400006 Azul,Chico,Lino", "400007 Azul,Grande,Lana", "400008 Azul,Grande,Lino",
                  "500001 Verde"}));
    EXPECT_EQ(this->trasCambios.filas["familia"], (Filas{{"1", "0", "1", "10", "0", "NULL"},
                                                         {"2", "1", "2", "9", "1", "NULL"},
                                                         {"3", "2", "3", "6", "2", "01"},
                                                         {"4", "3", "4", "5", "3", "0101"},
                                                         {"5", "2", "7", "8", "2", "02"}}));
}

TYPED_TEST(CasaEntera, TrasLosCambiosLasFotosViejasSeHanIdoYLasNuevasEstanEnTodosSusTamanos)
{
    EXPECT_EQ(EnLineas(this->trasCambios.fotos),
              EnLineas(this->FotosEnSusTamanos({"3"}, Numeros(5, 11))));
    // The family keeps its number, so its new picture takes the old one's place.
    for (const QString& fichero : this->FotosEnSusTamanos({"3"}, {"8"}))
        EXPECT_TRUE(this->EsVerde(fichero)) << fichero.toStdString();
}

// The modes that leave the families.

TYPED_TEST(CasaEntera, SoloArticEnviaLosMaestrosYElArticuloCambiado)
{
    using Casa = CasaEntera<TypeParam>;
    ASSERT_EQ(this->soloArtic.lotes.size(), 6);
    EXPECT_EQ(EnLineas(this->soloArtic.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(this->soloArtic.SentenciasDe(1)), EnLineas(SentenciasDeGrupos()));
    EXPECT_EQ(EnLineas(this->soloArtic.SentenciasDe(2)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(this->soloArtic.lotes.value(3), "");
    EXPECT_EQ(EnLineas(this->soloArtic.SentenciasDe(4)),
              EnLineas(Casa::CambioDeD(Casa::Viejas("soloArtic", "01D", {"5", "6", "7"}), 12, 43,
                                       Casa::ExistenciasDeD("9"))));
    EXPECT_EQ(this->soloArtic.lotes.value(5), "");
}

TYPED_TEST(CasaEntera, SinStockEnviaLoMismoSinLasExistencias)
{
    using Casa = CasaEntera<TypeParam>;
    ASSERT_EQ(this->sinStock.lotes.size(), 6);
    EXPECT_EQ(EnLineas(this->sinStock.SentenciasDe(2)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(
        EnLineas(this->sinStock.SentenciasDe(4)),
        EnLineas(Casa::CambioDeD(Casa::Viejas("sinStock", "01D", {"12", "13", "14"}), 15, 48, {})));
    const Filas existencias = this->trasSinStock.filas["existencia"];
    EXPECT_NE(
        std::find(existencias.begin(), existencias.end(), QStringList({"4000000", "4", "0", "9"})),
        existencias.end());
    EXPECT_EQ(EnLineas(this->trasSinStock.fotos),
              EnLineas(this->FotosEnSusTamanos({"3"}, Numeros(8, 11) + Numeros(15, 17))));
}

TYPED_TEST(CasaEntera, LosDosModosDeSoloArticulosSeCuentanIgual)
{
    using Casa = CasaEntera<TypeParam>;
    const auto log = [](int primera) {
        const auto foto = [primera](const QString& nombre, int i) {
            return nombre + " -> " + Numero(primera + i) + ".jpg";
        };
        return EnLineas(
            CabeceraDelLog() + Casa::LogDeMarcas() +
            QStringList{"Comprobando articulos que ya no estan..."} + Casa::LogDeMaestros() +
            Casa::LogSinFamilias() + Casa::LogDeArticulos({"Actualizando articulo 01D / ALT01D"}) +
            Casa::LogDeCierre() +
            QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS..."} +
            Casa::LogDeLoteVacio("EJECUTANDO REMOTAMENTE actualización de adjuntos") +
            Casa::LogDeFotosArticulos(
                {foto("azul.jpg", 0), foto("rojo.jpg", 1), foto("azul.jpg", 2)}) +
            FinDelLog());
    };
    EXPECT_EQ(EnLineas(this->soloArtic.log), log(12));
    EXPECT_EQ(EnLineas(this->sinStock.log), log(15));
}

TYPED_TEST(CasaEntera, LosDosModosDeSoloArticulosSiguenElMismoOrden)
{
    using Casa = CasaEntera<TypeParam>;
    const auto pasos = [](const QStringList& fotos) {
        return EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote() + PasosDeLote() +
                        Casa::PasosVacios() + Casa::PasosDeArticulos() + QStringList{"sesion"} +
                        Casa::PasosVacios() + Casa::PasosDeFotos(fotos, "imgart.txt"));
    };
    EXPECT_EQ(EnLineas(PasosFtp(this->soloArtic.ftp)), pasos(Numeros(12, 14)));
    EXPECT_EQ(EnLineas(PasosFtp(this->sinStock.ftp)), pasos(Numeros(15, 17)));
    const QStringList paginas = Casa::Peticiones(
        {"borracache.php", "ejecuta.php", "ejecuta.php", "ejecuta.php", "ejecuta.php",
         "ejecuta.php", "creapath.php", "borraimg.php?sufijofoto=_default", "borracache.php",
         "ejecuta.php", "dimensiona.php?fichero=imgart.txt&sufijofoto=_default", "borracache.php"});
    EXPECT_EQ(EnLineas(this->soloArtic.http), EnLineas(paginas));
    EXPECT_EQ(EnLineas(this->sinStock.http), EnLineas(paginas));
    EXPECT_EQ(EnLineas(this->sinStock.Lineas("imgborra.txt")),
              EnLineas(LineasDeBorrado(Casa::Viejas("sinStock", "01D", {"12", "13", "14"}))));
}

// The stock, by its mode and by its button.

TYPED_TEST(CasaEntera, StockRepiteLasExistenciasPorCadaFotoEInsertaEnteroElQueFalta)
{
    using Casa = CasaEntera<TypeParam>;
    using F = typename Casa::DeTienda;
    const QStringList deB = Casa::ExistenciasDeB();
    const QStringList deD = Casa::ExistenciasDeD("11");
    const QStringList deF =
        Casa::G.Alta() + QStringList{Enlace("3", "6")} + F::Tarifas(Casa::G, 53) +
        F::Combinaciones(Casa::G, {{{{"001002"}}, "3", "0"}}) + Existencias("6", "0");

    ASSERT_EQ(this->stock.lotes.size(), 3);
    EXPECT_EQ(EnLineas(this->stock.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(this->stock.lotes.value(1), "");
    EXPECT_EQ(EnLineas(this->stock.SentenciasDe(2)),
              EnLineas(Existencias("1", "70") + deB + deB + deD + deD + deD +
                       Existencias("5", "0") + deF));
    EXPECT_EQ(this->trasStock.fotos, this->trasSinStock.fotos);
    EXPECT_EQ(this->trasStock.filas["imagen"], this->trasSinStock.filas["imagen"]);
    EXPECT_EQ(this->trasStock.filas["adjunto"], this->trasSinStock.filas["adjunto"]);
}

TYPED_TEST(CasaEntera, StockSeCuentaEnElRegistro)
{
    using Casa = CasaEntera<TypeParam>;
    const QStringList sinCarpetas{
        "Error subiendo fichero " + this->empresa->Actual() + "\\creapath.txt",
        "ERROR SUBIENDO FICHERO creapath.txt", "BORRANDO CACHÉ DE PRESTASHOP"};
    const auto log = [&](const QStringList& lineas) {
        return EnLineas(CabeceraDelLog() + Casa::LogDeMarcas() +
                        QStringList{"Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."} +
                        Casa::LogSinFamilias() + Casa::LogDeArticulos(lineas) + sinCarpetas +
                        FinDelLog());
    };
    EXPECT_EQ(
        EnLineas(this->stock.log),
        log({"Actualizando STOCK articulo 01A / ALT01A", "Actualizando STOCK articulo 01B / ALT01B",
             "Actualizando STOCK articulo 01D / ALT01D", "Actualizando STOCK articulo 01E / ALT01E",
             "Añadiendo artículo 01F / ALT01F"}));
    EXPECT_EQ(EnLineas(this->botonStock.log), log({"Actualizando STOCK articulo 01A / ALT01A",
                                                   "Actualizando STOCK articulo 01B / ALT01B",
                                                   "Actualizando STOCK articulo 01D / ALT01D",
                                                   "Actualizando STOCK articulo 01F / ALT01F"}));
}

TYPED_TEST(CasaEntera, StockSigueElOrdenDeLaConversacion)
{
    using Casa = CasaEntera<TypeParam>;
    const QStringList pasos = PasosDeCabecera() + PasosDeLote() + Casa::PasosVacios() +
                              QStringList{"sesion"} + PasosDeLote() + Casa::PasosDe("creapath.txt");
    const QStringList paginas =
        Casa::Peticiones({"borracache.php", "ejecuta.php", "ejecuta.php", "ejecuta.php",
                          "creapath.php", "borracache.php", "borracache.php"});
    for (const ResultadoCorrida& corrida : {this->stock, this->botonStock}) {
        EXPECT_EQ(EnLineas(PasosFtp(corrida.ftp)), EnLineas(pasos));
        EXPECT_EQ(EnLineas(corrida.http), EnLineas(paginas));
        EXPECT_EQ(corrida.Lineas("imgborra.txt"), QStringList());
    }
}

// A product without a picture has one row too.
TYPED_TEST(CasaEntera, ElBotonDeStockHaceLoMismo)
{
    using Casa = CasaEntera<TypeParam>;
    const QStringList deB = Casa::ExistenciasDeB();
    const QStringList deD = Casa::ExistenciasDeD("11");
    ASSERT_EQ(this->botonStock.lotes.size(), 3);
    EXPECT_EQ(
        EnLineas(this->botonStock.SentenciasDe(2)),
        EnLineas(Existencias("1", "70") + deB + deB + deD + deD + deD + Existencias("6", "0")));
}

// The other buttons.

TYPED_TEST(CasaEntera, ElBotonDeArticulosRetiraYEscribeTodoElRango)
{
    using Casa = CasaEntera<TypeParam>;
    using F = typename Casa::DeTienda;
    ASSERT_EQ(this->articulos.lotes.size(), 5);
    EXPECT_EQ(EnLineas(this->articulos.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(this->articulos.SentenciasDe(1)), EnLineas(F::Retirada("5", {"11"})));
    EXPECT_EQ(this->articulos.lotes.value(2), "");
    EXPECT_EQ(EnLineas(this->articulos.SentenciasDe(3)),
              EnLineas(Casa::CambioDeB(Casa::Viejas("articulos", "01B", {"9", "10"}), 18, 58) +
                       Casa::CambioDeD(Casa::Viejas("articulos", "01D", {"15", "16", "17"}), 20, 67,
                                       Casa::ExistenciasDeD("11"))));
    EXPECT_EQ(this->articulos.lotes.value(4), "");
}

TYPED_TEST(CasaEntera, ElBotonDeArticulosSeCuentaEnElRegistro)
{
    using Casa = CasaEntera<TypeParam>;
    EXPECT_EQ(
        EnLineas(this->articulos.log),
        EnLineas(CabeceraDelLog() + Casa::LogDeMarcas() +
                 QStringList{"Comprobando articulos que ya no estan...",
                             "Borrando Artículo 5 / ALT01E", "SUBIENDO FICHERO sentencias.sql",
                             "EJECUTANDO REMOTAMENTE Borrando artículos (...5)",
                             "Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."} +
                 Casa::LogSinFamilias() +
                 Casa::LogDeArticulos(
                     {"Actualizando articulo 01B / ALT01B", "Actualizando articulo 01D / ALT01D"}) +
                 Casa::LogDeCierre() +
                 QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS..."} +
                 Casa::LogDeLoteVacio("EJECUTANDO REMOTAMENTE actualización de adjuntos") +
                 Casa::LogDeFotosArticulos({"rojo.jpg -> 18.jpg", "verde.jpg -> 19.jpg",
                                            "azul.jpg -> 20.jpg", "rojo.jpg -> 21.jpg",
                                            "azul.jpg -> 22.jpg"}) +
                 FinDelLog()));
}

// Of the withdrawn article the first picture's files go; of the others the old ones.
TYPED_TEST(CasaEntera, ElBotonDeArticulosCambiaLasFotosDelRango)
{
    using Casa = CasaEntera<TypeParam>;
    EXPECT_EQ(EnLineas(PasosFtp(this->articulos.ftp)),
              EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote() + Casa::PasosVacios() +
                       Casa::PasosDeArticulos() + QStringList{"sesion"} + Casa::PasosVacios() +
                       Casa::PasosDeFotos(Numeros(18, 22), "imgart.txt")));
    EXPECT_EQ(EnLineas(this->articulos.Lineas("imgborra.txt")),
              EnLineas(QStringList{"img/p/11.jpg;", "img/p/1/1/11.jpg;", "img/p/1/1/11-*.jpg;"} +
                       LineasDeBorrado(Casa::Viejas("articulos", "01B", {"9", "10"}) +
                                       Casa::Viejas("articulos", "01D", {"15", "16", "17"}))));
    EXPECT_EQ(EnLineas(this->trasArticulos.fotos),
              EnLineas(this->FotosEnSusTamanos({"3"}, QStringList{"8"} + Numeros(18, 22))));
}

TYPED_TEST(CasaEntera, ElBotonDeFamiliasEnviaElArbolYSusFotosYNadaMas)
{
    using Casa = CasaEntera<TypeParam>;
    ASSERT_EQ(this->familias.lotes.size(), 2);
    EXPECT_EQ(EnLineas(this->familias.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(this->familias.SentenciasDe(1)), EnLineas(SentenciasDeFamilias(true)));
    EXPECT_EQ(EnLineas(this->familias.log),
              EnLineas(CabeceraDelLog() + Casa::LogDeMarcas() +
                       QStringList{"Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."} +
                       Casa::LogDeFamilias({"01", "0101", "02"}) +
                       QStringList{"Actualizando y modificando articulos"} + Casa::LogDeCierre() +
                       Casa::LogDeFotosFamilias({"verde.jpg -> 3.jpg"}) +
                       QStringList{"BORRANDO CACHÉ DE PRESTASHOP"} + FinDelLog()));
    EXPECT_EQ(EnLineas(PasosFtp(this->familias.ftp)),
              EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote() + QStringList{"sesion"} +
                       Casa::PasosDe("imgborra.txt") + Casa::PasosDeFotos({"3"}, "imgfam.txt")));
    EXPECT_EQ(EnLineas(this->familias.Lineas("imgborra.txt")),
              EnLineas(LineasDeFamilias({"3", "4", "5"})));
    EXPECT_EQ(EnLineas(this->alFinal.fotos), EnLineas(this->trasArticulos.fotos));
}

TYPED_TEST(CasaEntera, ElBotonDeValesEnviaLasMarcasYLosVales)
{
    using Casa = CasaEntera<TypeParam>;
    const QString hoy = HoyMysql();
    ASSERT_EQ(this->vales.lotes.size(), 2);
    EXPECT_EQ(EnLineas(this->vales.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    // clang-format off
    EXPECT_EQ(EnLineas(this->vales.SentenciasDe(1)),
              EnLineas({"INSERT INTO ps_cart_rule(id_cart_rule, id_customer, date_from, date_to, description, quantity, quantity_per_user, priority, partial_use, code, minimum_amount, minimum_amount_tax, minimum_amount_currency, minimum_amount_shipping, country_restriction, carrier_restriction, group_restriction, cart_rule_restriction, product_restriction, shop_restriction, free_shipping, reduction_percent, reduction_amount, reduction_tax, reduction_currency, reduction_product, gift_product, gift_product_attribute, highlight, active, date_add, date_upd) VALUES (2,0,CAST('2024/01/02' AS DATE),CAST('2024/12/31' AS DATE),'Verano',5,1,1,1,'V10',0,1,1,0,0,0,0,0,0,0,0,10,0,1,1,0,0,0,0,1," + hoy + "," + hoy + ")",
                        "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (2,1,'Verano')"}));
    // clang-format on
    EXPECT_EQ(EnLineas(this->vales.log),
              EnLineas(CabeceraDelLog() + Casa::LogDeMarcas() +
                       QStringList{"PREPARANDO CARGA DE VALES DE DESCUENTO",
                                   "Preparando Vale Descuento V10. Añadiendo",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"} +
                       FinDelLog()));
    EXPECT_EQ(EnLineas(PasosFtp(this->vales.ftp)),
              EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote()));
    EXPECT_EQ(EnLineas(this->vales.http),
              EnLineas(Casa::Peticiones(
                  {"borracache.php", "ejecuta.php", "ejecuta.php", "borracache.php"})));
    EXPECT_EQ(this->alFinal.filas["vale"], (Filas{{"2", "V10"}}));
}

} // namespace
