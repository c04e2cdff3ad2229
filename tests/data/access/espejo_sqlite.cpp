#include "data/access/espejo_sqlite.h"
#include <QHash>
#include <cmath>
#include <sqlite3.h>
#include <stdexcept>

using namespace tolmo;
using Clase = ColumnaDoble::Clase;

namespace {

constexpr double PartesDeMoneda = 10'000;
const QString FormaDeFecha = QStringLiteral("yyyy-MM-dd HH:mm:ss");

bool EsTexto(Clase clase)
{
    return clase == Clase::Texto || clase == Clase::Memo;
}

/// As the mirror holds it.
QVariant Guardado(Clase clase, const data::Valor& valor)
{
    if (data::EsNulo(valor))
        return clase == Clase::Logico ? QVariant(0) : QVariant();
    switch (clase) {
    case Clase::Moneda:
        return static_cast<qlonglong>(std::llround(valor.toDouble() * PartesDeMoneda));
    case Clase::Fecha:
        return valor.toDateTime().toString(FormaDeFecha);
    case Clase::Logico:
        return valor.toBool() ? -1 : 0;
    default:
        return valor;
    }
}

QString Literal(Clase clase, const data::Valor& valor)
{
    if (data::EsNulo(valor))
        return QStringLiteral("NULL");
    switch (clase) {
    case Clase::Simple:
    case Clase::Doble:
    case Clase::Moneda:
        return QString::number(valor.toDouble(), 'g', 15);
    case Clase::Fecha:
        return u'#' + valor.toDateTime().toString(QStringLiteral("MM/dd/yyyy HH:mm:ss")) + u'#';
    case Clase::Logico:
        return valor.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case Clase::Texto:
    case Clase::Memo: {
        QString texto = valor.toString();
        texto.replace(u'\'', QStringLiteral("''"));
        return u'\'' + texto + u'\'';
    }
    default:
        return QString::number(valor.toInt());
    }
}

QString Tipo(const ColumnaDoble& columna)
{
    switch (columna.clase) {
    case Clase::Contador:
        return QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
    case Clase::Simple:
    case Clase::Doble:
        return QStringLiteral("REAL");
    case Clase::Fecha:
        return QStringLiteral("TEXT");
    case Clase::Texto:
    case Clase::Memo:
        return QStringLiteral("TEXT COLLATE IDENTIDAD");
    case Clase::Logico:
        return QStringLiteral("INTEGER DEFAULT 0");
    default:
        return QStringLiteral("INTEGER");
    }
}

int ComparaIdentidad(void*, int largoA, const void* a, int largoB, const void* b)
{
    const auto identidad = [](int largo, const void* texto) {
        return IdentidadDeTexto(QString::fromUtf8(static_cast<const char*>(texto), largo));
    };
    return identidad(largoA, a).compare(identidad(largoB, b));
}

/// What a letter is made of: the letters that it counts as, and a mark.
struct Letra {
    QString letras{};
    char16_t marca = 0;
};

Letra LetraDe(QChar caracter)
{
    static const QHash<QChar, Letra> especiales = {
        {u'ß', {QStringLiteral("ss")}},      {u'æ', {QStringLiteral("ae")}},
        {u'œ', {QStringLiteral("oe")}},      {u'þ', {QStringLiteral("th")}},
        {u'¹', {QStringLiteral("1")}},       {u'²', {QStringLiteral("2")}},
        {u'³', {QStringLiteral("3")}},       {u'ª', {QStringLiteral("a"), u'ª'}},
        {u'º', {QStringLiteral("o"), u'º'}}, {u'ð', {QStringLiteral("d"), u'ð'}},
        {u'ø', {QStringLiteral("o"), u'ø'}}, {u'ƒ', {QStringLiteral("f"), u'ƒ'}},
        {u'ˆ', {QStringLiteral("^"), u'ˆ'}}};
    const QChar minuscula = caracter.toLower();
    if (const auto especial = especiales.find(minuscula); especial != especiales.end())
        return *especial;
    if (minuscula.decompositionTag() != QChar::Canonical)
        return {QString(minuscula)};
    const QString partes = minuscula.decomposition();
    return {partes.left(1), partes[1].unicode()};
}

/// Controls, hyphens and the apostrophe count only where they stand.
bool CuentaAlFinal(QChar caracter)
{
    return caracter.category() == QChar::Other_Control ||
           QStringLiteral("'-\u00AD\u2013\u2014").contains(caracter);
}

} // namespace

QByteArray IdentidadDeTexto(QString texto)
{
    while (texto.endsWith(u' '))
        texto.chop(1);
    QString letras;
    QString marcas;
    QString alFinal;
    char16_t lugar = 1;
    for (const QChar caracter : texto) {
        if (CuentaAlFinal(caracter)) {
            alFinal += QString(QChar(lugar)) + caracter;
            continue;
        }
        const Letra letra = LetraDe(caracter);
        letras += letra.letras;
        if (letra.marca != 0)
            marcas += QString(QChar(lugar)) + QChar(letra.marca);
        ++lugar;
    }
    const QChar entre(u'\0');
    return (letras + entre + marcas + entre + alFinal).toUtf8();
}

const ColumnaDoble& TablaDoble::operator[](const QString& columna) const
{
    for (const ColumnaDoble& una : columnas) {
        if (una.nombre == columna)
            return una;
    }
    throw std::logic_error("no such column");
}

FraseDoble& FraseDoble::operator<<(const QString& comun)
{
    return Segun(comun, comun);
}

FraseDoble& FraseDoble::Segun(const QString& paraAccess, const QString& paraEspejo)
{
    access += paraAccess;
    espejo += paraEspejo;
    return *this;
}

FraseDoble& FraseDoble::Valor(const ColumnaDoble& columna, const data::Valor& valor)
{
    access += Literal(columna.clase, valor);
    espejo += u'?';
    ligados.push_back(Guardado(columna.clase, valor));
    return *this;
}

QByteArray LineaDe(const std::vector<ColumnaDoble>& columnas,
                   const std::vector<data::Valor>& valores, std::size_t primero)
{
    QByteArray linea;
    for (std::size_t i = 0; i < columnas.size(); ++i) {
        const data::Valor& valor = valores.at(primero + i);
        if (data::EsNulo(valor)) {
            linea += QByteArray("\0\x1F", 2);
            continue;
        }
        const Clase clase = columnas[i].clase;
        if (clase == Clase::Simple || clase == Clase::Doble)
            linea += QByteArray::number(valor.toDouble(), 'g', 17);
        else
            linea += Guardado(clase, valor).toString().toUtf8();
        linea += '\x1F';
    }
    return linea;
}

void EspejoSqlite::Cierra::operator()(sqlite3* base) const
{
    sqlite3_close_v2(base);
}
void EspejoSqlite::Cierra::operator()(sqlite3_stmt* sentencia) const
{
    sqlite3_finalize(sentencia);
}

EspejoSqlite::EspejoSqlite()
{
    sqlite3* base = nullptr;
    sqlite3_open(":memory:", &base);
    base_.reset(base);
    sqlite3_extended_result_codes(base, 1);
    sqlite3_create_collation_v2(base, "IDENTIDAD", SQLITE_UTF8, nullptr, ComparaIdentidad, nullptr);
}

EspejoSqlite::Sentencia EspejoSqlite::Prepara(const QString& sql)
{
    sqlite3_stmt* sentencia = nullptr;
    if (sqlite3_prepare_v2(base_.get(), sql.toUtf8().constData(), -1, &sentencia, nullptr) !=
        SQLITE_OK)
        throw std::logic_error(sqlite3_errmsg(base_.get()) + (": " + sql.toStdString()));
    return Sentencia(sentencia);
}

void EspejoSqlite::Ejecuta(const char* sql)
{
    if (sqlite3_exec(base_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::logic_error(sqlite3_errmsg(base_.get()));
}

void EspejoSqlite::Crea(const TablaDoble& tabla)
{
    QStringList columnas;
    for (const ColumnaDoble& columna : tabla.columnas)
        columnas << columna.nombre + u' ' + Tipo(columna) +
                        (columna.obligatoria ? " NOT NULL" : "");
    Ejecuta(QString("CREATE TABLE " + tabla.nombre + " (" + columnas.join(',') + ")")
                .toUtf8()
                .constData());
    for (const IndiceDoble& indice : tabla.indices)
        CreaIndice(tabla.nombre, indice);
}

void EspejoSqlite::CreaIndice(const QString& tabla, const IndiceDoble& indice)
{
    const QString unico = indice.unico ? "UNIQUE " : "";
    Ejecuta(QString("CREATE " + unico + "INDEX " + tabla + "_" + indice.nombre + " ON " + tabla +
                    " (" + indice.columnas + ")")
                .toUtf8()
                .constData());
}

ResultadoDoble EspejoSqlite::Ejecuta(const FraseDoble& frase)
{
    const Sentencia sentencia = Prepara(frase.espejo);
    for (std::size_t i = 0; i < frase.ligados.size(); ++i) {
        const int lugar = static_cast<int>(i) + 1;
        const QVariant& valor = frase.ligados[i];
        if (!valor.isValid()) {
            sqlite3_bind_null(sentencia.get(), lugar);
        } else if (valor.typeId() == QMetaType::QString) {
            const QByteArray texto = valor.toString().toUtf8();
            sqlite3_bind_text(sentencia.get(), lugar, texto.constData(),
                              static_cast<int>(texto.size()), SQLITE_TRANSIENT);
        } else if (valor.typeId() == QMetaType::Double) {
            sqlite3_bind_double(sentencia.get(), lugar, valor.toDouble());
        } else {
            sqlite3_bind_int64(sentencia.get(), lugar, valor.toLongLong());
        }
    }
    using Fallo = ResultadoDoble::Fallo;
    if (sqlite3_step(sentencia.get()) == SQLITE_DONE)
        return {.filas = sqlite3_changes64(base_.get())};
    const QString descripcion = QString::fromUtf8(sqlite3_errmsg(base_.get()));
    switch (sqlite3_extended_errcode(base_.get())) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return {.fallo = Fallo::Repetido, .descripcion = descripcion};
    case SQLITE_CONSTRAINT_NOTNULL:
        return {.fallo = Fallo::SinValor, .descripcion = descripcion};
    default:
        return {.fallo = Fallo::Otro, .descripcion = descripcion};
    }
}

qint64 EspejoSqlite::Numero(const QString& sql)
{
    const Sentencia sentencia = Prepara(sql);
    return sqlite3_step(sentencia.get()) == SQLITE_ROW ? sqlite3_column_int64(sentencia.get(), 0)
                                                       : 0;
}

data::Valor EspejoSqlite::Lee(sqlite3_stmt* fila, int lugar, Clase clase)
{
    if (sqlite3_column_type(fila, lugar) == SQLITE_NULL)
        return data::Nulo();
    const auto texto = [&] {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(fila, lugar)),
                                 sqlite3_column_bytes(fila, lugar));
    };
    if (EsTexto(clase))
        return texto();
    switch (clase) {
    case Clase::Fecha: {
        const QDateTime momento = QDateTime::fromString(texto(), FormaDeFecha);
        return data::SinZona(momento.date(), momento.time());
    }
    case Clase::Logico:
        return sqlite3_column_int(fila, lugar) != 0;
    case Clase::Moneda:
        return static_cast<double>(sqlite3_column_int64(fila, lugar)) / PartesDeMoneda;
    case Clase::Simple:
    case Clase::Doble:
        return sqlite3_column_double(fila, lugar);
    default:
        return sqlite3_column_int(fila, lugar);
    }
}

data::Valor EspejoSqlite::Muestra(const TablaDoble& tabla, const ColumnaDoble& columna, int cual)
{
    const Sentencia sentencia = Prepara(QStringLiteral("SELECT %1 FROM %2 LIMIT 1 OFFSET %3")
                                            .arg(columna.nombre, tabla.nombre)
                                            .arg(cual));
    if (sqlite3_step(sentencia.get()) != SQLITE_ROW)
        return data::Nulo();
    return Lee(sentencia.get(), 0, columna.clase);
}

std::vector<data::Valor> EspejoSqlite::Fila(const TablaDoble& tabla, int cual)
{
    const Sentencia sentencia =
        Prepara(QStringLiteral("SELECT * FROM %1 LIMIT 1 OFFSET %2").arg(tabla.nombre).arg(cual));
    std::vector<data::Valor> fila(tabla.columnas.size(), data::Nulo());
    if (sqlite3_step(sentencia.get()) == SQLITE_ROW)
        LeeFila(sentencia.get(), tabla, fila);
    return fila;
}

void EspejoSqlite::LeeFila(sqlite3_stmt* fila, const TablaDoble& tabla,
                           std::vector<data::Valor>& valores)
{
    for (std::size_t i = 0; i < valores.size(); ++i)
        valores[i] = Lee(fila, static_cast<int>(i), tabla.columnas[i].clase);
}

QList<QByteArray> EspejoSqlite::Lineas(const TablaDoble& tabla)
{
    const Sentencia sentencia = Prepara("SELECT * FROM " + tabla.nombre);
    QList<QByteArray> lineas;
    std::vector<data::Valor> fila(tabla.columnas.size());
    while (sqlite3_step(sentencia.get()) == SQLITE_ROW) {
        LeeFila(sentencia.get(), tabla, fila);
        lineas << LineaDe(tabla.columnas, fila);
    }
    std::sort(lineas.begin(), lineas.end());
    return lineas;
}
