#pragma once
#include "base_prueba.h"
#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/guarda_propiedades.h"
#include "data/access/mdb/transaccion_paginas.h"
#include <QFile>

/// The tests that include this are of files of Access, whatever form the others have.
inline const bool SiempreEnAccess = qputenv("KOV_FORMA", "mdb");

/// A file of Access of its own for each test.
class FicheroDePrueba : public BaseDePrueba {
  public:
    /// All faults of the file; empty when it is sound.
    QStringList Faltas() const { return Copia(Ruta()).Faltas(); }
    /// A table as mdbtools reads it: cells between bars, a row to a line.
    QString Exporta(const QString& tabla) const { return Copia(Ruta()).Exporta(tabla); }

    /// A file as it is now.
    static tolmo::data::access::mdb::BaseEscribible Copia(const QString& ruta)
    {
        QFile fichero(ruta);
        if (!fichero.open(QIODevice::ReadOnly))
            ADD_FAILURE() << "no file " << ruta.toStdString();
        return tolmo::data::access::mdb::BaseEscribible(fichero.readAll());
    }

    /// Gives a table properties, as somebody does who designs it in Access; those that it has
    /// stay.
    void PonPropiedades(const QString& tabla,
                        const std::vector<tolmo::data::access::mdb::Propiedad>& nuevas)
    {
        using namespace tolmo::data::access::mdb;
        const auto paginas = std::make_shared<TransaccionPaginas>(Ruta());
        paginas->Empieza();
        const tolmo::data::access::mdb::Base base(paginas);
        const Objeto objeto = *base.catalogo().TablaDe(tabla);
        std::vector<Propiedad> todas = PropiedadesDeTabla(paginas, static_cast<quint32>(objeto.id));
        todas.insert(todas.end(), nuevas.begin(), nuevas.end());
        GuardaPropiedades(paginas, objeto, todas);
        paginas->Confirma();
    }
    void PonPropiedad(const QString& tabla, const QString& columna, const QString& nombre,
                      const QString& valor)
    {
        PonPropiedades(tabla, {tolmo::data::access::mdb::PropiedadDeTexto(columna, nombre, valor)});
    }
};
