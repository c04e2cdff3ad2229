#include "data/access/mdb/catalogo.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

/// The columns of MSysObjects that are read.
struct Columnas {
    explicit Columnas(const Tabla& t)
        : id(t["Id"]), padre(t["ParentId"]), nombre(t["Name"]), clase(t["Type"]),
          marcas(t["Flags"]), creado(t["DateCreate"]), cambiado(t["DateUpdate"]),
          fichero(t["Database"]), conexion(t["Connect"]), nombreAjeno(t["ForeignName"])
    {
    }
    const Columna &id, &padre, &nombre, &clase, &marcas, &creado, &cambiado, &fichero, &conexion,
        &nombreAjeno;
};

Objeto LeeObjeto(const Fila& fila, const Columnas& columnas, Puntero puntero)
{
    Objeto objeto{
        .id = static_cast<qint32>(Como<qint64>(fila.Lee(columnas.id))),
        .padre = static_cast<qint32>(Como<qint64>(fila.Lee(columnas.padre))),
        .nombre = Como<QString>(fila.Lee(columnas.nombre)),
        .clase = static_cast<int>(Como<qint64>(fila.Lee(columnas.clase))),
        .marcas = static_cast<quint32>(Como<qint64>(fila.Lee(columnas.marcas))),
        .creado = Como<Fecha>(fila.Lee(columnas.creado)),
        .cambiado = Como<Fecha>(fila.Lee(columnas.cambiado)),
        .fila = puntero,
    };
    if (objeto.EsEnlace()) {
        objeto.fichero = Como<QString>(fila.Lee(columnas.fichero));
        objeto.conexion = Como<QString>(fila.Lee(columnas.conexion));
        objeto.nombreAjeno = Como<QString>(fila.Lee(columnas.nombreAjeno));
    }
    return objeto;
}

bool SeLlama(const Objeto& objeto, const QString& nombre)
{
    return objeto.nombre.compare(nombre, Qt::CaseInsensitive) == 0;
}

template <typename Condicion>
const Objeto* Primero(const std::vector<Objeto>& objetos, Condicion condicion)
{
    const auto hallado = std::find_if(objetos.begin(), objetos.end(), condicion);
    return hallado == objetos.end() ? nullptr : &*hallado;
}

template <typename Condicion>
std::vector<Objeto> PorNombre(const std::vector<Objeto>& objetos, Condicion condicion)
{
    std::vector<Objeto> elegidos;
    std::copy_if(objetos.begin(), objetos.end(), std::back_inserter(elegidos), condicion);
    std::sort(elegidos.begin(), elegidos.end(), [](const Objeto& a, const Objeto& b) {
        return a.nombre.compare(b.nombre, Qt::CaseInsensitive) < 0;
    });
    return elegidos;
}

} // namespace

bool Objeto::EsTabla() const
{
    return clase == clase_objeto::TablaLocal || EsEnlace();
}

bool Objeto::EsEnlace() const
{
    return clase == clase_objeto::EnlaceOdbc || clase == clase_objeto::EnlaceFichero;
}

Catalogo::Catalogo(const Tabla& objetos)
{
    const Columnas columnas(objetos);
    for (Cursor cursor(objetos); cursor.Siguiente();)
        objetos_.push_back(LeeObjeto(cursor.fila(), columnas, cursor.puntero()));
}

const Objeto* Catalogo::TablaDe(const QString& nombre) const
{
    return Primero(objetos_, [&](const Objeto& o) { return o.EsTabla() && SeLlama(o, nombre); });
}

const Objeto* Catalogo::ConsultaDe(const QString& nombre) const
{
    return Primero(objetos_, [&](const Objeto& o) { return o.EsConsulta() && SeLlama(o, nombre); });
}

std::vector<Objeto> Catalogo::TablasDeUsuario() const
{
    return PorNombre(objetos_, [](const Objeto& o) {
        return o.EsTabla() && !o.DeSistema() && !o.Oculto() && !o.Interno();
    });
}

std::vector<Objeto> Catalogo::Consultas() const
{
    return PorNombre(objetos_, [](const Objeto& o) { return o.EsConsulta() && !o.Interno(); });
}

} // namespace tolmo::data::access::mdb
