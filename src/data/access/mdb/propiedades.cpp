#include "data/access/mdb/propiedades.h"
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/texto.h"
#include <QStringList>
#include <algorithm>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

constexpr char Marca[] = "MR2"; ///< its final zero counts
constexpr std::size_t TamMarca = 4;
constexpr std::size_t CabeceraBloque = 6;
constexpr std::size_t CabeceraValor = 8;
constexpr std::size_t CabeceraNombre = 6;
constexpr quint16 BloqueNombres = 0x80;
constexpr quint16 BloqueObjeto = 0;
constexpr quint16 BloqueColumna = 1;

QString Nombre(Bytes bytes)
{
    return TextoSinComprimir(bytes, FormatoDe(Version::Jet4));
}

QStringList LeeNombres(Bytes bytes)
{
    QStringList nombres;
    while (bytes.size() > 0) {
        const std::size_t largo = bytes.U16(0);
        nombres << Nombre(bytes.Trozo(2, largo));
        bytes = bytes.Desde(2 + largo);
    }
    return nombres;
}

void LeeValores(Bytes bytes, const QStringList& nombres, std::vector<Propiedad>& propiedades)
{
    const QString columna = Nombre(bytes.Trozo(CabeceraNombre, bytes.U16(4)));
    bytes = bytes.Desde(bytes.U32(0));
    while (bytes.size() > 0) {
        const std::size_t largo = bytes.U16(0);
        const quint16 nombre = bytes.U16(4);
        if (largo < CabeceraValor || nombre >= nombres.size())
            FueraDeLosBytes();
        propiedades.push_back({.columna = columna,
                               .nombre = nombres[nombre],
                               .tipo = bytes.U8(3),
                               .valor = CopiaDe(bytes.Trozo(CabeceraValor, bytes.U16(6))),
                               .marca = bytes.U8(2)});
        bytes = bytes.Desde(largo);
    }
}

QByteArray ConLargo(const QString& nombre)
{
    QByteArray bytes;
    Anade(bytes, static_cast<quint16>(2 * nombre.size()));
    return bytes + EscribeTexto(nombre, false);
}

void AnadeBloque(QByteArray& bytes, quint16 clase, const QByteArray& contenido)
{
    Anade(bytes, static_cast<quint32>(contenido.size()) + static_cast<quint32>(CabeceraBloque));
    Anade(bytes, clase);
    bytes += contenido;
}

QByteArray Valor(const Propiedad& propiedad, const QStringList& nombres)
{
    QByteArray bytes;
    Anade(bytes,
          static_cast<quint16>(CabeceraValor + static_cast<std::size_t>(propiedad.valor.size())));
    Anade(bytes, propiedad.marca);
    Anade(bytes, propiedad.tipo);
    Anade(bytes, static_cast<quint16>(nombres.indexOf(propiedad.nombre)));
    Anade(bytes, static_cast<quint16>(propiedad.valor.size()));
    return bytes + propiedad.valor;
}

} // namespace

std::vector<Propiedad> LeePropiedades(Bytes bytes)
{
    std::vector<Propiedad> propiedades;
    if (bytes.size() < TamMarca || std::memcmp(bytes.data(), Marca, TamMarca) != 0)
        return propiedades;
    QStringList nombres;
    for (bytes = bytes.Desde(TamMarca); bytes.size() >= CabeceraBloque;) {
        const std::size_t largo = bytes.U32(0);
        if (largo < CabeceraBloque)
            FueraDeLosBytes();
        const Bytes contenido = bytes.Trozo(CabeceraBloque, largo - CabeceraBloque);
        const quint16 clase = bytes.U16(4);
        if (clase == BloqueNombres)
            nombres = LeeNombres(contenido);
        else if (clase == BloqueObjeto || clase == BloqueColumna)
            LeeValores(contenido, nombres, propiedades);
        bytes = bytes.Desde(largo);
    }
    return propiedades;
}

Propiedad PropiedadDeTexto(const QString& columna, const QString& nombre, const QString& valor)
{
    return {.columna = columna,
            .nombre = nombre,
            .tipo = static_cast<quint8>(TipoColumna::Memo),
            .valor = EscribeTexto(valor, false)};
}

Propiedad PropiedadLogica(const QString& columna, const QString& nombre, bool valor)
{
    return {.columna = columna,
            .nombre = nombre,
            .tipo = static_cast<quint8>(TipoColumna::Logico),
            .valor = QByteArray(1, valor ? '\1' : '\0')};
}

QString TextoDe(const Propiedad& propiedad)
{
    return Nombre(BytesDe(propiedad.valor));
}

bool VerdadDe(const Propiedad& propiedad)
{
    return !propiedad.valor.isEmpty() && propiedad.valor[0] != 0;
}

QByteArray EscribePropiedades(const std::vector<Propiedad>& propiedades)
{
    if (propiedades.empty())
        return {};
    QStringList nombres;
    QStringList columnas;
    for (const Propiedad& propiedad : propiedades) {
        if (!nombres.contains(propiedad.nombre))
            nombres << propiedad.nombre;
        if (!columnas.contains(propiedad.columna))
            columnas << propiedad.columna;
    }
    QByteArray listado;
    for (const QString& nombre : nombres)
        listado += ConLargo(nombre);
    QByteArray bytes(Marca, TamMarca);
    AnadeBloque(bytes, BloqueNombres, listado);
    for (const QString& columna : columnas) {
        const QByteArray nombre = ConLargo(columna);
        QByteArray contenido;
        Anade(contenido, static_cast<quint32>(nombre.size()) + quint32{4});
        contenido += nombre;
        for (const Propiedad& propiedad : propiedades) {
            if (propiedad.columna == columna)
                contenido += Valor(propiedad, nombres);
        }
        AnadeBloque(bytes, columna.isEmpty() ? BloqueObjeto : BloqueColumna, contenido);
    }
    return bytes;
}

std::vector<Propiedad> PropiedadesDeTabla(const std::shared_ptr<Paginas>& paginas, quint32 pagina)
{
    const Tabla objetos(paginas, std::make_shared<const Definicion>(LeeDefinicion(
                                     *paginas, Catalogo::PaginaObjetos, "MSysObjects")));
    const Columna& id = objetos["Id"];
    const Columna* valor = objetos.definicion().ColumnaDe(QStringLiteral("LvProp"));
    for (Cursor cursor(objetos); valor != nullptr && cursor.Siguiente();) {
        if (static_cast<quint32>(Como<qint64>(cursor.fila().Lee(id))) == pagina) {
            const QByteArray bytes = Como<QByteArray>(cursor.fila().Lee(*valor));
            return LeePropiedades(BytesDe(bytes));
        }
    }
    return {};
}

} // namespace tolmo::data::access::mdb
