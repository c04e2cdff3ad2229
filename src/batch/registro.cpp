#include "batch/registro.h"

namespace tolmo::batch {

Registro::Registro(data::Programa& programa, Escritores& escritores, data::Progreso& progreso,
                   const QString& ficheroLog)
    : programa_(programa), escritores_(escritores), progreso_(progreso), ficheroLog_(ficheroLog)
{
}

void Registro::RegistraLog(const QString& texto)
{
    const QString momento = programa_.reloj.Ahora().toString(QStringLiteral("dd/MM/yyyy H:mm:ss"));
    const QString linea = u'[' + momento + QStringLiteral("] ") + texto;
    escritores_.EscribeFichero(ficheroLog_, Modo::T, linea);
    progreso_.LineaEstado(linea);
}

void Registro::RegistraTitulo(const QString& titulo)
{
    static const QString asteriscos(33, u'*');
    RegistraLog(asteriscos);
    RegistraLog(titulo);
    RegistraLog(asteriscos);
}

} // namespace tolmo::batch
