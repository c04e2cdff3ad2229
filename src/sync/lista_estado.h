#pragma once
#include "data/modelo_lineas.h"
#include <QListView>
#include <QTimer>

/// The status list of a run. It shows its last line as lines come in, unmarked, unless somebody is
/// reading: with a line selected, or scrolled up, it stays where it is.
/// Ctrl+C copies the selected lines, Ctrl+A selects all of them.
class ListaEstado : public QListView {
    Q_OBJECT

  public:
    explicit ListaEstado(QWidget* padre = nullptr);

    /// Adds a line; those of one turn of the events are shown together, at its end.
    void Anade(const QString& linea);
    void Vacia();
    /// Shows what was added without waiting for the events.
    void MuestraYa();

    /// Selects the next line (or the one before) that holds `texto`, from the selected one on.
    /// \returns false when no line holds it
    bool Busca(const QString& texto, tolmo::data::Sentido sentido);
    /// The same, but the selected line may stay.
    bool BuscaDesdeAqui(const QString& texto);

    bool SigueElFinal() const { return sigue_; }
    /// Ends the reading: nothing is selected, and the last line shows.
    void VuelveAlFinal();
    void CopiaSeleccion() const;

  signals:
    void SeguimientoCambiado(bool sigue);

  private:
    void CreaMenu();
    void Recoge();
    void MideLineas(const QStringList& lineas);
    void RevisaSeguimiento();
    void PonAlFinal();
    /// The first of the selected rows; -1 when none is.
    int FilaElegida() const;
    bool Elige(int fila);

    tolmo::data::ModeloLineas modelo_{};
    QStringList llegadas_{}; ///< added and not shown yet
    QTimer turno_{};
    bool sigue_ = true;
};
