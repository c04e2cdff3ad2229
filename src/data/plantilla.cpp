#include "data/plantilla.h"
#include <QVarLengthArray>
#include <stdexcept>

namespace tolmo::data {
namespace {

constexpr qsizetype ValoresUsuales = 64;

using Valores = std::initializer_list<std::pair<const char*, QString>>;

bool EsLetra(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
}

bool EsLetraOCifra(QChar c)
{
    return EsLetra(c) || (c >= u'0' && c <= u'9');
}

/// The name of the place that begins at the "{" in front of `resto`; empty when it is a brace and
/// nothing else.
QStringView NombreDeLugar(QStringView resto)
{
    qsizetype fin = 1;
    while (fin < resto.size() && EsLetraOCifra(resto[fin]))
        ++fin;
    const bool esLugar = fin > 1 && EsLetra(resto[1]) && fin < resto.size() && resto[fin] == u'}';
    return esLugar ? resto.mid(1, fin - 1) : QStringView();
}

[[noreturn]] void Falla(const char* motivo, const QString& nombre, QStringView plantilla)
{
    throw std::logic_error(motivo + nombre.toStdString() +
                           " in: " + plantilla.toString().toStdString());
}

std::size_t Busca(const Valores& valores, QStringView nombre, QStringView plantilla)
{
    std::size_t indice = 0;
    for (const auto& valor : valores) {
        if (nombre == QLatin1StringView(valor.first))
            return indice;
        ++indice;
    }
    Falla("no value for ", nombre.toString(), plantilla);
}

} // namespace

QString Plantilla::operator()(Valores valores) const
{
    const QStringView plantilla(texto_.data(), static_cast<qsizetype>(texto_.size()));
    QVarLengthArray<bool, ValoresUsuales> usados(static_cast<qsizetype>(valores.size()), false);
    qsizetype total = plantilla.size();
    for (const auto& valor : valores)
        total += valor.second.size();
    QString lleno;
    lleno.reserve(total);

    QStringView resto = plantilla;
    for (qsizetype llave = resto.indexOf(u'{'); llave >= 0; llave = resto.indexOf(u'{')) {
        lleno += resto.first(llave);
        resto = resto.mid(llave);
        const QStringView nombre = NombreDeLugar(resto);
        if (nombre.isEmpty()) {
            lleno += u'{';
            resto = resto.mid(1);
            continue;
        }
        const std::size_t indice = Busca(valores, nombre, plantilla);
        usados[static_cast<qsizetype>(indice)] = true;
        lleno += valores.begin()[indice].second;
        resto = resto.mid(nombre.size() + 2);
    }
    lleno += resto;

    const qsizetype sobra = usados.indexOf(false);
    if (sobra >= 0)
        Falla("no place for ", QString::fromLatin1(valores.begin()[sobra].first), plantilla);
    return lleno;
}

} // namespace tolmo::data
