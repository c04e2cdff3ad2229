#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/fila.h"
#include "data/access/mdb/pagina_datos.h"
#include <memory>
#include <optional>

namespace tolmo::data::access::mdb {

/// A table of a file: its shape, and its rows one by one.
class Tabla {
  public:
    Tabla(std::shared_ptr<Paginas> paginas, std::shared_ptr<const Definicion> definicion);

    const QString& Nombre() const { return definicion_->nombre; }
    const Definicion& definicion() const { return *definicion_; }
    Paginas& paginas() const { return *paginas_; }

    /// \throws ErrorMdb when the table has no such column
    const Columna& operator[](const QString& columna) const;

    /// The row at a place, wherever it has moved to; nothing when there is none, or only a row's
    /// second place. The row doesn't outlive the table.
    /// \throws ErrorMdb when the place is none of this table
    std::optional<Fila> FilaEn(Puntero puntero) const;

    /// What is known of a place in this table, for messages.
    Lugar En(std::optional<quint32> pagina = {}) const;

  private:
    std::shared_ptr<Paginas> paginas_;
    std::shared_ptr<const Definicion> definicion_;
};

/// Walks the rows of a table in the order of their places.
class Cursor {
  public:
    explicit Cursor(Tabla tabla);

    /// Goes to the next row; false when there is none.
    bool Siguiente();
    /// The current row, until the next Siguiente.
    const Fila& fila() const { return fila_; }
    /// The current row's place for life.
    Puntero puntero() const { return puntero_; }

  private:
    bool SiguientePagina();

    Tabla tabla_;
    std::vector<quint32> numeros_{};
    std::size_t proxima_ = 0;
    std::optional<PaginaDatos> pagina_{};
    std::size_t ranura_ = 0;
    Puntero puntero_{};
    Fila fila_{};
};

} // namespace tolmo::data::access::mdb
