<?php
/**
 * Stands for the shop's own index of searches: "completo" begins anew and each call marks the next
 * products as indexed.
 */
require __DIR__ . '/config/settings.inc.php';
require __DIR__ . '/escaparate/tienda.php';

const PRODUCTOS_POR_VEZ = 50;

$tienda = new Tienda(1);
if (isset($_GET['modo']) && $_GET['modo'] === 'completo') {
    $tienda->olvidaIndices();
}
header('Content-Type: text/plain; charset=utf-8');
echo 'Indexados: ', $tienda->indexa(PRODUCTOS_POR_VEZ), "\n";
