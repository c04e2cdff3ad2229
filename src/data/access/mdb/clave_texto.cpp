#include "data/access/mdb/clave_texto.h"
#include "data/access/mdb/codigos_texto.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint16 IdiomaGeneral = 0x0409;
constexpr qsizetype MasCaracteres = 255;
constexpr char FinDeParte = 1;
constexpr char FinDeClave = 0;
constexpr char SinExtra = 2;
constexpr quint16 PrimerLugar = 0x8007;
constexpr quint16 PorLugar = 4;
constexpr char AnteNoImprimible = 6;

bool ValePorDos(char16_t caracter)
{
    constexpr std::u16string_view letras = u"\u00DF\u00E6\u00C6\u00FE\u00DE\u0153\u0152";
    return letras.find(caracter) != std::u16string_view::npos;
}

/// The parts of a key, which grow character by character.
struct Partes {
    QByteArray codigos{};
    QByteArray extras{};
    QByteArray noImprimibles{};
    int lugares = 0;

    void Anade(const CodigoTexto& codigo, int cuantosLugares)
    {
        switch (codigo.clase) {
        case CodigoTexto::Clase::Ignorado:
            break;
        case CodigoTexto::Clase::NoImprimible: {
            const auto lugar = static_cast<quint16>(PrimerLugar + PorLugar * lugares);
            noImprimibles += static_cast<char>(lugar >> 8);
            noImprimibles += static_cast<char>(lugar & 0xFF);
            noImprimibles += AnteNoImprimible;
            noImprimibles += static_cast<char>(codigo.extra);
            break;
        }
        case CodigoTexto::Clase::Visible:
            codigos.append(reinterpret_cast<const char*>(codigo.codigos.data()), codigo.largo);
            if (codigo.extra != 0) {
                extras.append(lugares - extras.size(), SinExtra);
                extras += static_cast<char>(codigo.extra);
            }
            lugares += cuantosLugares;
        }
    }

    QByteArray Clave()
    {
        while (!extras.isEmpty() && static_cast<quint8>(extras.back()) <= SinExtra)
            extras.chop(1);
        QByteArray clave = codigos + FinDeParte + extras;
        if (!noImprimibles.isEmpty())
            clave += QByteArray(3, FinDeParte) + noImprimibles;
        return clave + FinDeClave;
    }
};

} // namespace

bool OrdenConocido(OrdenTexto orden)
{
    return orden.idioma == IdiomaGeneral && orden.version <= 1;
}

std::optional<QByteArray> ClaveTexto(QStringView texto, OrdenTexto orden, Expansion expansion)
{
    if (!OrdenConocido(orden))
        return std::nullopt;
    texto = texto.left(MasCaracteres);
    while (texto.endsWith(u' '))
        texto.chop(1);
    Partes partes;
    for (const QChar caracter : texto) {
        const CodigoTexto* codigo =
            CodigoDe(caracter.unicode(), static_cast<OrdenGeneral>(orden.version));
        if (codigo == nullptr)
            return std::nullopt;
        const bool dos = expansion == Expansion::DosLugares && ValePorDos(caracter.unicode());
        partes.Anade(*codigo, dos ? 2 : 1);
    }
    return partes.Clave();
}

} // namespace tolmo::data::access::mdb
