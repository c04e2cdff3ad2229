#include "docs/documentos.h"
#include <QFileInfo>
#include <QRegularExpression>
#include <gmock/gmock.h>

namespace {

/// The name by which a heading is linked to: small letters, blanks as hyphens, other signs gone.
QString Ancla(const QString& titulo)
{
    QString ancla;
    for (const QChar c : titulo.toLower())
        if (c.isLetterOrNumber() || c == u'-' || c == u'_')
            ancla += c;
        else if (c == u' ')
            ancla += u'-';
    return ancla;
}

QStringList AnclasDe(const QString& documento)
{
    static const QRegularExpression titulo(QStringLiteral("^#+ (.*)$"),
                                           QRegularExpression::MultilineOption);
    QStringList anclas;
    for (const auto& hallado : titulo.globalMatch(LeeDelProyecto(documento)))
        anclas << Ancla(hallado.captured(1));
    return anclas;
}

/// Why a link of a document leads nowhere; empty when it leads somewhere.
QString FaltaDe(const QString& documento, const QString& enlace)
{
    const QString camino = enlace.section(u'#', 0, 0);
    const QString ancla = enlace.section(u'#', 1);
    const QString destino =
        camino.isEmpty() ? documento : QDir::cleanPath(QFileInfo(documento).path() + u'/' + camino);
    if (!QFileInfo::exists(QDir(KOV_FUENTES).filePath(destino)))
        return documento + ": " + enlace;
    const bool conAncla = ancla.isEmpty() || AnclasDe(destino).contains(ancla);
    return conAncla ? QString() : documento + ": " + enlace;
}

QStringList EnlacesRotos(const QString& documento)
{
    static const QRegularExpression enlace(QStringLiteral("\\]\\(([^)\\s]+)\\)"));
    QStringList rotos;
    for (const auto& hallado : enlace.globalMatch(LeeDelProyecto(documento)))
        if (!hallado.captured(1).startsWith(QLatin1String("http")))
            rotos << FaltaDe(documento, hallado.captured(1));
    rotos.removeAll({});
    return rotos;
}

class Documento : public testing::TestWithParam<const char*> {};

} // namespace

TEST(Ancla, EsElTituloSinSignosNiMayusculas)
{
    EXPECT_EQ(Ancla("Qué hacer cuando…"), "qué-hacer-cuando");
    EXPECT_EQ(Ancla("En el terminal: kovtolmo-sql"), "en-el-terminal-kovtolmo-sql");
}

TEST(Enlace, QueNoLlevaANingunaParteSeEncuentra)
{
    EXPECT_EQ(FaltaDe("docs/manual.md", "imagenes/no-existe.png"),
              "docs/manual.md: imagenes/no-existe.png");
    EXPECT_EQ(FaltaDe("docs/manual.md", "#no-existe"), "docs/manual.md: #no-existe");
    EXPECT_EQ(FaltaDe("docs/manual.md", "../README.md"), "");
}

TEST_P(Documento, NoTieneEnlacesRotos)
{
    ASSERT_NE(LeeDelProyecto(GetParam()), "");
    EXPECT_EQ(EnlacesRotos(GetParam()).join(u'\n').toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Documentos, Documento,
                         testing::Values("README.md", "demo/README.md", "docs/arquitectura.md",
                                         "docs/instalacion.md", "docs/manual.md"));
