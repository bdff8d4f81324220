"""Command lists and commands without a window, and the available ports."""

import dataclasses
import enum
import os
import threading
from typing import Any, Callable, Dict, Iterable, List, NamedTuple, Optional, Tuple, Union

from . import _kolvane
from .arguments import LARGEST_INT, PARITIES, check_line, check_range, check_whole, index_of, optional_index_of
from .errors import Error

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
Terminator = Union[str, bytes]


class LineKind(str, enum.Enum):
    """The kind of an output line.

    COMMAND: a command that was sent. ANSWER: the device's answer to it. NOTICE: a
    message of the terminal, such as connected and disconnected. ERROR: why a command
    was not written or no answer arrived, and every other message. TIME: the response
    time of the answer before it.
    """

    COMMAND = "command"
    ANSWER = "answer"
    NOTICE = "notice"
    ERROR = "error"
    TIME = "time"


class RunStatus(enum.IntEnum):
    """How a run ended: the exit statuses of the program.

    STOPPED: an error in the list, a requested stop, unusable input or output. USAGE: not a
    resource, list or settings cannot be read, or the transcript cannot be created;
    nothing was done. NOT_CONNECTED: could not connect at the start, so nothing was
    sent, or could not reconnect. ANSWER_FAILED: at least one command or answer failed.
    """

    DONE = 0
    STOPPED = 1
    USAGE = 2
    NOT_CONNECTED = 3
    ANSWER_FAILED = 4


class Port(NamedTuple):
    """A port of this computer; missing entries are empty."""

    resource: str
    node: str
    description: str


LineHandler = Callable[[LineKind, str], object]

_LINE_KINDS = tuple(LineKind)
_RECEIVE_MODES = ("terminator", "auto", "count")
_FORMATS = ("text", "csv", "json")
# The port library has only one connection.
_run_lock = threading.Lock()


@dataclasses.dataclass(frozen=True)
class RunOptions:
    """Settings of a run: the options of the program's command line.

    connect: a RESOURCE such as "TCPIP::192.168.1.7::5025::SOCKET"; default: the user's
    stored connection. settings_file: used instead of the user's own. folder: the
    component's folder. log: a file that receives each line of the run.

    Serial lines only: baud, parity ("none", "even", "odd"), data_bits (7, 8) and
    stop_bits (1, 2).

    timeout: seconds, for connecting and for each answer. receive_mode: an answer ends
    with its "terminator", at the first gap ("auto") or after "count" bytes; count: that
    number, 0 to 1025. send_terminator ends each command, receive_terminator (empty, one
    character or CR LF) each answer. binary: shows each byte of an answer as <0D>.

    show_commands, show_times, verbose: also output commands, response times and notices
    as lines. format: lines as in the window ("text"), or one record per command ("csv",
    "json") as an answer line; fields: with "csv", only numeric answers become rows,
    with this many columns. error_lines: a failed answer gets a line on standard output;
    timestamps: lines there and in the log start with their time.

    flush: discards unread input before each command. queries_only: a command without
    "?" outside quotes is not followed by a read. blocks: an answer that starts with "#"
    and a digit is read as a block. device_words: DCL, RES and STP end an exchange.
    reconnect: after a lost connection the next command reconnects first. utf8: the
    device's bytes are UTF-8.

    repeat: how often the list is run or the commands are sent. every: seconds from the
    start of one pass to the start of the next; without repeat until a stop. transcript:
    a file that receives all bytes in both directions as JSON lines, with their times if
    transcript_times is set.

    A field that is not given keeps its stored value or, with connect, its built-in one.
    Raises ValueError for values that the program would reject.
    """

    connect: str = ""
    settings_file: Path = ""
    folder: Path = ""
    log: Path = ""
    baud: Optional[int] = None
    parity: Optional[str] = None
    data_bits: Optional[int] = None
    stop_bits: Optional[int] = None
    timeout: Optional[float] = None
    receive_mode: Optional[str] = None
    count: Optional[int] = None
    send_terminator: Optional[Terminator] = None
    receive_terminator: Optional[Terminator] = None
    binary: bool = False
    show_commands: bool = False
    show_times: bool = False
    verbose: bool = False
    format: str = "text"
    fields: Optional[int] = None
    flush: bool = False
    queries_only: bool = False
    blocks: bool = False
    device_words: bool = True
    reconnect: bool = False
    utf8: bool = False
    error_lines: bool = True
    timestamps: bool = False
    repeat: Optional[int] = None
    every: Optional[float] = None
    transcript: Path = ""
    transcript_times: bool = True

    def __post_init__(self) -> None:
        optional_index_of("parity", self.parity, PARITIES)
        optional_index_of("receive_mode", self.receive_mode, _RECEIVE_MODES)
        index_of("format", self.format, _FORMATS)
        if not isinstance(self.connect, str):
            raise TypeError(f"connect must be a str, not {self.connect!r}")
        check_line(self.baud, self.data_bits, self.stop_bits)
        check_range("timeout", self.timeout, 0, LARGEST_INT / 1000)
        check_whole("count", self.count, 0, _kolvane.largest_count)
        check_whole("fields", self.fields, 1, _kolvane.most_fields)
        check_whole("repeat", self.repeat, 1, LARGEST_INT)
        check_range("every", self.every, 0.001, LARGEST_INT / 1000)
        terminator = _bytes("receive_terminator", self.receive_terminator) or b""
        if len(terminator) > 1 and terminator != b"\r\n":
            raise ValueError("receive_terminator must be empty, one character or CR LF")
        if self.binary and self.receive_mode == "terminator":
            raise ValueError("binary needs receive_mode auto or count")
        if self.count is not None and self.receive_mode not in (None, "count"):
            raise ValueError("count needs receive_mode count")
        if self.fields is not None and self.format != "csv":
            raise ValueError("fields needs format csv")


def _bytes(name: str, terminator: Optional[Terminator]) -> Optional[bytes]:
    if terminator is None or isinstance(terminator, bytes):
        return terminator
    if not isinstance(terminator, str):
        raise TypeError(f"{name} must be a str or bytes, not {terminator!r}")
    return terminator.encode("cp1252")


def _path(name: str, path: Path) -> bytes:
    try:
        encoded = os.fsencode(path)
    except TypeError:
        raise TypeError(f"{name} must be a path, not {path!r}") from None
    if b"\0" in encoded:
        raise ValueError(f"{name}: embedded null byte in the path {path!r}")
    return encoded


def _command(command: str) -> bytes:
    if not isinstance(command, str):
        raise TypeError(f"a command must be a str, not {command!r}")
    return command.encode("utf-8", "replace")


def _milliseconds(seconds: Optional[float]) -> Optional[int]:
    return None if seconds is None else round(seconds * 1000)


def _values(options: RunOptions) -> Dict[str, Any]:
    """The fields in the form used by the compiled part."""
    receive_mode = options.receive_mode if options.count is None else "count"
    return {
        "Connect": options.connect.encode("utf-8", "replace"),
        "SettingsFile": _path("settings_file", options.settings_file),
        "Folder": _path("folder", options.folder),
        "LogFile": _path("log", options.log),
        "Baud": options.baud,
        "Parity": optional_index_of("parity", options.parity, PARITIES),
        "DataBits": options.data_bits,
        "StopBits": options.stop_bits,
        "TimeoutMs": _milliseconds(options.timeout),
        "ReceiveMode": optional_index_of("receive_mode", receive_mode, _RECEIVE_MODES),
        "Count": options.count,
        "SendTerminator": _bytes("send_terminator", options.send_terminator),
        "ReceiveTerminator": _bytes("receive_terminator", options.receive_terminator),
        "Binary": bool(options.binary),
        "ShowCommands": bool(options.show_commands),
        "ShowTimes": bool(options.show_times),
        "Verbose": bool(options.verbose),
        "Format": index_of("format", options.format, _FORMATS),
        "Fields": options.fields,
        "Flush": bool(options.flush),
        "QueriesOnly": bool(options.queries_only),
        "Blocks": bool(options.blocks),
        "DeviceWords": bool(options.device_words),
        "Reconnect": bool(options.reconnect),
        "Utf8": bool(options.utf8),
        "ErrorLines": bool(options.error_lines),
        "TimeStamps": bool(options.timestamps),
        "Repeat": options.repeat,
        "EveryMs": _milliseconds(options.every),
        "Transcript": _path("transcript", options.transcript),
        "TranscriptTimes": bool(options.transcript_times),
    }


def _by_number(on_line: Optional[LineHandler]) -> Optional[Callable[[int, str], object]]:
    if on_line is None:
        return None
    take: LineHandler = on_line
    return lambda number, line: take(_LINE_KINDS[number], line)


def _changed(options: RunOptions, changes: Dict[str, Any]) -> RunOptions:
    if not isinstance(options, RunOptions):
        raise TypeError(f"options must be RunOptions, not {options!r}; several commands are a list")
    return dataclasses.replace(options, **changes)


def _run(
    start: Callable[..., int],
    what: Any,
    options: RunOptions,
    on_line: Optional[LineHandler],
    stop_requested: Optional[Callable[[], bool]],
) -> RunStatus:
    if not _run_lock.acquire(blocking=False):
        raise Error("another run is under way: there is one at a time in a process")
    try:
        return RunStatus(start(what, _values(options), _by_number(on_line), stop_requested))
    finally:
        _run_lock.release()


def run(
    command_list: Path,
    options: RunOptions = RunOptions(),
    *,
    on_line: Optional[LineHandler] = None,
    stop_requested: Optional[Callable[[], bool]] = None,
    **changes: Any,
) -> RunStatus:
    """Connects, runs a command file from first row to last, and disconnects.

    changes: fields of RunOptions by name, which override `options`. on_line(kind, line)
    receives each line instead of standard output and standard error. stop_requested()
    is called after each row; true ends the run. An exception from either ends the run
    and is raised here; so does Ctrl+C. Needs no display and works on any thread; other
    threads continue to run. Raises Error if another run is in progress.
    """
    options = _changed(options, changes)
    return _run(_kolvane.run_list, _path("command_list", command_list), options, on_line, stop_requested)


def send(
    commands: Union[str, Iterable[str]],
    options: RunOptions = RunOptions(),
    *,
    on_line: Optional[LineHandler] = None,
    stop_requested: Optional[Callable[[], bool]] = None,
    **changes: Any,
) -> RunStatus:
    """Connects, sends one command or several and reads the answer to each, and disconnects.

    The other arguments are those of run. For an empty command only the terminator is
    sent. Returns STOPPED at a character missing in the instrument's encoding.
    """
    options = _changed(options, changes)
    lines = [commands] if isinstance(commands, (str, bytes)) else list(commands)
    encoded = [_command(line) for line in lines]
    return _run(_kolvane.send_commands, encoded, options, on_line, stop_requested)


def list_ports() -> List[Port]:
    """Lists serial ports, USB devices with a serial number, GPIB boards and parallel ports, in this order.

    Nothing is sent to any device; takes at most two seconds.
    """
    return [Port(*port) for port in _kolvane.list_ports()]
