#include "data/access/access.h"
#include "data/access/mdb/base_nueva.h"
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/fila_de_sistema.h"
#include "data/access/mdb/otro_proceso.h"
#include "data/access/mdb/texto_consulta.h"
#include "data/access/proveedor_access.h"
#include "data/errores.h"
#include "data/valores.h"
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using namespace tolmo;
using namespace tolmo::data::access;
using testing::HasSubstr;
using testing::Not;

namespace {

enum class Forma { Embebida, DeAccess };

/// A database of one of the two forms, with a few articles and their values.
class UnaBase {
  public:
    explicit UnaBase(Forma forma)
        : ruta_(carpeta_.filePath(forma == Forma::Embebida ? "bd.sqlite" : "bd.mdb"))
    {
        if (forma == Forma::Embebida) {
            base_ = std::make_unique<ProveedorAccess>(ruta_, Base::Modo::Nueva);
            Llena();
            return;
        }
        static const QByteArray modelo = [] {
            const UnaBase llena;
            QFile fichero(llena.Ruta());
            return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
        }();
        QFile fichero(ruta_);
        if (!fichero.open(QIODevice::WriteOnly) || fichero.write(modelo) != modelo.size())
            throw std::runtime_error("no database");
        fichero.close();
        Abre();
    }

    void Abre()
    {
        base_ = std::make_unique<ProveedorAccess>(std::make_unique<FicheroAccess>(ruta_));
    }
    const QString& Ruta() const { return ruta_; }
    QString Carpeta() const { return carpeta_.path(); }
    ProveedorAccess& Proveedor() { return *base_; }

    long long Haz(const QString& sql) { return base_->Ejecuta(sql); }
    void Haz(std::initializer_list<const char*> sentencias)
    {
        for (const char* sql : sentencias)
            Haz(QString::fromUtf8(sql));
    }

    /// The names of the fields, and the rows.
    QString Todo(const QString& sql)
    {
        QStringList nombres;
        for (const auto& campo : base_->Consulta(sql, false).campos)
            nombres << campo.nombre;
        return nombres.join(u',') + " : " + Tabla(sql);
    }
    QString Tabla(const QString& sql)
    {
        const data::Filas filas = base_->Consulta(sql, false);
        QStringList lineas;
        for (std::size_t f = 0; f < filas.valores.size(); f += filas.campos.size()) {
            QStringList linea;
            for (std::size_t c = 0; c < filas.campos.size(); ++c)
                linea << (data::EsNulo(filas.valores[f + c]) ? "NULL"
                                                             : data::Texto(filas.valores[f + c]));
            lineas << linea.join(u'|');
        }
        return lineas.join(u' ');
    }
    QString Datos()
    {
        return Tabla("SELECT * FROM ART ORDER BY COD") + " / " +
               Tabla("SELECT * FROM VAL ORDER BY COD,VALOR,SEC") + " / " +
               Tabla("SELECT * FROM [DE MAS] ORDER BY COD");
    }

    std::string Fallo(const QString& sql)
    {
        try {
            base_->Consulta(sql, false);
        } catch (const data::ErrorSql& error) {
            return error.Descripcion().toStdString();
        }
        return {};
    }
    std::string Listado()
    {
        QStringList lista;
        for (const data::TablaEsquema& tabla : base_->Tablas()) {
            if (tabla.tipo != u"SYSTEM TABLE")
                lista << tabla.nombre + ':' + tabla.tipo;
        }
        return lista.join(u' ').toStdString();
    }

  private:
    /// A file of Access made here; the others are copies.
    UnaBase() : ruta_(carpeta_.filePath("bd.mdb"))
    {
        mdb::CreaBase(ruta_);
        Abre();
        Llena();
    }

    void Llena()
    {
        Haz({"CREATE TABLE ART (COD nvarchar(10), DES nvarchar(40), PVP DOUBLE, WEB YESNO)",
             "CREATE TABLE VAL (COD nvarchar(10), VALOR nvarchar(5), SEC INT)",
             "CREATE TABLE [DE MAS] (COD nvarchar(10), [Con espacio] nvarchar(20), [Order] INT)",
             "INSERT INTO ART VALUES ('A1','Cañón',1.5,True)",
             "INSERT INTO ART VALUES ('A2','Jarrón de 5''',2,False)",
             "INSERT INTO ART VALUES ('A3',NULL,NULL,True)", "INSERT INTO VAL VALUES ('A1','M',2)",
             "INSERT INTO VAL VALUES ('A1','L',1)", "INSERT INTO VAL VALUES ('A2','M',1)",
             "INSERT INTO [DE MAS] VALUES ('A2','dos',2)"});
    }

    QTemporaryDir carpeta_{};
    QString ruta_;
    std::unique_ptr<ProveedorAccess> base_{};
};

class ConsultasGuardadas : public testing::TestWithParam<Forma> {
  protected:
    UnaBase base{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Formas, ConsultasGuardadas,
                         testing::Values(Forma::Embebida, Forma::DeAccess), [](const auto& caso) {
                             return caso.param == Forma::Embebida ? "Embebida" : "DeAccess";
                         });

// clang-format off
const char* const Selecciones[] = {
    "SELECT * FROM ART",
    "SELECT *, PVP*2 AS DOBLE FROM ART",
    "SELECT PVP*2 AS DOBLE, * FROM ART",
    "SELECT ART.*, VALOR FROM ART INNER JOIN VAL ON ART.COD=VAL.COD",
    "SELECT * FROM ART, VAL AS V WHERE ART.COD=V.COD",
    "SELECT * FROM ART INNER JOIN VAL ON ART.COD=VAL.COD, [DE MAS]",
    "SELECT * FROM [DE MAS], ART LEFT JOIN VAL ON ART.COD=VAL.COD ORDER BY ART.COD, VALOR",
    "SELECT A.COD, V.VALOR, M.[Order] AS [Select] FROM (ART AS A LEFT JOIN VAL AS V ON A.COD=V.COD) LEFT JOIN [DE MAS] AS M ON A.COD=M.COD AND V.SEC<M.[Order] ORDER BY A.COD, V.SEC DESC",
    "SELECT A.COD, V.VALOR FROM ART AS A LEFT JOIN (VAL AS V INNER JOIN [DE MAS] AS M ON V.COD=M.COD) ON A.COD=V.COD",
    "SELECT V.VALOR, A.DES FROM VAL AS V RIGHT JOIN ART AS A ON (V.COD=A.COD) AND (V.SEC=1 OR A.WEB)",
    "SELECT VALOR, COUNT(*) AS N, SUM(SEC) AS S FROM VAL WHERE COD LIKE 'A*' GROUP BY VALOR HAVING COUNT(*)>0 ORDER BY COUNT(*) DESC, VALOR",
    "SELECT DISTINCT COD FROM VAL",
    "SELECT DISTINCTROW ART.COD FROM ART INNER JOIN VAL ON ART.COD=VAL.COD",
    "SELECT TOP 2 COD FROM ART ORDER BY COD DESC",
    "SELECT TOP 50 PERCENT COD, SEC FROM VAL ORDER BY SEC, COD",
    "SELECT COD, (SELECT COUNT(*) FROM VAL WHERE VAL.COD=ART.COD) AS N FROM ART WHERE PVP Is Null OR PVP BETWEEN 1 AND 2 ORDER BY 1",
    "SELECT S.C & '-' & S.N AS T FROM (SELECT COD AS C, COUNT(*) AS N FROM VAL GROUP BY COD) AS S ORDER BY S.C",
    "SELECT COD FROM ART WHERE DES='Jarrón de 5''' AND NOT EXISTS (SELECT 'C' FROM VAL WHERE VAL.COD=ART.COD AND VALOR=\"L\")",
    "SELECT COD FROM ART UNION SELECT COD FROM VAL ORDER BY COD DESC",
    "SELECT COD, 1 AS N FROM ART UNION ALL SELECT COD, SEC FROM VAL UNION SELECT COD, 9 FROM [DE MAS] ORDER BY 1, 2",
    "(SELECT COD FROM ART) UNION ALL (SELECT VALOR FROM VAL)",
    "SELECT [Con espacio], [DE MAS].[Order] FROM [DE MAS] WHERE [Order] IN (1,2,3)",
    "SELECT 1 AS UNO",
    "SELECT COD FROM ART WITH OWNERACCESS OPTION"};

const char* const Acciones[] = {
    "DELETE FROM VAL",
    "DELETE * FROM VAL WHERE VALOR='M'",
    "DELETE VAL.* FROM VAL WHERE NOT EXISTS (SELECT 'C' FROM [DE MAS] WHERE [DE MAS].COD=VAL.COD)",
    "DELETE VAL.COD, SEC FROM VAL WHERE SEC>1",
    "DELETE V.* FROM VAL AS V INNER JOIN [DE MAS] AS M ON V.COD=M.COD",
    "INSERT INTO VAL (COD,VALOR,SEC) SELECT COD, LEFT(DES,5), IIF(WEB,1,0) FROM ART WHERE DES Is Not Null ORDER BY COD",
    "INSERT INTO VAL SELECT COD, 'X' AS VALOR, 5 AS SEC FROM ART",
    "INSERT INTO ART SELECT * FROM ART",
    "INSERT INTO [DE MAS] (COD,[Con espacio],[Order]) VALUES ('Z', 'a,b''c', -3)",
    "INSERT INTO VAL VALUES ('Q','',Null)",
    "INSERT INTO VAL (COD,SEC) SELECT COD, MAX(SEC) FROM VAL GROUP BY COD HAVING COUNT(*)>1",
    "INSERT INTO VAL (COD,VALOR) SELECT TOP 1 A.COD, M.[Con espacio] FROM ART AS A INNER JOIN [DE MAS] AS M ON A.COD=M.COD ORDER BY A.COD",
    "UPDATE ART SET PVP=PVP*2, DES='O''Neill' WHERE COD='A1' OR COD='A3'",
    "UPDATE ART INNER JOIN VAL ON ART.COD=VAL.COD SET VAL.SEC=VAL.SEC+10, VAL.[VALOR]=LEFT(DES,1) WHERE ART.PVP>1",
    "UPDATE [DE MAS] SET [DE MAS].[Order]=(SELECT COUNT(*) FROM ART), [Con espacio]=Null"};
// clang-format on

TEST_P(ConsultasGuardadas, UnaVistaDaLoQueDaSuTexto)
{
    for (const char* texto : Selecciones) {
        SCOPED_TRACE(texto);
        const QString sql = QString::fromUtf8(texto);
        base.Haz("CREATE VIEW V AS " + sql);

        // Only in a stored query a pattern has the signs of Access.
        QString directa = sql;
        directa.replace("'A*'", "'A%'");
        EXPECT_EQ(base.Todo("V"), base.Todo(directa));
        EXPECT_NE(base.Tabla("V"), "");
        EXPECT_THAT(base.Listado(), HasSubstr("V:VIEW"));
        base.Haz("DROP VIEW V");
    }
}

TEST_P(ConsultasGuardadas, UnaAccionHaceLoQueHaceSuTexto)
{
    for (const char* texto : Acciones) {
        SCOPED_TRACE(texto);
        const QString sql = QString::fromUtf8(texto);
        UnaBase otra(GetParam());
        UnaBase mismo(GetParam());
        const QString antes = otra.Datos();
        otra.Haz("CREATE PROCEDURE [La acción] AS " + sql + ";");
        EXPECT_EQ(otra.Datos(), antes);
        EXPECT_THAT(otra.Listado(), Not(HasSubstr("VIEW")));

        EXPECT_EQ(otra.Haz("EXECUTE [la ACCIÓN]"), mismo.Haz(sql));

        EXPECT_EQ(otra.Datos(), mismo.Datos());
        EXPECT_NE(otra.Datos(), antes);
    }
}

TEST_P(ConsultasGuardadas, LaCargaDelConfiguradorVaPorSusCincoNombres)
{
    base.Haz(
        {"CREATE TABLE PS_CONF_ART_CAT (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3))",
         "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3))",
         "INSERT INTO PS_CONF_ART_CAT VALUES ('VIEJO','TAL')",
         "INSERT INTO PS_CONF_ART_VAL VALUES ('VIEJO','TAL','S')",
         "CREATE VIEW Ps_Configurados_En_Paso_A_Traves AS SELECT COD FROM ART WHERE WEB",
         "CREATE PROCEDURE PS_BORRA_PS_CONF_ART_CAT AS DELETE * FROM PS_CONF_ART_CAT",
         "CREATE PROCEDURE PS_BORRA_PS_CONF_ART_VAL AS DELETE * FROM PS_CONF_ART_VAL",
         "CREATE PROCEDURE PS_CARGA_PS_CONF_ART_CAT AS INSERT INTO PS_CONF_ART_CAT (CODARTICULO,CODCATEGORIA) SELECT COD,'TAL' FROM Ps_Configurados_En_Paso_A_Traves",
         "CREATE PROCEDURE PS_CARGA_PS_CONF_ART_VAL AS INSERT INTO PS_CONF_ART_VAL SELECT COD AS CODARTICULO,'TAL' AS CODCATEGORIA,VALOR FROM VAL",
         "CREATE PROCEDURE PS_QUITAR_VALORES_NO_USADOS AS DELETE PS_CONF_ART_VAL.* FROM PS_CONF_ART_VAL WHERE NOT EXISTS (SELECT 'C' FROM PS_CONF_ART_CAT WHERE PS_CONF_ART_CAT.CODARTICULO=PS_CONF_ART_VAL.CODARTICULO)"});

    base.Haz({"PS_BORRA_PS_CONF_ART_CAT", "PS_BORRA_PS_CONF_ART_VAL", "PS_CARGA_PS_CONF_ART_CAT",
              "PS_CARGA_PS_CONF_ART_VAL", "PS_QUITAR_VALORES_NO_USADOS"});

    EXPECT_EQ(base.Tabla("SELECT * FROM PS_CONF_ART_CAT ORDER BY CODARTICULO"), "A1|TAL A3|TAL");
    EXPECT_EQ(base.Tabla("SELECT * FROM PS_CONF_ART_VAL ORDER BY VALOR"), "A1|TAL|L A1|TAL|M");
    EXPECT_EQ(
        base.Listado(),
        "ART:TABLE DE MAS:TABLE PS_CONF_ART_CAT:TABLE PS_CONF_ART_VAL:TABLE Ps_Configurados_En_Paso_A_Traves:VIEW VAL:TABLE");
}

TEST_P(ConsultasGuardadas, LaQueDefineUnaTablaLaHaceAlLlamarla)
{
    base.Haz("CREATE PROCEDURE HAZ AS CREATE TABLE NUEVA (N INT)");
    EXPECT_EQ(base.Fallo("SELECT * FROM NUEVA"),
              "No se conoce la tabla o consulta NUEVA (posición 15)");

    base.Haz("HAZ");

    base.Haz("INSERT INTO NUEVA VALUES (4)");
    EXPECT_EQ(base.Tabla("SELECT * FROM NUEVA"), "4");
    EXPECT_EQ(base.Fallo("HAZ"), "La tabla NUEVA ya existe, en la consulta HAZ");
    base.Haz({"CREATE PROCEDURE QUITA AS DROP TABLE NUEVA", "QUITA"});
    EXPECT_EQ(base.Listado(), "ART:TABLE DE MAS:TABLE VAL:TABLE");
}

TEST_P(ConsultasGuardadas, UnNombreQueYaEstaSeRechaza)
{
    base.Haz("CREATE VIEW V AS SELECT * FROM ART");

    EXPECT_EQ(base.Fallo("CREATE VIEW v AS SELECT * FROM VAL"), "La tabla o consulta v ya existe");
    EXPECT_EQ(base.Fallo("CREATE PROCEDURE ART AS DELETE FROM VAL"),
              "La tabla o consulta ART ya existe");
    EXPECT_EQ(base.Fallo("CREATE TABLE V (N INT)"), "La tabla V ya existe");
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM V"), "3");
}

TEST_P(ConsultasGuardadas, SeQuitanPorSuNombre)
{
    base.Haz({"CREATE VIEW UNA AS SELECT * FROM ART", "CREATE PROCEDURE OTRA AS DELETE FROM ART",
              "CREATE VIEW TERCERA AS SELECT * FROM UNA"});

    base.Haz({"DROP PROCEDURE otra", "DROP TABLE UNA"});

    EXPECT_EQ(base.Fallo("OTRA"), "No se conoce la sentencia o consulta OTRA (posición 1)");
    EXPECT_EQ(base.Fallo("SELECT * FROM TERCERA"),
              "No se conoce la tabla o consulta UNA (posición 15), en la consulta TERCERA");
    EXPECT_EQ(base.Fallo("DROP VIEW ART"), "ART es una tabla y no una consulta");
    EXPECT_EQ(base.Fallo("DROP VIEW UNA"), "No se conoce la tabla o consulta UNA");
    base.Haz("CREATE PROCEDURE OTRA AS DELETE FROM VAL");
    base.Haz("OTRA");
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM ART"), "3");
}

TEST_P(ConsultasGuardadas, UnErrorDiceEnQueConsultaEsta)
{
    base.Haz({"CREATE VIEW MALA AS SELECT NOHAY FROM ART",
              "CREATE VIEW ENCIMA AS SELECT * FROM MALA",
              "CREATE PROCEDURE ACCION AS DELETE * FROM VAL WHERE NOHAY=1"});

    EXPECT_EQ(base.Fallo("SELECT * FROM ENCIMA"),
              "No se conoce el campo NOHAY (posición 8), en la consulta MALA");
    EXPECT_EQ(base.Fallo("ACCION"),
              "No se conoce el campo NOHAY (posición 25), en la consulta ACCION");
    EXPECT_EQ(base.Fallo("SELECT * FROM ACCION"),
              "No se puede leer de la consulta ACCION (posición 15)");
    EXPECT_EQ(base.Fallo("DELETE FROM ENCIMA"),
              "No se conoce el campo NOHAY (posición 8), en la consulta MALA");
}

TEST_P(ConsultasGuardadas, SinElValorDeUnParametroNoSeHaceNada)
{
    base.Haz(
        {"CREATE PROCEDURE [Por código] AS PARAMETERS [Qué código] Text(10), n Long; DELETE FROM VAL WHERE COD=[Qué código]",
         "CREATE PROCEDURE DE_FORMULARIO AS DELETE * FROM VAL WHERE COD=[Forms]![Ficha artículo]![txtCodigo]",
         "CREATE VIEW DE_OTRO AS PARAMETERS Forms!F!c Value; SELECT * FROM VAL WHERE COD=Forms!F!c"});

    EXPECT_EQ(base.Fallo("[Por código]"),
              "A la consulta Por código le falta el valor del parámetro Qué código (posición 1)");
    EXPECT_EQ(
        base.Fallo("DE_FORMULARIO"),
        "Falta el valor del parámetro Forms!Ficha artículo!txtCodigo (posición 29), en la consulta DE_FORMULARIO");
    EXPECT_EQ(base.Fallo("SELECT * FROM DE_OTRO"),
              "A la consulta DE_OTRO le falta el valor del parámetro Forms!F!c (posición 15)");
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM VAL"), "3");
    EXPECT_EQ(base.Listado(), "ART:TABLE DE MAS:TABLE VAL:TABLE");
}

TEST_P(ConsultasGuardadas, UnTextoQueNoSeEntiendeNoSeGuarda)
{
    for (const char* texto :
         {"SELECT FROM ART", "DELETE ART", "CREATE VIEW X AS SELECT 1 AS UNO",
          "PARAMETERS p Text SELECT 1 AS UNO", "INSERT INTO ART IN 'C:\\x.mdb' VALUES (1)",
          "SELECT * INTO T IN 'C:\\x.mdb' FROM ART"})
        EXPECT_NE(base.Fallo("CREATE PROCEDURE P AS " + QString::fromUtf8(texto)), "") << texto;
    EXPECT_EQ(base.Fallo("P"), "No se conoce la sentencia o consulta P (posición 1)");
}

TEST_P(ConsultasGuardadas, DeUnaTablaSeBorraNombrandoSusCampos)
{
    EXPECT_EQ(base.Fallo("DELETE ART.COD, VAL.COD FROM ART INNER JOIN VAL ON ART.COD=VAL.COD"),
              "DELETE sólo puede borrar registros de una tabla (posición 8)");
    EXPECT_EQ(base.Fallo("DELETE NOHAY FROM VAL"), "No se conoce el campo NOHAY (posición 8)");
    EXPECT_EQ(base.Fallo("DELETE SEC+1 FROM VAL"),
              "DELETE pide una tabla, y no una expresión (posición 8)");
    EXPECT_EQ(base.Haz("DELETE VAL FROM VAL INNER JOIN ART ON ART.COD=VAL.COD WHERE WEB"), 2);
    EXPECT_EQ(base.Haz("DELETE SEC FROM VAL"), 1);
}

/// What only files of Access have.
class ConsultasDeAccess : public testing::Test {
  protected:
    using Piezas = std::vector<mdb::Pieza>;

    static mdb::Pieza Clase(int marca)
    {
        return {.atributo = mdb::atributo::Clase, .marca = marca};
    }
    static mdb::Pieza Fuente(const QString& nombre)
    {
        return {.atributo = mdb::atributo::Fuente, .nombre1 = nombre};
    }
    static mdb::Pieza Salida(const QString& expresion)
    {
        return {.atributo = mdb::atributo::Salida, .expresion = expresion};
    }

    /// Another program saves a query in the file.
    void Guarda(const QString& nombre, const Piezas& piezas)
    {
        const auto paginas = std::make_shared<mdb::TransaccionPaginas>(base.Ruta());
        paginas->Empieza();
        mdb::CreaConsulta(paginas, nombre, piezas);
        paginas->Confirma();
    }
    QString TextoGuardado(const QString& nombre)
    {
        return mdb::Base(base.Ruta()).SqlDeConsulta(nombre);
    }

    UnaBase base{Forma::DeAccess};
};

TEST_F(ConsultasDeAccess, ElTextoQueSeVuelveALeerDiceLoMismo)
{
    base.Haz(
        {"CREATE VIEW V1 AS SELECT *, A.PVP AS P FROM ART AS A, VAL INNER JOIN [DE MAS] AS M ON VAL.COD=M.COD AND VAL.SEC<=M.[Order] WHERE A.WEB=True",
         "CREATE PROCEDURE P1 AS INSERT INTO [DE MAS] (COD,[Order]) SELECT DISTINCT COD,1 FROM VAL",
         "CREATE PROCEDURE P2 AS UPDATE ART AS A SET A.PVP=IIF(A.WEB,1,2), [DES]='x'",
         "CREATE PROCEDURE P3 AS DELETE FROM VAL WHERE SEC=1;"});

    EXPECT_EQ(
        TextoGuardado("V1"),
        "SELECT A.*, VAL.*, M.*, A.PVP AS P\n"
        "FROM ART AS A, VAL INNER JOIN [DE MAS] AS M ON (VAL.COD=M.COD) AND (VAL.SEC<=M.[Order])\n"
        "WHERE A.WEB=True;");
    EXPECT_EQ(TextoGuardado("P1"), "INSERT INTO [DE MAS] (COD, [Order])\n"
                                   "SELECT DISTINCT COD, 1\n"
                                   "FROM VAL;");
    EXPECT_EQ(TextoGuardado("P2"), "UPDATE ART AS A\nSET A.PVP = IIF(A.WEB,1,2), DES = 'x';");
    EXPECT_EQ(TextoGuardado("P3"), "DELETE *\nFROM VAL\nWHERE SEC=1;");
}

TEST_F(ConsultasDeAccess, ElFicheroQuedaBienConTodasEllas)
{
    int n = 0;
    for (const char* texto : Selecciones)
        base.Haz(QString("CREATE VIEW V%1 AS ").arg(++n) + QString::fromUtf8(texto));
    for (const char* texto : Acciones)
        base.Haz(QString("CREATE PROCEDURE P%1 AS ").arg(++n) + QString::fromUtf8(texto));
    for (int i = 2; i <= n; i += 2)
        base.Haz(
            QString("DROP VIEW %1%2").arg(i <= int(std::size(Selecciones)) ? 'V' : 'P').arg(i));

    QProcess comprueba;
    comprueba.start(KOV_CONSTRUCCION "/kovtolmo-mdb", {"comprueba", base.Ruta()});
    ASSERT_TRUE(comprueba.waitForFinished(60'000));
    EXPECT_EQ(comprueba.exitCode(), 0) << comprueba.readAllStandardOutput().toStdString();
    EXPECT_EQ(mdb::Base(base.Ruta()).catalogo().Consultas().size(), std::size_t(n - n / 2));
}

TEST_F(ConsultasDeAccess, OtroLectorVeLasMismasPartes)
{
    base.Haz(
        {"CREATE VIEW V AS SELECT DISTINCT A.DES AS Nombre, VALOR FROM ART AS A INNER JOIN VAL ON A.COD=VAL.COD WHERE (A.PVP>1) ORDER BY A.DES DESC",
         "CREATE PROCEDURE P AS DELETE VAL.* FROM VAL WHERE SEC=1",
         "CREATE PROCEDURE I AS INSERT INTO VAL (COD,SEC) SELECT COD, 1+1 FROM ART WHERE WEB"});
    const auto lee = [&](const QString& nombre) {
        QProcess proceso;
        proceso.start("mdb-queries", {base.Ruta(), nombre});
        EXPECT_TRUE(proceso.waitForFinished(60'000));
        return proceso.readAllStandardOutput().trimmed().toStdString();
    };

    // It knows of no kinds nor joins: the list, the tables, the condition and the order.
    EXPECT_EQ(
        lee("V"),
        "SELECT DISTINCT A.DES,VALOR FROM [ART],[VAL] WHERE (A.PVP>1) ORDER BY A.DES DESCENDING");
    EXPECT_EQ(lee("P"), "SELECT VAL.* FROM [VAL] WHERE SEC=1");
    EXPECT_EQ(lee("I"), "SELECT COD,1+1 FROM [ART] WHERE WEB");
}

TEST_F(ConsultasDeAccess, LoQueNoCabeEnSusPiezasSeRechaza)
{
    const auto dice = [&](const char* texto) {
        return base.Fallo("CREATE PROCEDURE P AS " + QString::fromUtf8(texto));
    };
    const std::string principio = "La consulta no se puede guardar en un fichero de Access: ";

    EXPECT_EQ(dice("EXECUTE OTRA"), principio + "llama a otra, OTRA");
    EXPECT_EQ(dice("INSERT INTO VAL (COD) SELECT COD FROM ART UNION SELECT COD FROM VAL"),
              principio + "UNION no cabe en INSERT");
    EXPECT_EQ(dice("INSERT INTO VAL (COD,VALOR,SEC) SELECT * FROM VAL"),
              principio + "con una lista de campos, SELECT no puede llevar *");
    EXPECT_EQ(dice("INSERT INTO VAL (COD,VALOR) VALUES (1)"),
              principio + "el número de valores no es el de los campos de destino");
    EXPECT_EQ(dice("SELECT * FROM (SELECT COD FROM ART)"),
              principio + "una subconsulta de FROM no tiene nombre");
    EXPECT_EQ(dice("SELECT * FROM ART, VAL AS art"),
              principio + "el nombre art está dos veces en FROM");
    EXPECT_EQ(dice("SELECT COD INTO T FROM ART UNION SELECT COD FROM VAL"),
              principio + "INTO no cabe en UNION");
    EXPECT_EQ(dice("PARAMETERS p Cosa; DELETE FROM VAL WHERE COD=p"),
              principio + "no se conoce el tipo COSA de su parámetro p");
    EXPECT_THAT(dice("SELECT COD AS `a]b` FROM ART"),
                HasSubstr(principio + "no se podría volver a leer: "));
    EXPECT_TRUE(mdb::Base(base.Ruta()).catalogo().Consultas().empty());
}

TEST_F(ConsultasDeAccess, LasDeUnFicheroDeAccessSeUsanPorSuNombre)
{
    const QString copia = base.Carpeta() + "/copia.mdb";
    ASSERT_TRUE(
        QFile::copy(KOV_FUENTES "/tests/data/access/mdb/muestras/2003-saved-queries.mdb", copia));
    QFile::setPermissions(copia, QFile::ReadOwner | QFile::WriteOwner);
    ProveedorAccess suya(std::make_unique<FicheroAccess>(copia));
    const auto fallo = [&](const char* sql) {
        try {
            suya.Consulta(sql, false);
        } catch (const data::ErrorSql& error) {
            return error.Descripcion().toStdString();
        }
        return std::string();
    };

    suya.Ejecuta("INSERT INTO Table1 (col1) VALUES ('azul')");
    suya.Ejecuta("INSERT INTO Table1 (col1) VALUES ('blanco')");
    EXPECT_EQ(suya.Ejecuta("DeleteQuery"), 1) << "what comes after \"blah\"";
    EXPECT_EQ(suya.Consulta("SELECT * FROM Table1", false).valores[0], QVariant("azul"));
    EXPECT_EQ(suya.Consulta("SelectQuery", false).valores.size(), 0U);
    suya.Ejecuta("DataDefinitionQuery");
    suya.Ejecuta("INSERT INTO Table5 VALUES ('a','b')");
    EXPECT_EQ(fallo("UpdateQuery"),
              "A la consulta UpdateQuery le falta el valor del parámetro User Name (posición 1)");
    EXPECT_EQ(fallo("AppendQuery"),
              "El campo col2 está dos veces en INSERT (posición 13), en la consulta AppendQuery");
    for (const char* sql : {"SELECT * FROM CrosstabQuery", "CrosstabQuery"})
        EXPECT_THAT(
            fallo(sql),
            HasSubstr(
                "La consulta CrosstabQuery no se puede usar: es de tabla de referencias cruzadas"))
            << sql;
    EXPECT_THAT(fallo("EXEC PassthroughQuery"),
                HasSubstr("La consulta PassthroughQuery no se puede usar: es de paso a través"));
    EXPECT_TRUE(mdb::Comprueba(mdb::Base(copia)).Sano());
}

TEST_F(ConsultasDeAccess, LoQueOtroGuardaSeVeEnLaSentenciaSiguiente)
{
    EXPECT_NE(base.Fallo("AJENA"), "");

    Guarda("AJENA",
           {Clase(5),
            Fuente("VAL"),
            Salida("VAL.COD"),
            {.atributo = mdb::atributo::Donde, .expresion = "(((VAL.COD) Like \"A1*\"))"}});

    EXPECT_EQ(base.Haz("AJENA"), 2);
}

TEST_F(ConsultasDeAccess, UnGuionQueFallaNoDejaConsultas)
{
    QFile guion(base.Carpeta() + "/malo.sql");
    ASSERT_TRUE(guion.open(QIODevice::WriteOnly));
    guion.write("CREATE VIEW V AS SELECT * FROM ART;\nCREATE TABLE T (N INT);\n"
                "CREATE PROCEDURE P AS DELETE FROM T;\nINSERT INTO NOHAY VALUES (1);\n");
    guion.close();

    EXPECT_THROW(data::EjecutaGuiones(base.Ruta(), {guion.fileName()}), data::ErrorSql);

    EXPECT_EQ(base.Listado(), "ART:TABLE DE MAS:TABLE VAL:TABLE");
    EXPECT_TRUE(mdb::Base(base.Ruta()).catalogo().Consultas().empty());
    EXPECT_TRUE(mdb::Comprueba(mdb::Base(base.Ruta())).Sano());
}

TEST_F(ConsultasDeAccess, SeLeeDeOtraBaseComoDiganSusPiezas)
{
    UnaBase otra(Forma::DeAccess);
    otra.Haz("UPDATE ART SET DES='otra' WHERE COD='A1'");
    mdb::Pieza destino = Clase(3);
    destino.nombre1 = "VAL";
    mdb::Pieza suya = Fuente("ART");
    suya.nombre2 = "O";
    suya.expresion = ";DATABASE=" + otra.Ruta();
    Guarda("CON_IN", {Clase(1),
                      {.atributo = mdb::atributo::OtraBase, .nombre1 = otra.Ruta()},
                      Fuente("ART"),
                      Salida("ART.DES")});
    Guarda("DE_LAS_DOS", {destino,
                          Fuente("ART"),
                          suya,
                          {.atributo = 6, .nombre2 = "COD", .expresion = "ART.DES"},
                          {.atributo = 6, .nombre2 = "VALOR", .expresion = "O.DES"},
                          {.atributo = 7,
                           .marca = 1,
                           .nombre1 = "ART",
                           .nombre2 = "O",
                           .expresion = "ART.COD=O.COD"},
                          {.atributo = 8, .expresion = "O.PVP=1.5"}});

    EXPECT_EQ(base.Tabla("SELECT * FROM CON_IN WHERE DES LIKE 'o%'"), "otra");
    EXPECT_EQ(base.Haz("DE_LAS_DOS"), 1);
    EXPECT_EQ(base.Tabla("SELECT COD FROM VAL WHERE VALOR='otra'"), "Cañón");
    EXPECT_EQ(base.Listado(), "ART:TABLE CON_IN:VIEW DE MAS:TABLE VAL:TABLE");
}

TEST_F(ConsultasDeAccess, UnaSentenciaLeeDeOtraBase)
{
    UnaBase otra(Forma::DeAccess);
    UnaBase tercera(Forma::DeAccess);
    otra.Haz("DELETE FROM VAL WHERE VALOR='M'");
    tercera.Haz("DELETE FROM VAL");
    const auto cuantas = [&](const QString& fuente) {
        return base.Tabla("SELECT COUNT(*) FROM " + fuente);
    };

    EXPECT_EQ(cuantas("VAL IN '" + otra.Ruta() + "'"), "1");
    EXPECT_EQ(cuantas("VAL IN '" + tercera.Ruta() + "'"), "0") << "the path isn't a value";
    EXPECT_EQ(cuantas("VAL IN '' [MS Access;PWD=;DATABASE=" + otra.Ruta() + "]"), "1");
    EXPECT_EQ(cuantas("[" + otra.Ruta() + "].VAL, VAL AS NUESTRA"), "3");
    otra.Haz("INSERT INTO VAL VALUES ('A9','S',1)");
    EXPECT_EQ(cuantas("VAL IN '" + otra.Ruta() + "'"), "2");

    EXPECT_THAT(base.Fallo("SELECT * FROM VAL IN 'C:\\NOHAY.MDB'"),
                HasSubstr("La tabla está en un fichero que no está: C:\\NOHAY.MDB"));
    EXPECT_EQ(base.Fallo("SELECT * FROM [ODBC;DSN=X;PWD=secreta;DATABASE=Y].VAL"),
              "La tabla VAL está en otra base, con datos que no son de Access");
    EXPECT_EQ(base.Fallo("SELECT NOHAY FROM VAL IN '' [;PWD=secreta;DATABASE=" + otra.Ruta() + "]"),
              "No se conoce el campo NOHAY (posición 8)");
    EXPECT_THAT(base.Fallo("DELETE FROM VAL IN '" + otra.Ruta() + "'"),
                HasSubstr("sólo se puede leer"));
    EXPECT_THAT(base.Fallo("INSERT INTO VAL IN '" + otra.Ruta() + "' VALUES ('A','B',1)"),
                HasSubstr("En una tabla de otra base no se escribe (posición 17)"));
    UnaBase embebida(Forma::Embebida);
    EXPECT_EQ(embebida.Fallo("SELECT * FROM VAL IN 'C:\\X.MDB'"),
              "La tabla VAL está en otra base, y sólo se lee de otra desde un fichero de Access");
}

/// A file with tables that live in another one.
class TablasEnlazadas : public testing::Test {
  protected:
    void SetUp() override { Enlaza("SUYA", otra.Ruta(), "VAL"); }

    void Enlaza(const QString& nombre, const QString& fichero, const QString& tabla)
    {
        const auto paginas = std::make_shared<mdb::TransaccionPaginas>(base.Ruta());
        paginas->Empieza();
        const mdb::Tabla objetos = mdb::Base(paginas).AbreTabla(QString("MSysObjects"));
        mdb::FilaDeSistema(objetos)
            .Con("Id", qint64{--id_})
            .Con("ParentId", qint64{mdb::Catalogo::PadreTablas})
            .Con("Name", nombre)
            .Con("Type", qint64{mdb::clase_objeto::EnlaceFichero})
            .Con("Flags", qint64{0x00200000})
            .Con("Database", fichero)
            .Con("ForeignName", tabla)
            .Inserta(paginas);
        paginas->Confirma();
    }
    QString Cuantas() { return base.Tabla("SELECT COUNT(*) FROM SUYA"); }

    UnaBase base{Forma::DeAccess};
    UnaBase otra{Forma::DeAccess};

  private:
    qint32 id_ = -1000;
};

TEST_F(TablasEnlazadas, LoQueSeGuardaEnElOtroFicheroSeVeEnElConjuntoSiguiente)
{
    EXPECT_EQ(Cuantas(), "3");
    EXPECT_EQ(base.Tabla("SELECT VALOR FROM SUYA WHERE COD='A9'"), "");

    otra.Haz("INSERT INTO VAL VALUES ('A9','XL',1)");

    EXPECT_EQ(Cuantas(), "4");
    EXPECT_EQ(base.Tabla("SELECT VALOR FROM SUYA WHERE COD='A9'"), "XL");
    otra.Haz("DELETE FROM VAL WHERE COD<>'A9'");
    EXPECT_EQ(base.Tabla("SELECT COD,VALOR FROM SUYA"), "A9|XL");
    EXPECT_EQ(base.Haz("INSERT INTO VAL SELECT * FROM SUYA"), 1);
}

TEST_F(TablasEnlazadas, TambienLoQueGuardaOtroProceso)
{
    OtroProceso proceso([this](const auto& avisa, const auto& espera) {
        espera();
        ProveedorAccess suya(std::make_unique<FicheroAccess>(otra.Ruta()));
        for (int i = 0; i < 60; ++i)
            suya.Ejecuta(QString("INSERT INTO VAL VALUES ('N%1','M',%1)").arg(i));
        avisa();
    });
    EXPECT_EQ(Cuantas(), "3");

    proceso.Avisa();
    int antes = 3;
    for (int n = 3; n < 63; n = Cuantas().toInt()) {
        ASSERT_GE(n, antes);
        antes = n;
    }
    proceso.EsperaSuAviso();

    EXPECT_EQ(Cuantas(), "63");
    EXPECT_EQ(base.Tabla("SELECT SEC FROM SUYA WHERE COD='N59'"), "59");
}

TEST_F(TablasEnlazadas, OtraFormaDeLaTablaSeVeTambien)
{
    EXPECT_EQ(base.Todo("SELECT * FROM SUYA WHERE SEC=2"), "COD,VALOR,SEC : A1|M|2");

    otra.Haz({"DROP TABLE VAL", "CREATE TABLE VAL (N INT)", "INSERT INTO VAL VALUES (7)"});

    EXPECT_EQ(base.Todo("SELECT * FROM SUYA"), "N : 7");
    otra.Haz("DROP TABLE VAL");
    EXPECT_THAT(base.Fallo("SELECT * FROM SUYA"), HasSubstr("La tabla no existe"));
}

TEST_F(TablasEnlazadas, DelFicheroQueYaNoEstaSeDiceElNombre)
{
    EXPECT_EQ(Cuantas(), "3");
    ASSERT_TRUE(QFile::rename(otra.Ruta(), otra.Ruta() + ".aparte"));

    for (int vez = 0; vez < 2; ++vez)
        EXPECT_THAT(base.Fallo("SELECT COUNT(*) FROM SUYA"),
                    HasSubstr("La tabla está vinculada a un fichero que no está: " +
                              otra.Ruta().toStdString()));
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM ART"), "3") << "the others go on";
    ASSERT_TRUE(QFile::rename(otra.Ruta() + ".aparte", otra.Ruta()));
    EXPECT_EQ(Cuantas(), "3");
}

TEST_F(TablasEnlazadas, OtroFicheroEnSuLugarEsElQueSeLee)
{
    EXPECT_EQ(Cuantas(), "3");
    UnaBase nueva(Forma::DeAccess);
    nueva.Haz("DELETE FROM VAL WHERE COD='A1'");
    ASSERT_TRUE(QFile::remove(otra.Ruta()));
    ASSERT_TRUE(QFile::copy(nueva.Ruta(), otra.Ruta()));

    EXPECT_EQ(Cuantas(), "1");
    ASSERT_TRUE(QFile::remove(otra.Ruta()));
    QFile basura(otra.Ruta());
    ASSERT_TRUE(basura.open(QIODevice::WriteOnly));
    basura.write("nada");
    basura.close();
    EXPECT_THAT(base.Fallo("SELECT COUNT(*) FROM SUYA"), HasSubstr(otra.Ruta().toStdString()));
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM VAL"), "3");
}

TEST_F(TablasEnlazadas, UnaSentenciaQueEscribeLeeDelOtroFicheroMientras)
{
    base.Haz("INSERT INTO VAL SELECT * FROM SUYA");
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM VAL"), "6");
    EXPECT_THAT(base.Fallo("DELETE FROM SUYA"), HasSubstr("sólo se puede leer"));
    EXPECT_THAT(base.Fallo("DROP TABLE SUYA"), HasSubstr("vinculada"));
    EXPECT_EQ(otra.Tabla("SELECT COUNT(*) FROM VAL"), "3");
}

TEST_F(TablasEnlazadas, UnEnlaceQueVuelveAlPropioFicheroLeeLoSuyo)
{
    Enlaza("LA_MISMA", base.Ruta(), "VAL");

    EXPECT_EQ(base.Haz("INSERT INTO VAL (COD,SEC) SELECT COD,SEC FROM LA_MISMA"), 3);
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM LA_MISMA"), "6");
}

TEST_F(TablasEnlazadas, ElOtroFicheroPuedeCambiarEnMedioDeUnaTransaccion)
{
    {
        Transaccion transaccion(base.Proveedor().Motor());
        base.Haz("INSERT INTO VAL SELECT * FROM SUYA");
        otra.Haz("DELETE FROM VAL WHERE COD='A1'");
        EXPECT_EQ(Cuantas(), "1");
        base.Haz("INSERT INTO VAL SELECT * FROM SUYA");
        EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM VAL"), "7");
        transaccion.Confirma();
    }
    EXPECT_EQ(base.Tabla("SELECT COUNT(*) FROM VAL"), "7");
    EXPECT_TRUE(mdb::Comprueba(mdb::Base(base.Ruta())).Sano());
}

TEST_F(TablasEnlazadas, EstanEnLaLista)
{
    EXPECT_EQ(base.Listado(), "ART:TABLE DE MAS:TABLE SUYA:LINK VAL:TABLE");
}

} // namespace
