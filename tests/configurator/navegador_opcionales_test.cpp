#include "configurador_de_prueba.h"
#include "configurator/navegador_opcionales.h"
#include "data/modelo_grid.h"

using namespace tolmo;
using namespace tolmo::configurator;
using data::Respuesta;

namespace {

const AvisosDePrueba::Caja ValorDeTres{"El valor debe tener obligatoriamente 3 caracteres", 48, ""};
const AvisosDePrueba::Caja CodigoDeTres{"El código debe tener obligatoriamente 3 caracteres", 48,
                                        ""};
const AvisosDePrueba::Caja ValorAjeno{"El valor debe pertenecer a la categoria seleccionada", 48,
                                      ""};

class NavegadorOpcionales : public testing::Test, public ConfiguradorDePrueba {
  protected:
    Tecleado Teclea(int columna, const char* texto, const FilasActuales& actuales = {})
    {
        return CompruebaColumnaCategoria(programa, columna, QString::fromUtf8(texto), actuales);
    }
    QString Configurados()
    {
        return Tabla("SELECT CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT");
    }
    QString Valores() { return Tabla("SELECT VALOR FROM PS_CONF_ART_VAL ORDER BY VALOR"); }
};

TEST_F(NavegadorOpcionales, LasOpcionesSonLasDeLaCategoriaOLasDeNinguna)
{
    EXPECT_EQ(SqlCategoriasMaestras(), "SELECT * FROM M_OPCIONALES_CAT");
    EXPECT_EQ(SqlOpcionesMaestras("MED"), "select * from M_OPCIONALES WHERE CODCATEGORIA='MED'");
    EXPECT_EQ(SqlOpcionesMaestras(std::nullopt), "select * from M_OPCIONALES WHERE FALSE");
    EXPECT_EQ(Tabla(SqlOpcionesMaestras("COL")), "COL|AZU|Azul|Azul mar");
    EXPECT_EQ(Tabla(SqlOpcionesMaestras(std::nullopt)), "");
}

TEST_F(NavegadorOpcionales, ElNavegadorSePoneEnLaCategoriaDeQuienLoAbre)
{
    data::Adodc categorias(programa, programa.ConexionLocal);
    categorias.Abre(SqlCategoriasMaestras(), true);

    ASSERT_TRUE(categorias.Busca(CriterioDeCategoria("COL"), 0));

    EXPECT_EQ(data::Texto(categorias.Filas()["CODCATEGORIA"]), "COL");
    EXPECT_EQ(CriterioDeCategoria("COL"), "CODCATEGORIA='COL'");
}

TEST_F(NavegadorOpcionales, UnaOpcionNuevaEsDeLaCategoriaActual)
{
    EXPECT_EQ(OpcionNueva("MED"), (data::Cambios{{"CODCATEGORIA", "MED"}}));
}

TEST_F(NavegadorOpcionales, ElCodigoDeCategoriaTieneTresLetrasSinPasarAMayusculas)
{
    const Tecleado tecleado = Teclea(CODCATEGORIA, "abc");

    EXPECT_TRUE(tecleado.aceptado);
    EXPECT_EQ(tecleado.texto, "abc");
    EXPECT_EQ(tecleado.otras, (data::Cambios{{"OBLIGATORIO", false}}));
    EXPECT_TRUE(Teclea(CODCATEGORIA, "").aceptado);
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(NavegadorOpcionales, UnCodigoRechazadoTambienLaDejaSinObligatorio)
{
    const Tecleado tecleado = Teclea(CODCATEGORIA, "ab");

    EXPECT_FALSE(tecleado.aceptado);
    EXPECT_EQ(tecleado.otras, (data::Cambios{{"OBLIGATORIO", false}}));
    EXPECT_EQ(avisos.cajas, Cajas{ValorDeTres});
}

TEST_F(NavegadorOpcionales, ElValorPorDefectoTieneTresLetras)
{
    EXPECT_FALSE(Teclea(VALORDEF, "0100", {"MED", "010"}).aceptado);

    EXPECT_EQ(avisos.cajas, Cajas{ValorDeTres});
    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(NavegadorOpcionales, ElValorPorDefectoSeCompruebaConLaOpcionActualYNoConLoTecleado)
{
    EXPECT_TRUE(Teclea(VALORDEF, "zzz", {"MED", "010"}).aceptado);
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(Teclea(VALORDEF, "010", {"MED", "AZU"}).aceptado);
    EXPECT_EQ(avisos.cajas, Cajas{ValorAjeno});
    EXPECT_EQ(
        sentencias,
        (QStringList{"SELECT * FROM M_OPCIONALES WHERE CodCategoria='MED' AND CodOpcional='010'",
                     "SELECT * FROM M_OPCIONALES WHERE CodCategoria='MED' AND CodOpcional='AZU'"}));
}

TEST_F(NavegadorOpcionales, VaciarElValorPorDefectoTambienPideUnaOpcionActual)
{
    EXPECT_FALSE(Teclea(VALORDEF, "", {"MED", ""}).aceptado);
    EXPECT_TRUE(Teclea(VALORDEF, "", {"MED", "020"}).aceptado);
}

TEST_F(NavegadorOpcionales, ObligatorioEsLoQueSeTecleaComoSi)
{
    for (const char* si : {"s", "S", "si", "Si", "sí", "SÍ", "true", "TRUE", "1"})
        EXPECT_EQ(Teclea(OBLIGATORIO, si).texto, "True") << si;
    for (const char* no : {"", "n", "no", "0", "2", " s", "yes", "verdadero"})
        EXPECT_EQ(Teclea(OBLIGATORIO, no).texto, "False") << no;
}

TEST_F(NavegadorOpcionales, LosExtremosDelRangoTienenTresLetras)
{
    EXPECT_TRUE(Teclea(RDESDE, "010").aceptado);
    EXPECT_TRUE(Teclea(RHASTA, "").aceptado);
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(Teclea(RDESDE, "01").aceptado);
    EXPECT_FALSE(Teclea(RHASTA, "0100").aceptado);
    EXPECT_EQ(avisos.cajas, (Cajas{ValorDeTres, ValorDeTres}));
}

TEST_F(NavegadorOpcionales, LaDescripcionAdmiteCualquierTexto)
{
    const Tecleado tecleado = Teclea(DESCRIPCION, "x");

    EXPECT_TRUE(tecleado.aceptado && tecleado.otras.empty());
    EXPECT_EQ(tecleado.texto, "x");
}

TEST_F(NavegadorOpcionales, ElCodigoDeOpcionTieneTresLetras)
{
    EXPECT_TRUE(CompruebaColumnaOpcion(programa, CODOPCIONAL, "abc"));
    EXPECT_TRUE(CompruebaColumnaOpcion(programa, CODOPCIONAL, ""));
    EXPECT_TRUE(CompruebaColumnaOpcion(programa, DESCRIPCION_OPCION, "Azul"));
    EXPECT_TRUE(CompruebaColumnaOpcion(programa, DescripcionComercial, "x"));
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(CompruebaColumnaOpcion(programa, CODOPCIONAL, "ab"));
    EXPECT_EQ(avisos.cajas, Cajas{CodigoDeTres});
}

TEST_F(NavegadorOpcionales, LoQueSeAceptaLlegaALaTabla)
{
    data::Grid grid{.columnas = {{.DataField = "CODCATEGORIA"},
                                 {.DataField = "DESCRIPCION"},
                                 {.DataField = "VALORDEF"},
                                 {.DataField = "OBLIGATORIO"}},
                    .AllowUpdate = true};
    data::Adodc adodc(programa, programa.ConexionLocal);
    data::ModeloGrid modelo(grid, adodc);
    adodc.Abre("SELECT * FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='MED'", true);
    modelo.eventos.antesDeColumna = [&](int columna, QString& texto) {
        const Tecleado tecleado = CompruebaColumnaCategoria(programa, columna, texto, {});
        texto = tecleado.texto;
        for (const auto& [otra, valor] : tecleado.otras)
            modelo.PonValor(otra, valor);
        return tecleado.aceptado;
    };
    const auto guardado = [this] {
        return Tabla("SELECT CODCATEGORIA,OBLIGATORIO FROM M_OPCIONALES_CAT ORDER BY CODCATEGORIA");
    };

    ASSERT_FALSE(modelo.setData(modelo.index(0, CODCATEGORIA), "ME"));
    ASSERT_TRUE(modelo.GuardaFila());
    EXPECT_EQ(guardado(), "COL|False MED|False");
    ASSERT_TRUE(modelo.setData(modelo.index(0, OBLIGATORIO), "sí"));
    ASSERT_TRUE(modelo.GuardaFila());
    EXPECT_EQ(guardado(), "COL|False MED|True");
}

TEST_F(NavegadorOpcionales, UnaDescripcionNuevaSeOfreceALosArticulosQueLaTienen)
{
    avisos.respuestas = {Respuesta::Si};

    PropagaDescripcion(programa, "MED", "Diámetro");

    EXPECT_EQ(
        avisos.cajas,
        (Cajas{{"¿Desea actualizar esta categoria en las configuraciones existentes?", 36, ""}}));
    EXPECT_EQ(sentencias,
              (QStringList{
                  "SELECT * FROM PS_CONF_ART_CAT WHERE CODCATEGORIA='MED'",
                  "UPDATE PS_CONF_ART_CAT SET DESCRIPCION='Diámetro' WHERE CODCATEGORIA='MED'"}));
    EXPECT_EQ(Configurados(), "A1|MED|Diámetro");
}

TEST_F(NavegadorOpcionales, ConUnNoLosArticulosConservanLaSuya)
{
    avisos.respuestas = {Respuesta::No};

    PropagaDescripcion(programa, "MED", "Diámetro");

    EXPECT_EQ(Configurados(), "A1|MED|Medida");
}

TEST_F(NavegadorOpcionales, SiNingunArticuloLaTieneNoSePregunta)
{
    PropagaDescripcion(programa, "COL", "Tono");

    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(NavegadorOpcionales, UnaCategoriaSeVaDeLosArticulosYSusValoresQuedanHuerfanos)
{
    avisos.respuestas = {Respuesta::Si};

    EXPECT_TRUE(PreparaBajaDeCategoria(programa, "MED"));

    EXPECT_EQ(
        avisos.cajas,
        (Cajas{{"La categoría se eliminará también en los artículos que lo contengan, ¿Continuar?",
                36, ""}}));
    EXPECT_EQ(sentencias, QStringList("DELETE FROM PS_CONF_ART_CAT WHERE  CODCATEGORIA='MED'"));
    EXPECT_EQ(Configurados(), "");
    EXPECT_EQ(Valores(), "010 020");
}

TEST_F(NavegadorOpcionales, UnaOpcionSeVaDeLaRelacionYDeLosValores)
{
    Ejecuta({"INSERT INTO REL_ART_OPC VALUES ('A1','MED','010')",
             "INSERT INTO REL_ART_OPC VALUES ('A1','MED','020')"});
    avisos.respuestas = {Respuesta::Si};

    EXPECT_TRUE(PreparaBajaDeOpcion(programa, "MED", "010"));

    EXPECT_EQ(
        avisos.cajas,
        (Cajas{{"El opcional se eliminará también en los artículos que lo contengan, ¿Continuar?",
                36, ""}}));
    EXPECT_EQ(
        sentencias,
        (QStringList{"DELETE FROM REL_ART_OPC WHERE  CODCATEGORIA='MED' AND CODOPCIONAL='010'",
                     "DELETE FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='MED' AND VALOR='010'"}));
    EXPECT_EQ(Tabla("SELECT CODOPCIONAL FROM REL_ART_OPC"), "020");
    EXPECT_EQ(Valores(), "020");
}

TEST_F(NavegadorOpcionales, ConUnNoNoSeBorraNada)
{
    avisos.respuestas = {Respuesta::No, Respuesta::No};

    EXPECT_FALSE(PreparaBajaDeCategoria(programa, "MED"));
    EXPECT_FALSE(PreparaBajaDeOpcion(programa, "MED", "010"));

    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(NavegadorOpcionales, SeRetornaElCodigoDeLaFilaActualDelModo)
{
    data::Adodc categorias(programa, programa.ConexionLocal);
    data::Adodc opciones(programa, programa.ConexionLocal);
    const auto retorna = [&](ModoNavegador modo) {
        return CodigoDeRetorno(modo, categorias.Filas(), opciones.Filas());
    };
    categorias.Abre(SqlCategoriasMaestras(), true);
    opciones.Abre(SqlOpcionesMaestras("MED") + " ORDER BY CODOPCIONAL", true);
    opciones.PonFila(1);

    EXPECT_EQ(retorna(ModoNavegador::Categorias), QString("MED"));
    EXPECT_EQ(retorna(ModoNavegador::Valores), QString("020"));

    opciones.Abre(SqlOpcionesMaestras(std::nullopt), true);
    EXPECT_FALSE(retorna(ModoNavegador::Valores));
    categorias.PonFila(-1);
    EXPECT_FALSE(retorna(ModoNavegador::Categorias));
}

} // namespace
