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
    DefinicionesMdb(FicheroAccess& fichero, Esquema& esquema,
                    std::function<void()> sueltaSentencias);

    /// Does in the file what belongs there. \returns false for a statement that is for the engine
    /// \throws ErrorSql
    bool Haz(const Sentencia& sentencia);

  private:
    bool DeFichero(const QString& tabla) const;
    void Comprueba(const Sentencia& sentencia) const;
    bool Crea(const TablaNueva& tabla);
    bool Crea(const IndiceNuevo& indice);
    bool Crea(const ConsultaNueva& consulta);
    bool Elimina(const Eliminacion& eliminacion);
    bool Llama(const Llamada& llamada);
    void Desconecta();
    void Cambia(const std::function<void(const std::shared_ptr<mdb::PaginasEscribibles>&)>& cambio);

    FicheroAccess& fichero_;
    Esquema& esquema_;
    std::function<void()> sueltaSentencias_;
};

} // namespace tolmo::data::access
