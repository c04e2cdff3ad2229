#include "apoyo/servidor_guionizado.h"

QByteArray Charla::Linea()
{
    qsizetype fin = pendiente_.indexOf('\n');
    while (fin < 0) {
        const QByteArray mas = enchufe_.Lee();
        if (mas.isEmpty())
            return {};
        pendiente_ += mas;
        fin = pendiente_.indexOf('\n');
    }
    QByteArray linea = pendiente_.left(fin);
    pendiente_.remove(0, fin + 1);
    if (linea.endsWith('\r'))
        linea.chop(1);
    servidor_.Anota(linea);
    return linea;
}

void Charla::Calla()
{
    while (!enchufe_.Lee().isEmpty())
        ;
}

void Charla::Recibe()
{
    Di("220 listo");
    for (const char* respuesta : {"331 clave", "230 dentro", "257 \"/\""}) {
        if (Linea().isEmpty())
            return;
        Di(respuesta);
    }
}

bool Charla::EsperaOrden(const QByteArray& verbo)
{
    for (;;) {
        const QByteArray orden = Linea();
        if (orden.isEmpty() || orden.startsWith(verbo))
            return !orden.isEmpty();
        if (orden.startsWith("PORT ")) {
            const QByteArrayList numeros = orden.mid(5).split(',');
            puertoDatos_ = numeros.value(4).toInt() * 256 + numeros.value(5).toInt();
            Di("200 bien");
        } else if (orden == "PASV") {
            escuchaDatos_ = Enchufe::Escucha();
            const int puerto = escuchaDatos_.Puerto();
            Di("227 pasivo (127,0,0,1," + QByteArray::number(puerto / 256) + ',' +
               QByteArray::number(puerto % 256) + ')');
        } else {
            Di("250 bien");
        }
    }
}

Enchufe Charla::AbreDatos()
{
    return escuchaDatos_.Vale() ? escuchaDatos_.Acepta() : Enchufe::Conecta(puertoDatos_);
}

ServidorGuionizado::ServidorGuionizado(std::function<void(Charla&)> guion)
    : guion_(std::move(guion)), escucha_(Enchufe::Escucha()), portero_([this] { Atiende(); })
{
}

ServidorGuionizado::~ServidorGuionizado()
{
    {
        const std::lock_guard cierre(cierre_);
        acabando_ = true;
        escucha_.Despierta();
        for (const Charla& charla : charlas_)
            charla.Hilo().Despierta();
    }
    portero_.join();
    for (std::thread& hilo : hilos_)
        hilo.join();
}

QByteArrayList ServidorGuionizado::Lineas() const
{
    const std::lock_guard cierre(cierre_);
    return lineas_;
}

int ServidorGuionizado::Conexiones() const
{
    const std::lock_guard cierre(cierre_);
    return static_cast<int>(charlas_.size());
}

void ServidorGuionizado::Atiende()
{
    for (;;) {
        Enchufe enchufe = escucha_.Acepta();
        const std::lock_guard cierre(cierre_);
        if (acabando_ || !enchufe.Vale())
            return;
        const int numero = static_cast<int>(charlas_.size()) + 1;
        Charla& charla = charlas_.emplace_back(*this, std::move(enchufe), numero);
        hilos_.emplace_back([this, &charla] {
            guion_(charla);
            charla.Cierra();
        });
    }
}

void ServidorGuionizado::Anota(const QByteArray& linea)
{
    const std::lock_guard cierre(cierre_);
    lineas_ << linea;
}
