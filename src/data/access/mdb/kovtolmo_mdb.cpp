#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/diario.h"
#include "data/access/mdb/exportacion.h"
#include "data/access/mdb/transaccion_paginas.h"
#include "data/errores.h"
#include "data/plantilla.h"
#include <QBuffer>
#include <QCoreApplication>
#include <QTextStream>
#include <cerrno>
#include <cstdio>

using namespace tolmo;
using namespace tolmo::data::access;

namespace {

constexpr int HayFaltas = 1;
constexpr int MalUso = 2;

// clang-format off
constexpr auto Uso = u"Uso: kovtolmo-mdb tablas FICHERO\n"
                     u"     kovtolmo-mdb exporta FICHERO TABLA\n"
                     u"     kovtolmo-mdb comprueba FICHERO\n";

constexpr data::Plantilla Deshecho(u"Un guardado de este programa se interrumpió y se ha deshecho: el fichero está como antes de empezarlo (fichero {fichero})");
constexpr data::Plantilla HayAjeno(u"AVISO: al lado está {diario}, de un guardado que se interrumpió y no se pudo deshacer, porque entretanto otro programa cambió el fichero o se puso en su sitio una copia. Si se puso una copia, bórrelo; si no, lo que se guardaba puede estar a medias: revíselo, o recupere la última copia");
// clang-format on

struct Respuesta {
    QByteArray texto{};
    int estado = 0;
};

QString ClaseDe(const mdb::Objeto& objeto)
{
    return objeto.EsEnlace() ? QStringLiteral("vinculada a ") + objeto.fichero
                             : QStringLiteral("tabla");
}

Respuesta Tablas(const mdb::Base& base)
{
    Respuesta respuesta;
    QTextStream salida(&respuesta.texto);
    for (const mdb::Objeto& objeto : base.catalogo().TablasDeUsuario())
        salida << objeto.nombre << '\t' << ClaseDe(objeto) << '\n';
    for (const mdb::Objeto& objeto : base.catalogo().Consultas())
        salida << objeto.nombre << "\tconsulta\n";
    salida.flush();
    return respuesta;
}

Respuesta Exporta(const mdb::Base& base, const QString& tabla)
{
    Respuesta respuesta;
    QBuffer salida(&respuesta.texto);
    salida.open(QIODevice::WriteOnly);
    mdb::ExportaCsv(base.AbreTabla(tabla), salida);
    return respuesta;
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

Respuesta MuestraEstado(const mdb::Base& base)
{
    const mdb::Informe informe = mdb::Comprueba(base);
    Respuesta respuesta{.estado = informe.Sano() ? 0 : HayFaltas};
    QTextStream salida(&respuesta.texto);
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
    for (const QString& diario : mdb::DiariosAjenos(base.Nombre()))
        salida << HayAjeno({{"diario", diario}}) << '\n';
    salida << (informe.Sano() ? "Todo está bien\n" : "La base de datos está dañada\n");
    salida.flush();
    return respuesta;
}

/// As any other window of the program: a save that is going on is waited for, and one that was
/// interrupted is taken back. The answer is made at once, so that whoever reads it slowly doesn't
/// keep the program from saving.
template <typename Orden> Respuesta Sobre(const QString& fichero, Orden&& orden)
{
    const auto paginas = std::make_shared<mdb::TransaccionPaginas>(fichero);
    const mdb::LecturaDePaginas lectura(*paginas);
    if (paginas->HaDeshecho())
        QTextStream(stderr) << Deshecho({{"fichero", fichero}}) << '\n';
    return orden(mdb::Base(paginas));
}

std::optional<Respuesta> Responde(const QStringList& argumentos)
{
    const QString orden = argumentos.value(0);
    const QString fichero = argumentos.value(1);
    if (orden == u"tablas" && argumentos.size() == 2)
        return Sobre(fichero, Tablas);
    if (orden == u"exporta" && argumentos.size() == 3)
        return Sobre(fichero, [&](const mdb::Base& base) { return Exporta(base, argumentos[2]); });
    if (orden == u"comprueba" && argumentos.size() == 2)
        return Sobre(fichero, MuestraEstado);
    return std::nullopt;
}

void Escribe(const QByteArray& texto)
{
    const auto tam = static_cast<std::size_t>(texto.size());
    if (std::fwrite(texto.data(), 1, tam, stdout) != tam || std::fflush(stdout) != 0)
        throw data::ErrorFichero(QStringLiteral("No se puede escribir: ") +
                                 mdb::ErrorDelSistema(errno));
}

int Ejecuta(const QStringList& argumentos)
{
    if (const auto respuesta = Responde(argumentos)) {
        Escribe(respuesta->texto);
        return respuesta->estado;
    }
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
