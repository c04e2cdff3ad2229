<?php
/** One drawing for each kind of product. $c is the colour, $o darker, $k lighter. */
function dibuja(Lienzo $z, $dibujo)
{
    $c = $z->tono(0);
    $o = $z->tono(-0.35);
    $k = $z->tono(0.45);
    $blanco = $z->color('fdfcf8');
    $madera = $z->color('a8743f');
    $metal = $z->color('c3ccd2');
    switch ($dibujo) {
        case 'sarten':
            $z->linea(62, 56, 97, 80, 8, $madera);
            $z->circulo(40, 46, 36, $o);
            $z->circulo(40, 46, 31, $c);
            $z->arco(40, 46, 23, 23, 190, 250, 3, $k);
            break;
        case 'olla':
            $z->arco(12, 52, 9, 7, 90, 270, 5, $o);
            $z->arco(88, 52, 9, 7, -90, 90, 5, $o);
            $z->caja(14, 34, 86, 86, 8, $c);
            $z->caja(10, 28, 90, 37, 4, $o);
            $z->elipse(50, 28, 36, 7, $k);
            $z->circulo(50, 18, 6, $o);
            $z->linea(26, 48, 26, 74, 4, $k);
            break;
        case 'cazuela':
            $z->arco(10, 50, 9, 6, 90, 270, 6, $o);
            $z->arco(90, 50, 9, 6, -90, 90, 6, $o);
            $z->poligono(array(10, 44, 90, 44, 82, 70, 74, 80, 26, 80, 18, 70), $c);
            $z->elipse(50, 44, 42, 13, $o);
            $z->elipse(50, 45, 36, 9, $k);
            break;
        case 'paellera':
            $z->linea(4, 50, 14, 50, 7, $z->color('b5383a'));
            $z->linea(86, 50, 96, 50, 7, $z->color('b5383a'));
            $z->elipse(50, 50, 42, 33, $o);
            $z->elipse(50, 49, 38, 29, $c);
            $z->elipse(50, 48, 33, 24, $z->color('e9b949'));
            foreach (array(38, 42, 60, 40, 52, 54, 34, 55, 66, 54, 48, 40, 44, 64, 60, 62) as $i => $v) {
                if ($i % 2 == 0) {
                    $x = $v;
                    continue;
                }
                $z->circulo($x, $v, 2.2, $z->color($i % 4 == 1 ? 'b5383a' : '4f7a4a'));
            }
            break;
        case 'tripode':
            foreach (array(20, 50, 80) as $x) {
                $z->linea(50 + ($x - 50) * 0.5, 34, $x, 94, 5, $c);
            }
            $z->linea(30, 70, 70, 70, 3, $o);
            $z->elipse(50, 30, 42, 10, $o);
            $z->elipse(50, 28, 36, 7, $k);
            break;
        case 'cuchillo':
            $z->poligono(array(6, 62, 60, 38, 66, 52, 40, 62), $metal);
            $z->poligono(array(6, 62, 40, 62, 66, 52, 64, 48), $z->color('dfe5e8'));
            $z->linea(66, 44, 94, 32, 11, $c);
            $z->circulo(72, 42, 1.6, $metal);
            $z->circulo(81, 38, 1.6, $metal);
            $z->circulo(90, 34, 1.6, $metal);
            break;
        case 'tabla':
            $z->linea(76, 28, 90, 14, 9, $c);
            $z->poligono(array(14, 44, 58, 12, 86, 52, 42, 86), $c);
            $z->arco(50, 60, 30, 14, 200, 330, 2, $o);
            $z->arco(48, 72, 30, 14, 200, 330, 2, $o);
            $z->circulo(90, 14, 2.5, $k);
            break;
        case 'mortero':
            $z->linea(58, 44, 82, 8, 9, $madera);
            $z->poligono(array(18, 42, 82, 42, 72, 78, 28, 78), $c);
            $z->elipse(50, 42, 33, 9, $z->color('4f7a4a'));
            $z->elipse(50, 42, 26, 6, $o);
            $z->caja(26, 78, 74, 88, 4, $z->color('4f7a4a'));
            break;
        case 'plato':
            $z->circulo(50, 50, 44, $c);
            $z->circulo(50, 50, 40, $blanco);
            $z->arco(50, 50, 29, 29, 0, 360, 1.5, $k);
            $z->circulo(50, 50, 24, $z->color('f1eee4'));
            break;
        case 'fuente':
            $z->elipse(50, 52, 47, 31, $o);
            $z->elipse(50, 50, 46, 29, $c);
            $z->elipse(50, 50, 34, 19, $k);
            $z->elipse(50, 51, 31, 16, $z->color('f6f2e6'));
            break;
        case 'cuenco':
            $z->poligono(array(10, 42, 90, 42, 78, 70, 62, 82, 38, 82, 22, 70), $c);
            $z->elipse(50, 42, 40, 12, $o);
            $z->elipse(50, 43, 34, 8, $z->color('f6e9b2'));
            foreach (array(30, 50, 70) as $x) {
                $z->elipse($x, 64, 6, 4, $z->color('f7dc4a'));
                $z->linea($x + 6, 60, $x + 9, 57, 2, $z->color('4f7a4a'));
            }
            break;
        case 'vaso':
            foreach (array(18 => $k, 50 => $c) as $x => $tono) {
                $z->poligono(array($x, 22, $x + 34, 22, $x + 29, 84, $x + 5, 84), $tono);
                $z->elipse($x + 17, 22, 17, 5, $blanco);
                $z->linea($x + 8, 36, $x + 10, 70, 3, $blanco);
            }
            break;
        case 'copa':
            $z->elipse(50, 92, 24, 5, $metal);
            $z->linea(50, 56, 50, 90, 4, $metal);
            $z->elipse(50, 34, 25, 28, $metal);
            $z->elipse(50, 40, 21, 20, $c);
            $z->caja(22, 2, 78, 18, 0, $z->tono(0.8));
            $z->elipse(50, 18, 20, 5, $blanco);
            $z->arco(50, 40, 15, 14, 120, 200, 3, $k);
            break;
        case 'jarra':
            $z->arco(76, 48, 15, 20, -90, 90, 7, $o);
            $z->poligono(array(34, 14, 66, 14, 64, 32, 78, 56, 70, 86, 30, 86, 22, 56, 36, 32), $c);
            $z->elipse(50, 14, 16, 5, $o);
            $z->linea(32, 54, 36, 74, 4, $k);
            $z->caja(30, 82, 70, 90, 3, $o);
            break;
        case 'cafetera':
            $z->linea(72, 26, 86, 32, 7, $o);
            $z->linea(86, 32, 82, 56, 7, $o);
            $z->poligono(array(36, 18, 68, 18, 72, 48, 32, 48), $c);
            $z->poligono(array(36, 18, 26, 24, 36, 30), $k);
            $z->caja(32, 48, 72, 54, 1, $o);
            $z->poligono(array(34, 54, 70, 54, 78, 90, 26, 90), $k);
            $z->poligono(array(36, 18, 68, 18, 56, 10, 48, 10), $o);
            $z->circulo(52, 8, 4, $o);
            break;
        case 'taza':
            $z->arco(76, 50, 13, 12, -100, 100, 6, $c);
            $z->poligono(array(22, 34, 78, 34, 70, 72, 60, 78, 40, 78, 30, 72), $blanco);
            $z->linea(24, 38, 76, 38, 3, $c);
            $z->elipse(50, 34, 28, 7, $z->color('5a3820'));
            $z->elipse(50, 84, 42, 6, $c);
            $z->elipse(50, 82, 38, 5, $blanco);
            break;
        case 'martillo':
            $z->linea(50, 34, 50, 92, 9, $madera);
            $z->caja(26, 16, 78, 36, 4, $c);
            $z->caja(20, 14, 34, 38, 3, $o);
            $z->poligono(array(76, 16, 96, 30, 92, 34, 76, 32), $o);
            break;
        case 'destornillador':
            $z->linea(20, 84, 48, 56, 5, $metal);
            $z->poligono(array(12, 86, 18, 80, 24, 86, 14, 92), $metal);
            $z->linea(52, 52, 82, 22, 18, $c);
            $z->linea(56, 54, 84, 26, 3, $k);
            break;
        case 'llave':
            $z->linea(28, 76, 70, 30, 12, $c);
            $z->circulo(72, 26, 20, $c);
            $z->poligono(array(72, 28, 80, 2, 98, 16, 76, 34), $z->tono(0.8));
            $z->circulo(26, 78, 12, $c);
            $z->circulo(26, 78, 5, $z->tono(0.8));
            $z->linea(38, 62, 58, 40, 3, $k);
            break;
        case 'flexometro':
            $z->linea(60, 80, 96, 80, 7, $z->color('f4e08a'));
            foreach (array(66, 72, 78, 84, 90) as $x) {
                $z->linea($x, 78, $x, 81, 1, $o);
            }
            $z->linea(96, 78, 96, 88, 3, $metal);
            $z->caja(14, 22, 68, 86, 14, $c);
            $z->circulo(41, 52, 20, $o);
            $z->circulo(41, 52, 13, $k);
            break;
        case 'nivel':
            $z->caja(4, 38, 96, 64, 3, $c);
            $z->caja(36, 42, 64, 54, 6, $z->color('cfe86a'));
            $z->elipse(50, 48, 6, 4, $blanco);
            $z->circulo(18, 51, 8, $z->color('cfe86a'));
            $z->circulo(82, 51, 8, $z->color('cfe86a'));
            $z->linea(44, 42, 44, 54, 1, $o);
            $z->linea(56, 42, 56, 54, 1, $o);
            break;
        case 'tornillo':
            foreach (array(28, 50, 72) as $i => $x) {
                $y = 20 + $i % 2 * 8;
                $z->poligono(array($x - 4, $y + 4, $x + 4, $y + 4, $x + 3, 74, $x, 90, $x - 3, 74), $c);
                $z->caja($x - 10, $y - 4, $x + 10, $y + 4, 3, $o);
                for ($h = $y + 14; $h < 76; $h += 8) {
                    $z->linea($x - 6, $h + 3, $x + 6, $h - 2, 2.5, $o);
                }
            }
            break;
        case 'cuerda':
            foreach (array(38, 30, 22) as $i => $r) {
                $z->arco(50, 50, $r, $r * 0.8, 0, 360, 8, $i % 2 ? $k : $c);
            }
            $z->linea(88, 50, 96, 78, 8, $c);
            $z->arco(50, 50, 38, 30, 0, 360, 1, $o);
            break;
        case 'cadena':
            foreach (array(0, 1, 2, 3) as $i) {
                $x = 20 + $i * 20;
                $y = 80 - $i * 20;
                $z->arco($x, $y, $i % 2 ? 8 : 14, $i % 2 ? 14 : 8, 0, 360, 5, $i % 2 ? $o : $c);
            }
            break;
        case 'candado':
            $z->arco(50, 40, 20, 24, 180, 360, 8, $metal);
            $z->linea(30, 40, 30, 50, 8, $metal);
            $z->linea(70, 40, 70, 50, 8, $metal);
            $z->caja(20, 46, 80, 92, 7, $c);
            $z->circulo(50, 64, 6, $o);
            $z->linea(50, 66, 50, 78, 5, $o);
            $z->linea(28, 54, 28, 82, 3, $k);
            break;
        case 'buzon':
            $z->poligono(array(12, 36, 50, 10, 88, 36), $o);
            $z->caja(18, 34, 82, 92, 3, $c);
            $z->caja(30, 44, 70, 50, 2, $o);
            $z->caja(34, 38, 66, 47, 0, $blanco);
            $z->caja(30, 46, 70, 50, 2, $o);
            $z->circulo(50, 74, 4, $z->color('e0b64a'));
            break;
        case 'bombilla':
            $z->circulo(50, 40, 31, $c);
            $z->poligono(array(28, 60, 72, 60, 62, 76, 38, 76), $c);
            $z->caja(38, 74, 62, 92, 4, $metal);
            $z->linea(38, 80, 62, 80, 2, $o);
            $z->linea(38, 86, 62, 86, 2, $o);
            $z->arco(50, 40, 21, 21, 190, 260, 4, $blanco);
            break;
        case 'linterna':
            $z->arco(50, 46, 42, 30, 180, 360, 9, $z->color('4a5963'));
            $z->caja(28, 40, 72, 78, 8, $c);
            $z->circulo(50, 59, 15, $o);
            $z->circulo(50, 59, 11, $z->color('fff3b8'));
            break;
        case 'regleta':
            $z->caja(4, 36, 96, 66, 8, $blanco);
            foreach (array(22, 36, 50, 64, 78) as $x) {
                $z->circulo($x, 51, 6, $z->color('cfd6db'));
                $z->circulo($x - 2, 51, 1.2, $z->color('3b4148'));
                $z->circulo($x + 2, 51, 1.2, $z->color('3b4148'));
            }
            $z->caja(86, 46, 92, 56, 2, $z->color('c0392b'));
            $z->arco(4, 70, 20, 19, 150, 270, 3, $z->color('8a939b'));
            break;
        case 'guante':
            $z->caja(34, 70, 72, 94, 3, $o);
            $z->caja(32, 44, 74, 76, 10, $c);
            foreach (array(38 => 24, 49 => 14, 60 => 18, 70 => 28) as $x => $y) {
                $z->linea($x, 56, $x, $y, 9.5, $c);
            }
            $z->linea(36, 66, 18, 48, 10, $c);
            $z->linea(44, 62, 62, 62, 2, $k);
            break;
        case 'regadera':
            $z->linea(64, 66, 92, 34, 7, $c);
            $z->poligono(array(84, 28, 98, 38, 100, 26, 92, 20), $o);
            $z->arco(36, 38, 26, 26, 150, 330, 5, $o);
            $z->poligono(array(18, 40, 62, 40, 68, 88, 12, 88), $c);
            $z->elipse(40, 40, 22, 6, $o);
            $z->linea(24, 52, 20, 80, 4, $k);
            break;
        case 'manguera':
            foreach (array(40, 31, 22) as $i => $r) {
                $z->arco(46, 48, $r, $r, 0, 360, 7, $i % 2 ? $k : $c);
            }
            $z->linea(80, 70, 92, 88, 7, $c);
            $z->linea(90, 86, 97, 96, 9, $z->color('e0a526'));
            break;
        case 'programador':
            $z->caja(40, 6, 60, 24, 3, $metal);
            $z->caja(24, 20, 76, 80, 10, $c);
            $z->caja(32, 30, 68, 48, 3, $z->color('d7e8c8'));
            $z->linea(38, 39, 54, 39, 4, $o);
            $z->circulo(50, 64, 9, $o);
            $z->linea(50, 64, 50, 58, 2, $blanco);
            $z->caja(42, 80, 58, 96, 3, $o);
            break;
        case 'maceta':
            $z->linea(50, 46, 50, 20, 3, $z->color('4f7a4a'));
            $z->elipse(38, 26, 13, 7, $z->color('5f9457'));
            $z->elipse(63, 20, 13, 7, $z->color('5f9457'));
            $z->elipse(50, 10, 8, 9, $z->color('79ad6b'));
            $z->poligono(array(24, 52, 76, 52, 67, 88, 33, 88), $c);
            $z->caja(19, 42, 81, 56, 3, $o);
            $z->elipse(50, 90, 30, 5, $o);
            $z->linea(34, 62, 38, 80, 4, $k);
            break;
        case 'jardinera':
            foreach (array(22, 40, 60, 78) as $i => $x) {
                $z->linea($x, 54, $x, 28, 3, $z->color('4f7a4a'));
                $z->circulo($x, 26, 9, $z->color($i % 2 ? 'd98a9c' : '79ad6b'));
                $z->circulo($x, 26, 3.5, $z->color('f4e08a'));
            }
            $z->poligono(array(6, 52, 94, 52, 88, 88, 12, 88), $c);
            $z->linea(10, 64, 90, 64, 1.5, $o);
            $z->linea(12, 76, 88, 76, 1.5, $o);
            break;
        case 'colgante':
            foreach (array(26, 74) as $x) {
                $z->linea(50, 4, $x, 54, 2.5, $c);
                $z->linea($x, 54, 50, 90, 2.5, $c);
            }
            $z->circulo(50, 5, 4, $o);
            $z->elipse(50, 40, 20, 12, $z->color('5f9457'));
            $z->poligono(array(30, 46, 70, 46, 62, 74, 38, 74), $z->color('c8643c'));
            foreach (array(46, 50, 54) as $x) {
                $z->linea(50, 88, $x, 98, 2, $c);
            }
            break;
        case 'sobre':
            $z->caja(24, 10, 76, 92, 3, $blanco);
            $z->caja(24, 10, 76, 30, 3, $c);
            $z->circulo(50, 56, 17, $c);
            $z->poligono(array(50, 42, 40, 36, 48, 38, 50, 32, 52, 38, 60, 36), $z->color('4f7a4a'));
            $z->linea(34, 82, 66, 82, 3, $k);
            break;
        case 'saco':
            $z->poligono(array(22, 14, 78, 14, 84, 90, 16, 90), $c);
            $z->caja(20, 10, 80, 20, 3, $o);
            $z->circulo(50, 54, 20, $k);
            $z->linea(50, 66, 50, 48, 3, $z->color('3f6b3c'));
            $z->elipse(43, 46, 8, 5, $z->color('5f9457'));
            $z->elipse(58, 44, 8, 5, $z->color('5f9457'));
            break;
        case 'semillero':
            $z->poligono(array(12, 28, 88, 28, 94, 58, 6, 58), $z->color('e4eef0'));
            foreach (array(20, 35, 50, 65, 80) as $x) {
                $z->linea($x, 58, $x, 46, 2, $z->color('5f9457'));
                $z->elipse($x - 3, 45, 4, 2.5, $z->color('79ad6b'));
                $z->elipse($x + 3, 44, 4, 2.5, $z->color('79ad6b'));
            }
            $z->caja(4, 56, 96, 64, 2, $o);
            $z->poligono(array(8, 64, 92, 64, 86, 84, 14, 84), $c);
            break;
        case 'tijera':
            $z->linea(30, 88, 54, 44, 8, $c);
            $z->linea(70, 88, 46, 44, 8, $c);
            $z->poligono(array(46, 48, 56, 44, 68, 8, 56, 16), $metal);
            $z->poligono(array(54, 48, 44, 44, 34, 12, 44, 20), $z->color('98a4ab'));
            $z->circulo(50, 46, 5, $o);
            break;
        case 'azada':
            $z->linea(22, 94, 70, 18, 6, $madera);
            $z->poligono(array(62, 14, 78, 24, 92, 58, 84, 62, 62, 30), $z->color('7f8c8d'));
            $z->circulo(70, 20, 6, $z->color('56626a'));
            break;
        case 'pala':
            $z->linea(50, 8, 50, 30, 9, $madera);
            $z->linea(50, 30, 50, 48, 5, $metal);
            $z->poligono(array(34, 46, 66, 46, 66, 74, 50, 96, 34, 74), $c);
            foreach (array(54, 60, 66, 72) as $y) {
                $z->linea(44, $y, 50, $y, 1.2, $k);
            }
            break;
        case 'silla':
            $z->linea(26, 92, 66, 20, 5, $o);
            $z->linea(74, 92, 34, 52, 5, $o);
            foreach (array(20, 30, 40) as $i => $y) {
                $z->linea(40 - $i * 4, $y, 72 - $i * 5, $y, 6, $c);
            }
            $z->poligono(array(20, 56, 70, 56, 78, 64, 26, 64), $c);
            $z->linea(30, 80, 66, 80, 3, $o);
            break;
        case 'mesa':
            $z->linea(24, 52, 32, 94, 5, $o);
            $z->linea(76, 52, 68, 94, 5, $o);
            $z->linea(50, 52, 50, 88, 5, $o);
            $z->elipse(50, 44, 44, 13, $o);
            $z->elipse(50, 41, 44, 12, $c);
            $z->arco(50, 41, 30, 7, 0, 360, 1.5, $o);
            break;
        case 'sombrilla':
            $z->linea(50, 16, 50, 94, 4, $z->color('8a939b'));
            $z->poligono(array(50, 8, 6, 46, 94, 46), $c);
            $z->poligono(array(50, 8, 36, 46, 64, 46), $blanco);
            foreach (array(20.5, 50, 79.5) as $i => $x) {
                $z->elipse($x, 46, 14.5, 5, $i == 1 ? $blanco : $c);
            }
            $z->elipse(50, 94, 16, 4, $o);
            break;
        case 'escoba':
            $z->linea(78, 6, 46, 56, 5, $madera);
            $z->poligono(array(42, 50, 54, 58, 56, 92, 12, 84), $c);
            $z->linea(37, 56, 54, 66, 3, $z->color('b5383a'));
            foreach (array(22, 34, 46) as $x) {
                $z->linea($x, 82, $x + 12, 68, 1.2, $o);
            }
            break;
        case 'cubo':
            $z->arco(50, 38, 33, 32, 180, 360, 3, $metal);
            $z->poligono(array(14, 38, 86, 38, 76, 92, 24, 92), $c);
            $z->elipse(50, 38, 36, 9, $o);
            $z->elipse(50, 39, 30, 6, $k);
            $z->linea(26, 52, 30, 80, 4, $k);
            break;
        case 'jabon':
            foreach (array(62, 44, 26) as $i => $y) {
                $z->caja(18 + $i * 3, $y, 78 + $i * 3, $y + 24, 5, $i % 2 ? $k : $c);
                $z->linea(30 + $i * 3, $y + 12, 66 + $i * 3, $y + 12, 2, $o);
            }
            $z->circulo(20, 30, 6, $blanco);
            $z->circulo(12, 44, 4, $blanco);
            break;
        case 'tendedero':
            $z->linea(26, 92, 70, 36, 4, $o);
            $z->linea(74, 92, 30, 36, 4, $o);
            foreach (array(36, 42, 48) as $y) {
                $z->linea(6, $y, 94, $y, 2, $c);
            }
            $z->caja(14, 36, 34, 62, 1, $z->color('e8d9a8'));
            $z->caja(64, 36, 86, 58, 1, $blanco);
            break;
        case 'cesta':
            $z->arco(50, 44, 30, 32, 180, 360, 5, $o);
            $z->poligono(array(12, 44, 88, 44, 78, 90, 22, 90), $c);
            foreach (array(54, 64, 74, 84) as $i => $y) {
                $z->linea(16 + $i * 2, $y, 84 - $i * 2, $y, 2, $o);
            }
            foreach (array(30, 43, 57, 70) as $x) {
                $z->linea($x, 48, 50 + ($x - 50) * 0.8, 88, 2, $k);
            }
            $z->caja(9, 40, 91, 48, 4, $o);
            break;
        case 'caja':
            $z->caja(12, 40, 88, 88, 5, $c);
            $z->caja(8, 30, 92, 42, 4, $o);
            $z->caja(44, 34, 56, 48, 2, $k);
            $z->linea(22, 52, 22, 78, 4, $k);
            $z->circulo(26, 92, 4, $o);
            $z->circulo(74, 92, 4, $o);
            break;
        default:
            throw new InvalidArgumentException("Dibujo desconocido: $dibujo");
    }
}
