#include "e2e/casa_entera.h"
#include "e2e/sentencias_esperadas.h"
#include "e2e/ventana_real.h"
#include <QImage>
#include <gmock/gmock.h>
#include <map>
#include <memory>

namespace {

using namespace tolmo;
using Filas = std::vector<QStringList>;

/// A generation of the shop, and whether the values come from the management program.
struct Variante {
    const char* nombre;
    FormasDeTienda (*formas)();
    bool gestion;
};
void PrintTo(const Variante& variante, std::ostream* salida)
{
    *salida << variante.nombre;
}

/// What stands in the shop between two runs: rows by subject, and the pictures.
struct Vista {
    std::map<QString, Filas> filas{};
    QMap<QString, QByteArray> fotos{};

    Filas De(const QString& asunto) const
    {
        const auto hallado = filas.find(asunto);
        return hallado == filas.end() ? Filas{} : hallado->second;
    }
};

Vista Mira(const TiendaDePrueba& tienda)
{
    Vista vista;
    // clang-format off
    for (const QStringList& fila : tienda.Sql(
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
    for (const QString& fichero : tienda.Ficheros("img").filter(".jpg"))
        vista.fotos[fichero] = tienda.LeeFichero(fichero);
    return vista;
}

/// The pictures that the shop has of each article, in the order in which it gives them to who asks
/// without one.
QMap<QString, QStringList> ImagenesEnSuOrden(const TiendaDePrueba& tienda,
                                             const QStringList& codigos)
{
    QMap<QString, QStringList> imagenes;
    for (const QString& codigo : codigos)
        for (
            const QStringList& fila : tienda.Sql(
                "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='" +
                codigo + "'"))
            imagenes[codigo] << fila[2];
    return imagenes;
}

/// A house with everything, through all modes of the command line and all buttons, one after the
/// other on one shop: each run starts from what the ones before have left.
class Casa {
  public:
    explicit Casa(const Variante& variante)
        : formas(variante.formas()), valores{.gestion = variante.gestion},
          tienda_(TiendaComun(formas.opciones)),
          empresa_(tienda_, {{"PS_MODOCONFIGURADOR", variante.gestion ? "True" : "False"},
                             {"PSGRUPOMARCAS", "'1'"},
                             {"CAMPOFAMALT", "'OTRASFAM'"}})
    {
        EscribeFoto("rojo.jpg", Qt::red);
        EscribeFoto("azul.jpg", Qt::blue);
        EscribeFoto("verde.jpg", Qt::green);
        empresa_.Carpeta().Escribe("ficha.pdf", "Ficha");
        empresa_.Carpeta().Escribe("otra.pdf", "Otra");
        empresa_.Sql(SqlDeLaCasa(Actual(), valores));
        CorreLosModos();
        PulsaLosBotones();
    }

    QString Actual() const { return empresa_.Actual(); }
    QString Ruta(const QString& nombre) const { return Actual() + "/" + nombre; }

    const FormasDeTienda formas;
    const OrigenDeValores valores;
    ResultadoCorrida carga{}, cambios{}, soloArtic{}, sinStock{}, stock{};
    ResultadoCorrida articulos{}, familias{}, botonStock{}, vales{};
    Vista trasCarga{}, trasCambios{}, trasSinStock{}, trasStock{}, trasArticulos{}, alFinal{};
    std::map<QString, QMap<QString, QStringList>> viejas{}; ///< pictures, by run and article

  private:
    void CorreLosModos()
    {
        carga = empresa_.Corre();
        trasCarga = Mira(tienda_);

        empresa_.Sql(SqlDeCambios());
        viejas["cambios"] = ImagenesEnSuOrden(tienda_, {"01A", "01B"});
        cambios = empresa_.Corre();
        trasCambios = Mira(tienda_);

        empresa_.Sql(SqlSoloCambia("01D") + SqlExistencias("01D", "9"));
        viejas["soloArtic"] = ImagenesEnSuOrden(tienda_, {"01D"});
        soloArtic = empresa_.Corre("/SOLOARTIC:000001");

        empresa_.Sql(SqlExistencias("01D", "11"));
        viejas["sinStock"] = ImagenesEnSuOrden(tienda_, {"01D"});
        sinStock = empresa_.Corre("/SOLOARTIC_SIN_STOCK:000001");
        trasSinStock = Mira(tienda_);

        empresa_.Sql(SqlExistencias("01A", "70") +
                     SqlArticulo("01F", {{"FOTO", Foto("rojo.jpg")}}) +
                     valores.SqlCategoria("01F", "COL") +
                     valores.SqlValor("01F", "COL", "ROJ", 1, "3", "0", Foto("rojo.jpg")) +
                     "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA) VALUES ('AR','W','01F'," +
                     Foto("otra.pdf") + ");\n");
        stock = empresa_.Corre("/STOCK:000001");
        trasStock = Mira(tienda_);
    }
    void PulsaLosBotones()
    {
        using sync::Proceso;
        VentanaReal ventana(empresa_);
        empresa_.Sql("UPDATE M_ARTIC SET ACTIVOWEB='N' WHERE CODARTICULO='01E';\n"
                     "INSERT INTO VALESDTO (CODVALE,CODARTICULOVALE,CODCLIENTE,ESTADO,TIPODTO,"
                     "VALOR,DESCRIPCION,FECHADESDE,FECHAHASTA,NUSOS) VALUES ('V10','VALE',Null,'1',"
                     "'D',10,'Verano',#01/02/2024#,#12/31/2024#,5);\n");
        viejas["articulos"] = ImagenesEnSuOrden(tienda_, {"01B", "01D"});
        articulos = ventana.Pulsa({.proceso = Proceso::Articulos,
                                   .desde = "01B",
                                   .hasta = "01D",
                                   .fotosArt = true,
                                   .adjuntos = true,
                                   .stock = true,
                                   .eliminaEnRango = true});
        trasArticulos = Mira(tienda_);
        familias = ventana.Pulsa({.proceso = Proceso::Familias, .fotosFam = true});
        botonStock = ventana.Pulsa({.proceso = Proceso::Stock, .stock = true});
        vales = ventana.Pulsa({.proceso = Proceso::Vales});
        alFinal = Mira(tienda_);
    }

    void EscribeFoto(const QString& nombre, const QColor& color) const
    {
        QImage foto(40, 20, QImage::Format_RGB32);
        foto.fill(color);
        if (!foto.save(Ruta(nombre), "JPEG"))
            throw std::runtime_error("no picture");
    }
    QString Foto(const QString& nombre) const { return "'" + Ruta(nombre) + "'"; }

    /// One article changes its pictures, one its values, one goes and one comes; a family changes
    /// its picture, one loses it, and a third one comes without any.
    QString SqlDeCambios() const
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

    TiendaDePrueba& tienda_;
    EmpresaReal empresa_;
};

const Casa& CasaDe(const Variante& variante)
{
    static std::map<std::string, std::unique_ptr<Casa>> casas;
    std::unique_ptr<Casa>& casa = casas[variante.nombre];
    if (!casa)
        casa = std::make_unique<Casa>(variante);
    return *casa;
}

class CasaEntera : public testing::TestWithParam<Variante> {
  protected:
    const Casa& casa = CasaDe(GetParam());
    const SentenciasDeTienda de{.formas = casa.formas};
    const ProductoEsperado A{"1", "01A", "Art 01A", "art-01a", "7"};
    const ProductoEsperado B{"2", "01B", "Art 01B", "art-01b"};
    const ProductoEsperado C{"3", "01C", "Art 01C", "art-01c"};
    const ProductoEsperado D{"4", "01D", "Art 01D", "art-01d"};
    const ProductoEsperado E{"5", "01E", "Art 01E", "art-01e"};
    const ProductoEsperado F{"6", "01F", "Art 01F", "art-01f"};

    /// The pictures of an article that a run found, which are these in some order.
    QStringList Viejas(const QString& corrida, const QString& codigo,
                       const QStringList& imagenes) const
    {
        const QStringList halladas = casa.viejas.at(corrida)[codigo];
        EXPECT_THAT(halladas, testing::UnorderedElementsAreArray(imagenes));
        return halladas;
    }
    /// The files of pictures in their folders, each with all the sizes of its kind.
    QStringList FotosEnSusTamanos(const QStringList& familias, const QStringList& imagenes) const
    {
        QStringList ficheros;
        const auto anade = [&ficheros](const QString& base, const QStringList& tamanos) {
            ficheros << base + ".jpg";
            for (const QString& tamano : tamanos)
                ficheros << base + "-" + tamano + "_default.jpg";
        };
        for (const QString& id : familias)
            anade("img/c/" + id, casa.formas.tamanosDeFamilia);
        for (const QString& img : imagenes)
            anade("img/p/" + CarpetaDeImagen(img) + "/" + img, casa.formas.tamanos);
        ficheros.sort();
        return ficheros;
    }
    /// In its middle.
    static bool EsVerde(const QByteArray& fichero)
    {
        QImage foto;
        foto.loadFromData(fichero, "JPEG");
        const QColor color = foto.pixelColor(foto.width() / 2, foto.height() / 2);
        return color.green() > 200 && color.red() < 60 && color.blue() < 60;
    }

    // What the articles make.

    QString Peso(const QString& peso) const { return casa.valores.Peso(peso); }
    /// The rows of lots are written only for the configurations of the management program.
    QStringList LoteDe(const ProductoEsperado& producto, const QString& idconf,
                       const QStringList& atributos, const QString& cantidad) const
    {
        if (!casa.valores.gestion)
            return {};
        return {Lote(producto, idconf, atributos, cantidad)};
    }
    QStringList ExistenciasDeB() const
    {
        return Existencias("2", "6") + LoteDe(B, "000001", {"001002"}, "2");
    }
    QStringList ExistenciasDeD(const QString& cantidad) const
    {
        return Existencias("4", cantidad) +
               LoteDe(D, "000003", {"001002", "002001", "003002"}, "1");
    }
    std::vector<CombinacionEsperada> CombinacionesDeD(const QString& roja,
                                                      const QString& azul) const
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
    QStringList CambioDeD(const QStringList& quitadas, int primera, int n,
                          const QStringList& existencias) const
    {
        return D.Cambio() + BorraImagenes(quitadas) + de.Foto(D, Numero(primera), 1) +
               QStringList{"DELETE FROM ps_category_product where id_product=4", Enlace("3", "4")} +
               de.BorraPrecios(D) + de.Tarifas(D, n) + de.BorraCombinaciones(D) +
               de.Combinaciones(D, CombinacionesDeD(Numero(primera + 1), Numero(primera + 2))) +
               existencias + QStringList{"DELETE FROM ps_product_attachment WHERE id_product=4"};
    }
    /// With one value less than at first, and a picture for the first one alone.
    QStringList CambioDeB(const QStringList& quitadas, int primera, int n) const
    {
        return B.Cambio() + BorraImagenes(quitadas) + de.Foto(B, Numero(primera), 1) +
               QStringList{"DELETE FROM ps_category_product where id_product=2", Enlace("3", "2")} +
               de.BorraPrecios(B) + de.TarifasYOferta(B, n) + de.BorraCombinaciones(B) +
               de.Combinaciones(B, {{{{"001002", Numero(primera + 1), true}}, "1.5", Peso("0.25")},
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
    QStringList LogDeLoteVacio(const QString& titulo) const
    {
        return {"SUBIENDO FICHERO ", titulo,
                "Error subiendo fichero " + casa.Actual() + "\\sentencias.sql",
                "ERROR SUBIENDO FICHERO sentencias.sql"};
    }
    QStringList LogSinFamilias() const
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
    QStringList LogDeFotos(const QString& comienzo, const QStringList& subidas,
                           const QString& final) const
    {
        QStringList log{comienzo};
        for (const QString& subida : subidas)
            log << "Subiendo imagen " + casa.Ruta(subida);
        return log << final;
    }
    QStringList LogDeFotosFamilias(const QStringList& subidas) const
    {
        return LogDeFotos("SUBIENDO FOTOS FAMILIAS...", subidas,
                          "Dimensionando rango de familias subidas");
    }
    QStringList LogDeFotosArticulos(const QStringList& subidas) const
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
};

TEST_P(CasaEntera, TodasLasCorridasTerminanYNingunaSentenciaFalla)
{
    for (const ResultadoCorrida& corrida :
         {casa.carga, casa.cambios, casa.soloArtic, casa.sinStock, casa.stock, casa.articulos,
          casa.familias, casa.botonStock, casa.vales}) {
        EXPECT_EQ(corrida.estado, 0);
        EXPECT_EQ(corrida.errores, "");
        EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    }
}

// The first load.

TEST_P(CasaEntera, LaCargaEnviaLosMaestrosYLasFamiliasEnSusLotes)
{
    ASSERT_EQ(casa.carga.lotes.size(), 6);
    EXPECT_EQ(EnLineas(casa.carga.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(casa.carga.SentenciasDe(1)), EnLineas(SentenciasDeGrupos()));
    EXPECT_EQ(EnLineas(casa.carga.SentenciasDe(2)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(EnLineas(casa.carga.SentenciasDe(3)), EnLineas(SentenciasDeFamilias(false)));
}

TEST_P(CasaEntera, LaCargaInsertaLosArticulosConSusCombinaciones)
{
    const QStringList deA = A.Alta() + QStringList{Etiqueta("1", "rojo"), Etiqueta("1", "azul")} +
                            de.Foto(A, "1", 1) + de.Foto(A, "2", 2) +
                            QStringList{Enlace("3", "1")} + de.Tarifas(A, 0) +
                            Existencias("1", "7") + QStringList{Enlace("2", "1")};
    const QStringList deB = B.Alta() + de.Foto(B, "3", 1) + QStringList{Enlace("3", "2")} +
                            de.TarifasYOferta(B, 5) +
                            de.Combinaciones(B, {{{{"001002", "4", true}}, "1.5", Peso("0.25")},
                                                 {{{"001001", "4"}}, "0", "0"},
                                                 {{{"001003"}}, "2", "0"}}) +
                            ExistenciasDeB() + QStringList{Enlace("4", "2")};
    const QStringList deC = C.Alta() + QStringList{Enlace("3", "3")} + de.Tarifas(C, 14) +
                            de.Combinaciones(C, {{{{"001002"}, {"002002"}}, "1.5", "0"},
                                                 {{{"001002"}, {"002001"}}, "1", "0"},
                                                 {{{"001001"}, {"002002"}}, "2.5", "0"},
                                                 {{{"001001"}, {"002001"}}, "2", "0"}}) +
                            Existencias("3", "5") + LoteDe(C, "000002", {"001001", "002002"}, "3");
    const QStringList deD = D.Alta() + de.Foto(D, "5", 1) + QStringList{Enlace("3", "4")} +
                            de.Tarifas(D, 19) + de.Combinaciones(D, CombinacionesDeD("6", "7")) +
                            ExistenciasDeD("4");

    EXPECT_EQ(EnLineas(casa.carga.SentenciasDe(4)), EnLineas(deA + deB + deC + deD));
}

TEST_P(CasaEntera, LaCargaPublicaUnaVezElDocumentoDeDosArticulos)
{
    // clang-format off
    EXPECT_EQ(EnLineas(casa.carga.SentenciasDe(5)),
              EnLineas({"INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (1,'ficha.pdf','ficha.pdf',5,'" + casa.Ruta("ficha.pdf") + "')",
                        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'ficha.pdf','Ficha')",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,1)",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,3)",
                        "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (2,'otra.pdf','otra.pdf',4,'" + casa.Ruta("otra.pdf") + "')",
                        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (2,1,'otra.pdf','Otra')",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (2,3)"}));
    // clang-format on
}

TEST_P(CasaEntera, LaCargaSeCuentaEnElRegistro)
{
    EXPECT_EQ(
        EnLineas(casa.carga.log),
        EnLineas(
            CabeceraDelLog() + LogDeMarcas() +
            QStringList{"Comprobando articulos que ya no estan..."} + LogDeMaestros() +
            LogDeFamilias({"01", "0101"}) +
            LogDeArticulos({"Añadiendo artículo 01A / ALT01A", "Añadiendo artículo 01B / ALT01B",
                            "Añadiendo artículo 01C / ALT01C", "Añadiendo artículo 01D / ALT01D"}) +
            LogDeCierre() + LogDeFotosFamilias({"rojo.jpg -> 3.jpg", "azul.jpg -> 4.jpg"}) +
            QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS...",
                        "Subiendo adjunto " + casa.Ruta("ficha.pdf"),
                        "Subiendo adjunto " + casa.Ruta("otra.pdf"),
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE actualización de adjuntos"} +
            LogDeFotosArticulos({"rojo.jpg -> 1.jpg", "azul.jpg -> 2.jpg", "rojo.jpg -> 3.jpg",
                                 "azul.jpg -> 4.jpg", "azul.jpg -> 5.jpg", "rojo.jpg -> 6.jpg",
                                 "azul.jpg -> 7.jpg"}) +
            FinDelLog()));
}

TEST_P(CasaEntera, LaCargaSigueElOrdenDeLaConversacion)
{
    QStringList pasos = PasosDeCabecera();
    for (int lote = 0; lote < 4; ++lote) // makers, groups, attributes, families
        pasos += PasosDeLote();
    pasos += PasosDeArticulos() + PasosDeFotos({"3", "4"}, "imgfam.txt") + QStringList{"sesion"} +
             PasosDe("ficha.pdf") + PasosDe("otra.pdf") + PasosDeLote() +
             PasosDeFotos(Numeros(1, 7), "imgart.txt");
    EXPECT_EQ(EnLineas(PasosFtp(casa.carga.ftp)), EnLineas(pasos));
    EXPECT_EQ(EnLineas(casa.carga.http),
              EnLineas(Peticiones(
                  {"borracache.php", "ejecuta.php", "ejecuta.php", "ejecuta.php", "ejecuta.php",
                   "ejecuta.php", "creapath.php", "borraimg.php?sufijofoto=_default",
                   "dimensiona.php?fichero=imgfam.txt&sufijofoto=_default", "borracache.php",
                   "ejecuta.php", "dimensiona.php?fichero=imgart.txt&sufijofoto=_default",
                   "borracache.php"})));
}

TEST_P(CasaEntera, LaCargaMandaSusListas)
{
    EXPECT_EQ(casa.carga.Lineas("creapath.txt"),
              (QStringList{"1;", "2;", "3;", "4;", "5;", "6;", "7;"}));
    EXPECT_EQ(EnLineas(casa.carga.Lineas("imgborra.txt")), EnLineas(LineasDeFamilias({"3", "4"})));
    EXPECT_EQ(casa.carga.Lineas("imgfam.txt"), (QStringList{"img/c/3.jpg;", "img/c/4.jpg;"}));
    EXPECT_EQ(EnLineas(casa.carga.Lineas("imgart.txt")), EnLineas(LineasDeSubidas(Numeros(1, 7))));
}

TEST_P(CasaEntera, TrasLaCargaLaTiendaTieneLosArticulosConSusDatos)
{
    EXPECT_EQ(casa.trasCarga.De("producto"), (Filas{{"1", "01A", "3", "7"},
                                                    {"2", "01B", "3", "NULL"},
                                                    {"3", "01C", "3", "NULL"},
                                                    {"4", "01D", "3", "NULL"}}));
    EXPECT_EQ(casa.trasCarga.De("enlace"),
              (Filas{{"1", "2"}, {"1", "3"}, {"2", "3"}, {"2", "4"}, {"3", "3"}, {"4", "3"}}));
    EXPECT_EQ(casa.trasCarga.De("etiqueta"), (Filas{{"1", "rojo"}, {"1", "azul"}}));
    EXPECT_EQ(casa.trasCarga.De("precio"), (Filas{{"1", "5", "1", "5"},
                                                  {"2", "9", "6", "14"},
                                                  {"3", "5", "15", "19"},
                                                  {"4", "5", "20", "24"}}));
    EXPECT_EQ(casa.trasCarga.De("adjunto"),
              (Filas{{"1", "ficha.pdf", "1"}, {"1", "ficha.pdf", "3"}, {"2", "otra.pdf", "3"}}));
    EXPECT_EQ(casa.trasCarga.De("marca"), (Filas{{"7", "Casa Uno"}}));
    EXPECT_EQ(casa.trasCarga.De("familia"), (Filas{{"1", "0", "1", "8", "0", "NULL"},
                                                   {"2", "1", "2", "7", "1", "NULL"},
                                                   {"3", "2", "3", "6", "2", "01"},
                                                   {"4", "3", "4", "5", "3", "0101"}}));
}

// The product's id and the ordinal in five digits, however many zeros the literal has.
TEST_P(CasaEntera, LaTiendaFormaLosNumerosDeLasCombinaciones)
{
    const QString ninguno = casa.formas.porDefecto;
    const QString cuarto = Peso("0.25") + (casa.valores.gestion ? ".000000" : "0000");
    const QString medio = Peso("0.5") + (casa.valores.gestion ? ".000000" : "00000");
    const auto fila = [](const QString& id, const QString& nombres, const QString& precio,
                         const QString& peso, const QString& defecto) {
        return QStringList{id.left(1), id, nombres, precio, precio, peso, defecto};
    };
    const QString nada = "0.000000";
    EXPECT_EQ(casa.trasCarga.De("combinacion"),
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
TEST_P(CasaEntera, LaFotoDeVariosValoresDeUnArticuloEsUnaSolaImagen)
{
    const bool nuevo = casa.formas.porDefecto == "NULL";
    const auto tapa = [nuevo](const QString& antigua) { return nuevo ? QString("NULL") : antigua; };
    EXPECT_EQ(casa.trasCarga.De("imagen"), (Filas{{"1", "1", "1", "1"},
                                                  {"2", "1", "2", tapa("2")},
                                                  {"3", "2", "1", "1"},
                                                  {"4", "2", "11", tapa("1")},
                                                  {"5", "4", "1", "1"},
                                                  {"6", "4", "11", tapa("1")},
                                                  {"7", "4", "11", tapa("3")}}));
    EXPECT_EQ(casa.trasCarga.De("imagenDeCombinacion"), (Filas{{"200001", "4"},
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

TEST_P(CasaEntera, LasExistenciasSonLasDelArticuloYConLaGestionLasDeSusCombinaciones)
{
    Filas esperadas{{"1000000", "1", "0", "7"}, {"2000000", "2", "0", "6"}};
    if (casa.valores.gestion)
        esperadas.push_back({"2000001", "2", "200001", "2"});
    esperadas.push_back({"3000000", "3", "0", "5"});
    if (casa.valores.gestion)
        esperadas.push_back({"3000002", "3", "300003", "3"});
    esperadas.push_back({"4000000", "4", "0", "4"});
    if (casa.valores.gestion)
        esperadas.push_back({"4000003", "4", "400002", "1"});

    EXPECT_EQ(casa.trasCarga.De("existencia"), esperadas);
}

TEST_P(CasaEntera, TrasLaCargaLasFotosEstanEnTodosSusTamanos)
{
    EXPECT_EQ(EnLineas(casa.trasCarga.fotos.keys()),
              EnLineas(FotosEnSusTamanos({"3", "4"}, Numeros(1, 7))));
}

// A second run of everything, after changes.

TEST_P(CasaEntera, LosCambiosRetiranElArticuloQueYaNoSePublica)
{
    ASSERT_EQ(casa.cambios.lotes.size(), 7);
    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(1)), EnLineas(de.Retirada("3", {})));
}

TEST_P(CasaEntera, LosCambiosVuelvenAEnviarLosMaestrosYLasFamilias)
{
    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(2)), EnLineas(SentenciasDeGrupos()));
    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(3)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(4)), EnLineas(SentenciasDeFamilias(true)));
}

// What has not changed since is passed by; the numbers go on from the highest in the shop.
TEST_P(CasaEntera, LosCambiosEscribenLoCambiadoYLoNuevo)
{
    const ProductoEsperado nuevoA{"1", "01A", "Nuevo A", "nuevo-a", "7"};
    const QStringList deA =
        nuevoA.Cambio() + QStringList{Etiqueta("1", "rojo"), Etiqueta("1", "azul")} +
        BorraImagenes(Viejas("cambios", "01A", {"1", "2"})) + de.Foto(nuevoA, "8", 1) +
        QStringList{"DELETE FROM ps_category_product where id_product=1", Enlace("3", "1")} +
        de.BorraPrecios(nuevoA) + de.Tarifas(nuevoA, 24) + de.BorraCombinaciones(nuevoA) +
        Existencias("1", "8") +
        QStringList{Enlace("2", "1"), "DELETE FROM ps_product_attachment WHERE id_product=1"};
    const QStringList deE = E.Alta() + de.Foto(E, "11", 1) + QStringList{Enlace("3", "5")} +
                            de.Tarifas(E, 38) + de.Combinaciones(E, {{{{"001003"}}, "2", "0"}}) +
                            Existencias("5", "0");

    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(5)),
              EnLineas(deA + CambioDeB(Viejas("cambios", "01B", {"3", "4"}), 9, 29) + deE));
}

TEST_P(CasaEntera, LosCambiosEscribenDeNuevoElDocumentoConSuNumero)
{
    // clang-format off
    EXPECT_EQ(EnLineas(casa.cambios.SentenciasDe(6)),
              EnLineas({"DELETE FROM ps_attachment WHERE id_attachment=1",
                        "DELETE FROM ps_attachment_lang WHERE id_attachment=1",
                        "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (1,'ficha.pdf','ficha.pdf',5,'" + casa.Ruta("ficha.pdf") + "')",
                        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'ficha.pdf','Ficha')",
                        "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,1)"}));
    // clang-format on
}

TEST_P(CasaEntera, LosCambiosSeCuentanEnElRegistro)
{
    EXPECT_EQ(
        EnLineas(casa.cambios.log),
        EnLineas(CabeceraDelLog() + LogDeMarcas() +
                 QStringList{"Comprobando articulos que ya no estan...",
                             "Borrando Artículo 3 / ALT01C", "SUBIENDO FICHERO sentencias.sql",
                             "EJECUTANDO REMOTAMENTE Borrando artículos (...4)"} +
                 LogDeMaestros() + LogDeFamilias({"01", "0101", "02"}) +
                 LogDeArticulos({"Actualizando articulo 01A / ALT01A",
                                 "Actualizando articulo 01B / ALT01B",
                                 "Añadiendo artículo 01E / ALT01E"}) +
                 LogDeCierre() + LogDeFotosFamilias({"verde.jpg -> 3.jpg"}) +
                 QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS...",
                             "Subiendo adjunto " + casa.Ruta("ficha.pdf"),
                             "SUBIENDO FICHERO sentencias.sql",
                             "EJECUTANDO REMOTAMENTE actualización de adjuntos"} +
                 LogDeFotosArticulos({"verde.jpg -> 8.jpg", "rojo.jpg -> 9.jpg",
                                      "verde.jpg -> 10.jpg", "rojo.jpg -> 11.jpg"}) +
                 FinDelLog()));
}

TEST_P(CasaEntera, LosCambiosSiguenElOrdenDeLaConversacion)
{
    QStringList pasos = PasosDeCabecera();
    for (int lote = 0; lote < 5; ++lote) // makers, withdrawn, groups, attributes, families
        pasos += PasosDeLote();
    pasos += PasosDeArticulos() + PasosDeFotos({"3"}, "imgfam.txt") + QStringList{"sesion"} +
             PasosDe("ficha.pdf") + PasosDeLote() + PasosDeFotos(Numeros(8, 11), "imgart.txt");
    EXPECT_EQ(EnLineas(PasosFtp(casa.cambios.ftp)), EnLineas(pasos));
}

TEST_P(CasaEntera, LosCambiosMandanSusListas)
{
    EXPECT_EQ(casa.cambios.Lineas("creapath.txt"), (QStringList{"8;", "9;", "1/0;", "1/1;"}));
    EXPECT_EQ(EnLineas(casa.cambios.Lineas("imgborra.txt")),
              EnLineas(QStringList{"img/p/.jpg;", "img/p//.jpg;", "img/p//-*.jpg;"} +
                       LineasDeFamilias({"3", "4", "5"}) +
                       LineasDeBorrado(Viejas("cambios", "01A", {"1", "2"}) +
                                       Viejas("cambios", "01B", {"3", "4"}))));
    EXPECT_EQ(casa.cambios.Lineas("imgfam.txt"), QStringList{"img/c/3.jpg;"});
    EXPECT_EQ(EnLineas(casa.cambios.Lineas("imgart.txt")),
              EnLineas(LineasDeSubidas(Numeros(8, 11))));
}

// The links of the withdrawn article's documents stay.
TEST_P(CasaEntera, TrasLosCambiosLaTiendaTieneLoNuevoYLoQueNoHaCambiado)
{
    EXPECT_EQ(casa.trasCambios.De("producto"), (Filas{{"1", "01A", "3", "7"},
                                                      {"2", "01B", "3", "NULL"},
                                                      {"4", "01D", "3", "NULL"},
                                                      {"5", "01E", "3", "NULL"}}));
    EXPECT_EQ(casa.trasCambios.De("texto"), (Filas{{"1", "Nuevo A", "nuevo-a", "Notas 01A"},
                                                   {"2", "Art 01B", "art-01b", "Notas 01B"},
                                                   {"4", "Art 01D", "art-01d", "Notas 01D "},
                                                   {"5", "Art 01E", "art-01e", "Notas 01E "}}));
    EXPECT_EQ(casa.trasCambios.De("precio"), (Filas{{"1", "5", "25", "29"},
                                                    {"2", "9", "30", "38"},
                                                    {"4", "5", "20", "24"},
                                                    {"5", "5", "39", "43"}}));
    EXPECT_EQ(casa.trasCambios.De("adjunto"),
              (Filas{{"1", "ficha.pdf", "1"}, {"1", "ficha.pdf", "3"}, {"2", "otra.pdf", "3"}}));
    QStringList combinaciones;
    for (const QStringList& fila : casa.trasCambios.De("combinacion"))
        combinaciones << fila[1] + " " + fila[2];
    EXPECT_EQ(
        EnLineas(combinaciones),
        EnLineas({"200001 Rojo", "200002 Azul", "400001 Rojo,Chico,Lana", "400002 Rojo,Chico,Lino",
                  "400003 Rojo,Grande,Lana", "400004 Rojo,Grande,Lino", "400005 Azul,Chico,Lana",
                  "400006 Azul,Chico,Lino", "400007 Azul,Grande,Lana", "400008 Azul,Grande,Lino",
                  "500001 Verde"}));
    EXPECT_EQ(casa.trasCambios.De("familia"), (Filas{{"1", "0", "1", "10", "0", "NULL"},
                                                     {"2", "1", "2", "9", "1", "NULL"},
                                                     {"3", "2", "3", "6", "2", "01"},
                                                     {"4", "3", "4", "5", "3", "0101"},
                                                     {"5", "2", "7", "8", "2", "02"}}));
}

TEST_P(CasaEntera, TrasLosCambiosLasFotosViejasSeHanIdoYLasNuevasEstanEnTodosSusTamanos)
{
    EXPECT_EQ(EnLineas(casa.trasCambios.fotos.keys()),
              EnLineas(FotosEnSusTamanos({"3"}, Numeros(5, 11))));
    // The family keeps its number, so its new picture takes the old one's place.
    for (const QString& fichero : FotosEnSusTamanos({"3"}, {"8"}))
        EXPECT_TRUE(EsVerde(casa.trasCambios.fotos[fichero])) << fichero.toStdString();
}

// The modes that leave the families.

TEST_P(CasaEntera, SoloArticEnviaLosMaestrosYElArticuloCambiado)
{
    ASSERT_EQ(casa.soloArtic.lotes.size(), 6);
    EXPECT_EQ(EnLineas(casa.soloArtic.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(casa.soloArtic.SentenciasDe(1)), EnLineas(SentenciasDeGrupos()));
    EXPECT_EQ(EnLineas(casa.soloArtic.SentenciasDe(2)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(casa.soloArtic.lotes.value(3), "");
    EXPECT_EQ(EnLineas(casa.soloArtic.SentenciasDe(4)),
              EnLineas(CambioDeD(Viejas("soloArtic", "01D", {"5", "6", "7"}), 12, 43,
                                 ExistenciasDeD("9"))));
    EXPECT_EQ(casa.soloArtic.lotes.value(5), "");
}

TEST_P(CasaEntera, SinStockEnviaLoMismoSinLasExistencias)
{
    ASSERT_EQ(casa.sinStock.lotes.size(), 6);
    EXPECT_EQ(EnLineas(casa.sinStock.SentenciasDe(2)), EnLineas(SentenciasDeAtributos()));
    EXPECT_EQ(EnLineas(casa.sinStock.SentenciasDe(4)),
              EnLineas(CambioDeD(Viejas("sinStock", "01D", {"12", "13", "14"}), 15, 48, {})));
    const Filas existencias = casa.trasSinStock.De("existencia");
    EXPECT_NE(
        std::find(existencias.begin(), existencias.end(), QStringList({"4000000", "4", "0", "9"})),
        existencias.end());
    EXPECT_EQ(EnLineas(casa.trasSinStock.fotos.keys()),
              EnLineas(FotosEnSusTamanos({"3"}, Numeros(8, 11) + Numeros(15, 17))));
}

TEST_P(CasaEntera, LosDosModosDeSoloArticulosSeCuentanIgual)
{
    const auto log = [this](int primera) {
        const auto foto = [primera](const QString& nombre, int i) {
            return nombre + " -> " + Numero(primera + i) + ".jpg";
        };
        return EnLineas(
            CabeceraDelLog() + LogDeMarcas() +
            QStringList{"Comprobando articulos que ya no estan..."} + LogDeMaestros() +
            LogSinFamilias() + LogDeArticulos({"Actualizando articulo 01D / ALT01D"}) +
            LogDeCierre() +
            QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS..."} +
            LogDeLoteVacio("EJECUTANDO REMOTAMENTE actualización de adjuntos") +
            LogDeFotosArticulos({foto("azul.jpg", 0), foto("rojo.jpg", 1), foto("azul.jpg", 2)}) +
            FinDelLog());
    };
    EXPECT_EQ(EnLineas(casa.soloArtic.log), log(12));
    EXPECT_EQ(EnLineas(casa.sinStock.log), log(15));
}

TEST_P(CasaEntera, LosDosModosDeSoloArticulosSiguenElMismoOrden)
{
    const auto pasos = [](const QStringList& fotos) {
        return EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote() + PasosDeLote() +
                        PasosVacios() + PasosDeArticulos() + QStringList{"sesion"} + PasosVacios() +
                        PasosDeFotos(fotos, "imgart.txt"));
    };
    EXPECT_EQ(EnLineas(PasosFtp(casa.soloArtic.ftp)), pasos(Numeros(12, 14)));
    EXPECT_EQ(EnLineas(PasosFtp(casa.sinStock.ftp)), pasos(Numeros(15, 17)));
    const QStringList paginas = Peticiones(
        {"borracache.php", "ejecuta.php", "ejecuta.php", "ejecuta.php", "ejecuta.php",
         "ejecuta.php", "creapath.php", "borraimg.php?sufijofoto=_default", "borracache.php",
         "ejecuta.php", "dimensiona.php?fichero=imgart.txt&sufijofoto=_default", "borracache.php"});
    EXPECT_EQ(EnLineas(casa.soloArtic.http), EnLineas(paginas));
    EXPECT_EQ(EnLineas(casa.sinStock.http), EnLineas(paginas));
    EXPECT_EQ(EnLineas(casa.sinStock.Lineas("imgborra.txt")),
              EnLineas(LineasDeBorrado(Viejas("sinStock", "01D", {"12", "13", "14"}))));
}

// The stock, by its mode and by its button.

TEST_P(CasaEntera, StockRepiteLasExistenciasPorCadaFotoEInsertaEnteroElQueFalta)
{
    const QStringList deB = ExistenciasDeB();
    const QStringList deD = ExistenciasDeD("11");
    const QStringList deF = F.Alta() + QStringList{Enlace("3", "6")} + de.Tarifas(F, 53) +
                            de.Combinaciones(F, {{{{"001002"}}, "3", "0"}}) + Existencias("6", "0");

    ASSERT_EQ(casa.stock.lotes.size(), 3);
    EXPECT_EQ(EnLineas(casa.stock.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(casa.stock.lotes.value(1), "");
    EXPECT_EQ(EnLineas(casa.stock.SentenciasDe(2)),
              EnLineas(Existencias("1", "70") + deB + deB + deD + deD + deD +
                       Existencias("5", "0") + deF));
    EXPECT_EQ(casa.trasStock.fotos, casa.trasSinStock.fotos);
    EXPECT_EQ(casa.trasStock.De("imagen"), casa.trasSinStock.De("imagen"));
    EXPECT_EQ(casa.trasStock.De("adjunto"), casa.trasSinStock.De("adjunto"));
}

TEST_P(CasaEntera, StockSeCuentaEnElRegistro)
{
    const QStringList sinCarpetas{"Error subiendo fichero " + casa.Actual() + "\\creapath.txt",
                                  "ERROR SUBIENDO FICHERO creapath.txt",
                                  "BORRANDO CACHÉ DE PRESTASHOP"};
    const auto log = [&](const QStringList& lineas) {
        return EnLineas(CabeceraDelLog() + LogDeMarcas() +
                        QStringList{"Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."} +
                        LogSinFamilias() + LogDeArticulos(lineas) + sinCarpetas + FinDelLog());
    };
    EXPECT_EQ(
        EnLineas(casa.stock.log),
        log({"Actualizando STOCK articulo 01A / ALT01A", "Actualizando STOCK articulo 01B / ALT01B",
             "Actualizando STOCK articulo 01D / ALT01D", "Actualizando STOCK articulo 01E / ALT01E",
             "Añadiendo artículo 01F / ALT01F"}));
    EXPECT_EQ(EnLineas(casa.botonStock.log), log({"Actualizando STOCK articulo 01A / ALT01A",
                                                  "Actualizando STOCK articulo 01B / ALT01B",
                                                  "Actualizando STOCK articulo 01D / ALT01D",
                                                  "Actualizando STOCK articulo 01F / ALT01F"}));
}

TEST_P(CasaEntera, StockSigueElOrdenDeLaConversacion)
{
    const QStringList pasos = PasosDeCabecera() + PasosDeLote() + PasosVacios() +
                              QStringList{"sesion"} + PasosDeLote() + PasosDe("creapath.txt");
    const QStringList paginas =
        Peticiones({"borracache.php", "ejecuta.php", "ejecuta.php", "ejecuta.php", "creapath.php",
                    "borracache.php", "borracache.php"});
    for (const ResultadoCorrida& corrida : {casa.stock, casa.botonStock}) {
        EXPECT_EQ(EnLineas(PasosFtp(corrida.ftp)), EnLineas(pasos));
        EXPECT_EQ(EnLineas(corrida.http), EnLineas(paginas));
        EXPECT_EQ(corrida.Lineas("imgborra.txt"), QStringList());
    }
}

// A product without a picture has one row too.
TEST_P(CasaEntera, ElBotonDeStockHaceLoMismo)
{
    const QStringList deB = ExistenciasDeB();
    const QStringList deD = ExistenciasDeD("11");
    ASSERT_EQ(casa.botonStock.lotes.size(), 3);
    EXPECT_EQ(
        EnLineas(casa.botonStock.SentenciasDe(2)),
        EnLineas(Existencias("1", "70") + deB + deB + deD + deD + deD + Existencias("6", "0")));
}

// The other buttons.

TEST_P(CasaEntera, ElBotonDeArticulosRetiraYEscribeTodoElRango)
{
    ASSERT_EQ(casa.articulos.lotes.size(), 5);
    EXPECT_EQ(EnLineas(casa.articulos.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(casa.articulos.SentenciasDe(1)), EnLineas(de.Retirada("5", {"11"})));
    EXPECT_EQ(casa.articulos.lotes.value(2), "");
    EXPECT_EQ(EnLineas(casa.articulos.SentenciasDe(3)),
              EnLineas(CambioDeB(Viejas("articulos", "01B", {"9", "10"}), 18, 58) +
                       CambioDeD(Viejas("articulos", "01D", {"15", "16", "17"}), 20, 67,
                                 ExistenciasDeD("11"))));
    EXPECT_EQ(casa.articulos.lotes.value(4), "");
}

TEST_P(CasaEntera, ElBotonDeArticulosSeCuentaEnElRegistro)
{
    EXPECT_EQ(
        EnLineas(casa.articulos.log),
        EnLineas(
            CabeceraDelLog() + LogDeMarcas() +
            QStringList{"Comprobando articulos que ya no estan...", "Borrando Artículo 5 / ALT01E",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Borrando artículos (...5)",
                        "Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."} +
            LogSinFamilias() +
            LogDeArticulos(
                {"Actualizando articulo 01B / ALT01B", "Actualizando articulo 01D / ALT01D"}) +
            LogDeCierre() +
            QStringList{"BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS..."} +
            LogDeLoteVacio("EJECUTANDO REMOTAMENTE actualización de adjuntos") +
            LogDeFotosArticulos({"rojo.jpg -> 18.jpg", "verde.jpg -> 19.jpg", "azul.jpg -> 20.jpg",
                                 "rojo.jpg -> 21.jpg", "azul.jpg -> 22.jpg"}) +
            FinDelLog()));
}

// Of the withdrawn article the first picture's files go; of the others the old ones.
TEST_P(CasaEntera, ElBotonDeArticulosCambiaLasFotosDelRango)
{
    EXPECT_EQ(EnLineas(PasosFtp(casa.articulos.ftp)),
              EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote() + PasosVacios() +
                       PasosDeArticulos() + QStringList{"sesion"} + PasosVacios() +
                       PasosDeFotos(Numeros(18, 22), "imgart.txt")));
    EXPECT_EQ(EnLineas(casa.articulos.Lineas("imgborra.txt")),
              EnLineas(QStringList{"img/p/11.jpg;", "img/p/1/1/11.jpg;", "img/p/1/1/11-*.jpg;"} +
                       LineasDeBorrado(Viejas("articulos", "01B", {"9", "10"}) +
                                       Viejas("articulos", "01D", {"15", "16", "17"}))));
    EXPECT_EQ(EnLineas(casa.trasArticulos.fotos.keys()),
              EnLineas(FotosEnSusTamanos({"3"}, QStringList{"8"} + Numeros(18, 22))));
}

TEST_P(CasaEntera, ElBotonDeFamiliasEnviaElArbolYSusFotosYNadaMas)
{
    ASSERT_EQ(casa.familias.lotes.size(), 2);
    EXPECT_EQ(EnLineas(casa.familias.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    EXPECT_EQ(EnLineas(casa.familias.SentenciasDe(1)), EnLineas(SentenciasDeFamilias(true)));
    EXPECT_EQ(EnLineas(casa.familias.log),
              EnLineas(CabeceraDelLog() + LogDeMarcas() +
                       QStringList{"Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."} +
                       LogDeFamilias({"01", "0101", "02"}) +
                       QStringList{"Actualizando y modificando articulos"} + LogDeCierre() +
                       LogDeFotosFamilias({"verde.jpg -> 3.jpg"}) +
                       QStringList{"BORRANDO CACHÉ DE PRESTASHOP"} + FinDelLog()));
    EXPECT_EQ(EnLineas(PasosFtp(casa.familias.ftp)),
              EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote() + QStringList{"sesion"} +
                       PasosDe("imgborra.txt") + PasosDeFotos({"3"}, "imgfam.txt")));
    EXPECT_EQ(EnLineas(casa.familias.Lineas("imgborra.txt")),
              EnLineas(LineasDeFamilias({"3", "4", "5"})));
    EXPECT_EQ(EnLineas(casa.alFinal.fotos.keys()), EnLineas(casa.trasArticulos.fotos.keys()));
}

TEST_P(CasaEntera, ElBotonDeValesEnviaLasMarcasYLosVales)
{
    const QString hoy = HoyMysql();
    ASSERT_EQ(casa.vales.lotes.size(), 2);
    EXPECT_EQ(EnLineas(casa.vales.SentenciasDe(0)), EnLineas(SentenciasDeMarcas()));
    // clang-format off
    EXPECT_EQ(EnLineas(casa.vales.SentenciasDe(1)),
              EnLineas({"INSERT INTO ps_cart_rule(id_cart_rule, id_customer, date_from, date_to, description, quantity, quantity_per_user, priority, partial_use, code, minimum_amount, minimum_amount_tax, minimum_amount_currency, minimum_amount_shipping, country_restriction, carrier_restriction, group_restriction, cart_rule_restriction, product_restriction, shop_restriction, free_shipping, reduction_percent, reduction_amount, reduction_tax, reduction_currency, reduction_product, gift_product, gift_product_attribute, highlight, active, date_add, date_upd) VALUES (2,0,CAST('2024/01/02' AS DATE),CAST('2024/12/31' AS DATE),'Verano',5,1,1,1,'V10',0,1,1,0,0,0,0,0,0,0,0,10,0,1,1,0,0,0,0,1," + hoy + "," + hoy + ")",
                        "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (2,1,'Verano')"}));
    // clang-format on
    EXPECT_EQ(EnLineas(casa.vales.log),
              EnLineas(CabeceraDelLog() + LogDeMarcas() +
                       QStringList{"PREPARANDO CARGA DE VALES DE DESCUENTO",
                                   "Preparando Vale Descuento V10. Añadiendo",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"} +
                       FinDelLog()));
    EXPECT_EQ(EnLineas(PasosFtp(casa.vales.ftp)),
              EnLineas(PasosDeCabecera() + PasosDeLote() + PasosDeLote()));
    EXPECT_EQ(EnLineas(casa.vales.http), EnLineas(Peticiones({"borracache.php", "ejecuta.php",
                                                              "ejecuta.php", "borracache.php"})));
    EXPECT_EQ(casa.alFinal.De("vale"), (Filas{{"2", "V10"}}));
}

INSTANTIATE_TEST_SUITE_P(Tiendas, CasaEntera,
                         testing::Values(Variante{"De156", FormasDe<Tienda156>, false},
                                         Variante{"De160", FormasDe<Tienda160Con>, false},
                                         Variante{"De161", FormasDe<Tienda161>, false},
                                         Variante{"De156ConGestion", FormasDe<Tienda156>, true},
                                         Variante{"De160ConGestion", FormasDe<Tienda160Con>, true},
                                         Variante{"De161ConGestion", FormasDe<Tienda161>, true}),
                         [](const auto& caso) { return caso.param.nombre; });

} // namespace
