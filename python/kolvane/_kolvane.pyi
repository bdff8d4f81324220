from os import PathLike
from types import TracebackType
from typing import Any, Callable, Dict, List, Optional, Tuple, Type, TypeVar, Union

_Path = Union[str, bytes, PathLike[str], PathLike[bytes]]
_Self = TypeVar("_Self", bound="MainClass")

_OnLine = Optional[Callable[[int, str], object]]
_StopRequested = Optional[Callable[[], bool]]

__version__: str
largest_count: int

def run_list(
    file: bytes, values: Dict[str, Any], on_line: _OnLine, stop_requested: _StopRequested
) -> int: ...
def send_commands(
    commands: List[bytes], values: Dict[str, Any], on_line: _OnLine, stop_requested: _StopRequested
) -> int: ...
def list_ports() -> List[Tuple[str, str, str]]: ...

class MainClass:
    def __init__(self) -> None: ...
    def __enter__(self: _Self) -> _Self: ...
    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        exception: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None: ...
    def InitTerminal(self, gObj: object) -> None: ...
    def OpenTerminal(self, OperMode: int, DevIdx: int) -> None: ...
    def SetOptions(
        self,
        *,
        Folder: _Path = "",
        SettingsFile: _Path = "",
        CommandList: _Path = "",
        CloseDescriptor: int = -1,
        ConnectAtStart: bool = False,
        PlayAtStart: bool = False,
    ) -> None: ...
    def Wait(self) -> bool: ...
    @property
    def CanUnload(self) -> bool: ...
