#pragma once
#include "apoyo/tienda.h"

/// The pictures of a shop that has run for years: 50,000 files, 40,000 of them in the old layout
/// ("img/p/12-home_default.jpg") and the rest in the new one ("img/p/1/2/12.jpg"), of images from
/// 1 to 850,100. The table of images knows one in ten. As files they are cheap: links to one.
/// \returns the files of the images that the table knows, sorted
QStringList LlenaGaleria(const TiendaDePrueba& tienda);

/// From here on each row that is read of the table of images takes that long.
void RalentizaImagenes(const TiendaDePrueba& tienda, int milisegundos);

/// The files below a folder of the shop, sorted, but for the index.php that each folder has.
QStringList Fotos(const TiendaDePrueba& tienda, const QString& carpeta = "img");
