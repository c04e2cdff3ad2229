#include "sync/fotos.h"
#include "sync/corrida.h"
#include "sync/url_amigable.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SubiendoImagen(u"Subiendo imagen {ruta} -> {fichero}");
constexpr Plantilla ErrorSubiendo(u"ERROR SUBIENDO FICHERO {fichero}");
constexpr Plantilla LineaFamilia(u"img/c/{fichero};");
constexpr Plantilla ImagenEnCarpeta(u"img/p/{dir}/{fichero}");
constexpr Plantilla LineaArticulo(u"{campo}img/p/{fichero};");
constexpr Plantilla GuionDimensiona(u"dimensiona.php?fichero={lista}&sufijofoto={Ps_SufijoFoto}");
// clang-format on

constexpr std::size_t FotosPorGrupo = 15;

/// What tells the pictures of families from those of articles.
struct Destino {
    QString carpeta{};      ///< below the shop's folder
    QString lista{};        ///< remote name of the list
    QString ficheroLista{}; ///< the list on disk
    void (batch::Lote::*anade)(const QString&) = nullptr;
    QString (*linea)(const QString& fichero) = nullptr;
    QString dimensionando{}; ///< log line
};

QString LineaDeFamilia(const QString& fichero)
{
    return LineaFamilia({{"fichero", fichero}});
}

void SubeFoto(Corrida& corrida, const Destino& destino, const FotoPendiente& foto)
{
    // A family without a picture stands on the list as well.
    if (foto.rutaLocal.isEmpty())
        return;
    corrida.RegistraLog(SubiendoImagen({{"ruta", foto.rutaLocal}, {"fichero", foto.nombreRemoto}}));
    if (!corrida.sitio.SubirFicheroWeb(foto.rutaLocal, foto.nombreRemoto,
                                       corrida.Parametros().Carpeta_tienda + destino.carpeta)) {
        corrida.RegistraLog(ErrorSubiendo({{"fichero", foto.nombreRemoto}}));
        corrida.sitio.AbrirFTP();
    }
    (corrida.lote.*destino.anade)(destino.linea(foto.nombreRemoto));
}

/// Has the server make the sizes of the pictures on the list.
void DimensionaGrupo(Corrida& corrida, const Destino& destino)
{
    site::Sitio& sitio = corrida.sitio;
    sitio.BorrarFicheroWeb(destino.lista);
    if (!sitio.SubirFicheroWeb(destino.ficheroLista, destino.lista,
                               corrida.Parametros().Carpeta_tienda))
        corrida.RegistraLog(ErrorSubiendo({{"fichero", destino.lista}}));
    corrida.RegistraLog(destino.dimensionando);
    sitio.RecuperaGuion(GuionDimensiona(
        {{"lista", destino.lista}, {"Ps_SufijoFoto", corrida.Parametros().Ps_SufijoFoto}}));
    batch::BorraFicheroLocal(destino.ficheroLista);
    sitio.AbrirFTP();
}

void SubeFotos(Corrida& corrida, const Destino& destino, const std::vector<FotoPendiente>& fotos)
{
    const std::size_t ultima = fotos.size() - 1;
    for (std::size_t i = 1; i <= ultima; ++i) {
        SubeFoto(corrida, destino, fotos[i]);
        if (i % FotosPorGrupo == 0 || i == ultima)
            DimensionaGrupo(corrida, destino);
        corrida.progreso.Avanza(static_cast<int>(i), static_cast<int>(ultima));
        corrida.progreso.CedeEventos();
    }
}

} // namespace

QString LineaImgArt(const QString& fichero)
{
    constexpr int AnchoDelCampo = 50;
    const QString id = QString(fichero).remove(QStringLiteral(".jpg"));
    const QString campo = ImagenEnCarpeta({{"dir", CadenaDirImage(id)}, {"fichero", fichero}});
    return LineaArticulo(
        {{"campo", campo.leftJustified(AnchoDelCampo, u' ', true)}, {"fichero", fichero}});
}

void SubeFotosFamilias(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("SUBIENDO FOTOS FAMILIAS..."));
    corrida.sitio.AbrirFTP();
    SubeFotos(corrida,
              {.carpeta = QStringLiteral("img/c/"),
               .lista = QStringLiteral("imgfam.txt"),
               .ficheroLista = corrida.lote.Ficheros().ListaImgFam,
               .anade = &batch::Lote::AnadeImgFam,
               .linea = LineaDeFamilia,
               .dimensionando = QStringLiteral("Dimensionando rango de familias subidas")},
              corrida.PendientesFam);
}

void SubeFotosArticulos(Corrida& corrida)
{
    corrida.sitio.AbrirFTP();
    corrida.RegistraLog(QStringLiteral("SUBIENDO FOTOS ARTICULOS..."));
    SubeFotos(corrida,
              {.carpeta = QStringLiteral("img/p/"),
               .lista = QStringLiteral("imgart.txt"),
               .ficheroLista = corrida.lote.Ficheros().ListaImgArt,
               .anade = &batch::Lote::AnadeImgArt,
               .linea = LineaImgArt,
               .dimensionando = QStringLiteral("Dimensionando rango de artículos subidos")},
              corrida.PendientesArt);
}

} // namespace tolmo::sync
