#pragma once
#include "data/access/mdb/bytes.h"
#include <array>

namespace tolmo::data::access::mdb {

/// The commit bytes of the first page: a counter for each user, which he sets to 0 while he writes
/// and counts on when he has finished, so that others notice.
struct MarcasDeCambio {
    static constexpr std::size_t Usuarios = 256;
    static constexpr std::size_t Tam = 2 * Usuarios;

    /// Where they stand in a file of Access 2000 and later.
    static constexpr qint64 Posicion = 0xE00;
    static constexpr qint64 PosicionJet3 = 0x600;

    std::array<quint8, Tam> bytes{};

    quint16 De(int usuario) const { return qFromLittleEndian<quint16>(bytes.data() + 2 * usuario); }
    bool operator==(const MarcasDeCambio&) const = default;

    /// The user whose mark this program counts on. Programs of Access take the first free number,
    /// so the last one is nobody else's, and marks of others tell whether one of them has written.
    /// A mark that tells trouble stays as a warning: 0 is that of a user who went down while
    /// writing, 1 of one who met a damaged page.
    int UsuarioPropio() const
    {
        constexpr int Ultimo = static_cast<int>(Usuarios) - 1;
        for (int usuario = Ultimo; usuario > 0; --usuario)
            if (De(usuario) > 1)
                return usuario;
        return Ultimo;
    }

    /// The count after another one: never those that tell trouble.
    static quint16 Siguiente(quint16 marca)
    {
        constexpr quint16 Primera = 0x0100;
        return marca < Primera || marca == 0xFFFF ? Primera : static_cast<quint16>(marca + 1);
    }
};

} // namespace tolmo::data::access::mdb
