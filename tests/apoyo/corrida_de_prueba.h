#pragma once
#include "apoyo/programa_de_prueba.h"
#include "apoyo/proveedor_de_prueba.h"
#include "data/codificacion.h"
#include "sync/corrida.h"

/// A run over doubles of both databases, with its files in a folder of its own. Its site has
/// nobody to talk to: every upload fails at once, every page is empty, and the log tells.
struct CorridaDePrueba {
    ProveedorDePrueba local{};
    ProveedorDePrueba tienda{};
    ProgresoDePrueba progreso{};
    ProgramaDePrueba prueba{
        [this](const QString& cadena, const QString& usuario, const QString& clave) {
            return (cadena == u"local" ? local : tienda).Fabrica()(cadena, usuario, clave);
        }};
    tolmo::data::Programa& programa = prueba.programa;
    tolmo::batch::Escritores escritores{programa};
    tolmo::batch::FicherosTrabajo ficheros{programa};
    tolmo::batch::Lote lote{escritores, ficheros};
    tolmo::batch::Registro registro{programa, escritores, progreso,
                                    tolmo::batch::NombreFicheroLog(programa)};
    tolmo::site::Sitio sitio{programa,
                             escritores,
                             registro,
                             progreso,
                             {.conexion = std::chrono::milliseconds(200),
                              .silencioFtp = std::chrono::milliseconds(200),
                              .pagina = std::chrono::milliseconds(200)}};
    tolmo::sync::Opciones opciones{};
    tolmo::sync::Corrida corrida{.programa = programa,
                                 .opciones = opciones,
                                 .lote = lote,
                                 .registro = registro,
                                 .sitio = sitio,
                                 .progreso = progreso};

    CorridaDePrueba()
    {
        tolmo::data::Parametros& p = programa.parametros;
        p.Server_Ftp = QStringLiteral("127.0.0.1");
        p.Puerto_Ftp = QStringLiteral("1"); // nobody listens there
        p.Carpeta_tienda = QStringLiteral("/tienda/");
        p.PS_TABLAARTIC = QStringLiteral("M_ARTIC");
        p.PS_TABLAFAM = QStringLiteral("M_FAMILIA");
        p.CADACTIVOWEB = QStringLiteral("S");
        p.CAMPOFAMALT = QStringLiteral("NULL");
        p.PS_PESO = QStringLiteral("KILOS");
        p.PS_CANTMINIMA = QStringLiteral("1");
        p.PSAlmacenes = QStringLiteral("01");
        p.Ps_pvpdef = 1;
        p.Ps_SufijoFoto = QStringLiteral("_default");
        p.Idiomas = {Idioma(3)};
        programa.SufijoTemporal = QStringLiteral("24031509050789");
        programa.DialectoActivo = tolmo::data::Dialecto::MySql;
        programa.ConexionLocal.Conecta(QStringLiteral("local"));
        programa.ConexionTienda.Conecta(QStringLiteral("tienda"));
    }

    /// A language with the defaults of a company that has filled in none.
    static tolmo::data::FichaIdioma Idioma(int id)
    {
        return {.Idioma = id,
                .CampoDescripcion = QStringLiteral("DESCRIPCION"),
                .campodescorta = QStringLiteral("DESCRIPCIO2"),
                .CampoNotas = QStringLiteral("NOTAS"),
                .CampoFamDescripcion = QStringLiteral("DESCRIPCION"),
                .CampoFamNotas = QStringLiteral("NOTAS"),
                .Tag = QStringLiteral("NULL"),
                .Keywords = QStringLiteral("NULL"),
                .KEYWORDS_FAM = QStringLiteral("NULL"),
                .METATITULO_ART = QStringLiteral("DESCRIPCION"),
                .METADESCRIPCION_ART = QStringLiteral("NOTAS"),
                .METATITULO_FAM = QStringLiteral("DESCRIPCION"),
                .METADESCRIPCION_FAM = QStringLiteral("NOTAS")};
    }

    /// The lines of a file of the run, without their ends.
    QStringList Lineas(const QString& nombre) const
    {
        QString texto = tolmo::data::DesdeWindows1252(prueba.carpeta.Lee(nombre));
        if (texto.isEmpty())
            return {};
        texto.chop(2);
        return texto.split(QStringLiteral("\r\n"));
    }
    QStringList Sentencias() const { return Lineas(QStringLiteral("sentencias.sql")); }

    /// The status list without the moment in front of each line.
    QStringList Log() const
    {
        QStringList textos;
        for (const QString& linea : progreso.lineas)
            textos << linea.mid(linea.indexOf(u']') + 2);
        return textos;
    }
};
