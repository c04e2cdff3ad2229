#pragma once
#include "data/codificacion.h"
#include <algorithm>
#include <random>

namespace tolmo::data::access::mdb {

/// Makes up values; the same ones for the same seed.
class Azar {
  public:
    explicit Azar(unsigned semilla) : motor_(semilla) {}

    int Entre(int desde, int hasta)
    {
        return std::uniform_int_distribution<int>(desde, hasta)(motor_);
    }
    bool Cada(int veces) { return Entre(1, veces) == 1; }

    QByteArray Bytes(int largo, int primero = 1)
    {
        QByteArray bytes;
        bytes.reserve(largo);
        for (int i = 0; i < largo; ++i)
            bytes += static_cast<char>(Entre(primero, 255));
        return bytes;
    }
    /// Of the characters of Windows-1252 from `primero` on.
    QString Texto(int mayor, int primero = 1)
    {
        return DesdeWindows1252(Bytes(Entre(0, mayor), primero));
    }

    /// Mostly short ones, now and then up to a megabyte.
    int LargoDeMemo()
    {
        const int caso = Entre(1, 100);
        if (caso <= 60)
            return Entre(0, 90);
        if (caso <= 85)
            return Entre(90, 4000);
        return caso <= 99 ? Entre(4000, 20'000) : Entre(20'000, 524'288);
    }
    /// Long ones repeat a piece, so that making them up doesn't take longer than writing them.
    QString Memo(int primero = 1)
    {
        const int largo = LargoDeMemo();
        const QString trozo = DesdeWindows1252(Bytes(std::min(largo, 500), primero));
        QString texto = trozo.repeated(largo / 500 + 1);
        texto.truncate(largo);
        return texto;
    }

  private:
    std::mt19937 motor_;
};

} // namespace tolmo::data::access::mdb
