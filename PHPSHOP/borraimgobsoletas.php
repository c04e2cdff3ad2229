<?php
/*
 * Deletes the article pictures that the shop's database no longer knows.
 *
 *   borraimgobsoletas.php?cienmil=n     n from 1 to 9
 *
 * Block n are the image numbers from (n-1)*100,000 up to n*100,000-1; block 9 has no upper end. A
 * block is done when the answer is "CONCLUIDO". Any other answer, or none, makes the client ask
 * again, so each request goes on where the last one was cut off.
 * Written for PHP 5.4 to 8.x.
 */

// Read before Prepara lifts it: what ends a host's requests is often told to PHP, but enforced by
// others.
$limite = (int) ini_get('max_execution_time');
$bloque = isset($_GET['cienmil']) && is_string($_GET['cienmil']) ? $_GET['cienmil'] : '';
Prepara();
ResponderBloque($bloque, $limite > 0 ? min(20, 0.6 * $limite) : 20);

/** `$segundos`: how long this request may work before it leaves the rest to the next one. */
function ResponderBloque($bloque, $segundos)
{
    if (!preg_match('/^[1-9]$/D', $bloque)) {
        echo "Bloque no admitido\r\n";
        return;
    }
    // PHP keeps for two minutes where a path leads.
    clearstatcache(true);
    $raiz = CarpetaPropia('img/p');
    // A folder that isn't there won't be at the next request either.
    if ($raiz === false) {
        echo "La tienda no tiene una carpeta img/p propia; no se borra nada\r\nCONCLUIDO\r\n";
        return;
    }
    $imagenes = new Imagenes(Ajustes());
    if (!$imagenes->Responde()) {
        // The client asks again at once, for as long as this lasts.
        usleep(1000000);
        echo "No se puede consultar la tabla de im\xE1genes; no se borra nada\r\n";
        return;
    }
    // A table without a single row proves nothing: it may well be another shop's.
    if ($imagenes->EstaVacia()) {
        echo "La tabla de im\xE1genes no tiene filas; no se borra nada\r\nCONCLUIDO\r\n";
        return;
    }
    $purga = new Purga($raiz, (int) $bloque, $imagenes);
    echo $purga->Recorre($segundos) ? "CONCLUIDO\r\n" : "Continuar\r\n";
}

/**
 * The shop's table of images, asked for a hundred numbers at a time and always after their files were
 * seen: the shop writes the row of a new picture before its files.
 */
class Imagenes
{
    private $mysql;
    private $consulta;

    public function __construct($ajustes)
    {
        $this->mysql = ConectaATienda($ajustes);
        $this->consulta = 'SELECT id_image FROM `' . Ajuste($ajustes, '_DB_PREFIX_') . 'image` WHERE ';
    }

    public function Responde()
    {
        return $this->Numeros('id_image = 0') !== false;
    }

    public function EstaVacia()
    {
        return $this->Numeros('1 LIMIT 1') === array();
    }

    /** Those of the numbers that the table has, as keys; false when it can't be asked. */
    public function Conocidas($numeros)
    {
        return $this->Numeros('id_image IN (' . implode(',', $numeros) . ')');
    }

    private function Numeros($condicion)
    {
        $filas = $this->mysql ? mysqli_query($this->mysql, $this->consulta . $condicion) : false;
        if (!$filas) {
            return false;
        }
        $numeros = array();
        while ($fila = mysqli_fetch_row($filas)) {
            $numeros[$fila[0]] = true;
        }
        return $numeros;
    }
}

/**
 * One walk through img/p. In the old layout all pictures lie in img/p itself, in the new one those of
 * image 123 lie in img/p/1/2/3. How far the walk has come stands in a file: "f123" when the old layout
 * is done up to image 123, "n123" when it is done and so is the new one up to that folder, in the
 * order of the digits as text.
 */
class Purga
{
    // Between two looks at the clock: the files of so many images must not take seconds.
    const GRUPO = 100;
    const VENTANA = 50000;
    const FOTO = '/^(0|[1-9][0-9]{0,9})(?:-[A-Za-z0-9_-]+)?\.(?:jpe?g|png|gif|webp)$/Di';

    private $raiz;
    private $imagenes;
    private $primera;
    private $ultima;
    private $fin;
    private $rutaMarca;
    private $marca;
    private $hecho = '';
    private $pendientes = array();
    private $carpetas = 0;

    public function __construct($raiz, $bloque, Imagenes $imagenes)
    {
        $this->raiz = $raiz;
        $this->imagenes = $imagenes;
        $this->primera = ($bloque - 1) * 100000;
        // An id has ten digits at most.
        $this->ultima = $bloque === 9 ? 9999999999 : $bloque * 100000 - 1;
        $this->rutaMarca = $raiz . '/purga' . $bloque . '.txt';
    }

    /** True when the block is done, false when the request has lasted so long or the database has
     *  gone. */
    public function Recorre($segundos)
    {
        $this->fin = $_SERVER['REQUEST_TIME_FLOAT'] + $segundos;
        $this->marca = is_link($this->rutaMarca) ? false : @fopen($this->rutaMarca, 'c+b');
        if ($this->marca) {
            $this->LeeMarca();
        }
        if (!$this->RecorreLlana() || !$this->RecorreCifras('') || !$this->BorraPendientes()) {
            return false;
        }
        if ($this->marca) {
            ftruncate($this->marca, 0);
            @unlink($this->rutaMarca);
        }
        return true;
    }

    private function LeeMarca()
    {
        // A request that the client has given up may still be at work: the next one waits for it.
        flock($this->marca, LOCK_EX);
        $datos = fstat($this->marca);
        $hecho = rtrim((string) stream_get_contents($this->marca));
        // What somebody left half done long ago says nothing about the shop of today.
        if (time() - $datos['mtime'] < 3600 && preg_match('/^[fn][0-9]{1,10}$/D', $hecho)) {
            $this->hecho = $hecho;
        }
    }

    /** Keeps how far the walk has come. False when it is time to let the client ask again. */
    private function Recuerda($hecho)
    {
        $this->hecho = $hecho;
        if ($this->marca) {
            // One write of always the same length: a request that is killed here leaves it whole.
            rewind($this->marca);
            fwrite($this->marca, str_pad($hecho, 11));
            fflush($this->marca);
        }
        return microtime(true) < $this->fin;
    }

    /** The old layout, in rising order of the images. */
    private function RecorreLlana()
    {
        if (substr($this->hecho, 0, 1) === 'n') {
            return true;
        }
        $desde = $this->hecho === '' ? $this->primera : (float) substr($this->hecho, 1) + 1;
        while ($desde !== null) {
            $siguiente = null;
            $grupos = array_chunk($this->NombresLlanos($desde, $siguiente), self::GRUPO, true);
            foreach ($grupos as $grupo) {
                if (!$this->BorraDesconocidas($grupo)) {
                    return false;
                }
                end($grupo);
                if (!$this->Recuerda('f' . key($grupo))) {
                    return false;
                }
            }
            $desde = $siguiente;
        }
        return true;
    }

    /** The files in img/p of the images from a number on, as many numbers as a window has, by number
     *  and joined by "|". `$siguiente` becomes the first number behind the window, if there is one. */
    private function NombresLlanos($desde, &$siguiente)
    {
        $nombres = array();
        $abierta = @opendir($this->raiz);
        while ($abierta && ($nombre = readdir($abierta)) !== false) {
            if (!preg_match(self::FOTO, $nombre, $partes)) {
                continue;
            }
            $numero = (float) $partes[1];
            if ($numero < $desde || $numero > $this->ultima) {
                continue;
            }
            if ($numero >= $desde + self::VENTANA) {
                $siguiente = $siguiente === null ? $numero : min($siguiente, $numero);
                continue;
            }
            $antes = isset($nombres[$partes[1]]) ? $nombres[$partes[1]] . '|' : '';
            $nombres[$partes[1]] = $antes . $nombre;
        }
        ksort($nombres);
        return $nombres;
    }

    /** The new layout from one folder down. */
    private function RecorreCifras($cifras)
    {
        $ruta = $cifras === '' ? '' : implode('/', str_split($cifras)) . '/';
        // img/p itself is the one folder that can be huge, and its files have been dealt with.
        $nombres = $cifras === '' ? range(0, 9) : (array) @scandir($this->raiz . '/' . $ruta);
        if ($cifras !== '' && !$this->Anota($cifras, $ruta, $nombres)) {
            return false;
        }
        foreach ($nombres as $nombre) {
            $hija = $cifras . $nombre;
            $carpeta = $this->raiz . '/' . $ruta . $nombre;
            if (preg_match('/^[0-9]$/D', (string) $nombre) && $this->QuedaAlgo($hija)
                && is_dir($carpeta) && !is_link($carpeta) && !$this->RecorreCifras($hija)) {
                return false;
            }
        }
        return true;
    }

    /** Whether a folder or one below it belongs to the block and hasn't been done. */
    private function QuedaAlgo($cifras)
    {
        $hecha = $this->CarpetaHecha();
        if (strcmp($cifras, $hecha) < 0 && strpos($hecha, $cifras) !== 0) {
            return false;
        }
        if ($cifras[0] === '0') {
            return $cifras === '0' && $this->primera === 0;
        }
        $menor = (float) $cifras;
        $mayor = $menor;
        for ($largo = strlen($cifras); $largo <= 10; ++$largo) {
            if ($mayor >= $this->primera && $menor <= $this->ultima) {
                return true;
            }
            $menor *= 10;
            $mayor = $mayor * 10 + 9;
        }
        return false;
    }

    /** Puts the pictures of one folder aside; a group of folders is dealt with at once. Those that
     *  it only passes through count as well: the last block looks into every folder of the shop. */
    private function Anota($cifras, $ruta, $nombres)
    {
        if (strcmp($cifras, $this->CarpetaHecha()) <= 0) {
            return true;
        }
        $suyos = array();
        foreach ($nombres as $nombre) {
            if (preg_match(self::FOTO, (string) $nombre, $partes) && $partes[1] === $cifras) {
                $suyos[] = $ruta . $nombre;
            }
        }
        if ($suyos && (float) $cifras >= $this->primera && (float) $cifras <= $this->ultima) {
            $this->pendientes[$cifras] = implode('|', $suyos);
        }
        if (++$this->carpetas % self::GRUPO !== 0) {
            return true;
        }
        return $this->BorraPendientes() && $this->Recuerda('n' . $cifras);
    }

    /** The last folder of the new layout that has been done, as digits; empty before the first. */
    private function CarpetaHecha()
    {
        return substr($this->hecho, 0, 1) === 'n' ? substr($this->hecho, 1) : '';
    }

    private function BorraPendientes()
    {
        $bien = $this->BorraDesconocidas($this->pendientes);
        $this->pendientes = array();
        return $bien;
    }

    /** Deletes the files of the images that the table lacks: number => paths below img/p joined by
     *  "|". False, and nothing deleted, when the table can't be asked. */
    private function BorraDesconocidas($rutas)
    {
        $conocidas = $rutas ? $this->imagenes->Conocidas(array_keys($rutas)) : array();
        if ($conocidas === false) {
            return false;
        }
        foreach (array_diff_key($rutas, $conocidas) as $desconocidas) {
            foreach (explode('|', $desconocidas) as $ruta) {
                @unlink($this->raiz . '/' . $ruta);
            }
        }
        return true;
    }
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

/** The real path of a folder of the shop's, or false: one that is reached by a symbolic link is
 *  none, wherever it leads. */
function CarpetaPropia($ruta)
{
    $real = realpath(__DIR__ . '/' . $ruta);
    $esperada = str_replace('\\', '/', realpath(__DIR__) . '/' . $ruta);
    return $real !== false && is_dir($real) && str_replace('\\', '/', $real) === $esperada ? $real : false;
}
