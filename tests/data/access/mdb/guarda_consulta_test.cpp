#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/muestras.h"
#include "data/access/mdb/texto_consulta.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::HasSubstr;

namespace {

constexpr auto ConConsultas = "2003-saved-queries.mdb";

Objeto Consulta(const BaseEscribible& base, const QString& nombre)
{
    return *Base(base.paginas()).catalogo().ConsultaDe(nombre);
}

std::vector<Pieza> Piezas(const BaseEscribible& base, const QString& nombre)
{
    return LeeConsulta(base.Abre("MSysQueries"), Consulta(base, nombre).id);
}

/// The pieces of a query as they are handed over to be saved.
std::vector<Pieza> SinMarcos(std::vector<Pieza> piezas)
{
    std::erase_if(piezas, [](const Pieza& pieza) {
        return pieza.atributo == atributo::Principio || pieza.atributo == atributo::Final;
    });
    return piezas;
}

/// The rows of MSysQueries of a query, without its number, in the order of their kinds.
std::string Filas(const BaseEscribible& base, const QString& nombre)
{
    const Tabla tabla = base.Abre("MSysQueries");
    const qint64 id = Consulta(base, nombre).id;
    QStringList filas;
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        if (cursor.fila().Lee(tabla["ObjectId"]) != Dato(id))
            continue;
        QStringList valores;
        for (const Columna& columna : tabla.definicion().columnas) {
            const Dato valor = cursor.fila().Lee(columna);
            if (columna.nombre == u"Attribute")
                valores << TextoExacto(valor).rightJustified(3, '0');
            else if (columna.nombre != u"ObjectId")
                valores << (EsNulo(valor) ? "NULO" : TextoExacto(valor));
        }
        filas << valores.join('|');
    }
    filas.sort();
    return filas.join('\n').toStdString();
}

std::string Derechos(const BaseEscribible& base, qint32 id)
{
    const Tabla tabla = base.Abre("MSysACEs");
    QStringList derechos;
    for (Cursor cursor(tabla); cursor.Siguiente();) {
        if (cursor.fila().Lee(tabla["ObjectId"]) == Dato(qint64{id}))
            derechos << TextoExacto(cursor.fila().Lee(tabla["SID"])) + ' ' +
                            TextoExacto(cursor.fila().Lee(tabla["ACM"])) + ' ' +
                            TextoExacto(cursor.fila().Lee(tabla["FInheritable"]));
    }
    derechos.sort();
    return derechos.join('\n').toStdString();
}

const std::vector<Pieza> DeSeleccion{{.atributo = atributo::Clase, .marca = 1},
                                     {.atributo = atributo::Opciones},
                                     {.atributo = atributo::Fuente, .nombre1 = "MSysObjects"},
                                     {.atributo = atributo::Salida, .expresion = "Name"},
                                     {.atributo = atributo::Salida, .expresion = "Type"}};

TEST(GuardaConsulta, QuedaComoLasDeAccess)
{
    // Each kind of query that Access wrote, saved again under another name.
    const BaseEscribible base(BytesDeMuestra(ConConsultas));
    const QStringList faltasDeAccess = base.Faltas(); // a table declares another count of rows
    for (const QString nombre :
         {"SelectQuery", "UpdateQuery", "AppendQuery", "DeleteQuery", "MakeTableQuery",
          "CrosstabQuery", "UnionQuery", "PassthroughQuery", "DataDefinitionQuery"}) {
        SCOPED_TRACE(nombre.toStdString());
        CreaConsulta(base.paginas(), "Otra " + nombre, SinMarcos(Piezas(base, nombre)));
        const Objeto suya = Consulta(base, nombre);
        const Objeto nuestra = Consulta(base, "Otra " + nombre);
        EXPECT_EQ(Filas(base, "Otra " + nombre), Filas(base, nombre));
        EXPECT_EQ(nuestra.marcas, suya.marcas);
        EXPECT_EQ(nuestra.padre, suya.padre);
        EXPECT_EQ(Derechos(base, nuestra.id), Derechos(base, suya.id));
    }
    EXPECT_EQ(base.Faltas(), faltasDeAccess);
}

TEST(GuardaConsulta, TomaElNumeroQueSigueAlUltimo)
{
    const BaseEscribible base(BytesDeMuestra(ConConsultas));

    CreaConsulta(base.paginas(), "Nueva", DeSeleccion);

    EXPECT_EQ(Consulta(base, "Nueva").id, -2147483630);
}

TEST(GuardaConsulta, OtrosProgramasLaVen)
{
    const BaseEscribible base;
    CreaConsulta(base.paginas(), "Lo que hay", DeSeleccion);
    const CarpetaDePrueba carpeta;
    carpeta.Escribe("base.mdb", base.paginas()->Fichero());
    const auto consulta = [&](const QStringList& orden) {
        QProcess proceso;
        proceso.start("mdb-queries", orden);
        if (!proceso.waitForFinished(60'000) || proceso.exitCode() != 0)
            ADD_FAILURE() << proceso.readAllStandardError().toStdString();
        return proceso.readAllStandardOutput().trimmed().toStdString();
    };

    EXPECT_EQ(consulta({"-L", carpeta.Ruta("base.mdb")}), "Lo que hay");
    EXPECT_EQ(consulta({carpeta.Ruta("base.mdb"), "Lo que hay"}),
              "SELECT Name,Type FROM [MSysObjects]");
}

TEST(GuardaConsulta, UnNombreQueYaEstaSeRechaza)
{
    const BaseEscribible base(BytesDeMuestra(ConConsultas));

    for (const QString nombre : {"selectquery", "TABLE1", "msysobjects"})
        EXPECT_THAT(FraseDe([&] { CreaConsulta(base.paginas(), nombre, DeSeleccion); }),
                    HasSubstr("El objeto ya existe: " + nombre.toStdString()));
    EXPECT_THAT(FraseDe([&] { CreaConsulta(base.paginas(), "a.b", DeSeleccion); }),
                HasSubstr("El nombre no se puede usar: a.b"));
    EXPECT_TRUE(base.paginas()->Fichero() == BytesDeMuestra(ConConsultas));
}

TEST(GuardaConsulta, BorradaNoDejaNada)
{
    const BaseEscribible base(BytesDeMuestra(ConConsultas));
    const auto filas = [&] {
        return std::vector{base.Filas("MSysObjects"), base.Filas("MSysACEs"),
                           base.Filas("MSysQueries")};
    };
    const auto antes = filas();
    const QStringList faltasDeAccess = base.Faltas();
    CreaConsulta(base.paginas(), "Nueva", DeSeleccion);
    EXPECT_NE(filas(), antes);

    BorraConsulta(base.paginas(), "NUEVA");

    EXPECT_EQ(filas(), antes);
    EXPECT_EQ(base.Faltas(), faltasDeAccess);
    EXPECT_EQ(MotivoDe([&] { BorraConsulta(base.paginas(), "Nueva"); }), Motivo::NoHallado);
    EXPECT_EQ(MotivoDe([&] { BorraConsulta(base.paginas(), "Table1"); }), Motivo::NoHallado);
}

TEST(GuardaConsulta, MuchasSeHallanCadaUnaConLoSuyo)
{
    const BaseEscribible base;
    const auto piezas = [](int i) {
        std::vector<Pieza> suyas = DeSeleccion;
        for (int donde = 0; donde < i % 7; ++donde)
            suyas.push_back({.atributo = atributo::Orden,
                             .nombre1 = i % 2 == 0 ? "D" : "",
                             .expresion = QString("x%1").arg(i) + QString(donde * 300, 'y')});
        return suyas;
    };
    for (int i = 0; i < 300; ++i)
        CreaConsulta(base.paginas(), QString("Q%1").arg(i), piezas(i));
    for (int i = 0; i < 300; i += 3)
        BorraConsulta(base.paginas(), QString("Q%1").arg(i));

    EXPECT_EQ(base.Faltas(), QStringList());
    const Base leida(base.paginas());
    ASSERT_EQ(leida.catalogo().Consultas().size(), 200U);
    for (int i = 1; i < 300; i += i % 3 == 1 ? 1 : 2)
        EXPECT_EQ(leida.SqlDeConsulta(QString("Q%1").arg(i)), SqlDe(piezas(i)));
}

} // namespace
