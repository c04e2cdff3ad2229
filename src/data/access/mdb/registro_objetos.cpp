#include "data/access/mdb/registro_objetos.h"
#include "data/access/mdb/fila_de_sistema.h"
#include <QDateTime>
#include <QSet>
#include <algorithm>
#include <limits>
#include <map>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint32 PaginaDerechos = 3;
constexpr quint32 PaginaRelaciones = 5;
constexpr qint32 BaseDeDatos = 0x10000000; ///< MSysDb
constexpr qint32 ElCatalogo = 2;           ///< its owner is the engine itself
/// What makes of the engine's name the one that stands for whoever makes an object.
constexpr char QuienCrea[] = {0x00, 0x07};

qint32 Numero(const Fila& fila, const Columna& columna)
{
    return static_cast<qint32>(Como<qint64>(fila.Lee(columna)));
}

} // namespace

RegistroDeObjetos::RegistroDeObjetos(std::shared_ptr<PaginasEscribibles> paginas)
    : paginas_(std::move(paginas)),
      objetos_(Abre(Catalogo::PaginaObjetos, QStringLiteral("MSysObjects"))),
      derechos_(Abre(PaginaDerechos, QStringLiteral("MSysACEs")))
{
}

Tabla RegistroDeObjetos::Abre(quint32 pagina, const QString& nombre) const
{
    return {paginas_, std::make_shared<const Definicion>(LeeDefinicion(*paginas_, pagina, nombre))};
}

void RegistroDeObjetos::CompruebaLibre(const QString& nombre) const
{
    const Catalogo catalogo(objetos_);
    for (const Objeto& objeto : catalogo.Objetos()) {
        if (objeto.padre == Catalogo::PadreTablas &&
            objeto.nombre.compare(nombre, Qt::CaseInsensitive) == 0)
            throw ErrorMdb(Motivo::NoAdmitido, QStringLiteral("El objeto ya existe: ") + nombre);
    }
}

void RegistroDeObjetos::CompruebaSinRelaciones(const QString& tabla) const
{
    const Tabla relaciones = Abre(PaginaRelaciones, QStringLiteral("MSysRelationships"));
    for (Cursor cursor(relaciones); cursor.Siguiente();) {
        for (const char* columna : {"szObject", "szReferencedObject"}) {
            const QString nombre =
                Como<QString>(cursor.fila().Lee(relaciones[QString::fromLatin1(columna)]));
            if (nombre.compare(tabla, Qt::CaseInsensitive) == 0)
                throw ErrorMdb(Motivo::Relacion,
                               QStringLiteral("La tabla está en una relación con otra"));
        }
    }
}

QByteArray RegistroDeObjetos::DuenioDe(qint32 id) const
{
    for (Cursor cursor(objetos_); cursor.Siguiente();) {
        if (Numero(cursor.fila(), objetos_["Id"]) == id)
            return Como<QByteArray>(cursor.fila().Lee(objetos_["Owner"]));
    }
    return {};
}

void RegistroDeObjetos::Anota(const Anotacion& anotacion)
{
    const Fecha ahora = FechaDe(QDateTime::currentDateTime());
    FilaDeSistema fila(objetos_);
    fila.Con("Id", qint64{anotacion.id})
        .Con("ParentId", qint64{anotacion.padre})
        .Con("Name", anotacion.nombre)
        .Con("Type", qint64{anotacion.clase})
        .Con("DateCreate", ahora)
        .Con("DateUpdate", ahora)
        .Con("Flags", qint64{anotacion.marcas});
    if (!anotacion.duenio.isEmpty())
        fila.Con("Owner", anotacion.duenio);
    if (!anotacion.propiedades.isEmpty())
        fila.Con("LvProp", anotacion.propiedades);
    fila.Inserta(paginas_);
}

void RegistroDeObjetos::Anota(const Derecho& derecho)
{
    FilaDeSistema(derechos_)
        .Con("ObjectId", qint64{derecho.objeto})
        .Con("SID", derecho.quien)
        .Con("ACM", qint64{derecho.cual})
        .Con("FInheritable", derecho.heredable)
        .Inserta(paginas_);
}

void RegistroDeObjetos::AnotaTabla(quint32 definicion, const QString& nombre,
                                   const QByteArray& propiedades)
{
    AnotaDelUsuario({.id = static_cast<qint32>(definicion),
                     .nombre = nombre,
                     .clase = clase_objeto::TablaLocal,
                     .propiedades = propiedades});
}

qint32 RegistroDeObjetos::AnotaConsulta(const QString& nombre, qint32 marcas)
{
    const qint32 id = IdLibre();
    AnotaDelUsuario(
        {.id = id, .nombre = nombre, .clase = clase_objeto::Consulta, .marcas = marcas});
    return id;
}

/// Objects without a definition have negative numbers, each the one after the last; the lowest that
/// is free where the last one is taken.
qint32 RegistroDeObjetos::IdLibre() const
{
    QSet<qint32> tomados;
    qint32 siguiente = std::numeric_limits<qint32>::min();
    const Catalogo catalogo(objetos_);
    for (const Objeto& objeto : catalogo.Objetos()) {
        tomados.insert(objeto.id);
        if (objeto.id < 0)
            siguiente = std::max(siguiente, objeto.id + 1);
    }
    if (siguiente < 0)
        return siguiente;
    qint32 libre = std::numeric_limits<qint32>::min();
    while (tomados.contains(libre))
        ++libre;
    return libre;
}

/// An object among the tables, which belongs to Admin, and the rights that Access gives to one.
void RegistroDeObjetos::AnotaDelUsuario(Anotacion anotacion)
{
    const QByteArray duenio = DuenioDe(BaseDeDatos);
    anotacion.padre = Catalogo::PadreTablas;
    anotacion.duenio = duenio;
    Anota(anotacion);

    QByteArray quienCrea = DuenioDe(ElCatalogo);
    for (qsizetype i = 0; i < quienCrea.size() && i < qsizetype{sizeof QuienCrea}; ++i)
        quienCrea[i] = static_cast<char>(quienCrea[i] ^ QuienCrea[i]);
    std::map<QByteArray, qint32> derechos;
    for (Cursor cursor(derechos_); cursor.Siguiente();) {
        const Fila& fila = cursor.fila();
        if (Numero(fila, derechos_["ObjectId"]) != Catalogo::PadreTablas ||
            !Como<bool>(fila.Lee(derechos_["FInheritable"])))
            continue;
        const QByteArray quien = Como<QByteArray>(fila.Lee(derechos_["SID"]));
        derechos[quien == quienCrea ? duenio : quien] |= Numero(fila, derechos_["ACM"]);
    }
    for (const auto& [quien, cual] : derechos)
        Anota(Derecho{.objeto = anotacion.id, .quien = quien, .cual = cual});
}

void RegistroDeObjetos::Borra(const Objeto& objeto)
{
    std::vector<Puntero> filas;
    for (Cursor cursor(derechos_); cursor.Siguiente();) {
        if (Numero(cursor.fila(), derechos_["ObjectId"]) == objeto.id)
            filas.push_back(cursor.puntero());
    }
    TablaEscribible derechos(paginas_, derechos_, TablaEscribible::Clase::DeSistema);
    for (const Puntero fila : filas)
        derechos.Borra(fila);
    TablaEscribible(paginas_, objetos_, TablaEscribible::Clase::DeSistema).Borra(objeto.fila);
}

} // namespace tolmo::data::access::mdb
