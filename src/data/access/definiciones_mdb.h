#pragma once
#include "data/access/arbol.h"
#include "data/access/base.h"
#include "data/access/esquema.h"
#include "data/access/fichero_access.h"
#include <functional>

namespace tolmo::data::access {

/// What the statements that change the shape of a base mean for the Access file behind it.
class DefinicionesMdb {
  public:
    /// `sueltaSentencias` gives up all prepared statements, which keep tables from being made
    /// unknown.
    DefinicionesMdb(const Base& base, FicheroAccess& fichero, Esquema& esquema,
                    std::function<void()> sueltaSentencias);

    /// Does in the file what belongs there. \returns false for a statement that is for the engine
    /// \throws ErrorSql
    bool Haz(const Sentencia& sentencia);

    /// Makes a table and fills it: all or nothing.
    void CreaYLlena(const TablaNueva& tabla, const std::function<void()>& llena);

  private:
    bool DeFichero(const QString& tabla) const;
    void Comprueba(const Sentencia& sentencia) const;
    bool Crea(const TablaNueva& tabla);
    bool Crea(const IndiceNuevo& indice);
    bool Crea(const ConsultaNueva& consulta);
    bool Elimina(const Eliminacion& eliminacion);
    bool Cambia(const CambioTabla& cambio, const Sentencia& sentencia);
    void CambiaColumna(const QString& tabla, const CambioTabla& cambio, const QString& convierte);
    void BorraIndice(const QString& tabla, const QString& indice);
    void EnUna(const std::function<void()>& cambios);
    bool Llama(const Llamada& llamada);
    void Desconecta();
    void Define(const std::function<void(const std::shared_ptr<mdb::PaginasEscribibles>&)>& cambio);

    const Base& base_;
    FicheroAccess& fichero_;
    Esquema& esquema_;
    std::function<void()> sueltaSentencias_;
};

} // namespace tolmo::data::access
