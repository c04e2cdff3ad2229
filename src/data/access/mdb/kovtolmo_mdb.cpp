#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/exportacion.h"
#include "data/errores.h"
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

using namespace tolmo;
using namespace tolmo::data::access;

namespace {

constexpr int HayFaltas = 1;
constexpr int MalUso = 2;

// clang-format off
constexpr auto Uso = u"Uso: kovtolmo-mdb tablas FICHERO\n"
                     u"     kovtolmo-mdb exporta FICHERO TABLA\n";
// clang-format on

QString ClaseDe(const mdb::Objeto& objeto)
{
    return objeto.EsEnlace() ? QStringLiteral("vinculada a ") + objeto.fichero
                             : QStringLiteral("tabla");
}

int Tablas(const mdb::Base& base)
{
    QTextStream salida(stdout);
    for (const mdb::Objeto& objeto : base.catalogo().TablasDeUsuario())
        salida << objeto.nombre << '\t' << ClaseDe(objeto) << '\n';
    for (const mdb::Objeto& objeto : base.catalogo().Consultas())
        salida << objeto.nombre << "\tconsulta\n";
    return 0;
}

int Exporta(const mdb::Base& base, const QString& tabla)
{
    QFile salida;
    if (!salida.open(stdout, QIODevice::WriteOnly))
        throw data::ErrorFichero(salida.errorString());
    mdb::ExportaCsv(base.AbreTabla(tabla), salida);
    return 0;
}

int Ejecuta(const QStringList& argumentos)
{
    const QString orden = argumentos.value(0);
    if (orden == u"tablas" && argumentos.size() == 2)
        return Tablas(mdb::Base(argumentos[1]));
    if (orden == u"exporta" && argumentos.size() == 3)
        return Exporta(mdb::Base(argumentos[1]), argumentos[2]);
    QTextStream(stderr) << QString::fromUtf16(Uso);
    return MalUso;
}

} // namespace

// Looks into Access files: lists their tables, writes one out, checks them.
int main(int argc, char** argv)
{
    QCoreApplication aplicacion(argc, argv);
    try {
        return Ejecuta(aplicacion.arguments().mid(1));
    } catch (const data::ErrorDatos& error) {
        QTextStream(stderr) << error.Descripcion() << '\n';
    } catch (const data::ErrorFichero& error) {
        QTextStream(stderr) << error.Descripcion() << '\n';
    }
    return HayFaltas;
}
