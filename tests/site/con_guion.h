#pragma once
#include "apoyo/servidor_guionizado.h"
#include "site/cliente_ftp.h"
#include <QElapsedTimer>

/// A client of short waits before a server that plays a script.
struct ConGuion {
    ServidorGuionizado servidor;
    ClienteFtp cliente{EsperasCortas()};
    tolmo::site::cFTP& ftp = cliente.ftp;
    QElapsedTimer reloj{};

    explicit ConGuion(std::function<void(Charla&)> guion) : servidor(std::move(guion))
    {
        reloj.start();
    }
    bool Abre() { return cliente.Abre(servidor.Puerto()); }
    const QString& Error() const { return ftp.GetLastErrorMessage(); }
    /// No wait of this client goes beyond it.
    bool AcaboPronto() const { return reloj.elapsed() < 5000; }
};
