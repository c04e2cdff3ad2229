"""The same work as a run's, done by plain tools: what bench/mide.py compares a run with."""
import shutil
import subprocess
import time

from empresa_medida import escribe


def busca_referencias(tienda, codigos, carpeta):
    """Seconds of the look-ups of these articles' products, as a run makes them."""
    prefijo = tienda.env["PREFIJO"]
    fichero = carpeta / "busquedas.sql"
    escribe(fichero, "".join(
        f"SELECT p.id_product,p.reference,i.id_image,p.date_upd FROM {prefijo}product p LEFT JOIN "
        f"{prefijo}image i ON p.id_product=i.id_product WHERE p.reference='{codigo}';\n"
        for codigo in codigos))
    inicio = time.monotonic()
    tienda.sql(fichero=fichero, bd=tienda.env["BD"])
    return time.monotonic() - inicio


def etiquetas_de(tienda):
    """The rows of the shop's tags: a run creates them at once, outside its batches."""
    return [linea.split("\t") for linea in tienda.sql(
        f"SELECT id_tag,id_lang,QUOTE(name) FROM {tienda.env['PREFIJO']}tag",
        bd=tienda.env["BD"]).splitlines()]


def por_el_cliente(tienda, carpeta, lotes, etiquetas):
    """Seconds of the mariadb client for the same sentences in one transaction, on an empty copy of
    the shop that holds the tags beforehand; the server's processor in them; and the sentences."""
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
    inicio, antes = time.monotonic(), tienda.cpu()
    tienda.sql(fichero=fichero, bd=tienda.env["BD"])
    return time.monotonic() - inicio, tienda.cpu() - antes, cuantas


def por_curl(tienda, carpeta, subidas):
    """Seconds of curl for these uploads, (local path, remote name) each, in one active session; and
    the bytes in them."""
    base = f"ftp://127.0.0.1:{tienda.env['FTP_PUERTO']}{tienda.env['FTP_CARPETA']}"
    lineas = [f"user = \"{tienda.env['FTP_USUARIO']}:{tienda.env['FTP_CLAVE']}\"",
              'ftp-port = "-"', 'ftp-method = "nocwd"', "silent", "show-error", "fail-early"]
    for local, remoto in subidas:
        lineas += [f'upload-file = "{local}"', f'url = "{base}{remoto}"']
    mandato = carpeta / "curl.conf"
    mandato.touch(mode=0o600)
    escribe(mandato, "\n".join(lineas) + "\n")
    inicio = time.monotonic()
    subprocess.run(["curl", "--disable", "--config", mandato], check=True)
    return time.monotonic() - inicio, sum(local.stat().st_size for local, _ in subidas)


def por_php(tienda, carpeta, raiz, fotos):
    """Seconds of one PHP process for the shop's sizes of these pictures; and how many it made."""
    tamanos = tienda.sql(f"SELECT name,width,height FROM {tienda.env['PREFIJO']}image_type "
                         "WHERE products=1", bd=tienda.env["BD"])
    hechas = carpeta / "tamanos"
    hechas.mkdir()
    escribe(carpeta / "tamanos.txt", tamanos)
    escribe(carpeta / "fotos.txt", "\n".join(str(foto) for foto in fotos))
    inicio = time.monotonic()
    subprocess.run(["php", raiz / "bench/tamanos.php", carpeta / "tamanos.txt",
                    carpeta / "fotos.txt", hechas], check=True)
    segundos = time.monotonic() - inicio
    cuantas = len(list(hechas.iterdir()))
    shutil.rmtree(hechas)
    return segundos, cuantas
