#pragma once
#include "data/sentido.h"
#include <QWidget>

class ListaEstado;
class QLabel;
class QLineEdit;
class QToolButton;

/// The status list of a run (LstEstado) and above it what finds a line in it. It may be used while
/// the run goes on: the search box with Enter, F3 and Shift+F3, Escape to end the reading.
class PanelEstado : public QWidget {
    Q_OBJECT

  public:
    explicit PanelEstado(QWidget* padre = nullptr);

    ListaEstado& Lista() { return *lista_; }

  protected:
    void keyPressEvent(QKeyEvent* evento) override;

  private:
    void Coloca();
    void Conecta();
    void PonAtajos();
    void Busca(tolmo::data::Sentido sentido);
    void MuestraHallazgo(bool hallado);

    QLineEdit* busca_;
    QToolButton* anterior_;
    QToolButton* siguiente_;
    QToolButton* final_;
    QLabel* hallazgo_;
    ListaEstado* lista_;
};
