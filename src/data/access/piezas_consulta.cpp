#include "data/access/piezas_consulta.h"
#include "data/access/analizador.h"
#include "data/access/errores_access.h"
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/texto_consulta.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

using mdb::Pieza;
namespace atributo = mdb::atributo;
namespace opcion = mdb::opcion;

using Fuentes = std::vector<std::unique_ptr<Fuente>>;

[[noreturn]] void NoSeGuarda(const QString& que)
{
    Rechaza(QStringLiteral("La consulta no se puede guardar en un fichero de Access: %1").arg(que));
}

/// What a query calls the source by.
QString ClaveDe(const Fuente& fuente)
{
    return fuente.alias.isEmpty() ? fuente.nombre : fuente.alias;
}

void ReuneClaves(const Fuente& fuente, QStringList& claves)
{
    if (fuente.clase != Fuente::Clase::Union) {
        claves << ClaveDe(fuente);
        return;
    }
    ReuneClaves(*fuente.izquierda, claves);
    ReuneClaves(*fuente.derecha, claves);
}

QStringList ClavesDe(const Fuente& fuente)
{
    QStringList claves;
    ReuneClaves(fuente, claves);
    return claves;
}

QStringList ClavesDe(const Fuentes& fuentes)
{
    QStringList claves;
    for (const auto& fuente : fuentes)
        ReuneClaves(*fuente, claves);
    return claves;
}

/// The first source of those that an expression names, in the order in which it names them; the
/// first one of all when it names none.
QString ClaveNombrada(const Expresion& e, const QStringList& claves)
{
    QString hallada;
    const auto busca = [&](const auto& sigue, const Expresion& en) -> void {
        if (hallada.isEmpty() && en.clase == Expresion::Clase::Columna &&
            claves.contains(en.tabla, Qt::CaseInsensitive))
            hallada = en.tabla;
        for (const PExpresion& hijo : en.hijos)
            sigue(sigue, *hijo);
    };
    busca(busca, e);
    return hallada.isEmpty() ? claves.front() : hallada;
}

/// What the expression joins by AND, in order.
void ReuneSumandos(const Expresion& e, std::vector<const Expresion*>& sumandos)
{
    if (e.clase != Expresion::Clase::Binario || e.nombre != QLatin1String("AND")) {
        sumandos.push_back(&e);
        return;
    }
    for (const PExpresion& hijo : e.hijos)
        ReuneSumandos(*hijo, sumandos);
}

int EnlaceDe(Fuente::Reunion reunion)
{
    switch (reunion) {
    case Fuente::Reunion::Izquierda:
        return mdb::enlace::Izquierdo;
    case Fuente::Reunion::Derecha:
        return mdb::enlace::Derecho;
    case Fuente::Reunion::Interna:
        break;
    }
    return mdb::enlace::Interno;
}

int TipoDeParametro(const Parametro& parametro)
{
    using mdb::TipoColumna;
    if (parametro.tipo == QLatin1String("VALUE"))
        return 0;
    if (parametro.tipo == QLatin1String("IEEESINGLE"))
        return static_cast<int>(TipoColumna::Simple);
    if (parametro.tipo == QLatin1String("IEEEDOUBLE"))
        return static_cast<int>(TipoColumna::Doble);
    if (parametro.tipo == QLatin1String("TEXT"))
        return static_cast<int>(TipoColumna::Texto);
    if (parametro.tipo == QLatin1String("GUID"))
        return static_cast<int>(TipoColumna::Guid);
    if (parametro.tipo == QLatin1String("LONGBINARY"))
        return static_cast<int>(TipoColumna::Ole);
    switch (LeeTipo(parametro.tipo).tipo) {
    case Tipo::Texto:
        return static_cast<int>(TipoColumna::Texto);
    case Tipo::Memo:
        return static_cast<int>(TipoColumna::Memo);
    case Tipo::Byte:
        return static_cast<int>(TipoColumna::Byte);
    case Tipo::Corto:
        return static_cast<int>(TipoColumna::Entero);
    case Tipo::Entero:
        return static_cast<int>(TipoColumna::Largo);
    case Tipo::Simple:
        return static_cast<int>(TipoColumna::Simple);
    case Tipo::Doble:
        return static_cast<int>(TipoColumna::Doble);
    case Tipo::Moneda:
        return static_cast<int>(TipoColumna::Moneda);
    case Tipo::Fecha:
        return static_cast<int>(TipoColumna::Fecha);
    case Tipo::Logico:
        return static_cast<int>(TipoColumna::Logico);
    case Tipo::Binario:
        return static_cast<int>(TipoColumna::Binario);
    default:
        NoSeGuarda(QStringLiteral("no se conoce el tipo %1 de su parámetro %2")
                       .arg(parametro.tipo, parametro.nombre));
    }
}

class Despiece {
  public:
    explicit Despiece(const QString& sql) : sql_(sql) {}

    std::vector<Pieza> De(const Guardada& guardada)
    {
        acceso_ = guardada.accesoDelDuenio ? opcion::AccesoDelDuenio : 0;
        for (const Parametro& parametro : guardada.parametros)
            Pon({.atributo = atributo::Parametro,
                 .marca = TipoDeParametro(parametro),
                 .extra = parametro.ancho,
                 .nombre1 = parametro.nombre});
        std::visit([this](const auto& sentencia) { Corta(sentencia); }, guardada.sentencia);
        return std::move(piezas_);
    }

  private:
    void Pon(Pieza pieza) { piezas_.push_back(std::move(pieza)); }
    void PonClase(mdb::ClaseConsulta clase, const QString& destino = {})
    {
        Pon({.atributo = atributo::Clase, .marca = static_cast<int>(clase), .nombre1 = destino});
    }
    void PonOpciones(int marca, const QString& cuantas = {})
    {
        Pon({.atributo = atributo::Opciones, .marca = marca | acceso_, .nombre1 = cuantas});
    }
    void PonExpresion(int clase, const PExpresion& expresion, const QString& nombre1 = {})
    {
        if (expresion)
            Pon({.atributo = clase, .nombre1 = nombre1, .expresion = Texto(*expresion)});
    }

    QString Texto(Trecho trecho) const
    {
        return sql_.mid(trecho.desde, trecho.hasta - trecho.desde);
    }
    QString Texto(const Expresion& expresion) const { return Texto(expresion.trecho); }

    void Corta(const Consulta& consulta)
    {
        if (consulta.partes.size() > 1)
            return CortaUnion(consulta);
        const QString& destino = consulta.partes[0].destino;
        PonClase(destino.isEmpty() ? mdb::ClaseConsulta::Seleccion : mdb::ClaseConsulta::CreaTabla,
                 destino);
        CortaSeleccion(consulta, {});
    }

    void CortaUnion(const Consulta& consulta)
    {
        const auto conDestino = [](const Seleccion& parte) { return !parte.destino.isEmpty(); };
        if (std::any_of(consulta.partes.begin(), consulta.partes.end(), conDestino))
            NoSeGuarda(QStringLiteral("INTO no cabe en UNION"));
        PonClase(mdb::ClaseConsulta::Union);
        PonOpciones(opcion::Todas | (consulta.todas.back() ? 0 : opcion::Distintas));
        const Trecho primeras{consulta.partes.front().trecho.desde,
                              consulta.partes[consulta.partes.size() - 2].trecho.hasta};
        Pon({.atributo = atributo::Fuente,
             .nombre2 = QLatin1String(mdb::PrimeraParte),
             .expresion = Texto(primeras)});
        Pon({.atributo = atributo::Fuente,
             .nombre2 = QLatin1String(mdb::SegundaParte),
             .expresion = Texto(consulta.partes.back().trecho)});
        PonOrden(consulta.orden);
    }

    /// `columnas`: where the values of an INSERT go; empty when it doesn't tell.
    void CortaSeleccion(const Consulta& consulta, const QStringList& columnas)
    {
        const Seleccion& seleccion = consulta.partes[0];
        int marca = (seleccion.distinto ? opcion::Distintas : 0) |
                    (seleccion.distintaFila ? opcion::FilasDistintas : 0);
        QString cuantas;
        if (seleccion.tope) {
            marca |= opcion::Primeras | (seleccion.tope->porCiento ? opcion::PorCiento : 0);
            cuantas = QString::number(seleccion.tope->cuantos, 'f', 0);
        }
        marca |= PonSalidas(seleccion.elementos, seleccion.fuentes, columnas);
        PonOpciones(marca, cuantas);
        PonFuentes(seleccion.fuentes);
        PonExpresion(atributo::Donde, seleccion.donde);
        for (const PExpresion& grupo : seleccion.grupos)
            PonExpresion(atributo::Grupo, grupo);
        PonExpresion(atributo::GruposDonde, seleccion.teniendo);
        PonOrden(consulta.orden);
    }

    void PonOrden(const std::vector<Orden>& orden)
    {
        for (const Orden& termino : orden)
            PonExpresion(atributo::Orden, termino.expresion,
                         termino.descendente ? QStringLiteral("D") : QString());
    }

    /// \returns the option of a "*" that goes last
    int PonSalidas(const std::vector<Elemento>& elementos, const Fuentes& fuentes,
                   const QStringList& columnas)
    {
        const auto estrella = [](const Elemento& e) { return !e.expresion; };
        if (!columnas.isEmpty()) {
            if (std::any_of(elementos.begin(), elementos.end(), estrella))
                NoSeGuarda(QStringLiteral("con una lista de campos, SELECT no puede llevar *"));
            if (columnas.size() != static_cast<qsizetype>(elementos.size()))
                NoSeGuarda(
                    QStringLiteral("el número de valores no es el de los campos de destino"));
        }
        int opciones = 0;
        for (std::size_t i = 0; i < elementos.size(); ++i) {
            const Elemento& elemento = elementos[i];
            const bool todas = !elemento.expresion && elemento.tabla.isEmpty();
            if (todas && i + 1 == elementos.size() && GuardaSuOrden(fuentes))
                opciones = opcion::Todas;
            else if (todas)
                PonTodas(fuentes);
            else
                PonSalida(elemento, columnas.value(static_cast<qsizetype>(i)));
        }
        return opciones;
    }

    /// Joins are put together before what stands between commas: a "*" gives the fields in that
    /// order when the query is read back.
    static bool GuardaSuOrden(const Fuentes& fuentes)
    {
        const auto union_ = [](const auto& f) { return f->clase == Fuente::Clase::Union; };
        return fuentes.size() < 2 || std::none_of(fuentes.begin(), fuentes.end(), union_);
    }

    /// The pieces have no "*" but at the end of the list: each source is told by itself.
    void PonTodas(const Fuentes& fuentes)
    {
        for (const QString& clave : ClavesDe(fuentes))
            Pon({.atributo = atributo::Salida, .expresion = mdb::NombreEnTexto(clave) + ".*"});
    }

    void PonSalida(const Elemento& elemento, const QString& columna)
    {
        Pon({.atributo = atributo::Salida,
             .nombre1 = elemento.alias,
             .nombre2 = columna,
             .expresion = elemento.expresion ? Texto(*elemento.expresion)
                                             : mdb::NombreEnTexto(elemento.tabla) + ".*"});
    }

    void PonFuentes(const Fuentes& fuentes)
    {
        const QStringList claves = ClavesDe(fuentes);
        QSet<QString> vistas;
        for (const QString& clave : claves) {
            if (clave.isEmpty())
                NoSeGuarda(QStringLiteral("una subconsulta de FROM no tiene nombre"));
            if (vistas.contains(clave.toLower()))
                NoSeGuarda(QStringLiteral("el nombre %1 está dos veces en FROM").arg(clave));
            vistas.insert(clave.toLower());
        }
        for (const auto& fuente : fuentes)
            PonFuente(*fuente);
        for (const auto& fuente : fuentes)
            PonEnlaces(*fuente);
    }

    void PonFuente(const Fuente& fuente)
    {
        switch (fuente.clase) {
        case Fuente::Clase::Tabla:
            Pon({.atributo = atributo::Fuente,
                 .nombre1 = fuente.nombre,
                 .nombre2 = fuente.alias,
                 .expresion = fuente.base});
            break;
        case Fuente::Clase::Subconsulta:
            Pon({.atributo = atributo::Fuente,
                 .nombre2 = fuente.alias,
                 .expresion = Texto(fuente.consulta->trecho)});
            break;
        case Fuente::Clase::Union:
            PonFuente(*fuente.izquierda);
            PonFuente(*fuente.derecha);
        }
    }

    void PonEnlaces(const Fuente& fuente)
    {
        if (fuente.clase != Fuente::Clase::Union)
            return;
        PonEnlaces(*fuente.izquierda);
        PonEnlaces(*fuente.derecha);
        std::vector<const Expresion*> sumandos;
        ReuneSumandos(*fuente.condicion, sumandos);
        // Each one goes in front of those that are there already when the query is read back.
        for (auto sumando = sumandos.rbegin(); sumando != sumandos.rend(); ++sumando)
            Pon({.atributo = atributo::Enlace,
                 .marca = EnlaceDe(fuente.reunion),
                 .nombre1 = ClaveNombrada(**sumando, ClavesDe(*fuente.izquierda)),
                 .nombre2 = ClaveNombrada(**sumando, ClavesDe(*fuente.derecha)),
                 .expresion = Texto(**sumando)});
    }

    void Corta(const Insercion& insercion)
    {
        PonClase(mdb::ClaseConsulta::Anexion, insercion.tabla);
        if (!insercion.consulta)
            return PonValores(insercion);
        if (insercion.consulta->partes.size() > 1)
            NoSeGuarda(QStringLiteral("UNION no cabe en INSERT"));
        CortaSeleccion(*insercion.consulta, insercion.columnas);
    }

    void PonValores(const Insercion& insercion)
    {
        const auto cuantos = static_cast<qsizetype>(insercion.valores.size());
        if (!insercion.columnas.isEmpty() && insercion.columnas.size() != cuantos)
            NoSeGuarda(QStringLiteral("el número de valores no es el de los campos de destino"));
        for (qsizetype i = 0; i < cuantos; ++i)
            Pon({.atributo = atributo::Salida,
                 .marca = mdb::SalidaEsValor,
                 .nombre2 = insercion.columnas.value(i),
                 .expresion = Texto(*insercion.valores[static_cast<std::size_t>(i)])});
    }

    void Corta(const Modificacion& modificacion)
    {
        PonClase(mdb::ClaseConsulta::Actualizacion);
        PonOpciones(0);
        PonFuentes(modificacion.fuentes);
        for (const Asignacion& asignacion : modificacion.asignaciones) {
            const Expresion& columna = *asignacion.columna;
            const QString nombre = mdb::NombreEnTexto(columna.nombre);
            Pon({.atributo = atributo::Salida,
                 .nombre2 = columna.tabla.isEmpty()
                                ? nombre
                                : mdb::NombreEnTexto(columna.tabla) + u'.' + nombre,
                 .expresion = Texto(*asignacion.valor)});
        }
        PonExpresion(atributo::Donde, modificacion.donde);
    }

    void Corta(const Borrado& borrado)
    {
        PonClase(mdb::ClaseConsulta::Borrado);
        int opciones = borrado.elementos.empty() ? opcion::Todas : 0;
        for (const Elemento& elemento : borrado.elementos) {
            if (!elemento.expresion && elemento.tabla.isEmpty())
                opciones = opcion::Todas;
            else
                PonSalida(elemento, {});
        }
        PonOpciones(opciones);
        PonFuentes(borrado.fuentes);
        PonExpresion(atributo::Donde, borrado.donde);
    }

    /// Definitions are held as they are written.
    void CortaDefinicion()
    {
        Pon({.atributo = atributo::Clase,
             .marca = static_cast<int>(mdb::ClaseConsulta::Definicion),
             .expresion = sql_});
    }
    void Corta(const TablaNueva&) { CortaDefinicion(); }
    void Corta(const IndiceNuevo&) { CortaDefinicion(); }
    void Corta(const CambioTabla&) { CortaDefinicion(); }
    void Corta(const Eliminacion&) { CortaDefinicion(); }
    void Corta(const ConsultaNueva&) { CortaDefinicion(); }
    void Corta(const Llamada& llamada)
    {
        NoSeGuarda(QStringLiteral("llama a otra, %1").arg(llamada.nombre));
    }

    const QString& sql_;
    std::vector<Pieza> piezas_{};
    int acceso_ = 0;
};

} // namespace

std::vector<mdb::Pieza> PiezasDe(const QString& texto)
{
    std::vector<Pieza> piezas = Despiece(texto).De(AnalizaGuardada(texto));
    try {
        AnalizaGuardada(mdb::SqlDe(piezas));
    } catch (const ErrorSql& error) {
        NoSeGuarda(QStringLiteral("no se podría volver a leer: %1").arg(error.Descripcion()));
    }
    return piezas;
}

} // namespace tolmo::data::access
