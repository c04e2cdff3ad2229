<?php
/*
 * Runs the batch of sentences that the office program has just uploaded.
 *
 * Beside this file lie "bdtolmo.ccc" (database, user and password, one a line) and
 * "sentencias.sql" (sentences ended by "||"). The answer is empty when every sentence ran.
 * Written for PHP 5.4 to 8.x: the shops that it meets run on all of them.
 */

Prepara();
$credenciales = TomaCredenciales();
ProtegeFicheros();
ResponderLote($credenciales);

function ResponderLote($credenciales)
{
    $ajustes = Ajustes();
    $mysql = false;
    $fichero = null;
    if ($credenciales !== false) {
        // Taken away before the slow steps: the client deletes this name when it has its answer,
        // and by then it may be the next batch of another run.
        $fichero = Toma('sentencias.sql');
        $mysql = ConectaConCredenciales($credenciales, Ajuste($ajustes, '_DB_SERVER_'));
    }
    if ($mysql === false) {
        echo "No se puede conectar con Mysql\r\n";
        return;
    }
    if ($fichero === false) {
        echo Fallo('No se puede retirar sentencias.sql de su carpeta; el lote no se ha ejecutado', '');
    }
    if (!$fichero) {
        return;
    }
    if (!EsperaTurno($mysql, $credenciales[0])) {
        echo Fallo('Otro lote ocupa la base de datos; este no se ha ejecutado', '');
        return;
    }
    AvisaSiMuere();
    $lector = new LectorLote($fichero);
    $prefijo = isset($ajustes['_DB_PREFIX_']) ? $ajustes['_DB_PREFIX_'] : PrefijoDelLote($lector);
    AjustaColumnas($mysql, $prefijo);
    BloqueaSoloLoQueCambia($mysql);
    EjecutaConRepeticion($mysql, $lector);
}

/** The three lines of "bdtolmo.ccc", or false. The file is gone afterwards: the password has to
 *  lie in the shop's folder for as short a time as possible. */
function TomaCredenciales()
{
    $ruta = __DIR__ . '/bdtolmo.ccc';
    $texto = is_link($ruta) ? false : @file_get_contents($ruta, false, null, 0, 4096);
    if (file_exists($ruta) || is_link($ruta)) {
        @unlink($ruta);
    }
    $lineas = preg_split('/\r\n|\n/', (string) $texto);
    return count($lineas) >= 3 && $lineas[0] !== '' ? array_slice($lineas, 0, 3) : false;
}

function ConectaConCredenciales($credenciales, $servidor)
{
    list($base, $usuario, $clave) = $credenciales;
    $mysql = Conecta($servidor, $base, $usuario, $clave);
    // The file comes in Windows-1252; most servers were given an accented password in UTF-8.
    if ($mysql === false && preg_match('/[\x80-\xFF]/', $usuario . $clave) && function_exists('iconv')) {
        $mysql = Conecta($servidor, $base, iconv('CP1252', 'UTF-8//IGNORE', $usuario),
            iconv('CP1252', 'UTF-8//IGNORE', $clave));
    }
    return $mysql;
}

/** A script that the server's PHP cuts short would answer nothing, which the client takes for
 *  success; the database undoes what it had done. */
function AvisaSiMuere()
{
    register_shutdown_function(function () {
        $error = error_get_last();
        if ($error && $error['type'] === E_ERROR) {
            http_response_code(200);
            echo Fallo('El servidor web ha interrumpido el lote; no se ha aplicado nada de este lote', '');
        }
    });
}

/** Two runs on one shop take turns by whole batches. False when the turn doesn't come in ten
 *  minutes; a server that has no such locks doesn't stop the batch. */
function EsperaTurno($mysql, $base)
{
    $turno = mysqli_query($mysql, "SELECT GET_LOCK('kovtolmo_" . md5($base) . "', 600)");
    $fila = $turno ? mysqli_fetch_row($turno) : null;
    return !$fila || $fila[0] !== '0';
}

/**
 * Reads the batch one sentence at a time, in memory of the size of the longest one.
 */
class LectorLote
{
    const BLOQUE = 65536;

    private $fichero;
    private $piezas = array();
    private $siguiente = 0;
    private $resto = '';

    public function __construct($fichero)
    {
        $this->fichero = $fichero;
    }

    public function Reinicia()
    {
        rewind($this->fichero);
        $this->piezas = array();
        $this->siguiente = 0;
        $this->resto = '';
    }

    /** The next sentence without its "||", or null at the end. */
    public function Siguiente()
    {
        while (true) {
            while ($this->siguiente < count($this->piezas)) {
                $sentencia = trim($this->piezas[$this->siguiente++]);
                if ($sentencia !== '') {
                    return $sentencia;
                }
            }
            if (feof($this->fichero)) {
                return null;
            }
            // At least as much again as is waiting, so that a long sentence isn't searched over and over.
            $this->resto .= fread($this->fichero, max(self::BLOQUE, strlen($this->resto)));
            $this->piezas = explode('||', $this->resto);
            $this->resto = array_pop($this->piezas);
            $this->siguiente = 0;
        }
    }

    /** What stood behind the last "||", once the end has been reached. */
    public function Resto()
    {
        return trim($this->resto);
    }
}

/** The table prefix that the sentences themselves use, or false when none tells it. Only the
 *  tables whose columns may need a change are looked for. */
function PrefijoDelLote(LectorLote $lector)
{
    $tablas = '(?:stock_available|(?:product_)?attachment)';
    $patron = '/^(?:INSERT\s+INTO|DELETE\s+FROM|UPDATE)\s+`?(\w*?)' . $tablas . '\b/i';
    $lector->Reinicia();
    while (($sentencia = $lector->Siguiente()) !== null) {
        if (preg_match($patron, substr($sentencia, 0, 200), $partes)) {
            return $partes[1];
        }
    }
    return false;
}

/** Makes room in the shop's tables for what the batches bring. It comes before the transaction,
 *  as a change of columns commits by itself; a user who may not do it changes nothing. */
function AjustaColumnas($mysql, $prefijo)
{
    if (!is_string($prefijo) || !preg_match('/^\w*$/D', $prefijo)) {
        return;
    }
    // A change that waits for a table holds up everyone behind it: better to try with the next batch.
    mysqli_query($mysql, 'SET SESSION lock_wait_timeout = 20');
    // The ids are the product's with six digits behind: an INT ends at product 4294.
    $columna = Columna($mysql, $prefijo . 'stock_available', 'id_stock_available');
    if ($columna && stripos($columna['Type'], 'bigint') === false) {
        mysqli_query($mysql, 'ALTER TABLE `' . $prefijo . 'stock_available` MODIFY id_stock_available '
            . 'BIGINT UNSIGNED NOT NULL ' . $columna['Extra']);
    }
    // Shops of the oldest generation don't keep the size of a document.
    if (Columna($mysql, $prefijo . 'attachment', 'id_attachment')
        && !Columna($mysql, $prefijo . 'attachment', 'file_size')) {
        mysqli_query($mysql, 'ALTER TABLE `' . $prefijo . 'attachment` '
            . 'ADD file_size BIGINT UNSIGNED NOT NULL DEFAULT 0');
    }
    mysqli_query($mysql, 'SET SESSION lock_wait_timeout = DEFAULT');
}

/** Most sentences look their product up by a code that has no index. On its usual level the server
 *  would lock each product on the way until the end of the batch: the visitors' orders would wait, and
 *  it would itself take several times as long. A server that logs sentences refuses any other level. */
function BloqueaSoloLoQueCambia($mysql)
{
    if (Valor($mysql, "SELECT @@log_bin = 0 OR @@binlog_format <> 'STATEMENT'")) {
        mysqli_query($mysql, 'SET SESSION TRANSACTION ISOLATION LEVEL READ COMMITTED');
    }
}

function Columna($mysql, $tabla, $columna)
{
    $filas = mysqli_query($mysql, "SHOW COLUMNS FROM `$tabla` WHERE Field = '$columna'");
    return $filas ? mysqli_fetch_assoc($filas) : null;
}

/** Runs the batch in one transaction and prints its failures. A deadlock makes the server undo
 *  all that the batch had done, so it starts again from its first sentence. */
function EjecutaConRepeticion($mysql, LectorLote $lector)
{
    $informe = fopen('php://temp', 'w+b');
    for ($vez = 1; $vez <= 3; ++$vez) {
        $lector->Reinicia();
        ftruncate($informe, 0);
        rewind($informe);
        if (EjecutaLote($mysql, $lector, $informe) !== 'repetir') {
            break;
        }
        usleep(200000 * $vez);
    }
    if ($vez > 3) {
        $aviso = 'El servidor ha deshecho el lote entero tres veces; no se ha aplicado nada de este lote';
        fwrite($informe, Fallo($aviso, ''));
    }
    rewind($informe);
    fpassthru($informe);
}

/** Goes through the batch once. "repetir" when the server has undone it all on its own account. */
function EjecutaLote($mysql, LectorLote $lector, $informe)
{
    $maximo = Valor($mysql, 'SELECT @@max_allowed_packet');
    mysqli_autocommit($mysql, false);
    while (($sentencia = $lector->Siguiente()) !== null) {
        // The server would close the connection on it, and with it undo the whole batch.
        if (strlen($sentencia) >= $maximo - 1) {
            fwrite($informe, Fallo('La sentencia es mayor que max_allowed_packet', $sentencia));
            continue;
        }
        if (Ejecuta($mysql, $sentencia)) {
            continue;
        }
        $codigo = mysqli_errno($mysql);
        fwrite($informe, Fallo(mysqli_error($mysql), $sentencia));
        if (EsConexionPerdida($codigo)) {
            $aviso = "Se ha perdido la conexi\xF3n; el servidor deshace lo que este lote llevaba hecho";
            fwrite($informe, Fallo($aviso, ''));
            return 'perdido';
        }
        if (EsLoteDeshecho($mysql, $codigo)) {
            return 'repetir';
        }
    }
    if ($lector->Resto() !== '') {
        // An upload that broke off: half a sentence may well be a valid one that does something else.
        fwrite($informe, Fallo('Falta "||" al final; la sentencia no se ha ejecutado', $lector->Resto()));
    }
    if (!mysqli_commit($mysql)) {
        fwrite($informe, Fallo('No se ha podido confirmar el lote: ' . mysqli_error($mysql), 'COMMIT'));
    }
    return 'hecho';
}

/** Runs one sentence and throws away the rows that it may give. */
function Ejecuta($mysql, $sentencia)
{
    $filas = mysqli_query($mysql, $sentencia, MYSQLI_USE_RESULT);
    if (is_object($filas)) {
        mysqli_free_result($filas);
    }
    while ($filas && mysqli_more_results($mysql) && mysqli_next_result($mysql)) {
        $mas = mysqli_use_result($mysql);
        if (is_object($mas)) {
            mysqli_free_result($mas);
        }
    }
    return $filas && mysqli_errno($mysql) === 0;
}

function EsConexionPerdida($codigo)
{
    return in_array($codigo, array(1053, 1927, 2006, 2013, 2055), true);
}

/** Whether the failure made the server undo the whole transaction and not the sentence alone. */
function EsLoteDeshecho($mysql, $codigo)
{
    if ($codigo === 1205) {
        return (bool) Valor($mysql, 'SELECT @@innodb_rollback_on_timeout');
    }
    return $codigo === 1213 || $codigo === 1020;
}

function Valor($mysql, $consulta)
{
    $filas = mysqli_query($mysql, $consulta);
    $fila = $filas ? mysqli_fetch_row($filas) : null;
    return $fila ? (int) $fila[0] : 0;
}

/** One failure as the client looks for it. Some messages of the server name its user. */
function Fallo($mensaje, $sentencia)
{
    $mensaje = preg_replace("/'[^']*'@'[^']*'/", '***', $mensaje);
    $lineas = array($mensaje, substr($sentencia, 0, 200));
    $texto = implode("\r\n", preg_replace('/\s+/', ' ', $lineas));
    return 'Error al ejecutar consulta: ' . rtrim($texto) . "\r\n";
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

/** Keeps in the shop's .htaccess, beside the shop's own rules, one block that denies the web the
 *  files of the client. Without a file that may be written it goes on in silence. */
function ProtegeFicheros()
{
    $bloque = implode("\n", array(
        '# KOV TOLMO: inicio',
        '<FilesMatch "(?i)^(bdtolmo\.ccc|sentencias\.sql|(imgart|imgfam|imgborra|creapath)\.txt)(\..*)?$">',
        '    <IfModule mod_authz_core.c>',
        '        Require all denied',
        '    </IfModule>',
        '    <IfModule !mod_authz_core.c>',
        '        Order allow,deny',
        '        Deny from all',
        '    </IfModule>',
        '</FilesMatch>',
        '# KOV TOLMO: fin',
    ));
    $ruta = __DIR__ . '/.htaccess';
    $existe = file_exists($ruta);
    $texto = $existe ? @file_get_contents($ruta) : '';
    $intocable = is_link($ruta) || ($existe && !is_writable($ruta));
    if ($intocable || $texto === false || strpos($texto, $bloque) !== false) {
        return;
    }
    $viejo = '/^# KOV TOLMO: inicio\r?\n.*?^# KOV TOLMO: fin\r?$/ms';
    $nuevo = preg_replace($viejo, addcslashes($bloque, '\\$'), $texto, 1, $cambios);
    if (!$cambios) {
        // Last in the file, where no rule of the shop's for the same names comes after it.
        $linea = $texto === '' ? '' : (substr($texto, -1) === "\n" ? "\n" : "\n\n");
        $nuevo = $texto . $linea . $bloque . "\n";
    }
    $temporal = $ruta . '.' . md5(uniqid(mt_rand(), true));
    if (@file_put_contents($temporal, $nuevo) === strlen($nuevo)) {
        @chmod($temporal, $existe ? fileperms($ruta) & 0777 : 0644);
        @rename($temporal, $ruta);
    }
    clearstatcache();
    if (file_exists($temporal)) {
        @unlink($temporal);
    }
}
