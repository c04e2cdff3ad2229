#include "base_prueba.h"
#include "data/access/colacion.h"
#include "data/access/patron.h"
#include "data/codificacion.h"
#include <QRandomGenerator>

using namespace tolmo::data::access;

namespace {

int Signo(int numero)
{
    return (numero > 0) - (numero < 0);
}

TEST(Colacion, LaCajaNoCuentaTampocoFueraDeAscii)
{
    EXPECT_EQ(ComparaTextos(QString("ÑANDÚ"), QString("ñandú")), 0);
    EXPECT_EQ(ComparaTextos(QString("ŽLUTÝ"), QString("žlutý")), 0);
    EXPECT_EQ(ComparaTextos(QString("ΑΒΓ"), QString("αβγ")), 0);
}

TEST(Colacion, LosBlancosDelFinalNoCuentan)
{
    EXPECT_EQ(ComparaTextos(QString("abc  "), QString("abc")), 0);
    EXPECT_NE(ComparaTextos(QString(" abc"), QString("abc")), 0);
}

TEST(Colacion, UnAcentoDistingueAunqueLaLetraSeaLaMisma)
{
    EXPECT_NE(ComparaTextos(QString("cana"), QString("caña")), 0);
    EXPECT_NE(ComparaTextos(QString("publico"), QString("público")), 0);
}

struct Pareja {
    const char* regla;
    const char* menor;
    const char* mayor;
};

class OrdenDeTextos : public testing::TestWithParam<Pareja> {};

TEST_P(OrdenDeTextos, ElPrimeroVaAntes)
{
    EXPECT_EQ(Signo(ComparaTextos(QString(GetParam().menor), QString(GetParam().mayor))), -1);
    EXPECT_EQ(Signo(ComparaTextos(QString(GetParam().mayor), QString(GetParam().menor))), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, OrdenDeTextos,
    testing::Values(Pareja{"LasCifrasAntesQueLasLetras", "9", "A"},
                    Pareja{"ElVacioVaPrimero", "", " x"}, Pareja{"ElMasCortoAntes", "ab", "ABC"},
                    Pareja{"LaEnieTrasLaEne", "n", "Ñ"},
                    Pareja{"ElAcentoTrasLaLetraSola", "arbol", "árbol"},
                    Pareja{"LasLetrasCuentanAntesQueLosAcentos", "árbol", "arbolado"},
                    Pareja{"LaLetraSiguienteDecideAntesQueElAcento", "caña", "canz"},
                    Pareja{"ElGuionSoloCuentaAlFinal", "coop", "co-op"},
                    Pareja{"ElGuionNoParteLasLetras", "co-op", "coopa"},
                    Pareja{"ElApostrofoTambien", "oneil", "O'Neil"},
                    Pareja{"ElAcentoAntesQueElGuion", "co-óp", "coóq"},
                    Pareja{"LosSignosAntesQueLasCifras", "#1", "11"},
                    Pareja{"ElSubrayadoTrasElPunto", "a.b", "a_b"},
                    Pareja{"LoLejanoTrasLasLetrasLatinas", "zzz", "я"}),
    [](const auto& caso) { return caso.param.regla; });

TEST(Colacion, LosTextosPegadosDelIndiceDeAccessCoinciden)
{
    EXPECT_EQ(ComparaTextos(QString("Straße"), QString("STRASSE")), 0);
    EXPECT_EQ(ComparaTextos(QString("œuvre"), QString("oeuvre")), 0);
    // A letter and a mark of its own are the same as the letter that holds both.
    EXPECT_EQ(ComparaTextos(QString::fromUcs4(U"n\u0303"), QString("ñ")), 0);
}

TEST(Colacion, ElTramoDeUnPrefijoAbarcaTodoLoQueEmpiezaPorEl)
{
    for (const char* texto : {"co-op", "CO-OPERATIVA", "co-opñ", "co-opzzz", "co-op я"}) {
        const Tramo tramo = TramoDePrefijo("co-op");
        EXPECT_GE(ComparaTextos(QString(texto), tramo.desde), 0) << texto;
        EXPECT_LT(ComparaTextos(QString(texto), tramo.hasta), 0) << texto;
    }
    EXPECT_GT(ComparaTextos(QString("coñac"), TramoDePrefijo("coñ").desde), 0);
    EXPECT_GT(ComparaTextos(QString("cop"), TramoDePrefijo("co-o").hasta), 0);
}

/// Texts of few characters, so that many are equal or nearly so, with blanks and marks among them.
class TextosAlAzar {
  public:
    explicit TextosAlAzar(quint32 semilla) : azar_(semilla) {}

    QString DeWindows1252()
    {
        QByteArray bytes;
        for (int quedan = azar_.bounded(6); quedan > 0; --quedan)
            bytes.append(static_cast<char>(azar_.bounded(256)));
        return tolmo::data::DesdeWindows1252(bytes);
    }

    QString DelPlanoBasico()
    {
        static const QString frecuentes = QStringLiteral(" -'aAéñn\u0000\u0001\u00AD\u0301\u0303");
        QString texto;
        for (int quedan = azar_.bounded(6); quedan > 0; --quedan) {
            const auto cualquiera = static_cast<char16_t>(azar_.bounded(0x10000));
            texto += azar_.bounded(2) == 0 || QChar::isSurrogate(cualquiera)
                         ? frecuentes[azar_.bounded(frecuentes.size())]
                         : QChar(cualquiera);
        }
        return texto;
    }

  private:
    QRandomGenerator azar_;
};

void CompruebaQueEsUnOrden(const std::vector<QString>& textos)
{
    const auto compara = [&](std::size_t a, std::size_t b) {
        return Signo(ComparaTextos(textos[a], textos[b]));
    };
    for (std::size_t a = 0; a < textos.size(); ++a) {
        ASSERT_EQ(compara(a, a), 0) << textos[a].toStdString();
        for (std::size_t b = 0; b < textos.size(); ++b) {
            const int orden = compara(a, b);
            ASSERT_EQ(compara(b, a), -orden) << a << ' ' << b;
            // Of two that are equal the third tells no difference; else it can't turn them round.
            for (std::size_t c = 0; c < textos.size() && orden <= 0; ++c) {
                const int siguiente = compara(b, c);
                if (orden == 0 || siguiente <= 0) {
                    ASSERT_EQ(compara(a, c), orden == 0 ? siguiente : -1)
                        << a << ' ' << b << ' ' << c;
                }
            }
        }
    }
}

TEST(Colacion, EsUnOrdenDeTodosLosTextosDeWindows1252)
{
    for (quint32 semilla = 1; semilla <= 20; ++semilla) {
        TextosAlAzar azar(semilla);
        std::vector<QString> textos{"", " ", QString(QChar(0))};
        while (textos.size() < 40)
            textos.push_back(azar.DeWindows1252());
        CompruebaQueEsUnOrden(textos);
    }
}

TEST(Colacion, EsUnOrdenDeTodosLosTextosDelPlanoBasico)
{
    for (quint32 semilla = 1; semilla <= 20; ++semilla) {
        TextosAlAzar azar(semilla);
        std::vector<QString> textos{"", " ", QString(QChar(0)), QString(QChar(0xFEFF))};
        while (textos.size() < 40)
            textos.push_back(azar.DelPlanoBasico());
        CompruebaQueEsUnOrden(textos);
    }
}

class TextosEnConjuntos : public testing::Test, public BaseDePrueba {
  protected:
    TextosEnConjuntos()
    {
        Haz({"CREATE TABLE V (C nvarchar(20), N INT)", "CREATE INDEX VC ON V (C, N)",
             "INSERT INTO V VALUES ('',1)", "INSERT INTO V VALUES (' ',2)",
             "INSERT INTO V VALUES ('',3)", "INSERT INTO V VALUES ('x',4)"});
    }
};

// An empty text and a blank are equal, and of another length.
TEST_F(TextosEnConjuntos, ElVacioYElBlancoSonElMismo)
{
    EXPECT_EQ(Tabla("SELECT N FROM V WHERE C IN (SELECT C FROM V WHERE C >= '') ORDER BY N"),
              "1 2 3 4");
    EXPECT_EQ(Tabla("SELECT N FROM V WHERE C NOT IN (SELECT C FROM V WHERE C >= '')"), "");
    EXPECT_EQ(Tabla("SELECT N FROM V WHERE C IN ('', ' ', '') ORDER BY N"), "1 2 3");
    EXPECT_EQ(Tabla("SELECT N FROM V WHERE C NOT IN ('', ' ', '')"), "4");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM (SELECT C FROM V UNION SELECT C FROM V)"), "2");
    EXPECT_EQ(Tabla("SELECT C FROM V UNION SELECT C FROM V WHERE C IN (SELECT C FROM V)"), " x");
}

struct CasoPatron {
    const char* regla;
    const char* texto;
    const char* patron;
    Comodines comodines;
    bool casa;
};

class Patron : public testing::TestWithParam<CasoPatron> {};

TEST_P(Patron, CasaONo)
{
    const auto& caso = GetParam();
    EXPECT_EQ(CasaPatron(caso.texto, caso.patron, caso.comodines), caso.casa);
}

constexpr auto C = Comodines::Conexion;
constexpr auto G = Comodines::ConsultaGuardada;

INSTANTIATE_TEST_SUITE_P(
    Casos, Patron,
    testing::Values(CasoPatron{"SinSignosEsIgualdadSinCaja", "ÁRBOL", "árbol", C, true},
                    CasoPatron{"ElAcentoCuenta", "arbol", "árbol", C, false},
                    CasoPatron{"TodoCasaConVacio", "", "%", C, true},
                    CasoPatron{"VacioSoloConVacio", "a", "", C, false},
                    CasoPatron{"Principio", "0102A", "0102%", C, true},
                    CasoPatron{"PrincipioQueNo", "0112A", "0102%", C, false},
                    CasoPatron{"EnMedio", ",000001,000007,", "%,000007,%", C, true},
                    CasoPatron{"UnoExacto", "caña", "ca_a", C, true},
                    CasoPatron{"UnoNoEsNinguno", "caa", "ca_a", C, false},
                    CasoPatron{"VuelveAtras", "aXbXc", "%X%c", C, true},
                    CasoPatron{"VuelveAtrasHastaElFinal", "aabaab", "%aab", C, true},
                    CasoPatron{"DosSeguidosSonUno", "abc", "a%%c", C, true},
                    CasoPatron{"ElAsteriscoEsUnaLetra", "abc", "a*", C, false},
                    CasoPatron{"LaAlmohadillaEsUnaLetra", "a1", "a#", C, false},
                    CasoPatron{"ElCorcheteEsUnaLetra", "[x]", "[x]", C, true},
                    CasoPatron{"GuardadaAsterisco", "abc", "A*", G, true},
                    CasoPatron{"GuardadaInterrogante", "abc", "a?c", G, true},
                    CasoPatron{"GuardadaCifra", "a1", "a#", G, true},
                    CasoPatron{"GuardadaCifraQueNo", "ab", "a#", G, false},
                    CasoPatron{"GuardadaLista", "mB", "m[a-c]", G, true},
                    CasoPatron{"GuardadaListaSuelta", "mx", "m[axz]", G, true},
                    CasoPatron{"GuardadaListaNegada", "mB", "m[!a-c]", G, false},
                    CasoPatron{"GuardadaListaNegadaQueSi", "md", "m[!a-c]", G, true},
                    CasoPatron{"GuardadaSignoEnLista", "a*", "a[*]", G, true},
                    CasoPatron{"GuardadaSignoEnListaSoloEl", "ab", "a[*]", G, false},
                    CasoPatron{"GuardadaTantoPorCiento", "abc", "a%", G, false}),
    [](const auto& caso) { return caso.param.regla; });

TEST(PatronPorPrincipio, EsElDelPrincipioYCualquierCosa)
{
    EXPECT_TRUE(CasaPrincipio("0102A", "01", C));
    EXPECT_TRUE(CasaPrincipio("ÑU", "ñ", C));
    EXPECT_TRUE(CasaPrincipio("x", "", C));
    EXPECT_FALSE(CasaPrincipio("0", "01", C));
    EXPECT_TRUE(CasaPrincipio("axb", "a_b", C));
    EXPECT_TRUE(CasaPrincipio("aXXXbY", "a%b", C));
    EXPECT_FALSE(CasaPrincipio("xaXXXb", "a%b", C));
}

class LikeEnSentencias : public testing::Test, public BaseDePrueba {
  protected:
    LikeEnSentencias()
    {
        Haz({"CREATE TABLE T (C nvarchar(20) PRIMARY KEY, N INT)",
             "INSERT INTO T VALUES ('Co-op',1)", "INSERT INTO T VALUES ('cooperativa',2)",
             "INSERT INTO T VALUES ('coñac',3)", "INSERT INTO T VALUES ('100%',4)",
             "INSERT INTO T VALUES ('a*b',5)"});
    }
};

TEST_F(LikeEnSentencias, ElPatronDeUnaSentenciaLlevaTantoPorCiento)
{
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE C LIKE 'co%' ORDER BY N"), "1 2 3");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE C LIKE 'co-%'"), "1");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE C LIKE 'COÑ%'"), "3");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE C LIKE 'a*b'"), "5");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE C NOT LIKE 'co%' ORDER BY N"), "4 5");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE C LIKE NULL"), "");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE N LIKE '%1%'"), "1");
}

TEST_F(LikeEnSentencias, ElPatronDeUnaConsultaGuardadaLlevaAsterisco)
{
    Haz("CREATE VIEW V AS SELECT * FROM T WHERE C LIKE 'co*'");
    Haz("CREATE VIEW W AS SELECT * FROM T WHERE C LIKE 'co[-n]*' OR C LIKE '###%'");

    EXPECT_EQ(Tabla("SELECT N FROM V ORDER BY N"), "1 2 3");
    EXPECT_EQ(Tabla("SELECT N FROM V WHERE C LIKE '%va'"), "2");
    EXPECT_EQ(Tabla("SELECT N FROM W ORDER BY N"), "1 4");
}

} // namespace
