#pragma once
#include "data/access/mdb/paginas.h"
#include <QByteArray>
#include <QtEndian>
#include <initializer_list>
#include <vector>

namespace tolmo::data::access::mdb {

/// The bytes that a row of hexadecimal digits tells; blanks and "|" are for the reader.
inline std::vector<quint8> DeHexa(const char* texto)
{
    QByteArray digitos(texto);
    const QByteArray bytes = QByteArray::fromHex(digitos.replace('|', ' '));
    return {bytes.begin(), bytes.end()};
}

inline QByteArray EnHexa(const QByteArray& bytes)
{
    return bytes.toHex(' ');
}

/// Pages in memory, which a test writes byte by byte.
class PaginasDePrueba : public Paginas {
  public:
    explicit PaginasDePrueba(Version version = Version::Jet4) : formato_(FormatoDe(version)) {}

    Pagina Lee(quint32 numero) override
    {
        const auto bytes = std::make_shared<const std::vector<quint8>>(paginas_.at(numero));
        return {.numero = numero, .bytes = Bytes(*bytes), .duenio = bytes};
    }
    quint32 Cuantas() const override { return static_cast<quint32>(paginas_.size()); }
    const Formato& formato() const override { return formato_; }
    const QString& Nombre() const override { return nombre_; }

    /// Writes bytes into a page, which is made where it is missing.
    void Pon(quint32 pagina, std::size_t posicion, const std::vector<quint8>& bytes)
    {
        if (pagina >= paginas_.size())
            paginas_.resize(pagina + 1, std::vector<quint8>(formato_.tamPagina));
        std::copy(bytes.begin(), bytes.end(),
                  paginas_[pagina].begin() + static_cast<std::ptrdiff_t>(posicion));
    }
    void Pon(quint32 pagina, std::size_t posicion, const char* hexa)
    {
        Pon(pagina, posicion, DeHexa(hexa));
    }
    void Pon16(quint32 pagina, std::size_t posicion, quint16 valor)
    {
        Pon(pagina, posicion, {static_cast<quint8>(valor), static_cast<quint8>(valor >> 8)});
    }
    void Pon32(quint32 pagina, std::size_t posicion, quint32 valor)
    {
        std::vector<quint8> bytes(4);
        qToLittleEndian(valor, bytes.data());
        Pon(pagina, posicion, bytes);
    }

    /// Makes a page of rows out of them, laid from its end. `marcas` are those of the slots.
    void PonFilas(quint32 pagina, quint32 duenio, const std::vector<std::vector<quint8>>& filas,
                  const std::vector<quint16>& marcas = {})
    {
        Pon(pagina, 0, "01 01");
        Pon32(pagina, 4, duenio);
        Pon16(pagina, formato_.numeroDeFilas, static_cast<quint16>(filas.size()));
        std::size_t posicion = formato_.tamPagina;
        for (std::size_t i = 0; i < filas.size(); ++i) {
            posicion -= filas[i].size();
            Pon(pagina, posicion, filas[i]);
            const quint16 marca = i < marcas.size() ? marcas[i] : quint16{0};
            Pon16(pagina, formato_.numeroDeFilas + 2 + 2 * i,
                  static_cast<quint16>(posicion | marca));
        }
        Pon16(pagina, 2,
              static_cast<quint16>(posicion - formato_.numeroDeFilas - 2 - 2 * filas.size()));
    }

  private:
    Formato formato_;
    QString nombre_ = QStringLiteral("prueba.mdb");
    std::vector<std::vector<quint8>> paginas_{};
};

} // namespace tolmo::data::access::mdb
