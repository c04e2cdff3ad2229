"""Whole runs against a private shop, timed. tools/mide calls it and tells what there is to ask."""
import argparse
import collections
import math
import os
import pathlib
import platform
import re
import shutil
import subprocess
import sys
import tempfile
import time

import comparacion
from empresa_medida import Surtido, codigo_de, documento_de, fotos_de, haz_empresa

EMPRESA = "000001"
PEDIDA, NADA = "first load", "nothing changed"

# What a run is at from a line of its log to the next one. The first that fits.
TAREAS = (
    ("documents", re.compile("SUBIENDO FICHEROS ADJUNTOS|Subiendo adjunto ")),
    ("pictures up", re.compile("Subiendo imagen ")),
    ("sizes", re.compile("Dimensionando rango ")),
    ("batches", re.compile("SUBIENDO FICHERO |EJECUTANDO REMOTAMENTE ")),
    ("the rest", re.compile("")),
)

COMPLETA = {"fotos_por_articulo": 2, "existencias": True, "documento_cada": 10,
            "configurado_cada": 5, "valores": (2, 5)}
COMBINACIONES_DE_UNO = ((50, 100), (100, 100), (100, 200))


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

    def segundos_de_guiones(self):
        """Seconds of each of the shop's scripts since the shop is fresh."""
        segundos = collections.Counter()
        for linea in (pathlib.Path(self.env["RAIZ"]) / "tiempos.txt").read_text().splitlines():
            guion, cuantos = linea.split()
            segundos[guion] += float(cuantos)
        return segundos


class Corrida:
    """One run of the program and what it took."""

    def __init__(self, construido, carpeta, tienda):
        entorno = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
        entorno["PATH_CONNECT"] = str(carpeta / "bases")
        self.tareas = collections.Counter()
        self.memoria = 0
        antes, inicio = tienda.cpu(), time.monotonic()
        proceso = subprocess.Popen([construido / "kovtolmo", f"/PRESTASHOP:{EMPRESA}"], cwd=carpeta,
                                   env=entorno, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT, text=True)
        salida = "".join(self._sigue(proceso, inicio))
        estado = proceso.wait()
        self.segundos = time.monotonic() - inicio
        self.mysql = tienda.cpu() - antes
        self.escritos = len(re.findall("Añadiendo artículo|Actualizando articulo ", salida))
        if estado != 0 or "FIN VUELCO DATOS A PRESTASHOP" not in salida:
            sys.exit(f"the run failed with {estado}:\n{salida[-3000:]}")
        if "ERRORES" in salida:
            sys.exit("sentences failed:\n" + salida[salida.index("ERRORES"):][:3000])

    def _sigue(self, proceso, inicio):
        """Hands on the lines, and puts the time between each two down to what was being done."""
        tarea, desde = TAREAS[-1][0], inicio
        for linea in proceso.stdout:
            ahora = time.monotonic()
            self.tareas[tarea] += ahora - desde
            tarea, desde = next(nombre for nombre, patron in TAREAS if patron.search(linea)), ahora
            self._mira_memoria(proceso.pid)
            yield linea

    def _mira_memoria(self, pid):
        """The peak so far in MB. What a parent learns of its child's at the end won't do: the
        kernel counts the parent's own in it, from before the program was loaded."""
        try:
            estado = pathlib.Path(f"/proc/{pid}/status").read_text()
        except OSError:
            return
        if hallado := re.search(r"VmHWM:\s*(\d+) kB", estado):
            self.memoria = int(hallado.group(1)) / 1024


class Medidor:
    """Runs companies one after the other in one shop and prints a line for each result."""

    def __init__(self, raiz, construido, carpeta):
        self.raiz, self.construido, self.carpeta = raiz, construido, carpeta
        self.tienda = Tienda(raiz, carpeta)

    def mide(self, surtido, compara):
        """A first load, a run with nothing changed and, if wanted, the same work by plain tools."""
        empresa = self.carpeta / "empresa"
        haz_empresa(self.raiz, self.construido, empresa, self.tienda, surtido)
        self.tienda.reinicia()
        carga = self._corre(PEDIDA, surtido, empresa)
        guiones = self.tienda.segundos_de_guiones()
        enviados = self.carpeta / "enviados"
        shutil.copytree(pathlib.Path(self.tienda.env["RAIZ"]) / "lotes", enviados)
        self._reparto(carga, guiones)
        self._corre(NADA, surtido, empresa)
        codigos = [codigo_de(k) for k in range(surtido.articulos)]
        busqueda = comparacion.busca_referencias(self.tienda, codigos, self.carpeta)
        self._linea(surtido, "look-ups alone", busqueda, "by reference, on the full shop")
        if compara:
            suma = self._compara(surtido, empresa, enviados)
            print(f"{'':23} first load / the same by plain tools = {carga.segundos / suma:.2f}")
        print(flush=True)
        shutil.rmtree(empresa)
        shutil.rmtree(enviados)

    def _corre(self, nombre, surtido, empresa):
        corrida = Corrida(self.construido, empresa, self.tienda)
        print(f"{surtido.articulos:6} {nombre:16} {corrida.segundos:8.2f} "
              f"{surtido.articulos / corrida.segundos:7.0f} {corrida.memoria:5.0f} "
              f"{corrida.mysql:9.2f} {corrida.segundos - corrida.mysql:7.2f} {corrida.escritos:8}",
              flush=True)
        return corrida

    def _linea(self, surtido, nombre, segundos, nota):
        print(f"{surtido.articulos:6} {nombre:16} {segundos:8.2f}   {nota}", flush=True)

    def _reparto(self, corrida, guiones):
        tareas = [f"{nombre} {corrida.tareas[nombre]:.2f}" for nombre, _ in TAREAS]
        print(f"{'':23} of it: {', '.join(tareas)}")
        guiones = [f"{guion} {segundos:.2f}" for guion, segundos in guiones.most_common(3)]
        print(f"{'':23} in the shop's scripts: {', '.join(guiones)}", flush=True)

    def _compara(self, surtido, empresa, enviados):
        """Seconds of all that plain tools need for what the first load did."""
        etiquetas = comparacion.etiquetas_de(self.tienda)
        segundos, mysql, sentencias = comparacion.por_el_cliente(
            self.tienda, self.carpeta, enviados, etiquetas)
        self._linea(surtido, "mariadb client", segundos,
                    f"{sentencias} sentences, {mysql:.2f} of MySQL cpu")
        if not surtido.fotos_por_articulo:
            return segundos
        return segundos + self._compara_ficheros(surtido, empresa, enviados)

    def _compara_ficheros(self, surtido, empresa, enviados):
        n = surtido.articulos
        fotos = [foto for k in range(n) for foto in fotos_de(k, surtido, empresa)]
        documentos = [documento_de(k, empresa) for k in range(0, n, surtido.documento_cada)]
        subidas = [(foto, f"img/p/{i}.jpg") for i, foto in enumerate(fotos, 1)]
        subidas += [(documento, f"download/{documento.name}") for documento in documentos]
        subidas += [(lista, lista.name[len("000000-"):]) for lista in sorted(enviados.iterdir())]
        curl, octetos = comparacion.por_curl(self.tienda, self.carpeta, subidas)
        self._linea(surtido, "curl by FTP", curl,
                    f"{len(subidas)} files, {octetos / 1e6:.0f} MB in all")
        php, cuantas = comparacion.por_php(self.tienda, self.carpeta, self.raiz, fotos)
        self._linea(surtido, "sizes by PHP", php, f"{cuantas} of {len(fotos)} pictures")
        return curl + php


def procesador():
    texto = pathlib.Path("/proc/cpuinfo").read_text()
    modelo = re.search(r"model name\s*: (.*)", texto)
    return modelo.group(1) if modelo else platform.processor()


def pedido():
    partes = argparse.ArgumentParser()
    partes.add_argument("raiz", type=pathlib.Path)
    partes.add_argument("--construido", type=pathlib.Path, help="the build folder")
    clase = partes.add_mutually_exclusive_group()
    clase.add_argument("--completa", action="store_true")
    clase.add_argument("--combinaciones", action="store_true")
    partes.add_argument("numeros", type=int, nargs="*")
    return partes.parse_args()


def surtidos(que):
    """What to measure, and whether by plain tools too."""
    if que.completa:
        return [(Surtido(n, **COMPLETA), True) for n in que.numeros or (1000,)]
    if que.combinaciones:
        # The client would take an hour for the first: a transaction looks through all the products
        # that it holds for each sentence.
        return ([(Surtido(n, configurado_cada=1, valores=(10, 10)), False)
                 for n in que.numeros or (1000,)] +
                [(Surtido(1, configurado_cada=1, valores=valores), True)
                 for valores in COMBINACIONES_DE_UNO])
    return [(Surtido(n), True) for n in que.numeros or (1000, 10000)]


def rotulo(surtido):
    cuantas = math.prod(surtido.valores)
    return f"{cuantas} combinations for one article in {surtido.configurado_cada}"


def main():
    que = pedido()
    raiz = que.raiz.resolve()
    construido = (que.construido or raiz / "build").resolve()
    print(f"{os.cpu_count()} x {procesador()}, Linux {platform.release()}\n")
    print(f"{'N':>6} {'run':16} {'seconds':>8} {'art/s':>7} {'MB':>5} {'MySQL cpu':>9} {'rest':>7} "
          f"{'written':>8}")
    with tempfile.TemporaryDirectory(prefix="kovtolmo-mide-") as temporal:
        carpeta = pathlib.Path(temporal)
        carpeta.chmod(0o755)  # the servers run as an ordinary user
        medidor = Medidor(raiz, construido, carpeta)
        try:
            for surtido, compara in surtidos(que):
                if surtido.valores:
                    print(f"{'':6} {rotulo(surtido)}")
                medidor.mide(surtido, compara)
        finally:
            medidor.tienda.manda("down")


if __name__ == "__main__":
    main()
