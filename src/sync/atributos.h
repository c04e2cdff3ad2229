#pragma once
#include <QHash>
#include <QString>
#include <optional>
#include <utility>

namespace tolmo::sync {
struct Corrida;

/// Rebuilds the shop's attribute groups and attributes from the option tables. Their ids are ranks
/// of the option codes, so a code that comes in the middle renumbers those behind it.
void CargaAtributos(Corrida& corrida);

/// The shop's id of an attribute: the rank of its category and its own rank in the category, each
/// filled with "0" to 3 digits. Above 999 the id grows, and may be another's.
QString IdAtributo(const QString& NCAT, const QString& NOPC);

/// Finds the attribute ids of options by their codes. What it has found it keeps, so it is good
/// for one article: many combinations share few options.
class BuscadorDeAtributos {
  public:
    explicit BuscadorDeAtributos(Corrida& corrida) : corrida_(corrida) {}

    /// The id by the ranks of the two codes; an option that its master lacks takes the rank of the
    /// next lower code. Nothing when the query gives no row.
    std::optional<QString> operator()(const QString& categoria, const QString& valor);

  private:
    std::optional<QString> Pregunta(const QString& categoria, const QString& valor) const;

    Corrida& corrida_;
    QHash<std::pair<QString, QString>, std::optional<QString>> hallados_{};
};

} // namespace tolmo::sync
