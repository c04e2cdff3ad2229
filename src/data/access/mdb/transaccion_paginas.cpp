#include "data/access/mdb/transaccion_paginas.h"
#include "data/access/mdb/dispositivo_de_fichero.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/plantilla.h"
#include <QFileInfo>
#include <QScopeGuard>
#include <algorithm>
#include <stdexcept>
#include <tuple>

namespace tolmo::data::access::mdb {
namespace {

// The row pointers of the format would reach further; its length is the limit.
constexpr qint64 TamMaximo = qint64{1} << 31;
constexpr std::size_t PaginasPorEscritura = 256;

// Within this time of a change, a second one may leave the file's time as it was.
constexpr qint64 PasoDelReloj = 20'000'000;

// clang-format off
constexpr Plantilla AMediasYAbierto(u"Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. Ahora no se puede deshacer, porque está abierto en otro programa{quien}: cierre ese programa y repita la operación");
constexpr Plantilla AMediasSinPermiso(u"Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. No hay permiso para escribir en él: ábralo una vez con un usuario que pueda escribir");
constexpr Plantilla AMediasYNoSeDeshace(u"Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. No se ha podido deshacer: {porque}");
// clang-format on

QString SinEnlaces(const QString& ruta)
{
    const QString limpia = QFileInfo(ruta).canonicalFilePath();
    return limpia.isEmpty() ? ruta : limpia;
}

/// Pages that are pointed at come before those that point at them, as far as kinds of page can
/// tell: the global map, rows, other maps, leaves, nodes, definitions.
int TurnoDe(quint32 numero, quint8 tipo)
{
    constexpr quint32 PaginaMapaGlobal = 1;
    if (numero == PaginaMapaGlobal)
        return 0;
    switch (tipo) {
    case tipo_pagina::Datos:
        return 1;
    case tipo_pagina::MapaDeBits:
        return 2;
    case tipo_pagina::Hoja:
        return 3;
    case tipo_pagina::Nodo:
        return 4;
    case tipo_pagina::Definicion:
        return 5;
    default:
        return 6;
    }
}

} // namespace

TransaccionPaginas::TransaccionPaginas(const QString& ruta, const AperturaTransaccion& apertura)
    : nombre_(ruta), ruta_(SinEnlaces(ruta)), apertura_(apertura),
      disco_(apertura.disco != nullptr ? *apertura.disco : DiscoDelSistema()),
      diario_(disco_, ruta_)
{
    Abre();
    EntraALeer();
    AbreLimpias();
    candado_->SaleDeLeer();
}

TransaccionPaginas::~TransaccionPaginas() = default;

void TransaccionPaginas::Abre()
{
    std::shared_ptr<FicheroDeDisco> fichero;
    bool soloLectura = false;
    try {
        fichero = disco_.Abre(ruta_, Uso::LeerYEscribir);
    } catch (const ErrorMdb& error) {
        if (error.motivo() != Motivo::NoSeEscribe)
            throw;
        fichero = disco_.Abre(ruta_, Uso::Leer);
        soloLectura = true;
    }
    // Both refer to the file that is given up.
    candado_.reset();
    limpias_.reset();
    fichero_ = std::move(fichero);
    soloLectura_ = soloLectura;
    candado_ = std::make_unique<Candado>(disco_, *fichero_, ruta_, apertura_.espera);
}

void TransaccionPaginas::AbreLimpias()
{
    limpias_ = std::make_unique<FicheroPaginas>(std::make_unique<DispositivoDeFichero>(fichero_),
                                                nombre_, apertura_.apertura);
    formato_ = limpias_->formato();
    cambiadas_ = std::make_unique<PaginasCambiadas>(formato_.tamPagina, apertura_.cambios);
    Recuerda(TomaHuella());
    // A file that has grown between the two looks would not be noticed again.
    limpias_->Olvida({});
}

bool TransaccionPaginas::Reemplazado()
{
    const auto ahora = disco_.Estado(ruta_);
    if (!ahora)
        throw ErrorMdb(Motivo::NoSeAbre, QStringLiteral("El fichero ya no está"),
                       {.fichero = nombre_});
    return !ahora->MismoFichero(fichero_->Estado());
}

void TransaccionPaginas::ConElFicheroDeAhora(const std::function<void()>& bloquea)
{
    // A copy that was put in the place of the file, or a compacted one, is another file: a lock of
    // the old one keeps nobody out.
    try {
        bloquea();
        while (Reemplazado()) {
            Abre();
            bloquea();
        }
    } catch (...) {
        candado_->SaleDeLeer();
        candado_->SaleDeEscribir();
        throw;
    }
}

TransaccionPaginas::Huella TransaccionPaginas::TomaHuella()
{
    Huella huella{.estado = fichero_->Estado()};
    fichero_->Lee(formato_.EsJet3() ? MarcasDeCambio::PosicionJet3 : MarcasDeCambio::Posicion,
                  huella.marcas.bytes);
    return huella;
}

void TransaccionPaginas::Recuerda(const Huella& huella)
{
    huella_ = huella;
    const auto ahora = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    huellaDudosa_ = std::abs(ahora.count() - huella.estado.modificado) < PasoDelReloj;
}

bool TransaccionPaginas::Refresca()
{
    if (abierta_)
        return false;
    if (limpias_ != nullptr && !huellaDudosa_ && TomaHuella() == huella_)
        return false;
    AbreLimpias();
    return true;
}

FicheroPaginas& TransaccionPaginas::Limpias() const
{
    // Another file stands in the place of the one that was open, and it can't be read.
    if (limpias_ == nullptr)
        throw ErrorMdb(Motivo::NoSeAbre, QStringLiteral("El fichero ya no es el mismo"),
                       {.fichero = nombre_});
    return *limpias_;
}

Pagina TransaccionPaginas::Lee(quint32 numero)
{
    if (abierta_)
        if (const auto cambiada = cambiadas_->Lee(numero))
            return *cambiada;
    return Limpias().Lee(numero);
}

quint32 TransaccionPaginas::Cuantas() const
{
    return abierta_ ? cuantas_ : Limpias().Cuantas();
}

void TransaccionPaginas::ExigeAbierta() const
{
    if (!abierta_)
        throw std::logic_error("pages change in a transaction only");
}

std::span<quint8> TransaccionPaginas::Cambia(quint32 numero)
{
    ExigeAbierta();
    if (numero == 0)
        throw std::logic_error("the first page isn't written");
    return cambiadas_->Cambia(numero, [&] {
        const Bytes bytes = limpias_->Lee(numero).bytes;
        return std::vector<quint8>(bytes.Todo().begin(), bytes.Todo().end());
    });
}

quint32 TransaccionPaginas::Alarga()
{
    ExigeAbierta();
    if (qint64{cuantas_} >= TamMaximo / formato_.tamPagina)
        throw ErrorMdb(Motivo::Lleno,
                       QStringLiteral("El fichero ha llegado a los 2 GB, el límite de Access: "
                                      "compáctelo o reparta sus tablas en varios"),
                       {.fichero = nombre_});
    cambiadas_->Estrena(cuantas_, std::vector<quint8>(formato_.tamPagina));
    return cuantas_++;
}

void TransaccionPaginas::EntraALeer()
{
    const auto entra = [this] { ConElFicheroDeAhora([this] { candado_->EntraALeer(); }); };
    entra();
    // Whoever writes keeps readers out, so a journal that is there now was left behind.
    if (!diario_.Existe())
        return;
    if (soloLectura_ && !HayGuardadoAMedias())
        return;
    candado_->SaleDeLeer();
    if (soloLectura_)
        throw ErrorMdb(Motivo::NoSeEscribe, AMediasSinPermiso(), {.fichero = nombre_});
    ReponSiSePuede();
    entra();
}

bool TransaccionPaginas::EmpiezaLectura()
{
    if (abierta_ || lecturas_ > 0) {
        ++lecturas_;
        return false;
    }
    EntraALeer();
    try {
        const bool cambiado = Refresca();
        ++lecturas_;
        return cambiado;
    } catch (...) {
        candado_->SaleDeLeer();
        throw;
    }
}

void TransaccionPaginas::AcabaLectura()
{
    if (--lecturas_ == 0 && !abierta_)
        candado_->SaleDeLeer();
}

void TransaccionPaginas::EntraAEscribir()
{
    if (soloLectura_)
        throw ErrorMdb(Motivo::NoSeEscribe,
                       QStringLiteral("No hay permiso para escribir en el fichero"),
                       {.fichero = nombre_});
    ConElFicheroDeAhora([this] { candado_->EntraAEscribir(); });
    try {
        candado_->TomaLosUsuarios();
    } catch (const AbiertoEnOtroPrograma& error) {
        if (!HayGuardadoAMedias())
            throw;
        throw ErrorMdb(Motivo::EnUso, AMediasYAbierto({{"quien", error.Quien()}}),
                       {.fichero = nombre_});
    }
}

bool TransaccionPaginas::HayGuardadoAMedias() const
{
    try {
        return diario_.Completo();
    } catch (const ErrorMdb&) {
        return true;
    }
}

void TransaccionPaginas::Repon()
{
    if (!diario_.Existe())
        return;
    candado_->CierraALectores();
    if (diario_.Recupera(*fichero_) == Recuperacion::Repuesto)
        haDeshecho_ = true;
    candado_->AbreALectores();
}

void TransaccionPaginas::ReponSiSePuede()
{
    const auto sale = qScopeGuard([this] { candado_->SaleDeEscribir(); });
    try {
        EntraAEscribir();
        Repon();
    } catch (const ErrorMdb& error) {
        if (!HayGuardadoAMedias())
            return;
        if (error.motivo() == Motivo::EnUso)
            throw;
        throw ErrorMdb(error.motivo(), AMediasYNoSeDeshace({{"porque", error.Descripcion()}}));
    }
}

bool TransaccionPaginas::Empieza()
{
    if (abierta_)
        throw std::logic_error("a transaction is open already");
    if (formato_.EsJet3())
        throw ErrorMdb(Motivo::NoAdmitido,
                       QStringLiteral("Un fichero de Access 97 sólo se puede leer"),
                       {.fichero = nombre_});
    // Two statements that read and both want to write would wait for each other to end.
    candado_->SaleDeLeer();
    try {
        EntraAEscribir();
        Repon();
        const bool cambiado = Refresca();
        cuantas_ = limpias_->Cuantas();
        abierta_ = true;
        return cambiado;
    } catch (...) {
        candado_->SaleDeEscribir();
        if (lecturas_ > 0)
            candado_->EntraALeer();
        throw;
    }
}

void TransaccionPaginas::Confirma()
{
    ExigeAbierta();
    if (!cambiadas_->Vacias()) {
        candado_->CierraALectores();
        try {
            Escribe();
        } catch (...) {
            candado_->AbreALectores();
            throw;
        }
    }
    Acaba();
}

PlanDeEscritura TransaccionPaginas::Plan() const
{
    PlanDeEscritura plan{.tamPagina = formato_.tamPagina,
                         .paginasAntes = limpias_->Cuantas(),
                         .paginasDespues = cuantas_,
                         .usuario = huella_.marcas.UsuarioPropio(),
                         .marcas = huella_.marcas};
    for (const quint32 numero : cambiadas_->Numeros())
        if (numero < plan.paginasAntes)
            plan.reemplazadas.push_back(numero);
    return plan;
}

void TransaccionPaginas::Escribe()
{
    // Left by an attempt that could be neither finished nor taken back.
    if (diario_.Recupera(*fichero_) == Recuperacion::Repuesto)
        Recuerda(TomaHuella());
    if (TomaHuella() != huella_)
        throw ErrorMdb(Motivo::EnUso,
                       QStringLiteral("Otro programa ha escrito en el fichero entretanto, y los "
                                      "cambios no se han guardado: repita la operación"),
                       {.fichero = nombre_});
    const PlanDeEscritura plan = Plan();
    diario_.Escribe(*fichero_, plan);
    try {
        EscribePaginas(plan);
        diario_.Borra();
    } catch (...) {
        try {
            diario_.Recupera(*fichero_);
            Recuerda(TomaHuella());
        } catch (const ErrorMdb&) {
            // The journal stays, and the next one who opens the file tries again.
        }
        throw;
    }
    const std::vector<quint32> escritas = cambiadas_->Numeros();
    limpias_->Olvida(escritas);
    Recuerda(TomaHuella());
    // It is one's own change, made while nobody else was there.
    huellaDudosa_ = false;
}

void TransaccionPaginas::EscribePaginas(const PlanDeEscritura& plan)
{
    std::vector<quint32> nuevas;
    for (const quint32 numero : cambiadas_->Numeros())
        if (numero >= plan.paginasAntes)
            nuevas.push_back(numero);

    EscribeMarca(*fichero_, plan.usuario, 0);
    // What makes the file longer comes first: where there is no room, nothing was replaced yet.
    EscribeEnOrden(nuevas);
    fichero_->Sincroniza();
    EscribeEnOrden(EnOrdenDeEscritura(plan.reemplazadas));
    EscribeMarca(*fichero_, plan.usuario, MarcasDeCambio::Siguiente(plan.marcas.De(plan.usuario)));
    fichero_->Sincroniza();
}

std::vector<quint32> TransaccionPaginas::EnOrdenDeEscritura(const std::vector<quint32>& numeros)
{
    std::vector<std::pair<int, quint32>> turnos;
    turnos.reserve(numeros.size());
    for (const quint32 numero : numeros)
        turnos.emplace_back(TurnoDe(numero, Lee(numero).bytes.U8(0)), numero);
    std::sort(turnos.begin(), turnos.end());
    std::vector<quint32> ordenados;
    ordenados.reserve(turnos.size());
    for (const auto& [turno, numero] : turnos)
        ordenados.push_back(numero);
    return ordenados;
}

void TransaccionPaginas::EscribeEnOrden(std::span<const quint32> numeros)
{
    std::vector<quint8> seguidas;
    for (std::size_t i = 0; i < numeros.size();) {
        const quint32 primera = numeros[i];
        seguidas.clear();
        for (std::size_t n = 0;
             i < numeros.size() && n < PaginasPorEscritura && numeros[i] == primera + n; ++n, ++i) {
            const Pagina pagina = Lee(numeros[i]);
            seguidas.insert(seguidas.end(), pagina.bytes.Todo().begin(), pagina.bytes.Todo().end());
        }
        fichero_->Escribe(qint64{primera} * formato_.tamPagina, seguidas);
    }
}

void TransaccionPaginas::Deshace()
{
    ExigeAbierta();
    Acaba();
}

void TransaccionPaginas::Acaba()
{
    cambiadas_->Olvida();
    cuantasEnMarca_.clear();
    abierta_ = false;
    const auto sale = qScopeGuard([this] { candado_->SaleDeEscribir(); });
    // Before others may write again: so there is nobody to wait for.
    candado_->AbreALectores();
    if (lecturas_ > 0)
        candado_->EntraALeer();
}

std::size_t TransaccionPaginas::Marca()
{
    ExigeAbierta();
    cuantasEnMarca_.push_back(cuantas_);
    return cambiadas_->Marca();
}

void TransaccionPaginas::VuelveA(std::size_t marca)
{
    ExigeAbierta();
    cambiadas_->VuelveA(marca);
    cuantasEnMarca_.resize(marca);
    cuantas_ = cuantasEnMarca_.back();
}

void TransaccionPaginas::Suelta(std::size_t marca)
{
    ExigeAbierta();
    cambiadas_->Suelta(marca);
    cuantasEnMarca_.resize(marca - 1);
}

} // namespace tolmo::data::access::mdb
