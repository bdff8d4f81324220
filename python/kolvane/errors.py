"""What the component raises."""


class Error(RuntimeError):
    """A value that cannot be converted, a missing device object, a wrong thread and the like.

    The text is shown to users and therefore German as a rule.
    """


class InstrumentError(Error):
    """A connection to an instrument, or a transfer, that failed.

    status: negative; docs/status-codes.md explains each. -30 is a time-out. The
    text is the resource, the reason in German and the status.
    """

    def __init__(self, text: str = "", status: int = 0) -> None:
        super().__init__(text)
        self.status = status


class NoDisplay(Error):
    """There is no display to show a window on."""
