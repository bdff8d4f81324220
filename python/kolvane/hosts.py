"""What the terminal asks of a device object: protocols for type checkers, and a reference for readers."""

from typing import Optional, Protocol, Tuple, Union

Value = Union[None, bool, int, float, str, bytes]


class IndexedIO(Protocol):
    """The operations of many devices, each addressed by its index (operating mode 0)."""

    def InitializeDevice(self, DevIdx: int) -> object:
        """Opens (or opens again) the device."""

    def CloseDevice(self, DevIdx: int) -> object: ...

    def WriteCommand(self, DevIdx: int, Command: str, Terminator: int, Extra: int) -> object:
        """Terminator: 2 CR LF, -1 nothing, 0 to 255 that character. Extra is 0."""

    def Read(
        self, DevIdx: int, Binary: int, Zero: int, Terminator: int, Count: int
    ) -> Tuple[Optional[str], Optional[bytes]]:
        """Returns (answer, buffer).

        Binary 0: the answer is the text up to the character Terminator (10 for
        CR LF) or of Count characters. Binary 1: the buffer is Count bytes.
        The value that is not asked for may be None.
        """

    def SetIOTimeout(self, DevIdx: int, Milliseconds: int) -> object: ...

    def FlushInQ(self, DevIdx: int) -> object: ...

    def GetDeviceProperty(self, DevIdx: int, Number: int) -> Value:
        """2 port kind, 3 baud rate, 4 parity, 5 data bits, 6 stop bits,
        8 device address, 9 IP address or USB serial number."""


class IndexedHost(Protocol):
    """A device object for operating mode 0."""

    LastError: int
    LastErrorDescription: str

    @property
    def IO(self) -> IndexedIO: ...


class SingleHost(Protocol):
    """A device object for operating mode 1."""

    LastError: int
    LastErrorDescription: str

    def OpenDevice(self) -> object: ...

    def CloseDevice(self) -> object: ...

    def WriteCommand(self, Command: str) -> object:
        """Command carries its terminator."""

    def Read(self, Binary: int, Terminator: int, Count: int) -> Tuple[Optional[str], Optional[bytes]]:
        """As IndexedIO.Read, for the one device."""

    def FlushInQ(self) -> int:
        """Returns the number of bytes discarded."""

    def GetDeviceInfo(self) -> Tuple[int, Union[str, int]]:
        """Returns (port kind, address)."""
