#pragma once
#include "data/valores.h"
#include "site/cDirList.h"
#include "site/esperas.h"
#include <QFile>
#include <functional>
#include <memory>

namespace tolmo::site {

class ErrorFtp;
class WebFtp;
struct DatosBusqueda;

/// The FTP client of the engine and the feed. It tries nothing again and doesn't reconnect: an
/// operation that fails gives false and leaves its reason in GetLastErrorMessage. Nothing is
/// thrown. A new object transfers in ASCII, in active mode, and stands without a connection.
///
/// A block transfer that fails leaves its remote file open: the session then refuses every command
/// until CloseConnection and OpenConnection make a new one. That is the required state.
class cFTP {
  public:
    explicit cFTP(const Esperas& esperas = {});
    ~cFTP();
    cFTP(const cFTP&) = delete;
    cFTP& operator=(const cFTP&) = delete;

    /// Told after each block of a block transfer, in bytes.
    std::function<void(qint32 lCurrentBytes, qint32 lTotalBytes)> FileTransferProgress{};
    /// Gives the window's events a turn, after each block.
    std::function<void()> CedeEventos{};
    /// Asks the system to bring up its line; false gives up a connection without an error text.
    std::function<bool()> InternetAutodial;

    /// The last listing, an empty one before the first.
    std::shared_ptr<cDirList> Directory();
    const QString& GetLastErrorMessage() const { return ultimoError_; }

    /// Starts a session, which stands in the user's login folder. An empty port is the default one.
    bool OpenConnection(const QString& sServer, const data::Valor& Puerto, const QString& sUser,
                        const QString& sPassword);
    void CloseConnection();

    bool SimpleFTPPutFile(const QString& sLocal, const QString& sRemote);
    bool RenameFTPFile(const QString& sExisting, const QString& sNewName);
    bool CreateFTPDirectory(const QString& sDirectory);
    bool RemoveFTPDirectory(const QString& sDirectory);
    bool DeleteFTPFile(const QString& sRemote);
    /// Uploads in blocks of 255 bytes. A local file that is missing is found out only after the
    /// remote one was opened.
    bool FTPUploadFile(const QString& sLocal, const QString& sRemote);
    /// Downloads in blocks of 255 bytes; an empty remote file gives false.
    bool FTPDownloadFile(const QString& sLocal, const QString& sRemote);
    bool SimpleFTPGetFile(const QString& sLocal, const QString& sRemote);
    /// The session's current folder, empty after a failure.
    QString GetFTPDirectory();
    bool SetFTPDirectory(const QString& sDirectory);
    /// Bytes, the low 32 bits of them; -1 if there is no such file, -2 after any other failure.
    qint32 GetFTPFileSize(const QString& sFile);
    /// The entries that `sFilter` names, or no list: because there are none (`SinResultado` true)
    /// or after a failure.
    std::shared_ptr<cDirList> GetDirectoryListing(const QString& sFilter, bool& SinResultado);
    void SetTransferASCII();
    void SetTransferBinary();
    /// Both modes count from the next OpenConnection on.
    void SetModeActive();
    void SetModePassive();
    /// When the file was last written, invalid if it isn't found. Leaves no error text.
    QDateTime BuscaFichero(const QString& sFile);

    /// True while a failed transfer keeps the session from taking commands.
    bool TransferenciaAbierta() const;

  private:
    WebFtp& Conexion();
    bool Intenta(const char* contexto, const std::function<void(WebFtp&)>& llamada);
    void AnotaError(const char* contexto, const ErrorFtp& error);
    bool SubeBloques(qint32 total);
    void CierraFichero();
    void AnadeEntradas(WebFtp& ftp, DatosBusqueda entrada);
    bool BajaBloques(qint32 total);
    void Avisa(qint32 hechos, qint32 total);

    Esperas esperas_;
    std::unique_ptr<WebFtp> internet_{};
    int tipo_;
    int modo_;
    QString ultimoError_{};
    std::shared_ptr<cDirList> directorio_{};
    QFile canal1_{}; ///< the one file channel: a failed transfer leaves it open, the next clears it
};

} // namespace tolmo::site
