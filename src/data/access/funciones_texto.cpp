#include "data/access/colacion.h"
#include "data/access/formato.h"
#include "data/access/funciones.h"
#include "data/codificacion.h"
#include "data/valores.h"
#include <QUuid>
#include <algorithm>

namespace tolmo::data::access {
namespace {

[[noreturn]] void ArgumentoNoValido(const char* funcion)
{
    throw ErrorFuncion(QStringLiteral("Argumento no válido en %1").arg(QString::fromUtf8(funcion)));
}

qlonglong Largo(const Argumentos& a, int i, const char* funcion)
{
    const qlonglong largo = a.Entero(i);
    if (largo < 0)
        ArgumentoNoValido(funcion);
    return largo;
}

// Without a third argument, and with 1 or 2, case doesn't count; with 0 it does.
Qt::CaseSensitivity Comparacion(const Argumentos& a, int i)
{
    return a.Total() > i && a.Entero(i) == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

void Len(Argumentos& a)
{
    a.Devuelve(static_cast<qlonglong>(a.Texto(0).size()));
}

void Left(Argumentos& a)
{
    a.Devuelve(a.Texto(0).left(Largo(a, 1, "Left")));
}

void Right(Argumentos& a)
{
    a.Devuelve(a.Texto(0).right(Largo(a, 1, "Right")));
}

void Mid(Argumentos& a)
{
    const qlonglong desde = Largo(a, 1, "Mid");
    if (desde == 0)
        ArgumentoNoValido("Mid");
    a.Devuelve(a.Texto(0).mid(desde - 1, a.Total() > 2 ? Largo(a, 2, "Mid") : -1));
}

// InStr([start,] text, sought [, comparison]): the start may only be left out with two arguments.
void InStr(Argumentos& a)
{
    const int primero = a.Total() > 2 ? 1 : 0;
    const qlonglong desde = primero ? a.Entero(0) : 1;
    if (desde < 1)
        ArgumentoNoValido("InStr");
    const QString texto = a.Texto(primero);
    if (desde > texto.size()) {
        a.Devuelve(0);
        return;
    }
    a.Devuelve(texto.indexOf(a.Texto(primero + 1), desde - 1, Comparacion(a, 3)) + 1);
}

void InStrRev(Argumentos& a)
{
    const QString texto = a.Texto(0);
    const QString buscado = a.Texto(1);
    const qlonglong desde = a.Total() > 2 && a.Entero(2) != -1 ? a.Entero(2) : texto.size();
    if (desde < 1 && a.Total() > 2)
        ArgumentoNoValido("InStrRev");
    const QString cabeza = texto.left(desde);
    a.Devuelve(desde > texto.size() ? 0 : cabeza.lastIndexOf(buscado, -1, Comparacion(a, 3)) + 1);
}

void Mayusculas(Argumentos& a)
{
    a.Devuelve(a.Texto(0).toUpper());
}

void Minusculas(Argumentos& a)
{
    a.Devuelve(a.Texto(0).toLower());
}

template <bool izquierda, bool derecha> void Recorta(Argumentos& a)
{
    const QString texto = a.Texto(0);
    qsizetype desde = 0;
    qsizetype hasta = texto.size();
    while (izquierda && desde < hasta && texto[desde] == u' ')
        ++desde;
    while (derecha && hasta > desde && texto[hasta - 1] == u' ')
        --hasta;
    a.Devuelve(texto.mid(desde, hasta - desde));
}

// Replace(text, sought, new [, start [, count [, comparison]]]).
void Replace(Argumentos& a)
{
    QString texto = a.Texto(0);
    const QString buscado = a.Texto(1);
    const QString nuevo = a.Texto(2);
    if (a.Total() > 3)
        texto = texto.mid(std::max<qlonglong>(a.Entero(3), 1) - 1);
    qlonglong quedan = a.Total() > 4 ? a.Entero(4) : -1;
    const Qt::CaseSensitivity caja = Comparacion(a, 5);
    qsizetype lugar = buscado.isEmpty() ? -1 : texto.indexOf(buscado, 0, caja);
    while (lugar >= 0 && quedan-- != 0) {
        texto.replace(lugar, buscado.size(), nuevo);
        lugar = texto.indexOf(buscado, lugar + nuevo.size(), caja);
    }
    a.Devuelve(texto);
}

void Space(Argumentos& a)
{
    a.Devuelve(QString(Largo(a, 0, "Space"), u' '));
}

QChar CaracterAnsi(qlonglong numero)
{
    return DesdeWindows1252(QByteArray(1, static_cast<char>(numero & 0xFF))).at(0);
}

void String(Argumentos& a)
{
    const QString texto = a.Texto(1);
    if (a.EsTexto(1) && texto.isEmpty())
        ArgumentoNoValido("String");
    const QChar relleno = a.EsTexto(1) ? texto[0] : CaracterAnsi(a.Entero(1));
    a.Devuelve(QString(Largo(a, 0, "String"), relleno));
}

void StrComp(Argumentos& a)
{
    const bool exacta = a.Total() > 2 && a.Entero(2) == 0;
    const int orden =
        exacta ? a.Texto(0).compare(a.Texto(1)) : ComparaTextos(a.Bytes(0), a.Bytes(1));
    a.Devuelve(orden < 0 ? -1 : orden > 0 ? 1 : 0);
}

void Asc(Argumentos& a)
{
    const QString texto = a.Texto(0);
    if (texto.isEmpty())
        ArgumentoNoValido("Asc");
    a.Devuelve(static_cast<int>(static_cast<unsigned char>(AWindows1252(texto.left(1)).at(0))));
}

void Chr(Argumentos& a)
{
    const qlonglong numero = a.Entero(0);
    if (numero < 0 || numero > 255)
        ArgumentoNoValido("Chr");
    a.Devuelve(QString(CaracterAnsi(numero)));
}

void Val(Argumentos& a)
{
    a.Devuelve(NumeroAlPrincipio(a.Texto(0)));
}

// The blank in front stands for the sign that a positive number doesn't show.
void Str(Argumentos& a)
{
    const double numero = a.Numero(0);
    const QString texto = data::Texto(numero);
    a.Devuelve(numero < 0 ? texto : u' ' + texto);
}

void Formatea(Argumentos& a)
{
    const QString formato = a.Total() > 1 && !a.EsNulo(1) ? a.Texto(1) : QString();
    const int primerDia = a.Total() > 2 && !a.EsNulo(2) ? static_cast<int>(a.Entero(2)) : 1;
    const int primeraSemana = a.Total() > 3 && !a.EsNulo(3) ? static_cast<int>(a.Entero(3)) : 1;
    if (a.EsNulo(0)) {
        a.Devuelve(QString());
        return;
    }
    const auto numero = a.EsTexto(0) ? LeeNumero(a.Texto(0)) : std::optional(a.Numero(0));
    a.Devuelve(Formato({a.Texto(0), numero, a.MomentoSiLoEs(0), a.EsTexto(0)}, formato,
                       {primerDia, primeraSemana}));
}

void GenGuid(Argumentos& a)
{
    a.Devuelve(QUuid::createUuid().toString(QUuid::WithBraces).toUpper());
}

const FuncionSql Funciones[] = {
    {"kov_len", 1, true, Len},
    {"kov_left", 2, true, Left},
    {"kov_right", 2, true, Right},
    {"kov_mid", -1, true, Mid},
    {"kov_instr", -1, true, InStr},
    {"kov_instrrev", -1, true, InStrRev},
    {"kov_ucase", 1, true, Mayusculas},
    {"kov_lcase", 1, true, Minusculas},
    {"kov_trim", 1, true, Recorta<true, true>},
    {"kov_ltrim", 1, true, Recorta<true, false>},
    {"kov_rtrim", 1, true, Recorta<false, true>},
    {"kov_replace", -1, true, Replace},
    {"kov_space", 1, true, Space},
    {"kov_string", 2, true, String},
    {"kov_strcomp", -1, true, StrComp},
    {"kov_asc", 1, true, Asc},
    {"kov_chr", 1, true, Chr},
    {"kov_val", 1, true, Val},
    {"kov_str", 1, true, Str},
    {"kov_format", -1, false, Formatea},
    {"kov_genguid", 0, false, GenGuid, false},
};

} // namespace

void RegistraDeTexto(sqlite3* base, const Ahora& ahora)
{
    for (const FuncionSql& funcion : Funciones)
        Registra(base, funcion, ahora);
}

} // namespace tolmo::data::access
