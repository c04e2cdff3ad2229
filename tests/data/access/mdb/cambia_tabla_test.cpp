#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/cambia_tabla.h"
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/guarda_propiedades.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/muestras.h"
#include <QRegularExpression>
#include <gmock/gmock.h>
#include <set>

using namespace tolmo::data::access::mdb;
using testing::StartsWith;

namespace {

constexpr int Cuantas = 300;

std::set<quint32> Libres(const BaseEscribible& base)
{
    const std::vector<quint32> libres = LeeMapa(*base.paginas(), MapaGlobal).paginas;
    return {libres.begin(), libres.end()};
}

/// Three columns of fixed width, two of them Boolean and number, a text and a memo, and rows.
class CambiaTabla : public testing::Test, public BaseEscribible {
  protected:
    CambiaTabla()
    {
        CreaTabla(paginas(), {.nombre = "T",
                              .columnas = {{.nombre = "N", .tipo = TipoColumna::Largo},
                                           {.nombre = "A", .ancho = 20},
                                           {.nombre = "D", .tipo = TipoColumna::Doble},
                                           {.nombre = "M", .tipo = TipoColumna::Memo},
                                           {.nombre = "B", .tipo = TipoColumna::Logico}},
                              .indices = {{.nombre = "PorN", .columnas = {{"N"}}}}});
        TablaEscribible tabla = Escribe("T");
        for (int i = 0; i < Cuantas; ++i)
            tabla.Inserta(Viejo(i));
    }

    static Renglon Viejo(int i)
    {
        return {qint64{i}, QString("a%1").arg(i), i * 0.5, QString(i * 7, 'm'), i % 2 == 0};
    }
    Renglon Fila(std::size_t i) const { return Filas("T").at(i); }
    QStringList Columnas() const
    {
        const Tabla tabla = Abre("T");
        QStringList nombres;
        for (const Columna& columna : tabla.definicion().columnas)
            nombres << columna.nombre;
        return nombres;
    }
    const Columna& La(const QString& nombre)
    {
        tabla_.emplace(Abre("T"));
        return (*tabla_)[nombre];
    }
    QStringList Propiedades() const
    {
        QStringList textos;
        for (const Propiedad& p : PropiedadesDeTabla(paginas(), Abre("T").definicion().pagina))
            textos << p.columna + '.' + p.nombre + '=' +
                          (p.tipo == 1 ? QString(p.valor.toHex()) : TextoDe(p));
        return textos;
    }
    void Pon(const std::vector<Propiedad>& propiedades)
    {
        const Base base(paginas());
        GuardaPropiedades(paginas(), *base.catalogo().TablaDe("T"), propiedades);
    }

  private:
    std::optional<Tabla> tabla_{};
};

TEST_F(CambiaTabla, UnaColumnaNuevaEsNulaEnLasFilasQueHay)
{
    struct Nueva {
        NuevaColumna columna;
        Dato antes;
        Dato valor;
        QString enMdbtools;
    };
    const std::vector<Nueva> nuevas{
        {{.nombre = "Texto", .ancho = 10}, {}, QString("ñandú"), "ñandú"},
        {{.nombre = "Entero", .tipo = TipoColumna::Entero}, {}, qint64{-7}, "-7"},
        {{.nombre = "Fecha", .tipo = TipoColumna::Fecha},
         {},
         Fecha{45366.5},
         "2024-03-15 12:00:00"},
        {{.nombre = "Nota", .tipo = TipoColumna::Memo}, {}, QString(3000, 'x'), QString(3000, 'x')},
        {{.nombre = "Verdad", .tipo = TipoColumna::Logico}, false, true, "1"},
        {{.nombre = "Dinero", .tipo = TipoColumna::Moneda}, {}, Moneda{12500}, "1.2500"},
        {{.nombre = "Foto", .tipo = TipoColumna::Ole}, {}, QByteArray("\1\2\3"), "010203"}};
    for (const Nueva& nueva : nuevas) {
        SCOPED_TRACE(nueva.columna.nombre.toStdString());
        AnadeColumna(paginas(), "T", nueva.columna);
        EXPECT_EQ(Columnas().back(), nueva.columna.nombre);
        EXPECT_EQ(Fila(5).back(), nueva.antes);
        EXPECT_EQ(Faltas(), QStringList());
    }
    const Tabla tabla = Abre("T");
    Renglon esperado = Viejo(5);
    for (const Nueva& nueva : nuevas)
        esperado.push_back(nueva.antes);
    EXPECT_EQ(Fila(5), esperado);

    // Old rows take the new values, and new rows all of them.
    TablaEscribible escribible = Escribe("T");
    Cursor cursor(tabla);
    cursor.Siguiente();
    std::vector<TablaEscribible::Cambio> cambios;
    Renglon completa = Viejo(0);
    for (std::size_t i = 0; i < nuevas.size(); ++i) {
        cambios.push_back({.columna = 5 + i, .valor = nuevas[i].valor});
        completa.push_back(nuevas[i].valor);
    }
    escribible.Actualiza(cursor.puntero(), cambios);
    completa[0] = qint64{Cuantas};
    escribible.Inserta(completa);
    EXPECT_EQ(Filas("T").back(), completa);
    completa[0] = qint64{0};
    EXPECT_EQ(Fila(0), completa);
    EXPECT_EQ(Faltas(), QStringList());
    const QStringList lineas = Exporta("T").split('\n');
    const QStringList suyas = lineas.filter(QRegularExpression("^0\\|")).value(0).split('|').mid(5);
    QStringList nuestras;
    for (const Nueva& nueva : nuevas)
        nuestras << nueva.enMdbtools;
    EXPECT_EQ(suyas, nuestras);
}

TEST_F(CambiaTabla, LosNumerosYLosSitiosNoSeDanDosVeces)
{
    QuitaColumna(paginas(), "T", "D"); // the last one of fixed width
    EXPECT_EQ(Columnas(), QStringList({"N", "A", "M", "B"}));
    EXPECT_EQ(Faltas(), QStringList());
    AnadeColumna(paginas(), "T", {.nombre = "D", .tipo = TipoColumna::Largo});
    AnadeColumna(paginas(), "T", {.nombre = "E", .ancho = 5});

    // Numbers 0 to 4 and slots 0 and 1 were given; N takes four bytes and the old D eight.
    EXPECT_EQ(La("D").numero, 5);
    EXPECT_EQ(La("D").desplazamiento, 12);
    EXPECT_EQ(La("D").posicion, 6);
    EXPECT_EQ(La("E").numero, 6);
    EXPECT_EQ(La("E").ranura, 2);
    EXPECT_EQ(Abre("T").definicion().maxColumnas, 7);
    EXPECT_EQ(Abre("T").definicion().ranuras, 3);
    EXPECT_EQ(Fila(3), Renglon({qint64{3}, QString("a3"), QString(21, 'm'), false, {}, {}}));
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_TRUE(Exporta("T").contains("\n1|a1|mmmmmmm|0|NULO|NULO\n"));
}

TEST_F(CambiaTabla, QuitarUnaColumnaDejaLasDemasComoEstaban)
{
    const std::set<quint32> libres = Libres(*this);
    QuitaColumna(paginas(), "T", "a");
    QuitaColumna(paginas(), "T", "M");

    for (int i : {0, 1, 150, Cuantas - 1})
        EXPECT_EQ(Fila(static_cast<std::size_t>(i)), Renglon({qint64{i}, i * 0.5, i % 2 == 0}));
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_GT(Libres(*this).size(), libres.size() + 50) << "those of the memos are free";
    EXPECT_EQ(Exporta("T").count('\n'), Cuantas);
    // Rows whose memo is no more are changed and deleted as any other.
    TablaEscribible tabla = Escribe("T");
    Cursor cursor(Abre("T"));
    for (int i = 0; i < 250; ++i)
        cursor.Siguiente();
    const TablaEscribible::Cambio cambio{.columna = 1, .valor = 1e9};
    EXPECT_TRUE(tabla.Actualiza(cursor.puntero(), {&cambio, 1}));
    EXPECT_EQ(Fila(249), Renglon({qint64{249}, 1e9, false}));
    EXPECT_TRUE(tabla.Borra(cursor.puntero()));
    EXPECT_EQ(Faltas(), QStringList());
    // A column of the name is another one.
    AnadeColumna(paginas(), "T", {.nombre = "M", .tipo = TipoColumna::Memo});
    EXPECT_EQ(Fila(7).back(), Dato());
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(CambiaTabla, LaTablaGuardaLasPropiedadesDeLasDemas)
{
    Pon({{.nombre = "Orientation", .tipo = 2, .valor = QByteArray(1, '\0')},
         {.nombre = "NameMap", .tipo = 11, .valor = "mapa", .marca = 0},
         PropiedadDeTexto("A", "Description", "una letra"),
         PropiedadLogica("D", "Required", true),
         PropiedadDeTexto("D", "DefaultValue", "1")});

    AnadeColumna(paginas(), "T",
                 {.nombre = "E", .ancho = 5, .obligatoria = true, .predeterminado = "\"e\""});
    QuitaColumna(paginas(), "T", "d");

    const auto propiedades = PropiedadesDeTabla(paginas(), Abre("T").definicion().pagina);
    ASSERT_EQ(propiedades.size(), 5U);
    EXPECT_EQ(propiedades[1].nombre, "NameMap");
    EXPECT_EQ(propiedades[1].marca, 0);
    EXPECT_EQ(propiedades[1].valor, "mapa");
    EXPECT_EQ(Propiedades().mid(2),
              QStringList({"A.Description=una letra", "E.DefaultValue=\"e\"", "E.Required=01"}));
    EXPECT_EQ(MotivoDe([&] { Escribe("T").Inserta(Renglon(5)); }), Motivo::SinValor);
}

TEST_F(CambiaTabla, UnAutonumericoCuentaLasFilasQueHay)
{
    AnadeColumna(paginas(), "T",
                 {.nombre = "Id", .tipo = TipoColumna::Largo, .autonumerica = true});

    EXPECT_TRUE(La("Id").Autonumerica());
    EXPECT_EQ(Fila(0).back(), Dato(qint64{1}));
    EXPECT_EQ(Fila(Cuantas - 1).back(), Dato(qint64{Cuantas}));
    CreaIndice(paginas(), "T", {.nombre = "PK", .columnas = {{"Id"}}, .primario = true});
    Escribe("T").Inserta(Renglon({qint64{9}, {}, {}, {}, true, {}}));
    EXPECT_EQ(Filas("T").back().back(), Dato(qint64{Cuantas + 1}));
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_EQ(MotivoDe([&] {
                  AnadeColumna(paginas(), "T",
                               {.nombre = "Id2", .tipo = TipoColumna::Largo, .autonumerica = true});
              }),
              Motivo::NoAdmitido);
}

TEST_F(CambiaTabla, UnaColumnaOcupaElLugarDeOtra)
{
    Pon({PropiedadDeTexto("A", "Description", "una letra"),
         PropiedadDeTexto("A", "DefaultValue", "\"x\""), PropiedadLogica("A", "Required", true)});
    AnadeColumna(paginas(), "T",
                 {.nombre = "Nueva", .tipo = TipoColumna::Memo, .predeterminado = "\"y\""});

    SustituyeColumna(paginas(), "T", "a", "nueva");

    EXPECT_EQ(Columnas(), QStringList({"N", "A", "D", "M", "B"}));
    EXPECT_EQ(La("A").tipo, TipoColumna::Memo);
    EXPECT_EQ(La("A").numero, 5);
    EXPECT_EQ(La("A").posicion, 2);
    EXPECT_EQ(Propiedades(),
              QStringList({"A.Description=una letra", "A.Required=01", "A.DefaultValue=\"y\""}));
    EXPECT_EQ(Fila(3), Renglon({qint64{3}, {}, 1.5, QString(21, 'm'), false}));
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(CambiaTabla, UnaDefinicionCreceYMengua)
{
    const std::set<quint32> libres = Libres(*this);
    const std::size_t antes = Abre("T").definicion().paginas.size();
    for (int i = 0; i < 200; ++i)
        AnadeColumna(paginas(), "T",
                     {.nombre = QString("Columna añadida número %1").arg(i), .ancho = 10});
    EXPECT_GT(Abre("T").definicion().paginas.size(), antes + 2);
    EXPECT_EQ(Fila(9).size(), 205U);
    EXPECT_EQ(Faltas(), QStringList());
    Renglon llena(205);
    llena[204] = QString("el último");
    Escribe("T").Inserta(llena);
    EXPECT_EQ(Filas("T").back()[204], Dato(QString("el último")));

    for (int i = 0; i < 200; ++i)
        QuitaColumna(paginas(), "T", QString("Columna añadida número %1").arg(i));
    EXPECT_EQ(Abre("T").definicion().paginas.size(), antes);
    EXPECT_EQ(Fila(9), Viejo(9));
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_TRUE(Exporta("T").contains("\n3|a3|1.5"));
    // The numbers of the 205 are gone for good.
    for (int i = 0; i < 50; ++i)
        AnadeColumna(paginas(), "T", {.nombre = QString("Otra %1").arg(i), .ancho = 1});
    EXPECT_EQ(MotivoDe([&] { AnadeColumna(paginas(), "T", {.nombre = "De más", .ancho = 1}); }),
              Motivo::NoAdmitido);
    BorraTabla(paginas(), "T");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(CambiaTabla, UnIndiceSeQuitaYDevuelveSusPaginas)
{
    const auto unicas = [&] { return Abre("T").definicion().indicesReales[0].unicas; };
    ASSERT_EQ(unicas(), quint32{Cuantas});
    const std::set<quint32> libres = Libres(*this);
    CreaIndice(paginas(), "T", {.nombre = "PorA", .columnas = {{"A"}}, .unico = true});
    CreaIndice(paginas(), "T", {.nombre = "Clave", .columnas = {{"N"}}, .primario = true});
    EXPECT_EQ(Faltas(), QStringList());

    BorraIndice(paginas(), "T", "pora");

    const Definicion d = Abre("T").definicion();
    ASSERT_EQ(d.indicesLogicos.size(), 2U);
    EXPECT_EQ(d.indicesLogicos[0].nombre, "Clave");
    EXPECT_EQ(d.indicesLogicos[0].real, 1U);
    EXPECT_EQ(d.indicesReales[1].marcas, 0x89);
    EXPECT_EQ(d.indicesReales[1].unicas, quint32{Cuantas});
    EXPECT_EQ(Faltas(), QStringList());
    Escribe("T").Inserta(Renglon({qint64{9000}, QString("a1"), {}, {}, true}));
    EXPECT_EQ(MotivoDe([&] {
                  Escribe("T").Inserta(Renglon({qint64{9000}, {}, {}, {}, true}));
              }),
              Motivo::ClaveRepetida);
    BorraIndice(paginas(), "T", "Clave");
    BorraIndice(paginas(), "T", "PorN");
    EXPECT_TRUE(Abre("T").definicion().indicesLogicos.empty());
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_EQ(MotivoDe([&] { BorraIndice(paginas(), "T", "PorN"); }), Motivo::NoHallado);
    // All that the two others took, and what the first one did.
    EXPECT_GT(Libres(*this).size(), libres.size());
    EXPECT_EQ(Exporta("T").count('\n'), Cuantas + 1);
}

TEST_F(CambiaTabla, LoQueNoSePuede)
{
    const auto frase = [&](auto&& tarea) {
        const QByteArray antes = paginas()->Fichero();
        const std::string dicho = FraseDe(tarea);
        EXPECT_TRUE(paginas()->Fichero() == antes);
        return dicho;
    };
    EXPECT_EQ(
        frase([&] { QuitaColumna(paginas(), "T", "n"); }),
        "La columna está en un índice (fichero memoria.mdb, tabla T, columna N, índice PorN)");
    EXPECT_EQ(
        frase([&] { SustituyeColumna(paginas(), "T", "N", "D"); }),
        "La columna está en un índice (fichero memoria.mdb, tabla T, columna N, índice PorN)");
    EXPECT_THAT(frase([&] { QuitaColumna(paginas(), "T", "Z"); }),
                StartsWith("La tabla no tiene la columna Z"));
    EXPECT_THAT(frase([&] { AnadeColumna(paginas(), "T", {.nombre = "n"}); }),
                StartsWith("La columna ya existe: n"));
    EXPECT_THAT(frase([&] { AnadeColumna(paginas(), "T", {.nombre = "a.b"}); }),
                StartsWith("El nombre no se puede usar: a.b"));
    EXPECT_THAT(frase([&] {
                    AnadeColumna(paginas(), "T",
                                 {.nombre = "G", .tipo = TipoColumna::Guid, .autonumerica = true});
                }),
                StartsWith("A una tabla sólo se le añade una columna autonumérica de números"));
    EXPECT_THAT(frase([&] { AnadeColumna(paginas(), "MSysACEs", {.nombre = "G"}); }),
                StartsWith("Las tablas del sistema no se cambian"));
    for (const char* nombre : {"A", "D", "M", "B"})
        QuitaColumna(paginas(), "T", nombre);
    BorraIndice(paginas(), "T", "PorN");
    EXPECT_THAT(frase([&] { QuitaColumna(paginas(), "T", "N"); }),
                StartsWith("Una tabla tiene de 1 a 255 columnas"));
}

TEST(CambiaTablaDeAccess, LasRelacionesNoSeRompen)
{
    const BaseEscribible base(BytesDeMuestra("2003-indices.mdb"));
    const auto motivo = [&](auto&& tarea) {
        const QByteArray antes = base.paginas()->Fichero();
        const auto hallado = MotivoDe(tarea);
        EXPECT_TRUE(base.paginas()->Fichero() == antes);
        return hallado;
    };
    // Table1.otherfk1 refers to Table2.id, which is its primary key.
    EXPECT_EQ(motivo([&] { BorraIndice(base.paginas(), "Table1", "Table2Table1"); }),
              Motivo::Relacion);
    EXPECT_EQ(motivo([&] { BorraIndice(base.paginas(), "Table2", "PrimaryKey"); }),
              Motivo::Relacion);
    EXPECT_EQ(motivo([&] { QuitaColumna(base.paginas(), "Table1", "otherfk1"); }),
              Motivo::NoAdmitido);
    EXPECT_EQ(motivo([&] { BorraTabla(base.paginas(), "Table2"); }), Motivo::Relacion);
    EXPECT_EQ(motivo([&] { BorraTabla(base.paginas(), "Table1"); }), Motivo::Relacion);
    // What they don't need goes, and they are still kept.
    BorraIndice(base.paginas(), "Table1", "PrimaryKey");
    QuitaColumna(base.paginas(), "Table1", "data");
    QuitaColumna(base.paginas(), "Table1", "otherfk3");
    EXPECT_EQ(base.Faltas(), QStringList());
    EXPECT_EQ(MotivoDe([&] {
                  base.Escribe("Table1").Inserta(Renglon({qint64{9}, qint64{77}, qint64{10}}));
              }),
              Motivo::Relacion);
    base.Escribe("Table1").Inserta(Renglon({qint64{0}, qint64{1}, qint64{10}}));
    EXPECT_EQ(base.Faltas(), QStringList());
}

TEST(CambiaTablaDeAccess, CadaTablaDeCadaFicheroSeAmpliaYSeReduce)
{
    for (const QString& muestra : Muestras()) {
        const BaseEscribible base(BytesDeMuestra(muestra));
        if (base.paginas()->formato().EsJet3())
            continue;
        const QStringList antes = base.Faltas();
        const std::vector<Objeto> tablas = Base(base.paginas()).catalogo().TablasDeUsuario();
        for (const Objeto& objeto : tablas) {
            SCOPED_TRACE((muestra + ' ' + objeto.nombre).toStdString());
            if (objeto.EsEnlace())
                continue;
            const std::vector<Renglon> filas = base.Filas(objeto.nombre);
            const bool escribible = !MotivoDe([&] { base.Escribe(objeto.nombre); });
            AnadeColumna(base.paginas(), objeto.nombre,
                         {.nombre = "Más", .tipo = TipoColumna::Fecha});
            AnadeColumna(base.paginas(), objeto.nombre,
                         {.nombre = "Nota", .tipo = TipoColumna::Memo, .predeterminado = "\"n\""});
            std::vector<Renglon> ampliadas = filas;
            for (Renglon& fila : ampliadas)
                fila.insert(fila.end(), 2, Dato());
            EXPECT_EQ(base.Filas(objeto.nombre), ampliadas);
            EXPECT_EQ(base.Faltas(), antes);
            if (escribible && !filas.empty()) {
                Cursor cursor(base.Abre(objeto.nombre));
                cursor.Siguiente();
                const std::size_t lugar = filas[0].size();
                const TablaEscribible::Cambio cambios[] = {
                    {.columna = lugar, .valor = Fecha{40000.5}},
                    {.columna = lugar + 1, .valor = QString(5000, 'n')}};
                base.Escribe(objeto.nombre).Actualiza(cursor.puntero(), cambios);
                EXPECT_EQ(base.Filas(objeto.nombre)[0][lugar], Dato(Fecha{40000.5}));
                EXPECT_EQ(base.Faltas(), antes);
            }
            QuitaColumna(base.paginas(), objeto.nombre, "Más");
            QuitaColumna(base.paginas(), objeto.nombre, "Nota");
            EXPECT_EQ(base.Filas(objeto.nombre), filas);
            EXPECT_EQ(base.Faltas(), antes);
        }
    }
}

} // namespace
