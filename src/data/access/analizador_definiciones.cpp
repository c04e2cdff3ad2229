#include "data/access/analizador.h"
#include "data/access/errores_access.h"

namespace tolmo::data::access {
namespace {

/// False for a width of nothing, and for a decimal number of more digits than there are.
bool CabeElAncho(const QString& medidas, const TipoDeclarado& tipo)
{
    const int primera = medidas.section(u',', 0, 0).toInt();
    const int segunda = medidas.section(u',', 1, 1).toInt();
    if (medidas.isEmpty() || tipo.precision == 0)
        return medidas.isEmpty() || primera > 0;
    return primera == tipo.precision && segunda == tipo.escala;
}

} // namespace

Sentencia Analizador::LeeCreacion()
{
    if (Si("TABLE"))
        return LeeTablaNueva();
    if (Si("VIEW") || Si("PROCEDURE") || Si("PROC"))
        return LeeConsultaNueva();
    const bool unico = Si("UNIQUE");
    Exige("INDEX");
    return LeeIndiceNuevo(unico);
}

Sentencia Analizador::LeeTablaNueva()
{
    TablaNueva tabla;
    tabla.nombre = ExigeNombre("el nombre de la tabla");
    ExigeSigno("(");
    do {
        const bool restriccion = Mira().Es("CONSTRAINT") ||
                                 (Mira().Es("PRIMARY") && Mira(1).Es("KEY")) ||
                                 (Mira().Es("UNIQUE") && Mira(1).EsSigno("("));
        if (restriccion)
            tabla.indices.push_back(LeeRestriccion(tabla.nombre));
        else
            tabla.columnas.push_back(LeeColumnaNueva(&tabla));
    } while (SiSigno(","));
    ExigeSigno(")");
    return tabla;
}

ColumnaNueva Analizador::LeeColumnaNueva(TablaNueva* tabla)
{
    ColumnaNueva columna;
    columna.nombre = ExigeNombre("el nombre del campo");
    columna.tipo = LeeTipoColumna(columna);
    for (;;) {
        if (Si("NOT")) {
            Exige("NULL");
            columna.obligatoria = true;
        } else if (Si("NULL")) {
            columna.obligatoria = false;
        } else if (Si("DEFAULT")) {
            columna.defecto = LeeSigno();
        } else if (tabla &&
                   (Mira().Es("CONSTRAINT") || Mira().Es("PRIMARY") || Mira().Es("UNIQUE"))) {
            IndiceNuevo indice = LeeRestriccion(tabla->nombre);
            if (indice.columnas.empty())
                indice.columnas.push_back({columna.nombre, false});
            tabla->indices.push_back(std::move(indice));
        } else {
            return columna;
        }
    }
}

TipoDeclarado Analizador::LeeTipoColumna(ColumnaNueva& columna)
{
    const qsizetype posicion = Mira().posicion;
    QString declarado = ExigeNombre("un tipo");
    if (Mira().Es("VARYING"))
        Toma();
    columna.contador =
        declarado.compare(QLatin1String("COUNTER"), Qt::CaseInsensitive) == 0 ||
        declarado.compare(QLatin1String("AUTOINCREMENT"), Qt::CaseInsensitive) == 0 ||
        declarado.compare(QLatin1String("IDENTITY"), Qt::CaseInsensitive) == 0;
    QString medidas;
    if (SiSigno("(")) {
        while (Mira().ficha == Ficha::Entero || Mira().EsSigno(",") || Mira().EsSigno("-"))
            medidas += Toma().texto;
        ExigeSigno(")");
        declarado += u'(' + medidas + u')';
    }
    const TipoDeclarado tipo = LeeTipo(declarado);
    if (tipo.tipo == Tipo::Desconocido)
        RechazaEn(posicion, QStringLiteral("No se conoce el tipo de datos %1").arg(declarado));
    if (!CabeElAncho(medidas, tipo))
        RechazaEn(posicion,
                  QStringLiteral("El tipo de datos %1 no puede tener esa medida").arg(declarado));
    return tipo;
}

// CONSTRAINT name PRIMARY KEY|UNIQUE [(columns)], with or without its name.
IndiceNuevo Analizador::LeeRestriccion(const QString& tabla)
{
    IndiceNuevo indice;
    indice.tabla = tabla;
    indice.unico = true;
    if (Si("CONSTRAINT"))
        indice.nombre = ExigeNombre("el nombre de la restricción");
    if (Si("PRIMARY")) {
        Exige("KEY");
        indice.primario = true;
        indice.sinNulos = true;
    } else {
        Exige("UNIQUE");
    }
    if (indice.nombre.isEmpty())
        indice.nombre = NombreDeIndice(indice.primario);
    if (Mira().EsSigno("("))
        indice.columnas = LeeColumnasIndice();
    return indice;
}

QString Analizador::NombreDeIndice(bool primario)
{
    return primario ? QStringLiteral("PrimaryKey")
                    : QStringLiteral("Unico%1").arg(++indicesSinNombre_);
}

std::vector<ColumnaIndice> Analizador::LeeColumnasIndice()
{
    std::vector<ColumnaIndice> columnas;
    ExigeSigno("(");
    do {
        ColumnaIndice columna;
        columna.nombre = ExigeNombre("un campo");
        columna.descendente = Si("DESC");
        if (!columna.descendente)
            Si("ASC");
        columnas.push_back(std::move(columna));
    } while (SiSigno(","));
    ExigeSigno(")");
    return columnas;
}

Sentencia Analizador::LeeIndiceNuevo(bool unico)
{
    IndiceNuevo indice;
    indice.unico = unico;
    indice.nombre = ExigeNombre("el nombre del índice");
    Exige("ON");
    indice.tabla = ExigeNombre("una tabla");
    indice.columnas = LeeColumnasIndice();
    if (Si("WITH")) {
        if (Si("PRIMARY")) {
            indice.unico = indice.primario = indice.sinNulos = true;
        } else if (Si("DISALLOW")) {
            Exige("NULL");
            indice.sinNulos = true;
        } else {
            Exige("IGNORE");
            Exige("NULL");
        }
    }
    return indice;
}

Sentencia Analizador::LeeConsultaNueva()
{
    ConsultaNueva consulta;
    consulta.nombre = ExigeNombre("el nombre de la consulta");
    Exige("AS");
    consulta.texto = sql_.mid(Mira().posicion).trimmed();
    while (consulta.texto.endsWith(u';'))
        consulta.texto.chop(1);
    // Read once so that a mistake shows when the query is stored and not when it is used.
    const Guardada dentro = AnalizaGuardada(consulta.texto);
    if (std::holds_alternative<ConsultaNueva>(dentro.sentencia))
        Inesperado("una consulta");
    p_ = lexemas_.size() - 1;
    return consulta;
}

Sentencia Analizador::LeeCambioTabla()
{
    CambioTabla cambio;
    Exige("TABLE");
    cambio.posicion = Mira().posicion;
    cambio.tabla = ExigeNombre("una tabla");
    const bool anade = Mira().Es("ADD");
    if (!anade && !Mira().Es("DROP") && !Mira().Es("ALTER"))
        Inesperado("ADD, DROP o ALTER");
    const bool cambia = Toma().Es("ALTER");
    const bool restriccion = Mira().Es("CONSTRAINT") || (anade && Mira().Es("PRIMARY")) ||
                             (anade && Mira().Es("UNIQUE"));
    if (restriccion && anade) {
        cambio.clase = CambioTabla::Clase::AnadeIndice;
        cambio.indice = LeeRestriccion(cambio.tabla);
        return cambio;
    }
    if (restriccion && Si("CONSTRAINT")) {
        cambio.clase = CambioTabla::Clase::QuitaIndice;
        cambio.indice.nombre = ExigeNombre("el nombre de la restricción");
        return cambio;
    }
    Si("COLUMN");
    if (anade || cambia) {
        cambio.clase = anade ? CambioTabla::Clase::Anade : CambioTabla::Clase::Cambia;
        cambio.columna = LeeColumnaNueva(nullptr);
    } else {
        cambio.clase = CambioTabla::Clase::Quita;
        cambio.columna.nombre = ExigeNombre("un campo");
    }
    return cambio;
}

Sentencia Analizador::LeeEliminacion()
{
    Eliminacion eliminacion;
    if (Si("TABLE")) {
        eliminacion.nombre = ExigeNombre("una tabla");
    } else if (Si("INDEX")) {
        eliminacion.clase = Eliminacion::Clase::Indice;
        eliminacion.nombre = ExigeNombre("un índice");
        Exige("ON");
        eliminacion.tabla = ExigeNombre("una tabla");
    } else {
        if (!Si("VIEW") && !Si("PROCEDURE"))
            Exige("PROC");
        eliminacion.clase = Eliminacion::Clase::Consulta;
        eliminacion.nombre = ExigeNombre("una consulta");
    }
    return eliminacion;
}

} // namespace tolmo::data::access
