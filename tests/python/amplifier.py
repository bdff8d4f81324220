"""The simulated amplifier as a process, for tests that use it."""

import os
import subprocess
import tempfile


class Amplifier:
    """Over TCP/IP, or with pty=True over a pseudo terminal; `resource` names it."""

    def __init__(self, pty=False, *options):
        self._folder = tempfile.TemporaryDirectory()
        link = os.path.join(self._folder.name, "line")
        program = os.environ["KOLVANE_AMPLIFIER"]
        self._process = subprocess.Popen(
            [program, *(("--pty", link) if pty else ("--tcp", "0")), "--exit-with-parent", *options],
            stdout=subprocess.PIPE,
            text=True,
        )
        line = self._process.stdout.readline()
        self.port = 0 if pty else int(line.rsplit(":", 1)[1])
        self.resource = f"ASRL{link}::INSTR" if pty else f"TCPIP::127.0.0.1::{self.port}::SOCKET"

    def close(self):
        self._process.kill()
        self._process.wait()
        self._process.stdout.close()
        self._folder.cleanup()
