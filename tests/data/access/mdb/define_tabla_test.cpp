#include "data/access/mdb/base_escribible.h"
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/muestras.h"
#include "data/access/mdb/propiedades.h"
#include <gmock/gmock.h>
#include <set>

using namespace tolmo::data::access::mdb;
using testing::HasSubstr;

namespace {

std::set<quint32> Libres(const BaseEscribible& base)
{
    const std::vector<quint32> libres = LeeMapa(*base.paginas(), MapaGlobal).paginas;
    return {libres.begin(), libres.end()};
}

NuevaTabla Articulos()
{
    NuevaTabla tabla{.nombre = "Artículos"};
    tabla.columnas = {{.nombre = "Id", .tipo = TipoColumna::Largo, .autonumerica = true},
                      {.nombre = "Nombre", .ancho = 40, .obligatoria = true},
                      {.nombre = "Precio", .tipo = TipoColumna::Moneda, .predeterminado = "0"},
                      {.nombre = "Nota", .tipo = TipoColumna::Memo},
                      {.nombre = "Foto", .tipo = TipoColumna::Ole},
                      {.nombre = "Activo", .tipo = TipoColumna::Logico}};
    tabla.indices = {{.nombre = "PrimaryKey", .columnas = {{"Id"}}, .primario = true},
                     {.nombre = "Nombres", .columnas = {{"Nombre"}, {"Precio", true}}}};
    return tabla;
}

void Llena(const BaseEscribible& base, int filas)
{
    TablaEscribible tabla = base.Escribe("Artículos");
    for (int i = 0; i < filas; ++i)
        tabla.Inserta(Renglon{{},
                              QString("Artículo %1").arg(i * 7919 % filas),
                              Moneda{i * 1000},
                              QString(i % 400 * 20, 'n'),
                              QByteArray(i % 50 * 200, 'f'),
                              i % 2 == 0});
}

TEST(BaseNuevaMdb, LaLeenTodos)
{
    const BaseEscribible base;
    EXPECT_EQ(base.Faltas(), QStringList());
    EXPECT_EQ(base.Exporta("MSysObjects").count('\n'), 17);
    const Base leida(base.paginas());
    EXPECT_EQ(leida.version(), Version::Jet4);
    EXPECT_TRUE(leida.catalogo().TablasDeUsuario().empty());
    EXPECT_EQ(TablasLocales(leida),
              QStringList({"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"}));
}

TEST(BaseNuevaMdb, LaCabeceraDiceCuandoSeHizo)
{
    const QDateTime momento(QDate(2004, 5, 28), QTime(18, 0));
    const QByteArray bytes = BaseNueva(momento);
    const auto paginas = PaginasDe(bytes);
    const Cabecera cabecera = LeeCabecera(paginas->Lee(0).bytes);
    EXPECT_EQ(cabecera.creacion, 38135.75);
    EXPECT_EQ(cabecera.contrasena, "");
    EXPECT_EQ(cabecera.clave, 0U);
    EXPECT_EQ(cabecera.idioma, 0x0409);
    EXPECT_EQ(cabecera.paginaDeCodigos, 1252);
    // As of any Access 2003 file: the veil over the pointers to pages 1 to 5.
    EXPECT_EQ(bytes.mid(0x18, 16).toHex(), "b56e03626009c255e9a967724"
                                           "03f009c");
    EXPECT_EQ(bytes.mid(0xE00, 4).toHex(), "00010001");
}

TEST(BaseNuevaMdb, SuCatalogoTieneLasColumnasDelDeAccess)
{
    const BaseEscribible nueva;
    const Base muestra(PaginasDe(BytesDeMuestra("2003-indices.mdb")));
    for (const char* nombre : {"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"}) {
        SCOPED_TRACE(nombre);
        const Tabla nuestra = nueva.Abre(nombre);
        const Tabla suya = muestra.AbreTabla(QString(nombre));
        ASSERT_EQ(nuestra.definicion().columnas.size(), suya.definicion().columnas.size());
        for (std::size_t i = 0; i < nuestra.definicion().columnas.size(); ++i) {
            const Columna& a = nuestra.definicion().columnas[i];
            const Columna& b = suya.definicion().columnas[i];
            EXPECT_EQ(a.nombre, b.nombre);
            EXPECT_EQ(a.tipo, b.tipo);
            EXPECT_EQ(a.numero, b.numero);
            EXPECT_EQ(a.ranura, b.ranura);
            EXPECT_EQ(a.largo, b.largo);
            EXPECT_EQ(a.marcas, b.marcas);
            if (a.Fija() && a.tipo != TipoColumna::Logico) {
                EXPECT_EQ(a.desplazamiento, b.desplazamiento);
            }
        }
        ASSERT_EQ(nuestra.definicion().indicesReales.size(),
                  suya.definicion().indicesReales.size());
        for (std::size_t i = 0; i < nuestra.definicion().indicesReales.size(); ++i)
            EXPECT_EQ(nuestra.definicion().indicesReales[i].marcas,
                      suya.definicion().indicesReales[i].marcas);
    }
}

TEST(BaseNuevaMdb, NoPisaUnFichero)
{
    const CarpetaDePrueba carpeta;
    CreaBase(carpeta.Ruta("nueva.mdb"));
    const QByteArray bytes = carpeta.Lee("nueva.mdb");
    EXPECT_EQ(bytes.size() % 4096, 0);
    EXPECT_TRUE(Comprueba(Base(carpeta.Ruta("nueva.mdb"))).Sano());
    EXPECT_EQ(MotivoDe([&] { CreaBase(carpeta.Ruta("nueva.mdb")); }), Motivo::NoSeAbre);
    EXPECT_TRUE(carpeta.Lee("nueva.mdb") == bytes);
}

TEST(DefineTabla, LaTablaEsComoSePidio)
{
    const BaseEscribible base;
    const quint32 pagina = CreaTabla(base.paginas(), Articulos());
    const Tabla tabla = base.Abre("artículos");
    const Definicion& d = tabla.definicion();

    EXPECT_EQ(d.pagina, pagina);
    ASSERT_EQ(d.columnas.size(), 6U);
    EXPECT_TRUE(d.columnas[0].Autonumerica());
    EXPECT_EQ(d.columnas[1].largo, 80);
    EXPECT_TRUE(d.columnas[1].Comprime());
    EXPECT_EQ(d.columnas[5].posicion, 6);
    ASSERT_EQ(d.indicesLogicos.size(), 2U);
    // By name, as Access keeps them; their numbers and trees are in the order of creation.
    EXPECT_EQ(d.indicesLogicos[0].nombre, "Nombres");
    EXPECT_EQ(d.indicesLogicos[0].real, 1U);
    EXPECT_EQ(d.indicesLogicos[1].clase, ClaseIndice::Primario);
    EXPECT_EQ(d.indicesReales[0].marcas, 0x89);
    EXPECT_EQ(d.indicesReales[1].marcas, 0x80);
    EXPECT_TRUE(d.indicesReales[1].columnas[1].descendente);
    const auto propiedades = PropiedadesDeTabla(base.paginas(), pagina);
    ASSERT_EQ(propiedades.size(), 2U);
    EXPECT_EQ(propiedades[0].columna, "Nombre");
    EXPECT_EQ(propiedades[0].nombre, "Required");
    EXPECT_EQ(TextoDe(propiedades[1]), "0");
    EXPECT_EQ(base.Faltas(), QStringList());
    // Admin and Users get what the container passes on.
    EXPECT_EQ(base.Exporta("MSysACEs").count(QString("\n%1|").arg(pagina)), 2);
}

TEST(DefineTabla, CadaFicheroDeAccessAdmiteUnaTablaMas)
{
    for (const QString& muestra : Muestras()) {
        SCOPED_TRACE(muestra.toStdString());
        const BaseEscribible base(BytesDeMuestra(muestra));
        if (base.paginas()->formato().EsJet3()) {
            EXPECT_EQ(MotivoDe([&] { CreaTabla(base.paginas(), Articulos()); }),
                      Motivo::NoAdmitido);
            continue;
        }
        const QStringList antes = base.Faltas();
        CreaTabla(base.paginas(), Articulos());
        Llena(base, 200);
        EXPECT_EQ(base.Faltas(), antes);
        EXPECT_EQ(base.Exporta("Artículos").count('\n'), 200);
        BorraTabla(base.paginas(), "Artículos");
        EXPECT_EQ(base.Faltas(), antes);
    }
}

TEST(DefineTabla, BorrarlaDevuelveTodasSusPaginas)
{
    const BaseEscribible base;
    CreaTabla(base.paginas(), Articulos());
    const std::set<quint32> antes = Libres(base);
    const quint32 primeras = base.paginas()->Cuantas();
    NuevaTabla otra = Articulos();
    otra.nombre = "Otra";
    CreaTabla(base.paginas(), otra);
    // Enough for maps of the other form.
    TablaEscribible tabla = base.Escribe("Otra");
    for (int i = 0; i < 400; ++i)
        tabla.Inserta(Renglon{{}, QString::number(i), {}, QString(9000, 'n'), {}, true});
    ASSERT_GT(base.paginas()->Cuantas(), 1200U);
    BorraTabla(base.paginas(), "Otra");

    std::set<quint32> esperadas = antes;
    for (quint32 pagina = primeras; pagina < base.paginas()->Cuantas(); ++pagina)
        esperadas.insert(pagina);
    std::set<quint32> usadas;
    const std::set<quint32> despues = Libres(base);
    std::set_difference(esperadas.begin(), esperadas.end(), despues.begin(), despues.end(),
                        std::inserter(usadas, usadas.end()));
    // Only the global map itself has grown, into pages of bits.
    for (const quint32 pagina : usadas)
        EXPECT_EQ(base.paginas()->Lee(pagina).bytes.U8(0), 5) << pagina;
    EXPECT_EQ(usadas.size(), LeeMapa(*base.paginas(), MapaGlobal).deBits.size());
    EXPECT_EQ(base.Faltas(), QStringList());
    EXPECT_EQ(MotivoDe([&] { base.Abre("Otra"); }), Motivo::NoHallado);
    // The same table again takes no new pages.
    const quint32 cuantas = base.paginas()->Cuantas();
    CreaTabla(base.paginas(), otra);
    EXPECT_EQ(base.paginas()->Cuantas(), cuantas);
}

TEST(DefineTabla, UnaDefinicionLargaOcupaVariasPaginas)
{
    const BaseEscribible base;
    NuevaTabla tabla{.nombre = "Larga"};
    for (int i = 0; i < 255; ++i)
        tabla.columnas.push_back({.nombre = QString("Columna número %1 ").arg(i) + QString(40, 'x'),
                                  .tipo = i % 2 == 0 ? TipoColumna::Largo : TipoColumna::Texto});
    tabla.indices = {
        {.nombre = "Clave", .columnas = {{tabla.columnas[0].nombre}}, .primario = true}};
    CreaTabla(base.paginas(), tabla);
    EXPECT_GT(base.Abre("Larga").definicion().paginas.size(), 5U);
    Renglon valores(255);
    for (std::size_t i = 0; i < valores.size(); ++i)
        valores[i] = i % 2 == 0 ? Dato(qint64(i)) : Dato(QString::number(i));
    base.Escribe("Larga").Inserta(valores);
    EXPECT_EQ(base.Filas("Larga").front(), valores);
    for (int i = 1; i < 32; ++i)
        CreaIndice(base.paginas(), "Larga",
                   {.nombre = QString("I%1").arg(i),
                    .columnas = {{tabla.columnas[static_cast<std::size_t>(i)].nombre}}});
    EXPECT_EQ(MotivoDe([&] {
                  CreaIndice(base.paginas(), "Larga",
                             {.nombre = "Uno más", .columnas = {{tabla.columnas[50].nombre}}});
              }),
              Motivo::NoAdmitido);
    EXPECT_EQ(base.Filas("Larga").front(), valores);
    EXPECT_EQ(base.Faltas(), QStringList());
    EXPECT_EQ(base.Exporta("Larga").count('\n'), 1);
}

TEST(DefineTabla, UnIndiceNuevoTomaLasFilasQueHay)
{
    const BaseEscribible base;
    CreaTabla(base.paginas(), Articulos());
    Llena(base, 500);
    CreaIndice(base.paginas(), "Artículos",
               {.nombre = "PorPrecio", .columnas = {{"Precio", true}}});
    EXPECT_EQ(base.Abre("Artículos").definicion().indicesReales.back().unicas, 500U);
    EXPECT_EQ(base.Faltas(), QStringList());
    // Half of the rows are active.
    EXPECT_EQ(MotivoDe([&] {
                  CreaIndice(base.paginas(), "Artículos",
                             {.nombre = "X", .columnas = {{"Activo"}}, .unico = true});
              }),
              Motivo::ClaveRepetida);
}

TEST(DefineTabla, UnIndiceUnicoSobreFilasQueHayAdmiteNulosYNoRepetidos)
{
    const auto crea = [](const std::vector<Dato>& valores) {
        const BaseEscribible base;
        CreaTabla(base.paginas(),
                  {.nombre = "T", .columnas = {{.nombre = "N", .tipo = TipoColumna::Largo}}});
        TablaEscribible tabla = base.Escribe("T");
        for (const Dato& valor : valores)
            tabla.Inserta(Renglon{valor});
        const std::string frase = FraseDe([&] {
            CreaIndice(base.paginas(), "T", {.nombre = "I", .columnas = {{"N"}}, .unico = true});
        });
        if (!frase.empty())
            return frase;
        EXPECT_EQ(base.Faltas(), QStringList());
        return std::to_string(base.Abre("T").definicion().indicesReales[0].unicas) + " claves";
    };

    EXPECT_EQ(crea({Dato(), qint64{7}, Dato(), qint64{-8}}), "3 claves");
    EXPECT_EQ(crea({}), "0 claves");
    EXPECT_EQ(
        crea({qint64{7}, qint64{8}, qint64{7}}),
        "El valor está duplicado en un índice único: T.N (fichero memoria.mdb, tabla T, índice I)");
}

TEST(DefineTabla, LoQueNoSePuede)
{
    const BaseEscribible base;
    const auto motivo = [&](auto cambia) {
        NuevaTabla tabla = Articulos();
        cambia(tabla);
        const QByteArray antes = base.paginas()->Fichero();
        const auto hallado = MotivoDe([&] { CreaTabla(base.paginas(), tabla); });
        EXPECT_TRUE(base.paginas()->Fichero() == antes);
        return hallado;
    };
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.nombre = "msysqueries"; }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.nombre = "mSysX"; }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.nombre = "a.b"; }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.nombre = QString(65, 'a'); }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.columnas.clear(); }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.columnas[1].nombre = "id"; }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.columnas[1].ancho = 256; }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.columnas[1].autonumerica = true; }), Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.indices[0].columnas[0].columna = "Ninguna"; }),
              Motivo::NoHallado);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.indices[0].columnas[0].columna = "Foto"; }),
              Motivo::NoAdmitido);
    EXPECT_EQ(motivo([](NuevaTabla& t) { t.indices[1].primario = true; }), Motivo::NoAdmitido);
    EXPECT_EQ(MotivoDe([&] { BorraTabla(base.paginas(), "MSysACEs"); }), Motivo::NoAdmitido);
    EXPECT_EQ(MotivoDe([&] { BorraTabla(base.paginas(), "Ninguna"); }), Motivo::NoHallado);
}

} // namespace
