#pragma once
#include "data/condicion.h"
#include "data/ui/celdas_condicion.h"
#include <QDialog>
#include <QPointer>
#include <memory>

namespace Ui {
class FrmCadenaBooleanaAvanzada;
}

/// Lets the operator put a condition together, row by row. The condition is written into a control
/// of the caller; a window that is left without a result leaves that control as it was. Each
/// opening starts with one empty row.
class FrmCadenaBooleanaAvanzada : public QDialog {
    Q_OBJECT

  public:
    /// `destino` is the control that takes the condition.
    FrmCadenaBooleanaAvanzada(tolmo::data::Programa& programa, QWidget* destino,
                              QWidget* padre = nullptr);
    ~FrmCadenaBooleanaAvanzada() override;

    /// The fields that the condition can be made of; to be told before the window is shown.
    void ArrayFiltro(std::span<const tolmo::data::ColumnaGrid> columnas,
                     std::span<const tolmo::data::Campo> campos);
    void ArrayDirectoFiltro(std::vector<tolmo::data::EntradaFiltro> entradas);

  protected:
    void showEvent(QShowEvent* evento) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    using Salida = tolmo::data::ui::CeldasCondicion::Salida;

    void InicializaGrid();
    void PreparaRejilla();
    void ConectaBotones();
    void MuestraFilas();
    void PonComboEnCelda(int fila, int columna);
    void DejaCelda(Salida salida);
    void Avanza(int sentido);
    void SaleDeLaRejilla(int sentido);
    bool TeclaEnRejilla(QKeyEvent& tecla);
    void EliminaFila();
    bool ConstruirCondicion();
    void Entrega(const QString& condicion);

    tolmo::data::Programa& programa_;
    QPointer<QWidget> destino_;
    tolmo::data::ConstructorCondicion motor_;
    std::unique_ptr<Ui::FrmCadenaBooleanaAvanzada> ui_;
    // It watches the boxes and must be gone before they are.
    std::unique_ptr<tolmo::data::ui::CeldasCondicion> celdas_;
};
