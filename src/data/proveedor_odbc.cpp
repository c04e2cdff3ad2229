#include "data/proveedor_odbc.h"
#include "data/cadena_odbc.h"
#include "data/campo_odbc.h"
#include "data/errores.h"
#include "data/literal_odbc.h"
#include "data/tabla_unica.h"
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>
#include <atomic>
#include <odbcinst.h>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

const QString Modulo = u"ODBC"_s;

constexpr int SegundosParaConectar = 30;
// A statement is never cut short by the program; this much silence is a server that is gone.
constexpr int SegundosDeSilencio = 900;

// The MySQL client's own numbers for a server that can't be reached or has gone.
constexpr int PrimerErrorDeConexion = 2001;
constexpr int UltimoErrorDeConexion = 2013;

bool EsDeConexion(const QSqlError& error, bool mySql)
{
    const int nativo = error.nativeErrorCode().split(u';').front().toInt();
    return error.type() == QSqlError::ConnectionError ||
           (mySql && nativo >= PrimerErrorDeConexion && nativo <= UltimoErrorDeConexion);
}

QString Descripcion(const QSqlError& error)
{
    const QString delServidor = error.databaseText().trimmed();
    return delServidor.isEmpty() ? error.driverText().trimmed() : delServidor;
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

/// A connection in Qt's register, under a name of its own, for as long as this lives.
class ConexionQt {
  public:
    ConexionQt()
        : nombre_(NuevoNombre()), base_(QSqlDatabase::addDatabase(QStringLiteral("QODBC"), nombre_))
    {
    }
    ~ConexionQt()
    {
        base_.close();
        base_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(nombre_);
    }
    ConexionQt(const ConexionQt&) = delete;
    ConexionQt& operator=(const ConexionQt&) = delete;

    QSqlDatabase& Base() { return base_; }
    const QSqlDriver& Controlador() const { return *base_.driver(); }

  private:
    static QString NuevoNombre()
    {
        static std::atomic<int> ultimo = 0;
        return u"odbc%1"_s.arg(++ultimo);
    }

    QString nombre_;
    QSqlDatabase base_;
};

class ProveedorOdbc : public Proveedor {
  public:
    ProveedorOdbc(const QString& cadena, int alConectar, bool mySql);

    Filas Consulta(const QString& sql, bool actualizable) override;
    long long Ejecuta(const QString& sql) override;
    void Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios) override;
    Valor Inserta(const Filas& filas, const Cambios& cambios) override;
    void Borra(const Filas& filas, std::size_t fila) override;
    std::vector<TablaEsquema> Tablas() override;

  private:
    QSqlQuery Corre(const QString& sql);
    void CorreParaUnaFila(const QString& sql);
    QString Columna(const QString& nombre) const;
    QString Tabla(const Filas& filas) const;
    QString Reconoce(const Filas& filas, std::size_t fila) const;
    [[noreturn]] void Falla(const QSqlError& error);
    void ExigeConexion() const;

    ConexionQt conexion_{};
    QSqlDatabase& base_ = conexion_.Base();
    bool mySql_;
    QString perdida_; ///< what was said when the connection broke; empty while it stands
};

ProveedorOdbc::ProveedorOdbc(const QString& cadena, int alConectar, bool mySql) : mySql_(mySql)
{
    base_.setDatabaseName(cadena);
    base_.setConnectOptions(u"SQL_ATTR_LOGIN_TIMEOUT=%1"_s.arg(alConectar));
    base_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!base_.open())
        throw ErrorSql(numero_error::Conexion, Descripcion(base_.lastError()), Modulo);
    if (mySql)
        Corre(u"SET SESSION sql_mode=''"_s);
}

/// Raises the error of the last operation. Once the server has gone the driver has nothing more to
/// say, so that its last words are kept.
void ProveedorOdbc::Falla(const QSqlError& error)
{
    const bool deConexion = EsDeConexion(error, mySql_);
    if (deConexion)
        perdida_ = Descripcion(error);
    throw ErrorSql(deConexion ? numero_error::Conexion : numero_error::Sentencia,
                   Descripcion(error), Modulo);
}

void ProveedorOdbc::ExigeConexion() const
{
    if (!perdida_.isEmpty())
        throw ErrorSql(numero_error::Conexion, perdida_, Modulo);
}

QSqlQuery ProveedorOdbc::Corre(const QString& sql)
{
    ExigeConexion();
    QSqlQuery consulta(base_);
    consulta.setForwardOnly(true);
    if (!consulta.exec(sql))
        Falla(consulta.lastError());
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
        Falla(consulta.lastError());
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

QString ProveedorOdbc::Columna(const QString& nombre) const
{
    return conexion_.Controlador().escapeIdentifier(nombre, QSqlDriver::FieldName);
}

QString ProveedorOdbc::Tabla(const Filas& filas) const
{
    return conexion_.Controlador().escapeIdentifier(filas.tabla, QSqlDriver::TableName);
}

/// The condition that finds one row by what it held when it was read. A row that was added here is
/// known by the columns that were given to it, which its key lists.
QString ProveedorOdbc::Reconoce(const Filas& filas, std::size_t fila) const
{
    const QStringList dadas = filas.claves[fila].toStringList();
    QStringList condiciones;
    for (std::size_t i = 0; i < filas.campos.size(); ++i) {
        const Campo& campo = filas.campos[i];
        const bool conocida = dadas.isEmpty() || dadas.contains(campo.columna, Qt::CaseInsensitive);
        const Valor& valor = filas.valores[fila * filas.campos.size() + i];
        if (!conocida || !SirveParaReconocer(campo, valor))
            continue;
        const QString columna = Columna(campo.columna);
        condiciones << (EsNulo(valor) ? columna + " IS NULL"_L1
                                      : columna + u'=' + LiteralParaComparar(valor, mySql_));
    }
    return " WHERE "_L1 + condiciones.join(" AND "_L1);
}

/// Runs a statement that must meet one row; when it meets none, or several that can't be told
/// apart, nothing is changed.
void ProveedorOdbc::CorreParaUnaFila(const QString& sql)
{
    ExigeConexion();
    if (!base_.transaction())
        Falla(base_.lastError());
    try {
        if (Corre(sql).numRowsAffected() != 1)
            throw ErrorSql(
                numero_error::Sentencia,
                u"No se encuentra la fila que se quiere cambiar, o hay varias iguales."_s, Modulo);
    } catch (const ErrorSql&) {
        base_.rollback();
        throw;
    }
    if (!base_.commit())
        Falla(base_.lastError());
}

void ProveedorOdbc::Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios)
{
    QStringList asignaciones;
    for (const auto& [columna, valor] : cambios)
        asignaciones << Columna(columna) + u'=' + Literal(valor, mySql_);
    CorreParaUnaFila("UPDATE "_L1 + Tabla(filas) + " SET "_L1 + asignaciones.join(u',') +
                     Reconoce(filas, fila));
}

Valor ProveedorOdbc::Inserta(const Filas& filas, const Cambios& cambios)
{
    QStringList dadas;
    QStringList columnas;
    QStringList valores;
    for (const auto& [columna, valor] : cambios) {
        dadas << columna;
        columnas << Columna(columna);
        valores << Literal(valor, mySql_);
    }
    Corre("INSERT INTO "_L1 + Tabla(filas) + " ("_L1 + columnas.join(u',') + ") VALUES ("_L1 +
          valores.join(u',') + u')');
    return dadas;
}

void ProveedorOdbc::Borra(const Filas& filas, std::size_t fila)
{
    CorreParaUnaFila("DELETE FROM "_L1 + Tabla(filas) + Reconoce(filas, fila));
}

std::vector<TablaEsquema> ProveedorOdbc::Tablas()
{
    constexpr std::pair<QSql::TableType, QLatin1StringView> Clases[] = {{QSql::Tables, "TABLE"_L1},
                                                                        {QSql::Views, "VIEW"_L1}};
    ExigeConexion();
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
    const int pedidos = ValorDeConexion(cadena, u"Connect Timeout"_s).toInt();
    const int alConectar = pedidos > 0 ? pedidos : SegundosParaConectar;
    if (!EsControladorMariaDb(completa))
        return std::make_unique<ProveedorOdbc>(completa, alConectar, EsCadenaMySql(completa));
    // This driver has one limit for all answers, and for the greeting of a new connection none of
    // its own: a first connection with a short one tells whether there is a server that speaks.
    {
        const ProveedorOdbc tanteo(ConEsperas(completa, alConectar, alConectar), alConectar, true);
    }
    return std::make_unique<ProveedorOdbc>(ConEsperas(completa, alConectar, SegundosDeSilencio),
                                           alConectar, true);
}

} // namespace tolmo::data
