#include "data/access/fichero_access.h"
#include "data/access/errores_access.h"

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

void FicheroAccess::Empieza()
{
    if (paginas_->Abierta())
        return;
    estabaEnUso_ = false;
    try {
        paginas_->Empieza();
    } catch (const mdb::ErrorMdb& error) {
        estabaEnUso_ = error.motivo() == mdb::Motivo::EnUso;
        throw;
    }
    NotaCambio();
    for (const int numero : pedidas_)
        Marca(numero);
    pedidas_.clear();
}

void FicheroAccess::Confirma()
{
    pedidas_.clear();
    marcas_.clear();
    if (paginas_->Abierta())
        paginas_->Confirma();
}

void FicheroAccess::Deshace()
{
    pedidas_.clear();
    marcas_.clear();
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
    const bool propia = !paginas_->Abierta() && !enTransaccion_();
    Empieza();
    const std::size_t marca = paginas_->Marca();
    try {
        cambio(paginas_);
        paginas_->Suelta(marca);
        if (propia)
            Confirma();
    } catch (...) {
        if (propia)
            Deshace();
        else
            paginas_->VuelveA(marca);
        throw;
    }
    NotaCambio();
    AbreBase();
}

} // namespace tolmo::data::access
