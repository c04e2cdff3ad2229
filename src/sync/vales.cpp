#include "sync/vales.h"
#include "sync/corrida.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlMayorVale(u"SELECT max(id_cart_rule) as numvale FROM ps_cart_rule");
constexpr Plantilla SqlVales(u"SELECT * FROM VALESDTO WHERE ESTADO='1' AND not exists(SELECT 'C' FROM D_ALBCLI WHERE D_ALBCLI.CODARTICULO=VALESDTO.CODARTICULOVALE AND D_ALBCLI.NSERIE=VALESDTO.CODVALE) AND CODCLIENTE IS NULL");
constexpr Plantilla SqlValeEnTienda(u"SELECT * FROM ps_cart_rule where code='{CodVale}'");
constexpr Plantilla SqlInsertaVale(u"INSERT INTO ps_cart_rule(id_cart_rule, id_customer, date_from, date_to, description, quantity, quantity_per_user, priority, partial_use, code, minimum_amount, minimum_amount_tax, minimum_amount_currency, minimum_amount_shipping, country_restriction, carrier_restriction, group_restriction, cart_rule_restriction, product_restriction, shop_restriction, free_shipping, reduction_percent, reduction_amount, reduction_tax, reduction_currency, reduction_product, gift_product, gift_product_attribute, highlight, active, date_add, date_upd) VALUES ({id},0,{desde},{hasta},'{Descripcion}',{usos},1,1,1,'{CodVale}',{minimo},1,1,0,0,0,0,0,0,0,0,{porcentaje},{importe},1,1,0,0,0,0,1,{hoy},{hoy})||");
constexpr Plantilla SqlInsertaTexto(u"INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES ({id},{lang},'{Descripcion}')||");
constexpr Plantilla YaExiste(u"Preparando Vale Descuento {CodVale}. Ya existe en la web.");
constexpr Plantilla SeAnade(u"Preparando Vale Descuento {CodVale}. Añadiendo");
// clang-format on

/// The counter is raised before each use, so the first voucher of an empty table is number 2.
long long NumeroDePartida(Corrida& corrida)
{
    const auto fila = LeeTienda(corrida, SqlMayorVale());
    const data::Valor& numvale = fila["numvale"];
    return data::EstaVacio(numvale) ? 1 : static_cast<long long>(data::ValorNumerico(numvale));
}

/// The three columns of a cart rule that a voucher's value goes to.
struct Importes {
    QString minimo{};
    QString porcentaje{};
    QString importe{};
};

/// A fixed amount asks for a basket of at least itself, and so does a kind that is neither of the
/// two, which then takes nothing off.
Importes ImportesDe(const QString& TIPODTO, const QString& valor)
{
    const QString nada = QStringLiteral("0");
    if (TIPODTO == u'D')
        return {.minimo = nada, .porcentaje = valor, .importe = nada};
    return {.minimo = valor, .porcentaje = nada, .importe = TIPODTO == u'I' ? valor : nada};
}

void EscribeVale(Corrida& corrida, const data::Recordset& vale, const QString& id)
{
    const data::Programa& programa = corrida.programa;
    const Importes importes = ImportesDe(Texto(vale["TIPODTO"]), Texto(vale["Valor"]));
    const QString descripcion = Texto(vale["Descripcion"]);
    corrida.lote.EscribeSentencia(
        SqlInsertaVale({{"id", id},
                        {"desde", data::FechaSql(programa, vale["fechadesde"])},
                        {"hasta", data::FechaSql(programa, vale["fechahasta"])},
                        {"Descripcion", descripcion},
                        {"usos", TextoO(vale["nusos"])},
                        {"CodVale", Texto(vale["CodVale"])},
                        {"minimo", importes.minimo},
                        {"porcentaje", importes.porcentaje},
                        {"importe", importes.importe},
                        {"hoy", HoySql(programa)}}));
    for (const data::FichaIdioma& idioma : corrida.Parametros().Idiomas)
        corrida.lote.EscribeSentencia(SqlInsertaTexto(
            {{"id", id}, {"lang", Texto(idioma.Idioma)}, {"Descripcion", descripcion}}));
}

} // namespace

void SincronizaValesDescuento(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("PREPARANDO CARGA DE VALES DE DESCUENTO"));
    long long numero = NumeroDePartida(corrida);
    auto vales = LeeLocal(corrida, SqlVales());
    if (vales.Fin())
        return;
    for (; !vales.Fin(); vales.Siguiente()) {
        const QString codigo = Texto(vales["CodVale"]);
        if (LeeTienda(corrida, SqlValeEnTienda({{"CodVale", codigo}})).Fin()) {
            corrida.RegistraLog(SeAnade({{"CodVale", codigo}}));
            EscribeVale(corrida, vales, QString::number(++numero));
        } else {
            corrida.RegistraLog(YaExiste({{"CodVale", codigo}}));
        }
        corrida.progreso.Avanza(vales.AbsolutePosition(), vales.RecordCount());
        corrida.progreso.CedeEventos();
    }
    VuelcaLote(corrida, QStringLiteral("SINCRONIZANDO NUEVOS VALES DE DESCUENTO"));
}

} // namespace tolmo::sync
