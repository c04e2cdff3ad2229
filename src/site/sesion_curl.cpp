#include "site/sesion_curl.h"
#include "site/ErrorFtp.h"
#include "site/zocalo.h"
#include <limits>
#include <utility>

namespace tolmo::site {
namespace {

using Milisegundos = std::chrono::milliseconds;

constexpr int PuertoDeSerie = 21;
constexpr qsizetype BytesPorAdelantado = 262144;

DestinoFtp ConPuerto(DestinoFtp destino)
{
    if (destino.puerto == 0)
        destino.puerto = PuertoDeSerie;
    return destino;
}

void PreparaBiblioteca()
{
    static const CURLcode lista = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (lista != CURLE_OK)
        throw ErrorFtp(error_ftp::AsaNoValida);
}

QByteArray UrlDe(const DestinoFtp& destino)
{
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), &curl_url_cleanup);
    QByteArray servidor = destino.servidor.toUtf8();
    if (servidor.contains(':'))
        servidor = '[' + servidor + ']';
    char* texto = nullptr;
    if (curl_url_set(url.get(), CURLUPART_SCHEME, "ftp", 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_HOST, servidor.constData(), 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_PORT, QByteArray::number(destino.puerto).constData(),
                     0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_PATH, "/", 0) != CURLUE_OK ||
        curl_url_get(url.get(), CURLUPART_URL, &texto, 0) != CURLUE_OK)
        throw ErrorFtp(error_ftp::SinNombre);
    QByteArray resultado(texto);
    curl_free(texto);
    return resultado;
}

long Redondea(Milisegundos espera)
{
    return static_cast<long>(std::chrono::ceil<std::chrono::seconds>(espera).count());
}

} // namespace

SesionCurl::SesionCurl(const DestinoFtp& destino, const Esperas& esperas)
    : esperas_(esperas), destino_(ConPuerto(destino)), base_(UrlDe(destino_))
{
    PreparaBiblioteca();
    multi_.reset(curl_multi_init());
    facil_.reset(curl_easy_init());
    if (multi_ == nullptr || facil_ == nullptr)
        throw ErrorFtp(error_ftp::AsaNoValida);
    Prepara({});
    curl_easy_setopt(facil_.get(), CURLOPT_NOBODY, 1L);
    Lanza();
    Conduce([] { return false; });
    CompruebaResultado();
    establecida_ = true;
}

SesionCurl::~SesionCurl()
{
    cortando_ = true;
    if (lanzada_)
        Suelta(); // in the middle of a transfer nothing is said, the connection is just cut
    else if (control_ != CURL_SOCKET_BAD)
        Despide(control_, "QUIT\r\n");
}

void SesionCurl::Orden(const QByteArray& orden)
{
    Prepara({});
    curl_easy_setopt(facil_.get(), CURLOPT_NOBODY, 1L);
    // The asterisk: the answer is judged here, and a refusal doesn't cost the connection.
    Antes(CURLOPT_QUOTE, '*' + orden);
    Lanza();
    Conduce([] { return false; });
    CompruebaResultado();
}

QByteArray SesionCurl::Recoge(const QByteArray& orden)
{
    Prepara({});
    curl_easy_setopt(facil_.get(), CURLOPT_CUSTOMREQUEST, orden.constData());
    tope_ = std::numeric_limits<qsizetype>::max();
    Lanza();
    Conduce([] { return false; });
    CompruebaResultado();
    return std::exchange(bufer_, {});
}

void SesionCurl::AbreSubida(const QByteArray& nombre, bool ascii)
{
    Prepara(nombre);
    PreparaDatos(ascii);
    curl_easy_setopt(facil_.get(), CURLOPT_UPLOAD, 1L);
    Abre(Sentido::Subida);
}

void SesionCurl::AbreBajada(const QByteArray& nombre, bool ascii)
{
    Prepara(nombre);
    PreparaDatos(ascii);
    Abre(Sentido::Bajada);
}

void SesionCurl::Abre(Sentido sentido)
{
    Lanza();
    Conduce([this] { return enMarcha_; });
    // What fails after the first bytes is told when those are read; an empty file has ended well.
    if (!lanzada_ && !enMarcha_)
        CompruebaResultado();
    sentido_ = sentido;
}

void SesionCurl::Escribe(const QByteArray& bytes)
{
    bufer_ = bytes;
    leidos_ = 0;
    Reanuda();
    Conduce([this] { return PorLeer() == 0; });
    if (!lanzada_)
        Falla();
}

QByteArray SesionCurl::Lee(qsizetype cuantos)
{
    if (PorLeer() < cuantos) {
        bufer_.remove(0, leidos_);
        leidos_ = 0;
        Reanuda();
        Conduce([this, cuantos] { return PorLeer() >= cuantos; });
    }
    if (PorLeer() < cuantos)
        CompruebaResultado();
    QByteArray bytes = bufer_.mid(leidos_, cuantos);
    leidos_ += bytes.size();
    return bytes;
}

void SesionCurl::Termina()
{
    sentido_ = Sentido::Ninguno;
    finDeDatos_ = true;
    Reanuda();
    Conduce([this] {
        bufer_.clear();
        leidos_ = 0;
        Reanuda();
        return false;
    });
    CompruebaResultado();
}

void SesionCurl::Abandona()
{
    sentido_ = Sentido::Ninguno;
    if (lanzada_)
        Suelta();
}

void SesionCurl::Prepara(const QByteArray& ruta)
{
    if (establecida_ && control_ == CURL_SOCKET_BAD)
        throw ErrorFtp(error_ftp::Abortada);
    CURL* facil = facil_.get();
    curl_easy_reset(facil);
    ordenes_.reset();
    const QByteArray url = base_ + ruta.toPercentEncoding("/");
    curl_easy_setopt(facil, CURLOPT_URL, url.constData());
    curl_easy_setopt(facil, CURLOPT_PROTOCOLS_STR, "ftp");
    curl_easy_setopt(facil, CURLOPT_PROXY, "");
    curl_easy_setopt(facil, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(facil, CURLOPT_PATH_AS_IS, 1L);
    if (!destino_.usuario.isEmpty()) {
        curl_easy_setopt(facil, CURLOPT_USERNAME, destino_.usuario.constData());
        curl_easy_setopt(facil, CURLOPT_PASSWORD, destino_.clave.constData());
    }
    // Folders are changed by commands of ours alone; a name goes to the server as it is.
    curl_easy_setopt(facil, CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    // The old commands: on IPv4 every server and every router in between knows them.
    curl_easy_setopt(facil, CURLOPT_FTP_USE_EPRT, 0L);
    curl_easy_setopt(facil, CURLOPT_FTP_USE_EPSV, 0L);
    if (!destino_.pasivo)
        curl_easy_setopt(facil, CURLOPT_FTPPORT, "-");
    // The size before each file would be one more question, and nobody needs it.
    curl_easy_setopt(facil, CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
    // However long the connection was idle, it is this one or none.
    curl_easy_setopt(facil, CURLOPT_MAXAGE_CONN,
                     static_cast<long>(std::numeric_limits<int>::max()));
    curl_easy_setopt(facil, CURLOPT_TCP_KEEPALIVE, 1L);
    // Blocks are small: let the system join what the network hasn't taken yet.
    curl_easy_setopt(facil, CURLOPT_TCP_NODELAY, 0L);
    // The waits are watched in Espera; these bound what the library does without coming back.
    const Milisegundos login = esperas_.conexion + 4 * esperas_.silencioFtp;
    curl_easy_setopt(facil, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(login.count()));
    curl_easy_setopt(facil, CURLOPT_ACCEPTTIMEOUT_MS,
                     static_cast<long>(esperas_.silencioFtp.count()));
    curl_easy_setopt(facil, CURLOPT_SERVER_RESPONSE_TIMEOUT, Redondea(esperas_.silencioFtp));
    curl_easy_setopt(facil, CURLOPT_HEADERFUNCTION, &SesionCurl::AlLlegarLinea);
    curl_easy_setopt(facil, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(facil, CURLOPT_READFUNCTION, &SesionCurl::AlPedirDatos);
    curl_easy_setopt(facil, CURLOPT_READDATA, this);
    curl_easy_setopt(facil, CURLOPT_WRITEFUNCTION, &SesionCurl::AlLlegarDatos);
    curl_easy_setopt(facil, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(facil, CURLOPT_OPENSOCKETFUNCTION, &SesionCurl::AlAbrirZocalo);
    curl_easy_setopt(facil, CURLOPT_OPENSOCKETDATA, this);
    curl_easy_setopt(facil, CURLOPT_CLOSESOCKETFUNCTION, &SesionCurl::AlCerrarZocalo);
    curl_easy_setopt(facil, CURLOPT_CLOSESOCKETDATA, this);
}

void SesionCurl::PreparaDatos(bool ascii)
{
    // Asked for by a command of ours: told to transfer text, the library would rewrite the ends of
    // lines, and these bytes go as they are. It then still believes in binary.
    if (ascii)
        Antes(CURLOPT_PREQUOTE, "TYPE A");
    else if (huboAscii_)
        Antes(CURLOPT_PREQUOTE, "TYPE I");
    huboAscii_ = huboAscii_ || ascii;
    tope_ = BytesPorAdelantado;
}

void SesionCurl::Antes(CURLoption momento, const QByteArray& orden)
{
    ordenes_.reset(curl_slist_append(nullptr, orden.constData()));
    curl_easy_setopt(facil_.get(), momento, ordenes_.get());
}

} // namespace tolmo::site
