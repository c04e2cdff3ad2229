#include "apoyo/galeria.h"
#include <QDir>
#include <QFile>
#include <filesystem>

namespace {

/// Numbers of images: so many, from one on, with the same step between them.
struct Serie {
    int primera = 0;
    int paso = 0;
    int cuantas = 0;
};
// No image is in both layouts.
constexpr Serie Llanas[] = {{1, 5, 15'000}, {100'250, 150, 5'000}};
// Folders are dear to make and to delete: neighbours share most of theirs.
constexpr Serie Hondas[] = {
    {80'002, 1, 250}, {200'002, 1, 100}, {499'900, 1, 50}, {700'004, 1, 50}, {849'805, 1, 50}};

const QStringList TamanosLlanos{"", "-home_default"};

/// A theme and its modules have many.
QStringList TamanosHondos()
{
    QStringList tamanos{""};
    for (int i = 1; i < 20; ++i)
        tamanos << "-tamano" + QString::number(i) + "_default";
    return tamanos;
}

QString CarpetaHonda(const TiendaDePrueba& tienda, const QString& numero)
{
    QString carpeta = "img/p/";
    for (const QChar cifra : numero)
        carpeta += QString(cifra) + '/';
    const QString completa = tienda.Raiz() + '/' + carpeta;
    QDir().mkpath(completa);
    // The folder has to be the servers', or they could not delete in it.
    QFile::setPermissions(completa, QFile::Permissions(0x7777));
    return carpeta;
}

class Llenado {
  public:
    explicit Llenado(const TiendaDePrueba& tienda)
        : tienda_(tienda), modelo_((tienda.Carpeta() + "/tmp/modelo.jpg").toStdString())
    {
        QFile modelo(modelo_);
        if (!modelo.open(QIODevice::WriteOnly))
            throw ErrorTienda("cannot write the pictures' model");
    }
    ~Llenado() { std::filesystem::remove(modelo_); }
    Llenado(const Llenado&) = delete;
    Llenado& operator=(const Llenado&) = delete;

    void Anade(const Serie& serie, const QStringList& tamanos, bool honda)
    {
        for (int i = 0; i < serie.cuantas; ++i) {
            const QString numero = QString::number(serie.primera + i * serie.paso);
            const bool conocida = i % 10 == 0;
            if (conocida)
                filas_ << '(' + numero + ',' + numero + ",1,1)";
            const QString carpeta = honda ? CarpetaHonda(tienda_, numero) : "img/p/";
            for (const QString& tamano : tamanos) {
                const QString ruta = carpeta + numero + tamano + ".jpg";
                std::filesystem::create_hard_link(modelo_,
                                                  (tienda_.Raiz() + '/' + ruta).toStdString());
                if (conocida)
                    conocidas_ << ruta;
            }
        }
    }

    QStringList Termina()
    {
        tienda_.Ejecuta("INSERT INTO " + tienda_.Prefijo() +
                        "image (id_image,id_product,position,cover) VALUES " + filas_.join(','));
        conocidas_.sort();
        return conocidas_;
    }

  private:
    const TiendaDePrueba& tienda_;
    std::filesystem::path modelo_;
    QStringList filas_{};
    QStringList conocidas_{};
};

} // namespace

QStringList LlenaGaleria(const TiendaDePrueba& tienda)
{
    Llenado llenado(tienda);
    for (const Serie& serie : Llanas)
        llenado.Anade(serie, TamanosLlanos, false);
    for (const Serie& serie : Hondas)
        llenado.Anade(serie, TamanosHondos(), true);
    return llenado.Termina();
}

void RalentizaImagenes(const TiendaDePrueba& tienda, int milisegundos)
{
    const QString tabla = tienda.Prefijo() + "image";
    tienda.Ejecuta("RENAME TABLE " + tabla + " TO " + tabla + "_rapida; CREATE VIEW " + tabla +
                   " AS SELECT * FROM " + tabla + "_rapida WHERE SLEEP(" +
                   QString::number(milisegundos / 1000.0) + ")=0");
}

QStringList Fotos(const TiendaDePrueba& tienda, const QString& carpeta)
{
    QStringList fotos;
    for (const QString& ruta : tienda.Ficheros(carpeta))
        if (!ruta.endsWith("/index.php"))
            fotos << ruta;
    return fotos;
}
