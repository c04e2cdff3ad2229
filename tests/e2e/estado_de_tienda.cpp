#include "e2e/estado_de_tienda.h"
#include <QCryptographicHash>
#include <QMap>
#include <QRegularExpression>

namespace {

/// The ids of a table by their place in its order.
QMap<QString, QString> Puestos(const TiendaDePrueba& tienda, const QString& id,
                               const QString& tabla)
{
    QMap<QString, QString> puestos;
    for (const QStringList& fila : tienda.Sql("SELECT " + id + " FROM " + tabla + " ORDER BY 1"))
        puestos[fila[0]] = QString::number(puestos.size() + 1);
    return puestos;
}

struct Niveladora {
    explicit Niveladora(const TiendaDePrueba& tienda)
        : imagenes(Puestos(tienda, "id_image", tienda.Prefijo() + "image")),
          precios(Puestos(tienda, "id_specific_price", tienda.Prefijo() + "specific_price"))
    {
    }

    /// What a value reads here; nothing for a column that is left out.
    QString Valor(const QString& columna, const QString& valor) const
    {
        if (columna == "date_add" || columna == "date_upd")
            return {};
        if (columna == "id_image")
            return imagenes.value(valor, "ninguna");
        return columna == "id_specific_price" ? precios.value(valor, "ninguno") : valor;
    }
    /// "img/p/1/2/12-home_default.jpg" for the third picture: "img/p/3-home_default.jpg".
    QString Fichero(const QString& ruta) const
    {
        static const QRegularExpression deArticulo("^img/p/(?:\\d/)*(\\d+)([^/\\d][^/]*)$");
        const auto hallado = deArticulo.match(ruta);
        return hallado.hasMatch()
                   ? "img/p/" + imagenes.value(hallado.captured(1), "ninguna") + hallado.captured(2)
                   : ruta;
    }

    QMap<QString, QString> imagenes;
    QMap<QString, QString> precios;
};

QMap<QString, QStringList> ColumnasPorTabla(const TiendaDePrueba& tienda)
{
    QMap<QString, QStringList> columnas;
    for (const QStringList& fila :
         tienda.Sql("SELECT TABLE_NAME,COLUMN_NAME FROM information_schema.COLUMNS WHERE "
                    "TABLE_SCHEMA=DATABASE() ORDER BY TABLE_NAME,ORDINAL_POSITION"))
        columnas[fila[0]] << fila[1];
    return columnas;
}

QStringList Filas(const TiendaDePrueba& tienda, const Niveladora& niveladora)
{
    const QMap<QString, QStringList> columnas = ColumnasPorTabla(tienda);
    QString consultas;
    for (const QString& tabla : columnas.keys())
        consultas += "SELECT '" + tabla + "',t.* FROM " + tabla + " t;";
    QStringList lineas;
    for (const QStringList& fila : tienda.Sql(consultas)) {
        const QStringList nombres = columnas[fila[0]];
        QStringList valores{fila[0]};
        for (qsizetype i = 0; i < nombres.size(); ++i)
            valores << nombres[i] + "=" + niveladora.Valor(nombres[i], fila[i + 1]);
        lineas << valores.join(' ');
    }
    return lineas;
}

} // namespace

QStringList EstadoDeTienda(const TiendaDePrueba& tienda)
{
    const Niveladora niveladora(tienda);
    QStringList lineas = Filas(tienda, niveladora);
    for (const QString& fichero : tienda.Ficheros())
        // The test's own copies of what came to the scripts.
        if (!fichero.startsWith("copias/"))
            lineas << niveladora.Fichero(fichero) + " " +
                          QCryptographicHash::hash(tienda.LeeFichero(fichero),
                                                   QCryptographicHash::Md5)
                              .toHex();
    lineas.sort();
    return lineas;
}
