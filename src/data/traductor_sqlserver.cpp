#include "data/busca_palabra.h"
#include "data/traductor.h"

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

struct Cambio {
    QLatin1StringView palabra;
    QLatin1StringView nueva;
};

// In this order: a condition that stands alone becomes a comparison, what is left a number.
constexpr Cambio CambiosLogicos[] = {
    {"WHERE FALSE"_L1, "WHERE (1=0)"_L1},
    {"WHERE TRUE"_L1, "WHERE (1=1)"_L1},
    {"WHERE  FALSE"_L1, "WHERE (1=0)"_L1},
    {"WHERE  TRUE"_L1, "WHERE (1=1)"_L1},
    {"AND TRUE"_L1, "AND (1=1)"_L1},
    {"AND FALSE"_L1, "AND (1=0)"_L1},
    {"AND  TRUE"_L1, "AND (1=1)"_L1},
    {"AND  FALSE"_L1, "AND (1=0)"_L1},
    {"FALSE"_L1, "0"_L1},
    {"TRUE"_L1, "1"_L1},
};
constexpr Cambio CambiosDeFuncion[] = {
    {"INT("_L1, "FLOOR("_L1},
    {"&"_L1, "+"_L1},
    {"DATEADD('M',"_L1, "DATEADD(MONTH,"_L1},
    {"CSTR"_L1, "LTRIM"_L1},
};

constexpr QLatin1StringView Si = " (CASE WHEN "_L1;
constexpr QLatin1StringView Entonces = " THEN "_L1;
constexpr QLatin1StringView SiNo = " ELSE "_L1;
constexpr QLatin1StringView Acaba = " END) "_L1;

/// Walks over a text with the count of open brackets and of quotes. Either quote mark opens and
/// closes, and brackets count inside quotes too.
class Paseo {
  public:
    Paseo(QStringView texto, qsizetype desde) : texto_(texto), posicion_(desde) {}

    /// The next comma outside brackets and quotes, or -1.
    qsizetype HastaComa()
    {
        for (; posicion_ < texto_.size(); ++posicion_) {
            Cuenta(texto_[posicion_]);
            if (texto_[posicion_] == u',' && hondo_ == 0 && !entreComillas_)
                return posicion_;
        }
        return -1;
    }

    /// The ")" that closes a bracket opened before the walk began, or -1.
    qsizetype HastaCierre()
    {
        for (; posicion_ < texto_.size(); ++posicion_) {
            Cuenta(texto_[posicion_]);
            if (texto_[posicion_] == u')' && hondo_ == -1 && !entreComillas_)
                return posicion_;
        }
        return -1;
    }

  private:
    void Cuenta(QChar c)
    {
        if (c == u'(')
            ++hondo_;
        else if (c == u')')
            --hondo_;
        else if (c == u'\'' || c == u'"')
            entreComillas_ = !entreComillas_;
    }

    QStringView texto_;
    qsizetype posicion_;
    int hondo_ = 0;
    bool entreComillas_ = false;
};

/// Puts `nueva` where the next comma stands. \returns where to go on, -1 without such a comma
qsizetype CambiaComa(QString& sql, qsizetype desde, QLatin1StringView nueva)
{
    const qsizetype coma = Paseo(sql, desde).HastaComa();
    if (coma < 0)
        return -1;
    sql.replace(coma, 1, nueva);
    return coma + nueva.size() - 1;
}

/// Rewrites the IIF at `donde`. Without its commas or its bracket it is left half done, but the
/// word itself always goes, so that the loop over them ends.
void TraduceIif(QString& sql, qsizetype donde)
{
    qsizetype abre = sql.indexOf(u'(', donde);
    if (abre < 0)
        abre = sql.size();
    sql.replace(donde, abre + 1 - donde, Si);
    // The place of the bracket isn't moved by what was put in front: the walk begins inside it.
    qsizetype posicion = CambiaComa(sql, abre, Entonces);
    if (posicion >= 0)
        posicion = CambiaComa(sql, posicion, SiNo);
    if (posicion < 0)
        return;
    const qsizetype cierra = Paseo(sql, posicion).HastaCierre();
    if (cierra >= 0)
        sql.replace(cierra, 1, Acaba);
}

} // namespace

QString TraduceSqlServer(QString sql)
{
    if (BuscaPalabra(sql, "TRUE"_L1) >= 0 || BuscaPalabra(sql, "FALSE"_L1) >= 0)
        for (const Cambio& cambio : CambiosLogicos)
            ReemplazaPalabra(sql, cambio.palabra, cambio.nueva);
    for (const Cambio& cambio : CambiosDeFuncion)
        ReemplazaPalabra(sql, cambio.palabra, cambio.nueva);
    for (qsizetype p = BuscaPalabra(sql, "IIF"_L1); p >= 0; p = BuscaPalabra(sql, "IIF"_L1))
        TraduceIif(sql, p);
    return sql;
}

} // namespace tolmo::data
