#include "data/ui/vista_foto.h"
#include "data/ui/lee_foto.h"
#include <QCoreApplication>
#include <QPromise>
#include <QThreadPool>
#include <chrono>
#include <memory>

namespace tolmo::data::ui {
namespace {

using namespace std::chrono_literals;

QThreadPool& Lectores();

/// A reader that nobody waits for ends by itself, but for one that a dead disk holds: the program
/// doesn't wait for that one.
void DespideLectores()
{
    Lectores().waitForDone(1000);
}

QThreadPool& Lectores()
{
    // Never destroyed, as that would wait.
    static QThreadPool* lectores = [] {
        qAddPostRoutine(DespideLectores);
        return new QThreadPool;
    }();
    return *lectores;
}

} // namespace

VistaFoto::VistaFoto(QWidget* padre) : QLabel(padre)
{
    setAlignment(Qt::AlignCenter);
    trasCambiarDeTamano_.setSingleShot(true);
    trasCambiarDeTamano_.setInterval(100ms);
    connect(&trasCambiarDeTamano_, &QTimer::timeout, this, &VistaFoto::Lee);
    connect(&lectura_, &QFutureWatcherBase::finished, this, &VistaFoto::Recibe);
}

VistaFoto::~VistaFoto()
{
    Abandona();
}

void VistaFoto::Muestra(const QString& ruta)
{
    Limpia();
    ruta_ = ruta;
    Lee();
}

void VistaFoto::Limpia()
{
    Abandona();
    ruta_.clear();
    clear();
}

void VistaFoto::Abandona()
{
    trasCambiarDeTamano_.stop();
    lectura_.cancel();
    lectura_.setFuture({});
}

void VistaFoto::Lee()
{
    Abandona();
    const Caja caja{.tamano = (contentsRect().size() * devicePixelRatio()).expandedTo({1, 1}),
                    .ampliar = ampliar_};
    const auto promesa = std::make_shared<QPromise<QImage>>();
    promesa->start();
    lectura_.setFuture(promesa->future());
    Lectores().start([promesa, caja, ruta = ruta_] {
        promesa->addResult(LeeFoto(ruta, caja, [&promesa] { return promesa->isCanceled(); }));
        promesa->finish();
    });
}

void VistaFoto::Recibe()
{
    // Also comes for a reading that was given up.
    if (lectura_.isCanceled() || lectura_.future().resultCount() == 0)
        return;
    QImage foto = lectura_.result();
    foto.setDevicePixelRatio(devicePixelRatio());
    setPixmap(QPixmap::fromImage(foto));
    emit Cargada(HayFoto());
}

void VistaFoto::resizeEvent(QResizeEvent* evento)
{
    QLabel::resizeEvent(evento);
    if (!ruta_.isEmpty())
        trasCambiarDeTamano_.start();
}

} // namespace tolmo::data::ui
