#include "apoyo/proveedor_de_prueba.h"
#include "data/recordset.h"

using namespace tolmo;
using data::Recordset;

namespace {

data::Filas TresFilas(const QString& tabla = {})
{
    return HazFilas({"CODIGO", "Nombre"}, {{"001", "Uno"}, {"002", data::Nulo()}, {"003", "Tres"}},
                    tabla);
}

int NumeroDe(const std::function<void()>& accion)
{
    try {
        accion();
    } catch (const data::ErrorDatos& error) {
        return error.Numero();
    }
    return 0;
}

TEST(Recordset, EmpiezaEnLaPrimeraFila)
{
    const Recordset filas(TresFilas());

    EXPECT_FALSE(filas.Fin());
    EXPECT_FALSE(filas.Principio());
    EXPECT_FALSE(filas.Vacio());
    EXPECT_EQ(filas.RecordCount(), 3);
    EXPECT_EQ(filas.AbsolutePosition(), 1);
    EXPECT_EQ(filas["CODIGO"].toString(), "001");
}

TEST(Recordset, SeRecorreHaciaDelante)
{
    QStringList codigos;
    QList<int> posiciones;

    Recordset filas(TresFilas());
    for (; !filas.Fin(); filas.Siguiente()) {
        codigos << data::Texto(filas["CODIGO"]);
        posiciones << filas.AbsolutePosition();
    }

    EXPECT_EQ(codigos, QStringList({"001", "002", "003"}));
    EXPECT_EQ(posiciones, QList<int>({1, 2, 3}));
    EXPECT_EQ(filas.AbsolutePosition(), -3);
}

TEST(Recordset, PasadoElFinalNoSeAvanzaMas)
{
    Recordset filas(TresFilas());
    filas.Ultimo();
    filas.Siguiente();
    filas.Siguiente();
    filas.Anterior();

    EXPECT_EQ(filas.AbsolutePosition(), 3);
}

TEST(Recordset, AntesDelPrimeroLaPosicionEsMenosDos)
{
    Recordset filas(TresFilas());
    filas.Anterior();

    EXPECT_TRUE(filas.Principio());
    EXPECT_FALSE(filas.Fin());
    EXPECT_EQ(filas.AbsolutePosition(), -2);
    filas.Anterior();
    filas.Siguiente();
    EXPECT_EQ(filas.AbsolutePosition(), 1);
}

TEST(Recordset, SePoneEnUnaPosicion)
{
    Recordset filas(TresFilas());

    filas.PonPosicion(3);
    EXPECT_EQ(filas["CODIGO"].toString(), "003");
    filas.PonPosicion(9);
    EXPECT_EQ(filas.AbsolutePosition(), -3);
    filas.Anterior();
    EXPECT_EQ(filas.AbsolutePosition(), 3);
    filas.PonPosicion(0);
    EXPECT_EQ(filas.AbsolutePosition(), -2);
    filas.Primero();
    EXPECT_EQ(filas.AbsolutePosition(), 1);
}

TEST(Recordset, VacioEstaEnSusDosExtremos)
{
    Recordset sinColumnas(SinFilas);
    Recordset sinFilas(HazFilas({"CODIGO"}, {}));

    for (Recordset* filas : {&sinColumnas, &sinFilas}) {
        EXPECT_TRUE(filas->Fin());
        EXPECT_TRUE(filas->Principio());
        EXPECT_TRUE(filas->Vacio());
        EXPECT_EQ(filas->RecordCount(), 0);
        filas->Anterior();
        filas->Siguiente();
        filas->Ultimo();
        EXPECT_TRUE(filas->Fin());
        EXPECT_EQ(filas->AbsolutePosition(), -3);
    }
    EXPECT_EQ(NumeroDe([&] { sinFilas["CODIGO"]; }), 3021);
}

TEST(Recordset, LasColumnasSePidenEnCualquierCaja)
{
    const Recordset filas(TresFilas());

    EXPECT_EQ(filas["codigo"].toString(), "001");
    EXPECT_EQ(filas["NOMBRE"].toString(), "Uno");
    EXPECT_EQ(filas[QString("nombre")].toString(), "Uno");
    EXPECT_EQ(filas[1].toString(), "Uno");
    EXPECT_TRUE(filas.TieneColumna("nOmbre"));
    EXPECT_FALSE(filas.TieneColumna("PRECIO"));
    EXPECT_EQ(filas.Campos()[1].nombre, "Nombre");
}

TEST(Recordset, UnNuloEsNulo)
{
    Recordset filas(TresFilas());
    filas.Siguiente();

    EXPECT_TRUE(data::EsNulo(filas["Nombre"]));
}

TEST(Recordset, DeDosColumnasConElMismoNombreValeLaPrimera)
{
    const Recordset filas(HazFilas({"ID", "id"}, {{7, 8}}));

    EXPECT_EQ(filas["Id"].toInt(), 7);
    EXPECT_EQ(filas[1].toInt(), 8);
}

TEST(Recordset, UnaColumnaQueNoEstaEsElError3265)
{
    const Recordset filas(TresFilas());

    EXPECT_EQ(NumeroDe([&] { filas["PRECIO"]; }), 3265);
    EXPECT_EQ(NumeroDe([&] { filas[2]; }), 3265);
    EXPECT_EQ(NumeroDe([&] { filas[-1]; }), 3265);
}

TEST(Recordset, CualquierFilaSeLeeSinMoverLaActual)
{
    Recordset filas(TresFilas());
    filas.Siguiente();

    EXPECT_EQ(filas.En(2, filas.Indice("nombre")).toString(), "Tres");
    EXPECT_EQ(filas.En(0, 0).toString(), "001");
    EXPECT_EQ(filas.AbsolutePosition(), 2);
    EXPECT_EQ(NumeroDe([&] { filas.En(3, 0); }), 3021);
    EXPECT_EQ(NumeroDe([&] { filas.En(-1, 0); }), 3021);
    EXPECT_EQ(NumeroDe([&] { filas.En(0, 2); }), 3265);
    EXPECT_EQ(NumeroDe([&] { (void)filas.Indice("PRECIO"); }), 3265);
}

TEST(Recordset, SoloSeCambiaElDeUnaTablaConSuMotor)
{
    auto base = std::make_shared<ProveedorDePrueba>();

    EXPECT_TRUE(Recordset(TresFilas("M_FAMILIA"), base).Cambiable());
    EXPECT_FALSE(Recordset(TresFilas("M_FAMILIA")).Cambiable());
    EXPECT_FALSE(Recordset(TresFilas(), base).Cambiable());
}

TEST(Recordset, SinFilaActualEsElError3021)
{
    Recordset filas(TresFilas());

    filas.Ultimo();
    filas.Siguiente();
    EXPECT_EQ(NumeroDe([&] { filas["CODIGO"]; }), 3021);
    filas.PonPosicion(0);
    EXPECT_EQ(NumeroDe([&] { filas["CODIGO"]; }), 3021);
}

TEST(Recordset, UnoDeLecturaNoSeCambia)
{
    auto base = std::make_shared<ProveedorDePrueba>();
    Recordset sinProveedor(TresFilas("M_FAMILIA"));
    Recordset sinTabla(TresFilas(), base);

    for (Recordset* filas : {&sinProveedor, &sinTabla}) {
        EXPECT_EQ(NumeroDe([&] { filas->Actualiza({{"Nombre", "x"}}); }), 3251);
        EXPECT_EQ(NumeroDe([&] { filas->Inserta({{"Nombre", "x"}}); }), 3251);
        EXPECT_EQ(NumeroDe([&] { filas->Borra(); }), 3251);
        EXPECT_EQ((*filas)["Nombre"].toString(), "Uno");
    }
}

TEST(Recordset, ActualizaLaFilaEnLaQueEsta)
{
    auto base = std::make_shared<ProveedorDePrueba>();
    Recordset filas(TresFilas("M_FAMILIA"), base);
    filas.Siguiente();

    filas.Actualiza({{"NOMBRE", "Dos"}});

    EXPECT_EQ(filas["Nombre"].toString(), "Dos");
    ASSERT_EQ(base->actualizadas.size(), 1U);
    EXPECT_EQ(base->actualizadas[0].tabla, "M_FAMILIA");
    EXPECT_EQ(base->actualizadas[0].fila, 1U);
    EXPECT_EQ(base->actualizadas[0].cambios, (data::Cambios{{"NOMBRE", "Dos"}}));
}

TEST(Recordset, LaFilaNuevaVaAlFinalYEsLaActual)
{
    auto base = std::make_shared<ProveedorDePrueba>();
    Recordset filas(TresFilas("M_FAMILIA"), base);

    filas.Inserta({{"CODIGO", "004"}});

    EXPECT_EQ(filas.RecordCount(), 4);
    EXPECT_EQ(filas.AbsolutePosition(), 4);
    EXPECT_EQ(filas["CODIGO"].toString(), "004");
    EXPECT_TRUE(data::EsNulo(filas["Nombre"]));
    ASSERT_EQ(base->insertadas.size(), 1U);
    EXPECT_EQ(base->insertadas[0].cambios, (data::Cambios{{"CODIGO", "004"}}));
}

TEST(Recordset, BorradaUnaFilaQuedaLaQueLaSigue)
{
    auto base = std::make_shared<ProveedorDePrueba>();
    Recordset filas(TresFilas("M_FAMILIA"), base);
    filas.Siguiente();

    filas.Borra();

    EXPECT_EQ(filas.RecordCount(), 2);
    EXPECT_EQ(filas["CODIGO"].toString(), "003");
    ASSERT_EQ(base->borradas.size(), 1U);
    EXPECT_EQ(base->borradas[0].fila, 1U);
    filas.Borra();
    EXPECT_TRUE(filas.Fin());
}

TEST(Recordset, UnCambioConUnaColumnaQueNoEstaNoEscribeNada)
{
    auto base = std::make_shared<ProveedorDePrueba>();
    Recordset filas(TresFilas("M_FAMILIA"), base);

    EXPECT_EQ(NumeroDe([&] { filas.Actualiza({{"CODIGO", "9"}, {"PRECIO", 1}}); }), 3265);
    EXPECT_EQ(NumeroDe([&] { filas.Inserta({{"CODIGO", "9"}, {"PRECIO", 1}}); }), 3265);

    EXPECT_TRUE(base->actualizadas.empty());
    EXPECT_TRUE(base->insertadas.empty());
    EXPECT_EQ(filas["CODIGO"].toString(), "001");
    EXPECT_EQ(filas.RecordCount(), 3);
}

} // namespace
