// Presses one button of the synchronisation window of company 000001, as an operator does, and
// waits for the end of its run. The vouchers have no switch of the command line.
//
//   kovtolmo-pulsa BOTON      CmdValesDto, for instance
#include "data/access/access.h"
#include "data/errores.h"
#include "data/ui/avisos.h"
#include "data/ui/sistema.h"
#include "run/fabricas.h"
#include "run/pantalla.h"
#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTimer>
#include <stdexcept>

using namespace tolmo;

namespace {

void Pulsa(const QString& boton)
{
    data::ui::AvisosConsola avisos;
    data::ui::RelojSistema reloj;
    data::ui::EscritorioSistema escritorio;
    data::Programa programa(avisos, reloj, data::CreaProveedor, QDir::currentPath());
    // A line without a switch chooses the company and starts nothing.
    const run::Entorno entorno{.lineaOrdenes = QStringLiteral("000001"),
                               .PATH_CONNECT = qEnvironmentVariable("PATH_CONNECT")};
    const FrmPrincipal::Fabricas fabricas = run::FabricasDelPrograma(programa, escritorio);
    FrmPrincipal principal(programa, escritorio, entorno, fabricas);
    if (principal.Carga() != run::Desenlace::Abierta)
        throw std::runtime_error("la empresa 000001 no se abre");
    FrmSincronizar ventana(avisos, fabricas.motor, nullptr, data::ui::EscribeEnSalida);
    auto* control = ventana.findChild<QPushButton*>(boton);
    if (!control)
        throw std::runtime_error("la ventana no tiene ese botón");
    QTimer::singleShot(0, control, &QPushButton::click);
    ventana.Muestra();
    principal.close();
}

} // namespace

int main(int argc, char** argv)
{
    run::AseguraUtf8();
    run::TrabajaSinPantalla();
    QApplication aplicacion(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        Pulsa(QApplication::arguments().value(1));
        return 0;
    } catch (const data::FinDePrograma&) {
        // Its boxes have told why.
    } catch (const std::exception& error) {
        data::ui::EscribeEnError(QString::fromUtf8(error.what()));
    }
    return 1;
}
