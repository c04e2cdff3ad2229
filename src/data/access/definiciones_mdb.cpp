#include "data/access/definiciones_mdb.h"
#include "data/access/consultas_guardadas.h"
#include "data/access/define_mdb.h"
#include "data/access/errores_access.h"
#include "data/access/mdb/cambia_tabla.h"
#include "data/access/piezas_consulta.h"
#include "data/access/traductor.h"

namespace tolmo::data::access {

DefinicionesMdb::DefinicionesMdb(const Base& base, FicheroAccess& fichero, Esquema& esquema,
                                 std::function<void()> sueltaSentencias)
    : base_(base), fichero_(fichero), esquema_(esquema),
      sueltaSentencias_(std::move(sueltaSentencias))
{
}

bool DefinicionesMdb::DeFichero(const QString& tabla) const
{
    const TablaVista* vista = esquema_.Busca(tabla);
    return vista && vista->deFichero;
}

void DefinicionesMdb::Define(
    const std::function<void(const std::shared_ptr<mdb::PaginasEscribibles>&)>& cambio)
{
    sueltaSentencias_();
    fichero_.Define(cambio);
    esquema_.Olvida();
}

/// The engine takes notice of the new shape of its tables when they are next named.
void DefinicionesMdb::Desconecta()
{
    sueltaSentencias_();
    esquema_.Desconecta();
}

/// \returns false when it has to be made aside
bool DefinicionesMdb::Crea(const TablaNueva& tabla)
{
    try {
        Define([&](const auto& paginas) { mdb::CreaTabla(paginas, TablaParaFichero(tabla)); });
    } catch (const ErrorSql&) {
        const bool referencias = Llave(tabla.nombre) == Llave(QLatin1String(TablaReferencias));
        if (!fichero_.EstabaEnUso() || !referencias)
            throw;
        return false; // aside, until nobody has the file open
    }
    return true;
}

bool DefinicionesMdb::Crea(const IndiceNuevo& indice)
{
    const QString tabla = esquema_.Busca(indice.tabla)->nombre;
    Desconecta();
    Define(
        [&](const auto& paginas) { mdb::CreaIndice(paginas, tabla, IndiceParaFichero(indice)); });
    return true;
}

bool DefinicionesMdb::Crea(const ConsultaNueva& consulta)
{
    if (esquema_.Busca(consulta.nombre))
        Rechaza(QStringLiteral("La tabla o consulta %1 ya existe").arg(consulta.nombre));
    const std::vector<mdb::Pieza> piezas = PiezasDe(consulta.texto);
    Define([&](const auto& paginas) { mdb::CreaConsulta(paginas, consulta.nombre, piezas); });
    return true;
}

/// A stored query that defines something.
bool DefinicionesMdb::Llama(const Llamada& llamada)
{
    const TablaVista* consulta = esquema_.Busca(llamada.nombre);
    if (!consulta || consulta->clase != TablaVista::Clase::Guardada)
        return false;
    const TablaVista suya = *consulta; // what it defines outdates all that is known
    const Guardada guardada = AbreGuardada(suya, llamada.posicion);
    return EnConsulta(suya, [&] { return Haz(guardada.sentencia); });
}

bool DefinicionesMdb::Elimina(const Eliminacion& eliminacion)
{
    const bool deIndice = eliminacion.clase == Eliminacion::Clase::Indice;
    const QString& tabla = deIndice ? eliminacion.tabla : eliminacion.nombre;
    if (!DeFichero(tabla))
        return false;
    const QString nombre = esquema_.Busca(tabla)->nombre;
    if (!deIndice && esquema_.Busca(tabla)->clase == TablaVista::Clase::Guardada) {
        Define([&](const auto& paginas) { mdb::BorraConsulta(paginas, nombre); });
        return true;
    }
    if (eliminacion.clase == Eliminacion::Clase::Consulta)
        Rechaza(QStringLiteral("%1 es una tabla y no una consulta").arg(nombre));
    if (deIndice) {
        BorraIndice(nombre, eliminacion.nombre);
        return true;
    }
    Desconecta();
    Define([&](const auto& paginas) { mdb::BorraTabla(paginas, nombre); });
    return true;
}

void DefinicionesMdb::BorraIndice(const QString& tabla, const QString& indice)
{
    Desconecta();
    Define([&](const auto& paginas) { mdb::BorraIndice(paginas, tabla, indice); });
}

/// \returns true always
bool DefinicionesMdb::Cambia(const CambioTabla& cambio, const Sentencia& sentencia)
{
    const Plan plan = Traductor(esquema_).Traduce(sentencia, false);
    const QString tabla = esquema_.Busca(cambio.tabla)->nombre;
    switch (cambio.clase) {
    case CambioTabla::Clase::Anade:
        Desconecta();
        Define([&](const auto& paginas) {
            mdb::AnadeColumna(paginas, tabla, ColumnaParaFichero(cambio.columna));
        });
        return true;
    case CambioTabla::Clase::Quita:
        Desconecta();
        Define(
            [&](const auto& paginas) { mdb::QuitaColumna(paginas, tabla, cambio.columna.nombre); });
        return true;
    case CambioTabla::Clase::Cambia:
        CambiaColumna(tabla, cambio, plan.sql.at(1));
        return true;
    case CambioTabla::Clase::AnadeIndice:
        return Crea(cambio.indice);
    case CambioTabla::Clase::QuitaIndice:
        break;
    }
    BorraIndice(tabla, cambio.indice.nombre);
    return true;
}

/// A column of another kind takes the values, which the engine converts, and then the place of the
/// old one.
void DefinicionesMdb::CambiaColumna(const QString& tabla, const CambioTabla& cambio,
                                    const QString& convierte)
{
    Desconecta();
    EnUna([&] {
        fichero_.Define([&](const auto& paginas) {
            mdb::NuevaColumna nueva = ColumnaParaFichero(cambio.columna);
            nueva.nombre = QLatin1String(ColumnaProvisional);
            mdb::AnadeColumna(paginas, tabla, nueva);
        });
        esquema_.Busca(tabla);
        base_.Ejecuta(convierte);
        Desconecta();
        fichero_.Define([&](const auto& paginas) {
            mdb::SustituyeColumna(paginas, tabla, cambio.columna.nombre,
                                  QLatin1String(ColumnaProvisional));
        });
    });
}

void DefinicionesMdb::CreaYLlena(const TablaNueva& tabla, const std::function<void()>& llena)
{
    EnUna([&] {
        fichero_.Define(
            [&](const auto& paginas) { mdb::CreaTabla(paginas, TablaParaFichero(tabla)); });
        esquema_.Olvida();
        esquema_.Busca(tabla.nombre);
        llena();
    });
    esquema_.Olvida();
}

/// What fails leaves the engine's tables as unknown as they were before.
void DefinicionesMdb::EnUna(const std::function<void()>& cambios)
{
    try {
        Transaccion transaccion(base_);
        fichero_.EnUna(cambios);
        transaccion.Confirma();
    } catch (...) {
        Desconecta();
        throw;
    }
}

/// \throws ErrorSql for what the engine wouldn't do with a table of its own either
void DefinicionesMdb::Comprueba(const Sentencia& sentencia) const
{
    Traductor(esquema_).Traduce(sentencia, false);
}

bool DefinicionesMdb::Haz(const Sentencia& sentencia)
{
    if (const auto* tabla = std::get_if<TablaNueva>(&sentencia)) {
        if (EsDelPrograma(tabla->nombre))
            return false;
        Comprueba(sentencia);
        return Crea(*tabla);
    }
    if (const auto* indice = std::get_if<IndiceNuevo>(&sentencia)) {
        if (!DeFichero(indice->tabla))
            return false;
        Comprueba(sentencia);
        return Crea(*indice);
    }
    if (const auto* fuera = std::get_if<Eliminacion>(&sentencia)) {
        if (fuera->clase == Eliminacion::Clase::Indice && DeFichero(fuera->tabla))
            Comprueba(sentencia);
        return Elimina(*fuera);
    }
    if (const auto* cambio = std::get_if<CambioTabla>(&sentencia))
        return DeFichero(cambio->tabla) && Cambia(*cambio, sentencia);
    if (const auto* consulta = std::get_if<ConsultaNueva>(&sentencia))
        return Crea(*consulta);
    if (const auto* llamada = std::get_if<Llamada>(&sentencia))
        return Llama(*llamada);
    return false;
}

} // namespace tolmo::data::access
