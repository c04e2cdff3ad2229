<?php
/** The views: each gives the title of the page and the HTML of its body. */

function vistaNada()
{
    http_response_code(404);
    return array('No está', '<h1>No está</h1><p>Esta página no tiene nada que enseñar. '
        . '<a href="' . enlace() . '">Volver al inicio</a>.</p>');
}

function vistaLista($titulo, array $productos)
{
    return array($titulo, '<h1>' . h($titulo) . '</h1>'
        . ($productos ? '<p class="cuantos">' . numero(count($productos)) . ' productos</p>'
            . parrilla($productos) : '<p>No hay ningún producto.</p>'));
}

function vistaPortada(Tienda $tienda, array $categorias)
{
    if (!$categorias) {
        return array('Inicio', '<h1>La tienda está vacía</h1><p>Todavía no ha llegado ningún catálogo. '
            . 'Lanza la sincronización y vuelve a cargar esta página.</p>');
    }
    $html = '<section class="portada"><h1>Menaje, ferretería y jardín</h1>'
        . '<p>Del alfar y la forja de Valdeolmillo a tu casa.</p></section><ul class="familias">';
    foreach ($categorias as $c) {
        if ((int) $c['id_parent'] === 2) {
            $ruta = fichero('img/c/', $c['id_category'], array('-medium_default', ''));
            $html .= '<li><a href="' . enlace(array('categoria' => $c['id_category'])) . '">'
                . foto($ruta, $c['name']) . '<span>' . h($c['name'])
                . '<small>' . numero($c['cuantos']) . ' productos</small></span></a></li>';
        }
    }
    $html .= '</ul>';
    return array('Inicio', $html . muestra('Ofertas de hoy', 'ofertas', 4, $tienda->enOferta())
        . muestra('Nuestros favoritos', 'favoritos', 8, $tienda->favoritos()));
}

/** The first products of a list, and the way to the rest. */
function muestra($titulo, $vista, $cuantos, array $productos)
{
    if (!$productos) {
        return '';
    }
    $resto = count($productos) > $cuantos ? ' <a class="mas" href="' . enlace(array('vista' => $vista))
        . '">Ver los ' . numero(count($productos)) . '</a>' : '';
    return '<h2>' . h($titulo) . $resto . '</h2>' . parrilla(array_slice($productos, 0, $cuantos));
}

function vistaCategoria(Tienda $tienda, array $categorias, array $categoria)
{
    $productos = $tienda->deCategoria($categoria['nleft'], $categoria['nright']);
    $html = migas($categorias, $categoria['id_category'], false) . '<h1>' . h($categoria['name']) . '</h1>';
    if (trim((string) $categoria['description']) !== '') {
        $html .= '<p class="entrada">' . prosa($categoria['description']) . '</p>';
    }
    $hijas = array_filter($categorias, function ($c) use ($categoria) {
        return $c['id_parent'] === $categoria['id_category'];
    });
    if ($hijas) {
        $html .= '<ul class="fichas">';
        foreach ($hijas as $hija) {
            $html .= '<li><a href="' . enlace(array('categoria' => $hija['id_category'])) . '">'
                . h($hija['name']) . ' <small>' . numero($hija['cuantos']) . '</small></a></li>';
        }
        $html .= '</ul>';
    }
    $html .= $productos ? parrilla($productos) : '<p>Esta familia no tiene productos por ahora.</p>';
    return array($categoria['name'], $html);
}

function vistaProducto(Tienda $tienda, array $categorias, array $p)
{
    $html = migas($categorias, $p['id_category_default'], true) . '<article class="producto">'
        . galeria($tienda->imagenes($p['id_product']), $p['name']) . '<div class="ficha">';
    if ($p['marca'] !== null) {
        $html .= '<p class="marca">' . h($p['marca']) . '</p>';
    }
    $html .= '<h1>' . h($p['name']) . '</h1><p class="entrada">' . prosa($p['description_short']) . '</p>'
        . '<p class="importe">' . precio($p) . ' ' . insignia($p) . ' <small>IVA no incluido</small></p><p>'
        . existencias($p['cantidad'])
        . ($p['cantidad'] > 0 && $p['available_now'] ? ' <small>' . h($p['available_now']) . '</small>' : '');
    if ($p['minimal_quantity'] > 1) {
        $html .= ' <span class="minimo">Pedido mínimo: ' . numero($p['minimal_quantity']) . ' unidades</span>';
    }
    $html .= '</p><p>' . prosa($p['description']) . '</p>' . bloqueEtiquetas($tienda, $p)
        . bloqueAdjuntos($tienda, $p) . '</div></article>' . bloqueVariantes($tienda, $p)
        . bloqueTarifas($p) . bloqueDatos($p);
    return array($p['name'], $html);
}

function galeria(array $imagenes, $nombre)
{
    $rutas = array();
    foreach ($imagenes as $imagen) {
        $ruta = fotoProducto($imagen['id_image'], array('-thickbox_default', '-large_default', ''));
        if ($ruta !== null) {
            $rutas[] = foto($ruta, (string) $imagen['legend']);
        }
    }
    if (!$rutas) {
        $rutas[] = foto(null, $nombre);
    }
    return '<div class="galeria"><div class="grande">' . array_shift($rutas) . '</div>'
        . ($rutas ? '<div class="miniaturas">' . implode('', $rutas) . '</div>' : '') . '</div>';
}

function bloqueEtiquetas(Tienda $tienda, array $p)
{
    $html = '';
    foreach ($tienda->etiquetas($p['id_product']) as $etiqueta) {
        $html .= '<li><a href="' . enlace(array('etiqueta' => $etiqueta['id_tag'])) . '">'
            . h($etiqueta['name']) . '</a></li>';
    }
    return $html === '' ? '' : '<ul class="fichas" aria-label="Etiquetas">' . $html . '</ul>';
}

function bloqueAdjuntos(Tienda $tienda, array $p)
{
    $html = '';
    foreach ($tienda->adjuntos($p['id_product']) as $adjunto) {
        $html .= '<li><a href="' . h('download/' . rawurlencode($adjunto['file'])) . '">'
            . h($adjunto['description'] ?: $adjunto['file_name']) . '</a></li>';
    }
    return $html === '' ? '' : '<h2>Documentos</h2><ul class="documentos">' . $html . '</ul>';
}

function bloqueVariantes(Tienda $tienda, array $p)
{
    $filas = array();
    foreach ($tienda->combinaciones($p['id_product']) as $c) {
        $filas[] = array(h($c['nombre']) . ($c['default_on'] ? ' <small>de serie</small>' : ''),
            euros($p['price'] + $c['price']), existencias($c['cantidad']));
    }
    return $filas ? '<h2>Variantes</h2>' . tabla(array('Variante', 'Precio', 'Existencias'), $filas) : '';
}

function bloqueTarifas(array $p)
{
    $filas = array();
    foreach ($p['especiales'] as $e) {
        $grupo = (int) $e['id_group'];
        if ($grupo < Tienda::GRUPO_TARIFA_1) {
            continue;
        }
        $rebaja = '';
        if ($e['reduction'] > 0) {
            $rebaja = $e['reduction_type'] === 'percentage'
                ? '−' . rtrim(rtrim(numero(100 * $e['reduction'], 2), '0'), ',') . ' %'
                : '−' . euros($e['reduction']);
        }
        $filas[] = array('Tarifa ' . ($grupo - Tienda::GRUPO_TARIFA_1 + 1) . ($e['fechas'] ? ', oferta' : ''),
            euros($e['price']), $rebaja, euros($e['final']),
            $e['fechas'] ? fecha($e['from']) . ' a ' . fecha($e['to']) : 'siempre');
    }
    return $filas ? '<h2>Tarifas y ofertas</h2>'
        . tabla(array('Tarifa', 'Precio', 'Rebaja', 'Queda en', 'Vigencia'), $filas) : '';
}

function bloqueDatos(array $p)
{
    $datos = array('Referencia' => $p['reference'], 'Código alternativo' => $p['supplier_reference'],
        'Peso' => numero($p['weight'], 2) . ' kg', 'Regla de impuestos' => $p['id_tax_rules_group'],
        'Actualizado' => implode('/', array_reverse(explode('-', substr($p['date_upd'], 0, 10)))),
        'Dirección' => $p['link_rewrite'], 'Título para buscadores' => $p['meta_title'],
        'Descripción para buscadores' => $p['meta_description'], 'Palabras clave' => $p['meta_keywords']);
    $html = '<details class="datos"><summary>Datos de la ficha</summary><dl>';
    foreach ($datos as $nombre => $valor) {
        if (trim((string) $valor) !== '') {
            $html .= '<dt>' . h($nombre) . '</dt><dd>' . h($valor) . '</dd>';
        }
    }
    return $html . '</dl></details>';
}

function vistaTrastienda(Tienda $tienda)
{
    $cuenta = array();
    foreach ($tienda->recuento() as $nombre => $filas) {
        $cuenta[] = array(h($nombre), numero($filas));
    }
    $html = '<h1>Trastienda</h1><p class="entrada">Lo que hay ahora en las tablas de la tienda.</p>'
        . tabla(array('Tabla', 'Filas'), $cuenta);
    $marcas = array();
    foreach ($tienda->marcas() as $m) {
        $marcas[] = array(h($m['name']), numero($m['cuantos']));
    }
    $vales = array();
    foreach ($tienda->vales() as $v) {
        $vales[] = array('<code>' . h($v['code']) . '</code>', h($v['description']),
            $v['reduction_percent'] > 0 ? numero($v['reduction_percent']) . ' %' : euros($v['reduction_amount']),
            numero($v['quantity']), fecha($v['date_to']));
    }
    $atributos = array();
    foreach ($tienda->atributos() as $a) {
        $atributos[] = array(h($a['name']), h($a['valores']));
    }
    foreach (array(array('Fabricantes', array('Fabricante', 'Productos'), $marcas),
        array('Vales de descuento', array('Código', 'Descripción', 'Descuento', 'Usos', 'Hasta'), $vales),
        array('Atributos', array('Grupo', 'Valores'), $atributos)) as $bloque) {
        if ($bloque[2]) {
            $html .= '<h2>' . h($bloque[0]) . '</h2>' . tabla($bloque[1], $bloque[2]);
        }
    }
    $nube = '';
    foreach ($tienda->nube() as $t) {
        $nube .= '<li><a href="' . enlace(array('etiqueta' => $t['id_tag'])) . '">' . h($t['name'])
            . ' <small>' . numero($t['cuantos']) . '</small></a></li>';
    }
    return array('Trastienda', $html . ($nube === '' ? '' : '<h2>Etiquetas</h2><ul class="fichas">' . $nube . '</ul>'));
}

/** The families below a category, as nested lists. */
function arbol(array $porPadre, $padre)
{
    if (!isset($porPadre[$padre])) {
        return '';
    }
    $html = '<ul>';
    foreach ($porPadre[$padre] as $c) {
        $marca = (int) $c['id_category'] === (int) pedido('categoria') ? ' aria-current="page"' : '';
        $html .= '<li><a href="' . enlace(array('categoria' => $c['id_category'])) . '"' . $marca . '><span>'
            . h($c['name']) . '</span><small>' . numero($c['cuantos']) . '</small></a>'
            . arbol($porPadre, $c['id_category']) . '</li>';
    }
    return $html . '</ul>';
}

function pagina(Tienda $tienda, array $categorias, $lang, array $vista)
{
    $idiomas = '';
    $iso = 'es';
    foreach ($tienda->idiomas() as $idioma) {
        $este = (int) $idioma['id_lang'] === $lang;
        $iso = $este ? $idioma['iso_code'] : $iso;
        $destino = array_merge($_GET, array('idioma' => (int) $idioma['id_lang']));
        $idiomas .= '<a href="' . enlace(array_filter($destino, 'is_scalar')) . '"'
            . ($este ? ' aria-current="true"' : '') . '>' . h(ucfirst($idioma['iso_code'])) . '</a>';
    }
    $nombre = h($tienda->nombre());
    $titulo = h($vista[0]) . ' · ' . $nombre;
    $inicio = enlace();
    $trastienda = enlace(array('vista' => 'trastienda'));
    $porPadre = array();
    foreach ($categorias as $categoria) {
        $porPadre[$categoria['id_parent']][] = $categoria;
    }
    $arbol = arbol($porPadre, 2);
    $busca = h(pedido('busca'));
    $version = h($tienda->version());
    $langOculto = $lang > 1 ? '<input type="hidden" name="idioma" value="' . $lang . '">' : '';
    return <<<HTML
<!DOCTYPE html>
<html lang="es">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>$titulo</title>
<link rel="icon" href="data:,">
<link rel="stylesheet" href="escaparate/estilo.css">
</head>
<body>
<header class="cabecera">
<a class="casa" href="$inicio">$nombre</a>
<form role="search" action="./"><input type="search" name="busca" value="$busca" placeholder="Buscar un producto" aria-label="Buscar">$langOculto</form>
<nav class="idiomas" aria-label="Idioma de los textos">$idiomas</nav>
</header>
<div class="cuerpo">
<nav class="arbol" aria-label="Familias"><details open><summary>Familias</summary>$arbol</details></nav>
<main lang="$iso">$vista[1]</main>
</div>
<footer class="pie-pagina"><p>Tienda de muestra, generación $version. Los precios no incluyen el IVA.
<a href="$trastienda">Ver la trastienda</a></p></footer>
<script>if (matchMedia('(max-width: 800px)').matches) document.querySelector('.arbol details').open = false</script>
</body>
</html>

HTML;
}
