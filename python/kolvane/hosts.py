"""The interface of a device object: protocols for type checkers, and a reference for readers."""

from typing import Optional, Protocol, SupportsFloat, SupportsIndex, Tuple, Union

Number = Union[SupportsIndex, SupportsFloat]


class IndexedIO(Protocol):
    """The operations of many devices, each addressed by its index (operating mode 0)."""

    def InitializeDevice(self, DevIdx: int) -> object:
        """Opens (or reopens) the device."""

    def CloseDevice(self, DevIdx: int) -> object:
        """Closes the device; InitializeDevice opens it again."""

    def WriteCommand(self, DevIdx: int, Command: str, Terminator: int, Extra: int) -> object:
        """Sends the command followed by its terminator.

        Terminator: 2 CR LF, -1 nothing, 0 to 255 that character. Extra is 0.
        """

    def Read(
        self, DevIdx: int, Binary: int, Zero: int, Terminator: int, Count: int
    ) -> Tuple[Optional[str], Optional[bytes]]:
        """Returns (answer, buffer).

        Binary 0: the answer is the text up to the character Terminator (10 for CR LF),
        or Count characters. Binary 1: the buffer is Count bytes. The value that is not
        asked for may be None.
        """

    def SetIOTimeout(self, DevIdx: int, Milliseconds: int) -> object:
        """Sets the time-out of the following reads and writes."""

    def FlushInQ(self, DevIdx: int) -> object:
        """Discards unread input."""

    def GetDeviceProperty(self, DevIdx: int, Number: int) -> Union[Number, str]:
        """Returns a property that the terminal shows about the connection.

        Number: 2 port kind, 3 baud rate, 4 parity, 5 data bits, 6 stop bits, 8 device
        address, 9 IP address or USB serial number. None is not a valid value.
        """


class IndexedHost(Protocol):
    """A device object for operating mode 0."""

    LastError: int
    LastErrorDescription: str

    @property
    def IO(self) -> IndexedIO:
        """Read again for each operation."""


class SingleHost(Protocol):
    """A device object for operating mode 1."""

    LastError: int
    LastErrorDescription: str

    def OpenDevice(self) -> object:
        """Opens (or reopens) the device."""

    def CloseDevice(self) -> object:
        """Closes the device; OpenDevice opens it again."""

    def WriteCommand(self, Command: str) -> object:
        """Sends the command, which already contains its terminator."""

    def Read(self, Binary: int, Terminator: int, Count: int) -> Tuple[Optional[str], Optional[bytes]]:
        """Like IndexedIO.Read, for the one device."""

    def FlushInQ(self) -> Number:
        """Discards unread input and returns the number of bytes discarded."""

    def GetDeviceInfo(self) -> Tuple[Number, Union[str, Number]]:
        """Returns (port kind, address)."""
