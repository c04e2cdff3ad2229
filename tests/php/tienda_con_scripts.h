#pragma once
#include "apoyo/tienda.h"
#include <QStringList>

/// A promise: the test writes to the shop's folder and to the tables ps_prueba and ps_image, and to
/// nothing else of the database or the servers. Such a shop is put back in a fraction of the time.
struct SoloFicheros {};

/// A test shop with the six scripts in its folder, as a run of the client leaves them.
class TiendaConScripts {
  public:
    explicit TiendaConScripts(const OpcionesTienda& opciones = {});
    explicit TiendaConScripts(SoloFicheros);
    ~TiendaConScripts();
    TiendaConScripts(const TiendaConScripts&) = delete;
    TiendaConScripts& operator=(const TiendaConScripts&) = delete;

    TiendaDePrueba& tienda;

    /// Uploads "bdtolmo.ccc"; an empty password is the right one.
    void SubeCredenciales(const QString& clave = {}) const;
    /// Writes something into each of these files, as good as any picture.
    void Llena(const QStringList& rutas) const;
    /// Body of a script's answer. A status other than 200 is told in its place.
    QByteArray Pide(const QString& script) const;
    /// Credentials and batch up, and the answer of ejecuta.php.
    QByteArray EjecutaLote(const QByteArray& lote) const;
    /// The answer's headers, each "Name: value".
    QStringList Cabeceras(const QString& script) const;
    /// First field of the first row, or nothing.
    QString Dato(const QString& consulta) const;
    /// Writes config/settings.inc.php anew, with this server and this version in it.
    void EscribeAjustes(const QString& servidor, const QString& version) const;

    /// A folder outside the shop, that no script may touch, and a symbolic link into it.
    QString Fuera(const QString& nombre = {}) const;
    void Enlaza(const QString& ruta, const QString& destino) const;

  private:
    void Prepara() const;
};
