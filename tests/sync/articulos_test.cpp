#include "pasada_de_articulos.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;
using sync::Proceso;

namespace {

const QDate Hoy(2024, 3, 15);

TEST(HaCambiado, LaFechaDeLaTiendaAnteriorALaDelArticuloLoEnvia)
{
    EXPECT_TRUE(sync::HaCambiado(Dia(1, 9), Dia(1, 10), Hoy));
    EXPECT_FALSE(sync::HaCambiado(Dia(1, 10), Dia(1, 10), Hoy));
    EXPECT_FALSE(sync::HaCambiado(Dia(1, 11), Dia(1, 10), Hoy));
}

TEST(HaCambiado, ElCambiadoHoySeEnviaEnCadaCorridaDelDia)
{
    EXPECT_TRUE(sync::HaCambiado(Dia(3, 15), Dia(3, 15), Hoy));
    EXPECT_TRUE(sync::HaCambiado(Dia(3, 15), Dia(3, 15, QTime(10, 30)), Hoy));
    EXPECT_TRUE(sync::HaCambiado(Dia(3, 15, QTime(10, 31)), Dia(3, 15, QTime(10, 30)), Hoy));
    EXPECT_TRUE(sync::HaCambiado(Dia(3, 16), "15/03/2024 10:30", Hoy));
    EXPECT_FALSE(sync::HaCambiado(Dia(3, 16), Dia(3, 14, QTime(23, 59)), Hoy));
}

TEST(HaCambiado, SinFechaSeEnviaSiempre)
{
    EXPECT_TRUE(sync::HaCambiado(Dia(3, 14), Nulo(), Hoy));
    EXPECT_TRUE(sync::HaCambiado(Dia(3, 14), "", Hoy));
}

TEST(HaCambiado, UnProductoSinFechaEnLaTiendaCuentaComoAnterior)
{
    EXPECT_TRUE(sync::HaCambiado(Nulo(), Dia(1, 10), Hoy));
}

TEST(HaCambiado, LaHoraQueElCambioDeHoraSaltaCuentaComoCualquiera)
{
    const QDate domingo(2024, 3, 31);
    const QDateTime salta = data::SinZona(domingo, QTime(2, 30));
    EXPECT_TRUE(sync::HaCambiado(data::SinZona(domingo, QTime(2, 29)), salta, Hoy));
    EXPECT_FALSE(sync::HaCambiado(data::SinZona(domingo, QTime(2, 31)), salta, Hoy));
    EXPECT_TRUE(sync::HaCambiado(salta, "31/03/2024 2:31", Hoy));
    EXPECT_FALSE(sync::HaCambiado(salta, "31/03/2024 2:29", Hoy));
}

TEST(HaCambiado, UnaFechaGuardadaComoTextoSeLee)
{
    EXPECT_TRUE(sync::HaCambiado(Dia(1, 9), "10/01/2024", Hoy));
    EXPECT_FALSE(sync::HaCambiado(Dia(1, 11), "10/01/2024", Hoy));
}

const QString Alias =
    "DESCRIPCION AS PSCAMPODESCRIPCION0,DESCRIPCIO2 AS PSCAMPODESCORTA0,NULL AS PSTAG0,NULL AS PSKEYWORDS0,DESCRIPCION AS PsMetaTituloArt0,NOTAS AS PsMetaDescripcionArt0,";
const QString Cuerpo =
    "NULL AS FAMALT,KILOS AS PS_PESO,1 AS PS_CANTMINIMA,* FROM M_ARTIC LEFT JOIN WKOVTOLMO_ARTIC24031509050789 ON M_ARTIC.CODARTICULO=WKOVTOLMO_ARTIC24031509050789.CODART WHERE (ACTIVOWEB IN ('S') OR EMPRESASWEB LIKE '%,000001,%') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)";

struct SqlDeArticulosTest : testing::Test {
    CorridaDePrueba p{};
};

TEST_F(SqlDeArticulosTest, ElModoTodoLlevaSoloElOrden)
{
    EXPECT_EQ(sync::SqlDeArticulos(p.corrida),
              "SELECT " + Alias + Cuerpo + " ORDER BY CODARTICULO");
}

TEST_F(SqlDeArticulosTest, ElModoDeRangoLlevaDesdeYHasta)
{
    p.opciones.proceso = Proceso::Articulos;
    p.opciones.desde = "01";
    p.opciones.hasta = "02Z";

    EXPECT_EQ(sync::SqlDeArticulos(p.corrida),
              "SELECT " + Alias + Cuerpo +
                  " AND CODARTICULO>='01' AND CODARTICULO<='02Z' ORDER BY CODARTICULO");
}

TEST_F(SqlDeArticulosTest, ElModoDeFamiliasNoEncuentraNinguno)
{
    p.opciones.proceso = Proceso::Familias;

    EXPECT_EQ(sync::SqlDeArticulos(p.corrida),
              "SELECT " + Alias + Cuerpo +
                  " AND CODARTICULO>'0' AND CODARTICULO<'0' ORDER BY CODARTICULO");
}

TEST_F(SqlDeArticulosTest, ElModoDeStockLlevaSoloElOrden)
{
    p.opciones.proceso = Proceso::Stock;

    EXPECT_EQ(sync::SqlDeArticulos(p.corrida),
              "SELECT " + Alias + Cuerpo + " ORDER BY CODARTICULO");
}

TEST_F(SqlDeArticulosTest, CadaIdiomaPoneSusSeisColumnas)
{
    p.programa.parametros.Idiomas = {{.Idioma = 1,
                                      .CampoDescripcion = "a",
                                      .campodescorta = "b",
                                      .Tag = "c",
                                      .Keywords = "d",
                                      .METATITULO_ART = "e",
                                      .METADESCRIPCION_ART = "f"},
                                     {.Idioma = 2,
                                      .CampoDescripcion = "g",
                                      .campodescorta = "h",
                                      .Tag = "i",
                                      .Keywords = "j",
                                      .METATITULO_ART = "k",
                                      .METADESCRIPCION_ART = "l"}};

    EXPECT_TRUE(sync::SqlDeArticulos(p.corrida).startsWith(
        "SELECT a AS PSCAMPODESCRIPCION0,b AS PSCAMPODESCORTA0,c AS PSTAG0,d AS PSKEYWORDS0,e AS PsMetaTituloArt0,f AS PsMetaDescripcionArt0,g AS PSCAMPODESCRIPCION1,h AS PSCAMPODESCORTA1,i AS PSTAG1,j AS PSKEYWORDS1,k AS PsMetaTituloArt1,l AS PsMetaDescripcionArt1,NULL AS FAMALT,"));
}

TEST(CreaTablaNotas, SeRehaceConUnaColumnaPorIdioma)
{
    CorridaDePrueba p;
    p.programa.parametros.Idiomas.push_back(CorridaDePrueba::Idioma(5));
    p.programa.parametros.Idiomas[1].CampoNotas = "NOTAS_EN";
    p.local.EsperaOrden("DROP TABLE WKOVTOLMO_ARTIC24031509050789");
    p.local.EsperaOrden(
        "CREATE TABLE WKOVTOLMO_ARTIC24031509050789 (CODART nvarchar(20),PSNOTAS0 NTEXT,PSNOTAS1 NTEXT)");
    p.local.EsperaOrden(
        "INSERT INTO WKOVTOLMO_ARTIC24031509050789 (CODART,PSNOTAS0,PSNOTAS1) SELECT CODARTICULO,NOTAS,NOTAS_EN FROM M_ARTIC");

    sync::CreaTablaNotas(p.programa);

    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::Access);
}

TEST(CreaTablaNotas, QueNoExistieraNoImporta)
{
    CorridaDePrueba p;
    p.local.EsperaFallo("DROP TABLE WKOVTOLMO_ARTIC24031509050789",
                        {data::numero_error::Sentencia, "no hay tal tabla", "prueba"});
    p.local.EsperaOrden(
        "CREATE TABLE WKOVTOLMO_ARTIC24031509050789 (CODART nvarchar(20),PSNOTAS0 NTEXT)");
    p.local.EsperaOrden(
        "INSERT INTO WKOVTOLMO_ARTIC24031509050789 (CODART,PSNOTAS0) SELECT CODARTICULO,NOTAS FROM M_ARTIC");

    sync::CreaTablaNotas(p.programa);

    EXPECT_TRUE(p.prueba.avisos.cajas.empty());
}

TEST(LeeContadores, UnaTiendaVaciaEmpiezaEnCero)
{
    CorridaDePrueba p;
    p.tienda.Espera(
        "SELECT Max(ps_product.id_product) as martic FROM ps_product order by id_product",
        HazFilas({"martic"}, {{Nulo()}}));
    p.tienda.Espera("SELECT Max(ps_image.id_image) as mimage FROM ps_image",
                    HazFilas({"mimage"}, {{55}}));
    p.tienda.Espera("SELECT MAX(id_specific_price) AS mprecio FROM ps_specific_price",
                    HazFilas({"mprecio"}, {{6000000}}));

    sync::LeeContadores(p.corrida);

    EXPECT_EQ(p.corrida.contadores.martic, 0);
    EXPECT_EQ(p.corrida.contadores.mimage, 55);
    EXPECT_EQ(p.corrida.contadores.mprecio, 6000000);
}

using PasaArticulosTest = PasadaDeArticulos;

TEST_F(PasaArticulosTest, ElQueFaltaSeInsertaConElIdSiguiente)
{
    Articulos({"A", "B"});
    NoEstaEnLaTienda("A");
    NoEstaEnLaTienda("B");

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.fase.contadores.martic, 72);
    EXPECT_EQ(p.Log().mid(0, 3),
              (QStringList{"Actualizando y modificando articulos", "Añadiendo artículo A / ALT7",
                           "Añadiendo artículo B / ALT7"}));
}

TEST_F(PasaArticulosTest, ElQueNoHaCambiadoSePasaPorAlto)
{
    Articulos({"A"});
    EstaEnLaTienda("A", 33, Dia(2, 1));

    sync::PasaArticulos(p.fase);

    EXPECT_FALSE(p.Log().contains("Actualizando articulo A / ALT7"));
    EXPECT_EQ(p.fase.contadores.martic, 70);
}

TEST_F(PasaArticulosTest, ElQueHaCambiadoSeActualiza)
{
    Articulos({"A"});
    EstaEnLaTienda("A", 33, Dia(1, 9));

    sync::PasaArticulos(p.fase);

    EXPECT_TRUE(p.Log().contains("Actualizando articulo A / ALT7"));
}

// The two paths' copies of a query differ in a blank.
TEST_F(PasaArticulosTest, LaConsultaDeCategoriasLlevaUnBlancoEnElAltaYDosEnElCambio)
{
    Articulos({"A", "B"});
    NoEstaEnLaTienda("A");
    EstaEnLaTienda("B", 33, Dia(1, 9));

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(
        p.local.consultas.filter("SELECT DISTINCT"),
        (QStringList{
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='A' ORDER BY CODCATEGORIA",
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE  CODARTICULO='B' ORDER BY CODCATEGORIA"}));
}

TEST_F(PasaArticulosTest, LaConsultaDeLotesLlevaUnBlancoEnElCambioYDosEnElAltaYEnSoloStock)
{
    p.programa.parametros.PS_MODOCONFIGURADOR = true;
    p.opciones.stock = true;
    PermiteExistencias("A", "  ");
    PermiteExistencias("B", " ");
    Articulos({"A", "B"});
    NoEstaEnLaTienda("A");
    EstaEnLaTienda("B", 33, Dia(1, 9));

    sync::PasaArticulos(p.fase);

    p.opciones.proceso = Proceso::Stock;
    PermiteExistencias("C", "  ");
    Articulos({"C"});
    EstaEnLaTienda("C", 34, Dia(1, 9));

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.local.consultas.filter("CONFCAD").size(), 3);
}

TEST_F(PasaArticulosTest, EnElRangoSeActualizaAunqueNoHayaCambiado)
{
    p.opciones = {.proceso = Proceso::Articulos, .desde = "A", .hasta = "Z"};
    Articulos({"A"});
    EstaEnLaTienda("A", 33, Dia(2, 1));

    sync::PasaArticulos(p.fase);

    EXPECT_TRUE(p.Log().contains("Actualizando articulo A / ALT7"));
}

TEST_F(PasaArticulosTest, DeStockSinSuMarcaEsComoTodo)
{
    p.opciones = {.proceso = Proceso::Stock, .stock = false};
    Articulos({"A", "B", "C"});
    EstaEnLaTienda("A", 33, Dia(1, 9));
    EstaEnLaTienda("B", 34, Dia(2, 1));
    NoEstaEnLaTienda("C");

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.Log().mid(1, 2),
              (QStringList{"Actualizando articulo A / ALT7", "Añadiendo artículo C / ALT7"}));
    EXPECT_EQ(p.red.Lotes().at(0).filter("ps_stock_available"), QStringList());
}

// Its supplier's code is not looked for: only the reference tells one product from another.
TEST_F(PasaArticulosTest, ElQueLaTiendaTieneConOtraReferenciaSeInsertaComoNuevo)
{
    Articulos({"A"});
    NoEstaEnLaTienda("A");

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.tienda.todas, QStringList{SqlProductos("A")});
    EXPECT_TRUE(p.red.Lotes().at(0).at(0).startsWith("INSERT INTO ps_product ("));
    EXPECT_TRUE(p.red.Lotes().at(0).at(0).contains(" VALUES (71,null,"));
    EXPECT_TRUE(p.red.Lotes().at(0).at(0).contains(",'A','ALT7',"));
}

TEST_F(PasaArticulosTest, DeDosProductosConLaMismaReferenciaSeCambiaElPrimero)
{
    p.opciones.fotosArt = true;
    FilaDeArticulo fila;
    for (int i = 2; i <= 10; ++i)
        fila.Pon(qPrintable("FOTO" + QString::number(i)), Nulo());
    Articulos({"A"}, fila);
    p.tienda.Espera(SqlProductos("A"), HazFilas({"id_product", "reference", "id_image", "date_upd"},
                                                {{33, "A", 5, Dia(1, 9)},
                                                 {33, "A", 6, Dia(1, 9)},
                                                 {34, "A", 7, Dia(2, 1)},
                                                 {33, "A", 8, Dia(1, 9)}}));

    sync::PasaArticulos(p.fase);

    const QStringList lote = p.red.Lotes().at(0);
    EXPECT_EQ(lote.filter("34"), QStringList());
    EXPECT_TRUE(lote.at(0).endsWith(" WHERE id_product='33'||"));
    EXPECT_EQ(lote.filter("DELETE FROM ps_image where"),
              (QStringList{"DELETE FROM ps_image where id_image=5||",
                           "DELETE FROM ps_image where id_image=6||"}))
        << "as far as the next product's rows";
}

TEST_F(PasaArticulosTest, ElPrimeroDeDosProductosConLaMismaReferenciaDiceSiHaCambiado)
{
    Articulos({"A"});
    p.tienda.Espera(SqlProductos("A"),
                    HazFilas({"id_product", "reference", "id_image", "date_upd"},
                             {{33, "A", Nulo(), Dia(2, 1)}, {34, "A", Nulo(), Dia(1, 9)}}));

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.Log().filter("Actualizando articulo "), QStringList());
}

TEST_F(PasaArticulosTest, UnaSeleccionVaciaNoMandaLote)
{
    Articulos({});

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.Log(), QStringList{"Actualizando y modificando articulos"});
}

TEST_F(PasaArticulosTest, ElLoteViejoSeBorraAntesDelPrimerArticulo)
{
    p.prueba.carpeta.Escribe("sentencias.sql", "vieja||\r\n");
    Articulos({"A"});
    EstaEnLaTienda("A", 33, Dia(2, 1));

    sync::PasaArticulos(p.fase);

    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(PasaArticulosTest, ConLaSeleccionVaciaElLoteViejoQueda)
{
    p.prueba.carpeta.Escribe("sentencias.sql", "vieja||\r\n");
    Articulos({});

    sync::PasaArticulos(p.fase);

    EXPECT_TRUE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(PasaArticulosTest, ElUltimoTituloMuestraLaPosicionDelFinal)
{
    Articulos({"A"});
    EstaEnLaTienda("A", 33, Dia(2, 1));

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(Titulos(), QStringList{"EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"});
}

TEST_F(PasaArticulosTest, SeMandaLoteCadaVezQueElSiguienteEstaEnUnMultiploDe25YAlFinal)
{
    QStringList codigos;
    for (int i = 100; i < 151; ++i)
        codigos << QString::number(i);
    Articulos(codigos);
    for (const QString& codigo : codigos)
        NoEstaEnLaTienda(codigo);

    sync::PasaArticulos(p.fase);

    QStringList anteriores;
    const QStringList log = p.Log();
    for (int i = 1; i < log.size(); ++i)
        if (log[i].startsWith("SUBIENDO FICHERO"))
            anteriores << log[i - 1];
    // 51 articles, 100 to 150: batches when the next record is the 25th and the 50th, and at the
    // end.
    EXPECT_EQ(anteriores,
              (QStringList{"Añadiendo artículo 123 / ALT7", "Añadiendo artículo 148 / ALT7",
                           "Añadiendo artículo 150 / ALT7"}));
    EXPECT_EQ(Titulos(),
              (QStringList{"EJECUTANDO REMOTAMENTE Actualización de artículos (...25)",
                           "EJECUTANDO REMOTAMENTE Actualización de artículos (...50)",
                           "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"}));
}

TEST_F(PasaArticulosTest, AlFinalSaleUnSoloLoteMas)
{
    QStringList codigos;
    for (int i = 100; i < 125; ++i)
        codigos << QString::number(i);
    Articulos(codigos);
    for (const QString& codigo : codigos)
        NoEstaEnLaTienda(codigo);

    sync::PasaArticulos(p.fase);

    // 25 articles: one when the 25th is next, one at the end, and none besides.
    EXPECT_EQ(Titulos(),
              (QStringList{"EJECUTANDO REMOTAMENTE Actualización de artículos (...25)",
                           "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"}));
}

TEST_F(PasaArticulosTest, CadaArticuloMueveLaBarraYCedeElTurno)
{
    Articulos({"A", "B"});
    EstaEnLaTienda("A", 33, Dia(2, 1));
    EstaEnLaTienda("B", 34, Dia(2, 1));

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.progreso.avances, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}}));
    EXPECT_GE(p.progreso.turnos, 2);
}

TEST_F(PasaArticulosTest, LaPasadaDejaElDialectoDeLaTienda)
{
    p.programa.DialectoActivo = data::Dialecto::Access;
    Articulos({});

    sync::PasaArticulos(p.fase);

    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::MySql);
}

} // namespace
