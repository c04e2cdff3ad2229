#pragma once
#include "apoyo/corrida_real.h"
#include "apoyo/dobles.h"
#include "company/carga_param.h"
#include "data/access/access.h"
#include "sync/sincronizador.h"

/// The engine as the window's buttons start it, in this process, on the company and the shop.
class VentanaReal {
  public:
    explicit VentanaReal(EmpresaReal& empresa)
        : empresa_(empresa), programa_(avisos, reloj_, tolmo::data::CreaProveedor, empresa.Actual())
    {
        reloj_.ahora = QDateTime::currentDateTime();
        programa_.LblEmpresa = "000001 Casa de prueba";
        programa_.SufijoTemporal = "24031509050789";
        programa_.ConexionLocal.Conecta(empresa.CadenaDeBase());
        tolmo::company::CargaParam(programa_);
    }

    ResultadoCorrida Pulsa(const tolmo::sync::Opciones& opciones)
    {
        return Usa([&](tolmo::sync::Sincronizador& sincronizador) {
            sincronizador.SincronizaPrestashop(opciones);
        });
    }

    /// What is done with the engine while the window stands.
    ResultadoCorrida Usa(const std::function<void(tolmo::sync::Sincronizador&)>& accion)
    {
        return empresa_.Observa([&](ResultadoCorrida&) {
            tolmo::sync::Sincronizador sincronizador(programa_, progreso, tolmo::site::Esperas{});
            accion(sincronizador);
            return 0;
        });
    }

    tolmo::data::Programa& Programa() { return programa_; }

    ProgresoDePrueba progreso{};
    AvisosDePrueba avisos{};

  private:
    EmpresaReal& empresa_;
    RelojDePrueba reloj_{};
    tolmo::data::Programa programa_;
};

inline const QString Asteriscos(33, u'*');

inline QStringList CabeceraDelLog()
{
    return {Asteriscos, "INICIO VUELCO DATOS A PRESTASHOP ", Asteriscos,
            "BORRANDO CACHÉ DE PRESTASHOP"};
}

inline QStringList FinDelLog()
{
    return {"BORRANDO CACHÉ DE PRESTASHOP",
            Asteriscos,
            "FIN VUELCO DATOS A PRESTASHOP ",
            Asteriscos,
            "",
            "",
            ""};
}
