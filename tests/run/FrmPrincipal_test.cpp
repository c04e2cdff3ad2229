#include "apoyo/dobles.h"
#include "data/errores.h"
#include "dialogo.h"
#include "feed/generador_de_prueba.h"
#include "gestion_de_prueba.h"
#include "run/FrmPrincipal.h"
#include "sync/motor_de_prueba.h"
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <gmock/gmock.h>

using namespace tolmo;
using run::Desenlace;

namespace {

const QString BorraTemporal = "DROP TABLE WKOVTOLMO_ARTIC24031509050789";
const QString LeeEmpresa = "Select * from m_Empresa where codempresa='000001'";

// clang-format off
const AvisosDePrueba::Caja CajaDeFallo{"No se ha podido conectar al servidor web.Compruebe los valores de conexión.", 64, ""};
// clang-format on

class FrmPrincipalTest : public testing::Test {
  protected:
    FrmPrincipalTest()
    {
        programa.TipoBaseDatos = data::Dialecto::Access;
        EsperaArranque(gestion);
    }

    /// Loads the main window; a person takes the company that is offered.
    Desenlace Carga(const QString& linea = {})
    {
        entorno.lineaOrdenes = linea;
        ventana.emplace(programa, escritorio, entorno, Fabricas(),
                        [this](const QString& l) { eco << l; });
        if (linea.isEmpty())
            EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("CmdAceptar")->click(); });
        return ventana->Carga();
    }
    FrmPrincipal::Fabricas Fabricas()
    {
        return {.motor = corridas.Fabrica(),
                .generador = generaciones.Fabrica(),
                .configuracion = configuracion,
                .usuarios = usuarios,
                .articulos = articulos,
                .atributos = atributos};
    }
    /// The company's configuration of the feed, which makes its button show.
    void PonConfiguracionDelFeed()
    {
        ASSERT_TRUE(QDir(carpeta.path()).mkdir("PHPSHOP"));
        QFile fichero(carpeta.filePath("PHPSHOP/000001solostocks_config.txt"));
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    }
    /// The idle main window of a person at the screen.
    void Abre(const QString& linea = {})
    {
        ASSERT_EQ(Carga(linea), Desenlace::Abierta);
        Muestra();
    }
    void Muestra()
    {
        ventana->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&*ventana));
    }
    QPushButton* Boton(const char* nombre)
    {
        auto* boton = ventana->findChild<QPushButton*>(nombre);
        if (!boton)
            throw std::logic_error(nombre);
        return boton;
    }
    void Pulsa(const char* nombre) { QTest::mouseClick(Boton(nombre), Qt::LeftButton); }
    void Tecla(Qt::Key tecla, Qt::KeyboardModifiers con = {})
    {
        QTest::keyClick(&*ventana, tecla, con);
        QCoreApplication::processEvents();
    }
    void AbreMenu(Qt::Key menu)
    {
        Tecla(menu, Qt::AltModifier);
        if (!QApplication::activePopupWidget())
            throw std::logic_error("no menu");
    }
    /// Chooses in the menu as the keyboard does: the letter of the menu, that of the entry.
    void EligeEnMenu(Qt::Key menu, Qt::Key entrada)
    {
        AbreMenu(menu);
        QTest::keyClick(QApplication::activePopupWidget(), entrada);
    }
    QAction* Accion(const char* nombre)
    {
        auto* accion = ventana->findChild<QAction*>(nombre);
        if (!accion)
            throw std::logic_error(nombre);
        return accion;
    }
    /// A window of another room, as its factory makes it.
    static std::unique_ptr<QDialog> Dialogo(const char* nombre, QWidget* padre)
    {
        auto dialogo = std::make_unique<QDialog>(padre);
        dialogo->setObjectName(nombre);
        return dialogo;
    }
    QString EscribeRegistroDeHoy()
    {
        EXPECT_TRUE(QDir(carpeta.path()).mkdir("HISTORICOWEB"));
        QFile fichero(carpeta.filePath("HISTORICOWEB/20240315VUELCOPRESTASHOP.TXT"));
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        return carpeta.path() + "\\HISTORICOWEB\\20240315VUELCOPRESTASHOP.TXT";
    }

    GestionDePrueba gestion;
    CorridasDePrueba corridas;
    GeneracionesDePrueba generaciones;
    FrmPrincipal::FabricaConfiguracion configuracion{};
    FrmPrincipal::FabricaVentana atributos{};
    FrmPrincipal::FabricaVentana usuarios{};
    FrmPrincipal::FabricaVentana articulos{};
    AvisosDePrueba avisos;
    RelojDePrueba reloj;
    EscritorioDePrueba escritorio;
    QStringList eco;
    run::Entorno entorno{.PATH_CONNECT = "/bases"};
    QTemporaryDir carpeta;
    data::Programa programa{avisos, reloj, gestion.Fabrica(), carpeta.path()};
    std::optional<FrmPrincipal> ventana;
};

TEST_F(FrmPrincipalTest, TieneSusTextosYSuEmpresa)
{
    Abre();

    EXPECT_EQ(ventana->windowTitle(), "KOV TOLMO 1.6.");
    EXPECT_EQ(Rotulo(Boton("CmdSincronizar")), "Sincronizar tienda prestashop");
    EXPECT_EQ(Rotulo(Boton("CmdParametros")), "Configuración");
    EXPECT_EQ(Rotulo(Boton("CmdSoloStock")), "Generar XML Solostock.com");
    EXPECT_EQ(Rotulo(Boton("CmdAtributosValores")), "Configurar atributos y combinaciones");
    EXPECT_EQ(Rotulo(Boton("CmdInfoProgramacion")), "Información para programar tarea");
    EXPECT_EQ(Rotulo(Boton("CmdSalir")), "Salir");
    EXPECT_EQ(ventana->findChildren<QPushButton*>().size(), 6);
    EXPECT_EQ(ventana->findChild<QLabel*>("LblEmpresa")->text(), "000001 Ferretería Norte");
}

TEST_F(FrmPrincipalTest, LaInformacionParaProgramarTieneSusSeisLineas)
{
    Abre();

    Pulsa("CmdInfoProgramacion");

    // clang-format off
    const AvisosDePrueba::Caja caja{
        "Llamar al programa Kov Tolmo.exe + parámetros para programar tarea:\r\n"
        "/PRESTASHOP:[CODEMPRESA] -> Sincronización Todos (Familias completas, Artículos sólo cambios)\r\n"
        "/SOLOARTIC_SIN_STOCK:[CODEMPRESA] -> Sincronización Sólo Artículos con cambios (SIN ACTUALIZAR STOCK)\r\n"
        "/SOLOARTIC:[CODEMPRESA] -> Sincronización Sólo Artículos con cambios\r\n"
        "/SOLOSTOCKS:[CODEMPRESA] -> Generación proceso fichero para SOLOSTOCKS\r\n"
        "/STOCK:[CODEMPRESA] -> Actulización de existencias en la tienda prestashop",
        64, ""};
    // clang-format on
    EXPECT_EQ(avisos.cajas, std::vector{caja});
}

TEST_F(FrmPrincipalTest, ElBotonDeSolostocksSoloSeVeConSuFichero)
{
    Abre();
    EXPECT_FALSE(Boton("CmdSoloStock")->isVisible());

    PonConfiguracionDelFeed();
    Abre();
    EXPECT_TRUE(Boton("CmdSoloStock")->isVisible());
}

TEST_F(FrmPrincipalTest, CancelarLaEmpresaTerminaElPrograma)
{
    ventana.emplace(programa, escritorio, run::Entorno{.PATH_CONNECT = "/bases"}, Fabricas());
    EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("cmdCancelar")->click(); });

    EXPECT_EQ(ventana->Carga(), Desenlace::Cancelado);
}

TEST_F(FrmPrincipalTest, ElDialogoDeSqlServerDaElServidor)
{
    programa.TipoBaseDatos = data::Dialecto::SqlServer;
    ventana.emplace(programa, escritorio, run::Entorno{.PATH_KOVSERVER = "OFICINA"}, Fabricas());
    EnElDialogo([](QWidget& sql) {
        EXPECT_EQ(sql.objectName(), "FrmConexionSqlServer");
        EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("CmdAceptar")->click(); });
        sql.findChild<QPushButton*>("CmmAceptar")->click();
    });

    EXPECT_EQ(ventana->Carga(), Desenlace::Abierta);

    EXPECT_EQ(programa.ServidorSql, "OFICINA");
    EXPECT_EQ(programa.ModoAutenticacion, "WINDOWS");
    EXPECT_EQ(programa.CodigoEmpresa(), "000001");
}

// The keyboard.

TEST_F(FrmPrincipalTest, ElTabuladorVaDeArribaAAbajo)
{
    PonConfiguracionDelFeed();
    Abre();
    QStringList recorrido;
    for (int i = 0; i < 6; ++i) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        recorrido << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(recorrido, (QStringList{"CmdSincronizar", "CmdParametros", "CmdSoloStock",
                                      "CmdAtributosValores", "CmdInfoProgramacion", "CmdSalir"}));
    int suelo = 0;
    for (const QString& nombre : recorrido) {
        const QWidget* boton = ventana->findChild<QWidget*>(nombre);
        const int alto = boton->mapTo(&*ventana, QPoint()).y();
        EXPECT_GE(alto, suelo) << nombre.toStdString();
        suelo = alto + boton->height();
    }
}

TEST_F(FrmPrincipalTest, IntroYEspacioPulsanElBotonQueTieneElFoco)
{
    Abre();
    Boton("CmdInfoProgramacion")->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(avisos.cajas.size(), 1U);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
    EXPECT_EQ(avisos.cajas.size(), 2U);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(avisos.cajas.size(), 3U);
}

TEST_F(FrmPrincipalTest, EscapeNoCierraElPrograma)
{
    Abre();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);

    EXPECT_TRUE(ventana->isVisible());
}

TEST_F(FrmPrincipalTest, NingunaLetraEsDeDosBotonesOMenus)
{
    Abre();
    QString letras;
    const auto anade = [&](const QString& texto) {
        letras += QKeySequence::mnemonic(texto).toString().right(1);
    };

    for (const QPushButton* boton : ventana->findChildren<QPushButton*>())
        anade(boton->text());
    for (const QAction* menu : ventana->menuBar()->actions())
        anade(menu->text());

    EXPECT_EQ(letras.size(), 8);
    for (const QChar letra : letras)
        EXPECT_EQ(letras.count(letra), 1) << letras.toStdString();
}

TEST_F(FrmPrincipalTest, PorPequenaOGrandeQueSeHagaSeLeeEntera)
{
    PonConfiguracionDelFeed();
    Abre();
    // As long as its column takes.
    ventana->findChild<QLabel*>("LblEmpresa")
        ->setText("000001 Suministros Industriales y Ferretería Hermanos Valdeolmillo SL");
    for (const QSize tamano : {QSize(1, 1), QSize(1600, 1000)}) {
        ventana->resize(tamano);
        QCoreApplication::processEvents();

        for (const QPushButton* boton : ventana->findChildren<QPushButton*>()) {
            EXPECT_GE(boton->width(), boton->sizeHint().width())
                << boton->objectName().toStdString();
            EXPECT_FALSE(boton->icon().isNull()) << boton->objectName().toStdString();
        }
        const auto* empresa = ventana->findChild<QLabel*>("LblEmpresa");
        EXPECT_GE(empresa->height(), empresa->heightForWidth(empresa->width()));
    }
}

// The menu.

TEST_F(FrmPrincipalTest, ElMenuTieneSusEntradas)
{
    Abre();

    EXPECT_EQ(Rotulo(Accion("AccionRegistro")), "Registro del día");
    EXPECT_EQ(Rotulo(Accion("AccionInformacion")), "Información para programar tarea");
    EXPECT_EQ(Rotulo(Accion("AccionSalir")), "Salir");
}

TEST_F(FrmPrincipalTest, ElRegistroDelDiaSeAbreConElEscritorio)
{
    const QString fichero = EscribeRegistroDeHoy();
    Abre();

    EligeEnMenu(Qt::Key_P, Qt::Key_R);
    EXPECT_EQ(escritorio.abiertos, QStringList{fichero});

    Tecla(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(escritorio.abiertos, (QStringList{fichero, fichero}));
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmPrincipalTest, SinRegistroDelDiaSeDiceCualSeria)
{
    EscribeRegistroDeHoy();
    reloj.ahora = QDateTime(QDate(2024, 12, 5), QTime(10, 0));
    gestion.ordenes << "CREATE TABLE WKOVTOLMO_ARTIC24120510000089 (CODART nvarchar(20))";
    Abre();

    Tecla(Qt::Key_R, Qt::ControlModifier);

    EXPECT_EQ(escritorio.abiertos, QStringList{});
    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(avisos.cajas[0].texto,
              "Todavía no hay registro de hoy: lo empezará la primera sincronización del día, en " +
                  carpeta.path() + "\\HISTORICOWEB\\20241205VUELCOPRESTASHOP.TXT");
    EXPECT_EQ(avisos.cajas[0].estilo, 64);
}

TEST_F(FrmPrincipalTest, LaInformacionTambienEstaEnElMenu)
{
    Abre();
    Pulsa("CmdInfoProgramacion");

    EligeEnMenu(Qt::Key_Y, Qt::Key_I);
    Tecla(Qt::Key_F1);

    ASSERT_EQ(avisos.cajas.size(), 3U);
    EXPECT_EQ(avisos.cajas[1], avisos.cajas[0]);
    EXPECT_EQ(avisos.cajas[2], avisos.cajas[0]);
}

TEST_F(FrmPrincipalTest, SalirDelMenuDescargaLaVentana)
{
    Abre();
    QSignalSpy descargas(&*ventana, &FrmPrincipal::Descargada);

    EligeEnMenu(Qt::Key_P, Qt::Key_S);

    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(descargas.count(), 1);
    EXPECT_EQ(gestion.diario.last(), "EJECUTA " + BorraTemporal);
}

TEST_F(FrmPrincipalTest, LosUsuariosWebSeMuestranSobreLaPrincipalYALaVueltaSeRecarga)
{
    int veces = 0;
    usuarios = [&](QWidget* padre) {
        EXPECT_EQ(padre, &*ventana);
        ++veces;
        return Dialogo("FrmConsUsuarios", padre);
    };
    Abre();
    EXPECT_EQ(Rotulo(Accion("AccionUsuarios")), "Usuarios web");
    const auto cierra = [this](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmConsUsuarios");
        programa.DialectoActivo = data::Dialecto::MySql;
        d.close();
    };

    EnElDialogo(cierra);
    Tecla(Qt::Key_U, Qt::ControlModifier);
    AbreMenu(Qt::Key_P);
    EnElDialogo(cierra);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_U);

    EXPECT_EQ(veces, 2);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return programa.DialectoActivo == data::Dialecto::Access; }));
}

// The windows of other rooms.

TEST_F(FrmPrincipalTest, ConfiguracionAbreLaVentanaDeLaEmpresaYLuegoCargaLosParametros)
{
    QStringList abierta;
    configuracion = [&](const QString& tag, const QString& codigo, const QString& descripcion,
                        QWidget* padre) {
        EXPECT_EQ(padre, &*ventana);
        abierta << tag << codigo << descripcion;
        return Dialogo("FrmConfiguracion", padre);
    };
    Abre();
    EnElDialogo([this](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmConfiguracion");
        EsperaParametros(gestion, {FilaDeParametros(false, "cambiado.prueba")});
        EXPECT_NE(programa.parametros.Server_Bd, "cambiado.prueba");
        d.close();
    });

    Pulsa("CmdParametros");

    EXPECT_EQ(abierta, (QStringList{"1", "000001", "Ferretería Norte"}));
    EXPECT_EQ(programa.parametros.Server_Bd, "cambiado.prueba");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmPrincipalTest, LaConfiguracionDelArranqueSeAbreAntesDeCargarLosParametros)
{
    QStringList consultas{"sin abrir"};
    configuracion = [&](const QString& tag, const QString& codigo, const QString&, QWidget* padre) {
        EXPECT_EQ(tag, "1");
        EXPECT_EQ(codigo, "000001");
        EXPECT_EQ(padre, nullptr);
        consultas = gestion.De("CONSULTA").filter(LeeEmpresa);
        QTimer::singleShot(0, qApp, [] { QApplication::activeModalWidget()->close(); });
        return Dialogo("FrmConfiguracion", padre);
    };
    ventana.emplace(programa, escritorio, run::Entorno{.PATH_CONNECT = "/bases"}, Fabricas());
    EnElDialogo([](QWidget& d) {
        d.findChild<QCheckBox*>("ChkConfiguracion")->setChecked(true);
        d.findChild<QPushButton*>("CmdAceptar")->click();
    });

    EXPECT_EQ(ventana->Carga(), Desenlace::Abierta);

    EXPECT_EQ(consultas, QStringList{});
    EXPECT_EQ(gestion.De("CONSULTA").filter(LeeEmpresa).size(), 1);
}

TEST_F(FrmPrincipalTest, LosAtributosSeMuestranSobreLaPrincipal)
{
    int veces = 0;
    atributos = [&](QWidget* padre) {
        EXPECT_EQ(padre, &*ventana);
        ++veces;
        return Dialogo("FrmConsPSArtConfigurador", padre);
    };
    Abre();
    EnElDialogo([](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmConsPSArtConfigurador");
        d.close();
    });

    Pulsa("CmdAtributosValores");

    EXPECT_EQ(veces, 1);
    EXPECT_TRUE(avisos.cajas.empty());
}

// Activation.

TEST_F(FrmPrincipalTest, AlVenirAlFrenteElBotonReflejaElValorAnteriorALaRecarga)
{
    EsperaParametros(gestion, {FilaDeParametros(true)});
    ASSERT_EQ(Carga(), Desenlace::Abierta);
    EsperaParametros(gestion, {FilaDeParametros(false)});
    programa.DialectoActivo = data::Dialecto::MySql;

    Muestra();

    EXPECT_FALSE(Boton("CmdAtributosValores")->isEnabled());
    EXPECT_FALSE(programa.parametros.PS_MODOCONFIGURADOR);
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);
}

TEST_F(FrmPrincipalTest, ALaVueltaDeLaSincronizacionSeRecarganLosParametros)
{
    Abre();
    corridas.enMedio = [&](data::Progreso&) {
        programa.DialectoActivo = data::Dialecto::MySql;
        EsperaParametros(gestion, {FilaDeParametros(false, "cambiado.prueba")});
    };
    EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("CmdStock")->click(); });

    Pulsa("CmdSincronizar");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*ventana));

    EXPECT_EQ(programa.parametros.Server_Bd, "cambiado.prueba");
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);
}

TEST_F(FrmPrincipalTest, EnPlenoProcesoLaVentanaPrincipalNoTocaElDialecto)
{
    Abre();
    corridas.enMedio = [&](data::Progreso& progreso) {
        programa.DialectoActivo = data::Dialecto::MySql;
        QEvent alFrente(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&*ventana, &alFrente);
        progreso.CedeEventos();
        EXPECT_EQ(programa.DialectoActivo, data::Dialecto::MySql);
    };
    EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("CmdStock")->click(); });

    Pulsa("CmdSincronizar");

    EXPECT_EQ(corridas.opciones.size(), 1U);
    ASSERT_TRUE(QTest::qWaitFor([&] { return programa.DialectoActivo == data::Dialecto::Access; }));
}

// Without a company.

TEST_F(FrmPrincipalTest, SinEmpresasSeQuedaAbiertaYNoBorraNadaAlSalir)
{
    gestion.consultas["select * from m_empresa"] = {};
    ventana.emplace(programa, escritorio, run::Entorno{.PATH_CONNECT = "/bases"}, Fabricas());
    ASSERT_EQ(ventana->Carga(), Desenlace::SinEmpresa);
    const QStringList antes = gestion.diario;

    Muestra();
    EXPECT_EQ(ventana->findChild<QLabel*>("LblEmpresa")->text(), "");
    for (const char* boton : {"CmdSincronizar", "CmdParametros", "CmdAtributosValores"})
        EXPECT_FALSE(Boton(boton)->isEnabled()) << boton;
    EXPECT_TRUE(Boton("CmdInfoProgramacion")->isEnabled());
    EXPECT_FALSE(Accion("AccionUsuarios")->isEnabled());
    Pulsa("CmdSalir");

    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(gestion.diario, antes);
}

// Synchronisation and exit.

TEST_F(FrmPrincipalTest, ElBotonMuestraLaSincronizacionSinTag)
{
    Abre();
    EnElDialogo([](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmSincronizar");
        EXPECT_TRUE(d.findChild<QTabWidget*>("SSTab1")->isEnabled());
        QTest::qWait(20);
        d.close();
    });

    Pulsa("CmdSincronizar");

    EXPECT_TRUE(corridas.opciones.empty());
    EXPECT_EQ(corridas.vivos, 0);
    EXPECT_TRUE(ventana->isVisible());
}

TEST_F(FrmPrincipalTest, LaSincronizacionEligeSusArticulosEnElSelector)
{
    QWidget* abiertoSobre = nullptr;
    articulos = [&abiertoSobre](QWidget* padre) {
        abiertoSobre = padre;
        auto selector = std::make_unique<QDialog>(padre);
        QTimer::singleShot(0, selector.get(), &QDialog::reject);
        return selector;
    };
    Abre();
    EnElDialogo([&abiertoSobre](QWidget& d) {
        QTest::mouseDClick(d.findChild<QLineEdit*>("TxtArtDesde"), Qt::LeftButton);
        EXPECT_EQ(abiertoSobre, &d);
        d.close();
    });

    Pulsa("CmdSincronizar");

    EXPECT_NE(abiertoSobre, nullptr);
}

TEST_F(FrmPrincipalTest, ConLineaDeOrdenesElBotonCierraLaVentanaALaVuelta)
{
    Abre("SIN MODO 000001");
    EnElDialogo([](QWidget& d) { d.close(); });

    Pulsa("CmdSincronizar");

    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(gestion.diario.last(), "EJECUTA " + BorraTemporal);
}

TEST_F(FrmPrincipalTest, SalirBorraLaTablaTemporalYAvisaDeSuDescarga)
{
    Abre();
    QSignalSpy descargas(&*ventana, &FrmPrincipal::Descargada);

    Pulsa("CmdSalir");

    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(descargas.count(), 1);
    EXPECT_EQ(gestion.De("EJECUTA").count(BorraTemporal), 1);
}

TEST_F(FrmPrincipalTest, SinCerrarLaVentanaLaTablaTemporalSeQueda)
{
    Abre();

    ventana.reset();

    EXPECT_EQ(gestion.De("EJECUTA").count(BorraTemporal), 0);
}

// Scheduled runs.

TEST_F(FrmPrincipalTest, UnaTareaProgramadaHaceSuProcesoSinMostrarLaVentanaPrincipal)
{
    bool principalVisible = true;
    corridas.enMedio = [&](data::Progreso& progreso) {
        principalVisible = ventana->isVisible();
        progreso.LineaEstado("[15/03/2024 9:05:07] INICIO");
    };

    EXPECT_EQ(Carga("/soloartic_sin_stock:000001"), Desenlace::Hecho);

    ASSERT_EQ(corridas.opciones.size(), 1U);
    EXPECT_EQ(EnPalabras(corridas.opciones[0]), "T [][] FotosArt Adjuntos con eliminaT indices");
    EXPECT_FALSE(principalVisible);
    EXPECT_EQ(eco, QStringList{"[15/03/2024 9:05:07] INICIO"});
}

TEST_F(FrmPrincipalTest, UnaVentanaQueNuncaSeVioTambienBorraSuTabla)
{
    Carga("/STOCK:000001");

    ventana->close();

    EXPECT_EQ(gestion.diario.last(), "EJECUTA " + BorraTemporal);
}

TEST_F(FrmPrincipalTest, ElProcesoDeUnBotonNoTieneEco)
{
    Abre();
    corridas.enMedio = [](data::Progreso& progreso) { progreso.LineaEstado("una"); };
    EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("CmdStock")->click(); });

    Pulsa("CmdSincronizar");

    EXPECT_EQ(corridas.opciones.size(), 1U);
    EXPECT_EQ(eco, QStringList{});
}

TEST_F(FrmPrincipalTest, ElErrorDeUnaTareaProgramadaDaLaCajaDelArranque)
{
    corridas.enMedio = [](data::Progreso&) { throw data::ErrorEjecucion(94, "uso de Null"); };

    EXPECT_EQ(Carga("/PRESTASHOP:000001"), Desenlace::Fallo);

    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
    EXPECT_EQ(gestion.De("EJECUTA").count(BorraTemporal), 0);
}

TEST_F(FrmPrincipalTest, SinTiendaUnaTareaProgramadaDaLaCajaDelArranque)
{
    ventana.emplace(
        programa, escritorio,
        run::Entorno{.lineaOrdenes = "/STOCK:000001", .PATH_CONNECT = "/bases"},
        FrmPrincipal::Fabricas{.motor = [](data::Progreso&) -> std::unique_ptr<sync::Motor> {
            throw data::ErrorSql(data::numero_error::Conexion, "sin tienda", "ODBC");
        }});

    EXPECT_EQ(ventana->Carga(), Desenlace::Fallo);

    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
}

// The feed.

TEST_F(FrmPrincipalTest, ElBotonDeSolostocksMuestraSuVentanaSinTag)
{
    PonConfiguracionDelFeed();
    Abre();
    EnElDialogo([](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmGenerarXMLsolostock");
        QTest::qWait(300);
        d.findChild<QPushButton*>("CmdNo")->click();
    });

    Pulsa("CmdSoloStock");

    EXPECT_EQ(generaciones.destinos, QStringList{});
    EXPECT_EQ(generaciones.vivos, 0);
    EXPECT_TRUE(ventana->isVisible());
}

TEST_F(FrmPrincipalTest, ALaVueltaDeSolostocksSeReponeElDialectoYSeRecarganLosParametros)
{
    PonConfiguracionDelFeed();
    Abre();
    generaciones.enMedio = [&](data::Progreso&) {
        programa.DialectoActivo = data::Dialecto::MySql;
        EsperaParametros(gestion, {FilaDeParametros(false, "cambiado.prueba")});
    };
    EnElDialogo([](QWidget& d) { d.findChild<QPushButton*>("CmdSi")->click(); });

    Pulsa("CmdSoloStock");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*ventana));

    EXPECT_EQ(generaciones.destinos.size(), 1);
    EXPECT_EQ(programa.parametros.Server_Bd, "cambiado.prueba");
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);
}

TEST_F(FrmPrincipalTest, ConLineaDeOrdenesElBotonDeSolostocksNoCierraLaVentana)
{
    PonConfiguracionDelFeed();
    Abre("SIN MODO 000001");
    EnElDialogo([](QWidget& d) { d.close(); });

    Pulsa("CmdSoloStock");

    EXPECT_TRUE(ventana->isVisible());
}

TEST_F(FrmPrincipalTest, ElConmutadorDeSolostocksGeneraSinMostrarLaVentanaPrincipal)
{
    bool principalVisible = true;
    generaciones.enMedio = [&](data::Progreso&) { principalVisible = ventana->isVisible(); };

    EXPECT_EQ(Carga("/solostocks:000001"), Desenlace::Hecho);

    EXPECT_EQ(generaciones.destinos.size(), 1);
    EXPECT_FALSE(principalVisible);
}

TEST_F(FrmPrincipalTest, SinPantallaUnFeedQueNoAcabaNoSeQuedaEsperando)
{
    entorno.hayPantalla = false;
    generaciones.resultados = {false};

    EXPECT_EQ(Carga("/SOLOSTOCKS:000001"), Desenlace::Inacabado);
}

TEST_F(FrmPrincipalTest, ConPantallaUnFeedQueNoAcabaEsperaAlOperador)
{
    generaciones.resultados = {false, true};
    QTimer::singleShot(500, qApp, [] {
        QApplication::activeModalWidget()->findChild<QPushButton*>("CmdSi")->click();
    });

    EXPECT_EQ(Carga("/SOLOSTOCKS:000001"), Desenlace::Hecho);

    EXPECT_EQ(generaciones.destinos.size(), 2);
}

TEST_F(FrmPrincipalTest, UnFeedQueNoSePuedeCargarDaLaCajaDelArranque)
{
    entorno.lineaOrdenes = "/SOLOSTOCKS:000001";
    ventana.emplace(programa, escritorio, entorno,
                    FrmPrincipal::Fabricas{
                        .generador = [](data::Progreso&) -> std::unique_ptr<feed::Generador> {
                            throw data::ErrorFichero("sin configuración");
                        }});

    EXPECT_EQ(ventana->Carga(), Desenlace::Fallo);

    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
}

// Errors of a person's session end the process.

struct AvisosEnError : data::Avisos {
    data::Respuesta Muestra(const QString& texto, int estilo, const QString&) override
    {
        std::fprintf(stderr, "caja %d: %s\n", estilo, qPrintable(texto));
        return data::Respuesta::Aceptar;
    }
};

void PulsaSincronizarSinTienda()
{
    GestionDePrueba gestion;
    EsperaArranque(gestion);
    AvisosEnError avisos;
    RelojDePrueba reloj;
    data::Programa programa(avisos, reloj, gestion.Fabrica(), "/actual");
    programa.TipoBaseDatos = data::Dialecto::Access;
    EscritorioDePrueba escritorio;
    FrmPrincipal ventana(
        programa, escritorio, {.lineaOrdenes = "SIN MODO 000001", .PATH_CONNECT = "/bases"},
        {.motor = [](data::Progreso&) -> std::unique_ptr<sync::Motor> {
            throw data::ErrorSql(data::numero_error::Conexion, "sin tienda", "ODBC");
        }});
    ventana.Carga();
    ventana.findChild<QPushButton*>("CmdSincronizar")->click();
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmPrincipalDeathTest, SinTiendaElBotonMuestraElErrorYTerminaElPrograma)
{
    EXPECT_EXIT(PulsaSincronizarSinTienda(), testing::ExitedWithCode(1),
                "caja 16: ERROR: sin tienda\n$");
}

void PulsaSolostocksSinConfiguracion()
{
    GestionDePrueba gestion;
    EsperaArranque(gestion);
    AvisosEnError avisos;
    RelojDePrueba reloj;
    data::Programa programa(avisos, reloj, gestion.Fabrica(), "/actual");
    programa.TipoBaseDatos = data::Dialecto::Access;
    EscritorioDePrueba escritorio;
    FrmPrincipal ventana(programa, escritorio,
                         {.lineaOrdenes = "SIN MODO 000001", .PATH_CONNECT = "/bases"},
                         {.generador = [](data::Progreso&) -> std::unique_ptr<feed::Generador> {
                             throw data::ErrorFichero("sin configuración");
                         }});
    ventana.Carga();
    ventana.findChild<QPushButton*>("CmdSoloStock")->click();
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmPrincipalDeathTest, UnFeedQueNoSePuedeCargarMuestraElErrorYTerminaElPrograma)
{
    EXPECT_EXIT(PulsaSolostocksSinConfiguracion(), testing::ExitedWithCode(1),
                "caja 16: ERROR: sin configuración\n$");
}

void ActivaSinParametros()
{
    GestionDePrueba gestion;
    EsperaArranque(gestion);
    AvisosEnError avisos;
    RelojDePrueba reloj;
    data::Programa programa(avisos, reloj, gestion.Fabrica(), "/actual");
    programa.TipoBaseDatos = data::Dialecto::Access;
    EscritorioDePrueba escritorio;
    FrmPrincipal ventana(programa, escritorio,
                         {.lineaOrdenes = "SIN MODO 000001", .PATH_CONNECT = "/bases"}, {});
    ventana.Carga();
    gestion.consultas.clear();
    ventana.show();
    QTest::qWait(50);
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmPrincipalDeathTest, UnaSentenciaQueFallaAlActivarseTerminaElPrograma)
{
    EXPECT_EXIT(ActivaSinParametros(), testing::ExitedWithCode(1),
                testing::AllOf(testing::HasSubstr("EL PROGRAMA SE CERRARÁ"),
                               testing::Not(testing::HasSubstr("sigue"))));
}

} // namespace
