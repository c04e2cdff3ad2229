#include "apoyo/carpeta.h"
#include "data/access/access.h"
#include "data/access/mdb/base_nueva.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

/// Texts in a column with an index, in one without, and in one whose index goes down.
class TextosConIndice : public testing::Test {
  protected:
    void SetUp() override
    {
        data::access::mdb::CreaBase(carpeta.Ruta("BD.mdb"));
        base = data::AbreAccess("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                                carpeta.Ruta("BD.mdb"));
        base->Ejecuta(
            "CREATE TABLE T (SUBE nvarchar(20),SOLA nvarchar(20),BAJA nvarchar(20),OTRA INT)");
        base->Ejecuta("CREATE INDEX ARRIBA ON T (SUBE)");
        base->Ejecuta("CREATE INDEX ABAJO ON T (BAJA DESC,OTRA)");
        for (const char* texto : {"abc", "ABD", "ab", "a-bz", "aß", "ass", "asa", "ac", "b", "",
                                  "ñ", "n", "nz", "co-op", "coop"})
            base->Ejecuta(QString("INSERT INTO T VALUES ('%1','%1','%1',1)").arg(texto));
    }

    std::string Cuales(const char* columna, const QString& condicion)
    {
        const auto filas = base->Consulta(
            QString("SELECT SOLA FROM T WHERE %1 %2 ORDER BY SOLA").arg(columna, condicion), false);
        QStringList textos;
        for (const data::Valor& valor : filas.valores)
            textos << valor.toString();
        return textos.join(' ').toStdString();
    }

    CarpetaDePrueba carpeta{};
    std::unique_ptr<data::Proveedor> base{};
};

TEST_F(TextosConIndice, UnPrincipioDaLoMismoConIndiceQueSinEl)
{
    EXPECT_EQ(Cuales("SUBE", "LIKE 'ab%'"), "ab abc ABD");
    EXPECT_EQ(Cuales("BAJA", "LIKE 'AB%'"), "ab abc ABD");
    for (const char* columna : {"SUBE", "BAJA"}) {
        for (const char* principio :
             {"a%", "as%", "ass%", "n%", "ñ%", "co%", "co-%", "z%", "%", "b%", "abc%"}) {
            const QString condicion = QString("LIKE '%1'").arg(principio);
            EXPECT_EQ(Cuales(columna, condicion), Cuales("SOLA", condicion))
                << columna << ' ' << principio;
        }
    }
}

} // namespace
