#pragma once
#include "data/puertos.h"
#include <functional>

namespace tolmo::data::ui {

/// What a box answers when its default button is pressed.
Respuesta RespuestaPorDefecto(int estilo);

/// A text as a box shows it: a carriage return, alone or before a line feed, is a line break.
QString ConSaltosDeLinea(const QString& texto);

/// Message boxes on the screen, over the window that is active. The text is shown as it stands,
/// never read as mark-up; one that wouldn't fit on the screen gets a box that scrolls.
class AvisosVentana : public Avisos {
  public:
    Respuesta Muestra(const QString& texto, int estilo, const QString& titulo) override;
};

/// Boxes of a run that nobody sees: each is written out as a line, with the passwords in a
/// statement made unreadable, and answers with its default button.
class AvisosConsola : public Avisos {
  public:
    using Salida = std::function<void(const QString&)>;

    /// Without `salida` the boxes go to standard error.
    explicit AvisosConsola(Salida salida = {});

    Respuesta Muestra(const QString& texto, int estilo, const QString& titulo) override;

  private:
    Salida salida_;
};

} // namespace tolmo::data::ui
