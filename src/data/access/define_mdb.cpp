#include "data/access/define_mdb.h"
#include "data/access/errores_access.h"

namespace tolmo::data::access {
namespace {

mdb::TipoColumna TipoParaFichero(const TipoDeclarado& tipo)
{
    using mdb::TipoColumna;
    switch (tipo.tipo) {
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
        return tipo.precision > 0 ? TipoColumna::Numerico : TipoColumna::Doble;
    case Tipo::Moneda:
        return TipoColumna::Moneda;
    case Tipo::Fecha:
        return TipoColumna::Fecha;
    case Tipo::Logico:
        return TipoColumna::Logico;
    case Tipo::Binario:
        return tipo.ancho > 0 ? TipoColumna::Binario : TipoColumna::Ole;
    case Tipo::Texto:
    case Tipo::Nulo:
        return tipo.guid ? TipoColumna::Guid : TipoColumna::Texto;
    case Tipo::Memo:
    case Tipo::Desconocido:
        break;
    }
    return TipoColumna::Memo;
}

/// A constant as Access keeps it.
QString TextoDeConstante(const Literal& literal)
{
    switch (literal.tipo) {
    case Tipo::Texto: {
        QString dentro = literal.texto;
        dentro.replace(u'"', QStringLiteral("\"\""));
        return u'"' + dentro + u'"';
    }
    case Tipo::Fecha:
        return u'#' + literal.texto + u'#';
    case Tipo::Condicion:
        return literal.texto == QLatin1String("1") ? QStringLiteral("True")
                                                   : QStringLiteral("False");
    case Tipo::Nulo:
        return {};
    default:
        return literal.texto;
    }
}

/// The sign of a negative number, if any, is the only operator that a default has.
QString TextoDeDefecto(const Expresion& defecto)
{
    const bool negativo = defecto.clase == Expresion::Clase::Unario;
    return negativo ? u'-' + TextoDeConstante(defecto.hijos[0]->literal)
                    : TextoDeConstante(defecto.literal);
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

mdb::NuevaColumna ColumnaParaFichero(const ColumnaNueva& columna)
{
    const mdb::TipoColumna tipo =
        columna.contador ? mdb::TipoColumna::Largo : TipoParaFichero(columna.tipo);
    const bool conAncho = tipo == mdb::TipoColumna::Texto || tipo == mdb::TipoColumna::Binario;
    return {.nombre = columna.nombre,
            .tipo = tipo,
            .ancho = conAncho ? columna.tipo.ancho : 0,
            .precision = static_cast<quint8>(columna.tipo.precision),
            .escala = static_cast<quint8>(columna.tipo.escala),
            .obligatoria = columna.obligatoria,
            .autonumerica = columna.contador,
            .predeterminado = columna.defecto ? TextoDeDefecto(*columna.defecto) : QString()};
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
