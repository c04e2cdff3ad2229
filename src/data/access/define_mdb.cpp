#include "data/access/define_mdb.h"
#include "data/access/errores_access.h"

namespace tolmo::data::access {
namespace {

mdb::TipoColumna TipoParaFichero(Tipo tipo)
{
    using mdb::TipoColumna;
    switch (tipo) {
    case Tipo::Byte:
        return TipoColumna::Byte;
    case Tipo::Corto:
    case Tipo::Condicion:
        return TipoColumna::Entero;
    case Tipo::Entero:
        return TipoColumna::Largo;
    case Tipo::Simple:
        return TipoColumna::Simple;
    case Tipo::Grande: // files of these years have no whole numbers of that size
    case Tipo::Doble:
        return TipoColumna::Doble;
    case Tipo::Moneda:
        return TipoColumna::Moneda;
    case Tipo::Fecha:
        return TipoColumna::Fecha;
    case Tipo::Logico:
        return TipoColumna::Logico;
    case Tipo::Binario:
        return TipoColumna::Ole;
    case Tipo::Texto:
    case Tipo::Nulo:
        return TipoColumna::Texto;
    case Tipo::Memo:
    case Tipo::Desconocido:
        break;
    }
    return TipoColumna::Memo;
}

mdb::NuevaColumna ColumnaParaFichero(const ColumnaNueva& columna)
{
    if (columna.defecto)
        Rechaza(QStringLiteral(
            "En un fichero de Access las columnas se crean sin valor predeterminado"));
    const mdb::TipoColumna tipo =
        columna.contador ? mdb::TipoColumna::Largo : TipoParaFichero(columna.tipo.tipo);
    return {.nombre = columna.nombre,
            .tipo = tipo,
            .ancho = tipo == mdb::TipoColumna::Texto ? columna.tipo.ancho : 0,
            .obligatoria = columna.obligatoria,
            .autonumerica = columna.contador};
}

} // namespace

mdb::NuevaTabla TablaParaFichero(const TablaNueva& tabla)
{
    mdb::NuevaTabla nueva{.nombre = tabla.nombre};
    for (const ColumnaNueva& columna : tabla.columnas)
        nueva.columnas.push_back(ColumnaParaFichero(columna));
    for (const IndiceNuevo& indice : tabla.indices)
        nueva.indices.push_back(IndiceParaFichero(indice));
    return nueva;
}

mdb::NuevoIndice IndiceParaFichero(const IndiceNuevo& indice)
{
    mdb::NuevoIndice nuevo{.nombre = indice.nombre,
                           .primario = indice.primario,
                           .unico = indice.unico || indice.primario,
                           .obligatorio = indice.sinNulos || indice.primario};
    for (const ColumnaIndice& columna : indice.columnas)
        nuevo.columnas.push_back({.columna = columna.nombre, .descendente = columna.descendente});
    return nuevo;
}

bool EsDelPrograma(const QString& tabla)
{
    return tabla.startsWith(QLatin1String("WKOVTOLMO_"), Qt::CaseInsensitive);
}

} // namespace tolmo::data::access
