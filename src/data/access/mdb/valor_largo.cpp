#include "data/access/mdb/valor_largo.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/pagina_datos.h"
#include <algorithm>
#include <set>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint32 MascaraLargo = 0x3FFFFFFF;
constexpr std::size_t PunteroDePieza = 4;

void Anade(QByteArray& valor, Bytes trozo, std::size_t largo)
{
    const std::size_t faltan = largo - static_cast<std::size_t>(valor.size());
    valor.append(reinterpret_cast<const char*>(trozo.data()),
                 static_cast<qsizetype>(std::min(trozo.size(), faltan)));
}

/// The page of a piece: pages of long values belong to no table.
PaginaDatos PaginaDePieza(Paginas& paginas, Puntero pieza)
{
    PaginaDatos pagina = LeePaginaDatos(paginas, pieza.pagina);
    if (pagina.Duenio() != DuenioLargo)
        Danado(QStringLiteral("Un valor largo apunta a una página que no es de valores largos"),
               {.pagina = pieza.pagina});
    return pagina;
}

QByteArray Encadena(Paginas& paginas, Puntero pieza, std::size_t largo)
{
    QByteArray valor;
    std::set<Puntero> visitadas;
    while (static_cast<std::size_t>(valor.size()) < largo) {
        if (pieza.Nulo() || !visitadas.insert(pieza).second)
            Danado(QStringLiteral("A un valor largo le falta el final"));
        const PaginaDatos pagina = PaginaDePieza(paginas, pieza);
        const Bytes fila = pagina.Contenido(pieza.fila);
        Anade(valor, fila.Desde(PunteroDePieza), largo);
        pieza = Puntero::De(fila.U32(0));
    }
    return valor;
}

} // namespace

CabeceraLarga LeeCabeceraLarga(Bytes enLaFila)
{
    const quint32 numero = enLaFila.U32(0);
    CabeceraLarga cabecera{.largo = numero & MascaraLargo, .primera = Puntero::De(enLaFila.U32(4))};
    switch (numero >> 30) {
    case 0:
        cabecera.forma = CabeceraLarga::Forma::Encadenada;
        break;
    case 1:
        cabecera.forma = CabeceraLarga::Forma::Sencilla;
        break;
    case 2:
        cabecera.forma = CabeceraLarga::Forma::EnLaFila;
        break;
    default:
        Danado(QStringLiteral("Un valor largo tiene una forma desconocida"));
    }
    return cabecera;
}

QByteArray LeeValorLargo(Paginas& paginas, Bytes enLaFila, std::size_t limite)
{
    const CabeceraLarga cabecera = LeeCabeceraLarga(enLaFila);
    const std::size_t largo = std::min<std::size_t>(cabecera.largo, limite);
    if (cabecera.forma == CabeceraLarga::Forma::Encadenada)
        return Encadena(paginas, cabecera.primera, largo);
    QByteArray valor;
    if (cabecera.forma == CabeceraLarga::Forma::EnLaFila) {
        Anade(valor, enLaFila.Desde(TamCabeceraLarga), largo);
    } else {
        const PaginaDatos pagina = PaginaDePieza(paginas, cabecera.primera);
        Anade(valor, pagina.Contenido(cabecera.primera.fila), largo);
    }
    if (static_cast<std::size_t>(valor.size()) < largo)
        Danado(QStringLiteral("Un valor largo es más corto de lo que dice"));
    return valor;
}

} // namespace tolmo::data::access::mdb
