#pragma once
#include <QString>

namespace tolmo::sync {
struct Corrida;

/// Uploads the pending pictures of families, and has the shop's sizes made in groups of 15. A
/// failed upload is logged and the loop goes on: the shop then has a picture without a file.
void SubeFotosFamilias(Corrida& corrida);

/// The same for articles.
void SubeFotosArticulos(Corrida& corrida);

/// The line of imgart.txt for an uploaded "{id}.jpg": where the picture belongs, in a field of
/// exactly 50 characters that cuts what is longer, and where it was uploaded to.
QString LineaImgArt(const QString& fichero);

} // namespace tolmo::sync
