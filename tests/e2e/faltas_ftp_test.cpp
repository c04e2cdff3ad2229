#include "faltas_apoyo.h"
#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::Not;

class FaltasDeFtp : public testing::Test {
  protected:
    TiendaDePrueba& tienda = TiendaDeFaltas();
    EmpresaReal empresa{tienda};

    void SetUp() override { empresa.Sql(SqlCatalogo()); }
};

/// What keeps a session from coming about.
struct SinSesion {
    const char* regla;
    const char* clave; ///< in the company's parameters; nullptr for the right one
    bool parado = false;
};

class FtpSinSesion : public testing::TestWithParam<SinSesion> {};

TEST_P(FtpSinSesion, LaCorridaSigueYLoCuentaElLog)
{
    TiendaDePrueba& tienda = TiendaDeFaltas();
    const auto parametros = GetParam().clave == nullptr
                                ? QMap<QString, QString>{}
                                : QMap<QString, QString>{{"PASS_FTP", GetParam().clave}};
    EmpresaReal empresa(tienda, parametros);
    empresa.Sql(SqlCatalogo());
    if (GetParam().parado)
        tienda.Para(Servidor::Ftp);

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.errores, "");
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(LogSinFtp(empresa.Actual())));
    EXPECT_FALSE(EnsenaClaves(empresa, corrida));
    // The scripts never got there, and the one of a batch isn't even asked for.
    EXPECT_EQ(EnLineas(corrida.http),
              EnLineas({"GET /borracache.php 404", "GET /creapath.php 404",
                        "GET /borraimg.php?sufijofoto=_default 404",
                        "GET /dimensiona.php?fichero=imgfam.txt&sufijofoto=_default 404",
                        "GET /borracache.php 404", "GET /borracache.php 404"}));
    EXPECT_TRUE(empresa.Carpeta().Existe("PHPSHOP/bdtolmo.ccc"));
    EXPECT_FALSE(empresa.Carpeta().Existe("sentencias.sql"));
    EXPECT_EQ(TablasTemporales(empresa), QStringList{});
}

INSTANTIATE_TEST_SUITE_P(Casos, FtpSinSesion,
                         testing::Values(SinSesion{"ConLaClaveRechazada", "'n0.es.esta'"},
                                         SinSesion{"ConElServidorParado", nullptr, true}),
                         [](const auto& caso) { return caso.param.regla; });

TEST_F(FaltasDeFtp, TrasUnRechazoLaCorridaSiguienteMandaTodo)
{
    tienda.Para(Servidor::Ftp);
    empresa.Corre();
    tienda.Sigue(Servidor::Ftp);

    const ResultadoCorrida otra = empresa.Corre();

    EXPECT_EQ(EnLineas(otra.log), EnLineas(LogSano(empresa.Actual())));
    EXPECT_EQ(tienda.Sql("SELECT reference,id_category_default FROM ps_product"),
              (std::vector<QStringList>{{"0101A", "3"}}));
    EXPECT_FALSE(empresa.Carpeta().Existe("PHPSHOP/bdtolmo.ccc"));
}

TEST_F(FaltasDeFtp, UnLoteRechazadoSePierdeYElGuionSePideIgual)
{
    tienda.EscribeFichero(".ftpaccess", "PathDenyFilter \"sentencias\\.sql$\"\n");

    const ResultadoCorrida corrida = empresa.Corre();

    const QStringList rechazo{"Error subiendo fichero " + empresa.Actual() + "\\sentencias.sql",
                              "ERROR SUBIENDO FICHERO sentencias.sql"};
    QStringList esperado = LogSano(empresa.Actual());
    for (const char* titulo : {"EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                               "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"})
        for (qsizetype k = 0, fila = esperado.indexOf(titulo) + 1; k < rechazo.size(); ++k)
            esperado.insert(fila + k, rechazo[k]);
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(esperado));
    EXPECT_EQ(corrida.http.count("GET /ejecuta.php 200"), 3);
    EXPECT_EQ(corrida.ftp.filter("STOR sentencias.sql 550").size(), 3);
    EXPECT_EQ(tienda.Sql("SELECT COUNT(*) FROM ps_product"), (std::vector<QStringList>{{"0"}}));
}

/// Two families with a picture each, "3.jpg" and "4.jpg".
TEST_F(FaltasDeFtp, UnaFotoRechazadaNoEstorbaALaSiguiente)
{
    const QString una = empresa.Actual() + "/una.jpg";
    const QString otra = empresa.Actual() + "/otra.jpg";
    empresa.Carpeta().Escribe("una.jpg", "foto una");
    empresa.Carpeta().Escribe("otra.jpg", "foto otra");
    empresa.Sql("UPDATE M_FAMILIA SET FOTO='" + una + "';\n" +
                SqlFamilia("02", 0, "Baño", {{"FOTO", "'" + otra + "'"}}));
    tienda.EscribeFichero("img/c/.ftpaccess", "PathDenyFilter \"3\\.jpg$\"\n");

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(Tramo(corrida.log, "SUBIENDO FOTOS FAMILIAS...",
                             "Dimensionando rango de familias subidas")),
              EnLineas({"SUBIENDO FOTOS FAMILIAS...", "Subiendo imagen " + una + " -> 3.jpg",
                        "Error subiendo fichero " + una, "ERROR SUBIENDO FICHERO 3.jpg",
                        "Subiendo imagen " + otra + " -> 4.jpg",
                        "Dimensionando rango de familias subidas"}));
    EXPECT_EQ(
        EnLineas(Tramo(PasosFtp(corrida.ftp), "STOR 3.jpg", "STOR imgfam.txt")),
        EnLineas({"STOR 3.jpg", "sesion", "STOR 4.jpg", "DELE imgfam.txt", "STOR imgfam.txt"}));
    EXPECT_FALSE(tienda.ExisteFichero("img/c/3.jpg"));
    EXPECT_EQ(tienda.LeeFichero("img/c/4.jpg"), "foto otra");
}

/// A server that takes 100 KB a second, and is cut off once it holds a part of the file.
class FtpCortado : public FaltasDeFtp {
  protected:
    void CortaA(const QString& cuando, const QString& fichero)
    {
        empresa.cuando = cuando;
        empresa.entonces = [this, fichero] {
            llego = Espera([&] {
                return tienda.ExisteFichero(fichero) && tienda.LeeFichero(fichero).size() > 50'000;
            });
            tienda.CortaFtp();
        };
    }
    bool llego = false;
};

TEST_F(FtpCortado, AMitadDeUnDocumentoSiguePorElSiguiente)
{
    const QString grande = empresa.Actual() + "/grande.pdf";
    const QString chico = empresa.Actual() + "/chico.pdf";
    empresa.Carpeta().Escribe("grande.pdf", QByteArray(16 * 1024 * 1024, 'g'));
    empresa.Carpeta().Escribe("chico.pdf", "chico");
    for (const QString& ruta : {grande, chico})
        empresa.Sql("INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES "
                    "('AR','W','0101A','" +
                    ruta + "','Manual');\n");
    tienda.EscribeFichero("download/.ftpaccess", "TransferRate STOR 100:65536\n");
    CortaA("] Subiendo adjunto " + grande + '\n', "download/grande.pdf");

    const ResultadoCorrida corrida = empresa.Corre();

    ASSERT_TRUE(llego);
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.errores, "");
    EXPECT_EQ(EnLineas(Tramo(corrida.log, "SUBIENDO FICHEROS ADJUNTOS...",
                             "SUBIENDO FOTOS ARTICULOS...")),
              EnLineas({"SUBIENDO FICHEROS ADJUNTOS...", "Subiendo adjunto " + grande,
                        "Error subiendo fichero " + grande, "ERROR SUBIENDO FICHERO " + grande,
                        "Subiendo adjunto " + chico, "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                        "SUBIENDO FOTOS ARTICULOS..."}));
    // The session that was killed has not told of its upload; a second try would have.
    EXPECT_EQ(EnLineas(corrida.ftp.filter("STOR grande.pdf")), "");
    EXPECT_LT(tienda.LeeFichero("download/grande.pdf").size(), 16 * 1024 * 1024);
    EXPECT_EQ(tienda.LeeFichero("download/chico.pdf"), "chico");
    EXPECT_EQ(tienda.Sql("SELECT mime,file_size FROM ps_attachment ORDER BY id_attachment"),
              (std::vector<QStringList>{{grande, "16777216"}, {chico, "5"}}));
}

TEST_F(FtpCortado, AMitadDeUnLoteSeAplicaLoQueLlegoEntero)
{
    // In one sentence twice: as the notes and as the text for search engines.
    empresa.Sql("UPDATE M_ARTIC SET NOTAS=String(4000000,'n');\n" + SqlArticulo("0101B"));
    tienda.EscribeFichero(".ftpaccess", "TransferRate STOR 100:65536\n");
    CortaA("] EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)\n", "sentencias.sql");

    const ResultadoCorrida corrida = empresa.Corre();

    ASSERT_TRUE(llego);
    const QString sentencia =
        "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (1,1,'art-0101a','','Art 0101A','" +
        QString(200, u'n');
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(
        EnLineas(Tramo(corrida.log, "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                       "REGENERANDO INDICES DE BÚSQUEDA...")),
        EnLineas({"EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                  "Error subiendo fichero " + empresa.Actual() + "\\sentencias.sql",
                  "ERROR SUBIENDO FICHERO sentencias.sql", "ERRORES EJECUTANDO SENTENCIAS", "",
                  "        Error al ejecutar consulta: Falta \"||\" al final; la sentencia "
                  "no se ha ejecutado",
                  "        " + sentencia.left(200), "        ",
                  "Error subiendo fichero " + empresa.Actual() + "\\creapath.txt",
                  "ERROR SUBIENDO FICHERO creapath.txt", "REGENERANDO INDICES DE BÚSQUEDA..."}));
    EXPECT_EQ(tienda.Sql("SELECT reference FROM ps_product"),
              (std::vector<QStringList>{{"0101A"}}));
    EXPECT_EQ(tienda.Sql("SELECT COUNT(*) FROM ps_product_lang"),
              (std::vector<QStringList>{{"0"}}));
    for (const char* nombre : {"bdtolmo.ccc", "sentencias.sql"})
        EXPECT_FALSE(tienda.ExisteFichero(nombre)) << nombre;
}

} // namespace
