#pragma once
#include <QDateTime>
#include <QString>

namespace tolmo::data {

/// Styles of a message box, as numbers that may be added up.
namespace estilo {
constexpr int Aceptar = 0;
constexpr int AceptarCancelar = 1;
constexpr int SiNo = 4;
constexpr int Error = 16;
constexpr int Pregunta = 32;
constexpr int Aviso = 48;
constexpr int Informacion = 64;
constexpr int SegundoBoton = 256; ///< the second button is the default one
} // namespace estilo

enum class Respuesta { Aceptar = 1, Cancelar = 2, Si = 6, No = 7 };

/// Message boxes. An engine unit never opens one by itself.
class Avisos {
  public:
    virtual ~Avisos() = default;
    /// Shows a box and waits for its button; an empty title is the program's name.
    virtual Respuesta Muestra(const QString& texto, int estilo, const QString& titulo = {}) = 0;
};

/// What a long run shows while it works.
class Progreso {
  public:
    virtual ~Progreso() = default;
    virtual void LimpiaEstado() = 0;
    /// Adds a line at the end of the status list and makes it visible, unmarked.
    virtual void LineaEstado(const QString& linea) = 0;
    virtual void MuestraBarra(bool visible) = 0;
    /// Sets the bar to `posicion` times 100 divided by `total`, and repaints.
    virtual void Avanza(int posicion, int total) = 0;
    /// Gives the window's events a turn.
    virtual void CedeEventos() = 0;
    /// False once the process has been asked to end. What may go on for ever stops then.
    virtual bool SigueElPrograma() const { return true; }
    virtual void HabilitaPestanas(bool habilitadas) = 0;
};

/// The clock and the dice.
class Reloj {
  public:
    virtual ~Reloj() = default;
    virtual QDateTime Ahora() const = 0;
    QDate Hoy() const { return Ahora().date(); }
    /// A whole random number of up to 9 digits.
    virtual int Azar() = 0;
};

/// The desktop's services.
class Escritorio {
  public:
    virtual ~Escritorio() = default;
    /// A path as the databases hold it, or the URL of a page.
    virtual void AbreDocumento(const QString& ruta) = 0;
    virtual void CopiaAlPortapapeles(const QString& texto) = 0;
};

} // namespace tolmo::data
