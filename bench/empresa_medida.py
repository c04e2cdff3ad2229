"""The companies whose runs bench/mide.py measures, and the folder that such a run needs."""
import dataclasses
import os
import pathlib
import subprocess

# The form of the company's databases: "sqlite", or "mdb" for files of Access.
FORMA = os.environ.get("KOV_FORMA", "sqlite")

FAMILIAS = 90
FOTOS_DISTINTAS = 8
BYTES_DE_DOCUMENTO = 200_000

# The scripts of the shop that use up a file, and that file.
FICHEROS_DE_GUIONES = {
    "ejecuta.php": "sentencias.sql", "dimensiona.php": "imgart.txt",
    "creapath.php": "creapath.txt", "borraimg.php": "imgborra.txt",
}


@dataclasses.dataclass(frozen=True)
class Surtido:
    """What a company sells. All articles are full: two languages, notes of 300 characters, five
    tariffs, an offer each, tags."""

    articulos: int
    fotos_por_articulo: int = 0
    existencias: bool = False
    documento_cada: int = 0  # one article in so many; 0 is none
    configurado_cada: int = 0
    valores: tuple = ()  # of each category of a configured article


def escribe(ruta, texto):
    ruta.write_text(texto, encoding="utf-8")


def codigo_de(k):
    return f"{k % 10:02}{k // 10 % 8:02}{k:06}"


def _es_uno_de(k, cada):
    return cada > 0 and k % cada == 0


def _guion_de_empresa(raiz, tienda):
    valores = {
        "SERVER_BD": "127.0.0.1", "PUERTO_BD": tienda.env["MYSQL_PUERTO"],
        "NOMBRE_BD": tienda.env["BD"], "USER_BD": tienda.env["USUARIO"],
        "PASS_BD": tienda.env["CLAVE"], "SERVER_FTP": "127.0.0.1",
        "PUERTO_FTP": tienda.env["FTP_PUERTO"], "USER_FTP": tienda.env["FTP_USUARIO"],
        "PASS_FTP": tienda.env["FTP_CLAVE"], "CARPETA_TIENDA": tienda.env["FTP_CARPETA"],
        "WWW": tienda.env["WWW"], "PS_PREFIJO": tienda.env["PREFIJO"], "PS_VERSION": "1",
    }
    texto = (raiz / "demo/empresa/empresa.sql").read_text(encoding="utf-8")
    for clave, valor in valores.items():
        texto = texto.replace("{" + clave + "}", valor)
    # No search index to rebuild and no makers: what is measured is the catalogue.
    return texto + ("UPDATE M_EMPRESA SET PS_INDICES1=Null, PS_INDICES2=Null, PSGRUPOMARCAS=Null,\n"
                    "    PS_MODOCONFIGURADOR=False;\n")


def _familias():
    for i in range(10):
        yield (f"INSERT INTO M_FAMILIA (CLAVE,NIVEL,DESCRIPCION,DESCRIPCION_EN,ACTIVOWEB) "
               f"VALUES ('{i:02}','0','Sección {i}','Section {i}','S');")
        for j in range(FAMILIAS // 10 - 1):
            yield (f"INSERT INTO M_FAMILIA (CLAVE,NIVEL,DESCRIPCION,DESCRIPCION_EN,ACTIVOWEB)"
                   f" VALUES ('{i:02}{j:02}','1','Familia {i}.{j}','Family {i}.{j}','S');")


def _articulo(k):
    codigo = codigo_de(k)
    notas = ("Pieza de catálogo con acabado en níquel, pensada para el uso diario. "
             "Se entrega montada.' & Chr(13) & Chr(10) & '")
    notas = "'" + (notas + "x" * 300)[: 300 + len("' & Chr(13) & Chr(10) & '")] + "'"
    yield ("INSERT INTO M_ARTIC (CODARTICULO,CODALTERNATIVO,DESCRIPCION,DESCRIPCIO2,NOTAS,"
           "DESCRIPCION_EN,DESCRIPCIO2_EN,NOTAS_EN,ETIQUETAS,ETIQUETAS_EN,PALABRAS,PALABRAS_EN,"
           "CODIVA,PVP1,PVP2,PVP3,PVP4,PVP5,KILOS,ACTIVOWEB,FAVORITO,FECHAMODIFICACION) VALUES ("
           f"'{codigo}','ALT{k}','Artículo número {k}','Texto corto del artículo {k}',{notas},"
           f"'Article number {k}','Short text of article {k}',{notas},"
           f"'menaje,acero {k % 40},','home,steel {k % 40},','claves {k}','keywords {k}',"
           f"1,{k % 90 + 0.95},{k % 80 + 0.9},{k % 70 + 0.85},{k % 60 + 0.8},{k % 50 + 0.75},"
           f"{k % 9 + 0.25},'S',{'True' if k % 50 == 0 else 'False'},#01/15/2020#);")
    yield ("INSERT INTO OFERTAS (CODARTICULO,IDCONF,DTOCOM1,DTOCOM2,DTOCOM3,DTOCOM4,"
           "PVPDEF,TARIFAOPROV,FECHADESDE,FECHAHASTA) VALUES ("
           f"'{codigo}','0',{k % 30 + 1},0,0,0,2,2,#01/01/2020#,#12/31/2039#);")


def _idiomas():
    yield ("INSERT INTO PS_IDIOMAS VALUES ('000001',1,'DESCRIPCION','DESCRIPCIO2','NOTAS',"
           "'DESCRIPCION','NOTAS','ETIQUETAS','PALABRAS','PALABRAS','DESCRIPCION',"
           "'DESCRIPCIO2','DESCRIPCION','DESCRIPCION');")
    yield ("INSERT INTO PS_IDIOMAS VALUES ('000001',2,'DESCRIPCION_EN','DESCRIPCIO2_EN',"
           "'NOTAS_EN','DESCRIPCION_EN','NOTAS_EN','ETIQUETAS_EN','PALABRAS_EN',"
           "'PALABRAS_EN','DESCRIPCION_EN','DESCRIPCIO2_EN','DESCRIPCION_EN',"
           "'DESCRIPCION_EN');")


def _existencias(k):
    for almacen in ("01", "02"):
        yield ("INSERT INTO M_EXIST (CODARTICULO,ANIO,CODALMACEN,EXISTENCIAS) VALUES ("
               f"'{codigo_de(k)}',YEAR(DATE()),'{almacen}',{k % 30});")


def _maestros_de_valores(valores):
    for categoria, cuantos in enumerate(valores, 1):
        yield ("INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ("
               f"'{categoria:03}','Categoría {categoria}');")
        for valor in range(1, cuantos + 1):
            yield ("INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ("
                   f"'{categoria:03}','{valor:03}','Valor {categoria}.{valor:03}');")


def _valores(k, valores):
    for categoria, cuantos in enumerate(valores, 1):
        for valor in range(1, cuantos + 1):
            yield ("INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,"
                   f"INC_PVP,PESO) VALUES ('{codigo_de(k)}','{categoria:03}','{valor:03}',"
                   f"{valor},{valor},{valor * categoria / 4},{valor / 8});")


def fotos_de(k, surtido, carpeta):
    """Few pictures serve all the articles; the shop gets each as many times as it is used."""
    return [carpeta / f"fotos/{(k * surtido.fotos_por_articulo + i) % FOTOS_DISTINTAS + 1}.jpg"
            for i in range(surtido.fotos_por_articulo)]


def documento_de(k, carpeta):
    return carpeta / f"documentos/ficha{k:06}.pdf"


def _fotos(k, surtido, carpeta):
    for i, foto in enumerate(fotos_de(k, surtido, carpeta), 1):
        columna = "FOTO" if i == 1 else f"FOTO{i}"
        yield f"UPDATE M_ARTIC SET {columna}='{foto}' WHERE CODARTICULO='{codigo_de(k)}';"


def _documento(k, carpeta):
    ruta = documento_de(k, carpeta)
    ruta.write_bytes(os.urandom(BYTES_DE_DOCUMENTO))
    yield ("INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ("
           f"'AR','W','{codigo_de(k)}','{ruta}','Ficha {k}');")


def _guion_de_articulos(surtido, carpeta):
    lineas = [*_familias(), *_maestros_de_valores(surtido.valores)]
    for k in range(surtido.articulos):
        lineas += _articulo(k)
        lineas += _fotos(k, surtido, carpeta)
        if surtido.existencias:
            lineas += _existencias(k)
        if _es_uno_de(k, surtido.documento_cada):
            lineas += _documento(k, carpeta)
        if _es_uno_de(k, surtido.configurado_cada):
            lineas += _valores(k, surtido.valores)
    lineas += _idiomas()
    return "\n".join(lineas) + "\n"


def _pon_guiones(raiz, carpeta):
    """The shop's scripts, each with an eye on it: it first keeps a copy of the file that it uses
    up, for the comparison, and at its end it notes its name and its seconds."""
    for guion in (raiz / "PHPSHOP").glob("*.php"):
        fichero = FICHEROS_DE_GUIONES.get(guion.name, "")
        vigia = ("<?php @mkdir(__DIR__ . '/lotes');"
                 f"if (@is_file(__DIR__ . '/{fichero}')) @copy(__DIR__ . '/{fichero}', __DIR__ . "
                 "'/lotes/' . sprintf('%06d', count((array) glob(__DIR__ . '/lotes/*'))) . "
                 f"'-{fichero}');"
                 "$inicioDelGuion = microtime(true); register_shutdown_function(function () {"
                 "file_put_contents(__DIR__ . '/tiempos.txt', basename(__FILE__) . ' ' . "
                 "(microtime(true) - $GLOBALS['inicioDelGuion']) . \"\\n\", FILE_APPEND); }); ?>")
        (carpeta / "PHPSHOP" / guion.name).write_bytes(vigia.encode() + guion.read_bytes())


def haz_empresa(raiz, construido, carpeta, tienda, surtido):
    """Makes the current folder of a run, with its databases under "bases"."""
    for nombre in ("bases", "PHPSHOP", "HISTORICOWEB", "fotos", "documentos"):
        (carpeta / nombre).mkdir(parents=True)
    if surtido.fotos_por_articulo:
        subprocess.run(["php", raiz / "bench/fotos.php", carpeta / "fotos", str(FOTOS_DISTINTAS)],
                       check=True)
    empresa, articulos = carpeta / "empresa.sql", carpeta / "articulos.sql"
    escribe(empresa, _guion_de_empresa(raiz, tienda))
    escribe(articulos, _guion_de_articulos(surtido, carpeta))
    sql = construido / "kovtolmo-sql"
    subprocess.run([sql, carpeta / f"bases/BDLOCAL.{FORMA}", empresa], check=True)
    subprocess.run([sql, carpeta / f"bases/BD000001.{FORMA}", empresa,
                    raiz / "demo/empresa/00_tablas.sql", articulos], check=True)
    _pon_guiones(raiz, carpeta)
