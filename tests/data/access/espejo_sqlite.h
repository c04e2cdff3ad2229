#pragma once
#include "data/valores.h"
#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// A table that is kept twice, in an Access file and in the mirror.
struct ColumnaDoble {
    enum class Clase {
        Contador,
        Entero,
        Corto,
        Byte,
        Simple,
        Doble,
        Moneda,
        Fecha,
        Logico,
        Texto,
        Memo
    };
    QString nombre{};
    Clase clase = Clase::Texto;
    int ancho = 0;
    bool obligatoria = false;
};
struct IndiceDoble {
    QString nombre{};
    QString columnas{};
    bool unico = false;
};
struct TablaDoble {
    QString nombre{};
    std::vector<ColumnaDoble> columnas{};
    std::vector<IndiceDoble> indices{};

    const ColumnaDoble& operator[](const QString& columna) const;
};

/// A statement in the language of Access with its literals, and the same for the mirror, whose
/// values are bound.
class FraseDoble {
  public:
    FraseDoble() = default;
    explicit FraseDoble(const QString& comun) { *this << comun; }

    FraseDoble& operator<<(const QString& comun);
    FraseDoble& Segun(const QString& paraAccess, const QString& paraEspejo);
    FraseDoble& Valor(const ColumnaDoble& columna, const tolmo::data::Valor& valor);

    QString access{};
    QString espejo{};
    std::vector<QVariant> ligados{};
};

/// What became of a statement.
struct ResultadoDoble {
    enum class Fallo { Ninguno, Repetido, SinValor, Otro };
    Fallo fallo = Fallo::Ninguno;
    long long filas = 0;
    QString descripcion{};
};

/// Rows in the form in which both sides are compared: a line of bytes for each, in order.
QByteArray LineaDe(const std::vector<ColumnaDoble>& columnas,
                   const std::vector<tolmo::data::Valor>& valores, std::size_t primero = 0);

/// The tables as plain SQLite keeps them, in memory, with a schema of its own: amounts as whole
/// ten-thousandths, dates as texts, truth as -1 and 0, and texts that are the same when Access
/// takes them for the same key.
class EspejoSqlite {
  public:
    EspejoSqlite();

    void Crea(const TablaDoble& tabla);
    void CreaIndice(const QString& tabla, const IndiceDoble& indice);
    ResultadoDoble Ejecuta(const FraseDoble& frase);
    void Ejecuta(const char* sql);
    qint64 Numero(const QString& sql);
    /// The value of a column in one of the rows, as the programs know it; Null for no row.
    tolmo::data::Valor Muestra(const TablaDoble& tabla, const ColumnaDoble& columna, int cual);
    std::vector<tolmo::data::Valor> Fila(const TablaDoble& tabla, int cual);
    QList<QByteArray> Lineas(const TablaDoble& tabla);

  private:
    struct Cierra {
        void operator()(sqlite3* base) const;
        void operator()(sqlite3_stmt* sentencia) const;
    };
    using Sentencia = std::unique_ptr<sqlite3_stmt, Cierra>;
    Sentencia Prepara(const QString& sql);
    static tolmo::data::Valor Lee(sqlite3_stmt* fila, int lugar, ColumnaDoble::Clase clase);

    static void LeeFila(sqlite3_stmt* fila, const TablaDoble& tabla,
                        std::vector<tolmo::data::Valor>& valores);

    std::unique_ptr<sqlite3, Cierra> base_{};
};

/// By what Access tells texts apart in an index: not by case, nor by blanks at the end; a letter
/// with an accent is another one, some signs count as letters. Two texts with the same bytes are
/// the same.
QByteArray IdentidadDeTexto(QString texto);
