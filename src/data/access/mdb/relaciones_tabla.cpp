#include "data/access/mdb/relaciones_tabla.h"
#include "data/access/mdb/base_mdb.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint8 LadoPrimario = 1;
constexpr quint8 LadoAjeno = 2;

QString NombreDeTabla(const std::shared_ptr<PaginasEscribibles>& paginas, quint32 definicion)
{
    const Base base(paginas);
    for (const Objeto& objeto : base.catalogo().Objetos()) {
        if (objeto.clase == clase_objeto::TablaLocal &&
            static_cast<quint32>(objeto.id) == definicion)
            return objeto.nombre;
    }
    return {};
}

} // namespace

RelacionesDeTabla::RelacionesDeTabla(std::shared_ptr<PaginasEscribibles> paginas,
                                     const Tabla& tabla, IndicesDeTabla& indices)
    : paginas_(std::move(paginas)), tabla_(tabla), indices_(indices)
{
    for (const IndiceLogico& indice : tabla.definicion().indicesLogicos) {
        const bool esUna =
            (indice.ladoRelacion == LadoPrimario || indice.ladoRelacion == LadoAjeno) &&
            indice.tablaAjena != 0;
        if (!esUna)
            continue;
        if (indice.real >= indices_.Cuantos())
            Danado(QStringLiteral("Una relación nombra un índice que la tabla no tiene"),
                   tabla.En());
        relaciones_.push_back({.nombre = indice.nombre,
                               .esLaAjena = indice.ladoRelacion == LadoAjeno,
                               .indice = indice.real,
                               .otraTabla = indice.tablaAjena,
                               .otroIndice = indice.indiceAjeno});
    }
}

RelacionesDeTabla::Otra& RelacionesDeTabla::Abre(quint32 pagina)
{
    for (auto& [numero, otra] : otras_) {
        if (numero == pagina)
            return *otra;
    }
    auto definicion = std::make_shared<const Definicion>(LeeDefinicion(*paginas_, pagina));
    otras_.emplace_back(pagina, std::make_unique<Otra>(*paginas_, Tabla(paginas_, definicion)));
    return *otras_.back().second;
}

bool RelacionesDeTabla::Toca(const Relacion& relacion, const std::vector<bool>& cambia) const
{
    const auto& columnas = indices_.Columnas(relacion.indice);
    return std::any_of(columnas.begin(), columnas.end(),
                       [&](std::size_t columna) { return cambia[columna]; });
}

/// Nothing when a part is Null: such a row refers to none.
std::optional<std::vector<Dato>> RelacionesDeTabla::ClaveDe(const Relacion& relacion,
                                                            std::span<const Dato> valores) const
{
    std::vector<Dato> clave;
    for (const std::size_t columna : indices_.Columnas(relacion.indice)) {
        if (EsNulo(valores[columna]))
            return std::nullopt;
        clave.push_back(valores[columna]);
    }
    return clave;
}

bool RelacionesDeTabla::EstaEnLaOtra(const Relacion& relacion, const std::vector<Dato>& clave)
{
    Otra& otra = Abre(relacion.otraTabla);
    for (const IndiceLogico& indice : otra.tabla.definicion().indicesLogicos) {
        if (indice.numero == relacion.otroIndice && indice.real < otra.indices.Cuantos() &&
            otra.indices.Columnas(indice.real).size() == clave.size())
            return otra.indices.Tiene(indice.real, clave);
    }
    Danado(QStringLiteral("Una relación nombra un índice que la otra tabla no tiene"),
           {.indice = relacion.nombre});
}

/// True when a row of a table that is related to itself refers to itself.
bool RelacionesDeTabla::EsElla(const Relacion& relacion, std::span<const Dato> valores,
                               const std::vector<Dato>& clave) const
{
    if (relacion.otraTabla != tabla_.definicion().pagina)
        return false;
    for (const IndiceLogico& indice : tabla_.definicion().indicesLogicos) {
        if (indice.numero != relacion.otroIndice || indice.real >= indices_.Cuantos())
            continue;
        const auto& columnas = indices_.Columnas(indice.real);
        return std::equal(
            columnas.begin(), columnas.end(), clave.begin(), clave.end(),
            [&](std::size_t columna, const Dato& d) { return valores[columna] == d; });
    }
    return false;
}

void RelacionesDeTabla::Falla(const Relacion& relacion, const QString& frase)
{
    throw ErrorMdb(Motivo::Relacion, frase + NombreDeTabla(paginas_, relacion.otraTabla),
                   {.indice = relacion.nombre});
}

void RelacionesDeTabla::CompruebaNueva(std::span<const Dato> valores,
                                       const std::vector<bool>& cambia)
{
    for (const Relacion& relacion : relaciones_) {
        if (!relacion.esLaAjena || !Toca(relacion, cambia))
            continue;
        const auto clave = ClaveDe(relacion, valores);
        if (clave && !EsElla(relacion, valores, *clave) && !EstaEnLaOtra(relacion, *clave))
            Falla(relacion, QStringLiteral("Falta el registro relacionado de la tabla "));
    }
}

void RelacionesDeTabla::CompruebaVieja(std::span<const Dato> valores,
                                       const std::vector<bool>& cambia)
{
    for (const Relacion& relacion : relaciones_) {
        if (relacion.esLaAjena || !Toca(relacion, cambia))
            continue;
        const auto clave = ClaveDe(relacion, valores);
        if (clave && EstaEnLaOtra(relacion, *clave))
            Falla(relacion, QStringLiteral("Hay registros relacionados en la tabla "));
    }
}

} // namespace tolmo::data::access::mdb
