#include "site/WebFtp.h"
#include "data/codificacion.h"
#include "data/rutas.h"
#include "site/ErrorFtp.h"
#include "site/sesion_curl.h"
#include "site/texto_ftp.h"
#include <QFile>
#include <algorithm>

namespace tolmo::site {
namespace {

constexpr qsizetype Trozo = 32768;
constexpr int UltimoPuerto = 65535;

bool EsAscii(const QString& texto)
{
    return std::ranges::all_of(texto, [](QChar c) { return c.unicode() < 0x80; });
}

/// A line end in a name would be a second command.
bool TieneControles(const QString& texto)
{
    return std::ranges::any_of(texto, [](QChar c) { return c.unicode() < 0x20; });
}

bool TieneComodines(const QString& texto)
{
    return texto.contains(u'*') || texto.contains(u'?');
}

void AbreLocal(QFile& fichero, QIODevice::OpenMode modo)
{
    if (fichero.open(modo))
        return;
    throw ErrorFtp(fichero.exists() ? error_ftp::SinAcceso : error_ftp::NoHayFichero);
}

bool EsAscii(int tipo)
{
    return tipo == tipo_transferencia::Ascii;
}

} // namespace

WebFtp::WebFtp(const Esperas& esperas) : esperas_(esperas) {}

WebFtp::~WebFtp() = default;

void WebFtp::InternetConnect(const QString& servidor, int puerto, const QString& usuario,
                             const QString& clave, int modo)
{
    if (puerto < 0 || puerto > UltimoPuerto || TieneControles(usuario) || TieneControles(clave))
        throw ErrorFtp(error_ftp::ParametroNoValido);
    // No server has offered another encoding before the login.
    const DestinoFtp destino{.servidor = servidor,
                             .puerto = puerto,
                             .usuario = data::AWindows1252(usuario),
                             .clave = data::AWindows1252(clave),
                             .pasivo = modo == modo_conexion::Pasivo};
    CierraConexion();
    sesion_ = std::make_unique<SesionCurl>(destino, esperas_);
}

void WebFtp::CierraConexion()
{
    sesion_.reset();
    utf8_.reset();
    busqueda_.clear();
}

void WebFtp::FtpOpenFile(const QString& nombre, Acceso acceso, int tipo)
{
    SesionCurl& sesion = Libre();
    const QByteArray bytes = Nombre(nombre);
    if (acceso == Acceso::Escritura)
        sesion.AbreSubida(bytes, EsAscii(tipo));
    else
        sesion.AbreBajada(bytes, EsAscii(tipo));
}

void WebFtp::InternetWriteFile(const QByteArray& bytes)
{
    Abierto().Escribe(bytes);
}

QByteArray WebFtp::InternetReadFile(int cuantos)
{
    return Abierto().Lee(cuantos);
}

void WebFtp::CierraFichero()
{
    Abierto().Termina();
}

bool WebFtp::FicheroAbierto() const
{
    return sesion_ != nullptr && sesion_->Abierta();
}

void WebFtp::FtpPutFile(const QString& local, const QString& remoto, int tipo)
{
    SesionCurl& sesion = Libre();
    QFile fichero(data::RutaLocal(local));
    AbreLocal(fichero, QIODevice::ReadOnly);
    sesion.AbreSubida(Nombre(remoto), EsAscii(tipo));
    try {
        while (!fichero.atEnd()) {
            const QByteArray trozo = fichero.read(Trozo);
            if (trozo.isEmpty())
                throw ErrorFtp(error_ftp::SinAcceso);
            sesion.Escribe(trozo);
        }
    } catch (const ErrorFtp&) {
        sesion.Abandona();
        throw;
    }
    sesion.Termina();
}

void WebFtp::FtpGetFile(const QString& remoto, const QString& local, int tipo)
{
    SesionCurl& sesion = Libre();
    QFile fichero(data::RutaLocal(local));
    const bool existia = fichero.exists();
    // Opened without emptying it: a refusal by the server must not cost what stands there.
    AbreLocal(fichero, QIODevice::ReadWrite);
    try {
        sesion.AbreBajada(Nombre(remoto), EsAscii(tipo));
    } catch (const ErrorFtp&) {
        if (!existia)
            fichero.remove();
        throw;
    }
    fichero.resize(0);
    try {
        for (QByteArray trozo = sesion.Lee(Trozo); !trozo.isEmpty(); trozo = sesion.Lee(Trozo))
            if (fichero.write(trozo) != trozo.size())
                throw ErrorFtp(error_ftp::SinAcceso);
    } catch (const ErrorFtp&) {
        sesion.Abandona();
        throw;
    }
    sesion.Termina();
}

void WebFtp::FtpDeleteFile(const QString& nombre)
{
    Orden("DELE ", nombre);
}

void WebFtp::FtpRenameFile(const QString& existente, const QString& nuevo)
{
    Orden("RNFR ", existente);
    Orden("RNTO ", nuevo);
}

void WebFtp::FtpCreateDirectory(const QString& carpeta)
{
    Orden("MKD ", carpeta);
}

void WebFtp::FtpRemoveDirectory(const QString& carpeta)
{
    Orden("RMD ", carpeta);
}

void WebFtp::FtpSetCurrentDirectory(const QString& carpeta)
{
    Orden("CWD ", carpeta);
}

QString WebFtp::FtpGetCurrentDirectory()
{
    SesionCurl& sesion = Libre();
    sesion.Orden("PWD");
    return TextoDelServidor(CarpetaDeRespuesta(sesion.Respuesta().Texto()));
}

DatosBusqueda WebFtp::FtpFindFirstFile(const QString& filtro)
{
    busqueda_ = Busca(filtro);
    return InternetFindNextFile();
}

DatosBusqueda WebFtp::InternetFindNextFile()
{
    if (busqueda_.isEmpty())
        throw ErrorFtp(error_ftp::SinMasFicheros);
    return busqueda_.takeFirst();
}

void WebFtp::CierraBusqueda()
{
    busqueda_.clear();
}

QString WebFtp::InternetGetLastResponseInfo() const
{
    return sesion_ == nullptr ? QString() : TextoDelServidor(sesion_->Respuesta().Texto());
}

SesionCurl& WebFtp::Libre()
{
    if (FicheroAbierto())
        throw ErrorFtp(error_ftp::TransferenciaEnCurso);
    if (sesion_ == nullptr)
        throw ErrorFtp(error_ftp::AsaNoValida);
    return *sesion_;
}

SesionCurl& WebFtp::Abierto()
{
    if (!FicheroAbierto())
        throw ErrorFtp(error_ftp::AsaNoValida);
    return *sesion_;
}

/// Names travel as the server wants them: in UTF-8 if it offers that, else in Windows-1252. It is
/// asked once a session, and only when a name comes that needs it.
QByteArray WebFtp::Nombre(const QString& nombre)
{
    if (TieneControles(nombre))
        throw ErrorFtp(error_ftp::ParametroNoValido);
    if (EsAscii(nombre))
        return nombre.toLatin1();
    if (!utf8_)
        utf8_ = OfreceUtf8();
    return *utf8_ ? nombre.toUtf8() : data::AWindows1252(nombre);
}

bool WebFtp::OfreceUtf8()
{
    SesionCurl& sesion = Libre();
    bool ofrece = false;
    try {
        sesion.Orden("FEAT");
        for (const QByteArray& linea : sesion.Respuesta().Texto().split('\n'))
            ofrece = ofrece || linea.trimmed().toUpper() == "UTF8";
        if (ofrece)
            sesion.Orden("OPTS UTF8 ON");
    } catch (const ErrorFtp& error) {
        // A refusal is an answer too: nothing is offered, or it needs no switching on.
        if (error.Numero() != error_ftp::Extendido)
            throw;
    }
    return ofrece;
}

void WebFtp::Orden(const char* verbo, const QString& nombre)
{
    SesionCurl& sesion = Libre();
    sesion.Orden(verbo + Nombre(nombre));
}

QList<DatosBusqueda> WebFtp::Lista(const QString& argumento)
{
    SesionCurl& sesion = Libre();
    const QByteArray bytes = Nombre(argumento);
    const QByteArray listado = sesion.Recoge(bytes.isEmpty() ? "LIST" : "LIST " + bytes);
    return LeeListado(TextoDelServidor(listado), QDate::currentDate());
}

QList<DatosBusqueda> WebFtp::Busca(const QString& filtro)
{
    const qsizetype corte = filtro.lastIndexOf(u'/') + 1;
    const QString carpeta = filtro.left(corte);
    const QString patron = filtro.mid(corte);
    if (!TieneComodines(patron))
        return Lista(filtro);
    if (patron == u"*" || patron == u"*.*")
        return Lista(carpeta);
    const auto cumplen = [&patron](QList<DatosBusqueda> entradas) {
        entradas.removeIf([&](const DatosBusqueda& d) { return !CumpleFiltro(d.nombre, patron); });
        return entradas;
    };
    try {
        if (auto hallados = cumplen(Lista(filtro)); !hallados.isEmpty())
            return hallados;
    } catch (const ErrorFtp& error) {
        if (error.Numero() != error_ftp::Extendido)
            throw;
    }
    // Not every server understands wildcards: then it lists the folder, and we choose.
    return cumplen(Lista(carpeta));
}

} // namespace tolmo::site
