#pragma once
#include <QString>
#include <vector>

namespace tolmo::data {

/// A drive ("C:") or a share ("//srv/f") and the local folder that stands for it.
struct Unidad {
    QString raiz{};
    QString carpeta{};
};

/// What the environment variable KOV_UNIDADES maps, with "/" and without one at the end.
std::vector<Unidad> UnidadesMapeadas();

} // namespace tolmo::data
