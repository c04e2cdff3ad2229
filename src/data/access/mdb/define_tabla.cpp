#include "data/access/mdb/define_tabla.h"
#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_definicion.h"
#include "data/access/mdb/escribe_fila.h"
#include "data/access/mdb/indices_tabla.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/monta_tabla.h"
#include "data/access/mdb/nombres.h"
#include "data/access/mdb/registro_objetos.h"
#include <QSet>
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t MasColumnas = 255;
constexpr std::size_t MasIndices = 32;
constexpr std::size_t ColumnasPorIndice = 10;
constexpr int MayorTexto = 255;
constexpr int MayorBinario = 510;
constexpr quint8 MayorPrecision = 28;
constexpr quint8 Fija = 0x01;
constexpr quint8 Cambiable = 0x02;
constexpr quint8 Autonumerica = 0x04;
constexpr quint8 AutonumericaGuid = 0x40;
constexpr quint8 Comprimida = 0x01;
constexpr quint16 LargoNumerico = 17;

[[noreturn]] void NoSeHace(const QString& frase, const Lugar& lugar = {})
{
    throw ErrorMdb(Motivo::NoAdmitido, frase, lugar);
}

template <typename Lista> void CompruebaNombres(const Lista& lista)
{
    QSet<QString> vistos;
    for (const auto& cosa : lista) {
        CompruebaNombre(cosa.nombre);
        if (vistos.contains(cosa.nombre.toLower()))
            NoSeHace(QStringLiteral("El nombre está repetido: ") + cosa.nombre);
        vistos.insert(cosa.nombre.toLower());
    }
}

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

bool EsVariable(TipoColumna tipo)
{
    return tipo == TipoColumna::Texto || tipo == TipoColumna::Binario ||
           tipo == TipoColumna::Memo || tipo == TipoColumna::Ole;
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

std::vector<Columna> ColumnasDe(const NuevaTabla& tabla, OrdenTexto orden)
{
    if (tabla.columnas.empty() || tabla.columnas.size() > MasColumnas)
        NoSeHace(QStringLiteral("Una tabla tiene de 1 a 255 columnas"));
    CompruebaNombres(tabla.columnas);
    std::vector<Columna> columnas;
    for (const NuevaColumna& nueva : tabla.columnas)
        columnas.push_back(ColumnaDe(nueva, static_cast<quint16>(columnas.size() + 1), orden));
    if (std::count_if(columnas.begin(), columnas.end(),
                      [](const Columna& c) { return c.Autonumerica(); }) > 1)
        NoSeHace(QStringLiteral("Una tabla no puede tener dos columnas autonuméricas"));
    return columnas;
}

void CompruebaIndice(const Definicion& definicion, const NuevoIndice& indice)
{
    const Lugar lugar{.indice = indice.nombre};
    if (indice.columnas.empty() || indice.columnas.size() > ColumnasPorIndice)
        NoSeHace(QStringLiteral("Un índice tiene de 1 a 10 columnas"), lugar);
    QSet<quint16> vistas;
    for (const NuevoIndice::Parte& parte : indice.columnas) {
        const Columna* columna = definicion.ColumnaDe(parte.columna);
        if (columna == nullptr)
            throw ErrorMdb(Motivo::NoHallado,
                           QStringLiteral("La tabla no tiene la columna ") + parte.columna, lugar);
        if (columna->tipo == TipoColumna::Ole || vistas.contains(columna->numero))
            NoSeHace(QStringLiteral("La columna no puede estar en el índice: ") + columna->nombre,
                     lugar);
        vistas.insert(columna->numero);
    }
}

void CompruebaIndices(const Definicion& definicion, const std::vector<NuevoIndice>& indices)
{
    CompruebaNombres(indices);
    if (indices.size() > MasIndices)
        NoSeHace(QStringLiteral("Una tabla no puede tener más de 32 índices"));
    for (const NuevoIndice& indice : indices)
        CompruebaIndice(definicion, indice);
    if (std::count_if(indices.begin(), indices.end(),
                      [](const NuevoIndice& i) { return i.primario; }) > 1)
        NoSeHace(QStringLiteral("Una tabla no puede tener dos claves primarias"));
}

/// A primary key takes no Nulls.
NuevoIndice Completo(NuevoIndice indice)
{
    indice.obligatorio = indice.obligatorio || indice.primario;
    return indice;
}

void CompruebaQueCabe(Definicion definicion)
{
    Coloca(definicion);
    const std::size_t largo =
        LargoDeFila(definicion, std::vector<Crudo>(definicion.columnas.size()));
    if (largo > MayorFila)
        NoSeHace(QStringLiteral("Las filas de la tabla serían demasiado largas"));
}

void CompruebaVersion(const Paginas& paginas)
{
    if (paginas.formato().EsJet3())
        NoSeHace(QStringLiteral("Los ficheros de Access 97 sólo se leen"));
}

std::vector<Propiedad> PropiedadesDe(const NuevaTabla& tabla)
{
    std::vector<Propiedad> propiedades;
    for (const NuevaColumna& columna : tabla.columnas) {
        if (!columna.predeterminado.isEmpty())
            propiedades.push_back(PropiedadDeTexto(columna.nombre, propiedad::Predeterminado,
                                                   columna.predeterminado));
        if (columna.obligatoria)
            propiedades.push_back(PropiedadLogica(columna.nombre, propiedad::Obligatoria, true));
    }
    return propiedades;
}

/// An object of this file whose table may be changed in its shape.
Objeto TablaPropia(const Base& base, const QString& nombre)
{
    const Objeto* objeto = base.catalogo().TablaDe(nombre);
    if (objeto == nullptr)
        throw ErrorMdb(Motivo::NoHallado, QStringLiteral("La tabla no existe"));
    if (objeto->EsEnlace())
        NoSeHace(QStringLiteral("La tabla está vinculada a otro fichero"));
    if (objeto->DeSistema())
        NoSeHace(QStringLiteral("Las tablas del sistema no se cambian"));
    return *objeto;
}

template <typename Tarea>
decltype(auto) EnTabla(const Paginas& paginas, const QString& tabla, Tarea&& tarea)
{
    return EnLugar([&] { return Lugar{.fichero = paginas.Nombre(), .tabla = tabla}; },
                   std::forward<Tarea>(tarea));
}

void LlenaIndice(PaginasEscribibles& paginas, const Tabla& tabla)
{
    IndicesDeTabla indices(paginas, tabla);
    const std::size_t nuevo = indices.Cuantos() - 1;
    const std::vector<Columna>& columnas = tabla.definicion().columnas;
    std::vector<Dato> valores(columnas.size());
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        for (const std::size_t columna : indices.Columnas(nuevo))
            valores[columna] = cursor.fila().Lee(columnas[columna]);
        const ClaveDeFila clave = indices.Clave(nuevo, valores);
        indices.CompruebaUnica(nuevo, valores);
        indices.Anade(nuevo, clave, cursor.puntero());
    }
}

/// Gives all pages of a map back, and those that it is made of.
void SueltaTodas(PaginasEscribibles& paginas, Puntero mapa)
{
    for (const quint32 pagina : PaginasEnUso(paginas, mapa))
        SueltaPagina(paginas, pagina, mapa);
}

/// Takes the rows of maps away, and the pages that hold no others.
void SueltaMapas(PaginasEscribibles& paginas, const std::vector<Puntero>& mapas)
{
    for (const Puntero mapa : mapas) {
        if (mapa.Nulo())
            continue;
        for (const quint32 pagina : LeeMapa(paginas, mapa).deBits)
            SueltaPagina(paginas, pagina, {});
        EdicionDatos(paginas, mapa.pagina).BorraFila(mapa.fila);
        if (SitioDe(LeePaginaDatos(paginas, mapa.pagina)).vivas == 0)
            SueltaPagina(paginas, mapa.pagina, {});
    }
}

void SueltaTabla(PaginasEscribibles& paginas, const Definicion& definicion)
{
    std::vector<Puntero> mapas{definicion.paginasPropias, definicion.paginasLibres};
    SueltaTodas(paginas, definicion.paginasPropias);
    for (const Columna& columna : definicion.columnas) {
        SueltaTodas(paginas, columna.paginasLargas);
        mapas.push_back(columna.paginasLargas);
        mapas.push_back(columna.paginasLargasLibres);
    }
    for (const IndiceReal& indice : definicion.indicesReales) {
        ArbolIndice(paginas, definicion.pagina, indice).Suelta();
        mapas.push_back(indice.mapa);
    }
    SueltaMapas(paginas, mapas);
    for (const quint32 pagina : definicion.paginas)
        SueltaPagina(paginas, pagina, {});
}

} // namespace

quint32 CreaTabla(const std::shared_ptr<PaginasEscribibles>& paginas, const NuevaTabla& tabla)
{
    return EnTabla(*paginas, tabla.nombre, [&] {
        CompruebaVersion(*paginas);
        CompruebaNombre(tabla.nombre);
        RegistroDeObjetos registro(paginas);
        registro.CompruebaLibre(tabla.nombre);
        const Cabecera cabecera = LeeCabecera(paginas->Lee(0).bytes);
        const OrdenTexto orden{.idioma = cabecera.idioma, .version = cabecera.versionOrden};
        Definicion definicion{.columnas = ColumnasDe(tabla, orden)};
        Coloca(definicion);
        CompruebaIndices(definicion, tabla.indices);
        CompruebaQueCabe(definicion);
        definicion.pagina = PidePagina(*paginas, {});
        PaginasDeMapas mapas(*paginas);
        std::vector<NuevoIndice> indices;
        std::transform(tabla.indices.begin(), tabla.indices.end(), std::back_inserter(indices),
                       Completo);
        MontaTabla(*paginas, definicion, indices, mapas);
        registro.AnotaTabla(definicion.pagina, tabla.nombre,
                            EscribePropiedades(PropiedadesDe(tabla)));
        return definicion.pagina;
    });
}

void CreaIndice(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                const NuevoIndice& indice)
{
    EnTabla(*paginas, tabla, [&] {
        CompruebaVersion(*paginas);
        const Base base(paginas);
        const Objeto objeto = TablaPropia(base, tabla);
        const Tabla antes = base.AbreTabla(objeto);
        const Definicion& definicion = antes.definicion();
        CompruebaNombre(indice.nombre);
        CompruebaIndice(definicion, indice);
        for (const IndiceLogico& otro : definicion.indicesLogicos) {
            if (otro.nombre.compare(indice.nombre, Qt::CaseInsensitive) == 0)
                NoSeHace(QStringLiteral("El índice ya existe: ") + indice.nombre);
            if (indice.primario && otro.clase == ClaseIndice::Primario)
                NoSeHace(QStringLiteral("Una tabla no puede tener dos claves primarias"));
        }
        if (definicion.indicesLogicos.size() >= MasIndices)
            NoSeHace(QStringLiteral("Una tabla no puede tener más de 32 índices"));
        PaginasDeMapas mapas(*paginas, definicion.paginasPropias.pagina);
        const IndiceReal real = MontaIndice(*paginas, definicion, Completo(indice), mapas);
        std::vector<quint32> suyas;
        const std::vector<quint8> bytes = BytesDeDefinicion(*paginas, definicion.pagina, suyas);
        QByteArray nuevos(reinterpret_cast<const char*>(bytes.data()),
                          static_cast<qsizetype>(bytes.size()));
        AnadeIndice(nuevos, real, LogicoDe(indice));
        GuardaDefinicion(*paginas, suyas, nuevos);
        LlenaIndice(*paginas, base.AbreTabla(objeto));
    });
}

void BorraTabla(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla)
{
    EnTabla(*paginas, tabla, [&] {
        CompruebaVersion(*paginas);
        const Base base(paginas);
        const Objeto objeto = TablaPropia(base, tabla);
        const Tabla vieja = base.AbreTabla(objeto);
        RegistroDeObjetos registro(paginas);
        registro.CompruebaSinRelaciones(objeto.nombre);
        registro.Borra(objeto);
        SueltaTabla(*paginas, vieja.definicion());
    });
}

} // namespace tolmo::data::access::mdb
