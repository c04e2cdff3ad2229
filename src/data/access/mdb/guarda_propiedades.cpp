#include "data/access/mdb/guarda_propiedades.h"
#include "data/access/mdb/tabla_escribible.h"
#include <QDateTime>

namespace tolmo::data::access::mdb {

void GuardaPropiedades(const std::shared_ptr<PaginasEscribibles>& paginas, const Objeto& objeto,
                       const std::vector<Propiedad>& propiedades)
{
    const Tabla objetos(
        paginas, std::make_shared<const Definicion>(LeeDefinicion(*paginas, Catalogo::PaginaObjetos,
                                                                  QStringLiteral("MSysObjects"))));
    const auto lugar = [&](const char* columna) {
        return static_cast<std::size_t>(&objetos[QString::fromLatin1(columna)] -
                                        objetos.definicion().columnas.data());
    };
    const QByteArray bytes = EscribePropiedades(propiedades);
    const TablaEscribible::Cambio cambios[] = {
        {.columna = lugar("LvProp"), .valor = bytes.isEmpty() ? Dato() : Dato(bytes)},
        {.columna = lugar("DateUpdate"), .valor = FechaDe(QDateTime::currentDateTime())}};
    TablaEscribible(paginas, objetos, TablaEscribible::Clase::DeSistema)
        .Actualiza(objeto.fila, cambios);
}

} // namespace tolmo::data::access::mdb
