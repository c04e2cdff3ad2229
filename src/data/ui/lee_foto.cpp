#include "data/ui/lee_foto.h"
#include "data/rutas.h"
#include "data/ui/jpeg.h"
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMutex>
#include <QTransform>
#include <QtEndian>

namespace tolmo::data::ui {
namespace {

constexpr int PlazoMs = 20'000;
/// A picture that can't be made smaller while it is read.
constexpr qint64 MaximoDePuntos = 40'000'000;
constexpr int MaximoDeMegas = 160;
/// A JPEG that has to be held entire.
constexpr qint64 MaximoDeJpeg = 200'000'000;
/// Common ones have ten or so; each one costs a walk over the whole picture.
constexpr int MaximoDeBarridos = 100;

/// A file that comes to its end when its reader is no longer waited for, or takes too long.
class FicheroConPlazo : public QFile {
  public:
    FicheroConPlazo(const QString& ruta, std::function<bool()> sobra)
        : QFile(ruta), sobra_(std::move(sobra)), plazo_(PlazoMs)
    {
    }
    bool Cortado() const { return plazo_.hasExpired() || sobra_(); }

  protected:
    qint64 readData(char* datos, qint64 maximo) override
    {
        return Cortado() ? -1 : QFile::readData(datos, maximo);
    }

  private:
    std::function<bool()> sobra_;
    QDeadlineTimer plazo_;
};

bool JpegAdmisible(QIODevice& fichero)
{
    const auto jpeg = ExaminaJpeg(fichero);
    return jpeg && jpeg->entero && jpeg->barridos <= MaximoDeBarridos &&
           jpeg->memoria <= MaximoDeJpeg;
}

/// Whether the rows that a BMP announces are there; the packed kinds are left to the decoder.
bool BmpEntero(QIODevice& fichero)
{
    constexpr qsizetype Cabeceras = 34;
    const QByteArray cabecera = fichero.read(Cabeceras);
    if (cabecera.size() < Cabeceras)
        return false;
    const auto numero = [&cabecera](qsizetype sitio) {
        return qFromLittleEndian<qint32>(cabecera.constData() + sitio);
    };
    constexpr qint32 CabeceraAntigua = 12;
    constexpr qint32 SinComprimir = 0;
    if (numero(14) == CabeceraAntigua || numero(30) != SinComprimir)
        return true;
    const qint64 ancho = numero(18);
    const qint64 alto = std::abs(static_cast<qint64>(numero(22)));
    const qint64 bits = qFromLittleEndian<quint16>(cabecera.constData() + 28);
    const qint64 fila = (ancho * bits + 31) / 32 * 4;
    // As a division: a head that lies would make the product overflow.
    return alto == 0 || fila <= (fichero.size() - numero(10)) / alto;
}

/// Only those of full colour in eight bits, whose lines come once and in order.
bool PngReducible(QIODevice& fichero)
{
    constexpr qsizetype SitioDeBits = 24;
    constexpr char Paleta = 3;
    const QByteArray cabecera = fichero.read(SitioDeBits + 5);
    if (cabecera.size() < SitioDeBits + 5)
        return false;
    const char bits = cabecera[SitioDeBits];
    const char color = cabecera[SitioDeBits + 1];
    const char entrelazado = cabecera[SitioDeBits + 4];
    return bits == 8 && color != 0 && color != Paleta && entrelazado == 0;
}

/// What a format allows before any of it is decoded.
struct Examen {
    bool admisible = false;
    bool reducible = false; ///< it can be made smaller while it is read
};

Examen Examina(const QByteArray& formato, QIODevice& fichero)
{
    fichero.seek(0);
    Examen examen;
    if (formato == "jpeg")
        examen = {.admisible = JpegAdmisible(fichero), .reducible = true};
    else if (formato == "png")
        examen = {.admisible = true, .reducible = PngReducible(fichero)};
    else if (formato == "bmp")
        examen = {.admisible = BmpEntero(fichero)};
    else
        examen = {.admisible = formato == "gif" || formato == "tiff"};
    fichero.seek(0);
    return examen;
}

qint64 Puntos(const QSize& tamano)
{
    return static_cast<qint64>(tamano.width()) * tamano.height();
}

QSize Ajustado(const QSize& foto, const Caja& caja)
{
    const bool cabe = foto.width() <= caja.tamano.width() && foto.height() <= caja.tamano.height();
    if (cabe && !caja.ampliar)
        return foto;
    return foto.scaled(caja.tamano, Qt::KeepAspectRatio).expandedTo({1, 1});
}

/// In two steps where much goes away: the smooth one takes four bytes for each point of its source.
QImage ConTamano(const QImage& foto, const QSize& tamano)
{
    const QSize previo = tamano * 2;
    const bool mucho = foto.width() > previo.width() && foto.height() > previo.height();
    const QImage menor =
        mucho ? foto.scaled(previo, Qt::IgnoreAspectRatio, Qt::FastTransformation) : foto;
    return menor.scaled(tamano, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Turns a picture the way that the camera says.
QImage Derecha(QImage foto, QImageIOHandler::Transformations giro)
{
    foto = foto.mirrored(giro & QImageIOHandler::TransformationMirror,
                         giro & QImageIOHandler::TransformationFlip);
    if (giro & QImageIOHandler::TransformationRotate90)
        foto = foto.transformed(QTransform().rotate(90));
    return foto;
}

QImage Decodifica(FicheroConPlazo& fichero, const Caja& caja)
{
    QImageReader::setAllocationLimit(MaximoDeMegas);
    QImageReader lector(&fichero);
    lector.setDecideFormatFromContent(true);
    const QByteArray formato = lector.format();
    const Examen examen = Examina(formato, fichero);
    const QSize entera = lector.size();
    if (!examen.admisible || entera.isEmpty() ||
        (!examen.reducible && Puntos(entera) > MaximoDePuntos))
        return {};
    const auto giro = lector.transformation();
    const bool tumbada = giro & QImageIOHandler::TransformationRotate90;
    const QSize final = Ajustado(tumbada ? entera.transposed() : entera, caja);
    const QSize tamano = tumbada ? final.transposed() : final;
    if (examen.reducible && Puntos(tamano) < Puntos(entera))
        lector.setScaledSize(tamano);
    const QImage foto = lector.read();
    return foto.isNull() || fichero.Cortado() ? QImage() : Derecha(ConTamano(foto, tamano), giro);
}

} // namespace

QImage LeeFoto(const QString& ruta, const Caja& caja, const std::function<bool()>& sobra)
{
    // Nothing else is opened: a pipe would wait for whoever writes into it.
    const QString local = RutaLocal(ruta);
    if (sobra() || !QFileInfo(local).isFile())
        return {};
    // One at a time, so that their memory doesn't add up.
    static QMutex turno;
    const QMutexLocker cerrojo(&turno);
    FicheroConPlazo fichero(local, sobra);
    return fichero.open(QIODevice::ReadOnly) ? Decodifica(fichero, caja) : QImage();
}

} // namespace tolmo::data::ui
