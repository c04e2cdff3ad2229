#include "run/arranque.h"
#include "company/carga_param.h"
#include "data/consultas.h"
#include "data/plantilla.h"
#include "data/rutas.h"
#include "feed/configuracion.h"
#include "run/empresas.h"
#include "run/regional.h"
#include "run/sufijo.h"

namespace tolmo::run {

using namespace data;

namespace {

const QString BdLocal = QStringLiteral("BDLOCAL");

// clang-format off
constexpr Plantilla SqlCreaTemporal(u"CREATE TABLE WKOVTOLMO_ARTIC{SufijoTemporal} (CODART nvarchar(20))");
constexpr Plantilla SqlBorraTemporal(u"DROP TABLE WKOVTOLMO_ARTIC{SufijoTemporal}");

const QString AvisoSinEmpresas = QStringLiteral("No existe ninguna empresa.");
// No blank behind the full stop, and the same words for every cause: operators know the text.
const QString AvisoDeFallo = QStringLiteral("No se ha podido conectar al servidor web.Compruebe los valores de conexión.");
// clang-format on

} // namespace

Arranque::Arranque(Programa& programa, const Entorno& entorno, VentanasDeArranque& ventanas)
    : programa_(programa), entorno_(entorno), ventanas_(ventanas)
{
}

Desenlace Arranque::Carga()
{
    try {
        return CargaSinRed();
    } catch (const std::runtime_error&) {
        programa_.avisos.Muestra(AvisoDeFallo, estilo::Informacion);
        return Desenlace::Fallo;
    }
}

Desenlace Arranque::CargaSinRed()
{
    PuntoComaRegional();
    programa_.DialectoActivo = programa_.TipoBaseDatos;
    if (!BuscaBaseDatos())
        return Desenlace::Cancelado;
    AbreBdLocal();
    if (!HayEmpresas(programa_)) {
        programa_.avisos.Muestra(AvisoSinEmpresas, estilo::Error);
        return Desenlace::SinEmpresa;
    }
    const bool elegida = EligeEmpresa();
    programa_.ConexionLocal.Desconecta();
    ventanas_.MuestraCmdSoloStock(ExisteFichero(feed::RutaConfiguracion(programa_)));
    if (!elegida)
        return Desenlace::Cancelado;
    AbreBdEmpresa();
    if (Tag_ == QLatin1String("CONFIG")) {
        AbreConfiguracion();
        Tag_.clear();
    }
    CreaTablaTemporal();
    company::CargaParam(programa_);
    return HazTrabajo();
}

/// False when the operator leaves the dialog of the server.
bool Arranque::BuscaBaseDatos()
{
    if (programa_.TipoBaseDatos != Dialecto::SqlServer) {
        programa_.RutaBase =
            entorno_.PATH_CONNECT.isEmpty() ? programa_.carpetaActual : entorno_.PATH_CONNECT;
        return true;
    }
    const QString servidor =
        entorno_.PATH_KOVSERVER.isEmpty() ? QStringLiteral("SERVIDOR") : entorno_.PATH_KOVSERVER;
    AccesoSql acceso{.servidor = servidor};
    if (entorno_.lineaOrdenes.isEmpty()) {
        const auto pedido = ventanas_.PideServidorSql(servidor);
        if (!pedido)
            return false;
        acceso = *pedido;
    }
    programa_.ServidorSql = acceso.servidor;
    programa_.ModoAutenticacion =
        acceso.integrada ? QStringLiteral("WINDOWS") : QStringLiteral("SQLSERVER");
    credenciales_ = acceso.credenciales;
    return true;
}

void Arranque::AbreBdLocal()
{
    programa_.RutaBD = programa_.RutaBase + QStringLiteral("\\BDLOCAL.mdb");
    programa_.CadenaConexion = CadenaGestion(programa_, BdLocal, credenciales_);
    programa_.ConexionLocal.Conecta(programa_.CadenaConexion);
}

/// False when none was chosen.
bool Arranque::EligeEmpresa()
{
    if (!entorno_.lineaOrdenes.isEmpty()) {
        programa_.LblEmpresa = EmpresaDeLinea(entorno_.lineaOrdenes);
        return true;
    }
    const auto elegida = ventanas_.EligeEmpresa(ListaEmpresas(programa_));
    if (elegida) {
        programa_.LblEmpresa = elegida->texto;
        if (elegida->configuracion)
            Tag_ = QStringLiteral("CONFIG");
    }
    return !programa_.LblEmpresa.isEmpty();
}

void Arranque::AbreBdEmpresa()
{
    const QString catalogo = QStringLiteral("BD") + programa_.CodigoEmpresa();
    programa_.RutaBD = programa_.RutaBase + u'\\' + catalogo + QStringLiteral(".mdb");
    programa_.CadenaConexion = CadenaGestion(programa_, catalogo, credenciales_);
    programa_.ConexionLocal.Conecta(programa_.CadenaConexion);
}

void Arranque::CreaTablaTemporal()
{
    programa_.SufijoTemporal = NuevoSufijoTemporal(programa_.reloj);
    QString sql = SqlCreaTemporal({{"SufijoTemporal", programa_.SufijoTemporal}});
    EjecutaSql(programa_, sql, programa_.ConexionLocal);
}

Desenlace Arranque::HazTrabajo()
{
    const auto modo = ModoDeLinea(entorno_.lineaOrdenes);
    if (!modo)
        return Desenlace::Abierta;
    if (modo->ventana == VentanaDeModo::Solostocks)
        return ventanas_.MuestraSolostocks(modo->tag) ? Desenlace::Hecho : Desenlace::Inacabado;
    ventanas_.MuestraSincronizar(modo->tag);
    return Desenlace::Hecho;
}

void Arranque::Activa()
{
    programa_.DialectoActivo = Dialecto::Access;
    if (programa_.LblEmpresa.isEmpty())
        return;
    // Before the reload: the button tells the value that was in force until now.
    ventanas_.HabilitaCmdAtributosValores(!programa_.parametros.PS_MODOCONFIGURADOR);
    company::CargaParam(programa_);
}

void Arranque::Configura()
{
    AbreConfiguracion();
    company::CargaParam(programa_);
}

void Arranque::AbreConfiguracion()
{
    ventanas_.AbreConfiguracion(programa_.CodigoEmpresa(), programa_.DescripcionEmpresa());
}

void Arranque::Descarga()
{
    if (programa_.SufijoTemporal.isEmpty())
        return;
    try {
        programa_.ConexionLocal.Ejecuta(
            SqlBorraTemporal({{"SufijoTemporal", programa_.SufijoTemporal}}));
    } catch (const ErrorDatos&) {
        // The table is of this process alone: where it can't be dropped, nobody misses it.
    }
}

} // namespace tolmo::run
