#pragma once
#include "apoyo/corrida_con_sitio.h"
#include "fila_de_articulo.h"
#include "sync/articulos.h"
#include <gtest/gtest.h>

inline QDateTime Dia(int mes, int dia, QTime hora = QTime(0, 0))
{
    return QDateTime(QDate(2024, mes, dia), hora);
}

/// The pass over rows that a test lays out, in one language. Prices, families and the rest answer
/// with nothing.
struct PasadaDeArticulos : testing::Test {
    CorridaConSitio p{};

    PasadaDeArticulos()
    {
        p.programa.parametros.Idiomas = {CorridaDePrueba::Idioma(3)};
        p.fase.contadores.martic = 70;
    }

    static QString SqlProductos(const QString& codigo)
    {
        return "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='" +
               codigo + "'";
    }

    /// `comun` is what the rows have beside their code.
    void Articulos(const QStringList& codigos, FilaDeArticulo comun = {})
    {
        tolmo::data::Filas filas;
        for (const QString& codigo : codigos) {
            comun.Pon("CODARTICULO", codigo);
            filas.campos = comun.Filas().campos;
            filas.valores.insert(filas.valores.end(), comun.Filas().valores.begin(),
                                 comun.Filas().valores.end());
            Permite(codigo);
        }
        p.local.Espera(tolmo::sync::SqlDeArticulos(p.fase), filas);
    }

    void Permite(const QString& codigo)
    {
        p.local.Permite(
            "SELECT TOP 1 * FROM M_FAMILIA WHERE '" + codigo +
                "' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('S') OR EMPRESASWEB LIKE '%,000001,%') ORDER BY NIVEL DESC",
            SinFilas);
        p.local.Permite("SELECT TOP 1 * FROM M_REFART WHERE CODARTICULO='" + codigo + "'",
                        SinFilas);
        p.local.Permite("SELECT * FROM OFERTAS WHERE CODARTICULO='" + codigo + "' AND IDCONF='0'",
                        SinFilas);
        for (const char* blancos : {" ", "  "})
            p.local.Permite("SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE" +
                                QString(blancos) + "CODARTICULO='" + codigo +
                                "' ORDER BY CODCATEGORIA",
                            SinFilas);
    }

    /// An article without stock; `blancos` stand before the last condition on its lots.
    void PermiteExistencias(const QString& codigo, const QString& blancos)
    {
        p.local.Permite("SELECT SUM(EXISTENCIAS) AS EXI from m_Exist WHERE CODARTICULO='" + codigo +
                            "' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01')",
                        HazFilas({"EXI"}, {{tolmo::data::Nulo()}}));
        p.local.Permite(
            "SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='" +
                codigo + "' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01') AND IDCONF<>'0'" +
                blancos + "AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA",
            SinFilas);
    }

    void NoEstaEnLaTienda(const QString& codigo)
    {
        p.tienda.Espera(SqlProductos(codigo), SinFilas);
    }

    void EstaEnLaTienda(const QString& codigo, int id, const QDateTime& date_upd)
    {
        p.tienda.Espera(SqlProductos(codigo),
                        HazFilas({"id_product", "reference", "id_image", "date_upd"},
                                 {{id, codigo, tolmo::data::Nulo(), date_upd}}));
    }

    QStringList Titulos() const { return p.Log().filter("EJECUTANDO REMOTAMENTE"); }
};
