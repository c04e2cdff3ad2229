#pragma once
#include "data/programa.h"
#include <QFile>

namespace tolmo::batch {

/// What a writer does with its one open file.
enum class Modo {
    A, ///< open for appending
    I, ///< write a line to the open file
    C, ///< close
    T, ///< close, open for appending, write the translated line, close
    TC ///< the same, the line unchanged
};

/// The writers of the sentence batch, the lists and the log. They share one file, as they write
/// one record at a time: mode T opens and closes it for each, so that the file is whole on disk
/// whenever the next step, the upload, comes.
///
/// Text goes out in Windows-1252, each line ended by carriage return and line feed. A failure to
/// translate, open or write is silent and loses the record: callers have no path for it.
class Escritores {
  public:
    explicit Escritores(const data::Programa& programa) : programa_(programa) {}

    /// Plain text writer; mode I writes the line unchanged.
    void EscribeFichero(const QString& ruta, Modo modo, const QString& texto = {});

    /// Batch writer: every "ps_" gets the shop's prefix, then mode I and T translate the sentence
    /// for the dialect that is active now. It has no mode TC.
    void EscribeSentencia(const QString& ruta, Modo modo, const QString& sentencia = {});

  private:
    void Abre(const QString& ruta);
    void EscribeLinea(const QString& linea);
    void EscribeTraducida(const QString& texto);

    const data::Programa& programa_;
    QFile fichero_;
};

} // namespace tolmo::batch
