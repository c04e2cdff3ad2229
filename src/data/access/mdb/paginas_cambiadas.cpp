#include "data/access/mdb/paginas_cambiadas.h"
#include "data/access/mdb/errores_mdb.h"
#include <QDir>
#include <QTemporaryFile>
#include <algorithm>
#include <cerrno>
#include <stdexcept>

namespace tolmo::data::access::mdb {
namespace {

[[noreturn]] void FallaAparte(const QString& porque)
{
    throw ErrorMdb(Motivo::NoSeEscribe,
                   QStringLiteral("El fichero temporal de los cambios no se puede usar: ") + porque,
                   {.fichero = QDir::tempPath()});
}

/// Runs what reads or writes the temporary file.
template <typename Tarea> void EnAparte(Tarea&& tarea)
{
    try {
        tarea();
    } catch (const ErrorDeDisco& error) {
        FallaAparte(error.Razon());
    }
}

} // namespace

PaginasCambiadas::PaginasCambiadas(quint32 tamPagina, std::size_t limite)
    : tamPagina_(tamPagina), caben_(std::max<std::size_t>(2, limite / tamPagina))
{
}

std::vector<quint32> PaginasCambiadas::Numeros() const
{
    std::vector<quint32> numeros;
    numeros.reserve(paginas_.size());
    for (const auto& [numero, imagen] : paginas_)
        numeros.push_back(numero);
    return numeros;
}

std::optional<Pagina> PaginasCambiadas::Lee(quint32 numero)
{
    const auto hallada = paginas_.find(numero);
    if (hallada == paginas_.end())
        return std::nullopt;
    Trae(hallada->second);
    const auto& bytes = hallada->second->bytes;
    return Pagina{.numero = numero, .bytes = Bytes(*bytes), .duenio = bytes};
}

void PaginasCambiadas::Estrena(quint32 numero, std::vector<quint8> bytes)
{
    Recuerda(numero);
    auto imagen = std::make_shared<Imagen>();
    imagen->bytes = std::make_shared<std::vector<quint8>>(std::move(bytes));
    Anota(imagen);
    paginas_[numero] = imagen;
}

std::span<quint8> PaginasCambiadas::Propias(quint32 numero)
{
    Trae(paginas_.at(numero));
    Recuerda(numero);
    Referencia& imagen = paginas_.at(numero);
    if (imagen.use_count() > 1) { // a mark holds it
        auto nueva = std::make_shared<Imagen>();
        nueva->bytes = std::make_shared<std::vector<quint8>>(*imagen->bytes);
        imagen = nueva;
        Anota(imagen);
    } else if (imagen->bytes.use_count() > 1) { // somebody is still reading it
        imagen->bytes = std::make_shared<std::vector<quint8>>(*imagen->bytes);
    }
    imagen->guardada = false;
    return *imagen->bytes;
}

void PaginasCambiadas::Recuerda(quint32 numero)
{
    if (marcas_.empty() || marcas_.back().contains(numero))
        return;
    const auto hallada = paginas_.find(numero);
    marcas_.back().emplace(numero, hallada == paginas_.end() ? nullptr : hallada->second);
}

std::size_t PaginasCambiadas::Marca()
{
    marcas_.emplace_back();
    return marcas_.size();
}

void PaginasCambiadas::VuelveA(std::size_t marca)
{
    if (marca == 0 || marca > marcas_.size())
        throw std::logic_error("no such mark");
    while (marcas_.size() >= marca) {
        for (auto& [numero, imagen] : marcas_.back()) {
            if (imagen == nullptr)
                paginas_.erase(numero);
            else
                paginas_[numero] = imagen;
        }
        marcas_.pop_back();
    }
    marcas_.emplace_back();
}

void PaginasCambiadas::Suelta(std::size_t marca)
{
    if (marca == 0 || marca > marcas_.size())
        throw std::logic_error("no such mark");
    while (marcas_.size() >= marca) {
        Antes ultima = std::move(marcas_.back());
        marcas_.pop_back();
        // What an earlier mark remembers already is older.
        if (!marcas_.empty())
            marcas_.back().merge(ultima);
    }
}

void PaginasCambiadas::Olvida()
{
    paginas_.clear();
    marcas_.clear();
    enMemoria_.clear();
    aparte_.reset();
    huecos_ = 0;
}

void PaginasCambiadas::Trae(const Referencia& imagen)
{
    if (imagen->bytes != nullptr)
        return;
    auto bytes = std::make_shared<std::vector<quint8>>(tamPagina_);
    EnAparte([&] {
        if (aparte_->Lee(SitioDe(*imagen), *bytes) != bytes->size())
            FallaAparte(QStringLiteral("está cortado"));
    });
    Anota(imagen);
    imagen->bytes = std::move(bytes);
}

void PaginasCambiadas::Anota(const Referencia& imagen)
{
    if (enMemoria_.size() >= caben_)
        Aparta();
    enMemoria_.push_back(imagen);
}

void PaginasCambiadas::Aparta()
{
    std::erase_if(enMemoria_, [](const auto& imagen) { return imagen.expired(); });
    // Half of the room has to come free, or the next page would be the next round.
    if (enMemoria_.size() < caben_ / 2)
        return;
    EnAparte([this] {
        FicheroDeDisco& aparte = Aparte();
        for (const auto& debil : enMemoria_) {
            const Referencia imagen = debil.lock();
            if (imagen->guardada)
                continue;
            if (imagen->hueco < 0)
                imagen->hueco = huecos_++;
            aparte.Escribe(SitioDe(*imagen), *imagen->bytes);
            imagen->guardada = true;
        }
    });
    for (const auto& debil : enMemoria_)
        debil.lock()->bytes.reset();
    enMemoria_.clear();
}

FicheroDeDisco& PaginasCambiadas::Aparte()
{
    if (aparte_ == nullptr) {
        // Its name goes at once: nothing of it stays behind, however the program ends.
        QTemporaryFile nombre;
        if (!nombre.open())
            FallaAparte(ErrorDelSistema(errno));
        aparte_ = DiscoDelSistema().Abre(nombre.fileName(), Uso::LeerYEscribir);
    }
    return *aparte_;
}

} // namespace tolmo::data::access::mdb
