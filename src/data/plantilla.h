#pragma once
#include <QString>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace tolmo::data {

/// A sentence with named places: `DELETE FROM ps_image where id_image={id_image}||`. It is filled
/// in one pass, so that a value that holds "{id}" stays data. A place without a value and a value
/// without a place are mistakes of the code and throw std::logic_error.
class Plantilla {
  public:
    constexpr explicit Plantilla(std::u16string_view texto) : texto_(texto) {}

    QString operator()(std::initializer_list<std::pair<const char*, QString>> valores = {}) const;

  private:
    std::u16string_view texto_;
};

} // namespace tolmo::data
