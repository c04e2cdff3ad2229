#pragma once
#include "data/errores.h"
#include <QString>
#include <optional>

namespace tolmo::data::access::mdb {

/// Why an Access file, or a part of it, can't be used.
enum class Motivo {
    NoSeAbre,      ///< absent, a folder, or not readable
    NoEsBase,      ///< not a file of Access
    Version,       ///< of a version that isn't known
    Contrasena,    ///< protected by a password that wasn't given, or by another one
    Cifrado,       ///< its pages are encoded
    Cortado,       ///< ends before it should
    Danado,        ///< its bytes contradict each other
    NoAdmitido,    ///< sound, but beyond what this engine reads
    NoHallado,     ///< no table, column or query of that name
    Enlace,        ///< a linked table whose file can't be read here
    EnUso,         ///< somebody else has it open, or keeps it locked for too long
    NoSeEscribe,   ///< no permission, no room, or a device that fails
    Lleno,         ///< as large as the format lets a file be
    Valor,         ///< a value that its column can't hold, or a row that is too long
    SinValor,      ///< Null where a value is required
    ClaveRepetida, ///< a unique index has the key already
    Relacion       ///< a row would be left without the one that it refers to
};

/// Where it was met; what isn't known stays empty.
struct Lugar {
    QString fichero{};
    QString tabla{};
    QString columna{};
    QString indice{};
    std::optional<quint32> pagina{};
};

/// All that reading an Access file can end in. Its description tells file, table, column and page.
class ErrorMdb : public ErrorSql {
  public:
    ErrorMdb(Motivo motivo, const QString& frase, const Lugar& lugar = {});

    Motivo motivo() const { return motivo_; }
    /// What happened, without where.
    const QString& frase() const { return frase_; }
    const Lugar& lugar() const { return lugar_; }

    /// The same error with what only the caller knows; what it knew already stays.
    ErrorMdb En(const Lugar& lugar) const;

  private:
    Motivo motivo_;
    QString frase_;
    Lugar lugar_;
};

/// \throws ErrorMdb always, with Motivo::Danado
[[noreturn]] void Danado(const QString& frase, const Lugar& lugar = {});

/// Runs `tarea`; an error that leaves it is completed with `lugar()`.
template <typename Tarea, typename DaLugar> decltype(auto) EnLugar(DaLugar&& lugar, Tarea&& tarea)
{
    try {
        return tarea();
    } catch (const ErrorMdb& error) {
        throw error.En(lugar());
    }
}

} // namespace tolmo::data::access::mdb
