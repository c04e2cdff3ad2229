#include "docs/documentos.h"
#include <QDirIterator>
#include <QRegularExpression>
#include <gmock/gmock.h>

// An operator looks a message up by its words, so the manual has to give those of the program.

namespace {

const QString Titulo = QStringLiteral("\n## Todos los mensajes\n");
const QChar Hueco = u'…';

/// The messages of a chapter's tables: what stands between ` in the first cell of each row.
QStringList MensajesDe(const QString& capitulo)
{
    static const QRegularExpression fila(
        QStringLiteral("^\\| (`.*?`(?:<br>`.*?`)*)[^|`]*(?<!\\\\)\\|"),
        QRegularExpression::MultilineOption);
    static const QRegularExpression citado(QStringLiteral("`(.*?)`"));
    QStringList mensajes;
    for (const auto& celda : fila.globalMatch(capitulo))
        for (const auto& cita : citado.globalMatch(celda.captured(1)))
            mensajes << cita.captured(1).replace(QStringLiteral("\\|"), QStringLiteral("|"));
    return mensajes;
}

QStringList MensajesDelManual()
{
    const QString manual = LeeDelProyecto(QStringLiteral("docs/manual.md"));
    const qsizetype desde = manual.indexOf(Titulo);
    const qsizetype hasta = manual.indexOf(QStringLiteral("\n## "), desde + Titulo.size());
    return desde < 0 ? QStringList() : MensajesDe(manual.mid(desde, hasta - desde));
}

/// The letters that a script writes by their number, "conexi\xF3n", and the quotes inside a text.
QString SinEscapes(QString texto)
{
    static const QRegularExpression letra(QStringLiteral("\\\\x([0-9A-F]{2})"));
    for (auto hallada = letra.match(texto); hallada.hasMatch(); hallada = letra.match(texto))
        texto.replace(hallada.capturedStart(), hallada.capturedLength(),
                      QChar(hallada.captured(1).toInt(nullptr, 16)));
    return texto.replace(QStringLiteral("\\\""), QStringLiteral("\""));
}

QString TextoDeLasFuentes()
{
    QString texto;
    for (const char* carpeta : {"src", "PHPSHOP"}) {
        QDirIterator ficheros(QDir(KOV_FUENTES).filePath(QLatin1StringView(carpeta)),
                              {"*.cpp", "*.h", "*.ui", "*.php"}, QDir::Files,
                              QDirIterator::Subdirectories);
        while (ficheros.hasNext())
            texto += LeeDelProyecto(ficheros.next());
    }
    return SinEscapes(texto);
}

/// True when the pieces between the gaps of a message follow one another closely somewhere in the
/// sources: a message is one literal, or two put together in one statement.
bool EstaEnLasFuentes(const QString& mensaje, const QString& fuentes)
{
    QStringList piezas;
    for (const QString& pieza : mensaje.split(Hueco, Qt::SkipEmptyParts))
        piezas << QRegularExpression::escape(pieza);
    // A gap is a place of a template, or the code between two literals of one statement.
    const QRegularExpression forma(piezas.join(QStringLiteral("[^;]{1,120}?")));
    return !piezas.isEmpty() && forma.match(fuentes).hasMatch();
}

} // namespace

TEST(MensajesDelManual, SeLeenDeLaPrimeraCasillaDeCadaFila)
{
    const QString tablas = QStringLiteral("| mensaje | causa |\n"
                                          "|---|---|\n"
                                          "| `Uno …` | por `otro` |\n"
                                          "| `Dos`<br>`Tres \"\\|\\|\"` con algo | |\n");

    EXPECT_EQ(MensajesDe(tablas), (QStringList{"Uno …", "Dos", "Tres \"||\""}));
}

TEST(MensajesDelManual, SusPiezasHanDeEstarJuntasYEnSuOrden)
{
    const QString fuentes = SinEscapes(R"(u"Falta {que} en {donde}"; "conexi\xF3n de \"%1\"";)");

    EXPECT_TRUE(EstaEnLasFuentes("Falta … en …", fuentes));
    EXPECT_TRUE(EstaEnLasFuentes("conexión de \"…\"", fuentes));
    EXPECT_FALSE(EstaEnLasFuentes(" en …Falta", fuentes));
    EXPECT_FALSE(EstaEnLasFuentes("Falta … conexión", fuentes));
    EXPECT_FALSE(EstaEnLasFuentes("…", fuentes));
}

TEST(MensajesDelManual, EstanTodosEnElProgramaConSusPalabras)
{
    const QStringList mensajes = MensajesDelManual();
    const QString fuentes = TextoDeLasFuentes();

    QStringList inventados;
    for (const QString& mensaje : mensajes)
        if (!EstaEnLasFuentes(mensaje, fuentes))
            inventados << mensaje;

    EXPECT_THAT(mensajes, testing::Contains(QStringLiteral("No existe ninguna empresa.")));
    EXPECT_EQ(inventados.join(u'\n').toStdString(), "");
}
