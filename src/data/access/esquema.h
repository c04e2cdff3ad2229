#pragma once
#include "data/access/base.h"
#include "data/access/tipos.h"
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

namespace tolmo::data::access {

/// A column of a table, or of what a statement selects from.
struct ColumnaVista {
    QString nombre{};
    Tipo tipo = Tipo::Desconocido;
    int ancho = 0;               ///< characters, 0 without limit
    int precision = 0;           ///< digits of a decimal number, 0 for all else
    int escala = 0;              ///< how many of them stand behind its point
    QString tabla{};             ///< the table that it stands in, empty for an expression
    QString columna{};           ///< its name there
    QString exacta{};            ///< the one beside it that gives what a double can't hold
    bool conIndiceAjeno = false; ///< an index of another order begins with it
    bool propia = false;         ///< its indexes follow the order of the language
    QString defecto{};           ///< of a column of the file: an expression as Access keeps it
    bool obligatoria = false;    ///< the same: it takes no Nulls
};

/// A table or a view of the base, or a stored query.
struct TablaVista {
    enum class Clase { Tabla, Vista, Guardada };
    QString nombre{};
    Clase clase = Clase::Tabla;
    bool deFichero = false; ///< of the Access file, not of the engine's own store
    bool enlace = false;    ///< it lives in another file
    bool conectada = true;  ///< the engine knows it
    QString texto{};        ///< of a stored query
    QString impedimento{};  ///< why a stored query has none that is of use here
    bool conFila = false;   ///< it has row numbers, by which a row can be told
    std::vector<ColumnaVista> columnas{};

    const ColumnaVista* Busca(const QString& columna) const;
};

/// An index of a table, as statements name it; what is only a part of the table itself has no name.
struct IndiceVisto {
    QString nombre{};
    QStringList columnas{};
};

class FicheroAccess;

/// The tables of a base, and of the Access file that it stands for, if any; read as they are asked
/// for and kept until Olvida.
class Esquema {
  public:
    explicit Esquema(const Base& base, const FicheroAccess* fichero = nullptr)
        : base_(base), fichero_(fichero)
    {
    }

    /// The table, view or stored query of that name, in any case; nullptr when there is none.
    const TablaVista* Busca(const QString& nombre) const;
    /// A table of another base, which has to be an Access file. No error tells how it is reached
    /// but for its path. \throws ErrorSql when it can't be opened
    const TablaVista& BuscaEn(const QString& base, const QString& tabla) const;
    std::vector<const TablaVista*> Todas() const;
    std::vector<IndiceVisto> IndicesDe(const TablaVista& tabla) const;
    void Olvida();
    /// Makes the engine forget the tables of the file too: they may have another shape now.
    void Desconecta();

  private:
    void Lee() const;
    void LeeDelFichero() const;
    void Conecta(TablaVista& tabla) const;
    void LeeConsulta(TablaVista& consulta) const;
    void LeeGuardadas() const;
    void LeeColumnas(TablaVista& tabla) const;
    void LeeExigencias(TablaVista& tabla) const;
    QSet<QString> PrimerasDeIndice(const QString& tabla) const;
    std::vector<IndiceVisto> IndicesDelFichero(const QString& tabla) const;

    const Base& base_;
    const FicheroAccess* fichero_;
    mutable bool leido_ = false;
    mutable QHash<QString, TablaVista> tablas_; ///< by name in lower case
};

/// The table that holds the stored queries, Access texts, beside the views of the base itself.
constexpr const char* TablaConsultas = "kov_consultas";

/// The form of a name under which two spellings are the same name.
inline QString Llave(const QString& nombre)
{
    return nombre.toCaseFolded();
}

} // namespace tolmo::data::access
