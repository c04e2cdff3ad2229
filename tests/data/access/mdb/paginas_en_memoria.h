#pragma once
#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>
#include <memory>
#include <vector>

namespace tolmo::data::access::mdb {

/// Pages in memory that may be changed, without a transaction: each change stays. Pages of zeros
/// share their bytes until they are changed, so a test may have 100,000 of them.
class PaginasEnMemoria : public PaginasEscribibles {
  public:
    /// `cuantas` pages of zeros.
    explicit PaginasEnMemoria(quint32 cuantas = 0, Version version = Version::Jet4)
        : formato_(FormatoDe(version)), ceros_(std::make_shared<Contenido>(formato_.tamPagina)),
          paginas_(cuantas, ceros_)
    {
    }

    /// The pages of a whole file.
    explicit PaginasEnMemoria(const QByteArray& fichero) : PaginasEnMemoria(0, VersionDe(fichero))
    {
        const qsizetype tam = formato_.tamPagina;
        for (qsizetype desde = 0; desde + tam <= fichero.size(); desde += tam)
            paginas_.push_back(std::make_shared<Contenido>(fichero.begin() + desde,
                                                           fichero.begin() + desde + tam));
    }

    /// Copies of other pages.
    explicit PaginasEnMemoria(Paginas& otras) : PaginasEnMemoria(0, otras.formato().version)
    {
        for (quint32 numero = 0; numero < otras.Cuantas(); ++numero) {
            const Pagina pagina = otras.Lee(numero);
            const auto bytes = pagina.bytes.Todo();
            paginas_.push_back(std::make_shared<Contenido>(bytes.begin(), bytes.end()));
        }
    }

    Pagina Lee(quint32 numero) override
    {
        const std::shared_ptr<Contenido>& pagina = De(numero);
        return {.numero = numero, .bytes = Bytes(*pagina), .duenio = pagina};
    }
    quint32 Cuantas() const override { return static_cast<quint32>(paginas_.size()); }
    const Formato& formato() const override { return formato_; }
    const QString& Nombre() const override { return nombre_; }

    std::span<quint8> Cambia(quint32 numero) override
    {
        std::shared_ptr<Contenido>& pagina = De(numero);
        // Whoever read the page keeps what it held then.
        if (pagina.use_count() > 1)
            pagina = std::make_shared<Contenido>(*pagina);
        return *pagina;
    }

    quint32 Alarga() override
    {
        if (Cuantas() >= caben_)
            throw ErrorMdb(Motivo::NoAdmitido, QStringLiteral("El fichero no puede crecer más"),
                           {.fichero = nombre_});
        paginas_.push_back(ceros_);
        return Cuantas() - 1;
    }

    /// From here on the file is full at so many pages.
    void Limita(quint32 caben) { caben_ = caben; }

    /// All the pages as a file holds them.
    QByteArray Fichero() const
    {
        QByteArray fichero;
        for (const auto& pagina : paginas_)
            fichero.append(reinterpret_cast<const char*>(pagina->data()),
                           static_cast<qsizetype>(pagina->size()));
        return fichero;
    }

  private:
    using Contenido = std::vector<quint8>;

    static Version VersionDe(const QByteArray& fichero)
    {
        const auto* principio = reinterpret_cast<const quint8*>(fichero.data());
        return LeeCabecera(Bytes({principio, static_cast<std::size_t>(fichero.size())})).version;
    }

    std::shared_ptr<Contenido>& De(quint32 numero)
    {
        if (numero >= paginas_.size())
            throw ErrorMdb(Motivo::Cortado, QStringLiteral("Falta una página"),
                           {.fichero = nombre_, .pagina = numero});
        return paginas_[numero];
    }

    Formato formato_;
    QString nombre_ = QStringLiteral("memoria.mdb");
    std::shared_ptr<Contenido> ceros_;
    std::vector<std::shared_ptr<Contenido>> paginas_;
    quint32 caben_ = quint32{1} << 19; ///< 2 GiB
};

} // namespace tolmo::data::access::mdb
