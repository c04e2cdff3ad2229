#pragma once
#include "data/access/fechas.h"
#include "data/access/tipos.h"
#include <QString>
#include <functional>
#include <stdexcept>
#include <string_view>

struct sqlite3;
struct sqlite3_context;
struct sqlite3_value;

namespace tolmo::data::access {

/// The clock of Date, Now and Time.
using Ahora = std::function<QDateTime()>;

/// Makes the functions of the language known to an open base, all with "kov_" in front of their
/// names. `ahora` must outlive the base.
void RegistraFunciones(sqlite3* base, const Ahora& ahora);

/// What a function can't do with its arguments; it becomes the statement's error.
class ErrorFuncion : public std::runtime_error {
  public:
    explicit ErrorFuncion(const QString& texto) : std::runtime_error(texto.toStdString()) {}
};

/// The arguments of a call from the engine, and its result.
class Argumentos {
  public:
    Argumentos(sqlite3_context* contexto, int total, sqlite3_value** valores)
        : contexto_(contexto), total_(total), valores_(valores)
    {
    }

    int Total() const { return total_; }
    bool EsNulo(int i) const;
    bool EsTexto(int i) const;
    bool EsEntero(int i) const;
    bool AlgunNulo() const;
    std::string_view Bytes(int i) const;
    /// As the language turns it into text: numbers without noise.
    QString Texto(int i) const;
    /// \throws ErrorFuncion when a text doesn't read as a number
    double Numero(int i) const;
    /// Rounded, .5 to the even side.
    qlonglong Entero(int i) const;
    /// A date held as text, a text that reads as a date, or a day number.
    std::optional<Momento> MomentoSiLoEs(int i) const;
    /// \throws ErrorFuncion
    Momento MomentoDe(int i) const;
    QDateTime Ahora() const;

    void Devuelve(const QString& texto) const;
    void Devuelve(std::string_view bytes) const;
    void Devuelve(double numero) const;
    void Devuelve(qlonglong numero) const;
    void Devuelve(int numero) const { Devuelve(static_cast<qlonglong>(numero)); }
    void DevuelveVerdad(bool verdad) const { Devuelve(verdad ? 1 : 0); }
    void DevuelveNulo() const;
    void DevuelveArgumento(int i) const;
    sqlite3_context* Contexto() const { return contexto_; }
    sqlite3_value* Valor(int i) const { return valores_[i]; }

  private:
    sqlite3_context* contexto_;
    int total_;
    sqlite3_value** valores_;
};

/// A function of the language, as the engine knows it. With `propagaNulo` a Null among the
/// arguments is the result.
struct FuncionSql {
    const char* nombre;
    int argumentos; ///< -1: any number
    bool propagaNulo;
    void (*cuerpo)(Argumentos&);
    bool constante = true; ///< the same arguments give the same result
};

void Registra(sqlite3* base, const FuncionSql& funcion, const Ahora& ahora);

// The functions by subject, each in its own source.
void RegistraDeConversion(sqlite3* base, const Ahora& ahora);
void RegistraDeTexto(sqlite3* base, const Ahora& ahora);
void RegistraDeNumero(sqlite3* base, const Ahora& ahora);
void RegistraDeFecha(sqlite3* base, const Ahora& ahora);
void RegistraAgregados(sqlite3* base);

// Rules of numbers that functions and conversions share.

/// Rounds to `decimales` places, a half to the even side.
double RedondeaPar(double numero, int decimales);
/// The number at the head of a text, blanks left out, 0 without one; what follows doesn't count.
double NumeroAlPrincipio(QStringView texto);
/// The number that the whole text reads as.
std::optional<double> LeeNumero(QStringView texto);
/// The number as a column or a conversion of that kind holds it.
/// \throws ErrorFuncion when it is out of range
double AjustaNumero(double numero, Tipo tipo);

} // namespace tolmo::data::access
