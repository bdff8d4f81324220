from os import PathLike
from types import TracebackType
from typing import Optional, Type, TypeVar, Union

_Path = Union[str, bytes, PathLike[str], PathLike[bytes]]
_Self = TypeVar("_Self", bound="MainClass")

__version__: str

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
    @property
    def CanUnload(self) -> bool: ...
