#pragma once
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/paginas_escribibles.h"
#include "data/access/mdb/propiedades.h"
#include "data/access/mdb/tabla_escribible.h"
#include <memory>

namespace tolmo::data::access::mdb {

/// Writes the catalogue: the objects of a file, and the rights to them.
class RegistroDeObjetos {
  public:
    explicit RegistroDeObjetos(std::shared_ptr<PaginasEscribibles> paginas);

    /// \throws ErrorMdb when a table or a query has the name
    void CompruebaLibre(const QString& nombre) const;
    /// \throws ErrorMdb when a relationship names the table
    void CompruebaSinRelaciones(const QString& tabla) const;

    /// A table of the user's, and the rights that Access gives to a new one.
    void AnotaTabla(quint32 definicion, const QString& nombre, const QByteArray& propiedades);
    /// A saved query, with the same rights. \returns its Id
    qint32 AnotaConsulta(const QString& nombre, qint32 marcas);
    void Borra(const Objeto& objeto);

    /// A row of MSysObjects.
    struct Anotacion {
        qint32 id = 0;
        qint32 padre = 0;
        QString nombre{};
        int clase = 0;
        QByteArray duenio{};
        qint32 marcas = 0;
        QByteArray propiedades{};
    };
    void Anota(const Anotacion& anotacion);
    /// A row of MSysACEs.
    struct Derecho {
        qint32 objeto = 0;
        QByteArray quien{};
        qint32 cual = 0;
        bool heredable = false;
    };
    void Anota(const Derecho& derecho);

  private:
    Tabla Abre(quint32 pagina, const QString& nombre) const;
    void AnotaDelUsuario(Anotacion anotacion);
    qint32 IdLibre() const;
    QByteArray DuenioDe(qint32 id) const;

    std::shared_ptr<PaginasEscribibles> paginas_;
    Tabla objetos_;
    Tabla derechos_;
};

} // namespace tolmo::data::access::mdb
