"""Opens the Kolvane command terminal on a device object written in Python.

    with kolvane.MainClass() as terminal:
        terminal.InitTerminal(device)
        terminal.OpenTerminal(1, 0)
"""

from ._kolvane import MainClass, __version__
from .errors import Error, NoDisplay
from .hosts import IndexedHost, IndexedIO, SingleHost

__all__ = ["Error", "IndexedHost", "IndexedIO", "MainClass", "NoDisplay", "SingleHost", "__version__"]

# Tracebacks and pickles name the package, which stays, and not the file in which a class happens to be.
for _public in (Error, NoDisplay, IndexedHost, IndexedIO, SingleHost):
    _public.__module__ = __name__
