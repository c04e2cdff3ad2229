<?php
/**
 * Draws the pictures of the sample company: haz_fotos.php LISTA CARPETA
 * Each line of the list: file, drawing (with "+": seen from nearer), colour and label, tabs between.
 */
require __DIR__ . '/lienzo.php';
require __DIR__ . '/dibujos.php';

if ($argc !== 3) {
    fwrite(STDERR, "uso: haz_fotos.php LISTA CARPETA\n");
    exit(2);
}
foreach (file($argv[1], FILE_IGNORE_NEW_LINES | FILE_SKIP_EMPTY_LINES) as $linea) {
    if ($linea[0] === '#') {
        continue;
    }
    list($fichero, $dibujo, $color, $rotulo) = explode("\t", $linea);
    $detalle = substr($dibujo, -1) === '+';
    $lienzo = new Lienzo($color, $detalle);
    dibuja($lienzo, rtrim($dibujo, '+'));
    if (!$detalle) {
        $lienzo->rotulo($rotulo);
    }
    $lienzo->guarda($argv[2] . '/' . $fichero);
}
