#include "data/access/mdb/diario.h"
#include "data/access/mdb/errores_mdb.h"
#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

// The layout, all numbers in little-endian order:
//   0  16  "KOV TOLMO diario"
//  16   4  version of this layout
//  20   4  page size
//  24   4  pages of the database before the commit
//  28   4  pages after it
//  32   4  user whose mark of change counts on
//  36   4  number of old pages
//  40  20  checksum of the database's first page up to the marks of change
//  60 512  marks of change before the commit
// 572      for each old page its number (4) and its bytes
//  ..  20  checksum of all that stands before
constexpr char Firma[] = "KOV TOLMO diario";
constexpr std::size_t TamFirma = sizeof Firma - 1;
constexpr quint32 VersionDiario = 1;
constexpr std::size_t TamSuma = 20;
constexpr std::size_t PosicionSuma = 40;
constexpr std::size_t PosicionMarcas = PosicionSuma + TamSuma;
constexpr std::size_t TamPrincipio = PosicionMarcas + MarcasDeCambio::Tam;
constexpr std::size_t TamNumero = 4;
constexpr std::size_t TamBufer = std::size_t{1} << 20;
constexpr quint32 PaginaMenor = 4096;

const QString Terminacion = QStringLiteral(".diario");
// Behind the name of one that doesn't belong to the file any longer.
const QString Ajeno = QStringLiteral(".ajeno");

// Against torn and foreign bytes, not against malice.
constexpr auto Suma = QCryptographicHash::Sha1;

QByteArrayView Vista(std::span<const quint8> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

/// Writes one after the other in large pieces, and sums up what it writes.
class Salida {
  public:
    explicit Salida(FicheroDeDisco& fichero) : fichero_(fichero) { bufer_.reserve(TamBufer); }

    void Pon(std::span<const quint8> bytes)
    {
        suma_.addData(Vista(bytes));
        Guarda(bytes);
    }
    void Pon32(quint32 numero)
    {
        std::array<quint8, TamNumero> bytes{};
        qToLittleEndian(numero, bytes.data());
        Pon(bytes);
    }
    void Cierra()
    {
        const QByteArray suma = suma_.result();
        Guarda(
            {reinterpret_cast<const quint8*>(suma.data()), static_cast<std::size_t>(suma.size())});
        Vuelca();
    }

  private:
    void Guarda(std::span<const quint8> bytes)
    {
        bufer_.insert(bufer_.end(), bytes.begin(), bytes.end());
        if (bufer_.size() >= TamBufer)
            Vuelca();
    }
    void Vuelca()
    {
        fichero_.Escribe(posicion_, bufer_);
        posicion_ += static_cast<qint64>(bufer_.size());
        bufer_.clear();
    }

    FicheroDeDisco& fichero_;
    QCryptographicHash suma_{Suma};
    std::vector<quint8> bufer_{};
    qint64 posicion_ = 0;
};

QByteArray SumaDeCabecera(FicheroDeDisco& base)
{
    std::array<quint8, MarcasDeCambio::Posicion> bytes{};
    base.Lee(0, bytes);
    return QCryptographicHash::hash(Vista(bytes), Suma);
}

std::size_t TamEntrada(const PlanDeEscritura& plan)
{
    return TamNumero + plan.tamPagina;
}

/// A journal that was read; its pages are fetched one by one.
struct DiarioLeido {
    PlanDeEscritura plan{};
    quint32 cuantas = 0;
    QByteArray sumaCabecera{};
};

/// Nothing when it isn't whole.
std::optional<DiarioLeido> LeeDiario(FicheroDeDisco& fichero)
{
    std::array<quint8, TamPrincipio> principio{};
    if (fichero.Lee(0, principio) != TamPrincipio ||
        !std::equal(Firma, Firma + TamFirma, principio.begin()))
        return std::nullopt;
    const Bytes bytes{principio};
    DiarioLeido leido;
    leido.plan = {.tamPagina = bytes.U32(20),
                  .paginasAntes = bytes.U32(24),
                  .paginasDespues = bytes.U32(28),
                  .usuario = static_cast<int>(bytes.U32(32))};
    leido.cuantas = bytes.U32(36);
    leido.sumaCabecera = Vista(bytes.Trozo(PosicionSuma, TamSuma).Todo()).toByteArray();
    std::copy_n(principio.begin() + PosicionMarcas, MarcasDeCambio::Tam,
                leido.plan.marcas.bytes.begin());

    const qint64 tam = fichero.Estado().tam;
    if (bytes.U32(16) != VersionDiario || leido.plan.tamPagina != PaginaMenor ||
        bytes.U32(32) >= MarcasDeCambio::Usuarios ||
        tam != static_cast<qint64>(TamPrincipio + leido.cuantas * TamEntrada(leido.plan) + TamSuma))
        return std::nullopt;

    QCryptographicHash suma{Suma};
    std::vector<quint8> bufer(TamBufer);
    const qint64 sumados = tam - static_cast<qint64>(TamSuma);
    for (qint64 posicion = 0; posicion < sumados;) {
        const auto trozo = std::span(bufer).first(
            std::min(TamBufer, static_cast<std::size_t>(sumados - posicion)));
        if (fichero.Lee(posicion, trozo) != trozo.size())
            return std::nullopt;
        suma.addData(Vista(trozo));
        posicion += static_cast<qint64>(trozo.size());
    }
    std::array<quint8, TamSuma> escrita{};
    if (fichero.Lee(sumados, escrita) != TamSuma || suma.result() != Vista(escrita))
        return std::nullopt;
    return leido;
}

/// True when the file is in a state that this commit can have left: the marks of the other users
/// are those of then, and the own one is the old count, 0 or a new one. Otherwise somebody has
/// written since, or a copy was put in the place of the file.
bool EsDe(FicheroDeDisco& base, const DiarioLeido& leido)
{
    const PlanDeEscritura& plan = leido.plan;
    MarcasDeCambio ahora;
    base.Lee(MarcasDeCambio::Posicion, ahora.bytes);
    const quint16 vieja = plan.marcas.De(plan.usuario);
    const quint16 nueva = MarcasDeCambio::Siguiente(vieja);
    const quint16 repuesta = MarcasDeCambio::Siguiente(nueva);
    const quint16 propia = ahora.De(plan.usuario);
    if (propia != vieja && propia != 0 && propia != nueva && propia != repuesta)
        return false;
    std::memcpy(ahora.bytes.data() + 2 * plan.usuario, plan.marcas.bytes.data() + 2 * plan.usuario,
                2);
    const qint64 tam = base.Estado().tam;
    const qint64 tamPagina = plan.tamPagina;
    return ahora == plan.marcas && tam >= plan.paginasAntes * tamPagina &&
           tam <= plan.paginasDespues * tamPagina && SumaDeCabecera(base) == leido.sumaCabecera;
}

void Repon(FicheroDeDisco& base, FicheroDeDisco& diario, const DiarioLeido& leido)
{
    const PlanDeEscritura& plan = leido.plan;
    std::vector<quint8> entrada(TamEntrada(plan));
    for (quint32 i = 0; i < leido.cuantas; ++i) {
        diario.Lee(static_cast<qint64>(TamPrincipio + i * entrada.size()), entrada);
        base.Escribe(qint64{Bytes(entrada).U32(0)} * plan.tamPagina,
                     std::span(entrada).subspan(TamNumero));
    }
    base.Recorta(qint64{plan.paginasAntes} * plan.tamPagina);
    // Further than the commit would have counted: somebody may have seen its pages.
    EscribeMarca(
        base, plan.usuario,
        MarcasDeCambio::Siguiente(MarcasDeCambio::Siguiente(plan.marcas.De(plan.usuario))));
    base.Sincroniza();
}

} // namespace

void EscribeMarca(FicheroDeDisco& base, int usuario, quint16 marca)
{
    std::array<quint8, 2> bytes{};
    qToLittleEndian(marca, bytes.data());
    base.Escribe(MarcasDeCambio::Posicion + 2 * usuario, bytes);
}

QStringList DiariosAjenos(const QString& ruta)
{
    const QFileInfo base(QFileInfo(ruta).canonicalFilePath());
    QStringList rutas;
    for (const QFileInfo& vecino : base.dir().entryInfoList(QDir::Files, QDir::Name))
        if (vecino.fileName().startsWith(base.fileName() + Terminacion + Ajeno))
            rutas << vecino.filePath();
    return rutas;
}

Diario::Diario(Disco& disco, const QString& ruta)
    : disco_(disco), base_(ruta), ruta_(ruta + Terminacion)
{
}

void Diario::Escribe(FicheroDeDisco& base, const PlanDeEscritura& plan)
{
    try {
        const auto fichero = disco_.Crea(ruta_, base_);
        fichero->Recorta(0);
        Salida salida(*fichero);
        salida.Pon({reinterpret_cast<const quint8*>(Firma), TamFirma});
        for (const quint32 numero :
             {VersionDiario, plan.tamPagina, plan.paginasAntes, plan.paginasDespues,
              static_cast<quint32>(plan.usuario), static_cast<quint32>(plan.reemplazadas.size())})
            salida.Pon32(numero);
        const QByteArray suma = SumaDeCabecera(base);
        salida.Pon({reinterpret_cast<const quint8*>(suma.data()), TamSuma});
        salida.Pon(plan.marcas.bytes);
        std::vector<quint8> pagina(plan.tamPagina);
        for (const quint32 numero : plan.reemplazadas) {
            if (base.Lee(qint64{numero} * plan.tamPagina, pagina) != pagina.size())
                throw ErrorMdb(Motivo::Cortado, QStringLiteral("Una página no se puede leer"),
                               {.pagina = numero});
            salida.Pon32(numero);
            salida.Pon(pagina);
        }
        salida.Cierra();
        fichero->Sincroniza();
        disco_.SincronizaCarpetaDe(ruta_);
    } catch (...) {
        try {
            disco_.Borra(ruta_);
        } catch (const ErrorMdb&) {
            // Whole or not, it changes nothing: its pages are those of the file.
        }
        throw;
    }
}

bool Diario::Completo() const
{
    return Existe() && LeeDiario(*disco_.Abre(ruta_, Uso::Leer)).has_value();
}

Recuperacion Diario::Recupera(FicheroDeDisco& base)
{
    if (!Existe())
        return Recuperacion::NoHabia;
    const auto fichero = disco_.Abre(ruta_, Uso::Leer);
    const std::optional<DiarioLeido> leido = LeeDiario(*fichero);
    if (!leido) {
        Borra();
        return Recuperacion::Incompleto;
    }
    if (!EsDe(base, *leido)) {
        ApartaAjeno();
        return Recuperacion::Ajeno;
    }
    Repon(base, *fichero, *leido);
    Borra();
    return Recuperacion::Repuesto;
}

void Diario::ApartaAjeno()
{
    // An earlier one stays: it tells of another save.
    const QString primero = ruta_ + Ajeno;
    QString nombre = primero;
    for (int numero = 2; disco_.Estado(nombre); ++numero)
        nombre = primero + QString::number(numero);
    disco_.Renombra(ruta_, nombre);
    disco_.SincronizaCarpetaDe(ruta_);
}

void Diario::Borra()
{
    disco_.Borra(ruta_);
    try {
        disco_.SincronizaCarpetaDe(ruta_);
    } catch (const ErrorMdb&) {
        // It is gone for everybody. At worst a power failure brings it back, and the commit is
        // taken back whole.
    }
}

} // namespace tolmo::data::access::mdb
