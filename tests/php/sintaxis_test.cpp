#include "apoyo/carpeta.h"
#include <QDir>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <gmock/gmock.h>

// The scripts run on whatever PHP a shop's server has, from 5.4 on.

namespace {
using testing::HasSubstr;

const QString ScriptsDir = KOV_FUENTES "/PHPSHOP/";
const QStringList Scripts{"ejecuta.php",  "dimensiona.php", "borraimg.php",
                          "creapath.php", "borracache.php", "borraimgobsoletas.php"};

struct Salida {
    int estado = -1;
    QString texto{};
};

Salida Php(const QStringList& argumentos)
{
    QProcess php;
    php.setProcessChannelMode(QProcess::MergedChannels);
    php.start("php", argumentos);
    if (!php.waitForFinished(30'000) || php.exitStatus() != QProcess::NormalExit)
        return {-1, "php: " + php.errorString()};
    return {php.exitCode(), QString::fromUtf8(php.readAll())};
}

Salida Revisa(const QStringList& ficheros)
{
    return Php(QStringList{KOV_FUENTES "/tests/php/sintaxis54.php"} + ficheros);
}

Salida RevisaCodigo(const QByteArray& codigo)
{
    CarpetaDePrueba carpeta;
    carpeta.Escribe("ejemplo.php", "<?php\n" + codigo + "\n");
    return Revisa({carpeta.Ruta("ejemplo.php")});
}

QStringList RutasDeScripts()
{
    QStringList rutas;
    for (const QString& script : Scripts)
        rutas << ScriptsDir + script;
    return rutas;
}
} // namespace

TEST(Scripts, SonLosSeisYNingunoMas)
{
    QStringList nombres = Scripts;
    nombres.sort();
    EXPECT_EQ(QDir(ScriptsDir).entryList({"*.php"}, QDir::Files, QDir::Name), nombres);
}

TEST(Scripts, NoUsanNadaPosteriorAPhp54)
{
    const Salida salida = Revisa(RutasDeScripts());

    EXPECT_EQ(salida.texto, "");
    EXPECT_EQ(salida.estado, 0);
}

TEST(Scripts, SonValidosParaElPhpInstalado)
{
    for (const QString& ruta : RutasDeScripts())
        EXPECT_EQ(Php({"-l", ruta}).estado, 0) << ruta.toStdString();
}

TEST(Scripts, SoloLlevanAscii)
{
    // What goes out must be in the client's code page, whatever the editor saves the source in.
    for (const QString& ruta : RutasDeScripts()) {
        QFile fichero(ruta);
        ASSERT_TRUE(fichero.open(QIODevice::ReadOnly));
        for (const char c : fichero.readAll())
            ASSERT_TRUE(c == '\n' || (c >= ' ' && c <= '~')) << ruta.toStdString();
    }
}

TEST(Scripts, UnaFuncionDelMismoNombreEsLaMismaEnTodos)
{
    // Each script goes up by itself, so what they share stands in each; it must not drift apart.
    const QRegularExpression funcion("(?:/\\*\\*(?:(?!\\*/).)*\\*/\\n)?^function (\\w+)\\(.*?^\\}$",
                                     QRegularExpression::DotMatchesEverythingOption |
                                         QRegularExpression::MultilineOption);
    QHash<QString, QString> vistas;
    int repetidas = 0;
    for (const QString& ruta : RutasDeScripts()) {
        QFile fichero(ruta);
        ASSERT_TRUE(fichero.open(QIODevice::ReadOnly));
        const QString texto = QString::fromLatin1(fichero.readAll());
        auto halladas = funcion.globalMatch(texto);
        while (halladas.hasNext()) {
            const auto hallada = halladas.next();
            const QString nombre = hallada.captured(1);
            repetidas += vistas.contains(nombre) ? 1 : 0;
            EXPECT_EQ(vistas.value(nombre, hallada.captured(0)), hallada.captured(0));
            vistas.insert(nombre, hallada.captured(0));
        }
    }
    EXPECT_GT(repetidas, 10); // Prepara alone stands in all six
}

struct CasoNuevo {
    const char* regla;
    const char* codigo;
    const char* razon;
};

class LoPosteriorAPhp54 : public testing::TestWithParam<CasoNuevo> {};

TEST_P(LoPosteriorAPhp54, SeRechaza)
{
    const Salida salida = RevisaCodigo(GetParam().codigo);

    EXPECT_EQ(salida.estado, 1);
    EXPECT_THAT(salida.texto.toStdString(),
                HasSubstr(std::string("ejemplo.php:2: ") + GetParam().razon + "\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Casos, LoPosteriorAPhp54,
    testing::Values(
        CasoNuevo{"Coalesce", "$a = $b ?? 1;", "??"},
        CasoNuevo{"CoalesceConAsignacion", "$a ?\?= 1;", "?\?="},
        CasoNuevo{"Nave", "$a = $b <=> $c;", "<=>"}, CasoNuevo{"Potencia", "$a = $b ** 2;", "**"},
        CasoNuevo{"Puntos", "trim(...$a);", "..."},
        CasoNuevo{"Finally", "try { f(); } catch (E $e) { } finally { } function f() {}",
                  "finally"},
        CasoNuevo{"Generador", "function f() { yield 1; }", "yield"},
        CasoNuevo{"FuncionFlecha", "$f = fn($a) => $a;", "fn"},
        CasoNuevo{"Match", "$a = match($b) { 1 => 2 };", "match"},
        CasoNuevo{"FlechaNula", "$a = $b?->c;", "?->"},
        CasoNuevo{"TiposEstrictos", "declare(strict_types=1);", "declare"},
        CasoNuevo{"NombreDeClase", "class A {} $a = A::class;", "::class"},
        CasoNuevo{"ClaseAnonima", "$a = new class {};", "anonymous class"},
        CasoNuevo{"TipoEscalar", "function f(int $a) {}", "type of a parameter"},
        CasoNuevo{"TipoEscalarDetras", "function f($b, string $a) {}", "type of a parameter"},
        CasoNuevo{"TipoNulo", "function f(?array $a) {}", "type of a parameter"},
        CasoNuevo{"TipoUnido", "function f(array|false $a) {}", "type of a parameter"},
        CasoNuevo{"PropiedadEnElConstructor", "class A { function f(private $a) {} }",
                  "type of a parameter"},
        CasoNuevo{"TipoDelResultado", "function f($a): array { return $a; }", "return type"},
        CasoNuevo{"TipoDelResultadoDeUnCierre", "$f = function () use ($a): array { return $a; };",
                  "return type"},
        CasoNuevo{"PropiedadConTipo", "class A { private int $a = 1; }", "typed property"},
        CasoNuevo{"VisibilidadDeConstante", "class A { private const B = 1; }",
                  "visibility of a constant"},
        CasoNuevo{"ConstanteCalculada", "class A { const B = 1 + 2; }", "constant expression"},
        CasoNuevo{"ConstanteConTabla", "const B = array(1);", "constant expression"},
        CasoNuevo{"PropiedadCalculada", "class A { private $a = 'x' . 'y'; }",
                  "constant expression"},
        CasoNuevo{"ValorPorDefectoCalculado", "function f($a = 60 * 60) {}", "constant expression"},
        CasoNuevo{"CorchetesALaIzquierda", "[$a, $b] = $c;", "[] on the left side"},
        CasoNuevo{"CorchetesEnForeach", "foreach ($a as [$b, $c]) {}", "[] on the left side"},
        CasoNuevo{"ListEnForeach", "foreach ($a as list($b, $c)) {}", "list() in foreach"},
        CasoNuevo{"ListConClaves", "list('x' => $b) = $a;", "list() with keys"},
        CasoNuevo{"EmptyDeUnaLlamada", "if (empty(trim($a))) {}", "empty() of an expression"},
        CasoNuevo{"EmptyDeUnMetodo", "if (empty($a->b())) {}", "empty() of an expression"},
        CasoNuevo{"NumeroConGuion", "$a = 1_000;", "form of a number"},
        CasoNuevo{"EscapeUnicode", "$a = \"\\u{20ac}\";", "\\u{}"},
        CasoNuevo{"CatchDoble", "try { } catch (A | B $e) { }", "form of catch"},
        CasoNuevo{"CatchSinVariable", "try { } catch (A) { }", "form of catch"},
        CasoNuevo{"ComaAlFinalDeLosArgumentos", "trim($a,);",
                  "comma at the end of a list of arguments"},
        CasoNuevo{"LlamadaAUnResultado", "trim($a)();", "access to a result"},
        CasoNuevo{"IndiceDeUnParentesis", "$a = ($b)[0];", "access to a result"},
        CasoNuevo{"IndiceDeArray", "$a = array(1)[0];", "access to a result"},
        CasoNuevo{"IndiceDeCorchetes", "$a = [1][0];", "access to a literal"},
        CasoNuevo{"IndiceDeUnTexto", "$a = 'abc'[0];", "access to a literal"},
        CasoNuevo{"ArgumentoConNombre", "trim(string: $a);", "named argument"},
        CasoNuevo{"DirnameConNiveles", "$a = dirname($b, 2);", "dirname() with levels"},
        CasoNuevo{"ThrowEnExpresion", "$a = $b ? 1 : throw $c;", "throw inside an expression"},
        CasoNuevo{"UseFunction", "use function a\\b;", "use function"},
        CasoNuevo{"FuncionNueva", "$a = random_bytes(8);", "function random_bytes"},
        CasoNuevo{"FuncionRetirada", "$a = each($b);", "function each"},
        CasoNuevo{"ConstanteNueva", "$a = IMAGETYPE_WEBP;", "constant IMAGETYPE_WEBP"}),
    [](const auto& caso) { return caso.param.regla; });

class LoQueYaTeniaPhp54 : public testing::TestWithParam<CasoNuevo> {};

TEST_P(LoQueYaTeniaPhp54, SeAdmite)
{
    const Salida salida = RevisaCodigo(GetParam().codigo);

    EXPECT_EQ(salida.texto, "");
    EXPECT_EQ(salida.estado, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, LoQueYaTeniaPhp54,
    testing::Values(
        CasoNuevo{"Corchetes", "$a = [1, 2,]; $b = $a[0][1];", ""},
        CasoNuevo{"IndiceDeUnaLlamada", "$a = explode(',', $b)[0];", ""},
        CasoNuevo{"CierreConThis", "$f = function ($a) use ($b) { return $b; };", ""},
        CasoNuevo{"ListSimple", "list($a, , $b) = $c;", ""},
        CasoNuevo{"EmptyDeUnIndice", "if (empty($a['x'])) {}", ""},
        CasoNuevo{"TiposDeClaseYTabla",
                  "class A {} function f(A $a, array $b = array(), $c = -1) {}", ""},
        CasoNuevo{"ConstanteSimple", "class A { const B = 'x'; private $c = array(1); }", ""},
        CasoNuevo{"Interpolacion", "$a = \"{$b['x']} $c\";", ""},
        CasoNuevo{"DirnameDeUnaLlamada", "$a = dirname(str_replace('a', 'b', $c));", ""}),
    [](const auto& caso) { return caso.param.regla; });
