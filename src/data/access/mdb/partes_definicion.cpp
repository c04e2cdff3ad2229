#include "data/access/mdb/partes_definicion.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/formato.h"
#include "data/access/mdb/texto.h"

namespace tolmo::data::access::mdb {
namespace {

constexpr quint16 FinDeLargas = 0xFFFF;
constexpr std::size_t TamLarga = 10; ///< number of the column, its two maps

const Formato& F()
{
    static const Formato formato = FormatoDe(Version::Jet4);
    return formato;
}

/// Takes the bytes of a definition from front to back.
class Corte {
  public:
    explicit Corte(Bytes bytes) : bytes_(bytes) {}

    QByteArray Toma(std::size_t largo)
    {
        const QByteArray trozo = CopiaDe(bytes_.Trozo(0, largo));
        bytes_ = bytes_.Desde(largo);
        return trozo;
    }
    QString TomaNombre()
    {
        const std::size_t largo = bytes_.U16(0);
        const QString nombre = TextoSinComprimir(bytes_.Trozo(2, largo), F());
        bytes_ = bytes_.Desde(2 + largo);
        return nombre;
    }
    template <typename Lista> void TomaNombres(Lista& lista)
    {
        for (auto& parte : lista)
            parte.nombre = TomaNombre();
    }
    bool SigueUnaLarga() const { return bytes_.size() >= TamLarga && bytes_.U16(0) != FinDeLargas; }
    QByteArray Resto() const { return CopiaDe(bytes_); }

  private:
    Bytes bytes_;
};

QByteArray Nombre(const QString& nombre)
{
    QByteArray bytes;
    Anade(bytes, static_cast<quint16>(2 * nombre.size()));
    return bytes + EscribeTexto(nombre, false);
}

} // namespace

PartesDefinicion PartesDefinicion::De(Bytes bytes)
{
    PartesDefinicion partes;
    Corte corte(bytes);
    partes.cabecera = corte.Toma(F().bloques);
    const quint16 columnas = bytes.U16(F().columnas);
    const quint32 reales = bytes.U32(F().indicesReales);
    const quint32 logicos = bytes.U32(F().indicesLogicos);
    for (quint32 i = 0; i < reales; ++i)
        partes.estadisticas.push_back(corte.Toma(F().tamEstadistica));
    for (quint16 i = 0; i < columnas; ++i)
        partes.columnas.push_back({.bloque = corte.Toma(F().tamColumna)});
    corte.TomaNombres(partes.columnas);
    for (quint32 i = 0; i < reales; ++i)
        partes.reales.push_back(corte.Toma(F().tamIndiceReal));
    for (quint32 i = 0; i < logicos; ++i)
        partes.logicos.push_back({.bloque = corte.Toma(F().tamIndiceLogico)});
    corte.TomaNombres(partes.logicos);
    while (corte.SigueUnaLarga())
        partes.largas.push_back(corte.Toma(TamLarga));
    partes.fin = corte.Resto();
    return partes;
}

QByteArray PartesDefinicion::Une() const
{
    QByteArray bytes = cabecera;
    Pon(bytes, F().columnas, static_cast<quint16>(columnas.size()));
    Pon(bytes, F().indicesReales, static_cast<quint32>(reales.size()));
    Pon(bytes, F().indicesLogicos, static_cast<quint32>(logicos.size()));
    const auto anade = [&](const auto& lista, auto parte) {
        for (const auto& cosa : lista)
            bytes += parte(cosa);
    };
    const auto todo = [](const QByteArray& parte) { return parte; };
    const auto bloque = [](const ConNombre& parte) { return parte.bloque; };
    const auto nombre = [](const ConNombre& parte) { return Nombre(parte.nombre); };
    anade(estadisticas, todo);
    anade(columnas, bloque);
    anade(columnas, nombre);
    anade(reales, todo);
    anade(logicos, bloque);
    anade(logicos, nombre);
    anade(largas, todo);
    return bytes + fin;
}

} // namespace tolmo::data::access::mdb
