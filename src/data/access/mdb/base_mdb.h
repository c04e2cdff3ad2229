#pragma once
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/fichero.h"
#include "data/access/mdb/tabla.h"
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace tolmo::data::access::mdb {

/// Opens the file of a linked table; \throws ErrorMdb
using AbreEnlazado = std::function<std::shared_ptr<Paginas>(const QString& ruta)>;

/// An Access file that is open for reading.
class Base {
  public:
    /// \throws ErrorMdb when the file can't be opened or its catalogue can't be read
    explicit Base(const QString& ruta, const Apertura& apertura = {});
    /// Over pages that are at hand; `abre` is for the files of its linked tables.
    explicit Base(std::shared_ptr<Paginas> paginas, AbreEnlazado abre = SoloParaLeer({}));

    const QString& Nombre() const { return paginas_->Nombre(); }
    Version version() const { return paginas_->formato().version; }
    const Catalogo& catalogo() const { return *catalogo_; }
    Paginas& paginas() const { return *paginas_; }

    /// A table by name, any case. A linked one is opened in the file where it lives.
    /// \throws ErrorMdb when there is none, or the other file isn't there
    Tabla AbreTabla(const QString& nombre) const;

    /// A table of another file, told by its path. \throws ErrorMdb as for a linked one
    Tabla AbreTablaDeOtro(const QString& fichero, const QString& tabla) const;

    /// A table of this file.
    Tabla AbreTabla(const Objeto& objeto) const;

    /// The text of a saved query. \throws ErrorMdb when there is none of that name, or it is none
    /// for this engine; it names the query
    QString SqlDeConsulta(const QString& nombre) const;

  private:
    Tabla AbreTabla(const QString& nombre, int enlaces) const;
    Tabla AbreEnlace(const Objeto& objeto, int enlaces) const;
    /// `noEsta` and `lugar` are for the error of a file that isn't there.
    const Base& Enlazada(const QString& fichero, const QString& noEsta, const Lugar& lugar) const;
    static AbreEnlazado SoloParaLeer(const Apertura& apertura);

    AbreEnlazado abre_;
    std::shared_ptr<Paginas> paginas_;
    std::unique_ptr<Catalogo> catalogo_{};
    /// The files of linked tables, by their path: each is opened once.
    mutable std::map<QString, std::unique_ptr<Base>> enlazadas_{};
};

} // namespace tolmo::data::access::mdb
