#pragma once
#include "batch/escritores.h"

namespace tolmo::batch {

/// The run log: one file a day and the status list.
class Registro {
  public:
    Registro(data::Programa& programa, Escritores& escritores, data::Progreso& progreso,
             const QString& ficheroLog);

    /// Writes "[date time] texto" to the day's file and adds the same line to the status list.
    /// The file's line passes through the translator like any other: one that it can't rewrite is
    /// missing there and still stands in the list.
    void RegistraLog(const QString& texto);

    /// A row of 33 asterisks, a title, and the row again.
    void RegistraTitulo(const QString& titulo);

    const QString& FicheroLog() const { return ficheroLog_; }

  private:
    data::Programa& programa_;
    Escritores& escritores_;
    data::Progreso& progreso_;
    QString ficheroLog_;
};

} // namespace tolmo::batch
