#include "apoyo/servidor_ftp.h"
#include "apoyo/enchufe.h"
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int IntentosDePuerto = 5;
constexpr int EsperaDeArranque = 10000;
constexpr int VueltaMs = 10;

QString Salida(const QString& programa, const QStringList& argumentos)
{
    QProcess proceso;
    proceso.start(programa, argumentos);
    proceso.waitForFinished();
    return QString::fromLocal8Bit(proceso.readAllStandardOutput()).trimmed();
}

void Escribe(const QString& ruta, const QString& texto)
{
    QFile fichero(ruta);
    if (!fichero.open(QIODevice::WriteOnly))
        throw std::runtime_error("no se puede escribir " + ruta.toStdString());
    fichero.write(texto.toUtf8());
    // The server refuses a file of passwords that others may read.
    fichero.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

/// An ordinary user's path often lacks the folder of the servers.
QString Programa()
{
    const QString hallado = QStandardPaths::findExecutable("proftpd");
    return hallado.isEmpty() ? QStringLiteral("/usr/sbin/proftpd") : hallado;
}

QByteArray Lee(const QString& ruta)
{
    QFile fichero(ruta);
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

const QString Ajustes = QStringLiteral(R"(LoadModule mod_vroot.c
VRootEngine on
DefaultRoot ~
ServerName "prueba"
ServerType standalone
DefaultAddress 127.0.0.1
SocketBindTight on
UseIPv6 off
Port @PUERTO@
User @USUARIO@
Group @GRUPO@
PidFile "@ESTADO@/pid"
ScoreboardFile "@ESTADO@/pizarra"
DelayTable none
DelayEngine off
ControlsEngine off
CapabilitiesEngine off
AuthPAM off
AuthOrder mod_auth_file.c
AuthUserFile "@ESTADO@/usuarios"
RequireValidShell off
RootLogin on
UseFtpUsers off
PersistentPasswd off
UseReverseDNS off
WtmpLog off
UseLastlog off
AllowOverwrite on
AllowOverride on
TransferLog none
LogFormat ordenes "%P %s %r"
ExtendedLog "@ESTADO@/ordenes" ALL ordenes
@MAS@
)");

} // namespace

ServidorFtp::ServidorFtp(const QString& carpeta, const OpcionesServidorFtp& opciones)
    : carpeta_(QDir(carpeta).canonicalPath())
{
    const QString clave = Salida("perl", {"-e", "print crypt($ARGV[0], '$6$prueba$')", Clave()});
    Escribe(estado_.filePath("usuarios"), QStringLiteral("%1:%2:%3:%4::%5:/bin/sh\n")
                                              .arg(Usuario(), clave)
                                              .arg(getuid())
                                              .arg(getgid())
                                              .arg(carpeta_));
    // The port was free a moment ago; another program may have been quicker.
    for (int intento = 0; intento < IntentosDePuerto; ++intento) {
        puerto_ = PuertoLibre();
        EscribeAjustes(opciones);
        if (Arranca())
            return;
    }
    throw std::runtime_error("ProFTPD no arranca: " +
                             Lee(estado_.filePath("salida")).toStdString());
}

ServidorFtp::~ServidorFtp()
{
    // Asked to end it takes its time; nothing of it outlives its folder anyway.
    CortaSesiones();
    proceso_.kill();
    proceso_.waitForFinished(5000);
}

void ServidorFtp::EscribeAjustes(const OpcionesServidorFtp& opciones)
{
    QString ajustes = Ajustes;
    ajustes.replace("@PUERTO@", QString::number(puerto_));
    ajustes.replace("@USUARIO@", Salida("id", {"-un"}));
    ajustes.replace("@GRUPO@", Salida("id", {"-gn"}));
    ajustes.replace("@ESTADO@", estado_.path());
    ajustes.replace("@MAS@",
                    opciones.ajustes + (opciones.utf8 ? "" : "\nLangEngine off\nUseEncoding off"));
    Escribe(estado_.filePath("ajustes"), ajustes);
}

bool ServidorFtp::Arranca()
{
    // With its test gone, however it went, the server goes too.
    proceso_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    proceso_.setProcessChannelMode(QProcess::MergedChannels);
    proceso_.setStandardOutputFile(estado_.filePath("salida"));
    proceso_.start(Programa(), {"--nodaemon", "--config", estado_.filePath("ajustes")});
    if (!proceso_.waitForStarted())
        return false;
    for (int espera = 0; espera < EsperaDeArranque; espera += VueltaMs) {
        const Enchufe visita = Enchufe::Conecta(puerto_);
        if (visita.Vale() && visita.Lee().startsWith("220"))
            return true;
        if (proceso_.state() != QProcess::Running || proceso_.waitForFinished(VueltaMs))
            return false;
    }
    return false;
}

QStringList ServidorFtp::Registro() const
{
    QStringList todas;
    for (const QStringList& sesion : Sesiones())
        todas << sesion;
    return todas;
}

QList<QStringList> ServidorFtp::Sesiones() const
{
    static const QRegularExpression forma(QStringLiteral("^(\\d+) (\\S+) (.*)$"));
    static const QRegularExpression puerto(
        QStringLiteral("^(PORT \\d+,\\d+,\\d+,\\d+),\\d+,\\d+$"));
    const QString registro = QString::fromUtf8(Lee(estado_.filePath("ordenes")));
    QStringList procesos;
    QList<QStringList> sesiones;
    for (const QString& linea : registro.split('\n', Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch m = forma.match(linea);
        if (!m.hasMatch())
            continue;
        if (!procesos.contains(m.captured(1))) {
            procesos << m.captured(1);
            sesiones << QStringList();
        }
        QString orden = m.captured(3);
        orden.replace(puerto, "\\1");
        sesiones[procesos.indexOf(m.captured(1))] << orden + ' ' + m.captured(2);
    }
    return sesiones;
}

void ServidorFtp::EsperaFinDeSesiones() const
{
    for (int espera = 0; espera < EsperaDeArranque && !ProcesosDeSesion().isEmpty();
         espera += VueltaMs)
        QThread::msleep(VueltaMs);
}

void ServidorFtp::CortaSesiones() const
{
    for (const qint64 proceso : ProcesosDeSesion())
        kill(static_cast<pid_t>(proceso), SIGKILL);
    EsperaFinDeSesiones();
}

/// The server's children: one process for each session.
QList<qint64> ServidorFtp::ProcesosDeSesion() const
{
    QList<qint64> procesos;
    if (proceso_.state() != QProcess::Running)
        return procesos;
    for (const QString& numero : QDir("/proc").entryList(QDir::Dirs)) {
        if (!numero[0].isDigit())
            continue;
        // "pid (name) state parent ..."; the name may hold blanks.
        const QByteArray ficha = Lee("/proc/" + numero + "/stat");
        const QList<QByteArray> campos = ficha.mid(ficha.lastIndexOf(')') + 2).split(' ');
        if (campos.size() > 1 && campos[1].toLongLong() == proceso_.processId())
            procesos << numero.toLongLong();
    }
    return procesos;
}
