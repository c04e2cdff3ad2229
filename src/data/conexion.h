#pragma once
#include "data/recordset.h"

namespace tolmo::data {

/// Kinds of cursor; the numbers are ADO's. All are fetched whole: the kind is kept for the callers
/// that name it.
enum class Cursor { SoloAvance = 0, Claves = 1, Dinamico = 2, Estatico = 3 };

/// Kinds of lock; only SoloLectura opens a result that can't be changed.
enum class Bloqueo { SoloLectura = 1, Pesimista = 2, Optimista = 3 };

/// A connection, closed or open, to the management database or to the shop.
class Conexion {
  public:
    explicit Conexion(FabricaProveedor fabrica);

    /// Opens the engine that the text names; what was open before is closed.
    /// \throws ErrorSql when it can't be reached
    void Conecta(const QString& cadena, const QString& usuario = {}, const QString& clave = {});
    void Desconecta();
    bool Conectada() const { return proveedor_ != nullptr; }

    /// \throws ErrorSql when the connection is closed or the engine refuses
    Recordset Abre(const QString& sql, Cursor cursor, Bloqueo bloqueo);

    /// \returns rows affected
    /// \throws ErrorSql as Abre does
    long long Ejecuta(const QString& sql);

    /// True when the schema lists a table, linked table or view of that name, in any case.
    bool ExisteTabla(const QString& nombre);

  private:
    Proveedor& Exige() const;

    FabricaProveedor fabrica_;
    std::shared_ptr<Proveedor> proveedor_;
};

} // namespace tolmo::data
