#include "run/pantalla.h"
#include <QtGlobal>
#include <cstdio>
#ifdef Q_OS_UNIX
#include <clocale>
#include <langinfo.h>
#endif

namespace tolmo::run {
namespace {

/// What the toolkit says about a desktop that isn't there would hide the messages that matter.
void CallaQuejasDePantalla(QtMsgType, const QMessageLogContext&, const QString& texto)
{
    if (texto.startsWith(QLatin1String("This plugin does not support")) ||
        texto.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR")))
        return;
    const QByteArray bytes = texto.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

} // namespace

Entorno LeeEntorno(int argc, const char* const* argv)
{
    QStringList argumentos;
    for (int i = 1; i < argc; ++i)
        argumentos << QString::fromLocal8Bit(argv[i]);
    return {.lineaOrdenes = argumentos.join(u' '),
            .PATH_CONNECT = qEnvironmentVariable("PATH_CONNECT"),
            .PATH_KOVSERVER = qEnvironmentVariable("PATH_KOVSERVER"),
            .hayPantalla = HayPantalla()};
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
    qInstallMessageHandler(CallaQuejasDePantalla);
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
