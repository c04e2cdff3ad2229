#pragma once
#include "configurador_de_prueba.h"
#include "configurator/FrmConsPSArtConfigurador.h"
#include "data/ui/articulos_en_pantalla.h"
#include "run/dialogo.h"
#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

/// The editor on the screen, over one article with the values 010 and 020 of the category MED.
class EditorEnPantalla : public testing::Test, public ConfiguradorDePrueba {
  protected:
    static constexpr int Categoria = 1; ///< columns of the categories' grid
    static constexpr int DescripcionCategoria = 2;
    static constexpr int Valor = 2; ///< and of the values'
    static constexpr int Secuencia = 4;
    static constexpr int IncPvp = 5;
    static constexpr int IncPvp2 = 6;
    static constexpr int Peso = 10;

    EditorEnPantalla()
    {
        programa.parametros.Ps_pvpdef = 1;
        Ejecuta({"ALTER TABLE M_ARTIC ADD COLUMN TIPOARTIC nvarchar(2)",
                 "INSERT INTO M_OPCIONALES_CAT VALUES ('TAL','Talla',NULL,False,NULL,NULL)",
                 "INSERT INTO M_OPCIONALES VALUES ('TAL','036','36',NULL)",
                 "INSERT INTO M_OPCIONALES VALUES ('TAL','038','38',NULL)",
                 "INSERT INTO M_OPCIONALES VALUES ('MED','0A0','20 cm',NULL)"});
    }

    void Abre()
    {
        Muestra(ventana);
        Reposa();
    }
    void AbreCon(const QString& articulo)
    {
        Abre();
        EscribeArticulo(articulo);
        QTest::keyClick(&txtCampo_0(), Qt::Key_Return);
        Reposa();
    }
    void EscribeArticulo(const QString& articulo)
    {
        txtCampo_0().setFocus();
        txtCampo_0().selectAll();
        QTest::keyClicks(&txtCampo_0(), articulo);
    }
    void VeA(const char* pagina)
    {
        SSTab1().setCurrentWidget(&Hijo<QWidget>(ventana, pagina));
        Reposa();
    }
    void Teclea(tolmo::data::ui::DataGrid& grid, int fila, int columna, const QString& texto)
    {
        TecleaEnCelda(grid, fila, columna, texto);
        QTest::keyClick(Editor(grid), Qt::Key_Return);
        Reposa();
    }
    void Pulsa(const char* boton)
    {
        QTest::mouseClick(&Hijo<QAbstractButton>(ventana, boton), Qt::LeftButton);
        Reposa();
    }
    /// Types over what stands in a box, and goes on with Tab.
    void Rellena(const char* caja, const QString& texto)
    {
        auto& campo = Hijo<QLineEdit>(ventana, caja);
        campo.setFocus();
        campo.selectAll();
        QTest::keyClick(&campo, Qt::Key_Delete);
        QTest::keyClicks(&campo, texto);
        QTest::keyClick(&campo, Qt::Key_Tab);
        Reposa();
    }

    QLineEdit& txtCampo_0() { return Hijo<QLineEdit>(ventana, "txtCampo_0"); }
    QTabWidget& SSTab1() { return Hijo<QTabWidget>(ventana, "SSTab1"); }
    tolmo::data::ui::DataGrid& DataGrid1()
    {
        return Hijo<tolmo::data::ui::DataGrid>(ventana, "DataGrid1");
    }
    tolmo::data::ui::DataGrid& DataGrid2()
    {
        return Hijo<tolmo::data::ui::DataGrid>(ventana, "DataGrid2");
    }
    QString Rotulo(const char* nombre) { return Hijo<QLabel>(ventana, nombre).text(); }
    QString Caja(const char* nombre) { return Hijo<QLineEdit>(ventana, nombre).text(); }

    /// What shows of a grid, without the row for adding.
    static QString EnPantalla(tolmo::data::ui::DataGrid& grid)
    {
        QStringList filas;
        for (int i = 0; i < grid.Modelo().Filas(); ++i) {
            QStringList fila;
            for (int j = 0; j < grid.model()->columnCount(); ++j)
                if (!grid.isColumnHidden(j))
                    fila << Celda(grid, i, j);
            filas << fila.join('|');
        }
        return filas.join(' ');
    }
    QString Categorias()
    {
        return Tabla(
            "SELECT CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT ORDER BY CODARTICULO,CODCATEGORIA");
    }
    QString Valores()
    {
        return Tabla(
            "SELECT CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO FROM PS_CONF_ART_VAL ORDER BY CODARTICULO,CODCATEGORIA,VALOR");
    }
    QString Foto(const QString& valor)
    {
        return Tabla("SELECT FOTO FROM PS_CONF_ART_VAL WHERE VALOR='" + valor + "'");
    }

    EscritorioDePrueba escritorio{};
    FrmConsPSArtConfigurador ventana{programa, escritorio};
};
