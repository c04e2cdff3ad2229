#include "apoyo/enchufe.h"
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

sockaddr_in Direccion(int puerto)
{
    sockaddr_in direccion{};
    direccion.sin_family = AF_INET;
    direccion.sin_port = htons(static_cast<quint16>(puerto));
    direccion.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return direccion;
}

} // namespace

Enchufe& Enchufe::operator=(Enchufe&& otro) noexcept
{
    std::swap(fd_, otro.fd_);
    return *this;
}

Enchufe Enchufe::Escucha(int puerto)
{
    Enchufe enchufe(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in direccion = Direccion(puerto);
    if (bind(enchufe.fd_, reinterpret_cast<const sockaddr*>(&direccion), sizeof direccion) != 0 ||
        listen(enchufe.fd_, 16) != 0)
        enchufe.Cierra();
    return enchufe;
}

Enchufe Enchufe::Conecta(int puerto)
{
    Enchufe enchufe(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in direccion = Direccion(puerto);
    if (connect(enchufe.fd_, reinterpret_cast<const sockaddr*>(&direccion), sizeof direccion) != 0)
        enchufe.Cierra();
    return enchufe;
}

Enchufe Enchufe::Acepta() const
{
    return Enchufe(accept4(fd_, nullptr, nullptr, SOCK_CLOEXEC));
}

int Enchufe::Puerto() const
{
    sockaddr_in direccion{};
    socklen_t largo = sizeof direccion;
    getsockname(fd_, reinterpret_cast<sockaddr*>(&direccion), &largo);
    return ntohs(direccion.sin_port);
}

bool Enchufe::HayAlgo(int milisegundos) const
{
    pollfd sondeo{.fd = fd_, .events = POLLIN, .revents = 0};
    return poll(&sondeo, 1, milisegundos) > 0;
}

QByteArray Enchufe::Lee(qsizetype cuantos) const
{
    QByteArray bytes(cuantos, Qt::Uninitialized);
    const ssize_t n = recv(fd_, bytes.data(), static_cast<std::size_t>(cuantos), 0);
    return n > 0 ? bytes.left(n) : QByteArray();
}

bool Enchufe::Escribe(const QByteArray& bytes) const
{
    qsizetype hechos = 0;
    while (hechos < bytes.size()) {
        const ssize_t n = send(fd_, bytes.constData() + hechos,
                               static_cast<std::size_t>(bytes.size() - hechos), MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        hechos += n;
    }
    return true;
}

void Enchufe::AcabaEscritura() const
{
    shutdown(fd_, SHUT_WR);
}

void Enchufe::Despierta() const
{
    shutdown(fd_, SHUT_RDWR);
}

void Enchufe::Cierra()
{
    if (fd_ >= 0)
        close(std::exchange(fd_, -1));
}

void Enchufe::Corta()
{
    const linger ninguna{.l_onoff = 1, .l_linger = 0};
    setsockopt(fd_, SOL_SOCKET, SO_LINGER, &ninguna, sizeof ninguna);
    Cierra();
}

int PuertoLibre()
{
    for (;;) {
        const Enchufe uno = Enchufe::Escucha();
        const int puerto = uno.Puerto();
        if (puerto % 2 != 0 && Enchufe::Escucha(puerto - 1).Vale())
            return puerto;
    }
}
