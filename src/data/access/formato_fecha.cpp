#include "data/access/formato.h"
#include <QStringList>

namespace tolmo::data::access {
namespace {

const QStringList Dias{"domingo", "lunes", "martes", "miércoles", "jueves", "viernes", "sábado"};
const QStringList Meses{"enero", "febrero", "marzo",      "abril",   "mayo",      "junio",
                        "julio", "agosto",  "septiembre", "octubre", "noviembre", "diciembre"};

QString Cifras(int numero, int minimo)
{
    return QString::number(numero).rightJustified(minimo, u'0');
}

class Formateador {
  public:
    Formateador(const Momento& momento, const QString& formato, const Semana& semana)
        : m_(momento), formato_(formato), semana_(semana),
          doceHoras_(formato.contains(QLatin1String("AM/PM"), Qt::CaseInsensitive) ||
                     formato.contains(QLatin1String("A/P"), Qt::CaseInsensitive))
    {
    }

    QString Todo()
    {
        while (p_ < formato_.size())
            texto_ += Pieza();
        return texto_;
    }

  private:
    QString Pieza()
    {
        const QChar c = formato_[p_];
        if (c == u'"')
            return EntreComillas();
        if (c == u'\\') {
            p_ += 2;
            return formato_.mid(p_ - 1, 1);
        }
        for (const char* marca : {"AM/PM", "A/P"}) {
            if (QStringView(formato_).mid(p_).startsWith(QLatin1String(marca), Qt::CaseInsensitive))
                return MediaJornada(marca);
        }
        const QChar letra = c.toLower();
        if (!QStringLiteral("dmyhnsqwtc").contains(letra)) {
            ++p_;
            return c;
        }
        int veces = 0;
        while (p_ < formato_.size() && formato_[p_].toLower() == letra) {
            ++p_;
            ++veces;
        }
        QString pieza = Parte(letra, veces);
        // Behind an hour "m" is a minute.
        trasHora_ = letra == u'h';
        return pieza;
    }

    QString EntreComillas()
    {
        const qsizetype fin = formato_.indexOf(u'"', p_ + 1);
        QString dentro = formato_.mid(p_ + 1, fin < 0 ? -1 : fin - p_ - 1);
        p_ = fin < 0 ? formato_.size() : fin + 1;
        return dentro;
    }

    QString MediaJornada(const char* marca)
    {
        const QString signo = formato_.mid(p_, static_cast<qsizetype>(qstrlen(marca)));
        p_ += signo.size();
        return signo.section(u'/', Hora() < 12 ? 0 : 1, Hora() < 12 ? 0 : 1);
    }

    int Hora() const { return m_.segundos / 3600; }

    QString Parte(QChar letra, int veces) const
    {
        switch (letra.unicode()) {
        case u'd':
            return Dia(veces);
        case u'm':
            return trasHora_ ? Cifras(m_.segundos / 60 % 60, std::min(veces, 2)) : Mes(veces);
        case u'y':
            return veces == 1   ? QString::number(m_.dia.dayOfYear())
                   : veces == 2 ? Cifras(m_.dia.year() % 100, 2)
                                : Cifras(m_.dia.year(), 4);
        case u'h': {
            const int hora = doceHoras_ ? (Hora() + 11) % 12 + 1 : Hora();
            return Cifras(hora, std::min(veces, 2));
        }
        case u'n':
            return Cifras(m_.segundos / 60 % 60, std::min(veces, 2));
        case u's':
            return Cifras(m_.segundos % 60, std::min(veces, 2));
        case u'q':
            return QString::number((m_.dia.month() + 2) / 3);
        case u'w':
            return QString::number(veces == 1 ? DiaSemana(m_.dia, semana_.primerDia)
                                              : NumeroSemana(m_.dia, semana_));
        case u't':
            return QString::asprintf("%d:%02d:%02d", Hora(), m_.segundos / 60 % 60,
                                     m_.segundos % 60);
        default:
            return TextoMomento(m_);
        }
    }

    QString Dia(int veces) const
    {
        const QString& nombre = Dias[DiaSemana(m_.dia, 1) - 1];
        if (veces <= 2)
            return Cifras(m_.dia.day(), veces);
        if (veces == 3)
            return nombre.left(3);
        if (veces == 4)
            return nombre;
        if (veces == 5)
            return TextoMomento({m_.dia, 0});
        return QStringLiteral("%1, %2 de %3 de %4")
            .arg(nombre, QString::number(m_.dia.day()), Mes(4), QString::number(m_.dia.year()));
    }

    QString Mes(int veces) const
    {
        const QString& nombre = Meses[m_.dia.month() - 1];
        if (veces <= 2)
            return Cifras(m_.dia.month(), veces);
        return veces == 3 ? nombre.left(3) : nombre;
    }

    const Momento& m_;
    const QString& formato_;
    const Semana& semana_;
    bool doceHoras_;
    bool trasHora_ = false;
    qsizetype p_ = 0;
    QString texto_;
};

} // namespace

QString FormatoFecha(const Momento& momento, const QString& formato, const Semana& semana)
{
    return Formateador(momento, formato, semana).Todo();
}

int DiaSemana(QDate dia, int primerDia)
{
    const int primero = primerDia == 0 ? 2 : primerDia;
    const int desdeDomingo = dia.dayOfWeek() % 7 + 1;
    return (desdeDomingo - primero + 7) % 7 + 1;
}

int NumeroSemana(QDate dia, const Semana& semana)
{
    const auto primera = [&semana](int anio) {
        const QDate enero(anio, 1, 1);
        const QDate inicio = enero.addDays(1 - DiaSemana(enero, semana.primerDia));
        const qint64 dias = 7 - inicio.daysTo(enero);
        const qint64 hacenFalta = semana.primeraSemana == 2 ? 4 : semana.primeraSemana == 3 ? 7 : 1;
        return dias >= hacenFalta ? inicio : inicio.addDays(7);
    };
    QDate inicio = primera(dia.year());
    if (dia < inicio)
        inicio = primera(dia.year() - 1);
    else if (semana.primeraSemana > 1 && dia >= primera(dia.year() + 1))
        inicio = primera(dia.year() + 1);
    return static_cast<int>(inicio.daysTo(dia) / 7) + 1;
}

} // namespace tolmo::data::access
