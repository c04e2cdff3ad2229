#include "run/ficha_empresa.h"
#include "data/plantilla.h"

namespace tolmo::run {

using namespace data;

namespace {

// clang-format off
constexpr Plantilla SqlEmpresa(u"SELECT * FROM M_EMPRESA WHERE CODEMPRESA='{empresa}'");
constexpr Plantilla SqlIdiomas(u"SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='{empresa}'");
constexpr Plantilla CondicionDeEmpresa(u"CODEMPRESA='{empresa}'");
// clang-format on

} // namespace

Recordset AbreFichaEmpresa(Programa& programa, const QString& empresa)
{
    QString sql = SqlEmpresa({{"empresa", empresa}});
    return AbreConsulta(programa, sql, programa.ConexionLocal);
}

void GuardaFichaEmpresa(Programa& programa, std::span<const CampoFicha> ficha,
                        const QString& empresa)
{
    ActualizaFicha(programa, programa.ConexionLocal, ficha, QStringLiteral("M_EMPRESA"),
                   CondicionDeEmpresa({{"empresa", empresa}}));
}

QString ConsultaIdiomas(const QString& empresa)
{
    return SqlIdiomas({{"empresa", empresa}});
}

} // namespace tolmo::run
