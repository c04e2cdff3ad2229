#include "sync/precios.h"
#include "sync/articulo.h"
#include "sync/corrida.h"
#include <cmath>

namespace tolmo::sync {
namespace {

using data::EstaVacio;
using data::Plantilla;
using data::Texto;
using data::ValorNumerico;

// clang-format off
constexpr Plantilla SqlBorraPrecios(u"DELETE FROM ps_specific_price WHERE id_product='{id}'||");
constexpr Plantilla SqlOfertas(u"SELECT * FROM OFERTAS WHERE CODARTICULO='{CodArticulo}' AND IDCONF='0'");
constexpr Plantilla SqlTarifaConImpuesto(u"INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,reduction_tax) VALUES ({idprecio},{id},0,0,0,{grupo},{PVPn},1,0,'amount',0)||");
constexpr Plantilla SqlTarifaSinImpuesto(u"INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE) VALUES ({idprecio},{id},0,0,0,{grupo},{PVPn},1,0,'amount')||");
constexpr Plantilla SqlOfertaConImpuesto(u"INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,`from`,`to`,reduction_tax) VALUES ({idprecio},{id},0,0,0,{grupo},{base},1,{reduccion},{tipo},{desde},{hasta},0)||");
constexpr Plantilla SqlOfertaSinImpuesto(u"INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,`from`,`to`) VALUES ({idprecio},{id},0,0,0,{grupo},{base},1,{reduccion},{tipo},{desde},{hasta})||");
// clang-format on

constexpr int Tarifas = 5;
/// Customer group of tariff n is n + 3; groups 1 to 3 are the shop's general ones.
constexpr int GruposGenerales = 3;
/// The tariff that an offer applies to stays below this; from here on it isn't published.
constexpr int TarifaDeProveedor = 6;

bool ConImpuesto(const Corrida& corrida)
{
    return ConColumnaImpuesto(corrida.VersionTienda, corrida.Parametros().PS_VERSION);
}

QString SiguienteIdPrecio(Corrida& corrida)
{
    return QString::number(++corrida.contadores.mprecio);
}

QString ColumnaPvp(const data::Valor& tarifa)
{
    return QStringLiteral("PVP") + Texto(tarifa);
}

const data::Valor& Pvp(const Articulo& articulo, const data::Valor& tarifa)
{
    return articulo.fila[ColumnaPvp(tarifa)];
}

void EscribeTarifas(Corrida& corrida, const Articulo& articulo)
{
    const Plantilla& plantilla = ConImpuesto(corrida) ? SqlTarifaConImpuesto : SqlTarifaSinImpuesto;
    for (int n = 1; n <= Tarifas; ++n)
        corrida.lote.EscribeSentencia(plantilla({{"idprecio", SiguienteIdPrecio(corrida)},
                                                 {"id", articulo.id},
                                                 {"grupo", Texto(n + GruposGenerales)},
                                                 {"PVPn", Texto(Pvp(articulo, n))}}));
}

/// A Null compares with nothing, so an offer without a tariff is passed by like a supplier's.
bool SePublica(const data::Valor& tarifaoprov)
{
    return !data::EsNulo(tarifaoprov) && ValorNumerico(tarifaoprov) < TarifaDeProveedor;
}

/// What an offer says, ready for its sentences.
struct Oferta {
    QString base{};
    QString reduccion{};
    QString tipo{};
    QString desde{};
    QString hasta{};
};

bool EsMoneda(const data::Recordset& fila, const QString& columna)
{
    constexpr int TipoMoneda = 6;
    return fila.Campos()[static_cast<std::size_t>(fila.Indice(columna))].tipo == TipoMoneda;
}

/// What the tariff's price loses to become the net one. A Null of either takes the place of the
/// whole difference: nothing stands between the commas, and the server refuses the sentence.
QString Rebaja(const Articulo& articulo, const data::Recordset& oferta)
{
    const data::Valor& tarifa = oferta["tarifaoprov"];
    const data::Valor& pvp = Pvp(articulo, tarifa);
    const data::Valor& precio = oferta["PRECIO"];
    if (data::EsNulo(pvp) || data::EsNulo(precio))
        return {};
    const double rebaja = ValorNumerico(pvp) - ValorNumerico(precio);
    // Money is held to four decimals and subtracts exactly; a double of it doesn't.
    constexpr double EscalaMoneda = 1e4;
    const bool exacta =
        EsMoneda(articulo.fila, ColumnaPvp(tarifa)) && EsMoneda(oferta, QStringLiteral("PRECIO"));
    return Texto(exacta ? std::round(rebaja * EscalaMoneda) / EscalaMoneda : rebaja);
}

Oferta PreparaOferta(Corrida& corrida, const Articulo& articulo, const data::Recordset& fila)
{
    const double dto =
        DescuentoCombinado(ValorNumerico(fila["DTOCOM1"]), ValorNumerico(fila["DTOCOM2"]),
                           ValorNumerico(fila["DTOCOM3"]), ValorNumerico(fila["DTOCOM4"]));
    const data::Valor& pvpdef = fila["pvpdef"];
    const data::Valor& tarifa = fila["tarifaoprov"];
    const bool precioNeto = EstaVacio(pvpdef);
    Oferta oferta{.base = Texto(precioNeto ? fila["PRECIO"] : Pvp(articulo, pvpdef)),
                  .desde = data::FechaSql(corrida.programa, fila["fechadesde"]),
                  .hasta = data::FechaSql(corrida.programa, fila["fechahasta"])};
    QString rebaja = QStringLiteral("0");
    if (dto == 0 && precioNeto && SePublica(tarifa)) {
        // A net price is published as the tariff's price less an amount.
        oferta.base = Texto(Pvp(articulo, tarifa));
        rebaja = Rebaja(articulo, fila);
    }
    oferta.reduccion = dto == 0 ? rebaja : Texto(dto / 100);
    oferta.tipo = dto == 0 ? QStringLiteral("'amount'") : QStringLiteral("'percentage'");
    return oferta;
}

void EscribeOferta(Corrida& corrida, const Articulo& articulo, const Oferta& oferta, int grupo)
{
    const Plantilla& plantilla = ConImpuesto(corrida) ? SqlOfertaConImpuesto : SqlOfertaSinImpuesto;
    corrida.lote.EscribeSentencia(plantilla({{"idprecio", SiguienteIdPrecio(corrida)},
                                             {"id", articulo.id},
                                             {"grupo", Texto(grupo)},
                                             {"base", oferta.base},
                                             {"reduccion", oferta.reduccion},
                                             {"tipo", oferta.tipo},
                                             {"desde", oferta.desde},
                                             {"hasta", oferta.hasta}}));
}

void EscribeOfertas(Corrida& corrida, const Articulo& articulo)
{
    auto ofertas = LeeLocal(corrida, SqlOfertas({{"CodArticulo", articulo.CodArticulo}}));
    for (; !ofertas.Fin(); ofertas.Siguiente()) {
        const Oferta oferta = PreparaOferta(corrida, articulo, ofertas);
        if (!SePublica(ofertas["tarifaoprov"]))
            continue;
        const int tarifa = static_cast<int>(ValorNumerico(ofertas["tarifaoprov"]));
        if (corrida.Parametros().Ps_pvpdef == tarifa)
            for (int grupo = 1; grupo <= GruposGenerales; ++grupo)
                EscribeOferta(corrida, articulo, oferta, grupo);
        EscribeOferta(corrida, articulo, oferta, tarifa + GruposGenerales);
    }
}

} // namespace

bool ConColumnaImpuesto(const QString& VersionTienda, int PS_VERSION)
{
    static const QStringList versiones{QStringLiteral("1.6.0.11"), QStringLiteral("1.6.0.12"),
                                       QStringLiteral("1.6.0.13"), QStringLiteral("1.6.0.14")};
    return PS_VERSION > 0 || versiones.contains(VersionTienda);
}

double DescuentoCombinado(double dto1, double dto2, double dto3, double dto4)
{
    const double queda = (1 - dto1 / 100) * (1 - dto2 / 100) * (1 - dto3 / 100) * (1 - dto4 / 100);
    return 100 - 100 * queda;
}

void BorraPrecios(Corrida& corrida, const Articulo& articulo)
{
    corrida.lote.EscribeSentencia(SqlBorraPrecios({{"id", articulo.id}}));
}

void EscribePrecios(Corrida& corrida, const Articulo& articulo)
{
    EscribeTarifas(corrida, articulo);
    EscribeOfertas(corrida, articulo);
}

} // namespace tolmo::sync
