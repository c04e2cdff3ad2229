#pragma once
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/otro_proceso.h"
#include <QTemporaryFile>
#include <grp.h>
#include <sys/resource.h>

namespace tolmo::data::access::mdb {

/// What the error says that ends a task in a process of its own; empty where there is none.
inline std::string ErrorEnOtroProceso(const std::function<void()>& tarea)
{
    QTemporaryFile recado;
    if (!recado.open())
        throw std::runtime_error("no temporary file");
    OtroProceso proceso([&](const auto&, const auto&) {
        try {
            tarea();
        } catch (const ErrorDatos& error) {
            recado.write(error.Descripcion().toUtf8());
            recado.flush();
        }
    });
    if (proceso.Recoge() != 0)
        throw std::runtime_error("the task came to another end");
    recado.seek(0);
    return recado.readAll().toStdString();
}

/// This process goes on as a user to whom permissions apply.
inline void DejaDeSerAdministrador()
{
    constexpr uid_t Nadie = 65534;
    if (::geteuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setgid(Nadie) != 0 || ::setuid(Nadie) != 0))
        throw std::runtime_error("can't become another user");
}

/// From now on no file of this process grows beyond that, as on a disk that is full.
inline void LimitaLosFicheros(rlim_t tam)
{
    const struct rlimit limite = {tam, tam};
    std::signal(SIGXFSZ, SIG_IGN);
    if (::setrlimit(RLIMIT_FSIZE, &limite) != 0)
        throw std::runtime_error("no limit");
}

} // namespace tolmo::data::access::mdb
