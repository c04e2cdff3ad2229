#include "data/proveedor_odbc.h"
#include "data/cadena_odbc.h"
#include "data/errores.h"
#include "data/tabla_unica.h"
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>
#include <atomic>
#include <odbcinst.h>
#include <sqlext.h>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

constexpr int SegundosParaConectar = 30;

// The client's own numbers for a server that can't be reached or has gone.
constexpr int PrimerErrorDeConexion = 2001;
constexpr int UltimoErrorDeConexion = 2013;

bool EsDeConexion(const QSqlError& error)
{
    const int nativo = error.nativeErrorCode().split(u';').front().toInt();
    return error.type() == QSqlError::ConnectionError ||
           (nativo >= PrimerErrorDeConexion && nativo <= UltimoErrorDeConexion);
}

[[noreturn]] void Lanza(const QSqlError& error)
{
    throw ErrorSql(EsDeConexion(error) ? numero_error::Conexion : numero_error::Sentencia,
                   error.databaseText().trimmed(), u"ODBC"_s);
}

QStringList ControladoresInstalados()
{
    // The manager writes name after name, each closed by a zero and the last one by two.
    constexpr WORD Tamano = 16384;
    std::string bufer(Tamano, '\0');
    WORD escritos = 0;
    if (!SQLGetInstalledDrivers(bufer.data(), Tamano, &escritos))
        return {};
    return QString::fromUtf8(bufer.data(), escritos).split(QChar(u'\0'), Qt::SkipEmptyParts);
}

/// ADO's number for the kind of a column.
int TipoAdo(const QSqlField& campo)
{
    switch (campo.typeID()) {
    case SQL_TINYINT:
        return 17;
    case SQL_SMALLINT:
        return 2;
    case SQL_INTEGER:
        return 3;
    case SQL_BIGINT:
        return 20;
    case SQL_REAL:
        return 4;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return 5;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
        return 131;
    case SQL_BIT:
        return 11;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return 135;
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
        return 203;
    default:
        return 202;
    }
}

Campo ComoCampo(const QSqlField& campo)
{
    return {.nombre = campo.name(),
            .tabla = campo.tableName(),
            .columna = campo.name(),
            .tipo = TipoAdo(campo),
            .ancho = TipoAdo(campo) == 202 ? std::max(0, campo.length()) : 0};
}

/// A field as the rest of the system knows it.
Valor ComoValor(const QVariant& leido, const Campo& campo)
{
    if (leido.isNull())
        return Nulo();
    switch (leido.typeId()) {
    case QMetaType::UInt:
        return leido.toLongLong();
    case QMetaType::Double:
        // A single comes with the noise of its binary digits.
        return campo.tipo == 4 ? Valor(leido.toFloat()) : leido;
    case QMetaType::QDate:
        return leido.toDate().isValid() ? leido : Nulo();
    case QMetaType::QDateTime:
        return leido.toDateTime().isValid() ? leido : Nulo();
    default:
        return leido;
    }
}

/// Columns whose old value can tell a row: what is read of the others isn't exactly what is held.
bool SirveParaReconocer(const Campo& campo)
{
    return campo.tipo != 4 && campo.tipo != 5 && campo.tipo != 203;
}

class ProveedorOdbc : public Proveedor {
  public:
    ProveedorOdbc(const QString& cadena, bool mySql);
    ~ProveedorOdbc() override;
    ProveedorOdbc(const ProveedorOdbc&) = delete;
    ProveedorOdbc& operator=(const ProveedorOdbc&) = delete;

    Filas Consulta(const QString& sql, bool actualizable) override;
    long long Ejecuta(const QString& sql) override;
    void Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios) override;
    Valor Inserta(const Filas& filas, const Cambios& cambios) override;
    void Borra(const Filas& filas, std::size_t fila) override;
    std::vector<TablaEsquema> Tablas() override;

  private:
    QSqlQuery Corre(const QString& sql);
    QSqlQuery Corre(const QString& sql, const std::vector<Valor>& valores);
    void CorreParaUnaFila(const QString& sql, const std::vector<Valor>& valores);
    QString Entrecomilla(const QString& nombre, QSqlDriver::IdentifierType tipo) const;
    QString Reconoce(const Filas& filas, std::size_t fila, std::vector<Valor>& valores) const;

    QString nombre_;
    QSqlDatabase base_;
};

QString NombreDeConexion()
{
    static std::atomic<int> ultima = 0;
    return u"odbc%1"_s.arg(++ultima);
}

ProveedorOdbc::ProveedorOdbc(const QString& cadena, bool mySql)
    : nombre_(NombreDeConexion()), base_(QSqlDatabase::addDatabase(u"QODBC"_s, nombre_))
{
    base_.setDatabaseName(cadena);
    base_.setConnectOptions(u"SQL_ATTR_LOGIN_TIMEOUT=%1"_s.arg(SegundosParaConectar));
    base_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    const bool abierta = base_.open();
    const QSqlError error = base_.lastError();
    if (!abierta) {
        base_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(nombre_);
        throw ErrorSql(numero_error::Conexion, error.databaseText().trimmed(), u"ODBC"_s);
    }
    if (mySql)
        Corre(u"SET SESSION sql_mode=''"_s);
}

ProveedorOdbc::~ProveedorOdbc()
{
    base_.close();
    base_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(nombre_);
}

QSqlQuery ProveedorOdbc::Corre(const QString& sql)
{
    QSqlQuery consulta(base_);
    consulta.setForwardOnly(true);
    if (!consulta.exec(sql))
        Lanza(consulta.lastError());
    return consulta;
}

QSqlQuery ProveedorOdbc::Corre(const QString& sql, const std::vector<Valor>& valores)
{
    QSqlQuery consulta(base_);
    if (!consulta.prepare(sql))
        Lanza(consulta.lastError());
    for (const Valor& valor : valores)
        consulta.addBindValue(valor);
    if (!consulta.exec())
        Lanza(consulta.lastError());
    return consulta;
}

Filas ProveedorOdbc::Consulta(const QString& sql, bool actualizable)
{
    QSqlQuery consulta = Corre(sql);
    Filas filas;
    const QSqlRecord registro = consulta.record();
    for (int i = 0; i < registro.count(); ++i)
        filas.campos.push_back(ComoCampo(registro.field(i)));
    std::size_t total = 0;
    for (; consulta.next(); ++total)
        for (int i = 0; i < registro.count(); ++i)
            filas.valores.push_back(
                ComoValor(consulta.value(i), filas.campos[static_cast<std::size_t>(i)]));
    if (consulta.lastError().isValid())
        Lanza(consulta.lastError());
    if (actualizable) {
        filas.tabla = TablaUnica(sql);
        filas.claves.resize(total);
    }
    return filas;
}

long long ProveedorOdbc::Ejecuta(const QString& sql)
{
    return std::max(0, Corre(sql).numRowsAffected());
}

QString ProveedorOdbc::Entrecomilla(const QString& nombre, QSqlDriver::IdentifierType tipo) const
{
    return base_.driver()->escapeIdentifier(nombre, tipo);
}

/// The condition that finds one row by what it held when it was read. A row that was added here is
/// known by the columns that were given to it, which its key lists.
QString ProveedorOdbc::Reconoce(const Filas& filas, std::size_t fila,
                                std::vector<Valor>& valores) const
{
    const QStringList dadas = filas.claves[fila].toStringList();
    QStringList condiciones;
    for (std::size_t i = 0; i < filas.campos.size(); ++i) {
        const Campo& campo = filas.campos[i];
        const bool conocida = dadas.isEmpty() || dadas.contains(campo.columna, Qt::CaseInsensitive);
        if (!conocida || !SirveParaReconocer(campo))
            continue;
        const Valor& valor = filas.valores[fila * filas.campos.size() + i];
        const QString columna = Entrecomilla(campo.columna, QSqlDriver::FieldName);
        condiciones << columna + (EsNulo(valor) ? u" IS NULL"_s : u"=?"_s);
        if (!EsNulo(valor))
            valores.push_back(valor);
    }
    return condiciones.join(" AND "_L1);
}

/// Runs a statement that must meet one row; when it meets none, or several that can't be told
/// apart, nothing is changed.
void ProveedorOdbc::CorreParaUnaFila(const QString& sql, const std::vector<Valor>& valores)
{
    if (!base_.transaction())
        Lanza(base_.lastError());
    try {
        const int tocadas = Corre(sql, valores).numRowsAffected();
        if (tocadas != 1)
            throw ErrorSql(
                numero_error::Sentencia,
                u"No se encuentra la fila que se quiere cambiar, o hay varias iguales."_s,
                u"ODBC"_s);
    } catch (const ErrorSql&) {
        base_.rollback();
        throw;
    }
    if (!base_.commit())
        Lanza(base_.lastError());
}

void ProveedorOdbc::Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios)
{
    QStringList asignaciones;
    std::vector<Valor> valores;
    for (const auto& [columna, valor] : cambios) {
        asignaciones << Entrecomilla(columna, QSqlDriver::FieldName) + "=?"_L1;
        valores.push_back(valor);
    }
    const QString condicion = Reconoce(filas, fila, valores);
    CorreParaUnaFila("UPDATE "_L1 + Entrecomilla(filas.tabla, QSqlDriver::TableName) + " SET "_L1 +
                         asignaciones.join(u',') + " WHERE "_L1 + condicion,
                     valores);
}

Valor ProveedorOdbc::Inserta(const Filas& filas, const Cambios& cambios)
{
    QStringList columnas;
    QStringList dadas;
    QStringList lugares;
    std::vector<Valor> valores;
    for (const auto& [columna, valor] : cambios) {
        dadas << columna;
        columnas << Entrecomilla(columna, QSqlDriver::FieldName);
        lugares << u"?"_s;
        valores.push_back(valor);
    }
    Corre("INSERT INTO "_L1 + Entrecomilla(filas.tabla, QSqlDriver::TableName) + " ("_L1 +
              columnas.join(u',') + ") VALUES ("_L1 + lugares.join(u',') + u')',
          valores);
    return dadas;
}

void ProveedorOdbc::Borra(const Filas& filas, std::size_t fila)
{
    std::vector<Valor> valores;
    const QString condicion = Reconoce(filas, fila, valores);
    CorreParaUnaFila("DELETE FROM "_L1 + Entrecomilla(filas.tabla, QSqlDriver::TableName) +
                         " WHERE "_L1 + condicion,
                     valores);
}

std::vector<TablaEsquema> ProveedorOdbc::Tablas()
{
    constexpr std::pair<QSql::TableType, QLatin1StringView> Clases[] = {{QSql::Tables, "TABLE"_L1},
                                                                        {QSql::Views, "VIEW"_L1}};
    std::vector<TablaEsquema> tablas;
    for (const auto& [clase, tipo] : Clases)
        for (const QString& nombre : base_.tables(clase))
            tablas.push_back({nombre, tipo});
    return tablas;
}

} // namespace

std::unique_ptr<Proveedor> AbreOdbc(const QString& cadena, const QString& usuario,
                                    const QString& clave)
{
    const QString completa = CadenaOdbc(cadena, usuario, clave, ControladoresInstalados());
    return std::make_unique<ProveedorOdbc>(completa, EsCadenaMySql(completa));
}

} // namespace tolmo::data
