#pragma once
#include "batch/escritores.h"
#include "feed/configuracion.h"
#include "feed/generador.h"
#include "site/cFTP.h"

namespace tolmo::feed {

/// The feed for Solostocks: it holds the FTP object, the connection to the shop and the company's
/// configuration for as long as its window lives. It knows no widget.
class Solostocks : public Generador {
  public:
    /// Connects to the shop and reads the configuration.
    /// \throws data::ErrorSql when the shop's MySQL can't be reached
    /// \throws data::ErrorFichero when the configuration can't be read
    Solostocks(data::Programa& programa, data::Progreso& progreso, const site::Esperas& esperas);

    Destino DestinoInicial() const override;
    bool Genera(const Destino& destino) override;
    bool EnMarcha() const override { return enMarcha_; }

  private:
    bool GeneraYSube(const Destino& destino);
    void RehazFichero(const QString& ruta);
    bool Conecta();
    bool SubirFicheroWeb(const QString& RutaFLocal, const QString& NombreFDestino,
                         const QString& CarpetaDestino);
    void BorrarFicheroWeb(const QString& Fichero);
    void MuestraSubida(bool subido, const QString& carpeta);

    data::Programa& programa_;
    data::Progreso& progreso_;
    batch::Escritores escritores_;
    site::cFTP mFTP_;
    Configuracion configuracion_{};
    bool enMarcha_ = false;
};

} // namespace tolmo::feed
