# The rows that a shop has from its installation. Read by tools/tienda.

# Name, ISO code, language code, date format, root category and home category of each language, in
# the order in which a shop gets them.
IDIOMAS_TIENDA=(
    "Español (Spanish)|es|es-es|d/m/Y|Raíz|Inicio"
    "English (English)|en|en-us|m/d/Y|Root|Home"
    "Français (French)|fr|fr-fr|d/m/Y|Racine|Accueil"
    "Deutsch (German)|de|de-de|d.m.Y|Wurzel|Startseite"
    "Italiano (Italian)|it|it-it|d/m/Y|Radice|Principale"
    "Português (Portuguese)|pt|pt-pt|d/m/Y|Raiz|Início"
)

# Name, sizes in 1.5.6, sizes from 1.6.0 on, for products, for categories (in 1.5.6 and from 1.6.0 on).
TAMANOS_TIENDA=(
    "cart_default|-|80,80|1|0,0"
    "small_default|45,45|98,98|1|1,0"
    "medium_default|58,58|125,125|1|1,1"
    "home_default|124,124|250,250|1|0,0"
    "large_default|264,264|458,458|1|1,0"
    "thickbox_default|600,600|800,800|1|0,0"
    "category_default|500,150|870,217|0|1,1"
)

filas_de_la_instalacion() {
    local p=$PREFIJO hoy="'2014-01-01 00:00:00'"
    cat <<SQL
INSERT INTO ${p}configuration (name,value,date_add,date_upd) VALUES
  ('ps_version_db','$VERSION',$hoy,$hoy), ('PS_LANG_DEFAULT','1',$hoy,$hoy), ('PS_SHOP_DEFAULT','1',$hoy,$hoy);
INSERT INTO ${p}shop (id_shop,id_shop_group,name,id_category,id_theme) VALUES (1,1,'Tienda de prueba',2,1);
INSERT INTO ${p}category (id_category,id_parent,level_depth,nleft,nright,active,date_add,date_upd,position,is_root_category) VALUES
  (1,0,0,1,4,1,$hoy,$hoy,0,0), (2,1,1,2,3,1,$hoy,$hoy,0,1);
INSERT INTO ${p}category_shop (id_category,id_shop,position) VALUES (1,1,0), (2,1,0);
INSERT INTO ${p}category_group (id_category,id_group) VALUES (1,1), (1,2), (1,3), (2,1), (2,2), (2,3);
SQL
    filas_de_idiomas
    filas_de_tamanos
}

filas_de_idiomas() {
    local p=$PREFIJO id nombre iso codigo fecha raiz inicio
    for ((id = 1; id <= IDIOMAS; id++)); do
        IFS='|' read -r nombre iso codigo fecha raiz inicio <<<"${IDIOMAS_TIENDA[id - 1]}"
        cat <<SQL
INSERT INTO ${p}lang (id_lang,name,active,iso_code,language_code,date_format_lite,date_format_full) VALUES
  ($id,'$nombre',1,'$iso','$codigo','$fecha','$fecha H:i:s');
INSERT INTO ${p}category_lang (id_category,id_shop,id_lang,name,link_rewrite) VALUES
  (1,1,$id,'$raiz','root'), (2,1,$id,'$inicio','home');
SQL
    done
}

filas_de_tamanos() {
    local fila nombre antes despues productos categorias medidas
    for fila in "${TAMANOS_TIENDA[@]}"; do
        IFS='|' read -r nombre antes despues productos categorias <<<"$fila"
        if [ "$GENERACION" = 1.5.6 ]; then
            medidas=$antes categorias=${categorias%,*}
        else
            medidas=$despues categorias=${categorias#*,}
        fi
        [ "$medidas" = - ] && continue
        echo "INSERT INTO ${PREFIJO}image_type (name,width,height,products,categories) VALUES" \
            "('$nombre',$medidas,$productos,$categorias);"
    done
}
