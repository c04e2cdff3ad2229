#include "batch/escritores.h"
#include "data/codificacion.h"
#include "data/errores.h"
#include "data/rutas.h"

namespace tolmo::batch {

void Escritores::EscribeFichero(const QString& ruta, Modo modo, const QString& texto)
{
    switch (modo) {
    case Modo::A:
        Abre(ruta);
        break;
    case Modo::I:
        EscribeLinea(texto);
        break;
    case Modo::C:
        fichero_.close();
        break;
    case Modo::T:
        Abre(ruta);
        EscribeTraducida(texto);
        fichero_.close();
        break;
    case Modo::TC:
        Abre(ruta);
        EscribeLinea(texto);
        fichero_.close();
        break;
    }
}

void Escritores::EscribeSentencia(const QString& ruta, Modo modo, const QString& sentencia)
{
    if (modo == Modo::TC)
        return;
    QString conPrefijo = sentencia;
    // Blind, in small letters only, and without sparing the name of the version setting.
    conPrefijo.replace(QStringLiteral("ps_"), programa_.parametros.PS_PREFIJO);
    if (modo == Modo::I)
        EscribeTraducida(conPrefijo);
    else
        EscribeFichero(ruta, modo, conPrefijo);
}

void Escritores::Abre(const QString& ruta)
{
    fichero_.close();
    fichero_.setFileName(data::RutaLocal(ruta));
    (void)fichero_.open(QIODevice::WriteOnly | QIODevice::Append);
}

void Escritores::EscribeLinea(const QString& linea)
{
    if (fichero_.isOpen())
        fichero_.write(data::AWindows1252(linea) + "\r\n");
}

void Escritores::EscribeTraducida(const QString& texto)
{
    try {
        EscribeLinea(data::TraduceSql(programa_.DialectoActivo, texto));
    } catch (const data::ErrorTraduccion&) {
        // The record is lost without a word, by design; a file just opened for it may stand empty.
    }
}

} // namespace tolmo::batch
