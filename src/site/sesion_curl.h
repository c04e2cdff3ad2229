#pragma once
#include "site/esperas.h"
#include "site/respuesta_ftp.h"
#include <QString>
#include <chrono>
#include <curl/curl.h>
#include <functional>
#include <memory>

namespace tolmo::site {

/// Where a session goes.
struct DestinoFtp {
    QString servidor{};
    int puerto = 0;       ///< 0 is the protocol's default
    QByteArray usuario{}; ///< as it travels; empty logs in as an anonymous user
    QByteArray clave{};
    bool pasivo = false;
};

/// One control connection, from the login to its end, driven step by step. Names are bytes as they
/// travel. Failures are ErrorFtp; once the connection is lost every call fails.
///
/// The library below would open another connection by itself when the first is lost. A session
/// doesn't come back like that, its current folder would be gone: so every connection to the
/// server's port but the first is refused.
class SesionCurl {
  public:
    /// Connects and logs in.
    SesionCurl(const DestinoFtp& destino, const Esperas& esperas);
    ~SesionCurl();
    SesionCurl(const SesionCurl&) = delete;
    SesionCurl& operator=(const SesionCurl&) = delete;

    /// Sends one command without data; an answer of 400 and above is an error.
    void Orden(const QByteArray& orden);
    /// Fetches what a command sends over a data connection, whole.
    QByteArray Recoge(const QByteArray& orden);

    /// Both start a transfer: when they return, the data connection stands.
    void AbreSubida(const QByteArray& nombre, bool ascii);
    void AbreBajada(const QByteArray& nombre, bool ascii);
    void Escribe(const QByteArray& bytes);
    /// Up to `cuantos` bytes; fewer only at the end.
    QByteArray Lee(qsizetype cuantos);
    /// Ends the open transfer and waits for the server's last answer.
    void Termina();
    /// Breaks the open transfer off, and with it the connection.
    void Abandona();
    bool Abierta() const { return sentido_ != Sentido::Ninguno; }

    /// The answer to the last command.
    const RespuestaFtp& Respuesta() const { return respuesta_; }

  private:
    enum class Sentido { Ninguno, Subida, Bajada };
    template <auto Libera> struct Liberador {
        template <class T> void operator()(T* p) const { Libera(p); }
    };

    void Prepara(const QByteArray& ruta);
    void PreparaDatos(bool ascii);
    void Antes(CURLoption momento, const QByteArray& orden);
    void Lanza();
    void Abre(Sentido sentido);
    void Conduce(const std::function<bool()>& basta);
    bool Acabada();
    void Espera();
    void Reanuda();
    void Suelta();
    void CompruebaResultado() const;
    [[noreturn]] void Falla() const;
    int NumeroDeFallo() const;
    int PuertoControl() const { return destino_.puerto; }
    qsizetype PorLeer() const { return bufer_.size() - leidos_; }

    static std::size_t AlLlegarLinea(char* datos, std::size_t uno, std::size_t n, void* yo);
    static std::size_t AlPedirDatos(char* destino, std::size_t uno, std::size_t n, void* yo);
    static std::size_t AlLlegarDatos(char* datos, std::size_t uno, std::size_t n, void* yo);
    static curl_socket_t AlAbrirZocalo(void* yo, curlsocktype, curl_sockaddr* direccion);
    static int AlCerrarZocalo(void* yo, curl_socket_t zocalo);

    Esperas esperas_;
    DestinoFtp destino_;
    QByteArray base_{};                       ///< URL of the server, "/" behind
    curl_socket_t control_ = CURL_SOCKET_BAD; ///< the control connection, bad once it is lost
    bool establecida_ = false;                ///< logged in
    bool lanzada_ = false;                    ///< a request is with the library
    bool cortando_ = false;                   ///< its end is ours, no answer matters
    bool otraNegada_ = false;                 ///< the library wanted a second connection
    CURLcode resultado_ = CURLE_OK;
    RespuestaFtp respuesta_{};

    Sentido sentido_ = Sentido::Ninguno;
    bool enMarcha_ = false; ///< the server has agreed and data flows
    bool pausada_ = false;
    bool finDeDatos_ = false;
    bool huboAscii_ = false; ///< some transfer of this session was
    QByteArray bufer_{};
    qsizetype leidos_ = 0;    ///< bytes of the buffer that are used up
    qsizetype tope_ = 0;      ///< bytes to fetch ahead
    bool movimiento_ = false; ///< bytes or lines passed since the last look
    std::chrono::steady_clock::time_point ultimoMovimiento_{};
    std::chrono::milliseconds vuelta_{}; ///< longest wait for the next step

    std::unique_ptr<curl_slist, Liberador<curl_slist_free_all>> ordenes_{};
    // Last, to go first: closing them calls back.
    std::unique_ptr<CURLM, Liberador<curl_multi_cleanup>> multi_{};
    std::unique_ptr<CURL, Liberador<curl_easy_cleanup>> facil_{};
};

} // namespace tolmo::site
