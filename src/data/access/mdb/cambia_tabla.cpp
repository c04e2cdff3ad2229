#include "data/access/mdb/cambia_tabla.h"
#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/escribe_definicion.h"
#include "data/access/mdb/guarda_propiedades.h"
#include "data/access/mdb/monta_tabla.h"
#include "data/access/mdb/nombres.h"
#include "data/access/mdb/nueva_columna.h"
#include "data/access/mdb/suelta_mapas.h"
#include "data/access/mdb/tabla_escribible.h"
#include "data/access/mdb/tabla_propia.h"
#include <algorithm>
#include <set>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint8 Autonumericas = 0x44;

bool SonIguales(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// A table whose shape is being changed.
class TablaCambiada {
  public:
    TablaCambiada(std::shared_ptr<PaginasEscribibles> paginas, const QString& nombre)
        : paginas_(std::move(paginas)), base_(paginas_), objeto_(TablaPropia(base_, nombre)),
          tabla_(base_.AbreTabla(objeto_))
    {
    }

    PaginasEscribibles& paginas() const { return *paginas_; }
    const Definicion& definicion() const { return tabla_.definicion(); }
    const Tabla& tabla() const { return tabla_; }
    const Columna& ColumnaDe(const QString& nombre) const
    {
        const Columna* columna = definicion().ColumnaDe(nombre);
        if (columna == nullptr)
            throw ErrorMdb(Motivo::NoHallado,
                           QStringLiteral("La tabla no tiene la columna ") + nombre);
        return *columna;
    }
    DefinicionAbierta Abre() const { return {*paginas_, definicion().pagina}; }

    /// The table as it is now.
    Tabla Ahora() const { return base_.AbreTabla(objeto_); }
    std::shared_ptr<PaginasEscribibles> Compartidas() const { return paginas_; }

    std::vector<Propiedad> Propiedades() const
    {
        return PropiedadesDeTabla(paginas_, definicion().pagina);
    }
    void Guarda(const std::vector<Propiedad>& propiedades) const
    {
        GuardaPropiedades(paginas_, objeto_, propiedades);
    }

    /// \throws ErrorMdb when a relationship, enforced or not, names the column
    void CompruebaSinRelaciones(const Columna& columna) const
    {
        const Tabla relaciones = base_.AbreTabla(QStringLiteral("MSysRelationships"));
        for (Cursor cursor(relaciones); cursor.Siguiente();) {
            const auto es = [&](const char* suTabla, const char* suColumna) {
                const auto texto = [&](const char* cual) {
                    return Como<QString>(cursor.fila().Lee(relaciones[QString::fromLatin1(cual)]));
                };
                return SonIguales(texto(suTabla), objeto_.nombre) &&
                       SonIguales(texto(suColumna), columna.nombre);
            };
            if (es("szObject", "szColumn") || es("szReferencedObject", "szReferencedColumn"))
                throw ErrorMdb(Motivo::Relacion,
                               QStringLiteral("La columna está en una relación con otra tabla"),
                               {.columna = columna.nombre});
        }
    }

  private:
    std::shared_ptr<PaginasEscribibles> paginas_;
    Base base_;
    Objeto objeto_;
    Tabla tabla_;
};

template <typename Tarea>
void Cambia(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla, Tarea&& tarea)
{
    EnTabla(*paginas, tabla, [&] {
        CompruebaVersion(*paginas);
        tarea(TablaCambiada(paginas, tabla));
    });
}

/// Behind the fixed part of all rows, where columns may have been that the definition no longer
/// tells of.
std::size_t SitioDeFija(const TablaCambiada& cambiada)
{
    std::size_t fin = 0;
    for (const Columna& columna : cambiada.definicion().columnas) {
        if (columna.Fija() && columna.tipo != TipoColumna::Logico)
            fin = std::max(fin, columna.desplazamiento + AnchoFijo(columna));
    }
    for (Cursor cursor(cambiada.tabla()); cursor.Siguiente();)
        fin = std::max(fin, cursor.fila().FinDeFijas());
    return fin;
}

void CompruebaNueva(const Definicion& definicion, const NuevaColumna& nueva)
{
    CompruebaNombre(nueva.nombre);
    if (definicion.ColumnaDe(nueva.nombre) != nullptr)
        NoSeHace(QStringLiteral("La columna ya existe: ") + nueva.nombre);
    if (definicion.maxColumnas >= MasColumnas)
        NoSeHace(
            QStringLiteral("La tabla no admite más columnas: también cuentan las que ya no tiene"));
    if (nueva.autonumerica && std::any_of(definicion.columnas.begin(), definicion.columnas.end(),
                                          [](const Columna& c) { return c.Autonumerica(); }))
        NoSeHace(QStringLiteral("Una tabla no puede tener dos columnas autonuméricas"));
    if (nueva.autonumerica && nueva.tipo != TipoColumna::Largo)
        NoSeHace(QStringLiteral("A una tabla sólo se le añade una columna autonumérica de números"),
                 {.columna = nueva.nombre});
}

/// Behind the last of the columns that are shown; where none tells its place, they stand by their
/// numbers.
quint16 PosicionNueva(const Definicion& definicion)
{
    quint16 ultima = 0;
    for (const Columna& columna : definicion.columnas)
        ultima = std::max(ultima, columna.posicion);
    return ultima == 0 ? quint16{0} : static_cast<quint16>(ultima + 1);
}

Columna ColumnaNueva(const TablaCambiada& cambiada, const NuevaColumna& nueva)
{
    const Definicion& definicion = cambiada.definicion();
    CompruebaNueva(definicion, nueva);
    Columna columna =
        ColumnaDe(nueva, PosicionNueva(definicion), OrdenDelFichero(cambiada.paginas()));
    columna.numero = definicion.maxColumnas;
    columna.ranura = definicion.ranuras;
    if (columna.Fija() && columna.tipo != TipoColumna::Logico)
        columna.desplazamiento = static_cast<quint16>(SitioDeFija(cambiada));
    Definicion ampliada = definicion;
    ++ampliada.maxColumnas;
    ampliada.ranuras = static_cast<quint16>(ampliada.ranuras + (columna.Fija() ? 0 : 1));
    ampliada.columnas.push_back(columna);
    CompruebaQueCabe(ampliada);
    return columna;
}

/// Counts the rows in a new column, which becomes an autonumber then.
void Numera(const TablaCambiada& cambiada, Columna columna, quint8 marcas)
{
    const Tabla tabla = cambiada.Ahora();
    const auto& columnas = tabla.definicion().columnas;
    const auto lugar =
        static_cast<std::size_t>(tabla.definicion().ColumnaDe(columna.numero) - columnas.data());
    std::vector<Puntero> filas;
    for (Cursor cursor(tabla); cursor.Siguiente();)
        filas.push_back(cursor.puntero());
    TablaEscribible escribible(cambiada.Compartidas(), tabla);
    qint32 numero = 0;
    for (const Puntero fila : filas) {
        const TablaEscribible::Cambio cambio{.columna = lugar, .valor = qint64{++numero}};
        escribible.Actualiza(fila, {&cambio, 1});
    }
    columna.marcas = marcas;
    DefinicionAbierta abierta = cambiada.Abre();
    CambiaColumna(abierta.partes, columna);
    Pon(abierta.partes.cabecera, cambiada.paginas().formato().autonumerico, numero);
    abierta.Guarda();
}

/// That of an index which uses the tree.
QString NombreDeArbol(const Definicion& definicion, std::size_t real)
{
    const auto indice =
        std::find_if(definicion.indicesLogicos.begin(), definicion.indicesLogicos.end(),
                     [&](const IndiceLogico& i) { return i.real == real; });
    return indice == definicion.indicesLogicos.end() ? QString() : indice->nombre;
}

void QuitaDeLaDefinicion(const TablaCambiada& cambiada, DefinicionAbierta& abierta,
                         const Columna& columna)
{
    const Definicion& definicion = cambiada.definicion();
    if (definicion.columnas.size() == 1)
        NoSeHace(QStringLiteral("Una tabla tiene de 1 a 255 columnas"));
    for (std::size_t i = 0; i < definicion.indicesReales.size(); ++i) {
        const auto& suyas = definicion.indicesReales[i].columnas;
        if (std::any_of(suyas.begin(), suyas.end(),
                        [&](const ColumnaIndice& c) { return c.numero == columna.numero; }))
            NoSeHace(QStringLiteral("La columna está en un índice"),
                     {.columna = columna.nombre, .indice = NombreDeArbol(definicion, i)});
    }
    cambiada.CompruebaSinRelaciones(columna);
    SueltaTodas(cambiada.paginas(), columna.paginasLargas);
    SueltaMapas(cambiada.paginas(), {columna.paginasLargas, columna.paginasLargasLibres});
    QuitaColumna(abierta.partes, columna);
}

void QuitaPropiedades(std::vector<Propiedad>& propiedades, const Columna& columna)
{
    std::erase_if(propiedades,
                  [&](const Propiedad& p) { return SonIguales(p.columna, columna.nombre); });
}

/// The properties of `vieja`, but for those that `nueva` has of its own, under its name.
void HeredaPropiedades(std::vector<Propiedad>& propiedades, const Columna& vieja,
                       const Columna& nueva)
{
    std::set<QString> propias;
    for (const Propiedad& p : propiedades) {
        if (SonIguales(p.columna, nueva.nombre))
            propias.insert(p.nombre);
    }
    std::erase_if(propiedades, [&](const Propiedad& p) {
        return SonIguales(p.columna, vieja.nombre) && propias.contains(p.nombre);
    });
    for (Propiedad& p : propiedades) {
        if (SonIguales(p.columna, nueva.nombre))
            p.columna = vieja.nombre;
    }
}

const IndiceLogico& IndiceDe(const Definicion& definicion, const QString& nombre)
{
    const auto indice =
        std::find_if(definicion.indicesLogicos.begin(), definicion.indicesLogicos.end(),
                     [&](const IndiceLogico& i) { return SonIguales(i.nombre, nombre); });
    if (indice == definicion.indicesLogicos.end())
        throw ErrorMdb(Motivo::NoHallado, QStringLiteral("La tabla no tiene el índice ") + nombre);
    return *indice;
}

/// \throws ErrorMdb when a relationship has the index, or shares its tree
void CompruebaSinRelaciones(const Definicion& definicion, const IndiceLogico& indice)
{
    const bool deRelacion =
        std::any_of(definicion.indicesLogicos.begin(), definicion.indicesLogicos.end(),
                    [&](const IndiceLogico& otro) {
                        return otro.real == indice.real &&
                               (otro.clase == ClaseIndice::Ajeno || otro.ladoRelacion != 0);
                    });
    if (deRelacion)
        throw ErrorMdb(Motivo::Relacion,
                       QStringLiteral("El índice es de una relación con otra tabla"),
                       {.indice = indice.nombre});
}

} // namespace

void AnadeColumna(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                  const NuevaColumna& nueva)
{
    Cambia(paginas, tabla, [&](const TablaCambiada& cambiada) {
        Columna columna = ColumnaNueva(cambiada, nueva);
        const quint8 marcas = columna.marcas;
        columna.marcas &= static_cast<quint8>(~Autonumericas);
        if (columna.Larga()) {
            PaginasDeMapas mapas(*paginas, cambiada.definicion().paginasPropias.pagina);
            columna.paginasLargas = mapas.Nuevo();
            columna.paginasLargasLibres = mapas.Nuevo();
        }
        DefinicionAbierta abierta = cambiada.Abre();
        AnadeColumna(abierta.partes, columna);
        abierta.Guarda();
        if (marcas != columna.marcas)
            Numera(cambiada, columna, marcas);
        std::vector<Propiedad> propiedades = cambiada.Propiedades();
        const std::vector<Propiedad> suyas = PropiedadesDe(nueva);
        propiedades.insert(propiedades.end(), suyas.begin(), suyas.end());
        cambiada.Guarda(propiedades);
    });
}

void QuitaColumna(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                  const QString& nombre)
{
    Cambia(paginas, tabla, [&](const TablaCambiada& cambiada) {
        const Columna& columna = cambiada.ColumnaDe(nombre);
        DefinicionAbierta abierta = cambiada.Abre();
        QuitaDeLaDefinicion(cambiada, abierta, columna);
        abierta.Guarda();
        std::vector<Propiedad> propiedades = cambiada.Propiedades();
        QuitaPropiedades(propiedades, columna);
        cambiada.Guarda(propiedades);
    });
}

void SustituyeColumna(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                      const QString& vieja, const QString& nueva)
{
    Cambia(paginas, tabla, [&](const TablaCambiada& cambiada) {
        const Columna& antes = cambiada.ColumnaDe(vieja);
        Columna despues = cambiada.ColumnaDe(nueva);
        std::vector<Propiedad> propiedades = cambiada.Propiedades();
        HeredaPropiedades(propiedades, antes, despues);
        DefinicionAbierta abierta = cambiada.Abre();
        QuitaDeLaDefinicion(cambiada, abierta, antes);
        despues.nombre = antes.nombre;
        despues.posicion = antes.posicion;
        CambiaColumna(abierta.partes, despues);
        abierta.Guarda();
        cambiada.Guarda(propiedades);
    });
}

void BorraIndice(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                 const QString& nombre)
{
    Cambia(paginas, tabla, [&](const TablaCambiada& cambiada) {
        const Definicion& definicion = cambiada.definicion();
        const IndiceLogico& indice = IndiceDe(definicion, nombre);
        CompruebaSinRelaciones(definicion, indice);
        DefinicionAbierta abierta = cambiada.Abre();
        const bool conArbol = QuitaIndice(abierta.partes, indice);
        abierta.Guarda();
        if (!conArbol)
            return;
        const IndiceReal& real = definicion.indicesReales[indice.real];
        ArbolIndice(*paginas, definicion.pagina, real).Suelta();
        SueltaMapas(*paginas, {real.mapa});
    });
}

} // namespace tolmo::data::access::mdb
