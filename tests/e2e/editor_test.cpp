#include "configurator/FrmConsPSArtConfigurador.h"
#include "data/ui/articulos_en_pantalla.h"
#include "e2e/ventana_real.h"
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <memory>

namespace {

using namespace tolmo;
using data::Respuesta;
using Filas = std::vector<QStringList>;

constexpr int Categoria = 1; ///< columns of the two grids
constexpr int Secuencia = 4;
constexpr int IncPvp = 5;
constexpr int Peso = 10;

/// An operator configures the article 01A by hand, copies it to its group (01B) and lets the
/// program run; 01C is of another group.
struct AMano : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        QImage foto(40, 30, QImage::Format_RGB32);
        foto.fill(Qt::red);
        ASSERT_TRUE(foto.save(empresa->Actual() + "/rojo.jpg", "JPEG"));
        const QString grupo = "'0007'";
        const QString categoria = "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ";
        const QString opcion =
            "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ";
        empresa->Sql(
            SqlArticulo("01A", {{"CODGRUPO", grupo}, {"FOTO", RutaDeFoto()}}) +
            SqlArticulo("01B", {{"CODGRUPO", grupo}}) + SqlArticulo("01C") + categoria +
            "('COL','Color');\n" + categoria + "('MED','Medida');\n" + opcion +
            "('COL','001','Azul');\n" + opcion + "('COL','002','Rojo');\n" + opcion +
            "('MED','010','Chico');\n" + opcion + "('MED','020','Grande');\n" +
            "INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (1,'0007','Ollas');\n");
        motor = std::make_unique<VentanaReal>(*empresa);
        Edita();
        corrida = empresa->Corre();
    }
    static void TearDownTestSuite()
    {
        motor.reset();
        empresa.reset();
    }

    static QString RutaDeFoto() { return "'" + empresa->Actual() + "/rojo.jpg'"; }

    static void Edita()
    {
        EscritorioDePrueba escritorio;
        FrmConsPSArtConfigurador ventana(motor->Programa(), escritorio);
        Muestra(ventana);
        auto& articulo = Hijo<QLineEdit>(ventana, "txtCampo_0");
        QTest::keyClicks(&articulo, "01A");
        QTest::keyClick(&articulo, Qt::Key_Return);
        Reposa();
        EXPECT_EQ(Hijo<QLabel>(ventana, "LblDesArt").text(), "Art 01A");
        PonCategorias(ventana);
        PonIncrementos(ventana);
        previstas = Previstas(ventana);
        Copia(ventana);
        ventana.close();
    }
    static void Elige(FrmConsPSArtConfigurador& ventana, const char* pagina)
    {
        Hijo<QTabWidget>(ventana, "SSTab1").setCurrentWidget(&Hijo<QWidget>(ventana, pagina));
        Reposa();
    }
    static void Escribe(QTableView& grid, int fila, int columna, const char* texto)
    {
        TecleaEnCelda(grid, fila, columna, texto);
        QTest::keyClick(Editor(grid), Qt::Key_Return);
        Reposa();
    }
    static void PonCategorias(FrmConsPSArtConfigurador& ventana)
    {
        auto& grid = Hijo<data::ui::DataGrid>(ventana, "DataGrid1");
        motor->avisos.respuestas = {Respuesta::Si, Respuesta::Si};
        Escribe(grid, 0, Categoria, "col");
        QTest::keyClick(&grid, Qt::Key_Down);
        Escribe(grid, 1, Categoria, "med");
        PulsaCelda(grid, 0, Categoria);
    }
    /// Red first, for 2 more and half a kilo; the big size for 0.25 more, and a picture of red.
    static void PonIncrementos(FrmConsPSArtConfigurador& ventana)
    {
        auto& categorias = Hijo<data::ui::DataGrid>(ventana, "DataGrid1");
        auto& grid = Hijo<data::ui::DataGrid>(ventana, "DataGrid2");
        Elige(ventana, "PaginaValores");
        Escribe(grid, 1, IncPvp, "2");
        Escribe(grid, 1, Peso, "0,5");
        Escribe(grid, 1, Secuencia, "0");
        EXPECT_TRUE(grid.GuardaFila());
        auto& foto = Hijo<QLineEdit>(ventana, "txtCampo_1");
        foto.setFocus();
        QTest::keyClicks(&foto, empresa->Actual() + "/rojo.jpg");
        QTest::keyClick(&foto, Qt::Key_Tab);
        Elige(ventana, "PaginaAtributos");
        PulsaCelda(categorias, 1, Categoria);
        Elige(ventana, "PaginaValores");
        Escribe(grid, 1, IncPvp, "0,25");
        EXPECT_TRUE(grid.GuardaFila());
        Reposa();
    }
    static QStringList Previstas(FrmConsPSArtConfigurador& ventana)
    {
        Elige(ventana, "PaginaCombinaciones");
        EXPECT_EQ(Hijo<QLabel>(ventana, "LblCombinaciones").text(), "4 combinaciones");
        auto& lista = Hijo<QTableView>(ventana, "GridCombinaciones");
        QStringList filas;
        for (int i = 0; i < lista.model()->rowCount(); ++i) {
            QStringList celdas;
            for (int j = 0; j < lista.model()->columnCount(); ++j)
                celdas << Celda(lista, i, j);
            filas << celdas.join('|');
        }
        return filas;
    }
    static void Copia(FrmConsPSArtConfigurador& ventana)
    {
        Elige(ventana, "PaginaCopia");
        auto& grupo = Hijo<QLineEdit>(ventana, "TxtGrupo");
        grupo.setFocus();
        QTest::keyClicks(&grupo, "7");
        motor->avisos.respuestas = {Respuesta::Si};
        QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdExporta"), Qt::LeftButton);
        EXPECT_EQ(Hijo<QLabel>(ventana, "LblGrupo").text(), "Ollas");
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline std::unique_ptr<VentanaReal> motor{};
    static inline QStringList previstas{};
    static inline ResultadoCorrida corrida{};
};

TEST_F(AMano, LaVistaPreviaDiceLasQueHabra)
{
    EXPECT_EQ(previstas,
              QStringList({"1|002 · Rojo|010 · Chico|2|0.5", "2|002 · Rojo|020 · Grande|2.25|0.5",
                           "3|001 · Azul|010 · Chico|0|0", "4|001 · Azul|020 · Grande|0.25|0"}));
}

TEST_F(AMano, SoloSeVieronLasPreguntasDelCamino)
{
    QStringList textos;
    for (const auto& caja : motor->avisos.cajas)
        textos << caja.texto;
    EXPECT_EQ(
        textos,
        QStringList(
            {"Desea recuperar todos los valores de la categoria seleccionada?",
             "Desea recuperar todos los valores de la categoria seleccionada?",
             "Atención, la configuración reemplazará la que tengan \rlos artículos de la selección, ¿Continuar?",
             "Exportación concluida"}));
}

TEST_F(AMano, LaTiendaTieneLasCombinacionesDeLosDosConSusPreciosYPesos)
{
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    // The column of this generation takes the run's NULL as 0.
    EXPECT_EQ(
        tienda->Sql(
            "SELECT p.reference,a.id_product_attribute % 100000,a.price,a.weight,a.default_on FROM ps_product_attribute a JOIN ps_product p ON p.id_product=a.id_product ORDER BY 1,2"),
        (Filas{{"01A", "1", "2.000000", "0.500000", "1"},
               {"01A", "2", "2.250000", "0.500000", "0"},
               {"01A", "3", "0.000000", "0.000000", "0"},
               {"01A", "4", "0.250000", "0.000000", "0"},
               {"01B", "1", "2.000000", "0.500000", "1"},
               {"01B", "2", "2.250000", "0.500000", "0"},
               {"01B", "3", "0.000000", "0.000000", "0"},
               {"01B", "4", "0.250000", "0.000000", "0"}}));
}

TEST_F(AMano, CadaCombinacionLlevaSusValores)
{
    EXPECT_EQ(
        tienda->Sql(
            "SELECT p.reference,c.id_product_attribute % 100000,GROUP_CONCAT(l.name ORDER BY l.name) FROM ps_product_attribute_combination c JOIN ps_product_attribute a ON a.id_product_attribute=c.id_product_attribute JOIN ps_product p ON p.id_product=a.id_product JOIN ps_attribute_lang l ON l.id_attribute=c.id_attribute WHERE p.reference='01A' GROUP BY 1,2 ORDER BY 1,2"),
        (Filas{{"01A", "1", "Chico,Rojo"},
               {"01A", "2", "Grande,Rojo"},
               {"01A", "3", "Azul,Chico"},
               {"01A", "4", "Azul,Grande"}}));
}

TEST_F(AMano, LaFotoDelRojoEstaEnSusCombinacionesYEnElDisco)
{
    const auto enlaces = tienda->Sql(
        "SELECT p.reference,i.id_product_attribute % 100000,i.id_image FROM ps_product_attribute_image i JOIN ps_product_attribute a ON a.id_product_attribute=i.id_product_attribute JOIN ps_product p ON p.id_product=a.id_product ORDER BY 1,2");

    ASSERT_EQ(enlaces.size(), 4U) << "two combinations of each article";
    QStringList cuales;
    for (const QStringList& enlace : enlaces) {
        cuales << enlace[0] + enlace[1];
        QString ruta = "img/p/";
        for (const QChar cifra : enlace[2])
            ruta += QString(cifra) + '/';
        EXPECT_TRUE(tienda->ExisteFichero(ruta + enlace[2] + ".jpg")) << qPrintable(ruta);
    }
    EXPECT_EQ(cuales, QStringList({"01A1", "01A2", "01B1", "01B2"}));
    EXPECT_EQ(enlaces[0][2], enlaces[1][2]) << "one picture for both";
    EXPECT_NE(enlaces[0][2], enlaces[2][2]) << "each article has its own";
}

} // namespace
