#include "data/access/mdb/disco.h"
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolmo::data::access::mdb {
namespace {

[[noreturn]] void Falla(Motivo motivo, const QString& frase, const QString& ruta)
{
    throw ErrorDeDisco(motivo, frase, ruta, errno);
}

[[noreturn]] void NoExiste(const QString& ruta)
{
    throw ErrorMdb(Motivo::NoSeAbre, QStringLiteral("El fichero no existe"), {.fichero = ruta});
}

template <typename Llamada> auto SinInterrumpir(Llamada llamada)
{
    auto resultado = llamada();
    while (resultado < 0 && errno == EINTR)
        resultado = llamada();
    return resultado;
}

EstadoFichero EstadoDe(const struct stat& datos)
{
    constexpr qint64 Nanosegundos = 1'000'000'000;
    return {.volumen = datos.st_dev,
            .fichero = datos.st_ino,
            .tam = datos.st_size,
            .modificado = datos.st_mtim.tv_sec * Nanosegundos + datos.st_mtim.tv_nsec};
}

class FicheroPosix : public FicheroDeDisco {
  public:
    FicheroPosix(int descriptor, const QString& ruta) : descriptor_(descriptor), ruta_(ruta) {}
    ~FicheroPosix() override { ::close(descriptor_); }
    FicheroPosix(const FicheroPosix&) = delete;
    FicheroPosix& operator=(const FicheroPosix&) = delete;

    EstadoFichero Estado() override
    {
        struct stat datos {};
        if (::fstat(descriptor_, &datos) != 0)
            Falla(Motivo::NoSeAbre, QStringLiteral("El fichero no se puede consultar"), ruta_);
        return EstadoDe(datos);
    }

    std::size_t Lee(qint64 posicion, std::span<quint8> bytes) override
    {
        std::size_t leidos = 0;
        while (leidos < bytes.size()) {
            const auto trozo = SinInterrumpir([&] {
                return ::pread(descriptor_, bytes.data() + leidos, bytes.size() - leidos,
                               posicion + static_cast<qint64>(leidos));
            });
            if (trozo < 0)
                Falla(Motivo::Cortado, QStringLiteral("El fichero no se puede leer"), ruta_);
            if (trozo == 0)
                break;
            leidos += static_cast<std::size_t>(trozo);
        }
        return leidos;
    }

    void Escribe(qint64 posicion, std::span<const quint8> bytes) override
    {
        std::size_t escritos = 0;
        while (escritos < bytes.size()) {
            const auto trozo = SinInterrumpir([&] {
                return ::pwrite(descriptor_, bytes.data() + escritos, bytes.size() - escritos,
                                posicion + static_cast<qint64>(escritos));
            });
            if (trozo < 0)
                Falla(Motivo::NoSeEscribe, QStringLiteral("No se puede escribir"), ruta_);
            escritos += static_cast<std::size_t>(trozo);
        }
    }

    void Recorta(qint64 tam) override
    {
        if (SinInterrumpir([&] { return ::ftruncate(descriptor_, tam); }) != 0)
            Falla(Motivo::NoSeEscribe, QStringLiteral("No se puede escribir"), ruta_);
    }

    void Sincroniza() override
    {
        if (SinInterrumpir([&] { return ::fdatasync(descriptor_); }) != 0)
            Falla(Motivo::NoSeEscribe, QStringLiteral("No se puede escribir"), ruta_);
    }

    bool Bloquea(qint64 desde, qint64 largo, Cerrojo cerrojo) override
    {
        struct flock tramo = Tramo(desde, largo);
        tramo.l_type = cerrojo == Cerrojo::Exclusivo ? F_WRLCK : F_RDLCK;
        if (SinInterrumpir([&] { return ::fcntl(descriptor_, F_OFD_SETLK, &tramo); }) == 0)
            return true;
        if (errno != EAGAIN && errno != EACCES)
            Falla(Motivo::NoSeEscribe, QStringLiteral("El fichero no se puede bloquear"), ruta_);
        return false;
    }

    void Desbloquea(qint64 desde, qint64 largo) override
    {
        struct flock tramo = Tramo(desde, largo);
        tramo.l_type = F_UNLCK;
        ::fcntl(descriptor_, F_OFD_SETLK, &tramo);
    }

    std::optional<qint64> BloqueoAjeno(qint64 desde, qint64 largo) override
    {
        struct flock tramo = Tramo(desde, largo);
        tramo.l_type = F_WRLCK;
        if (::fcntl(descriptor_, F_OFD_GETLK, &tramo) != 0 || tramo.l_type == F_UNLCK)
            return std::nullopt;
        return std::max<qint64>(tramo.l_start, desde);
    }

  private:
    // Locks of the open file, not of the process: the others are lost when any descriptor of the
    // same file is closed anywhere in the process.
    static struct flock Tramo(qint64 desde, qint64 largo)
    {
        struct flock tramo {};
        tramo.l_whence = SEEK_SET;
        tramo.l_start = desde;
        tramo.l_len = largo;
        return tramo;
    }

    int descriptor_;
    QString ruta_;
};

class DiscoPosix : public Disco {
  public:
    std::unique_ptr<FicheroDeDisco> Abre(const QString& ruta, Uso uso) override
    {
        const int descriptor = Descriptor(ruta, uso == Uso::Leer ? O_RDONLY : O_RDWR, 0);
        if (descriptor < 0 && errno == ENOENT)
            NoExiste(ruta);
        return Envuelve(descriptor, ruta,
                        uso == Uso::Leer ? Motivo::NoSeAbre : Motivo::NoSeEscribe);
    }

    std::unique_ptr<FicheroDeDisco> Crea(const QString& ruta, const QString& modelo) override
    {
        // Not both at once: in a folder that everybody may write to, a file of another user would
        // be refused.
        int descriptor = Descriptor(ruta, O_RDWR, 0);
        if (descriptor < 0 && errno == ENOENT) {
            descriptor = Descriptor(ruta, O_RDWR | O_CREAT | O_EXCL, 0600);
            if (descriptor >= 0)
                DaPermisosDe(descriptor, modelo);
            else if (errno == EEXIST)
                descriptor = Descriptor(ruta, O_RDWR, 0);
        }
        return Envuelve(descriptor, ruta, Motivo::NoSeEscribe);
    }

    std::unique_ptr<FicheroDeDisco> CreaNuevo(const QString& ruta) override
    {
        return Envuelve(Descriptor(ruta, O_RDWR | O_CREAT | O_EXCL, 0666), ruta,
                        Motivo::NoSeEscribe);
    }

    std::optional<EstadoFichero> Estado(const QString& ruta) override
    {
        struct stat datos {};
        if (::stat(QFile::encodeName(ruta).constData(), &datos) != 0)
            return std::nullopt;
        return EstadoDe(datos);
    }

    void Borra(const QString& ruta) override
    {
        if (::unlink(QFile::encodeName(ruta).constData()) != 0 && errno != ENOENT)
            Falla(Motivo::NoSeEscribe, QStringLiteral("El fichero no se puede borrar"), ruta);
    }

    void Renombra(const QString& ruta, const QString& nueva) override
    {
        if (::rename(QFile::encodeName(ruta).constData(), QFile::encodeName(nueva).constData()))
            Falla(Motivo::NoSeEscribe, QStringLiteral("El fichero no se puede renombrar"), ruta);
    }

    void SincronizaCarpetaDe(const QString& ruta) override
    {
        const QString carpeta = QFileInfo(ruta).path();
        const int descriptor =
            ::open(QFile::encodeName(carpeta).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (descriptor < 0)
            Falla(Motivo::NoSeEscribe, QStringLiteral("La carpeta no se puede abrir"), carpeta);
        const int resultado = ::fsync(descriptor);
        const int error = errno;
        ::close(descriptor);
        errno = error;
        // Some shares have nothing to write for a folder and say so.
        if (resultado != 0 && error != EINVAL && error != ENOTSUP)
            Falla(Motivo::NoSeEscribe, QStringLiteral("La carpeta no se puede escribir"), carpeta);
    }

  private:
    static int Descriptor(const QString& ruta, int marcas, mode_t permisos)
    {
        // Without waiting: a pipe of that name has nobody at its other end.
        return SinInterrumpir([&] {
            return ::open(QFile::encodeName(ruta).constData(), marcas | O_CLOEXEC | O_NONBLOCK,
                          permisos);
        });
    }

    /// Whatever the mask of this process, and the owner too where that is allowed.
    static void DaPermisosDe(int descriptor, const QString& modelo)
    {
        struct stat datos {};
        if (::stat(QFile::encodeName(modelo).constData(), &datos) != 0)
            return;
        if (::fchown(descriptor, datos.st_uid, datos.st_gid) != 0) {
            [[maybe_unused]] const int soloElGrupo =
                ::fchown(descriptor, static_cast<uid_t>(-1), datos.st_gid);
        }
        ::fchmod(descriptor, datos.st_mode & 0666);
    }

    static std::unique_ptr<FicheroDeDisco> Envuelve(int descriptor, const QString& ruta,
                                                    Motivo motivo)
    {
        if (descriptor < 0)
            Falla(motivo, QStringLiteral("El fichero no se puede abrir"), ruta);
        auto fichero = std::make_unique<FicheroPosix>(descriptor, ruta);
        struct stat datos {};
        if (::fstat(descriptor, &datos) != 0 || !S_ISREG(datos.st_mode))
            NoExiste(ruta);
        return fichero;
    }
};

} // namespace

QString ErrorDelSistema(int numero)
{
    switch (numero) {
    case EACCES:
    case EPERM:
        return QStringLiteral("Permiso denegado");
    case EROFS:
        return QStringLiteral("El disco es de sólo lectura");
    case ENOENT:
        return QStringLiteral("No existe el fichero o la carpeta");
    case EEXIST:
        return QStringLiteral("Ya existe");
    case ENOSPC:
        return QStringLiteral("No queda sitio en el disco");
    case EDQUOT:
        return QStringLiteral("Este usuario ha llegado a su límite de espacio en el disco");
    case EFBIG:
        return QStringLiteral("El fichero es demasiado grande para este disco");
    case EIO:
        return QStringLiteral("El disco ha fallado");
    case EMFILE:
    case ENFILE:
        return QStringLiteral("Hay demasiados ficheros abiertos");
    case ENOLCK:
        return QStringLiteral("El sistema no da más bloqueos");
    case ETIMEDOUT:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ESTALE:
        return QStringLiteral("El servidor del fichero no responde o ya no lo tiene");
    default:
        return qt_error_string(numero);
    }
}

ErrorDeDisco::ErrorDeDisco(Motivo motivo, const QString& frase, const QString& ruta, int numero)
    : ErrorMdb(motivo, frase + QStringLiteral(": ") + ErrorDelSistema(numero), {.fichero = ruta}),
      numero_(numero)
{
}

bool ErrorDeDisco::FaltaPermiso() const
{
    return numero_ == EACCES || numero_ == EPERM || numero_ == EROFS;
}

Disco& DiscoDelSistema()
{
    static DiscoPosix disco;
    return disco;
}

} // namespace tolmo::data::access::mdb
