<?php
/*
 * Empties the shop's caches, which the shop fills again by itself.
 *
 * It is the first script that a run asks for, so it also sees to the rule that keeps the web away
 * from the files of the client before the first of them arrives.
 * Written for PHP 5.4 to 8.x.
 */

Prepara();
ProtegeFicheros();
// The page cache makes its folders as it needs them. The file cache of the database layer does not:
// without them it would be off from then on.
VaciaCarpeta(CarpetaPropia('cache/smarty/cache'), true);
VaciaCarpeta(CarpetaPropia('cache/smarty/compile'), true);
VaciaCarpeta(CarpetaPropia('cache/cachefs'), false);

/** Deletes what a cache folder holds, but for its index.php and its access rule, which are the
 *  shop's protection of the folder. */
function VaciaCarpeta($carpeta, $conSubcarpetas)
{
    if ($carpeta !== false) {
        BorraContenido($carpeta, array('.', '..', 'index.php', '.htaccess'), $conSubcarpetas);
    }
}

/** Deletes name by name as they are read: a page cache can hold more names than fit in memory. */
function BorraContenido($carpeta, $menos, $conSubcarpetas)
{
    $abierta = @opendir($carpeta);
    while ($abierta && ($nombre = readdir($abierta)) !== false) {
        $ruta = $carpeta . '/' . $nombre;
        if (in_array($nombre, $menos, true)) {
            continue;
        }
        // A symbolic link goes by itself: what it leads to is not the cache's.
        if (is_link($ruta) || !is_dir($ruta)) {
            @unlink($ruta);
            continue;
        }
        BorraContenido($ruta, array('.', '..'), $conSubcarpetas);
        if ($conSubcarpetas) {
            @rmdir($ruta);
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

/** Keeps in the shop's .htaccess, beside the shop's own rules, one block that denies the web the
 *  files of the client. Without a file that may be written it goes on in silence. */
function ProtegeFicheros()
{
    $bloque = implode("\n", array(
        '# KOV TOLMO: inicio',
        '<FilesMatch "(?i)^(bdtolmo\.ccc|sentencias\.sql|(imgart|imgfam|imgborra|creapath)\.txt)(\..*)?$">',
        '    <IfModule mod_authz_core.c>',
        '        Require all denied',
        '    </IfModule>',
        '    <IfModule !mod_authz_core.c>',
        '        Order allow,deny',
        '        Deny from all',
        '    </IfModule>',
        '</FilesMatch>',
        '# KOV TOLMO: fin',
    ));
    $ruta = __DIR__ . '/.htaccess';
    $existe = file_exists($ruta);
    $texto = $existe ? @file_get_contents($ruta) : '';
    $intocable = is_link($ruta) || ($existe && !is_writable($ruta));
    if ($intocable || $texto === false || strpos($texto, $bloque) !== false) {
        return;
    }
    $viejo = '/^# KOV TOLMO: inicio\r?\n.*?^# KOV TOLMO: fin\r?$/ms';
    $nuevo = preg_replace($viejo, addcslashes($bloque, '\\$'), $texto, 1, $cambios);
    if (!$cambios) {
        // Last in the file, where no rule of the shop's for the same names comes after it.
        $linea = $texto === '' ? '' : (substr($texto, -1) === "\n" ? "\n" : "\n\n");
        $nuevo = $texto . $linea . $bloque . "\n";
    }
    $temporal = $ruta . '.' . md5(uniqid(mt_rand(), true));
    if (@file_put_contents($temporal, $nuevo) === strlen($nuevo)) {
        @chmod($temporal, $existe ? fileperms($ruta) & 0777 : 0644);
        @rename($temporal, $ruta);
    }
    clearstatcache();
    if (file_exists($temporal)) {
        @unlink($temporal);
    }
}

/** The real path of a folder of the shop's, or false: one that is reached by a symbolic link is
 *  none, wherever it leads. */
function CarpetaPropia($ruta)
{
    $real = realpath(__DIR__ . '/' . $ruta);
    $esperada = str_replace('\\', '/', realpath(__DIR__) . '/' . $ruta);
    return $real !== false && is_dir($real) && str_replace('\\', '/', $real) === $esperada ? $real : false;
}
