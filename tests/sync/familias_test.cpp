#include "apoyo/corrida_de_prueba.h"
#include "sync/familias.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

TEST(SeExporta, ElCampoDentroDelParametroOLaEmpresaDentroDelCampo)
{
    EXPECT_TRUE(sync::SeExporta("S", "", "S", "000001"));
    EXPECT_TRUE(sync::SeExporta("s", "", "N,S", "000001")) << "without regard to case";
    EXPECT_FALSE(sync::SeExporta("N", "", "S", "000001"));
    EXPECT_FALSE(sync::SeExporta("", "", "S", "000001")) << "empty stands inside anything";
    EXPECT_TRUE(sync::SeExporta("", ",7,", "S", "000007"));
    EXPECT_TRUE(sync::SeExporta("N", ",1,7,9,", "S", "000007"));
    EXPECT_FALSE(sync::SeExporta("", ",000007,", "S", "000007"));
    EXPECT_FALSE(sync::SeExporta("", "7", "S", "000007")) << "without its commas";
    EXPECT_FALSE(sync::SeExporta("", ",17,", "S", "000007"));
}

TEST(SeExporta, UnNumeroCeroYUnFalsoCuentanComoVacios)
{
    EXPECT_FALSE(sync::SeExporta(0, "", "0,1", "000001"));
    EXPECT_TRUE(sync::SeExporta(1, "", "0,1", "000001"));
    EXPECT_TRUE(sync::SeExporta("0", "", "0,1", "000001")) << "a text is not";
    EXPECT_FALSE(sync::SeExporta(false, "", "True,False", "000001"));
    EXPECT_TRUE(sync::SeExporta(true, "", "True,False", "000001"));
    EXPECT_FALSE(sync::SeExporta(Nulo(), "", "S", "000001"));
}

QString SqlNivel(int nivel, const QString& padre)
{
    return QString(
               "SELECT DESCRIPCION AS PSCAMPOFAMDESCRIPCION0,NOTAS AS PSCAMPOFAMNOTAS0,NULL AS PSKEYWORDSFAM0,DESCRIPCION AS PsMetaTituloFam0,NOTAS AS PsMetaDescripcionFam0,* FROM M_FAMILIA WHERE NIVEL='%1' AND CLAVE LIKE '%2%' ORDER BY CLAVE")
        .replace("%1", QString::number(nivel))
        .replace("%2", padre);
}

struct FamiliasTest : testing::Test {
    CorridaDePrueba p{};

    FamiliasTest()
    {
        p.local.tablas = {{"wfampresta", "TABLE"}};
        p.local.EsperaOrden("DELETE FROM wFAMPRESTA");
        p.tienda.Permite("SELECT id_category,kov_familia from ps_category", SinFilas);
    }

    struct Familia {
        QString clave;
        Valor activo = "S";
        QString nombre = "Fam";
        Valor notas = Nulo();
        Valor empresas = Nulo();
        Valor foto = Nulo();
        Valor claves = Nulo();
    };

    void Nivel(int nivel, const QString& padre, const std::vector<Familia>& familias)
    {
        data::Filas filas = HazFilas(
            {"CLAVE", "NIVEL", "activoweb", "empresasweb", "Foto", "PSCAMPOFAMDESCRIPCION0",
             "PSCAMPOFAMNOTAS0", "PSKEYWORDSFAM0", "PsMetaTituloFam0", "PsMetaDescripcionFam0"},
            {});
        for (const Familia& f : familias)
            for (const Valor& valor :
                 {Valor(f.clave), Valor(nivel), f.activo, f.empresas, f.foto, Valor(f.nombre),
                  f.notas, f.claves, Valor("tit " + f.nombre), Valor("met " + f.nombre)})
                filas.valores.push_back(valor);
        p.local.Espera(SqlNivel(nivel, padre), filas);
    }

    void ConNumero(const QString& clave, int numero)
    {
        p.local.Espera("SELECT * FROM wFAMPRESTA WHERE FAMKOV='" + clave + "'",
                       HazFilas({"FAMKOV", "FAMPRESTA"}, {{clave, numero}}));
    }

    void SinNumero(const QString& clave, const Valor& mayor, int nuevo)
    {
        p.local.Espera("SELECT * FROM wFAMPRESTA WHERE FAMKOV='" + clave + "'", SinFilas);
        p.local.Espera("SELECT MAX(FAMPRESTA) AS MFAM FROM wFAMPRESTA",
                       HazFilas({"MFAM"}, {{mayor}}));
        p.local.EsperaOrden(QString("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('%1',%2)")
                                .arg(clave, QString::number(nuevo)));
    }

    /// Sentences of one kind, by what they begin with.
    QStringList Que(const QString& comienzo) const
    {
        QStringList halladas;
        for (const QString& sentencia : p.Sentencias())
            if (sentencia.startsWith(comienzo))
                halladas << sentencia;
        return halladas;
    }
};

TEST_F(FamiliasTest, UnArbolVacioDejaLosBorradosYLosNumerosDeLasDosFijas)
{
    Nivel(0, "", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_EQ(p.Sentencias(),
              (QStringList{"DELETE FROM ps_category WHERE id_category>2||",
                           "DELETE FROM ps_category_group WHERE id_category>2||",
                           "DELETE FROM ps_category_lang WHERE id_category>2||",
                           "DELETE FROM ps_category_shop WHERE id_category>2||",
                           "UPDATE ps_category set nleft=1 WHERE id_category=1||",
                           "UPDATE ps_category set nleft=2 WHERE id_category=2||",
                           "UPDATE ps_category set nright=3 WHERE id_category=2||",
                           "UPDATE ps_category set nright=4 WHERE id_category=1||"}));
    EXPECT_EQ(p.Log(), (QStringList{"CARGANDO FAMILIAS", "Recopilando información de categorías"}));
}

TEST_F(FamiliasTest, UnaFamiliaEscribeTodasSusFilasEnSuOrden)
{
    p.programa.parametros.Idiomas[0].CampoFamDescripcion = "DESCRIPCION";
    Nivel(0, "",
          {{.clave = "0102", .nombre = "Año d'hoy", .notas = "uno\r\nd'os", .claves = "c'1"}});
    ConNumero("0102", 9);
    Nivel(1, "0102", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_EQ(
        p.Sentencias().mid(6, 12),
        (QStringList{
            "INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES (9,2,3,0,2,1,CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE),0102,'0102')||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,1)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,2)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,3)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,4)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,5)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,6)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,7)||",
            "INSERT INTO ps_category_group (id_category,id_group) VALUES (9,8)||",
            // The quotes of the keywords are not replaced.
            "INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (9,3,'Año d´hoy','ao-d-hoy','uno<br>d´os','c'1','tit Año d'hoy','met Año d'hoy')||",
            "INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES (9,1,0102)||",
            "UPDATE ps_category set nright=4 WHERE kov_familia='0102'||"}));
    EXPECT_EQ(p.Log().value(2), "Actualizando Familia 0102");
}

TEST_F(FamiliasTest, LosNumerosDelConjuntoAnidadoSonLosDelRecorridoEnProfundidad)
{
    Nivel(0, "", {{.clave = "01"}, {.clave = "02"}});
    ConNumero("01", 11);
    Nivel(1, "01", {{.clave = "0101"}, {.clave = "0102"}});
    ConNumero("0101", 12);
    Nivel(2, "0101", {});
    ConNumero("0102", 13);
    Nivel(2, "0102", {});
    ConNumero("02", 14);
    Nivel(1, "02", {});

    sync::CargaFamilias(p.corrida);

    const QStringList altas = Que("INSERT INTO ps_category (");
    ASSERT_EQ(altas.size(), 4);
    EXPECT_TRUE(altas[0].contains("VALUES (11,2,3,0,2,"));
    EXPECT_TRUE(altas[1].contains("VALUES (12,11,4,0,3,"));
    EXPECT_TRUE(altas[2].contains("VALUES (13,11,6,0,3,"));
    EXPECT_TRUE(altas[3].contains("VALUES (14,2,9,0,2,"));
    EXPECT_EQ(Que("UPDATE ps_category set nright="),
              (QStringList{"UPDATE ps_category set nright=5 WHERE kov_familia='0101'||",
                           "UPDATE ps_category set nright=7 WHERE kov_familia='0102'||",
                           "UPDATE ps_category set nright=8 WHERE kov_familia='01'||",
                           "UPDATE ps_category set nright=10 WHERE kov_familia='02'||",
                           "UPDATE ps_category set nright=11 WHERE id_category=2||",
                           "UPDATE ps_category set nright=12 WHERE id_category=1||"}));
}

TEST_F(FamiliasTest, LosHijosDeUnaFamiliaNoPublicadaCuelganDelAntepasadoPublicado)
{
    Nivel(0, "", {{.clave = "01"}, {.clave = "02", .activo = "N"}});
    ConNumero("01", 11);
    Nivel(1, "01", {{.clave = "0101", .activo = "N"}});
    Nivel(2, "0101", {{.clave = "010101"}});
    ConNumero("010101", 12);
    Nivel(3, "010101", {});
    Nivel(1, "02", {{.clave = "0201"}});
    ConNumero("0201", 13);
    Nivel(2, "0201", {});

    sync::CargaFamilias(p.corrida);

    const QStringList altas = Que("INSERT INTO ps_category (");
    ASSERT_EQ(altas.size(), 3);
    EXPECT_TRUE(altas[1].contains("VALUES (12,11,4,0,3,"));
    EXPECT_TRUE(altas[2].contains("VALUES (13,2,7,0,2,")) << "under home, at depth 2";
    EXPECT_FALSE(p.Log().contains("Actualizando Familia 0101"));
}

TEST_F(FamiliasTest, UnaMarcaNumericaDeCeroNoPublicaAunqueElParametroLaNombre)
{
    p.programa.parametros.CADACTIVOWEB = "0,1";
    Nivel(0, "", {{.clave = "01", .activo = 0}, {.clave = "02", .activo = 1}});
    Nivel(1, "01", {});
    ConNumero("02", 7);
    Nivel(1, "02", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_EQ(p.Log().filter("Actualizando Familia"), QStringList{"Actualizando Familia 02"});
}

TEST_F(FamiliasTest, UnaFamiliaNuevaTomaElNumeroSiguienteAlMayorYTresSiNoHayNinguno)
{
    Nivel(0, "", {{.clave = "01"}, {.clave = "02"}});
    SinNumero("01", Nulo(), 3);
    Nivel(1, "01", {});
    SinNumero("02", 3, 4);
    Nivel(1, "02", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_TRUE(Que("INSERT INTO ps_category (").value(0).contains("VALUES (3,2,3,0,"));
    EXPECT_TRUE(Que("INSERT INTO ps_category (").value(1).contains("VALUES (4,2,5,0,"));
}

TEST_F(FamiliasTest, SiElMayorNumeroEsCeroLaFamiliaNuevaTomaTres)
{
    Nivel(0, "", {{.clave = "01"}});
    SinNumero("01", 0, 3);
    Nivel(1, "01", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_TRUE(Que("INSERT INTO ps_category (").value(0).contains("VALUES (3,2,3,0,"));
}

// The number of a family is asked for in the shop's dialect, as the first sentence is written.
TEST_F(FamiliasTest, UnSignoEnUnaClaveCierraElProgramaAlPedirSuNumero)
{
    Nivel(0, "", {{.clave = "A&B"}});

    EXPECT_THROW(sync::CargaFamilias(p.corrida), data::FinDePrograma);

    ASSERT_EQ(p.prueba.avisos.cajas.size(), 2U);
    EXPECT_EQ(
        p.prueba.avisos.cajas[1].texto,
        "SELECT * FROM wFAMPRESTA WHERE FAMKOV='A&B'\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
    EXPECT_EQ(p.Sentencias().size(), 6) << "what goes before the first family";
}

TEST_F(FamiliasTest, EntreParentesisElSignoDeUnaClaveSoloSeTraduceEnSuNumeroYEnLaPrimeraSentencia)
{
    Nivel(0, "", {{.clave = "A(&)B"}});
    p.local.Espera("SELECT * FROM wFAMPRESTA WHERE FAMKOV='A CONCAT(,)B'", SinFilas);
    p.local.Espera("SELECT MAX(FAMPRESTA) AS MFAM FROM wFAMPRESTA", HazFilas({"MFAM"}, {{8}}));
    p.local.EsperaOrden("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('A CONCAT(,)B',9)");
    Nivel(1, "A(&)B", {});

    sync::CargaFamilias(p.corrida);

    const QStringList sentencias = p.Sentencias();
    EXPECT_EQ(
        sentencias.value(6),
        "INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES (9,2,3,0,2,1,CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE),A CONCAT(,)B,'A CONCAT(,)B')||");
    EXPECT_EQ(
        sentencias.mid(16, 2),
        (QStringList{
            "INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES (9,1,A(&)B)||",
            "UPDATE ps_category set nright=4 WHERE kov_familia='A(&)B'||"}));
    EXPECT_TRUE(p.Log().contains("Actualizando Familia A(&)B"));
}

TEST_F(FamiliasTest, ElAmpersandDeUnaFamiliaLlegaSinCambios)
{
    Nivel(0, "", {{.clave = "01", .nombre = "Hogar & Jardín (LEN)"}});
    ConNumero("01", 3);
    Nivel(1, "01", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_TRUE(Que("INSERT INTO ps_category_lang")
                    .value(0)
                    .contains("'Hogar & Jardín (LEN)','hogar---jardin--len-'"));
    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::Access) << "it stays so after the walk";
}

TEST_F(FamiliasTest, ElPrimerLoteSeCierraTrasDieciochoFamiliasYLosDemasTrasVeinte)
{
    std::vector<Familia> familias;
    for (int i = 10; i < 49; ++i)
        familias.push_back({.clave = QString::number(i)});
    Nivel(0, "", familias);
    for (const Familia& familia : familias) {
        ConNumero(familia.clave, familia.clave.toInt());
        Nivel(1, familia.clave, {});
    }

    sync::CargaFamilias(p.corrida);

    QStringList titulos;
    QString anterior;
    for (const QString& linea : p.Log()) {
        if (linea.startsWith("SUBIENDO FICHERO"))
            titulos << anterior;
        anterior = linea;
    }
    // Families 10 to 48: the 18th is 27, the 38th is 47.
    EXPECT_EQ(titulos, (QStringList{"Actualizando Familia 27", "Actualizando Familia 47"}));
}

TEST_F(FamiliasTest, CadaFamiliaMueveLaBarraEnSuNivelYCedeElTurno)
{
    Nivel(0, "", {{.clave = "01"}, {.clave = "02", .activo = "N"}});
    ConNumero("01", 11);
    Nivel(1, "01", {{.clave = "0101"}});
    ConNumero("0101", 12);
    Nivel(2, "0101", {});
    Nivel(1, "02", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_EQ(p.progreso.avances, (std::vector<std::pair<int, int>>{{1, 1}, {1, 2}, {2, 2}}));
    EXPECT_EQ(p.progreso.turnos, 3);
}

TEST_F(FamiliasTest, SinPedirFotosNoSeBorraNingunaEnElServidor)
{
    Nivel(0, "", {{.clave = "01", .foto = "C:\\f.jpg"}});
    ConNumero("01", 7);
    Nivel(1, "01", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_FALSE(p.prueba.carpeta.Existe("imgborra.txt"));
    EXPECT_EQ(p.corrida.PendientesFam.size(), 1U) << "element 0 stays empty";
}

TEST_F(FamiliasTest, PidiendoFotosSeBorranLasViejasYSeApuntaTambienLaVacia)
{
    p.opciones.fotosFam = true;
    Nivel(0, "", {{.clave = "01", .foto = "C:\\f.jpg"}, {.clave = "02"}});
    ConNumero("01", 7);
    Nivel(1, "01", {});
    ConNumero("02", 8);
    Nivel(1, "02", {});

    sync::CargaFamilias(p.corrida);

    EXPECT_EQ(p.Lineas("imgborra.txt"),
              (QStringList{"img/c/7.jpg;", "img/c/7-*.jpg;", "img/c/8.jpg;", "img/c/8-*.jpg;"}));
    ASSERT_EQ(p.corrida.PendientesFam.size(), 3U);
    EXPECT_EQ(p.corrida.PendientesFam[1].rutaLocal, "C:\\f.jpg");
    EXPECT_EQ(p.corrida.PendientesFam[1].nombreRemoto, "7.jpg");
    EXPECT_EQ(p.corrida.PendientesFam[2].rutaLocal, "");
    EXPECT_EQ(p.corrida.PendientesFam[2].nombreRemoto, "8.jpg");
}

TEST_F(FamiliasTest, CadaIdiomaLlevaSusColumnasYSuFila)
{
    p.programa.parametros.Idiomas.push_back({.Idioma = 5,
                                             .CampoFamDescripcion = "NOMBRE_EN",
                                             .CampoFamNotas = "NOTAS_EN",
                                             .KEYWORDS_FAM = "CLAVES_EN",
                                             .METATITULO_FAM = "TITULO_EN",
                                             .METADESCRIPCION_FAM = "META_EN"});
    p.local.Espera(
        "SELECT DESCRIPCION AS PSCAMPOFAMDESCRIPCION0,NOTAS AS PSCAMPOFAMNOTAS0,NULL AS PSKEYWORDSFAM0,DESCRIPCION AS PsMetaTituloFam0,NOTAS AS PsMetaDescripcionFam0,NOMBRE_EN AS PSCAMPOFAMDESCRIPCION1,NOTAS_EN AS PSCAMPOFAMNOTAS1,CLAVES_EN AS PSKEYWORDSFAM1,TITULO_EN AS PsMetaTituloFam1,META_EN AS PsMetaDescripcionFam1,* FROM M_FAMILIA WHERE NIVEL='0' AND CLAVE LIKE '%' ORDER BY CLAVE",
        SinFilas);

    sync::CargaFamilias(p.corrida);
}

struct ReferenciasTest : testing::Test {
    CorridaDePrueba p{};
};

TEST_F(ReferenciasTest, LaTablaQueFaltaSeCrea)
{
    p.local.tablas = {{"wFAMPRESTA2", "TABLE"}};
    p.local.EsperaOrden("CREATE TABLE wFAMPRESTA (FAMKOV NVARCHAR(20),FAMPRESTA INT)");
    p.tienda.Espera("SELECT id_category,kov_familia from ps_category", SinFilas);

    sync::GuardaReferenciaFamiliasActuales(p.corrida);
}

TEST_F(ReferenciasTest, SeAnotanSoloLasCategoriasConFamilia)
{
    p.local.tablas = {{"WFAMPRESTA", "TABLE"}};
    p.local.EsperaOrden("DELETE FROM wFAMPRESTA");
    p.tienda.Espera(
        "SELECT id_category,kov_familia from ps_category",
        HazFilas({"id_category", "kov_familia"}, {{1, Nulo()}, {2, ""}, {7, "0101"}, {8, "0102"}}));
    p.local.EsperaOrden("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('0101',7)");
    p.local.EsperaOrden("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('0102',8)");

    sync::GuardaReferenciaFamiliasActuales(p.corrida);
}

TEST_F(ReferenciasTest, ElPrefijoDeLaTiendaEntraEnSuConsulta)
{
    p.programa.parametros.PS_PREFIJO = "tst_";
    p.local.tablas = {{"wFAMPRESTA", "TABLE"}};
    p.local.EsperaOrden("DELETE FROM wFAMPRESTA");
    p.tienda.Espera("SELECT id_category,kov_familia from tst_category", SinFilas);

    sync::GuardaReferenciaFamiliasActuales(p.corrida);
}

} // namespace
