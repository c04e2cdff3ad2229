#include "data/access/mdb/definicion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/texto.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t PosicionSiguiente = 4;
constexpr std::size_t CabeceraContinuacion = 8;
constexpr std::size_t PosicionLargo = 8;
// 255 columns and 32 indexes with names of 64 characters take less than 50 KB.
constexpr std::size_t MayorDefinicion = std::size_t{1} << 20;
constexpr quint8 ClaseSistema = 0x53;
constexpr quint16 SinColumna = 0xFFFF;
constexpr std::size_t ColumnasPorIndice = 10;
// Access allows 255 columns and 32 indexes; what passes these bounds is damage.
constexpr quint16 MasColumnas = 255;
constexpr quint32 MasIndices = 255;

/// Walks the bytes of a definition from front to back.
class Analisis {
  public:
    Analisis(Bytes bytes, const Formato& formato) : bytes_(bytes), f_(formato) {}

    void Rellena(Definicion& definicion)
    {
        const quint16 columnas = Fijos(definicion);
        const quint32 logicos = bytes_.U32(f_.indicesLogicos);
        const quint32 reales = bytes_.U32(f_.indicesReales);
        if (columnas > MasColumnas || logicos > MasIndices || reales > MasIndices)
            Danado(QStringLiteral("La definición dice tener demasiadas columnas o índices"));
        posicion_ = f_.bloques;
        const std::size_t estadisticas = posicion_;
        Bloque(reales * f_.tamEstadistica);
        for (quint16 i = 0; i < columnas; ++i)
            definicion.columnas.push_back(UnaColumna(Bloque(f_.tamColumna)));
        for (Columna& columna : definicion.columnas) {
            columna.nombre = Nombre();
            if (columna.numero >= definicion.maxColumnas)
                Danado(QStringLiteral("La tabla no cuenta con una de sus columnas"),
                       {.columna = columna.nombre});
        }
        for (quint32 i = 0; i < reales; ++i) {
            definicion.indicesReales.push_back(UnIndiceReal(Bloque(f_.tamIndiceReal)));
            definicion.indicesReales.back().unicas =
                bytes_.U32(estadisticas + i * f_.tamEstadistica + f_.unicasEnEstadistica);
        }
        for (quint32 i = 0; i < logicos; ++i)
            definicion.indicesLogicos.push_back(UnIndiceLogico(Bloque(f_.tamIndiceLogico)));
        for (IndiceLogico& indice : definicion.indicesLogicos)
            indice.nombre = Nombre();
        MapasDeLargos(definicion);
    }

  private:
    quint16 Fijos(Definicion& definicion) const
    {
        definicion.filas = bytes_.U32(f_.filas);
        definicion.ultimoAutonumerico = bytes_.I32(f_.autonumerico);
        definicion.deSistema = bytes_.U8(f_.clase) == ClaseSistema;
        definicion.maxColumnas = bytes_.U16(f_.maxColumnas);
        definicion.ranuras = bytes_.U16(f_.ranuras);
        definicion.paginasPropias = Puntero::De(bytes_.U32(f_.mapaPropias));
        definicion.paginasLibres = Puntero::De(bytes_.U32(f_.mapaLibres));
        return bytes_.U16(f_.columnas);
    }

    Bytes Bloque(std::size_t tam)
    {
        const Bytes bloque = bytes_.Trozo(posicion_, tam);
        posicion_ += tam;
        return bloque;
    }

    QString Nombre()
    {
        const std::size_t largo = f_.EsJet3() ? Bloque(1).U8(0) : Bloque(2).U16(0);
        return TextoSinComprimir(Bloque(largo), f_);
    }

    Columna UnaColumna(Bytes bloque) const
    {
        Columna columna;
        columna.tipo = static_cast<TipoColumna>(bloque.U8(0));
        columna.numero = bloque.U16(f_.colNumero);
        columna.ranura = bloque.U16(f_.colRanura);
        columna.posicion = bloque.U16(f_.colPosicion);
        columna.marcas = bloque.U8(f_.colMarcas);
        columna.otrasMarcas = f_.EsJet3() ? quint8{0} : bloque.U8(f_.colMarcas + 1);
        columna.desplazamiento = bloque.U16(f_.colDesplazamiento);
        columna.largo = bloque.U16(f_.colLargo);
        if (columna.tipo == TipoColumna::Numerico) {
            columna.precision = bloque.U8(11);
            columna.escala = bloque.U8(12);
        } else {
            columna.orden.idioma = bloque.U16(f_.colOrden);
            columna.orden.version = f_.EsJet3() ? quint8{0} : bloque.U8(f_.colOrden + 3);
        }
        return columna;
    }

    IndiceReal UnIndiceReal(Bytes bloque) const
    {
        IndiceReal indice;
        std::size_t posicion = f_.prefijoBloque;
        for (std::size_t i = 0; i < ColumnasPorIndice; ++i, posicion += 3) {
            const quint16 numero = bloque.U16(posicion);
            if (numero != SinColumna)
                indice.columnas.push_back(
                    {.numero = numero, .descendente = bloque.U8(posicion + 2) == 0});
        }
        indice.mapa = Puntero::De(bloque.U32(posicion));
        indice.raiz = bloque.U32(posicion + 4);
        indice.marcas = bloque.U8(f_.marcasIndice);
        return indice;
    }

    IndiceLogico UnIndiceLogico(Bytes bloque) const
    {
        const Bytes b = bloque.Desde(f_.prefijoBloque);
        IndiceLogico indice;
        indice.numero = b.U32(0);
        indice.real = b.U32(4);
        indice.ladoRelacion = b.U8(8);
        indice.indiceAjeno = b.U32(9);
        indice.tablaAjena = b.U32(13);
        indice.actualizaEnCascada = b.U8(17) == 1;
        indice.borraEnCascada = b.U8(18);
        indice.clase = static_cast<ClaseIndice>(b.U8(19));
        return indice;
    }

    void MapasDeLargos(Definicion& definicion)
    {
        constexpr std::size_t tamMapas = 10;
        while (posicion_ + tamMapas <= bytes_.size() && bytes_.U16(posicion_) != SinColumna) {
            const Bytes bloque = Bloque(tamMapas);
            for (Columna& columna : definicion.columnas) {
                if (columna.numero != bloque.U16(0))
                    continue;
                columna.paginasLargas = Puntero::De(bloque.U32(2));
                columna.paginasLargasLibres = Puntero::De(bloque.U32(6));
            }
        }
    }

    Bytes bytes_;
    const Formato& f_;
    std::size_t posicion_ = 0;
};

} // namespace

const Columna* Definicion::ColumnaDe(const QString& buscada) const
{
    const auto hallada = std::find_if(columnas.begin(), columnas.end(), [&](const Columna& c) {
        return c.nombre.compare(buscada, Qt::CaseInsensitive) == 0;
    });
    return hallada == columnas.end() ? nullptr : &*hallada;
}

const Columna* Definicion::ColumnaDe(quint16 numero) const
{
    const auto hallada = std::find_if(columnas.begin(), columnas.end(),
                                      [&](const Columna& c) { return c.numero == numero; });
    return hallada == columnas.end() ? nullptr : &*hallada;
}

std::vector<quint8> BytesDeDefinicion(Paginas& paginas, quint32 primera,
                                      std::vector<quint32>& tomadas)
{
    std::vector<quint8> bytes;
    Visitadas visitadas(paginas.Cuantas());
    for (quint32 numero = primera; numero != 0;) {
        const Pagina pagina = paginas.Lee(numero);
        if (!visitadas.Marca(numero))
            Danado(QStringLiteral("La definición de la tabla vuelve sobre sí misma"),
                   {.pagina = numero});
        if (pagina.bytes.U8(0) != tipo_pagina::Definicion)
            Danado(QStringLiteral("La página no es la definición de una tabla"),
                   {.pagina = numero});
        const auto todo = pagina.bytes.Desde(bytes.empty() ? 0 : CabeceraContinuacion).Todo();
        bytes.insert(bytes.end(), todo.begin(), todo.end());
        if (bytes.size() > MayorDefinicion)
            Danado(QStringLiteral("La definición de la tabla es demasiado larga"));
        tomadas.push_back(numero);
        numero = pagina.bytes.U32(PosicionSiguiente);
    }
    const quint32 largo = Bytes(bytes).U32(PosicionLargo);
    if (largo > bytes.size())
        Danado(QStringLiteral("A la definición de la tabla le falta el final"));
    bytes.resize(largo);
    return bytes;
}

Definicion LeeDefinicion(Paginas& paginas, quint32 pagina, const QString& nombre)
{
    Definicion definicion{.nombre = nombre, .pagina = pagina};
    EnLugar([&] { return Lugar{.fichero = paginas.Nombre(), .tabla = nombre, .pagina = pagina}; },
            [&] {
                const std::vector<quint8> bytes =
                    BytesDeDefinicion(paginas, pagina, definicion.paginas);
                Analisis(Bytes(bytes), paginas.formato()).Rellena(definicion);
            });
    std::stable_sort(definicion.columnas.begin(), definicion.columnas.end(),
                     [](const Columna& a, const Columna& b) {
                         return std::pair(a.posicion, a.numero) < std::pair(b.posicion, b.numero);
                     });
    return definicion;
}

} // namespace tolmo::data::access::mdb
