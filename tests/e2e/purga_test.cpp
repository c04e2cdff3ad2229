#include "apoyo/galeria.h"
#include "e2e/ventana_real.h"
#include <QSet>
#include <algorithm>
#include <gmock/gmock.h>

// The purge of pictures, from the window's engine to the files of the shop.

namespace {

using namespace tolmo;
using sync::Sincronizador;

const QStringList CabeceraDeLaPurga{Asteriscos, "INICIO PROCESO BORRADO IMÁGENES NO UTILIZADAS",
                                    Asteriscos};

QString Peticion(int bloque)
{
    return "GET /borraimgobsoletas.php?cienmil=" + QString::number(bloque);
}

/// The log lines of the blocks, by what the web server says that it answered: 200, or 500 to a
/// request that it cut.
QStringList LineasDeBloques(const QStringList& http)
{
    QStringList lineas;
    for (int bloque = 1; bloque <= 9; ++bloque) {
        const QString deNueve = QString::number(bloque) + " / 9";
        lineas << "Comenzando bloque " + deNueve;
        for (qsizetype i = 1; i <= http.count(Peticion(bloque) + " 500"); ++i)
            lineas << "....... Intento " + QString::number(i) + ", tiempo agotado. Relanzando...";
        lineas << "Finalizado bloque " + deNueve;
    }
    return lineas;
}

struct PurgaReal : testing::Test {
    void Imagen(int id) const
    {
        tienda.Ejecuta(QString("INSERT INTO tst_image (id_image,id_product,position,cover) VALUES "
                               "(%1,%1,1,1)")
                           .arg(id));
    }
    void Llena(const QStringList& fotos) const
    {
        for (const QString& foto : fotos)
            tienda.EscribeFichero(foto, "foto");
    }
    ResultadoCorrida Purga()
    {
        return ventana.Usa([](Sincronizador& motor) { motor.BorraImagenesObsoletas(); });
    }

    TiendaDePrueba& tienda = TiendaComun({.prefijo = "tst_", .idiomas = 1});
    EmpresaReal empresa{tienda};
    VentanaReal ventana{empresa};
};

TEST_F(PurgaReal, BorraLasFotosQueLaTiendaNoConoceEnLasDosDisposiciones)
{
    for (const int id : {1, 12, 123'456, 850'000})
        Imagen(id);
    const QStringList conocidas{"img/p/1/1.jpg",
                                "img/p/1/2/12-home_default.jpg",
                                "img/p/1/2/12.jpg",
                                "img/p/12-34-home.jpg",
                                "img/p/12-home_default.jpg",
                                "img/p/12.jpg",
                                "img/p/8/5/0/0/0/0/850000.jpg",
                                "img/p/123456.jpg"};
    const QStringList sobran{"img/p/1/2/3/123.jpg",
                             "img/p/1/2/3/4/5/7/123457-large_default.jpg",
                             "img/p/13-34-home.jpg",
                             "img/p/13.jpg",
                             "img/p/2/2-home_default.jpg",
                             "img/p/8/5/0/0/0/1/850001.jpg",
                             "img/p/123457.jpg",
                             "img/p/499999.jpg",
                             "img/p/500000.jpg"};
    Llena(conocidas + sobran);

    const ResultadoCorrida purga = Purga();

    EXPECT_THAT(Fotos(tienda, "img/p"), testing::UnorderedElementsAreArray(conocidas));
    EXPECT_EQ(EnLineas(purga.log),
              EnLineas(CabeceraDeLaPurga +
                       QStringList{"Comenzando bloque 1 / 9", "Finalizado bloque 1 / 9",
                                   "Comenzando bloque 2 / 9", "Finalizado bloque 2 / 9",
                                   "Comenzando bloque 3 / 9", "Finalizado bloque 3 / 9",
                                   "Comenzando bloque 4 / 9", "Finalizado bloque 4 / 9",
                                   "Comenzando bloque 5 / 9", "Finalizado bloque 5 / 9",
                                   "Comenzando bloque 6 / 9", "Finalizado bloque 6 / 9",
                                   "Comenzando bloque 7 / 9", "Finalizado bloque 7 / 9",
                                   "Comenzando bloque 8 / 9", "Finalizado bloque 8 / 9",
                                   "Comenzando bloque 9 / 9", "Finalizado bloque 9 / 9",
                                   "PROCESO CONCLUIDO",       ""}));
    EXPECT_EQ(EnLineas(PasosFtp(purga.ftp)), EnLineas(PasosDeCabecera()));
    QStringList peticiones;
    for (int bloque = 1; bloque <= 9; ++bloque)
        peticiones << Peticion(bloque) + " 200";
    EXPECT_EQ(EnLineas(purga.http), EnLineas(peticiones));
    EXPECT_TRUE(ventana.progreso.pestanas.empty());
    EXPECT_TRUE(ventana.progreso.barra.empty());
}

TEST_F(PurgaReal, MientrasDuraNoEmpiezaOtraNiUnaCorridaYDespuesSi)
{
    Imagen(1);

    const ResultadoCorrida todo = ventana.Usa([this](Sincronizador& motor) {
        std::vector<bool> enMarcha{motor.EnMarcha()};
        ventana.progreso.enCadaTurno = [&] {
            enMarcha.push_back(motor.EnMarcha());
            motor.BorraImagenesObsoletas();
            motor.SincronizaPrestashop({.proceso = sync::Proceso::Stock, .stock = true});
        };
        motor.BorraImagenesObsoletas();
        enMarcha.push_back(motor.EnMarcha());
        EXPECT_EQ(std::count(enMarcha.begin(), enMarcha.end(), false), 2);
        EXPECT_FALSE(enMarcha.front() || enMarcha.back());
        ventana.progreso.enCadaTurno = [] {};
        motor.SincronizaPrestashop({.proceso = sync::Proceso::Vales});
    });

    EXPECT_EQ(EnLineas(todo.log.mid(0, 3)), EnLineas(CabeceraDeLaPurga));
    EXPECT_EQ(EnLineas(todo.log.mid(3 + 18, 5)),
              EnLineas(QStringList{"PROCESO CONCLUIDO"} + CabeceraDelLog()));
    EXPECT_EQ(todo.log.count("INICIO VUELCO DATOS A PRESTASHOP "), 1);
}

TEST_F(PurgaReal, ConElFtpCaidoSigueConElGuionQueElServidorYaTenia)
{
    Imagen(1);
    Llena({"img/p/1.jpg", "img/p/2.jpg"});
    Purga();
    Llena({"img/p/2.jpg"});
    tienda.Para(Servidor::Ftp);
    ventana.progreso.pestanas.clear();

    const ResultadoCorrida purga = Purga();

    const QStringList fallo{"No se ha podido conectar con el servidor ftp 127.0.0.1",
                            "Error subiendo fichero " + empresa.Actual() + "\\PHPSHOP\\ejecuta.php",
                            "ERROR SUBIENDO FICHERO ejecuta.php"};
    EXPECT_EQ(EnLineas(purga.log), EnLineas(CabeceraDeLaPurga + fallo + LineasDeBloques({}) +
                                            QStringList{"PROCESO CONCLUIDO", ""}));
    EXPECT_EQ(Fotos(tienda, "img/p"), QStringList{"img/p/1.jpg"});
    EXPECT_EQ(ventana.progreso.pestanas, std::vector{true});
}

TEST_F(PurgaReal, ConLaWebCaidaInsisteHastaQueVuelve)
{
    Imagen(1);
    Llena({"img/p/1.jpg", "img/p/2.jpg"});
    tienda.Para(Servidor::Http);
    ventana.progreso.enCadaTurno = [this] {
        if (ventana.progreso.lineas.last().contains("Intento 5,"))
            tienda.Sigue(Servidor::Http);
    };

    const ResultadoCorrida purga = Purga();

    EXPECT_EQ(
        EnLineas(purga.log.mid(0, 10)),
        EnLineas(CabeceraDeLaPurga + QStringList{"Comenzando bloque 1 / 9",
                                                 "....... Intento 1, tiempo agotado. Relanzando...",
                                                 "....... Intento 2, tiempo agotado. Relanzando...",
                                                 "....... Intento 3, tiempo agotado. Relanzando...",
                                                 "....... Intento 4, tiempo agotado. Relanzando...",
                                                 "....... Intento 5, tiempo agotado. Relanzando...",
                                                 "Finalizado bloque 1 / 9"}));
    EXPECT_EQ(Fotos(tienda, "img/p"), QStringList{"img/p/1.jpg"});
}

/// How far the script has come: the place of its note among all that it writes, "f" before "n",
/// numbers in their order behind the one and folders in the order of their digits behind the other.
std::pair<QChar, QString> Lugar(const QString& nota)
{
    const QString resto = nota.mid(1).trimmed();
    return {nota.front(), nota.startsWith('f') ? resto.rightJustified(10, '0') : resto};
}

/// From here on the web server runs the purge's script as a program and kills it when its time is
/// over, whatever PHP says: that request answers 500. The time grows a little with each one, so
/// that the slowest machine gets to the end.
void CortaLasPeticiones(TiendaDePrueba& tienda, const QByteArray& segundos)
{
    const QString corta = tienda.Carpeta() + "/conf/corta.sh";
    QFile guion(corta);
    if (!guion.open(QIODevice::WriteOnly))
        throw ErrorTienda("cannot write corta.sh");
    guion.write("#!/bin/bash\n"
                "echo >>cortes\n"
                "plazo=$(awk 'END { print " +
                segundos +
                " + NR / 20 }' cortes)\n"
                "salida=$(timeout -s KILL \"$plazo\" php -r '"
                "parse_str(getenv(\"QUERY_STRING\"), $_GET);"
                "include getenv(\"DOCUMENT_ROOT\") . \"/borraimgobsoletas.php\";') || exit 1\n"
                "printf 'Content-Type: text/plain\\r\\n\\r\\n%s' \"$salida\"\n");
    guion.close();
    guion.setPermissions(QFile::Permissions(0x7755));
    QFile cortes(tienda.Carpeta() + "/conf/cortes");
    if (!cortes.open(QIODevice::WriteOnly) || !cortes.setPermissions(QFile::Permissions(0x6666)))
        throw ErrorTienda("cannot write cortes");
    tienda.Ajusta(Servidor::Http,
                  "LoadModule cgi_module \"${TIENDA_HTTP_MODULOS}/mod_cgi.so\"\n"
                  "ScriptAlias /borraimgobsoletas.php \"${TIENDA_CARPETA}/conf/corta.sh\"\n"
                  "<Files corta.sh>\nRequire all granted\n</Files>\n");
}

TEST_F(PurgaReal, CadaPeticionSigueDondeElServidorMatoALaAnterior)
{
    const QStringList conocidas = LlenaGaleria(tienda);
    ASSERT_EQ(Fotos(tienda, "img/p").size(), 50'000);
    RalentizaImagenes(tienda, 2); // the first block lasts 3 s, so several cuts of it are certain
    CortaLasPeticiones(tienda, "0.4");
    QStringList notas;
    std::vector<qsizetype> quedan{50'000};
    ventana.progreso.enCadaTurno = [&] {
        if (!ventana.progreso.lineas.last().contains("Intento") ||
            ventana.progreso.lineas.filter("Comenzando").size() != 1)
            return;
        const QStringList fotos = Fotos(tienda, "img/p");
        quedan.push_back(fotos.filter(".jpg").size());
        if (fotos.contains("img/p/purga1.txt"))
            notas << QString::fromLatin1(tienda.LeeFichero("img/p/purga1.txt"));
    };

    const ResultadoCorrida purga = Purga();

    RecordProperty("cortes", static_cast<int>(purga.http.filter(" 500").size()));
    EXPECT_EQ(Fotos(tienda, "img/p"), conocidas);
    EXPECT_EQ(EnLineas(purga.log), EnLineas(CabeceraDeLaPurga + LineasDeBloques(purga.http) +
                                            QStringList{"PROCESO CONCLUIDO", ""}));
    EXPECT_GE(purga.http.count(Peticion(1) + " 500"), 3);
    EXPECT_GE(QSet<QString>(notas.begin(), notas.end()).size(), 3);
    EXPECT_TRUE(std::is_sorted(notas.begin(), notas.end(), [](const QString& a, const QString& b) {
        return Lugar(a) < Lugar(b);
    })) << EnLineas(notas);
    EXPECT_TRUE(std::is_sorted(quedan.rbegin(), quedan.rend()));
    EXPECT_LT(quedan.back(), 50'000);
}

} // namespace
