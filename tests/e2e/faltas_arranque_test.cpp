#include "data/access/access.h"
#include "faltas_apoyo.h"
#include <QRegularExpression>
#include <gmock/gmock.h>
#include <memory>

using namespace tolmo;

namespace {

/// A fault that is there before the run begins.
class FaltasDeArranque : public testing::Test {
  protected:
    TiendaDePrueba& tienda = TiendaDeFaltas();

    void NadaLlegaALaTienda(const ResultadoCorrida& corrida)
    {
        EXPECT_EQ(EnLineas(corrida.ftp), "");
        EXPECT_EQ(EnLineas(corrida.http), "");
        EXPECT_EQ(EnLineas(corrida.log), "\n"); // no log file
    }
    /// The two boxes of a statement that the engine refuses for `nombre`. "{s}" stands for the
    /// number of the process's table.
    static void SonLasCajas(const QString& errores, const QString& nombre, const QString& sentencia)
    {
        QString patron = QRegularExpression::escape(sentencia + CierreDePrograma);
        patron.replace("\\{s\\}", "(\\d{14})");
        const QRegularExpression cajas("^ERROR: -?\\d+Descripción: [^\n]*" + nombre +
                                       "[^\n]*Módulo: [^\n]*\n" + patron + '$');
        EXPECT_TRUE(cajas.match(errores).hasMatch()) << errores.toStdString();
    }
};

TEST_F(FaltasDeArranque, SinBDLOCALSaleLaCajaDelArranque)
{
    EmpresaReal empresa(tienda);
    ASSERT_TRUE(QFile::remove(empresa.FicheroDeBase("BDLOCAL")));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    EXPECT_EQ(corrida.salida, "");
    NadaLlegaALaTienda(corrida);
}

TEST_F(FaltasDeArranque, SinNingunaEmpresaLoDiceYNoHaceElTrabajo)
{
    EmpresaReal empresa(tienda);
    empresa.SqlComun("DELETE FROM m_empresa;\n");

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    // clang-format off
    EXPECT_EQ(corrida.errores, "No existe ninguna empresa.\nNo se ha hecho ningún proceso y no hay pantalla en la que mostrar el programa: se cierra.\n");
    // clang-format on
    NadaLlegaALaTienda(corrida);
    EXPECT_EQ(TablasTemporales(empresa), QStringList{});
}

TEST_F(FaltasDeArranque, UnaEmpresaSinBaseDaLaCajaDelArranque)
{
    EmpresaReal empresa(tienda);

    const ResultadoCorrida corrida = empresa.Corre("/PRESTASHOP:000002");

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    NadaLlegaALaTienda(corrida);
    EXPECT_FALSE(QFile::exists(empresa.FicheroDeBase("BD000002")));
}

TEST_F(FaltasDeArranque, UnaEmpresaQueSuPropiaBaseNoConoceDaLaCajaDelArranque)
{
    EmpresaReal empresa(tienda);
    empresa.Sql("UPDATE m_empresa SET CODEMPRESA='000009';\n");

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    NadaLlegaALaTienda(corrida);
}

TEST_F(FaltasDeArranque, UnConmutadorDesconocidoNoHaceNadaYNoSeQuedaEsperando)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo());

    const ResultadoCorrida corrida = empresa.Corre("/SINCRONIZA:000001");

    EXPECT_EQ(corrida.estado, 1);
    // clang-format off
    EXPECT_EQ(corrida.errores, "No se ha hecho ningún proceso y no hay pantalla en la que mostrar el programa: se cierra.\n");
    // clang-format on
    NadaLlegaALaTienda(corrida);
    EXPECT_EQ(TablasTemporales(empresa), QStringList{});
}

TEST_F(FaltasDeArranque, SinMySqlSaleLaCajaDelArranqueYNoEmpiezaNada)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo());
    tienda.Para(Servidor::Mysql);

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    EXPECT_EQ(corrida.salida, "");
    NadaLlegaALaTienda(corrida);
    // The process ends without unloading its window.
    EXPECT_EQ(TablasTemporales(empresa).size(), TablasALaVista(1));
}

TEST_F(FaltasDeArranque, UnaClaveDeMySqlEquivocadaEsLaMismaCajaYNoSeEnsena)
{
    EmpresaReal empresa(tienda, {{"PASS_BD", "'n0.es.esta'"}});

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    NadaLlegaALaTienda(corrida);
}

/// A parameter that is turned to text as it stands. (PS_MODOCONFIGURADOR is one too, but a column
/// of its kind takes no Null.)
class ParametroNulo : public testing::TestWithParam<const char*> {
  protected:
    static void SetUpTestSuite() { empresa = std::make_unique<EmpresaReal>(TiendaDeFaltas()); }
    static void TearDownTestSuite() { empresa.reset(); }

    static inline std::unique_ptr<EmpresaReal> empresa{};
};

TEST_P(ParametroNulo, DondeNoPuedeSerloDaLaCajaDelArranque)
{
    const QString columna = GetParam();
    const auto base = data::AbreAccess(empresa->CadenaDeBase());
    const auto filas = base->Consulta("SELECT " + columna + " FROM m_empresa", false);
    base->Ejecuta("UPDATE m_empresa SET " + columna + "=Null");

    const ResultadoCorrida corrida = empresa->Corre();

    base->Ejecuta("UPDATE m_empresa SET " + columna + "='" + filas.valores.front().toString() +
                  "'");
    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, CajaDeArranque);
    EXPECT_EQ(EnLineas(corrida.ftp), "");
    EXPECT_EQ(EnLineas(corrida.http), "");
}

INSTANTIATE_TEST_SUITE_P(Columnas, ParametroNulo,
                         testing::Values("USER_BD", "PASS_BD", "NOMBRE_BD", "SERVER_BD", "USER_FTP",
                                         "PASS_FTP", "SERVER_FTP"),
                         [](const auto& columna) { return std::string(columna.param); });

/// A row of PS_IDIOMAS names a column that the company's tables don't have.
class ColumnaDeIdiomaQueNoExiste : public FaltasDeArranque {
  protected:
    EmpresaReal empresa{tienda};

    ResultadoCorrida CorreCon(const QString& columna, const QString& valor)
    {
        empresa.Sql(SqlCatalogo() + "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA," + columna +
                    ") VALUES ('000001',1,'" + valor + "');\n");
        return empresa.Corre();
    }
};

// clang-format off
TEST_F(ColumnaDeIdiomaQueNoExiste, EnLasNotasDeArticuloCierraElProgramaAntesDeEmpezar)
{
    const ResultadoCorrida corrida = CorreCon("CAMPONOTAS", "NOTAS_FR");

    EXPECT_EQ(corrida.estado, 1);
    SonLasCajas(corrida.errores, "NOTAS_FR", "INSERT INTO WKOVTOLMO_ARTIC{s} (CODART,PSNOTAS0) SELECT CODARTICULO,NOTAS_FR FROM M_ARTIC");
    NadaLlegaALaTienda(corrida);
}

TEST_F(ColumnaDeIdiomaQueNoExiste, EnElTextoDeFamiliaLaTiendaConservaLasSuyas)
{
    tienda.Ejecuta("INSERT INTO ps_category (id_category,id_parent,nleft,nright) VALUES (77,2,3,4)");

    const ResultadoCorrida corrida = CorreCon("CAMPOFAMNOTAS", "TEXTO_FR");

    EXPECT_EQ(corrida.estado, 1);
    SonLasCajas(corrida.errores, "TEXTO_FR", "SELECT DESCRIPCION AS PSCAMPOFAMDESCRIPCION0,TEXTO_FR AS PSCAMPOFAMNOTAS0,NULL AS PSKEYWORDSFAM0,DESCRIPCION AS PsMetaTituloFam0,NOTAS AS PsMetaDescripcionFam0,* FROM M_FAMILIA WHERE NIVEL='0' AND CLAVE LIKE '%' ORDER BY CLAVE");
    EXPECT_EQ(corrida.lotes.size(), 0);
    EXPECT_EQ(tienda.Sql("SELECT id_category FROM ps_category WHERE id_category>2"), (std::vector<QStringList>{{"77"}}));
    // What was written so far stays on disk.
    EXPECT_EQ(empresa.Carpeta().Lee("sentencias.sql"),
              "DELETE FROM ps_attribute_group||\r\n"
              "DELETE FROM ps_attribute_group_lang||\r\n"
              "DELETE FROM ps_attribute_group_shop||\r\n"
              "DELETE FROM ps_attribute||\r\n"
              "DELETE FROM ps_attribute_lang||\r\n"
              "DELETE FROM ps_attribute_shop||\r\n"
              "DELETE FROM ps_category WHERE id_category>2||\r\n"
              "DELETE FROM ps_category_group WHERE id_category>2||\r\n"
              "DELETE FROM ps_category_lang WHERE id_category>2||\r\n"
              "DELETE FROM ps_category_shop WHERE id_category>2||\r\n"
              "UPDATE ps_category set nleft=1 WHERE id_category=1||\r\n"
              "UPDATE ps_category set nleft=2 WHERE id_category=2||\r\n");
}

TEST_F(ColumnaDeIdiomaQueNoExiste, EnElNombreDeArticuloLasFamiliasYaEnviadasSeQuedan)
{
    const ResultadoCorrida corrida = CorreCon("CAMPODESCRIPCION", "NOMBRE_FR");

    EXPECT_EQ(corrida.estado, 1);
    SonLasCajas(corrida.errores, "NOMBRE_FR", "SELECT NOMBRE_FR AS PSCAMPODESCRIPCION0,DESCRIPCIO2 AS PSCAMPODESCORTA0,NULL AS PSTAG0,NULL AS PSKEYWORDS0,DESCRIPCION AS PsMetaTituloArt0,NOTAS AS PsMetaDescripcionArt0,NULL AS FAMALT,KILOS AS PS_PESO,1 AS PS_CANTMINIMA,* FROM M_ARTIC LEFT JOIN WKOVTOLMO_ARTIC{s} ON M_ARTIC.CODARTICULO=WKOVTOLMO_ARTIC{s}.CODART WHERE (ACTIVOWEB IN ('S') OR EMPRESASWEB LIKE '%,000001,%') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL) ORDER BY CODARTICULO");
    EXPECT_EQ(EnLineas(corrida.log.mid(corrida.log.size() - 3)), "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin\nActualizando y modificando articulos\n\n");
    EXPECT_EQ(tienda.Sql("SELECT id_category,kov_familia FROM ps_category WHERE id_category>2"), (std::vector<QStringList>{{"3", "01"}}));
    EXPECT_EQ(tienda.Sql("SELECT COUNT(*) FROM ps_product"), (std::vector<QStringList>{{"0"}}));
}

// The load of the configurator is the very first step, and nothing undoes what it has done.
TEST_F(FaltasDeArranque, UnPasoDeLaCargaDelConfiguradorQueFallaDejaHechosLosAnteriores)
{
    EmpresaReal empresa(tienda, {{"PS_MODOCONFIGURADOR", "True"}});
    empresa.Sql(SqlCatalogo() +
                "INSERT INTO PS_CONF_ART_CAT (CODARTICULO,CODCATEGORIA,DESCRIPCION) VALUES ('0101A','COL','A mano');\n"
                "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP) VALUES ('0101A','COL','ZZ',9,9,9);\n"
                "INSERT INTO CONF_ART_CAT (CODARTICULO,CODCATEGORIA,DESCRIPCION,TIPOVALOR) VALUES ('0101A','COL','Color','V');\n"
                "DROP TABLE CONF_ART_VAL;\n");

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    SonLasCajas(corrida.errores, "CONF_ART_VAL", "insert into PS_CONF_ART_VAL (CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, INC_PVP, INC_PVP2, INC_PVP3, INC_PVP4, INC_PVP5, PESO, FOTO)SELECT CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, PVP1, PVP2, PVP3, PVP4, PVP5, 0, LINK FROM CONF_ART_VAL");
    NadaLlegaALaTienda(corrida);
    const auto base = data::AbreAccess(empresa.CadenaDeBase());
    const auto atributos = base->Consulta("SELECT CODARTICULO,DESCRIPCION,TIPO FROM PS_CONF_ART_CAT", false).valores;
    ASSERT_EQ(atributos.size(), 3U);
    EXPECT_EQ(data::Texto(atributos[0]), "0101A");
    EXPECT_EQ(data::Texto(atributos[1]), "Color");
    EXPECT_EQ(data::Texto(atributos[2]), "V");
    EXPECT_TRUE(base->Consulta("SELECT VALOR FROM PS_CONF_ART_VAL", false).valores.empty());
}

TEST_F(FaltasDeArranque, LaClaveDeUnaSentenciaQueFallaSeTapaConAsteriscos)
{
    EmpresaReal empresa(tienda, {{"CAMPOFAMALT", "'(SELECT NOMBRE FROM SOCIOS WHERE PASSWD=''s3cr3t0'')'"}});
    empresa.Sql(SqlCatalogo());

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_THAT(corrida.errores.toStdString(), testing::HasSubstr(",(SELECT NOMBRE FROM SOCIOS WHERE PASSWD=***) AS FAMALT,KILOS AS PS_PESO,"));
    EXPECT_FALSE((corrida.errores + corrida.salida + corrida.log.join(u'\n')).contains("s3cr3t0"));
}
// clang-format on

} // namespace
