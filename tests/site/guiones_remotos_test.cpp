#include "apoyo/programa_de_prueba.h"
#include "apoyo/sitio_de_prueba.h"
#include "batch/trabajo.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

class EjecutaPHP : public testing::Test {
  protected:
    EjecutaPHP()
    {
        data::Parametros& p = prueba.programa.parametros;
        p.WWW = "http://casa/";
        p.Carpeta_tienda = "/tienda/";
        p.Nombre_Bd = "bd_tolmo";
        p.User_Bd = "usuario";
        p.Pass_Bd = "LEN(ps_& clave";
        prueba.programa.DialectoActivo = data::Dialecto::MySql;
        prueba.carpeta.CreaCarpeta("PHPSHOP");
        prueba.carpeta.Escribe("lote.sql", "UPDATE x||\r\n");
    }

    void Ejecuta(const QString& fichero = "lote.sql")
    {
        sitio.EjecutaPHP(prueba.carpeta.Ruta(fichero), "UN LOTE");
    }
    QStringList Log() const
    {
        QStringList textos;
        for (const QString& linea : progreso.lineas)
            textos << linea.mid(linea.indexOf(u']') + 2);
        return textos;
    }
    /// What the log says behind the title, when the script answers so.
    QStringList TrasResponder(const QString& respuesta)
    {
        sitio.respuestas = {respuesta};
        Ejecuta();
        return Log().mid(2);
    }

    ProgramaDePrueba prueba{};
    ProgresoDePrueba progreso{};
    batch::Escritores escritores{prueba.programa};
    batch::Registro registro{prueba.programa, escritores, progreso,
                             batch::NombreFicheroLog(prueba.programa)};
    SitioDePrueba sitio{prueba.programa, escritores, registro, progreso, site::Esperas{}};
};

TEST_F(EjecutaPHP, UnLoteEsUnaConversacionYSubeSiempreConElMismoNombre)
{
    Ejecuta();

    EXPECT_EQ(sitio.pasos, (QStringList{"BORRA bdtolmo.ccc", "SUBE bdtolmo.ccc a /tienda/",
                                        "BORRA sentencias.sql", "SUBE sentencias.sql a /tienda/",
                                        "PIDE http://casa/ejecuta.php", "BORRA bdtolmo.ccc",
                                        "BORRA sentencias.sql"}));
    EXPECT_EQ(sitio.subidas.at(1).contenido, "UPDATE x||\r\n");
    EXPECT_EQ(Log(), (QStringList{"SUBIENDO FICHERO lote.sql", "UN LOTE"}));
    EXPECT_TRUE(prueba.carpeta.Existe("lote.sql"));
}

TEST_F(EjecutaPHP, LasCredencialesSubenSinTraducirYNoSeQuedanEnElDisco)
{
    prueba.carpeta.Escribe("PHPSHOP/bdtolmo.ccc", "de otro lote\r\n");

    Ejecuta();

    EXPECT_EQ(sitio.subidas.at(0).contenido, "bd_tolmo\r\nusuario\r\nLEN(ps_& clave\r\n");
    EXPECT_FALSE(prueba.carpeta.Existe("PHPSHOP/bdtolmo.ccc"));
}

TEST_F(EjecutaPHP, SinCredencialesNoSigueNada)
{
    sitio.fallan = {"bdtolmo.ccc"};

    Ejecuta();

    EXPECT_EQ(sitio.pasos, (QStringList{"BORRA bdtolmo.ccc", "SUBE bdtolmo.ccc a /tienda/"}));
    EXPECT_EQ(Log(),
              (QStringList{"SUBIENDO FICHERO lote.sql", "ERROR SUBIENDO FICHERO bdtolmo.ccc"}));
    EXPECT_TRUE(prueba.carpeta.Existe("PHPSHOP/bdtolmo.ccc")) << "as far as the next batch";
}

TEST_F(EjecutaPHP, SiElLoteNoSubeElGuionSePideIgual)
{
    sitio.fallan = {"sentencias.sql"};

    Ejecuta();

    EXPECT_EQ(sitio.pasos.mid(4), (QStringList{"PIDE http://casa/ejecuta.php", "BORRA bdtolmo.ccc",
                                               "BORRA sentencias.sql"}));
    EXPECT_EQ(Log(), (QStringList{"SUBIENDO FICHERO lote.sql", "UN LOTE",
                                  "ERROR SUBIENDO FICHERO sentencias.sql"}));
}

TEST_F(EjecutaPHP, UnLoteQueNoEstaSeAnunciaSinNombre)
{
    Ejecuta("no_esta.sql");

    EXPECT_EQ(Log().value(0), "SUBIENDO FICHERO ");
    EXPECT_EQ(sitio.pasos.size(), 7) << "and all the rest happens";
}

TEST_F(EjecutaPHP, UnaRespuestaSinFrasesEsUnExitoYNoSeAnota)
{
    EXPECT_EQ(TrasResponder("Todo bien. Error al ejecutar una consulta"), QStringList());
    EXPECT_EQ(TrasResponder(""), (QStringList{"SUBIENDO FICHERO lote.sql", "UN LOTE"}))
        << "only the second batch's own lines";
}

// The breaks of the first kind that the second kind becomes are not indented once more.
TEST_F(EjecutaPHP, ElDetalleDeUnErrorSeSangraEnCadaSalto)
{
    EXPECT_EQ(TrasResponder("Error al ejecutar consulta:<br>uno\r\ndos<br><br>tres\n."),
              (QStringList{"ERRORES EJECUTANDO SENTENCIAS",
                           "\r\n        Error al ejecutar consulta:\r\n        uno\r\n        dos"
                           "\r\n        \r\n        tres\n."}));
}

TEST_F(EjecutaPHP, UnSaltoEnMayusculasSeQuedaComoEsta)
{
    EXPECT_EQ(TrasResponder("Error al ejecutar consulta:<BR>uno<Br>dos").value(1),
              "\r\n        Error al ejecutar consulta:<BR>uno<Br>dos");
}

TEST_F(EjecutaPHP, LasFrasesValenEnMayusculas)
{
    EXPECT_EQ(TrasResponder("x ERROR AL EJECUTAR CONSULTA: y"),
              (QStringList{"ERRORES EJECUTANDO SENTENCIAS",
                           "\r\n        x ERROR AL EJECUTAR CONSULTA: y"}));
}

TEST_F(EjecutaPHP, SinConexionNoHayDetalle)
{
    EXPECT_EQ(TrasResponder("<b>NO SE PUEDE CONECTAR CON MYSQL</b><br>x"),
              QStringList{"ERROR AL CONECTAR A LA BASE DE DATOS"});
}

TEST_F(EjecutaPHP, LasDosFrasesDanLosDosRegistros)
{
    EXPECT_EQ(
        TrasResponder("Error al ejecutar consulta: a<br>No se puede conectar con Mysql"),
        (QStringList{
            "ERROR AL CONECTAR A LA BASE DE DATOS", "ERRORES EJECUTANDO SENTENCIAS",
            "\r\n        Error al ejecutar consulta: a\r\n        No se puede conectar con Mysql"}));
}

TEST_F(EjecutaPHP, TrasUnaRespuestaMalaTambienSeBorraLoSubido)
{
    TrasResponder("Error al ejecutar consulta: a");

    EXPECT_EQ(sitio.pasos.mid(5), (QStringList{"BORRA bdtolmo.ccc", "BORRA sentencias.sql"}));
}

TEST_F(EjecutaPHP, VaciarLaCacheNoMiraLaRespuesta)
{
    sitio.respuestas = {"Error al ejecutar consulta:"};

    sitio.BorraCachePrestashop();

    EXPECT_EQ(Log(), QStringList{"BORRANDO CACHÉ DE PRESTASHOP"});
    EXPECT_EQ(sitio.pasos, QStringList{"PIDE http://casa/borracache.php"});
}

} // namespace
