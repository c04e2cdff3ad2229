#include "data/access/proveedor_access.h"
#include "data/access/analizador.h"
#include "data/access/colacion.h"
#include "data/access/consultas_guardadas.h"
#include "data/access/define_mdb.h"
#include "data/access/errores_access.h"
#include "data/access/lectura.h"
#include "data/access/modulo_mdb.h"
#include "data/access/predeterminados.h"
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

// Forms of statements that are kept; a run asks some dozens.
constexpr int ListasGuardadas = 256;

bool LlevaParametros(const std::vector<Lexema>& lexemas)
{
    for (const char* palabra : {"SELECT", "INSERT", "UPDATE", "DELETE"}) {
        if (lexemas[0].Es(palabra))
            return true;
    }
    return lexemas[0].EsSigno("(");
}

} // namespace

ProveedorAccess::ProveedorAccess(const QString& ruta, Base::Modo modo, Ahora ahora)
    : ahora_(std::move(ahora)), base_(ruta, modo, ahora_), esquema_(base_), apoyos_(base_),
      versionDatos_(base_.Prepara(QStringLiteral("PRAGMA data_version"))),
      versionEsquema_(base_.Prepara(QStringLiteral("PRAGMA schema_version"))),
      listas_(ListasGuardadas)
{
}

ProveedorAccess::ProveedorAccess(std::unique_ptr<FicheroAccess> fichero, Ahora ahora)
    : ahora_(std::move(ahora)), fichero_(std::move(fichero)),
      base_(QString(), Base::Modo::Propia, ahora_), esquema_(base_, fichero_.get()), apoyos_(base_),
      versionDatos_(base_.Prepara(QStringLiteral("PRAGMA data_version"))),
      versionEsquema_(base_.Prepara(QStringLiteral("PRAGMA schema_version"))),
      listas_(ListasGuardadas)
{
    definiciones_ =
        std::make_unique<DefinicionesMdb>(base_, *fichero_, esquema_, [this] { listas_.clear(); });
    RegistraModuloMdb(base_.Manejo(), *fichero_, esquema_);
}

// What another process does to the tables, or to the stored queries, outdates what is kept here.
void ProveedorAccess::NotaCambiosAjenos()
{
    if (fichero_)
        return;
    versionDatos_.Paso();
    const qlonglong datos = versionDatos_.Entero(0);
    versionDatos_.Reinicia();
    if (datos == datosVistos_)
        return;
    datosVistos_ = datos;
    versionEsquema_.Paso();
    const qlonglong esquema = versionEsquema_.Entero(0);
    versionEsquema_.Reinicia();
    const bool guardadas = esquema_.Busca(QLatin1String(TablaConsultas)) != nullptr;
    if (esquema != esquemaVisto_ || guardadas || apoyos_.Hay())
        Olvida();
    esquemaVisto_ = esquema;
}

/// Begins a statement on the file; what another program has changed outdates what is kept here.
void ProveedorAccess::MiraElFichero(EnFichero& sentencia)
{
    if (!fichero_)
        return;
    sentencia.emplace(*fichero_);
    if (!sentencia->HayCambios())
        return;
    listas_.clear();
    esquema_.Desconecta();
}

void ProveedorAccess::Olvida()
{
    listas_.clear();
    apoyos_.Olvida();
    esquema_.Olvida();
}

bool ProveedorAccess::EsDeFichero(const QString& tabla) const
{
    const TablaVista* vista = esquema_.Busca(tabla);
    return vista && vista->deFichero;
}

/// The references may be kept aside while somebody has the file open, so that a run goes on.
bool ProveedorAccess::PuedeApartar(const QString& sql) const
{
    return fichero_ && fichero_->EstabaEnUso() &&
           sql.contains(QLatin1String(TablaReferencias), Qt::CaseInsensitive) &&
           EsDeFichero(QLatin1String(TablaReferencias));
}

void ProveedorAccess::ApartaReferencias()
{
    EnFichero enFichero;
    MiraElFichero(enFichero);
    const QString tabla = Identificador(esquema_.Busca(QLatin1String(TablaReferencias))->nombre);
    listas_.clear();
    base_.Ejecuta(
        QStringLiteral("CREATE TEMP TABLE kov_aparte AS SELECT * FROM main.%1").arg(tabla));
    base_.Ejecuta(QStringLiteral("DROP TABLE main.%1").arg(tabla));
    base_.Ejecuta(
        QStringLiteral("CREATE TABLE main.%1 (FAMKOV nvarchar(20) COLLATE %2, FAMPRESTA INT)")
            .arg(tabla, QLatin1String(Colacion)));
    base_.Ejecuta(QStringLiteral("INSERT INTO main.%1 SELECT * FROM temp.kov_aparte").arg(tabla));
    base_.Ejecuta(QStringLiteral("DROP TABLE temp.kov_aparte"));
    esquema_.Olvida();
}

Plan ProveedorAccess::TraduceTexto(const QString& sql, const std::vector<Lexema>& lexemas,
                                   bool actualizable)
{
    const Sentencia sentencia = Analiza(sql, lexemas);
    if (definiciones_ && definiciones_->Haz(sentencia))
        return {};
    Plan plan = Traductor(esquema_).Traduce(sentencia, actualizable);
    for (const auto& [tabla, columna] : plan.apoyos)
        apoyos_.Asegura(tabla, columna);
    return plan;
}

ProveedorAccess::Lista& ProveedorAccess::Prepara(const QString& sql, std::vector<Lexema>& lexemas,
                                                 bool actualizable, Lista& suelta)
{
    lexemas = Lexemas(sql);
    NotaCambiosAjenos();
    if (!LlevaParametros(lexemas)) {
        suelta.plan = TraduceTexto(sql, lexemas, actualizable);
        return suelta;
    }
    const QString forma = (actualizable ? u'+' : u' ') + Forma(lexemas);
    if (Lista* guardada = listas_.object(forma))
        return *guardada;
    suelta.plan = TraduceTexto(sql, lexemas, actualizable);
    if (suelta.plan.cambiaEsquema)
        return suelta;
    auto nueva = std::make_unique<Lista>();
    nueva->plan = std::move(suelta.plan);
    for (const QString& texto : nueva->plan.sql)
        nueva->preparadas.push_back(base_.Prepara(texto));
    Lista& guardada = *nueva;
    listas_.insert(forma, nueva.release());
    return guardada;
}

/// A statement that changes rows of the file waits for its turn to write, and is then translated
/// for the tables as whoever went before has left them.
ProveedorAccess::Lista& ProveedorAccess::PreparaEnTurno(const QString& sql,
                                                        std::vector<Lexema>& lexemas,
                                                        bool actualizable, Lista& suelta,
                                                        EnTurno& turno)
{
    Lista* lista = &Prepara(sql, lexemas, actualizable, suelta);
    if (!EsDeFichero(lista->plan.cambia) && !HaceTablaDelFichero(lista->plan))
        return *lista;
    turno.emplace(*fichero_);
    if (turno->HayCambios())
        turno->PoneAlDia([&] {
            suelta = {};
            listas_.clear();
            esquema_.Desconecta();
            lista = &Prepara(sql, lexemas, actualizable, suelta);
        });
    return *lista;
}

Filas ProveedorAccess::Consulta(const QString& sql, bool actualizable)
{
    EnFichero enFichero;
    MiraElFichero(enFichero);
    EnTurno turno;
    std::vector<Lexema> lexemas;
    Lista suelta;
    Lista& lista = PreparaEnTurno(sql, lexemas, actualizable, suelta, turno);
    Filas filas;
    if (!lista.plan.esConsulta) {
        EjecutaPlan(lista.plan, lexemas);
        return filas;
    }
    if (lista.preparadas.empty())
        lista.preparadas.push_back(base_.Prepara(lista.plan.sql[0]));
    Preparada& preparada = lista.preparadas[0];
    const Preparada::Guarda guarda(preparada);
    LigaLiterales(preparada, lexemas);
    LeeFilas(preparada, lista.plan, filas);
    return filas;
}

long long ProveedorAccess::Ejecuta(const QString& sql)
{
    try {
        return EjecutaUna(sql);
    } catch (const ErrorSql&) {
        if (fichero_ && !fichero_->FalloAlConfirmar().isEmpty())
            Rechaza(fichero_->FalloAlConfirmar());
        if (!PuedeApartar(sql))
            throw;
    }
    ApartaReferencias();
    return EjecutaUna(sql);
}

long long ProveedorAccess::EjecutaUna(const QString& sql)
{
    EnFichero enFichero;
    MiraElFichero(enFichero);
    EnTurno turno;
    std::vector<Lexema> lexemas;
    Lista suelta;
    Lista& lista = PreparaEnTurno(sql, lexemas, false, suelta, turno);
    if (lista.preparadas.empty())
        return EjecutaPlan(lista.plan, lexemas);
    Preparada& preparada = lista.preparadas[0];
    const Preparada::Guarda guarda(preparada);
    LigaLiterales(preparada, lexemas);
    while (preparada.Paso()) {
    }
    return lista.plan.esConsulta ? 0 : base_.Cambios();
}

bool ProveedorAccess::HaceTablaDelFichero(const Plan& plan) const
{
    return definiciones_ && plan.nueva && !EsDelPrograma(plan.nueva->nombre);
}

// Statements that change the schema go one after the other, as each needs what the one before made.
long long ProveedorAccess::EjecutaPlan(const Plan& plan, const std::vector<Lexema>& lexemas)
{
    if (plan.cambiaEsquema)
        Olvida();
    const auto haz = [&](const QStringList& textos) {
        for (const QString& texto : textos) {
            Preparada preparada = base_.Prepara(texto);
            LigaLiterales(preparada, lexemas);
            while (preparada.Paso()) {
            }
        }
    };
    if (HaceTablaDelFichero(plan)) {
        definiciones_->CreaYLlena(*plan.nueva, [&] { haz(plan.sql.mid(1)); });
        return 0;
    }
    Transaccion transaccion(base_);
    haz(plan.sql);
    const long long cambios = base_.Cambios();
    transaccion.Confirma();
    if (plan.cambiaEsquema)
        esquema_.Olvida();
    return plan.cambiaEsquema || plan.esConsulta ? 0 : cambios;
}

namespace {

QString ColumnaDeTabla(const Filas& filas, const QString& nombre)
{
    for (const Campo& campo : filas.campos) {
        if (Llave(campo.nombre) == Llave(nombre) && Llave(campo.tabla) == Llave(filas.tabla))
            return campo.columna;
    }
    return nombre;
}

const ColumnaVista& ColumnaDeCambio(const TablaVista& tabla, const Filas& filas,
                                    const QString& nombre)
{
    const ColumnaVista* columna = tabla.Busca(ColumnaDeTabla(filas, nombre));
    if (!columna)
        Rechaza(
            QStringLiteral("No se conoce el campo %1 en la tabla %2").arg(nombre, tabla.nombre));
    return *columna;
}

const TablaVista& TablaDe(const Esquema& esquema, const Filas& filas)
{
    const TablaVista* tabla = esquema.Busca(filas.tabla);
    if (!tabla)
        Rechaza(QStringLiteral("No se conoce la tabla %1").arg(filas.tabla));
    return *tabla;
}

} // namespace

/// The table of a record set, for changing its rows.
const TablaVista& ProveedorAccess::TablaEnTurno(const Filas& filas, EnTurno& turno)
{
    const TablaVista* tabla = &TablaDe(esquema_, filas);
    if (!tabla->deFichero)
        return *tabla;
    turno.emplace(*fichero_);
    if (turno->HayCambios())
        turno->PoneAlDia([&] {
            listas_.clear();
            esquema_.Desconecta();
            tabla = &TablaDe(esquema_, filas);
        });
    return *tabla;
}

// In an open record set a value that its column can't take is a matter of the field, with a number
// of its own.
template <class Accion> auto ProveedorAccess::ComoValor(Accion accion)
{
    try {
        return accion();
    } catch (const ErrorSql& error) {
        if (sqlite3_errcode(base_.Manejo()) == SQLITE_ERROR)
            RechazaValor(error.Descripcion());
        throw;
    }
}

void ProveedorAccess::Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios)
{
    if (cambios.empty())
        return;
    EnFichero enFichero;
    MiraElFichero(enFichero);
    EnTurno turno;
    const TablaVista& tabla = TablaEnTurno(filas, turno);
    QStringList lista;
    for (const auto& [nombre, valor] : cambios) {
        const ColumnaVista& columna = ColumnaDeCambio(tabla, filas, nombre);
        const Trozo trozo = TrozoDeValor(static_cast<int>(lista.size()) + 1, valor);
        lista << Identificador(columna.nombre) + QStringLiteral(" = ") + AsignaA(columna, trozo);
    }
    const int clave = static_cast<int>(cambios.size()) + 1;
    Preparada preparada =
        base_.Prepara(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?%3")
                          .arg(Identificador(tabla.nombre), lista.join(QStringLiteral(", ")),
                               QString::number(clave)));
    for (std::size_t i = 0; i < cambios.size(); ++i)
        LigaValor(preparada, static_cast<int>(i) + 1, cambios[i].second);
    LigaValor(preparada, clave, filas.claves.at(fila));
    ComoValor([&] { return preparada.Paso(); });
    if (base_.Cambios() == 0)
        Rechaza(QStringLiteral("El registro de %1 ya no existe").arg(tabla.nombre));
}

Valor ProveedorAccess::Inserta(const Filas& filas, const Cambios& cambios)
{
    EnFichero enFichero;
    MiraElFichero(enFichero);
    EnTurno turno;
    const TablaVista& tabla = TablaEnTurno(filas, turno);
    QStringList columnas;
    QStringList valores;
    for (const auto& [nombre, valor] : cambios) {
        const ColumnaVista& columna = ColumnaDeCambio(tabla, filas, nombre);
        columnas << Identificador(columna.nombre);
        valores << AsignaA(columna, TrozoDeValor(static_cast<int>(valores.size()) + 1, valor));
    }
    AnadePredeterminados(esquema_, tabla, columnas, valores);
    const QString sql =
        columnas.empty()
            ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(Identificador(tabla.nombre))
            : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(Identificador(tabla.nombre), columnas.join(QStringLiteral(", ")),
                       valores.join(QStringLiteral(", ")));
    Preparada preparada = base_.Prepara(sql);
    for (std::size_t i = 0; i < cambios.size(); ++i)
        LigaValor(preparada, static_cast<int>(i) + 1, cambios[i].second);
    ComoValor([&] { return preparada.Paso(); });
    return base_.UltimaFila();
}

void ProveedorAccess::Borra(const Filas& filas, std::size_t fila)
{
    EnFichero enFichero;
    MiraElFichero(enFichero);
    EnTurno turno;
    const TablaVista& tabla = TablaEnTurno(filas, turno);
    Preparada preparada = base_.Prepara(
        QStringLiteral("DELETE FROM %1 WHERE rowid = ?1").arg(Identificador(tabla.nombre)));
    LigaValor(preparada, 1, filas.claves.at(fila));
    preparada.Paso();
}

std::vector<TablaEsquema> ProveedorAccess::Tablas()
{
    EnFichero enFichero;
    MiraElFichero(enFichero);
    NotaCambiosAjenos();
    std::vector<TablaEsquema> tablas;
    for (const TablaVista* tabla : esquema_.Todas()) {
        if (tabla->enlace) {
            tablas.push_back({tabla->nombre, QStringLiteral("LINK")});
        } else if (tabla->nombre == QLatin1String(TablaConsultas)) {
            tablas.push_back({tabla->nombre, QStringLiteral("SYSTEM TABLE")});
        } else if (tabla->clase == TablaVista::Clase::Tabla) {
            tablas.push_back({tabla->nombre, QStringLiteral("TABLE")});
        } else if (tabla->clase == TablaVista::Clase::Vista ||
                   EsVista(esquema_.Busca(tabla->nombre)->texto)) {
            tablas.push_back({tabla->nombre, QStringLiteral("VIEW")});
        }
    }
    return tablas;
}

Plan ProveedorAccess::Traduccion(const QString& sql)
{
    std::vector<Lexema> lexemas = Lexemas(sql);
    NotaCambiosAjenos();
    if (LlevaParametros(lexemas))
        Forma(lexemas);
    return TraduceTexto(sql, lexemas, false);
}

} // namespace tolmo::data::access
