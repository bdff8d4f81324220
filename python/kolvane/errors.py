"""What the component raises."""


class Error(RuntimeError):
    """A value that cannot be converted, a missing device object, a wrong thread and the like.

    The text is shown to users and therefore German as a rule.
    """


class NoDisplay(Error):
    """There is no display to show a window on."""
