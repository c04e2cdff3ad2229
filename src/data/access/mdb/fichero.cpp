#include "data/access/mdb/fichero.h"
#include "data/access/mdb/dispositivo_de_fichero.h"
#include "data/access/mdb/errores_mdb.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

// A row pointer holds a page in 24 bits.
constexpr qint64 MasPaginas = qint64{1} << 24;
constexpr quint16 Windows1252 = 1252;

void CompruebaQueSeLee(const Cabecera& cabecera, const Apertura& apertura)
{
    if (cabecera.clave != 0)
        throw ErrorMdb(Motivo::Cifrado,
                       QStringLiteral("La base de datos está cifrada y no se puede leer"));
    if (!cabecera.contrasena.isEmpty() && apertura.contrasena.isEmpty())
        throw ErrorMdb(Motivo::Contrasena,
                       QStringLiteral("La base de datos está protegida por una contraseña"));
    if (!cabecera.contrasena.isEmpty() && cabecera.contrasena != apertura.contrasena)
        throw ErrorMdb(Motivo::Contrasena,
                       QStringLiteral("La contraseña de la base de datos no es ésa"));
    const quint16 codigos = cabecera.paginaDeCodigos;
    if (cabecera.version == Version::Jet3 && codigos != 0 && codigos != Windows1252)
        throw ErrorMdb(Motivo::NoAdmitido,
                       QStringLiteral("La página de códigos %1 no se admite").arg(codigos));
}

} // namespace

FicheroPaginas::FicheroPaginas(const QString& ruta, const Apertura& apertura)
    : FicheroPaginas(
          std::make_unique<DispositivoDeFichero>(DiscoDelSistema().Abre(ruta, Uso::Leer)), ruta,
          apertura)
{
}

FicheroPaginas::FicheroPaginas(std::unique_ptr<QIODevice> fichero, const QString& nombre,
                               const Apertura& apertura)
    : nombre_(nombre), fichero_(std::move(fichero))
{
    EnLugar([this] { return Lugar{.fichero = nombre_}; }, [&] { Abre(apertura); });
}

void FicheroPaginas::Abre(const Apertura& apertura)
{
    const QByteArray principio = fichero_->read(TamCabecera);
    cabecera_ = LeeCabecera(Bytes({reinterpret_cast<const quint8*>(principio.data()),
                                   static_cast<std::size_t>(principio.size())}));
    formato_ = FormatoDe(cabecera_.version);
    Mide();
    CompruebaQueSeLee(cabecera_, apertura);
    cabenEnCache_ = std::max<std::size_t>(1, apertura.cache / formato_.tamPagina);
}

void FicheroPaginas::Mide()
{
    const qint64 tam = fichero_->size();
    if (tam % formato_.tamPagina != 0)
        throw ErrorMdb(Motivo::Cortado,
                       QStringLiteral("El fichero no acaba con una página entera: está cortado"));
    cuantas_ = static_cast<quint32>(std::min(tam / formato_.tamPagina, MasPaginas));
}

void FicheroPaginas::Olvida(std::span<const quint32> paginas)
{
    for (const quint32 numero : paginas) {
        const auto hallada = porNumero_.find(numero);
        if (hallada == porNumero_.end())
            continue;
        usadas_.erase(hallada->second);
        porNumero_.erase(hallada);
    }
    EnLugar([this] { return Lugar{.fichero = nombre_}; }, [this] { Mide(); });
}

Pagina FicheroPaginas::Lee(quint32 numero)
{
    const auto hallada = porNumero_.find(numero);
    if (hallada != porNumero_.end()) {
        usadas_.splice(usadas_.begin(), usadas_, hallada->second);
        return usadas_.front();
    }
    Pagina pagina = LeeDelDisco(numero);
    Guarda(pagina);
    return pagina;
}

Pagina FicheroPaginas::LeeDelDisco(quint32 numero)
{
    const Lugar lugar{.fichero = nombre_, .pagina = numero};
    if (numero >= cuantas_)
        throw ErrorMdb(Motivo::Cortado,
                       QStringLiteral("Falta una página: el fichero está cortado o dañado"), lugar);
    auto bytes = std::make_shared<std::vector<quint8>>(formato_.tamPagina);
    const qint64 tam = formato_.tamPagina;
    if (!fichero_->seek(numero * tam) ||
        fichero_->read(reinterpret_cast<char*>(bytes->data()), tam) != tam)
        throw ErrorMdb(Motivo::Cortado, QStringLiteral("Una página no se puede leer"), lugar);
    return {.numero = numero, .bytes = Bytes(*bytes), .duenio = bytes};
}

void FicheroPaginas::Guarda(const Pagina& pagina)
{
    if (usadas_.size() >= cabenEnCache_) {
        porNumero_.erase(usadas_.back().numero);
        usadas_.pop_back();
    }
    usadas_.push_front(pagina);
    porNumero_[pagina.numero] = usadas_.begin();
}

} // namespace tolmo::data::access::mdb
