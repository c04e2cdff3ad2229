#include "data/access/formato.h"
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tolmo::data::access {
namespace {

/// A sign of a number format; `fijo` ones stand for themselves.
struct Signo {
    QChar c{};
    bool fijo = false;
};

using Seccion = std::vector<Signo>;

// Sections are parted by ";": positive, negative, zero.
std::vector<Seccion> Secciones(const QString& formato)
{
    std::vector<Seccion> secciones(1);
    bool comillas = false;
    for (qsizetype i = 0; i < formato.size(); ++i) {
        const QChar c = formato[i];
        if (c == u'"')
            comillas = !comillas;
        else if (comillas)
            secciones.back().push_back({c, true});
        else if (c == u'\\' && i + 1 < formato.size())
            secciones.back().push_back({formato[++i], true});
        else if (c == u';')
            secciones.emplace_back();
        else
            secciones.back().push_back({c, !QStringLiteral("0#.,%").contains(c)});
    }
    return secciones;
}

bool EsCifra(const Signo& signo)
{
    return !signo.fijo && (signo.c == u'0' || signo.c == u'#');
}

/// What a section asks for, read once.
struct Plantilla {
    int enteros = 0;   ///< places before the point
    int decimales = 0; ///< places behind it
    bool grupos = false;
    double escala = 1;
};

Plantilla Lee(const Seccion& seccion)
{
    Plantilla plantilla;
    bool punto = false;
    int comas = 0;
    for (const Signo& signo : seccion) {
        if (EsCifra(signo)) {
            plantilla.grupos = plantilla.grupos || comas > 0;
            comas = 0;
            ++(punto ? plantilla.decimales : plantilla.enteros);
        } else if (!signo.fijo && signo.c == u'.') {
            punto = true;
        } else if (!signo.fijo && signo.c == u',') {
            comas += plantilla.enteros > 0 ? 1 : 0;
        } else if (!signo.fijo && signo.c == u'%') {
            plantilla.escala *= 100;
        }
    }
    // Commas behind the last place divide by a thousand each.
    plantilla.escala /= std::pow(1000.0, comas);
    return plantilla;
}

// Half away from zero, unlike Round; on the 15 digits that a number shows.
QString Redondeado(double numero, int decimales)
{
    const double escala = std::pow(10.0, decimales);
    const double ampliado = QString::number(numero * escala, 'g', 15).toDouble();
    return QString::number(std::floor(ampliado + 0.5) / escala, 'f', decimales);
}

class Escritor {
  public:
    Escritor(const Seccion& seccion, const Plantilla& plantilla, const QString& cifras)
        : seccion_(seccion), plantilla_(plantilla), enteras_(cifras.section(u'.', 0, 0)),
          decimales_(cifras.section(u'.', 1))
    {
        if (enteras_ == QLatin1String("0"))
            enteras_.clear();
        while (decimales_.endsWith(u'0'))
            decimales_.chop(1);
    }

    QString Todo()
    {
        for (const Signo& signo : seccion_) {
            if (signo.fijo || signo.c == u'%')
                texto_ += signo.c;
            else if (signo.c == u'.')
                punto_ = true, texto_ += signo.c;
            else if (EsCifra(signo))
                punto_ ? Decimal(signo.c) : Entera(signo.c);
        }
        return texto_;
    }

  private:
    void Entera(QChar hueco)
    {
        const qsizetype quedan = plantilla_.enteros - usados_++;
        forzado_ = forzado_ || hueco == u'0';
        // The first place takes all the digits that don't have one of their own.
        if (usados_ == 1 && enteras_.size() > quedan) {
            for (qsizetype lugar = enteras_.size(); lugar > quedan; --lugar)
                Cifra(enteras_[enteras_.size() - lugar], lugar);
        }
        if (enteras_.size() >= quedan)
            Cifra(enteras_[enteras_.size() - quedan], quedan);
        else if (forzado_)
            Cifra(u'0', quedan);
    }

    // `lugar` counts from the point leftwards, from 1.
    void Cifra(QChar cifra, qsizetype lugar)
    {
        texto_ += cifra;
        if (plantilla_.grupos && lugar > 1 && lugar % 3 == 1)
            texto_ += u',';
    }

    void Decimal(QChar hueco)
    {
        if (escritos_ < decimales_.size())
            texto_ += decimales_[escritos_];
        else if (hueco == u'0')
            texto_ += hueco;
        ++escritos_;
    }

    const Seccion& seccion_;
    const Plantilla& plantilla_;
    QString enteras_;
    QString decimales_;
    QString texto_;
    bool punto_ = false;
    bool forzado_ = false;
    qsizetype usados_ = 0;
    qsizetype escritos_ = 0;
};

// "0.00E+00": the mantissa by what stands before the E, the exponent by what stands behind.
QString Cientifico(double numero, const QString& formato, qsizetype lugarE)
{
    const int exponente = numero == 0 ? 0 : static_cast<int>(std::floor(std::log10(numero)));
    const QString mantisa = FormatoNumero(numero / std::pow(10.0, exponente), formato.left(lugarE));
    const auto cifras = static_cast<int>(formato.mid(lugarE + 2).count(u'0'));
    const QString signo = exponente < 0                 ? QStringLiteral("-")
                          : formato[lugarE + 1] == u'+' ? QStringLiteral("+")
                                                        : QString();
    return mantisa + formato[lugarE] + signo +
           QString::number(std::abs(exponente)).rightJustified(cifras, u'0');
}

} // namespace

QString FormatoNumero(double numero, const QString& formato)
{
    for (const char* marca : {"E+", "E-"}) {
        const qsizetype lugar = formato.indexOf(QLatin1String(marca), 0, Qt::CaseInsensitive);
        if (lugar > 0 && !formato.contains(u'"'))
            return (numero < 0 ? QStringLiteral("-") : QString()) +
                   Cientifico(std::fabs(numero), formato, lugar);
    }
    const std::vector<Seccion> secciones = Secciones(formato);
    const bool negativa = numero < 0 && secciones.size() > 1 && !secciones[1].empty();
    const bool nula = numero == 0 && secciones.size() > 2 && !secciones[2].empty();
    const Seccion& seccion = secciones[negativa ? 1 : nula ? 2 : 0];
    const Plantilla plantilla = Lee(seccion);
    const QString cifras = Redondeado(std::fabs(numero) * plantilla.escala, plantilla.decimales);
    const QString texto = Escritor(seccion, plantilla, cifras).Todo();
    return numero < 0 && !negativa && cifras.toDouble() != 0 ? u'-' + texto : texto;
}

} // namespace tolmo::data::access
