#include "data/access/mdb/azar.h"
#include "data/access/mdb/base_escribible.h"
#include <map>
#include <set>

using namespace tolmo::data;
using namespace tolmo::data::access::mdb;

namespace {

constexpr int Comparaciones = 20;

enum Lugar : std::size_t { Id, Codigo, Nombre, Nota, Foto, Precio, Activo };

class Espejo {
  public:
    explicit Espejo(unsigned semilla) : azar_(semilla)
    {
        NuevaTabla tabla{.nombre = "T"};
        tabla.columnas = {{.nombre = "Id", .tipo = TipoColumna::Largo, .autonumerica = true},
                          {.nombre = "Codigo", .tipo = TipoColumna::Largo},
                          {.nombre = "Nombre", .ancho = 120},
                          {.nombre = "Nota", .tipo = TipoColumna::Memo},
                          {.nombre = "Foto", .tipo = TipoColumna::Ole},
                          {.nombre = "Precio", .tipo = TipoColumna::Moneda},
                          {.nombre = "Activo", .tipo = TipoColumna::Logico}};
        tabla.indices = {
            {.nombre = "PrimaryKey", .columnas = {{"Id"}}, .primario = true},
            {.nombre = "Codigos", .columnas = {{"Codigo"}}, .unico = true, .sinNulos = true},
            {.nombre = "Nombres", .columnas = {{"Nombre"}, {"Activo", true}}},
            {.nombre = "Precios", .columnas = {{"Precio", true}}}};
        CreaTabla(base_.paginas(), tabla);
        escritura_.emplace(base_.Escribe("T"));
    }

    void Paso()
    {
        const int caso = azar_.Entre(1, 100);
        if (filas_.empty() || caso <= 45)
            Inserta();
        else if (caso <= 80)
            Actualiza();
        else
            Borra();
    }

    void Compara() const
    {
        const Tabla tabla = base_.Abre("T");
        std::size_t cuantas = 0;
        for (Cursor cursor(tabla); cursor.Siguiente(); ++cuantas) {
            const auto fila = filas_.find(cursor.puntero());
            ASSERT_NE(fila, filas_.end());
            ASSERT_TRUE(BaseEscribible::Valores(tabla, cursor.fila()) == fila->second);
        }
        ASSERT_EQ(cuantas, filas_.size());
        ASSERT_EQ(tabla.definicion().filas, filas_.size());
        ASSERT_EQ(base_.Faltas(), QStringList());
    }

  private:
    Dato Inventa(std::size_t columna)
    {
        if (columna != Activo && azar_.Cada(10))
            return {};
        switch (columna) {
        case Codigo:
            return qint64{azar_.Entre(1, 20'000)};
        case Nombre:
            return azar_.Texto(120);
        case Nota:
            return azar_.Memo();
        case Foto:
            return azar_.Cada(2) ? azar_.Bytes(azar_.Entre(0, 300)) : QByteArray();
        case Precio:
            return Moneda{azar_.Entre(-50'000, 50'000)};
        default:
            return azar_.Cada(2);
        }
    }

    bool Repetido(const Dato& codigo) const
    {
        return !EsNulo(codigo) && codigos_.contains(Como<qint64>(codigo));
    }

    void Inserta()
    {
        Renglon valores(7);
        for (std::size_t columna = Codigo; columna <= Activo; ++columna)
            valores[columna] = Inventa(columna);
        if (Repetido(valores[Codigo])) {
            ASSERT_EQ(MotivoDe([&] { escritura_->Inserta(valores); }), Motivo::ClaveRepetida);
            return;
        }
        const Puntero fila = escritura_->Inserta(valores);
        ASSERT_FALSE(filas_.contains(fila));
        valores[Id] = qint64{escritura_->UltimoAutonumerico()};
        if (!EsNulo(valores[Codigo]))
            codigos_.insert(Como<qint64>(valores[Codigo]));
        filas_[fila] = valores;
    }

    Puntero Alguna()
    {
        auto fila = filas_.lower_bound(Puntero::De(static_cast<quint32>(
            azar_.Entre(0, static_cast<int>(filas_.rbegin()->first.Numero())))));
        return fila->first;
    }

    void Actualiza()
    {
        const Puntero fila = Alguna();
        Renglon& valores = filas_[fila];
        std::vector<TablaEscribible::Cambio> cambios;
        Renglon nuevos = valores;
        for (std::size_t columna = Codigo; columna <= Activo; ++columna) {
            if (!azar_.Cada(3))
                continue;
            nuevos[columna] = Inventa(columna);
            cambios.push_back({.columna = columna, .valor = nuevos[columna]});
        }
        if (nuevos[Codigo] != valores[Codigo] && Repetido(nuevos[Codigo])) {
            ASSERT_EQ(MotivoDe([&] { escritura_->Actualiza(fila, cambios); }),
                      Motivo::ClaveRepetida);
            return;
        }
        ASSERT_TRUE(escritura_->Actualiza(fila, cambios));
        codigos_.erase(Como<qint64>(valores[Codigo]));
        if (!EsNulo(nuevos[Codigo]))
            codigos_.insert(Como<qint64>(nuevos[Codigo]));
        valores = nuevos;
    }

    void Borra()
    {
        const Puntero fila = Alguna();
        ASSERT_TRUE(escritura_->Borra(fila));
        codigos_.erase(Como<qint64>(filas_[fila][Codigo]));
        filas_.erase(fila);
    }

    Azar azar_;
    BaseEscribible base_{};
    std::optional<TablaEscribible> escritura_{};
    std::map<Puntero, Renglon> filas_{};
    std::set<qint64> codigos_{};
};

/// KOV_MDB_OPERACIONES runs more than the 10,000 operations of every day, KOV_MDB_SEMILLA others.
TEST(EscrituraAlAzar, LaTablaTieneLoQueSeEscribio)
{
    const int pedidas = qEnvironmentVariableIntValue("KOV_MDB_OPERACIONES");
    const int operaciones = pedidas > 0 ? pedidas : 10'000;
    Espejo espejo(static_cast<unsigned>(qEnvironmentVariableIntValue("KOV_MDB_SEMILLA")) + 1);
    for (int i = 1; i <= operaciones; ++i) {
        espejo.Paso();
        if (i % (operaciones / Comparaciones) == 0)
            espejo.Compara();
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << i;
    }
}

} // namespace
