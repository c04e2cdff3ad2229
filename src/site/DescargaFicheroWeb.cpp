#include "site/DescargaFicheroWeb.h"
#include "data/codificacion.h"
#include "data/rutas.h"
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <curl/curl.h>
#include <memory>

namespace tolmo::site {
namespace {

constexpr long EstadoBueno = 200;
constexpr long RedireccionesSeguidas = 20;

std::size_t AlLlegarDatos(char* datos, std::size_t uno, std::size_t n, void* cuerpo)
{
    const std::size_t cuantos = uno * n;
    static_cast<QByteArray*>(cuerpo)->append(datos, static_cast<qsizetype>(cuantos));
    return cuantos;
}

void PreparaPeticion(CURL* peticion, const QByteArray& url, const Esperas& esperas)
{
    curl_easy_setopt(peticion, CURLOPT_URL, url.constData());
    curl_easy_setopt(peticion, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(peticion, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(peticion, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(peticion, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(peticion, CURLOPT_MAXREDIRS, RedireccionesSeguidas);
    curl_easy_setopt(peticion, CURLOPT_USERAGENT, "KOV TOLMO");
    curl_easy_setopt(peticion, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(peticion, CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(esperas.conexion.count()));
    curl_easy_setopt(peticion, CURLOPT_TIMEOUT_MS, static_cast<long>(esperas.pagina.count()));
    curl_easy_setopt(peticion, CURLOPT_WRITEFUNCTION, &AlLlegarDatos);
}

/// The body of the page, in memory, so that a failure leaves no half of a file behind.
bool Descarga(const QString& url, const Esperas& esperas, QByteArray& cuerpo)
{
    static const CURLcode lista = curl_global_init(CURL_GLOBAL_DEFAULT);
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> peticion(curl_easy_init(),
                                                                       &curl_easy_cleanup);
    if (lista != CURLE_OK || peticion == nullptr)
        return false;
    const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> cabeceras(
        curl_slist_append(curl_slist_append(nullptr, "Cache-Control: no-cache"),
                          "Pragma: no-cache"),
        &curl_slist_free_all);
    PreparaPeticion(peticion.get(), QUrl(url, QUrl::TolerantMode).toEncoded(), esperas);
    curl_easy_setopt(peticion.get(), CURLOPT_HTTPHEADER, cabeceras.get());
    curl_easy_setopt(peticion.get(), CURLOPT_WRITEDATA, &cuerpo);
    long estado = 0;
    return curl_easy_perform(peticion.get()) == CURLE_OK &&
           curl_easy_getinfo(peticion.get(), CURLINFO_RESPONSE_CODE, &estado) == CURLE_OK &&
           estado == EstadoBueno;
}

} // namespace

bool DescargaFichero(const QString& URL, const QString& Destino, const Esperas& esperas)
{
    QByteArray cuerpo;
    if (URL.isEmpty() || !Descarga(URL, esperas, cuerpo))
        return false;
    QFile fichero(data::RutaLocal(Destino));
    return fichero.open(QIODevice::WriteOnly) && fichero.write(cuerpo) == cuerpo.size() &&
           fichero.flush();
}

QString RecuperaPagina(const QString& URL, const Esperas& esperas)
{
    // A folder of its own for each fetch: two programs on one machine don't meet.
    const QTemporaryDir carpeta;
    const QString pagina = carpeta.filePath(QStringLiteral("PaginaRecuperada.txt"));
    if (!carpeta.isValid() || !DescargaFichero(URL, pagina, esperas))
        return {};
    QFile fichero(pagina);
    return fichero.open(QIODevice::ReadOnly) ? data::DesdeWindows1252(fichero.readAll())
                                             : QString();
}

} // namespace tolmo::site
