<?php
/**
 * Draws pictures as a camera would give them, of 1600 by 1200 points and some 300 kB:
 * fotos.php CARPETA CUANTAS makes CARPETA/1.jpg, CARPETA/2.jpg and so on.
 */
if ($argc !== 3) {
    fwrite(STDERR, "usage: fotos.php FOLDER NUMBER\n");
    exit(2);
}
const ANCHO = 1600;
const ALTO = 1200;
const RUIDO = 12; // with less of it the file is smaller

for ($n = 1; $n <= (int) $argv[2]; ++$n) {
    mt_srand($n);
    imagejpeg(foto($n), $argv[1] . "/$n.jpg", 76);
}

function foto($n)
{
    $foto = imagecreatetruecolor(ANCHO, ALTO);
    for ($y = 0; $y < ALTO; ++$y) {
        $verde = 127 + 110 * sin($y / (170 + 10 * $n));
        for ($x = 0; $x < ANCHO; ++$x) {
            $rojo = 127 + 110 * sin($x / (130 + 10 * $n));
            $azul = 127 + 110 * sin(($x + $y) / 190);
            imagesetpixel($foto, $x, $y, color($rojo, $verde, $azul, mt_rand(-RUIDO, RUIDO)));
        }
    }
    return $foto;
}

function color($rojo, $verde, $azul, $ruido)
{
    return (int) ($rojo + $ruido) << 16 | (int) ($verde + $ruido) << 8 | (int) ($azul + $ruido);
}
