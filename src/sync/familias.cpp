#include "sync/familias.h"
#include "sync/corrida.h"
#include "sync/url_amigable.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlCreaReferencias(u"CREATE TABLE wFAMPRESTA (FAMKOV NVARCHAR(20),FAMPRESTA INT)");
constexpr Plantilla SqlVaciaReferencias(u"DELETE FROM wFAMPRESTA");
constexpr Plantilla SqlCategoriasTienda(u"SELECT id_category,kov_familia from ps_category");
constexpr Plantilla SqlAnotaReferencia(u"INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('{clave}',{id})");
constexpr Plantilla SqlReferencia(u"SELECT * FROM wFAMPRESTA WHERE FAMKOV='{CLAVE}'");
constexpr Plantilla SqlMayorReferencia(u"SELECT MAX(FAMPRESTA) AS MFAM FROM wFAMPRESTA");

constexpr Plantilla SqlBorraCategorias(u"DELETE FROM ps_category WHERE id_category>2||");
constexpr Plantilla SqlBorraGrupos(u"DELETE FROM ps_category_group WHERE id_category>2||");
constexpr Plantilla SqlBorraTextos(u"DELETE FROM ps_category_lang WHERE id_category>2||");
constexpr Plantilla SqlBorraTiendas(u"DELETE FROM ps_category_shop WHERE id_category>2||");
constexpr Plantilla SqlIzquierdaFija(u"UPDATE ps_category set nleft={N} WHERE id_category={id}||");
constexpr Plantilla SqlDerechaFija(u"UPDATE ps_category set nright={N} WHERE id_category={id}||");

constexpr Plantilla SqlNivel(u"SELECT {columnas}* FROM {PS_TABLAFAM} WHERE NIVEL='{Nivel}' AND CLAVE LIKE '{Padre}%' ORDER BY CLAVE");
constexpr Plantilla ColumnasIdioma(u"{CampoFamDescripcion} AS PSCAMPOFAMDESCRIPCION{i},{CampoFamNotas} AS PSCAMPOFAMNOTAS{i},{KEYWORDS_FAM} AS PSKEYWORDSFAM{i},{METATITULO_FAM} AS PsMetaTituloFam{i},{METADESCRIPCION_FAM} AS PsMetaDescripcionFam{i},");
constexpr Plantilla SqlInsertaCategoria(u"INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES ({id},{id_padre},{ContadorNR},0,{id_nivel},1,{hoy},{hoy},{CLAVE},'{CLAVE}')||");
constexpr Plantilla SqlInsertaGrupo(u"INSERT INTO ps_category_group (id_category,id_group) VALUES ({id},{k})||");
constexpr Plantilla SqlInsertaTexto(u"INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES ({id},{lang},'{name}','{url}','{desc}','{claves}','{titulo}','{metadesc}')||");
constexpr Plantilla SqlInsertaTienda(u"INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES ({id},1,{CLAVE})||");
constexpr Plantilla SqlDerecha(u"UPDATE ps_category set nright={ContadorNR} WHERE kov_familia='{CLAVE}'||");

constexpr Plantilla TituloLote(u"EJECUTANDO REMOTAMENTE Actualización de familias (...{Contador})");
// clang-format on

constexpr int FamiliasPorLote = 20;
constexpr int PrimeraFamilia = 3; ///< 1 and 2 are the shop's root and home
constexpr int GruposDeClientes = 8;
constexpr int Inicio = 2; ///< id_category of the home category

/// What the whole walk shares.
struct Paseo {
    Corrida& corrida;
    QString columnas{}; ///< the language columns of the query
    int Contador = 2;   ///< exported families; it starts at 2, so the first batch closes after 18
    int ContadorNR = 3; ///< next nested-set number
};

/// Where the families of one level hang.
struct Rama {
    int nivel = 0;
    QString prefijo{}; ///< key of the family above
    int id_padre = Inicio;
    int id_nivel = 2;
};

QString ColumnasDeIdiomas(const data::Parametros& parametros)
{
    QString columnas;
    for (std::size_t i = 0; i < parametros.Idiomas.size(); ++i) {
        const data::FichaIdioma& ficha = parametros.Idiomas[i];
        columnas += ColumnasIdioma({{"CampoFamDescripcion", ficha.CampoFamDescripcion},
                                    {"CampoFamNotas", ficha.CampoFamNotas},
                                    {"KEYWORDS_FAM", ficha.KEYWORDS_FAM},
                                    {"METATITULO_FAM", ficha.METATITULO_FAM},
                                    {"METADESCRIPCION_FAM", ficha.METADESCRIPCION_FAM},
                                    {"i", Texto(static_cast<int>(i))}});
    }
    return columnas;
}

void AnotaReferencia(Corrida& corrida, const QString& clave, const QString& id)
{
    QString sql = SqlAnotaReferencia({{"clave", clave}, {"id", id}});
    data::EjecutaSql(corrida.programa, sql, corrida.programa.ConexionLocal);
}

data::Recordset AbreReferencias(Corrida& corrida, QString sql)
{
    return data::AbreLectura(corrida.programa, sql, corrida.programa.ConexionLocal);
}

/// The number of a family: the one it had, or the one above the highest known.
int NumeroDeFamilia(Corrida& corrida, const QString& clave)
{
    const auto conocida = AbreReferencias(corrida, SqlReferencia({{"CLAVE", clave}}));
    if (!conocida.Fin())
        return static_cast<int>(data::ValorNumerico(conocida["FAMPRESTA"]));
    const auto mayor = AbreReferencias(corrida, SqlMayorReferencia());
    const data::Valor& mfam = mayor["MFAM"];
    const int id =
        data::EstaVacio(mfam) ? PrimeraFamilia : static_cast<int>(data::ValorNumerico(mfam)) + 1;
    AnotaReferencia(corrida, clave, Texto(id));
    return id;
}

QString TextoIdioma(const data::Recordset& familia, const char* campo, std::size_t i)
{
    return TextoO(familia[QString::fromLatin1(campo) + QString::number(i)]);
}

void EscribeTextos(Corrida& corrida, const data::Recordset& familia, const QString& id)
{
    const auto& idiomas = corrida.Parametros().Idiomas;
    for (std::size_t i = 0; i < idiomas.size(); ++i) {
        const QString nombre = TextoIdioma(familia, "PSCAMPOFAMDESCRIPCION", i);
        const QString notas = TextoIdioma(familia, "PSCAMPOFAMNOTAS", i);
        corrida.lote.EscribeSentencia(
            SqlInsertaTexto({{"id", id},
                             {"lang", Texto(idiomas[i].Idioma)},
                             {"name", SinComillas(nombre)},
                             {"url", UrlAmigable(nombre)},
                             {"desc", SinComillas(ConSaltosHtml(notas))},
                             // No quotes are replaced in these three.
                             {"claves", TextoIdioma(familia, "PSKEYWORDSFAM", i)},
                             {"titulo", TextoIdioma(familia, "PsMetaTituloFam", i)},
                             {"metadesc", TextoIdioma(familia, "PsMetaDescripcionFam", i)}}));
    }
}

/// The shop's old picture goes in any case; a family without one is skipped when they are sent.
void PideFoto(Corrida& corrida, const data::Recordset& familia, const QString& id)
{
    if (!corrida.opciones.fotosFam)
        return;
    corrida.lote.AnadeImgBorra(QStringLiteral("img/c/") + id + QStringLiteral(".jpg;"));
    corrida.lote.AnadeImgBorra(QStringLiteral("img/c/") + id + QStringLiteral("-*.jpg;"));
    corrida.PendientesFam.push_back({TextoO(familia["Foto"]), id + QStringLiteral(".jpg")});
}

/// Writes one family but for its right number, which is known on the way back up.
/// \returns its category number
int EscribeFamilia(Paseo& paseo, const Rama& rama, const data::Recordset& familia,
                   const QString& clave)
{
    Corrida& corrida = paseo.corrida;
    data::Programa& programa = corrida.programa;
    ++paseo.Contador;
    // This sentence holds a date and goes out in the shop's dialect; all others of the walk stay
    // in "ACCESS", so that a "&" in a family's texts reaches the shop as it is.
    programa.DialectoActivo = data::Dialecto::MySql;
    const int numero = NumeroDeFamilia(corrida, clave);
    const QString id = Texto(numero);
    corrida.lote.EscribeSentencia(SqlInsertaCategoria({{"id", id},
                                                       {"id_padre", Texto(rama.id_padre)},
                                                       {"ContadorNR", Texto(paseo.ContadorNR)},
                                                       {"id_nivel", Texto(rama.id_nivel)},
                                                       {"hoy", HoySql(programa)},
                                                       {"CLAVE", clave}}));
    ++paseo.ContadorNR;
    programa.DialectoActivo = data::Dialecto::Access;

    for (int k = 1; k <= GruposDeClientes; ++k)
        corrida.lote.EscribeSentencia(SqlInsertaGrupo({{"id", id}, {"k", Texto(k)}}));
    EscribeTextos(corrida, familia, id);
    corrida.lote.EscribeSentencia(SqlInsertaTienda({{"id", id}, {"CLAVE", clave}}));
    corrida.RegistraLog(QStringLiteral("Actualizando Familia ") + clave);
    PideFoto(corrida, familia, id);
    if (paseo.Contador % FamiliasPorLote == 0)
        VuelcaLote(corrida, TituloLote({{"Contador", Texto(paseo.Contador)}}));
    return numero;
}

void InsertaFamilias(Paseo& paseo, const Rama& rama);

/// One family with all that hangs below it.
void InsertaFamilia(Paseo& paseo, const Rama& rama, const data::Recordset& familia)
{
    Corrida& corrida = paseo.corrida;
    const QString clave = Texto(familia["CLAVE"]);
    Rama hijas = rama;
    hijas.nivel = rama.nivel + 1;
    hijas.prefijo = clave;
    if (!SeExporta(familia["activoweb"], TextoO(familia["empresasweb"]),
                   corrida.Parametros().CADACTIVOWEB, corrida.programa.CodigoEmpresa())) {
        // No dead end: what is published below hangs under the nearest published ancestor.
        InsertaFamilias(paseo, hijas);
        return;
    }
    hijas.id_padre = EscribeFamilia(paseo, rama, familia, clave);
    hijas.id_nivel = rama.id_nivel + 1;
    InsertaFamilias(paseo, hijas);
    corrida.lote.EscribeSentencia(
        SqlDerecha({{"ContadorNR", Texto(paseo.ContadorNR)}, {"CLAVE", clave}}));
    ++paseo.ContadorNR;
}

/// The families of one level below a key.
void InsertaFamilias(Paseo& paseo, const Rama& rama)
{
    Corrida& corrida = paseo.corrida;
    corrida.programa.DialectoActivo = data::Dialecto::Access;
    QString sql = SqlNivel({{"columnas", paseo.columnas},
                            {"PS_TABLAFAM", corrida.Parametros().PS_TABLAFAM},
                            {"Nivel", Texto(rama.nivel)},
                            {"Padre", rama.prefijo}});
    auto familias = data::AbreLectura(corrida.programa, sql, corrida.programa.ConexionLocal);
    for (; !familias.Fin(); familias.Siguiente()) {
        InsertaFamilia(paseo, rama, familias);
        corrida.progreso.Avanza(familias.AbsolutePosition(), familias.RecordCount());
        corrida.progreso.CedeEventos();
    }
}

} // namespace

bool SeExporta(const data::Valor& activoweb, const QString& empresasweb,
               const QString& cadActivoWeb, const QString& codigoEmpresa)
{
    // The first test looks for the field in the parameter, the second for the company in the field.
    if (!data::EstaVacio(activoweb) && cadActivoWeb.contains(Texto(activoweb), Qt::CaseInsensitive))
        return true;
    const QString numero = Texto(static_cast<int>(data::ValorNumerico(codigoEmpresa)));
    return empresasweb.contains(u',' + numero + u',', Qt::CaseInsensitive);
}

void CargaFamilias(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("CARGANDO FAMILIAS"));
    GuardaReferenciaFamiliasActuales(corrida);

    batch::Lote& lote = corrida.lote;
    for (const Plantilla& borra :
         {SqlBorraCategorias, SqlBorraGrupos, SqlBorraTextos, SqlBorraTiendas})
        lote.EscribeSentencia(borra());
    const QString raiz = QStringLiteral("1");
    const QString inicio = QStringLiteral("2");
    lote.EscribeSentencia(SqlIzquierdaFija({{"N", QStringLiteral("1")}, {"id", raiz}}));
    lote.EscribeSentencia(SqlIzquierdaFija({{"N", QStringLiteral("2")}, {"id", inicio}}));

    Paseo paseo{.corrida = corrida, .columnas = ColumnasDeIdiomas(corrida.Parametros())};
    InsertaFamilias(paseo, Rama{});

    lote.EscribeSentencia(SqlDerechaFija({{"N", Texto(paseo.ContadorNR)}, {"id", inicio}}));
    lote.EscribeSentencia(SqlDerechaFija({{"N", Texto(paseo.ContadorNR + 1)}, {"id", raiz}}));
}

void GuardaReferenciaFamiliasActuales(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("Recopilando información de categorías"));
    data::Programa& programa = corrida.programa;
    const bool existe = programa.ConexionLocal.ExisteTabla(QStringLiteral("wFAMPRESTA"));
    QString sql = existe ? SqlVaciaReferencias() : SqlCreaReferencias();
    data::EjecutaSql(programa, sql, programa.ConexionLocal);
    auto categorias = LeeTienda(corrida, SqlCategoriasTienda());
    for (; !categorias.Fin(); categorias.Siguiente())
        if (!data::EstaVacio(categorias["kov_familia"]))
            AnotaReferencia(corrida, Texto(categorias["kov_familia"]),
                            Texto(categorias["id_category"]));
}

} // namespace tolmo::sync
