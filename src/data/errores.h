#pragma once
#include <QString>
#include <stdexcept>

namespace tolmo::data {

/// What a database or the translator refuses: a number, a description and the module it comes
/// from, as the closing box of a failed statement shows them.
class ErrorDatos : public std::runtime_error {
  public:
    ErrorDatos(int numero, const QString& descripcion, const QString& modulo);

    int Numero() const { return numero_; }
    const QString& Descripcion() const { return descripcion_; }
    const QString& Modulo() const { return modulo_; }

  private:
    int numero_;
    QString descripcion_;
    QString modulo_;
};

/// Numbers that an ErrorDatos carries.
namespace numero_error {
constexpr int ArgumentoNoValido = 5;
constexpr int UsoDeNulo = 94;
constexpr int CriterioNoValido = 3001;  ///< a search criterion that doesn't read as one
constexpr int FinDeFilas = 3021;        ///< no current row
constexpr int ElementoNoHallado = 3265; ///< no column of that name
constexpr int CampoIncorrecto = 3421;   ///< a value that the column can't take
constexpr int DialogoCancelado = 32755;
constexpr int SinPermiso = 3251;       ///< the row set can't be changed
constexpr int Sentencia = -2147217900; ///< the engine refuses the statement
constexpr int Conexion = -2147467259;  ///< no connection, or a lost one
} // namespace numero_error

/// A statement or a connection that the engine refuses.
class ErrorSql : public ErrorDatos {
  public:
    using ErrorDatos::ErrorDatos;
};

/// A text that the dialect translator can't rewrite.
class ErrorTraduccion : public ErrorDatos {
  public:
    explicit ErrorTraduccion(const QString& descripcion);
};

/// A run-time error of a run itself: a Null where none may be, a document that is gone, a column
/// that does not exist. It ends the run, and with it the process.
class ErrorEjecucion : public std::runtime_error {
  public:
    ErrorEjecucion(int numero, const QString& descripcion);

    int Numero() const { return numero_; }
    const QString& Descripcion() const { return descripcion_; }

  private:
    int numero_;
    QString descripcion_;
};

/// A local file that can't be opened, read or written.
class ErrorFichero : public std::runtime_error {
  public:
    explicit ErrorFichero(const QString& descripcion);
    const QString& Descripcion() const { return descripcion_; }

  private:
    QString descripcion_;
};

/// The end of the program, after a statement failed and its box was shown. It unloads no window:
/// what stands on disk and in the database stays as it was.
struct FinDePrograma {};

} // namespace tolmo::data
