#pragma once
#include "data/access/mdb/bytes.h"
#include "data/access/mdb/formato.h"
#include <QString>

namespace tolmo::data::access::mdb {

/// What the first page of a file tells.
struct Cabecera {
    Version version = Version::Jet4;
    quint16 paginaDeCodigos = 0; ///< of the texts of Access 97
    quint32 clave = 0;           ///< not 0: the pages are encoded
    QString contrasena{};
    quint16 idioma = 0; ///< default sort order
    quint8 versionOrden = 0;
    double creacion = 0; ///< days since 30/12/1899
};

/// Bytes that have to be at hand to read a header of any version.
constexpr std::size_t TamCabecera = 0x98;

/// \throws ErrorMdb when the bytes don't start an Access file, or one of an unknown version
Cabecera LeeCabecera(Bytes pagina);

/// Writes the first page of a new file of Access 2000-2003, without a password, over zeros.
void EscribeCabecera(std::span<quint8> pagina, const Cabecera& cabecera);

} // namespace tolmo::data::access::mdb
