#include "company/carga_param.h"
#include "data/consultas.h"
#include "data/plantilla.h"
#include <cmath>
#include <limits>

namespace tolmo::company {
namespace {

using namespace data;

// clang-format off
constexpr Plantilla SqlEmpresa(u"Select * from m_Empresa where codempresa='{CodigoEmpresa}'");
constexpr Plantilla SqlIdiomaPrincipal(u"SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='{CodigoEmpresa}' AND IDIOMA={idioma}");
constexpr Plantilla SqlOtrosIdiomas(u"SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='{CodigoEmpresa}' AND IDIOMA<>{idioma} ORDER BY IDIOMA");
// clang-format on

constexpr int ErrorDesbordamiento = 6;
constexpr int ErrorTipos = 13;

/// Names of the per-language columns with the field each fills and its default.
struct ColumnaIdioma {
    const char* columna;
    QString FichaIdioma::*campo;
    const char* defecto;
};

constexpr ColumnaIdioma ColumnasIdioma[] = {
    {"CampoDescripcion", &FichaIdioma::CampoDescripcion, "DESCRIPCION"},
    {"campodescorta", &FichaIdioma::campodescorta, "DESCRIPCIO2"},
    {"CampoNotas", &FichaIdioma::CampoNotas, "NOTAS"},
    {"CampoFamDescripcion", &FichaIdioma::CampoFamDescripcion, "DESCRIPCION"},
    {"CampoFamNotas", &FichaIdioma::CampoFamNotas, "NOTAS"},
    {"Tag", &FichaIdioma::Tag, "NULL"},
    {"Keywords", &FichaIdioma::Keywords, "NULL"},
    {"KEYWORDS_FAM", &FichaIdioma::KEYWORDS_FAM, "NULL"},
    {"METATITULO_ART", &FichaIdioma::METATITULO_ART, "DESCRIPCION"},
    {"METADESCRIPCION_ART", &FichaIdioma::METADESCRIPCION_ART, "NOTAS"},
    {"METATITULO_FAM", &FichaIdioma::METATITULO_FAM, "DESCRIPCION"},
    {"METADESCRIPCION_FAM", &FichaIdioma::METADESCRIPCION_FAM, "NOTAS"},
};

/// A number to a 16-bit value, rounded to even as the runtime does.
int Entero16(const Valor& valor)
{
    const QString texto = Texto(valor);
    if (!EsNumero(valor) && !EsNumerico(texto))
        throw ErrorEjecucion(ErrorTipos, QStringLiteral("No coinciden los tipos: %1").arg(texto));
    const double redondeado = std::nearbyint(ValorNumerico(valor));
    if (redondeado < std::numeric_limits<qint16>::min() ||
        redondeado > std::numeric_limits<qint16>::max())
        throw ErrorEjecucion(ErrorDesbordamiento, QStringLiteral("Desbordamiento: %1").arg(texto));
    return static_cast<int>(redondeado);
}

QString TextoO(const Recordset& fila, const char* columna, const char* defecto)
{
    const Valor& valor = fila[columna];
    return EstaVacio(valor) ? QString::fromUtf8(defecto) : Texto(valor);
}

int EnteroO(const Recordset& fila, const char* columna, int defecto)
{
    const Valor& valor = fila[columna];
    return EstaVacio(valor) ? defecto : Entero16(valor);
}

bool Booleano(const Valor& valor)
{
    if (EsNulo(valor))
        TextoSinNulo(valor); // a Null can't be told either way
    return valor.toBool();
}

void LeeEmpresa(Parametros& p, const Recordset& fila)
{
    p.User_Bd = TextoSinNulo(fila["User_Bd"]);
    p.Pass_Bd = TextoSinNulo(fila["Pass_Bd"]);
    p.Puerto_Bd = TextoO(fila, "Puerto_Bd", "3306");
    p.Nombre_Bd = TextoSinNulo(fila["Nombre_Bd"]);
    p.Server_Bd = TextoSinNulo(fila["Server_Bd"]);
    p.User_Ftp = TextoSinNulo(fila["User_Ftp"]);
    p.Pass_Ftp = TextoSinNulo(fila["Pass_Ftp"]);
    p.Puerto_Ftp = TextoO(fila, "Puerto_Ftp", "21");
    p.Server_Ftp = TextoSinNulo(fila["Server_Ftp"]);
    p.PS_PREFIJO = TextoO(fila, "PS_PREFIJO", "ps_");
    p.PS_INDICES1 = TextoO(fila, "PS_INDICES1", "");
    p.PS_INDICES2 = TextoO(fila, "PS_INDICES2", "");
    p.Carpeta_tienda = NormalizaCarpeta(TextoO(fila, "Carpeta_tienda", "/"));
    p.WWW = NormalizaWww(TextoO(fila, "WWW", ""));
    p.Ps_SufijoFoto = TextoO(fila, "Ps_SufijoFoto", "_default");
    p.Ps_pvpdef = EnteroO(fila, "Ps_pvpdef", 1);
    p.Ps_ProvReferencia = TextoO(fila, "Ps_ProvReferencia", "");
    p.PS_TABLAARTIC = TextoO(fila, "PS_TABLAARTIC", "M_ARTIC");
    p.PS_TABLAFAM = TextoO(fila, "PS_TABLAFAM", "M_FAMILIA");
    p.CADACTIVOWEB = TextoO(fila, "CADACTIVOWEB", "S");
    p.CAMPOFAMALT = TextoO(fila, "CAMPOFAMALT", "NULL");
    p.PS_PESO = TextoO(fila, "PS_PESO", "KILOS");
    p.PS_CANTMINIMA = TextoO(fila, "PS_CANTMINIMA", "1");
    p.PSAlmacenes = TextoO(fila, "PSAlmacenes", "01");
    p.PSGrupoMarcas = TextoO(fila, "PSGrupoMarcas", "");
    p.PS_VERSION = EnteroO(fila, "PS_VERSION", 0);
    p.PS_IDIOMA = EnteroO(fila, "PS_IDIOMA", 1);
}

FichaIdioma IdiomaPorDefecto(int idioma)
{
    FichaIdioma ficha{.Idioma = idioma};
    for (const ColumnaIdioma& c : ColumnasIdioma)
        ficha.*c.campo = QString::fromUtf8(c.defecto);
    return ficha;
}

FichaIdioma LeeIdioma(const Recordset& fila, int idioma)
{
    FichaIdioma ficha{.Idioma = idioma};
    for (const ColumnaIdioma& c : ColumnasIdioma)
        ficha.*c.campo = TextoO(fila, c.columna, c.defecto);
    return ficha;
}

void LeeIdiomas(Programa& programa)
{
    auto& idiomas = programa.parametros.Idiomas;
    const int principal = programa.parametros.PS_IDIOMA;
    idiomas.assign(1, FichaIdioma{.Idioma = principal});

    QString sql = SqlIdiomaPrincipal(
        {{"CodigoEmpresa", programa.CodigoEmpresa()}, {"idioma", Texto(principal)}});
    const auto propio = AbreLectura(programa, sql, programa.ConexionLocal);
    idiomas[0] = propio.Fin() ? IdiomaPorDefecto(principal) : LeeIdioma(propio, principal);

    sql = SqlOtrosIdiomas(
        {{"CodigoEmpresa", programa.CodigoEmpresa()}, {"idioma", Texto(principal)}});
    auto otros = AbreLectura(programa, sql, programa.ConexionLocal);
    for (; !otros.Fin(); otros.Siguiente())
        idiomas.push_back(LeeIdioma(otros, Entero16(otros["idioma"])));
}

} // namespace

void CargaParam(Programa& programa)
{
    QString sql = SqlEmpresa({{"CodigoEmpresa", programa.CodigoEmpresa()}});
    const auto fila = AbreConsulta(programa, sql, programa.ConexionLocal);
    // Read before the row is known to be there: a company without one is an error of the caller.
    programa.parametros.PS_MODOCONFIGURADOR = Booleano(fila["PS_MODOCONFIGURADOR"]);
    if (fila.Fin())
        return;
    LeeEmpresa(programa.parametros, fila);
    LeeIdiomas(programa);
}

QString NormalizaCarpeta(const QString& carpeta)
{
    if (carpeta.isEmpty())
        return QStringLiteral("/");
    QString normal = carpeta;
    if (!normal.startsWith(u'/'))
        normal.prepend(u'/');
    if (!normal.endsWith(u'/'))
        normal.append(u'/');
    return normal;
}

QString NormalizaWww(const QString& www)
{
    return www.endsWith(u'/') ? www : www + u'/';
}

} // namespace tolmo::company
