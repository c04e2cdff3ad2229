#pragma once
#include "data/codificacion.h"
#include "data/rutas.h"
#include "site/sitio.h"
#include <QFile>
#include <QStringList>
#include <vector>

/// The shop's server on paper: it writes the conversation down, keeps what went up and answers what
/// the test has prepared, or nothing. An upload succeeds unless the test says otherwise.
class SitioDePrueba : public tolmo::site::Sitio {
  public:
    using Sitio::Sitio;

    struct Subida {
        QString ruta{};
        QString nombre{};
        QString carpeta{};
        QByteArray contenido{};
    };
    QStringList pasos{};           ///< "ABRE", "BORRA x", "SUBE x a /carpeta/", "PIDE url"
    std::vector<Subida> subidas{}; ///< also those that failed
    QStringList fallan{};          ///< remote names whose upload fails
    QStringList respuestas{};      ///< to the pages, in order; empty texts behind the last one

    void AbrirFTP() override { pasos << QStringLiteral("ABRE"); }
    bool SubirFicheroWeb(const QString& ruta, const QString& nombre,
                         const QString& carpeta) override
    {
        QFile fichero(tolmo::data::RutaLocal(ruta));
        QByteArray contenido;
        if (fichero.open(QIODevice::ReadOnly))
            contenido = fichero.readAll();
        pasos << QStringLiteral("SUBE ") + nombre + QStringLiteral(" a ") + carpeta;
        subidas.push_back({ruta, nombre, carpeta, contenido});
        return !fallan.contains(nombre);
    }
    void BorrarFicheroWeb(const QString& nombre) override
    {
        pasos << QStringLiteral("BORRA ") + nombre;
    }
    QString RecuperaPagina(const QString& url) override
    {
        pasos << QStringLiteral("PIDE ") + url;
        return respuestas.isEmpty() ? QString() : respuestas.takeFirst();
    }

    /// The contents of all uploads under one name, each as its lines.
    std::vector<QStringList> Contenidos(const QString& nombre) const
    {
        std::vector<QStringList> contenidos;
        for (const Subida& subida : subidas)
            if (subida.nombre == nombre)
                contenidos.push_back(tolmo::data::DesdeWindows1252(subida.contenido)
                                         .split(QStringLiteral("\r\n"), Qt::SkipEmptyParts));
        return contenidos;
    }
    /// The batches that were handed over.
    std::vector<QStringList> Lotes() const { return Contenidos(QStringLiteral("sentencias.sql")); }
};
