"""Listens on 127.0.0.1 and starts one process of a server for each connection, as inetd does.

    escucha.py PUERTO ORDEN [ARGUMENTO ...]

ProFTPD's own listener sleeps for 0.4 s whenever a session ends, and the next one waits for it; a run
opens sessions one after another, so it would measure that sleep and little else.
"""
import signal
import socket
import subprocess
import sys

puerto, orden = int(sys.argv[1]), sys.argv[2:]
signal.signal(signal.SIGTERM, signal.SIG_DFL)

try:
    oyente = socket.create_server(("127.0.0.1", puerto), backlog=64)
except OSError as error:
    sys.exit(f"could not bind 127.0.0.1:{puerto}: {error.strerror}")
print("listening", file=sys.stderr, flush=True)

sesiones = []
while True:
    conexion, _ = oyente.accept()
    sesiones = [sesion for sesion in sesiones if sesion.poll() is None]
    with conexion:
        sesiones.append(subprocess.Popen(orden, stdin=conexion, stdout=conexion))
