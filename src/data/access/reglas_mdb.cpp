#include "data/access/reglas_mdb.h"
#include "data/access/errores_access.h"
#include "data/access/esquema.h"
#include "data/access/expresion_guardada.h"
#include "data/access/traductor.h"
#include "data/access/valores_mdb.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

void ReuneNombres(const Expresion& e, QSet<QString>& nombres)
{
    if (e.clase == Expresion::Clase::Columna)
        nombres.insert(Llave(e.nombre));
    for (const PExpresion& hijo : e.hijos)
        ReuneNombres(*hijo, nombres);
}

ColumnaVista VistaDe(const mdb::Columna& columna, const QString& tabla)
{
    const TipoDeclarado tipo = TipoDeColumna(columna);
    ColumnaVista vista;
    vista.nombre = vista.columna = columna.nombre;
    vista.tipo = tipo.tipo;
    vista.ancho = tipo.ancho;
    vista.tabla = tabla;
    return vista;
}

} // namespace

ReglasMdb::ReglasMdb(sqlite3* base, const Esquema& esquema, const mdb::Tabla& tabla,
                     const mdb::ExigenciasDeTabla& exigencias)
    : tabla_(tabla), usadas_(tabla.definicion().columnas.size(), false)
{
    for (std::size_t i = 0; i < usadas_.size(); ++i)
        Anade(base, esquema, exigencias.columnas[i].regla, &tabla_.definicion().columnas[i]);
    Anade(base, esquema, exigencias.regla, nullptr);
}

void ReglasMdb::Anade(sqlite3* base, const Esquema& esquema, const mdb::ReglaDeValores& texto,
                      const mdb::Columna* columna)
{
    if (texto.expresion.isEmpty())
        return;
    Regla regla{.campo = tabla_.Nombre(), .texto = texto};
    if (columna) {
        regla.campo += u'.' + columna->nombre;
        regla.columnas.push_back(
            static_cast<std::size_t>(columna - tabla_.definicion().columnas.data()));
    }
    try {
        const PExpresion expresion =
            LeeRegla(texto.expresion, columna ? columna->nombre : QString());
        Prepara(base, esquema, *expresion, regla);
    } catch (const ErrorSql&) {
        regla.condicion.reset();
    }
    for (const std::size_t i : regla.columnas)
        usadas_[i] = true;
    reglas_.push_back(std::move(regla));
}

/// The condition is asked of a row of parameters.
void ReglasMdb::Prepara(sqlite3* base, const Esquema& esquema, const Expresion& expresion,
                        Regla& regla)
{
    QSet<QString> nombres;
    ReuneNombres(expresion, nombres);
    Ambito::FuenteVista fila{.alias = tabla_.Nombre()};
    std::vector<std::size_t> columnas;
    QStringList valores;
    const auto& todas = tabla_.definicion().columnas;
    for (std::size_t i = 0; i < todas.size(); ++i) {
        if (!nombres.contains(Llave(todas[i].nombre)))
            continue;
        columnas.push_back(i);
        fila.columnas.push_back(VistaDe(todas[i], tabla_.Nombre()));
        valores << u'?' + QString::number(columnas.size()) + QStringLiteral(" AS ") +
                       Identificador(todas[i].nombre);
    }
    Ambito ambito;
    ambito.fuentes.push_back(std::move(fila));
    const QString condicion = ACondicion(Traductor(esquema).TraduceGuardada(expresion, ambito));
    const QString de = valores.isEmpty() ? QString()
                                         : QStringLiteral(" FROM (SELECT %1) AS %2")
                                               .arg(valores.join(QStringLiteral(", ")),
                                                    Identificador(tabla_.Nombre()));
    regla.condicion.emplace(base, QStringLiteral("SELECT ") + condicion + de);
    regla.columnas = std::move(columnas);
}

void ReglasMdb::Incumplida(const Regla& regla)
{
    if (!regla.texto.aviso.isEmpty())
        Rechaza(regla.texto.aviso);
    Rechaza(QStringLiteral("Los valores no cumplen la regla de validación de %1: %2")
                .arg(regla.campo, regla.texto.expresion));
}

void ReglasMdb::Comprueba(std::span<const mdb::Dato> fila, const std::vector<bool>& cambia)
{
    for (Regla& regla : reglas_) {
        const bool afectada = regla.columnas.empty() ||
                              std::any_of(regla.columnas.begin(), regla.columnas.end(),
                                          [&](std::size_t columna) { return cambia[columna]; });
        if (!afectada)
            continue;
        if (!regla.condicion)
            Rechaza(
                QStringLiteral(
                    "La regla de validación de %1 no se entiende, y no se escribe lo que rige: %2")
                    .arg(regla.campo, regla.texto.expresion));
        const Preparada::Guarda guarda(*regla.condicion);
        for (std::size_t i = 0; i < regla.columnas.size(); ++i)
            Liga(*regla.condicion, static_cast<int>(i) + 1, fila[regla.columnas[i]]);
        if (!regla.condicion->Paso() || regla.condicion->EsNulo(0) ||
            regla.condicion->Entero(0) == 0)
            Incumplida(regla);
    }
}

} // namespace tolmo::data::access
