#pragma once
#include <QByteArray>

namespace tolmo::site {

/// Puts the lines that a server sends together into answers ("250-a", "b", "250 c" are one).
class RespuestaFtp {
  public:
    /// Takes one line, with or without its end.
    void Linea(QByteArray linea);
    /// Forgets the answer, before a new command.
    void Olvida();

    /// The number of the last whole answer, 0 before the first.
    int Codigo() const { return codigo_; }
    bool Rechaza() const { return codigo_ >= 400; }
    /// Its lines, parted by CRLF.
    const QByteArray& Texto() const { return texto_; }

  private:
    QByteArray pendiente_{}; ///< lines of an answer that goes on
    QByteArray abierta_{};   ///< its number, empty when none is under way
    QByteArray texto_{};
    int codigo_ = 0;
};

/// The folder that the answer to PWD names: between quotes, a quote inside is doubled.
/// Empty when it names none.
QByteArray CarpetaDeRespuesta(const QByteArray& texto);

} // namespace tolmo::site
