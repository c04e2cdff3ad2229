#pragma once
#include <QString>

namespace tolmo::data::ui {

/// A statement or a connection text with the value of every password in it replaced by `***`:
/// behind a name and "=" (`Pass_Bd='x'`, `Password=x;`), and in an INSERT at the place of a column
/// of such a name. A name is one that holds "pass", "pwd" or "clave", in any case.
QString SinClaves(const QString& texto);

} // namespace tolmo::data::ui
