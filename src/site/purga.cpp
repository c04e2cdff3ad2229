#include "site/purga.h"
#include "data/plantilla.h"
#include "data/valores.h"
#include "site/sitio.h"

namespace tolmo::site {
namespace {

using data::Plantilla;

constexpr int Bloques = 9;
const QString FraseConcluido = QStringLiteral("CONCLUIDO");

// clang-format off
constexpr Plantilla PideBloque(u"borraimgobsoletas.php?cienmil={block}");
constexpr Plantilla ComienzaBloque(u"Comenzando bloque {block} / 9");
constexpr Plantilla FinalizaBloque(u"Finalizado bloque {block} / 9");
constexpr Plantilla RelanzaBloque(u"....... Intento {attempt}, tiempo agotado. Relanzando...");
// clang-format on

/// \returns false when the program was asked to end before the block was done
bool BorraBloque(int bloque, Sitio& sitio, batch::Registro& registro, data::Progreso& progreso)
{
    const QString block = data::Texto(bloque);
    registro.RegistraLog(ComienzaBloque({{"block", block}}));
    // A server that is down can be asked some thousand times a second, for days.
    for (qint64 intento = 1; progreso.SigueElPrograma(); ++intento) {
        const QString respuesta = sitio.RecuperaGuion(PideBloque({{"block", block}}));
        const bool concluido = respuesta.contains(FraseConcluido, Qt::CaseInsensitive);
        registro.RegistraLog(concluido
                                 ? FinalizaBloque({{"block", block}})
                                 : RelanzaBloque({{"attempt", data::Texto(data::Valor(intento))}}));
        progreso.CedeEventos();
        if (concluido)
            return true;
    }
    return false;
}

} // namespace

void BorraImagenesObsoletas(Sitio& sitio, batch::Registro& registro, data::Progreso& progreso)
{
    registro.RegistraTitulo(QStringLiteral("INICIO PROCESO BORRADO IMÁGENES NO UTILIZADAS"));
    sitio.AbrirFTP();
    sitio.SubirFicherosScripts();
    for (int bloque = 1; bloque <= Bloques; ++bloque)
        if (!BorraBloque(bloque, sitio, registro, progreso))
            return;
    registro.RegistraLog(QStringLiteral("PROCESO CONCLUIDO"));
}

} // namespace tolmo::site
