// Makes a picture of each window of the program, from the windows themselves. It is started by
// tools/capturas, in the folder of the sample company and with the shop up.
//
//   kovtolmo-capturas CARPETA [--oscuro] [NOMBRE...]
//
// CARPETA gets NOMBRE.png for each name of the table Capturas, or for those that are asked for.
#include "configurator/FrmConsCategoriasOpcionales.h"
#include "configurator/FrmRecuperaImagen.h"
#include "data/access/access.h"
#include "data/errores.h"
#include "data/ui/FrmCadenaBooleanaAvanzada.h"
#include "data/ui/avisos.h"
#include "data/ui/iconos.h"
#include "data/ui/sistema.h"
#include "run/FrmConexionSqlServer.h"
#include "run/FrmSeleccionaEmpresa.h"
#include "run/empresas.h"
#include "run/fabricas.h"
#include "run/pantalla.h"
#include "users/FrmFichaUsuarios.h"
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <stdexcept>

using namespace tolmo;

namespace {

/// The program's folder as an office knows it; tools/capturas says in KOV_UNIDADES where it is.
const QString CarpetaDelPrograma = QStringLiteral("K:");

/// Takes the picture of a window and leaves it where it is told.
class Camara {
  public:
    explicit Camara(const QDir& carpeta) : carpeta_(carpeta) {}

    /// Shows the window first, if it isn't.
    void Retrata(QWidget& ventana, const QString& nombre) const
    {
        ventana.show();
        Espera();
        const QString fichero = carpeta_.filePath(nombre + QStringLiteral(".png"));
        if (!ventana.grab().save(fichero, "PNG"))
            throw std::runtime_error("no se puede escribir " + fichero.toStdString());
        data::ui::EscribeEnSalida(fichero);
    }

    /// Gives a window the time to draw itself, and its grids that of reading.
    static void Espera() { QTest::qWait(300); }

  private:
    QDir carpeta_;
};

/// The program, open on the sample company.
struct Casa {
    data::Programa& programa;
    data::Avisos& avisos;
    FrmPrincipal& principal;
    FrmPrincipal::Fabricas fabricas{};
};

void RetrataPrincipal(Casa& casa, const Camara& camara, const QString& nombre)
{
    camara.Retrata(casa.principal, nombre);
    casa.principal.hide();
}

void RetrataSeleccionaEmpresa(Casa& casa, const Camara& camara, const QString& nombre)
{
    FrmSeleccionaEmpresa ventana(run::ListaEmpresas(casa.programa));
    camara.Retrata(ventana, nombre);
}

void RetrataConexionSqlServer(Casa&, const Camara& camara, const QString& nombre)
{
    FrmConexionSqlServer ventana(QStringLiteral("SERVIDOR"));
    camara.Retrata(ventana, nombre);
}

void RetrataSincronizar(Casa& casa, const Camara& camara, const QString& nombre)
{
    FrmSincronizar ventana(casa.avisos, casa.fabricas.motor);
    camara.Retrata(ventana, nombre);
}

void RetrataSincronizarOtros(Casa& casa, const Camara& camara, const QString& nombre)
{
    FrmSincronizar ventana(casa.avisos, casa.fabricas.motor);
    ventana.findChild<QTabWidget*>(QStringLiteral("SSTab1"))->setCurrentIndex(1);
    camara.Retrata(ventana, nombre);
}

/// In the middle of a run: when the shop has got some of the articles.
void RetrataSincronizarEnMarcha(Casa& casa, const Camara& camara, const QString& nombre)
{
    constexpr int LineasAntesDeLaFoto = 90;
    int lineas = 0;
    QWidget* corriendo = nullptr;
    FrmSincronizar ventana(casa.avisos, casa.fabricas.motor, nullptr, [&](const QString&) {
        if (++lineas == LineasAntesDeLaFoto)
            camara.Retrata(*corriendo, nombre);
    });
    corriendo = &ventana;
    ventana.Muestra(QStringLiteral("AUTO"));
    if (lineas < LineasAntesDeLaFoto)
        throw std::runtime_error("la pasada ha sido demasiado corta para la foto");
}

void RetrataGenerarXMLsolostock(Casa& casa, const Camara& camara, const QString& nombre)
{
    FrmGenerarXMLsolostock ventana(casa.avisos, casa.fabricas.generador);
    camara.Retrata(ventana, nombre);
}

void RetrataConfiguracion(Casa& casa, const Camara& camara, const QString& nombre)
{
    const auto ventana =
        casa.fabricas.configuracion(QStringLiteral("1"), casa.programa.CodigoEmpresa(),
                                    casa.programa.DescripcionEmpresa(), nullptr);
    camara.Retrata(*ventana, nombre);
}

void RetrataConsUsuarios(Casa& casa, const Camara& camara, const QString& nombre)
{
    camara.Retrata(*casa.fabricas.usuarios(nullptr), nombre);
}

void RetrataFichaUsuarios(Casa& casa, const Camara& camara, const QString& nombre)
{
    FrmFichaUsuarios ventana(casa.programa);
    ventana.Prepara(QStringLiteral("1"), QStringLiteral("00002"));
    camara.Retrata(ventana, nombre);
}

/// With two conditions that are put together by keys, as an operator does.
void RetrataCadenaBooleanaAvanzada(Casa& casa, const Camara& camara, const QString& nombre)
{
    using data::Letra;
    QLineEdit destino;
    FrmCadenaBooleanaAvanzada ventana(casa.programa, &destino);
    ventana.ArrayDirectoFiltro(
        {{QStringLiteral("Nombre"), QStringLiteral("NOMBRE"), Letra::Texto},
         {QStringLiteral("Email"), QStringLiteral("EMAIL"), Letra::Texto},
         {QStringLiteral("Tarifa"), QStringLiteral("CODTARIFA"), Letra::Numero}});
    ventana.show();
    Camara::Espera();
    const auto pulsa = [&ventana](Qt::Key tecla, const QString& texto = {}) {
        QWidget* lista = QApplication::activePopupWidget();
        QWidget* teclado = (lista ? lista : &ventana)->focusWidget();
        QTest::sendKeyEvent(QTest::Click, teclado, tecla, texto, Qt::NoModifier);
        QCoreApplication::processEvents();
    };
    constexpr int PrimeraCondicion = 1;
    auto* celdas = ventana.findChild<QTableWidget*>(QStringLiteral("FlexCond"));
    const QRect celda = celdas->visualItemRect(celdas->item(0, PrimeraCondicion));
    QTest::mouseClick(ventana.windowHandle(), Qt::LeftButton, {},
                      celdas->viewport()->mapTo(&ventana, celda.center()));
    const auto condicion = [&pulsa](int campo, const QString& valor) {
        for (int i = 0; i < campo; ++i)
            pulsa(Qt::Key_Down);
        pulsa(Qt::Key_Return);
        pulsa(Qt::Key_Return);
        for (const QChar letra : valor)
            pulsa(Qt::Key_unknown, letra);
        pulsa(Qt::Key_Return);
    };
    condicion(1, QStringLiteral("Casa rural La Noguera"));
    pulsa(Qt::Key_Return);
    condicion(3, QStringLiteral("3"));
    camara.Retrata(ventana, nombre);
}

void RetrataConsCategoriasOpcionales(Casa& casa, const Camara& camara, const QString& nombre)
{
    data::ui::EscritorioSistema escritorio;
    FrmConsCategoriasOpcionales ventana(casa.programa, escritorio);
    camara.Retrata(ventana, nombre);
}

/// As it is opened to choose a value.
void RetrataConsOpcionales(Casa& casa, const Camara& camara, const QString& nombre)
{
    data::ui::EscritorioSistema escritorio;
    FrmConsCategoriasOpcionales ventana(casa.programa, escritorio);
    ventana.PonModo(configurator::ModoNavegador::Valores, QStringLiteral("COL"));
    ventana.PermiteRetorno(true);
    camara.Retrata(ventana, nombre);
}

/// The editor at an article with two attributes, on one of its pages.
void RetrataConfigurador(Casa& casa, const Camara& camara, const QString& nombre,
                         const char* pagina)
{
    const auto ventana = casa.fabricas.atributos(nullptr);
    ventana->show();
    auto* articulo = ventana->findChild<QLineEdit*>(QStringLiteral("txtCampo_0"));
    articulo->setText(QStringLiteral("010101002"));
    QTest::keyClick(articulo, Qt::Key_Return);
    ventana->findChild<QTabWidget*>(QStringLiteral("SSTab1"))
        ->setCurrentWidget(ventana->findChild<QWidget*>(QLatin1StringView(pagina)));
    // The second value has a picture.
    auto* valores = ventana->findChild<QTableView*>(QStringLiteral("DataGrid2"));
    valores->setCurrentIndex(valores->model()->index(1, 2));
    Camara::Espera();
    camara.Retrata(*ventana, nombre);
}

void RetrataAtributos(Casa& casa, const Camara& camara, const QString& nombre)
{
    RetrataConfigurador(casa, camara, nombre, "PaginaAtributos");
}

void RetrataValores(Casa& casa, const Camara& camara, const QString& nombre)
{
    RetrataConfigurador(casa, camara, nombre, "PaginaValores");
}

void RetrataExportacion(Casa& casa, const Camara& camara, const QString& nombre)
{
    RetrataConfigurador(casa, camara, nombre, "PaginaCopia");
}

void RetrataCombinaciones(Casa& casa, const Camara& camara, const QString& nombre)
{
    RetrataConfigurador(casa, camara, nombre, "PaginaCombinaciones");
}

void RetrataRecuperaArtic(Casa& casa, const Camara& camara, const QString& nombre)
{
    camara.Retrata(*casa.fabricas.articulos(nullptr), nombre);
}

/// Over a window that asks for a picture, with one of the company's chosen.
void RetrataRecuperaImagen(Casa& casa, const Camara& camara, const QString& nombre)
{
    QDialog llamante;
    llamante.setProperty("UltimaCarpeta", QStringLiteral("C:\\KOV\\FOTOS"));
    QLineEdit filtro(QStringLiteral("Imagenes (*.jpg,*.bmp,*.tif)|*.jpg;*.bmp;*.tif"), &llamante);
    filtro.setObjectName(QStringLiteral("txtretorna"));
    FrmRecuperaImagen ventana(casa.programa, &llamante);
    ventana.show();
    constexpr int Foto = 6;
    ventana.findChild<QListWidget*>(QStringLiteral("File1"))->setCurrentRow(Foto);
    camara.Retrata(ventana, nombre);
}

struct Captura {
    const char* nombre; ///< of the file
    void (*retrata)(Casa& casa, const Camara& camara, const QString& nombre);
};

/// A window more is a line more.
constexpr Captura Capturas[] = {
    {"FrmPrincipal", RetrataPrincipal},
    {"FrmSeleccionaEmpresa", RetrataSeleccionaEmpresa},
    {"FrmConexionSqlServer", RetrataConexionSqlServer},
    {"FrmSincronizar", RetrataSincronizar},
    {"FrmSincronizarOtros", RetrataSincronizarOtros},
    {"FrmSincronizarEnMarcha", RetrataSincronizarEnMarcha},
    {"FrmGenerarXMLsolostock", RetrataGenerarXMLsolostock},
    {"FrmConfiguracion", RetrataConfiguracion},
    {"FrmConsUsuarios", RetrataConsUsuarios},
    {"FrmFichaUsuarios", RetrataFichaUsuarios},
    {"FrmCadenaBooleanaAvanzada", RetrataCadenaBooleanaAvanzada},
    {"FrmConsCategoriasOpcionales", RetrataConsCategoriasOpcionales},
    {"FrmConsCategoriasOpcionalesValores", RetrataConsOpcionales},
    {"FrmConsPSArtConfigurador", RetrataAtributos},
    {"FrmConsPSArtConfiguradorValores", RetrataValores},
    {"FrmConsPSArtConfiguradorExportar", RetrataExportacion},
    {"FrmConsPSArtConfiguradorCombinaciones", RetrataCombinaciones},
    {"FrmRecuperaArtic", RetrataRecuperaArtic},
    {"FrmRecuperaImagen", RetrataRecuperaImagen},
};

/// What was asked for on the command line.
struct Pedido {
    QString carpeta{};
    bool oscuro = false;
    QStringList nombres{}; ///< empty for all of them
};

Pedido LeePedido(const QStringList& argumentos)
{
    Pedido pedido;
    for (const QString& argumento : argumentos) {
        if (argumento == QLatin1String("--oscuro"))
            pedido.oscuro = true;
        else if (pedido.carpeta.isEmpty())
            pedido.carpeta = argumento;
        else
            pedido.nombres << argumento;
    }
    if (pedido.carpeta.isEmpty() || !QDir().mkpath(pedido.carpeta))
        throw std::runtime_error("uso: kovtolmo-capturas CARPETA [--oscuro] [NOMBRE...]");
    QStringList desconocidos = pedido.nombres;
    for (const Captura& captura : Capturas)
        desconocidos.removeAll(QLatin1StringView(captura.nombre));
    if (!desconocidos.isEmpty())
        throw std::runtime_error("no hay ninguna captura " + desconocidos.first().toStdString());
    return pedido;
}

/// The colours of a dark desktop.
QPalette PaletaOscura()
{
    QPalette paleta(QColor(53, 54, 58), QColor(42, 43, 46));
    paleta.setColor(QPalette::Base, QColor(32, 33, 36));
    paleta.setColor(QPalette::AlternateBase, QColor(42, 43, 46));
    paleta.setColor(QPalette::Highlight, QColor(53, 132, 228));
    paleta.setColor(QPalette::HighlightedText, Qt::white);
    return paleta;
}

/// The company that the dialog of the start offers.
void AceptaLaEmpresa()
{
    if (auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        dialogo->accept();
}

void Retrata(const Pedido& pedido)
{
    data::ui::AvisosConsola avisos;
    data::ui::RelojSistema reloj;
    data::ui::EscritorioSistema escritorio;
    data::Programa programa(avisos, reloj, data::CreaProveedor, CarpetaDelPrograma);
    const run::Entorno entorno{.PATH_CONNECT = qEnvironmentVariable("PATH_CONNECT")};
    FrmPrincipal principal(programa, escritorio, entorno,
                           run::FabricasDelPrograma(programa, escritorio));
    QTimer::singleShot(0, qApp, AceptaLaEmpresa);
    if (principal.Carga() != run::Desenlace::Abierta)
        throw std::runtime_error("la empresa de muestra no se abre");
    Casa casa{programa, avisos, principal, run::FabricasDelPrograma(programa, escritorio)};
    const Camara camara(QDir(pedido.carpeta));
    for (const Captura& captura : Capturas) {
        const QString nombre = QLatin1StringView(captura.nombre);
        if (pedido.nombres.isEmpty() || pedido.nombres.contains(nombre))
            captura.retrata(casa, camara, nombre);
    }
    principal.close();
}

} // namespace

int main(int argc, char** argv)
{
    run::AseguraUtf8();
    run::TrabajaSinPantalla();
    QApplication aplicacion(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        const Pedido pedido = LeePedido(QApplication::arguments().mid(1));
        if (pedido.oscuro)
            QApplication::setPalette(PaletaOscura());
        Retrata(pedido);
        return 0;
    } catch (const data::FinDePrograma&) {
        // Its boxes have told why.
    } catch (const std::exception& error) {
        std::fprintf(stderr, "capturas: %s\n", error.what());
    }
    return 1;
}
