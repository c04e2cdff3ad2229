#include "site/respuesta_ftp.h"

namespace tolmo::site {
namespace {

bool EmpiezaConCodigo(const QByteArray& linea)
{
    const auto cifra = [&linea](qsizetype p) { return linea[p] >= '0' && linea[p] <= '9'; };
    return linea.size() >= 3 && cifra(0) && cifra(1) && cifra(2);
}

} // namespace

void RespuestaFtp::Linea(QByteArray linea)
{
    while (linea.endsWith('\n') || linea.endsWith('\r'))
        linea.chop(1);
    const bool conCodigo = EmpiezaConCodigo(linea);
    const char tras = linea.size() > 3 ? linea[3] : ' ';
    pendiente_ += pendiente_.isEmpty() ? linea : "\r\n" + linea;
    if (abierta_.isEmpty() && conCodigo && tras == '-')
        abierta_ = linea.left(3);
    // Inside a longer answer only its own number with a blank behind closes it.
    if (!conCodigo || tras != ' ' || (!abierta_.isEmpty() && !linea.startsWith(abierta_)))
        return;
    codigo_ = linea.left(3).toInt();
    texto_ = pendiente_;
    pendiente_.clear();
    abierta_.clear();
}

void RespuestaFtp::Olvida()
{
    *this = {};
}

QByteArray CarpetaDeRespuesta(const QByteArray& texto)
{
    QByteArray carpeta;
    for (qsizetype p = texto.indexOf('"') + 1; p > 0 && p < texto.size(); ++p) {
        if (texto[p] != '"') {
            carpeta += texto[p];
            continue;
        }
        if (p + 1 >= texto.size() || texto[p + 1] != '"')
            return carpeta;
        carpeta += texto[++p];
    }
    return {};
}

} // namespace tolmo::site
