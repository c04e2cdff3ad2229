#include "apoyo/proveedor_de_prueba.h"
#include "configurador_de_prueba.h"
#include "configurator/campos_copia.h"
#include "configurator/copia.h"

using namespace tolmo;
using namespace tolmo::configurator;
using data::Respuesta;

namespace {

const AvisosDePrueba::Caja Reemplazar{
    "Atención, la configuración reemplazará la que tengan \rlos artículos de la selección, ¿Continuar?",
    36, ""};
const AvisosDePrueba::Caja Concluida{"Exportación concluida", 64, ""};

TEST(ClausulasDe, LosNueveCamposVanEnSuOrden)
{
    const SeleccionCopia todos{.TxtArtDes = "a",
                               .TxtArtHas = "b",
                               .TxtCodAlternativoDesde = "c",
                               .TxtCodAlternativoHasta = "d",
                               .TxtGrupo = "1",
                               .TxtGrupo2 = "2",
                               .TxtGrupo3 = "3",
                               .TxtGrupo4 = "4",
                               .TxtProvHab = "5"};

    EXPECT_EQ(
        ClausulasDe(todos),
        " AND CODARTICULO>='a'  AND CODARTICULO<='b'  AND CODALTERNATIVO>='c'  AND CODALTERNATIVO<='d'  AND CODGRUPO='1'  AND GRUPO2='2'  AND GRUPO3='3'  AND GRUPO4='4'  AND CODPROVHAB='5' ");
}

TEST(ClausulasDe, UnCampoVacioNoPideNada)
{
    EXPECT_EQ(ClausulasDe({.TxtArtHas = "b", .TxtGrupo4 = "4"}),
              " AND CODARTICULO<='b'  AND GRUPO4='4' ");
    EXPECT_EQ(ClausulasDe({}), "");
}

class Copia : public testing::Test, public ConfiguradorDePrueba {
  protected:
    bool CopiaCon(Respuesta respuesta, const QString& origen, const SeleccionCopia& seleccion)
    {
        avisos.respuestas = {respuesta};
        return CopiaConfiguracion(programa, progreso, origen, seleccion);
    }
    QString Configuraciones()
    {
        return Tabla("SELECT CODARTICULO,CODCATEGORIA FROM PS_CONF_ART_CAT ORDER BY CODARTICULO");
    }
    QString Valores(const QString& articulo)
    {
        return Tabla("SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='" + articulo +
                     "' ORDER BY SECUENCIA");
    }

    ProgresoDePrueba progreso{};
};

TEST_F(Copia, SinSeleccionSeAvisaYNoSePregunta)
{
    EXPECT_FALSE(CopiaConfiguracion(programa, progreso, "A1", {}));

    EXPECT_EQ(avisos.cajas, (Cajas{{"Especificar antes la selección.", 48, ""}}));
    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(Copia, ConUnNoNoSeTocaNada)
{
    EXPECT_FALSE(CopiaCon(Respuesta::No, "A1", {.TxtGrupo = "0007"}));

    EXPECT_EQ(avisos.cajas, Cajas{Reemplazar});
    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(Copia, CadaDestinoRecibeCuatroSentencias)
{
    EXPECT_TRUE(CopiaCon(Respuesta::Si, "A1", {.TxtGrupo = "0007"}));

    EXPECT_EQ(
        sentencias,
        (QStringList{
            "SELECT * FROM M_ARTIC WHERE CODARTICULO<>'A1' AND CODGRUPO='0007' ",
            "DELETE FROM PS_CONF_ART_CAT WHERE CODARTICULO='A2'",
            "DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='A2'",
            "INSERT INTO PS_CONF_ART_CAT  SELECT 'A2' AS CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT WHERE  CODARTICULO='A1'",
            "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO,FOTO) SELECT 'A2' AS CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO,FOTO FROM PS_CONF_ART_VAL WHERE  CODARTICULO='A1'"}));
    EXPECT_EQ(avisos.cajas, (Cajas{Reemplazar, Concluida}));
}

TEST_F(Copia, ElDestinoPierdeLoSuyoYRepiteLosNumerosDelOrigenSinSuTipo)
{
    Ejecuta(
        {"INSERT INTO PS_CONF_ART_CAT VALUES ('A2','COL','Color','V')",
         "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR) VALUES ('A2','COL','AZU')",
         "INSERT INTO CONF_COMPONENTES VALUES ('A2','COL','AZU',1)"});

    CopiaCon(Respuesta::Si, "A1", {.TxtArtDes = "A2", .TxtArtHas = "A2"});

    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_CAT WHERE CODARTICULO='A2'"), "A2|MED|Medida|NULL");
    EXPECT_EQ(
        Valores("A2"),
        "A2|MED|010|41|1|1.5|0|0|0|0|0.25|C:\\f\\a.jpg A2|MED|020|7|2|NULL|0|0|0|0|NULL|NULL");
    EXPECT_EQ(Tabla("SELECT * FROM CONF_COMPONENTES"), "A2|COL|AZU|1");
}

TEST_F(Copia, ElOrigenNoEsDestinoAunqueEsteEnLaSeleccion)
{
    CopiaCon(Respuesta::Si, "A1", {.TxtArtDes = "A1"});

    EXPECT_EQ(Configuraciones(), "A1|MED A2|MED A3|MED");
    EXPECT_EQ(Tabla("SELECT TIPO FROM PS_CONF_ART_CAT WHERE CODARTICULO='A1'"), "V");
}

TEST_F(Copia, LosCamposSeSuman)
{
    CopiaCon(Respuesta::Si, "A1",
             {.TxtCodAlternativoDesde = "X1", .TxtCodAlternativoHasta = "X3", .TxtGrupo = "0008"});

    EXPECT_EQ(Configuraciones(), "A1|MED A3|MED");
}

TEST_F(Copia, UnOrigenSinFilasVaciaLosDestinos)
{
    CopiaCon(Respuesta::Si, "A3", {.TxtGrupo = "0007"});

    EXPECT_EQ(Configuraciones(), "");
    EXPECT_EQ(Valores("A1"), "");
}

TEST_F(Copia, UnOrigenEnBlancoNoSeRechazaYVaciaTodosLosDestinos)
{
    CopiaCon(Respuesta::Si, "", {.TxtArtDes = "A1"});

    EXPECT_EQ(sentencias.first(),
              "SELECT * FROM M_ARTIC WHERE CODARTICULO<>'' AND CODARTICULO>='A1' ");
    EXPECT_EQ(Configuraciones(), "");
}

TEST_F(Copia, ElAvanceEsElDelDestinoEntreTodos)
{
    CopiaCon(Respuesta::Si, "A1", {.TxtArtDes = "A1"});

    EXPECT_EQ(progreso.avances, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}}));
    EXPECT_EQ(progreso.turnos, 2);
}

TEST_F(Copia, SinDestinosTambienConcluye)
{
    EXPECT_TRUE(CopiaCon(Respuesta::Si, "A1", {.TxtArtDes = "Z"}));

    EXPECT_EQ(avisos.cajas, (Cajas{Reemplazar, Concluida}));
    EXPECT_TRUE(progreso.avances.empty());
}

TEST_F(Copia, LosArticulosSonLosDeLaTablaDeLaEmpresa)
{
    programa.parametros.PS_TABLAARTIC = "V_ARTIC";
    Ejecuta(
        {"CREATE TABLE V_ARTIC (CODARTICULO nvarchar(20))", "INSERT INTO V_ARTIC VALUES ('A9')"});

    CopiaCon(Respuesta::Si, "A1", {.TxtArtDes = "A"});

    EXPECT_EQ(Configuraciones(), "A1|MED A9|MED");
}

class CamposCopia : public testing::Test, public ConfiguradorDePrueba {
  protected:
    CamposCopia()
    {
        Ejecuta({"CREATE TABLE M_GRUPART (CODGRUPO nvarchar(4), DESCRIPCION nvarchar(60))",
                 "INSERT INTO M_GRUPART VALUES ('0007','Ollas')",
                 "CREATE TABLE M_PROVE (CODPROVEEDOR nvarchar(6), DESCRIPCION nvarchar(60))",
                 "INSERT INTO M_PROVE VALUES ('000021','Metales')"});
    }
};

TEST_F(CamposCopia, UnGrupoSeRellenaHastaElAnchoDeSuColumna)
{
    EXPECT_EQ(CompruebaGrupo(programa, "7"),
              (CodigoDescrito{.codigo = "0007", .descripcion = "Ollas"}));
    EXPECT_EQ(sentencias.last(), "SELECT * FROM M_GRUPART WHERE CodGrupo='0007'");
}

TEST_F(CamposCopia, UnProveedorTambien)
{
    EXPECT_EQ(CompruebaProveedor(programa, "21"),
              (CodigoDescrito{.codigo = "000021", .descripcion = "Metales"}));
    EXPECT_EQ(sentencias.last(), "SELECT * FROM M_PROVE WHERE CodProveedor='000021'");
}

TEST_F(CamposCopia, UnCodigoDesconocidoSeRellenaYNoTieneDescripcion)
{
    EXPECT_EQ(CompruebaGrupo(programa, "8"), CodigoDescrito{.codigo = "0008"});
}

TEST_F(CamposCopia, UnCampoVacioNoSeRellena)
{
    EXPECT_EQ(CompruebaGrupo(programa, ""), CodigoDescrito{});
    EXPECT_EQ(sentencias, QStringList("SELECT * FROM M_GRUPART WHERE CodGrupo=''"));
}

TEST(CamposCopiaSinAncho, DondeNoSeDeclaraVaHastaElCodigoMasLargo)
{
    ProveedorDePrueba local;
    ProgramaDePrueba p{local.Fabrica()};
    p.programa.DialectoActivo = data::Dialecto::Access;
    p.programa.ConexionLocal.Conecta("local");
    local.Espera("SELECT CodGrupo FROM M_GRUPART WHERE FALSE", HazFilas({"CodGrupo"}, {}));
    local.Espera("SELECT MAX(LEN(CodGrupo)) AS ancho FROM M_GRUPART", HazFilas({"ancho"}, {{3}}));
    local.Espera("SELECT * FROM M_GRUPART WHERE CodGrupo='007'",
                 HazFilas({"CodGrupo", "Descripcion"}, {{"007", "Ollas"}}));

    EXPECT_EQ(CompruebaGrupo(p.programa, "7"),
              (CodigoDescrito{.codigo = "007", .descripcion = "Ollas"}));
}

} // namespace
