// What a file of Access of 500 MB costs in memory and time. Without a task it makes the file, if it
// isn't there, and runs each task on a copy in a process of its own.
#include "data/access/access.h"
#include "data/access/mdb/base_nueva.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>

using namespace tolmo;

namespace {

struct Tarea {
    const char* nombre;
    const char* sql;
};

constexpr Tarea Tareas[] = {
    {"open", ""},
    {"read every text of the biggest table",
     "SELECT COUNT(*),SUM(LEN(TEXTO)),MAX(CODIGO) FROM M_NOTAS"},
    {"fetch 300,000 rows of 4 columns", "SELECT * FROM M_STOCK"},
    {"join two tables by an index",
     "SELECT COUNT(*),SUM(CANTIDAD*PRECIO0) FROM M_STOCK INNER JOIN M_ARTIC ON M_STOCK.CODIGO=M_ARTIC.CODIGO"},
    {"join two tables without one",
     "SELECT COUNT(*),SUM(CANTIDAD) FROM M_STOCK INNER JOIN M_ARTIC ON M_STOCK.ARTICULO=M_ARTIC.ID"},
    {"order by a column without an index",
     "SELECT TOP 10 CODIGO,NOTAS FROM M_ARTIC ORDER BY NOMBRE DESC"},
    {"change 100,000 rows", "UPDATE M_ARTIC SET PRECIO0=PRECIO0+1,TEXTO0='otro' WHERE ID<100000"},
    {"change 100,000 long texts", "UPDATE M_ARTIC SET NOTAS=NOTAS & 'x' WHERE ID<100000"},
    {"change 100,000 keys", "UPDATE M_ARTIC SET CODIGO='B' & MID(CODIGO,2) WHERE ID<100000"},
    {"copy 150,000 rows within the file",
     "INSERT INTO M_ARTIC SELECT ID+1000000 AS ID,'C' & MID(CODIGO,2) AS CODIGO,NOMBRE,NOTAS,PRECIO0,TEXTO0 FROM M_ARTIC"},
    {"delete 150,000 rows", "DELETE FROM M_ARTIC"},
    {"delete all long texts", "DELETE FROM M_NOTAS"}};

std::unique_ptr<data::Proveedor> Abre(const QString& fichero)
{
    return data::AbreAccess("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + fichero);
}

void Crea(const QString& fichero)
{
    data::access::mdb::CreaBase(fichero);
    const auto base = Abre(fichero);
    base->Ejecuta("CREATE TABLE N (I INT)");
    base->Ejecuta("INSERT INTO N VALUES (0)");
    for (int i = 1; i < 300'000; i *= 2)
        base->Ejecuta(
            QStringLiteral("INSERT INTO N SELECT I+%1 AS I FROM N WHERE I+%1<300000").arg(i));
    base->Ejecuta(
        "CREATE TABLE M_ARTIC (ID INT,CODIGO nvarchar(20),NOMBRE nvarchar(80),NOTAS MEMO,PRECIO0 CURRENCY,TEXTO0 nvarchar(40))");
    base->Ejecuta("CREATE UNIQUE INDEX CODIGOS ON M_ARTIC (CODIGO)");
    base->Ejecuta(
        "CREATE TABLE M_STOCK (CODIGO nvarchar(20),ARTICULO INT,CANTIDAD DOUBLE,LOTE nvarchar(20))");
    base->Ejecuta("CREATE INDEX STOCKS ON M_STOCK (CODIGO,LOTE)");
    base->Ejecuta("CREATE TABLE M_NOTAS (CODIGO nvarchar(20),TEXTO MEMO)");
    base->Ejecuta(
        "INSERT INTO M_ARTIC SELECT I AS ID,'A' & FORMAT(I*7919 MOD 150000,'000000') AS CODIGO,'Artículo número ' & I*31 MOD 150000 AS NOMBRE,STRING(800+I MOD 400,'n') AS NOTAS,I*0.01 AS PRECIO0,'valor ' & I MOD 977 AS TEXTO0 FROM N WHERE I<150000");
    base->Ejecuta(
        "INSERT INTO M_STOCK SELECT 'A' & FORMAT(I MOD 150000,'000000') AS CODIGO,I MOD 150000 AS ARTICULO,I MOD 50 AS CANTIDAD,'L' & I AS LOTE FROM N");
    base->Ejecuta(
        "INSERT INTO M_NOTAS SELECT 'A' & FORMAT(I,'000000') AS CODIGO,STRING(4000+I MOD 1000,'t') AS TEXTO FROM N WHERE I<25000");
}

/// The most memory that the process has held, in MB.
double Memoria()
{
    QFile estado("/proc/self/status");
    if (!estado.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& linea : estado.readAll().split('\n'))
        if (linea.startsWith("VmHWM:"))
            return linea.mid(6).trimmed().split(' ')[0].toDouble() / 1024;
    return 0;
}

void Haz(const QString& fichero, const Tarea& tarea)
{
    QElapsedTimer reloj;
    reloj.start();
    const auto base = Abre(fichero);
    const QString sql = QString::fromUtf8(tarea.sql);
    if (sql.startsWith("SELECT"))
        base->Consulta(sql, false);
    else if (!sql.isEmpty())
        base->Ejecuta(sql);
    QTextStream(stdout)
        << QString::fromUtf8(tarea.nombre).leftJustified(40)
        << QString::number(static_cast<double>(reloj.elapsed()) / 1000, 'f', 2).rightJustified(8)
        << " s" << QString::number(Memoria(), 'f', 0).rightJustified(8) << " MB\n";
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication aplicacion(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments().mid(1);
    if (argumentos.isEmpty()) {
        QTextStream(stderr) << "memoria_mdb FILE [TASK]: makes FILE with about 500 MB if it isn't "
                               "there\n";
        return 2;
    }
    const QString fichero = argumentos[0];
    if (argumentos.size() > 1) {
        Haz(fichero, Tareas[argumentos[1].toInt()]);
        return 0;
    }
    if (!QFile::exists(fichero))
        Crea(fichero);
    const QString copia = fichero + ".copia.mdb";
    for (int i = 0; i < static_cast<int>(std::size(Tareas)); ++i) {
        QFile::remove(copia);
        QFile::copy(fichero, copia);
        QProcess::execute(QCoreApplication::applicationFilePath(), {copia, QString::number(i)});
    }
    QFile::remove(copia);
    return 0;
}
