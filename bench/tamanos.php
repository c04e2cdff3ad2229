<?php
/**
 * The plain way of making the sizes of pictures, for the comparison: each picture read once, each of
 * its sizes made from it on a white ground with the functions and the quality of the shop's script.
 *
 *   tamanos.php SIZES PICTURES FOLDER
 *
 * SIZES has a line "name width height" for each size, PICTURES a path in each line; the pictures
 * lie in FOLDER afterwards, as 1-name.jpg and so on.
 */
if ($argc !== 4) {
    fwrite(STDERR, "usage: tamanos.php SIZES PICTURES FOLDER\n");
    exit(2);
}
$tamanos = array();
foreach (file($argv[1], FILE_IGNORE_NEW_LINES) as $linea) {
    $tamanos[] = preg_split('/\s+/', $linea);
}
foreach (file($argv[2], FILE_IGNORE_NEW_LINES) as $n => $ruta) {
    $foto = imagecreatefromjpeg($ruta);
    foreach ($tamanos as list($nombre, $x, $y)) {
        imagejpeg(tamano($foto, (int) $x, (int) $y), "$argv[3]/" . ($n + 1) . "-$nombre.jpg", 90);
    }
}

function tamano($foto, $x, $y)
{
    $escala = min($x / imagesx($foto), $y / imagesy($foto));
    $w = (int) round(imagesx($foto) * $escala);
    $h = (int) round(imagesy($foto) * $escala);
    $lienzo = imagecreatetruecolor($x, $y);
    imagefilledrectangle($lienzo, 0, 0, $x, $y, 0xFFFFFF);
    imagecopyresampled($lienzo, $foto, (int) (($x - $w) / 2), (int) (($y - $h) / 2), 0, 0,
        $w, $h, imagesx($foto), imagesy($foto));
    return $lienzo;
}
