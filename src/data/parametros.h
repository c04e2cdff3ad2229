#pragma once
#include <QString>
#include <vector>

namespace tolmo::data {

/// What changes by language: the shop's id and twelve names or expressions of the local tables,
/// pasted as they stand into the SELECT of a run.
struct FichaIdioma {
    int Idioma = 1; ///< id_lang of the shop
    QString CampoDescripcion{};
    QString campodescorta{};
    QString CampoNotas{};
    QString CampoFamDescripcion{};
    QString CampoFamNotas{};
    QString Tag{};
    QString Keywords{};
    QString KEYWORDS_FAM{};
    QString METATITULO_ART{};
    QString METADESCRIPCION_ART{};
    QString METATITULO_FAM{};
    QString METADESCRIPCION_FAM{};
};

/// The settings of the link between a company and its shop. CargaParam is their only writer.
struct Parametros {
    bool PS_MODOCONFIGURADOR = false;
    QString User_Bd{};
    QString Pass_Bd{};
    QString Puerto_Bd{};
    QString Nombre_Bd{};
    QString Server_Bd{};
    QString User_Ftp{};
    QString Pass_Ftp{};
    QString Puerto_Ftp{};
    QString Server_Ftp{};
    QString PS_PREFIJO{};
    QString PS_INDICES1{};
    QString PS_INDICES2{};
    QString Carpeta_tienda{}; ///< begins and ends with "/"
    QString WWW{};            ///< ends with "/"
    QString Ps_SufijoFoto{};
    int Ps_pvpdef = 0;
    QString Ps_ProvReferencia{};
    QString PS_TABLAARTIC{};
    QString PS_TABLAFAM{};
    QString CADACTIVOWEB{};
    QString CAMPOFAMALT{};
    QString PS_PESO{};
    QString PS_CANTMINIMA{};
    QString PSAlmacenes{};
    QString PSGrupoMarcas{};
    int PS_VERSION = 0; ///< above 0: the newer shop schema
    int PS_IDIOMA = 0;
    std::vector<FichaIdioma> Idiomas{}; ///< the main language first, the others by rising id
};

} // namespace tolmo::data
