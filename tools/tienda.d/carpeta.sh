# The folder of a shop as its web server holds it. Read by tools/tienda.

arbol_de_la_tienda() {
    local r=$1 carpeta
    for carpeta in config img/c img/p download cache/cachefs cache/smarty/cache cache/smarty/compile; do
        mkdir -p "$r/$carpeta"
        printf '<?php\nheader("Location: ../");\nexit;\n' >"$r/$carpeta/index.php"
    done
    ajustes_de_la_tienda >"$r/config/settings.inc.php"
    ficheros_de_cache "$r/cache"
    # A rule of the shop's own, for the tests to see that it stays and still works.
    printf '%s\n' '# Rules of the shop' 'RewriteEngine on' \
        'RewriteRule ^estado$ index.php?estado=1 [L]' >"$r/.htaccess"
    cat >"$r/index.php" <<'PHP'
<?php
echo isset($_GET['estado']) ? "tienda abierta\n" : "Tienda de prueba\n";
PHP
}

ajustes_de_la_tienda() {
    cat <<PHP
<?php
define('_DB_SERVER_', '127.0.0.1:$PUERTO_MYSQL');
define('_DB_NAME_', '$BD');
define('_DB_USER_', '$USUARIO');
define('_DB_PASSWD_', '$CLAVE');
define('_DB_PREFIX_', '$PREFIJO');
define('_MYSQL_ENGINE_', 'InnoDB');
define('_PS_VERSION_', '$VERSION');
PHP
}

# What pages already visited leave behind: nothing of it may outlive a clearing of the cache but the
# index.php of each folder.
ficheros_de_cache() {
    local cache=$1
    mkdir -p "$cache/smarty/cache/blockcategories/1" "$cache/smarty/compile/2d/7a" "$cache/cachefs/4/b"
    echo '<?php /* page */' >"$cache/smarty/cache/blockcategories/1/3f0c2b.home.tpl.php"
    echo '<?php /* page */' >"$cache/smarty/cache/5d1e90.index.tpl.php"
    echo '<?php /* template */' >"$cache/smarty/compile/2d/7a/2d7a41.file.product.tpl.php"
    echo '<?php /* template */' >"$cache/smarty/compile/9c44e7.file.header.tpl.php"
    echo 'a:1:{i:0;s:1:"1";}' >"$cache/cachefs/4/b/4b81aa"
}
