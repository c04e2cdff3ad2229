#include "data/access/mdb/tabla_escribible.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/escribe_dato.h"
#include "data/access/mdb/escribe_fila.h"
#include "data/access/mdb/escribe_largo.h"
#include "data/access/mdb/exigencias.h"
#include "data/access/mdb/nombres.h"
#include "data/access/mdb/relaciones_tabla.h"
#include "data/access/mdb/sitio_filas.h"
#include "data/access/mdb/valor_largo.h"
#include <QUuid>
#include <algorithm>
#include <limits>

namespace tolmo::data::access::mdb {
namespace {

// Parts of columns that hold several values, in files of Access 2007 and later.
constexpr quint8 MarcasDeComplejas = 0x3C;

bool SeEscribe(const Columna& columna, Version version)
{
    if (columna.Calculada() ||
        (version >= Version::Ace2007 && (columna.otrasMarcas & MarcasDeComplejas) != 0))
        return false;
    switch (columna.tipo) {
    case TipoColumna::Logico:
    case TipoColumna::Byte:
    case TipoColumna::Entero:
    case TipoColumna::Largo:
    case TipoColumna::Moneda:
    case TipoColumna::Simple:
    case TipoColumna::Doble:
    case TipoColumna::Fecha:
    case TipoColumna::Binario:
    case TipoColumna::Texto:
    case TipoColumna::Ole:
    case TipoColumna::Memo:
    case TipoColumna::Guid:
    case TipoColumna::Numerico:
    case TipoColumna::BinarioFijo:
    case TipoColumna::Grande:
        return true;
    default:
        return false;
    }
}

[[noreturn]] void NoSeEscribe(const QString& frase, const QString& columna = {})
{
    throw ErrorMdb(Motivo::NoAdmitido, frase, {.columna = columna});
}

void CompruebaQueSeEscribe(const Paginas& paginas, const Tabla& tabla, TablaEscribible::Clase clase)
{
    const Version version = paginas.formato().version;
    if (version == Version::Jet3)
        NoSeEscribe(QStringLiteral("Los ficheros de Access 97 sólo se leen"));
    if (&tabla.paginas() != &paginas)
        NoSeEscribe(QStringLiteral("En una tabla vinculada no se escribe"));
    const bool deSistema = tabla.definicion().deSistema || EsNombreDeSistema(tabla.Nombre());
    if (deSistema && clase == TablaEscribible::Clase::DeUsuario)
        NoSeEscribe(QStringLiteral("En las tablas del sistema no se escribe"));
    for (const Columna& columna : tabla.definicion().columnas) {
        if (!SeEscribe(columna, version))
            NoSeEscribe(QStringLiteral("No se escribe en una tabla con una columna de esta clase"),
                        columna.nombre);
    }
}

bool EsTextoVacio(const Dato& dato)
{
    const auto* texto = std::get_if<QString>(&dato);
    return texto != nullptr && texto->isEmpty();
}

Guid GuidNuevo()
{
    Guid guid;
    const QByteArray bytes = QUuid::createUuid().toRfc4122();
    std::copy(bytes.begin(), bytes.end(), guid.bytes.begin());
    return guid;
}

/// The values of the indexed columns of a row; the others stay Null.
std::vector<Dato> Indexados(const Definicion& definicion, const IndicesDeTabla& indices,
                            const Fila& fila)
{
    std::vector<Dato> valores(definicion.columnas.size());
    for (std::size_t i = 0; i < indices.Cuantos(); ++i) {
        for (const std::size_t columna : indices.Columnas(i))
            valores[columna] = fila.Lee(definicion.columnas[columna]);
    }
    return valores;
}

std::vector<Crudo> CrudosDe(const Definicion& definicion, const Fila& fila)
{
    std::vector<Crudo> crudos;
    for (const Columna& columna : definicion.columnas) {
        if (columna.tipo == TipoColumna::Logico) {
            crudos.push_back(Como<bool>(fila.Lee(columna)) ? Crudo(QByteArray()) : Crudo());
            continue;
        }
        const auto bytes = fila.Crudo(columna);
        crudos.push_back(bytes ? Crudo(CopiaDe(*bytes)) : Crudo());
    }
    return crudos;
}

Crudo CrudoDe(const Columna& columna, const Dato& dato)
{
    if (columna.tipo == TipoColumna::Logico)
        return Como<bool>(dato) ? Crudo(QByteArray()) : Crudo();
    return EsNulo(dato) ? Crudo() : Crudo(EscribeDato(columna, dato));
}

} // namespace

class TablaEscribible::Interior {
  public:
    Interior(std::shared_ptr<PaginasEscribibles> paginas, const Tabla& tabla, Clase clase)
        : paginas_(std::move(paginas)), tabla_(tabla), indices_(*paginas_, tabla_),
          relaciones_(paginas_, tabla_, indices_), sitio_(*paginas_, tabla_.definicion())
    {
        if (clase == Clase::DeUsuario)
            exigencias_ = LeeExigencias(paginas_, Definicion()).columnas;
        else
            exigencias_.resize(Columnas().size());
    }

    Puntero Inserta(std::span<const Dato> valores)
    {
        std::vector<Dato> nuevos = Ajustados(valores);
        PonAutonumericos(nuevos);
        const std::vector<bool> todas(nuevos.size(), true);
        CompruebaExigencias(nuevos, todas);
        const std::vector<ClaveDeFila> claves = Claves(nuevos);
        relaciones_.CompruebaNueva(nuevos, todas);

        std::vector<Crudo> crudos;
        std::vector<std::size_t> largos;
        for (std::size_t i = 0; i < nuevos.size(); ++i) {
            crudos.push_back(CrudoDe(Columnas()[i], nuevos[i]));
            if (Columnas()[i].Larga() && crudos[i])
                largos.push_back(i);
        }
        PonLargos(crudos, largos);
        const Puntero fila = sitio_.Anade(EscribeFila(Definicion(), crudos));
        for (std::size_t i = 0; i < claves.size(); ++i)
            indices_.Anade(i, claves[i], fila);
        CuentaFilas(1);
        SubeAutonumerico(nuevos);
        return fila;
    }

    bool Actualiza(Puntero puntero, std::span<const Cambio> cambios)
    {
        std::vector<Crudo> crudos;
        std::vector<Dato> viejos;
        {
            const std::optional<Fila> fila = tabla_.FilaEn(puntero);
            if (!fila)
                return false;
            crudos = CrudosDe(Definicion(), *fila);
            viejos = Indexados(Definicion(), indices_, *fila);
        }
        std::vector<Dato> nuevos = viejos;
        std::vector<bool> cambia(Columnas().size(), false);
        std::vector<std::size_t> largos;
        std::vector<std::pair<std::size_t, QByteArray>> sobran;
        for (const Cambio& cambio : cambios) {
            const Columna& columna = Columnas().at(cambio.columna);
            const std::size_t i = cambio.columna;
            nuevos[i] = Ajusta(columna, cambio.valor);
            const Crudo crudo = CrudoDe(columna, nuevos[i]);
            if (!Cambia(columna, crudos[i], crudo))
                continue;
            if (columna.Autonumerica())
                throw ErrorMdb(Motivo::Valor, QStringLiteral("Un autonumérico no se cambia"),
                               {.columna = columna.nombre});
            cambia[i] = true;
            if (columna.Larga() && crudos[i])
                sobran.emplace_back(i, *crudos[i]);
            if (columna.Larga() && crudo)
                largos.push_back(i);
            crudos[i] = crudo;
        }
        CompruebaExigencias(nuevos, cambia);
        const std::vector<std::pair<std::size_t, ClaveDeFila>> claves =
            ClavesCambiadas(viejos, nuevos, cambia);
        relaciones_.CompruebaNueva(nuevos, cambia);
        relaciones_.CompruebaVieja(viejos, cambia);

        PonLargos(crudos, largos);
        const QByteArray fila = EscribeFila(Definicion(), crudos);
        for (const auto& [indice, clave] : claves)
            indices_.Anade(indice, clave, puntero);
        sitio_.Cambia(puntero, fila);
        for (const auto& [indice, clave] : claves)
            indices_.Quita(indice, viejos, puntero);
        for (const auto& [columna, crudo] : sobran)
            BorraLargo(*paginas_, Columnas()[columna], BytesDe(crudo));
        return true;
    }

    bool Borra(Puntero puntero)
    {
        std::vector<Crudo> crudos;
        std::vector<Dato> viejos;
        {
            const std::optional<Fila> fila = tabla_.FilaEn(puntero);
            if (!fila)
                return false;
            crudos = CrudosDe(Definicion(), *fila);
            viejos = Indexados(Definicion(), indices_, *fila);
        }
        relaciones_.CompruebaVieja(viejos, std::vector<bool>(viejos.size(), true));
        for (std::size_t i = 0; i < indices_.Cuantos(); ++i)
            indices_.Quita(i, viejos, puntero);
        sitio_.Borra(puntero);
        for (std::size_t i = 0; i < crudos.size(); ++i) {
            if (Columnas()[i].Larga() && crudos[i])
                BorraLargo(*paginas_, Columnas()[i], BytesDe(*crudos[i]));
        }
        CuentaFilas(-1);
        return true;
    }

    qint32 UltimoAutonumerico() const
    {
        return paginas_->Lee(Definicion().pagina).bytes.I32(paginas_->formato().autonumerico);
    }

    Lugar En() const { return tabla_.En(); }

  private:
    const mdb::Definicion& Definicion() const { return tabla_.definicion(); }
    const std::vector<Columna>& Columnas() const { return tabla_.definicion().columnas; }

    std::vector<Dato> Ajustados(std::span<const Dato> valores) const
    {
        if (valores.size() != Columnas().size())
            throw ErrorMdb(Motivo::Valor, QStringLiteral("Se dan %1 valores para %2 columnas")
                                              .arg(valores.size())
                                              .arg(Columnas().size()));
        std::vector<Dato> nuevos;
        nuevos.reserve(valores.size());
        for (std::size_t i = 0; i < valores.size(); ++i)
            nuevos.push_back(Ajusta(Columnas()[i], valores[i]));
        return nuevos;
    }

    void PonAutonumericos(std::vector<Dato>& valores) const
    {
        for (std::size_t i = 0; i < valores.size(); ++i) {
            const Columna& columna = Columnas()[i];
            if (!columna.Autonumerica() || !EsNulo(valores[i]))
                continue;
            if (columna.tipo == TipoColumna::Guid)
                valores[i] = GuidNuevo();
            else if (UltimoAutonumerico() == std::numeric_limits<qint32>::max())
                throw ErrorMdb(Motivo::Valor, QStringLiteral("No quedan autonuméricos"),
                               {.columna = columna.nombre});
            else
                valores[i] = qint64{UltimoAutonumerico()} + 1;
        }
    }

    void SubeAutonumerico(const std::vector<Dato>& valores)
    {
        for (std::size_t i = 0; i < valores.size(); ++i) {
            if (!Columnas()[i].Autonumerica() || Columnas()[i].tipo != TipoColumna::Largo)
                continue;
            const auto numero = static_cast<qint32>(Como<qint64>(valores[i]));
            if (numero > UltimoAutonumerico())
                Pon(paginas_->Cambia(Definicion().pagina), paginas_->formato().autonumerico,
                    numero);
        }
    }

    void CuentaFilas(int mas)
    {
        const auto pagina = paginas_->Cambia(Definicion().pagina);
        const std::size_t posicion = paginas_->formato().filas;
        const quint32 antes = Bytes(pagina).U32(posicion);
        // The count isn't always right in files of Access.
        Pon(pagina, posicion, antes == 0 && mas < 0 ? 0 : antes + static_cast<quint32>(mas));
    }

    void CompruebaExigencias(const std::vector<Dato>& valores, const std::vector<bool>& cambia)
    {
        for (std::size_t i = 0; i < valores.size(); ++i) {
            if (cambia[i] && exigencias_[i].obligatoria && EsNulo(valores[i]))
                FaltaValor(Definicion(), Columnas()[i]);
            if (cambia[i] && !exigencias_[i].admiteVacio && EsTextoVacio(valores[i]))
                throw ErrorMdb(Motivo::SinValor,
                               QStringLiteral("El campo %1 no admite un texto vacío")
                                   .arg(Campo(Definicion(), Columnas()[i])));
        }
    }

    std::vector<ClaveDeFila> Claves(const std::vector<Dato>& valores)
    {
        std::vector<ClaveDeFila> claves;
        for (std::size_t i = 0; i < indices_.Cuantos(); ++i)
            claves.push_back(indices_.Clave(i, valores));
        for (std::size_t i = 0; i < indices_.Cuantos(); ++i)
            indices_.CompruebaUnica(i, valores);
        return claves;
    }

    std::vector<std::pair<std::size_t, ClaveDeFila>>
    ClavesCambiadas(const std::vector<Dato>& viejos, const std::vector<Dato>& nuevos,
                    const std::vector<bool>& cambia)
    {
        std::vector<std::pair<std::size_t, ClaveDeFila>> claves;
        for (std::size_t i = 0; i < indices_.Cuantos(); ++i) {
            const auto& columnas = indices_.Columnas(i);
            if (std::none_of(columnas.begin(), columnas.end(),
                             [&](std::size_t columna) { return cambia[columna]; }))
                continue;
            ClaveDeFila clave = indices_.Clave(i, nuevos);
            const ClaveDeFila vieja = indices_.ClaveVieja(i, viejos);
            if (clave.caso == vieja.caso && clave.bytes == vieja.bytes)
                continue;
            indices_.CompruebaUnica(i, nuevos);
            claves.emplace_back(i, std::move(clave));
        }
        return claves;
    }

    /// False when a column holds the value already; its long value then stays where it is.
    bool Cambia(const Columna& columna, const Crudo& antes, const Crudo& ahora) const
    {
        if (!columna.Larga() || !antes || !ahora)
            return antes != ahora;
        return LeeValorLargo(*paginas_, BytesDe(*antes)) != *ahora;
    }

    /// Changes long values into what the row holds of them. All is known to fit before the first
    /// one is written.
    void PonLargos(std::vector<Crudo>& crudos, const std::vector<std::size_t>& largos)
    {
        std::vector<Crudo> minimos = crudos;
        for (const std::size_t i : largos)
            minimos[i] = QByteArray(TamCabeceraLarga, '\0');
        const std::size_t menos = LargoDeFila(Definicion(), minimos);
        if (menos > MayorFila)
            EscribeFila(Definicion(), minimos);
        auto quedan = static_cast<qsizetype>(MayorFila - std::min(menos, MayorFila));
        for (const std::size_t i : largos) {
            const QByteArray valor = *crudos[i];
            if (valor.size() > MayorEnLaFila || valor.size() > quedan) {
                crudos[i] = EscribeLargo(*paginas_, Columnas()[i], valor);
                continue;
            }
            crudos[i] = LargoEnLaFila(valor);
            quedan -= valor.size();
        }
    }

    std::shared_ptr<PaginasEscribibles> paginas_;
    Tabla tabla_;
    IndicesDeTabla indices_;
    RelacionesDeTabla relaciones_;
    SitioDeFilas sitio_;
    std::vector<ExigenciasDeColumna> exigencias_{}; ///< in the order of the definition
};

TablaEscribible::TablaEscribible(std::shared_ptr<PaginasEscribibles> paginas, const Tabla& tabla,
                                 Clase clase)
{
    interior_ = EnLugar([&] { return tabla.En(); },
                        [&] {
                            CompruebaQueSeEscribe(*paginas, tabla, clase);
                            return std::make_unique<Interior>(std::move(paginas), tabla, clase);
                        });
}

TablaEscribible::TablaEscribible(TablaEscribible&&) noexcept = default;
TablaEscribible& TablaEscribible::operator=(TablaEscribible&&) noexcept = default;
TablaEscribible::~TablaEscribible() = default;

Puntero TablaEscribible::Inserta(std::span<const Dato> valores)
{
    return EnLugar([&] { return interior_->En(); }, [&] { return interior_->Inserta(valores); });
}

bool TablaEscribible::Actualiza(Puntero fila, std::span<const Cambio> cambios)
{
    return EnLugar([&] { return interior_->En(); },
                   [&] { return interior_->Actualiza(fila, cambios); });
}

bool TablaEscribible::Borra(Puntero fila)
{
    return EnLugar([&] { return interior_->En(); }, [&] { return interior_->Borra(fila); });
}

qint32 TablaEscribible::UltimoAutonumerico() const
{
    return EnLugar([&] { return interior_->En(); },
                   [&] { return interior_->UltimoAutonumerico(); });
}

} // namespace tolmo::data::access::mdb
