#include "data/access/lectura.h"
#include "data/access/colacion.h"
#include "data/access/errores_access.h"
#include "data/access/fechas.h"
#include "data/access/funciones.h"
#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

Valor LeeEntero(qlonglong numero)
{
    const bool cabe =
        numero >= std::numeric_limits<int>::min() && numero <= std::numeric_limits<int>::max();
    return cabe ? Valor(static_cast<int>(numero)) : Valor(numero);
}

Valor LeeFecha(const Preparada& p, int columna)
{
    const auto iso = LeeIso(p.Bytes(columna));
    if (iso)
        return AFechaHora(*iso);
    if (p.Clase(columna) != SQLITE_TEXT)
        return AFechaHora(DesdeSerie(p.Decimal(columna)));
    const auto momento = LeeMomento(p.Texto(columna));
    return momento ? Valor(AFechaHora(*momento)) : Valor(p.Texto(columna));
}

Valor LeeComoEsta(const Preparada& p, int columna)
{
    switch (p.Clase(columna)) {
    case SQLITE_INTEGER:
        return LeeEntero(p.Entero(columna));
    case SQLITE_FLOAT:
        return p.Decimal(columna);
    default:
        return p.Texto(columna);
    }
}

Valor LeeNumero(const Preparada& p, int columna, Tipo tipo)
{
    // A file of another program may hold a text in a column of numbers: it is shown as it stands.
    if (p.Clase(columna) == SQLITE_TEXT)
        return p.Texto(columna);
    switch (tipo) {
    case Tipo::Simple:
        return static_cast<float>(p.Decimal(columna));
    case Tipo::Doble:
        return p.Decimal(columna);
    case Tipo::Moneda:
        return RedondeaPar(p.Decimal(columna), 4);
    case Tipo::Grande:
        return p.Entero(columna);
    default:
        return p.Clase(columna) == SQLITE_INTEGER ? LeeEntero(p.Entero(columna))
                                                  : Valor(p.Decimal(columna));
    }
}

Valor LeeValor(const Preparada& p, int columna, Tipo tipo)
{
    if (EsTexto(tipo))
        return p.Texto(columna);
    if (tipo == Tipo::Logico)
        return p.Decimal(columna) != 0;
    if (EsNumero(tipo))
        return LeeNumero(p, columna, tipo);
    if (tipo == Tipo::Fecha)
        return LeeFecha(p, columna);
    if (tipo == Tipo::Binario) {
        const auto bytes = p.Bytes(columna);
        return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    return LeeComoEsta(p, columna);
}

/// The values of the hidden columns of one row, by which the rows after it may be its ties.
class ClavesDeFila {
  public:
    ClavesDeFila(const Preparada& p, const Plan& plan)
        : primera_(static_cast<int>(plan.campos.size()))
    {
        for (std::size_t i = 0; i < plan.clavesTope.size(); ++i)
            valores_.emplace_back(sqlite3_value_dup(p.Valor(primera_ + static_cast<int>(i))));
    }

    bool EsIgual(const Preparada& p) const
    {
        for (std::size_t i = 0; i < valores_.size(); ++i) {
            if (!Iguales(valores_[i].get(), p, primera_ + static_cast<int>(i)))
                return false;
        }
        return !valores_.empty();
    }

  private:
    struct Libera {
        void operator()(sqlite3_value* valor) const { sqlite3_value_free(valor); }
    };

    static bool Iguales(sqlite3_value* a, const Preparada& p, int columna)
    {
        const int clase = sqlite3_value_type(a);
        const bool texto = clase == SQLITE_TEXT;
        if (clase == SQLITE_NULL || p.EsNulo(columna) || texto != (p.Clase(columna) == SQLITE_TEXT))
            return clase == SQLITE_NULL && p.EsNulo(columna);
        if (!texto)
            return sqlite3_value_double(a) == p.Decimal(columna);
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(a));
        return ComparaTextos({bytes, static_cast<std::size_t>(sqlite3_value_bytes(a))},
                             p.Bytes(columna)) == 0;
    }

    int primera_;
    std::vector<std::unique_ptr<sqlite3_value, Libera>> valores_;
};

std::size_t FilasDelTope(Preparada& p, const Tope& tope)
{
    if (!tope.porCiento)
        return static_cast<std::size_t>(tope.cuantos);
    double total = 0;
    while (p.Paso())
        ++total;
    p.Reinicia();
    return static_cast<std::size_t>(std::ceil(total * tope.cuantos / 100));
}

void LeeFila(const Preparada& p, const Plan& plan, Filas& filas)
{
    const Valor nulo = Nulo();
    for (std::size_t i = 0; i < plan.tipos.size(); ++i) {
        const int columna = static_cast<int>(i);
        if (p.EsNulo(columna))
            filas.valores.push_back(nulo);
        else
            filas.valores.push_back(LeeValor(p, columna, plan.tipos[i]));
    }
    if (!plan.tabla.isEmpty())
        filas.claves.emplace_back(
            p.Entero(static_cast<int>(plan.tipos.size() + plan.clavesTope.size())));
}

// A column without a declared type gets the number of what it first holds.
void PonTiposVistos(const Plan& plan, Filas& filas)
{
    const std::size_t columnas = plan.tipos.size();
    for (std::size_t c = 0; c < columnas; ++c) {
        for (std::size_t i = c; plan.tipos[c] == Tipo::Desconocido && i < filas.valores.size();
             i += columnas) {
            if (EsNulo(filas.valores[i]))
                continue;
            const int tipo = filas.valores[i].typeId();
            filas.campos[c].tipo = tipo == QMetaType::QString  ? NumeroAdo(Tipo::Texto)
                                   : tipo == QMetaType::Double ? NumeroAdo(Tipo::Doble)
                                                               : NumeroAdo(Tipo::Entero);
            break;
        }
    }
}

} // namespace

void LeeFilas(Preparada& preparada, const Plan& plan, Filas& filas)
{
    filas.campos = plan.campos;
    filas.tabla = plan.tabla;
    const std::size_t limite = plan.tope ? FilasDelTope(preparada, *plan.tope) : 0;
    std::optional<ClavesDeFila> ultima;
    for (std::size_t fila = 0; preparada.Paso(); ++fila) {
        if (plan.tope && fila >= limite && (!ultima || !ultima->EsIgual(preparada)))
            break;
        LeeFila(preparada, plan, filas);
        if (plan.tope && fila + 1 == limite)
            ultima.emplace(preparada, plan);
    }
    PonTiposVistos(plan, filas);
}

void LigaLiterales(Preparada& preparada, const std::vector<Lexema>& lexemas)
{
    for (const Lexema& lexema : lexemas) {
        if (lexema.literal < 0)
            continue;
        const int parametro = lexema.literal + 1;
        if (lexema.EsLargo()) {
            preparada.Liga(parametro, lexema.texto);
        } else if (lexema.ficha == Ficha::Entero) {
            preparada.Liga(parametro, lexema.texto.toLongLong());
        } else if (lexema.ficha == Ficha::Decimal) {
            preparada.Liga(parametro, lexema.texto.toDouble());
        } else if (lexema.ficha == Ficha::Fecha) {
            const auto momento = LeeMomento(lexema.texto, OrdenFecha::MesDia);
            if (!momento)
                RechazaEn(lexema.posicion,
                          QStringLiteral("Error de sintaxis en la fecha #%1#").arg(lexema.texto));
            preparada.Liga(parametro, Iso(*momento));
        } else {
            preparada.Liga(parametro, lexema.texto);
        }
    }
}

void LigaValor(Preparada& preparada, int parametro, const Valor& valor)
{
    if (!valor.isValid() || EsNulo(valor)) {
        preparada.LigaNulo(parametro);
        return;
    }
    switch (valor.typeId()) {
    case QMetaType::Bool:
        preparada.Liga(parametro, static_cast<qlonglong>(valor.toBool() ? -1 : 0));
        break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::LongLong:
        preparada.Liga(parametro, valor.toLongLong());
        break;
    case QMetaType::Double:
    case QMetaType::Float:
        preparada.Liga(parametro, valor.toDouble());
        break;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        preparada.Liga(parametro, Iso(DesdeFechaHora(MomentoDe(valor))));
        break;
    default:
        preparada.Liga(parametro, valor.toString());
    }
}

Trozo TrozoDeValor(int parametro, const Valor& valor)
{
    Trozo trozo;
    trozo.sql = u'?' + QString::number(parametro);
    if (valor.isValid() && !EsNulo(valor))
        trozo.tipo = EsFecha(valor)                      ? Tipo::Fecha
                     : valor.typeId() == QMetaType::Bool ? Tipo::Corto
                     : data::EsNumero(valor)             ? Tipo::Doble
                                                         : Tipo::Memo;
    return trozo;
}

} // namespace tolmo::data::access
