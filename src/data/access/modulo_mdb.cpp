#include "data/access/modulo_mdb.h"
#include "data/access/base.h"
#include "data/access/colacion.h"
#include "data/access/dispersion_mdb.h"
#include "data/access/errores_access.h"
#include "data/access/fichero_access.h"
#include "data/access/lectura_mdb.h"
#include "data/access/reglas_mdb.h"
#include "data/access/valores_mdb.h"
#include <map>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

constexpr const char* NombreModulo = "kov_mdb";

/// What the tables of a connection share.
struct Entorno {
    sqlite3* base;
    FicheroAccess& fichero;
    const Esquema& esquema;
};

/// The columns that have another beside them for what a double can't hold.
std::vector<std::size_t> Exactas(const mdb::Definicion& definicion)
{
    std::vector<std::size_t> exactas;
    for (std::size_t i = 0; i < definicion.columnas.size(); ++i) {
        if (PasaDeDoble(definicion.columnas[i]))
            exactas.push_back(i);
    }
    return exactas;
}

/// A table of the file as the engine knows it.
struct TablaVirtual : sqlite3_vtab {
    TablaVirtual(const Entorno& suEntorno, mdb::Tabla suTabla)
        : sqlite3_vtab{}, entorno(suEntorno), fichero(suEntorno.fichero), tabla(std::move(suTabla))
    {
    }

    /// What was gathered of a column; made when it is asked for the second time, as the first time
    /// reading all rows does the same.
    const DispersionMdb* Dispersion(int columna)
    {
        if (version != fichero.Version()) {
            dispersiones.clear();
            pedidas.clear();
            version = fichero.Version();
        }
        if (pedidas[columna]++ == 0)
            return nullptr;
        auto hecha = dispersiones.find(columna);
        if (hecha == dispersiones.end())
            hecha =
                dispersiones
                    .try_emplace(columna, tabla,
                                 tabla.definicion().columnas.at(static_cast<std::size_t>(columna)))
                    .first;
        return &hecha->second;
    }

    mdb::TablaEscribible& Escribible()
    {
        // A table that was made known in this transaction isn't told of its beginning.
        fichero.Empieza();
        if (!escribible)
            escribible.emplace(fichero.Escribible(tabla));
        fichero.NotaCambio();
        return *escribible;
    }

    ReglasMdb& Reglas()
    {
        if (!reglas)
            reglas.emplace(entorno.base, entorno.esquema, tabla, fichero.ExigenciasDe(tabla));
        return *reglas;
    }

    const Entorno& entorno;
    FicheroAccess& fichero;
    mdb::Tabla tabla;
    std::vector<std::size_t> exactas = Exactas(tabla.definicion());
    std::optional<mdb::TablaEscribible> escribible{}; ///< for the length of a transaction
    std::optional<ReglasMdb> reglas{};
    std::map<int, DispersionMdb> dispersiones{};
    std::map<int, int> pedidas{};
    quint64 version = 0;
};

struct CursorVirtual : sqlite3_vtab_cursor {
    explicit CursorVirtual(TablaVirtual& tabla) : sqlite3_vtab_cursor{}, lectura(tabla.tabla) {}

    LecturaMdb lectura;
    bool fin = false;
};

TablaVirtual& De(sqlite3_vtab* tabla)
{
    return *static_cast<TablaVirtual*>(tabla);
}
TablaVirtual& TablaDe(sqlite3_vtab_cursor* cursor)
{
    return De(cursor->pVtab);
}
CursorVirtual& De(sqlite3_vtab_cursor* cursor)
{
    return *static_cast<CursorVirtual*>(cursor);
}

int Falla(sqlite3_vtab* tabla, const QString& descripcion, int codigo = SQLITE_ERROR)
{
    sqlite3_free(tabla->zErrMsg);
    tabla->zErrMsg = sqlite3_mprintf("%s", descripcion.toUtf8().constData());
    return codigo;
}

/// An error of the engine's own is a matter of a field's value: others have codes of their own, so
/// that who changes a row of an open set is told which it was.
int Falla(sqlite3_vtab* tabla, const mdb::ErrorMdb& error)
{
    switch (error.motivo()) {
    case mdb::Motivo::Valor:
        return Falla(tabla, error.Descripcion());
    case mdb::Motivo::ClaveRepetida:
    case mdb::Motivo::SinValor:
        // They name the field, as the engine does of its own tables.
        return Falla(tabla, error.frase(), SQLITE_CONSTRAINT);
    case mdb::Motivo::Relacion:
        return Falla(tabla, error.Descripcion(), SQLITE_CONSTRAINT);
    default:
        return Falla(tabla, error.Descripcion(), SQLITE_PERM);
    }
}

/// The engine is of another language: no error may pass through it but by its own way.
template <class Accion> int Hace(sqlite3_vtab* tabla, Accion accion)
{
    try {
        return accion();
    } catch (const mdb::ErrorMdb& error) {
        return Falla(tabla, error);
    } catch (const ErrorDatos& error) {
        return Falla(tabla, error.Descripcion());
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

QString Declara(const mdb::Definicion& definicion)
{
    QStringList columnas;
    for (const mdb::Columna& columna : definicion.columnas) {
        const TipoDeclarado tipo = TipoDeColumna(columna);
        QString declarada = Identificador(columna.nombre) + u' ' + Declaracion(tipo);
        if (EsTexto(tipo.tipo))
            declarada += QStringLiteral(" COLLATE ") + QLatin1String(Colacion);
        columnas << declarada;
    }
    for (const std::size_t exacta : Exactas(definicion))
        columnas << Identificador(ColumnaExacta(definicion.columnas[exacta].nombre)) +
                        QStringLiteral(" HIDDEN");
    return QStringLiteral("CREATE TABLE x (%1)").arg(columnas.join(QStringLiteral(", ")));
}

/// The engine hands an argument on as it is written: in hexadecimal, behind a letter, it needs no
/// quotes.
QString AArgumento(const QString& texto)
{
    return u'x' + QString::fromLatin1(texto.toUtf8().toHex());
}

QString DeArgumento(const char* argumento)
{
    return QString::fromUtf8(QByteArray::fromHex(argumento + 1));
}

int Conecta(sqlite3* base, void* entorno, int argc, const char* const* argv, sqlite3_vtab** tabla,
            char** error)
{
    try {
        if (argc < 3)
            return SQLITE_ERROR;
        const auto& suyo = *static_cast<const Entorno*>(entorno);
        auto nueva = std::make_unique<TablaVirtual>(
            suyo, argc < 5 ? suyo.fichero.Tabla(QString::fromUtf8(argv[2]))
                           : suyo.fichero.TablaDeOtro(DeArgumento(argv[3]), DeArgumento(argv[4])));
        const QByteArray declaracion = Declara(nueva->tabla.definicion()).toUtf8();
        const int resultado = sqlite3_declare_vtab(base, declaracion.constData());
        if (resultado != SQLITE_OK)
            return resultado;
        *tabla = nueva.release();
        return SQLITE_OK;
    } catch (const ErrorDatos& fallo) {
        *error = sqlite3_mprintf("%s", fallo.Descripcion().toUtf8().constData());
        return SQLITE_ERROR;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

int Desconecta(sqlite3_vtab* tabla)
{
    delete &De(tabla);
    return SQLITE_OK;
}

int EligeIndice(sqlite3_vtab* tabla, sqlite3_index_info* info)
{
    return Hace(tabla, [&] {
        EligePlan(De(tabla).tabla.definicion(), *info);
        return SQLITE_OK;
    });
}

int Abre(sqlite3_vtab* tabla, sqlite3_vtab_cursor** cursor)
{
    return Hace(tabla, [&] {
        *cursor = new CursorVirtual(De(tabla));
        return SQLITE_OK;
    });
}

int Cierra(sqlite3_vtab_cursor* cursor)
{
    delete &De(cursor);
    return SQLITE_OK;
}

int Avanza(sqlite3_vtab_cursor* cursor)
{
    return Hace(cursor->pVtab, [&] {
        De(cursor).fin = !De(cursor).lectura.Siguiente();
        return SQLITE_OK;
    });
}

void EmpiezaPorDispersion(TablaVirtual& tabla, LecturaMdb& lectura, int columna,
                          sqlite3_value* valor)
{
    const mdb::Columna& suya =
        tabla.tabla.definicion().columnas.at(static_cast<std::size_t>(columna));
    const auto margen = MargenDe(valor, suya);
    const DispersionMdb* dispersion =
        margen && margen->exacto ? tabla.Dispersion(columna) : nullptr;
    auto filas = dispersion ? dispersion->Filas(margen->desde) : std::nullopt;
    if (filas)
        lectura.EmpiezaPorFilas(std::move(*filas));
    else
        lectura.EmpiezaPorTodo();
}

int Filtra(sqlite3_vtab_cursor* cursor, int numero, const char* partes, int argc,
           sqlite3_value** argv)
{
    return Hace(cursor->pVtab, [&] {
        const PlanLectura plan = PlanLectura::De(numero, partes);
        LecturaMdb& lectura = De(cursor).lectura;
        const std::span<sqlite3_value* const> argumentos(argv, static_cast<std::size_t>(argc));
        switch (plan.modo) {
        case PlanLectura::Modo::Todo:
            lectura.EmpiezaPorTodo();
            break;
        case PlanLectura::Modo::Fila:
            lectura.EmpiezaPorFila(
                mdb::Puntero::De(static_cast<quint32>(sqlite3_value_int64(argv[0]))));
            break;
        case PlanLectura::Modo::Indice:
            lectura.EmpiezaPorIndice(plan, argumentos);
            break;
        case PlanLectura::Modo::Dispersion:
            if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
                lectura.EmpiezaSinFilas();
            else
                EmpiezaPorDispersion(TablaDe(cursor), lectura, plan.indice, argv[0]);
            break;
        }
        return Avanza(cursor);
    });
}

int EsElFin(sqlite3_vtab_cursor* cursor)
{
    return De(cursor).fin ? 1 : 0;
}

int DaColumna(sqlite3_vtab_cursor* cursor, sqlite3_context* contexto, int columna)
{
    return Hace(cursor->pVtab, [&] {
        // A column that an UPDATE leaves alone isn't read, nor written.
        if (sqlite3_vtab_nochange(contexto))
            return SQLITE_OK;
        const auto& columnas = TablaDe(cursor).tabla.definicion().columnas;
        const auto lugar = static_cast<std::size_t>(columna);
        const mdb::Fila& fila = De(cursor).lectura.Fila();
        if (lugar < columnas.size())
            Entrega(contexto, fila.Lee(columnas[lugar]));
        else
            EntregaExacta(contexto,
                          fila.Lee(columnas[TablaDe(cursor).exactas.at(lugar - columnas.size())]));
        return SQLITE_OK;
    });
}

int DaFila(sqlite3_vtab_cursor* cursor, sqlite3_int64* fila)
{
    *fila = De(cursor).lectura.Puntero().Numero();
    return SQLITE_OK;
}

void Inserta(TablaVirtual& tabla, std::span<sqlite3_value* const> valores, sqlite3_int64* fila)
{
    const auto& columnas = tabla.tabla.definicion().columnas;
    std::vector<mdb::Dato> datos;
    for (std::size_t i = 0; i < columnas.size(); ++i)
        datos.push_back(DatoDe(valores[i], columnas[i]));
    mdb::TablaEscribible& escribible = tabla.Escribible();
    ReglasMdb& reglas = tabla.Reglas();
    if (reglas.Hay()) {
        // Nobody asks whether a column that is left without a value keeps its rule.
        std::vector<bool> puestas;
        for (const mdb::Dato& dato : datos)
            puestas.push_back(!mdb::EsNulo(dato));
        reglas.Comprueba(datos, puestas);
    }
    *fila = escribible.Inserta(datos).Numero();
}

/// The row as the changes leave it; of the other columns, those that a rule asks for.
void CompruebaReglas(TablaVirtual& tabla, mdb::Puntero donde,
                     std::span<const mdb::TablaEscribible::Cambio> cambios)
{
    ReglasMdb& reglas = tabla.Reglas();
    const auto fila = reglas.Hay() ? tabla.tabla.FilaEn(donde) : std::nullopt;
    if (!fila)
        return;
    const auto& columnas = tabla.tabla.definicion().columnas;
    std::vector<mdb::Dato> datos(columnas.size());
    std::vector<bool> cambia(columnas.size(), false);
    for (const mdb::TablaEscribible::Cambio& cambio : cambios) {
        datos[cambio.columna] = cambio.valor;
        cambia[cambio.columna] = true;
    }
    for (std::size_t i = 0; i < columnas.size(); ++i)
        if (!cambia[i] && reglas.Usa(i))
            datos[i] = fila->Lee(columnas[i]);
    reglas.Comprueba(datos, cambia);
}

void Actualiza(TablaVirtual& tabla, mdb::Puntero fila, std::span<sqlite3_value* const> valores)
{
    const auto& columnas = tabla.tabla.definicion().columnas;
    std::vector<mdb::TablaEscribible::Cambio> cambios;
    for (std::size_t i = 0; i < columnas.size(); ++i)
        if (!sqlite3_value_nochange(valores[i]))
            cambios.push_back({.columna = i, .valor = DatoDe(valores[i], columnas[i])});
    mdb::TablaEscribible& escribible = tabla.Escribible();
    CompruebaReglas(tabla, fila, cambios);
    escribible.Actualiza(fila, cambios);
}

/// One value: a row to be deleted. Else the row, NULL for a new one, its new number, its columns.
int Cambia(sqlite3_vtab* tabla, int argc, sqlite3_value** argv, sqlite3_int64* fila)
{
    return Hace(tabla, [&] {
        const auto donde = [&] {
            return mdb::Puntero::De(static_cast<quint32>(sqlite3_value_int64(argv[0])));
        };
        const std::span<sqlite3_value* const> todos(argv, static_cast<std::size_t>(argc));
        if (argc == 1)
            De(tabla).Escribible().Borra(donde());
        else if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
            Inserta(De(tabla), todos.subspan(2), fila);
        else
            Actualiza(De(tabla), donde(), todos.subspan(2));
        return SQLITE_OK;
    });
}

/// The parts of a transaction, which each table that is changed in it hears of.
template <auto Parte> int EnTransaccion(sqlite3_vtab* tabla)
{
    return Hace(tabla, [&] {
        De(tabla).escribible.reset();
        (De(tabla).fichero.*Parte)();
        return SQLITE_OK;
    });
}
/// Whoever writes takes the turn before the statement begins, and finds out then what is new.
int EmpiezaTransaccion(sqlite3_vtab* tabla)
{
    return Hace(tabla, [&] {
        De(tabla).escribible.reset();
        if (De(tabla).fichero.Empieza())
            Rechaza(QStringLiteral(
                "Otro programa ha cambiado el fichero entretanto: repita la operación"));
        return SQLITE_OK;
    });
}

template <auto Parte> int EnPunto(sqlite3_vtab* tabla, int numero)
{
    return Hace(tabla, [&] {
        De(tabla).escribible.reset();
        (De(tabla).fichero.*Parte)(numero);
        return SQLITE_OK;
    });
}

int Acaba(sqlite3_vtab* tabla)
{
    De(tabla).escribible.reset();
    return SQLITE_OK;
}

/// The engine tells the end of the statement that takes a table away to the others only: its mark
/// would stay and be taken for that of a later statement.
int Destruye(sqlite3_vtab* tabla)
{
    const int resultado = EnPunto<&FicheroAccess::Suelta>(tabla, 0);
    return resultado == SQLITE_OK ? Desconecta(tabla) : resultado;
}

/// The engine tells the end of a transaction to the tables that it knows then; one that was changed
/// and made unknown again in the same transaction hears nothing. \returns not 0 when the file can't
/// be written: the engine undoes its own part then
int AlConfirmar(void* fichero)
{
    try {
        static_cast<FicheroAccess*>(fichero)->Confirma();
        return 0;
    } catch (const ErrorDatos& error) {
        static_cast<FicheroAccess*>(fichero)->NotaFalloAlConfirmar(error.Descripcion());
        return 1;
    }
}

void AlDeshacer(void* fichero)
{
    try {
        static_cast<FicheroAccess*>(fichero)->Deshace();
    } catch (const ErrorDatos&) {
        // The file is as it was; whatever is wrong with it, the next statement tells.
    }
}

sqlite3_module Modulo()
{
    sqlite3_module modulo{};
    modulo.iVersion = 2;
    modulo.xCreate = Conecta;
    modulo.xConnect = Conecta;
    modulo.xBestIndex = EligeIndice;
    modulo.xDisconnect = Desconecta;
    modulo.xDestroy = Destruye;
    modulo.xOpen = Abre;
    modulo.xClose = Cierra;
    modulo.xFilter = Filtra;
    modulo.xNext = Avanza;
    modulo.xEof = EsElFin;
    modulo.xColumn = DaColumna;
    modulo.xRowid = DaFila;
    modulo.xUpdate = Cambia;
    modulo.xBegin = EmpiezaTransaccion;
    modulo.xSync = EnTransaccion<&FicheroAccess::Confirma>;
    modulo.xCommit = Acaba;
    modulo.xRollback = EnTransaccion<&FicheroAccess::Deshace>;
    modulo.xSavepoint = EnPunto<&FicheroAccess::Marca>;
    modulo.xRelease = EnPunto<&FicheroAccess::Suelta>;
    modulo.xRollbackTo = EnPunto<&FicheroAccess::VuelveA>;
    return modulo;
}

} // namespace

void RegistraModuloMdb(sqlite3* base, FicheroAccess& fichero, const Esquema& esquema)
{
    static const sqlite3_module modulo = Modulo();
    const auto suelta = [](void* entorno) { delete static_cast<Entorno*>(entorno); };
    if (sqlite3_create_module_v2(base, NombreModulo, &modulo, new Entorno{base, fichero, esquema},
                                 suelta) != SQLITE_OK)
        Rechaza(QString::fromUtf8(sqlite3_errmsg(base)));
    fichero.MiraTransaccion([base] { return sqlite3_get_autocommit(base) == 0; });
    sqlite3_commit_hook(base, AlConfirmar, &fichero);
    sqlite3_rollback_hook(base, AlDeshacer, &fichero);
}

QString ColumnaExacta(const QString& columna)
{
    return QStringLiteral("kov_exacta ") + columna;
}

QString SqlConectaTabla(const QString& nombre)
{
    return QStringLiteral("CREATE VIRTUAL TABLE %1 USING %2")
        .arg(Identificador(nombre), QLatin1String(NombreModulo));
}

QString SqlConectaTabla(const QString& nombre, const QString& fichero, const QString& tabla)
{
    return SqlConectaTabla(nombre) +
           QStringLiteral("(%1,%2)").arg(AArgumento(fichero), AArgumento(tabla));
}

QString SqlDesconectaTabla(const QString& nombre)
{
    return QStringLiteral("DROP TABLE IF EXISTS %1").arg(Identificador(nombre));
}

} // namespace tolmo::data::access
