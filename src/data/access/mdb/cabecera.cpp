#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/codificacion.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t Nombre = 4;
constexpr std::size_t TamNombre = 16;
constexpr std::size_t ByteDeVersion = 0x14;
constexpr std::size_t Tapado = 0x18;
constexpr std::size_t TamTapado = 128;
constexpr std::size_t TamTapadoJet3 = 126;
constexpr std::size_t OrdenJet3 = 0x3A;
constexpr std::size_t PaginaDeCodigos = 0x3C;
constexpr std::size_t Clave = 0x3E;
constexpr std::size_t Contrasena = 0x42;
constexpr std::size_t TamContrasena = 40;
constexpr std::size_t TamContrasenaJet3 = 20;
constexpr std::size_t Orden = 0x6E;
constexpr std::size_t Creacion = 0x72;
// What only a writer needs.
constexpr std::size_t MapaLibres = 0x18;
constexpr std::size_t OtroMapa = 0x1C;
constexpr std::size_t Catalogos = 0x20;
constexpr quint32 PrimerCatalogo = 2;
constexpr quint32 UltimoCatalogo = 5;
constexpr std::size_t Motor = 0x6A;
constexpr quint32 MotorJet4 = 9025;
constexpr std::size_t TrasVelo = 0x98;
constexpr std::size_t MarcasDeCambio = 0xE00;
constexpr std::size_t CuantasMarcas = 256;

using BytesCabecera = std::array<quint8, TamCabecera>;

/// Takes the veil off, or puts it on: an RC4 key stream that is the same in every file.
void Destapa(std::span<quint8> bytes, std::size_t cuantos)
{
    constexpr std::array<quint8, 4> clave = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<quint8, 256> estado;
    for (std::size_t i = 0; i < estado.size(); ++i)
        estado[i] = static_cast<quint8>(i);
    for (std::size_t i = 0, j = 0; i < estado.size(); ++i) {
        j = (j + estado[i] + clave[i % clave.size()]) % estado.size();
        std::swap(estado[i], estado[j]);
    }
    for (std::size_t n = 0, i = 0, j = 0; n < cuantos; ++n) {
        i = (i + 1) % estado.size();
        j = (j + estado[i]) % estado.size();
        std::swap(estado[i], estado[j]);
        bytes[Tapado + n] ^= estado[(estado[i] + estado[j]) % estado.size()];
    }
}

QString HastaElCero(const QString& texto)
{
    const qsizetype cero = texto.indexOf(QChar(0));
    return cero < 0 ? texto : texto.left(cero);
}

QString ContrasenaJet3(Bytes bytes)
{
    const Bytes trozo = bytes.Trozo(Contrasena, TamContrasenaJet3);
    return HastaElCero(DesdeWindows1252(
        QByteArray(reinterpret_cast<const char*>(trozo.data()), TamContrasenaJet3)));
}

/// Since Access 2000 the password has a second veil, the whole days of the creation date.
QString ContrasenaDe(Bytes bytes, double creacion)
{
    const bool cabe = std::fabs(creacion) < 2147483648.0;
    const auto dias = static_cast<quint32>(cabe ? static_cast<qint32>(creacion) : 0);
    QString texto;
    for (std::size_t i = 0; i < TamContrasena; i += 2)
        texto += QChar(static_cast<char16_t>(bytes.U16(Contrasena + i) ^
                                             (i % 4 == 0 ? dias & 0xFFFF : dias >> 16)));
    return HastaElCero(texto);
}

} // namespace

Cabecera LeeCabecera(Bytes pagina)
{
    if (pagina.size() < TamCabecera)
        throw ErrorMdb(Motivo::NoEsBase,
                       QStringLiteral("El fichero es demasiado corto para ser una base de datos "
                                      "de Access"));
    constexpr std::array<quint8, 4> principio = {0, 1, 0, 0};
    const char* nombre = reinterpret_cast<const char*>(pagina.data()) + Nombre;
    const bool jet = std::memcmp(nombre, "Standard Jet DB", TamNombre) == 0;
    const bool ace = std::memcmp(nombre, "Standard ACE DB", TamNombre) == 0;
    if (!std::equal(principio.begin(), principio.end(), pagina.data()) || (!jet && !ace))
        throw ErrorMdb(Motivo::NoEsBase,
                       QStringLiteral("El fichero no es una base de datos de Access"));
    const std::optional<Version> version = VersionDe(pagina.U8(ByteDeVersion));
    if (!version)
        throw ErrorMdb(Motivo::Version,
                       QStringLiteral("La versión de la base de datos no se conoce"));

    Cabecera cabecera{.version = *version};
    BytesCabecera copia;
    std::copy_n(pagina.data(), TamCabecera, copia.begin());
    const bool jet3 = *version == Version::Jet3;
    Destapa(copia, jet3 ? TamTapadoJet3 : TamTapado);
    const Bytes claro{std::span<const quint8>(copia)};
    cabecera.paginaDeCodigos = claro.U16(PaginaDeCodigos);
    cabecera.clave = claro.U32(Clave);
    cabecera.idioma = claro.U16(jet3 ? OrdenJet3 : Orden);
    cabecera.versionOrden = jet3 ? 0 : claro.U8(Orden + 3);
    cabecera.creacion = jet3 ? 0 : claro.F64(Creacion);
    cabecera.contrasena = jet3 ? ContrasenaJet3(claro) : ContrasenaDe(claro, cabecera.creacion);
    return cabecera;
}

void EscribeCabecera(std::span<quint8> pagina, const Cabecera& cabecera)
{
    pagina[1] = 1;
    std::memcpy(pagina.data() + Nombre, "Standard Jet DB", TamNombre);
    pagina[ByteDeVersion] = 1;
    Pon(pagina, MapaLibres, quint32{0x100});
    Pon(pagina, OtroMapa, quint32{0x101});
    for (quint32 numero = PrimerCatalogo; numero <= UltimoCatalogo; ++numero)
        Pon(pagina, Catalogos + 4 * (numero - PrimerCatalogo), numero);
    Pon(pagina, PaginaDeCodigos, cabecera.paginaDeCodigos);
    for (std::size_t i = 0; i < TamContrasena; i += 4)
        Pon(pagina, Contrasena + i, static_cast<qint32>(cabecera.creacion));
    Pon(pagina, Motor, MotorJet4);
    Pon(pagina, Orden, cabecera.idioma);
    Pon(pagina, Orden + 3, cabecera.versionOrden);
    Pon(pagina, Creacion, cabecera.creacion);
    Destapa(pagina, TamTapado);
    constexpr std::array<quint8, 7> version = {0x54, 0x06, 0, 0, '4', '.', '0'};
    std::copy(version.begin(), version.end(), pagina.data() + TrasVelo);
    for (std::size_t i = 0; i < CuantasMarcas; ++i)
        Pon(pagina, MarcasDeCambio + 2 * i, quint16{0x0100});
}

} // namespace tolmo::data::access::mdb
