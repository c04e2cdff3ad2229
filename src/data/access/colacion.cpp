#include "data/access/colacion.h"
#include "data/access/colacion_pesos.h"
#include "data/access/utf8.h"
#include <QList>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

constexpr char32_t MayorDeTodos = 0x10FFFF;
constexpr unsigned char SinAcento = 2;
// Second-level codes of the marks that Latin letters take, as the table has them.
constexpr std::array<std::pair<char32_t, unsigned char>, 8> Marcas{{{0x300, 0x0F},
                                                                    {0x301, 0x0E},
                                                                    {0x302, 0x12},
                                                                    {0x303, 0x19},
                                                                    {0x308, 0x13},
                                                                    {0x30A, 0x1A},
                                                                    {0x30C, 0x14},
                                                                    {0x327, 0x1C}}};
constexpr unsigned char OtraMarca = 0x40;

const PesoSuelto* BuscaSuelto(char32_t caracter)
{
    const auto* fin = PesosSueltos + PesosSueltosTotales;
    const auto* hallado =
        std::lower_bound(PesosSueltos, fin, caracter,
                         [](const PesoSuelto& p, char32_t c) { return p.caracter < c; });
    return hallado != fin && hallado->caracter == caracter ? hallado : nullptr;
}

/// The three levels of a text, each compared byte by byte.
class Clave {
  public:
    explicit Clave(std::string_view texto)
    {
        while (!texto.empty())
            Anade(TomaCaracter(texto));
        while (!acentos_.isEmpty() && acentos_.back() <= SinAcento)
            acentos_.removeLast();
    }

    int Compara(const Clave& otra) const
    {
        for (const auto nivel : {&Clave::letras_, &Clave::acentos_, &Clave::ignorados_}) {
            const auto& a = this->*nivel;
            const auto& b = otra.*nivel;
            if (std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end()))
                return -1;
            if (a != b)
                return 1;
        }
        return 0;
    }

  private:
    using Bytes = QVarLengthArray<unsigned char, 256>;

    void Anade(char32_t caracter)
    {
        if (caracter < 256)
            AnadePeso(PesosLatinos[caracter]);
        else if (const PesoSuelto* suelto = BuscaSuelto(caracter))
            AnadePeso(suelto->peso);
        else
            AnadeLejano(caracter);
    }

    void AnadePeso(const Peso& peso)
    {
        if (peso.ignorado) {
            ignorados_.append(static_cast<unsigned char>(acentos_.size() >> 8));
            ignorados_.append(static_cast<unsigned char>(acentos_.size() & 0xFF));
            ignorados_.append(peso.ignorado);
        }
        if (!peso.primero)
            return;
        letras_.append(peso.primero);
        if (peso.segundo)
            letras_.append(peso.segundo);
        acentos_.append(peso.acento ? peso.acento : SinAcento);
    }

    // A character that the table lacks: a letter with marks goes by its parts, a mark changes the
    // letter before it, and the rest stands behind all Latin letters by its number.
    void AnadeLejano(char32_t caracter)
    {
        if (QChar::isMark(caracter)) {
            AnadeMarca(caracter);
            return;
        }
        const QString partes = QChar::decompositionTag(caracter) == QChar::Canonical
                                   ? QChar::decomposition(caracter)
                                   : QString();
        if (!partes.isEmpty()) {
            for (const uint parte : partes.toUcs4())
                Anade(parte);
            return;
        }
        const char32_t letra = caracter == MayorDeTodos ? 0xFFFFFFF : QChar::toCaseFolded(caracter);
        for (const int bits : {24, 16, 8, 0})
            letras_.append(
                static_cast<unsigned char>((letra >> bits & 0xFF) | (bits == 24 ? 0xF0 : 0)));
        acentos_.append(SinAcento);
    }

    void AnadeMarca(char32_t marca)
    {
        const auto hallada = std::find_if(Marcas.begin(), Marcas.end(),
                                          [marca](const auto& m) { return m.first == marca; });
        const unsigned char peso = hallada != Marcas.end()
                                       ? hallada->second
                                       : static_cast<unsigned char>(OtraMarca + (marca & 0x3F));
        if (!acentos_.isEmpty())
            acentos_.back() = static_cast<unsigned char>(
                acentos_.back() == SinAcento ? peso : acentos_.back() + peso);
    }

    Bytes letras_;
    Bytes acentos_;
    Bytes ignorados_;
};

// Weights of the ASCII characters that count one code and nothing else; 0 for the others.
std::array<unsigned char, 256> PesosSencillos()
{
    std::array<unsigned char, 256> pesos{};
    for (std::size_t c = 0; c < 128; ++c) {
        const Peso& peso = PesosLatinos[c];
        if (!peso.segundo && !peso.acento && !peso.ignorado)
            pesos[c] = peso.primero;
    }
    return pesos;
}

std::string_view SinBlancosDetras(std::string_view texto)
{
    while (!texto.empty() && texto.back() == ' ')
        texto.remove_suffix(1);
    return texto;
}

QString TextoMayor()
{
    const char32_t mayor = MayorDeTodos;
    return QString::fromUcs4(&mayor, 1);
}

// From one character before the place, which is equal in both: a mark at the place changes it.
int ComparaDesde(std::size_t lugar, std::string_view a, std::string_view b)
{
    const std::size_t desde = lugar > 0 ? lugar - 1 : 0;
    return Clave(a.substr(desde)).Compara(Clave(b.substr(desde)));
}

int ComparaColacion(void*, int largoA, const void* a, int largoB, const void* b)
{
    return ComparaTextos(
        std::string_view(static_cast<const char*>(a), static_cast<std::size_t>(largoA)),
        std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(largoB)));
}

} // namespace

int ComparaTextos(std::string_view a, std::string_view b)
{
    static const std::array<unsigned char, 256> sencillos = PesosSencillos();
    a = SinBlancosDetras(a);
    b = SinBlancosDetras(b);
    // Most texts are decided by their plain letters and digits, without building any key.
    const std::size_t comun = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < comun; ++i) {
        const unsigned char pesoA = sencillos[static_cast<unsigned char>(a[i])];
        const unsigned char pesoB = sencillos[static_cast<unsigned char>(b[i])];
        if (!pesoA || !pesoB)
            return ComparaDesde(i, a, b);
        if (pesoA != pesoB)
            return pesoA < pesoB ? -1 : 1;
    }
    if (a.size() == b.size())
        return 0;
    return ComparaDesde(comun, a, b);
}

int ComparaTextos(const QString& a, const QString& b)
{
    const QByteArray bytesA = a.toUtf8();
    const QByteArray bytesB = b.toUtf8();
    return ComparaTextos(
        std::string_view(bytesA.constData(), static_cast<std::size_t>(bytesA.size())),
        std::string_view(bytesB.constData(), static_cast<std::size_t>(bytesB.size())));
}

Tramo TramoDePrefijo(const QString& prefijo)
{
    QString base;
    for (const QChar c : prefijo) {
        const char16_t numero = c.unicode();
        if (numero >= 128)
            break;
        if (PesosLatinos[numero].primero)
            base += c;
    }
    return {base, base + TextoMayor()};
}

std::optional<QString> PrincipioHasta(const QString& hasta)
{
    const QString mayor = TextoMayor();
    return hasta.endsWith(mayor) ? std::optional(hasta.chopped(mayor.size())) : std::nullopt;
}

void RegistraColacion(sqlite3* base)
{
    sqlite3_create_collation_v2(base, Colacion, SQLITE_UTF8, nullptr, ComparaColacion, nullptr);
}

} // namespace tolmo::data::access
