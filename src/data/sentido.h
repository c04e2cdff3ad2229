#pragma once

namespace tolmo::data {

/// Which way a record card or a search goes.
enum class Sentido { Anterior, Siguiente };

} // namespace tolmo::data
