#include "data/access/consultas_guardadas.h"
#include "data/access/errores_access.h"
#include "data/access/traductor.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

// Too many queries inside one another: one that names itself would never end.
constexpr int HonduraMaxima = 20;

bool TieneDerecha(const Fuente& fuente)
{
    return fuente.clase == Fuente::Clase::Union &&
           (fuente.reunion == Fuente::Reunion::Derecha || TieneDerecha(*fuente.izquierda) ||
            TieneDerecha(*fuente.derecha));
}

QString PalabraReunion(Fuente::Reunion reunion)
{
    switch (reunion) {
    case Fuente::Reunion::Izquierda:
        return QStringLiteral(" LEFT JOIN ");
    case Fuente::Reunion::Derecha:
        return QStringLiteral(" RIGHT JOIN ");
    default:
        return QStringLiteral(" INNER JOIN ");
    }
}

} // namespace

QString Traductor::Fuentes(const std::vector<std::unique_ptr<Fuente>>& fuentes, Ambito& ambito)
{
    QHash<const Fuente*, QString> textos;
    for (const auto& fuente : fuentes)
        RecogeFuentes(*fuente, ambito, textos);
    QStringList lista;
    for (const auto& fuente : fuentes) {
        const QString sql = EscribeFuente(*fuente, ambito, textos);
        // The comma binds like a join: only a join to the right would take in what stands before.
        lista << (lista.isEmpty() || !TieneDerecha(*fuente) ? sql : u'(' + sql + u')');
    }
    return lista.join(QStringLiteral(", "));
}

void Traductor::RecogeFuentes(const Fuente& fuente, Ambito& ambito,
                              QHash<const Fuente*, QString>& textos)
{
    if (fuente.clase == Fuente::Clase::Union) {
        RecogeFuentes(*fuente.izquierda, ambito, textos);
        RecogeFuentes(*fuente.derecha, ambito, textos);
        return;
    }
    Ambito::FuenteVista vista;
    vista.alias = fuente.alias.isEmpty() ? fuente.nombre : fuente.alias;
    QString texto;
    if (fuente.clase == Fuente::Clase::Tabla) {
        RecogeTabla(fuente, vista, texto);
    } else {
        if (vista.alias.isEmpty())
            vista.alias = QStringLiteral("kov_sub%1").arg(ambito.fuentes.size() + 1);
        // What stands in FROM sees nothing of the sources beside it.
        texto = u'(' + TraduceConsulta(*fuente.consulta, nullptr, vista.columnas) + u')';
    }
    for (const auto& otra : ambito.fuentes) {
        if (Llave(otra.alias) == Llave(vista.alias))
            RechazaEn(fuente.posicion,
                      QStringLiteral("El nombre %1 está dos veces en FROM").arg(vista.alias));
    }
    textos.insert(&fuente, texto + QStringLiteral(" AS ") + Identificador(vista.alias));
    ambito.fuentes.push_back(std::move(vista));
}

void Traductor::RecogeTabla(const Fuente& fuente, Ambito::FuenteVista& vista, QString& texto)
{
    const TablaVista* tabla = fuente.base.isEmpty() ? esquema_.Busca(fuente.nombre)
                                                    : &esquema_.BuscaEn(fuente.base, fuente.nombre);
    if (!tabla)
        RechazaEn(fuente.posicion,
                  QStringLiteral("No se conoce la tabla o consulta %1").arg(fuente.nombre));
    if (tabla->clase != TablaVista::Clase::Guardada) {
        texto = Identificador(tabla->nombre);
        vista.columnas = tabla->columnas;
        if (tabla->conFila)
            vista.tabla = tabla->nombre;
        return;
    }
    const Guardada guardada = AbreGuardada(*tabla, fuente.posicion);
    const auto* consulta = std::get_if<Consulta>(&guardada.sentencia);
    if (!consulta || guardadas_ >= HonduraMaxima)
        RechazaEn(fuente.posicion,
                  QStringLiteral("No se puede leer de la consulta %1").arg(tabla->nombre));
    ++guardadas_;
    texto = EnConsulta(
        *tabla, [&] { return u'(' + TraduceConsulta(*consulta, nullptr, vista.columnas) + u')'; });
    --guardadas_;
}

QString Traductor::EscribeFuente(const Fuente& fuente, const Ambito& ambito,
                                 const QHash<const Fuente*, QString>& textos)
{
    if (fuente.clase != Fuente::Clase::Union)
        return textos.value(&fuente);
    const QString izquierda = EscribeFuente(*fuente.izquierda, ambito, textos);
    QString derecha = EscribeFuente(*fuente.derecha, ambito, textos);
    if (fuente.derecha->clase == Fuente::Clase::Union)
        derecha = u'(' + derecha + u')';
    return izquierda + PalabraReunion(fuente.reunion) + derecha + QStringLiteral(" ON ") +
           Filtro(*fuente.condicion, ambito);
}

} // namespace tolmo::data::access
