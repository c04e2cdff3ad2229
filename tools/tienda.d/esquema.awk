# Writes the CREATE TABLE sentences of one generation from tablas.txt.
#   awk -v generacion=1.6.1 -v prefijo=ps_ -f esquema.awk tablas.txt

/^#/ || /^[ \t]*$/ { next }

/^tabla / {
    cierra()
    printf "CREATE TABLE `%s%s` (", prefijo, $2
    abierta = 1
    separador = "\n"
    next
}

{
    linea = $0
    barra = index(linea, "|")
    if (barra > 0) {
        if (index(substr(linea, barra) " ", " " generacion " ") == 0)
            next
        linea = substr(linea, 1, barra - 1)
    }
    sub(/^[ \t]+/, "", linea)
    sub(/[ \t]+$/, "", linea)
    printf "%s  %s", separador, linea
    separador = ",\n"
}

END { cierra() }

function cierra() {
    if (abierta)
        print "\n) ENGINE=InnoDB DEFAULT CHARSET=utf8;"
    abierta = 0
}
