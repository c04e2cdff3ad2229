#include "apoyo/programa_de_prueba.h"
#include "apoyo/proveedor_de_prueba.h"
#include "company/carga_param.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

const QString SqlEmpresa = "Select * from m_Empresa where codempresa='000001'";

/// Columns of m_Empresa with the value of a company that has filled in only what it must.
struct Columna {
    const char* nombre;
    Valor valor;
};

std::vector<Columna> EmpresaMinima()
{
    return {
        {"PS_MODOCONFIGURADOR", false}, {"USER_BD", "usubd"},       {"PASS_BD", "clavebd"},
        {"PUERTO_BD", Nulo()},          {"NOMBRE_BD", "tienda"},    {"SERVER_BD", "bd.ejemplo"},
        {"USER_FTP", "usuftp"},         {"PASS_FTP", "claveftp"},   {"PUERTO_FTP", Nulo()},
        {"SERVER_FTP", "ftp.ejemplo"},  {"PS_PREFIJO", Nulo()},     {"PS_INDICES1", Nulo()},
        {"PS_INDICES2", Nulo()},        {"CARPETA_TIENDA", Nulo()}, {"WWW", Nulo()},
        {"PS_SUFIJOFOTO", Nulo()},      {"PS_PVPDEF", Nulo()},      {"PS_PROVREFERENCIA", Nulo()},
        {"PS_TABLAARTIC", Nulo()},      {"PS_TABLAFAM", Nulo()},    {"CADACTIVOWEB", Nulo()},
        {"CAMPOFAMALT", Nulo()},        {"PS_PESO", Nulo()},        {"PS_CANTMINIMA", Nulo()},
        {"PSALMACENES", Nulo()},        {"PSGRUPOMARCAS", Nulo()},  {"PS_VERSION", Nulo()},
        {"PS_IDIOMA", Nulo()}};
}

data::Filas Fila(const std::vector<Columna>& columnas)
{
    data::Filas filas;
    for (const Columna& columna : columnas) {
        filas.campos.push_back({.nombre = columna.nombre});
        filas.valores.push_back(columna.valor);
    }
    filas.tabla = "m_Empresa";
    filas.claves = {1};
    return filas;
}

struct CargaParamTest : testing::Test {
    ProveedorDePrueba local{};
    ProgramaDePrueba p{local.Fabrica()};
    std::vector<Columna> empresa = EmpresaMinima();

    CargaParamTest()
    {
        p.programa.LblEmpresa = "000001 Ferretería";
        p.programa.ConexionLocal.Conecta("local");
    }

    void Pon(const char* nombre, const Valor& valor)
    {
        for (Columna& columna : empresa)
            if (qstricmp(columna.nombre, nombre) == 0) {
                columna.valor = valor;
                return;
            }
        FAIL() << "no column " << nombre;
    }

    const data::Parametros& Carga()
    {
        local.Espera(SqlEmpresa, Fila(empresa));
        local.Permite("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA=1", SinFilas);
        local.Permite(
            "SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA<>1 ORDER BY IDIOMA",
            SinFilas);
        company::CargaParam(p.programa);
        return p.programa.parametros;
    }
};

TEST_F(CargaParamTest, LoQueEstaVacioTomaSuValorPorDefecto)
{
    const data::Parametros& parametros = Carga();

    EXPECT_FALSE(parametros.PS_MODOCONFIGURADOR);
    EXPECT_EQ(parametros.Puerto_Bd, "3306");
    EXPECT_EQ(parametros.Puerto_Ftp, "21");
    EXPECT_EQ(parametros.PS_PREFIJO, "ps_");
    EXPECT_EQ(parametros.PS_INDICES1, "");
    EXPECT_EQ(parametros.PS_INDICES2, "");
    EXPECT_EQ(parametros.Carpeta_tienda, "/");
    EXPECT_EQ(parametros.WWW, "/");
    EXPECT_EQ(parametros.Ps_SufijoFoto, "_default");
    EXPECT_EQ(parametros.Ps_pvpdef, 1);
    EXPECT_EQ(parametros.Ps_ProvReferencia, "");
    EXPECT_EQ(parametros.PS_TABLAARTIC, "M_ARTIC");
    EXPECT_EQ(parametros.PS_TABLAFAM, "M_FAMILIA");
    EXPECT_EQ(parametros.CADACTIVOWEB, "S");
    EXPECT_EQ(parametros.CAMPOFAMALT, "NULL");
    EXPECT_EQ(parametros.PS_PESO, "KILOS");
    EXPECT_EQ(parametros.PS_CANTMINIMA, "1");
    EXPECT_EQ(parametros.PSAlmacenes, "01");
    EXPECT_EQ(parametros.PSGrupoMarcas, "");
    EXPECT_EQ(parametros.PS_VERSION, 0);
    EXPECT_EQ(parametros.PS_IDIOMA, 1);
}

TEST_F(CargaParamTest, LoQueHayEnLaFilaSeTomaComoEsta)
{
    Pon("PS_MODOCONFIGURADOR", true);
    Pon("PUERTO_BD", 3310);
    Pon("PUERTO_FTP", "2121");
    Pon("PS_PREFIJO", "tst_");
    Pon("PS_INDICES1", "http://a/1");
    Pon("PS_INDICES2", "http://a/2");
    Pon("PS_PVPDEF", 3);
    Pon("CADACTIVOWEB", "S,N");
    Pon("PS_VERSION", 1);
    Pon("PSALMACENES", "01,02");

    const data::Parametros& parametros = Carga();

    EXPECT_TRUE(parametros.PS_MODOCONFIGURADOR);
    EXPECT_EQ(parametros.User_Bd, "usubd");
    EXPECT_EQ(parametros.Pass_Bd, "clavebd");
    EXPECT_EQ(parametros.Puerto_Bd, "3310");
    EXPECT_EQ(parametros.Nombre_Bd, "tienda");
    EXPECT_EQ(parametros.Server_Bd, "bd.ejemplo");
    EXPECT_EQ(parametros.User_Ftp, "usuftp");
    EXPECT_EQ(parametros.Pass_Ftp, "claveftp");
    EXPECT_EQ(parametros.Puerto_Ftp, "2121");
    EXPECT_EQ(parametros.Server_Ftp, "ftp.ejemplo");
    EXPECT_EQ(parametros.PS_PREFIJO, "tst_");
    EXPECT_EQ(parametros.PS_INDICES1, "http://a/1");
    EXPECT_EQ(parametros.PS_INDICES2, "http://a/2");
    EXPECT_EQ(parametros.Ps_pvpdef, 3);
    EXPECT_EQ(parametros.CADACTIVOWEB, "S,N");
    EXPECT_EQ(parametros.PS_VERSION, 1);
    EXPECT_EQ(parametros.PSAlmacenes, "01,02");
}

TEST_F(CargaParamTest, UnPrefijoVacioDaElDeFabrica)
{
    Pon("PS_PREFIJO", "");

    EXPECT_EQ(Carga().PS_PREFIJO, "ps_");
}

TEST_F(CargaParamTest, UnCeroEnUnaColumnaNumericaCuentaComoVacio)
{
    Pon("PS_CANTMINIMA", 0);
    Pon("PS_PVPDEF", 0);
    Pon("PS_IDIOMA", 0);
    Pon("PS_VERSION", 0);

    const data::Parametros& parametros = Carga();

    EXPECT_EQ(parametros.PS_CANTMINIMA, "1");
    EXPECT_EQ(parametros.Ps_pvpdef, 1);
    EXPECT_EQ(parametros.PS_IDIOMA, 1);
    EXPECT_EQ(parametros.PS_VERSION, 0);
}

TEST_F(CargaParamTest, LaCarpetaYLaWebSeNormalizanSinTocarLaFila)
{
    Pon("CARPETA_TIENDA", "/tienda");
    Pon("WWW", "http://www.ejemplo.es");

    const data::Parametros& parametros = Carga();

    EXPECT_EQ(parametros.Carpeta_tienda, "/tienda/");
    EXPECT_EQ(parametros.WWW, "http://www.ejemplo.es/");
    EXPECT_TRUE(local.ejecutadas.isEmpty());
    EXPECT_TRUE(local.actualizadas.empty());
}

TEST(NormalizaCarpeta, PoneLasBarrasQueFaltan)
{
    EXPECT_EQ(company::NormalizaCarpeta(""), "/");
    EXPECT_EQ(company::NormalizaCarpeta("/"), "/");
    EXPECT_EQ(company::NormalizaCarpeta("shop"), "/shop/");
    EXPECT_EQ(company::NormalizaCarpeta("/shop"), "/shop/");
    EXPECT_EQ(company::NormalizaCarpeta("shop/"), "/shop/");
    EXPECT_EQ(company::NormalizaCarpeta("/shop/"), "/shop/");
}

TEST(NormalizaWww, PoneLaBarraFinal)
{
    EXPECT_EQ(company::NormalizaWww(""), "/");
    EXPECT_EQ(company::NormalizaWww("http://a"), "http://a/");
    EXPECT_EQ(company::NormalizaWww("http://a/"), "http://a/");
}

TEST_F(CargaParamTest, UnNuloDondeNoPuedeHaberloEsErrorYLoLeidoAntesQueda)
{
    Pon("PS_MODOCONFIGURADOR", true);
    Pon("SERVER_BD", Nulo());

    try {
        Carga();
        FAIL() << "no error";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Numero(), 94);
    }

    EXPECT_TRUE(p.programa.parametros.PS_MODOCONFIGURADOR);
    EXPECT_EQ(p.programa.parametros.Nombre_Bd, "tienda");
    EXPECT_EQ(p.programa.parametros.Server_Bd, "");
    EXPECT_EQ(p.programa.parametros.User_Ftp, "");
}

class SinNuloEnLaColumna : public CargaParamTest,
                           public testing::WithParamInterface<const char*> {};

TEST_P(SinNuloEnLaColumna, EsErrorDeEjecucion)
{
    Pon(GetParam(), Nulo());

    EXPECT_THROW(Carga(), data::ErrorEjecucion);
}

INSTANTIATE_TEST_SUITE_P(Columnas, SinNuloEnLaColumna,
                         testing::Values("PS_MODOCONFIGURADOR", "USER_BD", "PASS_BD", "NOMBRE_BD",
                                         "SERVER_BD", "USER_FTP", "PASS_FTP", "SERVER_FTP"),
                         [](const auto& caso) { return std::string(caso.param); });

TEST_F(CargaParamTest, UnaEmpresaSinFilaEsErrorDelQueLlama)
{
    data::Filas vacia = Fila(empresa);
    vacia.valores.clear();
    local.Espera(SqlEmpresa, vacia);
    p.programa.parametros.WWW = "http://antes/";

    try {
        company::CargaParam(p.programa);
        FAIL() << "no error";
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.Numero(), 3021);
    }

    EXPECT_EQ(p.programa.parametros.WWW, "http://antes/");
}

TEST_F(CargaParamTest, LaEmpresaSonLasSeisPrimerasLetrasDeLaEtiqueta)
{
    p.programa.LblEmpresa = "ABCDEF Otra casa";
    local.Espera("Select * from m_Empresa where codempresa='ABCDEF'", Fila(empresa));
    local.Espera("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='ABCDEF' AND IDIOMA=1", SinFilas);
    local.Espera("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='ABCDEF' AND IDIOMA<>1 ORDER BY IDIOMA",
                 SinFilas);

    company::CargaParam(p.programa);
}

TEST_F(CargaParamTest, SinFilaDelIdiomaPrincipalTodoEsPorDefecto)
{
    const data::Parametros& parametros = Carga();

    ASSERT_EQ(parametros.Idiomas.size(), 1U);
    const data::FichaIdioma& ficha = parametros.Idiomas[0];
    EXPECT_EQ(ficha.Idioma, 1);
    EXPECT_EQ(ficha.CampoDescripcion, "DESCRIPCION");
    EXPECT_EQ(ficha.campodescorta, "DESCRIPCIO2");
    EXPECT_EQ(ficha.CampoNotas, "NOTAS");
    EXPECT_EQ(ficha.CampoFamDescripcion, "DESCRIPCION");
    EXPECT_EQ(ficha.CampoFamNotas, "NOTAS");
    EXPECT_EQ(ficha.Tag, "NULL");
    EXPECT_EQ(ficha.Keywords, "NULL");
    EXPECT_EQ(ficha.KEYWORDS_FAM, "NULL");
    EXPECT_EQ(ficha.METATITULO_ART, "DESCRIPCION");
    EXPECT_EQ(ficha.METADESCRIPCION_ART, "NOTAS");
    EXPECT_EQ(ficha.METATITULO_FAM, "DESCRIPCION");
    EXPECT_EQ(ficha.METADESCRIPCION_FAM, "NOTAS");
}

data::Filas FilasIdioma(std::initializer_list<std::initializer_list<Valor>> filas)
{
    return HazFilas({"CODEMPRESA", "IDIOMA", "CAMPODESCRIPCION", "CAMPODESCORTA", "CAMPONOTAS",
                     "CAMPOFAMDESCRIPCION", "CAMPOFAMNOTAS", "TAG", "KEYWORDS", "KEYWORDS_FAM",
                     "METATITULO_ART", "METADESCRIPCION_ART", "METATITULO_FAM",
                     "METADESCRIPCION_FAM"},
                    filas);
}

TEST_F(CargaParamTest, ElPrincipalVaDelanteYLosOtrosDetrasCadaUnoConSusCampos)
{
    Pon("PS_IDIOMA", 3);
    local.Espera(SqlEmpresa, Fila(empresa));
    local.Espera("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA=3",
                 FilasIdioma({{"000001", 3, "a1", "a2", "a3", "a4", "a5", "a6", "a7", "a8", "a9",
                               "a10", "a11", "a12"}}));
    local.Espera("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA<>3 ORDER BY IDIOMA",
                 FilasIdioma({{"000001", 1, "b1", Nulo(), "", "b4", "b5", "b6", "b7", "b8", "b9",
                               "b10", "b11", "b12"},
                              {"000001", 2, "c1", "c2", "c3", "c4", "c5", Nulo(), "c7", "c8", "c9",
                               "c10", "c11", "c12"}}));

    company::CargaParam(p.programa);

    const auto& idiomas = p.programa.parametros.Idiomas;
    ASSERT_EQ(idiomas.size(), 3U);
    EXPECT_EQ(idiomas[0].Idioma, 3);
    EXPECT_EQ(idiomas[0].CampoDescripcion, "a1");
    EXPECT_EQ(idiomas[0].campodescorta, "a2");
    EXPECT_EQ(idiomas[0].CampoNotas, "a3");
    EXPECT_EQ(idiomas[0].CampoFamDescripcion, "a4");
    EXPECT_EQ(idiomas[0].CampoFamNotas, "a5");
    EXPECT_EQ(idiomas[0].Tag, "a6");
    EXPECT_EQ(idiomas[0].Keywords, "a7");
    EXPECT_EQ(idiomas[0].KEYWORDS_FAM, "a8");
    EXPECT_EQ(idiomas[0].METATITULO_ART, "a9");
    EXPECT_EQ(idiomas[0].METADESCRIPCION_ART, "a10");
    EXPECT_EQ(idiomas[0].METATITULO_FAM, "a11");
    EXPECT_EQ(idiomas[0].METADESCRIPCION_FAM, "a12");
    EXPECT_EQ(idiomas[1].Idioma, 1);
    EXPECT_EQ(idiomas[1].campodescorta, "DESCRIPCIO2");
    EXPECT_EQ(idiomas[1].CampoNotas, "NOTAS");
    EXPECT_EQ(idiomas[2].Idioma, 2);
    EXPECT_EQ(idiomas[2].CampoFamDescripcion, "c4");
    EXPECT_EQ(idiomas[2].Tag, "NULL");
}

TEST_F(CargaParamTest, UnaSegundaLecturaNoConservaIdiomasDeLaPrimera)
{
    p.programa.parametros.Idiomas.resize(3);

    EXPECT_EQ(Carga().Idiomas.size(), 1U);
}

TEST_F(CargaParamTest, UnNumeroQueNoCabeEsDesbordamiento)
{
    Pon("PS_PVPDEF", 40000);

    try {
        Carga();
        FAIL() << "no error";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Numero(), 6);
    }
}

TEST_F(CargaParamTest, UnaColumnaQueFaltaEsErrorConSuNombre)
{
    empresa.erase(empresa.begin() + 14); // WWW

    try {
        Carga();
        FAIL() << "no error";
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.Numero(), 3265);
        EXPECT_TRUE(error.Descripcion().contains("WWW"));
    }
}

} // namespace
