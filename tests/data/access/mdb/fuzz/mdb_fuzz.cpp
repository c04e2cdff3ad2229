#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/lee_todo.h"
#include <array>
#include <cstddef>
#include <cstdint>

using namespace tolmo::data::access::mdb;

namespace {

/// A small file with all that the samples lack.
QByteArray Fabricada()
{
    BaseFabricada base;
    base.Tabla("T",
               {{"A", TipoColumna::Largo},
                {"B", TipoColumna::Texto, 20},
                {"C", TipoColumna::Memo},
                {"D", TipoColumna::Logico},
                {"E", TipoColumna::Moneda}},
               5, [](int i) {
                   return std::vector<Dato>{qint64{i}, QString(i, u'x'), QString(40 * i, u'y'),
                                            i % 2 == 0, Moneda{i}};
               });
    base.Enlace("V", "/no/hay/nada.mdb", "T");
    return base.Termina();
}

const std::vector<QByteArray>& Ficheros()
{
    static const std::vector<QByteArray> ficheros = [] {
        std::vector<QByteArray> todos = {Fabricada()};
        for (const QString& muestra : Muestras())
            todos.push_back(BytesDeMuestra(muestra));
        return todos;
    }();
    return ficheros;
}

constexpr std::size_t TamParche = 4;

/// The first byte chooses a sound file, and each four further ones change a byte of it: three for
/// the place, one for the value. So a short input damages a file in many places at once. A first
/// byte that chooses none makes a file of the rest.
QByteArray FicheroDe(const std::uint8_t* datos, std::size_t cuantos)
{
    const std::size_t elegido = datos[0];
    if (elegido >= Ficheros().size())
        return {reinterpret_cast<const char*>(datos + 1), static_cast<qsizetype>(cuantos - 1)};
    QByteArray fichero = Ficheros()[elegido];
    for (std::size_t i = 1; i + TamParche <= cuantos; i += TamParche) {
        const qsizetype sitio =
            (datos[i] << 16 | datos[i + 1] << 8 | datos[i + 2]) % fichero.size();
        fichero[sitio] = static_cast<char>(datos[i + 3]);
    }
    return fichero;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos)
{
    if (cuantos > 0)
        LeeTodo(FicheroDe(datos, cuantos));
    return 0;
}
