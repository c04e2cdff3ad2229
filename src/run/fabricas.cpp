#include "run/fabricas.h"
#include "configurator/FrmConsPSArtConfigurador.h"
#include "configurator/FrmRecuperaArtic.h"
#include "feed/solostocks.h"
#include "run/FrmConfiguracion.h"
#include "sync/sincronizador.h"
#include "users/FrmConsUsuarios.h"

namespace tolmo::run {

FrmPrincipal::Fabricas FabricasDelPrograma(data::Programa& programa, data::Escritorio& escritorio)
{
    FrmPrincipal::Fabricas fabricas;
    fabricas.motor = [&programa](data::Progreso& progreso) {
        return std::make_unique<sync::Sincronizador>(programa, progreso, site::Esperas{});
    };
    fabricas.generador = [&programa](data::Progreso& progreso) {
        return std::make_unique<feed::Solostocks>(programa, progreso, site::Esperas{});
    };
    fabricas.configuracion = [&programa, &escritorio](const QString& tag, const QString& empresa,
                                                      const QString& descripcion, QWidget* padre) {
        auto ventana = std::make_unique<FrmConfiguracion>(programa, escritorio, padre);
        ventana->Prepara(tag, empresa, descripcion);
        return ventana;
    };
    fabricas.usuarios = [&programa, &escritorio](QWidget* padre) {
        return std::make_unique<FrmConsUsuarios>(programa, escritorio, padre);
    };
    fabricas.articulos = [&programa, &escritorio](QWidget* padre) {
        return std::make_unique<FrmRecuperaArtic>(programa, escritorio, padre);
    };
    fabricas.atributos = [&programa, &escritorio](QWidget* padre) {
        return std::make_unique<FrmConsPSArtConfigurador>(programa, escritorio, padre);
    };
    return fabricas;
}

} // namespace tolmo::run
