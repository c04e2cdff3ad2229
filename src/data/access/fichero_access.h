#pragma once
#include "data/access/ficheros_enlazados.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/define_tabla.h"
#include "data/access/mdb/exigencias.h"
#include "data/access/mdb/tabla_escribible.h"
#include "data/access/mdb/transaccion_paginas.h"
#include <functional>
#include <map>
#include <memory>
#include <set>

namespace tolmo::data::access {

/// The Access file behind a connection: its tables and saved queries, which other programs may
/// change at any time.
class FicheroAccess {
  public:
    /// \throws ErrorSql when the file can't be opened
    explicit FicheroAccess(const QString& ruta);

    const QString& Nombre() const { return paginas_->Nombre(); }
    const mdb::Catalogo& Catalogo() const { return base_->catalogo(); }

    /// A statement: what it reads is whole commits of this program, from its first page to its
    /// last. It begins by taking notice of what others have saved.
    class Sentencia {
      public:
        /// \throws ErrorSql when another of this program writes for too long
        explicit Sentencia(FicheroAccess& fichero);
        ~Sentencia();
        Sentencia(const Sentencia&) = delete;
        Sentencia& operator=(const Sentencia&) = delete;

        /// True when there is something new, or a transaction was undone: whatever was known of the
        /// file is outdated then.
        bool HayCambios() const { return hayCambios_; }

      private:
        FicheroAccess& fichero_;
        bool hayCambios_ = false;
    };

    /// The turn of a statement that changes the file: nobody else writes from its beginning to its
    /// end, so that what it reads is what it changes.
    class Turno {
      public:
        /// \throws ErrorSql when somebody has the file open, or it can't be written
        explicit Turno(FicheroAccess& fichero);
        ~Turno();
        Turno(const Turno&) = delete;
        Turno& operator=(const Turno&) = delete;

        /// True when another has changed the file meanwhile: whatever was known of it is outdated.
        bool HayCambios() const { return hayCambios_; }

        /// Takes notice of what has changed; that the engine forgets and learns tables in doing so
        /// doesn't end the turn.
        void PoneAlDia(const std::function<void()>& accion);

      private:
        FicheroAccess& fichero_;
        bool suelta_; ///< outside any transaction: the turn ends with the statement
        bool hayCambios_;
    };

    /// A table of the file, or a linked one in the file where it lives; any case.
    /// \throws ErrorSql that names the other file when it isn't there
    mdb::Tabla Tabla(const QString& nombre) const { return base_->AbreTabla(nombre); }
    /// What is asked of its rows.
    mdb::ExigenciasDeTabla ExigenciasDe(const mdb::Tabla& tabla) const
    {
        return mdb::LeeExigencias(paginas_, tabla.definicion());
    }
    /// A table of another file, told by its path.
    mdb::Tabla TablaDeOtro(const QString& fichero, const QString& tabla) const
    {
        return base_->AbreTablaDeOtro(fichero, tabla);
    }
    /// The text of a saved query. \throws ErrorSql that names it, for one that can't be used
    QString TextoDeConsulta(const QString& nombre) const { return base_->SqlDeConsulta(nombre); }

    /// Counts the changes of the file, by whomever: what was gathered under another number is
    /// outdated.
    quint64 Version() const { return version_; }
    void NotaCambio() { ++version_; }

    // Changes, which the engine makes in its own transactions; `abierta` tells whether one is.
    void MiraTransaccion(std::function<bool()> abierta) { enTransaccion_ = std::move(abierta); }
    /// \returns true when another has changed the file: whatever was known of it is outdated
    /// \throws ErrorSql when somebody has the file open, or it can't be written
    bool Empieza();
    void Confirma();
    void Deshace();
    void Marca(int numero);
    void VuelveA(int numero);
    void Suelta(int numero);
    /// \throws ErrorSql for a linked table, or one that can't be written
    mdb::TablaEscribible Escribible(const mdb::Tabla& tabla) const;

    /// Changes the shape of the file, in the transaction that is open, also where only the engine's
    /// own part has begun yet, or in one of its own.
    void Define(const std::function<void(const std::shared_ptr<mdb::PaginasEscribibles>&)>& cambio);
    /// Does several changes, of the shape and of rows, in the same way: all or none.
    void EnUna(const std::function<void()>& cambios);

    /// Why the last statement could not be confirmed; the engine itself only tells that it
    /// couldn't.
    const QString& FalloAlConfirmar() const { return falloAlConfirmar_; }
    void NotaFalloAlConfirmar(const QString& porque) { falloAlConfirmar_ = porque; }

    /// True when a change of the last statement was refused because somebody has the file open.
    bool EstabaEnUso() const { return estabaEnUso_; }

  private:
    void AbreBase();
    void VuelveATodo(std::size_t marca);
    void AcabaLectura();

    std::shared_ptr<mdb::TransaccionPaginas> paginas_;
    FicherosEnlazados enlazados_;
    std::unique_ptr<mdb::Base> base_{};
    std::function<bool()> enTransaccion_ = [] { return false; };
    std::map<int, std::size_t> marcas_{}; ///< by the engine's number
    std::set<int> pedidas_{};             ///< before the transaction is open
    quint64 version_ = 1;
    bool estabaEnUso_ = false;
    QString falloAlConfirmar_{};
    bool poniendoseAlDia_ = false;
    bool deshecho_ = false; ///< since the last statement began
};

} // namespace tolmo::data::access
