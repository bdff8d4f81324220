#!/usr/bin/python3
"""The cost of a query from Python, compared with a bare loop on a socket and, if installed, pyvisa-py.

PYTHONPATH=build/python bench/python_query.py build/bin/kolvane-amplifier

Each in turn, fifteen rounds; the table has the best round of each.
"""

import socket
import subprocess
import sys
import time

import kolvane

COMMAND = "MSV? 1"
QUERIES = 2000
ROUNDS = 15


def bare_loop(port):
    with socket.create_connection(("127.0.0.1", port)) as connection:
        connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        start = time.perf_counter()
        for _ in range(QUERIES):
            connection.sendall(COMMAND.encode("cp1252") + b"\n")
            answer = connection.recv(4096)
            while not answer.endswith(b"\r\n"):
                answer += connection.recv(4096)
            answer[:-2].decode("cp1252")
        return time.perf_counter() - start


def instrument_loop(port):
    with kolvane.Instrument(f"TCPIP::127.0.0.1::{port}::SOCKET") as instrument:
        start = time.perf_counter()
        for _ in range(QUERIES):
            instrument.query(COMMAND)
        return time.perf_counter() - start


def visa_loop(backend):
    import pyvisa

    manager = pyvisa.ResourceManager("@" + backend)

    def run(port):
        name = f"TCPIP::127.0.0.1::{port}::SOCKET"
        with manager.open_resource(name, read_termination="\r\n", write_termination="\n") as instrument:
            start = time.perf_counter()
            for _ in range(QUERIES):
                instrument.query(COMMAND)
            return time.perf_counter() - start

    return run


def loops():
    yield "socket", bare_loop
    yield "kolvane.Instrument", instrument_loop
    for backend in ("kolvane", "py"):
        try:
            yield f"PyVISA @{backend}", visa_loop(backend)
        except (ImportError, ValueError):
            print(f"PyVISA @{backend} is not installed", file=sys.stderr)


def main():
    with subprocess.Popen([sys.argv[1], "--tcp", "0"], stdout=subprocess.PIPE, text=True) as amplifier:
        try:
            port = int(amplifier.stdout.readline().rsplit(":", 1)[1])
            measured = list(loops())
            rounds = [[run(port) for name, run in measured] for _ in range(ROUNDS)]
        finally:
            amplifier.kill()
    best = [min(times) / QUERIES * 1e6 for times in zip(*rounds)]
    for (name, run), microseconds in zip(measured, best):
        print(f"{name:20} {microseconds:8.2f} µs {microseconds / best[0]:6.2f}")


if __name__ == "__main__":
    main()
