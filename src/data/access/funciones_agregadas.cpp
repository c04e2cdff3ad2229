#include "data/access/funciones.h"
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

// First and Last: the value of the first and of the last row of a group, Null if it is Null there.
// The engine gives each group one zeroed place, which holds the kept value.
void Guarda(sqlite3_context* contexto, sqlite3_value* valor, bool siempre)
{
    auto** lugar =
        static_cast<sqlite3_value**>(sqlite3_aggregate_context(contexto, sizeof(sqlite3_value*)));
    if (!lugar || (*lugar && !siempre))
        return;
    sqlite3_value_free(*lugar);
    *lugar = sqlite3_value_dup(valor);
}

void PasoPrimero(sqlite3_context* contexto, int, sqlite3_value** valores)
{
    Guarda(contexto, valores[0], false);
}

void PasoUltimo(sqlite3_context* contexto, int, sqlite3_value** valores)
{
    Guarda(contexto, valores[0], true);
}

void Entrega(sqlite3_context* contexto)
{
    auto** lugar = static_cast<sqlite3_value**>(sqlite3_aggregate_context(contexto, 0));
    if (!lugar || !*lugar) {
        sqlite3_result_null(contexto);
        return;
    }
    sqlite3_result_value(contexto, *lugar);
    sqlite3_value_free(*lugar);
    *lugar = nullptr;
}

} // namespace

void RegistraAgregados(sqlite3* base)
{
    const int modo = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(base, "kov_first", 1, modo, nullptr, nullptr, PasoPrimero, Entrega,
                               nullptr);
    sqlite3_create_function_v2(base, "kov_last", 1, modo, nullptr, nullptr, PasoUltimo, Entrega,
                               nullptr);
}

} // namespace tolmo::data::access
