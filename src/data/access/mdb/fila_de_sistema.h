#pragma once
#include "data/access/mdb/tabla_escribible.h"
#include <memory>
#include <vector>

namespace tolmo::data::access::mdb {

/// Fills a row of a table of the system by the names of its columns; the others stay Null.
class FilaDeSistema {
  public:
    explicit FilaDeSistema(const Tabla& tabla)
        : tabla_(tabla), valores_(tabla.definicion().columnas.size())
    {
    }
    FilaDeSistema& Con(const char* columna, const Dato& valor)
    {
        const Columna& c = tabla_[QString::fromLatin1(columna)];
        valores_[static_cast<std::size_t>(&c - tabla_.definicion().columnas.data())] = valor;
        return *this;
    }
    /// An empty text is a Null.
    FilaDeSistema& ConTexto(const char* columna, const QString& texto)
    {
        return texto.isEmpty() ? *this : Con(columna, texto);
    }
    void Inserta(const std::shared_ptr<PaginasEscribibles>& paginas) const
    {
        TablaEscribible(paginas, tabla_, TablaEscribible::Clase::DeSistema).Inserta(valores_);
    }

  private:
    const Tabla& tabla_;
    std::vector<Dato> valores_;
};

} // namespace tolmo::data::access::mdb
