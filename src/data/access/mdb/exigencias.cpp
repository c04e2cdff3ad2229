#include "data/access/mdb/exigencias.h"
#include "data/access/mdb/propiedades.h"

namespace tolmo::data::access::mdb {
namespace {

void Anota(ReglaDeValores& regla, const Propiedad& propiedad)
{
    if (propiedad.nombre == propiedad::Regla)
        regla.expresion = TextoDe(propiedad).trimmed();
    else if (propiedad.nombre == propiedad::TextoRegla)
        regla.aviso = TextoDe(propiedad).trimmed();
}

void Anota(ExigenciasDeColumna& columna, const Propiedad& propiedad)
{
    if (propiedad.nombre == propiedad::Obligatoria)
        columna.obligatoria = VerdadDe(propiedad);
    else if (propiedad.nombre == propiedad::AdmiteVacio)
        columna.admiteVacio = VerdadDe(propiedad);
    else if (propiedad.nombre == propiedad::Predeterminado)
        columna.predeterminado = TextoDe(propiedad).trimmed();
    else
        Anota(columna.regla, propiedad);
}

} // namespace

ExigenciasDeTabla LeeExigencias(const std::shared_ptr<Paginas>& paginas,
                                const Definicion& definicion)
{
    ExigenciasDeTabla exigencias;
    exigencias.columnas.resize(definicion.columnas.size());
    for (const Propiedad& propiedad : PropiedadesDeTabla(paginas, definicion.pagina)) {
        if (propiedad.columna.isEmpty()) {
            Anota(exigencias.regla, propiedad);
            continue;
        }
        const Columna* columna = definicion.ColumnaDe(propiedad.columna);
        if (columna != nullptr)
            Anota(
                exigencias.columnas[static_cast<std::size_t>(columna - definicion.columnas.data())],
                propiedad);
    }
    return exigencias;
}

} // namespace tolmo::data::access::mdb
