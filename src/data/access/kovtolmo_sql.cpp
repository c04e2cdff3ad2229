#include "data/access/access.h"
#include "data/errores.h"
#include <QCoreApplication>
#include <QTextStream>

// Makes an embedded database if it is absent, and runs scripts of Access SQL on it.
int main(int argc, char** argv)
{
    QCoreApplication aplicacion(argc, argv);
    const QStringList argumentos = aplicacion.arguments().mid(1);
    QTextStream errores(stderr);
    if (argumentos.isEmpty()) {
        errores << "Uso: kovtolmo-sql FICHERO.sqlite [GUION.sql...]\n";
        return 2;
    }
    try {
        tolmo::data::EjecutaGuiones(argumentos[0], argumentos.mid(1));
    } catch (const tolmo::data::ErrorDatos& error) {
        errores << error.Descripcion() << '\n';
        return 1;
    }
    return 0;
}
