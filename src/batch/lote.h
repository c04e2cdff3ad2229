#pragma once
#include "batch/escritores.h"
#include "batch/trabajo.h"

namespace tolmo::batch {

/// The working files of a run as its phases see them: the sentence batch and the lists.
class Lote {
  public:
    Lote(Escritores& escritores, const FicherosTrabajo& ficheros)
        : escritores_(escritores), ficheros_(ficheros)
    {
    }

    /// Appends a sentence, "||" included, to the batch on disk.
    void EscribeSentencia(const QString& sentencia)
    {
        escritores_.EscribeSentencia(ficheros_.Sentencias, Modo::T, sentencia);
    }
    void AnadeImgBorra(const QString& linea) { Anade(ficheros_.ListaImgBorra, linea); }
    void AnadeImgFam(const QString& linea) { Anade(ficheros_.ListaImgFam, linea); }
    void AnadeImgArt(const QString& linea) { Anade(ficheros_.ListaImgArt, linea); }
    void AnadeCreaPath(const QString& linea) { Anade(ficheros_.ListaCreaPath, linea); }

    const FicherosTrabajo& Ficheros() const { return ficheros_; }

  private:
    void Anade(const QString& lista, const QString& linea)
    {
        escritores_.EscribeFichero(lista, Modo::T, linea);
    }

    Escritores& escritores_;
    const FicherosTrabajo& ficheros_;
};

} // namespace tolmo::batch
