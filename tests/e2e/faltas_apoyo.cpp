#include "faltas_apoyo.h"
#include "data/access/access.h"
#include <QElapsedTimer>
#include <QThread>

using namespace tolmo;

// clang-format off
const QString CajaDeArranque = "No se ha podido conectar al servidor web.Compruebe los valores de conexión.\n";
const QString CierreDePrograma = "\nEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR\n";
// clang-format on

TiendaDePrueba& TiendaDeFaltas()
{
    return TiendaComun({.generacion = "1.6.0", .version = "1.6.0.14", .idiomas = 1});
}

QString SqlCatalogo()
{
    return SqlFamilia("01", 0, "Cocina") + SqlArticulo("0101A");
}

QStringList CabeceraDelLog()
{
    return {QString(33, u'*'), "INICIO VUELCO DATOS A PRESTASHOP ", QString(33, u'*')};
}

QStringList FinDelLog()
{
    return {QString(33, u'*'), "FIN VUELCO DATOS A PRESTASHOP ", QString(33, u'*'), "", "", ""};
}

QStringList LogSano(const QString& actual)
{
    return CabeceraDelLog() +
           QStringList{"BORRANDO CACHÉ DE PRESTASHOP",
                       "Comprobando articulos que ya no estan...",
                       "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                       "CARGANDO TABLA ATRIBUTOS Y VALORES",
                       "CARGANDO FAMILIAS",
                       "Recopilando información de categorías",
                       "Actualizando Familia 01",
                       "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                       "SUBIENDO FICHERO sentencias.sql",
                       "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                       "Actualizando y modificando articulos",
                       "Añadiendo artículo 0101A / ALT0101A",
                       "SUBIENDO FICHERO sentencias.sql",
                       "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                       "Error subiendo fichero " + actual + "\\creapath.txt",
                       "ERROR SUBIENDO FICHERO creapath.txt",
                       "REGENERANDO INDICES DE BÚSQUEDA...",
                       "ELIMINANDO FOTOS ANTIGUAS...",
                       "SUBIENDO FOTOS FAMILIAS...",
                       "Error subiendo fichero " + actual + "\\imgfam.txt",
                       "ERROR SUBIENDO FICHERO imgfam.txt",
                       "Dimensionando rango de familias subidas",
                       "BORRANDO CACHÉ DE PRESTASHOP",
                       "SUBIENDO FICHEROS ADJUNTOS...",
                       "SUBIENDO FICHERO ",
                       "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                       "Error subiendo fichero " + actual + "\\sentencias.sql",
                       "ERROR SUBIENDO FICHERO sentencias.sql",
                       "SUBIENDO FOTOS ARTICULOS...",
                       "BORRANDO CACHÉ DE PRESTASHOP"} +
           FinDelLog();
}

QStringList LogSinFtp(const QString& actual)
{
    const QString sinSesion = "No se ha podido conectar con el servidor ftp 127.0.0.1";
    const QStringList sinCredenciales{"Error subiendo fichero " + actual + "\\PHPSHOP\\bdtolmo.ccc",
                                      "ERROR SUBIENDO FICHERO bdtolmo.ccc"};
    return CabeceraDelLog() +
           QStringList{sinSesion,
                       "Error subiendo fichero " + actual + "\\PHPSHOP\\ejecuta.php",
                       "ERROR SUBIENDO FICHERO ejecuta.php",
                       "BORRANDO CACHÉ DE PRESTASHOP",
                       "Comprobando articulos que ya no estan...",
                       "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                       "CARGANDO TABLA ATRIBUTOS Y VALORES",
                       "CARGANDO FAMILIAS",
                       "Recopilando información de categorías",
                       "Actualizando Familia 01",
                       "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                       "SUBIENDO FICHERO sentencias.sql"} +
           sinCredenciales +
           QStringList{"Actualizando y modificando articulos",
                       "Añadiendo artículo 0101A / ALT0101A", sinSesion,
                       "SUBIENDO FICHERO sentencias.sql"} +
           sinCredenciales +
           QStringList{"Error subiendo fichero " + actual + "\\creapath.txt",
                       "ERROR SUBIENDO FICHERO creapath.txt",
                       "REGENERANDO INDICES DE BÚSQUEDA...",
                       "ELIMINANDO FOTOS ANTIGUAS...",
                       sinSesion,
                       "Error subiendo fichero " + actual + "\\imgborra.txt",
                       "ERROR SUBIENDO FICHERO imgborra.txt",
                       sinSesion,
                       "SUBIENDO FOTOS FAMILIAS...",
                       sinSesion,
                       "Error subiendo fichero " + actual + "\\imgfam.txt",
                       "ERROR SUBIENDO FICHERO imgfam.txt",
                       "Dimensionando rango de familias subidas",
                       sinSesion,
                       "BORRANDO CACHÉ DE PRESTASHOP",
                       "SUBIENDO FICHEROS ADJUNTOS...",
                       sinSesion,
                       "SUBIENDO FICHERO "} +
           sinCredenciales +
           QStringList{sinSesion, "SUBIENDO FOTOS ARTICULOS...", "BORRANDO CACHÉ DE PRESTASHOP"} +
           FinDelLog();
}

QStringList Tramo(const QStringList& lineas, const QString& desde, const QString& hasta)
{
    const qsizetype primera = lineas.indexOf(desde);
    const qsizetype ultima = primera < 0 ? -1 : lineas.indexOf(hasta, primera);
    return ultima < 0 ? QStringList{} : lineas.mid(primera, ultima - primera + 1);
}

QStringList TablasTemporales(EmpresaReal& empresa)
{
    QStringList nombres;
    const auto base = data::AbreAccess(empresa.CadenaDeBase());
    for (const data::TablaEsquema& tabla : base->Tablas())
        if (tabla.nombre.startsWith("WKOVTOLMO_ARTIC"))
            nombres << tabla.nombre;
    return nombres;
}

bool EnsenaClaves(EmpresaReal& empresa, const ResultadoCorrida& corrida)
{
    const QString todo = corrida.salida + corrida.errores + corrida.log.join(u'\n');
    return todo.contains(empresa.Tienda().Clave()) || todo.contains(empresa.Tienda().ClaveFtp());
}

bool Espera(const std::function<bool()>& condicion)
{
    QElapsedTimer reloj;
    reloj.start();
    while (!condicion()) {
        if (reloj.elapsed() > 10'000)
            return false;
        QThread::msleep(20);
    }
    return true;
}

TablaRetenida::TablaRetenida(TiendaDePrueba& tienda, const QString& tabla)
    : tienda_(tienda), sesion_(data::CreaProveedor)
{
    sesion_.Conecta("Driver={MySQL ODBC 5.1 Driver};Server=127.0.0.1;Port=" +
                    QString::number(tienda.PuertoMysql()) + ";Database=" + tienda.Bd() +
                    ";User=" + tienda.Usuario() + ";Password=" + tienda.Clave() + ";Option=3;");
    sesion_.Ejecuta("LOCK TABLES " + tabla + " WRITE");
}

bool TablaRetenida::AlguienEspera() const
{
    return Espera([this] {
        return tienda_
                   .Sql("SELECT ID FROM information_schema.PROCESSLIST WHERE STATE LIKE "
                        "'Waiting for table%'")
                   .size() == 1;
    });
}
