#include "data/access/definiciones_mdb.h"
#include "data/access/consultas_guardadas.h"
#include "data/access/define_mdb.h"
#include "data/access/errores_access.h"
#include "data/access/piezas_consulta.h"
#include "data/access/traductor.h"

namespace tolmo::data::access {

DefinicionesMdb::DefinicionesMdb(FicheroAccess& fichero, Esquema& esquema,
                                 std::function<void()> sueltaSentencias)
    : fichero_(fichero), esquema_(esquema), sueltaSentencias_(std::move(sueltaSentencias))
{
}

bool DefinicionesMdb::DeFichero(const QString& tabla) const
{
    const TablaVista* vista = esquema_.Busca(tabla);
    return vista && vista->deFichero;
}

void DefinicionesMdb::Cambia(
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
        Cambia([&](const auto& paginas) { mdb::CreaTabla(paginas, TablaParaFichero(tabla)); });
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
    Cambia(
        [&](const auto& paginas) { mdb::CreaIndice(paginas, tabla, IndiceParaFichero(indice)); });
    return true;
}

bool DefinicionesMdb::Crea(const ConsultaNueva& consulta)
{
    if (esquema_.Busca(consulta.nombre))
        Rechaza(QStringLiteral("La tabla o consulta %1 ya existe").arg(consulta.nombre));
    const std::vector<mdb::Pieza> piezas = PiezasDe(consulta.texto);
    Cambia([&](const auto& paginas) { mdb::CreaConsulta(paginas, consulta.nombre, piezas); });
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
        Cambia([&](const auto& paginas) { mdb::BorraConsulta(paginas, nombre); });
        return true;
    }
    if (eliminacion.clase == Eliminacion::Clase::Consulta)
        Rechaza(QStringLiteral("%1 es una tabla y no una consulta").arg(nombre));
    if (deIndice)
        Rechaza(QStringLiteral("Los índices de un fichero de Access no se eliminan desde aquí"));
    Desconecta();
    Cambia([&](const auto& paginas) { mdb::BorraTabla(paginas, nombre); });
    return true;
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
    if (const auto* fuera = std::get_if<Eliminacion>(&sentencia))
        return Elimina(*fuera);
    if (const auto* cambio = std::get_if<CambioTabla>(&sentencia);
        cambio && DeFichero(cambio->tabla))
        Rechaza(QStringLiteral(
            "Las columnas de una tabla de un fichero de Access no se cambian desde aquí"));
    if (const auto* consulta = std::get_if<Consulta>(&sentencia)) {
        const QString& destino = consulta->partes[0].destino;
        if (!destino.isEmpty() && !EsDelPrograma(destino))
            Rechaza(QStringLiteral("En un fichero de Access no se hace una tabla con SELECT INTO"));
    }
    if (const auto* consulta = std::get_if<ConsultaNueva>(&sentencia))
        return Crea(*consulta);
    if (const auto* llamada = std::get_if<Llamada>(&sentencia))
        return Llama(*llamada);
    return false;
}

} // namespace tolmo::data::access
