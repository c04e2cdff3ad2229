#pragma once
#include <QByteArray>
#include <optional>
#include <utility>

/// A socket of a test on loopback, closed with its owner. Blocking; what fails gives nothing.
class Enchufe {
  public:
    Enchufe() = default;
    explicit Enchufe(int fd) : fd_(fd) {}
    Enchufe(Enchufe&& otro) noexcept : fd_(std::exchange(otro.fd_, -1)) {}
    Enchufe& operator=(Enchufe&& otro) noexcept;
    ~Enchufe() { Cierra(); }

    /// Listens on a port, 0 takes a free one.
    static Enchufe Escucha(int puerto = 0);
    static Enchufe Conecta(int puerto);
    Enchufe Acepta() const;

    bool Vale() const { return fd_ >= 0; }
    int Puerto() const; ///< its own
    /// True when something can be read, or the other side has ended, within so long.
    bool HayAlgo(int milisegundos) const;
    /// What has come in; empty at the end of the connection.
    QByteArray Lee(qsizetype cuantos = 65536) const;
    bool Escribe(const QByteArray& bytes) const;
    /// No more will be written; reading goes on.
    void AcabaEscritura() const;
    /// Wakes up whoever waits on it.
    void Despierta() const;
    void Cierra();
    /// Ends with a reset in place of an orderly end.
    void Corta();

  private:
    int fd_ = -1;
};

/// A port that nobody uses, odd, with the one below it free too: an FTP server connects from there.
int PuertoLibre();
