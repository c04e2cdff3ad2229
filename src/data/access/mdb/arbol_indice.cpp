#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/mapa.h"
#include <algorithm>
#include <optional>

namespace tolmo::data::access::mdb {
namespace {

// A page of a sound tree has dozens of children, so no file holds one of so many levels.
constexpr std::size_t MasNiveles = 32;

bool EmpiezaPor(std::span<const quint8> bytes, std::span<const quint8> principio)
{
    return bytes.size() >= principio.size() && Iguales(bytes.first(principio.size()), principio);
}

void EscribePagina(PaginasEscribibles& paginas, quint32 numero, const CabeceraIndice& cabecera,
                   std::span<const BytesEntrada> entradas)
{
    EscribeCabecera(paginas, numero, cabecera);
    EscribeEntradas(paginas, numero, entradas, cabecera.esNodo);
}

void CompruebaLargo(const Paginas& paginas, const BytesEntrada& entrada)
{
    if (entrada.size() + TamHijo > paginas.formato().SitioEntradas() / 2)
        throw ErrorMdb(Motivo::NoAdmitido,
                       QStringLiteral("El valor es demasiado largo para un índice"),
                       {.fichero = paginas.Nombre()});
}

/// Where entries are cut in two. What stands at the place goes to the right; of a node's entries it
/// goes up instead.
class Corte {
  public:
    Corte(const Formato& formato, std::span<const BytesEntrada> entradas, bool deNodo)
        : formato_(formato), entradas_(entradas), deNodo_(deNodo)
    {
    }

    std::span<const BytesEntrada> Izquierda(std::size_t lugar) const
    {
        return entradas_.first(lugar);
    }
    std::span<const BytesEntrada> Derecha(std::size_t lugar) const
    {
        return entradas_.subspan(lugar + (deNodo_ ? 1 : 0));
    }

    /// Leaves the left page as full as can be, for keys that grow.
    std::size_t AlFinal() const { return UltimoLugar(); }

    /// The place nearest to the middle that leaves two pages that hold theirs. As no entry is
    /// longer than half a page, there is one.
    std::size_t EnMedio() const
    {
        const std::size_t medio = std::clamp(Medio(), std::size_t{1}, UltimoLugar());
        for (std::size_t lejos = 0; lejos <= entradas_.size(); ++lejos) {
            if (lejos < medio && Vale(medio - lejos))
                return medio - lejos;
            if (medio + lejos <= UltimoLugar() && Vale(medio + lejos))
                return medio + lejos;
        }
        Danado(QStringLiteral("Las entradas de una página del índice no se pueden repartir"));
    }

  private:
    /// A node keeps an entry on the right.
    std::size_t UltimoLugar() const { return entradas_.size() - (deNodo_ ? 2 : 1); }

    bool Vale(std::size_t lugar) const
    {
        return Caben(formato_, Izquierda(lugar), deNodo_) &&
               Caben(formato_, Derecha(lugar), deNodo_);
    }

    std::size_t Medio() const
    {
        std::size_t total = 0;
        for (const BytesEntrada& entrada : entradas_)
            total += entrada.size();
        std::size_t lugar = 0;
        for (std::size_t suma = 0; 2 * suma < total; ++lugar)
            suma += entradas_[lugar].size();
        return lugar;
    }

    const Formato& formato_;
    std::span<const BytesEntrada> entradas_;
    bool deNodo_;
};

} // namespace

/// A page on the way from the root to a leaf, and the place in it where the way goes on; behind the
/// last entry that is the tail of a node.
struct ArbolIndice::Paso {
    PaginaIndice pagina;
    std::size_t lugar = 0;

    bool PorElFinal() const { return lugar == pagina.Entradas(); }
};

/// Both halves of a page that was full.
struct ArbolIndice::Mitades {
    std::span<const BytesEntrada> izquierda{};
    std::span<const BytesEntrada> derecha{};
    CabeceraIndice cabeceraIzquierda{};
    CabeceraIndice cabeceraDerecha{};
    BytesEntrada limite{}; ///< of the left half, without a child
};

ArbolIndice::ArbolIndice(PaginasEscribibles& paginas, quint32 definicion, const IndiceReal& indice)
    : paginas_(paginas), definicion_(definicion), indice_(indice)
{
}

PaginaIndice ArbolIndice::Lee(quint32 numero) const
{
    return LeePaginaIndice(paginas_, definicion_, numero);
}

void ArbolIndice::Falla(const QString& frase, quint32 pagina) const
{
    Danado(frase, {.fichero = paginas_.Nombre(), .pagina = pagina});
}

/// The way to where `bytes` is, or should be.
ArbolIndice::Camino ArbolIndice::Baja(std::span<const quint8> bytes) const
{
    Camino camino;
    quint32 numero = indice_.raiz;
    while (true) {
        if (camino.size() == MasNiveles)
            Falla(QStringLiteral("El árbol de un índice no tiene fin"), numero);
        PaginaIndice pagina = Lee(numero);
        const std::size_t lugar = EnSuPagina(numero, [&] { return pagina.Busca(bytes); });
        camino.push_back({.pagina = std::move(pagina), .lugar = lugar});
        const Paso& paso = camino.back();
        if (!paso.pagina.EsNodo())
            return camino;
        numero = paso.PorElFinal() ? paso.pagina.Cola() : EntradaEn(paso.pagina, lugar).Hijo();
    }
}

Entrada ArbolIndice::EntradaEn(const PaginaIndice& pagina, std::size_t lugar) const
{
    return EnSuPagina(pagina.Numero(), [&] { return pagina.En(lugar); });
}

/// Goes through the entries from `desde` on until `vista` returns true.
template <typename Vista>
void ArbolIndice::Recorre(std::span<const quint8> desde, Vista&& vista) const
{
    Paso paso = std::move(Baja(desde).back());
    for (quint32 leidas = 0; leidas < paginas_.Cuantas(); ++leidas) {
        for (; !paso.PorElFinal(); ++paso.lugar) {
            if (vista(EntradaEn(paso.pagina, paso.lugar)))
                return;
        }
        if (paso.pagina.Siguiente() == 0)
            return;
        paso = {.pagina = Lee(paso.pagina.Siguiente()), .lugar = 0};
        if (paso.pagina.EsNodo())
            Falla(QStringLiteral("Entre las hojas de un índice hay un nodo"), paso.pagina.Numero());
    }
    Falla(QStringLiteral("Las páginas de un índice forman un anillo"), paso.pagina.Numero());
}

bool ArbolIndice::Inserta(const QByteArray& clave, Puntero fila)
{
    const BytesEntrada entrada = EntradaDeHoja(clave, fila);
    CompruebaLargo(paginas_, entrada);
    const Camino camino = Baja(entrada);
    const Paso& hoja = camino.back();
    if (!hoja.PorElFinal() && Iguales(EntradaEn(hoja.pagina, hoja.lugar).Todo(), entrada))
        Falla(QStringLiteral("El índice ya tiene la entrada de una fila nueva"),
              hoja.pagina.Numero());
    const bool nueva = !HayVecina(hoja, clave);
    Mete(camino, camino.size() - 1, entrada);
    return nueva;
}

void ArbolIndice::Llena(std::vector<BytesEntrada> entradas)
{
    for (const BytesEntrada& entrada : entradas)
        CompruebaLargo(paginas_, entrada);
    bool deNodo = false;
    quint32 cola = 0;
    while (!Caben(paginas_.formato(), entradas, deNodo)) {
        entradas = LlenaNivel(entradas, deNodo, cola);
        deNodo = true;
    }
    EscribePagina(paginas_, indice_.raiz, {.esNodo = deNodo, .tabla = definicion_, .cola = cola},
                  entradas);
}

/// Writes all pages of a level, each as full as can be. `cola` is the tail behind the last entry of
/// a level of nodes, and becomes that of the level above. \returns the entries of the level above
std::vector<BytesEntrada> ArbolIndice::LlenaNivel(std::span<const BytesEntrada> entradas,
                                                  bool deNodo, quint32& cola)
{
    std::vector<BytesEntrada> arriba;
    quint32 anterior = 0;
    while (true) {
        std::size_t cuantas = CuantasCaben(paginas_.formato(), entradas, deNodo);
        const bool ultima = cuantas == entradas.size();
        // One entry goes up, and one has to be left for the last node.
        if (deNodo && !ultima)
            cuantas = std::min(cuantas, entradas.size() - 2);
        const quint32 pagina = PidePagina(paginas_, indice_.mapa);
        const quint32 suCola = !deNodo || ultima ? cola : Entrada(entradas[cuantas], true).Hijo();
        EscribePagina(
            paginas_, pagina,
            {.esNodo = deNodo, .tabla = definicion_, .anterior = anterior, .cola = suCola},
            entradas.first(cuantas));
        if (anterior != 0)
            PonSiguiente(paginas_, anterior, pagina);
        anterior = pagina;
        if (ultima) {
            cola = pagina;
            return arriba;
        }
        if (deNodo) {
            SeparaHijos(suCola);
            const Entrada sube(entradas[cuantas], true);
            arriba.push_back(EntradaDeNodo(sube.ClaveYFila(), pagina));
            entradas = entradas.subspan(cuantas + 1);
        } else {
            arriba.push_back(EntradaDeNodo(entradas[cuantas - 1], pagina));
            entradas = entradas.subspan(cuantas);
        }
    }
}

/// True when the entry before or behind a place in a leaf has this key: those of one key lie
/// together.
bool ArbolIndice::HayVecina(const Paso& hoja, const QByteArray& clave) const
{
    const auto tiene = [&](const PaginaIndice& pagina, std::size_t lugar) {
        return lugar < pagina.Entradas() &&
               Iguales(EntradaEn(pagina, lugar).Clave(), BytesDe(clave).Todo());
    };
    const PaginaIndice& pagina = hoja.pagina;
    const auto detras = [&] {
        if (!hoja.PorElFinal())
            return tiene(pagina, hoja.lugar);
        return pagina.Siguiente() != 0 && tiene(Vecina(pagina.Siguiente(), pagina), 0);
    };
    const auto delante = [&] {
        if (hoja.lugar > 0)
            return tiene(pagina, hoja.lugar - 1);
        if (pagina.Anterior() == 0)
            return false;
        const PaginaIndice anterior = Vecina(pagina.Anterior(), pagina);
        return anterior.Entradas() > 0 && tiene(anterior, anterior.Entradas() - 1);
    };
    return delante() || detras();
}

/// Puts an entry into the page of a level, which may have to be split for it.
void ArbolIndice::Mete(const Camino& camino, std::size_t nivel, const BytesEntrada& entrada)
{
    const Paso& paso = camino[nivel];
    if (IntercalaEntrada(paginas_, paso.pagina, paso.lugar, entrada))
        return;
    const bool deNodo = paso.pagina.EsNodo();
    std::vector<BytesEntrada> entradas =
        EnSuPagina(paso.pagina.Numero(), [&] { return TodasLasEntradas(paso.pagina); });
    entradas.insert(entradas.begin() + static_cast<std::ptrdiff_t>(paso.lugar), entrada);
    if (Caben(paginas_.formato(), entradas, deNodo)) {
        EscribeEntradas(paginas_, paso.pagina.Numero(), entradas, deNodo);
        return;
    }
    const bool alFinal = std::ranges::all_of(std::span(camino).first(nivel + 1), &Paso::PorElFinal);
    const Corte corte(paginas_.formato(), entradas, deNodo);
    const std::size_t lugar = alFinal ? corte.AlFinal() : corte.EnMedio();
    Mitades mitades{
        .izquierda = corte.Izquierda(lugar),
        .derecha = corte.Derecha(lugar),
        .cabeceraIzquierda = {.esNodo = deNodo, .tabla = definicion_},
        .cabeceraDerecha = {.esNodo = deNodo, .tabla = definicion_, .cola = paso.pagina.Cola()}};
    if (deNodo) {
        const Entrada sube(entradas[lugar], true);
        mitades.limite.assign(sube.ClaveYFila().begin(), sube.ClaveYFila().end());
        mitades.cabeceraIzquierda.cola = sube.Hijo();
        SeparaHijos(sube.Hijo());
    } else {
        mitades.limite = entradas[lugar - 1];
    }
    if (nivel == 0)
        ParteRaiz(mitades);
    else
        Parte(camino, nivel, mitades);
}

/// Unlinks a page from the next one on its level when they are nodes, as they are about to have
/// different parents.
void ArbolIndice::SeparaHijos(quint32 ultimo)
{
    const PaginaIndice hijo = Lee(ultimo);
    if (!hijo.EsNodo() || hijo.Siguiente() == 0)
        return;
    const PaginaIndice siguiente = Vecina(hijo.Siguiente(), hijo);
    PonAnterior(paginas_, siguiente.Numero(), 0);
    PonSiguiente(paginas_, ultimo, 0);
}

/// A page that is linked to `pagina`; it has to say the same.
PaginaIndice ArbolIndice::Vecina(quint32 numero, const PaginaIndice& pagina) const
{
    PaginaIndice vecina = Lee(numero);
    const quint32 vuelta = numero == pagina.Siguiente() ? vecina.Anterior() : vecina.Siguiente();
    if (vecina.EsNodo() != pagina.EsNodo() || vuelta != pagina.Numero())
        Falla(QStringLiteral("Las páginas vecinas de un índice no enlazan"), numero);
    return vecina;
}

/// The root keeps its page and becomes the parent of two new ones.
void ArbolIndice::ParteRaiz(Mitades& mitades)
{
    const quint32 izquierda = PidePagina(paginas_, indice_.mapa);
    const quint32 derecha = PidePagina(paginas_, indice_.mapa);
    mitades.cabeceraIzquierda.siguiente = derecha;
    mitades.cabeceraDerecha.anterior = izquierda;
    EscribePagina(paginas_, izquierda, mitades.cabeceraIzquierda, mitades.izquierda);
    EscribePagina(paginas_, derecha, mitades.cabeceraDerecha, mitades.derecha);
    const std::vector<BytesEntrada> unica{EntradaDeNodo(mitades.limite, izquierda)};
    EscribePagina(paginas_, indice_.raiz, {.esNodo = true, .tabla = definicion_, .cola = derecha},
                  unica);
}

/// The lower half goes to a new page, so what leads to the old one from above and from the right
/// stays as it is.
void ArbolIndice::Parte(const Camino& camino, std::size_t nivel, Mitades& mitades)
{
    const PaginaIndice& vieja = camino[nivel].pagina;
    const quint32 nueva = PidePagina(paginas_, indice_.mapa);
    mitades.cabeceraIzquierda.anterior = vieja.Anterior();
    mitades.cabeceraIzquierda.siguiente = vieja.Numero();
    mitades.cabeceraDerecha.anterior = nueva;
    mitades.cabeceraDerecha.siguiente = vieja.Siguiente();
    if (vieja.Anterior() != 0)
        PonSiguiente(paginas_, Vecina(vieja.Anterior(), vieja).Numero(), nueva);
    EscribePagina(paginas_, nueva, mitades.cabeceraIzquierda, mitades.izquierda);
    EscribePagina(paginas_, vieja.Numero(), mitades.cabeceraDerecha, mitades.derecha);
    Mete(camino, nivel - 1, EntradaDeNodo(mitades.limite, nueva));
}

bool ArbolIndice::Borra(const QByteArray& clave, Puntero fila)
{
    return BorraEntrada(EntradaDeHoja(clave, fila));
}

bool ArbolIndice::BorraEntrada(const std::vector<quint8>& entrada)
{
    const Camino camino = Baja(entrada);
    const Paso& hoja = camino.back();
    if (hoja.PorElFinal() || !Iguales(EntradaEn(hoja.pagina, hoja.lugar).Todo(), entrada))
        return false;
    QuitaEntrada(paginas_, hoja.pagina, hoja.lugar);
    const std::size_t quedan = hoja.pagina.Entradas() - 1;
    if (quedan == 0 && camino.size() > 1)
        QuitaPagina(camino, camino.size() - 1);
    else if (quedan > 0 && hoja.lugar == quedan)
        BajaLimite(camino, EntradaEn(hoja.pagina, quedan - 1).Todo());
    return true;
}

/// Tells the nodes above that `ultima` is now the last entry of a leaf. The old bound would do, so
/// it stays where the new one has no room.
void ArbolIndice::BajaLimite(const Camino& camino, std::span<const quint8> ultima)
{
    for (std::size_t nivel = camino.size() - 1; nivel-- > 0;) {
        const Paso& paso = camino[nivel];
        if (paso.PorElFinal())
            continue;
        const quint32 numero = paso.pagina.Numero();
        std::vector<BytesEntrada> entradas =
            EnSuPagina(numero, [&] { return TodasLasEntradas(paso.pagina); });
        entradas[paso.lugar] = EntradaDeNodo(ultima, EntradaEn(paso.pagina, paso.lugar).Hijo());
        if (Caben(paginas_.formato(), entradas, true))
            EscribeEntradas(paginas_, numero, entradas, true);
        return;
    }
}

/// Takes a page without entries out of the tree.
void ArbolIndice::QuitaPagina(const Camino& camino, std::size_t nivel)
{
    const PaginaIndice& pagina = camino[nivel].pagina;
    if (pagina.Anterior() != 0)
        PonSiguiente(paginas_, Vecina(pagina.Anterior(), pagina).Numero(), pagina.Siguiente());
    if (pagina.Siguiente() != 0)
        PonAnterior(paginas_, Vecina(pagina.Siguiente(), pagina).Numero(), pagina.Anterior());
    SueltaPagina(paginas_, pagina.Numero(), indice_.mapa);

    const Paso& padre = camino[nivel - 1];
    const std::size_t entradas = padre.pagina.Entradas();
    if (!padre.PorElFinal()) {
        QuitaEntrada(paginas_, padre.pagina, padre.lugar);
    } else if (entradas > 0) {
        PonCola(paginas_, padre.pagina.Numero(), EntradaEn(padre.pagina, entradas - 1).Hijo());
        QuitaEntrada(paginas_, padre.pagina, entradas - 1);
    } else if (nivel > 1) {
        QuitaPagina(camino, nivel - 1);
    } else {
        EscribeRaizVacia(paginas_, definicion_, indice_.raiz);
    }
}

bool ArbolIndice::BorraDeFila(const QByteArray& principio, Puntero fila)
{
    std::optional<BytesEntrada> hallada;
    const auto busca = [&](std::span<const quint8> en) {
        Recorre(en, [&](const Entrada& entrada) {
            if (!EmpiezaPor(entrada.ClaveYFila(), en))
                return true;
            if (entrada.Fila() == fila)
                hallada.emplace(entrada.Todo().begin(), entrada.Todo().end());
            return hallada.has_value();
        });
    };
    busca(BytesDe(principio).Todo());
    if (!hallada)
        busca({});
    if (!hallada)
        return false;
    if (!BorraEntrada(*hallada))
        Falla(QStringLiteral("A una entrada del índice no se llega desde su raíz"), indice_.raiz);
    return true;
}

bool ArbolIndice::Tiene(const QByteArray& clave)
{
    const auto buscada = BytesDe(clave).Todo();
    bool hallada = false;
    Recorre(buscada, [&](const Entrada& entrada) {
        hallada = Iguales(entrada.Clave(), buscada);
        // A longer key that starts like this one may stand before it.
        return hallada || !EmpiezaPor(entrada.ClaveYFila(), buscada);
    });
    return hallada;
}

void ArbolIndice::EscribeRaizVacia(PaginasEscribibles& paginas, quint32 definicion, quint32 pagina)
{
    EscribeCabecera(paginas, pagina, {.tabla = definicion});
}

void ArbolIndice::Suelta()
{
    const std::vector<quint32> suyas = PaginasEnUso(paginas_, indice_.mapa);
    for (const quint32 pagina : suyas)
        Lee(pagina);
    VaciaMapa(paginas_, indice_.mapa);
}

} // namespace tolmo::data::access::mdb
