#pragma once
#include <QString>
#include <stdexcept>

namespace tolmo::site {

/// Numbers of the platform's FTP layer that callers and logs know.
namespace error_ftp {
constexpr int NoHayFichero = 2;       ///< no such local file
constexpr int SinAcceso = 5;          ///< a local file that can't be opened, read or written
constexpr int AsaNoValida = 6;        ///< no session
constexpr int SinMasFicheros = 18;    ///< a listing that has ended
constexpr int ParametroNoValido = 87; ///< a name or a port that no command can carry
constexpr int Espera = 12002;
constexpr int Extendido = 12003; ///< the server said why: the text is its own answer
constexpr int SinNombre = 12007;
constexpr int ClaveIncorrecta = 12014;
constexpr int SinConexion = 12029;
constexpr int Abortada = 12030;
constexpr int Reiniciada = 12031;
constexpr int TransferenciaEnCurso = 12110;
} // namespace error_ftp

/// A call of the FTP layer that failed. It stays below cFTP, which turns it into a result and a
/// text.
class ErrorFtp : public std::runtime_error {
  public:
    /// One of the numbers above, with its text.
    explicit ErrorFtp(int numero);
    /// Number 12003 with what the server answered.
    explicit ErrorFtp(const QString& respuesta);

    int Numero() const { return numero_; }
    /// The message of the number, or the server's own answer for 12003.
    const QString& Mensaje() const { return mensaje_; }

  private:
    int numero_;
    QString mensaje_;
};

} // namespace tolmo::site
