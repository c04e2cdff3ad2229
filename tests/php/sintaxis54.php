<?php
/*
 * Refuses what PHP 5.4 would not run in the scripts of the shop's web server.
 *
 *   php sintaxis54.php file...      a line "file:line: reason" for each finding, and status 1
 *
 * No interpreter that old is at hand, so the tokens are judged. What is newer in the grammar is told
 * by its token or its surroundings; of functions and constants only those listed here are admitted,
 * each of them looked up in the manual: present in 5.4 and still present in 8.
 */

const FUNCIONES = [
    'addcslashes', 'array_chunk', 'array_diff', 'array_diff_key', 'array_keys', 'array_pop', 'array_shift', 'array_slice', 'arsort',
    'basename', 'chmod', 'clearstatcache', 'copy', 'count', 'dirname', 'end', 'error_get_last', 'explode', 'exif_read_data',
    'fclose', 'feof', 'fflush', 'file_exists', 'file_get_contents', 'file_put_contents', 'fileperms', 'flock',
    'fnmatch', 'fopen', 'fpassthru', 'fread', 'fstat', 'ftruncate', 'function_exists', 'fwrite',
    'getimagesize', 'header', 'http_response_code', 'iconv', 'ignore_user_abort', 'imagecopy', 'imagecopyresampled', 'imagecreatetruecolor',
    'imagefilledrectangle', 'imagejpeg', 'imagerotate', 'imagesx', 'imagesy', 'implode', 'in_array', 'ini_get',
    'ini_set', 'is_array', 'is_dir', 'is_file', 'is_int', 'is_link', 'is_object', 'is_readable', 'is_string', 'is_writable',
    'key', 'ksort', 'max', 'md5', 'memory_get_usage', 'microtime', 'min', 'mkdir', 'mt_rand',
    'mysqli_autocommit', 'mysqli_commit', 'mysqli_errno', 'mysqli_error', 'mysqli_fetch_assoc',
    'mysqli_fetch_row', 'mysqli_free_result', 'mysqli_init', 'mysqli_more_results', 'mysqli_next_result',
    'mysqli_options', 'mysqli_query', 'mysqli_real_connect', 'mysqli_report', 'mysqli_set_charset',
    'mysqli_use_result', 'opendir', 'openssl_random_pseudo_bytes', 'preg_match', 'preg_match_all', 'preg_quote',
    'preg_replace', 'preg_split', 'range', 'readdir', 'realpath', 'register_shutdown_function', 'rename',
    'rewind', 'rmdir', 'round', 'rtrim', 'scandir', 'set_time_limit', 'str_pad', 'str_replace', 'str_split', 'strcmp',
    'stream_get_contents', 'stream_get_line', 'stripos', 'strlen', 'strpos', 'strtolower', 'substr', 'time',
    'trim', 'uniqid', 'unlink', 'usleep', 'version_compare',
];
const CONSTANTES = [
    'true', 'false', 'null', 'self', 'parent', 'E_ERROR', 'IMAGETYPE_JPEG', 'LOCK_EX', 'MYSQLI_OPT_CONNECT_TIMEOUT',
    'MYSQLI_OPT_LOCAL_INFILE', 'MYSQLI_REPORT_OFF', 'MYSQLI_USE_RESULT', 'PREG_SET_ORDER',
];
const PALABRAS = [
    'T_COALESCE' => '??', 'T_COALESCE_EQUAL' => '??=', 'T_SPACESHIP' => '<=>', 'T_POW' => '**', 'T_POW_EQUAL' => '**=',
    'T_ELLIPSIS' => '...', 'T_FINALLY' => 'finally', 'T_YIELD' => 'yield', 'T_YIELD_FROM' => 'yield from',
    'T_FN' => 'fn', 'T_MATCH' => 'match', 'T_ENUM' => 'enum', 'T_READONLY' => 'readonly', 'T_ATTRIBUTE' => 'attribute',
    'T_NULLSAFE_OBJECT_OPERATOR' => '?->', 'T_DECLARE' => 'declare',
];
const ESCALARES = ['int', 'integer', 'float', 'string', 'bool', 'boolean', 'iterable', 'object', 'mixed', 'void',
    'null', 'false', 'true', 'never'];
const OPERADORES = ['+', '-', '*', '/', '%', '.', '|', '&', '^', '~', '!', '?', '<', '>', '['];

final class Revision
{
    /** @var PhpToken[] without blanks and comments */
    private array $t;
    private array $pareja = [];
    private array $propias;
    public array $hallazgos = [];

    public function __construct(string $codigo)
    {
        $this->t = array_values(array_filter(PhpToken::tokenize($codigo), fn ($p) => !$p->isIgnorable()));
        $this->Empareja();
        $this->propias = $this->NombresDetrasDe(['function', 'class', 'const']);
        foreach (array_keys($this->t) as $i) {
            foreach (['Palabra', 'Clase', 'Firma', 'Miembro', 'Lista', 'Vacio', 'Literal', 'Captura', 'Coma',
                'Acceso', 'Argumento', 'Lanza', 'Importa', 'Nombre'] as $regla) {
                $this->$regla($i);
            }
        }
    }

    private function T(int $i): string
    {
        return isset($this->t[$i]) ? strtolower($this->t[$i]->text) : '';
    }

    private function Es(int $i, string $nombre): bool
    {
        return isset($this->t[$i]) && $this->t[$i]->getTokenName() === $nombre;
    }

    private function Refuta(int $i, string $razon): void
    {
        $this->hallazgos[] = [$this->t[$i]->line, $razon];
    }

    private function Empareja(): void
    {
        $abiertos = [];
        foreach ($this->t as $i => $parte) {
            if (in_array($parte->text, ['(', '[', '{', '${'], true) || $parte->getTokenName() === 'T_CURLY_OPEN') {
                $abiertos[] = $i;
            } elseif (in_array($parte->text, [')', ']', '}'], true) && $abiertos) {
                $abre = array_pop($abiertos);
                $this->pareja[$abre] = $i;
                $this->pareja[$i] = $abre;
            }
        }
    }

    private function NombresDetrasDe(array $palabras): array
    {
        $nombres = [];
        foreach (array_keys($this->t) as $i) {
            if (in_array($this->T($i), $palabras, true) && $this->Es($i + 1, 'T_STRING')) {
                $nombres[] = $this->T($i + 1);
            }
        }
        return $nombres;
    }

    private function Palabra(int $i): void
    {
        $nombre = $this->t[$i]->getTokenName();
        if (isset(PALABRAS[$nombre])) {
            $this->Refuta($i, PALABRAS[$nombre]);
        }
    }

    private function Clase(int $i): void
    {
        if ($this->T($i) === '::' && $this->T($i + 1) === 'class') {
            $this->Refuta($i, '::class');
        }
        if ($this->T($i) === 'new' && $this->T($i + 1) === 'class') {
            $this->Refuta($i, 'anonymous class');
        }
    }

    /** Parameters with scalar, nullable or joined types, promoted ones, and return types. */
    private function Firma(int $i): void
    {
        if (!$this->Es($i, 'T_FUNCTION') || $this->T($i - 1) === 'use') {
            return;
        }
        $abre = $i + 1;
        while ($this->T($abre) !== '(' && isset($this->t[$abre])) {
            if (!in_array($this->T($abre), ['&'], true) && !$this->Es($abre, 'T_STRING')) {
                $this->Refuta($abre, 'keyword as a name');
            }
            ++$abre;
        }
        $cierra = $this->pareja[$abre];
        for ($j = $abre + 1, $tipo = true; $j < $cierra; ++$j) {
            if ($this->T($j) === ',') {
                $tipo = true;
            } elseif ($this->Es($j, 'T_VARIABLE')) {
                $tipo = false;
            } elseif ($this->T($j) === '=') {
                $j = $this->Constante($j + 1, [',', ')'], true) - 1;
            } elseif ($tipo && (in_array($this->T($j), ['?', '|', 'static', 'public', 'private', 'protected', ...ESCALARES], true))) {
                $this->Refuta($j, 'type of a parameter');
            }
        }
        if ($this->T($cierra + 1) === 'use') {
            $cierra = $this->pareja[$cierra + 2];
        }
        if ($this->T($cierra + 1) === ':') {
            $this->Refuta($cierra + 1, 'return type');
        }
    }

    /** Goes through a constant value up to one of the ends; a value that has to be worked out, and
     *  where told an array, is newer. */
    private function Constante(int $i, array $finales, bool $conArray): int
    {
        for ($j = $i; isset($this->t[$j]) && !in_array($this->T($j), $finales, true); ++$j) {
            if ($conArray && ($this->T($j) === 'array' || $this->T($j) === '[')) {
                $j = $this->pareja[$this->T($j) === 'array' ? $j + 1 : $j];
            } elseif ($this->T($j) === 'array' || $this->T($j) === 'new'
                || (in_array($this->T($j), OPERADORES, true) && !($j === $i && $this->T($j) === '-'))) {
                $this->Refuta($j, 'constant expression');
            }
        }
        return $j;
    }

    private function Miembro(int $i): void
    {
        if ($this->Es($i, 'T_CONST') && $this->T($i + 2) === '=') {
            $this->Constante($i + 3, [';', ','], false);
        }
        if (!in_array($this->T($i), ['public', 'private', 'protected', 'var'], true)) {
            return;
        }
        $j = $i + 1;
        while (in_array($this->T($j), ['static', 'abstract', 'final'], true)) {
            ++$j;
        }
        if ($this->Es($j, 'T_CONST')) {
            $this->Refuta($j, 'visibility of a constant');
        } elseif ($this->Es($j, 'T_VARIABLE')) {
            $this->T($j + 1) === '=' && $this->Constante($j + 2, [';', ','], true);
        } elseif (!$this->Es($j, 'T_FUNCTION')) {
            $this->Refuta($j, 'typed property');
        }
    }

    private function Lista(int $i): void
    {
        $antes = $this->T($i - 1);
        $deAlgo = $this->Es($i - 1, 'T_VARIABLE') || $this->Es($i - 1, 'T_STRING')
            || in_array($antes, [']', ')'], true);
        if ($this->T($i) === '[' && !$deAlgo && ($antes === 'as' || $this->T($this->pareja[$i] + 1) === '=')) {
            $this->Refuta($i, '[] on the left side');
        }
        if ($this->T($i) !== 'list' || $this->T($i + 1) !== '(') {
            return;
        }
        if ($antes === 'as' || $antes === '=>') {
            $this->Refuta($i, 'list() in foreach');
        }
        for ($j = $i + 2; $j < $this->pareja[$i + 1]; ++$j) {
            if ($this->T($j) === '=>') {
                $this->Refuta($j, 'list() with keys');
            }
        }
    }

    private function Vacio(int $i): void
    {
        if (!$this->Es($i, 'T_EMPTY')) {
            return;
        }
        for ($j = $i + 2; $j < $this->pareja[$i + 1]; ++$j) {
            if ($this->T($j) === '(' || !$this->Es($i + 2, 'T_VARIABLE')) {
                $this->Refuta($i, 'empty() of an expression');
                return;
            }
        }
    }

    private function Literal(int $i): void
    {
        $numero = $this->Es($i, 'T_LNUMBER') || $this->Es($i, 'T_DNUMBER');
        if ($numero && (str_contains($this->T($i), '_') || str_starts_with($this->T($i), '0o'))) {
            $this->Refuta($i, 'form of a number');
        }
        $comillas = $this->Es($i, 'T_ENCAPSED_AND_WHITESPACE')
            || ($this->Es($i, 'T_CONSTANT_ENCAPSED_STRING') && $this->T($i)[0] === '"');
        if ($comillas && str_contains($this->T($i), '\u{')) {
            $this->Refuta($i, '\u{}');
        }
    }

    private function Captura(int $i): void
    {
        if ($this->Es($i, 'T_CATCH') && !($this->Es($i + 3, 'T_VARIABLE') && $this->T($i + 4) === ')')) {
            $this->Refuta($i, 'form of catch');
        }
    }

    private function Coma(int $i): void
    {
        if ($this->T($i) === ',' && $this->T($i + 1) === ')'
            && !in_array($this->T($this->pareja[$i + 1] - 1), ['array', 'list'], true)) {
            $this->Refuta($i, 'comma at the end of a list of arguments');
        }
    }

    /** f()(), (expression)[0] and (expression)(), "text"[0], array(1)[0] and [1][0]. */
    private function Acceso(int $i): void
    {
        if (!in_array($this->T($i), ['[', '('], true) || !isset($this->t[$i - 1])) {
            return;
        }
        $cierre = $this->T($i - 1);
        if ($this->T($i) === '[' && $this->Es($i - 1, 'T_CONSTANT_ENCAPSED_STRING')) {
            $this->Refuta($i, 'access to a literal');
        }
        if ($cierre !== ')' && $cierre !== ']') {
            return;
        }
        $quien = $this->pareja[$i - 1] - 1;
        $llamada = $this->Es($quien, 'T_STRING') || $this->Es($quien, 'T_VARIABLE');
        $deVariable = $llamada || in_array($this->T($quien), [')', ']', '}'], true);
        if ($cierre === ')' && ($this->T($i) === '(' || !$llamada)
            && !in_array($this->T($quien), ['if', 'while', 'for', 'foreach', 'switch', 'elseif', 'catch'], true)) {
            $this->Refuta($i, 'access to a result');
        }
        if ($cierre === ']' && !$deVariable) {
            $this->Refuta($i, 'access to a literal');
        }
    }

    private function Argumento(int $i): void
    {
        if (in_array($this->T($i - 1), ['(', ','], true) && $this->Es($i, 'T_STRING') && $this->T($i + 1) === ':') {
            $this->Refuta($i, 'named argument');
        }
        if ($this->T($i) === 'dirname' && $this->T($i + 1) === '(') {
            for ($j = $i + 2; $j < $this->pareja[$i + 1]; ++$j) {
                if (in_array($this->T($j), ['(', '['], true)) {
                    $j = $this->pareja[$j];
                } elseif ($this->T($j) === ',') {
                    $this->Refuta($j, 'dirname() with levels');
                }
            }
        }
    }

    private function Lanza(int $i): void
    {
        if (!$this->Es($i, 'T_THROW')) {
            return;
        }
        $desde = $i - 1;
        while ($this->T($desde) !== '' && !in_array($this->T($desde), [';', '{', '}', '?'], true)) {
            --$desde;
        }
        $trasCondicion = $this->T($desde) === '?';
        if ($trasCondicion || !in_array($this->T($i - 1), [';', '{', '}', ')', ':', 'else'], true)) {
            $this->Refuta($i, 'throw inside an expression');
        }
    }

    private function Importa(int $i): void
    {
        if ($this->Es($i, 'T_USE') && in_array($this->T($i + 1), ['function', 'const'], true)) {
            $this->Refuta($i, 'use function');
        }
    }

    /** Functions and constants that 5.4 may not have. */
    private function Nombre(int $i): void
    {
        $antes = $this->T($i - 1);
        if (!$this->Es($i, 'T_STRING') || in_array($antes, ['->', '::', 'function', 'class', 'const', 'new'], true)
            || in_array($this->T($i), $this->propias, true) || $this->T($i + 1) === '::') {
            return;
        }
        if ($this->T($i + 1) === '(') {
            in_array($this->T($i), FUNCIONES, true) || $this->Refuta($i, 'function ' . $this->t[$i]->text);
        } elseif (!in_array($this->t[$i]->text, CONSTANTES, true) && !$this->Es($i + 1, 'T_VARIABLE')) {
            $this->Refuta($i, 'constant ' . $this->t[$i]->text);
        }
    }
}

$estado = 0;
foreach (array_slice($argv, 1) as $fichero) {
    $revision = new Revision(file_get_contents($fichero));
    foreach ($revision->hallazgos as [$linea, $razon]) {
        echo "$fichero:$linea: $razon\n";
        $estado = 1;
    }
}
exit($estado);
