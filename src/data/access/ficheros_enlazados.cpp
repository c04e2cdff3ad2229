#include "data/access/ficheros_enlazados.h"
#include "data/access/mdb/errores_mdb.h"
#include <QFileInfo>
#include <QRegularExpression>

namespace tolmo::data::access {
namespace {

/// The same for all paths that lead to a file.
QString Llave(const QString& ruta)
{
    const QString limpia = QFileInfo(ruta).canonicalFilePath();
    return limpia.isEmpty() ? ruta : limpia;
}

} // namespace

QString FicheroDeConexion(const QString& texto)
{
    static const QRegularExpression forma(
        QStringLiteral("^\\s*(?:MS Access\\s*)?;(?:.*;)?\\s*DATABASE\\s*=\\s*([^;]*)"),
        QRegularExpression::CaseInsensitiveOption);
    const auto partes = forma.match(texto);
    if (partes.hasMatch())
        return partes.captured(1).trimmed();
    return texto.contains(u';') ? QString() : texto;
}

FicherosEnlazados::FicherosEnlazados(std::shared_ptr<mdb::TransaccionPaginas> propias)
    : propias_(std::move(propias))
{
}

std::shared_ptr<mdb::Paginas> FicherosEnlazados::Abre(const QString& ruta)
{
    const QString llave = Llave(ruta);
    if (llave == Llave(propias_->Nombre()))
        return propias_;
    auto& fichero = abiertos_[llave];
    if (fichero)
        return fichero;
    try {
        fichero = std::make_shared<mdb::TransaccionPaginas>(ruta);
        if (lecturas_ > 0) {
            fichero->EmpiezaLectura();
            leyendo_.push_back(fichero);
        }
        return fichero;
    } catch (const mdb::ErrorMdb&) {
        abiertos_.erase(llave);
        throw;
    }
}

bool FicherosEnlazados::EmpiezaLectura()
{
    if (lecturas_++ > 0)
        return false;
    bool cambiado = false;
    for (auto it = abiertos_.begin(); it != abiertos_.end();) {
        try {
            cambiado = it->second->EmpiezaLectura() || cambiado;
            leyendo_.push_back(it->second);
            ++it;
        } catch (const mdb::ErrorMdb&) {
            cambiado = true;
            it = abiertos_.erase(it);
        }
    }
    return cambiado;
}

void FicherosEnlazados::AcabaLectura()
{
    if (--lecturas_ > 0)
        return;
    for (const auto& fichero : leyendo_)
        fichero->AcabaLectura();
    leyendo_.clear();
}

} // namespace tolmo::data::access
