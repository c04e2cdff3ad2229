#include "data/access/mdb/suelta_mapas.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/mapa.h"

namespace tolmo::data::access::mdb {

void SueltaTodas(PaginasEscribibles& paginas, Puntero mapa)
{
    for (const quint32 pagina : PaginasEnUso(paginas, mapa))
        SueltaPagina(paginas, pagina, mapa);
}

void SueltaMapas(PaginasEscribibles& paginas, const std::vector<Puntero>& mapas)
{
    for (const Puntero mapa : mapas) {
        if (mapa.Nulo())
            continue;
        for (const quint32 pagina : LeeMapa(paginas, mapa).deBits)
            SueltaPagina(paginas, pagina, {});
        EdicionDatos(paginas, mapa.pagina).BorraFila(mapa.fila);
        if (SitioDe(LeePaginaDatos(paginas, mapa.pagina)).vivas == 0)
            SueltaPagina(paginas, mapa.pagina, {});
    }
}

} // namespace tolmo::data::access::mdb
