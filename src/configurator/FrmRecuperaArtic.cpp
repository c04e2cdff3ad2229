#include "configurator/FrmRecuperaArtic.h"
#include <QShowEvent>

using namespace tolmo;

FrmRecuperaArtic::FrmRecuperaArtic(data::Programa& programa, data::Escritorio& escritorio,
                                   QWidget* llamante)
    : VentanaConsulta(programa, programa.ConexionLocal, escritorio, llamante), programa_(programa),
      dialectoDelLlamante_(programa.DialectoActivo)
{
    setObjectName(QStringLiteral("FrmRecuperaArtic"));
    setWindowTitle(QStringLiteral("Seleccionar Artículo"));
    PonDevuelveCodAlternativo(false);
}

void FrmRecuperaArtic::PonTag(const QString& tag)
{
    setProperty("Tag", tag);
}

void FrmRecuperaArtic::PonFiltro(const QString& condicion)
{
    Panel().Condicion().setText(condicion);
}

void FrmRecuperaArtic::PonDevuelveCodAlternativo(bool devuelve)
{
    const data::ColumnaGrid codigo =
        devuelve ? data::ColumnaGrid{.DataField = QStringLiteral("CODALTERNATIVO"),
                                     .Caption = QStringLiteral("Cod. Alternativo"),
                                     .ancho = 160}
                 : data::ColumnaGrid{.DataField = QStringLiteral("CODARTICULO"),
                                     .Caption = QStringLiteral("Código"),
                                     .ancho = 160};
    Panel().Rejilla().Define({.columnas = {codigo,
                                           {.DataField = QStringLiteral("DESCRIPCION"),
                                            .Caption = QStringLiteral("Descripción"),
                                            .ancho = 420}}});
    PonColumnaDeRetorno(codigo.DataField);
}

QString FrmRecuperaArtic::Origen() const
{
    const QString donde = Panel().Donde();
    return programa_.parametros.PS_TABLAARTIC +
           (donde.isEmpty()
                ? QStringLiteral(" where tipoartic is null OR TipoArtic<>'OB' ")
                : donde + QStringLiteral(" AND (tipoartic is null OR TipoArtic<>'OB') "));
}

/// The articles are local: the windows that synchronise leave the shop's dialect active.
void FrmRecuperaArtic::showEvent(QShowEvent* evento)
{
    if (!evento->spontaneous())
        dialectoDelLlamante_ = std::exchange(programa_.DialectoActivo, programa_.TipoBaseDatos);
    VentanaConsulta::showEvent(evento);
}

void FrmRecuperaArtic::hideEvent(QHideEvent* evento)
{
    VentanaConsulta::hideEvent(evento);
    if (!evento->spontaneous())
        programa_.DialectoActivo = dialectoDelLlamante_;
}
