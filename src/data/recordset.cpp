#include "data/recordset.h"
#include "data/errores.h"
#include <algorithm>

namespace tolmo::data {
namespace {

[[noreturn]] void FaltaColumna(const QString& columna)
{
    throw ErrorDatos(numero_error::ElementoNoHallado,
                     QStringLiteral("No se encontró la columna %1 en el resultado.").arg(columna),
                     QStringLiteral("Recordset"));
}

[[noreturn]] void FaltaFila()
{
    throw ErrorDatos(
        numero_error::FinDeFilas,
        QStringLiteral(
            "El valor de BOF o EOF es True, o el actual registro se eliminó; la operación solicitada requiere un registro actual."),
        QStringLiteral("Recordset"));
}

} // namespace

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
    if (Fin())
        return TrasElUltimo;
    return Principio() ? AntesDelPrimero : posicion_ + 1;
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
    posicion_ = std::clamp(posicion - 1, -1, filasTotales_);
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
    return En(posicion_, indice);
}

const Valor& Recordset::En(int fila, int indice) const
{
    if (fila < 0 || fila >= filasTotales_)
        FaltaFila();
    if (indice < 0 || indice >= static_cast<int>(filas_.campos.size()))
        FaltaColumna(QString::number(indice));
    return filas_.valores[static_cast<std::size_t>(fila) * filas_.campos.size() +
                          static_cast<std::size_t>(indice)];
}

bool Recordset::TieneColumna(const QString& columna) const
{
    return indices_.contains(columna.toLower());
}

void Recordset::Actualiza(const Cambios& cambios)
{
    ExigeCambiable();
    ExigeFila();
    const auto indices = Indices(cambios);
    proveedor_->Actualiza(filas_, static_cast<std::size_t>(posicion_), cambios);
    Anota(indices, cambios);
}

void Recordset::Inserta(const Cambios& cambios)
{
    ExigeCambiable();
    const auto indices = Indices(cambios);
    filas_.claves.push_back(proveedor_->Inserta(filas_, cambios));
    filas_.valores.resize(filas_.valores.size() + filas_.campos.size(), Nulo());
    posicion_ = filasTotales_++;
    Anota(indices, cambios);
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
        FaltaFila();
}

void Recordset::ExigeCambiable() const
{
    if (!Cambiable())
        throw ErrorDatos(
            numero_error::SinPermiso,
            QStringLiteral("El conjunto de registros actual no admite actualizaciones."),
            QStringLiteral("Recordset"));
}

int Recordset::Indice(const QString& columna) const
{
    const auto hallado = indices_.constFind(columna.toLower());
    if (hallado == indices_.constEnd())
        FaltaColumna(columna);
    return *hallado;
}

std::vector<std::size_t> Recordset::Indices(const Cambios& cambios) const
{
    std::vector<std::size_t> indices;
    for (const auto& cambio : cambios)
        indices.push_back(static_cast<std::size_t>(Indice(cambio.first)));
    return indices;
}

/// Puts what was written into the current row.
void Recordset::Anota(const std::vector<std::size_t>& indices, const Cambios& cambios)
{
    for (std::size_t i = 0; i < indices.size(); ++i)
        filas_.valores[Desplazamiento() + indices[i]] = cambios[i].second;
}

std::size_t Recordset::Desplazamiento() const
{
    return static_cast<std::size_t>(posicion_) * filas_.campos.size();
}

} // namespace tolmo::data
