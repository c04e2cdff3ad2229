#include "sync/sincronizador.h"
#include "configurator/carga_configurador.h"
#include "site/purga.h"
#include "sync/articulos.h"
#include "sync/atributos.h"
#include "sync/cierre.h"
#include "sync/corrida.h"
#include "sync/familias.h"
#include "sync/marcas.h"
#include "sync/retirados.h"
#include "sync/vales.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlColumnaFamilia(u"SHOW COLUMNS FROM {ps_category} LIKE 'kov_familia'");
constexpr Plantilla SqlAnadeColumnaFamilia(u"ALTER TABLE {ps_category} ADD kov_familia VARCHAR(20) ");
constexpr Plantilla SqlVersionTienda(u"SELECT value FROM ps_configuration where name='ps_version_db'");
// clang-format on

/// The only write to the shop that goes by no batch: families are found again by this column.
void AseguraColumnaFamilia(Corrida& corrida)
{
    const QString tabla =
        data::PonPrefijo(QStringLiteral("ps_category"), corrida.Parametros().PS_PREFIJO);
    if (!LeeTienda(corrida, SqlColumnaFamilia({{"ps_category", tabla}})).Fin())
        return;
    QString sql = SqlAnadeColumnaFamilia({{"ps_category", tabla}});
    data::EjecutaSql(corrida.programa, sql);
}

QString LeeVersionTienda(Corrida& corrida)
{
    const auto fila = LeeTienda(corrida, SqlVersionTienda());
    return fila.Fin() ? QString() : TextoO(fila["value"]);
}

void Prepara(Corrida& corrida)
{
    corrida.progreso.HabilitaPestanas(false);
    corrida.registro.RegistraTitulo(QStringLiteral("INICIO VUELCO DATOS A PRESTASHOP "));
    corrida.lote.Ficheros().BorraTodos();
    corrida.sitio.AbrirFTP();
    corrida.sitio.SubirFicherosScripts();
    corrida.sitio.BorraCachePrestashop();
    corrida.progreso.MuestraBarra(true);
    AseguraColumnaFamilia(corrida);
    corrida.VersionTienda = LeeVersionTienda(corrida);
}

bool PideRetirar(const Opciones& opciones)
{
    return (opciones.proceso == Proceso::Articulos && opciones.eliminaEnRango) ||
           (opciones.proceso == Proceso::Todo && opciones.eliminaEnTodo);
}

bool PideFamilias(const Opciones& opciones)
{
    return opciones.proceso == Proceso::Familias ||
           (opciones.proceso == Proceso::Todo && opciones.familias);
}

void VuelcaFamilias(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."));
    VuelcaLote(corrida, QStringLiteral("EJECUTANDO REMOTAMENTE Actualización de familias ...Fin"));
    ReconectaTienda(corrida.programa);
}

/// Everything between the head of a run and its closing steps.
void SincronizaCatalogo(Corrida& corrida)
{
    const Opciones& opciones = corrida.opciones;
    if (PideRetirar(opciones))
        RetiraArticulos(corrida);
    corrida.RegistraLog(QStringLiteral("Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."));
    if (opciones.proceso == Proceso::Todo)
        CargaAtributos(corrida);
    ReconectaTienda(corrida.programa);
    if (PideFamilias(opciones))
        CargaFamilias(corrida);
    VuelcaFamilias(corrida);
    LeeContadores(corrida);
    PasaArticulos(corrida);
    CierraCorrida(corrida);
}

void Termina(Corrida& corrida)
{
    corrida.sitio.BorraCachePrestashop();
    corrida.registro.RegistraTitulo(QStringLiteral("FIN VUELCO DATOS A PRESTASHOP "));
    corrida.RegistraLog(QStringLiteral("\r\n"));
    corrida.sitio.CierraFTP();
    corrida.progreso.MuestraBarra(false);
    corrida.progreso.HabilitaPestanas(true);
}

/// True from here to the end of the block, an exception's included.
class MarcaEnMarcha {
  public:
    explicit MarcaEnMarcha(bool& marca) : marca_(marca) { marca_ = true; }
    ~MarcaEnMarcha() { marca_ = false; }
    MarcaEnMarcha(const MarcaEnMarcha&) = delete;
    MarcaEnMarcha& operator=(const MarcaEnMarcha&) = delete;

  private:
    bool& marca_;
};

} // namespace

struct Sincronizador::Interior {
    Interior(data::Programa& p, data::Progreso& pr, const site::Esperas& esperas)
        : programa(p), progreso(pr), escritores(p),
          registro(p, escritores, pr, batch::NombreFicheroLog(p)),
          sitio(p, escritores, registro, pr, esperas)
    {
    }

    data::Programa& programa;
    data::Progreso& progreso;
    batch::Escritores escritores;
    batch::Registro registro;
    site::Sitio sitio;
    bool enMarcha = false;
};

Sincronizador::Sincronizador(data::Programa& programa, data::Progreso& progreso,
                             const site::Esperas& esperas)
    : interior_(std::make_unique<Interior>(programa, progreso, esperas))
{
    progreso.LimpiaEstado();
    programa.DialectoActivo = data::Dialecto::MySql;
    programa.CadenaConexion = programa.CadenaTienda();
    programa.ConexionTienda.Conecta(programa.CadenaConexion);
}

Sincronizador::~Sincronizador() = default;

bool Sincronizador::EnMarcha() const
{
    return interior_->enMarcha;
}

void Sincronizador::SincronizaPrestashop(const Opciones& opciones)
{
    if (EnMarcha())
        return;
    const MarcaEnMarcha marca(interior_->enMarcha);
    data::Programa& programa = interior_->programa;
    try {
        if (programa.parametros.PS_MODOCONFIGURADOR)
            configurator::CargaDatosConfigurador(programa);
        CreaTablaNotas(programa);
        programa.DialectoActivo = data::Dialecto::MySql;

        const batch::FicherosTrabajo ficheros(programa);
        batch::Lote lote(interior_->escritores, ficheros);
        Corrida corrida{.programa = programa,
                        .opciones = opciones,
                        .lote = lote,
                        .registro = interior_->registro,
                        .sitio = interior_->sitio,
                        .progreso = interior_->progreso};
        Prepara(corrida);
        if (!programa.parametros.PSGrupoMarcas.isEmpty())
            ActualizaMarcas(corrida);
        if (opciones.proceso == Proceso::Vales)
            SincronizaValesDescuento(corrida);
        else
            SincronizaCatalogo(corrida);
        Termina(corrida);
    } catch (const data::ErrorDatos& error) {
        // A column that isn't there or a connection that doesn't come back: the run has no handler
        // of its own, so it is the end of the process.
        throw data::ErrorEjecucion(error.Numero(), error.Descripcion());
    }
}

void Sincronizador::BorraImagenesObsoletas()
{
    if (EnMarcha())
        return;
    const MarcaEnMarcha marca(interior_->enMarcha);
    site::BorraImagenesObsoletas(interior_->sitio, interior_->registro, interior_->progreso);
}

} // namespace tolmo::sync
