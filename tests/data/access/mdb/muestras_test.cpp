#include "data/access/mdb/clave.h"
#include "data/access/mdb/indice.h"
#include "data/access/mdb/muestras.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::ElementsAre;

namespace {

using Celdas = std::vector<std::string>;

constexpr int EsperaMs = 60'000;

QByteArray SalidaDe(const QString& programa, const QStringList& argumentos)
{
    QProcess proceso;
    proceso.start(programa, argumentos);
    if (!proceso.waitForFinished(EsperaMs) || proceso.exitCode() != 0)
        ADD_FAILURE() << programa.toStdString() << ": "
                      << proceso.readAllStandardError().toStdString();
    return proceso.readAllStandardOutput();
}

/// A number in one form, whoever wrote it: what stands behind the 14th digit is rounding.
QString Numero(const QString& texto, int digitos)
{
    bool esNumero = false;
    const double numero = texto.toDouble(&esNumero);
    return esNumero ? QString::number(numero, 'g', digitos) : texto;
}

/// mdbtools rounds a date to the second.
QString AlSegundo(Fecha fecha)
{
    const double dia = std::trunc(fecha.dias);
    const double segundos = std::round(std::fabs(fecha.dias - dia) * 86400);
    return FechaHora(Fecha{dia})
        .addSecs(static_cast<qint64>(segundos))
        .toString("yyyy-MM-dd HH:mm:ss");
}

/// A cell of ours in the form in which both readers' cells are compared.
QString EnComun(const Columna& columna, const Dato& dato)
{
    if (EsNulo(dato))
        return QStringLiteral("NULO");
    switch (columna.tipo) {
    case TipoColumna::Logico:
        return Como<bool>(dato) ? QStringLiteral("1") : QStringLiteral("0");
    case TipoColumna::Simple:
        return Numero(TextoExacto(dato), 6);
    case TipoColumna::Doble:
        return Numero(TextoExacto(dato), 14);
    default:
        return TextoExacto(dato);
    }
}

/// The tables' rows, in one order: a row that moved comes at its first place here, and at its
/// second with the others.
std::vector<Celdas> Ordenadas(std::vector<Celdas> filas)
{
    std::sort(filas.begin(), filas.end());
    return filas;
}

/// mdbtools cuts bytes and texts at the first zero, and doesn't know the fixed kind of bytes.
QString BytesDeMdbtools(QByteArray bytes)
{
    const qsizetype cero = bytes.indexOf('\0');
    if (cero >= 0)
        bytes.truncate(cero);
    return bytes.isEmpty() ? QStringLiteral("NULO") : QString::fromLatin1(bytes.toHex().toUpper());
}

QString ComoMdbtools(const Columna& columna, const Dato& dato)
{
    if (columna.tipo == TipoColumna::BinarioFijo)
        return {};
    if (const auto* bytes = std::get_if<QByteArray>(&dato);
        bytes != nullptr && columna.tipo == TipoColumna::Binario)
        return BytesDeMdbtools(*bytes);
    if (const auto* texto = std::get_if<QString>(&dato))
        return texto->section(QChar(0), 0, 0);
    const auto* fecha = std::get_if<Fecha>(&dato);
    return fecha != nullptr ? AlSegundo(*fecha) : EnComun(columna, dato);
}

template <typename Forma> std::vector<Celdas> FilasPropias(const Tabla& tabla, Forma forma)
{
    std::vector<Celdas> filas;
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        Celdas celdas;
        for (const Columna& columna : tabla.definicion().columnas)
            celdas.push_back(forma(columna, cursor.fila().Lee(columna)).toStdString());
        filas.push_back(celdas);
    }
    return Ordenadas(filas);
}

/// What the other reader wrote of a cell, in the common form.
QString EnComunDe(const Columna& columna, QString celda)
{
    if (celda == u"NULO" && columna.tipo != TipoColumna::BinarioFijo)
        return celda;
    switch (columna.tipo) {
    case TipoColumna::BinarioFijo:
        return {};
    case TipoColumna::Simple:
        return Numero(celda, 6);
    case TipoColumna::Doble:
        return Numero(celda, 14);
    case TipoColumna::Moneda:
    case TipoColumna::Numerico:
        while (celda.contains(u'.') && (celda.endsWith(u'0') || celda.endsWith(u'.')))
            celda.chop(1);
        return celda;
    case TipoColumna::Binario:
    case TipoColumna::Ole:
        return celda.toUpper();
    case TipoColumna::Guid:
        return u'{' + celda.remove(u'{').remove(u'}').toUpper() + u'}';
    default:
        return celda;
    }
}

std::vector<Celdas> FilasDeMdbtools(const QString& muestra, const Tabla& tabla)
{
    const QString todo = QString::fromUtf8(
        SalidaDe("mdb-export", {"-H", "-Q", "-d", "\x1F", "-R", "\x1E", "-0", "NULO", "-b", "hex",
                                "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S",
                                RutaMuestra(muestra), tabla.Nombre()}));
    std::vector<Celdas> filas;
    const auto& columnas = tabla.definicion().columnas;
    for (const QString& linea : todo.split(QChar(0x1E), Qt::SkipEmptyParts)) {
        const QStringList partes = linea.split(QChar(0x1F));
        Celdas celdas;
        for (qsizetype i = 0; i < partes.size(); ++i)
            celdas.push_back(
                EnComunDe(columnas.at(static_cast<std::size_t>(i)), partes[i]).toStdString());
        filas.push_back(celdas);
    }
    return Ordenadas(filas);
}

class Muestra : public testing::TestWithParam<QString> {};

TEST_P(Muestra, DaLoMismoQueMdbtools)
{
    ASSERT_FALSE(QStandardPaths::findExecutable("mdb-export").isEmpty())
        << "tools/instala installs mdbtools";
    const Base base(RutaMuestra(GetParam()));

    for (const QString& nombre : TablasLocales(base)) {
        const Tabla tabla = base.AbreTabla(nombre);
        EXPECT_EQ(FilasPropias(tabla, ComoMdbtools), FilasDeMdbtools(GetParam(), tabla))
            << nombre.toStdString();
    }
}

/// The second reader is a package of npm, which not every machine has: KOV_MDB_READER is a folder
/// where `npm install mdb-reader` was run.
TEST_P(Muestra, DaLoMismoQueMdbReader)
{
    const QString carpeta = qEnvironmentVariable("KOV_MDB_READER");
    if (carpeta.isEmpty())
        GTEST_SKIP() << "KOV_MDB_READER isn't set: mdb-reader is not at hand";
    const QByteArray salida =
        SalidaDe("node", {KOV_FUENTES "/tests/data/access/mdb/otro_lector.mjs", carpeta,
                          RutaMuestra(GetParam())});
    const QJsonObject tablas = QJsonDocument::fromJson(salida).object();
    const Base base(RutaMuestra(GetParam()));

    int comparadas = 0;
    for (const QString& nombre : TablasLocales(base)) {
        const Tabla tabla = base.AbreTabla(nombre);
        // It doesn't know the fixed kind of binary columns.
        const auto& columnas = tabla.definicion().columnas;
        if (std::any_of(columnas.begin(), columnas.end(), [](const Columna& columna) {
                return columna.tipo == TipoColumna::BinarioFijo;
            }))
            continue;
        ++comparadas;
        std::vector<Celdas> filas;
        for (const QJsonValue& fila : tablas[nombre].toArray()) {
            Celdas celdas;
            for (const Columna& columna : columnas)
                celdas.push_back(
                    EnComunDe(columna, fila[columna.nombre].toString("NULO")).toStdString());
            filas.push_back(celdas);
        }
        EXPECT_EQ(FilasPropias(tabla, EnComun), Ordenadas(filas)) << nombre.toStdString();
    }
    EXPECT_GT(comparadas, 4);
}

quint64 EntradasComprobadas(const Tabla& tabla, const IndiceReal& indice)
{
    std::vector<QByteArray> rehechas;
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        const ClaveDeFila clave = ClaveDe(tabla, indice, cursor.fila());
        EXPECT_NE(clave.caso, ClaveDeFila::Caso::NoSeSabe) << tabla.Nombre().toStdString();
        const Puntero p = cursor.puntero();
        const char fila[] = {static_cast<char>(p.pagina >> 16), static_cast<char>(p.pagina >> 8),
                             static_cast<char>(p.pagina), static_cast<char>(p.fila)};
        if (clave.caso == ClaveDeFila::Caso::Entrada)
            rehechas.push_back(clave.bytes + QByteArray(fila, sizeof fila));
    }
    std::sort(rehechas.begin(), rehechas.end(), [](const QByteArray& a, const QByteArray& b) {
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(),
            [](char x, char y) { return static_cast<quint8>(x) < static_cast<quint8>(y); });
    });
    std::vector<QByteArray> guardadas;
    for (RecorridoIndice recorrido(tabla, indice); recorrido.Siguiente();) {
        const auto bytes = recorrido.entrada().ClaveYFila();
        guardadas.emplace_back(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<qsizetype>(bytes.size()));
    }
    EXPECT_EQ(rehechas, guardadas) << tabla.Nombre().toStdString();
    return guardadas.size();
}

/// The indexes are made anew from the rows of their tables, and compared byte by byte. Those of
/// Access 97 over texts are left out, as its order isn't known.
TEST_P(Muestra, SusIndicesSonLosQueSusFilasPiden)
{
    const Base base(RutaMuestra(GetParam()));

    quint64 entradas = 0;
    for (const QString& nombre : TablasLocales(base)) {
        const Tabla tabla = base.AbreTabla(nombre);
        for (const IndiceReal& indice : tabla.definicion().indicesReales) {
            const bool deTexto = std::any_of(
                indice.columnas.begin(), indice.columnas.end(), [&](const ColumnaIndice& en) {
                    return tabla.definicion().ColumnaDe(en.numero)->tipo == TipoColumna::Texto;
                });
            if (base.version() != Version::Jet3 || !deTexto)
                entradas += EntradasComprobadas(tabla, indice);
        }
    }
    EXPECT_GT(entradas, 80U);
}

/// Every row is found again through the index, by its key.
TEST_P(Muestra, CadaFilaSeHallaPorSuClave)
{
    const Base base(RutaMuestra(GetParam()));
    const Tabla tabla = base.AbreTabla("MSysACEs");
    const IndiceReal& indice = tabla.definicion().indicesReales.at(0);

    int filas = 0;
    for (Cursor cursor(tabla); cursor.Siguiente(); ++filas) {
        const ClaveDeFila clave = ClaveDe(tabla, indice, cursor.fila());
        const std::vector<quint8> bytes(clave.bytes.begin(), clave.bytes.end());
        EXPECT_THAT(FilasConClave(tabla, indice, bytes), testing::Contains(cursor.puntero()));
    }
    EXPECT_GT(filas, 40);
}

INSTANTIATE_TEST_SUITE_P(Todas, Muestra, testing::ValuesIn(Muestras()), [](const auto& caso) {
    QString nombre = caso.param;
    return "De" + nombre.replace(u'-', u'_').section(u'.', 0, 0).toStdString();
});

TEST(MuestraDeFilasMovidas, SeLeenEnSuPrimerSitio)
{
    const Base base(RutaMuestra("2003-overflow.mdb"));
    const Tabla tabla = base.AbreTabla("Table1");
    const Columna& primera = tabla.definicion().columnas.at(0);

    std::vector<QString> valores;
    std::vector<quint32> paginas;
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        valores.push_back(TextoExacto(cursor.fila().Lee(primera)));
        if (cursor.fila().NumeroDePagina() != cursor.puntero().pagina)
            paginas.push_back(cursor.fila().NumeroDePagina());
        const auto otraVez = tabla.FilaEn(cursor.puntero());
        ASSERT_TRUE(otraVez);
        EXPECT_EQ(otraVez->Lee(primera), cursor.fila().Lee(primera));
    }
    EXPECT_EQ(valores.size(), 7U);
    EXPECT_FALSE(paginas.empty());
}

TEST(MuestraDeFilasBorradas, NoSeVenNiPorSuSitio)
{
    const Base base(RutaMuestra("2000-deleted-rows.mdb"));
    const Tabla tabla = base.AbreTabla("Table");

    int vivas = 0;
    int sitios = 0;
    quint32 pagina = 0;
    for (Cursor cursor(tabla); cursor.Siguiente(); ++vivas)
        pagina = cursor.puntero().pagina;
    const PaginaDatos datos = LeePaginaDatos(tabla.paginas(), pagina);
    for (std::size_t i = 0; i < datos.Ranuras(); ++i)
        sitios += tabla.FilaEn({.pagina = pagina, .fila = static_cast<quint8>(i)}) ? 1 : 0;
    EXPECT_EQ(vivas, 2);
    EXPECT_EQ(sitios, 2);
    EXPECT_GT(datos.Ranuras(), 2U);
    EXPECT_FALSE(tabla.FilaEn({.pagina = pagina, .fila = 200}));
}

TEST(Catalogo, SabeQueTablasVeElUsuario)
{
    const Base base(RutaMuestra("2003-indices.mdb"));

    std::vector<QString> nombres;
    for (const Objeto& objeto : base.catalogo().TablasDeUsuario())
        nombres.push_back(objeto.nombre);

    EXPECT_THAT(nombres, ElementsAre("Table1", "Table2", "Table3"));
    ASSERT_NE(base.catalogo().TablaDe("msysobjects"), nullptr);
    EXPECT_TRUE(base.catalogo().TablaDe("msysobjects")->DeSistema());
    EXPECT_EQ(base.catalogo().TablaDe("Table4"), nullptr);
    EXPECT_EQ(base.version(), Version::Jet4);
}

TEST(Catalogo, CadaGeneracionSeConoce)
{
    EXPECT_EQ(Base(RutaMuestra("97-types.mdb")).version(), Version::Jet3);
    EXPECT_EQ(Base(RutaMuestra("2000-composite-index.mdb")).version(), Version::Jet4);
    EXPECT_EQ(Base(RutaMuestra("2010-types.accdb")).version(), Version::Ace2010);
}

} // namespace
