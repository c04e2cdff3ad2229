#pragma once
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageWriter>
#include <QtEndian>

/// Picture files, as bytes.
namespace fotos {

inline QByteArray Big(quint16 valor)
{
    QByteArray bytes(2, 0);
    qToBigEndian(valor, bytes.data());
    return bytes;
}

inline QByteArray Big(quint32 valor)
{
    QByteArray bytes(4, 0);
    qToBigEndian(valor, bytes.data());
    return bytes;
}

inline QByteArray DeUnColor(const QSize& tamano, QColor color, const char* formato)
{
    QImage imagen(tamano, QImage::Format_RGB32);
    imagen.fill(color);
    QByteArray bytes;
    QBuffer destino(&bytes);
    QImageWriter(&destino, formato).write(imagen);
    return bytes;
}

/// The left half is red and the right one blue.
inline QByteArray RojaYAzul(const QSize& tamano, const char* formato, bool progresiva = false)
{
    QImage imagen(tamano, QImage::Format_RGB32);
    imagen.fill(Qt::red);
    for (int y = 0; y < tamano.height(); ++y)
        for (int x = tamano.width() / 2; x < tamano.width(); ++x)
            imagen.setPixelColor(x, y, Qt::blue);
    QByteArray bytes;
    QBuffer destino(&bytes);
    QImageWriter escritor(&destino, formato);
    escritor.setProgressiveScanWrite(progresiva);
    escritor.write(imagen);
    return bytes;
}

/// A JPEG with a note of the camera: which way it was held (1 to 8, as EXIF counts).
inline QByteArray ConOrientacion(const QByteArray& jpeg, quint16 orientacion)
{
    const QByteArray entrada = Big(quint16(0x0112)) + Big(quint16(3)) + Big(quint32(1)) +
                               Big(orientacion) + Big(quint16(0));
    const QByteArray exif = QByteArray("Exif\0\0MM\0*", 10) + Big(quint32(8)) + Big(quint16(1)) +
                            entrada + Big(quint32(0));
    const QByteArray segmento = QByteArray("\xFF\xE1") + Big(quint16(exif.size() + 2)) + exif;
    return jpeg.left(2) + segmento + jpeg.mid(2);
}

inline QByteArray Segmento(int marca, const QByteArray& datos)
{
    return QByteArray(1, '\xFF') + static_cast<char>(marca) + Big(quint16(datos.size() + 2)) +
           datos;
}

/// A grey JPEG of any size in few bytes: the one bit of each code says "as before" and the next
/// one "nothing more in this block". `marco` is 0xC0 for a plain one, 0xC2 for a progressive one.
inline QByteArray JpegGris(quint16 ancho, quint16 alto, int marco = 0xC0, int componentes = 1)
{
    const auto tabla = [](int clase) {
        return static_cast<char>(clase << 4) + QByteArray(1, 1) + QByteArray(15, 0) +
               QByteArray(1, 0);
    };
    QByteArray cabecera =
        QByteArray(1, 8) + Big(alto) + Big(ancho) + static_cast<char>(componentes);
    QByteArray barrido(1, static_cast<char>(componentes));
    for (char i = 1; i <= componentes; ++i) {
        cabecera += QByteArray(1, i) + '\x11' + '\0';
        barrido += QByteArray(1, i) + '\0';
    }
    const bool progresivo = marco == 0xC2;
    barrido += QByteArray(1, 0) + static_cast<char>(progresivo ? 0 : 63) + '\0';
    const qint64 bloques = qint64((ancho + 7) / 8) * ((alto + 7) / 8) * componentes;
    const qint64 bits = bloques * (progresivo ? 1 : 2);
    return QByteArray("\xFF\xD8") + Segmento(0xDB, QByteArray(1, 0) + QByteArray(64, 1)) +
           Segmento(marco, cabecera) + Segmento(0xC4, tabla(0)) + Segmento(0xC4, tabla(1)) +
           Segmento(0xDA, barrido) + QByteArray((bits + 7) / 8, 0) + QByteArray("\xFF\xD9");
}

inline quint32 Crc(const QByteArray& bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xEDB88320 : 0);
    }
    return crc ^ 0xFFFFFFFF;
}

inline QByteArray TrozoPng(const QByteArray& tipo, const QByteArray& datos)
{
    return Big(quint32(datos.size())) + tipo + datos + Big(Crc(tipo + datos));
}

inline QByteArray CabeceraPng(quint32 ancho, quint32 alto, char bits, char color, char entrelazado)
{
    return QByteArray("\x89PNG\r\n\x1A\n") +
           TrozoPng("IHDR", Big(ancho) + Big(alto) + bits + color + '\0' + '\0' + entrelazado);
}

/// A black PNG of full colour, or grey.
inline QByteArray PngNegro(quint32 ancho, quint32 alto, bool gris = false)
{
    const QByteArray filas((qsizetype(ancho) * (gris ? 1 : 3) + 1) * qsizetype(alto), 0);
    return CabeceraPng(ancho, alto, 8, gris ? 0 : 2, 0) +
           TrozoPng("IDAT", qCompress(filas, 1).mid(4)) + TrozoPng("IEND", {});
}

/// The head of a BMP of 24 bits, with none of its rows.
inline QByteArray CabeceraBmp(qint32 ancho, qint32 alto)
{
    QByteArray bytes(54, 0);
    bytes.replace(0, 2, "BM");
    qToLittleEndian<quint32>(54, bytes.data() + 10);
    qToLittleEndian<quint32>(40, bytes.data() + 14);
    qToLittleEndian<qint32>(ancho, bytes.data() + 18);
    qToLittleEndian<qint32>(alto, bytes.data() + 22);
    qToLittleEndian<quint16>(1, bytes.data() + 26);
    qToLittleEndian<quint16>(24, bytes.data() + 28);
    return bytes;
}

} // namespace fotos
