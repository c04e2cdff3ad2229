#include "apoyo/programa_en_error.h"
#include "company/carga_param.h"
#include "data/ui/articulos_en_pantalla.h"
#include "dialogo.h"
#include "empresa_de_prueba.h"
#include "run/FrmConfiguracion.h"
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <gmock/gmock.h>

using namespace tolmo;
using data::Respuesta;

namespace {

using Cajas = std::vector<AvisosDePrueba::Caja>;

enum Pestana { Cabecera = -1, BaseDatos, Ftp, Parametros };

/// A field as it is laid down: where it stands, its column, its label, its tip, the width of its
/// column and what the company has in it.
struct Campo {
    int indice = 0;
    Pestana pestana = Cabecera;
    const char* columna = "";
    const char* rotulo = "";
    const char* ayuda = "";
    int ancho = 0;
    const char* valor = "";
};

// clang-format off
const std::vector<Campo> Campos{
    {113, Cabecera, "PS_IDIOMA", "Idioma por defecto:", "Código de prestashop en la tabla ps_lang", 4, "3"},
    {6, Cabecera, "PS_VERSION", "Versión Prestashop:", "", 4, "1"},
    {1, Cabecera, "PS_TABLAARTIC", "Tabla Artículos (por defecto M_ARTIC)", "", 60, "V_ARTIC"},
    {2, Cabecera, "PS_TABLAFAM", "Tabla Familias (por defecto M_FAMILIA)", "", 60, "V_FAMILIA"},
    {97, BaseDatos, "USER_BD", "Usuario:", "", 50, "c-user_bd"},
    {98, BaseDatos, "PASS_BD", "Clave:", "", 50, "c-pass_bd"},
    {99, BaseDatos, "SERVER_BD", "Servidor:", "", 100, "c-server_bd"},
    {100, BaseDatos, "PUERTO_BD", "Puerto:", "", 6, "3307"},
    {101, BaseDatos, "NOMBRE_BD", "Nombre BD:", "", 50, "c-nombre_bd"},
    {102, Ftp, "USER_FTP", "Usuario:", "", 50, "c-user_ftp"},
    {103, Ftp, "PASS_FTP", "Clave:", "", 50, "c-pass_ftp"},
    {104, Ftp, "SERVER_FTP", "Servidor:", "", 100, "c-server_ftp"},
    {105, Ftp, "PUERTO_FTP", "Puerto:", "", 6, "2121"},
    {110, Ftp, "CARPETA_TIENDA", "Carpeta tienda:", "", 255, "/c-tienda/"},
    {3, Parametros, "CADACTIVOWEB", "Letras en ActivoWeb:", "Letras (separadas por comas) que tiene que contener campo ActivoWeb del artículo o familia para incluirlo en la sincronización", 60, "S,P"},
    {4, Parametros, "CAMPOFAMALT", "Campo Fam. Alternat.:", "Campo de la ficha de Artículo que contiene los códigos de familias alternativas separados por comas. NOTA: SE PUEDE FORMULAR EN SQL", 255, "c-famalt"},
    {5, Parametros, "PS_PESO", "Campo Peso:", "Campo del peso del artículo. Por defecto KILOS de M_ARTIC", 255, "c-peso"},
    {7, Parametros, "PS_CANTMINIMA", "Campo Cantidad Mínima:", "Campo de cantidad mínima de venta del artículo. Por defecto 1", 255, "c-minima"},
    {8, Parametros, "PSALMACENES", "Almacenes Stock:", "Códigos de almacén (separados por comas) para sincronizar el stock de la tienda", 60, "01,02"},
    {9, Parametros, "PSGRUPOMARCAS", "Grupo Art Marcas:", "Grupo de artículos donde se indican las marcas/fabricantes", 2, "7"},
    {107, Parametros, "PS_PREFIJO", "Prefijo Tablas (ps_):", "", 10, "tst_"},
    {108, Parametros, "PS_INDICES1", "Regenerar index 1:", "", 255, "c-indices1"},
    {109, Parametros, "PS_INDICES2", "Regenerar index 2:", "", 255, "c-indices2"},
    {111, Parametros, "WWW", "Sitio web www:", "", 255, "c-www"},
    {112, Parametros, "PS_SUFIJOFOTO", "Sufijo imágen (_default):", "", 30, "_grande"},
    {116, Parametros, "PS_PROVREFERENCIA", "Proveedor para ref:", "", 10, "c-prov"},
    {119, Parametros, "PS_PVPDEF", "PVP Def:", "", 4, "2"},
};
const QString AvisoConfigurador = "ATENCIÓN. Si selecciona esta opción los atributos y combinaciones serán ELIMINADOS. Estos datos serán los del configurador de productos de KOV MARLA";
// clang-format on

const QString LeeEmpresa = "SELECT * FROM M_EMPRESA WHERE CODEMPRESA='000001'";
const QString LeeIdiomas = "SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001'";

class FrmConfiguracionTest : public testing::Test, public EmpresaDePrueba {
  protected:
    void Abre()
    {
        ventana.Prepara("1", "000001", "Norte");
        Muestra(ventana);
        Reposa();
    }
    void AbreYOlvida()
    {
        Abre();
        sentencias.clear();
    }
    QLineEdit& Caja(int indice)
    {
        return Hijo<QLineEdit>(ventana, qPrintable("txtCampo_" + QString::number(indice)));
    }
    QTabWidget& SSTab3() { return Hijo<QTabWidget>(ventana, "SSTab3"); }
    QCheckBox& ChkConfigurador() { return Hijo<QCheckBox>(ventana, "ChkConfigurador"); }
    data::ui::DataGrid& Rejilla() { return Hijo<data::ui::DataGrid>(ventana, "DataGrid1"); }
    void Pulsa(const char* boton)
    {
        QTest::mouseClick(&Hijo<QAbstractButton>(ventana, boton), Qt::LeftButton);
        Reposa();
    }
    void PulsaTecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::keyClick(ventana.focusWidget(), tecla, con);
        Reposa();
    }
    /// Replaces what stands in a box, on whatever tab it is.
    void Teclea(int indice, const QString& texto)
    {
        for (const Campo& campo : Campos)
            if (campo.indice == indice && campo.pestana != Cabecera)
                SSTab3().setCurrentIndex(campo.pestana);
        QTest::mouseClick(&Caja(indice), Qt::LeftButton);
        Reposa();
        PulsaTecla(Qt::Key_A, Qt::ControlModifier);
        PulsaTecla(Qt::Key_Delete);
        QTest::keyClicks(&Caja(indice), texto);
    }
    void TecleaCelda(int fila, int columna, const QString& texto)
    {
        TecleaEnCelda(Rejilla(), fila, columna, texto);
    }

    EscritorioDePrueba escritorio{};
    FrmConfiguracion ventana{programa, escritorio};
};

TEST_F(FrmConfiguracionTest, CadaCampoTieneSuColumnaSuRotuloYSuAyuda)
{
    Abre();

    for (const Campo& campo : Campos) {
        const QString numero = QString::number(campo.indice);
        const auto& etiqueta = Hijo<QLabel>(ventana, qPrintable("LblCampo_" + numero));
        const QLineEdit& caja = Caja(campo.indice);
        EXPECT_EQ(Rotulo(&etiqueta), campo.rotulo);
        EXPECT_EQ(etiqueta.buddy(), &caja) << campo.indice;
        EXPECT_EQ(caja.property("Tag").toString(), campo.columna);
        EXPECT_EQ(caja.toolTip(), campo.ayuda);
        const QWidget* pagina =
            campo.pestana == Cabecera ? nullptr : SSTab3().widget(campo.pestana);
        for (int i = 0; i < SSTab3().count(); ++i)
            EXPECT_EQ(SSTab3().widget(i)->isAncestorOf(&caja), SSTab3().widget(i) == pagina)
                << campo.indice;
    }
    EXPECT_EQ(ventana.findChildren<QLineEdit*>(QRegularExpression("^txtCampo_")).size(),
              qsizetype(Campos.size()) + 1);
    EXPECT_EQ(Rotulo(&Hijo<QLabel>(ventana, "LblCampo_0")), "Empresa");
    EXPECT_EQ(Caja(0).property("Tag").toString(), "CODEMPRESA");
}

TEST_F(FrmConfiguracionTest, TieneSusPestanasYDemasControles)
{
    Abre();

    QStringList pestanas;
    for (int i = 0; i < SSTab3().count(); ++i)
        pestanas << SSTab3().tabText(i).remove('&');
    EXPECT_EQ(pestanas, QStringList({"Base de datos", "Ftp", "Parámetros"}));
    EXPECT_EQ(Rotulo(&ChkConfigurador()), "Modo Configurador Kov Marla");
    EXPECT_EQ(ChkConfigurador().property("Tag").toString(), "PS_MODOCONFIGURADOR");
    EXPECT_TRUE(SSTab3().widget(Parametros)->isAncestorOf(&ChkConfigurador()));
    EXPECT_EQ(Hijo<QLabel>(ventana, "LblEmpresa").text(), "Norte");
    EXPECT_EQ(Rotulo(&Hijo<QPushButton>(ventana, "CmdAceptar")), "Aceptar");
    EXPECT_EQ(ventana.findChildren<QPushButton*>().size(), 1) << "there is no cancel button";
    EXPECT_EQ(Rejilla().toolTip(),
              "Indicar nombre de campo o formula sql para recuperar valor en cada idioma");
    EXPECT_EQ(Cabeceras(Rejilla()),
              QStringList({"IDIOMA", "CAMPODESCRIPCION", "CAMPODESCORTA", "CAMPONOTAS",
                           "CAMPOFAMDESCRIPCION", "CAMPOFAMNOTAS", "KEYWORDS", "KEYWORDS_FAM",
                           "METATITULO_ART", "METADESCRIPCION_ART", "METATITULO_FAM",
                           "METADESCRIPCION_FAM"}));
}

TEST_F(FrmConfiguracionTest, ElTabuladorVaDeArribaAbajoPorLaPestanaAbierta)
{
    const std::map<Pestana, QStringList> porPestana{
        {BaseDatos,
         {"txtCampo_97", "txtCampo_98", "CmdVer_98", "txtCampo_99", "txtCampo_100",
          "txtCampo_101"}},
        {Ftp,
         {"txtCampo_102", "txtCampo_103", "CmdVer_103", "txtCampo_104", "txtCampo_105",
          "txtCampo_110"}},
        {Parametros,
         {"txtCampo_3", "txtCampo_4", "txtCampo_5", "txtCampo_7", "txtCampo_8", "txtCampo_9",
          "txtCampo_107", "txtCampo_108", "txtCampo_109", "txtCampo_111", "txtCampo_112",
          "txtCampo_116", "txtCampo_119", "ChkConfigurador"}}};
    Abre();
    EXPECT_TRUE(Caja(113).hasFocus()) << "the first one";
    for (const auto& [pestana, campos] : porPestana) {
        SSTab3().setCurrentIndex(pestana);
        Caja(113).setFocus();
        QStringList recorrido;
        while (ventana.focusWidget() != &Rejilla() && recorrido.size() < 40) {
            recorrido << ventana.focusWidget()->objectName();
            PulsaTecla(Qt::Key_Tab);
        }

        EXPECT_EQ(recorrido, QStringList({"txtCampo_113", "txtCampo_6", "txtCampo_1", "txtCampo_2",
                                          "qt_tabwidget_tabbar"}) +
                                 campos);
    }
}

TEST_F(FrmConfiguracionTest, DelGridSeSaleConCtrlTab)
{
    Abre();
    Rejilla().setFocus();

    PulsaTecla(Qt::Key_Tab);
    EXPECT_TRUE(Rejilla().hasFocus()) << "Tab goes from cell to cell";
    PulsaTecla(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(ventana.focusWidget()->objectName(), "CmdAceptar");

    Rejilla().setFocus();
    PulsaTecla(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(SSTab3().isAncestorOf(ventana.focusWidget()));
}

// Activation.

TEST_F(FrmConfiguracionTest, ConElTagLeeLaFilaYLosIdiomasDeLaEmpresa)
{
    Abre();

    EXPECT_EQ(sentencias, QStringList({LeeEmpresa, LeeIdiomas}));
    EXPECT_EQ(cambiables, QStringList({LeeEmpresa, LeeIdiomas}));
    EXPECT_EQ(Caja(0).text(), "000001");
    for (const Campo& campo : Campos)
        EXPECT_EQ(Caja(campo.indice).text(), campo.valor) << campo.columna;
    EXPECT_FALSE(ChkConfigurador().isChecked());
    EXPECT_EQ(Celda(Rejilla(), 0, 1), "DESCRIPCION");
    EXPECT_EQ(Celda(Rejilla(), 1, 1), "DESCRIPCION_EN");
    EXPECT_EQ(Rejilla().Modelo().Filas(), 2) << "those of the other company aren't there";
}

TEST_F(FrmConfiguracionTest, UnNuloSeVeVacio)
{
    ventana.Prepara("1", "000002", "Sur");

    Muestra(ventana);

    EXPECT_EQ(Caja(97).text(), "sur");
    EXPECT_EQ(Caja(98).text(), "");
    EXPECT_EQ(Caja(113).text(), "");
    EXPECT_FALSE(ChkConfigurador().isChecked());
}

TEST_F(FrmConfiguracionTest, OtraActivacionConservaLoTecleadoYReleeLosIdiomas)
{
    Abre();
    Teclea(97, "otro");
    ventana.hide();
    Ejecuta(
        {"UPDATE PS_IDIOMAS SET CAMPODESCRIPCION='TITULO' WHERE CODEMPRESA='000001' AND IDIOMA=2"});
    sentencias.clear();

    Muestra(ventana);

    EXPECT_EQ(Caja(97).text(), "otro");
    EXPECT_EQ(sentencias, QStringList({LeeEmpresa, LeeIdiomas}));
    EXPECT_EQ(Celda(Rejilla(), 1, 1), "TITULO");
}

TEST_F(FrmConfiguracionTest, SinTagNoSeLeenLosCampos)
{
    ventana.Prepara("", "000001", "Norte");

    Muestra(ventana);

    EXPECT_EQ(Caja(97).text(), "");
}

TEST_F(FrmConfiguracionTest, UnaEmpresaSinFilaDejaSalirElError)
{
    ventana.Prepara("1", "000009", "Nadie");

    EXPECT_THROW(ventana.exec(), data::ErrorDatos);
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmConfiguracionTest, UnaSentenciaQueFallaDejaSalirElFinDelPrograma)
{
    Ejecuta({"DROP TABLE PS_IDIOMAS"});
    ventana.Prepara("1", "000001", "Norte");

    EXPECT_THROW(ventana.exec(), data::FinDePrograma);
    EXPECT_EQ(avisos.cajas.size(), 2U);
}

TEST_F(FrmConfiguracionTest, LaEmpresaNoSePuedeCambiar)
{
    Abre();

    QTest::mouseClick(&Caja(0), Qt::LeftButton);
    QTest::keyClicks(&Caja(0), "9");

    EXPECT_EQ(Caja(0).text(), "000001");
}

// The configurator's question.

TEST_F(FrmConfiguracionTest, MarcarElConfiguradorPregunta)
{
    Abre();
    SSTab3().setCurrentIndex(Parametros);
    avisos.respuestas = {Respuesta::Si};

    QTest::keyClick(&ChkConfigurador(), Qt::Key_Space);

    EXPECT_EQ(avisos.cajas, (Cajas{{AvisoConfigurador, 52, ""}}));
    EXPECT_TRUE(ChkConfigurador().isChecked());
}

TEST_F(FrmConfiguracionTest, ConLaRespuestaNoSeDesmarca)
{
    Abre();
    SSTab3().setCurrentIndex(Parametros);
    avisos.respuestas = {Respuesta::No};

    QTest::keyClick(&ChkConfigurador(), Qt::Key_Space);

    EXPECT_FALSE(ChkConfigurador().isChecked());
    EXPECT_EQ(avisos.cajas.size(), 1U) << "to clear it asks nothing";
}

TEST_F(FrmConfiguracionTest, DesmarcarloNoPregunta)
{
    Ejecuta({"UPDATE M_EMPRESA SET PS_MODOCONFIGURADOR=TRUE WHERE CODEMPRESA='000001'"});
    Abre();
    EXPECT_TRUE(ChkConfigurador().isChecked());
    EXPECT_EQ(avisos.cajas, Cajas{}) << "nor does the reading of the row";
    SSTab3().setCurrentIndex(Parametros);

    QTest::keyClick(&ChkConfigurador(), Qt::Key_Space);

    EXPECT_FALSE(ChkConfigurador().isChecked());
    EXPECT_EQ(avisos.cajas, Cajas{});
}

// Fields.

TEST_F(FrmConfiguracionTest, LoQueNoEsNumeroSeBorraDelIdiomaAlDejarlo)
{
    Abre();

    Teclea(113, "1a");
    PulsaTecla(Qt::Key_Tab);
    EXPECT_EQ(Caja(113).text(), "");

    Teclea(113, "4");
    PulsaTecla(Qt::Key_Tab);
    EXPECT_EQ(Caja(113).text(), "4");
}

TEST_F(FrmConfiguracionTest, ElIdiomaVacioDaElUnoAlCargarLosParametros)
{
    Abre();
    Teclea(113, "1a");

    Pulsa("CmdAceptar");

    EXPECT_EQ(De("PS_IDIOMA"), "NULL");
    programa.LblEmpresa = "000001 Norte";
    company::CargaParam(programa);
    EXPECT_EQ(programa.parametros.PS_IDIOMA, 1);
}

TEST_F(FrmConfiguracionTest, LosDemasCamposNoSeValidan)
{
    Abre();

    Teclea(6, "abc");
    PulsaTecla(Qt::Key_Tab);
    Teclea(100, "abc");
    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(Caja(6).text(), "abc");
    EXPECT_EQ(Caja(100).text(), "abc");
}

TEST_F(FrmConfiguracionTest, NingunCampoAdmiteMasQueSuColumna)
{
    Abre();

    for (const Campo& campo : Campos)
        EXPECT_EQ(Caja(campo.indice).maxLength(), campo.ancho) << campo.columna;
    Teclea(107, "prefijo_muy_largo_");
    EXPECT_EQ(Caja(107).text(), "prefijo_mu");
}

TEST_F(FrmConfiguracionTest, LoQueYaEsMasLargoQueElLimiteNoSeCorta)
{
    Ejecuta({"UPDATE M_EMPRESA SET PS_VERSION=12345 WHERE CODEMPRESA='000001'"});

    Abre();

    EXPECT_EQ(Caja(6).text(), "12345");
}

TEST_F(FrmConfiguracionTest, CadaClaveSeLeeSoloConSuBotonPulsado)
{
    Abre();
    for (const auto& [clave, boton, pestana] :
         {std::tuple(98, "CmdVer_98", BaseDatos), std::tuple(103, "CmdVer_103", Ftp)}) {
        SSTab3().setCurrentIndex(pestana);
        EXPECT_EQ(Caja(clave).echoMode(), QLineEdit::Password);
        EXPECT_FALSE(Caja(clave).displayText().contains("pass"));

        Hijo<QToolButton>(ventana, boton).setFocus();
        PulsaTecla(Qt::Key_Space);
        EXPECT_EQ(Caja(clave).displayText(), Caja(clave).text());
        Pulsa(boton);
        EXPECT_EQ(Caja(clave).echoMode(), QLineEdit::Password);
    }
}

// Accepting and leaving.

TEST_F(FrmConfiguracionTest, AceptarEscribeTodosLosCamposYCierra)
{
    AbreYOlvida();
    for (const Campo& campo : Campos)
        Teclea(campo.indice, "5");
    SSTab3().setCurrentIndex(Parametros);
    avisos.respuestas = {Respuesta::Si};
    QTest::keyClick(&ChkConfigurador(), Qt::Key_Space);

    Pulsa("CmdAceptar");

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(
        sentencias,
        QStringList(
            {"Select * from M_EMPRESA WHERE FALSE",
             "UPDATE M_EMPRESA SET PS_IDIOMA=5,PS_VERSION=5,PS_TABLAARTIC='5',PS_TABLAFAM='5',USER_BD='5',PASS_BD='5',SERVER_BD='5',PUERTO_BD='5',NOMBRE_BD='5',USER_FTP='5',PASS_FTP='5',SERVER_FTP='5',PUERTO_FTP='5',CARPETA_TIENDA='5',CADACTIVOWEB='5',CAMPOFAMALT='5',PS_PESO='5',PS_CANTMINIMA='5',PSALMACENES='5',PSGRUPOMARCAS='5',PS_PREFIJO='5',PS_INDICES1='5',PS_INDICES2='5',WWW='5',PS_SUFIJOFOTO='5',PS_PROVREFERENCIA='5',PS_PVPDEF=5,PS_MODOCONFIGURADOR= 1  WHERE CODEMPRESA='000001'"}));
    for (const Campo& campo : Campos)
        EXPECT_EQ(De(campo.columna), "5") << campo.columna;
    EXPECT_EQ(De("PS_MODOCONFIGURADOR"), "True");
    EXPECT_EQ(De("DESCRIPCION"), "Norte");
    EXPECT_EQ(De("USER_BD", "000002"), "sur") << "the other company stays";
}

TEST_F(FrmConfiguracionTest, UnCampoVacioSeEscribeComoNulo)
{
    Abre();
    Teclea(107, "");

    Pulsa("CmdAceptar");

    EXPECT_EQ(De("PS_PREFIJO"), "NULL");
}

TEST_F(FrmConfiguracionTest, IntroEnUnCampoAcepta)
{
    Abre();
    Teclea(99, "mysql.nuevo");

    PulsaTecla(Qt::Key_Return);

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(De("SERVER_BD"), "mysql.nuevo");
}

TEST_F(FrmConfiguracionTest, EscapeYElMarcoNoGuardanNada)
{
    Abre();
    Teclea(99, "mysql.nuevo");
    PulsaTecla(Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(De("SERVER_BD"), "c-server_bd");

    Abre();
    Teclea(99, "mysql.nuevo");
    ventana.close();
    EXPECT_EQ(De("SERVER_BD"), "c-server_bd");
}

// The languages.

TEST_F(FrmConfiguracionTest, UnaFilaDeIdiomaSeGuardaAlDejarlaSinAceptar)
{
    Abre();

    TecleaCelda(0, 1, "TITULO");
    PulsaCelda(Rejilla(), 1, 1);
    ventana.close();

    EXPECT_EQ(Idiomas(), "000001|1|TITULO 000001|2|DESCRIPCION_EN 000002|1|NOMBRE");
}

TEST_F(FrmConfiguracionTest, CerrarEnPlenaEdicionGuardaLaFilaQueSeTecleaba)
{
    Abre();

    TecleaCelda(1, 1, "TITULO_EN");
    ventana.close();

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Idiomas(), "000001|1|DESCRIPCION 000001|2|TITULO_EN 000002|1|NOMBRE");
}

TEST_F(FrmConfiguracionTest, UnIdiomaNuevoTomaLaEmpresa)
{
    Abre();

    TecleaCelda(2, 0, "5");
    QTest::keyClick(Editor(Rejilla()), Qt::Key_Tab);
    TecleaCelda(2, 1, "DESCRIPCION_PT");
    PulsaCelda(Rejilla(), 0, 0);

    EXPECT_EQ(
        Idiomas(),
        "000001|1|DESCRIPCION 000001|2|DESCRIPCION_EN 000001|5|DESCRIPCION_PT 000002|1|NOMBRE");
    EXPECT_EQ(avisos.cajas, Cajas{});
}

TEST_F(FrmConfiguracionTest, UnIdiomaQueYaEstaSeRechazaYNoDejaCerrar)
{
    Abre();

    TecleaCelda(2, 0, "2");
    ventana.close();

    EXPECT_TRUE(ventana.isVisible());
    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_TRUE(avisos.cajas[0].texto.startsWith("No se ha podido guardar la fila: "))
        << avisos.cajas[0].texto.toStdString();

    Rejilla().setFocus();
    PulsaTecla(Qt::Key_Escape);
    ventana.close();
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Idiomas(), "000001|1|DESCRIPCION 000001|2|DESCRIPCION_EN 000002|1|NOMBRE");
}

TEST_F(FrmConfiguracionTest, UnaFilaRechazadaTampocoDejaAceptar)
{
    Abre();
    Teclea(99, "mysql.nuevo");
    TecleaCelda(1, 0, "1");

    PulsaTecla(Qt::Key_A, Qt::AltModifier);
    QTest::qWait(150);

    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(De("SERVER_BD"), "c-server_bd");
}

struct CasoMalo {
    const char* regla;
    int columna;
    const char* texto;
    const char* motivo;
};

class CeldaMala : public FrmConfiguracionTest, public testing::WithParamInterface<CasoMalo> {};

TEST_P(CeldaMala, SeDiceQueTieneYLaFilaQueda)
{
    Abre();

    TecleaCelda(0, GetParam().columna, QString::fromUtf8(GetParam().texto));
    QTest::keyClick(Editor(Rejilla()), Qt::Key_Return);
    Reposa();

    EXPECT_EQ(
        avisos.cajas,
        (Cajas{
            {"ERROR: Ha cumplimentado un campo de forma incorrecta, corrijalo e intentelo de nuevo: " +
                 QString::fromUtf8(GetParam().motivo),
             16, ""}}));
    EXPECT_EQ(Idiomas(), "000001|1|DESCRIPCION 000001|2|DESCRIPCION_EN 000002|1|NOMBRE");
}

INSTANTIATE_TEST_SUITE_P(
    Casos, CeldaMala,
    testing::Values(
        CasoMalo{"LetrasDondeVaUnNumero", 0, "es", "«IDIOMA» tiene que ser un número."},
        CasoMalo{"DecimalesDondeVaUnEntero", 0, "1.5", "«IDIOMA» tiene que ser un número entero."},
        CasoMalo{"MasLargoQueLaColumna", 1, "DESCRIPCION & ' larga'",
                 "«CAMPODESCRIPCION» admite como máximo 20 caracteres y el texto tiene 22."}),
    [](const auto& caso) { return caso.param.regla; });

TEST_F(FrmConfiguracionTest, UnaFormulaConComillasSeGuardaComoEs)
{
    Abre();

    TecleaCelda(0, 8, "DESCRIPCION & ' | Norte'");
    PulsaCelda(Rejilla(), 1, 0);

    EXPECT_EQ(Tabla("SELECT METATITULO_ART FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA=1"),
              "DESCRIPCION & ' | Norte'");
}

TEST_F(FrmConfiguracionTest, UnIdiomaQueOtroProgramaHaBorradoSeDice)
{
    Abre();
    TecleaCelda(1, 1, "TITULO_EN");
    Ejecuta({"DELETE FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA=2"});

    PulsaCelda(Rejilla(), 0, 1);

    ASSERT_GE(avisos.cajas.size(), 1U);
    EXPECT_TRUE(avisos.cajas[0].texto.startsWith("No se ha podido guardar la fila: "))
        << avisos.cajas[0].texto.toStdString();
    EXPECT_EQ(Idiomas(), "000001|1|DESCRIPCION 000002|1|NOMBRE");
}

TEST_F(FrmConfiguracionTest, UnIdiomaSePuedeEliminarTrasPreguntar)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 0);
    avisos.respuestas = {Respuesta::Si};

    QTest::keyClick(&Rejilla(), Qt::Key_Delete);

    EXPECT_EQ(avisos.cajas, (Cajas{{"¿Eliminar la fila seleccionada?", 292, ""}}));
    EXPECT_EQ(Idiomas(), "000001|1|DESCRIPCION 000002|1|NOMBRE");
}

TEST_F(FrmConfiguracionTest, IntroEnUnaCeldaEmpiezaATeclearYNoCierra)
{
    Abre();
    PulsaCelda(Rejilla(), 0, 1);

    QTest::keyClick(&Rejilla(), Qt::Key_Return);
    ASSERT_NE(Editor(Rejilla()), nullptr);
    QTest::keyClicks(Editor(Rejilla()), "X");
    QTest::keyClick(Editor(Rejilla()), Qt::Key_Return);
    Reposa();

    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(Editor(Rejilla()), nullptr);
}

TEST_F(FrmConfiguracionTest, EscapeEnElGridDejaLaCeldaLaFilaYAlFinLaVentana)
{
    Abre();
    TecleaCelda(0, 1, "UNO");
    QTest::keyClick(Editor(Rejilla()), Qt::Key_Tab);
    TecleaCelda(0, 2, "DOS");

    QTest::keyClick(Editor(Rejilla()), Qt::Key_Escape);
    Reposa();
    EXPECT_EQ(Editor(Rejilla()), nullptr);
    EXPECT_EQ(Celda(Rejilla(), 0, 1), "UNO");
    PulsaTecla(Qt::Key_Escape);
    EXPECT_EQ(Celda(Rejilla(), 0, 1), "DESCRIPCION");
    EXPECT_TRUE(ventana.isVisible());
    PulsaTecla(Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Idiomas(), "000001|1|DESCRIPCION 000001|2|DESCRIPCION_EN 000002|1|NOMBRE");
}

TEST_F(FrmConfiguracionTest, EnPantallaPequenaCabeEntera)
{
    Abre();

    EXPECT_LE(ventana.minimumSizeHint().width(), 1280);
    EXPECT_LE(ventana.minimumSizeHint().height(), 680);
}

// A statement that fails ends the process.

void AceptaConComilla(const QString& ruta)
{
    ProgramaEnError proceso(ruta);
    EscritorioDePrueba escritorio;
    FrmConfiguracion editor(proceso.programa, escritorio);
    editor.Prepara("1", "000001", "Norte");
    editor.show();
    editor.findChild<QLineEdit*>("txtCampo_4")->setText("OTRAS & ',' & MAS");
    editor.findChild<QPushButton*>("CmdAceptar")->click();
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmConfiguracionDeathTest, UnaComillaEnUnCampoCierraElPrograma)
{
    EmpresaDePrueba empresa;

    EXPECT_EXIT(AceptaConComilla(empresa.Base()), testing::ExitedWithCode(1),
                testing::AllOf(testing::HasSubstr("CAMPOFAMALT='OTRAS & ',' & MAS'"),
                               testing::HasSubstr("EL PROGRAMA SE CERRARÁ"),
                               testing::Not(testing::HasSubstr("sigue"))));
    EXPECT_EQ(empresa.De("CAMPOFAMALT"), "c-famalt");
}

} // namespace
