#include "apoyo/servidor_guionizado.h"
#include "faltas_apoyo.h"
#include <gtest/gtest.h>

namespace {

/// A web server that is no help: nothing of it is told in the log, as an empty answer is success.
class FaltasDeHttp : public testing::Test {
  protected:
    TiendaDePrueba& tienda = TiendaDeFaltas();

    /// The run looks like a good one, and the batches are gone all the same.
    void LaCorridaNoNotaNada(EmpresaReal& empresa, const ResultadoCorrida& corrida)
    {
        EXPECT_EQ(corrida.estado, 0);
        EXPECT_EQ(corrida.errores, "");
        EXPECT_EQ(EnLineas(corrida.log), EnLineas(LogSano(empresa.Actual())));
        EXPECT_EQ(tienda.Sql("SELECT COUNT(*) FROM ps_product"), (std::vector<QStringList>{{"0"}}));
        EXPECT_FALSE(empresa.Carpeta().Existe("sentencias.sql"));
        // The last batch has no file: the transfer that was opened for it keeps the session from
        // deleting what a script would have taken away.
        EXPECT_EQ(tienda.LeeFichero("sentencias.sql"), "");
        EXPECT_EQ(tienda.LeeFichero("bdtolmo.ccc"),
                  (tienda.Bd() + "\r\n" + tienda.Usuario() + "\r\n" + tienda.Clave() + "\r\n")
                      .toLatin1());
    }
};

TEST_F(FaltasDeHttp, ElServidorParadoNoSeNotaYLaCorridaSiguienteLoMandaTodo)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo());
    tienda.Para(Servidor::Http);

    const ResultadoCorrida corrida = empresa.Corre();

    LaCorridaNoNotaNada(empresa, corrida);

    tienda.Sigue(Servidor::Http);
    const ResultadoCorrida otra = empresa.Corre();

    EXPECT_EQ(EnLineas(otra.log), EnLineas(LogSano(empresa.Actual())));
    EXPECT_EQ(tienda.Sql("SELECT reference,id_category_default FROM ps_product"),
              (std::vector<QStringList>{{"0101A", "3"}}));
    EXPECT_FALSE(tienda.ExisteFichero("bdtolmo.ccc"));
}

TEST_F(FaltasDeHttp, ElTextoDeUn500NoSeMira)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo());
    empresa.Carpeta().Escribe("PHPSHOP/ejecuta.php",
                              "<?php http_response_code(500); echo 'Error al ejecutar consulta: no "
                              "se puede conectar con Mysql';");

    const ResultadoCorrida corrida = empresa.Corre();

    LaCorridaNoNotaNada(empresa, corrida);
    EXPECT_EQ(corrida.http.count("GET /ejecuta.php 500"), 3);
}

TEST_F(FaltasDeHttp, UnaRespuestaVaciaCuentaComoBuena)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo());
    empresa.Carpeta().Escribe("PHPSHOP/ejecuta.php", "<?php\n");

    const ResultadoCorrida corrida = empresa.Corre();

    LaCorridaNoNotaNada(empresa, corrida);
    EXPECT_EQ(corrida.http.count("GET /ejecuta.php 200"), 3);
}

TEST_F(FaltasDeHttp, UnServidorQueCuelgaSinContestarTampocoSeNota)
{
    ServidorGuionizado web([](Charla& charla) { charla.Linea(); });
    EmpresaReal empresa(tienda, {{"WWW", QString("'http://127.0.0.1:%1/'").arg(web.Puerto())}});
    empresa.Sql(SqlCatalogo());

    const ResultadoCorrida corrida = empresa.Corre();

    LaCorridaNoNotaNada(empresa, corrida);
    EXPECT_EQ(web.Lineas().count("GET /ejecuta.php HTTP/1.1"), 3);
}

TEST_F(FaltasDeHttp, UnaTiendaSinBaseDeDatosParaSusGuionesLoCuentaElLog)
{
    EmpresaReal empresa(tienda);
    empresa.Sql(SqlCatalogo());
    // The scripts look for the server of the database where the shop's own settings say.
    tienda.EscribeFichero("config/settings.inc.php",
                          "<?php\ndefine('_DB_SERVER_', '127.0.0.1:1');\n");

    const ResultadoCorrida corrida = empresa.Corre();

    QStringList esperado = LogSano(empresa.Actual());
    for (const char* titulo : {"EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                               "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"})
        esperado.insert(esperado.indexOf(titulo) + 1, "ERROR AL CONECTAR A LA BASE DE DATOS");
    // The last batch has no file; its script is fired all the same.
    esperado.insert(esperado.lastIndexOf("ERROR SUBIENDO FICHERO sentencias.sql") + 1,
                    "ERROR AL CONECTAR A LA BASE DE DATOS");
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(esperado));
    EXPECT_FALSE(EnsenaClaves(empresa, corrida));
}

} // namespace
