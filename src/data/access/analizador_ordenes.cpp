#include "data/access/analizador.h"

namespace tolmo::data::access {

Sentencia Analizador::LeeInsercion()
{
    Insercion insercion;
    Exige("INTO");
    insercion.posicion = Mira().posicion;
    insercion.tabla = ExigeNombre("una tabla");
    RechazaOtraBase();
    if (!EmpiezaConsulta() && SiSigno("(")) {
        do
            insercion.columnas << ExigeNombre("un campo");
        while (SiSigno(","));
        ExigeSigno(")");
    }
    if (Si("VALUES")) {
        ExigeSigno("(");
        insercion.valores = LeeLista();
        ExigeSigno(")");
    } else if (EmpiezaConsulta()) {
        insercion.consulta = LeeConsulta();
    } else {
        Inesperado("VALUES o SELECT");
    }
    return insercion;
}

Sentencia Analizador::LeeModificacion()
{
    Modificacion modificacion;
    modificacion.posicion = Mira().posicion;
    Si("DISTINCTROW");
    modificacion.fuentes = LeeFuentes();
    Exige("SET");
    do {
        Asignacion asignacion;
        if (!EsNombre())
            Inesperado("un campo");
        asignacion.columna = LeeColumna();
        ExigeSigno("=");
        asignacion.valor = LeeExpresion();
        modificacion.asignaciones.push_back(std::move(asignacion));
    } while (SiSigno(","));
    if (Si("WHERE"))
        modificacion.donde = LeeExpresion();
    return modificacion;
}

Sentencia Analizador::LeeBorrado()
{
    Borrado borrado;
    borrado.posicion = Mira().posicion;
    Si("DISTINCTROW");
    if (!Mira().Es("FROM")) {
        do
            borrado.elementos.push_back(LeeElemento());
        while (SiSigno(","));
    }
    Exige("FROM");
    borrado.fuentes = LeeFuentes();
    if (Si("WHERE"))
        borrado.donde = LeeExpresion();
    return borrado;
}

Sentencia Analizador::LeeLlamada()
{
    if (!Si("EXECUTE"))
        Si("EXEC");
    Llamada llamada;
    llamada.posicion = Mira().posicion;
    llamada.nombre = ExigeNombre("una sentencia o el nombre de una consulta");
    return llamada;
}

} // namespace tolmo::data::access
