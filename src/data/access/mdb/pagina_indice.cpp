#include "data/access/mdb/pagina_indice.h"
#include "data/access/mdb/errores_mdb.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t TamFila = 4;
constexpr std::size_t TamHijo = 4;
constexpr std::size_t PosicionLibres = 2;
constexpr std::size_t PosicionTabla = 4;

} // namespace

Entrada::Entrada(std::vector<quint8> bytes, bool deNodo) : bytes_(std::move(bytes))
{
    const std::size_t resto = TamFila + (deNodo ? TamHijo : 0);
    if (bytes_.size() < resto)
        FueraDeLosBytes();
    finClave_ = bytes_.size() - resto;
}

std::span<const quint8> Entrada::Clave() const
{
    return std::span(bytes_).first(finClave_);
}

std::span<const quint8> Entrada::ClaveYFila() const
{
    return std::span(bytes_).first(finClave_ + TamFila);
}

Puntero Entrada::Fila() const
{
    return Puntero::De(qFromBigEndian<quint32>(bytes_.data() + finClave_));
}

quint32 Entrada::Hijo() const
{
    return qFromBigEndian<quint32>(bytes_.data() + finClave_ + TamFila);
}

bool Antes(std::span<const quint8> a, std::span<const quint8> b)
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end());
}

bool Iguales(std::span<const quint8> a, std::span<const quint8> b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

PaginaIndice::PaginaIndice(Pagina pagina, const Formato& formato)
    : pagina_(std::move(pagina)), formato_(&formato)
{
    const quint8 tipo = pagina_.bytes.U8(0);
    esNodo_ = tipo == tipo_pagina::Nodo;
    if (!esNodo_ && tipo != tipo_pagina::Hoja)
        Danado(QStringLiteral("La página no es de un índice"), {.pagina = pagina_.numero});
    prefijo_ = pagina_.bytes.U16(formato.prefijo);
    const auto mascara = pagina_.bytes.Trozo(formato.mascara, formato.TamMascara()).Todo();
    for (std::size_t i = 0; i < mascara.size(); ++i) {
        for (unsigned bit = 0; mascara[i] >> bit != 0; ++bit) {
            if ((mascara[i] >> bit & 1) != 0)
                fines_.push_back(8 * i + bit);
        }
    }
    const bool cabe = fines_.empty() || (fines_.back() <= formato.SitioEntradas() &&
                                         fines_.front() != 0 && prefijo_ <= fines_.front());
    if (!cabe)
        Danado(QStringLiteral("Las entradas del índice no caben en su página"),
               {.pagina = pagina_.numero});
}

quint32 PaginaIndice::Tabla() const
{
    return pagina_.bytes.U32(PosicionTabla);
}

quint32 PaginaIndice::Anterior() const
{
    return pagina_.bytes.U32(formato_->anterior);
}

quint32 PaginaIndice::Siguiente() const
{
    return pagina_.bytes.U32(formato_->siguiente);
}

quint32 PaginaIndice::Cola() const
{
    return pagina_.bytes.U32(formato_->cola);
}

std::size_t PaginaIndice::Libres() const
{
    return pagina_.bytes.U16(PosicionLibres);
}

std::size_t PaginaIndice::Usados() const
{
    return fines_.empty() ? 0 : fines_.back();
}

Entrada PaginaIndice::En(std::size_t indice) const
{
    const Bytes todas = pagina_.bytes.Desde(formato_->entradas);
    std::vector<quint8> bytes;
    if (indice > 0) {
        const auto prefijo = todas.Trozo(0, prefijo_).Todo();
        bytes.assign(prefijo.begin(), prefijo.end());
    }
    const std::size_t principio = Principio(indice);
    const auto propios = todas.Trozo(principio, fines_[indice] - principio).Todo();
    bytes.insert(bytes.end(), propios.begin(), propios.end());
    return EnLugar([&] { return Lugar{.pagina = pagina_.numero}; },
                   [&] { return Entrada(std::move(bytes), esNodo_); });
}

std::size_t PaginaIndice::Busca(std::span<const quint8> bytes) const
{
    std::size_t desde = 0;
    std::size_t hasta = Entradas();
    while (desde < hasta) {
        const std::size_t medio = desde + (hasta - desde) / 2;
        if (Antes(En(medio).ClaveYFila(), bytes))
            desde = medio + 1;
        else
            hasta = medio;
    }
    return desde;
}

} // namespace tolmo::data::access::mdb
