#include "apoyo/dobles.h"
#include "data/errores.h"
#include "gestion_de_prueba.h"
#include "run/arranque.h"
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tolmo;
using run::Desenlace;

namespace {

// clang-format off
const QString CadenaLocal = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/bases\\BDLOCAL.mdb;Persist Security Info=False";
const QString CadenaEmpresa = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/bases\\BD000001.mdb;Persist Security Info=False";
const QString CreaTemporal = "CREATE TABLE WKOVTOLMO_ARTIC24031509050789 (CODART nvarchar(20))";
const QString BorraTemporal = "DROP TABLE WKOVTOLMO_ARTIC24031509050789";
const QString LeeEmpresa = "Select * from m_Empresa where codempresa='000001'";
const AvisosDePrueba::Caja CajaDeFallo{"No se ha podido conectar al servidor web.Compruebe los valores de conexión.", 64, ""};
const AvisosDePrueba::Caja CajaSinEmpresas{"No existe ninguna empresa.", 16, ""};
// clang-format on

/// Answers for the operator, and notes in the diary of the database what was shown.
struct VentanasDePrueba : run::VentanasDeArranque {
    explicit VentanasDePrueba(GestionDePrueba& g) : gestion(g) {}

    GestionDePrueba& gestion;
    std::optional<run::AccesoSql> acceso{};
    std::optional<run::EmpresaElegida> elegida{};
    QStringList empresasOfrecidas{};
    std::optional<bool> soloStock{};
    std::optional<bool> atributos{};
    std::function<void()> trabajo = [] {};
    bool solostocksHecho = true;

    std::optional<run::AccesoSql> PideServidorSql(const QString& servidor) override
    {
        gestion.diario << "VENTANA SqlServer " + servidor;
        return acceso;
    }
    std::optional<run::EmpresaElegida> EligeEmpresa(const QStringList& empresas) override
    {
        gestion.diario << "VENTANA Empresa";
        empresasOfrecidas = empresas;
        return elegida;
    }
    void MuestraCmdSoloStock(bool visible) override { soloStock = visible; }
    void HabilitaCmdAtributosValores(bool habilitado) override { atributos = habilitado; }
    void AbreConfiguracion(const QString& empresa, const QString& descripcion) override
    {
        gestion.diario << "VENTANA Configuracion " + empresa + "/" + descripcion;
    }
    void MuestraSincronizar(const QString& tag) override
    {
        gestion.diario << "VENTANA Sincronizar " + tag;
        trabajo();
    }
    bool MuestraSolostocks(const QString& tag) override
    {
        gestion.diario << "VENTANA Solostocks " + tag;
        trabajo();
        return solostocksHecho;
    }
};

class ArranqueTest : public testing::Test {
  protected:
    void SetUp() override
    {
        programa.TipoBaseDatos = data::Dialecto::Access;
        EsperaArranque(gestion);
        ventanas.elegida = run::EmpresaElegida{.texto = "000001 Ferretería Norte"};
    }

    Desenlace Carga(const QString& linea = {})
    {
        entorno.lineaOrdenes = linea;
        arranque.emplace(programa, entorno, ventanas);
        return arranque->Carga();
    }

    GestionDePrueba gestion;
    AvisosDePrueba avisos;
    RelojDePrueba reloj;
    QTemporaryDir carpeta;
    data::Programa programa{avisos, reloj, gestion.Fabrica(), carpeta.path()};
    run::Entorno entorno{.PATH_CONNECT = "/bases"};
    VentanasDePrueba ventanas{gestion};
    std::optional<run::Arranque> arranque;
};

TEST_F(ArranqueTest, AbreLasEmpresasYDespuesLaBaseDeLaElegida)
{
    EXPECT_EQ(Carga(), Desenlace::Abierta);

    const QStringList principio{"ABRE " + CadenaLocal,
                                "CONSULTA select * from m_empresa",
                                "CONSULTA Select * from m_empresa ORDER BY CODEMPRESA",
                                "VENTANA Empresa",
                                "CIERRA " + CadenaLocal,
                                "ABRE " + CadenaEmpresa,
                                "EJECUTA " + CreaTemporal,
                                "CONSULTA " + LeeEmpresa};
    EXPECT_EQ(gestion.diario.mid(0, principio.size()), principio);
    EXPECT_EQ(programa.RutaBase, "/bases");
    EXPECT_EQ(programa.RutaBD, "/bases\\BD000001.mdb");
    EXPECT_EQ(programa.CadenaConexion, CadenaEmpresa);
    EXPECT_EQ(programa.LblEmpresa, "000001 Ferretería Norte");
    EXPECT_EQ(programa.parametros.Server_Bd, "bd.prueba");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ArranqueTest, UnCodigoCortoTomaElPrincipioDeLaDescripcion)
{
    ventanas.elegida = run::EmpresaElegida{.texto = "12 Ferretería Norte"};
    QString cadena = CadenaEmpresa;
    gestion.inalcanzables << cadena.replace("BD000001", "BD12 Fer");

    EXPECT_EQ(Carga(), Desenlace::Fallo);

    EXPECT_EQ(gestion.De("ABRE").last(), cadena);
    EXPECT_EQ(programa.CodigoEmpresa(), "12 Fer");
    EXPECT_EQ(programa.RutaBD, "/bases\\BD12 Fer.mdb");
}

TEST_F(ArranqueTest, SinPATH_CONNECTLasBasesEstanEnLaCarpetaActual)
{
    entorno.PATH_CONNECT.clear();

    Carga();

    EXPECT_EQ(programa.RutaBase, carpeta.path());
    EXPECT_EQ(programa.RutaBD, carpeta.path() + "\\BD000001.mdb");
}

TEST_F(ArranqueTest, FuerzaElPuntoDecimalYElDialectoDeLaBase)
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    programa.DialectoActivo = data::Dialecto::MySql;

    Carga();

    EXPECT_EQ(QLocale().decimalPoint(), ".");
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);
}

TEST_F(ArranqueTest, ElSufijoTemporalEsElMomentoYElAzar)
{
    reloj.ahora = QDateTime(QDate(2031, 1, 2), QTime(3, 4, 5));
    reloj.azar = 700000006;
    gestion.ordenes << "CREATE TABLE WKOVTOLMO_ARTIC31010203040506 (CODART nvarchar(20))";

    EXPECT_EQ(Carga(), Desenlace::Abierta);

    EXPECT_EQ(programa.SufijoTemporal, "31010203040506");
}

// No company at all.

TEST_F(ArranqueTest, SinEmpresasAvisaYLaVentanaSeQuedaSinNinguna)
{
    gestion.consultas["select * from m_empresa"] = {};

    EXPECT_EQ(Carga(), Desenlace::SinEmpresa);

    EXPECT_EQ(avisos.cajas, std::vector{CajaSinEmpresas});
    EXPECT_EQ(programa.LblEmpresa, "");
    EXPECT_EQ(gestion.De("ABRE"), QStringList{CadenaLocal});
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{});
}

TEST_F(ArranqueTest, SinEmpresasTampocoSeHaceElTrabajoDeLaLinea)
{
    gestion.consultas["select * from m_empresa"] = {};

    EXPECT_EQ(Carga("/PRESTASHOP:000001"), Desenlace::SinEmpresa);

    EXPECT_EQ(avisos.cajas, std::vector{CajaSinEmpresas});
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{});
}

TEST_F(ArranqueTest, SinEmpresaLaActivacionSoloPoneElDialectoYLaDescargaNoBorraNada)
{
    gestion.consultas["select * from m_empresa"] = {};
    Carga();
    gestion.diario.clear();
    programa.DialectoActivo = data::Dialecto::MySql;

    arranque->Activa();
    arranque->Descarga();

    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);
    EXPECT_EQ(ventanas.atributos, std::nullopt);
    EXPECT_EQ(gestion.diario, QStringList{});
}

TEST_F(ArranqueTest, LaConfiguracionSeAbreSobreLaEmpresaYLuegoSeCarganLosParametros)
{
    Carga();
    gestion.diario.clear();
    EsperaParametros(gestion, {FilaDeParametros(false, "cambiado.prueba")});

    arranque->Configura();

    EXPECT_EQ(gestion.diario.value(0), "VENTANA Configuracion 000001/Ferretería Norte");
    EXPECT_EQ(gestion.diario.value(1),
              "CONSULTA Select * from m_Empresa where codempresa='000001'");
    EXPECT_EQ(programa.parametros.Server_Bd, "cambiado.prueba");
}

// The choice of the company.

TEST_F(ArranqueTest, ElDialogoOfreceCodigoBlancoYDescripcion)
{
    Carga();

    EXPECT_EQ(ventanas.empresasOfrecidas,
              (QStringList{"000001 Ferretería Norte", "000002 Jardinería Sur"}));
}

TEST_F(ArranqueTest, UnaEmpresaSinDescripcionSeOfreceConSuCodigo)
{
    gestion.consultas["Select * from m_empresa ORDER BY CODEMPRESA"] =
        Resultado({{{"CODEMPRESA", QString("000001")}, {"Descripcion", data::Nulo()}}});

    Carga();

    EXPECT_EQ(ventanas.empresasOfrecidas, QStringList{"000001 "});
}

TEST_F(ArranqueTest, CancelarElDialogoTerminaSinAbrirMas)
{
    ventanas.elegida.reset();

    EXPECT_EQ(Carga(), Desenlace::Cancelado);

    EXPECT_EQ(gestion.De("ABRE"), QStringList{CadenaLocal});
    EXPECT_EQ(gestion.De("CIERRA"), QStringList{CadenaLocal});
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ArranqueTest, AceptarUnTextoVacioEsCancelar)
{
    ventanas.elegida = run::EmpresaElegida{.texto = "", .configuracion = true};

    EXPECT_EQ(Carga(), Desenlace::Cancelado);

    EXPECT_EQ(gestion.De("VENTANA"), QStringList{"Empresa"});
}

TEST_F(ArranqueTest, UnTextoEscritoAManoPasaComoEsta)
{
    ventanas.elegida = run::EmpresaElegida{.texto = "9999"};
    const QString cadena =
        "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/bases\\BD9999.mdb;Persist Security Info=False";
    gestion.inalcanzables << cadena;

    EXPECT_EQ(Carga(), Desenlace::Fallo);

    EXPECT_EQ(gestion.De("ABRE"), (QStringList{CadenaLocal, cadena}));
    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
}

TEST_F(ArranqueTest, ConLineaDeOrdenesNoSePreguntaLaEmpresa)
{
    EXPECT_EQ(Carga("nada 000001"), Desenlace::Abierta);

    EXPECT_EQ(programa.LblEmpresa, "000001");
    EXPECT_EQ(programa.DescripcionEmpresa(), "");
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{});
    EXPECT_EQ(gestion.De("ABRE"), (QStringList{CadenaLocal, CadenaEmpresa}));
}

TEST_F(ArranqueTest, UnConmutadorSinCodigoBuscaLaBaseDeSusUltimasLetras)
{
    const QString cadena =
        "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/bases\\BDASHOP:.mdb;Persist Security Info=False";
    gestion.inalcanzables << cadena;

    EXPECT_EQ(Carga("/PRESTASHOP:"), Desenlace::Fallo);

    EXPECT_EQ(gestion.De("ABRE").value(1), cadena);
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{});
    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
}

TEST_F(ArranqueTest, ConCONFIGLosParametrosSeAbrenAntesDeLeerlos)
{
    ventanas.elegida->configuracion = true;

    Carga();

    const auto abre = gestion.diario.indexOf("VENTANA Configuracion 000001/Ferretería Norte");
    ASSERT_GE(abre, 0);
    EXPECT_EQ(gestion.diario.value(abre - 1), "ABRE " + CadenaEmpresa);
    EXPECT_EQ(gestion.diario.value(abre + 1), "EJECUTA " + CreaTemporal);
    EXPECT_EQ(gestion.diario.value(abre + 2), "CONSULTA " + LeeEmpresa);
    EXPECT_EQ(gestion.diario.count(gestion.diario.value(abre)), 1);
}

// The feed's button.

TEST_F(ArranqueTest, ElFicheroDeSolostocksDeLaEmpresaMuestraElBoton)
{
    ASSERT_TRUE(QDir(carpeta.path()).mkdir("PHPSHOP"));
    QFile fichero(carpeta.filePath("PHPSHOP/000001solostocks_config.txt"));
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));

    Carga();

    EXPECT_EQ(ventanas.soloStock, true);
}

TEST_F(ArranqueTest, ElFicheroDeOtraEmpresaNoMuestraElBotonPeroElConmutadorVale)
{
    ASSERT_TRUE(QDir(carpeta.path()).mkdir("PHPSHOP"));
    QFile fichero(carpeta.filePath("PHPSHOP/000002solostocks_config.txt"));
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));

    EXPECT_EQ(Carga("/solostocks:000001"), Desenlace::Hecho);

    EXPECT_EQ(ventanas.soloStock, false);
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{"Solostocks AUTO"});
}

TEST_F(ArranqueTest, UnFeedQueNadiePuedeAcabarDejaElTrabajoInacabado)
{
    ventanas.solostocksHecho = false;

    EXPECT_EQ(Carga("/SOLOSTOCKS:000001"), Desenlace::Inacabado);
    EXPECT_TRUE(avisos.cajas.empty());
}

// The job of the command line.

TEST_F(ArranqueTest, ElTrabajoSeHaceConLosParametrosLeidosYLaTablaHecha)
{
    EXPECT_EQ(Carga("/PRESTASHOP:000001 /STOCK:000001"), Desenlace::Hecho);

    EXPECT_EQ(gestion.De("VENTANA"), QStringList{"Sincronizar AUTO"});
    EXPECT_EQ(gestion.diario.last(), "VENTANA Sincronizar AUTO");
    EXPECT_TRUE(gestion.diario.contains("EJECUTA " + CreaTemporal));
    EXPECT_EQ(programa.parametros.Server_Bd, "bd.prueba");
}

TEST_F(ArranqueTest, SinConmutadorLaVentanaQuedaAbiertaEnLaEmpresaDeLaLinea)
{
    EXPECT_EQ(Carga("SINCRONIZA 000001"), Desenlace::Abierta);

    EXPECT_EQ(programa.CodigoEmpresa(), "000001");
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{});
}

// Errors.

TEST_F(ArranqueTest, SinBDLOCALSaleLaCajaDelArranque)
{
    gestion.inalcanzables << CadenaLocal;

    EXPECT_EQ(Carga("/PRESTASHOP:000001"), Desenlace::Fallo);

    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
}

TEST_F(ArranqueTest, UnaEmpresaSinFilaDeParametrosDaLaCajaDelArranque)
{
    EsperaParametros(gestion, {});

    EXPECT_EQ(Carga("/PRESTASHOP:000001"), Desenlace::Fallo);

    EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{});
}

TEST_F(ArranqueTest, CualquierErrorDelTrabajoDaLaMismaCaja)
{
    const std::vector<std::function<void()>> errores{
        [] { throw data::ErrorSql(data::numero_error::Conexion, "sin tienda", "ODBC"); },
        [] { throw data::ErrorEjecucion(94, "uso de Null"); },
        [] { throw data::ErrorFichero("no existe HISTORICOWEB"); }};
    for (const auto& error : errores) {
        avisos.cajas.clear();
        ventanas.trabajo = error;

        EXPECT_EQ(Carga("/STOCK:000001"), Desenlace::Fallo);

        EXPECT_EQ(avisos.cajas, std::vector{CajaDeFallo});
        // The process ends without unloading: the table of a failed run stays.
        EXPECT_EQ(gestion.De("EJECUTA").count(BorraTemporal), 0);
    }
}

TEST_F(ArranqueTest, UnaSentenciaQueFallaTieneSusCajasYNoLaDelArranque)
{
    gestion.ordenes.remove(CreaTemporal);

    EXPECT_THROW(Carga("/STOCK:000001"), data::FinDePrograma);

    ASSERT_EQ(avisos.cajas.size(), 2U);
    EXPECT_EQ(avisos.cajas[1].texto,
              CreaTemporal + "\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
}

TEST_F(ArranqueTest, ElFinDelProgramaEnElTrabajoPasaSinOtraCaja)
{
    ventanas.trabajo = [] { throw data::FinDePrograma{}; };

    EXPECT_THROW(Carga("/PRESTASHOP:000001"), data::FinDePrograma);

    EXPECT_TRUE(avisos.cajas.empty());
}

// Activation and unload.

TEST_F(ArranqueTest, ElBotonDeAtributosReflejaElValorAnteriorALaRecarga)
{
    Carga();
    EsperaParametros(gestion, {FilaDeParametros(true, "otra.prueba")});
    programa.DialectoActivo = data::Dialecto::MySql;

    arranque->Activa();

    EXPECT_EQ(ventanas.atributos, true);
    EXPECT_EQ(programa.parametros.Server_Bd, "otra.prueba");
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);

    arranque->Activa();

    EXPECT_EQ(ventanas.atributos, false);
}

TEST_F(ArranqueTest, LaDescargaBorraLaTablaTemporal)
{
    Carga();
    gestion.diario.clear();

    arranque->Descarga();

    EXPECT_EQ(gestion.diario, QStringList{"EJECUTA " + BorraTemporal});
}

TEST_F(ArranqueTest, UnaTablaTemporalQueYaNoEstaNoMolesta)
{
    Carga();
    gestion.ordenes.remove(BorraTemporal);

    EXPECT_NO_THROW(arranque->Descarga());

    EXPECT_EQ(gestion.diario.last(), "EJECUTA " + BorraTemporal);
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ArranqueTest, UnaConexionCerradaNoEstorbaALaDescarga)
{
    Carga();
    programa.ConexionLocal.Desconecta();

    EXPECT_NO_THROW(arranque->Descarga());
    EXPECT_TRUE(avisos.cajas.empty());
}

// A management database in SQL Server.

class ArranqueSqlServer : public ArranqueTest {
  protected:
    void SetUp() override
    {
        ArranqueTest::SetUp();
        programa.TipoBaseDatos = data::Dialecto::SqlServer;
        entorno.PATH_KOVSERVER = "OFICINA";
    }
};

TEST_F(ArranqueSqlServer, ConLineaDeOrdenesEntraConSeguridadIntegradaSinPreguntar)
{
    EXPECT_EQ(Carga("/STOCK:000001"), Desenlace::Hecho);

    EXPECT_EQ(
        gestion.De("ABRE"),
        (QStringList{
            "Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;Initial Catalog=BDLOCAL;Data Source=OFICINA",
            "Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;Initial Catalog=BD000001;Data Source=OFICINA"}));
    EXPECT_EQ(programa.ModoAutenticacion, "WINDOWS");
    EXPECT_EQ(gestion.De("VENTANA"), QStringList{"Sincronizar STOCK"});
}

TEST_F(ArranqueSqlServer, ElDialectoActivoEsElDeLaBase)
{
    Carga("ninguno 000001");

    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::SqlServer);
}

TEST_F(ArranqueSqlServer, SinPATH_KOVSERVERElServidorSeLlamaSERVIDOR)
{
    entorno.PATH_KOVSERVER.clear();

    Carga("/STOCK:000001");

    EXPECT_EQ(programa.ServidorSql, "SERVIDOR");
}

TEST_F(ArranqueSqlServer, ElDialogoRecibeElServidorPropuesto)
{
    EXPECT_EQ(Carga(), Desenlace::Cancelado);
    EXPECT_EQ(gestion.diario, QStringList{"VENTANA SqlServer OFICINA"});

    gestion.diario.clear();
    entorno.PATH_KOVSERVER.clear();
    Carga();
    EXPECT_EQ(gestion.diario, QStringList{"VENTANA SqlServer SERVIDOR"});
}

TEST_F(ArranqueSqlServer, CancelarElDialogoTerminaSinNingunMensaje)
{
    ventanas.acceso.reset();

    EXPECT_EQ(Carga(), Desenlace::Cancelado);

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(gestion.De("ABRE"), QStringList{});
}

TEST_F(ArranqueSqlServer, ElUsuarioDelDialogoVaEnLasDosCadenas)
{
    ventanas.acceso = run::AccesoSql{
        .servidor = "CENTRAL", .integrada = false, .credenciales = {"ana", "s3creta"}};

    EXPECT_EQ(Carga(), Desenlace::Abierta);

    EXPECT_EQ(
        gestion.De("ABRE"),
        (QStringList{
            "Provider=SQLOLEDB.1;user id=ana;password=s3creta;Initial Catalog=BDLOCAL;Data Source=CENTRAL",
            "Provider=SQLOLEDB.1;user id=ana;password=s3creta;Initial Catalog=BD000001;Data Source=CENTRAL"}));
    EXPECT_EQ(programa.ModoAutenticacion, "SQLSERVER");
}

} // namespace
