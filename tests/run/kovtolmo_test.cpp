#include "apoyo/base_de_prueba.h"
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <stdexcept>

using namespace tolmo;

/// The program as a scheduler starts it: no screen, nobody to press a button.

namespace {

constexpr int EsperaMs = 60'000;

// clang-format off
const std::string CajaDeFallo = "No se ha podido conectar al servidor web.Compruebe los valores de conexión.\n";
const std::string SinPantalla = "No se ha hecho ningún proceso y no hay pantalla en la que mostrar el programa: se cierra.\n";
// clang-format on

struct Salida {
    int estado = -1;
    std::string salida{};
    std::string error{};
};

class Kovtolmo : public testing::Test {
  protected:
    QString Fichero(const QString& nombre) { return carpeta.filePath(nombre); }

    /// A database of these statements.
    void CreaBase(const QString& nombre, const QStringList& sentencias)
    {
        ::CreaBase(Fichero(nombre));
        const auto base = AbreBase(Fichero(nombre));
        for (const QString& sentencia : sentencias)
            base->Ejecuta(sentencia);
    }
    void CreaEmpresas(const QStringList& filas = {
                          "INSERT INTO m_empresa VALUES ('000001','Norte')"})
    {
        CreaBase("BDLOCAL",
                 QStringList{
                     "CREATE TABLE m_empresa (CODEMPRESA nvarchar(6), Descripcion nvarchar(50))"} +
                     filas);
    }
    /// A company whose shop is at a port where nobody listens.
    void CreaEmpresa()
    {
        QStringList columnas{"CODEMPRESA nvarchar(6)", "PS_MODOCONFIGURADOR YESNO"};
        QStringList valores{"'000001'", "0"};
        for (const char* texto :
             {"User_Bd",     "Pass_Bd",           "Puerto_Bd",      "Nombre_Bd",   "Server_Bd",
              "User_Ftp",    "Pass_Ftp",          "Puerto_Ftp",     "Server_Ftp",  "PS_PREFIJO",
              "PS_INDICES1", "PS_INDICES2",       "Carpeta_tienda", "WWW",         "Ps_SufijoFoto",
              "Ps_pvpdef",   "Ps_ProvReferencia", "PS_TABLAARTIC",  "PS_TABLAFAM", "CADACTIVOWEB",
              "CAMPOFAMALT", "PS_PESO",           "PS_CANTMINIMA",  "PSAlmacenes", "PSGrupoMarcas",
              "PS_VERSION",  "PS_IDIOMA"}) {
            const QString columna = texto;
            columnas << columna + " nvarchar(200)";
            valores << (columna == "Server_Bd"   ? "'127.0.0.1'"
                        : columna == "Puerto_Bd" ? "'1'"
                        : columna == "Pass_Bd"   ? "'s3creta'"
                                                 : "''");
        }
        CreaBase("BD000001", {"CREATE TABLE m_Empresa (" + columnas.join(',') + ")",
                              "INSERT INTO m_Empresa VALUES (" + valores.join(',') + ")",
                              "CREATE TABLE PS_IDIOMAS (CODEMPRESA nvarchar(6), IDIOMA INT)"});
    }
    QStringList TablasTemporales()
    {
        QStringList nombres;
        for (const auto& tabla : AbreBase(Fichero("BD000001"))->Tablas())
            if (tabla.nombre.startsWith("WKOVTOLMO_ARTIC"))
                nombres << tabla.nombre;
        return nombres;
    }

    Salida Llama(const QStringList& argumentos, const QStringList& ademas = {})
    {
        QProcess programa;
        QStringList entorno{"PATH=/usr/bin:/bin", "HOME=" + carpeta.path(),
                            "PATH_CONNECT=" + carpeta.path()};
        for (const char* heredada : {"LD_LIBRARY_PATH", "ASAN_OPTIONS", "ODBCSYSINI"})
            if (qEnvironmentVariableIsSet(heredada))
                entorno << QString(heredada) + '=' + qEnvironmentVariable(heredada);
        programa.setEnvironment(entorno + ademas);
        programa.setWorkingDirectory(carpeta.path());
        programa.start(KOV_CONSTRUCCION "/kovtolmo", argumentos);
        if (!programa.waitForFinished(EsperaMs)) {
            programa.kill();
            programa.waitForFinished();
            throw std::runtime_error("the program did not end");
        }
        if (programa.exitStatus() != QProcess::NormalExit)
            throw std::runtime_error("the program was ended by a signal");
        return {programa.exitCode(), programa.readAllStandardOutput().toStdString(),
                programa.readAllStandardError().toStdString()};
    }

    QTemporaryDir carpeta;
};

TEST_F(Kovtolmo, SinPantallaNiLineaDeOrdenesLoDiceYTermina)
{
    const Salida s = Llama({});

    EXPECT_EQ(s.estado, 1);
    // clang-format off
    EXPECT_EQ(s.error, "El programa no tiene pantalla en la que mostrarse. Para una tarea programada, indique el proceso y la empresa: kovtolmo /PRESTASHOP:000001\n");
    // clang-format on
}

TEST_F(Kovtolmo, SinBDLOCALEscribeLaCajaDelArranque)
{
    const Salida s = Llama({"/PRESTASHOP:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, CajaDeFallo);
    EXPECT_EQ(s.salida, "");
}

TEST_F(Kovtolmo, SinEmpresasLoDiceYTerminaConError)
{
    CreaEmpresas({});

    const Salida s = Llama({"/PRESTASHOP:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, "No existe ninguna empresa.\n" + SinPantalla);
}

TEST_F(Kovtolmo, UnaEmpresaSinBaseDeDatosDaLaCajaDelArranque)
{
    CreaEmpresas();

    const Salida s = Llama({"/PRESTASHOP:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, CajaDeFallo);
    EXPECT_FALSE(QFile::exists(Fichero("BD000001.sqlite")));
    EXPECT_FALSE(QFile::exists(Fichero("BD000001.mdb")));
}

TEST_F(Kovtolmo, SinConmutadorNoSeQuedaEsperandoYNoDejaSuTabla)
{
    CreaEmpresas();
    CreaEmpresa();

    const Salida s = Llama({"/NADA:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, SinPantalla);
    EXPECT_EQ(TablasTemporales(), QStringList{});
}

TEST_F(Kovtolmo, SinTiendaDaLaCajaDelArranqueYNoDescargaNada)
{
    CreaEmpresas();
    CreaEmpresa();

    const Salida s = Llama({"/STOCK:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, CajaDeFallo);
    EXPECT_EQ(TablasTemporales().size(), TablasALaVista(1));
    for (const QString& tabla : TablasTemporales())
        EXPECT_THAT(tabla.toStdString(), testing::MatchesRegex("WKOVTOLMO_ARTIC[0-9]{14}"));
}

TEST_F(Kovtolmo, UnaSentenciaQueFallaSeEscribeYTermina)
{
    CreaBase("BDLOCAL", {"CREATE TABLE otra (x INT)"});

    const Salida s = Llama({"/STOCK:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_THAT(s.error, testing::StartsWith("ERROR: "));
    EXPECT_THAT(s.error, testing::EndsWith("\nselect * from m_empresa\nEL PROGRAMA SE CERRARÁ, "
                                           "CONSULTE CON SU PROVEEDOR\n"));
}

TEST_F(Kovtolmo, SinTiendaElFeedDaLaMismaCaja)
{
    CreaEmpresas();
    CreaEmpresa();

    const Salida s = Llama({"/solostocks:000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, CajaDeFallo);
    EXPECT_EQ(TablasTemporales().size(), TablasALaVista(1));
}

TEST_F(Kovtolmo, LasOpcionesDelEntornoGraficoSonTextoDeLaLinea)
{
    CreaEmpresas();
    CreaEmpresa();

    const Salida s = Llama({"-platform", "xcb", "-style", "nada", "000001"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, SinPantalla);
}

TEST_F(Kovtolmo, UnaPantallaEnElEntornoDelPlanificadorNoHaceFalta)
{
    CreaEmpresas({});

    const Salida s = Llama({"/STOCK:000001"}, {"DISPLAY=", "QT_QPA_PLATFORM=xcb"});

    EXPECT_EQ(s.estado, 1);
    EXPECT_EQ(s.error, "No existe ninguna empresa.\n" + SinPantalla);
}

} // namespace
