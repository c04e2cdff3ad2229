#include "configurator/combinaciones_articulo.h"
#include "configurator/apoyo_local.h"
#include "configurator/consulta_combinaciones.h"
#include <algorithm>
#include <limits>

namespace tolmo::configurator {
namespace {

using data::Texto;

/// A sum that a Null makes Null, as for the engines.
class Suma {
  public:
    void Anade(const data::Valor& sumando)
    {
        nula_ = nula_ || data::EsNulo(sumando);
        total_ += data::ValorNumerico(sumando);
    }
    QString EnTexto() const { return nula_ ? QStringLiteral("0") : Texto(total_); }

  private:
    double total_ = 0;
    bool nula_ = false;
};

} // namespace

CombinacionesDeArticulo::CombinacionesDeArticulo(data::Programa& programa,
                                                 const QString& CodArticulo, int tarifa)
{
    auto filas = LeeLocal(programa, SqlCategoriasDeArticulo(CodArticulo));
    for (; !filas.Fin(); filas.Siguiente())
        categorias_ << Texto(filas["CODCATEGORIA"]);
    for (const QString& categoria : categorias_) {
        // The product of one category is its values, in the order that a run takes them in.
        auto valores = LeeLocal(programa, SqlCombinaciones(CodArticulo, {categoria}, tarifa));
        auto& opciones = opciones_.emplace_back();
        for (; !valores.Fin(); valores.Siguiente())
            opciones.push_back({.VALOR = Texto(valores["VALOR"]),
                                .incremento = valores["INC_PVP_COMBINA"],
                                .peso = valores["PESO_COMBINA"]});
    }
}

long long CombinacionesDeArticulo::Cuantas() const
{
    constexpr long long Maximo = std::numeric_limits<long long>::max();
    if (opciones_.empty())
        return 0;
    long long producto = 1;
    for (const auto& opciones : opciones_) {
        const auto cuantas = static_cast<long long>(opciones.size());
        if (cuantas == 0)
            return 0;
        producto = producto > Maximo / cuantas ? Maximo : producto * cuantas;
    }
    return producto;
}

std::vector<Combinacion> CombinacionesDeArticulo::Pagina(long long desde, int cuantas) const
{
    std::vector<Combinacion> pagina;
    const long long total = Cuantas();
    for (long long ordinal = std::max(desde, 1LL);
         ordinal <= total && static_cast<long long>(pagina.size()) < cuantas; ++ordinal)
        pagina.push_back(EnOrdinal(ordinal));
    return pagina;
}

/// The last category changes with every combination, the first one most seldom.
Combinacion CombinacionesDeArticulo::EnOrdinal(long long ordinal) const
{
    std::vector<const Opcion*> elegidas(opciones_.size());
    long long resto = ordinal - 1;
    for (std::size_t k = opciones_.size(); k-- > 0;) {
        const auto cuantas = static_cast<long long>(opciones_[k].size());
        elegidas[k] = &opciones_[k][static_cast<std::size_t>(resto % cuantas)];
        resto /= cuantas;
    }
    Combinacion combinacion{.ordinal = ordinal};
    Suma incremento;
    Suma peso;
    for (const Opcion* elegida : elegidas) {
        combinacion.valores << elegida->VALOR;
        incremento.Anade(elegida->incremento);
        peso.Anade(elegida->peso);
    }
    combinacion.INC_PVP = incremento.EnTexto();
    combinacion.PESO = peso.EnTexto();
    return combinacion;
}

} // namespace tolmo::configurator
