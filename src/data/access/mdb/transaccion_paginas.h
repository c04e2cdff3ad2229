#pragma once
#include "data/access/mdb/candado.h"
#include "data/access/mdb/diario.h"
#include "data/access/mdb/fichero.h"
#include "data/access/mdb/paginas_cambiadas.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <chrono>

namespace tolmo::data::access::mdb {

struct AperturaTransaccion {
    Apertura apertura{};
    std::size_t cambios = std::size_t{64} << 20; ///< bytes of changed pages kept in memory
    std::chrono::milliseconds espera{30000};     ///< for others of this program
    Disco* disco = nullptr;                      ///< null: the system's
};

/// The pages of a database file, which change in transactions: a commit is written whole or, after
/// any interruption, taken back by whoever opens the file next.
///
/// A statement reads between EmpiezaLectura and AcabaLectura: what it meets is whole commits of
/// this program only, and the same one from its first page to its last. What programs of Access
/// write meanwhile can't be held off; it is noticed at the next statement.
///
/// From Empieza to its end nobody else of this program writes, and no program of Access has the
/// file open.
class TransaccionPaginas : public PaginasEscribibles {
  public:
    /// \throws ErrorMdb as FicheroPaginas does; also when a commit that was interrupted can't be
    /// taken back
    explicit TransaccionPaginas(const QString& ruta, const AperturaTransaccion& apertura = {});
    ~TransaccionPaginas() override;

    Pagina Lee(quint32 numero) override;
    quint32 Cuantas() const override;
    const Formato& formato() const override { return formato_; }
    const QString& Nombre() const override { return nombre_; }
    const Cabecera& cabecera() const { return Limpias().cabecera(); }

    /// Only in a transaction. The first page is refused: it isn't written but for its marks.
    std::span<quint8> Cambia(quint32 numero) override;
    quint32 Alarga() override;

    /// They nest; only the outermost one locks and looks. In a transaction nothing has to be done.
    /// \returns whether another has changed the file since the last look; all that was known of it
    /// has to be read anew
    /// \throws ErrorMdb with Motivo::EnUso when another of this program is writing for too long
    bool EmpiezaLectura();
    void AcabaLectura();

    /// True when a save that was interrupted had to be taken back since the file was opened.
    bool HaDeshecho() const { return haDeshecho_; }

    /// Looks whether another has changed the file, and then forgets its pages. A program of Access
    /// and this one are noticed by the marks of change; others by length and time, but for those
    /// that put the time back.
    bool Refresca();

    /// \returns as EmpiezaLectura does
    /// \throws ErrorMdb with Motivo::EnUso when somebody has the file open or keeps it locked, with
    /// NoSeEscribe when it may not be written, with NoAdmitido for a file of Access 97
    bool Empieza();
    bool Abierta() const { return abierta_; }

    /// Writes the changes. When it throws, the file is as it was, and the transaction still open:
    /// Confirma may be tried again, or Deshace called.
    void Confirma();
    void Deshace();

    /// A point of the transaction to come back to. They nest.
    std::size_t Marca();
    /// Undoes what came after; the mark stays.
    void VuelveA(std::size_t marca);
    /// Gives the mark up; the changes stay.
    void Suelta(std::size_t marca);

  private:
    struct Huella {
        EstadoFichero estado{};
        MarcasDeCambio marcas{};
        bool operator==(const Huella&) const = default;
    };

    void Abre();
    void AbreLimpias();
    FicheroPaginas& Limpias() const;
    bool Reemplazado();
    /// When it throws, it has left every lock.
    void ConElFicheroDeAhora(const std::function<void()>& bloquea);
    Huella TomaHuella();
    void Recuerda(const Huella& huella);
    /// Takes back first what was left half written.
    void EntraALeer();
    /// A journal that isn't whole says nothing about the file; one that can't be read may be whole.
    bool HayGuardadoAMedias() const;
    void Repon();
    void ReponSiSePuede();
    void EntraAEscribir();
    void ExigeAbierta() const;
    void Escribe();
    PlanDeEscritura Plan() const;
    void EscribePaginas(const PlanDeEscritura& plan);
    void EscribeEnOrden(std::span<const quint32> numeros);
    std::vector<quint32> EnOrdenDeEscritura(const std::vector<quint32>& numeros);
    void Acaba();

    QString nombre_;
    QString ruta_; ///< without links, so that all who open the file meet at the same lock
    AperturaTransaccion apertura_;
    Disco& disco_;
    Diario diario_;
    std::shared_ptr<FicheroDeDisco> fichero_{};
    std::unique_ptr<Candado> candado_{};
    std::unique_ptr<FicheroPaginas> limpias_{};
    Formato formato_{};
    std::unique_ptr<PaginasCambiadas> cambiadas_{};
    std::vector<quint32> cuantasEnMarca_{};
    Huella huella_{};
    bool huellaDudosa_ = false;
    quint32 cuantas_ = 0; ///< in a transaction
    int lecturas_ = 0;
    bool abierta_ = false;
    bool soloLectura_ = false;
    bool haDeshecho_ = false;
};

/// A statement that reads.
class LecturaDePaginas {
  public:
    explicit LecturaDePaginas(TransaccionPaginas& paginas)
        : paginas_(paginas), cambiadas_(paginas.EmpiezaLectura())
    {
    }
    ~LecturaDePaginas() { paginas_.AcabaLectura(); }
    LecturaDePaginas(const LecturaDePaginas&) = delete;
    LecturaDePaginas& operator=(const LecturaDePaginas&) = delete;

    bool Cambiadas() const { return cambiadas_; } ///< by another, since the last look

  private:
    TransaccionPaginas& paginas_;
    bool cambiadas_;
};

} // namespace tolmo::data::access::mdb
