#include "site/cDirList.h"
#include <gtest/gtest.h>
#include <stdexcept>

using namespace tolmo;

namespace {

struct CasoAtributo {
    const char* nombre;
    int bit;
    bool site::cDirItem::*propiedad;
};

const CasoAtributo Atributos[] = {
    {"ReadOnly", 0, &site::cDirItem::ReadOnly},   {"Hidden", 1, &site::cDirItem::Hidden},
    {"System", 2, &site::cDirItem::System},       {"Directory", 4, &site::cDirItem::Directory},
    {"Archive", 5, &site::cDirItem::Archive},     {"Normal", 7, &site::cDirItem::Normal},
    {"Temporary", 8, &site::cDirItem::Temporary}, {"Compressed", 11, &site::cDirItem::Compressed},
    {"Offline", 12, &site::cDirItem::Offline},
};

class AtributosDeEntrada : public testing::TestWithParam<CasoAtributo> {};

TEST_P(AtributosDeEntrada, CadaBitEnciendeSuPropiedadYNingunaOtra)
{
    site::cDirList lista;

    const site::cDirItem& entrada = lista.Add(1U << GetParam().bit, {}, {}, {}, 0, "a");

    for (const CasoAtributo& otro : Atributos)
        EXPECT_EQ(entrada.*otro.propiedad, otro.bit == GetParam().bit) << otro.nombre;
}

INSTANTIATE_TEST_SUITE_P(Bits, AtributosDeEntrada, testing::ValuesIn(Atributos),
                         [](const auto& caso) { return std::string(caso.param.nombre); });

TEST(cDirList, LosBitsSinPropiedadNoEnciendenNada)
{
    site::cDirList lista;

    const site::cDirItem& entrada = lista.Add(0xFFFFE648U, {}, {}, {}, 0, "a");

    for (const CasoAtributo& atributo : Atributos)
        EXPECT_FALSE(entrada.*atributo.propiedad) << atributo.nombre;
}

TEST(cDirList, AddGuardaFechasTamanoYNombre)
{
    site::cDirList lista;
    const QDateTime creada(QDate(2024, 3, 15), QTime(9, 5));
    const QDateTime leida(QDate(2024, 3, 16), QTime(10, 6));
    const QDateTime escrita(QDate(2024, 3, 17), QTime(11, 7));

    lista.Add(0, creada, leida, escrita, 4711, "foto.jpg");

    const site::cDirItem& entrada = lista.Item(1);
    EXPECT_EQ(entrada.CreationTime, creada);
    EXPECT_EQ(entrada.LastAccessTime, leida);
    EXPECT_EQ(entrada.LastWriteTime, escrita);
    EXPECT_EQ(entrada.FileSize, 4711);
    EXPECT_EQ(entrada.Filename.toStdString(), "foto.jpg");
}

TEST(cDirList, LasEntradasSeCuentanDesdeUnoYSeRecorrenEnSuOrden)
{
    site::cDirList lista;
    lista.Add(0, {}, {}, {}, 1, "b");
    lista.Add(0, {}, {}, {}, 2, "a");

    EXPECT_EQ(lista.Count(), 2);
    EXPECT_EQ(lista.Item(1).Filename.toStdString(), "b");
    EXPECT_EQ(lista.Item(2).Filename.toStdString(), "a");
    EXPECT_EQ(lista.NewEnum()->Filename.toStdString(), "b");
    std::string nombres;
    for (const site::cDirItem& entrada : lista)
        nombres += entrada.Filename.toStdString();
    EXPECT_EQ(nombres, "ba");
    EXPECT_THROW(lista.Item(0), std::out_of_range);
    EXPECT_THROW(lista.Item(3), std::out_of_range);
}

TEST(cDirList, ClearLaDejaVaciaYSirveDeNuevo)
{
    site::cDirList lista;
    lista.Add(0, {}, {}, {}, 1, "a");
    lista.Add(0, {}, {}, {}, 1, "b");

    lista.Clear();

    EXPECT_EQ(lista.Count(), 0);
    lista.Add(0, {}, {}, {}, 1, "c");
    EXPECT_EQ(lista.Item(1).Filename.toStdString(), "c");
}

} // namespace
