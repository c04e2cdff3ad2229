#include "data/access/mdb/define_tabla.h"
#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_definicion.h"
#include "data/access/mdb/indices_tabla.h"
#include "data/access/mdb/monta_tabla.h"
#include "data/access/mdb/nombres.h"
#include "data/access/mdb/nueva_columna.h"
#include "data/access/mdb/registro_objetos.h"
#include "data/access/mdb/suelta_mapas.h"
#include "data/access/mdb/tabla_propia.h"
#include <QSet>
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t MasIndices = 32;
constexpr std::size_t ColumnasPorIndice = 10;
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

std::vector<Propiedad> PropiedadesDe(const NuevaTabla& tabla)
{
    std::vector<Propiedad> propiedades;
    for (const NuevaColumna& columna : tabla.columnas) {
        const std::vector<Propiedad> suyas = PropiedadesDe(columna);
        propiedades.insert(propiedades.end(), suyas.begin(), suyas.end());
    }
    return propiedades;
}

void LlenaIndice(PaginasEscribibles& paginas, const Tabla& tabla)
{
    IndicesDeTabla indices(paginas, tabla);
    indices.Llena(indices.Cuantos() - 1);
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
        CompruebaNombreDeTabla(tabla.nombre);
        RegistroDeObjetos registro(paginas);
        registro.CompruebaLibre(tabla.nombre);
        Definicion definicion{.columnas = ColumnasDe(tabla, OrdenDelFichero(*paginas))};
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
        DefinicionAbierta abierta(*paginas, definicion.pagina);
        AnadeIndice(abierta.partes, real, LogicoDe(indice));
        abierta.Guarda();
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
