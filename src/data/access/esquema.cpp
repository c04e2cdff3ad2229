#include "data/access/esquema.h"
#include "data/access/colacion.h"
#include "data/access/errores_access.h"
#include "data/access/fichero_access.h"
#include "data/access/modulo_mdb.h"
#include <algorithm>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

bool TieneColacion(sqlite3* base, const QString& tabla, const QString& columna)
{
    const char* colacion = nullptr;
    const int resultado = sqlite3_table_column_metadata(base, nullptr, tabla.toUtf8().constData(),
                                                        columna.toUtf8().constData(), nullptr,
                                                        &colacion, nullptr, nullptr, nullptr);
    return resultado == SQLITE_OK && colacion && qstricmp(colacion, Colacion) == 0;
}

QString EntreMarcas(const QString& nombre)
{
    return u'[' + nombre + u']';
}

bool TieneFilas(sqlite3* base, const QString& tabla)
{
    return sqlite3_table_column_metadata(base, nullptr, tabla.toUtf8().constData(), "rowid",
                                         nullptr, nullptr, nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// How the engine tells of a column that a virtual table doesn't show.
constexpr int ColumnaEscondida = 1;

void AnotaExacta(TablaVista& tabla, const QString& exacta)
{
    for (ColumnaVista& columna : tabla.columnas) {
        if (ColumnaExacta(columna.nombre) == exacta)
            columna.exacta = exacta;
    }
}

} // namespace

const ColumnaVista* TablaVista::Busca(const QString& columna) const
{
    const QString llave = Llave(columna);
    const auto hallada =
        std::find_if(columnas.begin(), columnas.end(),
                     [&llave](const ColumnaVista& c) { return Llave(c.nombre) == llave; });
    return hallada == columnas.end() ? nullptr : &*hallada;
}

const TablaVista* Esquema::Busca(const QString& nombre) const
{
    Lee();
    const auto hallada = tablas_.find(Llave(nombre));
    if (hallada == tablas_.end())
        return nullptr;
    if (!hallada->conectada)
        Conecta(*hallada);
    if (hallada->columnas.empty() && hallada->clase != TablaVista::Clase::Guardada)
        LeeColumnas(*hallada);
    return &*hallada;
}

const TablaVista& Esquema::BuscaEn(const QString& base, const QString& tabla) const
{
    if (!fichero_)
        Rechaza(
            QStringLiteral(
                "La tabla %1 está en otra base, y sólo se lee de otra desde un fichero de Access")
                .arg(tabla));
    const QString fichero = FicheroDeConexion(base);
    if (fichero.isEmpty())
        Rechaza(QStringLiteral("La tabla %1 está en otra base, con datos que no son de Access")
                    .arg(tabla));
    const QString nombre = EntreMarcas(fichero) + u'.' + tabla;
    if (const TablaVista* vista = Busca(nombre))
        return *vista;
    base_.Ejecuta(SqlConectaTabla(nombre, fichero, tabla));
    tablas_.insert(Llave(nombre), {.nombre = nombre, .deFichero = true, .enlace = true});
    return *Busca(nombre);
}

std::vector<const TablaVista*> Esquema::Todas() const
{
    Lee();
    std::vector<const TablaVista*> todas;
    for (const TablaVista& tabla : std::as_const(tablas_)) {
        // Those of other files aren't of this base; no name of its own begins with a bracket.
        if (!tabla.nombre.startsWith(u'['))
            todas.push_back(&tabla);
    }
    std::sort(todas.begin(), todas.end(), [](const TablaVista* a, const TablaVista* b) {
        return ComparaTextos(a->nombre, b->nombre) < 0;
    });
    return todas;
}

void Esquema::Olvida()
{
    leido_ = false;
    tablas_.clear();
}

void Esquema::Desconecta()
{
    Preparada filas = base_.Prepara(QStringLiteral(
        "SELECT name FROM sqlite_schema WHERE type = 'table' AND sql LIKE 'CREATE VIRTUAL TABLE%'"));
    QStringList nombres;
    while (filas.Paso())
        nombres << filas.Texto(0);
    for (const QString& nombre : std::as_const(nombres))
        base_.Ejecuta(SqlDesconectaTabla(nombre));
    Olvida();
}

/// A table of the file is made known when it is first named; the text of a query is put together.
void Esquema::Conecta(TablaVista& tabla) const
{
    if (tabla.clase == TablaVista::Clase::Guardada)
        LeeConsulta(tabla);
    else
        base_.Ejecuta(SqlConectaTabla(tabla.nombre));
    tabla.conectada = true;
}

void Esquema::LeeConsulta(TablaVista& consulta) const
{
    try {
        consulta.texto = fichero_->TextoDeConsulta(consulta.nombre);
    } catch (const ErrorSql& error) {
        // It matters only to whoever uses the query.
        consulta.impedimento = error.Descripcion();
    }
}

/// A table of the engine's own store goes before one of the file.
void Esquema::LeeDelFichero() const
{
    const auto anade = [this](const mdb::Objeto& objeto, TablaVista::Clase clase) {
        TablaVista& tabla = tablas_[Llave(objeto.nombre)];
        if (tabla.nombre.isEmpty()) {
            tabla.nombre = objeto.nombre;
            tabla.clase = clase;
            tabla.conectada = false;
        } else if (!tabla.deFichero) {
            return;
        }
        tabla.deFichero = true;
        tabla.enlace = objeto.EsEnlace();
    };
    for (const mdb::Objeto& objeto : fichero_->Catalogo().TablasDeUsuario())
        anade(objeto, TablaVista::Clase::Tabla);
    for (const mdb::Objeto& objeto : fichero_->Catalogo().Consultas())
        anade(objeto, TablaVista::Clase::Guardada);
}

void Esquema::Lee() const
{
    if (leido_)
        return;
    Preparada filas = base_.Prepara(QStringLiteral(
        "SELECT name, type, sql LIKE 'CREATE VIRTUAL TABLE%' FROM sqlite_schema WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite~_%' ESCAPE '~'"));
    while (filas.Paso()) {
        TablaVista tabla;
        tabla.nombre = filas.Texto(0);
        tabla.clase = filas.Texto(1) == QLatin1String("view") ? TablaVista::Clase::Vista
                                                              : TablaVista::Clase::Tabla;
        tabla.deFichero = filas.Entero(2) != 0;
        tablas_.insert(Llave(tabla.nombre), tabla);
    }
    if (fichero_)
        LeeDelFichero();
    else if (tablas_.contains(QLatin1String(TablaConsultas)))
        LeeGuardadas();
    leido_ = true;
}

void Esquema::LeeGuardadas() const
{
    Preparada filas = base_.Prepara(
        QStringLiteral("SELECT nombre, texto FROM %1").arg(QLatin1String(TablaConsultas)));
    while (filas.Paso()) {
        TablaVista consulta;
        consulta.nombre = filas.Texto(0);
        consulta.clase = TablaVista::Clase::Guardada;
        consulta.texto = filas.Texto(1);
        // A table of the same name wins, so that no stored text can hide it.
        if (!tablas_.contains(Llave(consulta.nombre)))
            tablas_.insert(Llave(consulta.nombre), consulta);
    }
}

void Esquema::LeeColumnas(TablaVista& tabla) const
{
    Preparada filas =
        base_.Prepara(QStringLiteral("PRAGMA table_xinfo(%1)").arg(Identificador(tabla.nombre)));
    const bool esTabla = tabla.clase == TablaVista::Clase::Tabla;
    const QSet<QString> primeras = esTabla ? PrimerasDeIndice(tabla.nombre) : QSet<QString>();
    while (filas.Paso()) {
        const TipoDeclarado tipo = LeeTipo(filas.Texto(2));
        if (filas.Entero(6) == ColumnaEscondida) {
            AnotaExacta(tabla, filas.Texto(1));
            continue;
        }
        ColumnaVista columna;
        columna.nombre = columna.columna = filas.Texto(1);
        columna.tipo = tipo.tipo;
        columna.ancho = tipo.ancho;
        columna.precision = tipo.precision;
        columna.escala = tipo.escala;
        columna.tabla = tabla.nombre;
        columna.propia = esTabla && EsTexto(tipo.tipo) &&
                         TieneColacion(base_.Manejo(), tabla.nombre, columna.nombre);
        columna.conIndiceAjeno =
            EsTexto(tipo.tipo) && !columna.propia && primeras.contains(columna.nombre);
        tabla.columnas.push_back(columna);
    }
    tabla.conFila = esTabla && TieneFilas(base_.Manejo(), tabla.nombre);
    if (tabla.deFichero && esTabla && !tabla.enlace)
        LeeExigencias(tabla);
}

/// What new rows need to know of the columns of a table of the file. Reading needs none of it, so
/// that whatever is wrong there is told to whoever writes.
void Esquema::LeeExigencias(TablaVista& tabla) const
{
    try {
        const auto columnas = fichero_->ExigenciasDe(fichero_->Tabla(tabla.nombre)).columnas;
        for (std::size_t i = 0; i < columnas.size() && i < tabla.columnas.size(); ++i) {
            tabla.columnas[i].defecto = columnas[i].predeterminado;
            tabla.columnas[i].obligatoria = columnas[i].obligatoria;
        }
    } catch (const mdb::ErrorMdb&) {
        return;
    }
}

QSet<QString> Esquema::PrimerasDeIndice(const QString& tabla) const
{
    QSet<QString> primeras;
    Preparada filas = base_.Prepara(
        QStringLiteral(
            "SELECT c.name FROM pragma_index_list(%1) AS i, pragma_index_info(i.name) AS c WHERE c.seqno = 0")
            .arg(TextoLiteral(tabla)));
    while (filas.Paso())
        primeras.insert(filas.Texto(0));
    return primeras;
}

std::vector<IndiceVisto> Esquema::IndicesDelFichero(const QString& tabla) const
{
    const mdb::Tabla suya = fichero_->Tabla(tabla);
    std::vector<IndiceVisto> indices;
    for (const mdb::IndiceLogico& logico : suya.definicion().indicesLogicos) {
        IndiceVisto indice{.nombre = logico.nombre};
        if (logico.real < suya.definicion().indicesReales.size()) {
            for (const auto& en : suya.definicion().indicesReales[logico.real].columnas) {
                if (const mdb::Columna* columna = suya.definicion().ColumnaDe(en.numero))
                    indice.columnas << columna->nombre;
            }
        }
        indices.push_back(std::move(indice));
    }
    return indices;
}

std::vector<IndiceVisto> Esquema::IndicesDe(const TablaVista& tabla) const
{
    if (tabla.deFichero)
        return IndicesDelFichero(tabla.nombre);
    // The names are of the whole base here; a number of rows that is a column has no index at all.
    Preparada filas = base_.Prepara(
        QStringLiteral(
            "SELECT iif(i.origin = 'c', i.name, ''), group_concat(c.name, char(1)) FROM pragma_index_list(%1) AS i, pragma_index_info(i.name) AS c GROUP BY i.name UNION ALL SELECT '', name FROM pragma_table_info(%1) WHERE pk > 0")
            .arg(TextoLiteral(tabla.nombre)));
    std::vector<IndiceVisto> indices;
    const QString delante = tabla.nombre + u'.';
    while (filas.Paso()) {
        const QString nombre = filas.Texto(0);
        indices.push_back(
            {.nombre = nombre.startsWith(delante) ? nombre.mid(delante.size()) : nombre,
             .columnas = filas.Texto(1).split(QChar(1))});
    }
    return indices;
}

} // namespace tolmo::data::access
