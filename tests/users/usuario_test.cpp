#include "users/usuario.h"
#include "usuarios_de_prueba.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::CampoFicha;
using data::Respuesta;
using data::Sentido;
using users::Lectura;

namespace {

using Cajas = std::vector<AvisosDePrueba::Caja>;

std::vector<CampoFicha> Ficha(const QString& codigo, const QString& nombre)
{
    return {{.Tag = "CODIGO", .texto = codigo},
            {.Tag = "NOMBRE", .texto = nombre},
            {.Tag = "LOGIN", .texto = "marta"},
            {.Tag = "PASSWORD", .texto = "noria9"},
            {.Tag = "EMAIL", .texto = "marta@x.example"},
            {.Tag = "EMPRESA", .texto = ""},
            {.Tag = "CODTARIFA", .clase = CampoFicha::Clase::Lista, .texto = "2", .posicion = 2}};
}

class UsuarioTest : public testing::Test, public UsuariosDePrueba {};

TEST_F(UsuarioTest, ElCodigoSeRellenaYSeLeeSuFila)
{
    const Lectura leida = users::LeeUsuario(programa, "7");

    EXPECT_EQ(leida.codigo, "00007");
    EXPECT_FALSE(leida.nuevo);
    EXPECT_EQ(data::Texto(leida.fila["NOMBRE"]), "Eva Sanz");
    EXPECT_EQ(sentencias, QStringList("SELECT * FROM USUARIOS WHERE codigo='00007'"));
}

TEST_F(UsuarioTest, UnCodigoSinFilaEsNuevoYSeQuedaConEl)
{
    const Lectura leida = users::LeeUsuario(programa, "12");

    EXPECT_EQ(leida.codigo, "00012");
    EXPECT_TRUE(leida.nuevo);
    EXPECT_EQ(sentencias, QStringList("SELECT * FROM USUARIOS WHERE codigo='00012'"));
}

TEST_F(UsuarioTest, SinCodigoSeProponeElSiguienteAlMayor)
{
    const Lectura leida = users::LeeUsuario(programa, "");

    EXPECT_EQ(leida.codigo, "00008");
    EXPECT_TRUE(leida.nuevo);
    EXPECT_EQ(sentencias, QStringList({"SELECT * FROM USUARIOS WHERE codigo=''",
                                       "SELECT max(codigo) as mcodigo FROM USUARIOS",
                                       "SELECT * FROM USUARIOS WHERE codigo='00008'"}));
}

TEST_F(UsuarioTest, EnUnaEmpresaNuevaSeProponeElPrimero)
{
    Ejecuta({"DELETE FROM USUARIOS"});

    EXPECT_EQ(users::LeeUsuario(programa, "").codigo, "00001");
}

TEST_F(UsuarioTest, DetrasDeUnCodigoQueNoEsNumeroElPropuestoSigueSiendoNuevo)
{
    Ejecuta({"INSERT INTO USUARIOS (CODIGO,NOMBRE) VALUES ('A0001','Letra')"});

    const Lectura leida = users::LeeUsuario(programa, "");

    EXPECT_EQ(leida.codigo, "00001");
    EXPECT_TRUE(leida.nuevo);
}

TEST_F(UsuarioTest, SinCodigoOSinNombreNoSeGuardaNada)
{
    EXPECT_FALSE(users::GuardaUsuario(programa, Ficha("", "Marta"), true));
    EXPECT_FALSE(users::GuardaUsuario(programa, Ficha("00009", ""), true));
    EXPECT_FALSE(users::GuardaUsuario(programa, Ficha("", ""), false));

    EXPECT_EQ(avisos.cajas, (Cajas{{"Código de cliente no puede estar vacío", 48, ""},
                                   {"Nombre no puede estar vacío", 48, ""},
                                   {"Código de cliente no puede estar vacío", 48, ""}}));
    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(UsuarioTest, UnoNuevoSeInserta)
{
    EXPECT_TRUE(users::GuardaUsuario(programa, Ficha("00009", "Marta"), true));

    EXPECT_EQ(
        sentencias,
        QStringList(
            {"SELECT codigo FROM USUARIOS WHERE codigo='00009'",
             "Select * from USUARIOS WHERE FALSE",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE,LOGIN,PASSWORD,EMAIL,EMPRESA,CODTARIFA) VALUES('00009','Marta','marta','noria9','marta@x.example',null,'2')"}));
    EXPECT_EQ(Usuario("00009"), "00009|Marta|marta|noria9|marta@x.example|NULL|2");
    EXPECT_EQ(avisos.cajas, (Cajas{{"Se ha creado usuario 00009", 64, ""}}));
}

TEST_F(UsuarioTest, ElNombrePuedeEstarEnDosFilas)
{
    EXPECT_TRUE(users::GuardaUsuario(programa, Ficha("00009", "Ana Ruiz"), true));

    EXPECT_EQ(Tabla("SELECT CODIGO FROM USUARIOS WHERE NOMBRE='Ana Ruiz'"), "00001 00009");
}

TEST_F(UsuarioTest, UnoNuevoCuyoCodigoYaEstaNoSeAnade)
{
    EXPECT_TRUE(users::GuardaUsuario(programa, Ficha("00003", "Marta"), true));

    EXPECT_EQ(avisos.cajas, (Cajas{{"Usuario existente, imposible añadir", 64, ""}}));
    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil|luis|NULL|luis@dos.example|NULL|3");
}

TEST_F(UsuarioTest, ElQueYaEstaSeActualizaSinSuClave)
{
    EXPECT_TRUE(users::GuardaUsuario(programa, Ficha("00003", "Marta"), false));

    EXPECT_EQ(
        sentencias,
        QStringList(
            {"Select * from USUARIOS WHERE FALSE",
             "UPDATE USUARIOS SET NOMBRE='Marta',LOGIN='marta',PASSWORD='noria9',EMAIL='marta@x.example',EMPRESA=null,CODTARIFA='2' WHERE codigo='00003'"}));
    EXPECT_EQ(Usuario("00003"), "00003|Marta|marta|noria9|marta@x.example|NULL|2");
    EXPECT_EQ(avisos.cajas, (Cajas{{"Usuario 00003 actualizado", 64, ""}}));
}

TEST_F(UsuarioTest, BorrarPreguntaConSuCaja)
{
    avisos.respuestas = {Respuesta::Aceptar};

    EXPECT_TRUE(users::BorraUsuario(programa, Ficha("00003", "Luis Gil")));

    EXPECT_EQ(avisos.cajas, (Cajas{{"¿Seguro que quiere eliminar? \r00003 Luis Gil", 273,
                                    "Confirmación de eliminación"}}));
    EXPECT_EQ(sentencias, QStringList("DELETE FROM usuarios WHERE codigo='00003'"));
    EXPECT_EQ(Codigos(), "00001 00007");
}

TEST_F(UsuarioTest, ConElSegundoBotonNoSeBorra)
{
    avisos.respuestas = {Respuesta::Cancelar};

    EXPECT_FALSE(users::BorraUsuario(programa, Ficha("00003", "Luis Gil")));

    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(UsuarioTest, LosVecinosVanPorCodigo)
{
    EXPECT_EQ(users::UsuarioVecino(programa, Sentido::Anterior, "00003"), "00001");
    EXPECT_EQ(users::UsuarioVecino(programa, Sentido::Siguiente, "00003"), "00007");
    EXPECT_EQ(users::UsuarioVecino(programa, Sentido::Siguiente, "00007"), std::nullopt);
    EXPECT_EQ(sentencias.first(),
              "SELECT TOP 1 codigo FROM USUARIOS WHERE codigo<'00003'  ORDER BY codigo DESC");
}

TEST_F(UsuarioTest, UnaComillaEnElNombreCierraElProgramaYNoGuardaNada)
{
    EXPECT_THROW(users::GuardaUsuario(programa, Ficha("00003", "D'Arc"), false),
                 data::FinDePrograma);

    ASSERT_EQ(avisos.cajas.size(), 2U);
    EXPECT_TRUE(
        avisos.cajas[1].texto.endsWith("\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR"));
    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil|luis|NULL|luis@dos.example|NULL|3");
}

TEST_F(UsuarioTest, DondeLaTarifaEsUnNumeroVaElDeSuPosicion)
{
    Ejecuta({"ALTER TABLE USUARIOS DROP COLUMN CODTARIFA",
             "ALTER TABLE USUARIOS ADD COLUMN CODTARIFA INT"});

    users::GuardaUsuario(programa, Ficha("00009", "Marta"), true);

    EXPECT_EQ(Tabla("SELECT CODTARIFA FROM USUARIOS WHERE CODIGO='00009'"), "2");
}

} // namespace
