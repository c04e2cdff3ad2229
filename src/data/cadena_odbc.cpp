#include "data/cadena_odbc.h"
#include "data/errores.h"
#include "data/proveedor_odbc.h"
#include <algorithm>
#include <optional>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;
using Piezas = std::vector<PiezaConexion>;

struct Equivalencia {
    QLatin1StringView propia;
    QLatin1StringView deOdbc;
};

// What the two families of connection texts for SQL Server call the same thing.
constexpr Equivalencia ClavesSqlServer[] = {
    {"Data Source"_L1, "Server"_L1},
    {"Initial Catalog"_L1, "Database"_L1},
    {"User ID"_L1, "UID"_L1},
    {"Password"_L1, "PWD"_L1},
};

bool EsClave(const PiezaConexion& pieza, QLatin1StringView clave)
{
    return pieza.clave.compare(clave, Qt::CaseInsensitive) == 0;
}

bool Nombra(const Piezas& piezas, QLatin1StringView clave)
{
    return std::any_of(piezas.begin(), piezas.end(),
                       [&](const PiezaConexion& pieza) { return EsClave(pieza, clave); });
}

QString SinLlaves(const QString& valor)
{
    if (valor.size() < 2 || !valor.startsWith(u'{') || !valor.endsWith(u'}'))
        return valor;
    return valor.mid(1, valor.size() - 2).replace("}}"_L1, "}"_L1);
}

QString ConLlaves(QString valor)
{
    return u'{' + valor.replace(u'}', "}}"_L1) + u'}';
}

/// A user or a password as it can stand in a connection text.
QString Credencial(const QString& valor)
{
    const bool suelta = !valor.contains(u';') && !valor.startsWith(u'{');
    return suelta ? valor : ConLlaves(valor);
}

bool EsMySql(const QString& controlador)
{
    return controlador.contains("mysql"_L1, Qt::CaseInsensitive) ||
           controlador.contains("mariadb"_L1, Qt::CaseInsensitive);
}

/// Drivers whose interface is Unicode go first, and of those the newest.
std::optional<QString> ElMejor(QStringList controladores)
{
    if (controladores.isEmpty())
        return std::nullopt;
    const auto merito = [](const QString& nombre) {
        return std::pair(nombre.contains("unicode"_L1, Qt::CaseInsensitive), nombre);
    };
    return *std::max_element(
        controladores.begin(), controladores.end(),
        [&](const QString& una, const QString& otra) { return merito(una) < merito(otra); });
}

template <class Condicion> QStringList LosQue(const QStringList& instalados, Condicion condicion)
{
    QStringList elegidos;
    std::copy_if(instalados.begin(), instalados.end(), std::back_inserter(elegidos), condicion);
    return elegidos;
}

[[noreturn]] void FaltaControlador(const QString& pedido)
{
    throw ErrorSql(numero_error::Conexion,
                   u"No hay ningún controlador ODBC instalado que sirva para \"%1\"."_s.arg(pedido),
                   u"ODBC"_s);
}

QString ControladorMySql(const QString& pedido, const QStringList& instalados)
{
    if (instalados.contains(pedido, Qt::CaseInsensitive))
        return pedido;
    const auto otro = EsMySql(pedido) ? ElMejor(LosQue(instalados, EsMySql)) : std::nullopt;
    if (!otro)
        FaltaControlador(pedido);
    return *otro;
}

QString ControladorSqlServer(const QStringList& instalados)
{
    const auto delFabricante = ElMejor(LosQue(instalados, [](const QString& nombre) {
        return nombre.contains("ODBC Driver"_L1, Qt::CaseInsensitive) &&
               nombre.contains("SQL Server"_L1, Qt::CaseInsensitive);
    }));
    if (delFabricante)
        return *delFabricante;
    const auto libre = ElMejor(LosQue(instalados, [](const QString& nombre) {
        return nombre.contains("FreeTDS"_L1, Qt::CaseInsensitive);
    }));
    if (!libre)
        FaltaControlador(u"SQL Server"_s);
    return *libre;
}

QString Une(const Piezas& piezas)
{
    QStringList textos;
    for (const PiezaConexion& pieza : piezas)
        textos << pieza.clave + u'=' + pieza.valor;
    return textos.join(u';');
}

void PonCredenciales(Piezas& piezas, const QString& usuario, const QString& clave)
{
    if (!usuario.isEmpty())
        piezas.push_back({u"UID"_s, Credencial(usuario)});
    if (!clave.isEmpty())
        piezas.push_back({u"PWD"_s, Credencial(clave)});
}

Piezas ParaMySql(Piezas piezas, const QStringList& instalados)
{
    for (PiezaConexion& pieza : piezas) {
        if (!EsClave(pieza, "Driver"_L1))
            continue;
        const QString pedido = SinLlaves(pieza.valor);
        const QString elegido = ControladorMySql(pedido, instalados);
        if (elegido != pedido)
            pieza.valor = ConLlaves(elegido);
    }
    if (!Nombra(piezas, "CHARSET"_L1))
        piezas.push_back({u"CHARSET"_s, u"utf8mb4"_s});
    return piezas;
}

Piezas ParaSqlServer(const Piezas& propias, const QStringList& instalados)
{
    const QString controlador = ControladorSqlServer(instalados);
    Piezas piezas = {{u"Driver"_s, ConLlaves(controlador)}};
    for (const PiezaConexion& pieza : propias) {
        for (const Equivalencia& e : ClavesSqlServer)
            if (EsClave(pieza, e.propia))
                piezas.push_back({e.deOdbc, pieza.valor});
        if (EsClave(pieza, "Integrated Security"_L1))
            piezas.push_back({u"Trusted_Connection"_s, u"Yes"_s});
    }
    // Left to find out the protocol's version by itself, it waits for ever on a silent server.
    if (controlador.contains("FreeTDS"_L1, Qt::CaseInsensitive))
        piezas.push_back({u"TDS_Version"_s, u"7.4"_s});
    // The provider asked for takes the server's own certificate; newer drivers would refuse it.
    if (controlador.contains("ODBC Driver"_L1, Qt::CaseInsensitive))
        piezas.push_back({u"TrustServerCertificate"_s, u"Yes"_s});
    return piezas;
}

/// Where the piece that begins at `desde` ends. A ";" between the braces of a value is part of it.
qsizetype FinDePieza(const QString& cadena, qsizetype desde)
{
    const qsizetype igual = cadena.indexOf(u'=', desde);
    const qsizetype puntoYComa = cadena.indexOf(u';', desde);
    const bool conLlave = igual >= 0 && (puntoYComa < 0 || igual < puntoYComa) &&
                          igual + 1 < cadena.size() && cadena[igual + 1] == u'{';
    if (!conLlave)
        return puntoYComa < 0 ? cadena.size() : puntoYComa;
    qsizetype cierra = cadena.indexOf(u'}', igual);
    while (cierra >= 0 && cierra + 1 < cadena.size() && cadena[cierra + 1] == u'}')
        cierra = cadena.indexOf(u'}', cierra + 2);
    const qsizetype fin = cierra < 0 ? -1 : cadena.indexOf(u';', cierra);
    return fin < 0 ? cadena.size() : fin;
}

} // namespace

std::vector<PiezaConexion> PartesDeConexion(const QString& cadena)
{
    Piezas piezas;
    for (qsizetype desde = 0; desde < cadena.size();) {
        const qsizetype fin = FinDePieza(cadena, desde);
        const QString pieza = cadena.mid(desde, fin - desde);
        const qsizetype igual = pieza.indexOf(u'=');
        if (igual > 0)
            piezas.push_back({pieza.left(igual).trimmed(), pieza.mid(igual + 1)});
        desde = fin + 1;
    }
    return piezas;
}

QString ValorDeConexion(const QString& cadena, const QString& clave)
{
    for (const PiezaConexion& pieza : PartesDeConexion(cadena))
        if (pieza.clave.compare(clave, Qt::CaseInsensitive) == 0)
            return SinLlaves(pieza.valor);
    return {};
}

bool EsCadenaMySql(const QString& cadena)
{
    return EsMySql(ValorDeConexion(cadena, u"Driver"_s));
}

bool EsControladorMariaDb(const QString& cadena)
{
    return ValorDeConexion(cadena, u"Driver"_s).contains("mariadb"_L1, Qt::CaseInsensitive);
}

QString ConEsperas(const QString& cadena, int alConectar, int porRespuesta)
{
    const std::pair<QLatin1StringView, int> limites[] = {{"CONN_TIMEOUT"_L1, alConectar},
                                                         {"READ_TIMEOUT"_L1, porRespuesta},
                                                         {"WRITE_TIMEOUT"_L1, porRespuesta}};
    Piezas piezas = PartesDeConexion(cadena);
    for (const auto& [clave, segundos] : limites)
        if (!Nombra(piezas, clave))
            piezas.push_back({clave, QString::number(segundos)});
    return Une(piezas);
}

QString CadenaOdbc(const QString& cadena, const QString& usuario, const QString& clave,
                   const QStringList& instalados)
{
    const Piezas propias = PartesDeConexion(cadena);
    const QString proveedor = ValorDeConexion(cadena, u"Provider"_s);
    Piezas piezas;
    if (proveedor.startsWith("SQLOLEDB"_L1, Qt::CaseInsensitive))
        piezas = ParaSqlServer(propias, instalados);
    else if (Nombra(propias, "Driver"_L1))
        piezas = ParaMySql(propias, instalados);
    else
        FaltaControlador(proveedor);
    PonCredenciales(piezas, usuario, clave);
    return Une(piezas);
}

} // namespace tolmo::data
