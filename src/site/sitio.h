#pragma once
#include "batch/registro.h"
#include "site/cFTP.h"
#include "site/esperas.h"

namespace tolmo::site {

/// The phrases that an answer is searched for, in any case of letters.
inline const QString FraseSinMysql = QStringLiteral("No se puede conectar con Mysql");
inline const QString FraseErrorConsulta = QStringLiteral("Error al ejecutar consulta:");

/// The shop's server as a run sees it: files go by FTP, scripts are fired by a GET and their text
/// answers are searched for fixed phrases. Nothing here stops a run: what fails is logged.
/// What goes over the wire is virtual, so that a test can write down the conversation.
class Sitio {
  public:
    Sitio(data::Programa& programa, batch::Escritores& escritores, batch::Registro& registro,
          data::Progreso& progreso, const Esperas& esperas);
    virtual ~Sitio() = default;

    // Deployment and site files (despliegue.cpp).

    /// Closes the session and opens a new one; it then stands in the login folder. A refusal is
    /// logged, and whoever uploads next finds out by that upload failing.
    virtual void AbrirFTP();
    void CierraFTP();
    /// Puts a local file into a folder of the server, which stays the session's folder.
    /// \returns false after a failure, which is logged
    virtual bool SubirFicheroWeb(const QString& RutaFLocal, const QString& NombreFDestino,
                                 const QString& CarpetaDestino);
    /// Deletes a file where the session stands now; finding none is normal and silent.
    virtual void BorrarFicheroWeb(const QString& Fichero);
    /// Deploys the six scripts. The first that fails is logged, the tabs are enabled again and the
    /// rest is not tried: the run goes on with what the server still holds.
    void SubirFicherosScripts();
    /// True while a failed upload keeps the session from taking commands.
    bool TransferenciaAbierta() const;

    // Remote scripts (guiones_remotos.cpp).

    /// Carries out one batch file on the server, announced in the log by `Proceso`.
    void EjecutaPHP(const QString& FicheroSentencias, const QString& Proceso);
    void BorraCachePrestashop();
    /// The body of a page, or an empty text on any failure.
    virtual QString RecuperaPagina(const QString& URL);
    /// The same for a script of the shop: `guion` is its name with its query string.
    QString RecuperaGuion(const QString& guion);

    cFTP& Ftp() { return mFTP_; }

  private:
    void EscribeCredenciales(const QString& ruta);
    void RegistraRespuesta(const QString& respuesta);

    data::Programa& programa_;
    batch::Escritores& escritores_;
    batch::Registro& registro_;
    data::Progreso& progreso_;
    Esperas esperas_;
    cFTP mFTP_;
};

} // namespace tolmo::site
