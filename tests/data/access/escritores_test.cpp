#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/otro_proceso.h"
#include "data/access/proveedor_access.h"
#include "data/errores.h"
#include "data/valores.h"
#include <QTemporaryDir>
#include <chrono>
#include <thread>

using namespace tolmo;
using namespace tolmo::data::access;
using namespace std::chrono_literals;

namespace {

/// A file of Access on which two processes write, one of them while the other waits.
class Escritores : public testing::Test {
  protected:
    Escritores()
    {
        mdb::CreaBase(Ruta());
        const auto base = Conexion();
        base->Ejecuta("CREATE TABLE T (ID COUNTER, N LONG, S TEXT(50))");
        base->Ejecuta("CREATE TABLE X (N LONG)");
        base->Ejecuta("INSERT INTO T (N,S) VALUES (1,'a')");
        base->Ejecuta("INSERT INTO T (N,S) VALUES (2,'b')");
    }

    QString Ruta() const { return carpeta_.filePath("bd.mdb"); }
    std::unique_ptr<ProveedorAccess> Conexion() const
    {
        return std::make_unique<ProveedorAccess>(std::make_unique<FicheroAccess>(Ruta()));
    }

    /// Runs statements in a transaction of another process, which stays open long enough for
    /// `mientras` to wait for it.
    template <typename Tarea>
    void TrasElOtro(std::initializer_list<const char*> suyas, Tarea mientras)
    {
        OtroProceso otro([&](const auto& avisa, const auto&) {
            const auto base = Conexion();
            Transaccion transaccion(base->Motor());
            base->Ejecuta("INSERT INTO X (N) VALUES (1)");
            for (const char* sql : suyas)
                base->Ejecuta(sql);
            avisa();
            std::this_thread::sleep_for(300ms);
            transaccion.Confirma();
        });
        otro.EsperaSuAviso();
        mientras();
        EXPECT_EQ(otro.Recoge(), 0);
    }

    QStringList Faltas() const { return mdb::FaltasDe(mdb::Base(Ruta())); }

    /// The first column of a query's rows.
    QString Columna(ProveedorAccess& base, const QString& sql) const
    {
        const data::Filas filas = base.Consulta(sql, false);
        QStringList valores;
        for (std::size_t i = 0; i < filas.valores.size(); i += filas.campos.size())
            valores << data::Texto(filas.valores[i]);
        return valores.join(' ');
    }

  private:
    QTemporaryDir carpeta_{};
};

TEST_F(Escritores, LaFilaDelQueEsperoEstaEnElIndiceQueElOtroHizo)
{
    const auto base = Conexion();
    ASSERT_EQ(Columna(*base, "SELECT N FROM T ORDER BY ID"), "1 2");

    TrasElOtro({"CREATE INDEX IXN ON T (N)"},
               [&] { base->Ejecuta("INSERT INTO T (N,S) VALUES (7,'mío')"); });

    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_EQ(Columna(*base, "SELECT S FROM T WHERE N=7"), "mío");
}

TEST_F(Escritores, LaTablaQueElOtroBorroYaNoEstaParaElQueEspero)
{
    const auto base = Conexion();
    ASSERT_EQ(Columna(*base, "SELECT N FROM T ORDER BY ID"), "1 2");

    QString fallo;
    TrasElOtro({"DROP TABLE T", "CREATE TABLE OTRA (A LONG, B TEXT(20))"}, [&] {
        try {
            base->Ejecuta("INSERT INTO T (N,S) VALUES (7,'mío')");
        } catch (const data::ErrorSql& error) {
            fallo = error.Descripcion();
        }
    });

    EXPECT_EQ(fallo, "No se conoce la tabla T (posición 13)");
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_EQ(Columna(*base, "SELECT COUNT(*) FROM OTRA"), "0");
}

TEST_F(Escritores, ElQueEsperoCambiaLoQueElOtroDejo)
{
    const auto base = Conexion();

    TrasElOtro({"UPDATE T SET N=100 WHERE S='a'", "INSERT INTO T (N,S) VALUES (50,'c')"},
               [&] { EXPECT_EQ(base->Ejecuta("UPDATE T SET N=N+1"), 3); });

    EXPECT_EQ(Columna(*base, "SELECT N FROM T ORDER BY ID"), "101 3 51");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(Escritores, LoQueSeInsertaDeUnaConsultaEsLoQueElOtroDejo)
{
    const auto base = Conexion();

    TrasElOtro({"DELETE FROM T WHERE S='b'"},
               [&] { EXPECT_EQ(base->Ejecuta("INSERT INTO X (N) SELECT N FROM T"), 1); });

    EXPECT_EQ(Columna(*base, "SELECT N FROM X ORDER BY N"), "1 1");
}

TEST_F(Escritores, UnRegistroAbiertoSeCambiaConElIndiceNuevoDelOtro)
{
    const auto base = Conexion();
    const data::Filas filas = base->Consulta("SELECT N,S FROM T ORDER BY ID", true);

    TrasElOtro({"CREATE INDEX IXS ON T (S)"}, [&] {
        base->Actualiza(filas, 0, {{"S", QString("cambiado")}});
        base->Inserta(filas, {{"S", QString("nuevo")}});
        base->Borra(filas, 1);
    });

    EXPECT_EQ(Columna(*base, "SELECT S FROM T ORDER BY S"), "cambiado nuevo");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(Escritores, LoQueDefineElQueEsperoTieneEnCuentaLoQueElOtroDejo)
{
    const auto base = Conexion();
    ASSERT_EQ(Columna(*base, "SELECT N FROM T ORDER BY ID"), "1 2");

    TrasElOtro({"INSERT INTO T (N,S) VALUES (3,'c')"},
               [&] { base->Ejecuta("CREATE INDEX IXN ON T (N)"); });

    EXPECT_EQ(Columna(*base, "SELECT S FROM T WHERE N=3"), "c");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(Escritores, UnaTablaHechaEnUnaTransaccionSeDeshaceConElla)
{
    const auto base = Conexion();
    {
        const Transaccion transaccion(base->Motor());
        base->Ejecuta("CREATE TABLE ZZ (A LONG)");
        base->Ejecuta("CREATE INDEX IXN ON T (N)");
        base->Ejecuta("INSERT INTO ZZ (A) VALUES (1)");
    }

    EXPECT_THROW(base->Consulta("SELECT A FROM ZZ", false), data::ErrorSql);
    EXPECT_EQ(Columna(*base, "SELECT N FROM T ORDER BY ID"), "1 2");
    const mdb::Base fichero(Ruta());
    EXPECT_EQ(fichero.catalogo().TablaDe("ZZ"), nullptr);
    EXPECT_EQ(mdb::FaltasDe(fichero), QStringList());
}

TEST_F(Escritores, UnaTablaHechaEnUnaTransaccionQuedaAlConfirmar)
{
    const auto base = Conexion();
    {
        Transaccion transaccion(base->Motor());
        base->Ejecuta("CREATE TABLE ZZ (A LONG)");
        transaccion.Confirma();
    }

    EXPECT_EQ(Columna(*Conexion(), "SELECT COUNT(*) FROM ZZ"), "0");
}

TEST_F(Escritores, UnaSentenciaQueNoCambiaNingunaFilaDejaElFicheroParaOtros)
{
    const auto base = Conexion();
    EXPECT_EQ(base->Ejecuta("DELETE FROM T WHERE N=1234"), 0);
    EXPECT_THROW(base->Ejecuta("INSERT INTO T (N) VALUES ('no es un número')"), data::ErrorSql);

    const auto otra = Conexion();
    EXPECT_EQ(otra->Ejecuta("UPDATE T SET N=N+1"), 2);
    EXPECT_FALSE(QFile::exists(Ruta().chopped(4) + ".ldb"));
}

} // namespace
