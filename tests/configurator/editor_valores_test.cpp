#include "configurador_de_prueba.h"
#include "configurator/editor_valores.h"
#include "data/modelo_grid.h"

using namespace tolmo;
using namespace tolmo::configurator;

namespace {

class EditorValores : public testing::Test, public ConfiguradorDePrueba {};

TEST_F(EditorValores, SeLeenEnSuSecuencia)
{
    EXPECT_EQ(
        SqlLlenaGridVal("", "A1", "MED"),
        "SELECT * FROM PS_CONF_ART_VAL WHERE  True  AND CODARTICULO='A1' AND CodCategoria='MED' ORDER BY SECUENCIA");
    EXPECT_EQ(
        SqlLlenaGridVal("(PESO > 0)", "A1", "MED"),
        "SELECT * FROM PS_CONF_ART_VAL WHERE (PESO > 0) AND CODARTICULO='A1' AND CodCategoria='MED' ORDER BY SECUENCIA");
    EXPECT_EQ(Tabla(SqlLlenaGridVal("(PESO > 0)", "A1", "MED")),
              "A1|MED|010|41|1|1.5|0|0|0|0|0.25|C:\\f\\a.jpg");
}

TEST_F(EditorValores, UnValorQueNoEsDeLaCategoriaSeAvisa)
{
    EXPECT_FALSE(CompruebaValor(programa, "A1", "MED", "azu", true));

    EXPECT_EQ(avisos.cajas, (Cajas{{"Valor no valido", 48, ""}}));
    EXPECT_EQ(
        sentencias,
        QStringList("SELECT * FROM M_OPCIONALES WHERE CODCATEGORIA='MED' AND CODOPCIONAL='AZU'"));
}

TEST_F(EditorValores, UnValorNuevoEntraEnMayusculasConElNumeroSiguienteYACero)
{
    const auto tecleado = CompruebaValor(programa, "A2", "COL", "azu", true);

    ASSERT_TRUE(tecleado);
    EXPECT_EQ(tecleado->valor, "AZU");
    EXPECT_EQ(tecleado->otras, (data::Cambios{{"Codarticulo", "A2"},
                                              {"CodCategoria", "COL"},
                                              {"id", 42.0},
                                              {"secuencia", 0},
                                              {"INC_PVP", 0},
                                              {"INC_PVP2", 0},
                                              {"INC_PVP3", 0},
                                              {"INC_PVP4", 0},
                                              {"INC_PVP5", 0},
                                              {"PESO", 0}}));
}

TEST_F(EditorValores, ElPrimerValorDeTodosTieneElNumeroUno)
{
    Ejecuta({"DELETE FROM PS_CONF_ART_VAL"});

    EXPECT_EQ(SiguienteId(programa), 1);
}

TEST_F(EditorValores, OtroValorEnUnaFilaQueYaEstabaNoLeCambiaLoDemas)
{
    const auto tecleado = CompruebaValor(programa, "A1", "MED", "020", false);

    ASSERT_TRUE(tecleado);
    EXPECT_EQ(tecleado->valor, "020");
    EXPECT_TRUE(tecleado->otras.empty());
}

TEST_F(EditorValores, UnValorVacioNoSeBuscaNiSeAvisa)
{
    const auto tecleado = CompruebaValor(programa, "A1", "MED", "", true);

    ASSERT_TRUE(tecleado);
    EXPECT_TRUE(tecleado->valor.isEmpty());
    EXPECT_TRUE(tecleado->otras.empty());
    EXPECT_TRUE(sentencias.isEmpty() && avisos.cajas.empty());
}

TEST(TextoDeColumna, LosIncrementosDePrecioSonNumerosYElPesoQuedaComoSeTecleo)
{
    for (const char* columna : {"INC_PVP", "INC_PVP2", "INC_PVP3", "INC_PVP4", "inc_pvp5"}) {
        EXPECT_EQ(TextoDeColumna(columna, ""), "0") << columna;
        EXPECT_EQ(TextoDeColumna(columna, "tres"), "0") << columna;
        EXPECT_EQ(TextoDeColumna(columna, " 2.50 "), "2.5") << columna;
        EXPECT_EQ(TextoDeColumna(columna, "2,50"), "2.5") << columna;
    }
    EXPECT_EQ(TextoDeColumna("PESO", "tres"), "tres");
    EXPECT_EQ(TextoDeColumna("PESO", ""), "");
    EXPECT_EQ(TextoDeColumna("SECUENCIA", "tres"), "tres");
}

TEST(IncrementosVacios, LosQueNoTienenNumeroPasanACero)
{
    const auto fila = [](const QString& columna) -> data::Valor {
        return columna == "INC_PVP"    ? data::Nulo()
               : columna == "INC_PVP3" ? data::Valor()
               : columna == "INC_PVP4" ? data::Valor("x")
                                       : data::Valor(1.5);
    };

    EXPECT_EQ(IncrementosVacios(fila),
              (data::Cambios{{"INC_PVP", 0.0}, {"INC_PVP3", 0.0}, {"INC_PVP4", 0.0}}));
}

/// The grid of the values as a window puts it together.
class GridDeValores : public EditorValores {
  protected:
    GridDeValores()
    {
        grid.columnas = {{.DataField = "VALOR"}, {.DataField = "INC_PVP"}, {.DataField = "PESO"}};
        grid.AllowUpdate = grid.AllowAddNew = grid.AllowDelete = true;
        modelo.eventos.antesDeColumna = [this](int columna, QString& texto) {
            return Teclea(columna, texto);
        };
        adodc.Abre(SqlLlenaGridVal("", "A1", "MED"), true);
    }

    bool Teclea(int columna, QString& texto)
    {
        const auto pon = [this](const data::Cambios& cambios) {
            for (const auto& [otra, valor] : cambios)
                modelo.PonValor(otra, valor);
        };
        if (columna == 0) {
            const auto tecleado =
                CompruebaValor(programa, "A1", "MED", texto, modelo.EsFilaNueva(fila));
            if (!tecleado)
                return false;
            texto = tecleado->valor;
            pon(tecleado->otras);
        }
        texto = TextoDeColumna(grid.columnas[static_cast<std::size_t>(columna)].DataField, texto);
        pon(IncrementosVacios([this](const QString& otra) { return modelo.ValorDe(fila, otra); }));
        return true;
    }
    bool Escribe(int enFila, int columna, const char* texto)
    {
        fila = enFila;
        return modelo.setData(modelo.index(fila, columna), QString::fromUtf8(texto));
    }

    int fila = 0;
    data::Grid grid{};
    data::Adodc adodc{programa, programa.ConexionLocal};
    data::ModeloGrid modelo{grid, adodc};
};

TEST_F(GridDeValores, UnaFilaNuevaSeGuardaEntera)
{
    Ejecuta({"INSERT INTO M_OPCIONALES VALUES ('MED','03a','20 cm',NULL)"});

    ASSERT_TRUE(Escribe(2, 0, "03a"));
    ASSERT_TRUE(Escribe(2, 1, "x"));
    ASSERT_TRUE(modelo.GuardaFila());

    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_VAL WHERE ID=42"),
              "A1|MED|03A|42|0|0|0|0|0|0|0|NULL");
}

TEST_F(GridDeValores, CambiarElPesoDejaACeroElIncrementoSinNumero)
{
    ASSERT_TRUE(Escribe(1, 2, "0.75"));
    ASSERT_TRUE(modelo.GuardaFila());

    EXPECT_EQ(Tabla("SELECT INC_PVP,PESO FROM PS_CONF_ART_VAL WHERE ID=7"), "0|0.75");
    EXPECT_EQ(Tabla("SELECT INC_PVP,PESO FROM PS_CONF_ART_VAL WHERE ID=41"), "1.5|0.25");
}

TEST_F(GridDeValores, UnPesoQueNoEsNumeroSeRechazaYUnoVacioQuedaNulo)
{
    EXPECT_FALSE(Escribe(0, 2, "tres"));
    ASSERT_TRUE(Escribe(0, 2, ""));
    ASSERT_TRUE(modelo.GuardaFila());

    EXPECT_EQ(Tabla("SELECT INC_PVP,PESO FROM PS_CONF_ART_VAL WHERE ID=41"), "1.5|NULL");
}

TEST_F(GridDeValores, UnValorBorradoQuedaNulo)
{
    ASSERT_TRUE(Escribe(0, 0, ""));
    ASSERT_TRUE(modelo.GuardaFila());

    EXPECT_EQ(Tabla("SELECT VALOR,SECUENCIA FROM PS_CONF_ART_VAL WHERE ID=41"), "NULL|1");
}

TEST_F(EditorValores, AntesDeUnValorSeBorranSusComponentesPorNumeroYSusOperaciones)
{
    Ejecuta({"INSERT INTO CONF_COMPONENTES VALUES ('A1','MED','010',41)",
             "INSERT INTO CONF_COMPONENTES VALUES ('A1','MED','010',40)",
             "INSERT INTO CONF_OPERACIONES VALUES ('A1','MED','010')"});

    BorraComponentesDeValor(programa, "A1", "MED", "010", 41);

    EXPECT_EQ(
        sentencias,
        (QStringList{
            "DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010' AND ID=41",
            "DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'"}));
    EXPECT_EQ(Tabla("SELECT ID FROM CONF_COMPONENTES"), "40");
    EXPECT_EQ(Tabla("SELECT * FROM CONF_OPERACIONES"), "");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM PS_CONF_ART_VAL"), "2");
}

TEST_F(EditorValores, ElDetalleEsLaDescripcionDeLaOpcionYLaFoto)
{
    EXPECT_EQ(LeeDetalleValor(programa, "A1", "MED", "010"),
              (DetalleValor{.descripcion = "14 cm", .Foto = "C:\\f\\a.jpg"}));
    EXPECT_EQ(
        sentencias.first(),
        "SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'");
}

TEST_F(EditorValores, SinOpcionNoHayDescripcionYSinFotoNoHayRuta)
{
    Ejecuta({"DELETE FROM M_OPCIONALES"});

    EXPECT_EQ(LeeDetalleValor(programa, "A1", "MED", "020"), DetalleValor{});
}

TEST_F(EditorValores, UnValorQueElArticuloNoTieneNoTieneDetalle)
{
    EXPECT_FALSE(LeeDetalleValor(programa, "A1", "COL", "AZU"));
}

} // namespace
