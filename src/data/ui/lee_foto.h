#pragma once
#include <QImage>
#include <functional>

namespace tolmo::data::ui {

/// How large a picture is wanted.
struct Caja {
    QSize tamano{};
    bool ampliar = true; ///< a picture that is smaller than the box is made larger to fill it
};

/// Reads a picture (JPEG, PNG, BMP, GIF or TIFF, whatever its name) so that it fits in a box, with
/// its own proportion and the right way up. `ruta` is a path as the databases hold it. It is meant
/// for another thread: what can't be read, takes too much memory (some 250 MB) or too long (20 s)
/// is given up. \returns a null image for that, and once `sobra` says that nobody waits for it
QImage LeeFoto(const QString& ruta, const Caja& caja, const std::function<bool()>& sobra);

} // namespace tolmo::data::ui
