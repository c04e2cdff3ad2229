#pragma once
#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/comprobacion_indice.h"
#include "data/access/mdb/indice.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include "data/access/mdb/paginas_en_memoria.h"
#include <gmock/gmock.h>

namespace tolmo::data::access::mdb {

/// A file with one index, which is empty: page 1 holds the map of free pages, page 3 that of the
/// index, page 4 would define the table, page 5 is the root.
class ArbolDePrueba {
  public:
    static constexpr quint32 PaginaTabla = 4;
    static constexpr quint32 Raiz = 5;
    static constexpr Puntero MapaDelIndice{.pagina = 3, .fila = 0};

    ArbolDePrueba()
    {
        PaginasDePrueba prueba;
        std::vector<quint8> libres(69, 0xFF);
        std::fill(libres.begin(), libres.begin() + 5, quint8{0});
        libres[5] = 0xC0;
        std::vector<quint8> suyas(69);
        suyas[5] = 1U << Raiz;
        prueba.PonFilas(1, 0, {libres});
        prueba.PonFilas(3, 0, {suyas});
        prueba.Pon(Raiz, 0, "00");
        paginas_ = std::make_shared<PaginasEnMemoria>(prueba);
        ArbolIndice::EscribeRaizVacia(*paginas_, PaginaTabla, Raiz);
        definicion_->pagina = PaginaTabla;
        definicion_->nombre = "T";
        definicion_->indicesReales = {
            {.columnas = {{.numero = 0}}, .mapa = MapaDelIndice, .raiz = Raiz}};
    }

    PaginasEnMemoria& paginas() const { return *paginas_; }
    const IndiceReal& indice() const { return definicion_->indicesReales[0]; }
    ArbolIndice Arbol() const { return {*paginas_, PaginaTabla, indice()}; }
    Tabla LaTabla() const { return {paginas_, definicion_}; }
    PaginaIndice Lee(quint32 numero) const { return LeePaginaIndice(LaTabla(), numero); }

    std::vector<std::string> Faltas() const
    {
        QStringList faltas;
        CompruebaArbol(LaTabla(), indice(), faltas);
        std::vector<std::string> todas;
        for (const QString& falta : faltas)
            todas.push_back(falta.toStdString());
        return todas;
    }

    /// The levels from the root down to the leaves.
    int Niveles() const
    {
        PaginaIndice pagina = Lee(Raiz);
        int niveles = 1;
        for (; pagina.EsNodo(); ++niveles)
            pagina = Lee(pagina.Cola());
        return niveles;
    }

    /// The entries in the order in which a walk meets them: the key and, behind it, the row.
    std::vector<QByteArray> Entradas() const
    {
        std::vector<QByteArray> todas;
        for (RecorridoIndice recorrido(LaTabla(), indice()); recorrido.Siguiente();) {
            const auto bytes = recorrido.entrada().ClaveYFila();
            todas.emplace_back(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<qsizetype>(bytes.size()));
        }
        return todas;
    }

  private:
    std::shared_ptr<PaginasEnMemoria> paginas_{};
    std::shared_ptr<Definicion> definicion_ = std::make_shared<Definicion>();
};

} // namespace tolmo::data::access::mdb
