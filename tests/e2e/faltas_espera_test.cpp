#include "apoyo/dobles.h"
#include "apoyo/servidor_guionizado.h"
#include "company/carga_param.h"
#include "data/access/access.h"
#include "faltas_apoyo.h"
#include "sync/sincronizador.h"
#include <QElapsedTimer>
#include <gmock/gmock.h>

using namespace tolmo;
using std::chrono::milliseconds;

namespace {

/// Shorter than the built program's, which nobody could wait for.
constexpr site::Esperas Cortas{
    .conexion = milliseconds(300), .silencioFtp = milliseconds(400), .pagina = milliseconds(300)};
/// No run of these tests waits as often as that.
constexpr int MuchoTiempo = 30'000;

/// A run of "/PRESTASHOP" in this process, on the company's own databases and folder.
class FaltasDeEspera : public testing::Test {
  protected:
    TiendaDePrueba& tienda = TiendaDeFaltas();
    QElapsedTimer reloj{};

    static int Sincroniza(EmpresaReal& empresa)
    {
        AvisosDePrueba avisos;
        RelojDePrueba hora;
        hora.ahora = QDateTime::currentDateTime();
        ProgresoDePrueba progreso;
        data::Programa programa(avisos, hora, data::CreaProveedor, empresa.Actual());
        programa.LblEmpresa = "000001";
        programa.SufijoTemporal = "24031509050789";
        programa.DialectoActivo = data::Dialecto::Access;
        programa.ConexionLocal.Conecta(
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + empresa.Carpeta().Ruta("bases") +
            "\\BD000001.mdb;Persist Security Info=False");
        company::CargaParam(programa);
        sync::Sincronizador(programa, progreso, Cortas)
            .SincronizaPrestashop(
                {.fotosFam = true, .fotosArt = true, .adjuntos = true, .stock = true});
        return static_cast<int>(avisos.cajas.size());
    }
    /// `estado` of the result is the number of boxes that were shown.
    ResultadoCorrida Corre(EmpresaReal& empresa)
    {
        reloj.start();
        return empresa.Observa([&](ResultadoCorrida&) { return Sincroniza(empresa); });
    }
    static QMap<QString, QString> PuertoFtp(const ServidorGuionizado& servidor)
    {
        return {{"PUERTO_FTP", "'" + QString::number(servidor.Puerto()) + "'"}};
    }
};

TEST_F(FaltasDeEspera, UnFtpQueNoSaludaCuentaComoSinConexion)
{
    ServidorGuionizado mudo([](Charla& charla) { charla.Calla(); });
    EmpresaReal empresa(tienda, PuertoFtp(mudo));
    empresa.Sql(SqlCatalogo());

    const ResultadoCorrida corrida = Corre(empresa);

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(LogSinFtp(empresa.Actual())));
    EXPECT_EQ(mudo.Conexiones(), 8);
    EXPECT_LT(reloj.elapsed(), MuchoTiempo);
}

/// A server that takes every file but the one that begins with "alto", of which it reads no more
/// than the beginning.
class FtpQueSePara {
  public:
    int Puerto() const { return servidor_.Puerto(); }
    const ServidorGuionizado& Servidor() const { return servidor_; }
    QByteArray Contenido(const QByteArray& nombre) const
    {
        const std::lock_guard cierre(cierre_);
        return contenidos_.value(nombre);
    }

  private:
    void Atiende(Charla& charla)
    {
        charla.Recibe();
        while (charla.EsperaOrden("STOR ")) {
            const QByteArray nombre = servidor_.Lineas().last().mid(5);
            charla.Di("150 adelante");
            const Enchufe datos = charla.AbreDatos();
            QByteArray contenido = datos.Lee();
            if (contenido.startsWith("alto")) {
                charla.Calla();
                return;
            }
            for (QByteArray mas = contenido; !mas.isEmpty(); contenido += mas)
                mas = datos.Lee();
            const std::lock_guard cierre(cierre_);
            contenidos_[nombre] = contenido;
            charla.Di("226 hecho");
        }
    }

    mutable std::mutex cierre_{};
    QMap<QByteArray, QByteArray> contenidos_{};
    ServidorGuionizado servidor_{[this](Charla& charla) { Atiende(charla); }};
};

TEST_F(FaltasDeEspera, UnFtpQueSeParaAMitadDeUnDocumentoSeDejaYSigueElSiguiente)
{
    FtpQueSePara ftp;
    EmpresaReal empresa(tienda, PuertoFtp(ftp.Servidor()));
    const QString grande = empresa.Actual() + "/grande.pdf";
    const QString chico = empresa.Actual() + "/chico.pdf";
    empresa.Carpeta().Escribe("grande.pdf", "alto" + QByteArray(24 * 1024 * 1024, 'g'));
    empresa.Carpeta().Escribe("chico.pdf", "chico");
    empresa.Sql(SqlCatalogo());
    for (const QString& ruta : {grande, chico})
        empresa.Sql("INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES "
                    "('AR','W','0101A','" +
                    ruta + "','Manual');\n");

    const ResultadoCorrida corrida = Corre(empresa);

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(Tramo(corrida.log, "SUBIENDO FICHEROS ADJUNTOS...",
                             "SUBIENDO FOTOS ARTICULOS...")),
              EnLineas({"SUBIENDO FICHEROS ADJUNTOS...", "Subiendo adjunto " + grande,
                        "Error subiendo fichero " + grande, "ERROR SUBIENDO FICHERO " + grande,
                        "Subiendo adjunto " + chico, "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                        "SUBIENDO FOTOS ARTICULOS..."}));
    EXPECT_EQ(corrida.log.mid(corrida.log.size() - 6), FinDelLog());
    EXPECT_EQ(ftp.Contenido("chico.pdf"), "chico");
    EXPECT_THAT(ftp.Contenido("sentencias.sql").toStdString(),
                testing::HasSubstr("'chico.pdf','chico.pdf',5,"));
    EXPECT_LT(reloj.elapsed(), MuchoTiempo);
}

TEST_F(FaltasDeEspera, UnaWebQueNoContestaNoSeNotaYLaCorridaSiguienteLoMandaTodo)
{
    ServidorGuionizado muda([](Charla& charla) { charla.Calla(); });
    EmpresaReal empresa(tienda, {{"WWW", QString("'http://127.0.0.1:%1/'").arg(muda.Puerto())}});
    empresa.Sql(SqlCatalogo());

    const ResultadoCorrida corrida = Corre(empresa);

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(LogSano(empresa.Actual())));
    EXPECT_EQ(muda.Conexiones(), 9);
    EXPECT_GE(reloj.elapsed(), 9 * 300);
    EXPECT_LT(reloj.elapsed(), MuchoTiempo);
    EXPECT_EQ(tienda.Sql("SELECT COUNT(*) FROM ps_product"), (std::vector<QStringList>{{"0"}}));

    empresa.Sql("UPDATE m_empresa SET WWW='" + tienda.Www() + "';\n");
    const ResultadoCorrida otra = empresa.Corre();

    EXPECT_EQ(EnLineas(otra.log), EnLineas(LogSano(empresa.Actual())));
    EXPECT_EQ(tienda.Sql("SELECT reference FROM ps_product"),
              (std::vector<QStringList>{{"0101A"}}));
}

} // namespace
