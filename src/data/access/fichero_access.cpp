#include "data/access/fichero_access.h"

namespace tolmo::data::access {

FicheroAccess::FicheroAccess(const QString& ruta) : base_(std::make_unique<mdb::Base>(ruta)) {}

bool FicheroAccess::Refresca()
{
    return false;
}

QString FicheroAccess::TextoDeConsulta(const QString& nombre) const
{
    try {
        return base_->SqlDeConsulta(nombre);
    } catch (const mdb::ErrorMdb&) {
        return {}; // an action, or one whose rows aren't to be understood
    }
}

} // namespace tolmo::data::access
