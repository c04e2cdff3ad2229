#pragma once
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <stdexcept>
#include <vector>

/// What a test shop is made like.
struct OpcionesTienda {
    QString generacion = "1.6.0"; ///< "1.5.6", "1.6.0" or "1.6.1"
    QString version{};            ///< `ps_version_db`; empty is the usual one of the generation
    QString prefijo = "ps_";      ///< of its tables
    int idiomas = 2;              ///< 1 to 6: es, en, fr, de, it, pt with the ids 1 to 6
};

/// The test shop did not come up, or a sentence, file or page that the test relies on failed.
struct ErrorTienda : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Servidor { Mysql, Ftp, Http };

/// A private shop on real servers (tools/tienda), in a temporary folder that goes with it, even
/// when the test program is killed. All paths of files are relative to the shop's folder.
class TiendaDePrueba {
  public:
    /// Throws ErrorTienda with the end of the server's log if one doesn't start.
    explicit TiendaDePrueba(const OpcionesTienda& opciones = {});
    ~TiendaDePrueba();
    TiendaDePrueba(const TiendaDePrueba&) = delete;
    TiendaDePrueba& operator=(const TiendaDePrueba&) = delete;

    /// A fresh shop in the same servers (some 0.2 s): stopped servers and their settings are put
    /// back, logs emptied, sessions of the database ended.
    void Reinicia(const OpcionesTienda& opciones = {});

    /// A value of tienda.env without its "TIENDA_": Valor("MYSQL_PUERTO"). Throws if there is none.
    QString Valor(const QString& nombre) const;
    QString Carpeta() const { return Valor("CARPETA"); } ///< all of it, servers and logs too
    QString Raiz() const { return Valor("RAIZ"); } ///< the shop's folder on disk, no "/" behind
    QString Www() const { return Valor("WWW"); }   ///< "http://127.0.0.1:port/"
    QString Prefijo() const { return Valor("PREFIJO"); }
    QString Version() const { return Valor("VERSION"); }
    QString Bd() const { return Valor("BD"); }
    QString Usuario() const { return Valor("USUARIO"); } ///< of the database, by TCP and by socket
    QString Clave() const { return Valor("CLAVE"); }
    QString SocketMysql() const { return Valor("MYSQL_SOCKET"); }
    int PuertoMysql() const { return Valor("MYSQL_PUERTO").toInt(); }
    int PuertoHttp() const { return Valor("HTTP_PUERTO").toInt(); }
    int PuertoFtp() const { return Valor("FTP_PUERTO").toInt(); }
    QString UsuarioFtp() const { return Valor("FTP_USUARIO"); }
    QString ClaveFtp() const { return Valor("FTP_CLAVE"); }
    QString CarpetaFtp() const { return Valor("FTP_CARPETA"); } ///< the shop's, "/tienda/"

    /// Rows of a statement, as the administrator and with an empty sql_mode; NULL reads "NULL" and
    /// a zero date "0000-00-00". Throws ErrorTienda with the server's message.
    std::vector<QStringList> Sql(const QString& sentencia) const;
    /// The same for statements without rows; several may be parted by ";".
    void Ejecuta(const QString& sentencias) const { Sql(sentencias); }

    bool ExisteFichero(const QString& ruta) const;
    QByteArray LeeFichero(const QString& ruta) const;
    /// Makes the folders on its way too; what it writes belongs to the servers' user.
    void EscribeFichero(const QString& ruta, const QByteArray& contenido) const;
    void BorraFichero(const QString& ruta) const;
    /// The files below a folder ("" for all), sorted, hidden ones too.
    QStringList Ficheros(const QString& carpeta = {}) const;

    struct Pagina {
        int estado = 0; ///< HTTP status, 0 without an answer
        QByteArray cuerpo{};
    };
    /// GET of an address, or of a path in the shop ("ejecuta.php?x=1"); redirections are not
    /// followed.
    Pagina PaginaWeb(const QString& url) const;

    /// From here on counts what the logs give.
    void Marca();
    struct OrdenFtp {
        QString sesion{}; ///< number of the server's process
        QString orden{};  ///< the whole command, "STOR ejecuta.php"; the password reads "(hidden)"
        int codigo = 0;   ///< of its final answer
    };
    /// The commands that reached the FTP server since the mark, in their order. Waits for the log
    /// to be complete: until no session is left, or for 0.2 s of quiet if one stays open.
    std::vector<OrdenFtp> OrdenesFtp() const;
    /// The same as texts: "STOR ejecuta.php 226".
    QStringList ComandosFtp() const;
    /// The requests answered since the mark: "GET /ejecuta.php?x=1 200". One that is still running
    /// after 5 s is not among them.
    QStringList PeticionesHttp() const;

    /// A stopped server refuses connections; Sigue brings it back on its port.
    void Para(Servidor servidor);
    void Sigue(Servidor servidor);
    /// Drops the sessions of FTP in the middle of whatever they do; the server goes on listening.
    void CortaFtp();
    /// Starts a server anew with these lines added to its settings, until Reinicia.
    /// For single rules of the FTP server a ".ftpaccess" file in the shop's folder will do.
    void Ajusta(Servidor servidor, const QByteArray& lineas);

  private:
    QString carpeta_;
    QHash<QString, QString> valores_;
    qint64 marcaFtp_ = 0, marcaHttp_ = 0, marcaPendientes_ = 0;

    void Manda(const QStringList& argumentos, int segundos = 90) const;
    void LeeValores();
    bool HaySesionesFtp() const;
    QString Ruta(const QString& relativa) const;
};

/// The one shop of a test program: the first call brings it up, the next ones start it afresh.
TiendaDePrueba& TiendaComun(const OpcionesTienda& opciones = {});
