#pragma once
#include "apoyo/corrida_con_base.h"
#include "feed/documento.h"
#include <QMap>

/// A feed over an embedded management database and a shop on paper, which knows of each article the
/// pictures that a test gives it.
struct FeedDePrueba : CorridaConBase {
    tolmo::feed::Configuracion configuracion{.Company = "Casa",
                                             .CampoSector = "SECTOR",
                                             .CampoPrecio = "PVP1",
                                             .CampoKeywords = "CLAVES",
                                             .GeneraCombinaciones = true};
    QMap<QString, QList<tolmo::data::Valor>> fotos{}; ///< id_image of each row, by article

    FeedDePrueba()
    {
        programa.DialectoActivo = tolmo::data::Dialecto::Access;
        prueba.carpeta.CreaCarpeta("HISTORICOWEB");
        Ejecuta(
            {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), CODALTERNATIVO nvarchar(20), DESCRIPCION nvarchar(60), NOTAS MEMO, SECTOR nvarchar(20), CLAVES nvarchar(200), PVP1 DOUBLE, PVP3 CURRENCY, PRECIOTEXTO nvarchar(20), ACTIVOWEB nvarchar(1), EMPRESASWEB nvarchar(50), TIPOARTIC nvarchar(2))",
             "CREATE TABLE M_OPCIONALES_CAT (CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(60))",
             "CREATE TABLE M_OPCIONALES (CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3), DESCRIPCION nvarchar(60))",
             "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), SECUENCIA INT, INC_PVP DOUBLE, INC_PVP3 DOUBLE, PESO DOUBLE)"});
    }

    /// `cambios`: columns as Access literals, over values that are telling and all different.
    void Articulo(const QString& codigo, const QMap<QString, QString>& cambios = {})
    {
        QMap<QString, QString> valores{{"CODARTICULO", "'" + codigo + "'"},
                                       {"CODALTERNATIVO", "'ALT" + codigo + "'"},
                                       {"DESCRIPCION", "'Nombre " + codigo + "'"},
                                       {"NOTAS", "'Notas " + codigo + "'"},
                                       {"SECTOR", "'77'"},
                                       {"PVP1", "10.5"},
                                       {"PVP3", "8.25"},
                                       {"ACTIVOWEB", "'S'"}};
        for (auto cambio = cambios.begin(); cambio != cambios.end(); ++cambio)
            valores[cambio.key()] = cambio.value();
        Ejecuta({"INSERT INTO M_ARTIC (" + QStringList(valores.keys()).join(",") + ") VALUES (" +
                 QStringList(valores.values()).join(",") + ")"});
        codigos_ << codigo;
    }

    void Categoria(const QString& codigo, const QString& nombre)
    {
        Ejecuta({"INSERT INTO M_OPCIONALES_CAT VALUES ('" + codigo + "','" + nombre + "')"});
    }
    void Opcion(const QString& categoria, const QString& codigo, const QString& nombre)
    {
        Ejecuta({"INSERT INTO M_OPCIONALES VALUES ('" + categoria + "','" + codigo + "','" +
                 nombre + "')"});
    }
    /// A value of an article; the increments are of the price lists 1 and 3.
    void Valor(const QString& articulo, const QString& categoria, const QString& valor,
               int secuencia, const QString& incremento = "0", const QString& incremento3 = "0")
    {
        Ejecuta({"INSERT INTO PS_CONF_ART_VAL VALUES ('" + articulo + "','" + categoria + "','" +
                 valor + "'," + QString::number(secuencia) + "," + incremento + "," + incremento3 +
                 ",0)"});
    }

    /// Announces at the shop the query for the pictures of every article so far.
    void AnunciaFotos()
    {
        const QString consulta =
            "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='";
        for (const QString& codigo : std::exchange(codigos_, {})) {
            tolmo::data::Filas filas =
                HazFilas({"id_product", "reference", "id_image", "date_upd"}, {});
            for (const tolmo::data::Valor& id : fotos.value(codigo))
                filas.valores.insert(
                    filas.valores.end(),
                    {tolmo::data::Valor(71), tolmo::data::Valor(codigo), id, tolmo::data::Nulo()});
            tienda.Permite(consulta + codigo + "'", filas);
        }
    }

    /// Writes the document of all articles so far.
    void Genera()
    {
        AnunciaFotos();
        tolmo::feed::Documento documento{.programa = programa,
                                         .configuracion = configuracion,
                                         .escritores = escritores,
                                         .ruta = prueba.carpeta.Ruta("feed.xml")};
        tolmo::feed::EscribeDocumento(documento, progreso);
    }

    /// The lines of the document.
    QStringList LineasDelFeed() const { return Lineas("feed.xml"); }
    /// What stands in the elements of one name, with a CDATA as it is.
    QStringList Elementos(const QString& nombre) const
    {
        const QString abre = "<" + nombre + ">";
        const QString cierra = "</" + nombre + ">";
        QStringList valores;
        for (const QString& linea : LineasDelFeed())
            if (linea.startsWith(abre) && linea.endsWith(cierra))
                valores << linea.mid(abre.size(), linea.size() - abre.size() - cierra.size());
        return valores;
    }

  private:
    QStringList codigos_{};
};

/// A value as an element in CDATA holds it.
inline QString Cdata(const QString& texto)
{
    return "<![CDATA[" + texto + "]]>";
}
