#include "data/access/mdb/fila.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/texto.h"
#include "data/access/mdb/valor_largo.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t PorSalto = 256;
constexpr quint8 SignoNegativo = 0x80;

QByteArray Copia(Bytes bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

Guid LeeGuid(Bytes crudo)
{
    Guid guid;
    const auto bytes = crudo.Trozo(0, guid.bytes.size()).Todo();
    std::copy(bytes.begin(), bytes.end(), guid.bytes.begin());
    return guid;
}

Numerico LeeNumerico(const Columna& columna, Bytes crudo)
{
    Numerico numero{.escala = columna.escala, .negativo = (crudo.U8(0) & SignoNegativo) != 0};
    for (std::size_t i = 0; i < numero.palabras.size(); ++i)
        numero.palabras[i] = crudo.U32(1 + 4 * i);
    return numero;
}

QString LeeTextoFijo(Bytes crudo, const Formato& formato)
{
    QString texto = LeeTexto(crudo, formato);
    while (texto.endsWith(QChar(0)))
        texto.chop(1);
    return texto;
}

/// Bytes of a value whose type tells them; 0 where the column does.
std::size_t AnchoDeTipo(TipoColumna tipo)
{
    switch (tipo) {
    case TipoColumna::Byte:
        return 1;
    case TipoColumna::Entero:
        return 2;
    case TipoColumna::Largo:
    case TipoColumna::Simple:
    case TipoColumna::Complejo:
        return 4;
    case TipoColumna::Moneda:
    case TipoColumna::Doble:
    case TipoColumna::Fecha:
    case TipoColumna::Grande:
        return 8;
    case TipoColumna::Guid:
        return 16;
    case TipoColumna::Numerico:
        return 17;
    default:
        return 0;
    }
}

} // namespace

Dato LeeDato(const Columna& columna, Bytes crudo, const Formato& formato)
{
    switch (columna.tipo) {
    case TipoColumna::Byte:
        return qint64{crudo.U8(0)};
    case TipoColumna::Entero:
        return qint64{crudo.I16(0)};
    case TipoColumna::Largo:
    case TipoColumna::Complejo:
        return qint64{crudo.I32(0)};
    case TipoColumna::Grande:
        return crudo.I64(0);
    case TipoColumna::Moneda:
        return Moneda{crudo.I64(0)};
    case TipoColumna::Simple:
        return crudo.F32(0);
    case TipoColumna::Doble:
        return crudo.F64(0);
    case TipoColumna::Fecha:
        return Fecha{crudo.F64(0)};
    case TipoColumna::Guid:
        return LeeGuid(crudo);
    case TipoColumna::Numerico:
        return LeeNumerico(columna, crudo);
    case TipoColumna::Texto:
        return columna.Fija() ? LeeTextoFijo(crudo, formato) : LeeTexto(crudo, formato);
    case TipoColumna::Binario:
    case TipoColumna::BinarioFijo:
    case TipoColumna::FechaExtendida:
        return Copia(crudo);
    default:
        throw ErrorMdb(Motivo::NoAdmitido, QStringLiteral("El tipo %1 de una columna no se admite")
                                               .arg(static_cast<int>(columna.tipo)));
    }
}

Fila::Fila(const Definicion& definicion, Paginas& paginas, Pagina pagina, Bytes bytes)
    : definicion_(&definicion), formato_(&paginas.formato()), paginas_(&paginas),
      pagina_(std::move(pagina)), bytes_(bytes), columnas_(Contador(0))
{
    const std::size_t tamMascara = (columnas_ + 7) / 8;
    if (formato_->anchoContador + tamMascara > bytes_.size())
        FueraDeLosBytes();
    mascara_ = bytes_.size() - tamMascara;
    if (definicion.ranuras > 0)
        LeeRanuras();
}

/// The table of the variable columns, which is read from its end.
void Fila::LeeRanuras()
{
    const std::size_t ancho = formato_->anchoContador;
    // Offsets of one byte don't reach far: every 256 bytes of the row have a mark that tells the
    // first slot behind them.
    const std::size_t saltos = formato_->EsJet3() ? (bytes_.size() - 1) / PorSalto : 0;
    if (mascara_ < 2 * ancho + saltos)
        FueraDeLosBytes();
    ranuras_ = Contador(mascara_ - ancho);
    tablaRanuras_ = mascara_ - 2 * ancho - saltos;
    if (tablaRanuras_ < ancho * (ranuras_ + 1))
        FueraDeLosBytes();
    saltos_ = saltos;
}

std::size_t Fila::Contador(std::size_t posicion) const
{
    return formato_->anchoContador == 1 ? bytes_.U8(posicion) : bytes_.U16(posicion);
}

/// Where slot `ranura` starts; for the number of slots, where the last one ends.
std::size_t Fila::FinDeRanura(std::size_t ranura) const
{
    std::size_t posicion = Contador(tablaRanuras_ - ranura * formato_->anchoContador);
    for (std::size_t i = 0; i < saltos_; ++i) {
        if (ranura >= bytes_.U8(tablaRanuras_ + saltos_ - i))
            posicion += PorSalto;
    }
    return posicion;
}

bool Fila::TieneValor(const Columna& columna) const
{
    return columna.numero < columnas_ &&
           (bytes_.U8(mascara_ + columna.numero / 8) >> columna.numero % 8 & 1) != 0;
}

std::size_t AnchoFijo(const Columna& columna)
{
    if (columna.tipo == TipoColumna::Logico)
        return 0;
    const std::size_t propio = AnchoDeTipo(columna.tipo);
    return propio != 0 ? propio : columna.largo;
}

std::optional<Bytes> Fila::Crudo(const Columna& columna) const
{
    if (columna.tipo == TipoColumna::Logico || !TieneValor(columna))
        return std::nullopt;
    if (columna.Fija())
        return bytes_.Trozo(formato_->anchoContador + columna.desplazamiento, AnchoFijo(columna));
    // A row older than the column has no slot for it.
    if (columna.ranura >= ranuras_)
        return std::nullopt;
    const std::size_t principio = FinDeRanura(columna.ranura);
    const std::size_t fin = FinDeRanura(columna.ranura + 1U);
    if (fin < principio)
        FueraDeLosBytes();
    return bytes_.Trozo(principio, fin - principio);
}

std::size_t Fila::FinDeFijas() const
{
    const std::size_t fin = definicion_->ranuras > 0 ? FinDeRanura(0) : mascara_;
    return fin - std::min(fin, formato_->anchoContador);
}

Dato Fila::LeeValor(const Columna& columna, Bytes crudo) const
{
    if (!columna.Larga())
        return LeeDato(columna, crudo, *formato_);
    const QByteArray largo = LeeValorLargo(*paginas_, crudo);
    if (columna.tipo == TipoColumna::Ole)
        return largo;
    return LeeTexto(Bytes({reinterpret_cast<const quint8*>(largo.data()),
                           static_cast<std::size_t>(largo.size())}),
                    *formato_);
}

Dato Fila::Lee(const Columna& columna) const
{
    if (columna.tipo == TipoColumna::Logico)
        return TieneValor(columna);
    return EnLugar(
        [&] {
            return Lugar{.fichero = paginas_->Nombre(),
                         .tabla = definicion_->nombre,
                         .columna = columna.nombre,
                         .pagina = pagina_.numero};
        },
        [&]() -> Dato {
            const std::optional<Bytes> crudo = Crudo(columna);
            return crudo ? LeeValor(columna, *crudo) : Dato{};
        });
}

} // namespace tolmo::data::access::mdb
