#pragma once
#include "apoyo/forma_de_base.h"
#include "data/access/access.h"
#include "data/access/mdb/base_nueva.h"

/// Makes an empty management database, "gestion" of the folder for instance, in the form of the
/// tests.
inline void CreaBase(const QString& base)
{
    if (EnFicherosDeAccess())
        tolmo::data::access::mdb::CreaBase(FicheroDeBase(base));
    else
        tolmo::data::CreaBaseEmbebida(FicheroDeBase(base));
}

/// A connection of its own to it.
inline std::unique_ptr<tolmo::data::Proveedor> AbreBase(const QString& base)
{
    return tolmo::data::AbreAccess(CadenaDeBase(base));
}
