#pragma once
#include "apoyo/enchufe.h"
#include <QByteArrayList>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

class ServidorGuionizado;

/// One connection of a scripted server, seen from its side.
class Charla {
  public:
    Charla(ServidorGuionizado& servidor, Enchufe enchufe, int numero)
        : servidor_(servidor), enchufe_(std::move(enchufe)), numero_(numero)
    {
    }

    int Numero() const { return numero_; } ///< 1 for the first connection of the server
    const Enchufe& Hilo() const { return enchufe_; }
    /// The next line without its end; empty once the client is gone. The server records it.
    QByteArray Linea();
    /// Sends a line.
    void Di(const QByteArray& linea) const { enchufe_.Escribe(linea + "\r\n"); }
    void Escribe(const QByteArray& bytes) const { enchufe_.Escribe(bytes); }
    /// Says nothing more, and listens until the client ends the connection.
    void Calla();
    void Cierra() { enchufe_.Cierra(); }
    void Corta() { enchufe_.Corta(); }

    /// FTP: greets and lets anybody in, up to the question for the folder.
    void Recibe();
    /// FTP: agrees to what comes before a transfer (TYPE, PORT, PASV, CWD) until a command that
    /// begins with `verbo`; that one is left to the script. False when the client is gone.
    bool EsperaOrden(const QByteArray& verbo);
    /// FTP: the data connection that was agreed upon.
    Enchufe AbreDatos();

  private:
    ServidorGuionizado& servidor_;
    Enchufe enchufe_;
    int numero_;
    QByteArray pendiente_{};
    Enchufe escuchaDatos_{};
    int puertoDatos_ = 0;
};

/// A server on loopback that plays a script to each client, in a thread of its own; for what real
/// servers do only when they fail.
class ServidorGuionizado {
  public:
    explicit ServidorGuionizado(std::function<void(Charla&)> guion);
    ~ServidorGuionizado();
    ServidorGuionizado(const ServidorGuionizado&) = delete;
    ServidorGuionizado& operator=(const ServidorGuionizado&) = delete;

    int Puerto() const { return escucha_.Puerto(); }
    /// All lines that came, in their order.
    QByteArrayList Lineas() const;
    int Conexiones() const;

  private:
    friend class Charla;
    void Atiende();
    void Anota(const QByteArray& linea);

    std::function<void(Charla&)> guion_;
    Enchufe escucha_;
    mutable std::mutex cierre_{};
    QByteArrayList lineas_{};
    std::list<Charla> charlas_{};
    std::list<std::thread> hilos_{};
    bool acabando_ = false;
    std::thread portero_;
};
