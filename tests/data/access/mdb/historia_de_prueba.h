#pragma once
#include "data/access/mdb/base_de_transaccion.h"
#include "data/access/mdb/disco_de_prueba.h"
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace tolmo::data::access::mdb {

inline const QString NombreBase = QStringLiteral("prueba.mdb");
inline const QString NombreDiario = QStringLiteral("prueba.mdb.diario");
constexpr qsizetype TamPagina = 4096;

/// Some commits, the changes of the folder that they were made of, and the states between them.
struct Historia {
    Carpeta principio{};
    std::vector<Operacion> operaciones{};
    std::vector<QByteArray> estados{};  ///< of the database: before all, after each commit
    std::vector<std::size_t> finales{}; ///< changes that had been made by then
};

/// Each task is one commit.
using Tarea = std::function<void(const std::shared_ptr<TransaccionPaginas>&)>;
inline Historia HazHistoria(const std::vector<Tarea>& tareas)
{
    BaseDeTransaccion base;
    DiscoDePrueba disco;
    Historia historia;
    historia.principio[NombreBase] = base.Bytes();
    historia.estados.push_back(base.Bytes());
    historia.finales.push_back(0);
    const auto paginas =
        std::make_shared<TransaccionPaginas>(base.ruta, AperturaTransaccion{.disco = &disco});
    for (const Tarea& tarea : tareas) {
        paginas->Empieza();
        tarea(paginas);
        paginas->Confirma();
        historia.estados.push_back(base.Bytes());
        historia.finales.push_back(disco.operaciones.size());
    }
    historia.operaciones = disco.operaciones;
    return historia;
}

/// The commits that had been confirmed after some of the changes.
inline std::size_t ConfirmadosEn(const Historia& historia, std::size_t operaciones)
{
    std::size_t confirmados = 0;
    while (confirmados + 1 < historia.finales.size() &&
           historia.finales[confirmados + 1] <= operaciones)
        ++confirmados;
    return confirmados;
}

inline Carpeta Tras(const Historia& historia, std::size_t operaciones)
{
    Carpeta carpeta = historia.principio;
    for (std::size_t i = 0; i < operaciones; ++i)
        Aplica(carpeta, historia.operaciones[i]);
    return carpeta;
}

inline void PonEn(const CarpetaDePrueba& destino, const Carpeta& carpeta)
{
    for (const QString& nombre : QDir(destino.Ruta()).entryList(QDir::Files))
        QFile::remove(destino.Ruta(nombre));
    for (const auto& [nombre, bytes] : carpeta)
        destino.Escribe(nombre, bytes);
}

/// The folder as it is while a commit, counted from 1, is writing, with a journal that is whole.
inline Carpeta CaidaEn(const Historia& historia, std::size_t cambio)
{
    for (std::size_t k = historia.finales[cambio - 1]; k < historia.finales[cambio]; ++k)
        if (historia.operaciones[k].fichero == NombreBase &&
            historia.operaciones[k].posicion > TamPagina)
            return Tras(historia, k + 1);
    return {};
}

/// Opens what a crash left, and expects the database as it was before or after the commit that was
/// being made. \returns the changes that the opening made
inline std::vector<Operacion> EsperaEntera(const Historia& historia, const Carpeta& carpeta,
                                           std::size_t confirmados)
{
    CarpetaDePrueba sitio;
    PonEn(sitio, carpeta);
    DiscoDePrueba disco;
    {
        TransaccionPaginas paginas(sitio.Ruta(NombreBase), {.disco = &disco});
        LecturaDePaginas lectura(paginas);
    }
    const QByteArray hallada = SinMarcas(sitio.Lee(NombreBase));
    const std::size_t siguiente = std::min(confirmados + 1, historia.estados.size() - 1);
    EXPECT_TRUE(hallada == SinMarcas(historia.estados[confirmados]) ||
                hallada == SinMarcas(historia.estados[siguiente]))
        << "neither before nor after commit " << siguiente;
    EXPECT_FALSE(sitio.Existe(NombreDiario));
    EXPECT_FALSE(sitio.Existe(NombreDiario + ".ajeno"));
    return disco.operaciones;
}

/// What reaches the disk of a write that was cut off: its first pages, and a half of the next.
inline Operacion Rota(const Operacion& entera, qsizetype paginas, bool primeraMitad)
{
    Operacion rota = entera;
    const qsizetype trozo = std::min(TamPagina, entera.bytes.size() - paginas * TamPagina);
    if (primeraMitad) {
        rota.bytes = entera.bytes.left(paginas * TamPagina + trozo / 2);
    } else {
        rota.posicion += paginas * TamPagina + trozo / 2;
        rota.bytes = entera.bytes.mid(paginas * TamPagina + trozo / 2);
    }
    return rota;
}

/// What is on the disk after a power failure: what was waited for, and by chance some of the rest.
/// Names are made and taken away in their order.
inline Carpeta TrasUnApagon(const Historia& historia, std::size_t operaciones, std::mt19937& azar)
{
    const auto ultima = [&](Operacion::Tipo tipo, const QString& fichero) {
        std::size_t cual = 0;
        for (std::size_t i = 0; i < operaciones; ++i)
            if (historia.operaciones[i].tipo == tipo &&
                (tipo == Operacion::Tipo::SincronizaCarpeta ||
                 historia.operaciones[i].fichero == fichero))
                cual = i;
        return cual;
    };
    const std::size_t nombresSeguros = ultima(Operacion::Tipo::SincronizaCarpeta, {});
    bool sigueConNombres = true;
    std::set<QString> perdidos;
    Carpeta carpeta = historia.principio;
    for (std::size_t i = 0; i < operaciones; ++i) {
        const Operacion& operacion = historia.operaciones[i];
        const bool suerte = (azar() & 1) != 0;
        if (operacion.tipo == Operacion::Tipo::Crea || operacion.tipo == Operacion::Tipo::Borra) {
            sigueConNombres = sigueConNombres && (i < nombresSeguros || suerte);
            if (sigueConNombres) {
                perdidos.erase(operacion.fichero);
                Aplica(carpeta, operacion);
            } else if (operacion.tipo == Operacion::Tipo::Crea &&
                       !carpeta.contains(operacion.fichero)) {
                perdidos.insert(operacion.fichero);
            }
            continue;
        }
        if (perdidos.contains(operacion.fichero))
            continue;
        if (i < ultima(Operacion::Tipo::Sincroniza, operacion.fichero) || suerte)
            Aplica(carpeta, operacion);
    }
    return carpeta;
}

} // namespace tolmo::data::access::mdb
