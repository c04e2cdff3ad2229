#pragma once
#include "data/access/mdb/dato.h"
#include "data/access/mdb/definicion.h"
#include <QByteArray>
#include <functional>
#include <vector>

namespace tolmo::data::access::mdb {

/// What covers the header of every file, from 0x18 on.
const QByteArray& VeloDeCabecera();

struct ColumnaFabricada {
    QString nombre{};
    TipoColumna tipo = TipoColumna::Largo;
    int caracteres = 0; ///< of a text
};

/// Makes the bytes of a file of Access 2003, without indexes, for what no sample holds: tables of
/// any size, links to other files, a password.
class BaseFabricada {
  public:
    BaseFabricada();

    using DaFila = std::function<std::vector<Dato>(int)>;
    void Tabla(const QString& nombre, const std::vector<ColumnaFabricada>& columnas, int filas,
               const DaFila& daFila);
    void Enlace(const QString& nombre, const QString& fichero, const QString& nombreAjeno,
                const QString& conexion = {});
    void Contrasena(const QString& contrasena);
    void Cifra();

    /// The file; nothing can be added after it.
    QByteArray Termina();

  private:
    struct Objeto {
        quint32 id;
        QString nombre;
        int clase;
        QString fichero, nombreAjeno, conexion;
    };
    /// Pages of one owner, and the one that is being filled.
    struct Montaje {
        quint32 duenio = 0;
        quint32 enCurso = 0;
        std::vector<quint32> propias{};
    };

    quint32 NuevaPagina();
    char* En(quint32 pagina, int posicion);
    void Pon16(quint32 pagina, int posicion, quint16 valor);
    void Pon32(quint32 pagina, int posicion, quint32 valor);
    quint32 AnadeFila(Montaje& montaje, const QByteArray& fila);
    QByteArray Largo(Montaje& largos, const Dato& dato);
    QByteArray Fila(const std::vector<ColumnaFabricada>& columnas, const std::vector<Dato>& datos,
                    std::vector<Montaje>& largos);
    QByteArray Mapa(const std::vector<quint32>& paginas);
    void PonTabla(quint32 definicion, const std::vector<ColumnaFabricada>& columnas, int filas,
                  const DaFila& daFila);
    void PonDefinicion(quint32 pagina, const std::vector<ColumnaFabricada>& columnas, int filas,
                       quint32 mapas);

    QByteArray bytes_{};
    std::vector<Objeto> objetos_{};
};

} // namespace tolmo::data::access::mdb
