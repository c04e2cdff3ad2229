#include "data/access/mdb/indice.h"
#include "data/access/mdb/errores_mdb.h"
#include <algorithm>

namespace tolmo::data::access::mdb {

PaginaIndice LeePaginaIndice(const Tabla& tabla, quint32 numero)
{
    return EnLugar(
        [&] { return tabla.En(numero); },
        [&] { return LeePaginaIndice(tabla.paginas(), tabla.definicion().pagina, numero); });
}

RecorridoIndice::RecorridoIndice(const Tabla& tabla, const IndiceReal& indice)
    : tabla_(tabla), indice_(indice)
{
}

/// Each page is read once on a walk; a second time means a ring.
PaginaIndice RecorridoIndice::Lee(quint32 numero)
{
    PaginaIndice pagina = LeePaginaIndice(tabla_, numero);
    if (!visitadas_.insert(numero).second)
        Danado(QStringLiteral("Las páginas de un índice forman un anillo"), tabla_.En(numero));
    return pagina;
}

void RecorridoIndice::VeAHoja(PaginaIndice hoja)
{
    if (hoja.EsNodo())
        Danado(QStringLiteral("Entre las hojas de un índice hay un nodo"),
               tabla_.En(hoja.Numero()));
    hoja_ = std::move(hoja);
    proxima_ = 0;
}

void RecorridoIndice::Busca(std::span<const quint8> bytes)
{
    visitadas_.clear();
    PaginaIndice pagina = Lee(indice_.raiz);
    while (pagina.EsNodo()) {
        const std::size_t lugar = pagina.Busca(bytes);
        pagina = Lee(lugar < pagina.Entradas() ? pagina.En(lugar).Hijo() : pagina.Cola());
    }
    VeAHoja(std::move(pagina));
    proxima_ = hoja_->Busca(bytes);
}

bool RecorridoIndice::Siguiente()
{
    if (!hoja_)
        Busca({});
    while (proxima_ >= hoja_->Entradas()) {
        if (hoja_->Siguiente() == 0)
            return false;
        VeAHoja(Lee(hoja_->Siguiente()));
    }
    entrada_ = EnLugar([this] { return tabla_.En(hoja_->Numero()); },
                       [this] { return hoja_->En(proxima_); });
    ++proxima_;
    return true;
}

std::vector<Puntero> FilasConClave(const Tabla& tabla, const IndiceReal& indice,
                                   std::span<const quint8> bytes)
{
    std::vector<Puntero> filas;
    RecorridoIndice recorrido(tabla, indice);
    recorrido.Busca(bytes);
    while (recorrido.Siguiente()) {
        const auto clave = recorrido.entrada().Clave();
        if (clave.size() < bytes.size() || !Iguales(clave.first(bytes.size()), bytes))
            break;
        filas.push_back(recorrido.entrada().Fila());
    }
    return filas;
}

} // namespace tolmo::data::access::mdb
