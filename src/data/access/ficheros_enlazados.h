#pragma once
#include "data/access/mdb/transaccion_paginas.h"
#include <map>
#include <memory>
#include <vector>

namespace tolmo::data::access {

/// The path of an Access file in what a query names as another base: the path itself, or a text of
/// connection that tells it (";DATABASE=C:\BD\OTRA.MDB", with or without "MS Access" in front),
/// which may also hold a password. Empty for another kind of data.
QString FicheroDeConexion(const QString& texto);

/// The other files that a file of Access reads from, by linked tables and by queries. They stay
/// open, and are read statement by statement as the file itself is, so that what others save in
/// them shows.
class FicherosEnlazados {
  public:
    /// `propias`, the pages of the file itself, serve a link that leads back to it.
    explicit FicherosEnlazados(std::shared_ptr<mdb::TransaccionPaginas> propias);

    /// The pages of a file; within a statement they hold still until its end.
    /// \throws ErrorMdb when it can't be opened
    std::shared_ptr<mdb::Paginas> Abre(const QString& ruta);

    /// \returns true when what was known of a file is outdated: it has changed, or can't be read
    /// any longer, as the next one to open it is told
    bool EmpiezaLectura();
    void AcabaLectura();

  private:
    std::shared_ptr<mdb::TransaccionPaginas> propias_;
    std::map<QString, std::shared_ptr<mdb::TransaccionPaginas>> abiertos_{}; ///< by path
    std::vector<std::shared_ptr<mdb::TransaccionPaginas>> leyendo_{};
    int lecturas_ = 0;
};

} // namespace tolmo::data::access
