#include "data/access/mdb/base_fabricada.h"
#include <QtEndian>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

constexpr int Tam = 4096;
constexpr int CabeceraFilas = 14;
constexpr quint32 Lval = 0x4C41564C;
constexpr int DiasDeCreacion = 38135;

template <typename T> QByteArray Numero(T valor)
{
    QByteArray bytes(sizeof(T), '\0');
    qToLittleEndian(valor, bytes.data());
    return bytes;
}

QByteArray Utf16(const QString& texto)
{
    QByteArray bytes;
    for (const QChar c : texto)
        bytes += Numero<quint16>(c.unicode());
    return bytes;
}

/// As Access does it: compressed from three characters on, when they are all Latin-1.
QByteArray Texto(const QString& texto)
{
    bool cabe = texto.size() >= 3;
    for (const QChar c : texto)
        cabe = cabe && c.unicode() >= 1 && c.unicode() <= 0xFF;
    return cabe ? QByteArray("\xFF\xFE") + texto.toLatin1() : Utf16(texto);
}

bool EsLarga(TipoColumna tipo)
{
    return tipo == TipoColumna::Memo || tipo == TipoColumna::Ole;
}

bool EsVariable(TipoColumna tipo)
{
    return tipo == TipoColumna::Texto || tipo == TipoColumna::Binario || EsLarga(tipo);
}

QByteArray Fijo(TipoColumna tipo, const Dato& dato)
{
    switch (tipo) {
    case TipoColumna::Logico:
        return {};
    case TipoColumna::Byte:
        return Numero(static_cast<quint8>(Como<qint64>(dato)));
    case TipoColumna::Entero:
        return Numero(static_cast<qint16>(Como<qint64>(dato)));
    case TipoColumna::Moneda:
        return Numero(Como<Moneda>(dato).diezmilesimas);
    case TipoColumna::Doble:
        return Numero(Como<double>(dato));
    case TipoColumna::Fecha:
        return Numero(Como<Fecha>(dato).dias);
    default:
        return Numero(static_cast<qint32>(Como<qint64>(dato)));
    }
}

std::vector<ColumnaFabricada> ColumnasDelCatalogo()
{
    return {{"Id", TipoColumna::Largo},         {"ParentId", TipoColumna::Largo},
            {"Name", TipoColumna::Texto, 64},   {"Type", TipoColumna::Entero},
            {"DateCreate", TipoColumna::Fecha}, {"DateUpdate", TipoColumna::Fecha},
            {"Flags", TipoColumna::Largo},      {"Database", TipoColumna::Memo},
            {"Connect", TipoColumna::Memo},     {"ForeignName", TipoColumna::Texto, 64}};
}

Dato TextoONulo(const QString& texto)
{
    return texto.isEmpty() ? Dato{} : Dato{texto};
}

} // namespace

const QByteArray& VeloDeCabecera()
{
    static const QByteArray velo =
        QByteArray::fromHex("b56f03626108c255eba96772433f009c7a9f90ff809a31c579baed30bcdfcc9d"
                            "63d9e4c37b42fb8abc4e86fbec375d449cfac65e28e613b68a6054947b36f572"
                            "dfb177f41343cfafb1333461795b92b57c2a05f17c99011b98fd124f4a946c3e"
                            "60265f95f8d089248567c61f2744d2eecf65edff07c746a178160cede92d62d4");
    return velo;
}

BaseFabricada::BaseFabricada()
{
    for (int i = 0; i < 3; ++i)
        NuevaPagina();
    std::memcpy(En(0, 0), "\x00\x01\x00\x00Standard Jet DB\x00\x01", 21);
    const QByteArray& velo = VeloDeCabecera();
    std::memcpy(En(0, 0x18), velo.data(), static_cast<std::size_t>(velo.size()));
    const auto descubre = [&](int posicion, const QByteArray& valor) {
        for (int i = 0; i < valor.size(); ++i)
            En(0, posicion + i)[0] = static_cast<char>(En(0, posicion + i)[0] ^ valor[i]);
    };
    descubre(0x3C, Numero<quint16>(1252));
    descubre(0x6E, Numero<quint16>(0x0409));
    descubre(0x72, Numero(DiasDeCreacion + 0.74));
    for (int i = 0; i < 10; ++i)
        descubre(0x42 + 4 * i, Numero<quint32>(DiasDeCreacion));
}

quint32 BaseFabricada::NuevaPagina()
{
    bytes_.append(Tam, '\0');
    return static_cast<quint32>(bytes_.size() / Tam - 1);
}

char* BaseFabricada::En(quint32 pagina, int posicion)
{
    return bytes_.data() + qsizetype{pagina} * Tam + posicion;
}

void BaseFabricada::Pon16(quint32 pagina, int posicion, quint16 valor)
{
    qToLittleEndian(valor, En(pagina, posicion));
}

void BaseFabricada::Pon32(quint32 pagina, int posicion, quint32 valor)
{
    qToLittleEndian(valor, En(pagina, posicion));
}

quint32 BaseFabricada::AnadeFila(Montaje& montaje, const QByteArray& fila)
{
    const auto libres = [&] { return qFromLittleEndian<quint16>(En(montaje.enCurso, 2)); };
    const auto filas = [&] { return qFromLittleEndian<quint16>(En(montaje.enCurso, 12)); };
    if (montaje.enCurso == 0 || libres() < fila.size() + 2 || filas() == 255) {
        montaje.enCurso = NuevaPagina();
        montaje.propias.push_back(montaje.enCurso);
        Pon16(montaje.enCurso, 0, 0x0101);
        Pon16(montaje.enCurso, 2, Tam - CabeceraFilas);
        Pon32(montaje.enCurso, 4, montaje.duenio);
    }
    const quint16 ranura = filas();
    const int tabla = CabeceraFilas + 2 * ranura;
    const auto posicion = static_cast<quint16>(tabla + libres() - fila.size());
    std::memcpy(En(montaje.enCurso, posicion), fila.data(), static_cast<std::size_t>(fila.size()));
    Pon16(montaje.enCurso, tabla, posicion);
    Pon16(montaje.enCurso, 12, static_cast<quint16>(ranura + 1));
    Pon16(montaje.enCurso, 2, static_cast<quint16>(posicion - tabla - 2));
    return montaje.enCurso << 8 | ranura;
}

QByteArray BaseFabricada::Largo(Montaje& largos, const Dato& dato)
{
    const QString* texto = std::get_if<QString>(&dato);
    const QByteArray valor = texto != nullptr ? Texto(*texto) : Como<QByteArray>(dato);
    const auto largo = static_cast<quint32>(valor.size());
    if (largo <= 64)
        return Numero(0x80000000U | largo) + QByteArray(8, '\0') + valor;
    const quint32 fila = AnadeFila(largos, valor);
    return Numero(0x40000000U | largo) + Numero(fila) + QByteArray(4, '\0');
}

QByteArray BaseFabricada::Fila(const std::vector<ColumnaFabricada>& columnas,
                               const std::vector<Dato>& datos, std::vector<Montaje>& largos)
{
    QByteArray fila = Numero(static_cast<quint16>(columnas.size()));
    QByteArray mascara(static_cast<qsizetype>((columnas.size() + 7) / 8), '\0');
    for (std::size_t i = 0; i < columnas.size(); ++i) {
        const bool logico = columnas[i].tipo == TipoColumna::Logico;
        if (logico ? Como<bool>(datos[i]) : !EsNulo(datos[i]))
            mascara[static_cast<qsizetype>(i / 8)] =
                static_cast<char>(mascara[static_cast<qsizetype>(i / 8)] | 1 << i % 8);
        if (!EsVariable(columnas[i].tipo))
            fila += Fijo(columnas[i].tipo, datos[i]);
    }
    QByteArray ranuras;
    quint16 cuantas = 0;
    for (std::size_t i = 0; i < columnas.size(); ++i) {
        if (!EsVariable(columnas[i].tipo))
            continue;
        ranuras.prepend(Numero(static_cast<quint16>(fila.size())));
        ++cuantas;
        if (EsNulo(datos[i]))
            continue;
        if (columnas[i].tipo == TipoColumna::Texto)
            fila += Texto(Como<QString>(datos[i]));
        else if (columnas[i].tipo == TipoColumna::Binario)
            fila += Como<QByteArray>(datos[i]);
        else
            fila += Largo(largos[i], datos[i]);
    }
    if (cuantas > 0)
        fila += Numero(static_cast<quint16>(fila.size())) + ranuras + Numero(cuantas);
    return fila + mascara;
}

QByteArray BaseFabricada::Mapa(const std::vector<quint32>& paginas)
{
    constexpr quint32 porPagina = 8 * (Tam - 4);
    const quint32 ultima = paginas.empty() ? 0 : paginas.back();
    QByteArray fila(69, '\0');
    if (ultima < 512) {
        for (const quint32 pagina : paginas)
            fila[5 + pagina / 8] = static_cast<char>(fila[5 + pagina / 8] | 1 << pagina % 8);
        return fila;
    }
    fila[0] = 1;
    for (const quint32 pagina : paginas) {
        char* referencia = fila.data() + 1 + 4 * (pagina / porPagina);
        if (qFromLittleEndian<quint32>(referencia) == 0) {
            const quint32 nueva = NuevaPagina();
            Pon16(nueva, 0, 0x0105);
            qToLittleEndian(nueva, referencia);
        }
        const quint32 bit = pagina % porPagina;
        char* byte = En(qFromLittleEndian<quint32>(referencia), 4 + static_cast<int>(bit / 8));
        *byte = static_cast<char>(*byte | 1 << bit % 8);
    }
    return fila;
}

void BaseFabricada::PonDefinicion(quint32 pagina, const std::vector<ColumnaFabricada>& columnas,
                                  int filas, quint32 mapas)
{
    QByteArray bloques;
    QByteArray nombres;
    QByteArray largos;
    quint16 numero = 0;
    quint16 variables = 0;
    quint16 desplazamiento = 0;
    quint32 mapaDeLargo = mapas << 8 | 2;
    for (const ColumnaFabricada& columna : columnas) {
        const bool variable = EsVariable(columna.tipo);
        const auto ancho = static_cast<quint16>(Fijo(columna.tipo, {}).size());
        bloques += QByteArray(1, static_cast<char>(columna.tipo)) + Numero<quint32>(1625) +
                   Numero(numero) + Numero(variables) + Numero(static_cast<quint16>(numero + 1)) +
                   Numero<quint32>(0x0409) + QByteArray(1, variable ? 2 : 3) + QByteArray(1, 1) +
                   QByteArray(4, '\0') + Numero(variable ? quint16{0} : desplazamiento) +
                   Numero(static_cast<quint16>(variable ? 2 * columna.caracteres : ancho));
        nombres += Numero(static_cast<quint16>(2 * columna.nombre.size())) + Utf16(columna.nombre);
        if (EsLarga(columna.tipo))
            largos += Numero(numero) + Numero(mapaDeLargo++) + Numero<quint32>(0);
        variables = static_cast<quint16>(variables + (variable ? 1 : 0));
        desplazamiento = static_cast<quint16>(desplazamiento + (variable ? 0 : ancho));
        ++numero;
    }
    QByteArray todo(0x3F, '\0');
    todo += bloques + nombres + largos + "\xFF\xFF";
    std::memcpy(En(pagina, 0), todo.data(), static_cast<std::size_t>(todo.size()));
    Pon16(pagina, 0, 0x0102);
    Pon32(pagina, 8, static_cast<quint32>(todo.size()));
    Pon32(pagina, 0x0C, 1625);
    Pon32(pagina, 0x10, static_cast<quint32>(filas));
    *En(pagina, 0x28) = 'N';
    Pon16(pagina, 0x29, numero);
    Pon16(pagina, 0x2B, variables);
    Pon16(pagina, 0x2D, numero);
    Pon32(pagina, 0x37, mapas << 8);
    Pon32(pagina, 0x3B, mapas << 8 | 1);
}

void BaseFabricada::PonTabla(quint32 definicion, const std::vector<ColumnaFabricada>& columnas,
                             int filas, const DaFila& daFila)
{
    Montaje datos{.duenio = definicion};
    std::vector<Montaje> largos(columnas.size(), {.duenio = Lval});
    for (int i = 0; i < filas; ++i)
        AnadeFila(datos, Fila(columnas, daFila(i), largos));
    Montaje mapas;
    AnadeFila(mapas, Mapa(datos.propias));
    AnadeFila(mapas, Mapa({}));
    for (std::size_t i = 0; i < columnas.size(); ++i) {
        if (EsLarga(columnas[i].tipo))
            AnadeFila(mapas, Mapa(largos[i].propias));
    }
    PonDefinicion(definicion, columnas, filas, mapas.enCurso);
}

void BaseFabricada::Tabla(const QString& nombre, const std::vector<ColumnaFabricada>& columnas,
                          int filas, const DaFila& daFila)
{
    const quint32 definicion = NuevaPagina();
    PonTabla(definicion, columnas, filas, daFila);
    objetos_.push_back({definicion, nombre, 1, {}, {}, {}});
}

void BaseFabricada::Enlace(const QString& nombre, const QString& fichero,
                           const QString& nombreAjeno, const QString& conexion)
{
    const auto id = 0x80000000U + static_cast<quint32>(objetos_.size());
    objetos_.push_back({id, nombre, 6, fichero, nombreAjeno, conexion});
}

void BaseFabricada::Contrasena(const QString& contrasena)
{
    const QByteArray valor = Utf16(contrasena);
    for (int i = 0; i < valor.size(); ++i)
        *En(0, 0x42 + i) = static_cast<char>(*En(0, 0x42 + i) ^ valor[i]);
}

void BaseFabricada::Cifra()
{
    *En(0, 0x3E) = static_cast<char>(*En(0, 0x3E) ^ 0x11);
}

QByteArray BaseFabricada::Termina()
{
    const auto columnas = ColumnasDelCatalogo();
    const auto fila = [&](int i) -> std::vector<Dato> {
        const Objeto& o = objetos_[static_cast<std::size_t>(i)];
        return {qint64{static_cast<qint32>(o.id)},
                qint64{0x0F000001},
                o.nombre,
                qint64{o.clase},
                Fecha{DiasDeCreacion},
                Fecha{DiasDeCreacion},
                qint64{0},
                TextoONulo(o.fichero),
                TextoONulo(o.conexion),
                TextoONulo(o.nombreAjeno)};
    };
    PonTabla(2, columnas, static_cast<int>(objetos_.size()), fila);
    Montaje global{.enCurso = 0};
    Pon16(1, 0, 0x0101);
    Pon16(1, 2, Tam - CabeceraFilas);
    global.enCurso = 1;
    AnadeFila(global, QByteArray(69, '\0'));
    AnadeFila(global, QByteArray(69, '\0'));
    return bytes_;
}

} // namespace tolmo::data::access::mdb
