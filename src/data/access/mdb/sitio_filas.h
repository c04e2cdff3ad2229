#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>
#include <optional>
#include <vector>

namespace tolmo::data::access::mdb {

/// Finds rows a place in the pages of a table, and keeps the maps of these right.
class SitioDeFilas {
  public:
    /// Both outlive this.
    SitioDeFilas(PaginasEscribibles& paginas, const Definicion& definicion);

    /// \returns the row's place for life
    Puntero Anade(const QByteArray& fila);
    /// The row stays at its place, and moves its data elsewhere when they have grown too long.
    void Cambia(Puntero fila, const QByteArray& nueva);
    void Borra(Puntero fila);

  private:
    std::vector<Puntero> Estancias(Puntero fila);
    Puntero PonDatos(const QByteArray& fila, EstadoRanura estado);
    Puntero PonEn(quint32 pagina, const QByteArray& fila, EstadoRanura estado);
    std::optional<quint32> PaginaPara(std::size_t largo);
    std::optional<Sitio> SitioEn(quint32 pagina);
    bool CabeDondeEsta(Puntero fila, std::size_t largo);
    void Reescribe(Puntero fila, const QByteArray& nueva, EstadoRanura estado);
    void BorraRanuras(std::span<const Puntero> estancias);
    void AnotaSitio(quint32 pagina);

    PaginasEscribibles& paginas_;
    const Definicion& definicion_;
    quint32 ultima_ = 0; ///< page that took the last row
};

} // namespace tolmo::data::access::mdb
