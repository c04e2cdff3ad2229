#pragma once
#include "data/programa.h"

namespace tolmo::batch {

/// The working paths of a run, all below the current folder of the process.
struct FicherosTrabajo {
    QString Sentencias{};    ///< the sentence batch
    QString ListaImgBorra{}; ///< pictures to delete on the server
    QString ListaImgFam{};   ///< family pictures just uploaded
    QString ListaImgArt{};   ///< article pictures just uploaded
    QString ListaCreaPath{}; ///< folders to create on the server

    explicit FicherosTrabajo(const data::Programa& programa);

    /// Deletes all five, so that what a failed run left isn't carried over.
    void BorraTodos() const;
};

/// The log file of the day on which it is asked for; a run that passes midnight stays in it.
QString NombreFicheroLog(const data::Programa& programa);

/// Deletes a local file if it is there.
void BorraFicheroLocal(const QString& ruta);

} // namespace tolmo::batch
