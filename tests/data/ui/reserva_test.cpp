#include "data/ui/reserva.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct CasoClaves {
    const char* regla;
    QString texto{};
    QString mostrado{};
};

class SinClaves : public testing::TestWithParam<CasoClaves> {};

TEST_P(SinClaves, NoDejaVerNinguna)
{
    EXPECT_EQ(data::ui::SinClaves(GetParam().texto), GetParam().mostrado);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Casos, SinClaves,
    testing::Values(
        CasoClaves{"EnUnUpdate", "UPDATE m_empresa SET User_Bd='ana',Pass_Bd='s3creta',Puerto_Bd=3306", "UPDATE m_empresa SET User_Bd='ana',Pass_Bd=***,Puerto_Bd=3306"},
        CasoClaves{"ConBlancosYCorchetes", "UPDATE m_empresa SET [PASS_FTP] = 'a b' WHERE x=1", "UPDATE m_empresa SET [PASS_FTP] = *** WHERE x=1"},
        CasoClaves{"ConComillasDentro", "SET passwd='it''s, ok' WHERE id=7", "SET passwd=*** WHERE id=7"},
        CasoClaves{"SinCerrar", "SET passwd='medio", "SET passwd=***"},
        CasoClaves{"EnUnaCadenaDeConexion", "Driver={X};User=ana;Password=s3 creta;Option=3;", "Driver={X};User=ana;Password=***;Option=3;"},
        CasoClaves{"EnUnaCadenaConComilla", "Provider=SQLOLEDB.1;user id=ana;password=s3'creta,x;Initial Catalog=BD000001", "Provider=SQLOLEDB.1;user id=ana;password=***;Initial Catalog=BD000001"},
        CasoClaves{"UnValorSinComillas", "SET Pass_Bd=NULL, x=1 WHERE y=2;", "SET Pass_Bd=***, x=1 WHERE y=2;"},
        CasoClaves{"EnUnInsert", "INSERT INTO ps_customer (id,passwd,email) VALUES (7,'s3creta','a@b.c')", "INSERT INTO ps_customer (id,passwd,email) VALUES (7,***,'a@b.c')"},
        CasoClaves{"EnUnInsertConFunciones", "INSERT INTO t (a, Clave ,b) VALUES (F(1,'x'),CONCAT('s3','(creta'),2)||", "INSERT INTO t (a, Clave ,b) VALUES (F(1,'x'),***,2)||"},
        CasoClaves{"DosEnElMismoInsert", "insert into t (Pass_Bd,x,Pass_Ftp) values ('a','b','c')", "insert into t (Pass_Bd,x,Pass_Ftp) values (***,'b',***)"},
        CasoClaves{"ElRestoQuedaComoEsta", "SELECT * FROM ps_product WHERE reference='A=1' AND compass='N'", "SELECT * FROM ps_product WHERE reference='A=1' AND compass=***"},
        CasoClaves{"SinClavesNoCambia", "DELETE FROM ps_image where id_image=7||", "DELETE FROM ps_image where id_image=7||"}),
    [](const auto& caso) { return caso.param.regla; });
// clang-format on

} // namespace
