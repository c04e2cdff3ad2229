#include "run/sufijo.h"
#include "data/valores.h"

namespace tolmo::run {
namespace {

QString DosCifras(int numero)
{
    return data::RellenaCeros(data::Texto(numero % 100), 2);
}

} // namespace

QString MarcaTiempo(const QDateTime& momento)
{
    const QDate dia = momento.date();
    const QTime hora = momento.time();
    return DosCifras(dia.year()) + DosCifras(dia.month()) + DosCifras(dia.day()) +
           DosCifras(hora.hour()) + DosCifras(hora.minute()) + DosCifras(hora.second());
}

QString NumeroAleatorio(data::Reloj& reloj, int cifras)
{
    int modulo = 1;
    for (int i = 0; i < cifras; ++i)
        modulo *= 10;
    return data::RellenaCeros(data::Texto(reloj.Azar() % modulo), cifras);
}

QString NuevoSufijoTemporal(data::Reloj& reloj)
{
    return MarcaTiempo(reloj.Ahora()) + NumeroAleatorio(reloj, 2);
}

} // namespace tolmo::run
