#pragma once
#include "data/access/mdb/disco.h"
#include <chrono>
#include <functional>

namespace tolmo::data::access::mdb {

/// A program of Access has the file open.
class AbiertoEnOtroPrograma : public ErrorMdb {
  public:
    AbiertoEnOtroPrograma(const QString& ruta, const QString& quien);

    /// " (equipo CAJA1, usuario Admin)"; empty where it isn't known
    const QString& Quien() const { return quien_; }

  private:
    QString quien_;
};

/// Who may read and write a file at a moment.
///
/// Programs of Access show themselves in the lock file beside the database (NAME.ldb): each holds
/// one byte there for as long as it has the file open, and finds the file opened for itself alone
/// when all of these bytes are taken. How they divide rows and pages isn't known, so nothing is
/// written while one of them is there; and while something is written here all of the bytes are
/// held, so that none comes in. They are let go after each transaction: a window that stays open
/// all day must not keep the management program out.
///
/// Processes of this program agree by locks of the database file itself, beyond the largest size
/// that it may have: it is always there, and whoever may read it may take a shared lock. One writes
/// at a time; readers keep the pages from being written only for the length of a statement. Nobody
/// who does one thing after the other without a pause keeps the others out: the next one in turn is
/// known by a lock of its own.
class Candado {
  public:
    /// The references outlive the lock. `ruta` names the database.
    Candado(Disco& disco, FicheroDeDisco& base, const QString& ruta,
            std::chrono::milliseconds espera);
    ~Candado();
    Candado(const Candado&) = delete;
    Candado& operator=(const Candado&) = delete;

    /// Waits until nobody of this program is writing pages, and keeps them from it. Where the place
    /// of the file knows no locks, reading goes on without.
    void EntraALeer();
    void SaleDeLeer();

    /// Waits until no other of this program has a transaction that writes.
    /// \throws ErrorMdb with Motivo::EnUso when the wait was too long
    void EntraAEscribir();
    /// Takes the places of all users in the lock file, which is made where it is missing, and goes
    /// at the end: nobody else can be in it, so that one of a program that was killed goes too.
    /// \throws AbiertoEnOtroPrograma
    void TomaLosUsuarios();
    /// Waits until nobody of this program reads, and keeps others from it.
    void CierraALectores();
    void AbreALectores();
    void SaleDeEscribir();

  private:
    bool Espera(const std::function<bool()>& intenta);
    void Exige(const std::function<bool()>& intenta);
    void AbreLdb();
    void RetiraLdb() const;
    bool EsElDeAhora(FicheroDeDisco& ldb) const;
    void Anota();
    void SueltaLosUsuarios();

    Disco& disco_;
    FicheroDeDisco& base_;
    QString ruta_;
    std::chrono::milliseconds espera_;
    QString rutaLdb_{};
    std::unique_ptr<FicheroDeDisco> ldb_{};
    bool usuariosTomados_ = false;
    bool lectoresFuera_ = false;
};

/// The lock file of a database: NAME.ldb, NAME.laccdb for one of Access 2007.
QString RutaLdb(const QString& ruta);

} // namespace tolmo::data::access::mdb
