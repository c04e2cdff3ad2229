#pragma once
#include "data/access/mdb/otro_proceso.h"
#include <QByteArray>
#include <QFile>
#include <fcntl.h>

/// The entry of a user in a lock file.
inline QByteArray EntradaDeUsuario(const QByteArray& equipo, const QByteArray& usuario)
{
    return equipo.leftJustified(32, '\0') + usuario.leftJustified(32, '\0');
}

/// Locks a byte as a file server does for a program on another machine.
inline int BloqueaComoUnServidor(const QString& ldb, off_t byte)
{
    const int descriptor = ::open(ldb.toLocal8Bit().constData(), O_RDWR);
    struct flock tramo {};
    tramo.l_type = F_WRLCK;
    tramo.l_whence = SEEK_SET;
    tramo.l_start = byte;
    tramo.l_len = 1;
    return ::fcntl(descriptor, F_SETLK, &tramo);
}

/// The management program on the machine CAJA2, which has a file open as its only user.
class GestionAbierta {
  public:
    explicit GestionAbierta(const QString& ldb) : ldb_(ldb)
    {
        QFile fichero(ldb_);
        if (!fichero.open(QIODevice::WriteOnly) ||
            fichero.write(EntradaDeUsuario("CAJA2", "Admin")) < 0)
            throw std::runtime_error("can't write the lock file");
        fichero.close();
        proceso_ = std::make_unique<OtroProceso>([this](const auto& avisa, const auto& espera) {
            if (BloqueaComoUnServidor(ldb_, 0x10000001) != 0)
                throw std::runtime_error("no lock");
            avisa();
            espera();
        });
        proceso_->EsperaSuAviso();
    }
    /// The last user to leave takes the lock file away.
    void Cierra()
    {
        proceso_.reset();
        QFile::remove(ldb_);
    }

  private:
    QString ldb_;
    std::unique_ptr<OtroProceso> proceso_{};
};
