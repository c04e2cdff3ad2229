<?php
/*
 * Deletes the pictures that "imgborra.txt" names, such as "img/p/1/2/3/123-*.jpg;".
 *
 * The list holds all that there is to know, so neither the database nor the suffix of the request
 * is needed. It is used up: after a run the same names belong to new pictures, and a second request
 * must not delete those.
 * Written for PHP 5.4 to 8.x.
 */

Prepara();
BorraListados();

function BorraListados()
{
    $lista = Toma('imgborra.txt');
    if ($lista === false) {
        echo "No se puede retirar imgborra.txt de su carpeta\r\n";
    }
    $borrador = new Borrador();
    while ($lista && ($entrada = stream_get_line($lista, 4096, ';')) !== false) {
        $borrador->Borra(trim($entrada));
    }
}

/**
 * Deletes entry by entry and remembers the two folders that can be huge: a shop of the old layout
 * keeps all its article pictures in img/p itself, and img/c has always been one folder.
 */
class Borrador
{
    // Pictures are named by their number; anything else in these folders is the shop's own.
    const ADMITIDA = '~^(img/c|img/p(?:/[0-9])*)/([0-9][A-Za-z0-9_*-]*\.(?:jpe?g|png|gif|webp))$~Di';

    private $carpeta = '';
    private $real = false;
    private $indices = array();

    public function Borra($entrada)
    {
        if (!preg_match(self::ADMITIDA, $entrada, $partes)) {
            return;
        }
        list(, $carpeta, $nombre) = $partes;
        if ($carpeta !== $this->carpeta) {
            $this->carpeta = $carpeta;
            $this->real = CarpetaPropia($carpeta);
        }
        if ($this->real === false) {
            return;
        }
        foreach ($this->Nombres($nombre) as $elegido) {
            @unlink($this->real . '/' . $elegido);
        }
    }

    /** The names in the current folder that a name with or without "*" stands for. */
    private function Nombres($patron)
    {
        if (strpos($patron, '*') === false) {
            return array($patron);
        }
        $nombres = array();
        foreach ($this->Candidatos($patron) as $nombre) {
            if (fnmatch($patron, $nombre)) {
                $nombres[] = $nombre;
            }
        }
        return $nombres;
    }

    private function Candidatos($patron)
    {
        if (strlen($this->carpeta) > strlen('img/p')) {
            return (array) @scandir($this->real);
        }
        if (!isset($this->indices[$this->carpeta])) {
            $this->indices[$this->carpeta] = $this->Indice();
        }
        $indice = $this->indices[$this->carpeta];
        // "12-*.jpg" can only be found among the names of 12, "12*.jpg" anywhere.
        if (preg_match('/^([0-9]+)[^0-9*]/', $patron, $numero)) {
            return isset($indice[$numero[1]]) ? explode('/', $indice[$numero[1]]) : array();
        }
        return explode('/', implode('/', $indice));
    }

    /** The names of the current folder by the number that they begin with, joined by "/": a list
     *  for each number would take several times the memory. */
    private function Indice()
    {
        $indice = array();
        $abierta = @opendir($this->real);
        while ($abierta && ($nombre = readdir($abierta)) !== false) {
            if (preg_match('/^[0-9]+/', $nombre, $numero)) {
                $antes = isset($indice[$numero[0]]) ? $indice[$numero[0]] . '/' : '';
                $indice[$numero[0]] = $antes . $nombre;
            }
        }
        return $indice;
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

/** The real path of a folder of the shop's, or false: one that is reached by a symbolic link is
 *  none, wherever it leads. */
function CarpetaPropia($ruta)
{
    $real = realpath(__DIR__ . '/' . $ruta);
    $esperada = str_replace('\\', '/', realpath(__DIR__) . '/' . $ruta);
    return $real !== false && is_dir($real) && str_replace('\\', '/', $real) === $esperada ? $real : false;
}
