#pragma once
#include "apoyo/corrida_real.h"
#include "apoyo/forma_de_base.h"
#include "data/conexion.h"
#include <ostream>

/// What the runs with a fault in them have in common: a company with the family "01" and the
/// article "0101A", without pictures and documents, on a shop with one language.

/// The box that any error of the start gives, as standard error shows it.
extern const QString CajaDeArranque;
/// The end of the box of a failed statement, which stands in front of it.
extern const QString CierreDePrograma;

/// Shown by GoogleTest when a comparison fails.
inline void PrintTo(const QString& texto, std::ostream* salida)
{
    *salida << '"' << texto.toStdString() << '"';
}

/// The shop of these tests, as new.
TiendaDePrueba& TiendaDeFaltas();

/// The SQL of the one family and the one article.
QString SqlCatalogo();

/// The lines of a whole run of "/PRESTASHOP" on that company, when nothing goes wrong.
QStringList LogSano(const QString& actual);
/// The same when no FTP session comes about.
QStringList LogSinFtp(const QString& actual);
/// The three lines at the head of a run.
QStringList CabeceraDelLog();
/// From the last title on, with what the line break at the end of a run leaves.
QStringList FinDelLog();

/// The lines from the first that reads `desde` to the next one that reads `hasta`, both included.
QStringList Tramo(const QStringList& lineas, const QString& desde, const QString& hasta);

/// The process tables that stand in the company's database.
QStringList TablasTemporales(EmpresaReal& empresa);

/// True when one of the company's passwords stands in what the run showed or left in its log.
bool EnsenaClaves(EmpresaReal& empresa, const ResultadoCorrida& corrida);

/// Waits for a condition; false when it doesn't come true in ten seconds.
bool Espera(const std::function<bool()>& condicion);

/// A session that keeps a table of the shop to itself: whoever asks for it waits.
class TablaRetenida {
  public:
    TablaRetenida(TiendaDePrueba& tienda, const QString& tabla);
    /// True once somebody waits for a table.
    bool AlguienEspera() const;
    void Suelta() { sesion_.Desconecta(); }

  private:
    TiendaDePrueba& tienda_;
    tolmo::data::Conexion sesion_;
};
