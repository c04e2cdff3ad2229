<?php
/** A square drawing with flat colours. Places and sizes go from 0 to 100, y downwards. */
class Lienzo
{
    const LADO = 800;
    /** Drawn at twice the size and reduced at the end, which smooths every edge. */
    const MUESTREO = 2;
    const LETRA = '/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf';

    private $imagen;
    private $escala;
    private $x0;
    private $y0;
    private $base;

    /** @param string $base colour of the product, as "b5653a"
     *  @param bool $detalle the same drawing seen from nearer, on its own ground */
    public function __construct($base, $detalle)
    {
        $lado = self::LADO * self::MUESTREO;
        $this->imagen = imagecreatetruecolor($lado, $lado);
        $this->base = array_map('hexdec', str_split($base, 2));
        imagefilledrectangle($this->imagen, 0, 0, $lado, $lado, $this->tono($detalle ? 0.78 : 0.9));
        $radio = $detalle ? 1.2 * $lado : 0.74 * $lado;
        imagefilledellipse($this->imagen, (int) ($lado / 2), (int) ($lado * 0.45), (int) $radio,
            (int) $radio, $this->tono($detalle ? 0.66 : 0.8));
        $this->escala = $lado / 100 * ($detalle ? 0.95 : 0.62);
        $this->x0 = $lado / 2 - 50 * $this->escala;
        $this->y0 = $lado * 0.45 - 50 * $this->escala;
    }

    /** The product's colour mixed with white (above 0) or with black (below 0). */
    public function tono($mezcla)
    {
        $con = $mezcla > 0 ? 255 : 20;
        $parte = abs($mezcla);
        $rgb = array();
        foreach ($this->base as $canal) {
            $rgb[] = (int) round($canal * (1 - $parte) + $con * $parte);
        }
        return imagecolorallocate($this->imagen, $rgb[0], $rgb[1], $rgb[2]);
    }

    public function color($hex)
    {
        list($r, $g, $b) = array_map('hexdec', str_split($hex, 2));
        return imagecolorallocate($this->imagen, $r, $g, $b);
    }

    public function elipse($x, $y, $rx, $ry, $color)
    {
        imagefilledellipse($this->imagen, $this->x($x), $this->y($y), $this->l(2 * $rx),
            $this->l(2 * $ry), $color);
    }

    public function circulo($x, $y, $r, $color)
    {
        $this->elipse($x, $y, $r, $r, $color);
    }

    public function caja($x1, $y1, $x2, $y2, $radio, $color)
    {
        imagefilledrectangle($this->imagen, $this->x($x1 + $radio), $this->y($y1),
            $this->x($x2 - $radio), $this->y($y2), $color);
        if ($radio > 0) {
            imagefilledrectangle($this->imagen, $this->x($x1), $this->y($y1 + $radio), $this->x($x2),
                $this->y($y2 - $radio), $color);
            foreach (array($x1 + $radio, $x2 - $radio) as $x) {
                $this->circulo($x, $y1 + $radio, $radio, $color);
                $this->circulo($x, $y2 - $radio, $radio, $color);
            }
        }
    }

    /** @param float[] $puntos x, y, x, y... */
    public function poligono(array $puntos, $color)
    {
        $lugares = array();
        foreach (array_chunk($puntos, 2) as $punto) {
            $lugares[] = $this->x($punto[0]);
            $lugares[] = $this->y($punto[1]);
        }
        imagefilledpolygon($this->imagen, $lugares, $color);
    }

    /** A line with round ends. */
    public function linea($x1, $y1, $x2, $y2, $grosor, $color)
    {
        $largo = hypot($x2 - $x1, $y2 - $y1);
        if ($largo > 0) {
            $dx = ($y2 - $y1) / $largo * $grosor / 2;
            $dy = ($x2 - $x1) / $largo * $grosor / 2;
            $this->poligono(array($x1 + $dx, $y1 - $dy, $x2 + $dx, $y2 - $dy, $x2 - $dx, $y2 + $dy,
                $x1 - $dx, $y1 + $dy), $color);
        }
        $this->circulo($x1, $y1, $grosor / 2, $color);
        $this->circulo($x2, $y2, $grosor / 2, $color);
    }

    /** Part of an ellipse's edge, in degrees clockwise from the right. */
    public function arco($x, $y, $rx, $ry, $desde, $hasta, $grosor, $color)
    {
        $pasos = max(4, (int) (($hasta - $desde) / 6));
        for ($i = 0; $i < $pasos; $i++) {
            $a = deg2rad($desde + ($hasta - $desde) * $i / $pasos);
            $b = deg2rad($desde + ($hasta - $desde) * ($i + 1) / $pasos);
            $this->linea($x + $rx * cos($a), $y + $ry * sin($a), $x + $rx * cos($b),
                $y + $ry * sin($b), $grosor, $color);
        }
    }

    public function rotulo($texto)
    {
        $lado = self::LADO * self::MUESTREO;
        $lineas = explode("\n", wordwrap($texto, 36, "\n"));
        $cuerpo = 50;
        $y = (int) ($lado * (count($lineas) > 1 ? 0.9 : 0.925));
        foreach ($lineas as $linea) {
            $marco = imagettfbbox($cuerpo, 0, self::LETRA, $linea);
            imagettftext($this->imagen, $cuerpo, 0, (int) (($lado - $marco[2]) / 2), $y,
                $this->tono(-0.45), self::LETRA, $linea);
            $y += (int) ($cuerpo * 1.6);
        }
    }

    public function guarda($fichero)
    {
        $pequena = imagescale($this->imagen, self::LADO, self::LADO, IMG_BILINEAR_FIXED);
        if (!imagejpeg($pequena, $fichero, 80)) {
            throw new RuntimeException("No se puede escribir $fichero");
        }
    }

    private function x($x)
    {
        return (int) round($this->x0 + $x * $this->escala);
    }

    private function y($y)
    {
        return (int) round($this->y0 + $y * $this->escala);
    }

    private function l($l)
    {
        return (int) round($l * $this->escala);
    }
}
