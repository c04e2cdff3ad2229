#pragma once
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// How a test's FTP server differs from an ordinary one.
struct OpcionesServidorFtp {
    bool utf8 = true;  ///< offers UTF-8 names; otherwise it knows nothing of encodings
    QString ajustes{}; ///< further lines of its settings
};

/// A real ProFTPD on loopback, with one user, that goes with the test. The login folder is
/// `carpeta` and the session can't leave it: it sees it as "/".
class ServidorFtp {
  public:
    explicit ServidorFtp(const QString& carpeta, const OpcionesServidorFtp& opciones = {});
    ~ServidorFtp();
    ServidorFtp(const ServidorFtp&) = delete;
    ServidorFtp& operator=(const ServidorFtp&) = delete;

    QString Servidor() const { return QStringLiteral("127.0.0.1"); }
    int Puerto() const { return puerto_; }
    QString Usuario() const { return QStringLiteral("tolmo"); }
    QString Clave() const { return QStringLiteral("cla ve#1"); }

    /// The commands that the server has finished, in their order: "STOR a.txt 226". Passwords read
    /// "(hidden)", and the two numbers at the end of a PORT go with the test: "PORT 127,0,0,1 200".
    QStringList Registro() const;
    /// The same by control connection, in the order of the logins.
    QList<QStringList> Sesiones() const;
    /// Waits until no session is left, so that the log is whole.
    void EsperaFinDeSesiones() const;
    /// Cuts all sessions off and waits until they are gone; the server goes on listening.
    void CortaSesiones() const;

  private:
    void EscribeAjustes(const OpcionesServidorFtp& opciones);
    bool Arranca();
    QList<qint64> ProcesosDeSesion() const;

    QTemporaryDir estado_{}; ///< settings, passwords and logs
    QString carpeta_;
    int puerto_ = 0;
    QProcess proceso_{};
};
