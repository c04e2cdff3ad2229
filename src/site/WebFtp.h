#pragma once
#include "site/esperas.h"
#include "site/listado_ftp.h"
#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

namespace tolmo::site {

class SesionCurl;

/// Transfer types, as the class above stores them.
namespace tipo_transferencia {
constexpr int Ascii = 1;
constexpr int Binario = 2;
} // namespace tipo_transferencia

/// How a session makes its data connections.
namespace modo_conexion {
constexpr int Activo = 0;
constexpr int Pasivo = 0x8000000;
} // namespace modo_conexion

/// The platform's FTP layer: an internet handle and at most one connection below it, with the
/// calls that cFTP relies on. Every call that fails throws ErrorFtp. While a file is open on the
/// connection every other command fails at once with 12110 and nothing is sent; only its own
/// reads, writes and close go on. A call without a connection fails with 6.
class WebFtp {
  public:
    enum class Acceso { Lectura, Escritura };

    explicit WebFtp(const Esperas& esperas);
    ~WebFtp();
    WebFtp(const WebFtp&) = delete;
    WebFtp& operator=(const WebFtp&) = delete;

    /// Asks the system to bring up its line. A machine of today has one or none: always true.
    static bool InternetAutodial() { return true; }

    /// Connects and logs in. `puerto` 0 is the protocol's default; `modo` is a modo_conexion.
    void InternetConnect(const QString& servidor, int puerto, const QString& usuario,
                         const QString& clave, int modo);
    bool Conectado() const { return sesion_ != nullptr; }
    /// Ends the session at once. An open transfer is cut off: a partial file can remain there.
    void CierraConexion();

    /// Starts the transfer at the server: when this returns, the data connection stands.
    /// `tipo` is a tipo_transferencia.
    void FtpOpenFile(const QString& nombre, Acceso acceso, int tipo);
    /// Hands over bytes of the open file.
    void InternetWriteFile(const QByteArray& bytes);
    /// Up to `cuantos` bytes of the open file; fewer only at its end.
    QByteArray InternetReadFile(int cuantos);
    /// Ends the open file and waits for the server's word that it has it whole. What remains
    /// unread of a file that was being fetched is read and dropped.
    void CierraFichero();
    bool FicheroAbierto() const;

    /// Puts a whole local file; `local` is a path as the databases hold it.
    void FtpPutFile(const QString& local, const QString& remoto, int tipo);
    /// Fetches a whole file and writes it over `local`.
    void FtpGetFile(const QString& remoto, const QString& local, int tipo);
    void FtpDeleteFile(const QString& nombre);
    void FtpRenameFile(const QString& existente, const QString& nuevo);
    void FtpCreateDirectory(const QString& carpeta);
    void FtpRemoveDirectory(const QString& carpeta);
    void FtpSetCurrentDirectory(const QString& carpeta);
    QString FtpGetCurrentDirectory();

    /// The first entry that `filtro` names: a file, a folder (its contents), or a name with "*" and
    /// "?"; empty is the current folder. 18 when there is none.
    DatosBusqueda FtpFindFirstFile(const QString& filtro);
    /// The next one, 18 behind the last.
    DatosBusqueda InternetFindNextFile();
    void CierraBusqueda();

    /// The server's whole last answer, its lines parted by CRLF.
    QString InternetGetLastResponseInfo() const;

  private:
    SesionCurl& Libre();
    SesionCurl& Abierto();
    QByteArray Nombre(const QString& nombre);
    bool OfreceUtf8();
    void Orden(const char* verbo, const QString& nombre);
    QList<DatosBusqueda> Lista(const QString& argumento);
    QList<DatosBusqueda> Busca(const QString& filtro);

    Esperas esperas_;
    std::unique_ptr<SesionCurl> sesion_{};
    std::optional<bool> utf8_{};      ///< whether the server offers it, once asked
    QList<DatosBusqueda> busqueda_{}; ///< what the open search still has to give
};

} // namespace tolmo::site
