"""Checks of arguments that several calls have in common. Where None is allowed, it is a value left out."""

import operator
from typing import Optional, Tuple

LARGEST_INT = 2**31 - 1
PARITIES = ("none", "even", "odd")


def index_of(name: str, word: str, words: Tuple[str, ...]) -> int:
    """The index of word in words; ValueError if it is not there."""
    if word not in words:
        raise ValueError(f"{name} must be one of {', '.join(words)}, not {word!r}")
    return words.index(word)


def optional_index_of(name: str, word: Optional[str], words: Tuple[str, ...]) -> Optional[int]:
    """The same, or None for None."""
    return None if word is None else index_of(name, word, words)


def check_range(name: str, value: Optional[float], smallest: float, largest: float) -> None:
    """TypeError unless value is a number, ValueError unless it is smallest to largest."""
    try:
        within = value is None or smallest <= value <= largest
    except TypeError:
        raise TypeError(f"{name} must be a number, not {value!r}") from None
    if not within:
        raise ValueError(f"{name} must be {smallest} to {largest}, not {value!r}")


def check_whole(name: str, value: Optional[int], smallest: int, largest: int) -> None:
    """TypeError unless value is a whole number, ValueError unless it is smallest to largest."""
    try:
        if value is not None:
            operator.index(value)
    except TypeError:
        raise TypeError(f"{name} must be a whole number, not {value!r}") from None
    check_range(name, value, smallest, largest)


def check_line(baud: Optional[int], data_bits: Optional[int], stop_bits: Optional[int]) -> None:
    """Checks the numbers among the parameters of a serial line."""
    check_whole("baud", baud, 1, LARGEST_INT)
    check_whole("data_bits", data_bits, 7, 8)
    check_whole("stop_bits", stop_bits, 1, 2)
