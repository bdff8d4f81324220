"""A connection to one instrument, without a terminal."""

import codecs
import math
import struct
from types import TracebackType
from typing import List, Optional, Tuple, Type, Union

from . import _kolvane
from .arguments import LARGEST_INT, PARITIES, check_line, check_range, check_whole, index_of, optional_index_of

Termination = Union[str, bytes, None]

_LARGEST_COUNT = 2**63 - 1
_FLOWS = ("none", "xon_xoff", "rts_cts")
_LONGEST_MS = LARGEST_INT
_WITHOUT_CHARACTER = "\x81\x8d\x8f\x90\x9d"  # undefined in Windows-1252


def _keep_undecodable(error: UnicodeError) -> Tuple[Union[str, bytes], int]:
    """Keeps every byte of an answer: bytes that are not a character count as Windows-1252."""
    if isinstance(error, UnicodeDecodeError):
        undecoded = error.object[error.start : error.end]
        if error.encoding == "charmap":
            return undecoded.decode("latin-1"), error.end
        return undecoded.decode("cp1252", "kolvane.device"), error.end
    if isinstance(error, UnicodeEncodeError) and error.encoding == "charmap":
        unencoded = error.object[error.start : error.end]
        if all(character in _WITHOUT_CHARACTER for character in unencoded):
            return unencoded.encode("latin-1"), error.end
    raise error


codecs.register_error("kolvane.device", _keep_undecodable)


def _milliseconds(timeout: Optional[float]) -> int:
    if timeout is None:
        return _LONGEST_MS
    check_range("timeout", timeout, 0, _LONGEST_MS / 1000)
    return math.ceil(round(timeout * 1000, 6))


def _number(order: str, datatype: str) -> struct.Struct:
    try:
        one = struct.Struct(order + datatype)
        single = len(one.unpack(bytes(one.size))) == 1
    except struct.error:
        single = False
    if not single:
        raise ValueError(f"datatype {datatype!r} is not one letter of a number")
    return one


def _as_bytes(data: Union[bytes, bytearray, memoryview]) -> bytes:
    if isinstance(data, bytes):
        return data
    try:
        return bytes(memoryview(data))  # bytes(5) would be five zeros
    except TypeError:
        raise TypeError(f"a str or a bytes-like object is required, not {data!r}") from None


class Instrument:
    """An independent connection to one instrument: any number at once, on any threads, no display needed.

    resource: a name from docs/command-line.md, such as
    "TCPIP::192.168.1.7::5025::SOCKET", "ASRL/dev/ttyUSB0::INSTR",
    "USB::SERIALNUMBER::INSTR", "GPIB0::5::INSTR", or the short forms "HOST:PORT" and
    "/dev/ttyUSB0". timeout: seconds, for connecting, for each command and for each
    answer; None waits for ever. read_termination ends each answer and is stripped; with
    CR LF, a lone LF ends it too; None or "": the end that USB and GPIB instruments
    mark, otherwise the first 50 ms of silence. write_termination follows each command.
    encoding: of commands and answers.

    Serial lines only: baud (9600), parity ("none", "even", "odd"), data_bits (7, 8) and
    stop_bits (1, 2).

    Several threads may share an instrument: their calls run one after the other, and a
    query is one call. Other threads continue while a call waits; Ctrl+C gives it up.
    Raises ValueError for an invalid argument, LookupError for an unknown encoding,
    InstrumentError if a connection or a transfer fails. Bytes received before a failure
    stay for the next read.
    """

    def __init__(
        self,
        resource: str,
        timeout: Optional[float] = 3.0,
        read_termination: Termination = "\r\n",
        write_termination: Termination = "\n",
        encoding: str = "cp1252",
        *,
        baud: Optional[int] = None,
        parity: Optional[str] = None,
        data_bits: Optional[int] = None,
        stop_bits: Optional[int] = None,
    ) -> None:
        if not isinstance(resource, str):
            raise TypeError(f"resource must be a str, not {resource!r}")
        check_line(baud, data_bits, stop_bits)
        self._resource = resource
        self._encoding = codecs.lookup(encoding).name
        self._connection = _kolvane.Connection(
            resource.encode("utf-8", "replace").decode(),
            _milliseconds(timeout),
            self._termination(read_termination),
            self._termination(write_termination),
            baud,
            optional_index_of("parity", parity, PARITIES),
            data_bits,
            stop_bits,
        )

    def __enter__(self) -> "Instrument":
        """Returns the instrument itself."""
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        exception: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None:
        """Closes the connection."""
        self.close()

    def __repr__(self) -> str:
        """Shows the resource, and whether it is closed."""
        return f"<kolvane.Instrument {self._resource}{'' if self.is_open else ' (closed)'}>"

    def _termination(self, termination: Termination) -> bytes:
        return self._encoded("" if termination is None else termination)

    def _encoded(self, text: Union[str, bytes]) -> bytes:
        return text.encode(self._encoding, "kolvane.device") if isinstance(text, str) else _as_bytes(text)

    def write(self, command: Union[str, bytes]) -> None:
        """Sends a command and its termination.

        UnicodeEncodeError if the encoding lacks a character; nothing is sent then.
        """
        self._connection.write(self._encoded(command))

    def read(self) -> str:
        """Receives one answer."""
        return self._connection.read().decode(self._encoding, "kolvane.device")

    def query(self, command: Union[str, bytes]) -> str:
        """Sends a command and receives its answer."""
        return self._connection.query(self._encoded(command)).decode(self._encoding, "kolvane.device")

    def write_bytes(self, data: Union[bytes, bytearray, memoryview]) -> None:
        """Sends the bytes as they are."""
        self._connection.write_bytes(_as_bytes(data))

    def read_bytes(self, count: int) -> bytes:
        """Receives exactly `count` bytes."""
        check_whole("count", count, 0, _LARGEST_COUNT)
        return self._connection.read_bytes(count)

    def query_block(self, command: Union[str, bytes]) -> bytes:
        """Sends a command and receives an IEEE 488.2 block ("#", a head, data), at most 64 MiB.

        Returns the data. The time-out applies between bytes. Raises InstrumentError
        with status -62 if the answer is not a block; it can still be read.
        """
        return self._connection.query_block(self._encoded(command))

    def query_values(
        self, command: Union[str, bytes], datatype: Optional[str] = None, big_endian: bool = False
    ) -> List[float]:
        """Sends a command and receives numbers separated by commas, semicolons or spaces.

        datatype: the numbers come as a block instead; their type as a letter of the
        module struct ("h" 16 bits, "i" 32 bits, "f" single, "d" double). Raises
        ValueError if a part is not a number, or the block ends within one.
        """
        if datatype is None:
            words = self.query(command).replace(",", " ").replace(";", " ").split()
            return [float(word) for word in words]
        one = _number(">" if big_endian else "<", datatype)
        data = self.query_block(command)
        if len(data) % one.size != 0:
            raise ValueError(f"{len(data)} bytes are no whole number of values of type {datatype!r}")
        return [value for (value,) in one.iter_unpack(data)]

    def flush(self) -> int:
        """Discards unread input; returns the number of bytes."""
        return self._connection.flush()

    def close(self) -> None:
        """Makes waiting calls of other threads give up and disconnects; a second call does nothing."""
        self._connection.close()

    def read_status_byte(self) -> int:
        """Reads the status byte out of band: USB and GPIB; InstrumentError with status -4 elsewhere."""
        return self._connection.read_status_byte()

    def set_line(
        self,
        baud: int = 9600,
        parity: str = "none",
        data_bits: int = 8,
        stop_bits: int = 1,
        flow: str = "none",
    ) -> None:
        """Changes the parameters of a serial line; InstrumentError with status -2 if it is not one.

        flow: flow control, "none", "xon_xoff" or "rts_cts".
        """
        check_line(baud, data_bits, stop_bits)
        self._connection.set_line(
            baud, index_of("parity", parity, PARITIES), data_bits, stop_bits, index_of("flow", flow, _FLOWS)
        )

    @property
    def resource(self) -> str:
        """The name passed on construction."""
        return self._resource

    @property
    def is_open(self) -> bool:
        """False once closed; a lost connection counts as open until then."""
        return self._connection.is_open

    @property
    def encoding(self) -> str:
        """The encoding of commands and answers."""
        return self._encoding

    @property
    def bytes_waiting(self) -> int:
        """Unread bytes received so far; USB and GPIB instruments keep theirs until asked."""
        return self._connection.bytes_waiting()

    @property
    def timeout(self) -> Optional[float]:
        """Seconds; 0: only what can be done at once; None: for ever. Applies from the next call on."""
        milliseconds = self._connection.timeout_ms
        return None if milliseconds == _LONGEST_MS else milliseconds / 1000

    @timeout.setter
    def timeout(self, seconds: Optional[float]) -> None:
        self._connection.timeout_ms = _milliseconds(seconds)

    @property
    def read_termination(self) -> str:
        """Ends each answer and is stripped; set to None or "" for none."""
        return self._connection.read_termination.decode(self._encoding, "kolvane.device")

    @read_termination.setter
    def read_termination(self, termination: Termination) -> None:
        self._connection.read_termination = self._termination(termination)

    @property
    def write_termination(self) -> str:
        """Follows each command; set to None or "" for none."""
        return self._connection.write_termination.decode(self._encoding, "kolvane.device")

    @write_termination.setter
    def write_termination(self, termination: Termination) -> None:
        self._connection.write_termination = self._termination(termination)
