class Error(RuntimeError):
    """A value that cannot be converted, a missing object or member; the text is German."""

class NoDisplay(Error):
    """There is no display to show a window on."""

class MainClass:
    """The component. Its window runs on the thread that calls OpenTerminal, the main thread as a rule."""

    def __init__(self) -> None: ...
    def InitTerminal(self, gObj: object) -> None:
        """Keeps the device object until the terminal window has closed."""
    def OpenTerminal(self, OperMode: int, DevIdx: int) -> None:
        """Shows the terminal window and returns when it has been closed.

        OperMode: 0 the device DevIdx through gObj.IO, 1 the one device gObj, 2 a
        connection of the terminal's own. Other threads go on meanwhile. Raises
        what the device object raises while the window opens, Error and NoDisplay.
        """
    def SetOptions(
        self,
        *,
        Folder: str = "",
        SettingsFile: str = "",
        CommandList: str = "",
        CloseDescriptor: int = -1,
        ConnectAtStart: bool = False,
        PlayAtStart: bool = False,
    ) -> None:
        """Takes effect at the next OpenTerminal.

        Folder: where histories, templates and help are. SettingsFile: in place of
        the user's own. CommandList: a command file to load. CloseDescriptor: the
        window closes once it becomes readable. ConnectAtStart: connect as soon as
        the window is shown (operating mode 2). PlayAtStart: play the list then.
        """
    @property
    def CanUnload(self) -> bool:
        """True once the terminal window has been closed."""
