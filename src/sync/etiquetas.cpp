#include "sync/etiquetas.h"
#include "sync/articulo.h"
#include "sync/corrida.h"
#include <utility>

namespace tolmo::sync {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlBorraEtiquetas(u"DELETE FROM ps_product_tag where id_product='{id}'||");
constexpr Plantilla SqlBuscaEtiqueta(u"SELECT * FROM {PS_PREFIJO}tag WHERE id_lang={lang} AND name='{tag}'");
constexpr Plantilla SqlCreaEtiqueta(u"INSERT INTO {PS_PREFIJO}tag (id_tag,id_lang,name) Select max(id_tag) + 1,{lang},'{tag}' from {PS_PREFIJO}tag");
constexpr Plantilla SqlEnlazaEtiqueta(u"INSERT INTO ps_product_tag (id_product,id_tag) Select '{id}',min(id_tag) FROM ps_tag WHERE id_lang={lang} and name='{tag}'||");
// clang-format on

/// Created at once and not through the batch: the link needs the tag to exist.
void AseguraEtiqueta(Corrida& corrida, const QString& lang, const QString& tag)
{
    const QString prefijo = corrida.Parametros().PS_PREFIJO;
    const auto hallada = LeeTienda(
        corrida, SqlBuscaEtiqueta({{"PS_PREFIJO", prefijo}, {"lang", lang}, {"tag", tag}}));
    if (!hallada.Fin())
        return;
    QString crea = SqlCreaEtiqueta({{"PS_PREFIJO", prefijo}, {"lang", lang}, {"tag", tag}});
    data::EjecutaSql(corrida.programa, crea);
}

} // namespace

QStringList ParteEtiquetas(const QString& texto)
{
    QStringList etiquetas;
    QString acumulado;
    for (qsizetype p = 0; p < texto.size(); ++p) {
        const bool ultima = p + 1 == texto.size();
        if (texto[p] != u',' && !ultima) {
            acumulado += texto[p];
            continue;
        }
        acumulado = data::Recorta(acumulado);
        if (!acumulado.isEmpty())
            etiquetas << std::exchange(acumulado, {});
    }
    return etiquetas;
}

void EscribeEtiquetas(Corrida& corrida, const Articulo& articulo)
{
    corrida.lote.EscribeSentencia(SqlBorraEtiquetas({{"id", articulo.id}}));
    for (std::size_t i = 0; i < corrida.Parametros().Idiomas.size(); ++i) {
        const data::FichaIdioma& idioma = corrida.Parametros().Idiomas[i];
        if (idioma.Tag.isEmpty())
            continue;
        const QString lang = data::Texto(idioma.Idioma);
        const QString columna = QStringLiteral("PSTAG") + QString::number(i);
        for (const QString& tag : ParteEtiquetas(TextoO(articulo.fila[columna]))) {
            AseguraEtiqueta(corrida, lang, tag);
            corrida.lote.EscribeSentencia(
                SqlEnlazaEtiqueta({{"id", articulo.id}, {"lang", lang}, {"tag", tag}}));
        }
    }
}

} // namespace tolmo::sync
