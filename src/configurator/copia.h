#pragma once
#include <QString>

namespace tolmo::data {
struct Programa;
class Progreso;
} // namespace tolmo::data

namespace tolmo::configurator {

/// The fields that choose the articles of a copy, each by the name of its control. An empty one
/// asks for nothing.
struct SeleccionCopia {
    QString TxtArtDes{};
    QString TxtArtHas{};
    QString TxtCodAlternativoDesde{};
    QString TxtCodAlternativoHasta{};
    QString TxtGrupo{};
    QString TxtGrupo2{};
    QString TxtGrupo3{};
    QString TxtGrupo4{};
    QString TxtProvHab{};
};

/// The clauses of the fields that are filled in, in their order; empty without any.
QString ClausulasDe(const SeleccionCopia& seleccion);

/// Asks, and gives every article of the selection but the source itself the source's attributes and
/// values in the place of its own. A source without any, or an empty one, leaves them all without.
/// There is no transaction: what was copied before a failure stays.
/// \returns false when nothing was done: nothing is selected, which is told, or it isn't wanted
/// \throws data::FinDePrograma
bool CopiaConfiguracion(data::Programa& programa, data::Progreso& progreso,
                        const QString& CodArticulo, const SeleccionCopia& seleccion);

} // namespace tolmo::configurator
