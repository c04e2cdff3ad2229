#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/comprobacion.h"
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
                     u"     kovtolmo-mdb exporta FICHERO TABLA\n"
                     u"     kovtolmo-mdb comprueba FICHERO\n";
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

QString Cuenta(qsizetype cuantas, const QString& singular)
{
    return QString::number(cuantas) + u' ' + singular +
           (cuantas == 1 ? QString() : QStringLiteral("s"));
}

void EscribeFaltas(QTextStream& salida, const QStringList& faltas)
{
    for (const QString& falta : faltas)
        salida << "    FALTA: " << falta << '\n';
}

QString EstadoDe(const mdb::EstadoIndice& indice)
{
    if (!indice.faltas.isEmpty())
        return QStringLiteral("mal");
    return indice.rehecho ? QStringLiteral("bien")
                          : QStringLiteral("bien (claves sin comprobar: su orden no se conoce)");
}

int MuestraEstado(const mdb::Base& base)
{
    QTextStream salida(stdout);
    const mdb::Informe informe = mdb::Comprueba(base);
    salida << mdb::NombreDe(base.version()) << '\n';
    for (const mdb::EstadoTabla& tabla : informe.tablas) {
        salida << tabla.nombre << ": " << Cuenta(tabla.filas, QStringLiteral("fila"));
        if (tabla.filas != tabla.filasDeclaradas)
            salida << " (la definición dice " << tabla.filasDeclaradas << ')';
        salida << '\n';
        EscribeFaltas(salida, tabla.faltas);
        for (const mdb::EstadoIndice& indice : tabla.indices) {
            salida << "  " << indice.nombre << ": "
                   << Cuenta(indice.entradas, QStringLiteral("entrada")) << ", " << EstadoDe(indice)
                   << '\n';
            EscribeFaltas(salida, indice.faltas);
        }
    }
    EscribeFaltas(salida, informe.faltas);
    salida << (informe.Sano() ? "Todo está bien\n" : "La base de datos está dañada\n");
    return informe.Sano() ? 0 : HayFaltas;
}

int Ejecuta(const QStringList& argumentos)
{
    const QString orden = argumentos.value(0);
    if (orden == u"tablas" && argumentos.size() == 2)
        return Tablas(mdb::Base(argumentos[1]));
    if (orden == u"exporta" && argumentos.size() == 3)
        return Exporta(mdb::Base(argumentos[1]), argumentos[2]);
    if (orden == u"comprueba" && argumentos.size() == 2)
        return MuestraEstado(mdb::Base(argumentos[1]));
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
