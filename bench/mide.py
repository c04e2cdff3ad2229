"""Whole runs against a private shop, timed. Called by tools/mide.

For each number of articles: a first load, a run with nothing changed, and the time that the mariadb
client takes for the very same sentences in one transaction on an empty copy of the shop. The articles
are full: two languages, notes of 300 characters, five tariffs, an offer each, tags, no pictures.
"""
import os
import pathlib
import platform
import re
import shutil
import subprocess
import sys
import tempfile
import time

EMPRESA = "000001"
FAMILIAS = 90


def escribe(ruta, texto):
    ruta.write_text(texto, encoding="utf-8")


class Tienda:
    """A shop brought up by tools/tienda."""

    def __init__(self, raiz, carpeta):
        self.mando = str(raiz / "tools/tienda")
        self.carpeta = carpeta / "tienda"
        self.manda("up", "--generacion", "1.6.1", "--idiomas", "2", "--vida-de", str(os.getpid()))
        lineas = (self.carpeta / "tienda.env").read_text().splitlines()
        pares = (linea.split("=", 1) for linea in lineas if "=" in linea)
        self.env = {clave.removeprefix("TIENDA_"): valor.strip("'\"") for clave, valor in pares}

    def manda(self, verbo, *opciones):
        subprocess.run([self.mando, verbo, str(self.carpeta), *opciones], check=True,
                       stdout=subprocess.DEVNULL)

    def sql(self, texto=None, fichero=None, bd=None):
        orden = [self.mando, "sql", str(self.carpeta), "-N", "--default-character-set=utf8mb4"]
        if bd:
            orden += ["-D", bd]
        entrada = open(fichero, "rb") if fichero else subprocess.DEVNULL
        if texto is not None:
            orden += ["-e", texto]
        hecho = subprocess.run(orden, stdin=entrada, capture_output=True, text=True)
        if hecho.returncode != 0:
            sys.exit(f"the client failed: {hecho.stderr[:2000]}")
        return hecho.stdout.strip()

    def reinicia(self):
        self.manda("reinicia", "--generacion", "1.6.1", "--idiomas", "2")

    def cpu(self):
        """Seconds of processor of the database server so far."""
        pid = (self.carpeta / "run/mysql.pid").read_text().split()[0]
        campos = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(campos[11]) + int(campos[12])) / os.sysconf("SC_CLK_TCK")

    def busca_referencias(self, codigos, carpeta):
        """Seconds of the look-ups of these articles' products, as a run makes them."""
        prefijo = self.env["PREFIJO"]
        fichero = carpeta / "busquedas.sql"
        escribe(fichero, "".join(
            f"SELECT p.id_product,p.reference,i.id_image,p.date_upd FROM {prefijo}product p LEFT JOIN "
            f"{prefijo}image i ON p.id_product=i.id_product WHERE p.reference='{codigo}';\n"
            for codigo in codigos))
        inicio = time.monotonic()
        self.sql(fichero=fichero, bd=self.env["BD"])
        return time.monotonic() - inicio


def guion_de_empresa(raiz, tienda):
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


def codigo_de(k):
    return f"{k % 10:02}{k // 10 % 8:02}{k:06}"


def guion_de_articulos(n):
    notas = ("Pieza de catálogo con acabado en níquel, pensada para el uso diario. "
             "Se entrega montada.' & Chr(13) & Chr(10) & '")
    notas = "'" + (notas + "x" * 300)[: 300 + len("' & Chr(13) & Chr(10) & '")] + "'"
    lineas = []
    for i in range(10):
        lineas.append(f"INSERT INTO M_FAMILIA (CLAVE,NIVEL,DESCRIPCION,DESCRIPCION_EN,ACTIVOWEB) "
                      f"VALUES ('{i:02}','0','Sección {i}','Section {i}','S');")
        for j in range(FAMILIAS // 10 - 1):
            lineas.append(f"INSERT INTO M_FAMILIA (CLAVE,NIVEL,DESCRIPCION,DESCRIPCION_EN,ACTIVOWEB)"
                          f" VALUES ('{i:02}{j:02}','1','Familia {i}.{j}','Family {i}.{j}','S');")
    for k in range(n):
        codigo = codigo_de(k)
        lineas.append(
            "INSERT INTO M_ARTIC (CODARTICULO,CODALTERNATIVO,DESCRIPCION,DESCRIPCIO2,NOTAS,"
            "DESCRIPCION_EN,DESCRIPCIO2_EN,NOTAS_EN,ETIQUETAS,ETIQUETAS_EN,PALABRAS,PALABRAS_EN,"
            "CODIVA,PVP1,PVP2,PVP3,PVP4,PVP5,KILOS,ACTIVOWEB,FAVORITO,FECHAMODIFICACION) VALUES ("
            f"'{codigo}','ALT{k}','Artículo número {k}','Texto corto del artículo {k}',{notas},"
            f"'Article number {k}','Short text of article {k}',{notas},"
            f"'menaje,acero {k % 40},','home,steel {k % 40},','claves {k}','keywords {k}',"
            f"1,{k % 90 + 0.95},{k % 80 + 0.9},{k % 70 + 0.85},{k % 60 + 0.8},{k % 50 + 0.75},"
            f"{k % 9 + 0.25},'S',{'True' if k % 50 == 0 else 'False'},#01/15/2020#);")
        lineas.append("INSERT INTO OFERTAS (CODARTICULO,IDCONF,DTOCOM1,DTOCOM2,DTOCOM3,DTOCOM4,"
                      "PVPDEF,TARIFAOPROV,FECHADESDE,FECHAHASTA) VALUES ("
                      f"'{codigo}','0',{k % 30 + 1},0,0,0,2,2,#01/01/2020#,#12/31/2039#);")
    lineas.append("INSERT INTO PS_IDIOMAS VALUES ('000001',1,'DESCRIPCION','DESCRIPCIO2','NOTAS',"
                  "'DESCRIPCION','NOTAS','ETIQUETAS','PALABRAS','PALABRAS','DESCRIPCION',"
                  "'DESCRIPCIO2','DESCRIPCION','DESCRIPCION');")
    lineas.append("INSERT INTO PS_IDIOMAS VALUES ('000001',2,'DESCRIPCION_EN','DESCRIPCIO2_EN',"
                  "'NOTAS_EN','DESCRIPCION_EN','NOTAS_EN','ETIQUETAS_EN','PALABRAS_EN',"
                  "'PALABRAS_EN','DESCRIPCION_EN','DESCRIPCIO2_EN','DESCRIPCION_EN',"
                  "'DESCRIPCION_EN');")
    return "\n".join(lineas) + "\n"


def haz_empresa(raiz, carpeta, tienda, n):
    if carpeta.exists():
        shutil.rmtree(carpeta)
    for nombre in ("bases", "PHPSHOP", "HISTORICOWEB"):
        (carpeta / nombre).mkdir(parents=True)
    empresa, articulos = carpeta / "empresa.sql", carpeta / "articulos.sql"
    escribe(empresa, guion_de_empresa(raiz, tienda))
    escribe(articulos, guion_de_articulos(n))
    sql = str(raiz / "build/kovtolmo-sql")
    subprocess.run([sql, carpeta / "bases/BDLOCAL.sqlite", empresa], check=True)
    subprocess.run([sql, carpeta / "bases/BD000001.sqlite", empresa,
                    raiz / "demo/empresa/00_tablas.sql", articulos], check=True)
    for guion in (raiz / "PHPSHOP").glob("*.php"):
        shutil.copy(guion, carpeta / "PHPSHOP")
    # The script that carries out a batch first keeps a copy of it, for the comparison.
    ejecuta = carpeta / "PHPSHOP/ejecuta.php"
    guarda = ("<?php @mkdir(__DIR__ . '/lotes'); @copy(__DIR__ . '/sentencias.sql', __DIR__ . "
              "'/lotes/' . sprintf('%06d', count((array) glob(__DIR__ . '/lotes/*'))) . '.sql'); ?>")
    ejecuta.write_bytes(guarda.encode() + ejecuta.read_bytes())


def corre(raiz, carpeta):
    """One run. Seconds, peak memory in MB, and its output."""
    entorno = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
    entorno["PATH_CONNECT"] = str(carpeta / "bases")
    inicio = time.monotonic()
    proceso = subprocess.Popen([raiz / "build/kovtolmo", f"/PRESTASHOP:{EMPRESA}"], cwd=carpeta,
                               env=entorno, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True)
    salida = proceso.stdout.read()
    _, estado, uso = os.wait4(proceso.pid, 0)
    segundos = time.monotonic() - inicio
    if estado != 0 or "FIN VUELCO DATOS A PRESTASHOP" not in salida:
        sys.exit(f"the run failed with {estado}:\n{salida[-3000:]}")
    if "ERRORES" in salida:
        sys.exit("sentences failed:\n" + salida[salida.index("ERRORES"):][:3000])
    return segundos, uso.ru_maxrss / 1024, salida


def por_el_cliente(tienda, carpeta, lotes, etiquetas):
    """Seconds of the mariadb client for the same sentences, in one transaction, on an empty copy.

    The tags go in beforehand: a run creates them at once, outside its batches.
    """
    partes = [b"SET NAMES latin1;\nSET sql_mode='';\nSTART TRANSACTION;\n"]
    cuantas = 0
    for lote in sorted(lotes.glob("*.sql")):
        for sentencia in lote.read_bytes().split(b"||"):
            if sentencia.strip():
                partes.append(sentencia.strip() + b";\n")
                cuantas += 1
    partes.append(b"COMMIT;\n")
    fichero = carpeta / "todas.sql"
    fichero.write_bytes(b"".join(partes))
    tienda.reinicia()
    tienda.sql(f"ALTER TABLE {tienda.env['PREFIJO']}category ADD kov_familia VARCHAR(20); "
               f"ALTER TABLE {tienda.env['PREFIJO']}stock_available MODIFY id_stock_available "
               "BIGINT UNSIGNED NOT NULL AUTO_INCREMENT", bd=tienda.env["BD"])
    altas = carpeta / "etiquetas.sql"
    escribe(altas, "".join(f"INSERT INTO {tienda.env['PREFIJO']}tag VALUES ({','.join(fila)});\n"
                           for fila in etiquetas))
    tienda.sql(fichero=altas, bd=tienda.env["BD"])
    inicio = time.monotonic()
    tienda.sql(fichero=fichero, bd=tienda.env["BD"])
    return time.monotonic() - inicio, cuantas


def mide(raiz, carpeta, tienda, n):
    empresa = carpeta / f"empresa{n}"
    haz_empresa(raiz, empresa, tienda, n)
    tienda.reinicia()
    filas = []
    for nombre in ("first load", "nothing changed"):
        antes = tienda.cpu()
        segundos, memoria, salida = corre(raiz, empresa)
        servidor = tienda.cpu() - antes
        escritos = len(re.findall("Añadiendo artículo|Actualizando articulo ", salida))
        filas.append((nombre, segundos, memoria, servidor, escritos))
        if nombre == "first load":
            lotes = carpeta / f"lotes{n}"
            shutil.copytree(pathlib.Path(tienda.env["RAIZ"]) / "lotes", lotes)
    busqueda = tienda.busca_referencias([codigo_de(k) for k in range(n)], carpeta)
    etiquetas = [linea.split("\t") for linea in tienda.sql(
        f"SELECT id_tag,id_lang,QUOTE(name) FROM {tienda.env['PREFIJO']}tag",
        bd=tienda.env["BD"]).splitlines()]
    return filas, busqueda, por_el_cliente(tienda, carpeta, carpeta / f"lotes{n}", etiquetas)


def procesador():
    texto = pathlib.Path("/proc/cpuinfo").read_text()
    modelo = re.search(r"model name\s*: (.*)", texto)
    return modelo.group(1) if modelo else platform.processor()


def main():
    raiz = pathlib.Path(sys.argv[1])
    numeros = [int(n) for n in sys.argv[2:]]
    print(f"{os.cpu_count()} x {procesador()}, Linux {platform.release()}\n")
    print(f"{'N':>6} {'run':16} {'seconds':>8} {'art/s':>7} {'MB':>5} {'MySQL cpu':>9} {'rest':>7} "
          f"{'written':>8}")
    with tempfile.TemporaryDirectory(prefix="kovtolmo-mide-") as temporal:
        carpeta = pathlib.Path(temporal)
        carpeta.chmod(0o755)  # the servers run as an ordinary user
        tienda = Tienda(raiz, carpeta)
        try:
            for n in numeros:
                filas, busqueda, (cliente, sentencias) = mide(raiz, carpeta, tienda, n)
                for nombre, segundos, memoria, servidor, escritos in filas:
                    print(f"{n:6} {nombre:16} {segundos:8.2f} {n / segundos:7.0f} {memoria:5.0f} "
                          f"{servidor:9.2f} {segundos - servidor:7.2f} {escritos:8}")
                print(f"{n:6} {'look-ups alone':16} {busqueda:8.2f}   by reference, on the full shop")
                print(f"{n:6} {'mariadb client':16} {cliente:8.2f}   {sentencias} sentences; "
                      f"first load / client = {filas[0][1] / cliente:.2f}\n", flush=True)
        finally:
            tienda.manda("down")


if __name__ == "__main__":
    main()
