#pragma once
#include "data/access/mdb/base_mdb.h"
#include <QStringList>
#include <memory>

namespace tolmo::data::access {

/// The Access file behind a connection: its tables and saved queries, which other programs may
/// change at any time.
class FicheroAccess {
  public:
    /// \throws ErrorSql when the file can't be opened
    explicit FicheroAccess(const QString& ruta);

    const QString& Nombre() const { return base_->Nombre(); }
    const mdb::Catalogo& Catalogo() const { return base_->catalogo(); }

    /// Takes notice of what other programs have saved since the last call. \returns true when there
    /// is something: whatever was read from the file is outdated then
    bool Refresca();

    /// A table of the file, or a linked one in the file where it lives; any case.
    /// \throws ErrorSql that names the other file when it isn't there
    mdb::Tabla Tabla(const QString& nombre) const { return base_->AbreTabla(nombre); }
    /// The text of a saved query; empty for one that selects nothing.
    QString TextoDeConsulta(const QString& nombre) const;

    /// Counts the changes of the file, by whomever: what was gathered under another number is
    /// outdated.
    quint64 Version() const { return version_; }

  private:
    std::unique_ptr<mdb::Base> base_;
    quint64 version_ = 1;
};

} // namespace tolmo::data::access
