"""Scripts written for any backend of PyVISA; each returns what it received."""

import warnings

import pyvisa
from pyvisa.constants import BufferOperation, ControlFlow, ResourceAttribute, StopBits


def ask(instrument):
    """What most scripts do."""
    instrument.write("ECHO hello")
    return instrument.read(), instrument.query("ECHO 1,2"), instrument.query("ECHO a b")


def values(instrument):
    """Numbers as text."""
    return (
        instrument.query_ascii_values("ECHO 1.5,-2e3,7"),
        instrument.query_ascii_values("ECHO 1;2;3", converter="d", separator=";", container=tuple),
    )


def binary(instrument):
    """Blocks as in IEEE 488.2, one of them with a line end within."""
    return [
        instrument.query_binary_values("ECHO #14abcd", datatype="H"),
        instrument.query_binary_values("HEX? 233134000A0D410D0A", datatype="h", is_big_endian=True),
        instrument.query_binary_values("ECHO #3200" + "x" * 200, datatype="B", container=bytes),
    ]


def pieces(instrument):
    """Small chunks and counted bytes."""
    instrument.chunk_size = 3
    whole = instrument.query("ECHO in small chunks")
    instrument.write("ECHO counted")
    return whole, instrument.read_bytes(7), instrument.read_bytes(1), instrument.read_raw()


def terminations(instrument):
    """Unusual terminations."""
    seen = []
    instrument.write("TERM CR")
    instrument.read_termination = "\r"
    seen.append(instrument.read())
    seen.append(instrument.query("ECHO cr"))
    instrument.write("TERM CRLF")
    instrument.read_termination = "\r\n"
    seen.append(instrument.read())
    instrument.write_termination = "\r\n"
    seen.append(instrument.query("ECHO crlf"))
    instrument.read_termination = "f"
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        seen.append(instrument.query("ECHO abcfg"))
    instrument.read_termination = "\r\n"
    seen.append(instrument.read())
    return seen


def time_outs(instrument):
    """Silence, and an answer afterwards."""
    instrument.timeout = 200
    instrument.write("MUTE 1")
    seen = [instrument.read(), instrument.timeout]
    try:
        instrument.query("ECHO nobody hears")
    except pyvisa.VisaIOError as error:
        seen.append(error.error_code)
    instrument.timeout = None
    seen.append(instrument.timeout)
    instrument.timeout = 2000
    seen.append(instrument.query("ECHO again"))
    return seen


def discarded(instrument):
    """Discards unread answers."""
    instrument.write("ECHO old")
    instrument.read_bytes(1)
    if isinstance(instrument, pyvisa.resources.SerialInstrument):
        instrument.flush(BufferOperation.discard_read_buffer)
    else:
        instrument.clear()
    return instrument.query("ECHO new")


def refused(instrument):
    """Operations that neither a socket nor a serial line has."""
    calls = (instrument.read_stb, instrument.lock_excl, instrument.unlock)
    return [_result_or_error(call) for call in calls] + [instrument.query("ECHO goes on")]


def flow_control(instrument):
    """Both kinds of flow control, with an answer for each; only a serial line has any."""
    seen = []
    for flow in (ControlFlow.xon_xoff, ControlFlow.rts_cts):
        seen.append(_result_or_error(instrument.set_visa_attribute, ResourceAttribute.asrl_flow_control, flow))
        seen.append(instrument.query("ECHO held up"))
    return seen


def attributes(instrument):
    """The attributes that a script may read and set: the value, or the status that it fails with."""
    serial = isinstance(instrument, pyvisa.resources.SerialInstrument)
    names = ["interface_type", "resource_class", "termchar", "termchar_enabled", "suppress_end_enabled"]
    names += ["send_end_enabled", "timeout_value", "interface_number", "gpib_primary_address"]
    names += ["asrl_baud_rate", "asrl_data_bits", "asrl_parity", "asrl_stop_bits", "asrl_end_in", "asrl_end_out"]
    names += [] if serial else ["tcpip_port", "tcpip_address", "tcpip_hostname", "tcpip_nodelay"]
    seen = {name: _result_or_error(instrument.get_visa_attribute, ResourceAttribute[name]) for name in names}
    changes = [("interface_type", 3), ("termchar", 13), ("gpib_primary_address", 3), ("timeout_value", 700)]
    changes += [("asrl_baud_rate", 19200), ("asrl_stop_bits", StopBits.two)] if serial else []
    for name, value in changes:
        seen["set " + name] = _result_or_error(instrument.set_visa_attribute, ResourceAttribute[name], value)
        seen["changed " + name] = _result_or_error(instrument.get_visa_attribute, ResourceAttribute[name])
    return seen


def _result_or_error(call, *arguments):
    try:
        return call(*arguments)
    except pyvisa.VisaIOError as error:
        return error.error_code


SCRIPTS = (ask, values, binary, pieces, terminations, time_outs, discarded, refused, flow_control)
