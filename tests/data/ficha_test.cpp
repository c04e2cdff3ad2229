#include "apoyo/programa_con_base.h"
#include "apoyo/proveedor_de_prueba.h"
#include "data/ficha.h"

using namespace tolmo;
using data::CampoFicha;
using data::Sentido;
using data::Vecindad;
using Clase = CampoFicha::Clase;

namespace {

// ADO's numbers, as the engines give them.
constexpr int Entero = 3;
constexpr int Doble = 5;
constexpr int Fecha = 135;
constexpr int Logico = 11;
constexpr int Octeto = 17;
constexpr int Texto = 202;
constexpr int TextoLargo = 203;

CampoFicha Caja(const QString& tag, const QString& texto)
{
    return {.Tag = tag, .texto = texto};
}

CampoFicha Casilla(const QString& tag, bool marcada)
{
    return {.Tag = tag, .clase = Clase::Casilla, .marcada = marcada};
}

CampoFicha Lista(const QString& tag, int posicion, const QString& texto)
{
    return {.Tag = tag, .clase = Clase::Lista, .texto = texto, .posicion = posicion};
}

TEST(ValorSqlControl, LaCasillaDaUnoOCeroDondeLaColumnaNoEsDeTexto)
{
    for (const int tipo : {Logico, Octeto, Entero}) {
        EXPECT_EQ(data::ValorSqlControl(Casilla("C", true), tipo), " 1 ") << tipo;
        EXPECT_EQ(data::ValorSqlControl(Casilla("C", false), tipo), " 0 ") << tipo;
    }
}

TEST(ValorSqlControl, LaCasillaDaSONDondeLaColumnaEsDeTexto)
{
    EXPECT_EQ(data::ValorSqlControl(Casilla("C", true), Texto), " 'S' ");
    EXPECT_EQ(data::ValorSqlControl(Casilla("C", false), Texto), " 'N' ");
}

TEST(ValorSqlControl, ElTextoVaEntreComillasONuloSiEstaVacio)
{
    for (const int tipo : {Texto, TextoLargo, Fecha}) {
        EXPECT_EQ(data::ValorSqlControl(Caja("C", "15/03/2024"), tipo), "'15/03/2024'") << tipo;
        EXPECT_EQ(data::ValorSqlControl(Caja("C", ""), tipo), "null") << tipo;
    }
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "0"), Texto), "'0'");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", " "), Texto), "' '");
}

TEST(ValorSqlControl, LaComillaDeUnTextoNoSeDobla)
{
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "D'Arc"), Texto), "'D'Arc'");
}

TEST(ValorSqlControl, LaColumnaNumericaLlevaElNumeroDelTexto)
{
    EXPECT_EQ(data::ValorSqlControl(Caja("C", " 007.50 "), Doble), "7.5");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "1234567.89"), Doble), "1234567.89");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "0"), Entero), "0");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", ""), Entero), "null");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "abc"), Entero), "null");
}

TEST(ValorSqlControl, ElTextoDeUnaColumnaLogicaSeEntiendeComoSiONo)
{
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "True"), Logico), " 1 ");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "no"), Logico), " 0 ");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", ""), Logico), "null");
    EXPECT_EQ(data::ValorSqlControl(Caja("C", "quizás"), Logico), "null");
}

TEST(ValorSqlControl, LaListaDaSuPosicionAlNumeroYSuTextoAlTexto)
{
    EXPECT_EQ(data::ValorSqlControl(Lista("C", 2, "Oro"), Entero), "2");
    EXPECT_EQ(data::ValorSqlControl(Lista("C", 2, "Oro"), Texto), "'Oro'");
    EXPECT_EQ(data::ValorSqlControl(Lista("C", -1, ""), Entero), "null");
    EXPECT_EQ(data::ValorSqlControl(Lista("C", -1, "7"), Entero), "7");
}

struct CasoCodigo {
    const char* regla;
    const char* codigo;
    const char* siguiente;
};

class SiguienteCodigo : public testing::TestWithParam<CasoCodigo> {};

TEST_P(SiguienteCodigo, SumaUnoYConservaElAncho)
{
    EXPECT_EQ(data::SiguienteCodigo(GetParam().codigo), GetParam().siguiente);
}

INSTANTIATE_TEST_SUITE_P(Casos, SiguienteCodigo,
                         testing::Values(CasoCodigo{"Acarreo", "00009", "00010"},
                                         CasoCodigo{"SinCeros", "7", "8"},
                                         CasoCodigo{"PasadoElAnchoCrece", "99999", "100000"},
                                         CasoCodigo{"Vacio", "", "1"},
                                         CasoCodigo{"LoQueNoEsNumeroCuentaCero", "A12", "001"}),
                         [](const auto& caso) { return caso.param.regla; });

/// A card over a real table.
class FichaEnBase : public testing::Test, public ProgramaConBase {
  protected:
    FichaEnBase()
    {
        Ejecuta(
            {"CREATE TABLE USUARIOS (CODIGO nvarchar(5) PRIMARY KEY, NOMBRE nvarchar(50), EDAD INT, ALTA DATETIME, ACTIVO YESNO, MARCA nvarchar(1), EMPRESA nvarchar(20), CODEMPRESA nvarchar(6), Clave nvarchar(10))",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE,EDAD,EMPRESA,CODEMPRESA) VALUES ('00003','Ana',33,'Norte','000001')"});
    }

    const std::vector<CampoFicha> controles{Caja("CODIGO", "00007"),    Caja("Nombre", "Luis"),
                                            Caja("", "no cuenta"),      Caja("EDAD", "41"),
                                            Caja("ALTA", "15/03/2024"), Casilla("ACTIVO", true),
                                            Casilla("MARCA", false),    Casilla("", true)};
};

TEST_F(FichaEnBase, InsertaFichaEscribeLosControlesConTagEnSuOrden)
{
    data::InsertaFicha(programa, programa.ConexionLocal, controles, "USUARIOS");

    EXPECT_EQ(
        sentencias,
        QStringList(
            {"Select * from USUARIOS WHERE FALSE",
             "INSERT INTO USUARIOS (CODIGO,Nombre,EDAD,ALTA,ACTIVO,MARCA) VALUES('00007','Luis',41,'15/03/2024', 1 , 'N' )"}));
    EXPECT_EQ(
        Tabla(
            "SELECT CODIGO,NOMBRE,EDAD,ALTA,ACTIVO,MARCA,Clave FROM USUARIOS WHERE CODIGO='00007'"),
        "00007|Luis|41|15/03/2024|True|N|NULL");
}

TEST_F(FichaEnBase, LaClaveVaDetrasDeLosControles)
{
    const std::vector<CampoFicha> dos{Caja("CODIGO", "00007"), Caja("NOMBRE", "Luis")};

    data::InsertaFicha(programa, programa.ConexionLocal, dos, "USUARIOS", "k-71");

    EXPECT_EQ(sentencias.last(),
              "INSERT INTO USUARIOS (CODIGO,NOMBRE,Clave) VALUES('00007','Luis','k-71')");
    EXPECT_EQ(Tabla("SELECT Clave FROM USUARIOS WHERE CODIGO='00007'"), "k-71");
}

TEST_F(FichaEnBase, InsertaFichaSinNingunTagCierraElPrograma)
{
    const std::vector<CampoFicha> ninguno{Caja("", "uno"), Casilla("", true)};

    EXPECT_THROW(data::InsertaFicha(programa, programa.ConexionLocal, ninguno, "USUARIOS"),
                 data::FinDePrograma);

    ASSERT_EQ(avisos.cajas.size(), 2U);
    EXPECT_EQ(avisos.cajas[0].estilo, 16);
    EXPECT_EQ(
        avisos.cajas[1].texto,
        "INSERT INTO USUARIOS () VALUES()\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
    EXPECT_EQ(avisos.cajas[1].estilo, 64);
    EXPECT_EQ(Tabla("SELECT CODIGO FROM USUARIOS"), "00003");
}

TEST_F(FichaEnBase, UnTagQueLaTablaNoTieneCierraElPrograma)
{
    const std::vector<CampoFicha> otro{Caja("CODIGO", "00007"), Caja("COLOR", "rojo")};

    EXPECT_THROW(data::InsertaFicha(programa, programa.ConexionLocal, otro, "USUARIOS"),
                 data::FinDePrograma);
    EXPECT_EQ(
        avisos.cajas.back().texto,
        "INSERT INTO USUARIOS (CODIGO,COLOR) VALUES('00007','rojo')\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
}

TEST_F(FichaEnBase, UnaComillaEnElTextoRompeLaSentenciaYCierraElPrograma)
{
    const std::vector<CampoFicha> otro{Caja("CODIGO", "00007"), Caja("NOMBRE", "D'Arc")};

    EXPECT_THROW(data::InsertaFicha(programa, programa.ConexionLocal, otro, "USUARIOS"),
                 data::FinDePrograma);
    EXPECT_EQ(avisos.cajas.size(), 2U);
}

TEST_F(FichaEnBase, ActualizaFichaDejaFueraLaClaveDeLaCondicion)
{
    const std::vector<CampoFicha> cambios{Caja("CODIGO", "00099"), Caja("NOMBRE", "Eva"),
                                          Caja("EDAD", ""), Casilla("MARCA", true)};

    data::ActualizaFicha(programa, programa.ConexionLocal, cambios, "USUARIOS", "codigo='00003'");

    EXPECT_EQ(sentencias,
              QStringList(
                  {"Select * from USUARIOS WHERE FALSE",
                   "UPDATE USUARIOS SET NOMBRE='Eva',EDAD=null,MARCA= 'S'  WHERE codigo='00003'"}));
    EXPECT_EQ(Tabla("SELECT CODIGO,NOMBRE,EDAD,MARCA FROM USUARIOS"), "00003|Eva|NULL|S");
}

TEST_F(FichaEnBase, LaClaveSeReconoceEnCualquierCajaYConUnBlanco)
{
    const std::vector<CampoFicha> cambios{Caja("Codigo", "00099"), Caja("NOMBRE", "Eva")};

    data::ActualizaFicha(programa, programa.ConexionLocal, cambios, "USUARIOS", "CoDiGo ='00003'");

    EXPECT_EQ(sentencias.last(), "UPDATE USUARIOS SET NOMBRE='Eva' WHERE CoDiGo ='00003'");
}

TEST_F(FichaEnBase, UnaColumnaCuyoNombreCierraElDeLaClaveTambienQuedaFuera)
{
    const std::vector<CampoFicha> cambios{Caja("EMPRESA", "Sur"), Caja("NOMBRE", "Eva")};

    data::ActualizaFicha(programa, programa.ConexionLocal, cambios, "USUARIOS",
                         "codempresa ='000001'");

    EXPECT_EQ(sentencias.last(), "UPDATE USUARIOS SET NOMBRE='Eva' WHERE codempresa ='000001'");
    EXPECT_EQ(Tabla("SELECT NOMBRE,EMPRESA FROM USUARIOS"), "Eva|Norte");
}

TEST_F(FichaEnBase, ActualizaFichaSinNadaQueEscribirCierraElPrograma)
{
    const std::vector<CampoFicha> cambios{Caja("CODIGO", "00099")};

    EXPECT_THROW(data::ActualizaFicha(programa, programa.ConexionLocal, cambios, "USUARIOS",
                                      "CODIGO='00003'"),
                 data::FinDePrograma);
    EXPECT_EQ(
        avisos.cajas.back().texto,
        "UPDATE USUARIOS SET  WHERE CODIGO='00003'\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
}

/// A shop's table, in MySQL's dialect.
class FichaEnMySql : public testing::Test {
  protected:
    FichaEnMySql()
    {
        prueba.programa.DialectoActivo = data::Dialecto::MySql;
        prueba.programa.ConexionTienda.Conecta("tienda");
        data::Filas tipos = SinFilas;
        tipos.campos = {{.nombre = "id", .tipo = Entero},
                        {.nombre = "nombre", .tipo = Texto},
                        {.nombre = "alta", .tipo = Fecha},
                        {.nombre = "activa", .tipo = Octeto}};
        tienda.Espera("Select * from ficha WHERE FALSE", tipos);
        tienda.EsperaOrden();
    }

    ProveedorDePrueba tienda{};
    ProgramaDePrueba prueba{tienda.Fabrica()};
};

TEST_F(FichaEnMySql, UnaFechaEntreComillasSeReescribe)
{
    const std::vector<CampoFicha> controles{Caja("id", "71"), Caja("nombre", "3/15/2024"),
                                            Caja("alta", "5/3/2024"), Casilla("activa", true)};

    data::InsertaFicha(prueba.programa, prueba.programa.ConexionTienda, controles, "ficha");

    EXPECT_EQ(
        tienda.ejecutadas.value(0),
        "INSERT INTO ficha (id,nombre,alta,activa) VALUES(71,'3/15/2024',CAST('2024/03/05' AS DATE), 1 )");
}

TEST_F(FichaEnMySql, TambienAlActualizar)
{
    const std::vector<CampoFicha> controles{Caja("id", "71"), Caja("alta", "05/03/2024")};

    data::ActualizaFicha(prueba.programa, prueba.programa.ConexionTienda, controles, "ficha",
                         "id=71");

    EXPECT_EQ(tienda.ejecutadas.value(0),
              "UPDATE ficha SET alta=CAST('2024/03/05' AS DATE) WHERE id=71");
}

class FichaVecinaEnBase : public FichaEnBase {
  protected:
    FichaVecinaEnBase()
    {
        Ejecuta({"INSERT INTO USUARIOS (CODIGO,EDAD,EMPRESA) VALUES ('00005',20,'Sur')",
                 "INSERT INTO USUARIOS (CODIGO,EDAD,EMPRESA) VALUES ('00009',50,'Norte')"});
    }

    QString Vecina(Sentido sentido, const Vecindad& donde, const QString& valor)
    {
        const auto vecina =
            data::FichaVecina(programa, programa.ConexionLocal, sentido, donde, valor);
        return vecina ? data::Texto(*vecina) : QStringLiteral("ninguna");
    }
};

TEST_F(FichaVecinaEnBase, PorTexto)
{
    const Vecindad donde{.campo = "codigo", .tabla = "USUARIOS"};

    EXPECT_EQ(Vecina(Sentido::Anterior, donde, "00009"), "00005");
    EXPECT_EQ(Vecina(Sentido::Siguiente, donde, "00003"), "00005");
    EXPECT_EQ(Vecina(Sentido::Anterior, donde, "00003"), "ninguna");
    EXPECT_EQ(Vecina(Sentido::Siguiente, donde, "00009"), "ninguna");
    EXPECT_EQ(sentencias.mid(0, 2),
              QStringList(
                  {"SELECT TOP 1 codigo FROM USUARIOS WHERE codigo<'00009'  ORDER BY codigo DESC",
                   "SELECT TOP 1 codigo FROM USUARIOS WHERE codigo>'00003'  ORDER BY codigo ASC"}));
}

TEST_F(FichaVecinaEnBase, ConCondicion)
{
    const Vecindad donde{.campo = "codigo", .tabla = "USUARIOS", .condicion = "EMPRESA='Norte'"};

    EXPECT_EQ(Vecina(Sentido::Siguiente, donde, "00003"), "00009");
    EXPECT_EQ(
        sentencias.last(),
        "SELECT TOP 1 codigo FROM USUARIOS WHERE codigo>'00003' AND EMPRESA='Norte' ORDER BY codigo ASC");
}

TEST_F(FichaVecinaEnBase, PorNumero)
{
    const Vecindad donde{.campo = "EDAD", .tabla = "USUARIOS", .numerico = true};

    EXPECT_EQ(Vecina(Sentido::Anterior, donde, "33"), "20");
    EXPECT_EQ(Vecina(Sentido::Siguiente, donde, "33"), "50");
    EXPECT_EQ(sentencias,
              QStringList({"SELECT TOP 1 EDAD FROM USUARIOS WHERE EDAD<33  ORDER BY EDAD DESC",
                           "SELECT TOP 1 EDAD FROM USUARIOS WHERE EDAD>33  ORDER BY EDAD ASC"}));
}

TEST_F(FichaVecinaEnBase, SinNumeroEnLaFichaSeBuscaDesdeElCero)
{
    const Vecindad donde{.campo = "EDAD", .tabla = "USUARIOS", .numerico = true};

    EXPECT_EQ(Vecina(Sentido::Siguiente, donde, ""), "20");
    EXPECT_EQ(Vecina(Sentido::Anterior, donde, "abc"), "ninguna");
}

} // namespace
