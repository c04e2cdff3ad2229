#include "run/pantalla.h"
#include <QtGlobal>
#ifdef Q_OS_UNIX
#include <clocale>
#include <langinfo.h>
#endif

namespace tolmo::run {

Entorno LeeEntorno(int argc, const char* const* argv)
{
    QStringList argumentos;
    for (int i = 1; i < argc; ++i)
        argumentos << QString::fromLocal8Bit(argv[i]);
    return {.lineaOrdenes = argumentos.join(u' '),
            .PATH_CONNECT = qEnvironmentVariable("PATH_CONNECT"),
            .PATH_KOVSERVER = qEnvironmentVariable("PATH_KOVSERVER")};
}

bool HayPantalla()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

void TrabajaSinPantalla()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

void AseguraUtf8()
{
#ifdef Q_OS_UNIX
    std::setlocale(LC_ALL, "");
    if (qstricmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
#endif
}

} // namespace tolmo::run
