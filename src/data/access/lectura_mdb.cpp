#include "data/access/lectura_mdb.h"
#include "data/access/colacion.h"
#include "data/access/mdb/clave.h"
#include "data/access/valores_mdb.h"
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

std::span<const quint8> Bytes(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

/// The stretch of an index that a plan and its arguments mean.
class TramoDeIndice {
  public:
    TramoDeIndice(const mdb::Tabla& tabla, const mdb::IndiceReal& indice)
        : tabla_(tabla), indice_(indice), version_(tabla.paginas().formato().version)
    {
    }

    /// \returns false when an argument tells nothing
    bool Toma(const QByteArray& partes, std::span<sqlite3_value* const> argumentos)
    {
        std::size_t columna = 0;
        for (qsizetype i = 0; i < partes.size(); ++i) {
            const mdb::ColumnaIndice& deIndice = indice_.columnas.at(columna);
            const mdb::Columna& suya = *tabla_.definicion().ColumnaDe(deIndice.numero);
            const auto margen = MargenDe(argumentos[static_cast<std::size_t>(i)], suya);
            if (!margen || !Pon(partes[i], *margen, suya, deIndice.descendente))
                return false;
            if (partes[i] != '=')
                continue;
            // Behind a stretch of values the next columns are in no order.
            if (!margen->exacto || !SeBuscaExacta(suya.tipo))
                return true;
            ++columna;
        }
        return true;
    }

    QByteArray principio{};
    QByteArray desde{};
    QByteArray hasta{};

  private:
    /// Of the texts that all begin alike, the bound is what their keys share.
    std::optional<QByteArray> Clave(const mdb::Dato& dato, const mdb::Columna& columna,
                                    bool descendente) const
    {
        const auto* texto = std::get_if<QString>(&dato);
        const auto comienzo = texto ? PrincipioHasta(*texto) : std::nullopt;
        if (!comienzo)
            return ClaveEntera(dato, columna, descendente);
        const auto clave = ClaveEntera(*comienzo, columna, descendente);
        return clave ? std::optional(mdb::HastaFinDeCodigos(*clave, descendente)) : std::nullopt;
    }

    std::optional<QByteArray> ClaveEntera(const mdb::Dato& dato, const mdb::Columna& columna,
                                          bool descendente) const
    {
        const auto con = [&](mdb::Expansion expansion) {
            return mdb::ClaveDeValor(dato, columna, descendente,
                                     {.version = version_, .expansion = expansion});
        };
        auto clave = con(mdb::Expansion::UnLugar);
        // Where the engines of several years count a letter differently, the index can't be used.
        return clave == con(mdb::Expansion::DosLugares) ? clave : std::nullopt;
    }

    bool Pon(char parte, const Margen& margen, const mdb::Columna& columna, bool descendente)
    {
        const bool exacta = margen.exacto && SeBuscaExacta(columna.tipo);
        auto menor = Clave(margen.desde, columna, descendente);
        auto mayor = exacta ? menor : Clave(margen.hasta, columna, descendente);
        if (!menor || !mayor)
            return false;
        if (descendente)
            std::swap(menor, mayor);
        if (parte == '=' && exacta) {
            principio += *menor;
            return true;
        }
        const bool porAbajo = parte == '=' || (parte == '>') != descendente;
        const bool porArriba = parte == '=' || (parte == '<') != descendente;
        if (porAbajo)
            desde = *menor;
        if (porArriba)
            hasta = *mayor;
        return true;
    }

    const mdb::Tabla& tabla_;
    const mdb::IndiceReal& indice_;
    mdb::Version version_;
};

} // namespace

void LecturaMdb::EmpiezaPorTodo()
{
    recorrido_.reset();
    todo_.emplace(tabla_);
}

void LecturaMdb::EmpiezaPorFila(mdb::Puntero fila)
{
    EmpiezaPorFilas({fila});
}

void LecturaMdb::EmpiezaPorFilas(std::vector<mdb::Puntero> filas)
{
    todo_.reset();
    recorrido_.reset();
    filas_ = std::move(filas);
    proxima_ = 0;
}

void LecturaMdb::EmpiezaPorIndice(const PlanLectura& plan,
                                  std::span<sqlite3_value* const> argumentos)
{
    for (sqlite3_value* argumento : argumentos)
        if (sqlite3_value_type(argumento) == SQLITE_NULL)
            return EmpiezaSinFilas();
    const mdb::IndiceReal& indice =
        tabla_.definicion().indicesReales.at(static_cast<std::size_t>(plan.indice));
    TramoDeIndice tramo(tabla_, indice);
    if (!tramo.Toma(plan.partes, argumentos))
        return EmpiezaPorTodo();
    todo_.reset();
    principio_ = tramo.principio;
    hasta_ = tramo.hasta;
    recorrido_.emplace(tabla_, indice);
    recorrido_->Busca(Bytes(principio_ + tramo.desde));
}

bool LecturaMdb::Siguiente()
{
    if (todo_) {
        if (!todo_->Siguiente())
            return false;
        fila_ = todo_->fila();
        puntero_ = todo_->puntero();
        return true;
    }
    if (recorrido_)
        return SiguienteDelIndice();
    while (proxima_ < filas_.size())
        if (Toma(filas_[proxima_++]))
            return true;
    return false;
}

bool LecturaMdb::SiguienteDelIndice()
{
    while (recorrido_->Siguiente()) {
        const auto clave = recorrido_->entrada().Clave();
        const auto tamano = static_cast<std::size_t>(principio_.size());
        if (clave.size() < tamano || !mdb::Iguales(clave.first(tamano), Bytes(principio_)))
            return false;
        if (!hasta_.isEmpty()) {
            const auto columna = clave.subspan(tamano);
            const auto limite = Bytes(hasta_);
            const auto comparable = columna.first(std::min(columna.size(), limite.size()));
            if (mdb::Antes(limite, comparable))
                return false;
        }
        if (Toma(recorrido_->entrada().Fila()))
            return true;
    }
    return false;
}

bool LecturaMdb::Toma(mdb::Puntero fila)
{
    auto leida = tabla_.FilaEn(fila);
    if (!leida)
        return false;
    fila_ = std::move(*leida);
    puntero_ = fila;
    return true;
}

} // namespace tolmo::data::access
