#include "apoyo/dobles.h"
#include "data/errores.h"
#include "data/ui/avisos.h"
#include "data/ui/frontera.h"
#include "data/ui/sistema.h"
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

using namespace tolmo;
using data::Respuesta;

namespace {

/// Does something in the box that the next call opens.
template <class Accion> void EnLaCaja(Accion accion)
{
    QTimer::singleShot(0, qApp, [accion] {
        auto* caja = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(caja, nullptr);
        accion(*caja);
    });
}

QString Botones(const QDialog& caja)
{
    QStringList textos;
    for (const QPushButton* boton : caja.findChildren<QPushButton*>())
        textos << boton->text().remove('&');
    textos.sort();
    return textos.join(',');
}

struct CasoRespuesta {
    const char* regla;
    int estilo = 0;
    Respuesta respuesta = Respuesta::Aceptar;
};

class RespuestaPorDefecto : public testing::TestWithParam<CasoRespuesta> {};

TEST_P(RespuestaPorDefecto, EsLaDelBotonPorDefecto)
{
    EXPECT_EQ(data::ui::RespuestaPorDefecto(GetParam().estilo), GetParam().respuesta);
}

TEST_P(RespuestaPorDefecto, EsLaDeLaTeclaIntroEnLaCaja)
{
    data::ui::AvisosVentana avisos;
    EnLaCaja([](QDialog& caja) { QTest::keyClick(&caja, Qt::Key_Return); });

    EXPECT_EQ(avisos.Muestra("texto", GetParam().estilo, ""), GetParam().respuesta);
}

TEST_P(RespuestaPorDefecto, EsLaDeLaTeclaIntroEnUnaCajaLarga)
{
    data::ui::AvisosVentana avisos;
    EnLaCaja([](QDialog& caja) { QTest::keyClick(&caja, Qt::Key_Return); });

    EXPECT_EQ(avisos.Muestra(QString(5000, 'x'), GetParam().estilo, ""), GetParam().respuesta);
}

INSTANTIATE_TEST_SUITE_P(
    Estilos, RespuestaPorDefecto,
    testing::Values(CasoRespuesta{"Error", 16, Respuesta::Aceptar},
                    CasoRespuesta{"Informacion", 64, Respuesta::Aceptar},
                    CasoRespuesta{"AceptarCancelar", 1 + 48, Respuesta::Aceptar},
                    CasoRespuesta{"AceptarCancelarElSegundo", 1 + 256, Respuesta::Cancelar},
                    CasoRespuesta{"SiNoPregunta", 36, Respuesta::Si},
                    CasoRespuesta{"SiNoElSegundo", 52 + 256, Respuesta::No}),
    [](const auto& caso) { return caso.param.regla; });

TEST(AvisosVentana, MuestraElTextoComoEstaConSusSaltosDeLinea)
{
    data::ui::AvisosVentana avisos;
    EnLaCaja([](QDialog& d) {
        auto& caja = dynamic_cast<QMessageBox&>(d);
        EXPECT_EQ(caja.text(), "<b>uno</b>\ndos\ntres");
        EXPECT_EQ(caja.textFormat(), Qt::PlainText);
        EXPECT_EQ(caja.windowTitle(), "KOV TOLMO");
        EXPECT_EQ(Botones(caja), "Aceptar");
        caja.accept();
    });

    avisos.Muestra("<b>uno</b>\rdos\r\ntres", 64, "");
}

TEST(AvisosVentana, UnTituloPropioVaEnElMarco)
{
    data::ui::AvisosVentana avisos;
    EnLaCaja([](QDialog& caja) {
        EXPECT_EQ(caja.windowTitle(), "Usuarios");
        caja.reject();
    });

    avisos.Muestra("x", 16, "Usuarios");
}

TEST(AvisosVentana, CadaEstiloTieneSuDibujo)
{
    data::ui::AvisosVentana avisos;
    for (const auto& [estilo, dibujo] :
         {std::pair(16, QMessageBox::Critical), std::pair(36, QMessageBox::Question),
          std::pair(52, QMessageBox::Warning), std::pair(48, QMessageBox::Warning),
          std::pair(64, QMessageBox::Information), std::pair(0, QMessageBox::NoIcon)}) {
        EnLaCaja([dibujo = dibujo](QDialog& caja) {
            EXPECT_EQ(dynamic_cast<QMessageBox&>(caja).icon(), dibujo);
            caja.reject();
        });
        avisos.Muestra("x", estilo, "");
    }
}

TEST(AvisosVentana, ElBotonPulsadoEsLaRespuesta)
{
    data::ui::AvisosVentana avisos;
    for (const QString& texto : {QString("x"), QString(5000, 'x')}) {
        EnLaCaja([](QDialog& caja) {
            EXPECT_EQ(Botones(caja), "No,Sí");
            for (QPushButton* boton : caja.findChildren<QPushButton*>())
                if (boton->text().remove('&') == "No")
                    boton->click();
        });
        EXPECT_EQ(avisos.Muestra(texto, 36, ""), Respuesta::No);
    }
}

TEST(AvisosVentana, CerrarSinElegirEsLaRespuestaQueMenosCambia)
{
    data::ui::AvisosVentana avisos;
    for (const QString& texto : {QString("x"), QString(5000, 'x')}) {
        EnLaCaja([](QDialog& caja) { QTest::keyClick(&caja, Qt::Key_Escape); });
        EXPECT_EQ(avisos.Muestra(texto, 36, ""), Respuesta::No);
        EnLaCaja([](QDialog& caja) { QTest::keyClick(&caja, Qt::Key_Escape); });
        EXPECT_EQ(avisos.Muestra(texto, 1, ""), Respuesta::Cancelar);
        EnLaCaja([](QDialog& caja) { QTest::keyClick(&caja, Qt::Key_Escape); });
        EXPECT_EQ(avisos.Muestra(texto, 64, ""), Respuesta::Aceptar);
    }
}

TEST(AvisosVentana, UnaSentenciaDeMuchasPaginasCabeEnLaPantalla)
{
    data::ui::AvisosVentana avisos;
    const QString sentencia = "INSERT INTO ps_product " + QString("abc ").repeated(8000) + "fin";
    EnLaCaja([&](QDialog& caja) {
        EXPECT_LE(caja.height(), 720);
        EXPECT_LE(caja.width(), 1280);
        EXPECT_EQ(caja.findChild<QPlainTextEdit*>()->toPlainText(), sentencia);
        caja.reject();
    });

    avisos.Muestra(sentencia, 64, "");
}

TEST(AvisosVentana, LasClavesDeUnaSentenciaNoSeLeen)
{
    data::ui::AvisosVentana avisos;
    const QString sentencia =
        "UPDATE USUARIOS SET NOMBRE='D'Arc',[PASSWORD]='s3creta' WHERE codigo='00003'";
    const QString mostrada =
        "UPDATE USUARIOS SET NOMBRE='D'Arc',[PASSWORD]=*** WHERE codigo='00003'";
    EnLaCaja([&](QDialog& caja) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(caja).text(), mostrada);
        caja.reject();
    });
    avisos.Muestra(sentencia, 64, "");

    const QString larga = QString(5000, 'x') + ' ';
    EnLaCaja([&](QDialog& caja) {
        EXPECT_EQ(caja.findChild<QPlainTextEdit*>()->toPlainText(), larga + mostrada);
        caja.reject();
    });
    avisos.Muestra(larga + sentencia, 64, "");
}

TEST(AvisosConsola, EscribeElTextoSinClavesYRespondePorDefecto)
{
    QStringList lineas;
    data::ui::AvisosConsola avisos([&](const QString& linea) { lineas << linea; });

    const auto respuesta = avisos.Muestra(
        "UPDATE m_empresa SET Pass_Bd='s3creta'\rEL PROGRAMA SE CERRARÁ", 36 + 256, "");

    EXPECT_EQ(lineas, QStringList{"UPDATE m_empresa SET Pass_Bd=***\nEL PROGRAMA SE CERRARÁ"});
    EXPECT_EQ(respuesta, Respuesta::No);
}

TEST(AvisosConsola, SinOtraSalidaEscribeEnElErrorEstandar)
{
    data::ui::AvisosConsola avisos;
    testing::internal::CaptureStderr();

    avisos.Muestra("No existe ninguna empresa.", 16, "");

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "No existe ninguna empresa.\n");
}

TEST(EnFrontera, LoQueVaBienNoMuestraNada)
{
    AvisosDePrueba avisos;
    bool hecho = false;

    data::ui::EnFrontera(avisos, [&] { hecho = true; });

    EXPECT_TRUE(hecho);
    EXPECT_TRUE(avisos.cajas.empty());
}

void Cruza(const std::function<void()>& accion)
{
    data::ui::AvisosConsola avisos;
    data::ui::EnFrontera(avisos, accion);
}

TEST(EnFronteraDeathTest, ElFinDelProgramaTerminaEnSilencioConEstadoUno)
{
    EXPECT_EXIT(Cruza([] { throw data::FinDePrograma{}; }), testing::ExitedWithCode(1),
                testing::IsEmpty());
}

TEST(EnFronteraDeathTest, CualquierOtroErrorSeMuestraAntes)
{
    EXPECT_EXIT(Cruza([] { throw data::ErrorEjecucion(94, "uso de Null"); }),
                testing::ExitedWithCode(1), testing::StrEq("ERROR: uso de Null\n"));
    EXPECT_EXIT(Cruza([] { throw data::ErrorSql(-1, "conexión perdida", "ODBC"); }),
                testing::ExitedWithCode(1), testing::StrEq("ERROR: conexión perdida\n"));
    EXPECT_EXIT(Cruza([] { throw data::ErrorFichero("no se puede abrir"); }),
                testing::ExitedWithCode(1), testing::StrEq("ERROR: no se puede abrir\n"));
}

TEST(RelojSistema, ElAzarTieneHastaNueveCifrasYCambia)
{
    data::ui::RelojSistema reloj;
    bool cambia = false;
    const int primero = reloj.Azar();
    for (int i = 0; i < 100; ++i) {
        const int azar = reloj.Azar();
        EXPECT_GE(azar, 0);
        EXPECT_LT(azar, 1'000'000'000);
        cambia = cambia || azar != primero;
    }
    EXPECT_TRUE(cambia);
}

TEST(RelojSistema, DaLaHoraDelSistema)
{
    data::ui::RelojSistema reloj;
    const QDateTime antes = QDateTime::currentDateTime();

    EXPECT_LE(antes, reloj.Ahora());
    EXPECT_LT(reloj.Ahora(), antes.addSecs(60));
}

TEST(EscritorioSistema, CopiaAlPortapapeles)
{
    data::ui::EscritorioSistema escritorio;

    escritorio.CopiaAlPortapapeles("A-100");

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "A-100");
}

} // namespace
