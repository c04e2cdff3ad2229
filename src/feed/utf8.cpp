#include "feed/utf8.h"
#include "data/codificacion.h"
#include "data/errores.h"
#include "data/plantilla.h"
#include "data/rutas.h"
#include <QFile>
#include <QSaveFile>

namespace tolmo::feed {
namespace {

// clang-format off
constexpr data::Plantilla NoSeLee(u"No se puede leer el fichero {ruta}. Compruebe que la carpeta existe y que se puede escribir en ella.");
constexpr data::Plantilla NoSeEscribe(u"No se puede escribir el fichero {ruta}.");
constexpr data::Plantilla NoSeSustituye(u"No se puede sustituir el fichero {ruta}. El documento en UTF-8 queda en {ruta}1.");
// clang-format on

const QByteArray MarcaUtf8 = QByteArrayLiteral("\xEF\xBB\xBF");

} // namespace

void UTF8(const QString& origen, const QString& destino)
{
    QFile entrada(data::RutaLocal(origen));
    // The writers are silent, so a folder that isn't there or a full disk shows only here.
    if (!entrada.open(QIODevice::ReadOnly) || entrada.size() == 0)
        throw data::ErrorFichero(NoSeLee({{"ruta", origen}}));
    const QByteArray bytes = MarcaUtf8 + data::DesdeWindows1252(entrada.readAll()).toUtf8();
    QSaveFile salida(data::RutaLocal(destino));
    if (!salida.open(QIODevice::WriteOnly) || salida.write(bytes) != bytes.size() ||
        !salida.commit())
        throw data::ErrorFichero(NoSeEscribe({{"ruta", destino}}));
}

void PasaAUtf8(const QString& ruta)
{
    const QString convertido = ruta + u'1';
    UTF8(ruta, convertido);
    const QString local = data::RutaLocal(ruta);
    if (!QFile::remove(local) || !QFile::rename(data::RutaLocal(convertido), local))
        throw data::ErrorFichero(NoSeSustituye({{"ruta", ruta}}));
}

} // namespace tolmo::feed
