#pragma once
#include "apoyo/carpeta.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/base_nueva.h"
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/define_tabla.h"
#include "data/access/mdb/paginas_en_memoria.h"
#include "data/access/mdb/tabla_escribible.h"
#include <QProcess>
#include <gtest/gtest.h>

namespace tolmo::data::access::mdb {

using Renglon = std::vector<Dato>;

/// All faults that the check finds; empty when the file is sound.
inline QStringList FaltasDe(const Base& base)
{
    const Informe informe = Comprueba(base);
    QStringList faltas = informe.faltas;
    for (const EstadoTabla& tabla : informe.tablas) {
        for (const QString& falta : tabla.faltas)
            faltas << tabla.nombre + ": " + falta;
        if (tabla.filas != tabla.filasDeclaradas)
            faltas << tabla.nombre + ": it declares another count of rows";
        for (const EstadoIndice& indice : tabla.indices) {
            for (const QString& falta : indice.faltas)
                faltas << tabla.nombre + "." + indice.nombre + ": " + falta;
        }
    }
    return faltas;
}

/// A table of a file as mdbtools writes it, without a line of names.
inline QString ExportaConMdbtools(const QString& fichero, const QString& tabla,
                                  const QStringList& opciones)
{
    QProcess proceso;
    proceso.start("mdb-export",
                  QStringList{"-H", "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S"} +
                      opciones + QStringList{fichero, tabla});
    if (!proceso.waitForFinished(60'000) || proceso.exitCode() != 0)
        ADD_FAILURE() << proceso.readAllStandardError().toStdString();
    return QString::fromUtf8(proceso.readAllStandardOutput());
}

/// A file in memory whose tables are written.
class BaseEscribible {
  public:
    explicit BaseEscribible(const QByteArray& fichero = BaseNueva())
        : paginas_(std::make_shared<PaginasEnMemoria>(fichero))
    {
    }

    const std::shared_ptr<PaginasEnMemoria>& paginas() const { return paginas_; }
    Tabla Abre(const QString& nombre) const { return Base(paginas_).AbreTabla(nombre); }
    TablaEscribible Escribe(const QString& nombre) const { return {paginas_, Abre(nombre)}; }

    /// The rows in the order of their places.
    std::vector<Renglon> Filas(const QString& nombre) const
    {
        const Tabla tabla = Abre(nombre);
        std::vector<Renglon> filas;
        for (Cursor cursor(tabla); cursor.Siguiente();)
            filas.push_back(Valores(tabla, cursor.fila()));
        return filas;
    }
    std::optional<Renglon> Fila(const QString& nombre, Puntero puntero) const
    {
        const Tabla tabla = Abre(nombre);
        const auto fila = tabla.FilaEn(puntero);
        return fila ? std::optional(Valores(tabla, *fila)) : std::nullopt;
    }

    QStringList Faltas() const { return FaltasDe(Base(paginas_)); }

    /// A table as mdbtools reads it: cells between bars, a row to a line.
    QString Exporta(const QString& tabla) const
    {
        const CarpetaDePrueba carpeta;
        carpeta.Escribe("base.mdb", paginas_->Fichero());
        return ExportaConMdbtools(carpeta.Ruta("base.mdb"), tabla,
                                  {"-Q", "-d", "|", "-0", "NULO", "-b", "hex"});
    }

    static Renglon Valores(const Tabla& tabla, const mdb::Fila& fila)
    {
        Renglon valores;
        for (const Columna& columna : tabla.definicion().columnas)
            valores.push_back(fila.Lee(columna));
        return valores;
    }

  private:
    std::shared_ptr<PaginasEnMemoria> paginas_;
};

/// The reason of the ErrorMdb that a task ends in.
template <typename Tarea> std::optional<Motivo> MotivoDe(Tarea&& tarea)
{
    try {
        tarea();
    } catch (const ErrorMdb& error) {
        return error.motivo();
    }
    return std::nullopt;
}

template <typename Tarea> std::string FraseDe(Tarea&& tarea)
{
    try {
        tarea();
    } catch (const ErrorMdb& error) {
        return error.Descripcion().toStdString();
    }
    return {};
}

} // namespace tolmo::data::access::mdb
