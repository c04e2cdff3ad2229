#include "site/cFTP.h"
#include "data/rutas.h"
#include "site/ErrorFtp.h"
#include "site/WebFtp.h"
#include <limits>

namespace tolmo::site {
namespace {

/// Fixed: the speed of a transfer is bounded by it, and the window lives between two blocks.
constexpr qint32 Bloque = 255;
constexpr qint32 TamanoNoHallado = -1;
constexpr qint32 TamanoFallido = -2;
constexpr qsizetype LargoCarpeta = 1024;
constexpr qsizetype LargoRespuesta = 2048;

/// The size as the 32 bits that callers know.
qint32 Tamano32(quint64 bytes)
{
    return static_cast<qint32>(static_cast<quint32>(bytes));
}

} // namespace

cFTP::cFTP(const Esperas& esperas)
    : InternetAutodial(&WebFtp::InternetAutodial), esperas_(esperas),
      tipo_(tipo_transferencia::Ascii), modo_(modo_conexion::Activo)
{
}

cFTP::~cFTP() = default;

std::shared_ptr<cDirList> cFTP::Directory()
{
    if (directorio_ == nullptr)
        directorio_ = std::make_shared<cDirList>();
    return directorio_;
}

bool cFTP::OpenConnection(const QString& sServer, const data::Valor& Puerto, const QString& sUser,
                          const QString& sPassword)
{
    if (internet_ != nullptr)
        internet_->CierraConexion();
    if (!InternetAutodial())
        return false;
    internet_ = std::make_unique<WebFtp>(esperas_);
    const int puerto = data::EstaVacio(Puerto) ? 0 : Puerto.toInt();
    return Intenta("InternetConnect", [&](WebFtp& ftp) {
        ftp.InternetConnect(sServer, puerto, sUser, sPassword, modo_);
    });
}

void cFTP::CloseConnection()
{
    internet_.reset();
}

bool cFTP::SimpleFTPPutFile(const QString& sLocal, const QString& sRemote)
{
    return Intenta("SimpleFtpPutFile",
                   [&](WebFtp& ftp) { ftp.FtpPutFile(sLocal, sRemote, tipo_); });
}

bool cFTP::RenameFTPFile(const QString& sExisting, const QString& sNewName)
{
    return Intenta("RenameFTPFile", [&](WebFtp& ftp) { ftp.FtpRenameFile(sExisting, sNewName); });
}

bool cFTP::CreateFTPDirectory(const QString& sDirectory)
{
    return Intenta("CreateFTPDirectory", [&](WebFtp& ftp) { ftp.FtpCreateDirectory(sDirectory); });
}

bool cFTP::RemoveFTPDirectory(const QString& sDirectory)
{
    return Intenta("RemoveFTPDirectory", [&](WebFtp& ftp) { ftp.FtpRemoveDirectory(sDirectory); });
}

bool cFTP::DeleteFTPFile(const QString& sRemote)
{
    return Intenta("DeleteFTPFile", [&](WebFtp& ftp) { ftp.FtpDeleteFile(sRemote); });
}

bool cFTP::FTPUploadFile(const QString& sLocal, const QString& sRemote)
{
    const QString local = data::Recorta(sLocal);
    const QString remoto = data::Recorta(sRemote);
    if (local.isEmpty() || remoto.isEmpty())
        return false;
    const bool abierto = Intenta("FtpOpenFile:PutFile", [&](WebFtp& ftp) {
        ftp.FtpOpenFile(remoto, WebFtp::Acceso::Escritura, tipo_);
    });
    if (!abierto)
        return false;
    canal1_.close();
    canal1_.setFileName(data::RutaLocal(local));
    // From here on a failure leaves the remote file open.
    if (!canal1_.open(QIODevice::ReadOnly) || canal1_.size() > std::numeric_limits<qint32>::max())
        return false;
    return SubeBloques(static_cast<qint32>(canal1_.size()));
}

bool cFTP::SubeBloques(qint32 total)
{
    const auto sube = [this](const char* contexto, qint32 cuantos) {
        const QByteArray bloque = canal1_.read(cuantos);
        return bloque.size() == cuantos &&
               Intenta(contexto, [&](WebFtp& ftp) { ftp.InternetWriteFile(bloque); });
    };
    for (qint32 hechos = Bloque; hechos <= total - total % Bloque; hechos += Bloque) {
        if (!sube("InternetWriteFile", Bloque))
            return false;
        if (CedeEventos)
            CedeEventos();
        Avisa(hechos, total);
    }
    if (total % Bloque != 0 && !sube("InternetWriteFile2", total % Bloque))
        return false;
    canal1_.close();
    Avisa(total, total);
    CierraFichero();
    return true;
}

bool cFTP::FTPDownloadFile(const QString& sLocal, const QString& sRemote)
{
    const QString local = data::Recorta(sLocal);
    const QString remoto = data::Recorta(sRemote);
    if (local.isEmpty() || remoto.isEmpty())
        return false;
    const qint32 total = GetFTPFileSize(remoto);
    if (total <= 0)
        return false;
    const bool abierto = Intenta("FtpOpenFile:GetFile", [&](WebFtp& ftp) {
        ftp.FtpOpenFile(remoto, WebFtp::Acceso::Lectura, tipo_);
    });
    if (!abierto)
        return false;
    canal1_.close();
    canal1_.setFileName(data::RutaLocal(local));
    // Opened without emptying it: a longer file that stood there keeps its tail.
    return canal1_.open(QIODevice::ReadWrite) && BajaBloques(total);
}

bool cFTP::BajaBloques(qint32 total)
{
    const auto baja = [this](const char* contexto, qint32 cuantos) {
        QByteArray bloque;
        const bool leido =
            Intenta(contexto, [&](WebFtp& ftp) { bloque = ftp.InternetReadFile(cuantos); });
        if (leido && canal1_.write(bloque) == bloque.size())
            return true;
        canal1_.close();
        return false;
    };
    for (qint32 hechos = Bloque; hechos <= total - total % Bloque; hechos += Bloque) {
        if (!baja("InternetReadFile", Bloque))
            return false;
        if (CedeEventos)
            CedeEventos();
        Avisa(hechos, total);
    }
    if (!baja("InternetReadFile2", total % Bloque))
        return false;
    canal1_.close();
    Avisa(total, total);
    CierraFichero();
    return true;
}

bool cFTP::SimpleFTPGetFile(const QString& sLocal, const QString& sRemote)
{
    return Intenta("SimpleFtpGetFile",
                   [&](WebFtp& ftp) { ftp.FtpGetFile(sRemote, sLocal, tipo_); });
}

QString cFTP::GetFTPDirectory()
{
    QString carpeta;
    Intenta("FtpGetCurrentDirectory", [&](WebFtp& ftp) { carpeta = ftp.FtpGetCurrentDirectory(); });
    return carpeta.left(LargoCarpeta);
}

bool cFTP::SetFTPDirectory(const QString& sDirectory)
{
    return Intenta("FtpSetCurrentDirectory",
                   [&](WebFtp& ftp) { ftp.FtpSetCurrentDirectory(sDirectory); });
}

qint32 cFTP::GetFTPFileSize(const QString& sFile)
{
    // A name in a search may hold no blank; the wild card meets it in the server's listing.
    QString nombre = sFile;
    nombre.replace(u' ', u'?');
    try {
        WebFtp& ftp = Conexion();
        const DatosBusqueda hallado = ftp.FtpFindFirstFile(nombre);
        ftp.CierraBusqueda();
        return Tamano32(hallado.tamano);
    } catch (const ErrorFtp& error) {
        if (error.Numero() == error_ftp::SinMasFicheros)
            return TamanoNoHallado;
        AnotaError("FtpFindFirstFile", error);
        return TamanoFallido;
    }
}

std::shared_ptr<cDirList> cFTP::GetDirectoryListing(const QString& sFilter, bool& SinResultado)
{
    SinResultado = false;
    directorio_.reset();
    try {
        WebFtp& ftp = Conexion();
        DatosBusqueda entrada = ftp.FtpFindFirstFile(sFilter);
        directorio_ = std::make_shared<cDirList>();
        AnadeEntradas(ftp, entrada);
    } catch (const ErrorFtp& error) {
        SinResultado = error.Numero() == error_ftp::SinMasFicheros;
        if (!SinResultado)
            AnotaError("FtpFindFirstFile", error);
    }
    return directorio_;
}

void cFTP::AnadeEntradas(WebFtp& ftp, DatosBusqueda entrada)
{
    try {
        for (;; entrada = ftp.InternetFindNextFile())
            directorio_->Add(entrada.atributos, {}, {}, entrada.escritura, Tamano32(entrada.tamano),
                             entrada.nombre);
    } catch (const ErrorFtp& error) {
        if (error.Numero() != error_ftp::SinMasFicheros)
            AnotaError("InternetFindNextFile", error);
    }
    ftp.CierraBusqueda();
}

void cFTP::SetTransferASCII()
{
    tipo_ = tipo_transferencia::Ascii;
}

void cFTP::SetTransferBinary()
{
    tipo_ = tipo_transferencia::Binario;
}

void cFTP::SetModeActive()
{
    modo_ = modo_conexion::Activo;
}

void cFTP::SetModePassive()
{
    modo_ = modo_conexion::Pasivo;
}

QDateTime cFTP::BuscaFichero(const QString& sFile)
{
    try {
        WebFtp& ftp = Conexion();
        const DatosBusqueda hallado = ftp.FtpFindFirstFile(sFile);
        ftp.CierraBusqueda();
        return hallado.escritura;
    } catch (const ErrorFtp&) {
        return {}; // no error text, on purpose
    }
}

bool cFTP::TransferenciaAbierta() const
{
    return internet_ != nullptr && internet_->FicheroAbierto();
}

WebFtp& cFTP::Conexion()
{
    if (internet_ == nullptr)
        throw ErrorFtp(error_ftp::AsaNoValida);
    return *internet_;
}

bool cFTP::Intenta(const char* contexto, const std::function<void(WebFtp&)>& llamada)
{
    try {
        llamada(Conexion());
        return true;
    } catch (const ErrorFtp& error) {
        AnotaError(contexto, error);
        return false;
    }
}

/// Closing a handle has no result here: what the server says at the end goes unheard.
void cFTP::CierraFichero()
{
    try {
        Conexion().CierraFichero();
    } catch (const ErrorFtp&) {
    }
}

void cFTP::AnotaError(const char* contexto, const ErrorFtp& error)
{
    if (error.Numero() == error_ftp::Extendido) {
        ultimoError_ = error.Mensaje().left(LargoRespuesta);
        return;
    }
    ultimoError_ = QString::fromLatin1(contexto) + QStringLiteral(" error code: ") +
                   QString::number(error.Numero()) + QStringLiteral(" Message: ") + error.Mensaje();
}

void cFTP::Avisa(qint32 hechos, qint32 total)
{
    if (FileTransferProgress)
        FileTransferProgress(hechos, total);
}

} // namespace tolmo::site
