#pragma once
#include "data/access/mdb/disco.h"
#include "data/access/mdb/marcas_cambio.h"
#include <QStringList>
#include <span>
#include <vector>

namespace tolmo::data::access::mdb {

/// What a commit is about to do to a file.
struct PlanDeEscritura {
    quint32 tamPagina = 0;
    quint32 paginasAntes = 0;
    quint32 paginasDespues = 0;
    int usuario = 1; ///< whose mark of change counts on
    MarcasDeCambio marcas{};
    std::vector<quint32> reemplazadas{}; ///< in rising order, all below `paginasAntes`
};

enum class Recuperacion {
    NoHabia,
    Incompleto, ///< thrown away: nothing of the file was changed yet
    Repuesto,   ///< the file is as it was before the commit
    Ajeno       ///< it doesn't belong to this state of the file, and was set aside
};

/// The journals of a database that were set aside, by their paths.
QStringList DiariosAjenos(const QString& ruta);

/// Sets the mark of one user, and nothing else of the first page.
void EscribeMarca(FicheroDeDisco& base, int usuario, quint16 marca);

/// The journal of a commit: a file beside the database (NAME.diario) with the pages that are about
/// to be replaced as they were, the old length and a checksum over everything. While it is there
/// and whole, the commit hasn't happened: whoever opens the database puts the old pages back.
class Diario {
  public:
    /// The disk outlives it. `ruta` names the database.
    Diario(Disco& disco, const QString& ruta);

    const QString& Ruta() const { return ruta_; }
    bool Existe() const { return disco_.Estado(ruta_).has_value(); }

    /// Comes back when it is safe on disk; what is left by a failure is taken away.
    void Escribe(FicheroDeDisco& base, const PlanDeEscritura& plan);

    /// False also for one that is torn.
    bool Completo() const;

    /// Plays it back into the database, which has to be locked against everybody else. It may be
    /// done again after any interruption.
    Recuperacion Recupera(FicheroDeDisco& base);

    /// The commit is done.
    void Borra();

  private:
    void ApartaAjeno();

    Disco& disco_;
    QString base_;
    QString ruta_;
};

} // namespace tolmo::data::access::mdb
