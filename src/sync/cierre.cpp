#include "sync/cierre.h"
#include "data/rutas.h"
#include "sync/adjuntos.h"
#include "sync/corrida.h"
#include "sync/fotos.h"

namespace tolmo::sync {
namespace {

constexpr int VecesIndices2 = 20;

/// The shop's own addresses, as they stand in the parameters. The answers are not looked at.
void RegeneraIndices(Corrida& corrida)
{
    if (!corrida.opciones.regeneraIndices)
        return;
    corrida.RegistraLog(QStringLiteral("REGENERANDO INDICES DE BÚSQUEDA..."));
    corrida.sitio.RecuperaPagina(corrida.Parametros().PS_INDICES1);
    for (int vez = 0; vez < VecesIndices2; ++vez)
        corrida.sitio.RecuperaPagina(corrida.Parametros().PS_INDICES2);
}

void EliminaFotosAntiguas(Corrida& corrida)
{
    const QString imgborra = QStringLiteral("imgborra.txt");
    site::Sitio& sitio = corrida.sitio;
    corrida.RegistraLog(QStringLiteral("ELIMINANDO FOTOS ANTIGUAS..."));
    sitio.AbrirFTP();
    sitio.BorrarFicheroWeb(imgborra);
    if (!sitio.SubirFicheroWeb(corrida.lote.Ficheros().ListaImgBorra, imgborra,
                               corrida.Parametros().Carpeta_tienda)) {
        corrida.RegistraLog(QStringLiteral("ERROR SUBIENDO FICHERO ") + imgborra);
        sitio.AbrirFTP();
    }
    const QString respuesta = sitio.RecuperaGuion(QStringLiteral("borraimg.php?sufijofoto=") +
                                                  corrida.Parametros().Ps_SufijoFoto);
    if (respuesta.contains(site::FraseErrorConsulta, Qt::CaseInsensitive))
        corrida.RegistraLog(QStringLiteral("ERRORES Eliminando Artículos"));
}

/// The user's standing sentences; the file stays where it is.
void EjecutaFinalizar(Corrida& corrida)
{
    const QString ruta = corrida.programa.RutaActual(QStringLiteral("\\PHPSHOP\\") +
                                                     corrida.programa.CodigoEmpresa() +
                                                     QStringLiteral("finalizar.sql"));
    if (!data::ExisteFichero(ruta))
        return;
    // A list that had nothing in it leaves the session refusing; the user's file must get through.
    if (corrida.sitio.TransferenciaAbierta())
        corrida.sitio.AbrirFTP();
    corrida.sitio.EjecutaPHP(ruta,
                             QStringLiteral("EJECUTANDO REMOTAMENTE Sentencias final de proceso"));
}

} // namespace

void CierraCorrida(Corrida& corrida)
{
    const Opciones& opciones = corrida.opciones;
    if (opciones.proceso != Proceso::Stock) {
        RegeneraIndices(corrida);
        EliminaFotosAntiguas(corrida);
    }
    if (opciones.fotosFam)
        SubeFotosFamilias(corrida);
    EjecutaFinalizar(corrida);
    corrida.sitio.BorraCachePrestashop();
    if (opciones.adjuntos)
        PublicaAdjuntos(corrida);
    if (opciones.fotosArt)
        SubeFotosArticulos(corrida);
}

} // namespace tolmo::sync
