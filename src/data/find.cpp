#include "data/find.h"
#include "data/clase_columna.h"
#include "data/errores.h"
#include <QRegularExpression>
#include <QStringList>
#include <compare>

namespace tolmo::data {
namespace {

enum class Operador { Igual, Distinto, Menor, Mayor, MenorIgual, MayorIgual, Como };

[[noreturn]] void CriterioNoValido(const QString& criterio)
{
    throw ErrorDatos(numero_error::CriterioNoValido,
                     QStringLiteral("No se puede buscar por %1").arg(criterio),
                     QStringLiteral("Recordset"));
}

struct Criterio {
    QString columna{};
    Operador operador = Operador::Igual;
    QString valor{};
};

Operador LeeOperador(const QString& texto)
{
    static const QHash<QString, Operador> operadores{
        {QStringLiteral("="), Operador::Igual},       {QStringLiteral("<>"), Operador::Distinto},
        {QStringLiteral("<"), Operador::Menor},       {QStringLiteral(">"), Operador::Mayor},
        {QStringLiteral("<="), Operador::MenorIgual}, {QStringLiteral(">="), Operador::MayorIgual}};
    return operadores.value(texto, Operador::Como);
}

/// The text between quotes, or between the marks of a date; any other as it stands.
QString SinComillas(const QString& texto, const QString& criterio)
{
    if (texto.startsWith(u'#') && texto.endsWith(u'#') && texto.size() > 1)
        return texto.mid(1, texto.size() - 2);
    if (!texto.startsWith(u'\''))
        return texto;
    static const QRegularExpression entreComillas(QStringLiteral("^'((?:[^']|'')*)'$"),
                                                  QRegularExpression::DotMatchesEverythingOption);
    const auto hallado = entreComillas.match(texto);
    if (!hallado.hasMatch())
        CriterioNoValido(criterio);
    return hallado.captured(1).replace(QStringLiteral("''"), QStringLiteral("'"));
}

Criterio LeeCriterio(const QString& texto)
{
    static const QRegularExpression forma(
        QStringLiteral(
            R"(^\s*(?:\[([^\]]+)\]|([^\s<>=]+))\s*(<=|>=|<>|=|<|>|\blike\b)\s*(.*?)\s*$)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto hallado = forma.match(texto);
    if (!hallado.hasMatch())
        CriterioNoValido(texto);
    return {.columna = hallado.captured(1) + hallado.captured(2),
            .operador = LeeOperador(hallado.captured(3)),
            .valor = SinComillas(hallado.captured(4), texto)};
}

/// A text with signs that stand for anything, cut at them.
class Molde {
  public:
    explicit Molde(QString patron) : piezas_(patron.replace(u'%', u'*').split(u'*')) {}

    bool Casa(const QString& texto) const
    {
        const QString& primera = piezas_.front();
        if (piezas_.size() == 1)
            return texto.compare(primera, Qt::CaseInsensitive) == 0;
        if (!texto.startsWith(primera, Qt::CaseInsensitive))
            return false;
        qsizetype desde = primera.size();
        for (qsizetype i = 1; i + 1 < piezas_.size(); ++i) {
            desde = texto.indexOf(piezas_[i], desde, Qt::CaseInsensitive);
            if (desde < 0)
                return false;
            desde += piezas_[i].size();
        }
        const QString& ultima = piezas_.back();
        return texto.size() - ultima.size() >= desde && texto.endsWith(ultima, Qt::CaseInsensitive);
    }

  private:
    QStringList piezas_;
};

/// A criterion made ready for the column that it is about.
class Comparador {
  public:
    Comparador(const QString& texto, const Recordset& filas)
        : criterio_(LeeCriterio(texto)), columna_(filas.Indice(criterio_.columna)),
          clase_(ClaseDe(filas.Campos()[static_cast<std::size_t>(columna_)].tipo)),
          molde_(criterio_.valor)
    {
        if (!Prepara())
            CriterioNoValido(texto);
    }

    bool Casa(const Recordset& filas) const
    {
        const Valor& valor = filas[columna_];
        if (valor.isNull())
            return false;
        if (criterio_.operador == Operador::Como)
            return molde_.Casa(Texto(valor));
        return Cumple(Compara(valor));
    }

  private:
    bool Prepara()
    {
        if (criterio_.operador == Operador::Como || clase_ == ClaseColumna::Texto)
            return true;
        if (clase_ == ClaseColumna::Fecha) {
            fecha_ = LeeFecha(criterio_.valor);
            return fecha_.isValid();
        }
        const auto logico = LeeLogico(criterio_.valor);
        if (clase_ == ClaseColumna::Logico) {
            numero_ = logico.value_or(false) ? 1 : 0;
            return logico.has_value() && !criterio_.valor.isEmpty();
        }
        numero_ = ValorNumerico(criterio_.valor);
        return EsNumerico(criterio_.valor);
    }

    std::partial_ordering Compara(const Valor& valor) const
    {
        switch (clase_) {
        case ClaseColumna::Numero:
            return ValorNumerico(valor) <=> numero_;
        case ClaseColumna::Logico:
            return (EstaVacio(valor) ? 0.0 : 1.0) <=> numero_;
        case ClaseColumna::Fecha:
            return MomentoDe(valor).toMSecsSinceEpoch() <=> fecha_.toMSecsSinceEpoch();
        case ClaseColumna::Texto:
            break;
        }
        return Texto(valor).compare(criterio_.valor, Qt::CaseInsensitive) <=> 0;
    }

    bool Cumple(std::partial_ordering orden) const
    {
        switch (criterio_.operador) {
        case Operador::Igual:
            return orden == 0;
        case Operador::Distinto:
            return orden != 0;
        case Operador::Menor:
            return orden < 0;
        case Operador::Mayor:
            return orden > 0;
        case Operador::MenorIgual:
            return orden <= 0;
        default:
            return orden >= 0;
        }
    }

    Criterio criterio_;
    int columna_;
    ClaseColumna clase_;
    Molde molde_;
    double numero_ = 0;
    QDateTime fecha_{};
};

} // namespace

bool Find(Recordset& filas, const QString& criterio, int saltar, Sentido sentido)
{
    const Comparador comparador(criterio, filas);
    const auto avanza = [&] {
        sentido == Sentido::Siguiente ? filas.Siguiente() : filas.Anterior();
    };
    for (int i = 0; i < saltar; ++i)
        avanza();
    while (!filas.Fin() && !filas.Principio() && !comparador.Casa(filas))
        avanza();
    return !filas.Fin() && !filas.Principio();
}

} // namespace tolmo::data
