#include "data/access/mdb/texto.h"
#include "data/codificacion.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

QString Utf16(Bytes bytes)
{
    QString texto(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    qFromLittleEndian<char16_t>(bytes.data(), texto.size(), texto.data());
    return texto;
}

QString Latin1(Bytes bytes)
{
    return QString::fromLatin1(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<qsizetype>(bytes.size()));
}

bool Comprimido(Bytes bytes)
{
    return bytes.size() >= 2 && bytes.data()[0] == 0xFF && bytes.data()[1] == 0xFE;
}

/// One byte to a character (Latin-1, not Windows-1252); a byte 0 changes to two bytes to a
/// character, the next one back.
QString Descomprime(Bytes bytes)
{
    QString texto;
    bool sencillo = true;
    while (bytes.size() > 0) {
        const auto todo = bytes.Todo();
        const auto cero = std::find(todo.begin(), todo.end(), quint8{0});
        const auto largo = static_cast<std::size_t>(cero - todo.begin());
        const Bytes trozo = bytes.Trozo(0, largo);
        texto += sencillo ? Latin1(trozo) : Utf16(trozo);
        sencillo = !sencillo;
        bytes = bytes.Desde(std::min(largo + 1, bytes.size()));
    }
    return texto;
}

} // namespace

QString LeeTexto(Bytes bytes, const Formato& formato)
{
    if (formato.EsJet3() || !Comprimido(bytes))
        return TextoSinComprimir(bytes, formato);
    return Descomprime(bytes.Desde(2));
}

QString TextoSinComprimir(Bytes bytes, const Formato& formato)
{
    if (formato.EsJet3())
        return DesdeWindows1252(QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                           static_cast<qsizetype>(bytes.size())));
    return Utf16(bytes);
}

} // namespace tolmo::data::access::mdb
