#include "run/linea_ordenes.h"

namespace tolmo::run {
namespace {

struct Conmutador {
    const char16_t* texto;
    VentanaDeModo ventana;
    const char16_t* tag;
};

// "/SOLOARTIC_SIN_STOCK" goes before "/SOLOARTIC", of which it is a longer form.
constexpr Conmutador Conmutadores[] = {
    {u"/PRESTASHOP", VentanaDeModo::Sincronizar, u"AUTO"},
    {u"/SOLOARTIC_SIN_STOCK", VentanaDeModo::Sincronizar, u"SOLOARTIC_SIN_STOCK"},
    {u"/SOLOARTIC", VentanaDeModo::Sincronizar, u"SOLOARTIC"},
    {u"/SOLOSTOCKS", VentanaDeModo::Solostocks, u"AUTO"},
    {u"/STOCK", VentanaDeModo::Sincronizar, u"STOCK"},
};

} // namespace

std::optional<Modo> ModoDeLinea(const QString& linea)
{
    const QString mayusculas = linea.toUpper();
    for (const Conmutador& conmutador : Conmutadores)
        if (mayusculas.contains(QStringView(conmutador.texto)))
            return Modo{conmutador.ventana, QString::fromUtf16(conmutador.tag)};
    return std::nullopt;
}

QString EmpresaDeLinea(const QString& linea)
{
    return linea.right(6);
}

} // namespace tolmo::run
