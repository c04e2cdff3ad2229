#include "data/access/mdb/texto.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/codificacion.h"
#include <algorithm>
#include <optional>

namespace tolmo::data::access::mdb {
namespace {

QString Utf16(Bytes bytes)
{
    QString texto(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    // No bytes may mean no address, which a copy of nothing may not be given either.
    if (!texto.isEmpty())
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

constexpr char16_t Marca = u'\uFEFF'; ///< as the two bytes in front of a compressed text
// Longer ones are memos, which Access doesn't compress.
constexpr qsizetype MasComprimidos = 1024;
constexpr qsizetype MenosComprimidos = 3;

bool DeUnByte(QChar caracter)
{
    return caracter.unicode() >= 0x01 && caracter.unicode() <= 0xFF;
}

QByteArray Llano(const QString& texto)
{
    QByteArray bytes(2 * texto.size(), Qt::Uninitialized);
    qToLittleEndian<char16_t>(texto.utf16(), texto.size(), bytes.data());
    return bytes;
}

/// Nothing when a character has a byte 0, which would change to the other form.
std::optional<QByteArray> Comprime(const QString& texto)
{
    QByteArray bytes("\xFF\xFE");
    bool sencillo = true;
    for (const QChar caracter : texto) {
        if (DeUnByte(caracter) != sencillo) {
            bytes += '\0';
            sencillo = !sencillo;
        }
        if (!sencillo && (caracter.cell() == 0 || caracter.row() == 0))
            return std::nullopt;
        bytes += static_cast<char>(caracter.cell());
        if (!sencillo)
            bytes += static_cast<char>(caracter.row());
    }
    return bytes;
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

QByteArray EscribeTexto(const QString& texto, bool comprime)
{
    // Such a text would be taken for a compressed one.
    const bool sinRemedio = texto.startsWith(QChar(Marca));
    const bool conviene =
        comprime && texto.size() >= MenosComprimidos && texto.size() <= MasComprimidos;
    if (!sinRemedio && !conviene)
        return Llano(texto);
    const std::optional<QByteArray> comprimido = Comprime(texto);
    if (comprimido && (sinRemedio || comprimido->size() < 2 * texto.size()))
        return *comprimido;
    if (sinRemedio)
        throw ErrorMdb(Motivo::Valor, QStringLiteral("El texto no se puede guardar: empieza por el "
                                                     "carácter U+FEFF"));
    return Llano(texto);
}

} // namespace tolmo::data::access::mdb
