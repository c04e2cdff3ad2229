# The steps of tools/demo. Read by it; RAIZ, DEMO, TIENDA and EMPRESA are its folders.

# A file that says that a folder is the demo's own and may be deleted.
MARCA=.demostracion-de-kovtolmo
ARTICULO=0301002 PRECIO_NUEVO=29.9

titulo() { printf '\n== %s ==\n\n' "$*"; }
# Text filled with blanks up to a width in characters; printf's own widths count bytes.
columna() { printf '%s%*s' "$2" $(($1 > ${#2} ? $1 - ${#2} : 0)) ''; }
paso() { printf '  · %s\n' "$*"; }
muere() {
    printf 'demo: %s\n' "$*" >&2
    exit 1
}

uso() {
    cat <<'TEXTO'
uso: tools/demo [--access] [--generacion 1.5.6|1.6.0|1.6.1] [--sin-segunda]
     tools/demo --para    para la tienda y borra todo lo que ha hecho la demostración
TEXTO
}

# Takes down and deletes what a demo left, and nothing that is not a demo's.
recoge() {
    [ -e "$DEMO" ] || return 0
    [ -O "$DEMO" ] && [ -f "$DEMO/$MARCA" ] || muere "$DEMO no es de una demostración: no se toca"
    if [ -f "$TIENDA/tienda.env" ]; then
        "$RAIZ/tools/tienda" down "$TIENDA" --borra
    fi
    rm -rf "${DEMO:?}"
}

# Quiet unless it fails; in a terminal a counter shows that it is alive.
compila() {
    local registro=$DEMO/compila.txt
    if ! {
        cd "$RAIZ" && cmake --preset release &&
            cmake --build --preset release --target kovtolmo kovtolmo-sql kovtolmo-mdb kovtolmo-pulsa
    } 2>&1 | tee "$registro" | muestra_avance; then
        tail -n 40 "$registro" >&2
        muere "el programa no se ha podido compilar; todo está en $registro"
    fi
}

muestra_avance() {
    local linea
    while IFS= read -r linea; do
        [ -t 1 ] && [[ $linea =~ ^\[[0-9]+/[0-9]+\] ]] && printf '\r    %s ' "${BASH_REMATCH[0]}"
    done
    [ ! -t 1 ] || printf '\r%40s\r' ''
}

pon_pagina() {
    cp -R "$RAIZ/demo/web/." "$TIENDA_RAIZ/"
    chmod -R a+rX "$TIENDA_RAIZ/escaparate" "$TIENDA_RAIZ"/{index,indices}.php
    sql -e "UPDATE ${TIENDA_PREFIJO}shop SET name='Valdeolmillo'"
}

sql() { "$RAIZ/tools/tienda" sql "$TIENDA" -N "$@"; }

# A program of the build, in the company's folder and with nobody at a screen; its lines are indented.
en_la_empresa() {
    local programa=$1
    shift
    (
        cd "$EMPRESA"
        unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
        export PATH_CONNECT="$EMPRESA/bases" KOV_UNIDADES="C:=$EMPRESA/disco"
        exec "$RAIZ/build/$programa" "$@"
    ) </dev/null
}

sangra() { sed -u 's/^\(.\)/  \1/'; }

# One run, by whatever starts it. Its standard output is the lines of its log.
pasada() {
    local registro=$1 estado=0 antes=$SECONDS
    shift
    en_la_empresa "$@" | tee "$registro" | sangra || estado=$?
    [ "$estado" -eq 0 ] || muere "el programa ha terminado con estado $estado"
    grep -q 'FIN VUELCO DATOS A PRESTASHOP' "$registro" || muere "la pasada no ha llegado a su fin"
    revisa "$registro"
    printf '  Ha tardado %s s.\n' $((SECONDS - antes))
}

# The feed writes its boxes where the operator would see them: on the standard error.
solostocks() {
    en_la_empresa kovtolmo /SOLOSTOCKS:000001 2>&1 | sangra ||
        muere "el fichero de Solostocks no se ha generado"
    printf '  %s productos, en %sKovTolmo.xml\n' \
        "$(grep -c '<PRODUCT>' "$EMPRESA/HISTORICOWEB/solostocks.xml")" "$TIENDA_WWW"
}

# The uploads that may fail in a healthy run, and why: the list or the batch had nothing in it, so that
# the file was never made.
MOTIVOS='sentencias.sql|un lote sin ninguna sentencia: nada cambiaba en esa parte
creapath.txt|ningún artículo de ese grupo traía fotos: no hay carpetas que crear
imgborra.txt|no había fotos antiguas que borrar'

explica() {
    local fichero motivo veces
    grep -hq 'ERROR SUBIENDO FICHERO' "$@" || return 0
    titulo "Los «ERROR SUBIENDO FICHERO» del registro"
    printf '  Son normales: el fichero no llegó a existir, porque no había nada que poner en él.\n\n'
    while IFS='|' read -r fichero motivo; do
        veces=$(cat "$@" | grep -c "ERROR SUBIENDO FICHERO $fichero" || true)
        [ "$veces" -eq 0 ] || printf '  %-14s %2s  %s\n' "$fichero" "$veces" "$motivo"
    done <<<"$MOTIVOS"
}

# Anything else that the log calls an error is one.
revisa() {
    local normales
    normales=$(sed 's/|.*//; s/\./\\./; s/^/ERROR SUBIENDO FICHERO /; s/$/$/' <<<"$MOTIVOS")
    if grep -E 'ERROR|No se ha podido conectar' "$1" | grep -Ev "$normales" >&2; then
        muere "la pasada ha dado errores que no son normales; la tienda sigue en pie (--para la recoge)"
    fi
}

cambia_un_precio() {
    local antes
    antes=$(precio_en_la_tienda)
    # The company changes a price, as the management program does: with the date of the change.
    printf "UPDATE M_ARTIC SET PVP1=%s, FECHAMODIFICACION=Date() WHERE CODARTICULO='%s';\n" \
        "$PRECIO_NUEVO" "$ARTICULO" >"$DEMO/cambio.sql"
    "$RAIZ/build/kovtolmo-sql" "$EMPRESA/bases/BD000001.$KOV_FORMA" "$DEMO/cambio.sql"
    printf '  La empresa cambia el precio del artículo %s, de %s a %s €.\n\n' "$ARTICULO" \
        "$(con_coma "$antes")" "$(con_coma "$PRECIO_NUEVO")"
}

precio_en_la_tienda() {
    sql -e "SELECT price FROM ${TIENDA_PREFIJO}product WHERE reference='$ARTICULO'"
}

con_coma() { LC_ALL=C printf '%.2f' "$1" | tr . ,; }

compara() {
    local registro
    printf '\n  %s añadidos   actualizados\n' "$(columna 18 '')"
    for registro in "$@"; do
        printf '  %-18s %8s %14s\n' "$(basename "$registro" .log) pasada" \
            "$(grep -c 'Añadiendo artículo' "$registro" || true)" \
            "$(grep -c 'Actualizando articulo ' "$registro" || true)"
    done
    printf '\n  En la segunda sólo viajan las fichas que han cambiado:\n'
    sed -n 's/.*Actualizando articulo /    /p' "$2"
    printf '  %s lleva la fecha de hoy, y en la tienda vale ya %s €; 0401003 no tiene fecha de\n' \
        "$ARTICULO" "$(con_coma "$(precio_en_la_tienda)")"
    printf '  modificación, y una ficha sin fecha se envía siempre. Las familias van todas en cada pasada.\n'
}

recuento() {
    local tabla nombre p=$TIENDA_PREFIJO
    while IFS='|' read -r tabla nombre; do
        printf '  %s %6s\n' "$(columna 32 "$nombre")" "$(sql -e "SELECT COUNT(*) FROM $p$tabla")"
    done <<'TABLAS'
category|Categorías, con raíz e inicio
product|Productos
product_lang|Textos de productos, por idioma
category_product|Productos en categorías
specific_price|Precios de tarifa y ofertas
tag|Etiquetas
product_tag|Etiquetas en productos
manufacturer|Fabricantes
attribute_group|Grupos de atributos
attribute|Atributos
product_attribute|Combinaciones
stock_available|Filas de existencias
image|Imágenes
attachment|Documentos adjuntos
cart_rule|Vales de descuento
TABLAS
}

# The company's own file, after all that was read from it and written into it.
comprueba_access() {
    local informe=$DEMO/access.txt
    titulo "El fichero de Access, después: kovtolmo-mdb comprueba BD000001.mdb"
    "$RAIZ/build/kovtolmo-mdb" comprueba "$EMPRESA/bases/BD000001.mdb" >"$informe" ||
        muere "el fichero de Access no está bien; lo que tiene está en $informe"
    grep -E '^Access|M_ARTIC|^wFAMPRESTA|^Todo' "$informe" | sangra
    printf '\n  Las demás tablas están en %s\n' "$informe"
}

despide() {
    cat <<TEXTO

  La tienda está en marcha:   $TIENDA_WWW
  El registro de hoy está en: $EMPRESA/HISTORICOWEB
  Para pararla y recogerlo:   tools/demo --para

TEXTO
}
