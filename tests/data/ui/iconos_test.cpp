#include "data/ui/iconos.h"
#include <QApplication>
#include <QImage>
#include <QPalette>
#include <gtest/gtest.h>
#include <set>

using namespace tolmo;
using data::ui::Dibujo;

namespace {

constexpr Dibujo Dibujos[] = {Dibujo::Primero,       Dibujo::Ultimo,         Dibujo::Filtro,
                              Dibujo::BuscaAnterior, Dibujo::BuscaSiguiente, Dibujo::Sincroniza,
                              Dibujo::Configura,     Dibujo::Anuncia,        Dibujo::Atributos,
                              Dibujo::Programa,      Dibujo::Usuarios,       Dibujo::Registro,
                              Dibujo::Sale,          Dibujo::Abajo};

QImage Imagen(const QIcon& icono, const QSize& tamano, QIcon::Mode modo = QIcon::Normal)
{
    return icono.pixmap(tamano, 1, modo).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// How many dots have just this colour, without any of the ground shining through.
int Puntos(const QImage& imagen, const QColor& color)
{
    int puntos = 0;
    for (int y = 0; y < imagen.height(); ++y)
        for (int x = 0; x < imagen.width(); ++x)
            puntos += imagen.pixel(x, y) == color.rgba() ? 1 : 0;
    return puntos;
}

/// The columns that are drawn on, the first and the last one.
std::pair<int, int> Ancho(const QImage& imagen)
{
    std::set<int> columnas;
    for (int y = 0; y < imagen.height(); ++y)
        for (int x = 0; x < imagen.width(); ++x)
            if (qAlpha(imagen.pixel(x, y)) > 0)
                columnas.insert(x);
    return columnas.empty() ? std::pair(-1, -1) : std::pair(*columnas.begin(), *columnas.rbegin());
}

struct PaletaDePrueba {
    explicit PaletaDePrueba(const QColor& boton) : antes(QApplication::palette())
    {
        QApplication::setPalette(QPalette(boton));
    }
    ~PaletaDePrueba() { QApplication::setPalette(antes); }
    QPalette antes;
};

TEST(Iconos, CadaUnoTieneElColorDeLosTextosEnClaroYEnOscuro)
{
    for (const QColor& boton : {QColor(240, 240, 240), QColor(40, 40, 40)}) {
        const PaletaDePrueba paleta(boton);
        const QColor texto = QApplication::palette().color(QPalette::ButtonText);
        ASSERT_GT(std::abs(texto.lightness() - boton.lightness()), 150);

        for (const Dibujo dibujo : Dibujos)
            EXPECT_GT(Puntos(Imagen(data::ui::Icono(dibujo), {48, 48}), texto), 20)
                << static_cast<int>(dibujo);
    }
}

TEST(Iconos, LosApagadosTienenElColorDeLosTextosApagados)
{
    const QColor texto = QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText);
    for (const Dibujo dibujo : Dibujos)
        EXPECT_GT(Puntos(Imagen(data::ui::Icono(dibujo), {48, 48}, QIcon::Disabled), texto), 20)
            << static_cast<int>(dibujo);
}

TEST(Iconos, ConUnaTintaNoHayNadaDelColorDeLoElegido)
{
    const QPalette paleta = QApplication::palette();
    const QColor acento = paleta.color(QPalette::Highlight);
    const QIcon dos = data::ui::Icono(Dibujo::Usuarios);
    const QIcon una = data::ui::Icono(Dibujo::Usuarios, data::ui::Tinta::Una);

    EXPECT_GT(Puntos(Imagen(dos, {48, 48}), acento), 100);
    EXPECT_EQ(Puntos(Imagen(una, {48, 48}), acento), 0);
    EXPECT_GT(Puntos(Imagen(una, {48, 48}), paleta.color(QPalette::ButtonText)), 200);
}

TEST(Iconos, NingunoEsIgualQueOtro)
{
    std::vector<QImage> imagenes;
    for (const Dibujo dibujo : Dibujos) {
        const QImage imagen = Imagen(data::ui::Icono(dibujo), {24, 24});
        for (const QImage& otra : imagenes)
            EXPECT_NE(imagen, otra) << static_cast<int>(dibujo);
        imagenes.push_back(imagen);
    }
}

TEST(Iconos, LoQueVaAdelanteEsElReflejoDeLoQueVaAtras)
{
    const QImage atras = Imagen(data::ui::Icono(Dibujo::Primero), {32, 32});
    const QImage adelante = Imagen(data::ui::Icono(Dibujo::Ultimo), {32, 32});

    // The edges are smoothed on one side and on the other, not dot by dot alike.
    const QImage reflejo = atras.mirrored(true, false);
    int distintos = 0;
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            distintos += std::abs(qAlpha(reflejo.pixel(x, y)) - qAlpha(adelante.pixel(x, y))) > 64;
    EXPECT_EQ(distintos, 0);
    EXPECT_EQ(qAlpha(atras.pixel(7, 16)), 255);
}

TEST(Iconos, EnUnSitioAnchoVanEnElCentroSinDeformarse)
{
    const auto [desde, hasta] = Ancho(Imagen(data::ui::Icono(Dibujo::Programa), {64, 32}));

    EXPECT_GE(desde, 16);
    EXPECT_LT(hasta, 48);
    EXPECT_NEAR(desde - 16, 47 - hasta, 1);
}

TEST(Iconos, ElDelProgramaSeVeATodosLosTamanos)
{
    for (const int lado : {16, 32, 64, 256}) {
        const QImage imagen = Imagen(data::ui::IconoPrograma(), {lado, lado});
        ASSERT_EQ(imagen.size(), QSize(lado, lado));
        EXPECT_EQ(qAlpha(imagen.pixel(lado / 2, lado / 8)), 255) << lado;
        EXPECT_LT(qAlpha(imagen.pixel(0, 0)), 16) << lado;
    }
}

} // namespace
