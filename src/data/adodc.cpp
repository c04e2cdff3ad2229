#include "data/adodc.h"
#include "data/find.h"
#include "data/partes_consulta.h"
#include <algorithm>
#include <cstdlib>

namespace tolmo::data {

Adodc::Adodc(Programa& programa, Conexion& conexion, QObject* padre)
    : QObject(padre), programa_(programa), conexion_(conexion), filas_(data::Filas{})
{
}

void Adodc::Abre(const QString& sql, bool cambiable, const QString& filtro)
{
    QString texto = ConCondicion(sql, filtro);
    filas_ = cambiable ? AbreConsulta(programa_, texto, conexion_)
                       : AbreLectura(programa_, texto, conexion_);
    recordSource_ = sql;
    filtro_ = filtro;
    emit Reabierto();
}

QString Adodc::Fuente() const
{
    return ConCondicion(recordSource_, filtro_);
}

int Adodc::Fila() const
{
    return std::max(filas_.AbsolutePosition() - 1, -1);
}

void Adodc::PonFila(int fila)
{
    const bool existe = fila >= 0 && fila < filas_.RecordCount();
    filas_.PonPosicion(existe ? fila + 1 : filas_.RecordCount() + 1);
    emit Movido();
}

void Adodc::Primera()
{
    if (!filas_.Vacio())
        PonFila(0);
}

void Adodc::Ultima()
{
    if (!filas_.Vacio())
        PonFila(filas_.RecordCount() - 1);
}

bool Adodc::Busca(const QString& criterio, int desde, Sentido sentido)
{
    const int anterior =
        filas_.Fin() ? filas_.RecordCount() + 1 : std::max(filas_.AbsolutePosition(), 0);
    filas_.PonPosicion(desde + 1);
    bool hallada = false;
    try {
        hallada = Find(filas_, criterio, 0, sentido);
    } catch (const ErrorDatos&) {
        filas_.PonPosicion(anterior);
        throw;
    }
    if (hallada)
        emit Movido();
    else
        filas_.PonPosicion(anterior);
    return hallada;
}

MarcaDeFila::MarcaDeFila(const Adodc& adodc, const QString& columna)
    : columna_(columna), fila_(adodc.Fila())
{
    const Recordset& filas = adodc.Filas();
    if (fila_ >= 0 && filas.TieneColumna(columna_))
        valor_ = filas[columna_];
}

void MarcaDeFila::Vuelve(Adodc& adodc) const
{
    const Recordset& filas = adodc.Filas();
    if (fila_ < 0 || filas.Vacio())
        return;
    int mejor = std::min(fila_, filas.RecordCount() - 1);
    if (!valor_.isNull() && filas.TieneColumna(columna_)) {
        const int columna = filas.Indice(columna_);
        int distancia = filas.RecordCount();
        for (int i = 0; i < filas.RecordCount(); ++i) {
            if (std::abs(i - fila_) < distancia && filas.En(i, columna) == valor_) {
                mejor = i;
                distancia = std::abs(i - fila_);
            }
        }
    }
    adodc.PonFila(mejor);
}

} // namespace tolmo::data
