#include "data/access/base.h"
#include "data/access/colacion.h"
#include "data/access/errores_access.h"
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

// A run writes in short transactions; another process waits for them this long.
constexpr int EsperaMilisegundos = 30000;

QString Descripcion(sqlite3* base)
{
    QString original = QString::fromUtf8(sqlite3_errmsg(base));
    const QString campo = original.section(QStringLiteral(": "), 1);
    switch (sqlite3_extended_errcode(base)) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return QStringLiteral("El valor está duplicado en un índice único: %1").arg(campo);
    case SQLITE_CONSTRAINT_NOTNULL:
        return QStringLiteral("El campo %1 no puede quedar sin valor").arg(campo);
    default:
        break;
    }
    switch (sqlite3_errcode(base)) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return QStringLiteral("La base de datos está bloqueada por otro proceso");
    case SQLITE_READONLY:
        return QStringLiteral("La base de datos es de sólo lectura");
    case SQLITE_NOTADB:
        return QStringLiteral("El fichero no es una base de datos");
    default:
        return original;
    }
}

[[noreturn]] void Falla(sqlite3* base)
{
    Rechaza(Descripcion(base));
}

} // namespace

Preparada::Preparada(sqlite3* base, const QString& sql)
{
    const QByteArray texto = sql.toUtf8();
    sqlite3_stmt* sentencia = nullptr;
    if (sqlite3_prepare_v3(base, texto.constData(), static_cast<int>(texto.size()) + 1,
                           SQLITE_PREPARE_PERSISTENT, &sentencia, nullptr) != SQLITE_OK)
        Falla(base);
    sentencia_.reset(sentencia);
}

void Preparada::Cierra::operator()(sqlite3_stmt* sentencia) const
{
    sqlite3_finalize(sentencia);
}

bool Preparada::Paso()
{
    const int resultado = sqlite3_step(sentencia_.get());
    if (resultado == SQLITE_ROW)
        return true;
    if (resultado != SQLITE_DONE) {
        const QString descripcion = Descripcion(sqlite3_db_handle(sentencia_.get()));
        Reinicia();
        Rechaza(descripcion);
    }
    return false;
}

void Preparada::Reinicia()
{
    sqlite3_reset(sentencia_.get());
}

void Preparada::Liga(int parametro, const QString& texto)
{
    const QByteArray bytes = texto.toUtf8();
    sqlite3_bind_text(sentencia_.get(), parametro, bytes.constData(),
                      static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

void Preparada::Liga(int parametro, const QByteArray& bytes)
{
    sqlite3_bind_blob64(sentencia_.get(), parametro, bytes.constData(),
                        static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT);
}

void Preparada::Liga(int parametro, double numero)
{
    sqlite3_bind_double(sentencia_.get(), parametro, numero);
}

void Preparada::Liga(int parametro, qlonglong numero)
{
    sqlite3_bind_int64(sentencia_.get(), parametro, numero);
}

void Preparada::LigaNulo(int parametro)
{
    sqlite3_bind_null(sentencia_.get(), parametro);
}

bool Preparada::EsNulo(int columna) const
{
    return Clase(columna) == SQLITE_NULL;
}

QString Preparada::Texto(int columna) const
{
    const std::string_view bytes = Bytes(columna);
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::string_view Preparada::Bytes(int columna) const
{
    const void* bytes = sqlite3_column_blob(sentencia_.get(), columna);
    const int largo = sqlite3_column_bytes(sentencia_.get(), columna);
    return {static_cast<const char*>(bytes), bytes ? static_cast<std::size_t>(largo) : 0};
}

qlonglong Preparada::Entero(int columna) const
{
    return sqlite3_column_int64(sentencia_.get(), columna);
}

double Preparada::Decimal(int columna) const
{
    return sqlite3_column_double(sentencia_.get(), columna);
}

int Preparada::Clase(int columna) const
{
    return sqlite3_column_type(sentencia_.get(), columna);
}

sqlite3_value* Preparada::Valor(int columna) const
{
    return sqlite3_column_value(sentencia_.get(), columna);
}

Base::Base(const QString& ruta, Modo modo, const Ahora& ahora)
{
    sqlite3* base = nullptr;
    const int crea = modo == Modo::Existente ? 0 : SQLITE_OPEN_CREATE;
    const int resultado =
        sqlite3_open_v2(ruta.toUtf8().constData(), &base, SQLITE_OPEN_READWRITE | crea, nullptr);
    base_.reset(base);
    if (resultado != SQLITE_OK)
        Rechaza(QStringLiteral("No se puede abrir la base de datos %1").arg(ruta));
    sqlite3_extended_result_codes(base, 1);
    sqlite3_busy_timeout(base, EsperaMilisegundos);
    // A quoted name that no table has must be an error and never become a text.
    sqlite3_db_config(base, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(base, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    RegistraColacion(base);
    RegistraFunciones(base, ahora);
    try {
        Dispone(modo);
    } catch (const ErrorSql& error) {
        Rechaza(QStringLiteral("No se puede abrir %1: %2").arg(ruta, error.Descripcion()));
    }
}

void Base::Dispone(Modo modo) const
{
    // With WAL other processes read while a run writes. The mode stays in the file, and it doesn't
    // work over network shares: so a file made by another program keeps the mode it has.
    if (modo == Modo::Nueva)
        Ejecuta(QStringLiteral("PRAGMA journal_mode=WAL"));
    if (modo == Modo::Propia)
        Ejecuta(QStringLiteral("PRAGMA journal_mode=MEMORY"));
    Ejecuta(QStringLiteral(
        "PRAGMA synchronous=NORMAL; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-65536"));
    Ejecuta(QStringLiteral("SELECT 1 FROM sqlite_schema LIMIT 1"));
}

void Base::Cierra::operator()(sqlite3* base) const
{
    sqlite3_close_v2(base);
}

void Base::Ejecuta(const QString& sql) const
{
    if (sqlite3_exec(base_.get(), sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        Falla(base_.get());
}

qlonglong Base::UltimaFila() const
{
    return sqlite3_last_insert_rowid(base_.get());
}

long long Base::Cambios() const
{
    return sqlite3_changes64(base_.get());
}

Transaccion::Transaccion(const Base& base)
    : base_(base), propia_(sqlite3_get_autocommit(base.Manejo()) != 0)
{
    if (propia_)
        base_.Ejecuta(QStringLiteral("BEGIN IMMEDIATE"));
}

Transaccion::~Transaccion()
{
    // A failed statement may have undone it already.
    if (propia_ && abierta_ && sqlite3_get_autocommit(base_.Manejo()) == 0)
        sqlite3_exec(base_.Manejo(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaccion::Confirma()
{
    if (propia_)
        base_.Ejecuta(QStringLiteral("COMMIT"));
    abierta_ = false;
}

QString Identificador(const QString& nombre)
{
    QString dentro = nombre;
    dentro.replace(u'"', QStringLiteral("\"\""));
    return u'"' + dentro + u'"';
}

QString TextoLiteral(const QString& texto)
{
    QString dentro = texto;
    dentro.replace(u'\'', QStringLiteral("''"));
    return u'\'' + dentro + u'\'';
}

} // namespace tolmo::data::access
