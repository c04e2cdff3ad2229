#include "data/recordset.h"
#include "data/errores.h"

namespace tolmo::data {

Recordset::Recordset(Filas filas, std::shared_ptr<Proveedor> proveedor)
    : filas_(std::move(filas)), proveedor_(std::move(proveedor))
{
    const auto columnas = filas_.campos.size();
    filasTotales_ = columnas == 0 ? 0 : static_cast<int>(filas_.valores.size() / columnas);
    indices_.reserve(static_cast<int>(columnas));
    for (std::size_t i = 0; i < columnas; ++i) {
        const QString clave = filas_.campos[i].nombre.toLower();
        if (!indices_.contains(clave))
            indices_.insert(clave, static_cast<int>(i));
    }
}

int Recordset::AbsolutePosition() const
{
    if (Principio())
        return AntesDelPrimero;
    return Fin() ? TrasElUltimo : posicion_ + 1;
}

void Recordset::Siguiente()
{
    if (!Fin())
        ++posicion_;
}

void Recordset::Anterior()
{
    if (!Principio())
        --posicion_;
}

void Recordset::PonPosicion(int posicion)
{
    posicion_ = posicion - 1;
}

const Valor& Recordset::operator[](const QString& columna) const
{
    return (*this)[Indice(columna)];
}

const Valor& Recordset::operator[](const char* columna) const
{
    return (*this)[QString::fromUtf8(columna)];
}

const Valor& Recordset::operator[](int indice) const
{
    ExigeFila();
    return filas_.valores[Desplazamiento() + static_cast<std::size_t>(indice)];
}

bool Recordset::TieneColumna(const QString& columna) const
{
    return indices_.contains(columna.toLower());
}

void Recordset::Actualiza(const Cambios& cambios)
{
    ExigeCambiable();
    ExigeFila();
    proveedor_->Actualiza(filas_, static_cast<std::size_t>(posicion_), cambios);
    for (const auto& [columna, valor] : cambios)
        filas_.valores[Desplazamiento() + static_cast<std::size_t>(Indice(columna))] = valor;
}

void Recordset::Inserta(const Cambios& cambios)
{
    ExigeCambiable();
    filas_.claves.push_back(proveedor_->Inserta(filas_, cambios));
    filas_.valores.resize(filas_.valores.size() + filas_.campos.size(), Nulo());
    posicion_ = filasTotales_++;
    for (const auto& [columna, valor] : cambios)
        filas_.valores[Desplazamiento() + static_cast<std::size_t>(Indice(columna))] = valor;
}

void Recordset::Borra()
{
    ExigeCambiable();
    ExigeFila();
    proveedor_->Borra(filas_, static_cast<std::size_t>(posicion_));
    const auto desde = filas_.valores.begin() + static_cast<std::ptrdiff_t>(Desplazamiento());
    filas_.valores.erase(desde, desde + static_cast<std::ptrdiff_t>(filas_.campos.size()));
    filas_.claves.erase(filas_.claves.begin() + posicion_);
    --filasTotales_;
}

void Recordset::ExigeFila() const
{
    if (Principio() || Fin())
        throw ErrorDatos(
            numero_error::FinDeFilas,
            QStringLiteral(
                "El valor de BOF o EOF es True, o el actual registro se eliminó; la operación solicitada requiere un registro actual."),
            QStringLiteral("Recordset"));
}

void Recordset::ExigeCambiable() const
{
    if (!proveedor_ || filas_.tabla.isEmpty())
        throw ErrorDatos(
            numero_error::SinPermiso,
            QStringLiteral("El conjunto de registros actual no admite actualizaciones."),
            QStringLiteral("Recordset"));
}

int Recordset::Indice(const QString& columna) const
{
    const auto hallado = indices_.constFind(columna.toLower());
    if (hallado == indices_.constEnd())
        throw ErrorDatos(
            numero_error::ElementoNoHallado,
            QStringLiteral("No se encontró la columna %1 en el resultado.").arg(columna),
            QStringLiteral("Recordset"));
    return *hallado;
}

std::size_t Recordset::Desplazamiento() const
{
    return static_cast<std::size_t>(posicion_) * filas_.campos.size();
}

} // namespace tolmo::data
