#include "site/ErrorFtp.h"
#include "site/sesion_curl.h"
#include "site/texto_ftp.h"
#include "site/zocalo.h"
#include <QList>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

// How a session is driven: the library's steps, its waits, its ends and its calls back.

namespace tolmo::site {
namespace {

using Reloj = std::chrono::steady_clock;
using Milisegundos = std::chrono::milliseconds;

constexpr int RespuestaSinAcceso = 530;
/// A server that breaks a transfer off closes the data connection and says why in the same breath.
constexpr Milisegundos EsperaDeLaRazon{250};
constexpr Milisegundos VueltaMasCorta{1};
constexpr Milisegundos VueltaMasLarga{500};

SesionCurl& Sesion(void* yo)
{
    return *static_cast<SesionCurl*>(yo);
}

} // namespace

void SesionCurl::Lanza()
{
    respuesta_.Olvida();
    bufer_.clear();
    leidos_ = 0;
    enMarcha_ = pausada_ = finDeDatos_ = false;
    resultado_ = CURLE_OK;
    ultimoMovimiento_ = Reloj::now();
    lanzada_ = curl_multi_add_handle(multi_.get(), facil_.get()) == CURLM_OK;
    if (!lanzada_)
        resultado_ = CURLE_FAILED_INIT;
}

void SesionCurl::Conduce(const std::function<bool()>& basta)
{
    ultimoMovimiento_ = Reloj::now();
    vuelta_ = VueltaMasCorta;
    while (!Acabada() && !basta())
        Espera();
}

bool SesionCurl::Acabada()
{
    if (!lanzada_)
        return true;
    int corriendo = 0;
    curl_multi_perform(multi_.get(), &corriendo);
    int quedan = 0;
    while (const CURLMsg* aviso = curl_multi_info_read(multi_.get(), &quedan)) {
        if (aviso->msg != CURLMSG_DONE)
            continue;
        resultado_ = aviso->data.result;
        // Of several addresses that were tried, the one that answered.
        if (!establecida_)
            curl_easy_getinfo(facil_.get(), CURLINFO_ACTIVESOCKET, &control_);
        curl_multi_remove_handle(multi_.get(), facil_.get());
        lanzada_ = false;
        break;
    }
    return !lanzada_;
}

void SesionCurl::Espera()
{
    const auto ahora = Reloj::now();
    // Short after each step: the library opens the data connection on its next turn, and gives
    // nothing to wait for until then.
    vuelta_ = std::min(2 * vuelta_, VueltaMasLarga);
    if (std::exchange(movimiento_, false)) {
        ultimoMovimiento_ = ahora;
        vuelta_ = VueltaMasCorta;
    }
    curl_off_t conectado = 0;
    curl_easy_getinfo(facil_.get(), CURLINFO_CONNECT_TIME_T, &conectado);
    const bool hayLinea = establecida_ || conectado > 0;
    const Milisegundos limite = hayLinea ? esperas_.silencioFtp : esperas_.conexion;
    const auto callado = std::chrono::duration_cast<Milisegundos>(ahora - ultimoMovimiento_);
    if (callado >= limite) {
        Suelta();
        resultado_ = CURLE_OPERATION_TIMEDOUT;
        Falla();
    }
    const Milisegundos vuelta = std::min(limite - callado, vuelta_);
    curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(vuelta.count()), nullptr);
}

void SesionCurl::Reanuda()
{
    if (lanzada_ && std::exchange(pausada_, false))
        curl_easy_pause(facil_.get(), CURLPAUSE_CONT);
}

/// Gives the request up, and with it the connection: what the server still says would be taken for
/// the answer to the next command.
void SesionCurl::Suelta()
{
    cortando_ = true;
    respuesta_.Olvida();
    curl_multi_remove_handle(multi_.get(), facil_.get());
    lanzada_ = false;
}

void SesionCurl::CompruebaResultado() const
{
    if (resultado_ != CURLE_OK || respuesta_.Rechaza())
        Falla();
}

void SesionCurl::Falla() const
{
    const bool claveIncorrecta = !establecida_ && respuesta_.Codigo() == RespuestaSinAcceso;
    if (respuesta_.Rechaza() && !claveIncorrecta)
        throw ErrorFtp(TextoDelServidor(respuesta_.Texto()));
    throw ErrorFtp(claveIncorrecta ? error_ftp::ClaveIncorrecta : NumeroDeFallo());
}

int SesionCurl::NumeroDeFallo() const
{
    long numeroDelSistema = 0;
    curl_easy_getinfo(facil_.get(), CURLINFO_OS_ERRNO, &numeroDelSistema);
    switch (resultado_) {
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_FTP_ACCEPT_TIMEOUT:
        return error_ftp::Espera;
    case CURLE_COULDNT_RESOLVE_HOST:
        return error_ftp::SinNombre;
    case CURLE_COULDNT_CONNECT:
    case CURLE_FTP_ACCEPT_FAILED:
    case CURLE_FTP_PORT_FAILED:
        return otraNegada_ ? error_ftp::Abortada : error_ftp::SinConexion;
    case CURLE_LOGIN_DENIED:
        return error_ftp::ClaveIncorrecta;
    case CURLE_URL_MALFORMAT:
        return error_ftp::ParametroNoValido;
    default:
        return numeroDelSistema == ECONNRESET ? error_ftp::Reiniciada : error_ftp::Abortada;
    }
}

std::size_t SesionCurl::AlLlegarLinea(char* datos, std::size_t uno, std::size_t n, void* yo)
{
    Sesion(yo).movimiento_ = true;
    Sesion(yo).respuesta_.Linea(QByteArray(datos, static_cast<qsizetype>(uno * n)));
    return uno * n;
}

std::size_t SesionCurl::AlPedirDatos(char* destino, std::size_t uno, std::size_t n, void* yo)
{
    SesionCurl& sesion = Sesion(yo);
    sesion.enMarcha_ = true;
    const qsizetype cuantos = std::min(sesion.PorLeer(), static_cast<qsizetype>(uno * n));
    if (cuantos == 0 && !sesion.finDeDatos_) {
        sesion.pausada_ = true;
        return CURL_READFUNC_PAUSE;
    }
    std::memcpy(destino, sesion.bufer_.constData() + sesion.leidos_,
                static_cast<std::size_t>(cuantos));
    sesion.leidos_ += cuantos;
    sesion.movimiento_ = true;
    return static_cast<std::size_t>(cuantos);
}

std::size_t SesionCurl::AlLlegarDatos(char* datos, std::size_t uno, std::size_t n, void* yo)
{
    SesionCurl& sesion = Sesion(yo);
    const std::size_t cuantos = uno * n;
    sesion.enMarcha_ = true;
    if (sesion.PorLeer() >= sesion.tope_) {
        sesion.pausada_ = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    sesion.bufer_.append(datos, static_cast<qsizetype>(cuantos));
    sesion.movimiento_ = true;
    return cuantos;
}

curl_socket_t SesionCurl::AlAbrirZocalo(void* yo, curlsocktype, curl_sockaddr* direccion)
{
    SesionCurl& sesion = Sesion(yo);
    if (PuertoDe(direccion->addr) != sesion.PuertoControl())
        return AbreZocalo(*direccion);
    sesion.otraNegada_ = sesion.establecida_;
    if (sesion.otraNegada_)
        return CURL_SOCKET_BAD;
    return sesion.control_ = AbreZocalo(*direccion);
}

int SesionCurl::AlCerrarZocalo(void* yo, curl_socket_t zocalo)
{
    SesionCurl& sesion = Sesion(yo);
    if (zocalo == sesion.control_) {
        sesion.control_ = CURL_SOCKET_BAD;
        const Milisegundos espera = sesion.enMarcha_ ? EsperaDeLaRazon : Milisegundos(0);
        if (!sesion.cortando_)
            for (const QByteArray& linea : Resto(zocalo, espera).split('\n'))
                if (!linea.isEmpty())
                    sesion.respuesta_.Linea(linea);
    }
    Cierra(zocalo);
    return 0;
}

} // namespace tolmo::site
