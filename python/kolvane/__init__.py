"""Opens the Kolvane command terminal on a device object written in Python.

    terminal = kolvane.MainClass()
    terminal.InitTerminal(device)
    terminal.OpenTerminal(1, 0)
"""

from ._kolvane import Error, MainClass, NoDisplay
from .hosts import IndexedHost, IndexedIO, SingleHost

__all__ = ["Error", "IndexedHost", "IndexedIO", "MainClass", "NoDisplay", "SingleHost"]
