#include "e2e/casa_entera.h"
#include "e2e/estado_de_tienda.h"
#include "e2e/formas_de_tienda.h"
#include <QImage>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// The whole house, sent twice: the second time every article was changed that day, to what it was.
template <class FormaDeTienda> struct DosSeguidas : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun(FormaDeTienda::Opciones());
        empresa = std::make_unique<EmpresaReal>(
            *tienda, QMap<QString, QString>{{"PS_MODOCONFIGURADOR", "True"},
                                            {"PSGRUPOMARCAS", "'1'"},
                                            {"CAMPOFAMALT", "'OTRASFAM'"}});
        for (const auto& [nombre, color] :
             {std::pair("rojo.jpg", Qt::red), std::pair("azul.jpg", Qt::blue)}) {
            QImage foto(40, 20, QImage::Format_RGB32);
            foto.fill(color);
            ASSERT_TRUE(foto.save(empresa->Actual() + "/" + nombre, "JPEG"));
        }
        empresa->Carpeta().Escribe("ficha.pdf", "Ficha");
        empresa->Carpeta().Escribe("otra.pdf", "Otra");
        empresa->Sql(SqlDeLaCasa(empresa->Actual(), {.gestion = true}));
        empresa->Corre();
        trasUna = EstadoDeTienda(*tienda);
        empresa->Sql("UPDATE M_ARTIC SET FECHAMODIFICACION=" +
                     QDate::currentDate().toString("'#'MM/dd/yyyy'#'") + ";\n");
        segunda = empresa->Corre();
        trasDos = EstadoDeTienda(*tienda);
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida segunda{};
    static inline QStringList trasUna{}, trasDos{};
};

class NombreDeGeneracion {
  public:
    template <class T> static std::string GetName(int i)
    {
        constexpr const char* nombres[] = {"1_5_6", "1_6_0", "1_6_1"};
        return nombres[i];
    }
};
using Generaciones = testing::Types<Tienda156, Tienda160Con, Tienda161>;
TYPED_TEST_SUITE(DosSeguidas, Generaciones, NombreDeGeneracion);

TYPED_TEST(DosSeguidas, LaSegundaLoEnviaTodoDeNuevo)
{
    EXPECT_EQ(this->segunda.estado, 0);
    EXPECT_EQ(EnLineas(this->segunda.log.filter("ERROR")), "");
    EXPECT_EQ(
        EnLineas(this->segunda.log.filter("rticulo 01")),
        EnLineas({"Actualizando articulo 01A / ALT01A", "Actualizando articulo 01B / ALT01B",
                  "Actualizando articulo 01C / ALT01C", "Actualizando articulo 01D / ALT01D"}));
    EXPECT_EQ(this->segunda.log.filter("Subiendo imagen ").size(), 2 + 7);
    EXPECT_EQ(this->segunda.log.filter("Subiendo adjunto ").size(), 2);
}

// But for a blank: only the insert writes one behind the notes.
TYPED_TEST(DosSeguidas, LaTiendaQuedaComoTrasUna)
{
    QStringList esperado = this->trasUna;
    qsizetype notas = 0;
    for (QString& linea : esperado)
        for (const char* codigo : {"01A", "01B", "01C", "01D"}) {
            const QString deAlta = QString(" description=Notas %1  description_short=").arg(codigo);
            notas += linea.count(deAlta);
            linea.replace(deAlta, QString(" description=Notas %1 description_short=").arg(codigo));
        }

    EXPECT_EQ(notas, 4);
    EXPECT_EQ(EnLineas(this->trasDos), EnLineas(esperado));
}

// So that the comparison is one of something: the rows and files that the house makes.
TYPED_TEST(DosSeguidas, LoComparadoEsTodaLaCasa)
{
    const auto cuantas = [this](const QString& comienzo) {
        qsizetype cuenta = 0;
        for (const QString& linea : this->trasUna)
            cuenta += linea.startsWith(comienzo);
        return cuenta;
    };
    EXPECT_EQ(cuantas("ps_product id_product="), 4);
    EXPECT_EQ(cuantas("ps_product_attribute id_product_attribute="), 3 + 4 + 8);
    EXPECT_EQ(cuantas("ps_product_attribute_combination "), 3 + 8 + 24);
    EXPECT_EQ(cuantas("ps_product_attribute_image "), 10);
    EXPECT_EQ(cuantas("ps_image id_image="), 7);
    EXPECT_EQ(cuantas("ps_specific_price "), 4 * 5 + 4);
    EXPECT_EQ(cuantas("ps_stock_available "), 4 + 3);
    EXPECT_EQ(cuantas("ps_product_attachment "), 3);
    EXPECT_EQ(cuantas("ps_product_tag "), 2);
    EXPECT_EQ(cuantas("ps_category_product "), 4 + 2);
    EXPECT_EQ(cuantas("img/p/"), 7 * (1 + TypeParam::Tamanos().size()) + 1); // and its index.php
    EXPECT_EQ(cuantas("img/c/"), 2 * (1 + TypeParam::TamanosDeFamilia().size()) + 1);
    EXPECT_EQ(cuantas("download/"), 2 + 1);
}

} // namespace
