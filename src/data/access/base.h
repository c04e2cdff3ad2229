#pragma once
#include "data/access/funciones.h"
#include <QString>
#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;
struct sqlite3_value;

namespace tolmo::data::access {

/// A prepared statement of the engine, and the row that it stands on.
class Preparada {
  public:
    Preparada() = default;
    Preparada(sqlite3* base, const QString& sql);

    /// Goes to the next row. \returns false at the end \throws ErrorSql
    bool Paso();
    /// Back to before the first row; what is bound stays.
    void Reinicia();

    /// Binds the parameter of that number, from 1; one that the statement lacks is passed over.
    void Liga(int parametro, const QString& texto);
    void Liga(int parametro, const QByteArray& bytes);
    void Liga(int parametro, double numero);
    void Liga(int parametro, qlonglong numero);
    void LigaNulo(int parametro);

    /// Takes a kept statement back to its start when its use ends, also by an error: an open one
    /// would hold the base.
    class Guarda {
      public:
        explicit Guarda(Preparada& preparada) : preparada_(preparada) {}
        ~Guarda() { preparada_.Reinicia(); }
        Guarda(const Guarda&) = delete;
        Guarda& operator=(const Guarda&) = delete;

      private:
        Preparada& preparada_;
    };

    bool EsNulo(int columna) const;
    QString Texto(int columna) const;
    std::string_view Bytes(int columna) const;
    qlonglong Entero(int columna) const;
    double Decimal(int columna) const;
    /// SQLITE_INTEGER, SQLITE_FLOAT, SQLITE_TEXT, SQLITE_BLOB or SQLITE_NULL.
    int Clase(int columna) const;
    sqlite3_value* Valor(int columna) const;

  private:
    struct Cierra {
        void operator()(sqlite3_stmt* sentencia) const;
    };
    std::unique_ptr<sqlite3_stmt, Cierra> sentencia_;
};

/// An open SQLite file with the functions and the collation of the language.
class Base {
  public:
    enum class Modo {
        Existente,
        Nueva,
        Propia ///< a store of this connection alone, which goes with it; without a path
    };

    /// \throws ErrorSql when the file can't be opened, or isn't a database
    /// `ahora` must outlive the base.
    Base(const QString& ruta, Modo modo, const Ahora& ahora);

    sqlite3* Manejo() const { return base_.get(); }
    Preparada Prepara(const QString& sql) const { return {base_.get(), sql}; }
    /// Runs statements without a result. \throws ErrorSql
    void Ejecuta(const QString& sql) const;
    qlonglong UltimaFila() const;
    long long Cambios() const;

  private:
    struct Cierra {
        void operator()(sqlite3* base) const;
    };
    void Dispone(Modo modo) const;

    std::unique_ptr<sqlite3, Cierra> base_;
};

/// One transaction over several statements; without Confirma everything is undone.
class Transaccion {
  public:
    explicit Transaccion(const Base& base);
    ~Transaccion();
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;
    void Confirma();

  private:
    const Base& base_;
    bool propia_; ///< false inside another one, which then decides
    bool abierta_ = true;
};

/// The name as a quoted identifier of the engine.
QString Identificador(const QString& nombre);
/// The text as a quoted literal of the engine.
QString TextoLiteral(const QString& texto);

} // namespace tolmo::data::access
