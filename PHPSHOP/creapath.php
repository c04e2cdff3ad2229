<?php
/*
 * Makes the folders of the article pictures that are about to come.
 *
 * "creapath.txt" holds entries such as "1/2/3;", one digit a level: the folders of image 123 below
 * img/p. The list is used up, so that a second request finds nothing.
 * Written for PHP 5.4 to 8.x.
 */

Prepara();
CreaCarpetas();

function CreaCarpetas()
{
    $lista = Toma('creapath.txt');
    if ($lista === false) {
        echo "No se puede retirar creapath.txt de su carpeta\r\n";
    }
    while ($lista && ($entrada = stream_get_line($lista, 4096, ';')) !== false) {
        $entrada = trim($entrada);
        if ($entrada === '') {
            continue;
        }
        if (!preg_match('~^[0-9]+(?:/[0-9]+)*$~D', $entrada) || strlen($entrada) > 100) {
            echo "Entrada no admitida\r\n";
        } elseif (CreaCarpeta('img/p/' . $entrada) === false) {
            echo "No se puede crear img/p/$entrada\r\n";
        }
    }
}

/** What the answer of every script has in common: plain text in the code page of the client. */
function Prepara()
{
    if (function_exists('ini_set')) {
        @ini_set('display_errors', '0');
    }
    if (function_exists('set_time_limit')) {
        @set_time_limit(0);
    }
    ignore_user_abort(true);
    header('Content-Type: text/plain; charset=windows-1252');
    header('X-Content-Type-Options: nosniff');
    header('Cache-Control: no-store');
}

/** Takes a file of the client's away from the shop's folder and opens it, so that a second
 *  request can't find it. Null when there is none, false when it can't be taken. */
function Toma($nombre)
{
    $ruta = __DIR__ . '/' . $nombre;
    clearstatcache();
    if (is_link($ruta) || !is_file($ruta)) {
        return null;
    }
    $azar = function_exists('openssl_random_pseudo_bytes') ? openssl_random_pseudo_bytes(16) : '';
    $tomado = $ruta . '.' . md5($azar . uniqid(mt_rand(), true));
    if (!is_readable($ruta) || !@rename($ruta, $tomado)) {
        clearstatcache();
        return file_exists($ruta) ? false : null;
    }
    $fichero = @fopen($tomado, 'rb');
    // The open file goes on without its name, and nothing stays even if the script dies.
    // Windows doesn't allow that: there it goes at the end.
    if (!@unlink($tomado)) {
        register_shutdown_function(function () use ($fichero, $tomado) {
            @fclose($fichero);
            @unlink($tomado);
        });
    }
    return $fichero;
}

/** Makes a folder below img/p, with those on its way. Its real path, or false. */
function CreaCarpeta($ruta)
{
    $camino = CarpetaPropia('img/p');
    if ($camino === false) {
        return false;
    }
    foreach (explode('/', substr($ruta, strlen('img/p/'))) as $cifras) {
        $camino .= '/' . $cifras;
        // The second look is for another request that makes the same one.
        if (is_link($camino) || (!is_dir($camino) && !@mkdir($camino) && !is_dir($camino))) {
            return false;
        }
    }
    return CarpetaPropia($ruta);
}

/** The real path of a folder of the shop's, or false: one that is reached by a symbolic link is
 *  none, wherever it leads. */
function CarpetaPropia($ruta)
{
    $real = realpath(__DIR__ . '/' . $ruta);
    $esperada = str_replace('\\', '/', realpath(__DIR__) . '/' . $ruta);
    return $real !== false && is_dir($real) && str_replace('\\', '/', $real) === $esperada ? $real : false;
}
