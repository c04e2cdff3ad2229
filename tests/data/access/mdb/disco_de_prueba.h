#pragma once
#include "data/access/mdb/disco.h"
#include <QByteArray>
#include <QFileInfo>
#include <cerrno>
#include <functional>
#include <map>
#include <vector>

namespace tolmo::data::access::mdb {

/// A change of a folder, as it reached the file system.
struct Operacion {
    enum class Tipo { Crea, Escribe, Recorta, Sincroniza, Borra, Renombra, SincronizaCarpeta };
    Tipo tipo = Tipo::Escribe;
    QString fichero{}; ///< without its folder
    qint64 posicion = 0;
    QByteArray bytes{};
    QString nuevo{};
};

/// Files by name, as a crash may leave them.
using Carpeta = std::map<QString, QByteArray>;

inline void Aplica(Carpeta& carpeta, const Operacion& operacion)
{
    using Tipo = Operacion::Tipo;
    switch (operacion.tipo) {
    case Tipo::Crea:
        carpeta.emplace(operacion.fichero, QByteArray());
        break;
    case Tipo::Escribe: {
        QByteArray& bytes = carpeta.at(operacion.fichero);
        const qsizetype fin = operacion.posicion + operacion.bytes.size();
        if (bytes.size() < fin)
            bytes.append(QByteArray(fin - bytes.size(), '\0'));
        bytes.replace(operacion.posicion, operacion.bytes.size(), operacion.bytes);
        break;
    }
    case Tipo::Recorta:
        carpeta.at(operacion.fichero).resize(operacion.posicion, '\0');
        break;
    case Tipo::Borra:
        carpeta.erase(operacion.fichero);
        break;
    case Tipo::Renombra:
        carpeta[operacion.nuevo] = carpeta.at(operacion.fichero);
        carpeta.erase(operacion.fichero);
        break;
    case Tipo::Sincroniza:
    case Tipo::SincronizaCarpeta:
        break;
    }
}

/// The real file system, which notes each change and may refuse one, but doesn't wait for the
/// device.
class DiscoDePrueba : public Disco {
  public:
    std::vector<Operacion> operaciones{};
    bool soloLectura = false;

    /// Refuses the change of this number, and all later ones when it lasts; of a long write, the
    /// first half is done.
    void FallaEn(std::size_t numero, bool dura)
    {
        fallaEn_ = numero;
        dura_ = dura;
    }
    void Arregla() { fallaEn_ = Nunca; }

    /// What others do just before a lock is asked for.
    std::function<void(const QString& nombre)> antesDeBloquear = [](const QString&) {};

    std::size_t bloqueos = 0;
    /// Refuses the lock of this number, as a system that has no room for more of them.
    void FallaElBloqueo(std::size_t numero) { fallaElBloqueo_ = numero; }

    std::unique_ptr<FicheroDeDisco> Abre(const QString& ruta, Uso uso) override
    {
        if (soloLectura && uso != Uso::Leer)
            throw ErrorDeDisco(Motivo::NoSeEscribe, QStringLiteral("No se puede escribir"), ruta,
                               EACCES);
        return std::make_unique<Fichero>(*this, ruta, real_.Abre(ruta, uso));
    }
    std::unique_ptr<FicheroDeDisco> Crea(const QString& ruta, const QString& modelo) override
    {
        Anota({.tipo = Operacion::Tipo::Crea, .fichero = Nombre(ruta)});
        return std::make_unique<Fichero>(*this, ruta, real_.Crea(ruta, modelo));
    }
    std::unique_ptr<FicheroDeDisco> CreaNuevo(const QString& ruta) override
    {
        Anota({.tipo = Operacion::Tipo::Crea, .fichero = Nombre(ruta)});
        return std::make_unique<Fichero>(*this, ruta, real_.CreaNuevo(ruta));
    }
    std::optional<EstadoFichero> Estado(const QString& ruta) override { return real_.Estado(ruta); }
    void Borra(const QString& ruta) override
    {
        Anota({.tipo = Operacion::Tipo::Borra, .fichero = Nombre(ruta)});
        real_.Borra(ruta);
    }
    void Renombra(const QString& ruta, const QString& nueva) override
    {
        Anota({.tipo = Operacion::Tipo::Renombra, .fichero = Nombre(ruta), .nuevo = Nombre(nueva)});
        real_.Renombra(ruta, nueva);
    }
    void SincronizaCarpetaDe(const QString& ruta) override
    {
        Anota({.tipo = Operacion::Tipo::SincronizaCarpeta, .fichero = Nombre(ruta)});
    }

  private:
    /// What a device writes whole or not at all.
    static constexpr std::size_t Sector = 512;
    static constexpr std::size_t Nunca = static_cast<std::size_t>(-1);

    class Fichero : public FicheroDeDisco {
      public:
        Fichero(DiscoDePrueba& disco, const QString& ruta, std::unique_ptr<FicheroDeDisco> real)
            : disco_(disco), nombre_(Nombre(ruta)), real_(std::move(real))
        {
        }
        EstadoFichero Estado() override { return real_->Estado(); }
        std::size_t Lee(qint64 posicion, std::span<quint8> bytes) override
        {
            return real_->Lee(posicion, bytes);
        }
        void Escribe(qint64 posicion, std::span<const quint8> bytes) override
        {
            try {
                disco_.Anota({.fichero = nombre_,
                              .posicion = posicion,
                              .bytes = QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                                  static_cast<qsizetype>(bytes.size()))});
            } catch (const ErrorMdb&) {
                if (bytes.size() > Sector)
                    real_->Escribe(posicion, bytes.first(bytes.size() / 2));
                throw;
            }
            real_->Escribe(posicion, bytes);
        }
        void Recorta(qint64 tam) override
        {
            disco_.Anota({.tipo = Operacion::Tipo::Recorta, .fichero = nombre_, .posicion = tam});
            real_->Recorta(tam);
        }
        void Sincroniza() override
        {
            disco_.Anota({.tipo = Operacion::Tipo::Sincroniza, .fichero = nombre_});
        }
        bool Bloquea(qint64 desde, qint64 largo, Cerrojo cerrojo) override
        {
            disco_.antesDeBloquear(nombre_);
            if (disco_.bloqueos++ == disco_.fallaElBloqueo_)
                throw ErrorDeDisco(Motivo::NoSeEscribe, QStringLiteral("No se puede escribir"),
                                   nombre_, ENOLCK);
            return real_->Bloquea(desde, largo, cerrojo);
        }
        void Desbloquea(qint64 desde, qint64 largo) override { real_->Desbloquea(desde, largo); }
        std::optional<qint64> BloqueoAjeno(qint64 desde, qint64 largo) override
        {
            return real_->BloqueoAjeno(desde, largo);
        }

      private:
        DiscoDePrueba& disco_;
        QString nombre_;
        std::unique_ptr<FicheroDeDisco> real_;
    };

    static QString Nombre(const QString& ruta) { return QFileInfo(ruta).fileName(); }

    void Anota(const Operacion& operacion)
    {
        const std::size_t numero = operaciones.size();
        operaciones.push_back(operacion);
        if (numero == fallaEn_ || (dura_ && numero > fallaEn_))
            throw ErrorDeDisco(Motivo::NoSeEscribe, QStringLiteral("No se puede escribir"),
                               operacion.fichero, ENOSPC);
    }

    Disco& real_ = DiscoDelSistema();
    std::size_t fallaEn_ = Nunca;
    std::size_t fallaElBloqueo_ = Nunca;
    bool dura_ = false;
};

} // namespace tolmo::data::access::mdb
