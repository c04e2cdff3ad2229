#include "data/access/mdb/base_nueva.h"
#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/disco.h"
#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/monta_tabla.h"
#include "data/access/mdb/registro_objetos.h"
#include <limits>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint32 PaginasFijas = 7;
constexpr quint32 PaginaMapas = 6;
constexpr qsizetype TamMapa = 69;
constexpr quint16 Windows1252 = 1252;
constexpr quint16 IdiomaGeneral = 0x0409;
constexpr quint8 FijaDeSistema = 0x13;
constexpr quint8 VariableDeSistema = 0x12;
constexpr quint8 Identidad = 0x32; ///< a column of names of users
constexpr quint16 MayorTexto = 510;
constexpr const char* Access2003 = "09.50"; ///< what programs ask a file for before they open it
constexpr qint32 DeSistema = std::numeric_limits<qint32>::min();

/// Pages of a file that doesn't exist yet.
class PaginasNuevas : public PaginasEscribibles {
  public:
    Pagina Lee(quint32 numero) override
    {
        const auto& pagina = paginas_.at(numero);
        return {.numero = numero, .bytes = Bytes(*pagina), .duenio = pagina};
    }
    quint32 Cuantas() const override { return static_cast<quint32>(paginas_.size()); }
    const Formato& formato() const override { return formato_; }
    const QString& Nombre() const override { return nombre_; }
    std::span<quint8> Cambia(quint32 numero) override
    {
        auto& pagina = paginas_.at(numero);
        if (pagina.use_count() > 1)
            pagina = std::make_shared<std::vector<quint8>>(*pagina);
        return *pagina;
    }
    quint32 Alarga() override
    {
        paginas_.push_back(std::make_shared<std::vector<quint8>>(formato_.tamPagina));
        return Cuantas() - 1;
    }
    QByteArray Todo() const
    {
        QByteArray todo;
        for (const auto& pagina : paginas_)
            todo.append(reinterpret_cast<const char*>(pagina->data()),
                        static_cast<qsizetype>(pagina->size()));
        return todo;
    }

  private:
    Formato formato_ = FormatoDe(Version::Jet4);
    QString nombre_{};
    std::vector<std::shared_ptr<std::vector<quint8>>> paginas_{};
};

Columna Fija(const char* nombre, TipoColumna tipo, quint16 largo)
{
    return {.nombre = QString::fromLatin1(nombre),
            .tipo = tipo,
            .largo = largo,
            .marcas = FijaDeSistema,
            .orden = {.idioma = IdiomaGeneral}};
}

Columna Largo(const char* nombre)
{
    return Fija(nombre, TipoColumna::Largo, 4);
}

Columna Variable(const char* nombre, TipoColumna tipo, quint8 marcas = VariableDeSistema)
{
    const bool larga = tipo == TipoColumna::Memo || tipo == TipoColumna::Ole;
    return {.nombre = QString::fromLatin1(nombre),
            .tipo = tipo,
            .largo = larga ? quint16{0} : MayorTexto,
            .marcas = marcas,
            .orden = {.idioma = IdiomaGeneral}};
}

Columna Texto(const char* nombre)
{
    return Variable(nombre, TipoColumna::Texto);
}

NuevoIndice Indice(const char* nombre, std::initializer_list<const char*> columnas)
{
    NuevoIndice indice{.nombre = QString::fromLatin1(nombre)};
    for (const char* columna : columnas)
        indice.columnas.push_back({.columna = QString::fromLatin1(columna)});
    return indice;
}

struct TablaDelSistema {
    const char* nombre;
    std::vector<Columna> columnas;
    std::vector<NuevoIndice> indices;
};

TablaDelSistema Objetos()
{
    NuevoIndice porNombre = Indice("ParentIdName", {"ParentId", "Name"});
    porNombre.unico = true;
    NuevoIndice porId = Indice("Id", {"Id"});
    porId.primario = true;
    return {"MSysObjects",
            {Largo("Id"), Largo("ParentId"), Texto("Name"), Fija("Type", TipoColumna::Entero, 2),
             Fija("DateCreate", TipoColumna::Fecha, 8), Fija("DateUpdate", TipoColumna::Fecha, 8),
             Variable("Owner", TipoColumna::Binario, Identidad), Largo("Flags"),
             Variable("Database", TipoColumna::Memo), Variable("Connect", TipoColumna::Memo),
             Texto("ForeignName"), Variable("RmtInfoShort", TipoColumna::Binario),
             Variable("RmtInfoLong", TipoColumna::Ole), Variable("Lv", TipoColumna::Ole),
             Variable("LvProp", TipoColumna::Ole), Variable("LvModule", TipoColumna::Ole),
             Variable("LvExtra", TipoColumna::Ole)},
            {porNombre, porId}};
}

TablaDelSistema Derechos()
{
    NuevoIndice porObjeto = Indice("ObjectId", {"ObjectId"});
    porObjeto.obligatorio = true;
    return {"MSysACEs",
            {Largo("ObjectId"), Variable("SID", TipoColumna::Binario, Identidad), Largo("ACM"),
             Fija("FInheritable", TipoColumna::Logico, 1)},
            {porObjeto}};
}

TablaDelSistema Consultas()
{
    NuevoIndice clave = Indice("ObjectIdAttribute", {"ObjectId", "Attribute", "Order"});
    clave.primario = true;
    return {"MSysQueries",
            {Largo("ObjectId"), Fija("Attribute", TipoColumna::Byte, 1),
             Variable("Order", TipoColumna::Binario), Texto("Name1"), Texto("Name2"),
             Variable("Expression", TipoColumna::Memo), Fija("Flag", TipoColumna::Entero, 2),
             Largo("LvExtra")},
            {clave}};
}

TablaDelSistema Relaciones()
{
    TablaDelSistema tabla{"MSysRelationships",
                          {Texto("szRelationship"), Largo("grbit"), Largo("ccolumn"),
                           Largo("icolumn"), Texto("szObject"), Texto("szColumn"),
                           Texto("szReferencedObject"), Texto("szReferencedColumn")},
                          {}};
    for (const char* columna : {"szRelationship", "szObject", "szReferencedObject"}) {
        NuevoIndice indice = Indice(columna, {columna});
        indice.sinNulos = true;
        tabla.indices.push_back(indice);
    }
    return tabla;
}

/// In the order of the pages of their definitions, from 2 on.
std::vector<TablaDelSistema> TablasDelSistema()
{
    return {Objetos(), Derechos(), Consultas(), Relaciones()};
}

/// Pages with lower numbers are in use; all bits behind the end of the file are set.
void EscribeMapaGlobal(PaginasNuevas& paginas)
{
    EdicionDatos::Estrena(paginas, MapaGlobal.pagina, 0);
    EdicionDatos edicion(paginas, MapaGlobal.pagina);
    QByteArray mapa(forma_mapa::CabeceraEnLaFila, '\0');
    mapa += static_cast<char>(0xFF << PaginasFijas & 0xFF);
    mapa.append(TamMapa - mapa.size(), '\xFF');
    edicion.AnadeFila(mapa);
    edicion.AnadeFila(QByteArray(TamMapa, '\0'));
}

namespace id {
constexpr qint32 Raiz = 0x0F000000;
constexpr qint32 Tablas = 0x0F000001;
constexpr qint32 Bases = 0x0F000002;
constexpr qint32 Relaciones = 0x0F000003;
constexpr qint32 BaseDeDatos = 0x10000000;
constexpr qint32 PrimeroLibre = std::numeric_limits<qint32>::min(); ///< for what is no table
} // namespace id

/// Names of users are numbers that the engine makes up; these relations between them hold in every
/// file.
struct Usuarios {
    QByteArray motor{"\x4B\x54"};
    QByteArray administrador{"\x4A\x56"};
    QByteArray todos{"\x4B\x56"};
    QByteArray quienCrea{"\x4B\x53"};
};

/// A property that a program of Access gives to an object of its own.
Propiedad DeAccess(Propiedad propiedad, TipoColumna tipo)
{
    propiedad.tipo = static_cast<quint8>(tipo);
    propiedad.marca = 0;
    return propiedad;
}

QByteArray TextoDeAccess(const char* nombre, const char* valor)
{
    return EscribePropiedades(
        {DeAccess(PropiedadDeTexto({}, QString::fromLatin1(nombre), QString::fromLatin1(valor)),
                  TipoColumna::Texto)});
}

void AnotaObjetos(RegistroDeObjetos& registro, const Usuarios& usuarios)
{
    const auto anota = [&](qint32 cual, qint32 padre, const char* nombre, int clase,
                           const QByteArray& duenio, const QByteArray& propiedades = {}) {
        registro.Anota(RegistroDeObjetos::Anotacion{.id = cual,
                                                    .padre = padre,
                                                    .nombre = QString::fromLatin1(nombre),
                                                    .clase = clase,
                                                    .duenio = duenio,
                                                    .marcas = DeSistema,
                                                    .propiedades = propiedades});
    };
    anota(id::Tablas, id::Raiz, "Tables", clase_objeto::Contenedor, usuarios.motor);
    anota(id::Bases, id::Raiz, "Databases", clase_objeto::Contenedor, usuarios.motor);
    anota(id::Relaciones, id::Raiz, "Relationships", clase_objeto::Contenedor, usuarios.motor);
    anota(id::BaseDeDatos, id::Bases, "MSysDb", clase_objeto::BaseDeDatos, usuarios.administrador,
          TextoDeAccess("AccessVersion", Access2003));
    qint32 pagina = Catalogo::PaginaObjetos;
    for (const TablaDelSistema& tabla : TablasDelSistema())
        anota(pagina++, id::Tablas, tabla.nombre, clase_objeto::TablaLocal, usuarios.motor);
}

/// What programs of Access find or make in every file that they open; the administrator owns it.
void AnotaDeAccess(RegistroDeObjetos& registro, const Usuarios& usuarios)
{
    qint32 siguiente = id::PrimeroLibre;
    const auto anota = [&](qint32 padre, const char* nombre, int clase,
                           const QByteArray& propiedades = {}) {
        registro.Anota(RegistroDeObjetos::Anotacion{.id = siguiente,
                                                    .padre = padre,
                                                    .nombre = QString::fromLatin1(nombre),
                                                    .clase = clase,
                                                    .duenio = usuarios.administrador,
                                                    .propiedades = propiedades});
        return siguiente++;
    };
    const auto derecho = [&](qint32 objeto, const QByteArray& quien, qint32 cual, bool heredable) {
        registro.Anota(RegistroDeObjetos::Derecho{
            .objeto = objeto, .quien = quien, .cual = cual, .heredable = heredable});
    };
    const QByteArray propias = EscribePropiedades({DeAccess(
        PropiedadLogica({}, QStringLiteral("ReplicateProject"), true), TipoColumna::Logico)});
    for (const qint32 documento :
         {anota(id::Bases, "SummaryInfo", clase_objeto::Documento),
          anota(id::Bases, "UserDefined", clase_objeto::Documento, propias)})
        derecho(documento, usuarios.todos, 0x10000, false);
    for (const char* nombre :
         {"Forms", "Reports", "Scripts", "Modules", "SysRel", "DataAccessPages"}) {
        const qint32 contenedor = anota(id::Raiz, nombre, clase_objeto::Contenedor);
        for (const QByteArray& quien : {usuarios.administrador, usuarios.todos, usuarios.quienCrea})
            derecho(contenedor, quien, 0xFFFFF, true);
    }
    anota(id::Bases, "AccessLayout", clase_objeto::Documento, TextoDeAccess("KeepLocal", "T"));
}

void AnotaDerechos(RegistroDeObjetos& registro, const Usuarios& usuarios)
{
    const auto anota = [&](qint32 objeto, const QByteArray& quien, qint32 cual, bool heredable) {
        registro.Anota(RegistroDeObjetos::Derecho{
            .objeto = objeto, .quien = quien, .cual = cual, .heredable = heredable});
    };
    // Objects, rights, queries, relationships: the engine keeps them, users may read some.
    anota(2, usuarios.administrador, 0x60000, false);
    anota(2, usuarios.todos, 0x14, false);
    anota(3, usuarios.administrador, 0x60000, false);
    anota(4, usuarios.administrador, 0x60000, false);
    anota(4, usuarios.todos, 0x14, false);
    anota(5, usuarios.administrador, 0xE0000, false);
    anota(5, usuarios.todos, 0x14, false);
    // What new tables and relationships inherit.
    anota(id::Tablas, usuarios.quienCrea, 0xF00FE, true);
    anota(id::Tablas, usuarios.administrador, 0xFFEFF, true);
    anota(id::Tablas, usuarios.todos, 0xFFEFF, true);
    anota(id::Relaciones, usuarios.quienCrea, 0xF00FE, true);
    anota(id::Relaciones, usuarios.administrador, 0x60001, false);
    anota(id::Relaciones, usuarios.todos, 0xFFFFF, true);
    anota(id::Bases, usuarios.administrador, 0x60000, false);
    anota(id::BaseDeDatos, usuarios.administrador, 0x6000E, false);
    anota(id::BaseDeDatos, usuarios.todos, 0xE, false);
}

} // namespace

QByteArray BaseNueva(const QDateTime& creacion)
{
    const auto paginas = std::make_shared<PaginasNuevas>();
    for (quint32 i = 0; i < PaginasFijas; ++i)
        paginas->Alarga();
    EscribeCabecera(paginas->Cambia(0), {.paginaDeCodigos = Windows1252,
                                         .idioma = IdiomaGeneral,
                                         .creacion = FechaDe(creacion).dias});
    EscribeMapaGlobal(*paginas);
    EdicionDatos::Estrena(*paginas, PaginaMapas, 0);
    PaginasDeMapas mapas(*paginas, PaginaMapas);
    quint32 pagina = Catalogo::PaginaObjetos;
    for (const TablaDelSistema& tabla : TablasDelSistema())
        MontaTabla(*paginas,
                   {.nombre = QString::fromLatin1(tabla.nombre),
                    .pagina = pagina++,
                    .deSistema = true,
                    .columnas = tabla.columnas},
                   tabla.indices, mapas);
    RegistroDeObjetos registro(paginas);
    AnotaObjetos(registro, {});
    AnotaDerechos(registro, {});
    AnotaDeAccess(registro, {});
    return paginas->Todo();
}

void CreaBase(const QString& ruta)
{
    Disco& disco = DiscoDelSistema();
    bool creado = false;
    try {
        const auto fichero = disco.CreaNuevo(ruta);
        creado = true;
        const QByteArray bytes = BaseNueva();
        fichero->Escribe(0, {reinterpret_cast<const quint8*>(bytes.data()),
                             static_cast<std::size_t>(bytes.size())});
        fichero->Sincroniza();
    } catch (const ErrorDeDisco& error) {
        if (creado)
            disco.Borra(ruta);
        throw ErrorMdb(Motivo::NoSeAbre,
                       QStringLiteral("No se puede crear la base de datos: ") + error.Razon(),
                       {.fichero = ruta});
    }
}

} // namespace tolmo::data::access::mdb
