#include "sync/articulo.h"
#include "sync/corrida.h"
#include "sync/url_amigable.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlFamiliaDeArticulo(u"SELECT TOP 1 * FROM {PS_TABLAFAM} WHERE '{CodArticulo}' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('{lista}') OR EMPRESASWEB LIKE '%,{empresa},%') ORDER BY NIVEL DESC");
constexpr Plantilla SqlCategoriaDeFamilia(u"SELECT id_category FROM ps_category WHERE kov_familia='{clave}'");
// clang-format on

/// The shop's root: where an article lands that has no family.
const QString CategoriaRaiz = QStringLiteral("1");

QString TextoIdioma(const data::Recordset& fila, const char* campo, std::size_t i)
{
    return TextoO(fila[QString::fromLatin1(campo) + QString::number(i)]);
}

TextosArticulo TextosDeIdioma(const data::Recordset& fila, std::size_t i, int idioma)
{
    const QString nombre = TextoIdioma(fila, "PSCAMPODESCRIPCION", i);
    return {.lang = Texto(idioma),
            .url = UrlAmigable(nombre),
            .nombre = SinComillas(nombre),
            .claves = SinComillas(TextoIdioma(fila, "PSKEYWORDS", i)),
            .titulo = SinComillas(TextoIdioma(fila, "PsMetaTituloArt", i)),
            .metadesc = SinComillas(TextoIdioma(fila, "PsMetaDescripcionArt", i)),
            .notas = ConSaltosHtml(SinComillas(TextoIdioma(fila, "PSNOTAS", i))),
            .corta = ConSaltosHtml(SinComillas(TextoIdioma(fila, "PSCAMPODESCORTA", i)))};
}

QString TextoOUno(const data::Valor& valor)
{
    return data::EstaVacio(valor) ? QStringLiteral("1") : Texto(valor);
}

} // namespace

Articulo PreparaArticulo(Corrida& corrida, const data::Recordset& fila, const QString& id,
                         Camino camino)
{
    const data::Parametros& parametros = corrida.Parametros();
    const QString codigo = Texto(fila["CodArticulo"]);
    Articulo articulo{.fila = fila,
                      .camino = camino,
                      .CodArticulo = codigo,
                      .codalternativo = TextoO(fila["codalternativo"]),
                      .id = id,
                      .categoria = CategoriaDeArticulo(corrida, codigo),
                      .marca = MarcaDeArticulo(fila, parametros.PSGrupoMarcas),
                      .precio = Texto(fila[QStringLiteral("PVP") + Texto(parametros.Ps_pvpdef)]),
                      .cantidad = TextoOUno(fila["PS_CANTMINIMA"]),
                      .hoy = HoySql(corrida.programa)};
    articulo.catdefecto = TextoOUno(articulo.categoria);
    for (std::size_t i = 0; i < parametros.Idiomas.size(); ++i)
        articulo.textos.push_back(TextosDeIdioma(fila, i, parametros.Idiomas[i].Idioma));
    return articulo;
}

QString CategoriaDeArticulo(Corrida& corrida, const QString& CodArticulo)
{
    const data::Parametros& parametros = corrida.Parametros();
    const auto familia =
        LeeLocal(corrida, SqlFamiliaDeArticulo({{"PS_TABLAFAM", parametros.PS_TABLAFAM},
                                                {"CodArticulo", CodArticulo},
                                                {"lista", ListaSql(parametros.CADACTIVOWEB)},
                                                {"empresa", corrida.programa.CodigoEmpresa()}}));
    if (familia.Fin())
        return CategoriaRaiz;
    const auto categoria =
        LeeTienda(corrida, SqlCategoriaDeFamilia({{"clave", Texto(familia["Clave"])}}));
    if (categoria.Fin())
        return CategoriaRaiz;
    // Here, on the value: as a text a number 0 wouldn't be empty any more.
    const data::Valor& id = categoria["id_category"];
    return data::EstaVacio(id) ? QString() : Texto(id);
}

QString MarcaDeArticulo(const data::Recordset& fila, const QString& PSGrupoMarcas)
{
    const QString ninguna = QStringLiteral("null");
    if (PSGrupoMarcas.isEmpty())
        return ninguna;
    const QString columna = PSGrupoMarcas == u'1' ? QStringLiteral("CODGRUPO")
                                                  : QStringLiteral("GRUPO") + PSGrupoMarcas;
    const data::Valor& valor = fila[columna];
    return data::EstaVacio(valor) ? ninguna : Texto(valor);
}

} // namespace tolmo::sync
