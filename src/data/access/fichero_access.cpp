#include "data/access/fichero_access.h"
#include "data/access/errores_access.h"
#include <QScopeGuard>

namespace tolmo::data::access {

FicheroAccess::FicheroAccess(const QString& ruta)
    : paginas_(std::make_shared<mdb::TransaccionPaginas>(ruta)), enlazados_(paginas_)
{
    AbreBase();
}

void FicheroAccess::AbreBase()
{
    base_ = std::make_unique<mdb::Base>(
        paginas_, [this](const QString& ruta) { return enlazados_.Abre(ruta); });
}

void FicheroAccess::AcabaLectura()
{
    enlazados_.AcabaLectura();
    paginas_->AcabaLectura();
}

FicheroAccess::Sentencia::Sentencia(FicheroAccess& fichero)
    : fichero_(fichero), hayCambios_(fichero.paginas_->EmpiezaLectura())
{
    fichero_.estabaEnUso_ = false;
    fichero_.falloAlConfirmar_.clear();
    hayCambios_ = std::exchange(fichero_.deshecho_, false) || hayCambios_;
    hayCambios_ = fichero_.enlazados_.EmpiezaLectura() || hayCambios_;
    if (!hayCambios_)
        return;
    try {
        fichero_.NotaCambio();
        fichero_.AbreBase();
    } catch (...) {
        fichero_.AcabaLectura();
        throw;
    }
}

FicheroAccess::Sentencia::~Sentencia()
{
    fichero_.AcabaLectura();
}

FicheroAccess::Turno::Turno(FicheroAccess& fichero)
    : fichero_(fichero), suelta_(!fichero.enTransaccion_()), hayCambios_(fichero.Empieza())
{
}

FicheroAccess::Turno::~Turno()
{
    // The engine ends the transaction of a statement that has changed something.
    if (suelta_ && fichero_.paginas_->Abierta())
        fichero_.Deshace();
}

void FicheroAccess::Turno::PoneAlDia(const std::function<void()>& accion)
{
    fichero_.poniendoseAlDia_ = true;
    const auto fin = qScopeGuard([this] { fichero_.poniendoseAlDia_ = false; });
    accion();
}

bool FicheroAccess::Empieza()
{
    if (paginas_->Abierta())
        return false;
    estabaEnUso_ = false;
    bool cambiado = false;
    try {
        cambiado = paginas_->Empieza();
    } catch (const mdb::ErrorMdb& error) {
        estabaEnUso_ = error.motivo() == mdb::Motivo::EnUso;
        throw;
    }
    NotaCambio();
    if (cambiado)
        AbreBase();
    for (const int numero : pedidas_)
        Marca(numero);
    pedidas_.clear();
    return cambiado;
}

void FicheroAccess::Confirma()
{
    if (poniendoseAlDia_)
        return;
    pedidas_.clear();
    marcas_.clear();
    if (paginas_->Abierta())
        paginas_->Confirma();
}

void FicheroAccess::Deshace()
{
    if (poniendoseAlDia_)
        return;
    pedidas_.clear();
    marcas_.clear();
    deshecho_ = true;
    NotaCambio();
    if (!paginas_->Abierta())
        return;
    paginas_->Deshace();
    AbreBase();
}

void FicheroAccess::Marca(int numero)
{
    // Each table of the statement asks for it, some before the first change.
    if (!paginas_->Abierta())
        pedidas_.insert(numero);
    else if (!marcas_.contains(numero))
        marcas_.emplace(numero, paginas_->Marca());
}

void FicheroAccess::VuelveA(int numero)
{
    const auto marca = marcas_.find(numero);
    if (!paginas_->Abierta() || marca == marcas_.end())
        return;
    NotaCambio();
    paginas_->VuelveA(marca->second);
    marcas_.erase(std::next(marca), marcas_.end());
}

void FicheroAccess::Suelta(int numero)
{
    pedidas_.erase(pedidas_.lower_bound(numero), pedidas_.end());
    const auto primera = marcas_.lower_bound(numero);
    if (primera == marcas_.end())
        return;
    if (paginas_->Abierta())
        paginas_->Suelta(primera->second);
    marcas_.erase(primera, marcas_.end());
}

mdb::TablaEscribible FicheroAccess::Escribible(const mdb::Tabla& tabla) const
{
    if (&tabla.paginas() != paginas_.get())
        Rechaza(QStringLiteral("La tabla %1 está enlazada con otro fichero y sólo se puede leer")
                    .arg(tabla.Nombre()));
    return {paginas_, tabla};
}

void FicheroAccess::Define(
    const std::function<void(const std::shared_ptr<mdb::PaginasEscribibles>&)>& cambio)
{
    EnUna([&] { cambio(paginas_); });
}

void FicheroAccess::EnUna(const std::function<void()>& cambios)
{
    const bool propia = !paginas_->Abierta() && !enTransaccion_();
    Empieza();
    const std::size_t marca = paginas_->Marca();
    try {
        cambios();
        paginas_->Suelta(marca);
        if (propia)
            Confirma();
    } catch (...) {
        if (propia)
            Deshace();
        else
            VuelveATodo(marca);
        throw;
    }
    NotaCambio();
    AbreBase();
}

/// Undoes all that came after a mark, the engine's own marks among it.
void FicheroAccess::VuelveATodo(std::size_t marca)
{
    std::erase_if(marcas_, [&](const auto& suya) { return suya.second > marca; });
    NotaCambio();
    paginas_->VuelveA(marca);
    paginas_->Suelta(marca);
    AbreBase();
}

} // namespace tolmo::data::access
