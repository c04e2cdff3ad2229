#include "data/access/mdb/comprobacion_indice.h"
#include "data/access/mdb/clave.h"
#include "data/access/mdb/indice.h"
#include "data/access/mdb/mapa.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

// Two levels hold 10,000 entries at least, so no sound tree comes near.
constexpr int MasNiveles = 32;

using Limite = std::optional<std::vector<quint8>>;

std::span<const quint8> AVista(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.data()), static_cast<std::size_t>(bytes.size())};
}

Limite Copia(std::span<const quint8> bytes)
{
    return std::vector<quint8>(bytes.begin(), bytes.end());
}

/// Walks the tree from its root and notes what contradicts itself.
class Arbol {
  public:
    Arbol(const Tabla& tabla, const IndiceReal& indice, QStringList& faltas)
        : tabla_(tabla), indice_(indice), faltas_(faltas), visitadas_(tabla.paginas().Cuantas())
    {
    }

    void Comprueba()
    {
        Visita(indice_.raiz, {}, {}, 0);
        CompruebaCadena();
        std::sort(paginas_.begin(), paginas_.end());
        if (paginas_ != PaginasEnUso(tabla_.paginas(), indice_.mapa))
            AnadeFalta(faltas_, QStringLiteral("el mapa de sus páginas no nombra las que usa"));
    }

  private:
    struct Eslabon {
        quint32 numero, anterior, siguiente;
    };

    void Falta(quint32 pagina, const QString& frase)
    {
        AnadeFalta(faltas_, QStringLiteral("página %1: %2").arg(QString::number(pagina), frase));
    }

    /// The entries of a page lie behind `inferior` and not behind `superior`.
    void Visita(quint32 numero, const Limite& inferior, const Limite& superior, int nivel)
    {
        if (nivel > MasNiveles || !visitadas_.Marca(numero)) {
            Falta(numero, QStringLiteral("el árbol vuelve sobre ella"));
            return;
        }
        const PaginaIndice pagina = LeePaginaIndice(tabla_, numero);
        paginas_.push_back(numero);
        if (pagina.Libres() + pagina.Usados() != tabla_.paginas().formato().SitioEntradas())
            Falta(numero, QStringLiteral("el espacio libre que dice no es el que tiene"));
        CompruebaOrden(pagina, inferior, superior);
        if (pagina.EsNodo())
            VisitaHijos(pagina, inferior, superior, nivel);
        else
            hojas_.push_back({numero, pagina.Anterior(), pagina.Siguiente()});
    }

    void CompruebaOrden(const PaginaIndice& pagina, const Limite& inferior, const Limite& superior)
    {
        Limite anterior = inferior;
        for (std::size_t i = 0; i < pagina.Entradas(); ++i) {
            const Entrada entrada = pagina.En(i);
            if (anterior && !Antes(*anterior, entrada.ClaveYFila()))
                Falta(pagina.Numero(), QStringLiteral("sus entradas no están en orden"));
            anterior = Copia(entrada.ClaveYFila());
        }
        if (superior && anterior && Antes(*superior, *anterior))
            Falta(pagina.Numero(), QStringLiteral("tiene entradas que pasan de su límite"));
    }

    void VisitaHijos(const PaginaIndice& pagina, const Limite& inferior, const Limite& superior,
                     int nivel)
    {
        Limite anterior = inferior;
        for (std::size_t i = 0; i < pagina.Entradas(); ++i) {
            const Entrada entrada = pagina.En(i);
            const Limite limite = Copia(entrada.ClaveYFila());
            Visita(entrada.Hijo(), anterior, limite, nivel + 1);
            anterior = limite;
        }
        Visita(pagina.Cola(), anterior, superior, nivel + 1);
    }

    void CompruebaCadena()
    {
        for (std::size_t i = 0; i < hojas_.size(); ++i) {
            const quint32 anterior = i == 0 ? 0 : hojas_[i - 1].numero;
            const quint32 siguiente = i + 1 == hojas_.size() ? 0 : hojas_[i + 1].numero;
            if (hojas_[i].anterior != anterior || hojas_[i].siguiente != siguiente)
                Falta(hojas_[i].numero, QStringLiteral("no enlaza con las hojas vecinas"));
        }
    }

    const Tabla& tabla_;
    const IndiceReal& indice_;
    QStringList& faltas_;
    Visitadas visitadas_;
    std::vector<quint32> paginas_{};
    std::vector<Eslabon> hojas_{};
};

QString Donde(Puntero fila)
{
    return QStringLiteral("página %1, fila %2").arg(fila.pagina).arg(fila.fila);
}

/// True when the entry is the one that its row should have; nothing when that can't be known.
std::optional<bool> EsDeSuFila(const Tabla& tabla, const IndiceReal& indice, const Fila& fila,
                               std::span<const quint8> clave)
{
    for (const Expansion expansion : {Expansion::UnLugar, Expansion::DosLugares}) {
        const ClaveDeFila esperada = ClaveDe(tabla, indice, fila, expansion);
        if (esperada.caso == ClaveDeFila::Caso::NoSeSabe)
            return std::nullopt;
        if (esperada.caso == ClaveDeFila::Caso::Entrada && Iguales(AVista(esperada.bytes), clave))
            return true;
    }
    return false;
}

void CompruebaEntrada(const Tabla& tabla, const IndiceReal& indice, const Entrada& entrada,
                      EstadoIndice& estado)
{
    const std::optional<Fila> fila = tabla.FilaEn(entrada.Fila());
    if (!fila) {
        AnadeFalta(estado.faltas, QStringLiteral("una entrada lleva a una fila que no existe (%1)")
                                      .arg(Donde(entrada.Fila())));
        return;
    }
    const std::optional<bool> coincide = EsDeSuFila(tabla, indice, *fila, entrada.Clave());
    if (!coincide)
        estado.rehecho = false;
    else if (!*coincide)
        AnadeFalta(estado.faltas, QStringLiteral("una entrada no es la que su fila pide (%1)")
                                      .arg(Donde(entrada.Fila())));
}

bool TieneNulos(const Tabla& tabla, const IndiceReal& indice, Puntero puntero)
{
    const std::optional<Fila> fila = tabla.FilaEn(puntero);
    return !fila || std::any_of(indice.columnas.begin(), indice.columnas.end(),
                                [&](const ColumnaIndice& en) {
                                    const Columna* c = tabla.definicion().ColumnaDe(en.numero);
                                    return c == nullptr || EsNulo(fila->Lee(*c));
                                });
}

void CompruebaEntradas(const Tabla& tabla, const IndiceReal& indice, EstadoIndice& estado)
{
    Entrada anterior;
    for (RecorridoIndice recorrido(tabla, indice); recorrido.Siguiente();) {
        const Entrada& entrada = recorrido.entrada();
        const bool repetida = estado.entradas > 0 && Iguales(anterior.Clave(), entrada.Clave());
        if (repetida && indice.Unico() && !TieneNulos(tabla, indice, entrada.Fila()))
            AnadeFalta(
                estado.faltas,
                QStringLiteral("una clave única está dos veces (%1)").arg(Donde(entrada.Fila())));
        ++estado.entradas;
        CompruebaEntrada(tabla, indice, entrada, estado);
        anterior = entrada;
    }
}

/// The name of the first index that stands on a tree.
QString NombreDe(const Definicion& definicion, std::size_t indiceReal)
{
    for (const IndiceLogico& logico : definicion.indicesLogicos) {
        if (logico.real == indiceReal)
            return logico.nombre;
    }
    return QStringLiteral("índice %1").arg(indiceReal);
}

} // namespace

void CompruebaArbol(const Tabla& tabla, const IndiceReal& indice, QStringList& faltas)
{
    Arbol(tabla, indice, faltas).Comprueba();
}

EstadoIndice CompruebaIndice(const Tabla& tabla, std::size_t indiceReal, quint64 filas)
{
    const IndiceReal& indice = tabla.definicion().indicesReales[indiceReal];
    EstadoIndice estado{.nombre = NombreDe(tabla.definicion(), indiceReal)};
    try {
        CompruebaArbol(tabla, indice, estado.faltas);
        CompruebaEntradas(tabla, indice, estado);
    } catch (const ErrorMdb& error) {
        AnadeFalta(estado.faltas, error.Descripcion());
    }
    if (estado.faltas.isEmpty() && estado.entradas != filas)
        AnadeFalta(estado.faltas,
                   QStringLiteral("tiene %1 entradas y debería tener %2")
                       .arg(QString::number(estado.entradas), QString::number(filas)));
    return estado;
}

} // namespace tolmo::data::access::mdb
