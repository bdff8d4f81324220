"""Talks to instruments, and opens the Kolvane command terminal on a device object written in Python.

    with kolvane.Instrument("TCPIP::192.168.1.7::5025::SOCKET") as amplifier:
        print(amplifier.query("*IDN?"))

    with kolvane.MainClass() as terminal:
        terminal.InitTerminal(device)
        terminal.OpenTerminal(1, 0)

    kolvane.send("*IDN?", connect="TCPIP::192.168.1.7::5025::SOCKET", on_line=print)
"""

from ._kolvane import MainClass, __version__
from .errors import Error, InstrumentError, NoDisplay
from .headless import LineKind, Port, RunOptions, RunStatus, list_ports, run, send
from .hosts import IndexedHost, IndexedIO, SingleHost
from .instrument import Instrument

__all__ = [
    "Error",
    "IndexedHost",
    "IndexedIO",
    "Instrument",
    "InstrumentError",
    "LineKind",
    "MainClass",
    "NoDisplay",
    "Port",
    "RunOptions",
    "RunStatus",
    "SingleHost",
    "__version__",
    "list_ports",
    "run",
    "send",
]

# Tracebacks and pickles name the package, which is stable, instead of the defining file.
for _name in __all__:
    if hasattr(globals()[_name], "__module__"):
        globals()[_name].__module__ = __name__
