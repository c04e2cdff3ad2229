#include "data/access/expresion_guardada.h"
#include "data/access/analizador.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

using Palabras = std::vector<Lexema>;

template <std::size_t N> bool EsUna(const Lexema& lexema, const char* const (&palabras)[N])
{
    return std::any_of(std::begin(palabras), std::end(palabras),
                       [&](const char* palabra) { return lexema.Es(palabra); });
}

constexpr const char* Si[] = {"YES", "ON"};
constexpr const char* No[] = {"NO", "OFF"};
constexpr const char* Relojes[] = {"DATE", "NOW", "TIME"};
constexpr const char* Predicados[] = {"LIKE", "IN", "BETWEEN"};
constexpr const char* Enlaces[] = {"AND", "OR", "XOR", "EQV", "IMP"};

Lexema Signo(const char* texto)
{
    return {Ficha::Signo, QString::fromLatin1(texto)};
}

/// The words that Access has for truth become those of the language.
Palabras Leidos(const QString& texto)
{
    Palabras lexemas = Lexemas(texto);
    for (std::size_t i = 0; i + 1 < lexemas.size(); ++i) {
        const Lexema& siguiente = lexemas[i + 1];
        const bool deTabla =
            siguiente.EsSigno(".") || siguiente.EsSigno("!") ||
            (i > 0 && (lexemas[i - 1].EsSigno(".") || lexemas[i - 1].EsSigno("!")));
        if (siguiente.EsSigno("(") || deTabla)
            continue;
        if (EsUna(lexemas[i], Si))
            lexemas[i].texto = QStringLiteral("TRUE");
        else if (EsUna(lexemas[i], No))
            lexemas[i].texto = QStringLiteral("FALSE");
    }
    return lexemas;
}

/// Puts the field of a rule where it is left unnamed.
class ConCampo {
  public:
    ConCampo(const Palabras& lexemas, const QString& campo) : lexemas_(lexemas), campo_(campo) {}

    Palabras Todo()
    {
        while (i_ < lexemas_.size())
            Uno();
        return std::move(completos_);
    }

  private:
    const Lexema& Mira(std::size_t adelante = 0) const
    {
        return lexemas_[std::min(i_ + adelante, lexemas_.size() - 1)];
    }
    void Toma() { completos_.push_back(lexemas_[i_++]); }
    void PonCampo() { completos_.push_back({Ficha::NombreEntreMarcas, campo_}); }

    void Uno()
    {
        const bool negado = Mira().Es("NOT");
        if (operando_ && EsUna(Mira(negado ? 1 : 0), Predicados)) {
            PonCampo();
            if (negado)
                Toma();
        } else if (operando_ && (EsComparacion() || Mira().Es("IS"))) {
            PonCampo();
        } else if (operando_ && EsValorSolo()) {
            PonCampo();
            completos_.push_back(Signo("="));
        }
        Sigue();
    }

    /// Takes a word, and notes whether the next one begins a condition.
    void Sigue()
    {
        const Lexema& lexema = Mira();
        const bool deEntre = lexema.Es("AND") && entres_ > 0;
        entres_ += lexema.Es("BETWEEN") ? 1 : deEntre ? -1 : 0;
        operando_ = (EsUna(lexema, Enlaces) && !deEntre) || (lexema.Es("NOT") && operando_) ||
                    (lexema.EsSigno("(") && operando_);
        Toma();
    }

    bool EsComparacion() const
    {
        constexpr const char* Signos[] = {"=", "<>", "<", ">", "<=", ">="};
        return std::any_of(std::begin(Signos), std::end(Signos),
                           [&](const char* signo) { return Mira().EsSigno(signo); });
    }

    bool EsValorSolo() const
    {
        const std::size_t signo = Mira().EsSigno("-") ? 1 : 0;
        const Lexema& detras = Mira(signo + 1);
        return Mira(signo).EsLiteral() &&
               (detras.ficha == Ficha::Fin || detras.EsSigno(")") || EsUna(detras, Enlaces));
    }

    const Palabras& lexemas_;
    const QString& campo_;
    Palabras completos_{};
    std::size_t i_ = 0;
    bool operando_ = true; ///< a condition, or a side of one, is about to begin
    int entres_ = 0;       ///< BETWEEN whose AND is still to come
};

} // namespace

PExpresion LeePredeterminado(const QString& texto)
{
    const QString sinSigno = texto.startsWith(u'=') ? texto.mid(1) : texto;
    Palabras lexemas;
    for (const Lexema& lexema : Leidos(sinSigno)) {
        const bool reloj = !lexemas.empty() && EsUna(lexemas.back(), Relojes);
        if (reloj && !lexema.EsSigno("(")) {
            lexemas.push_back(Signo("("));
            lexemas.push_back(Signo(")"));
        }
        lexemas.push_back(lexema);
    }
    return AnalizaExpresion(sinSigno, lexemas);
}

PExpresion LeeRegla(const QString& texto, const QString& campo)
{
    Palabras lexemas = Leidos(texto);
    if (!campo.isEmpty())
        lexemas = ConCampo(lexemas, campo).Todo();
    return AnalizaExpresion(texto, lexemas);
}

} // namespace tolmo::data::access
