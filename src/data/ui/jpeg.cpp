#include "data/ui/jpeg.h"
#include <algorithm>
#include <vector>

namespace tolmo::data::ui {
namespace {

constexpr int Fin = -1;

enum Marca {
    Relleno = 0x00,
    PrimerMarco = 0xC0,
    UltimoMarco = 0xCF,
    TablaHuffman = 0xC4,
    Reservada = 0xC8,
    TablaAritmetica = 0xCC,
    PrimerReinicio = 0xD0,
    UltimoReinicio = 0xD7,
    Comienzo = 0xD8,
    Final = 0xD9,
    Barrido = 0xDA,
    Prefijo = 0xFF,
};

bool Entre(int valor, int desde, int hasta)
{
    return valor >= desde && valor <= hasta;
}

/// The bytes of a file, one after the other.
class Bytes {
  public:
    explicit Bytes(QIODevice& fichero) : fichero_(fichero) {}

    int Lee()
    {
        if (posicion_ == trozo_.size() && !Rellena())
            return Fin;
        return static_cast<unsigned char>(trozo_[posicion_++]);
    }
    int LeeDoble()
    {
        const int alto = Lee();
        const int bajo = Lee();
        return bajo == Fin ? Fin : alto * 256 + bajo;
    }
    void Salta(int cuantos)
    {
        while (cuantos-- > 0 && Lee() != Fin) {
        }
    }
    /// The next marker: what stands before it is skipped.
    int SiguienteMarca()
    {
        for (;;) {
            if (!VaAPrefijo())
                return Fin;
            int marca = Lee();
            while (marca == Prefijo)
                marca = Lee();
            if (marca != Relleno && !Entre(marca, PrimerReinicio, UltimoReinicio))
                return marca;
        }
    }

  private:
    bool Rellena()
    {
        constexpr qint64 Trozo = 64 * 1024;
        trozo_ = fichero_.read(Trozo);
        posicion_ = 0;
        return !trozo_.isEmpty();
    }
    bool VaAPrefijo()
    {
        for (;;) {
            const auto hallado = trozo_.indexOf(static_cast<char>(Prefijo), posicion_);
            if (hallado >= 0) {
                posicion_ = hallado + 1;
                return true;
            }
            if (!Rellena())
                return false;
        }
    }

    QIODevice& fichero_;
    QByteArray trozo_{};
    qsizetype posicion_ = 0;
};

bool EsMarco(int marca)
{
    return Entre(marca, PrimerMarco, UltimoMarco) && marca != TablaHuffman && marca != Reservada &&
           marca != TablaAritmetica;
}

/// These come in passes of growing detail, each over the whole picture.
bool EsProgresivo(int marco)
{
    return (marco & 3) == 2;
}

struct Marco {
    bool progresivo = false;
    int componentes = 0;
    qint64 coeficientes = 0; ///< in bytes
};

/// The head of the picture, behind its length.
Marco LeeMarco(Bytes& bytes, int marca)
{
    struct Componente {
        int h = 1;
        int v = 1;
    };
    constexpr qint64 BytesPorCoeficiente = 2;
    bytes.Lee(); // the bits of a sample
    const qint64 alto = bytes.LeeDoble();
    const qint64 ancho = bytes.LeeDoble();
    const int cuantos = bytes.Lee();
    std::vector<Componente> componentes;
    Componente mayor;
    for (int i = 0; i < cuantos; ++i) {
        bytes.Lee(); // its name
        const int muestreo = std::max(bytes.Lee(), 0);
        bytes.Lee(); // its table
        const Componente uno{std::max(muestreo >> 4, 1), std::max(muestreo & 15, 1)};
        mayor = {std::max(mayor.h, uno.h), std::max(mayor.v, uno.v)};
        componentes.push_back(uno);
    }
    Marco marco{.progresivo = EsProgresivo(marca), .componentes = cuantos};
    for (const Componente& uno : componentes)
        marco.coeficientes +=
            ancho * uno.h / mayor.h * (alto * uno.v / mayor.v) * BytesPorCoeficiente;
    return marco;
}

} // namespace

std::optional<Jpeg> ExaminaJpeg(QIODevice& fichero)
{
    Bytes bytes(fichero);
    if (bytes.Lee() != Prefijo || bytes.Lee() != Comienzo)
        return std::nullopt;
    Jpeg jpeg;
    Marco marco;
    for (;;) {
        const int marca = bytes.SiguienteMarca();
        jpeg.entero = marca == Final && jpeg.barridos > 0;
        if (marca == Fin || marca == Final)
            return jpeg;
        const int largo = bytes.LeeDoble();
        if (EsMarco(marca)) {
            marco = LeeMarco(bytes, marca);
        } else if (marca == Barrido) {
            ++jpeg.barridos;
            if (marco.progresivo || bytes.Lee() < marco.componentes)
                jpeg.memoria = marco.coeficientes;
        } else {
            bytes.Salta(largo - 2);
        }
    }
}

} // namespace tolmo::data::ui
