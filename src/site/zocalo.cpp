#include "site/zocalo.h"
#include <array>
#include <cstring>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tolmo::site {

int PuertoDe(const sockaddr& direccion)
{
    if (direccion.sa_family == AF_INET) {
        sockaddr_in cuatro{};
        std::memcpy(&cuatro, &direccion, sizeof cuatro);
        return ntohs(cuatro.sin_port);
    }
    if (direccion.sa_family == AF_INET6) {
        sockaddr_in6 seis{};
        std::memcpy(&seis, &direccion, sizeof seis);
        return ntohs(seis.sin6_port);
    }
    return 0;
}

curl_socket_t AbreZocalo(const curl_sockaddr& direccion)
{
    return socket(direccion.family, direccion.socktype | SOCK_CLOEXEC, direccion.protocol);
}

QByteArray Resto(curl_socket_t zocalo, std::chrono::milliseconds espera)
{
    pollfd sondeo{.fd = zocalo, .events = POLLIN, .revents = 0};
    if (poll(&sondeo, 1, static_cast<int>(espera.count())) <= 0)
        return {};
    std::array<char, 4096> bytes{};
    const ssize_t n = recv(zocalo, bytes.data(), bytes.size(), MSG_DONTWAIT);
    return n > 0 ? QByteArray(bytes.data(), n) : QByteArray();
}

void Despide(curl_socket_t zocalo, const QByteArray& linea)
{
    // Whether it arrives makes no difference: the connection ends either way.
    [[maybe_unused]] const ssize_t n =
        send(zocalo, linea.constData(), static_cast<std::size_t>(linea.size()),
             MSG_DONTWAIT | MSG_NOSIGNAL);
    shutdown(zocalo, SHUT_WR);
}

void Cierra(curl_socket_t zocalo)
{
    close(zocalo);
}

} // namespace tolmo::site
