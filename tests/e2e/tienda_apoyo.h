// What the tests of the test shop's servers share.
#pragma once
#include "apoyo/tienda.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <arpa/inet.h>
#include <functional>
#include <sys/socket.h>
#include <unistd.h>

/// How a program ended.
struct Salida {
    int codigo = -1;
    QByteArray texto{}; ///< both outputs
};

inline Salida Corre(const QString& programa, const QStringList& argumentos,
                    const QByteArray& entrada = {}, const QStringList& entorno = {})
{
    QProcess proceso;
    proceso.setProcessChannelMode(QProcess::MergedChannels);
    if (!entorno.isEmpty())
        proceso.setEnvironment(QProcess::systemEnvironment() + entorno);
    proceso.start(programa, argumentos);
    proceso.write(entrada);
    proceso.closeWriteChannel();
    if (!proceso.waitForFinished(60'000) || proceso.exitStatus() != QProcess::NormalExit)
        return {-1, proceso.readAll()};
    return {proceso.exitCode(), proceso.readAll()};
}

inline const QString Tienda = KOV_FUENTES "/tools/tienda";

inline QString UrlFtp(const TiendaDePrueba& tienda, const QString& ruta)
{
    return QString("ftp://%1:%2@127.0.0.1:%3/%4")
        .arg(tienda.UsuarioFtp(), tienda.ClaveFtp(), QString::number(tienda.PuertoFtp()), ruta);
}

/// Uploads with curl, in passive mode unless told otherwise.
inline Salida Sube(const TiendaDePrueba& tienda, const QString& ruta, const QByteArray& contenido,
                   const QStringList& modo = {"--disable-epsv"})
{
    return Corre("curl", QStringList{"-sS", "-T", "-", UrlFtp(tienda, ruta)} + modo, contenido);
}

inline bool Escucha(int puerto)
{
    const int enchufe = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in donde{};
    donde.sin_family = AF_INET;
    donde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    donde.sin_port = htons(static_cast<std::uint16_t>(puerto));
    const bool si = ::connect(enchufe, reinterpret_cast<sockaddr*>(&donde), sizeof donde) == 0;
    ::close(enchufe);
    return si;
}

/// The processes whose command line names a folder; those that ended count no more.
inline QStringList ProcesosDe(const QString& carpeta)
{
    QStringList procesos;
    for (const QString& pid : QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs)) {
        QFile linea("/proc/" + pid + "/cmdline");
        if (linea.open(QIODevice::ReadOnly) && linea.readAll().contains(carpeta.toUtf8()))
            procesos << pid;
    }
    return procesos;
}

/// Asks again and again; false when the time runs out first.
inline bool EsperaHasta(const std::function<bool()>& condicion, int milisegundos)
{
    QElapsedTimer reloj;
    reloj.start();
    while (!condicion()) {
        if (reloj.elapsed() > milisegundos)
            return false;
        QThread::msleep(20);
    }
    return true;
}
