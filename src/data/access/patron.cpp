#include "data/access/patron.h"
#include "data/access/utf8.h"
#include <optional>
#include <string>

namespace tolmo::data::access {
namespace {

char32_t Minuscula(char32_t c)
{
    if (c < 128)
        return c >= U'A' && c <= U'Z' ? c + 32 : c;
    return QChar::toLower(c);
}

struct Signos {
    char32_t todo;
    char32_t uno;
    bool listas; ///< "#" and brackets
};

constexpr Signos SignosDe(Comodines comodines)
{
    return comodines == Comodines::Conexion ? Signos{U'%', U'_', false} : Signos{U'*', U'?', true};
}

bool EsComodin(char32_t c, const Signos& signos)
{
    return c == signos.todo || c == signos.uno || (signos.listas && (c == U'#' || c == U'['));
}

/// A bracket list behind its "[": "a-z", "!0-9". \returns nothing when it isn't closed
std::optional<bool> EstaEnLista(char32_t c, std::string_view& patron)
{
    const std::size_t cierre = patron.find(']', patron.starts_with("]") ? 1 : 0);
    if (cierre == std::string_view::npos)
        return std::nullopt;
    std::string_view lista = patron.substr(0, cierre);
    patron.remove_prefix(cierre + 1);
    const bool negada = lista.starts_with("!");
    if (negada)
        lista.remove_prefix(1);
    bool esta = false;
    while (!lista.empty()) {
        const char32_t desde = Minuscula(TomaCaracter(lista));
        char32_t hasta = desde;
        if (lista.size() > 1 && lista.front() == '-') {
            lista.remove_prefix(1);
            hasta = Minuscula(TomaCaracter(lista));
        }
        esta = esta || (c >= desde && c <= hasta);
    }
    return esta != negada;
}

/// Fits one character of the text with the head of the pattern, which it takes off.
bool CasaUno(char32_t c, std::string_view& patron, const Signos& signos)
{
    const char32_t p = TomaCaracter(patron);
    if (p == signos.uno)
        return true;
    if (signos.listas && p == U'#')
        return c >= U'0' && c <= U'9';
    if (signos.listas && p == U'[') {
        if (const auto esta = EstaEnLista(Minuscula(c), patron))
            return *esta;
    }
    return Minuscula(p) == Minuscula(c);
}

bool TomaTodo(std::string_view& patron, const Signos& signos)
{
    bool hallado = false;
    while (!patron.empty() && static_cast<unsigned char>(patron.front()) == signos.todo) {
        patron.remove_prefix(1);
        hallado = true;
    }
    return hallado;
}

} // namespace

bool CasaPatron(std::string_view texto, std::string_view patron, Comodines comodines)
{
    const Signos signos = SignosDe(comodines);
    // Only the last "%" is ever returned to: what fitted before it stays fitted.
    std::optional<std::string_view> trasTodo;
    std::string_view reintento;
    for (;;) {
        if (TomaTodo(patron, signos)) {
            if (patron.empty())
                return true;
            trasTodo = patron;
            reintento = texto;
        }
        if (texto.empty() && patron.empty())
            return true;
        bool casa = !texto.empty() && !patron.empty();
        if (casa) {
            const char32_t c = TomaCaracter(texto);
            casa = CasaUno(c, patron, signos);
        }
        if (casa)
            continue;
        if (!trasTodo || reintento.empty())
            return false;
        TomaCaracter(reintento);
        texto = reintento;
        patron = *trasTodo;
    }
}

bool CasaPrincipio(std::string_view texto, std::string_view principio, Comodines comodines)
{
    const Signos signos = SignosDe(comodines);
    std::string_view resto = principio;
    while (!resto.empty()) {
        const std::string_view desdeAqui = resto;
        const char32_t p = TomaCaracter(resto);
        if (EsComodin(p, signos)) {
            std::string patron(desdeAqui);
            patron += static_cast<char>(signos.todo);
            return CasaPatron(texto, patron, comodines);
        }
        if (texto.empty() || Minuscula(TomaCaracter(texto)) != Minuscula(p))
            return false;
    }
    return true;
}

QString PrincipioFijo(const QString& patron, Comodines comodines)
{
    const Signos signos = SignosDe(comodines);
    qsizetype fin = 0;
    while (fin < patron.size() && !EsComodin(patron[fin].unicode(), signos))
        ++fin;
    return patron.left(fin);
}

} // namespace tolmo::data::access
