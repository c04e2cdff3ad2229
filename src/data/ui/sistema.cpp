#include "data/ui/sistema.h"
#include "data/rutas.h"
#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QUrl>
#include <cstdio>

namespace tolmo::data::ui {
namespace {

void Escribe(std::FILE* destino, const QString& linea)
{
    const QByteArray bytes = linea.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), destino);
    std::fflush(destino);
}

} // namespace

QDateTime RelojSistema::Ahora() const
{
    return QDateTime::currentDateTime();
}

int RelojSistema::Azar()
{
    return QRandomGenerator::global()->bounded(1'000'000'000);
}

void EscritorioSistema::AbreDocumento(const QString& ruta)
{
    const bool deLaRed = ruta.contains(QLatin1String("://"));
    QDesktopServices::openUrl(deLaRed ? QUrl(ruta) : QUrl::fromLocalFile(RutaLocal(ruta)));
}

void EscritorioSistema::CopiaAlPortapapeles(const QString& texto)
{
    QGuiApplication::clipboard()->setText(texto);
}

void EscribeEnSalida(const QString& linea)
{
    Escribe(stdout, linea);
}

void EscribeEnError(const QString& linea)
{
    Escribe(stderr, linea);
}

} // namespace tolmo::data::ui
