#pragma once
#include "apoyo/carpeta.h"
#include "apoyo/tienda.h"
#include <QDate>
#include <QMap>
#include <functional>
#include <iosfwd>

/// What the built program did in one run.
struct ResultadoCorrida {
    int estado = -1;           ///< exit status; -1 when it crashed or didn't end in time
    QString salida{};          ///< standard output
    QString errores{};         ///< standard error
    QStringList log{};         ///< lines of the day's log file of this run, without their moment
    QList<QByteArray> lotes{}; ///< batches as they reached the server's script, in order
    struct Lista {
        QString nombre{}; ///< "imgborra.txt"
        QStringList lineas{};
    };
    QList<Lista> listas{}; ///< the lists as they reached their scripts, in order
    QStringList ftp{};     ///< "STOR ejecuta.php 226"
    QStringList http{};    ///< "GET /ejecuta.php 200"

    /// All sentences of all batches, without their "||".
    QStringList Sentencias() const;
    /// Those that begin so.
    QStringList Sentencias(const QString& comienzo) const;
    /// Those of one batch.
    QStringList SentenciasDe(int lote) const;
    /// The lines of all lists of one name.
    QStringList Lineas(const QString& nombre) const;
    /// The titles of the batches in the log.
    QStringList Titulos() const;
    /// The log lines from the first one that is `desde` to the next one that is `hasta`.
    QStringList Log(const QString& desde, const QString& hasta) const;
};

/// The built program in a folder of its own, with a company whose parameters lead to a test shop.
/// The company's tables are those of the sample company, empty but for what a test puts in.
class EmpresaReal {
  public:
    /// `parametros`: columns of m_empresa as Access SQL literals, over the values for the shop.
    explicit EmpresaReal(TiendaDePrueba& tienda, const QMap<QString, QString>& parametros = {});

    /// Runs sentences of Access SQL, parted by ";" at line ends, on the company's database.
    void Sql(const QString& guion);
    /// The same on the shared database.
    void SqlComun(const QString& guion);

    /// Starts the program with this command line and waits for its end.
    ResultadoCorrida Corre(const QString& lineaDeOrdenes = "/PRESTASHOP:000001");

    /// What `corre` does to the shop, written down as a run of the program is; its result is the
    /// exit status.
    ResultadoCorrida Observa(const std::function<int(ResultadoCorrida&)>& corre);

    /// A command that starts the program, with its arguments; empty for none.
    QStringList delante{};
    /// Environment of the program, beside what every run has.
    QMap<QString, QString> entorno{};
    /// Seconds that a run may take.
    int segundos = 120;
    /// Called once when the program has printed a line that contains `cuando`.
    QString cuando{};
    std::function<void()> entonces{};

    CarpetaDePrueba& Carpeta() { return carpeta_; }
    TiendaDePrueba& Tienda() { return tienda_; }
    /// The current folder of the program as its log lines show it.
    QString Actual() const { return carpeta_.Ruta(); }
    /// The file of one of the databases.
    QString FicheroDeBase(const QString& nombre = "BD000001") const;
    /// The text that opens the company's database.
    QString CadenaDeBase() const;

  private:
    void EjecutaGuion(const QString& base, const QString& guion);
    int Lanza(const QString& lineaDeOrdenes, ResultadoCorrida& resultado);

    TiendaDePrueba& tienda_;
    CarpetaDePrueba carpeta_{};
};

/// For GoogleTest, which would show a text as its bytes.
void PrintTo(const QString& texto, std::ostream* salida);

/// A list with one entry a line, so that a comparison that fails shows the lines that differ.
std::string EnLineas(const QStringList& lista);

/// What a list of FTP commands does to files: "sesion" for a new session, "DELE a", "STOR a" by
/// bare name and without the answers: that to an upload given up in the middle is a matter of luck.
QStringList PasosFtp(const QStringList& ordenes);

/// The steps of one batch that got through.
QStringList PasosDeLote();
/// Those of the head of a run: the first session and the six scripts.
QStringList PasosDeCabecera();

/// Today as the shop's literal.
QString HoyMysql();

/// The SQL that makes an article with telling values; `cambios` are columns as Access literals.
QString SqlArticulo(const QString& codigo, const QMap<QString, QString>& cambios = {});

/// The SQL that makes a published family; the level is told by the caller.
QString SqlFamilia(const QString& clave, int nivel, const QString& descripcion,
                   const QMap<QString, QString>& cambios = {});
