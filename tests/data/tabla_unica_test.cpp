#include "data/tabla_unica.h"
#include <gtest/gtest.h>

using tolmo::data::TablaUnica;

namespace {

TEST(TablaUnica, EsLaDeUnaConsultaSencilla)
{
    EXPECT_EQ(TablaUnica("SELECT * FROM m_empresa"), "m_empresa");
    EXPECT_EQ(TablaUnica("Select * from m_empresa where codempresa='000001'"), "m_empresa");
    EXPECT_EQ(TablaUnica("select a, B from T order by a;"), "T");
    EXPECT_EQ(TablaUnica("SELECT `a`,`b` FROM `ps_tag` LIMIT 5"), "ps_tag");
    EXPECT_EQ(TablaUnica("SELECT [a] FROM [M_ARTIC]"), "M_ARTIC");
    EXPECT_EQ(TablaUnica("SELECT *\r\nFROM Año\r\nWHERE x=1"), "Año");
}

TEST(TablaUnica, NoLaHayCuandoLasFilasNoSonLasDeUnaTabla)
{
    EXPECT_EQ(TablaUnica("SELECT * FROM a, b"), "");
    EXPECT_EQ(TablaUnica("SELECT * FROM a INNER JOIN b ON a.x=b.x"), "");
    EXPECT_EQ(TablaUnica("SELECT * FROM a x WHERE x.b=1"), "");
    EXPECT_EQ(TablaUnica("SELECT a FROM t GROUP BY a"), "");
    EXPECT_EQ(TablaUnica("SELECT DISTINCT a FROM t"), "");
    EXPECT_EQ(TablaUnica("SELECT a AS b FROM t"), "");
    EXPECT_EQ(TablaUnica("SELECT COUNT(*) FROM t"), "");
    EXPECT_EQ(TablaUnica("SELECT a FROM (SELECT a FROM t) u"), "");
    EXPECT_EQ(TablaUnica("SELECT a FROM t WHERE b=1 UNION SELECT a FROM u"), "");
    EXPECT_EQ(TablaUnica("SELECT a FROM t WHERE b=1 GROUP BY a"), "");
    EXPECT_EQ(TablaUnica("DELETE FROM t"), "");
    EXPECT_EQ(TablaUnica(""), "");
}

} // namespace
