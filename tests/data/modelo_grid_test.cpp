#include "data/modelo_grid.h"
#include "grid_de_prueba.h"
#include <QSignalSpy>

using namespace tolmo;
using data::ModeloGrid;
using data::Respuesta;

namespace {

constexpr int Codigo = 0;
constexpr int Nombre = 1;
constexpr int Precio = 2;
constexpr int Alta = 3;
constexpr int Activo = 4;
constexpr int FilaNueva = 4;

/// The grid over all columns, so that one that isn't shown can be given a value.
class ModeloGridTest : public testing::Test, public ArticulosDePrueba {
  protected:
    ModeloGridTest()
    {
        grid.AllowUpdate = grid.AllowAddNew = grid.AllowDelete = true;
        Abre();
        escrituras = 0;
    }

    void Abre() { adodc.Abre("SELECT * FROM ARTICULOS ORDER BY CODIGO", true); }
    bool Escribe(int fila, int columna, const char* texto)
    {
        return modelo.setData(modelo.index(fila, columna), QString::fromUtf8(texto));
    }
    QString Celda(int fila, int columna) const
    {
        return modelo.index(fila, columna).data().toString();
    }
    bool Editable(int fila, int columna) const
    {
        return modelo.index(fila, columna).flags().testFlag(Qt::ItemIsEditable);
    }
    QString Nombres() { return Tabla("SELECT NOMBRE FROM ARTICULOS ORDER BY CODIGO"); }

    ModeloGrid modelo{grid, adodc};
};

TEST_F(ModeloGridTest, MuestraLasFilasBajoSusRotulos)
{
    EXPECT_EQ(modelo.columnCount(), 5);
    EXPECT_EQ(modelo.rowCount(), 5);
    EXPECT_EQ(modelo.Filas(), 4);
    EXPECT_EQ(modelo.headerData(Nombre, Qt::Horizontal).toString(), "Nombre");
    EXPECT_EQ(Celda(1, Nombre), "Llave de D'Arc");
    EXPECT_EQ(Celda(1, Precio), "30");
    EXPECT_EQ(Celda(1, Alta), "01/03/2024");
    EXPECT_EQ(Celda(1, Activo), "No");
    EXPECT_EQ(Celda(3, Precio), "");
    EXPECT_EQ(Celda(FilaNueva, Nombre), "");
    EXPECT_EQ(modelo.headerData(FilaNueva, Qt::Vertical).toString(), "*");
    EXPECT_EQ(modelo.headerData(0, Qt::Vertical).toString(), " ");
}

TEST_F(ModeloGridTest, LosNumerosVanALaDerecha)
{
    const auto alineado = [&](int columna) {
        return modelo.index(0, columna).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };

    EXPECT_TRUE(alineado(Precio).testFlag(Qt::AlignRight));
    EXPECT_FALSE(alineado(Nombre).testFlag(Qt::AlignRight));
    EXPECT_FALSE(alineado(Alta).testFlag(Qt::AlignRight));
}

TEST_F(ModeloGridTest, SinRotuloVaElNombreDeLaColumna)
{
    grid.columnas[Nombre].Caption.clear();

    EXPECT_EQ(modelo.headerData(Nombre, Qt::Horizontal).toString(), "NOMBRE");
}

TEST_F(ModeloGridTest, UnaColumnaQueElConjuntoNoTieneQuedaEnBlanco)
{
    grid.columnas[Precio].DataField = "COLOR";
    Abre();

    EXPECT_EQ(Celda(0, Precio), "");
    EXPECT_FALSE(Editable(0, Precio));
    EXPECT_FALSE(Escribe(0, Precio, "rojo"));
}

TEST_F(ModeloGridTest, SoloSePuedeLoQueElGridPermite)
{
    EXPECT_TRUE(Editable(0, Nombre));
    EXPECT_TRUE(Editable(FilaNueva, Nombre));

    grid.AllowUpdate = false;
    EXPECT_FALSE(Editable(0, Nombre));
    EXPECT_TRUE(Editable(FilaNueva, Nombre));

    grid.AllowAddNew = false;
    Abre();
    EXPECT_EQ(modelo.rowCount(), 4);

    grid.AllowUpdate = true;
    adodc.Abre("SELECT * FROM ARTICULOS ORDER BY CODIGO", false);
    EXPECT_FALSE(Editable(0, Nombre)) << "a record set that is only read";
}

TEST_F(ModeloGridTest, LoEscritoEsperaAQueSeDejeLaFila)
{
    EXPECT_TRUE(Escribe(0, Nombre, "Clavo"));
    EXPECT_TRUE(Escribe(0, Precio, "12.5"));
    EXPECT_TRUE(modelo.HayCambios());
    EXPECT_EQ(Celda(0, Nombre), "Clavo");
    EXPECT_EQ(escrituras, 0);

    EXPECT_TRUE(modelo.GuardaFila());

    EXPECT_EQ(escrituras, 1);
    EXPECT_FALSE(modelo.HayCambios());
    EXPECT_EQ(Tabla("SELECT NOMBRE,PRECIO FROM ARTICULOS WHERE CODIGO='A1'"), "Clavo|12.5");
    EXPECT_EQ(Celda(0, Nombre), "Clavo");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ModeloGridTest, EscribirEnOtraFilaGuardaLaAnterior)
{
    Escribe(0, Nombre, "Clavo");
    Escribe(1, Nombre, "Alicate");

    EXPECT_EQ(escrituras, 1);
    EXPECT_EQ(Nombres(), "Clavo Llave de D'Arc Arandela Tornillo largo");
}

TEST_F(ModeloGridTest, SinCambiosNoSeEscribeNada)
{
    EXPECT_TRUE(Escribe(0, Nombre, "Tornillo"));
    EXPECT_FALSE(modelo.HayCambios());
    EXPECT_TRUE(modelo.GuardaFila());
    EXPECT_EQ(escrituras, 0);
}

TEST_F(ModeloGridTest, DescartarDevuelveLoQueHabia)
{
    Escribe(0, Nombre, "Clavo");
    Escribe(0, Precio, "12.5");

    modelo.DescartaFila();

    EXPECT_EQ(Celda(0, Nombre), "Tornillo");
    EXPECT_EQ(Celda(0, Precio), "10");
    EXPECT_FALSE(modelo.HayCambios());
    EXPECT_EQ(escrituras, 0);
}

TEST_F(ModeloGridTest, CadaClaseDeValorSeEscribe)
{
    Escribe(0, Precio, "");
    Escribe(0, Alta, "31/12/2023 8:05");
    Escribe(0, Activo, "n");
    modelo.GuardaFila();

    EXPECT_EQ(Tabla("SELECT PRECIO,ALTA,ACTIVO FROM ARTICULOS WHERE CODIGO='A1'"),
              "NULL|31/12/2023 8:05:00|False");
    EXPECT_EQ(Celda(0, Activo), "No");
    EXPECT_EQ(Celda(0, Alta), "31/12/2023 8:05:00");
}

struct CasoRechazo {
    const char* regla;
    int columna;
    const char* texto;
    const char* motivo;
};

class RechazoEnGrid : public ModeloGridTest, public testing::WithParamInterface<CasoRechazo> {};

TEST_P(RechazoEnGrid, SeDiceYTodoQuedaComoEstaba)
{
    const QString antes = Celda(0, GetParam().columna);

    EXPECT_FALSE(Escribe(0, GetParam().columna, GetParam().texto));

    EXPECT_EQ(
        avisos.cajas,
        (std::vector<AvisosDePrueba::Caja>{
            {QStringLiteral(
                 "ERROR: Ha cumplimentado un campo de forma incorrecta, corrijalo e intentelo de nuevo: ") +
                 QString::fromUtf8(GetParam().motivo),
             16, ""}}));
    EXPECT_EQ(Celda(0, GetParam().columna), antes);
    EXPECT_FALSE(modelo.HayCambios());
    EXPECT_EQ(escrituras, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, RechazoEnGrid,
    testing::Values(CasoRechazo{"TextoLargo", Nombre, "veintiuna letras justa",
                                "«Nombre» admite como máximo 20 caracteres y el texto tiene 22."},
                    CasoRechazo{"NoEsNumero", Precio, "diez", "«Precio» tiene que ser un número."},
                    CasoRechazo{"NumeroDondeVaUnaFecha", Alta, "15",
                                "«Alta» tiene que ser una fecha (dd/mm/aaaa)."},
                    CasoRechazo{"NoEsSiNiNo", Activo, "quizás", "«Activo» tiene que ser Sí o No."}),
    [](const auto& caso) { return caso.param.regla; });

TEST_F(ModeloGridTest, LoQueElMotorRechazaSeDiceYSigueEsperando)
{
    EXPECT_TRUE(Escribe(1, Codigo, "A1"));
    EXPECT_TRUE(Escribe(1, Nombre, "Otra"));

    EXPECT_FALSE(modelo.GuardaFila());

    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(
        avisos.cajas[0].texto,
        "No se ha podido guardar la fila: El valor está duplicado en un índice único: ARTICULOS.CODIGO");
    EXPECT_EQ(avisos.cajas[0].estilo, 48);
    EXPECT_TRUE(modelo.HayCambios());
    EXPECT_EQ(Celda(1, Codigo), "A1");
    EXPECT_EQ(Celda(1, Nombre), "Otra");
    EXPECT_EQ(Tabla("SELECT CODIGO,NOMBRE FROM ARTICULOS WHERE CODIGO='A2'"), "A2|Llave de D'Arc");

    Escribe(1, Codigo, "A9");
    EXPECT_TRUE(modelo.GuardaFila());
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ARTICULOS WHERE CODIGO='A9'"), "Otra");
}

TEST_F(ModeloGridTest, UnaFilaRechazadaNoDejaEscribirEnOtra)
{
    Escribe(1, Codigo, "A1");

    EXPECT_FALSE(Escribe(2, Nombre, "Otra"));

    EXPECT_EQ(Celda(2, Nombre), "Arandela");
    EXPECT_EQ(Celda(1, Codigo), "A1");
}

TEST_F(ModeloGridTest, UnaColumnaObligatoriaVaciaSeDice)
{
    Escribe(0, Nombre, "");

    EXPECT_FALSE(modelo.GuardaFila());

    EXPECT_EQ(
        avisos.cajas[0].texto,
        "No se ha podido guardar la fila: El campo ARTICULOS.NOMBRE no puede quedar sin valor");
    EXPECT_EQ(Celda(0, Nombre), "");
}

TEST_F(ModeloGridTest, UnaFilaQueOtroProgramaBorroSeDiceYLoEscritoQueda)
{
    Ejecuta({"DELETE FROM ARTICULOS WHERE CODIGO='A2'"});
    Escribe(1, Nombre, "Otra");

    EXPECT_FALSE(modelo.GuardaFila());

    EXPECT_EQ(avisos.cajas[0].texto,
              "No se ha podido guardar la fila: El registro de ARTICULOS ya no existe");
    EXPECT_EQ(Celda(1, Nombre), "Otra");
    modelo.DescartaFila();
    EXPECT_EQ(Celda(1, Nombre), "Llave de D'Arc");
}

TEST_F(ModeloGridTest, LaFilaDelPieAnadeConLosValoresDeLaVentana)
{
    modelo.eventos.filaNueva = [] { return data::Cambios{{"EMPRESA", "000009"}, {"PRECIO", 7}}; };

    EXPECT_TRUE(Escribe(FilaNueva, Codigo, "C1"));
    EXPECT_EQ(Celda(FilaNueva, Precio), "7");
    EXPECT_TRUE(Escribe(FilaNueva, Nombre, "Nueva"));
    EXPECT_EQ(escrituras, 0);
    EXPECT_TRUE(modelo.GuardaFila());

    EXPECT_EQ(Tabla("SELECT CODIGO,NOMBRE,PRECIO,EMPRESA FROM ARTICULOS WHERE CODIGO='C1'"),
              "C1|Nueva|7|000009");
    EXPECT_EQ(escrituras, 1);
    EXPECT_EQ(modelo.rowCount(), 6);
    EXPECT_EQ(Celda(FilaNueva, Nombre), "Nueva");
    EXPECT_TRUE(modelo.EsFilaNueva(5));
    EXPECT_EQ(Celda(5, Nombre), "");
    EXPECT_EQ(Actual(), "C1");

    EXPECT_TRUE(Escribe(FilaNueva, Nombre, "Corregida"));
    EXPECT_TRUE(modelo.GuardaFila());
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ARTICULOS WHERE CODIGO='C1'"), "Corregida");
}

TEST_F(ModeloGridTest, UnaFilaNuevaRechazadaSigueAlPie)
{
    Escribe(FilaNueva, Codigo, "A1");
    Escribe(FilaNueva, Nombre, "Repetida");

    EXPECT_FALSE(modelo.GuardaFila());

    EXPECT_EQ(modelo.rowCount(), 5);
    EXPECT_EQ(Celda(FilaNueva, Nombre), "Repetida");
    modelo.DescartaFila();
    EXPECT_EQ(Celda(FilaNueva, Nombre), "");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM ARTICULOS"), "4");
}

TEST_F(ModeloGridTest, UnaFilaNuevaEnLaQueNadaSeAceptoNoHaEmpezado)
{
    modelo.eventos.filaNueva = [] { return data::Cambios{{"EMPRESA", "000009"}}; };

    EXPECT_FALSE(Escribe(FilaNueva, Precio, "diez"));

    EXPECT_FALSE(modelo.HayCambios());
    EXPECT_TRUE(modelo.GuardaFila());
    EXPECT_EQ(escrituras, 0);
}

TEST_F(ModeloGridTest, LaVentanaPuedeReescribirElTextoYPonerOtrasColumnas)
{
    modelo.eventos.antesDeColumna = [this](int columna, QString& texto) {
        EXPECT_EQ(columna, Codigo);
        texto = texto.toUpper();
        modelo.PonValor("NOMBRE", "De " + texto);
        return true;
    };

    EXPECT_TRUE(Escribe(0, Codigo, "z9"));
    EXPECT_EQ(modelo.ValorDe(0, "CODIGO"), data::Valor("Z9"));
    EXPECT_EQ(Celda(0, Nombre), "De Z9");
    modelo.GuardaFila();

    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ARTICULOS WHERE CODIGO='Z9'"), "De Z9");
}

TEST_F(ModeloGridTest, LaVentanaPuedeRechazarYAunAsiPonerOtraColumna)
{
    modelo.eventos.antesDeColumna = [this](int, QString&) {
        modelo.PonValor("ACTIVO", false);
        return false;
    };

    EXPECT_FALSE(Escribe(0, Codigo, "Z9"));
    EXPECT_EQ(Celda(0, Codigo), "A1");
    EXPECT_EQ(Celda(0, Activo), "No");
    modelo.GuardaFila();

    EXPECT_EQ(Tabla("SELECT CODIGO,ACTIVO FROM ARTICULOS WHERE NOMBRE='Tornillo'"), "A1|False");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ModeloGridTest, TrasLaColumnaElValorYaEsElNuevo)
{
    QStringList vistos;
    modelo.eventos.trasColumna = [&](int columna) {
        vistos << QString::number(columna) + data::Texto(modelo.ValorDe(0, "NOMBRE"));
    };

    Escribe(0, Nombre, "Clavo");
    Escribe(0, Precio, "diez");

    EXPECT_EQ(vistos, QStringList("1Clavo"));
}

TEST_F(ModeloGridTest, BorrarPreguntaYSinElSiNoBorra)
{
    avisos.respuestas = {Respuesta::No};

    modelo.BorraFilas({1});

    EXPECT_EQ(avisos.cajas, (std::vector<AvisosDePrueba::Caja>{
                                {"¿Eliminar la fila seleccionada?", 4 + 32 + 256, ""}}));
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
    EXPECT_EQ(escrituras, 0);
}

TEST_F(ModeloGridTest, BorraLasFilasElegidas)
{
    avisos.respuestas = {Respuesta::Si};

    modelo.BorraFilas({0, 2, FilaNueva});

    EXPECT_EQ(avisos.cajas[0].texto, "¿Eliminar las 2 filas seleccionadas?");
    EXPECT_EQ(Tabla("SELECT CODIGO FROM ARTICULOS ORDER BY CODIGO"), "A2 B2");
    EXPECT_EQ(Codigos(), "A2 B2");
    EXPECT_EQ(modelo.rowCount(), 3);
    EXPECT_EQ(Actual(), "A2");
}

TEST_F(ModeloGridTest, BorradaLaUltimaQuedaLaQueVaDelante)
{
    avisos.respuestas = {Respuesta::Si};

    modelo.BorraFilas({3});

    EXPECT_EQ(Actual(), "B1");
}

TEST_F(ModeloGridTest, LaFilaDelPieNoSeBorra)
{
    modelo.BorraFilas({FilaNueva});

    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ModeloGridTest, BorrarLaFilaEnLaQueSeEscribeDescartaLoEscrito)
{
    avisos.respuestas = {Respuesta::Si};
    Escribe(1, Codigo, "A1");

    modelo.BorraFilas({1});

    EXPECT_EQ(Codigos(), "A1 B1 B2");
    EXPECT_FALSE(modelo.HayCambios());
}

TEST_F(ModeloGridTest, LaVentanaBorraAntesLoSuyoOLoImpide)
{
    avisos.respuestas = {Respuesta::Si, Respuesta::Si};
    QStringList vistas;
    modelo.eventos.antesDeBorrar = [&] {
        vistas << Actual();
        return Actual() != "A1";
    };

    modelo.BorraFilas({0});
    modelo.BorraFilas({1});

    EXPECT_EQ(vistas, QStringList({"A1", "A2"}));
    EXPECT_EQ(Codigos(), "A1 B1 B2");
}

TEST_F(ModeloGridTest, LaVentanaQuePreguntaPorSiMismaCallaAlGrid)
{
    grid.preguntaAlBorrar = false;

    modelo.BorraFilas({0});

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Codigos(), "A2 B1 B2");
}

TEST_F(ModeloGridTest, LoQueNoSePuedeBorrarSeDice)
{
    adodc.Abre("SELECT * FROM ARTICULOS ORDER BY CODIGO", false);
    avisos.respuestas = {Respuesta::Si};

    modelo.BorraFilas({0});

    EXPECT_EQ(
        avisos.cajas.back().texto,
        "No se ha podido eliminar la fila: El conjunto de registros actual no admite actualizaciones.");
    EXPECT_EQ(avisos.cajas.back().estilo, 48);
    EXPECT_EQ(modelo.rowCount(), 4);
}

TEST_F(ModeloGridTest, AlReabrirseSeMuestraLoNuevo)
{
    QSignalSpy reinicio(&modelo, &QAbstractItemModel::modelReset);
    Ejecuta({"INSERT INTO ARTICULOS (CODIGO,NOMBRE) VALUES ('A0','Antes')"});

    Abre();

    EXPECT_EQ(reinicio.count(), 1);
    EXPECT_EQ(modelo.Filas(), 5);
    EXPECT_EQ(Celda(0, Nombre), "Antes");
}

} // namespace
