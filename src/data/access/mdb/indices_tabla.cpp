#include "data/access/mdb/indices_tabla.h"
#include "data/access/mdb/escribe_bytes.h"
#include <QStringList>
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

/// False when the keys of a column aren't known, so that an index of it can't be changed.
bool SeOrdena(const Columna& columna)
{
    switch (columna.tipo) {
    case TipoColumna::Texto:
    case TipoColumna::Memo:
        return OrdenConocido(columna.orden);
    case TipoColumna::Ole:
    case TipoColumna::FechaExtendida:
        return false;
    default:
        return true;
    }
}

/// Letters that count one place or two, by the engine that wrote them, lie behind the ASCII ones.
bool TieneDosClaves(const Dato& dato)
{
    const auto* texto = std::get_if<QString>(&dato);
    return texto != nullptr &&
           std::any_of(texto->begin(), texto->end(), [](QChar c) { return c.unicode() > 0x7F; });
}

} // namespace

QString Campo(const Definicion& definicion, const Columna& columna)
{
    return definicion.nombre.isEmpty() ? columna.nombre : definicion.nombre + u'.' + columna.nombre;
}

void FaltaValor(const Definicion& definicion, const Columna& columna, const QString& indice)
{
    throw ErrorMdb(
        Motivo::SinValor,
        QStringLiteral("El campo %1 no puede quedar sin valor").arg(Campo(definicion, columna)),
        {.indice = indice});
}

IndicesDeTabla::IndicesDeTabla(PaginasEscribibles& paginas, const Tabla& tabla)
    : paginas_(paginas), tabla_(tabla)
{
    const Definicion& definicion = tabla.definicion();
    for (const IndiceReal& real : definicion.indicesReales) {
        Indice indice{.real = &real,
                      .unico = real.Unico(),
                      .obligatorio = real.Obligatorio(),
                      .arbol = ArbolIndice(paginas, definicion.pagina, real)};
        for (const IndiceLogico& logico : definicion.indicesLogicos) {
            if (logico.real != indices_.size())
                continue;
            const bool primario = logico.clase == ClaseIndice::Primario;
            if (indice.nombre.isEmpty() || primario)
                indice.nombre = logico.nombre;
            indice.unico = indice.unico || primario;
            indice.obligatorio = indice.obligatorio || primario;
        }
        for (const ColumnaIndice& en : real.columnas) {
            const Columna* columna = definicion.ColumnaDe(en.numero);
            if (columna == nullptr || !SeOrdena(*columna))
                throw ErrorMdb(Motivo::NoAdmitido,
                               QStringLiteral("No se escribe en la tabla: el orden de uno de sus "
                                              "índices no se conoce"),
                               {.tabla = tabla.Nombre(),
                                .columna = columna != nullptr ? columna->nombre : QString(),
                                .indice = indice.nombre});
            indice.columnas.push_back(
                static_cast<std::size_t>(columna - definicion.columnas.data()));
        }
        indices_.push_back(std::move(indice));
    }
}

std::vector<Dato> IndicesDeTabla::Suyos(std::size_t indice, std::span<const Dato> valores) const
{
    std::vector<Dato> suyos;
    for (const std::size_t columna : indices_[indice].columnas)
        suyos.push_back(valores[columna]);
    return suyos;
}

ClaveDeFila IndicesDeTabla::ClaveCon(std::size_t indice, std::span<const Dato> suyos,
                                     Expansion expansion) const
{
    return ClaveDe(tabla_.definicion(), *indices_[indice].real, suyos,
                   {.version = paginas_.formato().version, .expansion = expansion});
}

void IndicesDeTabla::CompruebaNulos(const Indice& indice, std::span<const Dato> suyos) const
{
    for (std::size_t i = 0; indice.obligatorio && i < suyos.size(); ++i) {
        if (EsNulo(suyos[i]))
            FaltaValor(tabla_.definicion(), tabla_.definicion().columnas[indice.columnas[i]],
                       indice.nombre);
    }
}

ClaveDeFila IndicesDeTabla::Clave(std::size_t indice, std::span<const Dato> valores) const
{
    const std::vector<Dato> suyos = Suyos(indice, valores);
    CompruebaNulos(indices_[indice], suyos);
    ClaveDeFila clave = ClaveCon(indice, suyos, Expansion::UnLugar);
    if (clave.caso == ClaveDeFila::Caso::NoSeSabe)
        throw ErrorMdb(Motivo::Valor,
                       QStringLiteral("El texto de %1 tiene caracteres que un índice no admite")
                           .arg(Campos(indices_[indice])),
                       {.indice = indices_[indice].nombre});
    return clave;
}

ClaveDeFila IndicesDeTabla::ClaveVieja(std::size_t indice, std::span<const Dato> valores) const
{
    return ClaveCon(indice, Suyos(indice, valores), Expansion::UnLugar);
}

QString IndicesDeTabla::Campos(const Indice& indice) const
{
    QStringList campos;
    for (const std::size_t columna : indice.columnas)
        campos << Campo(tabla_.definicion(), tabla_.definicion().columnas[columna]);
    return campos.join(QStringLiteral(", "));
}

bool IndicesDeTabla::Tiene(std::size_t indice, std::span<const Dato> deSusColumnas)
{
    const auto tiene = [&](Expansion expansion) {
        const ClaveDeFila clave = ClaveCon(indice, deSusColumnas, expansion);
        return clave.caso == ClaveDeFila::Caso::Entrada &&
               indices_[indice].arbol.Tiene(clave.bytes);
    };
    return tiene(Expansion::UnLugar) ||
           (std::any_of(deSusColumnas.begin(), deSusColumnas.end(), TieneDosClaves) &&
            tiene(Expansion::DosLugares));
}

void IndicesDeTabla::CompruebaUnica(std::size_t indice, std::span<const Dato> valores)
{
    if (!indices_[indice].unico)
        return;
    const std::vector<Dato> suyos = Suyos(indice, valores);
    // Nulls are never equal.
    if (std::any_of(suyos.begin(), suyos.end(), EsNulo) || !Tiene(indice, suyos))
        return;
    Repetida(indices_[indice]);
}

void IndicesDeTabla::Repetida(const Indice& indice) const
{
    throw ErrorMdb(Motivo::ClaveRepetida,
                   QStringLiteral("El valor está duplicado en un índice único: ") + Campos(indice),
                   {.indice = indice.nombre});
}

/// More different keys, in the statistics of the definition.
void IndicesDeTabla::CuentaUnicas(std::size_t indice, quint32 cuantas)
{
    const Formato& f = paginas_.formato();
    const std::size_t posicion = f.bloques + indice * f.tamEstadistica + f.unicasEnEstadistica;
    const auto pagina = paginas_.Cambia(tabla_.definicion().pagina);
    Pon(pagina, posicion, Bytes(pagina).U32(posicion) + cuantas);
}

void IndicesDeTabla::Anade(std::size_t indice, const ClaveDeFila& clave, Puntero fila)
{
    if (clave.caso != ClaveDeFila::Caso::Entrada)
        return;
    if (indices_[indice].arbol.Inserta(clave.bytes, fila))
        CuentaUnicas(indice, 1);
}

void IndicesDeTabla::Llena(std::size_t indice)
{
    const std::vector<Columna>& columnas = tabla_.definicion().columnas;
    std::vector<Dato> valores(columnas.size());
    std::vector<BytesEntrada> entradas;
    for (Cursor cursor(tabla_); cursor.Siguiente();) {
        for (const std::size_t columna : Columnas(indice))
            valores[columna] = cursor.fila().Lee(columnas[columna]);
        const ClaveDeFila clave = Clave(indice, valores);
        if (clave.caso == ClaveDeFila::Caso::Entrada)
            entradas.push_back(EntradaDeHoja(clave.bytes, cursor.puntero()));
    }
    std::sort(entradas.begin(), entradas.end());
    CuentaUnicas(indice, CuantasDistintas(indice, entradas));
    indices_[indice].arbol.Llena(std::move(entradas));
}

/// \throws ErrorMdb when a key comes twice and may not
quint32 IndicesDeTabla::CuantasDistintas(std::size_t indice,
                                         std::span<const BytesEntrada> entradas) const
{
    const auto clave = [](const BytesEntrada& entrada) {
        return std::span(entrada).first(entrada.size() - TamFila);
    };
    quint32 distintas = entradas.empty() ? 0 : 1;
    for (std::size_t i = 1; i < entradas.size(); ++i) {
        if (!Iguales(clave(entradas[i - 1]), clave(entradas[i])))
            ++distintas;
        else if (indices_[indice].unico && !TieneNulos(indice, Entrada(entradas[i], false).Fila()))
            Repetida(indices_[indice]);
    }
    return distintas;
}

bool IndicesDeTabla::TieneNulos(std::size_t indice, Puntero fila) const
{
    const std::vector<Columna>& columnas = tabla_.definicion().columnas;
    const std::optional<Fila> leida = tabla_.FilaEn(fila);
    return std::ranges::any_of(Columnas(indice), [&](std::size_t columna) {
        return EsNulo(leida.value().Lee(columnas[columna]));
    });
}

/// What the key of these values starts with, whichever engine wrote it: up to where the codes of
/// its first text end.
QByteArray IndicesDeTabla::PrincipioSeguro(std::size_t indice, std::span<const Dato> suyos) const
{
    QByteArray principio;
    const ReglasClave reglas{.version = paginas_.formato().version};
    for (std::size_t i = 0; i < suyos.size(); ++i) {
        const ColumnaIndice& en = indices_[indice].real->columnas[i];
        const Columna& columna = *tabla_.definicion().ColumnaDe(en.numero);
        const auto parte = ClaveDeValor(suyos[i], columna, en.descendente, reglas);
        if (!parte)
            break;
        if (std::holds_alternative<QString>(suyos[i]))
            return principio + HastaFinDeCodigos(*parte, en.descendente);
        principio += *parte;
    }
    return principio;
}

void IndicesDeTabla::Quita(std::size_t indice, std::span<const Dato> valores, Puntero fila)
{
    const std::vector<Dato> suyos = Suyos(indice, valores);
    ArbolIndice& arbol = indices_[indice].arbol;
    for (const Expansion expansion : {Expansion::UnLugar, Expansion::DosLugares}) {
        const ClaveDeFila clave = ClaveCon(indice, suyos, expansion);
        if (clave.caso == ClaveDeFila::Caso::SinEntrada)
            return;
        if (clave.caso == ClaveDeFila::Caso::Entrada && arbol.Borra(clave.bytes, fila))
            return;
    }
    if (!arbol.BorraDeFila(PrincipioSeguro(indice, suyos), fila))
        Danado(QStringLiteral("Una fila no está en un índice"),
               {.indice = indices_[indice].nombre, .pagina = fila.pagina});
}

} // namespace tolmo::data::access::mdb
