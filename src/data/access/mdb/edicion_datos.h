#pragma once
#include "data/access/mdb/pagina_datos.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>

namespace tolmo::data::access::mdb {

/// Changes the slots of a page of rows. Rows move inside the page, slots keep their numbers.
class EdicionDatos {
  public:
    /// A loan of the page's bytes, for as long as they stay where they are.
    /// \throws ErrorMdb when they are no page of rows, or its table of slots isn't coherent
    EdicionDatos(PaginasEscribibles& paginas, quint32 numero);

    /// Makes a page of rows without any out of one that was just taken.
    static void Estrena(PaginasEscribibles& paginas, quint32 numero, quint32 duenio);

    std::size_t Ranuras() const;
    /// Bytes that a new slot and its row may take, without Compacta.
    std::size_t Libres() const;

    /// Takes back the space of deleted rows, and of those that moved away.
    void Compacta();
    /// Forgets all slots. Nothing may refer to them any more.
    void Vacia();
    /// \throws ErrorMdb when there is no room
    quint8 AnadeFila(const QByteArray& fila, EstadoRanura estado = EstadoRanura::Fila);
    void CambiaFila(quint8 ranura, const QByteArray& fila, EstadoRanura estado);
    void BorraFila(quint8 ranura);
    /// Forgets the deleted slots behind the last live one.
    void RecortaRanuras();

  private:
    quint16 Valor(std::size_t ranura) const;
    void PonValor(std::size_t ranura, std::size_t posicion, EstadoRanura estado);
    EstadoRanura Estado(std::size_t ranura) const;
    std::size_t Principio(std::size_t ranura) const;
    std::size_t Fin(std::size_t ranura) const;
    std::size_t FinDeTabla() const;
    void PonLargo(std::size_t ranura, std::size_t largo);
    void PonLibres();
    void Comprueba() const;

    std::span<quint8> pagina_;
    std::size_t tabla_;
    quint32 numero_;
};

/// A slot can't be named by more than a byte, and Access leaves out the last number.
constexpr std::size_t MasRanurasNuevas = 255;

/// What a page of rows has room for.
struct Sitio {
    std::size_t libres = 0; ///< bytes, those of deleted rows and of rows that moved away among them
    std::size_t ranuras = 0;
    std::size_t vivas = 0; ///< slots that hold a row, or lead to one

    bool Cabe(std::size_t largo) const { return ranuras < MasRanurasNuevas && libres >= largo + 2; }
};
Sitio SitioDe(const PaginaDatos& pagina);

/// Bytes that a slot can't do without; it may have more, which count as free.
std::size_t Ocupados(const PaginaDatos& pagina, std::size_t ranura);

/// Bytes of the pointer that a row leaves where it moved away.
constexpr std::size_t TamPuntero = 4;

} // namespace tolmo::data::access::mdb
