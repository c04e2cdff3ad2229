<?php
/*
 * Makes the sizes of the pictures that the client has just uploaded.
 *
 *   dimensiona.php?fichero=imgfam.txt|imgart.txt&sufijofoto=_default
 *
 * A line of imgfam.txt is the picture of a category, "img/c/12.jpg;". A line of imgart.txt is two
 * paths: in its first 50 characters the place where the picture belongs, "img/p/1/2/3/123.jpg", and
 * behind them where it was uploaded, "img/p/123.jpg;". The list is used up. The answer names the
 * pictures that could not be made. Written for PHP 5.4 to 8.x.
 */

Prepara();
ResponderLista(Parametro('fichero'), Parametro('sufijofoto'));

function Parametro($nombre)
{
    return isset($_GET[$nombre]) && is_string($_GET[$nombre]) ? $_GET[$nombre] : '';
}

function ResponderLista($nombre, $sufijo)
{
    $usos = array('imgfam.txt' => 'categories', 'imgart.txt' => 'products');
    if (!isset($usos[$nombre]) || !preg_match('/^[A-Za-z0-9_-]{0,64}$/D', $sufijo)) {
        echo "Lista o sufijo no admitidos\r\n";
        return;
    }
    $lista = Toma($nombre);
    if ($lista === false) {
        echo "No se puede retirar $nombre de su carpeta\r\n";
    }
    if (!$lista) {
        return;
    }
    $memoria = PideMemoria();
    $tamanos = Tamanos($usos[$nombre], $sufijo);
    while (($entrada = stream_get_line($lista, 4096, ';')) !== false) {
        $entrada = trim($entrada, "\r\n");
        if ($entrada !== '') {
            TrataEntrada($usos[$nombre], $entrada, $tamanos, $memoria);
        }
    }
}

function TrataEntrada($uso, $entrada, $tamanos, $memoria)
{
    $rutas = $uso === 'products' ? RutasDeArticulo($entrada) : RutasDeFamilia($entrada);
    if ($rutas === false) {
        echo "Entrada no admitida\r\n";
        return;
    }
    list($subida, $sitio) = $rutas;
    if (!TrataFoto($subida, $sitio, $tamanos, $memoria)) {
        echo "No se ha podido tratar $subida\r\n";
    }
}

function RutasDeFamilia($entrada)
{
    $foto = trim($entrada);
    return preg_match('~^img/c/[0-9]{1,10}\.jpg$~D', $foto) ? array($foto, $foto) : false;
}

/** Where the picture was uploaded and where it belongs, or false. The place is made out of the
 *  number when its field doesn't give one: a long path comes without its end. */
function RutasDeArticulo($entrada)
{
    $subida = trim(strlen($entrada) > 50 ? substr($entrada, 50) : $entrada);
    if (!preg_match('~^img/p/([0-9]{1,20})\.jpg$~D', $subida, $partes)) {
        return false;
    }
    $sitio = trim(substr($entrada, 0, 50));
    if (strlen($entrada) <= 50 || !preg_match('~^img/p/(?:[0-9]/)*' . $partes[1] . '\.jpg$~D', $sitio)) {
        $sitio = 'img/p/' . implode('/', str_split($partes[1])) . '/' . $partes[1] . '.jpg';
    }
    return array($subida, $sitio);
}

/** Brings one picture to its place, as a JPEG, and makes its sizes beside it. */
function TrataFoto($subida, $sitio, $tamanos, $memoria)
{
    $origen = CarpetaPropia(dirname($subida));
    $tipo = 0;
    $imagen = $origen === false ? false : Abre($origen . '/' . basename($subida), $tipo, $memoria);
    // The folder is made only now: a picture that never came leaves no trace.
    $destino = $imagen === false || $subida === $sitio ? $origen : CreaCarpeta(dirname($sitio));
    if ($imagen === false || $destino === false) {
        return false;
    }
    $origen .= '/' . basename($subida);
    $destino .= '/' . basename($sitio);
    if (is_link($destino) || !Coloca($imagen, $tipo, $origen, $destino)) {
        return false;
    }
    $ancho = imagesx($imagen);
    $alto = imagesy($imagen);
    // From here on a smaller picture does: each of the sizes would go through all of a camera's pixels.
    $imagen = Reduce($imagen, 2 * MayorLado($tamanos));
    $giro = $tipo === IMAGETYPE_JPEG ? Giro($destino) : 0;
    if ($giro !== 0) {
        $imagen = imagerotate($imagen, $giro, 0xFFFFFF);
    }
    if ($giro === 90 || $giro === 270) {
        list($ancho, $alto) = array($alto, $ancho);
    }
    return HaceTamanos($imagen, $ancho, $alto, $tamanos, substr($destino, 0, -strlen('.jpg')));
}

/** Makes the sizes from the largest to the smallest, each from the smallest picture so far that has
 *  at least twice its sides: going through all of the first one for each takes most of the time. The
 *  difference is about what a JPEG of this quality loses; with less than twice it would show. */
function HaceTamanos($imagen, $ancho, $alto, $tamanos, $base)
{
    $medidas = array();
    foreach ($tamanos as $nombre => $lados) {
        $medidas[$nombre] = Medidas($ancho, $alto, $lados[0], $lados[1]);
    }
    arsort($medidas);
    $fuentes = array($imagen);
    $bien = true;
    foreach ($medidas as $nombre => $medida) {
        while (isset($fuentes[1]) && EsDoble($fuentes[1], $medida)) {
            array_shift($fuentes);
        }
        $foto = Estira($fuentes[0], $medida[0], $medida[1]);
        if ($medida[0] < imagesx($imagen)) {
            $fuentes[] = $foto;
        }
        $lienzo = EnBlanco($foto, $tamanos[$nombre][0], $tamanos[$nombre][1]);
        $bien = GuardaJpeg($lienzo, $base . '-' . $nombre . '.jpg') && $bien;
    }
    return $bien;
}

function EsDoble($imagen, $medida)
{
    return imagesx($imagen) >= 2 * $medida[0] && imagesy($imagen) >= 2 * $medida[1];
}

/** The picture of a file, or false when it is none or would not fit in memory. */
function Abre($ruta, &$tipo, $memoria)
{
    // By number: older versions have no names for the last two, BMP and WebP.
    $lectores = array(1 => 'imagecreatefromgif', 2 => 'imagecreatefromjpeg', 3 => 'imagecreatefrompng',
        6 => 'imagecreatefrombmp', 18 => 'imagecreatefromwebp');
    $datos = is_file($ruta) && !is_link($ruta) ? @getimagesize($ruta) : false;
    if ($datos === false || !isset($lectores[$datos[2]]) || !function_exists($lectores[$datos[2]])) {
        return false;
    }
    list($ancho, $alto, $tipo) = $datos;
    // Four bytes a pixel and something over, twice where the picture must be laid on white.
    $porPixel = $tipo === IMAGETYPE_JPEG ? 5 : 9;
    if ($ancho < 1 || $alto < 1 || $ancho * $alto > ($memoria - memory_get_usage()) / $porPixel) {
        return false;
    }
    $lector = $lectores[$tipo];
    return @$lector($ruta);
}

/** Bytes that one picture may take. */
function PideMemoria()
{
    $deseada = 512 * 1048576;
    if (function_exists('ini_set') && Limite() < $deseada) {
        @ini_set('memory_limit', '512M');
    }
    return min(Limite(), $deseada) - 32 * 1048576;
}

function Limite()
{
    $texto = trim((string) ini_get('memory_limit'));
    $unidades = array('k' => 1024, 'm' => 1048576, 'g' => 1073741824);
    $letra = strtolower(substr($texto, -1));
    // Without a limit, or where it can't be learnt, any number above what is asked for.
    return (int) $texto > 0 ? (int) $texto * (isset($unidades[$letra]) ? $unidades[$letra] : 1) : 2147483647;
}

/** Puts the picture itself in its place: as it came if it is a JPEG, otherwise made into one. */
function Coloca(&$imagen, $tipo, $origen, $destino)
{
    if ($tipo === IMAGETYPE_JPEG) {
        return $origen === $destino || @rename($origen, $destino) || @copy($origen, $destino);
    }
    $imagen = Estira($imagen, imagesx($imagen), imagesy($imagen));
    return GuardaJpeg($imagen, $destino) && ($origen === $destino || @unlink($origen));
}

function MayorLado($tamanos)
{
    $lado = 1;
    foreach ($tamanos as $lados) {
        $lado = max($lado, $lados[0], $lados[1]);
    }
    return $lado;
}

function Reduce($imagen, $lado)
{
    $escala = $lado / max(imagesx($imagen), imagesy($imagen));
    if ($escala >= 1) {
        return $imagen;
    }
    return Estira($imagen, max(1, (int) round(imagesx($imagen) * $escala)),
        max(1, (int) round(imagesy($imagen) * $escala)));
}

/** Degrees, counted against the clock, that turn the camera's picture upright. */
function Giro($ruta)
{
    $giros = array(3 => 180, 6 => 270, 8 => 90);
    $datos = function_exists('exif_read_data') ? @exif_read_data($ruta) : false;
    $orientacion = is_array($datos) && isset($datos['Orientation']) ? $datos['Orientation'] : 1;
    return is_int($orientacion) && isset($giros[$orientacion]) ? $giros[$orientacion] : 0;
}

/** Width and height of a picture in the proportion `$ancho` to `$alto`, as large as it goes in `$x` by
 *  `$y`. */
function Medidas($ancho, $alto, $x, $y)
{
    $escala = min($x / $ancho, $y / $alto);
    return array(max(1, min($x, (int) round($ancho * $escala))),
        max(1, min($y, (int) round($alto * $escala))));
}

/** The picture in other measures. What is transparent becomes white. */
function Estira($imagen, $w, $h)
{
    $lienzo = imagecreatetruecolor($w, $h);
    imagefilledrectangle($lienzo, 0, 0, $w, $h, 0xFFFFFF);
    imagecopyresampled($lienzo, $imagen, 0, 0, 0, 0, $w, $h, imagesx($imagen), imagesy($imagen));
    return $lienzo;
}

/** A white ground of exactly `$x` by `$y` with the picture in its middle. */
function EnBlanco($imagen, $x, $y)
{
    $w = imagesx($imagen);
    $h = imagesy($imagen);
    if ($w === $x && $h === $y) {
        return $imagen;
    }
    $lienzo = imagecreatetruecolor($x, $y);
    imagefilledrectangle($lienzo, 0, 0, $x, $y, 0xFFFFFF);
    imagecopy($lienzo, $imagen, (int) (($x - $w) / 2), (int) (($y - $h) / 2), 0, 0, $w, $h);
    return $lienzo;
}

/** Written beside its name and then moved: a visitor never gets half a picture, and a symbolic link
 *  of that name is replaced, not followed. */
function GuardaJpeg($imagen, $ruta)
{
    $temporal = $ruta . '.' . md5(uniqid(mt_rand(), true)) . '.tmp';
    if (@imagejpeg($imagen, $temporal, 90) && @rename($temporal, $ruta)) {
        return true;
    }
    @unlink($temporal);
    return false;
}

/** The sizes to make, name => (width, height): those of the shop's own table whose names end in the
 *  suffix, or those of a fresh installation when that table is out of reach. */
function Tamanos($uso, $sufijo)
{
    $ajustes = Ajustes();
    $todos = TamanosDeLaTienda($ajustes, $uso);
    if ($todos === false) {
        $todos = TamanosDeSerie($uso, Ajuste($ajustes, '_PS_VERSION_'));
    }
    $tamanos = array();
    foreach ($todos as $nombre => $lados) {
        // The name becomes part of a file's name.
        $vale = preg_match('/^[A-Za-z0-9_-]+$/D', $nombre) && min($lados) >= 1 && max($lados) <= 4000;
        if ($vale && preg_match('/' . preg_quote($sufijo, '/') . '$/D', $nombre)) {
            $tamanos[$nombre] = $lados;
        }
    }
    return $tamanos;
}

function TamanosDeLaTienda($ajustes, $uso)
{
    $mysql = ConectaATienda($ajustes);
    $tabla = '`' . Ajuste($ajustes, '_DB_PREFIX_') . 'image_type`';
    $filas = $mysql ? mysqli_query($mysql, "SELECT name, width, height FROM $tabla WHERE $uso = 1") : false;
    if (!$filas) {
        return false;
    }
    $tamanos = array();
    while ($fila = mysqli_fetch_row($filas)) {
        $tamanos[$fila[0]] = array((int) $fila[1], (int) $fila[2]);
    }
    return $tamanos;
}

function TamanosDeSerie($uso, $version)
{
    $antigua = $version !== '' && version_compare($version, '1.6', '<');
    $tamanos = $antigua
        ? array('small' => array(45, 45), 'medium' => array(58, 58), 'home' => array(124, 124),
            'large' => array(264, 264), 'thickbox' => array(600, 600), 'category' => array(500, 150))
        : array('cart' => array(80, 80), 'small' => array(98, 98), 'medium' => array(125, 125),
            'home' => array(250, 250), 'large' => array(458, 458), 'thickbox' => array(800, 800),
            'category' => array(870, 217));
    $deFamilias = $antigua ? array('small', 'medium', 'large', 'category') : array('medium', 'category');
    $elegidos = array();
    foreach ($tamanos as $nombre => $lados) {
        if ($uso === 'products' ? $nombre !== 'category' : in_array($nombre, $deFamilias, true)) {
            $elegidos[$nombre . '_default'] = $lados;
        }
    }
    return $elegidos;
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

/** Takes a file of the client's away from the shop's folder and opens it, so that a second
 *  request can't find it. Null when there is none, false when it can't be taken. */
function Toma($nombre)
{
    $ruta = __DIR__ . '/' . $nombre;
    clearstatcache();
    if (is_link($ruta) || !is_file($ruta)) {
        return null;
    }
    $azar = function_exists('openssl_random_pseudo_bytes') ? openssl_random_pseudo_bytes(16) : '';
    $tomado = $ruta . '.' . md5($azar . uniqid(mt_rand(), true));
    if (!is_readable($ruta) || !@rename($ruta, $tomado)) {
        clearstatcache();
        return file_exists($ruta) ? false : null;
    }
    $fichero = @fopen($tomado, 'rb');
    // The open file goes on without its name, and nothing stays even if the script dies.
    // Windows doesn't allow that: there it goes at the end.
    if (!@unlink($tomado)) {
        register_shutdown_function(function () use ($fichero, $tomado) {
            @fclose($fichero);
            @unlink($tomado);
        });
    }
    return $fichero;
}

/** The constants of the shop's configuration, by name; empty when there is none. The text is
 *  read and never executed, and what stands in comments doesn't count. */
function Ajustes()
{
    $texto = (string) @file_get_contents(__DIR__ . '/config/settings.inc.php', false, null, 0, 1048576);
    $cadena = '\'(?:[^\'\\\\]++|\\\\.)*+\'|"(?:[^"\\\\]++|\\\\.)*+"';
    $define = '\bdefine\s*\(\s*(?:\'(\w+)\'|"(\w+)")\s*,\s*(' . $cadena . ')';
    $patron = '~/\*.*?\*/|(?://|\#)[^\r\n]*|' . $define . '|' . $cadena . '~s';
    preg_match_all($patron, $texto, $hallados, PREG_SET_ORDER);
    $ajustes = array();
    foreach ($hallados as $hallado) {
        $nombre = isset($hallado[3]) ? $hallado[1] . $hallado[2] : '';
        if ($nombre !== '' && !isset($ajustes[$nombre])) {
            $ajustes[$nombre] = preg_replace('/\\\\([\\\\\'"$])/', '$1', substr($hallado[3], 1, -1));
        }
    }
    return $ajustes;
}

function Ajuste($ajustes, $nombre)
{
    return isset($ajustes[$nombre]) ? $ajustes[$nombre] : '';
}

/** The shop's database by the shop's own configuration, or false. */
function ConectaATienda($ajustes)
{
    if (!isset($ajustes['_DB_NAME_']) || !preg_match('/^\w*$/D', Ajuste($ajustes, '_DB_PREFIX_'))) {
        return false;
    }
    return Conecta(Ajuste($ajustes, '_DB_SERVER_'), $ajustes['_DB_NAME_'],
        Ajuste($ajustes, '_DB_USER_'), Ajuste($ajustes, '_DB_PASSWD_'));
}

/** Opens the shop's database, or false. `$servidor` is host, host:port or host:/path/of/socket;
 *  when it is empty the default of this server's PHP is taken. */
function Conecta($servidor, $base, $usuario, $clave)
{
    if (!function_exists('mysqli_init')) {
        return false;
    }
    mysqli_report(MYSQLI_REPORT_OFF);
    $partes = array();
    if (!preg_match('/^(\[[^\]]+\]|[^:]*)(?::(\d+)|:(\/.*))?$/', $servidor, $partes)) {
        $partes = array('', $servidor);
    }
    $maquina = trim($partes[1], '[]');
    $puerto = isset($partes[2]) && $partes[2] !== '' ? (int) $partes[2] : null;
    $enchufe = isset($partes[3]) ? $partes[3] : null;
    $mysql = mysqli_init();
    mysqli_options($mysql, MYSQLI_OPT_CONNECT_TIMEOUT, 20);
    mysqli_options($mysql, MYSQLI_OPT_LOCAL_INFILE, 0);
    $maquina = $maquina === '' ? null : $maquina;
    if (!@mysqli_real_connect($mysql, $maquina, $usuario, $clave, $base, $puerto, $enchufe)) {
        return false;
    }
    // The server's "latin1" is Windows-1252, with "euro" and the five undefined bytes in their places.
    mysqli_set_charset($mysql, 'latin1');
    mysqli_query($mysql, "SET SESSION sql_mode = ''");
    return $mysql;
}

/** Makes a folder below img/p, with those on its way. Its real path, or false. */
function CreaCarpeta($ruta)
{
    $camino = CarpetaPropia('img/p');
    if ($camino === false) {
        return false;
    }
    foreach (explode('/', substr($ruta, strlen('img/p/'))) as $cifras) {
        $camino .= '/' . $cifras;
        // The second look is for another request that makes the same one.
        if (is_link($camino) || (!is_dir($camino) && !@mkdir($camino) && !is_dir($camino))) {
            return false;
        }
    }
    return CarpetaPropia($ruta);
}

/** The real path of a folder of the shop's, or false: one that is reached by a symbolic link is
 *  none, wherever it leads. */
function CarpetaPropia($ruta)
{
    $real = realpath(__DIR__ . '/' . $ruta);
    $esperada = str_replace('\\', '/', realpath(__DIR__) . '/' . $ruta);
    return $real !== false && is_dir($real) && str_replace('\\', '/', $real) === $esperada ? $real : false;
}
