#include "site/texto_ftp.h"
#include "data/codificacion.h"
#include <QStringDecoder>

namespace tolmo::site {

QString TextoDelServidor(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString texto = utf8(bytes);
    return utf8.hasError() ? data::DesdeWindows1252(bytes) : texto;
}

} // namespace tolmo::site
