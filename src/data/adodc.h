#pragma once
#include "data/consultas.h"
#include "data/sentido.h"
#include <QObject>

namespace tolmo::data {

/// The data control of a grid: the text of a query, its record set and the row that is current.
class Adodc : public QObject {
    Q_OBJECT

  public:
    /// `programa` and `conexion` must outlive it.
    Adodc(Programa& programa, Conexion& conexion, QObject* padre = nullptr);

    /// Opens `sql` through AbreConsulta (`cambiable`) or AbreLectura and keeps it as the
    /// RecordSource. `filtro` is one condition more for the rows, which isn't part of it.
    /// The first row becomes current.
    /// \throws FinDePrograma
    void Abre(const QString& sql, bool cambiable, const QString& filtro = {});

    /// The text as it was given, before it was translated.
    const QString& RecordSource() const { return recordSource_; }
    /// The same with the condition of the filter.
    QString Fuente() const;

    Recordset& Filas() { return filas_; }
    const Recordset& Filas() const { return filas_; }
    Programa& programa() const { return programa_; }
    Conexion& conexion() const { return conexion_; }

    /// The current row, from 0; -1 when there is none.
    int Fila() const;
    /// Makes a row current; one that isn't there leaves none.
    void PonFila(int fila);
    /// First and last row; nothing happens without rows.
    void Primera();
    void Ultima();

    /// Looks for a row with Find from `desde` on, which is looked at too. A hit becomes current; a
    /// miss changes nothing. \throws ErrorDatos as Find does
    bool Busca(const QString& criterio, int desde, Sentido sentido = Sentido::Siguiente);

  signals:
    /// The record set is another one.
    void Reabierto();
    /// Another row is current.
    void Movido();

  private:
    Programa& programa_;
    Conexion& conexion_;
    QString recordSource_{};
    QString filtro_{};
    Recordset filas_;
};

/// A row that is to be found again after its record set was opened anew.
class MarcaDeFila {
  public:
    /// `columna` tells the rows apart; empty for the first one of the record set.
    MarcaDeFila(const Adodc& adodc, const QString& columna);

    /// Makes the row of the same value current, the one nearest to the old place when there are
    /// several; without one, the row that stands in the old place now.
    void Vuelve(Adodc& adodc) const;

  private:
    QString columna_;
    Valor valor_{};
    int fila_;
};

} // namespace tolmo::data
