#pragma once
#include "apoyo/dobles.h"
#include "data/grid_de_prueba.h"
#include "data/ui/DataGrid.h"
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

template <class Control> Control& Hijo(const QObject& ventana, const char* nombre)
{
    auto* control = ventana.findChild<Control*>(nombre);
    if (!control)
        throw std::logic_error(nombre);
    return *control;
}

inline void Muestra(QWidget& ventana)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
}

/// What waits in the queue is done.
inline void Reposa()
{
    QCoreApplication::processEvents();
}

inline QPoint SitioDeCelda(const QTableView& grid, int fila, int columna)
{
    return grid.visualRect(grid.model()->index(fila, columna)).center();
}

inline void PulsaCelda(QTableView& grid, int fila, int columna,
                       Qt::KeyboardModifiers teclas = Qt::NoModifier)
{
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, teclas, SitioDeCelda(grid, fila, columna));
    Reposa();
}

inline void PulsaCabecera(QTableView& grid, int columna)
{
    QHeaderView* cabecera = grid.horizontalHeader();
    QTest::mouseClick(cabecera->viewport(), Qt::LeftButton, {},
                      {cabecera->sectionViewportPosition(columna) + 10, 8});
    Reposa();
}

inline QString Celda(const QTableView& grid, int fila, int columna)
{
    return grid.model()->index(fila, columna).data().toString();
}

/// The heads of the columns that are shown.
inline QStringList Cabeceras(const QTableView& grid)
{
    QStringList rotulos;
    for (int i = 0; i < grid.model()->columnCount(); ++i)
        if (!grid.isColumnHidden(i))
            rotulos << grid.model()->headerData(i, Qt::Horizontal).toString();
    return rotulos;
}

/// The editor of a cell, open on the screen; nullptr when there is none.
inline QLineEdit* Editor(const QTableView& grid)
{
    for (auto* caja : grid.viewport()->findChildren<QLineEdit*>())
        if (caja->isVisible())
            return caja;
    return nullptr;
}

/// Types a text over that of a cell, and leaves its editor open.
inline void TecleaEnCelda(QTableView& grid, int fila, int columna, const QString& texto)
{
    PulsaCelda(grid, fila, columna);
    QTest::keyClick(&grid, Qt::Key_F2);
    ASSERT_NE(Editor(grid), nullptr);
    Editor(grid)->selectAll();
    QTest::keyClick(Editor(grid), Qt::Key_Delete);
    // keyClicks knows no accents.
    for (const QChar letra : texto)
        QTest::sendKeyEvent(QTest::Click, Editor(grid), Qt::Key_unknown, letra, Qt::NoModifier);
}
