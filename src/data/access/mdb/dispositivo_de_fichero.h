#pragma once
#include "data/access/mdb/disco.h"
#include <QIODevice>

namespace tolmo::data::access::mdb {

/// A file of the disk as a device, for reading pages through the same open file that is locked.
class DispositivoDeFichero : public QIODevice {
  public:
    explicit DispositivoDeFichero(std::shared_ptr<FicheroDeDisco> fichero)
        : fichero_(std::move(fichero))
    {
        open(ReadOnly | Unbuffered);
    }
    qint64 size() const override { return fichero_->Estado().tam; }

  protected:
    qint64 readData(char* datos, qint64 tam) override
    {
        return static_cast<qint64>(fichero_->Lee(
            pos(), {reinterpret_cast<quint8*>(datos), static_cast<std::size_t>(tam)}));
    }
    qint64 writeData(const char*, qint64) override { return -1; }

  private:
    std::shared_ptr<FicheroDeDisco> fichero_;
};

} // namespace tolmo::data::access::mdb
