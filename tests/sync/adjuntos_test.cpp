#include "apoyo/corrida_con_sitio.h"
#include "fila_de_articulo.h"
#include "sync/adjuntos.h"
#include "sync/articulo.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

struct Adjuntos : testing::Test {
    CorridaConSitio p{};
    FilaDeArticulo fila{};
    const data::Recordset registro = fila.Fila();
    const sync::Articulo articulo{.fila = registro, .CodArticulo = "0101A", .id = "71"};

    Adjuntos() { p.opciones.adjuntos = true; }

    QString Documento(const QString& nombre, const QByteArray& contenido) const
    {
        p.prueba.carpeta.Escribe(nombre, contenido);
        return p.prueba.carpeta.Ruta(nombre);
    }
    void Pendiente(const QString& id, const QString& ruta, const QString& descripcion)
    {
        p.fase.PendientesAdjuntos.push_back({"0101A", id, ruta, descripcion});
    }
    void Mayor(const Valor& madjunto)
    {
        p.tienda.Espera(
            "SELECT Max(ps_attachment.id_attachment) as madjunto FROM ps_attachment order by id_attachment",
            HazFilas({"madjunto"}, {{madjunto}}));
    }
    void EnTienda(const QString& ruta, const data::Filas& filas)
    {
        p.tienda.Espera("SELECT id_attachment from ps_attachment where mime='" + ruta + "'", filas);
    }
    QStringList Lote()
    {
        sync::PublicaAdjuntos(p.fase);
        return p.red.Lotes().at(0);
    }
};

TEST_F(Adjuntos, LosDocumentosDelArticuloSeGuardanConLoNuloVacio)
{
    p.local.Espera(
        "SELECT * FROM GESTION_DOC WHERE TIPODOC='AR' AND TIPO='W' AND CLAVE='0101A'",
        HazFilas({"Ruta", "Descripcion"}, {{"C:\\d\\a.pdf", "Ficha"}, {"C:\\d\\b.pdf", Nulo()}}));

    sync::RecogeAdjuntos(p.fase, articulo);

    ASSERT_EQ(p.fase.PendientesAdjuntos.size(), 2U);
    const sync::AdjuntoPendiente& primero = p.fase.PendientesAdjuntos[0];
    EXPECT_EQ(primero.codArticulo, "0101A");
    EXPECT_EQ(primero.idProducto, "71");
    EXPECT_EQ(primero.ruta, "C:\\d\\a.pdf");
    EXPECT_EQ(primero.descripcion, "Ficha");
    EXPECT_EQ(p.fase.PendientesAdjuntos[1].descripcion, "");
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(Adjuntos, ElCambioDesenlazaLoQueTenia)
{
    sync::BorraAdjuntos(p.fase, articulo);

    EXPECT_EQ(p.Sentencias(),
              QStringList{"DELETE FROM ps_product_attachment WHERE id_product=71||"});
}

TEST_F(Adjuntos, SinLaMarcaNiSeRecogenNiSeDesenlazan)
{
    p.opciones.adjuntos = false;

    sync::RecogeAdjuntos(p.fase, articulo);
    sync::BorraAdjuntos(p.fase, articulo);

    EXPECT_TRUE(p.local.consultas.isEmpty());
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(Adjuntos, UnDocumentoNuevoTomaElNumeroSiguiente)
{
    const QString ruta = Documento("ficha.pdf", "12345");
    Pendiente("71", ruta, "Ficha técnica");
    Mayor(40);
    EnTienda(ruta, SinFilas);

    EXPECT_EQ(
        Lote(),
        (QStringList{
            "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (41,'ficha.pdf','ficha.pdf',5,'" +
                ruta + "')||",
            "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (41,3,'ficha.pdf','Ficha técnica')||",
            "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (41,1,'ficha.pdf','Ficha técnica')||",
            "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (41,71)||"}));
}

TEST_F(Adjuntos, ElNombreEsElQueTieneElFicheroEnSuCarpetaYLaRutaLaEscrita)
{
    Documento("ficha.pdf", "12345");
    const QString ruta = p.prueba.carpeta.Ruta("FICHA.PDF");
    Pendiente("71", ruta, "x");
    Mayor(40);
    EnTienda(ruta, SinFilas);

    const QStringList lote = Lote();

    EXPECT_EQ(
        lote.mid(0, 2),
        (QStringList{
            "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (41,'ficha.pdf','ficha.pdf',5,'" +
                ruta + "')||",
            "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (41,3,'ficha.pdf','x')||"}));
    EXPECT_EQ(p.red.pasos.mid(0, 3), (QStringList{"ABRE", "BORRA download/ficha.pdf",
                                                  "SUBE ficha.pdf a /tienda/download/"}));
    EXPECT_EQ(p.Log().value(1), "Subiendo adjunto " + ruta);
}

TEST_F(Adjuntos, ElQueYaEstabaConservaSuNumeroYSeEscribeDeNuevo)
{
    const QString ruta = Documento("ficha.pdf", "12345");
    Pendiente("71", ruta, "x");
    Mayor(40);
    EnTienda(ruta, HazFilas({"id_attachment"}, {{9}}));

    const QStringList lote = Lote();

    EXPECT_EQ(lote.mid(0, 2),
              (QStringList{"DELETE FROM ps_attachment WHERE id_attachment=9||",
                           "DELETE FROM ps_attachment_lang WHERE id_attachment=9||"}));
    EXPECT_TRUE(lote.at(2).contains("VALUES (9,'ficha.pdf'"));
    EXPECT_EQ(lote.back(),
              "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (9,71)||");
}

TEST_F(Adjuntos, UnDocumentoDeVariosArticulosEsUnoYSeSubeUnaVezConLaPrimeraDescripcion)
{
    const QString a = Documento("a.pdf", "1");
    const QString b = Documento("b.pdf", "22");
    Pendiente("71", a, "Primera");
    Pendiente("72", b, "Otra");
    Pendiente("73", a, "Segunda");
    Mayor(Nulo());
    EnTienda(a, SinFilas);
    EnTienda(b, SinFilas);

    const QStringList lote = Lote();

    EXPECT_EQ(
        lote.mid(1, 4),
        (QStringList{
            "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,3,'a.pdf','Primera')||",
            "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (1,1,'a.pdf','Primera')||",
            "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,71)||",
            "INSERT INTO ps_product_attachment (id_attachment,id_product) VALUES (1,73)||"}));
    EXPECT_TRUE(lote.at(5).contains("VALUES (2,'b.pdf','b.pdf',2,"));
    EXPECT_EQ(p.red.pasos.mid(0, 5),
              (QStringList{"ABRE", "BORRA download/a.pdf", "SUBE a.pdf a /tienda/download/",
                           "BORRA download/b.pdf", "SUBE b.pdf a /tienda/download/"}));
    EXPECT_EQ(p.Log(), (QStringList{"SUBIENDO FICHEROS ADJUNTOS...", "Subiendo adjunto " + a,
                                    "Subiendo adjunto " + b, "SUBIENDO FICHERO sentencias.sql",
                                    "EJECUTANDO REMOTAMENTE actualización de adjuntos"}));
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(Adjuntos, DosFicherosDelMismoNombreSonDosYElSegundoSePoneEncimaDelPrimero)
{
    const QString a = Documento("a/ficha.pdf", "1");
    const QString b = Documento("b/ficha.pdf", "22");
    Pendiente("71", a, "x");
    Pendiente("72", b, "y");
    Mayor(40);
    EnTienda(a, SinFilas);
    EnTienda(b, SinFilas);

    const QStringList lote = Lote();

    EXPECT_EQ(
        lote.filter("INTO ps_attachment ("),
        (QStringList{
            "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (41,'ficha.pdf','ficha.pdf',1,'" +
                a + "')||",
            "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES (42,'ficha.pdf','ficha.pdf',2,'" +
                b + "')||"}));
    EXPECT_EQ(p.red.pasos.mid(0, 5),
              (QStringList{"ABRE", "BORRA download/ficha.pdf", "SUBE ficha.pdf a /tienda/download/",
                           "BORRA download/ficha.pdf", "SUBE ficha.pdf a /tienda/download/"}));
    EXPECT_EQ(p.red.subidas.at(1).contenido, "22");
}

TEST_F(Adjuntos, UnaRutaCambiadaTomaNumeroNuevoYDejaElViejo)
{
    const QString ruta = Documento("nueva/ficha.pdf", "12345");
    Pendiente("71", ruta, "x");
    Mayor(40); // the old path stands in the shop under 40
    EnTienda(ruta, SinFilas);

    const QStringList lote = Lote();

    EXPECT_TRUE(lote.at(0).contains(" VALUES (41,'ficha.pdf',"));
    EXPECT_EQ(lote.filter("DELETE"), QStringList());
}

TEST_F(Adjuntos, UnaComillaEnLaDescripcionNoSeTrata)
{
    const QString ruta = Documento("a.pdf", "1");
    Pendiente("71", ruta, "Full d'ús");
    Mayor(40);
    EnTienda(ruta, SinFilas);

    EXPECT_EQ(
        Lote().at(1),
        "INSERT INTO ps_attachment_lang (id_attachment,id_lang,name,description)  VALUES (41,3,'a.pdf','Full d'ús')||");
}

TEST_F(Adjuntos, UnaComillaEnLaRutaNoSeTrataYLaTiendaNoEntiendeLaPregunta)
{
    const QString ruta = Documento("d'or.pdf", "1");
    Pendiente("71", ruta, "x");
    Mayor(40);
    p.tienda.EsperaFallo("SELECT id_attachment from ps_attachment where mime='" + ruta + "'",
                         {data::numero_error::Sentencia, "syntax", "prueba"});

    EXPECT_THROW(sync::PublicaAdjuntos(p.fase), data::FinDePrograma);

    EXPECT_EQ(p.red.pasos, QStringList{"ABRE"}) << "nothing is uploaded";
}

TEST_F(Adjuntos, UnaSubidaQueFallaSeAnotaConSuRutaYReabre)
{
    const QString ruta = Documento("a.pdf", "1");
    Pendiente("71", ruta, "x");
    Mayor(40);
    EnTienda(ruta, SinFilas);
    p.red.fallan = {"a.pdf"};

    sync::PublicaAdjuntos(p.fase);

    EXPECT_TRUE(p.Log().contains("ERROR SUBIENDO FICHERO " + ruta));
    EXPECT_EQ(p.red.pasos.mid(2, 2), (QStringList{"SUBE a.pdf a /tienda/download/", "ABRE"}));
    EXPECT_EQ(p.red.Lotes().size(), 1U) << "the sentences stay";
}

TEST_F(Adjuntos, UnDocumentoQueNoEstaAcabaLaCorrida)
{
    const QString ruta = p.prueba.carpeta.Ruta("no_esta.pdf");
    Pendiente("71", ruta, "x");
    Mayor(40);
    EnTienda(ruta, SinFilas);

    try {
        sync::PublicaAdjuntos(p.fase);
        FAIL() << "the run went on";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Numero(), 53);
        EXPECT_EQ(error.Descripcion(), "No se ha encontrado el archivo");
    }
    EXPECT_EQ(p.red.Lotes().size(), 0U);
}

TEST_F(Adjuntos, SinRutaNoHayDocumento)
{
    Pendiente("71", "", "x");
    Mayor(40);

    sync::PublicaAdjuntos(p.fase);

    EXPECT_EQ(p.Log(), (QStringList{"SUBIENDO FICHEROS ADJUNTOS...", "SUBIENDO FICHERO ",
                                    "EJECUTANDO REMOTAMENTE actualización de adjuntos"}));
}

TEST_F(Adjuntos, LaConexionSeRenuevaAlEmpezarYAntesDeCadaDocumento)
{
    p.programa.CadenaConexion = "tienda de nuevo";
    const QString a = Documento("a.pdf", "1");
    const QString b = Documento("b.pdf", "2");
    Pendiente("71", a, "x");
    Pendiente("72", b, "y");
    Mayor(40);
    EnTienda(a, SinFilas);
    EnTienda(b, SinFilas);

    sync::PublicaAdjuntos(p.fase);

    ASSERT_EQ(p.tienda.aperturas.size(), 4U) << "the window's own, one, and two";
    EXPECT_EQ(p.tienda.aperturas.back().cadena, "tienda de nuevo");
}

} // namespace
