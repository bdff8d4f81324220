"""The PyVISA backend that uses Kolvane: pyvisa.ResourceManager("@kolvane")."""

from kolvane import __version__

from .library import KolvaneLibrary

WRAPPER_CLASS = KolvaneLibrary

__all__ = ["KolvaneLibrary", "WRAPPER_CLASS", "__version__"]
