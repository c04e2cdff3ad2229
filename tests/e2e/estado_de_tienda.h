#pragma once
#include "apoyo/tienda.h"

/// All that stands in a shop, a line for each row and each file, so that two of them can be
/// compared. What no run keeps is levelled: the ids of pictures and of prices are counted from 1
/// in their order, also in the names of files, and the days on which a row was made and changed
/// are left out.
QStringList EstadoDeTienda(const TiendaDePrueba& tienda);
