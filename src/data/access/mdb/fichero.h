#pragma once
#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/paginas.h"
#include <QIODevice>
#include <list>
#include <memory>
#include <span>
#include <unordered_map>

namespace tolmo::data::access::mdb {

/// How a file is opened.
struct Apertura {
    QString contrasena{};
    std::size_t cache = std::size_t{64} << 20; ///< bytes of pages kept at hand
};

/// An Access file, read only. It keeps the pages that were used last, up to a limit.
class FicheroPaginas : public Paginas {
  public:
    /// \throws ErrorMdb when the file can't be opened, isn't an Access file that can be read, has
    /// a password other than the one given, or doesn't end with a whole page
    explicit FicheroPaginas(const QString& ruta, const Apertura& apertura = {});

    /// The same over anything that can be read at any place; `nombre` is for messages.
    FicheroPaginas(std::unique_ptr<QIODevice> fichero, const QString& nombre,
                   const Apertura& apertura = {});

    Pagina Lee(quint32 numero) override;
    quint32 Cuantas() const override { return cuantas_; }
    const Formato& formato() const override { return formato_; }
    const QString& Nombre() const override { return nombre_; }
    const Cabecera& cabecera() const { return cabecera_; }

    /// Forgets these pages, and takes the length anew: the file was written by another way.
    void Olvida(std::span<const quint32> paginas);

  private:
    void Abre(const Apertura& apertura);
    void Mide();
    Pagina LeeDelDisco(quint32 numero);
    void Guarda(const Pagina& pagina);

    QString nombre_;
    std::unique_ptr<QIODevice> fichero_;
    Cabecera cabecera_{};
    Formato formato_{};
    quint32 cuantas_ = 0;
    std::size_t cabenEnCache_ = 1;
    std::list<Pagina> usadas_{}; ///< the last one used in front
    std::unordered_map<quint32, std::list<Pagina>::iterator> porNumero_{};
};

} // namespace tolmo::data::access::mdb
