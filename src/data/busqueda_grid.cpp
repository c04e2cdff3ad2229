#include "data/busqueda_grid.h"
#include "data/clase_columna.h"
#include "data/partes_consulta.h"
#include "data/plantilla.h"

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla CriterioIgual(u"{columna} = {valor}");
constexpr Plantilla CriterioDesde(u"{columna} >= {valor}");
constexpr Plantilla CriterioHasta(u"{columna} <= {valor}");
constexpr Plantilla CriterioComo(u"{columna} like '{valor}*'");
constexpr Plantilla CriterioTexto(u"{columna} = '{valor}'");
constexpr Plantilla SqlPatron(u"SELECT TOP 1 {columna} FROM {tabla} WHERE {columna} LIKE '{valor}'");
constexpr Plantilla SqlPatronCondicion(u" AND ({condicion})");
constexpr Plantilla SqlPatronGrupo(u" GROUP BY {grupo}");
constexpr Plantilla SqlPatronOrden(u" ORDER BY {orden}");
// clang-format on

QString ConComillasDobles(QString texto)
{
    return texto.replace(u'\'', QStringLiteral("''"));
}

ClaseColumna ClaseDeColumna(const Recordset& filas, const QString& columna)
{
    return ClaseDe(filas.Campos()[static_cast<std::size_t>(filas.Indice(columna))].tipo);
}

/// True when the rows come from the largest value of the column down. There the first row at or
/// beyond a value is the first one that isn't larger.
bool EnOrdenInverso(const Adodc& adodc, const QString& columna)
{
    const QString primero = Recorta(ParteConsulta(adodc.Fuente()).orden.section(u',', 0, 0));
    return primero.compare(columna + QStringLiteral(" DESC"), Qt::CaseInsensitive) == 0;
}

/// What a row must fulfil that is no exact hit, or one of several.
QString CriterioDeTramo(const Adodc& adodc, const QString& columna, const QString& texto)
{
    switch (ClaseDeColumna(adodc.Filas(), columna)) {
    case ClaseColumna::Texto:
        return CriterioComo({{"columna", columna}, {"valor", ConComillasDobles(texto)}});
    case ClaseColumna::Logico:
        return CriterioIgual({{"columna", columna}, {"valor", texto}});
    case ClaseColumna::Numero:
    case ClaseColumna::Fecha:
        break;
    }
    const Plantilla& criterio = EnOrdenInverso(adodc, columna) ? CriterioHasta : CriterioDesde;
    return criterio({{"columna", columna}, {"valor", texto}});
}

bool EsPatron(const QString& texto)
{
    return texto.contains(u'*') || texto.contains(u'%');
}

/// The first value that fits a pattern, asked of the engine over the record set's own source.
Recordset AbrePatron(const Adodc& adodc, const QString& columna, const QString& texto)
{
    const PartesConsulta partes = ParteConsulta(adodc.Fuente());
    QString valor = ConComillasDobles(texto).replace(u'*', u'%') + u'%';
    QString sql = SqlPatron({{"columna", columna}, {"tabla", partes.tabla}, {"valor", valor}});
    if (!partes.condicion.isEmpty())
        sql += SqlPatronCondicion({{"condicion", partes.condicion}});
    if (!partes.grupo.isEmpty())
        sql += SqlPatronGrupo({{"grupo", partes.grupo}});
    if (!partes.orden.isEmpty())
        sql += SqlPatronOrden({{"orden", partes.orden}});
    // Not through the runners: they would end the program over a pattern that is half typed.
    const Programa& programa = adodc.programa();
    return adodc.conexion().Abre(
        PonPrefijo(TraduceSql(programa.DialectoActivo, sql), programa.parametros.PS_PREFIJO),
        Cursor::Estatico, Bloqueo::SoloLectura);
}

void BuscaPatron(Adodc& adodc, const QString& columna, const QString& texto)
{
    const Recordset hallada = AbrePatron(adodc, columna, texto);
    if (!hallada.Fin())
        adodc.Busca(
            CriterioTexto({{"columna", columna}, {"valor", ConComillasDobles(Texto(hallada[0]))}}),
            0);
}

void BuscaDesdeElPrincipio(Adodc& adodc, const QString& columna, const QString& texto)
{
    if (EsPatron(texto)) {
        BuscaPatron(adodc, columna, texto);
        return;
    }
    const ClaseColumna clase = ClaseDeColumna(adodc.Filas(), columna);
    const bool porTramo = clase == ClaseColumna::Numero || clase == ClaseColumna::Fecha;
    if (porTramo && adodc.Busca(CriterioIgual({{"columna", columna}, {"valor", texto}}), 0))
        return;
    adodc.Busca(CriterioDeTramo(adodc, columna, texto), 0);
}

void BuscaDesdeLaActual(Adodc& adodc, const QString& columna, const QString& texto, Sentido sentido)
{
    // Without a current row all of them lie before the place, or behind it.
    const int actual = adodc.Filas().Fin() ? adodc.Filas().RecordCount() : adodc.Fila();
    const int vecina = actual + (sentido == Sentido::Siguiente ? 1 : -1);
    adodc.Busca(CriterioDeTramo(adodc, columna, texto), vecina, sentido);
}

/// A search that can't be carried out finds nothing.
template <class Accion> void SinFallar(const Adodc& adodc, const QString& texto, Accion accion)
{
    if (adodc.Filas().Vacio() || texto.isEmpty())
        return;
    try {
        accion();
    } catch (const ErrorDatos&) {
        return;
    }
}

} // namespace

void BuscaEnGrid(Adodc& adodc, const QString& columna, const QString& texto)
{
    SinFallar(adodc, texto, [&] { BuscaDesdeElPrincipio(adodc, columna, texto); });
}

void BuscaSiguiente(Adodc& adodc, const QString& columna, const QString& texto)
{
    SinFallar(adodc, texto, [&] { BuscaDesdeLaActual(adodc, columna, texto, Sentido::Siguiente); });
}

void BuscaAnterior(Adodc& adodc, const QString& columna, const QString& texto)
{
    SinFallar(adodc, texto, [&] { BuscaDesdeLaActual(adodc, columna, texto, Sentido::Anterior); });
}

} // namespace tolmo::data
