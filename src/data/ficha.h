#pragma once
#include "data/consultas.h"
#include "data/sentido.h"
#include <optional>
#include <span>
#include <vector>

namespace tolmo::data {

/// A control of a record card, as the card's statements see it.
struct CampoFicha {
    enum class Clase { Texto, Lista, Casilla };

    QString Tag{}; ///< the column that it stands for; a control without one takes no part
    Clase clase = Clase::Texto;
    QString texto{};      ///< of a text box or a combo box
    int posicion = -1;    ///< in the list of a combo box, from 0; -1 when nothing is chosen
    bool marcada = false; ///< of a check box
};

/// What a control holds as a SQL literal for a column of that ADO type. Quotes in a text are not
/// doubled: the statement that they break is refused by the engine.
QString ValorSqlControl(const CampoFicha& control, int tipo);

/// Adds a row with what the controls hold. `clave`, when it is given and not empty, goes into the
/// column Clave.
/// \throws FinDePrograma
void InsertaFicha(Programa& programa, Conexion& conexion, std::span<const CampoFicha> controles,
                  const QString& tabla, const QString& clave = {});

/// Writes what the controls hold into the rows of a condition. A column that the condition compares
/// by "=" is the key and stays as it is.
/// \throws FinDePrograma
void ActualizaFicha(Programa& programa, Conexion& conexion, std::span<const CampoFicha> controles,
                    const QString& tabla, const QString& condicion);

/// Where the buttons of a card look for the record beside the one on screen.
struct Vecindad {
    QString campo{};
    QString tabla{};
    QString condicion{};   ///< empty for all records
    bool numerico = false; ///< the key is a number
};

/// The key before or behind `valor`; nothing when there is none.
/// \throws FinDePrograma
std::optional<Valor> FichaVecina(Programa& programa, Conexion& conexion, Sentido sentido,
                                 const Vecindad& donde, const QString& valor);

/// The number in `codigo` plus 1, with zeros in front up to the same width.
QString SiguienteCodigo(const QString& codigo);

} // namespace tolmo::data
