#pragma once
#include "data/columna_grid.h"
#include "data/condicion_literales.h"
#include "data/proveedor.h"
#include <QStringList>
#include <span>
#include <vector>

namespace tolmo::data {
struct Programa;

/// A field that conditions can be made of.
struct EntradaFiltro {
    QString caption{}; ///< what the operator reads
    QString campo{};   ///< its name in the database
    Letra letra = Letra::Texto;
};

/// One row of the grid of conditions, as the operator reads it.
struct FilaCondicion {
    QString nexo{};       ///< "Y", "O", "Y NO", "O NO"; the first row has none
    QString condicion1{}; ///< caption of a field
    QString operador{};
    QString condicion2{}; ///< caption of a field, "(VACIO)" or a typed value
    QString sentencia{};  ///< the row in the target language, while it is complete and allowed
};

/// Builds the text of a boolean condition out of rows. There is always a row, and the last one is
/// the row for the next condition.
class ConstructorCondicion {
  public:
    enum Columna { Nexo, Condicion1, Operador, Condicion2, Sentencia };

    explicit ConstructorCondicion(Programa& programa) : programa_(programa) {}

    Lenguaje Destino = Lenguaje::Sql;

    /// Takes the fields from the columns of a grid and the fields of its record set. A column that
    /// the record set doesn't know is passed over; one without a caption goes by its name.
    void ArrayFiltro(std::span<const ColumnaGrid> columnas, std::span<const Campo> campos);
    void ArrayDirectoFiltro(std::vector<EntradaFiltro> entradas);

    /// What the cells of a column offer; the first of the joining words and of the operators is
    /// what they start on.
    static QStringList Nexos();
    static QStringList Operadores();
    QStringList Objetos() const;

    /// One empty row and no condition; the fields stay.
    void EmpiezaDeNuevo();
    const std::vector<FilaCondicion>& Filas() const { return filas_; }
    bool FilaVacia(int fila) const;
    /// False for the joining word of the first row and for the sentences.
    static bool CeldaEditable(int fila, int columna);
    QString TextoCelda(int fila, int columna) const;

    /// Writes a cell. A joining word or an operator that was passed over takes its first word when
    /// the cells behind it are filled; a last row that is complete gets another one behind it.
    void PonCelda(int fila, int columna, const QString& texto);
    /// The first row stays, with a message.
    void EliminaFila(int fila);

    /// Looks for the first row that isn't allowed and shows why; a last row that was left half way
    /// goes if the operator agrees. \returns true when there is something wrong
    bool CadenaInvalida();
    /// Makes the condition of all rows. \returns false, with the message shown, when it can't be
    bool ConstruirCondicion();
    void QuitaCondicion() { condicion_.clear(); }

    /// As it was put together, with a blank behind each row.
    const QString& Condicion() const { return condicion_; }
    /// The condition for the caller, in brackets; these stand also around an empty one.
    QString Resultado() const;
    /// The same added to the condition that the caller has.
    QString ResultadoSobre(const QString& anterior) const;

  private:
    const EntradaFiltro* Entrada(const QString& caption) const;
    bool Completa(std::size_t fila) const;
    void PonPalabrasPasadas(std::size_t fila);
    void QuitaFila(std::size_t fila);
    bool QuitaUltimaAMedias();
    QString Motivo(const FilaCondicion& fila) const;
    QString SentenciaDe(std::size_t fila) const;
    QString Comparacion(const FilaCondicion& fila) const;
    QString ConVacio(const QString& campo, const QString& operador) const;
    QString ConCampo(const QString& campo, const QString& operador, const QString& otro) const;
    QString ConValor(const EntradaFiltro& entrada, const FilaCondicion& fila) const;

    Programa& programa_;
    std::vector<EntradaFiltro> entradas_{};
    std::vector<FilaCondicion> filas_ = std::vector<FilaCondicion>(1);
    QString condicion_{};
};

} // namespace tolmo::data
