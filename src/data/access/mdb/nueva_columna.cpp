#include "data/access/mdb/nueva_columna.h"
#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/escribe_fila.h"
#include "data/access/mdb/tabla_propia.h"

namespace tolmo::data::access::mdb {
namespace {

constexpr int MayorTexto = 255;
constexpr int MayorBinario = 510;
constexpr quint8 MayorPrecision = 28;
constexpr quint8 Fija = 0x01;
constexpr quint8 Cambiable = 0x02;
constexpr quint8 Autonumerica = 0x04;
constexpr quint8 AutonumericaGuid = 0x40;
constexpr quint8 Comprimida = 0x01;
constexpr quint16 LargoNumerico = 17;

/// Bytes of a column, as its block tells them.
quint16 Largo(const NuevaColumna& nueva)
{
    const auto ancho = [&](int mayor) {
        if (nueva.ancho < 0 || nueva.ancho > mayor)
            NoSeHace(QStringLiteral("La columna no puede tener un ancho de %1").arg(nueva.ancho),
                     {.columna = nueva.nombre});
        return nueva.ancho == 0 ? mayor : nueva.ancho;
    };
    switch (nueva.tipo) {
    case TipoColumna::Texto:
        return static_cast<quint16>(2 * ancho(MayorTexto));
    case TipoColumna::Binario:
        return static_cast<quint16>(ancho(MayorBinario));
    case TipoColumna::Memo:
    case TipoColumna::Ole:
        return 0;
    case TipoColumna::Logico:
        return 1;
    case TipoColumna::Numerico:
        if (nueva.precision == 0 || nueva.precision > MayorPrecision ||
            nueva.escala > nueva.precision)
            NoSeHace(QStringLiteral("La columna no puede tener %1 cifras con %2 decimales")
                         .arg(nueva.precision)
                         .arg(nueva.escala),
                     {.columna = nueva.nombre});
        return LargoNumerico;
    case TipoColumna::Byte:
    case TipoColumna::Entero:
    case TipoColumna::Largo:
    case TipoColumna::Moneda:
    case TipoColumna::Simple:
    case TipoColumna::Doble:
    case TipoColumna::Fecha:
    case TipoColumna::Guid:
        return static_cast<quint16>(AnchoFijo(Columna{.tipo = nueva.tipo}));
    default:
        NoSeHace(
            QStringLiteral("No se crean columnas del tipo %1").arg(static_cast<int>(nueva.tipo)),
            {.columna = nueva.nombre});
    }
}

quint8 Marcas(const NuevaColumna& nueva)
{
    const quint8 marcas = EsVariable(nueva.tipo) ? Cambiable : Cambiable | Fija;
    if (!nueva.autonumerica)
        return marcas;
    if (nueva.tipo == TipoColumna::Guid)
        return marcas | AutonumericaGuid;
    if (nueva.tipo != TipoColumna::Largo)
        NoSeHace(QStringLiteral("Una columna de este tipo no puede ser autonumérica"),
                 {.columna = nueva.nombre});
    return marcas | Autonumerica;
}

} // namespace

OrdenTexto OrdenDelFichero(Paginas& paginas)
{
    const Cabecera cabecera = LeeCabecera(paginas.Lee(0).bytes);
    return {.idioma = cabecera.idioma, .version = cabecera.versionOrden};
}

bool EsVariable(TipoColumna tipo)
{
    return tipo == TipoColumna::Texto || tipo == TipoColumna::Binario ||
           tipo == TipoColumna::Memo || tipo == TipoColumna::Ole;
}

Columna ColumnaDe(const NuevaColumna& nueva, quint16 posicion, OrdenTexto orden)
{
    Columna columna{.nombre = nueva.nombre,
                    .tipo = nueva.tipo,
                    .posicion = posicion,
                    .largo = Largo(nueva),
                    .marcas = Marcas(nueva),
                    .orden = orden};
    if (nueva.tipo == TipoColumna::Texto || nueva.tipo == TipoColumna::Memo)
        columna.otrasMarcas = Comprimida;
    if (nueva.tipo == TipoColumna::Numerico) {
        columna.precision = nueva.precision;
        columna.escala = nueva.escala;
    }
    return columna;
}

std::vector<Propiedad> PropiedadesDe(const NuevaColumna& columna)
{
    std::vector<Propiedad> propiedades;
    if (!columna.predeterminado.isEmpty())
        propiedades.push_back(
            PropiedadDeTexto(columna.nombre, propiedad::Predeterminado, columna.predeterminado));
    if (columna.obligatoria)
        propiedades.push_back(PropiedadLogica(columna.nombre, propiedad::Obligatoria, true));
    return propiedades;
}

void CompruebaQueCabe(const Definicion& definicion)
{
    const std::size_t largo =
        LargoDeFila(definicion, std::vector<Crudo>(definicion.columnas.size()));
    if (largo > MayorFila)
        NoSeHace(QStringLiteral("Las filas de la tabla serían demasiado largas"));
}

} // namespace tolmo::data::access::mdb
