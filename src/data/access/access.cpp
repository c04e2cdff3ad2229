#include "data/access/access.h"
#include "data/access/mdb/base_nueva.h"
#include "data/access/proveedor_access.h"
#include "data/errores.h"
#include "data/proveedor_odbc.h"
#include "data/rutas.h"
#include <QFile>
#include <QRegularExpression>

namespace tolmo::data {
namespace {

[[noreturn]] void NoSeAbre(const QString& descripcion)
{
    throw ErrorSql(numero_error::Conexion, descripcion, QStringLiteral("MotorAccess"));
}

QString OrigenDeDatos(const QString& cadena)
{
    static const QRegularExpression forma(QStringLiteral("(?:^|;)\\s*Data Source\\s*=\\s*([^;]*)"),
                                          QRegularExpression::CaseInsensitiveOption);
    QString origen = forma.match(cadena).captured(1).trimmed();
    if (origen.startsWith(u'"') && origen.endsWith(u'"') && origen.size() > 1)
        origen = origen.mid(1, origen.size() - 2);
    return origen;
}

bool EsDeAccess(const QString& ruta)
{
    return ruta.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive);
}

QString FormaEmbebida(const QString& origen)
{
    return (EsDeAccess(origen) ? origen.left(origen.size() - 4) : origen) +
           QStringLiteral(".sqlite");
}

bool Nombra(const QString& cadena, const char* texto)
{
    return cadena.contains(QLatin1String(texto), Qt::CaseInsensitive);
}

std::unique_ptr<access::ProveedorAccess> Abre(const QString& ruta)
{
    if (!ExisteFichero(ruta))
        NoSeAbre(QStringLiteral("No se encuentra la base de datos %1").arg(ruta));
    return std::make_unique<access::ProveedorAccess>(RutaLocal(ruta),
                                                     access::Base::Modo::Existente);
}

} // namespace

std::unique_ptr<Proveedor> AbreAccess(const QString& cadena)
{
    const QString origen = OrigenDeDatos(cadena);
    if (origen.isEmpty())
        NoSeAbre(QStringLiteral("La cadena de conexión no dice qué base de datos se abre"));
    if (ExisteFichero(origen))
        return std::make_unique<access::ProveedorAccess>(
            std::make_unique<access::FicheroAccess>(RutaLocal(origen)));
    const QString embebida = FormaEmbebida(origen);
    if (ExisteFichero(embebida))
        return Abre(embebida);
    NoSeAbre(QStringLiteral("No se encuentra la base de datos %1").arg(origen));
}

std::unique_ptr<Proveedor> CreaProveedor(const QString& cadena, const QString& usuario,
                                         const QString& clave)
{
    if (Nombra(cadena, "Provider=Microsoft.Jet."))
        return AbreAccess(cadena);
    if (Nombra(cadena, "Driver=") || Nombra(cadena, "Provider=SQLOLEDB"))
        return AbreOdbc(cadena, usuario, clave);
    NoSeAbre(QStringLiteral("La cadena de conexión no nombra ningún proveedor conocido"));
}

void CreaBaseEmbebida(const QString& ruta)
{
    if (QFile::exists(ruta))
        NoSeAbre(QStringLiteral("La base de datos %1 ya existe").arg(ruta));
    access::ProveedorAccess(ruta, access::Base::Modo::Nueva);
}

std::unique_ptr<Proveedor> AbreBaseEmbebida(const QString& ruta)
{
    return Abre(ruta);
}

std::vector<SentenciaGuion> ParteGuion(const QString& guion)
{
    std::vector<SentenciaGuion> sentencias;
    SentenciaGuion actual;
    bool enTexto = false;
    int numero = 0;
    for (const QString& linea : guion.split(u'\n')) {
        ++numero;
        const bool vacia = actual.texto.trimmed().isEmpty();
        if (vacia && linea.trimmed().startsWith(QLatin1String("--")))
            continue;
        if (vacia)
            actual = {QString(), numero};
        actual.texto += linea + u'\n';
        enTexto = enTexto != (linea.count(u'\'') % 2 == 1);
        if (enTexto || !linea.trimmed().endsWith(u';'))
            continue;
        actual.texto = actual.texto.trimmed();
        actual.texto.chop(1);
        sentencias.push_back(std::exchange(actual, {}));
    }
    actual.texto = actual.texto.trimmed();
    if (!actual.texto.isEmpty())
        sentencias.push_back(actual);
    return sentencias;
}

namespace {

void EjecutaGuion(access::ProveedorAccess& base, const QString& guion)
{
    QFile fichero(guion);
    if (!fichero.open(QIODevice::ReadOnly))
        NoSeAbre(QStringLiteral("No se puede leer el guión %1").arg(guion));
    for (const SentenciaGuion& sentencia : ParteGuion(QString::fromUtf8(fichero.readAll()))) {
        try {
            base.Ejecuta(sentencia.texto);
        } catch (const ErrorSql& error) {
            throw ErrorSql(error.Numero(),
                           QStringLiteral("%1, línea %2: %3\n%4")
                               .arg(guion, QString::number(sentencia.linea), error.Descripcion(),
                                    sentencia.texto),
                           error.Modulo());
        }
    }
}

/// The ending tells the form: ".mdb" an Access file, any other the embedded one.
std::unique_ptr<access::ProveedorAccess> AbreOCrea(const QString& ruta, bool nueva)
{
    if (!EsDeAccess(ruta))
        return std::make_unique<access::ProveedorAccess>(
            ruta, nueva ? access::Base::Modo::Nueva : access::Base::Modo::Existente);
    if (nueva)
        access::mdb::CreaBase(ruta);
    return std::make_unique<access::ProveedorAccess>(std::make_unique<access::FicheroAccess>(ruta));
}

} // namespace

void EjecutaGuiones(const QString& ruta, const QStringList& guiones)
{
    const bool nueva = !QFile::exists(ruta);
    try {
        const auto base = AbreOCrea(ruta, nueva);
        access::Transaccion transaccion(base->Motor());
        for (const QString& guion : guiones)
            EjecutaGuion(*base, guion);
        transaccion.Confirma();
    } catch (const ErrorSql&) {
        if (nueva)
            QFile::remove(ruta);
        throw;
    }
}

} // namespace tolmo::data
