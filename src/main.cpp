#include "data/access/access.h"
#include "data/errores.h"
#include "data/ui/avisos.h"
#include "data/ui/iconos.h"
#include "data/ui/sistema.h"
#include "run/fabricas.h"
#include "run/pantalla.h"
#include <QApplication>
#include <QDir>

using namespace tolmo;

namespace {

constexpr int SalidaCorrecta = 0;
constexpr int SalidaConError = 1;

/// A window that stays. Where nobody can see it, the process must not wait for ever.
int EsperaAlOperador(FrmPrincipal& principal, const run::Entorno& entorno)
{
    if (!entorno.hayPantalla) {
        data::ui::EscribeEnError(QStringLiteral(
            "No se ha hecho ningún proceso y no hay pantalla en la que mostrar el programa: se cierra."));
        principal.close();
        return SalidaConError;
    }
    QObject::connect(&principal, &FrmPrincipal::Descargada, qApp, &QCoreApplication::quit);
    principal.show();
    return QApplication::exec();
}

int Arranca(FrmPrincipal& principal, const run::Entorno& entorno)
{
    switch (principal.Carga()) {
    case run::Desenlace::Hecho:
        principal.close();
        return SalidaCorrecta;
    case run::Desenlace::Inacabado:
        principal.close();
        return SalidaConError;
    case run::Desenlace::Cancelado:
        return SalidaCorrecta;
    case run::Desenlace::Fallo:
        return SalidaConError;
    case run::Desenlace::SinEmpresa:
    case run::Desenlace::Abierta:
        break;
    }
    return EsperaAlOperador(principal, entorno);
}

int Ejecuta(const run::Entorno& entorno, data::Avisos& avisos)
{
    data::ui::RelojSistema reloj;
    data::Programa programa(avisos, reloj, data::CreaProveedor, QDir::currentPath());
    data::ui::EscritorioSistema escritorio;
    FrmPrincipal principal(programa, escritorio, entorno,
                           run::FabricasDelPrograma(programa, escritorio),
                           data::ui::EscribeEnSalida);
    try {
        return Arranca(principal, entorno);
    } catch (const data::FinDePrograma&) {
        return SalidaConError;
    }
}

} // namespace

int main(int argc, char** argv)
{
    run::AseguraUtf8();
    const run::Entorno entorno = run::LeeEntorno(argc, argv);
    if (!entorno.hayPantalla && entorno.lineaOrdenes.isEmpty()) {
        data::ui::EscribeEnError(QStringLiteral(
            "El programa no tiene pantalla en la que mostrarse. Para una tarea programada, indique el proceso y la empresa: kovtolmo /PRESTASHOP:000001"));
        return SalidaConError;
    }
    if (!entorno.hayPantalla)
        run::TrabajaSinPantalla();

    // The toolkit sees no argument: all of them are this program's.
    int soloElPrograma = 1;
    QApplication aplicacion(soloElPrograma, argv);
    QApplication::setWindowIcon(data::ui::IconoPrograma());
    // A dialog of the start may be the only window for a while.
    QApplication::setQuitOnLastWindowClosed(false);

    data::ui::AvisosVentana avisosVentana;
    data::ui::AvisosConsola avisosConsola;
    data::Avisos& avisos =
        entorno.hayPantalla ? static_cast<data::Avisos&>(avisosVentana) : avisosConsola;
    return Ejecuta(entorno, avisos);
}
