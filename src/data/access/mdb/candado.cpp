#include "data/access/mdb/candado.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/codificacion.h"
#include "data/plantilla.h"
#include <QFileInfo>
#include <QScopeGuard>
#include <QSysInfo>
#include <algorithm>
#include <array>
#include <thread>

namespace tolmo::data::access::mdb {
namespace {

// Beyond the 2 GiB that a database may reach.
constexpr qint64 ByteEscritor = qint64{1} << 31;
constexpr qint64 ByteLectores = ByteEscritor + 1;
// Held by whoever waits for the readers to leave, so that new ones don't keep it waiting for ever.
constexpr qint64 ByteTurno = ByteEscritor + 2;
// Held by readers who found a commit in their way: the next commit lets them in first.
constexpr qint64 ByteLectoresEnEspera = ByteEscritor + 3;
// Held by whoever is the next to write, so that one who commits without a pause lets others in.
constexpr qint64 ByteCola = ByteEscritor + 4;

constexpr qint64 PrimerUsuario = 0x10000001;
constexpr qint64 Usuarios = 255;
constexpr std::size_t TamEntrada = 64;
constexpr std::size_t TamNombre = 32;

constexpr auto Pausa = std::chrono::milliseconds(2);

// clang-format off
constexpr Plantilla Abierto(u"El fichero está abierto en otro programa{quien}, y mientras tanto sólo se puede leer. Cierre ese programa y repita la operación");
constexpr Plantilla LdbDeOtroUsuario(u"No se puede escribir en el fichero {ldb}, que dice quién tiene abierta la base de datos: es de otro usuario. Cierre los programas que la usan y bórrelo");
constexpr Plantilla LdbNoSeCrea(u"No se puede crear el fichero {ldb}, que dice quién tiene abierta la base de datos mientras se escribe en ella: hace falta permiso para escribir en su carpeta");
// clang-format on

/// A name of an entry, up to its first zero; what could upset a message becomes a blank.
QString NombreDeEntrada(std::span<const quint8> bytes)
{
    const auto fin = std::find(bytes.begin(), bytes.end(), quint8{0});
    QString nombre = DesdeWindows1252(QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                                 static_cast<qsizetype>(fin - bytes.begin())));
    for (QChar& letra : nombre)
        if (!letra.isPrint())
            letra = u' ';
    return nombre.simplified();
}

/// Who has the first of the places that are taken, as far as his entry tells.
QString QuienLoTiene(FicheroDeDisco& ldb)
{
    const auto byte = ldb.BloqueoAjeno(PrimerUsuario, Usuarios);
    std::array<quint8, TamEntrada> entrada{};
    if (byte)
        ldb.Lee((*byte - PrimerUsuario) * static_cast<qint64>(TamEntrada), entrada);
    const QString equipo = NombreDeEntrada(std::span(entrada).first(TamNombre));
    const QString usuario = NombreDeEntrada(std::span(entrada).subspan(TamNombre));
    QString quien;
    if (!equipo.isEmpty())
        quien += QStringLiteral(" (equipo ") + equipo;
    if (!usuario.isEmpty())
        quien += (quien.isEmpty() ? QStringLiteral(" (") : QStringLiteral(", ")) +
                 QStringLiteral("usuario ") + usuario;
    return quien.isEmpty() ? quien : quien + u')';
}

void PonNombre(std::span<quint8> hueco, const QString& nombre)
{
    // One byte less, for the zero at the end.
    const QByteArray bytes = AWindows1252(nombre).left(static_cast<qsizetype>(hueco.size()) - 1);
    std::copy(bytes.begin(), bytes.end(), hueco.begin());
}

} // namespace

AbiertoEnOtroPrograma::AbiertoEnOtroPrograma(const QString& ruta, const QString& quien)
    : ErrorMdb(Motivo::EnUso, Abierto({{"quien", quien}}), {.fichero = ruta}), quien_(quien)
{
}

QString RutaLdb(const QString& ruta)
{
    const QFileInfo base(ruta);
    const bool moderna = base.suffix().compare(QLatin1String("accdb"), Qt::CaseInsensitive) == 0;
    return base.path() + u'/' + base.completeBaseName() +
           (moderna ? QLatin1String(".laccdb") : QLatin1String(".ldb"));
}

Candado::Candado(Disco& disco, FicheroDeDisco& base, const QString& ruta,
                 std::chrono::milliseconds espera)
    : disco_(disco), base_(base), ruta_(ruta), espera_(espera), rutaLdb_(RutaLdb(ruta))
{
    // The management program may have made it in capitals, on a share that takes no notice of case.
    const QString mayusculas = QFileInfo(rutaLdb_).path() + u'/' +
                               QFileInfo(rutaLdb_).completeBaseName() + u'.' +
                               QFileInfo(rutaLdb_).suffix().toUpper();
    if (!disco_.Estado(rutaLdb_) && disco_.Estado(mayusculas))
        rutaLdb_ = mayusculas;
}

Candado::~Candado()
{
    SaleDeEscribir();
    SaleDeLeer();
}

bool Candado::Espera(const std::function<bool()>& intenta)
{
    const auto fin = std::chrono::steady_clock::now() + espera_;
    while (!intenta()) {
        if (std::chrono::steady_clock::now() >= fin)
            return false;
        std::this_thread::sleep_for(Pausa);
    }
    return true;
}

void Candado::Exige(const std::function<bool()>& intenta)
{
    if (!Espera(intenta))
        throw ErrorMdb(Motivo::EnUso,
                       QStringLiteral("Otra ventana o proceso de este programa tiene el fichero "
                                      "ocupado: espere a que termine y repita la operación"),
                       {.fichero = ruta_});
}

void Candado::EntraALeer()
{
    const auto intenta = [this] {
        try {
            // Whoever holds the turn is about to write; in a moment it is over.
            if (!base_.Bloquea(ByteTurno, 1, Cerrojo::Compartido))
                return false;
            const auto pasa = qScopeGuard([this] { base_.Desbloquea(ByteTurno, 1); });
            return base_.Bloquea(ByteLectores, 1, Cerrojo::Compartido);
        } catch (const ErrorMdb&) {
            return true;
        }
    };
    if (intenta())
        return;
    base_.Bloquea(ByteLectoresEnEspera, 1, Cerrojo::Compartido);
    const auto sale = qScopeGuard([this] { base_.Desbloquea(ByteLectoresEnEspera, 1); });
    Exige(intenta);
}

void Candado::SaleDeLeer()
{
    base_.Desbloquea(ByteLectores, 1);
}

void Candado::EntraAEscribir()
{
    Exige([this] { return base_.Bloquea(ByteCola, 1, Cerrojo::Exclusivo); });
    const auto sale = qScopeGuard([this] { base_.Desbloquea(ByteCola, 1); });
    Exige([this] { return base_.Bloquea(ByteEscritor, 1, Cerrojo::Exclusivo); });
}

void Candado::TomaLosUsuarios()
{
    try {
        Exige([this] {
            AbreLdb();
            usuariosTomados_ = ldb_->Bloquea(PrimerUsuario, Usuarios, Cerrojo::Exclusivo);
            // The last user of the management program may have taken it away between the steps.
            if (!EsElDeAhora(*ldb_))
                return false;
            if (!usuariosTomados_)
                throw AbiertoEnOtroPrograma(ruta_, QuienLoTiene(*ldb_));
            return true;
        });
        Anota();
    } catch (...) {
        SueltaLosUsuarios();
        throw;
    }
}

void Candado::AbreLdb()
{
    usuariosTomados_ = false;
    for (bool retirado = false;; retirado = true) {
        try {
            ldb_ = disco_.Crea(rutaLdb_, ruta_);
            return;
        } catch (const ErrorDeDisco& error) {
            if (!error.FaltaPermiso())
                throw;
            if (retirado || !disco_.Estado(rutaLdb_))
                throw ErrorMdb(Motivo::NoSeEscribe, LdbNoSeCrea({{"ldb", rutaLdb_}}),
                               {.fichero = ruta_});
        }
        RetiraLdb();
    }
}

/// Takes away one that this user may not write to, where nobody uses it.
void Candado::RetiraLdb() const
{
    std::unique_ptr<FicheroDeDisco> ldb;
    try {
        ldb = disco_.Abre(rutaLdb_, Uso::Leer);
        // Shared ones are all that a reader may have; they keep the others out as well.
        const bool nadie = ldb->Bloquea(PrimerUsuario, Usuarios, Cerrojo::Compartido);
        if (nadie && !ldb->BloqueoAjeno(0, 0) && EsElDeAhora(*ldb)) {
            disco_.Borra(rutaLdb_);
            return;
        }
    } catch (const ErrorMdb&) {
        if (!disco_.Estado(rutaLdb_))
            return;
        throw ErrorMdb(Motivo::NoSeEscribe, LdbDeOtroUsuario({{"ldb", rutaLdb_}}),
                       {.fichero = ruta_});
    }
    throw AbiertoEnOtroPrograma(ruta_, QuienLoTiene(*ldb));
}

bool Candado::EsElDeAhora(FicheroDeDisco& ldb) const
{
    const auto ahora = disco_.Estado(rutaLdb_);
    return ahora && ahora->MismoFichero(ldb.Estado());
}

void Candado::Anota()
{
    std::array<quint8, TamEntrada> entrada{};
    PonNombre(std::span(entrada).first(TamNombre), QSysInfo::machineHostName());
    PonNombre(std::span(entrada).subspan(TamNombre), QStringLiteral("Admin"));
    // The first user's, whom others find in their way.
    ldb_->Escribe(0, entrada);
}

void Candado::SueltaLosUsuarios()
{
    if (ldb_ == nullptr)
        return;
    // Taken away while all its bytes are still held: nobody else can be in it.
    if (std::exchange(usuariosTomados_, false)) {
        try {
            if (EsElDeAhora(*ldb_) && !ldb_->BloqueoAjeno(0, 0))
                disco_.Borra(rutaLdb_);
        } catch (const ErrorMdb&) {
            // One that stays behind without locks means nothing to anybody.
        }
    }
    ldb_.reset();
}

void Candado::CierraALectores()
{
    Exige([this] { return base_.Bloquea(ByteLectoresEnEspera, 1, Cerrojo::Exclusivo); });
    base_.Desbloquea(ByteLectoresEnEspera, 1);
    Exige([this] { return base_.Bloquea(ByteTurno, 1, Cerrojo::Exclusivo); });
    lectoresFuera_ = true;
    try {
        Exige([this] { return base_.Bloquea(ByteLectores, 1, Cerrojo::Exclusivo); });
    } catch (...) {
        AbreALectores();
        throw;
    }
}

void Candado::AbreALectores()
{
    if (!std::exchange(lectoresFuera_, false))
        return;
    base_.Desbloquea(ByteLectores, 1);
    base_.Desbloquea(ByteTurno, 1);
}

void Candado::SaleDeEscribir()
{
    AbreALectores();
    SueltaLosUsuarios();
    base_.Desbloquea(ByteEscritor, 1);
}

} // namespace tolmo::data::access::mdb
