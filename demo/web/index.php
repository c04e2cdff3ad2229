<?php
/** The sample shop's page: shows what its tables hold. */
require __DIR__ . '/config/settings.inc.php';
require __DIR__ . '/escaparate/tienda.php';
require __DIR__ . '/escaparate/piezas.php';
require __DIR__ . '/escaparate/vistas.php';

function pedido($nombre)
{
    return isset($_GET[$nombre]) && is_string($_GET[$nombre]) ? trim($_GET[$nombre]) : '';
}

function cuerpo(Tienda $tienda, array $categorias)
{
    if (pedido('producto') !== '') {
        $producto = $tienda->producto((int) pedido('producto'));
        return $producto ? vistaProducto($tienda, $categorias, $producto) : vistaNada();
    }
    if (pedido('categoria') !== '') {
        foreach ($categorias as $categoria) {
            if ((int) $categoria['id_category'] === (int) pedido('categoria')) {
                return vistaCategoria($tienda, $categorias, $categoria);
            }
        }
        return vistaNada();
    }
    if (pedido('etiqueta') !== '') {
        $nombre = $tienda->nombreEtiqueta((int) pedido('etiqueta'));
        return $nombre === null ? vistaNada()
            : vistaLista('Etiqueta «' . $nombre . '»', $tienda->deEtiqueta((int) pedido('etiqueta')));
    }
    if (pedido('busca') !== '') {
        return vistaLista('Resultados de «' . pedido('busca') . '»', $tienda->busca(pedido('busca')));
    }
    switch (pedido('vista')) {
        case 'trastienda':
            return vistaTrastienda($tienda);
        case 'ofertas':
            return vistaLista('Ofertas de hoy', $tienda->enOferta());
        case 'favoritos':
            return vistaLista('Nuestros favoritos', $tienda->favoritos());
        default:
            return vistaPortada($tienda, $categorias);
    }
}

header('Content-Type: text/html; charset=utf-8');
$lang = max(1, (int) pedido('idioma'));
$tienda = new Tienda($lang);
$categorias = $tienda->categorias();
$cuerpo = cuerpo($tienda, $categorias);
echo pagina($tienda, $categorias, $lang, $cuerpo);
