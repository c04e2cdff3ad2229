#include "data/access/mdb/exportacion.h"
#include "data/errores.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

// Enough for few writes, and far below what a row may hold.
constexpr qsizetype TamTanda = 1 << 16;

bool NecesitaComillas(const QString& texto)
{
    return std::any_of(texto.begin(), texto.end(),
                       [](QChar c) { return c == u'"' || c == u',' || c == u'\n' || c == u'\r'; });
}

QByteArray Campo(QString texto)
{
    if (!NecesitaComillas(texto))
        return texto.toUtf8();
    return '"' + texto.replace(u'"', QStringLiteral("\"\"")).toUtf8() + '"';
}

QByteArray Campo(const Dato& dato)
{
    const QString* texto = std::get_if<QString>(&dato);
    return texto != nullptr && texto->isEmpty() ? QByteArray("\"\"") : Campo(TextoExacto(dato));
}

void Escribe(QIODevice& salida, QByteArray& tanda)
{
    if (salida.write(tanda) != tanda.size())
        throw ErrorFichero(QStringLiteral("No se puede escribir: ") + salida.errorString());
    tanda.clear();
}

} // namespace

void ExportaCsv(const Tabla& tabla, QIODevice& salida)
{
    QByteArray tanda;
    const auto linea = [&](auto&& campoDe) {
        bool primero = true;
        for (const Columna& columna : tabla.definicion().columnas) {
            if (!std::exchange(primero, false))
                tanda += ',';
            tanda += campoDe(columna);
        }
        tanda += "\r\n";
    };
    linea([](const Columna& columna) { return Campo(columna.nombre); });
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        linea([&](const Columna& columna) { return Campo(cursor.fila().Lee(columna)); });
        if (tanda.size() > TamTanda)
            Escribe(salida, tanda);
    }
    Escribe(salida, tanda);
}

} // namespace tolmo::data::access::mdb
