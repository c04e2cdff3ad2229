<?php
/** Small pieces of HTML that the views share. */

function h($texto)
{
    return htmlspecialchars((string) $texto, ENT_QUOTES | ENT_SUBSTITUTE, 'UTF-8');
}

/** A text of the shop; of its tags only the line break counts. */
function prosa($texto)
{
    return preg_replace('~&lt;br ?/?&gt;~i', '<br>', h(trim((string) $texto)));
}

function euros($importe)
{
    return number_format((float) $importe, 2, ',', '.') . "\u{a0}€";
}

function numero($cantidad, $decimales = 0)
{
    return number_format((float) $cantidad, $decimales, ',', '.');
}

function fecha($fecha)
{
    return h(implode('/', array_reverse(explode('-', substr($fecha, 0, 10)))));
}

/** An address of this page; the language goes along. */
function enlace(array $valores = array())
{
    $idioma = max(1, (int) pedido('idioma'));
    if ($idioma > 1 && !isset($valores['idioma'])) {
        $valores['idioma'] = $idioma;
    }
    if (isset($valores['idioma']) && $valores['idioma'] === 1) {
        unset($valores['idioma']);
    }
    return h('./' . ($valores ? '?' . http_build_query($valores) : ''));
}

/** The picture's file in the first size that is there, or null. */
function fichero($carpeta, $id, array $tamanos)
{
    $raiz = dirname(__DIR__) . '/';
    foreach ($tamanos as $tamano) {
        $ruta = $carpeta . $id . $tamano . '.jpg';
        if (is_file($raiz . $ruta)) {
            return $ruta;
        }
    }
    return null;
}

function fotoProducto($idImagen, array $tamanos)
{
    if (!$idImagen) {
        return null;
    }
    return fichero('img/p/' . implode('/', str_split((string) $idImagen)) . '/', $idImagen, $tamanos);
}

/** The picture, or a calm patch with the initial where there is none. */
function foto($ruta, $nombre)
{
    if ($ruta !== null) {
        return '<img src="' . h($ruta) . '" alt="' . h($nombre) . '" loading="lazy">';
    }
    $inicial = preg_match('~^.~us', (string) $nombre, $letra) ? $letra[0] : '·';
    $matiz = crc32((string) $nombre) % 12 * 30;
    return '<span class="sin-foto" style="--matiz: ' . $matiz . '" aria-hidden="true">' . h($inicial) . '</span>';
}

function existencias($cantidad)
{
    if ($cantidad === null) {
        return '';
    }
    if ($cantidad <= 0) {
        return '<span class="stock agotado">Agotado</span>';
    }
    if ($cantidad <= 5) {
        return '<span class="stock pocos">'
            . ($cantidad == 1 ? 'Última unidad' : 'Quedan ' . numero($cantidad)) . '</span>';
    }
    return '<span class="stock">En existencias</span>';
}

function precio(array $producto)
{
    $oferta = $producto['oferta'];
    if ($oferta === null) {
        return '<span class="precio">' . euros($producto['price']) . '</span>';
    }
    return '<span class="precio rebajado">' . euros($oferta['final']) . '</span>'
        . ($oferta['final'] < $producto['price'] ? ' <s>' . euros($producto['price']) . '</s>' : '');
}

function insignia(array $producto)
{
    $oferta = $producto['oferta'];
    if ($oferta === null || $producto['price'] <= 0 || $oferta['final'] >= $producto['price']) {
        return '';
    }
    $rebaja = 100 - 100 * $oferta['final'] / $producto['price'];
    return '<span class="insignia">−' . numero($rebaja) . ' %</span>';
}

function tarjeta(array $p)
{
    $ruta = fotoProducto($p['id_image'], array('-home_default', '-large_default', ''));
    return '<li class="tarjeta"><a href="' . enlace(array('producto' => $p['id_product'])) . '">'
        . '<span class="marco">' . foto($ruta, $p['name']) . insignia($p) . '</span>'
        . '<span class="marca">' . h($p['marca']) . '</span>'
        . '<span class="nombre">' . h($p['name']) . '</span>'
        . '<span class="corta">' . prosa($p['description_short']) . '</span></a>'
        . '<span class="pie"><span>' . precio($p) . '</span>' . existencias($p['cantidad']) . '</span>'
        . ($p['variantes'] > 0 ? '<span class="variantes">' . numero($p['variantes']) . ' variantes</span>' : '')
        . '</li>';
}

function parrilla(array $productos)
{
    return '<ul class="parrilla">' . implode('', array_map('tarjeta', $productos)) . '</ul>';
}

/** Rows of a table from lists of cells that are HTML already. */
function tabla(array $cabecera, array $filas)
{
    $html = '<div class="tabla"><table><thead><tr>';
    foreach ($cabecera as $titulo) {
        $html .= '<th scope="col">' . h($titulo) . '</th>';
    }
    $html .= '</tr></thead><tbody>';
    foreach ($filas as $fila) {
        $html .= '<tr><td>' . implode('</td><td>', $fila) . '</td></tr>';
    }
    return $html . '</tbody></table></div>';
}

/** From the top family down to this one. */
function migas(array $categorias, $idCategoria, $ultimaEnlazada)
{
    $porId = array_column($categorias, null, 'id_category');
    $camino = array();
    for ($id = $idCategoria; isset($porId[$id]); $id = $porId[$id]['id_parent']) {
        array_unshift($camino, $porId[$id]);
    }
    $html = '<nav class="migas" aria-label="Dónde estás"><a href="' . enlace() . '">Inicio</a>';
    foreach ($camino as $i => $categoria) {
        $ultima = $i === count($camino) - 1 && !$ultimaEnlazada;
        $html .= ' <span aria-hidden="true">›</span> ' . ($ultima ? h($categoria['name'])
            : '<a href="' . enlace(array('categoria' => $categoria['id_category'])) . '">'
                . h($categoria['name']) . '</a>');
    }
    return $html . '</nav>';
}
