#include "e2e/ventana_real.h"
#include "sync/FrmSincronizar.h"
#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

using namespace tolmo;
using Filas = std::vector<QStringList>;

/// What an operator does at the window before the button of a run.
struct Gestos {
    const char* boton = nullptr;
    QStringList desmarca{};
    QStringList marca{};
    QString desde{};
    QString hasta{};
};

/// The window itself over the real engine and the real shop, opened anew for each run: a company
/// with two articles, one of them with a picture and a document, that has been sent whole.
struct VentanaDeVerdad : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        QImage foto(20, 20, QImage::Format_RGB32);
        foto.fill(Qt::red);
        ASSERT_TRUE(foto.save(empresa->Actual() + "/rojo.jpg", "JPEG"));
        empresa->Carpeta().Escribe("ficha.pdf", "Ficha");
        const QString rojo = "'" + empresa->Actual() + "/rojo.jpg'";
        empresa->Sql(
            SqlFamilia("01", 0, "Cocina", {{"FOTO", rojo}}) + SqlArticulo("01A") +
            SqlArticulo("01B", {{"FOTO", rojo}}) +
            "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','01B','" +
            empresa->Actual() + "/ficha.pdf','Ficha');\n" +
            "INSERT INTO VALESDTO (CODVALE,CODARTICULOVALE,CODCLIENTE,ESTADO,TIPODTO,VALOR,DESCRIPCION,FECHADESDE,FECHAHASTA,NUSOS) VALUES ('V10','VALE',Null,'1','D',10,'Verano',#01/02/2024#,#12/31/2024#,5);\n");
        motor = std::make_unique<VentanaReal>(*empresa);
        todo = Pulsa({.boton = "CmdSincronizaTodo"});
        tienda->Ejecuta("INSERT INTO ps_product (id_product,reference) VALUES (50,'AJENA')");
        sinCajas =
            Pulsa({.boton = "CmdSincronizaTodo",
                   .desmarca = {"ChkTodosFam", "ChkTodosArticulosNoEstan", "ChkTArtFotos",
                                "ChkTAdjuntos", "ChkTStock", "ChkRegenerarIndicesBusqueda"}});
        rango = Pulsa({.boton = "CmdSincronizarArticulos",
                       .desmarca = {"ChkArtFotos", "ChkAdjuntos"},
                       .marca = {"ChkEliminarArticNoEstan"},
                       .desde = "01B",
                       .hasta = "01Z"});
        familias = Pulsa({.boton = "CmdSincronizarFamilias", .desmarca = {"ChkFamFotos"}});
        existencias = Pulsa({.boton = "CmdStock"});
        vales = Pulsa({.boton = "CmdValesDto"});
    }
    static void TearDownTestSuite()
    {
        motor.reset();
        empresa.reset();
    }

    static ResultadoCorrida Pulsa(const Gestos& gestos)
    {
        FrmSincronizar ventana(motor->avisos, [](data::Progreso& progreso) {
            return std::make_unique<sync::Sincronizador>(motor->Programa(), progreso,
                                                         site::Esperas{});
        });
        ventana.show();
        for (const QString& caja : gestos.desmarca)
            ventana.findChild<QCheckBox*>(caja)->setChecked(false);
        for (const QString& caja : gestos.marca)
            ventana.findChild<QCheckBox*>(caja)->setChecked(true);
        ventana.findChild<QLineEdit*>("TxtArtDesde")->setText(gestos.desde);
        ventana.findChild<QLineEdit*>("TxtArtHasta")->setText(gestos.hasta);
        auto* boton = ventana.findChild<QPushButton*>(gestos.boton);
        auto* pestanas = ventana.findChild<QTabWidget*>("SSTab1");
        for (int i = 0; i < pestanas->count(); ++i)
            if (pestanas->widget(i)->isAncestorOf(boton))
                pestanas->setCurrentIndex(i);
        const ResultadoCorrida corrida = empresa->Observa([boton](ResultadoCorrida&) {
            QTest::mouseClick(boton, Qt::LeftButton);
            return 0;
        });
        EXPECT_FALSE(ventana.isVisible()) << gestos.boton;
        return corrida;
    }

    static QStringList SinFichero(const QString& nombre)
    {
        return {"Error subiendo fichero " + empresa->Actual() + "\\" + nombre,
                "ERROR SUBIENDO FICHERO " + nombre};
    }
    static QStringList LoteVacio(const QString& titulo)
    {
        return QStringList{"SUBIENDO FICHERO ", titulo} + SinFichero("sentencias.sql");
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline std::unique_ptr<VentanaReal> motor{};
    static inline ResultadoCorrida todo{}, sinCajas{}, rango{}, familias{}, existencias{}, vales{};
};

TEST_F(VentanaDeVerdad, NingunaCorridaEnsenaUnaCajaNiFalla)
{
    EXPECT_TRUE(motor->avisos.cajas.empty());
    for (const ResultadoCorrida& corrida : {todo, sinCajas, rango, familias, existencias, vales}) {
        EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
        EXPECT_EQ(corrida.log.count("FIN VUELCO DATOS A PRESTASHOP "), 1);
    }
}

TEST_F(VentanaDeVerdad, TodoConSusCajasComoVienenLoLlevaTodo)
{
    const QString actual = empresa->Actual();
    EXPECT_EQ(EnLineas(todo.log),
              EnLineas(CabeceraDelLog() +
                       QStringList{"Comprobando articulos que ya no estan...",
                                   "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                                   "CARGANDO TABLA ATRIBUTOS Y VALORES",
                                   "CARGANDO FAMILIAS",
                                   "Recopilando información de categorías",
                                   "Actualizando Familia 01",
                                   "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                                   "Actualizando y modificando articulos",
                                   "Añadiendo artículo 01A / ALT01A",
                                   "Añadiendo artículo 01B / ALT01B",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                                   "REGENERANDO INDICES DE BÚSQUEDA...",
                                   "ELIMINANDO FOTOS ANTIGUAS...",
                                   "SUBIENDO FOTOS FAMILIAS...",
                                   "Subiendo imagen " + actual + "/rojo.jpg -> 3.jpg",
                                   "Dimensionando rango de familias subidas",
                                   "BORRANDO CACHÉ DE PRESTASHOP",
                                   "SUBIENDO FICHEROS ADJUNTOS...",
                                   "Subiendo adjunto " + actual + "/ficha.pdf",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                                   "SUBIENDO FOTOS ARTICULOS...",
                                   "Subiendo imagen " + actual + "/rojo.jpg -> 1.jpg",
                                   "Dimensionando rango de artículos subidos"} +
                       FinDelLog()));
}

// No families, no withdrawal, no pictures, no documents, no search indexes.
TEST_F(VentanaDeVerdad, TodoSinSusCajasSoloMiraLosArticulos)
{
    EXPECT_EQ(EnLineas(sinCajas.log),
              EnLineas(CabeceraDelLog() +
                       QStringList{"Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                                   "CARGANDO TABLA ATRIBUTOS Y VALORES",
                                   "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                                   "Actualizando y modificando articulos"} +
                       LoteVacio("EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)") +
                       SinFichero("creapath.txt") + QStringList{"ELIMINANDO FOTOS ANTIGUAS..."} +
                       SinFichero("imgborra.txt") + QStringList{"BORRANDO CACHÉ DE PRESTASHOP"} +
                       FinDelLog()));
}

TEST_F(VentanaDeVerdad, ArticulosTomaSuRangoYSusCajas)
{
    EXPECT_EQ(EnLineas(rango.log),
              EnLineas(CabeceraDelLog() +
                       QStringList{"Comprobando articulos que ya no estan...",
                                   "Borrando Artículo 50 / ", "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE Borrando artículos (...3)",
                                   "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                                   "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."} +
                       LoteVacio("EJECUTANDO REMOTAMENTE Actualización de familias ...Fin") +
                       QStringList{"Actualizando y modificando articulos",
                                   "Actualizando articulo 01B / ALT01B",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"} +
                       SinFichero("creapath.txt") +
                       QStringList{"REGENERANDO INDICES DE BÚSQUEDA...",
                                   "ELIMINANDO FOTOS ANTIGUAS...", "BORRANDO CACHÉ DE PRESTASHOP"} +
                       FinDelLog()));
    EXPECT_EQ(rango.Sentencias("INSERT INTO ps_stock_available ").size(), 1);
    EXPECT_EQ(EnLineas(rango.Sentencias("DELETE FROM ps_image ")), "");
    EXPECT_EQ(EnLineas(rango.Sentencias("DELETE FROM ps_product_attachment ")), "");
    EXPECT_TRUE(tienda->ExisteFichero("img/p/1/1.jpg"));
}

TEST_F(VentanaDeVerdad, FamiliasSinSuCajaDejaLasFotosDeLaTienda)
{
    EXPECT_EQ(
        EnLineas(familias.log),
        EnLineas(CabeceraDelLog() +
                 QStringList{"Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                             "CARGANDO FAMILIAS", "Recopilando información de categorías",
                             "Actualizando Familia 01",
                             "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                             "SUBIENDO FICHERO sentencias.sql",
                             "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                             "Actualizando y modificando articulos",
                             "REGENERANDO INDICES DE BÚSQUEDA...", "ELIMINANDO FOTOS ANTIGUAS..."} +
                 SinFichero("imgborra.txt") + QStringList{"BORRANDO CACHÉ DE PRESTASHOP"} +
                 FinDelLog()));
    EXPECT_TRUE(tienda->ExisteFichero("img/c/3-category_default.jpg"));
}

TEST_F(VentanaDeVerdad, StockYValesHacenLoSuyo)
{
    EXPECT_EQ(EnLineas(existencias.log.filter(" / ALT")),
              EnLineas({"Actualizando STOCK articulo 01A / ALT01A",
                        "Actualizando STOCK articulo 01B / ALT01B"}));
    EXPECT_EQ(EnLineas(vales.log), EnLineas(CabeceraDelLog() +
                                            QStringList{"PREPARANDO CARGA DE VALES DE DESCUENTO",
                                                        "Preparando Vale Descuento V10. Añadiendo",
                                                        "SUBIENDO FICHERO sentencias.sql",
                                                        "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"} +
                                            FinDelLog()));
    EXPECT_EQ(tienda->Sql("SELECT code FROM ps_cart_rule"), (Filas{{"V10"}}));
}

} // namespace
