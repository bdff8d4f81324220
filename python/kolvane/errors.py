"""The exceptions of the component."""


class Error(RuntimeError):
    """A value that cannot be converted, a missing device object, a wrong thread and similar errors.

    The text is shown to users and is therefore usually German.
    """


class InstrumentError(Error):
    """A failed connection to an instrument, or a failed transfer.

    status: negative; docs/status-codes.md explains each. -30 is a time-out. The text is
    the resource, the reason in German and the status.
    """

    def __init__(self, text: str = "", status: int = 0) -> None:
        super().__init__(text)
        self.status = status


class NoDisplay(Error):
    """There is no display to show a window on."""
