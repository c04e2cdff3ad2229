#pragma once
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/fichero.h"
#include "data/access/mdb/tabla.h"
#include <map>
#include <memory>
#include <optional>

namespace tolmo::data::access::mdb {

/// An Access file that is open for reading.
class Base {
  public:
    /// \throws ErrorMdb when the file can't be opened or its catalogue can't be read
    explicit Base(const QString& ruta, const Apertura& apertura = {});
    /// Over pages that are at hand; `apertura` is for the files of its linked tables.
    explicit Base(std::shared_ptr<Paginas> paginas, const Apertura& apertura = {});

    const QString& Nombre() const { return paginas_->Nombre(); }
    Version version() const { return paginas_->formato().version; }
    const Catalogo& catalogo() const { return *catalogo_; }
    Paginas& paginas() const { return *paginas_; }

    /// A table by name, any case. A linked one is opened in the file where it lives.
    /// \throws ErrorMdb when there is none, or the other file isn't there
    Tabla AbreTabla(const QString& nombre) const;

    /// A table of this file.
    Tabla AbreTabla(const Objeto& objeto) const;

    /// The text of a saved query that selects rows; \throws ErrorMdb when there is none of that
    /// name
    QString SqlDeConsulta(const QString& nombre) const;

  private:
    Tabla AbreTabla(const QString& nombre, int enlaces) const;
    Tabla AbreEnlace(const Objeto& objeto, int enlaces) const;

    Apertura apertura_;
    std::shared_ptr<Paginas> paginas_;
    std::unique_ptr<Catalogo> catalogo_{};
    /// The files of linked tables, by their path: each is opened once.
    mutable std::map<QString, std::unique_ptr<Base>> enlazadas_{};
};

} // namespace tolmo::data::access::mdb
