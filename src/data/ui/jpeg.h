#pragma once
#include <QIODevice>
#include <optional>

namespace tolmo::data::ui {

/// What a JPEG file says of itself before it is decoded.
struct Jpeg {
    /// What decoding it takes whatever the size it is shown at: a picture that comes in several
    /// passes over its whole area is held entire.
    qint64 memoria = 0;
    int barridos = 0;    ///< its passes
    bool entero = false; ///< it reaches its own end
};

/// Walks through the file from where it stands, to the end of its picture.
/// \returns nothing when it is no JPEG
std::optional<Jpeg> ExaminaJpeg(QIODevice& fichero);

} // namespace tolmo::data::ui
