#include "data/access/mdb/monta_tabla.h"
#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_definicion.h"

namespace tolmo::data::access::mdb {
namespace {

constexpr qsizetype TamMapa = 69;
constexpr quint8 IndiceUnico = 0x01;
constexpr quint8 IndiceSinNulos = 0x02;
constexpr quint8 IndiceObligatorio = 0x08;
constexpr quint8 IndiceDeJet4 = 0x80;

} // namespace

Puntero PaginasDeMapas::Nuevo()
{
    const bool cabe =
        pagina_ != 0 &&
        SitioDe(LeePaginaDatos(paginas_, pagina_)).Cabe(static_cast<std::size_t>(TamMapa));
    if (!cabe) {
        pagina_ = PidePagina(paginas_, {});
        EdicionDatos::Estrena(paginas_, pagina_, 0);
    }
    EdicionDatos edicion(paginas_, pagina_);
    edicion.Compacta();
    return {.pagina = pagina_, .fila = edicion.AnadeFila(QByteArray(TamMapa, '\0'))};
}

IndiceLogico LogicoDe(const NuevoIndice& indice)
{
    return {.nombre = indice.nombre,
            .clase = indice.primario ? ClaseIndice::Primario : ClaseIndice::Normal};
}

IndiceReal MontaIndice(PaginasEscribibles& paginas, const Definicion& definicion,
                       const NuevoIndice& indice, PaginasDeMapas& mapas)
{
    IndiceReal real{.mapa = mapas.Nuevo(), .marcas = IndiceDeJet4};
    if (indice.primario || indice.unico)
        real.marcas |= IndiceUnico;
    if (indice.obligatorio)
        real.marcas |= IndiceObligatorio;
    if (indice.sinNulos)
        real.marcas |= IndiceSinNulos;
    for (const NuevoIndice::Parte& parte : indice.columnas) {
        const Columna* columna = definicion.ColumnaDe(parte.columna);
        if (columna == nullptr)
            throw ErrorMdb(Motivo::NoHallado,
                           QStringLiteral("La tabla no tiene la columna ") + parte.columna,
                           {.indice = indice.nombre});
        real.columnas.push_back({.numero = columna->numero, .descendente = parte.descendente});
    }
    real.raiz = PidePagina(paginas, real.mapa);
    ArbolIndice::EscribeRaizVacia(paginas, definicion.pagina, real.raiz);
    return real;
}

void MontaTabla(PaginasEscribibles& paginas, Definicion definicion,
                const std::vector<NuevoIndice>& indices, PaginasDeMapas& mapas)
{
    Coloca(definicion);
    definicion.paginasPropias = mapas.Nuevo();
    definicion.paginasLibres = mapas.Nuevo();
    for (Columna& columna : definicion.columnas) {
        if (!columna.Larga())
            continue;
        columna.paginasLargas = mapas.Nuevo();
        columna.paginasLargasLibres = mapas.Nuevo();
    }
    PartesDefinicion partes = EscribeDefinicion(definicion);
    for (const NuevoIndice& indice : indices)
        AnadeIndice(partes, MontaIndice(paginas, definicion, indice, mapas), LogicoDe(indice));
    GuardaDefinicion(paginas, {definicion.pagina}, partes);
}

} // namespace tolmo::data::access::mdb
