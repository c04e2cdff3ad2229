#include "configurator/FrmConsPSArtConfigurador.h"
#include "data/access/access.h"
#include "sin_operador.h"
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <benchmark/benchmark.h>
#include <memory>
#include <stdexcept>

using namespace tolmo;

namespace {

constexpr int Articulos = 5000;

/// An operator who says yes.
struct DiceSi : data::Avisos {
    data::Respuesta Muestra(const QString&, int, const QString&) override
    {
        return data::Respuesta::Si;
    }
};

/// A company of 5,000 articles and one more, A, with three categories of 100 values; B has two
/// of 5.
class Empresa {
  public:
    explicit Empresa(bool conIndices)
        : programa(avisos_, reloj_, Abre(), carpeta_.path()), ventana_([&] {
              Crea(conIndices);
              return std::make_unique<FrmConsPSArtConfigurador>(programa, escritorio_);
          }())
    {
        ventana_->show();
        Espera();
    }

    void AbreArticulo(const char* codigo)
    {
        auto& caja = Hijo<QLineEdit>("txtCampo_0");
        caja.setText(QLatin1String(codigo));
        QTest::keyClick(&caja, Qt::Key_Return);
        Espera();
    }
    void CambiaIncremento(int numero)
    {
        auto& grid = Hijo<data::ui::DataGrid>("DataGrid2");
        grid.setCurrentIndex(grid.model()->index(0, 5));
        if (!grid.Teclea(QStringLiteral("INC_PVP"), QString::number(numero)) || !grid.GuardaFila())
            throw std::logic_error("the increment is refused");
        Espera();
    }
    void VeALaFila(int fila)
    {
        auto& grid = Hijo<data::ui::DataGrid>("DataGrid1");
        grid.setCurrentIndex(grid.model()->index(fila, 1));
        Espera();
    }
    void VeA(int pagina) { Hijo<QTabWidget>("SSTab1").setCurrentIndex(pagina); }
    void CopiaATodos()
    {
        Hijo<QLineEdit>("TxtArtDes").setText(QStringLiteral("C"));
        Hijo<QPushButton>("CmdExporta").click();
        Espera();
    }
    int Copiadas()
    {
        QString sql = QStringLiteral("SELECT COUNT(*) AS N FROM PS_CONF_ART_CAT");
        return data::AbreLectura(programa, sql, programa.ConexionLocal)["N"].toInt();
    }

  private:
    template <class Control> Control& Hijo(const char* nombre)
    {
        return *ventana_->findChild<Control*>(QLatin1String(nombre));
    }
    /// What the operator waits for: the screen as it is after the change.
    void Espera()
    {
        QCoreApplication::processEvents();
        ventana_->grab();
    }
    QString Ruta() const { return carpeta_.filePath(QStringLiteral("BD000001.sqlite")); }
    data::FabricaProveedor Abre()
    {
        return [this](const QString&, const QString&, const QString&) {
            return data::AbreBaseEmbebida(Ruta());
        };
    }
    void Crea(bool conIndices)
    {
        programa.DialectoActivo = data::Dialecto::Access;
        programa.parametros.PS_TABLAARTIC = QStringLiteral("M_ARTIC");
        programa.parametros.Ps_pvpdef = 1;
        data::CreaBaseEmbebida(Ruta());
        programa.ConexionLocal.Conecta(QStringLiteral("base"));
        const auto ejecuta = [this](const char* sql) {
            programa.ConexionLocal.Ejecuta(QString::fromUtf8(sql));
        };
        // clang-format off
        for (const char* sql :
             {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20) PRIMARY KEY,CODALTERNATIVO nvarchar(20),DESCRIPCION nvarchar(80))",
              "CREATE TABLE M_OPCIONALES_CAT (CODCATEGORIA nvarchar(3) PRIMARY KEY,DESCRIPCION nvarchar(60))",
              "CREATE TABLE M_OPCIONALES (CODCATEGORIA nvarchar(3),CODOPCIONAL nvarchar(3),DESCRIPCION nvarchar(60))",
              "CREATE TABLE PS_CONF_ART_CAT (CODARTICULO nvarchar(20),CODCATEGORIA nvarchar(3),DESCRIPCION nvarchar(60))",
              "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20),CODCATEGORIA nvarchar(3),VALOR nvarchar(3),ID INT,SECUENCIA INT,INC_PVP DOUBLE,INC_PVP2 DOUBLE,INC_PVP3 DOUBLE,INC_PVP4 DOUBLE,INC_PVP5 DOUBLE,PESO DOUBLE,FOTO nvarchar(255))",
              "CREATE TABLE N (I INT)", "INSERT INTO N VALUES (0)"})
            ejecuta(sql);
        for (int i = 1; i < 8192; i *= 2)
            programa.ConexionLocal.Ejecuta(QStringLiteral("INSERT INTO N SELECT I+%1 AS I FROM N").arg(i));
        programa.ConexionLocal.Ejecuta(QStringLiteral("INSERT INTO M_ARTIC SELECT 'C' & FORMAT(I,'00000') AS CODARTICULO,'X' AS CODALTERNATIVO,'Artículo' AS DESCRIPCION FROM N WHERE I<%1").arg(Articulos));
        for (const char* sql :
             {"INSERT INTO M_ARTIC VALUES ('A','A','Con tres')", "INSERT INTO M_ARTIC VALUES ('B','B','Con dos')",
              "INSERT INTO M_OPCIONALES_CAT VALUES ('AAA','Color')", "INSERT INTO M_OPCIONALES_CAT VALUES ('BBB','Talla')",
              "INSERT INTO M_OPCIONALES_CAT VALUES ('CCC','Tela')",
              "INSERT INTO M_OPCIONALES SELECT CODCATEGORIA,FORMAT(I,'000') AS CODOPCIONAL,'Opción ' & I AS DESCRIPCION FROM N,M_OPCIONALES_CAT WHERE I<100",
              "INSERT INTO PS_CONF_ART_CAT SELECT 'A' AS CODARTICULO,CODCATEGORIA,DESCRIPCION FROM M_OPCIONALES_CAT",
              "INSERT INTO PS_CONF_ART_CAT SELECT 'B' AS CODARTICULO,CODCATEGORIA,DESCRIPCION FROM M_OPCIONALES_CAT WHERE CODCATEGORIA<'C'",
              "INSERT INTO PS_CONF_ART_VAL SELECT CODARTICULO,PS_CONF_ART_CAT.CODCATEGORIA,CODOPCIONAL AS VALOR,1 AS ID,1 AS SECUENCIA,1 AS INC_PVP,1 AS INC_PVP2,1 AS INC_PVP3,1 AS INC_PVP4,1 AS INC_PVP5,1 AS PESO,NULL AS FOTO FROM PS_CONF_ART_CAT INNER JOIN M_OPCIONALES ON PS_CONF_ART_CAT.CODCATEGORIA=M_OPCIONALES.CODCATEGORIA WHERE CODARTICULO='A' OR CODOPCIONAL<'005'"})
            ejecuta(sql);
        // clang-format on
        if (!conIndices)
            return;
        ejecuta("CREATE INDEX IDX_CAT ON PS_CONF_ART_CAT (CODARTICULO)");
        ejecuta("CREATE INDEX IDX_VAL ON PS_CONF_ART_VAL (CODARTICULO)");
    }

    QTemporaryDir carpeta_{};
    DiceSi avisos_{};
    SinReloj reloj_{};
    SinEscritorio escritorio_{};

  public:
    data::Programa programa;

  private:
    std::unique_ptr<FrmConsPSArtConfigurador> ventana_;
};

void AbreArticuloDeTresPorCien(benchmark::State& estado)
{
    Empresa empresa(true);
    for ([[maybe_unused]] auto _ : estado)
        empresa.AbreArticulo("A");
}
BENCHMARK(AbreArticuloDeTresPorCien)->Unit(benchmark::kMillisecond);

void CambiaDeCategoria(benchmark::State& estado)
{
    Empresa empresa(true);
    empresa.AbreArticulo("A");
    int fila = 0;
    for ([[maybe_unused]] auto _ : estado)
        empresa.VeALaFila(fila = (fila + 1) % 3);
}
BENCHMARK(CambiaDeCategoria)->Unit(benchmark::kMillisecond);

void CambiaUnIncremento(benchmark::State& estado)
{
    Empresa empresa(true);
    empresa.AbreArticulo("A");
    empresa.VeA(1);
    int numero = 1;
    for ([[maybe_unused]] auto _ : estado)
        empresa.CambiaIncremento(++numero);
}
BENCHMARK(CambiaUnIncremento)->Unit(benchmark::kMillisecond);

/// To 5,000 articles, by the button.
void Copia(benchmark::State& estado, bool conIndices, const char* origen)
{
    Empresa empresa(conIndices);
    empresa.AbreArticulo(origen);
    empresa.VeA(2);
    for ([[maybe_unused]] auto _ : estado)
        empresa.CopiaATodos();
    if (empresa.Copiadas() < 2 * Articulos)
        throw std::logic_error("not all articles were copied to");
}
BENCHMARK_CAPTURE(Copia, DosPorCinco, true, "B")->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK_CAPTURE(Copia, TresPorCien, true, "A")->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK_CAPTURE(Copia, DosPorCincoSinIndices, false, "B")
    ->Unit(benchmark::kSecond)
    ->Iterations(1);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
