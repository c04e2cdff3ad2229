#include "data/access/mdb/consulta_guardada.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/clave.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/fila_de_sistema.h"
#include "data/access/mdb/indice.h"
#include "data/access/mdb/nombres.h"
#include "data/access/mdb/registro_objetos.h"
#include <QtEndian>
#include <algorithm>
#include <map>
#include <tuple>

namespace tolmo::data::access::mdb {
namespace {

/// The index of MSysQueries that begins with the query; a file without it is read row by row.
const IndiceReal* PorObjeto(const Tabla& consultas)
{
    const quint16 objeto = consultas["ObjectId"].numero;
    for (const IndiceReal& indice : consultas.definicion().indicesReales) {
        if (indice.columnas.front().numero == objeto)
            return &indice;
    }
    return nullptr;
}

std::vector<Puntero> FilasDe(const Tabla& consultas, qint32 id)
{
    const Columna& objeto = consultas["ObjectId"];
    if (const IndiceReal* indice = PorObjeto(consultas)) {
        const auto clave = ClaveDeValor(qint64{id}, objeto, indice->columnas.front().descendente,
                                        {.version = consultas.paginas().formato().version});
        return FilasConClave(consultas, *indice,
                             {reinterpret_cast<const quint8*>(clave->constData()),
                              static_cast<std::size_t>(clave->size())});
    }
    std::vector<Puntero> filas;
    for (Cursor cursor(consultas); cursor.Siguiente();) {
        if (cursor.fila().Lee(objeto) == Dato(qint64{id}))
            filas.push_back(cursor.puntero());
    }
    return filas;
}

const Pieza* LaDeClase(const std::vector<Pieza>& piezas)
{
    const auto hallada = std::find_if(piezas.begin(), piezas.end(), [](const Pieza& pieza) {
        return pieza.atributo == atributo::Clase;
    });
    return hallada == piezas.end() ? nullptr : &*hallada;
}

/// What the catalogue says of a query of this kind.
qint32 MarcasDe(ClaseConsulta clase)
{
    switch (clase) {
    case ClaseConsulta::Cruzada:
        return 0x10;
    case ClaseConsulta::Borrado:
        return 0x20;
    case ClaseConsulta::Actualizacion:
        return 0x30;
    case ClaseConsulta::Anexion:
        return 0x40;
    case ClaseConsulta::CreaTabla:
        return 0x50;
    case ClaseConsulta::Definicion:
        return 0x60;
    case ClaseConsulta::PasoATraves:
        return 0x70;
    case ClaseConsulta::Union:
        return 0x80;
    case ClaseConsulta::Seleccion:
        break;
    }
    return 0;
}

/// In other pieces Access leaves the mark Null.
bool LlevaMarca(int atributo)
{
    return atributo <= atributo::Opciones || atributo == atributo::Salida ||
           atributo == atributo::Enlace || atributo == atributo::Grupo;
}

Tabla AbreConsultas(const std::shared_ptr<Paginas>& paginas)
{
    return Base(paginas).AbreTabla(QStringLiteral("MSysQueries"));
}

class Guardado {
  public:
    Guardado(std::shared_ptr<PaginasEscribibles> paginas, qint32 id)
        : paginas_(std::move(paginas)), consultas_(AbreConsultas(paginas_)), id_(id)
    {
    }

    void Anade(const Pieza& pieza)
    {
        const quint32 orden = qToBigEndian(++cuantas_[pieza.atributo]);
        FilaDeSistema fila(consultas_);
        fila.Con("ObjectId", qint64{id_})
            .Con("Attribute", qint64{pieza.atributo})
            .Con("Order", QByteArray(reinterpret_cast<const char*>(&orden), sizeof orden))
            .ConTexto("Name1", pieza.nombre1)
            .ConTexto("Name2", pieza.nombre2)
            .ConTexto("Expression", pieza.expresion);
        if (LlevaMarca(pieza.atributo))
            fila.Con("Flag", qint64{pieza.marca});
        if (pieza.extra != 0)
            fila.Con("LvExtra", qint64{pieza.extra});
        fila.Inserta(paginas_);
    }

  private:
    std::shared_ptr<PaginasEscribibles> paginas_;
    Tabla consultas_;
    qint32 id_;
    std::map<int, quint32> cuantas_{}; ///< by the kind of piece
};

} // namespace

std::vector<Pieza> LeeConsulta(const Tabla& consultas, qint32 id)
{
    const Columna &clase = consultas["Attribute"], &marca = consultas["Flag"],
                  &extra = consultas["LvExtra"], &nombre1 = consultas["Name1"],
                  &nombre2 = consultas["Name2"], &expresion = consultas["Expression"],
                  &orden = consultas["Order"];
    std::vector<Pieza> piezas;
    for (const Puntero puntero : FilasDe(consultas, id)) {
        const auto fila = consultas.FilaEn(puntero);
        if (!fila)
            continue;
        piezas.push_back({.atributo = static_cast<int>(Como<qint64>(fila->Lee(clase))),
                          .marca = static_cast<int>(Como<qint64>(fila->Lee(marca))),
                          .extra = static_cast<int>(Como<qint64>(fila->Lee(extra))),
                          .nombre1 = Como<QString>(fila->Lee(nombre1)),
                          .nombre2 = Como<QString>(fila->Lee(nombre2)),
                          .expresion = Como<QString>(fila->Lee(expresion)),
                          .orden = Como<QByteArray>(fila->Lee(orden))});
    }
    std::stable_sort(piezas.begin(), piezas.end(), [](const Pieza& a, const Pieza& b) {
        return std::tie(a.atributo, a.orden) < std::tie(b.atributo, b.orden);
    });
    return piezas;
}

ClaseConsulta ClaseDe(const std::vector<Pieza>& piezas)
{
    const Pieza* pieza = LaDeClase(piezas);
    return pieza == nullptr || pieza->marca == 0 ? ClaseConsulta::Seleccion
                                                 : static_cast<ClaseConsulta>(pieza->marca);
}

void CreaConsulta(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& nombre,
                  const std::vector<Pieza>& piezas)
{
    EnLugar([&] { return Lugar{.fichero = paginas->Nombre()}; },
            [&] {
                CompruebaNombre(nombre);
                RegistroDeObjetos registro(paginas);
                registro.CompruebaLibre(nombre);
                const qint32 id = registro.AnotaConsulta(nombre, MarcasDe(ClaseDe(piezas)));
                Guardado guardado(paginas, id);
                guardado.Anade({.atributo = atributo::Principio});
                for (const Pieza& pieza : piezas)
                    guardado.Anade(pieza);
                guardado.Anade({.atributo = atributo::Final});
            });
}

void BorraConsulta(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& nombre)
{
    EnLugar([&] { return Lugar{.fichero = paginas->Nombre()}; },
            [&] {
                const Base base(paginas);
                const Objeto* objeto = base.catalogo().ConsultaDe(nombre);
                if (objeto == nullptr)
                    throw ErrorMdb(Motivo::NoHallado,
                                   QStringLiteral("La consulta no existe: ") + nombre);
                const Tabla consultas = AbreConsultas(paginas);
                TablaEscribible escribible(paginas, consultas, TablaEscribible::Clase::DeSistema);
                for (const Puntero fila : FilasDe(consultas, objeto->id))
                    escribible.Borra(fila);
                RegistroDeObjetos(paginas).Borra(*objeto);
            });
}

} // namespace tolmo::data::access::mdb
