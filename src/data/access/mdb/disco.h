#pragma once
#include "data/access/mdb/errores_mdb.h"
#include <QString>
#include <QtGlobal>
#include <memory>
#include <optional>
#include <span>

namespace tolmo::data::access::mdb {

/// What tells one state of a file from another without reading it.
struct EstadoFichero {
    quint64 volumen = 0;
    quint64 fichero = 0; ///< its number in the volume
    qint64 tam = 0;
    qint64 modificado = 0; ///< nanoseconds since 1970

    bool operator==(const EstadoFichero&) const = default;
    bool MismoFichero(const EstadoFichero& otro) const
    {
        return volumen == otro.volumen && fichero == otro.fichero;
    }
};

/// What the system says of one of its errors; the usual ones in Spanish.
QString ErrorDelSistema(int numero);

/// What the system refuses.
class ErrorDeDisco : public ErrorMdb {
  public:
    ErrorDeDisco(Motivo motivo, const QString& frase, const QString& ruta, int numero);

    QString Razon() const { return ErrorDelSistema(numero_); }
    /// True when another user might be let do it.
    bool FaltaPermiso() const;

  private:
    int numero_;
};

enum class Uso { Leer, LeerYEscribir };

enum class Cerrojo { Compartido, Exclusivo };

/// An open file, read and written at any place. Its locks belong to this object: two of them in one
/// process exclude each other as those of two processes do.
class FicheroDeDisco {
  public:
    virtual ~FicheroDeDisco() = default;

    virtual EstadoFichero Estado() = 0;
    /// \returns how many bytes there were
    virtual std::size_t Lee(qint64 posicion, std::span<quint8> bytes) = 0;
    /// \throws ErrorMdb with Motivo::NoSeEscribe, also when only a part could be written
    virtual void Escribe(qint64 posicion, std::span<const quint8> bytes) = 0;
    virtual void Recorta(qint64 tam) = 0;
    /// Comes back when all that was written is safe from a power failure.
    virtual void Sincroniza() = 0;

    /// Locks bytes, which may lie beyond the end; a lock that is held already changes its kind.
    /// \returns false when somebody else's is in the way
    /// \throws ErrorMdb when the place of the file knows no locks or this object may not have it
    virtual bool Bloquea(qint64 desde, qint64 largo, Cerrojo cerrojo) = 0;
    virtual void Desbloquea(qint64 desde, qint64 largo) = 0;
    /// The first of the bytes that somebody else has locked; with length 0, of all that follow.
    virtual std::optional<qint64> BloqueoAjeno(qint64 desde, qint64 largo) = 0;
};

/// The file system below the storage, a port so that a test can stop it at any write. The one of
/// Windows would lock with LockFileEx, which knows the same ranges.
class Disco {
  public:
    virtual ~Disco() = default;

    /// \throws ErrorMdb when it can't be opened for this use
    virtual std::unique_ptr<FicheroDeDisco> Abre(const QString& ruta, Uso uso) = 0;
    /// Opens for writing, and makes an empty file where there is none: whoever may use the other
    /// one may use it too.
    virtual std::unique_ptr<FicheroDeDisco> Crea(const QString& ruta, const QString& modelo) = 0;
    /// \throws ErrorMdb also when there is one of that name
    virtual std::unique_ptr<FicheroDeDisco> CreaNuevo(const QString& ruta) = 0;
    virtual std::optional<EstadoFichero> Estado(const QString& ruta) = 0; ///< of what is there
    virtual void Borra(const QString& ruta) = 0; ///< no error where there is none
    virtual void Renombra(const QString& ruta, const QString& nueva) = 0;
    /// Makes the names of a folder safe from a power failure.
    virtual void SincronizaCarpetaDe(const QString& ruta) = 0;
};

Disco& DiscoDelSistema();

} // namespace tolmo::data::access::mdb
