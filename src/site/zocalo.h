#pragma once
#include <QByteArray>
#include <chrono>
#include <curl/curl.h>

struct sockaddr;

namespace tolmo::site {

/// The few calls of the system on a socket that the transfer library leaves to us.

/// The port of an IPv4 or IPv6 address, 0 for any other kind.
int PuertoDe(const sockaddr& direccion);

curl_socket_t AbreZocalo(const curl_sockaddr& direccion);

/// What has come in and nobody has read; waits so long for the first byte.
QByteArray Resto(curl_socket_t zocalo, std::chrono::milliseconds espera);

/// Sends a last line without waiting for room or for an answer. Nothing can be sent after it: the
/// transfer library would say goodbye by itself and wait for the answer of a server that may be
/// dead.
void Despide(curl_socket_t zocalo, const QByteArray& linea);

void Cierra(curl_socket_t zocalo);

} // namespace tolmo::site
