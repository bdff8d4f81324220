"""Runs tests on their own X server, one that resets after its last client: with_display.py MODULE..."""

import os
import subprocess
import sys


def start_server():
    """The server's process, and the name of its display."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-nolisten", "tcp"], pass_fds=[write_end], stderr=subprocess.DEVNULL
    )
    os.close(write_end)
    with os.fdopen(read_end) as number:
        return server, ":" + number.readline().strip()


def main(modules):
    server, display = start_server()
    try:
        environment = {**os.environ, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb"}
        return subprocess.run([sys.executable, "-m", "unittest", "-v", *modules], env=environment).returncode
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
