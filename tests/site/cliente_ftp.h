#pragma once
#include "apoyo/carpeta.h"
#include "apoyo/servidor_ftp.h"
#include "site/cFTP.h"
#include <gtest/gtest.h>
#include <utility>
#include <vector>

/// Shown by GoogleTest when a comparison fails.
inline void PrintTo(const QString& texto, std::ostream* salida)
{
    *salida << '"' << texto.toStdString() << '"';
}

/// Waits short enough for a test that lets them run out.
inline tolmo::site::Esperas EsperasCortas()
{
    using std::chrono::milliseconds;
    return {.conexion = milliseconds(500),
            .silencioFtp = milliseconds(800),
            .pagina = milliseconds(800)};
}

/// A client in binary that keeps what it tells, and a folder of local files.
struct ClienteFtp {
    CarpetaDePrueba local{};
    tolmo::site::cFTP ftp;
    std::vector<std::pair<int, int>> avances{};
    int turnos = 0;

    explicit ClienteFtp(const tolmo::site::Esperas& esperas = {}) : ftp(esperas)
    {
        ftp.SetTransferBinary();
        ftp.FileTransferProgress = [this](qint32 hechos, qint32 total) {
            avances.emplace_back(hechos, total);
        };
        ftp.CedeEventos = [this] { ++turnos; };
    }
    bool Abre(const ServidorFtp& servidor)
    {
        return ftp.OpenConnection(servidor.Servidor(), servidor.Puerto(), servidor.Usuario(),
                                  servidor.Clave());
    }
    bool Abre(int puerto) { return ftp.OpenConnection("127.0.0.1", puerto, "u", "c"); }
    /// The path of a new local file.
    QString Local(const QString& nombre, const QByteArray& contenido) const
    {
        local.Escribe(nombre, contenido);
        return local.Ruta(nombre);
    }
};

/// A real server, its folder and a client.
struct ServidorYCliente {
    CarpetaDePrueba remoto{};
    ServidorFtp servidor;
    ClienteFtp cliente{};
    tolmo::site::cFTP& ftp = cliente.ftp;

    explicit ServidorYCliente(const OpcionesServidorFtp& opciones = {})
        : servidor(remoto.Ruta(), opciones)
    {
    }
    bool Abre() { return cliente.Abre(servidor); }
    const QString& Error() const { return cliente.ftp.GetLastErrorMessage(); }
    /// What the server was told, once the client has gone.
    QList<QStringList> Conversacion()
    {
        ftp.CloseConnection();
        servidor.EsperaFinDeSesiones();
        return servidor.Sesiones();
    }
    /// Nobody may write into this folder of the server.
    void CreaCarpetaVedada(const QString& nombre) const
    {
        remoto.Escribe(nombre + "/.ftpaccess", "<Limit WRITE>\nDenyAll\n</Limit>\n");
    }
};

/// `cuantos` bytes of every kind, zeros and line ends too.
inline QByteArray Bytes(qsizetype cuantos)
{
    QByteArray bytes(cuantos, '\0');
    for (qsizetype p = 0; p < cuantos; ++p)
        bytes[p] = static_cast<char>(p * 7 + p / 256);
    return bytes;
}
