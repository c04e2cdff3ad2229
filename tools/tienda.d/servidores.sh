# The three servers: starting, watching and ending them. Read by tools/tienda.
#
# CARPETA/run/<server>.pid holds the process number and the moment it was started: a number that the
# system has given to another process since is never touched.

SERVIDORES=(mysql ftp http)

# The servers refuse to work as root, or change its files' owner half way: started by root, all run
# as one ordinary user, so that what FTP uploads PHP may change, and the other way round. The one
# capability lets them in where only root may go, such as a temporary folder of root's.
QUIEN=() SISTEMA_USUARIO=$(id -un) SISTEMA_GRUPO=$(id -gn)
if [ "$(id -u)" -eq 0 ]; then
    SISTEMA_USUARIO=nobody SISTEMA_GRUPO=$(id -gn nobody)
    QUIEN=(setpriv --reuid "$SISTEMA_USUARIO" --regid "$SISTEMA_GRUPO" --clear-groups
        --inh-caps=+dac_override --ambient-caps=+dac_override)
fi

hereda_dueno() {
    [ "$(id -u)" -ne 0 ] || chown -R "$SISTEMA_USUARIO:$SISTEMA_GRUPO" "$@"
}

# --- processes --------------------------------------------------------------------------------

# COMIENZO := the moment a process started, in ticks since the system did; empty if it is gone or a
# corpse. Without a subshell, as it is asked all the time.
comienzo() {
    local campos=
    COMIENZO=
    { read -r campos <"/proc/$1/stat"; } 2>/dev/null || return 0
    # Behind the program's name, which may hold anything: state, parent, group, ...
    read -ra campos <<<"${campos##*) }"
    [ "${campos[0]}" = Z ] || COMIENZO=${campos[19]}
}

vive() {
    local pid= momento=
    { read -r pid momento <"$CARPETA/run/$1.pid"; } 2>/dev/null || return 1
    comienzo "$pid"
    [ -n "$momento" ] && [ "$COMIENZO" = "$momento" ]
}

pid_de() { cut -d' ' -f1 "$CARPETA/run/$1.pid"; }

pids_vivos() {
    local servidor pids=()
    for servidor in "${SERVIDORES[@]}"; do
        ! vive "$servidor" || pids+=("$(pid_de "$servidor")")
    done
    echo "${pids[*]}"
}

sigue_en_pie() { [ -n "$(pids_vivos)" ]; }

# The living processes whose field $1 (ppid or pgrp) is $2. A corpse that the system has not yet
# taken away still answers to signals, and is none.
procesos_con() {
    cat /proc/[0-9]*/stat 2>/dev/null | awk -v campo="$1" -v valor="$2" '
        { pid = $1; sub(/.*\) /, ""); if ($1 != "Z" && (campo == "ppid" ? $2 : $3) == valor) print pid }'
}

# A signal waits for the next quiet moment: between the start of a server and the note of its number
# it would leave a server that nobody knows of.
INTERRUMPIDO=
aplaza_senales() { trap 'INTERRUMPIDO=si' INT TERM HUP; }
atiende_senales() { [ -z "$INTERRUMPIDO" ] || exit 130; }

# Starts a program in a session of its own, away from the terminal's signals.
lanza() {
    local servidor=$1
    shift
    (cd "$CARPETA" && exec setsid env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        TZ="${TZ:-Europe/Madrid}" TMPDIR="$CARPETA/tmp" "${ENTORNO[@]}" "$@" \
        </dev/null >>"$CARPETA/run/$servidor.salida" 2>&1) &
    local pid=$!
    disown
    comienzo "$pid"
    echo "$pid $COMIENZO" >"$CARPETA/run/$servidor.pid"
}

# Ends a server and its sessions with a signal, TERM for an end in good order, and waits until the
# last of them is gone.
termina() {
    local servidor=$1 senal=${2:-TERM} pid vueltas=0
    vive "$servidor" || return 0
    pid=$(pid_de "$servidor")
    while vive "$servidor" || [ -n "$(procesos_con pgrp "$pid")" ]; do
        # Once a second, as one that is still starting may miss it; by its own number too, as it may
        # not lead its group yet.
        [ $((vueltas % 50)) -ne 0 ] || kill "-$senal" "$pid" "-$pid" 2>/dev/null || true
        vueltas=$((vueltas + 1))
        [ $vueltas -lt 800 ] || senal=KILL
        [ $vueltas -lt 1000 ] || break
        sleep 0.02
    done
    rm -f "$CARPETA/run/$servidor.pid"
}

baja_todo() {
    local servidor
    termina vigia KILL
    for servidor in "${SERVIDORES[@]}"; do
        termina "$servidor" "$1" &
    done
    wait
    case ${SOCKET:-} in
    "$CARPETA"/*) ;;
    ?*) rm -rf "$(dirname "$SOCKET")" ;;
    esac
}

# Takes the shop down when process $1 is gone, even when it was killed.
vigila() {
    ENTORNO=()
    lanza vigia bash -c 'tail -s 1 --pid="$1" -f /dev/null; rm -f "$3/run/vigia.pid"; exec "$2" down "$3" --borra' \
        vigia "$1" "$(dirname "$PARTES")/tienda" "$CARPETA"
}

# --- preparing --------------------------------------------------------------------------------

prepara_servidores() {
    # A socket's path has 107 characters at most.
    SOCKET=$CARPETA/mysql.sock
    [ ${#SOCKET} -le 100 ] || SOCKET=$(mktemp -d /tmp/tienda.XXXXXX)/mysql.sock
    hereda_dueno "$(dirname "$SOCKET")"
    copia_base_vacia
    prepara_usuarios
    hereda_dueno "$CARPETA"/{tmp,mysql,http,ftp.d,ftp}
}

# The initialised data directory is made once for each version of the server and copied from then on.
copia_base_vacia() {
    local version cache
    version=$(mariadbd --no-defaults --version | sed 's/.*Ver \([^ ]*\).*/\1/')
    cache=${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/kovtolmo/mariadb-$version
    [ -d "$cache" ] || crea_base_vacia "$cache"
    cp -r --reflink=auto --sparse=always "$cache" "$CARPETA/mysql/datos"
}

# Made under another name and moved: another shop that starts meanwhile sees it whole or not at all.
crea_base_vacia() {
    local cache=$1 obra
    mkdir -p "$(dirname "$cache")"
    obra=$(mktemp -d "$cache.XXXXXX")
    mariadb-install-db --no-defaults --user="$(id -un)" --datadir="$obra/datos" --skip-test-db \
        --auth-root-authentication-method=normal --skip-name-resolve --innodb-log-file-size=32M \
        >"$obra/salida" 2>&1 || { cat "$obra/salida" >&2; rm -rf "$obra"; muere "MariaDB: no data directory"; }
    mv -T "$obra/datos" "$cache" 2>/dev/null || true
    rm -rf "$obra"
    [ -d "$cache" ] || muere "no data directory in $cache"
}

prepara_usuarios() {
    local clave_raiz uid
    clave_raiz=$(clave_al_azar)
    (
        umask 077
        printf '[client]\nuser=root\npassword=%s\nsocket=%s\ndefault-character-set=utf8mb4\n' \
            "$clave_raiz" "$SOCKET" >"$CARPETA/conf/cliente.cnf"
        cat >"$CARPETA/mysql/usuarios.sql" <<SQL
DELETE FROM mysql.global_priv WHERE User='' OR (User='root' AND Host<>'localhost');
FLUSH PRIVILEGES;
ALTER USER root@localhost IDENTIFIED BY '$clave_raiz';
CREATE USER IF NOT EXISTS '$USUARIO'@'127.0.0.1' IDENTIFIED BY '$CLAVE', '$USUARIO'@localhost IDENTIFIED BY '$CLAVE';
GRANT ALL ON \`$BD\`.* TO '$USUARIO'@'127.0.0.1', '$USUARIO'@localhost;
SQL
        uid=$(id -u "$SISTEMA_USUARIO")
        printf '%s:%s:%s:%s::%s:/bin/sh\n' "$FTP_USUARIO" \
            "$(perl -e 'print crypt($ARGV[0], "\$6\$tienda\$")' "$FTP_CLAVE")" \
            "$uid" "$(id -g "$SISTEMA_USUARIO")" "$CARPETA/ftp" >"$CARPETA/conf/ftp.usuarios"
        printf '%s:x:%s:\n' "$SISTEMA_GRUPO" "$(id -g "$SISTEMA_USUARIO")" >"$CARPETA/conf/ftp.grupos"
    )
    hereda_dueno "$CARPETA"/conf/{ftp.usuarios,ftp.grupos}
}

# --- starting ---------------------------------------------------------------------------------

lanza_mysql() {
    ENTORNO=()
    # Nothing of a test shop must outlive a crash of the machine: no binary log, no waiting for the disk.
    lanza mysql "${QUIEN[@]}" mariadbd --defaults-file="$CARPETA/conf/mysql-mas.cnf" \
        --datadir="$CARPETA/mysql/datos" --socket="$SOCKET" --tmpdir="$CARPETA/tmp" \
        --bind-address=127.0.0.1 --port="$PUERTO_MYSQL" --pid-file="$CARPETA/mysql/mysql.pid" \
        --log-error="$CARPETA/mysql/errores.log" --init-file="$CARPETA/mysql/usuarios.sql" \
        --skip-name-resolve --skip-log-bin --character-set-server=utf8mb4 \
        --innodb-buffer-pool-size=64M --innodb-log-file-size=32M --innodb-log-buffer-size=4M \
        --innodb-flush-log-at-trx-commit=0 --innodb-flush-method=nosync --innodb-doublewrite=0 --debug-no-sync --skip-sync-frm \
        --innodb-buffer-pool-dump-at-shutdown=0 --innodb-buffer-pool-load-at-startup=0 \
        --key-buffer-size=1M --aria-pagecache-buffer-size=2M --performance-schema=0 \
        --max-connections=60 --thread-cache-size=8
}

lanza_ftp() {
    ENTORNO=(TIENDA_CARPETA="$CARPETA" TIENDA_FTP_PUERTO="$PUERTO_FTP"
        TIENDA_FTP_REGISTRO="$CARPETA/ftp.d/ordenes.log"
        TIENDA_FTP_SISTEMA_USUARIO="$SISTEMA_USUARIO" TIENDA_FTP_SISTEMA_GRUPO="$SISTEMA_GRUPO")
    lanza ftp "${QUIEN[@]}" python3 "$PARTES/escucha.py" "$PUERTO_FTP" \
        proftpd --config "$CARPETA/conf/proftpd.conf"
}

lanza_http() {
    local modulos=/usr/lib/apache2/modules php
    php=$(ls "$modulos"/libphp*.so 2>/dev/null | tail -n 1)
    ENTORNO=(TIENDA_CARPETA="$CARPETA" TIENDA_RAIZ="$RAIZ" TIENDA_HTTP_PUERTO="$PUERTO_HTTP"
        TIENDA_HTTP_MODULOS="$modulos" TIENDA_HTTP_PHP="$php"
        TIENDA_HTTP_REGISTRO="$CARPETA/http/peticiones.log"
        TIENDA_HTTP_ERRORES="$CARPETA/http/errores.log")
    lanza http "${QUIEN[@]}" apache2 -DFOREGROUND -f "$CARPETA/conf/apache.conf"
}

# Log, text of a server that listens, and variable of its port.
registro_de() {
    case $1 in
    mysql) echo "$CARPETA/mysql/errores.log" ;;
    ftp) echo "$CARPETA/run/ftp.salida" ;;
    http) echo "$CARPETA/http/errores.log" ;;
    esac
}
senal_de() {
    case $1 in
    mysql) echo 'ready for connections' ;;
    ftp) echo 'listening' ;;
    http) echo 'resuming normal operations' ;;
    esac
}

# Two listeners never share a port: a server that finds its own taken ends and says so.
PUERTO_OCUPADO='Address already in use|could not bind|Failed binding|unable to bind'

# Odd, so that the port below, from which active FTP connects, belongs to no other shop; and below
# those that the system gives to outgoing connections.
elige_puerto() {
    local puerto
    while :; do
        puerto=$((20001 + (RANDOM % 6000) * 2))
        (exec 3<>"/dev/tcp/127.0.0.1/$puerto") 2>/dev/null ||
            (exec 3<>"/dev/tcp/127.0.0.1/$((puerto - 1))") 2>/dev/null || break
    done
    declare -g "PUERTO_${1^^}=$puerto"
}

# Waits until the server says so in its log, from a position on: 0 it listens, 1 it ended or hangs,
# 2 its port was taken.
espera_servidor() {
    local servidor=$1 desde=$2 vueltas registro senal
    registro=$(registro_de "$servidor") senal=$(senal_de "$servidor")
    for ((vueltas = 0; vueltas < 3000; vueltas++)); do
        atiende_senales
        if ! vive "$servidor"; then
            cat "$registro" "$CARPETA/run/$servidor.salida" 2>/dev/null |
                grep -E "$PUERTO_OCUPADO" >>"$CARPETA/run/puertos" || return 1
            return 2
        fi
        # grep may leave before tail has told it all.
        ! { tail -c +"$((desde + 1))" "$registro" 2>/dev/null || true; } | grep -qF "$senal" || return 0
        sleep 0.02
    done
    return 1
}

tamano() { stat -c %s "$1" 2>/dev/null || echo 0; }

falla() {
    echo "tienda: the $1 server did not start. The end of its log:" >&2
    tail -n 20 "$(registro_de "$1")" "$CARPETA/run/$1.salida" >&2 2>/dev/null || true
    exit 1
}

arranca_todo() {
    local servidor intento resultado
    for servidor in "${SERVIDORES[@]}"; do
        elige_puerto "$servidor"
        "lanza_$servidor"
    done
    for servidor in "${SERVIDORES[@]}"; do
        for intento in 1 2 3 4 5 6; do
            resultado=0
            espera_servidor "$servidor" 0 || resultado=$?
            [ $resultado -eq 2 ] && [ "$intento" -lt 6 ] || break
            : >"$(registro_de "$servidor")"
            : >"$CARPETA/run/$servidor.salida"
            elige_puerto "$servidor"
            "lanza_$servidor"
        done
        [ $resultado -eq 0 ] || falla "$servidor"
    done
}

para() {
    termina "$1"
    escribe_env
}

sigue() {
    local desde
    ! vive "$1" || return 0
    aplaza_senales
    trap "termina $1" EXIT
    desde=$(tamano "$(registro_de "$1")")
    "lanza_$1"
    espera_servidor "$1" "$desde" || falla "$1"
    trap - EXIT
    escribe_env
}

corta_sesiones_ftp() {
    local hijo
    vive ftp || return 0
    for hijo in $(procesos_con ppid "$(pid_de ftp)"); do
        kill -KILL "$hijo" 2>/dev/null || true
    done
}
