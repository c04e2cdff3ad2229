#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/texto_consulta.h"
#include "data/rutas.h"

namespace tolmo::data::access::mdb {
namespace {

// A linked table may be a link itself, and two files may link to each other.
constexpr int MasEnlaces = 4;

Tabla TablaEn(const std::shared_ptr<Paginas>& paginas, quint32 pagina, const QString& nombre)
{
    return {paginas, std::make_shared<const Definicion>(LeeDefinicion(*paginas, pagina, nombre))};
}

} // namespace

Base::Base(const QString& ruta, const Apertura& apertura)
    : Base(std::make_shared<FicheroPaginas>(ruta, apertura), SoloParaLeer(apertura))
{
}

Base::Base(std::shared_ptr<Paginas> paginas, AbreEnlazado abre)
    : abre_(std::move(abre)), paginas_(std::move(paginas))
{
    catalogo_ = std::make_unique<Catalogo>(
        TablaEn(paginas_, Catalogo::PaginaObjetos, QStringLiteral("MSysObjects")));
}

AbreEnlazado Base::SoloParaLeer(const Apertura& apertura)
{
    return [apertura](const QString& ruta) {
        return std::make_shared<FicheroPaginas>(ruta, apertura);
    };
}

Tabla Base::AbreTabla(const QString& nombre) const
{
    return AbreTabla(nombre, 0);
}

Tabla Base::AbreTablaDeOtro(const QString& fichero, const QString& tabla) const
{
    return Enlazada(fichero, QStringLiteral("La tabla está en un fichero que no está: "),
                    {.fichero = Nombre(), .tabla = tabla})
        .AbreTabla(tabla, 1);
}

Tabla Base::AbreTabla(const Objeto& objeto) const
{
    return TablaEn(paginas_, static_cast<quint32>(objeto.id), objeto.nombre);
}

Tabla Base::AbreTabla(const QString& nombre, int enlaces) const
{
    const Objeto* objeto = catalogo_->TablaDe(nombre);
    if (objeto == nullptr)
        throw ErrorMdb(Motivo::NoHallado, QStringLiteral("La tabla no existe"),
                       {.fichero = Nombre(), .tabla = nombre});
    return objeto->EsEnlace() ? AbreEnlace(*objeto, enlaces) : AbreTabla(*objeto);
}

Tabla Base::AbreEnlace(const Objeto& objeto, int enlaces) const
{
    const Lugar lugar{.fichero = Nombre(), .tabla = objeto.nombre};
    // A connection text means ODBC or a file of another program ("Text;", "Excel 8.0;").
    if (objeto.clase != clase_objeto::EnlaceFichero ||
        (!objeto.conexion.isEmpty() && !objeto.conexion.startsWith(u';')))
        throw ErrorMdb(Motivo::Enlace,
                       QStringLiteral("La tabla está vinculada a datos que no son de Access"),
                       lugar);
    if (enlaces >= MasEnlaces)
        throw ErrorMdb(Motivo::Enlace,
                       QStringLiteral("La tabla está vinculada a través de demasiados ficheros"),
                       lugar);
    const QString noEsta = QStringLiteral("La tabla está vinculada a un fichero que no está: ");
    return Enlazada(objeto.fichero, noEsta, lugar).AbreTabla(objeto.nombreAjeno, enlaces + 1);
}

const Base& Base::Enlazada(const QString& fichero, const QString& noEsta, const Lugar& lugar) const
{
    const QString ruta = RutaLocal(fichero);
    if (!ExisteFichero(ruta))
        throw ErrorMdb(Motivo::Enlace, noEsta + fichero, lugar);
    std::unique_ptr<Base>& otra = enlazadas_[ruta];
    if (otra == nullptr)
        otra = std::make_unique<Base>(abre_(ruta), abre_);
    return *otra;
}

QString Base::SqlDeConsulta(const QString& nombre) const
{
    const Objeto* objeto = catalogo_->ConsultaDe(nombre);
    if (objeto == nullptr)
        throw ErrorMdb(Motivo::NoHallado, QStringLiteral("La consulta no existe: ") + nombre,
                       {.fichero = Nombre()});
    try {
        return SqlDe(LeeConsulta(AbreTabla(QStringLiteral("MSysQueries")), objeto->id));
    } catch (const ErrorMdb& error) {
        throw ErrorMdb(error.motivo(),
                       QStringLiteral("La consulta %1 no se puede usar: %2")
                           .arg(objeto->nombre, error.Descripcion()),
                       {.fichero = Nombre()});
    }
}

} // namespace tolmo::data::access::mdb
