#include "data/access/mdb/bytes.h"
#include "data/access/mdb/errores_mdb.h"

namespace tolmo::data::access::mdb {

void FueraDeLosBytes()
{
    Danado(QStringLiteral("Un dato apunta fuera del espacio que lo contiene"));
}

} // namespace tolmo::data::access::mdb
