#pragma once
#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>
#include <utility>

/// Does something in the modal window that the next call opens, as soon as it stands.
template <class Accion> void EnElDialogo(Accion accion)
{
    QTimer::singleShot(0, qApp, [accion = std::move(accion)] {
        QWidget* dialogo = QApplication::activeModalWidget();
        ASSERT_NE(dialogo, nullptr) << "no modal window";
        accion(*dialogo);
    });
}

/// A caption as it is read: without the mark of its mnemonic.
inline QString Rotulo(const QObject* control)
{
    QString visible = control->property("text").toString();
    return visible.remove('&');
}
