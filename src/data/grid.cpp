#include "data/grid.h"
#include "data/clase_columna.h"
#include "data/partes_consulta.h"
#include "data/plantilla.h"
#include <algorithm>

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla SqlGrid(u"Select {campos} from {origen} order by {orden}");
constexpr Plantilla FiltroDesde(u"{columna} >= {valor}");
constexpr Plantilla FiltroTexto(u"{columna} LIKE '{valor}%'");
constexpr Plantilla FiltroLogico(u"{columna} = {valor}");
constexpr Plantilla NoEsNumero(u"El filtro de «{columna}» tiene que ser un número.");
constexpr Plantilla NoEsFecha(u"El filtro de «{columna}» tiene que ser una fecha (dd/mm/aaaa).");
constexpr Plantilla NoEsLogico(u"El filtro de «{columna}» tiene que ser Sí o No.");
// clang-format on

const QString SinSeleccion = QStringLiteral("No hay ninguna fila seleccionada");
const QString Copiados = QStringLiteral("Los datos han sido copiados al portapapeles");

ClaseColumna ClaseDeColumna(const QString& columna, std::span<const Campo> campos)
{
    for (const Campo& campo : campos)
        if (campo.nombre.compare(columna, Qt::CaseInsensitive) == 0)
            return ClaseDe(campo.tipo);
    return ClaseColumna::Texto;
}

QString CondicionDe(const ColumnaGrid& columna, ClaseColumna clase, Dialecto dialecto)
{
    const auto con = [&](const Plantilla& plantilla, const QString& valor) {
        return plantilla({{"columna", columna.DataField}, {"valor", valor}});
    };
    switch (clase) {
    case ClaseColumna::Numero:
        return con(FiltroDesde, columna.FilterText);
    case ClaseColumna::Fecha:
        // As it was typed, 15/03/2024 would be a division for every engine.
        return con(FiltroDesde, FechaSql(dialecto, LeeFecha(columna.FilterText)));
    case ClaseColumna::Logico:
        return con(FiltroLogico, LeeLogico(columna.FilterText).value_or(false)
                                     ? QStringLiteral("TRUE")
                                     : QStringLiteral("FALSE"));
    case ClaseColumna::Texto:
        break;
    }
    QString texto = columna.FilterText;
    return con(FiltroTexto, texto.replace(u'\'', QStringLiteral("''")));
}

void Reabre(const Grid& grid, Adodc& adodc, const QString& sql)
{
    const QString filtro =
        FiltroColumnas(grid, adodc.Filas().Campos(), adodc.programa().DialectoActivo);
    adodc.Abre(sql, grid.Edita(), filtro);
}

} // namespace

const ColumnaGrid* Grid::ColumnaDeOrden() const
{
    const ColumnaGrid* primera = nullptr;
    for (const ColumnaGrid& columna : columnas) {
        if (columna.DataField.isEmpty())
            continue;
        if (columna.DataField.compare(columnaRecordada, Qt::CaseInsensitive) == 0)
            return &columna;
        if (!primera || (primera->oculta && !columna.oculta))
            primera = &columna;
    }
    return primera;
}

QStringList Grid::DataFields() const
{
    QStringList nombres;
    for (const ColumnaGrid& columna : columnas)
        if (!columna.DataField.isEmpty())
            nombres << columna.DataField;
    return nombres;
}

QString Grid::ColumnaDeMarca() const
{
    for (const ColumnaGrid& columna : columnas)
        if (!columna.oculta && !columna.DataField.isEmpty())
            return columna.DataField;
    return DataFields().value(0);
}

EtiquetaGrid EtiquetaDe(const Grid& grid)
{
    const ColumnaGrid* columna = grid.ColumnaDeOrden();
    if (!columna)
        return {};
    return {.Tag = columna->DataField, .Caption = columna->Caption};
}

EtiquetaGrid LlenaGrid(const Grid& grid, Adodc& adodc, const QString& origen, const QString& campos)
{
    EtiquetaGrid etiqueta = EtiquetaDe(grid);
    Reabre(grid, adodc,
           SqlGrid({{"campos", campos.isEmpty() ? grid.DataFields().join(u',') : campos},
                    {"origen", origen},
                    {"orden", etiqueta.Tag}}));
    return etiqueta;
}

EtiquetaGrid AbreGrid(const Grid& grid, Adodc& adodc, const QString& sql)
{
    EtiquetaGrid etiqueta = EtiquetaDe(grid);
    Reabre(grid, adodc, grid.columnaRecordada.isEmpty() ? sql : ConOrden(sql, etiqueta.Tag));
    return etiqueta;
}

EtiquetaGrid OrdenaGrid(Grid& grid, Adodc& adodc, int columna)
{
    const QString& elegida = grid.columnas.at(static_cast<std::size_t>(columna)).DataField;
    if (elegida.isEmpty())
        return EtiquetaDe(grid);
    grid.columnaRecordada = elegida;
    return AbreGrid(grid, adodc, adodc.RecordSource());
}

QString RechazoDeFiltro(const ColumnaGrid& columna, std::span<const Campo> campos,
                        const QString& texto)
{
    const auto con = [&](const Plantilla& plantilla) {
        return plantilla({{"columna", columna.Caption}});
    };
    if (texto.isEmpty())
        return {};
    switch (ClaseDeColumna(columna.DataField, campos)) {
    case ClaseColumna::Numero:
        return EsNumerico(texto) ? QString() : con(NoEsNumero);
    case ClaseColumna::Fecha:
        return LeeFecha(texto).isValid() ? QString() : con(NoEsFecha);
    case ClaseColumna::Logico:
        return LeeLogico(texto) ? QString() : con(NoEsLogico);
    case ClaseColumna::Texto:
        break;
    }
    return {};
}

QString FiltroColumnas(const Grid& grid, std::span<const Campo> campos, Dialecto dialecto)
{
    QStringList condiciones;
    for (const ColumnaGrid& columna : grid.columnas)
        if (!columna.FilterText.isEmpty())
            condiciones << CondicionDe(columna, ClaseDeColumna(columna.DataField, campos),
                                       dialecto);
    return condiciones.join(QStringLiteral(" AND "));
}

void AplicaFiltroColumnas(const Grid& grid, Adodc& adodc)
{
    Reabre(grid, adodc, adodc.RecordSource());
}

void QuitaFiltroGrid(Grid& grid, Adodc& adodc)
{
    for (ColumnaGrid& columna : grid.columnas)
        columna.FilterText.clear();
    adodc.Abre(adodc.RecordSource(), true);
}

QString TextoDeFilas(const Grid& grid, const Recordset& filas, std::span<const int> marcas)
{
    std::vector<int> columnas;
    for (const QString& nombre : grid.DataFields())
        if (filas.TieneColumna(nombre))
            columnas.push_back(filas.Indice(nombre));
    QString texto;
    for (const int fila : marcas) {
        QStringList valores;
        for (const int columna : columnas)
            valores << TextoCelda(filas.En(fila, columna));
        texto += valores.join(u'\t') + QStringLiteral("\r\n");
    }
    return texto;
}

void CopiaSeleccion(const Grid& grid, const Adodc& adodc, std::span<const int> SelBookmarks,
                    Escritorio& escritorio)
{
    Avisos& avisos = adodc.programa().avisos;
    if (SelBookmarks.empty()) {
        avisos.Muestra(SinSeleccion, estilo::Aviso);
        return;
    }
    escritorio.CopiaAlPortapapeles(TextoDeFilas(grid, adodc.Filas(), SelBookmarks));
    avisos.Muestra(Copiados, estilo::Informacion);
}

} // namespace tolmo::data
