#include "data/access/access.h"
#include "data/access/mdb/gestion_abierta.h"
#include "e2e/estado_de_tienda.h"
#include "e2e/ventana_real.h"
#include <QImage>
#include <gmock/gmock.h>
#include <memory>

// Whole runs while the management program has the company's file of Access open.

namespace {

using namespace tolmo;
using Filas = std::vector<QStringList>;

// Only a file of Access is open in another program.
[[maybe_unused]] const bool ConFicherosDeAccess = qputenv("KOV_FORMA", "mdb");

/// The management program with both files open, as long as it stands.
class Gestion {
  public:
    explicit Gestion(const EmpresaReal& empresa)
        : comun_(Ldb(empresa, "BDLOCAL")), suya_(Ldb(empresa, "BD000001"))
    {
    }
    ~Gestion()
    {
        comun_.Cierra();
        suya_.Cierra();
    }
    Gestion(const Gestion&) = delete;
    Gestion& operator=(const Gestion&) = delete;

  private:
    static QString Ldb(const EmpresaReal& empresa, const QString& nombre)
    {
        QString ldb = empresa.FicheroDeBase(nombre);
        return ldb.replace(".mdb", ".ldb");
    }

    GestionAbierta comun_;
    GestionAbierta suya_;
};

QByteArray Bytes(const EmpresaReal& empresa)
{
    QFile fichero(empresa.FicheroDeBase());
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

QStringList Tablas(const EmpresaReal& empresa)
{
    QStringList tablas;
    for (const data::TablaEsquema& tabla : data::AbreAccess(empresa.CadenaDeBase())->Tablas())
        tablas << tabla.nombre;
    return tablas;
}

/// What the file holds of families and their numbers: "01=3".
QStringList Referencias(const EmpresaReal& empresa)
{
    const auto base = data::AbreAccess(empresa.CadenaDeBase());
    const auto filas =
        base->Consulta("SELECT FAMKOV & '=' & FAMPRESTA FROM wFAMPRESTA ORDER BY FAMKOV", false);
    QStringList referencias;
    for (const data::Valor& fila : filas.valores)
        referencias << data::Texto(fila);
    return referencias;
}

QStringList FicherosDeBases(const EmpresaReal& empresa)
{
    return QFileInfo(empresa.FicheroDeBase()).dir().entryList(QDir::Files, QDir::Name);
}

/// A company with three families and two articles that are sent in each run, and its shop, through
/// seven runs. Between the runs the shop's numbers of the families change, so that one that went by
/// what an earlier run noted down would send others.
struct Historia {
    explicit Historia(bool conGestion)
        : tienda(TiendaComun({.generacion = "1.6.0", .idiomas = 1})), empresa(tienda)
    {
        CreaElCatalogo();
        if (conGestion)
            gestion = std::make_unique<Gestion>(empresa);
        alEmpezar = Bytes(empresa);
        Corre("/PRESTASHOP");
        tienda.Ejecuta("UPDATE ps_category SET id_category=77 WHERE kov_familia='0101';"
                       "DELETE FROM ps_category WHERE kov_familia='02'");
        for (const char* modo : {"/PRESTASHOP", "/SOLOARTIC", "/SOLOARTIC_SIN_STOCK", "/STOCK"})
            Corre(modo);
        trasLasPrimeras = Bytes(empresa);
        tablas = Tablas(empresa);
        ficheros = FicherosDeBases(empresa);

        gestion.reset();
        Corre("/PRESTASHOP");
        referencias = Referencias(empresa);

        if (conGestion)
            gestion = std::make_unique<Gestion>(empresa);
        conReferencias = Bytes(empresa);
        tienda.Ejecuta("UPDATE ps_category SET id_category=88 WHERE kov_familia='01'");
        Corre("/PRESTASHOP");
        trasLaUltima = Bytes(empresa);
        referenciasDespues = Referencias(empresa);
        gestion.reset();
        ficherosAlFinal = FicherosDeBases(empresa);
        estado = SinCarpeta(EstadoDeTienda(tienda));
    }

    void CreaElCatalogo()
    {
        QImage foto(20, 20, QImage::Format_RGB32);
        foto.fill(Qt::red);
        foto.save(empresa.Actual() + "/rojo.jpg", "JPEG");
        empresa.Carpeta().Escribe("ficha.pdf", "Ficha");
        const QString rojo = "'" + empresa.Actual() + "/rojo.jpg'";
        empresa.Sql(
            SqlFamilia("01", 0, "Cocina", {{"FOTO", rojo}}) + SqlFamilia("0101", 1, "Ollas") +
            SqlFamilia("02", 0, "Jardín") +
            SqlArticulo("0101A", {{"FOTO", rojo}, {"FECHAMODIFICACION", "Null"}}) +
            SqlArticulo("02A", {{"FECHAMODIFICACION", "Null"}}) +
            "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','02A','" +
            empresa.Actual() + "/ficha.pdf','Ficha');\n");
    }
    void Corre(const QString& modo)
    {
        ResultadoCorrida corrida = empresa.Corre(modo + ":000001");
        for (QByteArray& lote : corrida.lotes)
            lote.replace(empresa.Actual().toLatin1(), "{actual}");
        corrida.log = SinCarpeta(corrida.log);
        corridas << corrida;
    }
    /// Each company lives in a folder of its own.
    QStringList SinCarpeta(QStringList lineas)
    {
        return lineas.replaceInStrings(empresa.Actual(), "{actual}");
    }

    TiendaDePrueba& tienda;
    EmpresaReal empresa;
    std::unique_ptr<Gestion> gestion{};
    QList<ResultadoCorrida> corridas{};
    QByteArray alEmpezar{}, trasLasPrimeras{}, conReferencias{}, trasLaUltima{};
    QStringList tablas{}, ficheros{}, referencias{}, referenciasDespues{}, ficherosAlFinal{};
    QStringList estado{};
};

struct GestionAbiertaEnCorridas : testing::Test {
    static void SetUpTestSuite()
    {
        sola = std::make_unique<Historia>(false);
        acompanada = std::make_unique<Historia>(true);
    }
    static void TearDownTestSuite()
    {
        acompanada.reset();
        sola.reset();
    }

    static inline std::unique_ptr<Historia> sola{}, acompanada{};
};

TEST_F(GestionAbiertaEnCorridas, CadaCorridaMandaLoMismoQueSinElla)
{
    for (qsizetype i = 0; i < 7; ++i) {
        SCOPED_TRACE(i);
        const ResultadoCorrida& una = sola->corridas[i];
        const ResultadoCorrida& otra = acompanada->corridas[i];
        EXPECT_EQ(otra.estado, 0);
        EXPECT_EQ(otra.errores, "");
        EXPECT_FALSE(otra.Sentencias().isEmpty());
        EXPECT_EQ(EnLineas(otra.Sentencias()), EnLineas(una.Sentencias()));
        EXPECT_EQ(otra.lotes.size(), una.lotes.size());
        EXPECT_EQ(EnLineas(otra.log), EnLineas(una.log));
        EXPECT_EQ(EnLineas(PasosFtp(otra.ftp)), EnLineas(PasosFtp(una.ftp)));
        EXPECT_EQ(EnLineas(otra.http), EnLineas(una.http));
        ASSERT_EQ(otra.listas.size(), una.listas.size());
        for (qsizetype l = 0; l < una.listas.size(); ++l) {
            EXPECT_EQ(otra.listas[l].nombre, una.listas[l].nombre);
            EXPECT_EQ(EnLineas(otra.listas[l].lineas), EnLineas(una.listas[l].lineas));
        }
    }
    EXPECT_EQ(EnLineas(acompanada->estado), EnLineas(sola->estado));
}

/// The numbers of the families in the sentences of a run, in their order.
QStringList Numeros(const ResultadoCorrida& corrida)
{
    QStringList numeros;
    for (const QString& sentencia : corrida.Sentencias("INSERT INTO ps_category ("))
        numeros << sentencia.section("VALUES (", 1).section(u',', 0, 0);
    return numeros;
}

TEST_F(GestionAbiertaEnCorridas, CadaUnaSabeLosNumerosQueLaTiendaTieneEntonces)
{
    const auto& corridas = acompanada->corridas;
    EXPECT_EQ(Numeros(corridas[0]), QStringList({"3", "4", "5"}));
    EXPECT_EQ(Numeros(corridas[1]), QStringList({"3", "77", "78"}));
    EXPECT_EQ(Numeros(corridas[5]), QStringList({"3", "77", "78"}));
    EXPECT_EQ(Numeros(corridas[6]), QStringList({"88", "77", "78"}));
}

TEST_F(GestionAbiertaEnCorridas, MientrasDuraElFicheroNoCambia)
{
    EXPECT_TRUE(acompanada->trasLasPrimeras == acompanada->alEmpezar);
    EXPECT_FALSE(acompanada->tablas.contains("wFAMPRESTA"));
    EXPECT_EQ(acompanada->tablas.filter("WKOVTOLMO", Qt::CaseInsensitive), QStringList());
    EXPECT_TRUE(acompanada->tablas.contains("M_ARTIC"));
    EXPECT_TRUE(acompanada->trasLaUltima == acompanada->conReferencias);
    EXPECT_EQ(acompanada->referenciasDespues, QStringList({"01=3", "0101=77", "02=78"}));
}

TEST_F(GestionAbiertaEnCorridas, CuandoSeCierraLasReferenciasVuelvenAlFichero)
{
    EXPECT_EQ(acompanada->referencias, QStringList({"01=3", "0101=77", "02=78"}));
    // Nobody in the way: each load leaves its own.
    EXPECT_TRUE(sola->tablas.contains("wFAMPRESTA"));
    EXPECT_EQ(sola->referenciasDespues, QStringList({"01=88", "0101=77", "02=78"}));
}

TEST_F(GestionAbiertaEnCorridas, JuntoALasBasesNoQuedaNadaNuestro)
{
    EXPECT_EQ(sola->ficheros, QStringList({"BD000001.mdb", "BDLOCAL.mdb"}));
    EXPECT_EQ(acompanada->ficheros,
              QStringList({"BD000001.ldb", "BD000001.mdb", "BDLOCAL.ldb", "BDLOCAL.mdb"}));
    EXPECT_EQ(acompanada->ficherosAlFinal, QStringList({"BD000001.mdb", "BDLOCAL.mdb"}));
}

/// Twenty families: the first batch goes with the 18th, and there the run waits for the test.
struct GestionAMediaCarga : testing::Test {
    GestionAMediaCarga()
    {
        const QString guion = "PHPSHOP/ejecuta.php";
        empresa.Carpeta().Escribe(
            guion, "<?php for ($i = 0; $i < 500 && !file_exists(__DIR__ . '/sigue'); $i++) { "
                   "usleep(20000); clearstatcache(); } ?>" +
                       empresa.Carpeta().Lee(guion));
        for (int familia = 1; familia <= Familias; ++familia)
            sql += SqlFamilia(Clave(familia), 0, "Familia " + Clave(familia));
        empresa.Sql(sql);
        empresa.cuando = "] SUBIENDO FICHERO sentencias.sql\n";
    }
    void EnMitad(const std::function<void()>& accion)
    {
        empresa.entonces = [this, accion] {
            accion();
            tienda.EscribeFichero("sigue", "");
        };
    }
    void SeMandanTodas(const ResultadoCorrida& corrida)
    {
        EXPECT_EQ(corrida.estado, 0);
        EXPECT_EQ(corrida.errores, "");
        QStringList numeros;
        for (int familia = 1; familia <= Familias; ++familia)
            numeros << QString::number(familia + 2);
        EXPECT_EQ(Numeros(corrida), numeros);
        EXPECT_EQ(tienda.Sql("SELECT COUNT(*),MAX(nright) FROM ps_category WHERE kov_familia>''"),
                  (Filas{{"20", "42"}}));
    }

    static QString Clave(int familia) { return QString("%1").arg(familia, 2, 10, QChar(u'0')); }

    static constexpr int Familias = 20;
    TiendaDePrueba& tienda = TiendaComun({.generacion = "1.6.0", .idiomas = 1});
    EmpresaReal empresa{tienda};
    QString sql{};
};

TEST_F(GestionAMediaCarga, SiSeAbreLaCargaSigueAparteYElFicheroSeQuedaComoEstaba)
{
    std::unique_ptr<Gestion> gestion;
    QByteArray bytes;
    EnMitad([&] {
        gestion = std::make_unique<Gestion>(empresa);
        bytes = Bytes(empresa);
    });

    const ResultadoCorrida corrida = empresa.Corre();

    ASSERT_TRUE(gestion);
    SeMandanTodas(corrida);
    EXPECT_TRUE(Bytes(empresa) == bytes);
    QStringList hastaEntonces;
    for (int familia = 1; familia <= 18; ++familia)
        hastaEntonces << Clave(familia) + '=' + QString::number(familia + 2);
    EXPECT_EQ(Referencias(empresa), hastaEntonces);
}

TEST_F(GestionAMediaCarga, SiSeCierraLaCargaTerminaComoEmpezo)
{
    auto gestion = std::make_unique<Gestion>(empresa);
    const QByteArray bytes = Bytes(empresa);
    EnMitad([&] { gestion.reset(); });

    const ResultadoCorrida corrida = empresa.Corre();

    ASSERT_FALSE(gestion);
    SeMandanTodas(corrida);
    EXPECT_TRUE(Bytes(empresa) == bytes);
}

/// What must be written into the file itself.
struct GestionEnElCamino : testing::Test {
    TiendaDePrueba& tienda = TiendaComun({.generacion = "1.6.0", .idiomas = 1});
};

TEST_F(GestionEnElCamino, LaCargaDelConfiguradorDiceQuienLoTieneYNoEmpiezaNada)
{
    EmpresaReal empresa(tienda, {{"PS_MODOCONFIGURADOR", "True"}});
    empresa.Sql(SqlFamilia("01", 0, "Cocina") + SqlArticulo("01A"));
    auto gestion = std::make_unique<Gestion>(empresa);
    const QByteArray bytes = Bytes(empresa);

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_THAT(corrida.errores.toStdString(), testing::StartsWith("ERROR: -"));
    // clang-format off
    EXPECT_EQ(corrida.errores.section("Descripción: ", 1), "El fichero está abierto en otro programa (equipo CAJA2, usuario Admin), y mientras tanto sólo se puede leer. Cierre ese programa y repita la operación (fichero " + empresa.FicheroDeBase() + ")Módulo: MotorAccess\nDELETE FROM PS_CONF_ART_CAT\nEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR\n");
    // clang-format on
    EXPECT_EQ(EnLineas(corrida.ftp), "");
    EXPECT_EQ(EnLineas(corrida.http), "");
    EXPECT_EQ(EnLineas(corrida.log), "\n");
    EXPECT_TRUE(Bytes(empresa) == bytes);

    gestion.reset();
    const ResultadoCorrida otra = empresa.Corre();

    EXPECT_EQ(otra.estado, 0);
    EXPECT_EQ(otra.errores, "");
    EXPECT_EQ(tienda.Sql("SELECT reference FROM ps_product"), (Filas{{"01A"}}));
}

TEST_F(GestionEnElCamino, LaPurgaDeFotosNoEscribeEnElFicheroYSeHaceIgual)
{
    EmpresaReal empresa(tienda);
    tienda.Ejecuta("INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (1,1,1,1)");
    tienda.EscribeFichero("img/p/7/7.jpg", "foto");
    const Gestion gestion(empresa);
    const QByteArray bytes = Bytes(empresa);
    VentanaReal ventana(empresa);

    const ResultadoCorrida corrida =
        ventana.Usa([](sync::Sincronizador& motor) { motor.BorraImagenesObsoletas(); });

    EXPECT_TRUE(ventana.avisos.cajas.empty());
    EXPECT_TRUE(corrida.log.contains("PROCESO CONCLUIDO"));
    EXPECT_FALSE(tienda.ExisteFichero("img/p/7/7.jpg"));
    EXPECT_TRUE(Bytes(empresa) == bytes);
}

} // namespace
