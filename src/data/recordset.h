#pragma once
#include "data/proveedor.h"
#include <QHash>
#include <memory>

namespace tolmo::data {

/// A result with a position. It is fetched whole when it is opened, so moving and reading never go
/// back to the engine. A row set that AbreConsulta opened can be changed on the row it stands on.
class Recordset {
  public:
    /// What AbsolutePosition tells when there is no current row.
    static constexpr int AntesDelPrimero = -2;
    static constexpr int TrasElUltimo = -3;

    explicit Recordset(Filas filas, std::shared_ptr<Proveedor> proveedor = nullptr);

    /// An empty row set is at its end and at its beginning.
    bool Fin() const { return posicion_ >= RecordCount(); }
    bool Principio() const { return posicion_ < 0 || Vacio(); }
    bool Vacio() const { return RecordCount() == 0; }
    int RecordCount() const { return filasTotales_; }

    /// 1 to RecordCount, -2 before the first, -3 at the end.
    int AbsolutePosition() const;

    void Primero() { posicion_ = 0; }
    void Ultimo() { posicion_ = filasTotales_ > 0 ? filasTotales_ - 1 : 0; }
    void Siguiente();
    void Anterior();
    /// Stands on row `posicion`, from 1; 0 and less is before the first, too much is the end.
    void PonPosicion(int posicion);

    /// The value of a column in the current row; the name goes in any case.
    /// \throws ErrorDatos 3265 for a column that isn't there, 3021 without a current row
    const Valor& operator[](const QString& columna) const;
    const Valor& operator[](const char* columna) const;
    /// The value at column `indice`, from 0.
    /// \throws ErrorDatos as above
    const Valor& operator[](int indice) const;
    /// The value at row `fila` and column `indice`, both from 0, wherever the current row is.
    /// \throws ErrorDatos as above
    const Valor& En(int fila, int indice) const;

    /// The place of a column, from 0; the name goes in any case.
    /// \throws ErrorDatos 3265 for a column that isn't there
    int Indice(const QString& columna) const;
    bool TieneColumna(const QString& columna) const;
    const std::vector<Campo>& Campos() const { return filas_.campos; }
    /// True for rows that can be changed.
    bool Cambiable() const { return proveedor_ && !filas_.tabla.isEmpty(); }

    /// Writes columns of the current row, in the database and here.
    /// \throws ErrorDatos 3251 for a row set that can't be changed, 3265 for a column that isn't
    /// there, before anything is written; ErrorSql when the engine refuses. So do the two below.
    void Actualiza(const Cambios& cambios);
    /// Adds a row at the foot and stands on it.
    void Inserta(const Cambios& cambios);
    /// Deletes the current row; the next one becomes current.
    void Borra();

  private:
    void ExigeFila() const;
    void ExigeCambiable() const;
    std::vector<std::size_t> Indices(const Cambios& cambios) const;
    void Anota(const std::vector<std::size_t>& indices, const Cambios& cambios);
    std::size_t Desplazamiento() const;

    Filas filas_;
    std::shared_ptr<Proveedor> proveedor_;
    QHash<QString, int> indices_;
    int filasTotales_ = 0;
    int posicion_ = 0;
};

} // namespace tolmo::data
