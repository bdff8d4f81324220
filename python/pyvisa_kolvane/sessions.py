"""A VISA session for each kind of resource: connection, attributes and transfers."""

import socket
from typing import Any, Callable, Dict, Optional, Tuple

import kolvane
from kolvane import _kolvane
from pyvisa import attributes, constants, rname
from pyvisa.constants import InterfaceType, ResourceAttribute, SerialTermination, StatusCode

_Reading = Tuple[Any, StatusCode]

_GAP_MS = 50
_LARGEST_READ = 16 << 20
_FOREVER_MS = 2**31 - 1
# Used if PyVISA gives no limit for opening a connection.
_OPEN_MS = 10_000

_STATUS_CODES = {
    -2: StatusCode.error_invalid_setup,
    -3: StatusCode.error_invalid_object,
    -4: StatusCode.error_interface_number_not_configured,
    -10: StatusCode.error_resource_not_found,
    -11: StatusCode.error_resource_not_found,
    -12: StatusCode.error_no_permission,
    -13: StatusCode.error_resource_busy,
    -20: StatusCode.error_resource_not_found,
    -21: StatusCode.error_resource_not_found,
    -22: StatusCode.error_resource_not_found,
    -23: StatusCode.error_resource_not_found,
    -24: StatusCode.error_timeout,
    -30: StatusCode.error_timeout,
    -31: StatusCode.error_timeout,
    -40: StatusCode.error_connection_lost,
    -41: StatusCode.error_connection_lost,
    -51: StatusCode.error_allocation,
    -60: StatusCode.error_abort,
}

# Indexed by the message end that Connection.read_message returns.
_READ_STATUS = (
    StatusCode.success_max_count_read,
    StatusCode.success_termination_character_read,
    StatusCode.success,
    StatusCode.success,
)


def status_code(error: kolvane.InstrumentError) -> StatusCode:
    """The VISA status of a failure."""
    return _STATUS_CODES.get(error.status, StatusCode.error_io)


class Session:
    """An open resource. Statuses are returned, not raised."""

    kind: InterfaceType
    resource_class = "INSTR"
    # Attributes that can be set without any other effect.
    settable = frozenset(
        {
            ResourceAttribute.termchar,
            ResourceAttribute.termchar_enabled,
            ResourceAttribute.suppress_end_enabled,
            ResourceAttribute.send_end_enabled,
            ResourceAttribute.user_data,
            ResourceAttribute.file_append_enabled,
            ResourceAttribute.max_queue_length,
        }
    )
    # Attributes with a single value: setting another one fails.
    fixed: Dict[int, Any] = {
        ResourceAttribute.io_prot: constants.IOProtocol.normal,
        ResourceAttribute.dma_allow_enabled: False,
        ResourceAttribute.read_buffer_operation_mode: constants.VI_FLUSH_DISABLE,
        ResourceAttribute.write_buffer_operation_mode: constants.VI_FLUSH_WHEN_FULL,
    }

    def __init__(self, name: str, parsed: rname.ResourceName, open_timeout: int) -> None:
        self.parsed = parsed
        self._timeout_ms = 2000
        defaults: Dict[int, Any] = {key: attributes.AttributesByID[key].default for key in self.settable}
        self.values: Dict[int, Any] = {**self.fixed, **defaults, **self.initial_values(name)}
        self.connection = self.open(open_timeout if 0 < open_timeout <= _FOREVER_MS else _OPEN_MS)
        self.connection.timeout_ms = self._timeout_ms

    def initial_values(self, name: str) -> Dict[int, Any]:
        """The attributes known without access to the instrument."""
        return {
            ResourceAttribute.interface_type: self.kind,
            ResourceAttribute.interface_number: _number(getattr(self.parsed, "board", "0")),
            ResourceAttribute.interface_instrument_name: f"{self.kind.name.upper()} ({self.resource()})",
            ResourceAttribute.resource_class: self.resource_class,
            ResourceAttribute.resource_name: name,
            ResourceAttribute.resource_impl_version: 0x00200000,
            ResourceAttribute.resource_lock_state: constants.AccessModes.no_lock,
            ResourceAttribute.resource_spec_version: 0x00500800,
            ResourceAttribute.resource_manufacturer_name: "Kolvane",
            ResourceAttribute.resource_manufacturer_id: 0,
            ResourceAttribute.read_buffer_size: _LARGEST_READ,
            ResourceAttribute.write_buffer_size: 0,
        }

    def resource(self) -> str:
        """The name by which Kolvane opens it."""
        raise NotImplementedError

    def open(self, timeout_ms: int) -> _kolvane.Connection:
        """Connects."""
        return _kolvane.Connection(self.resource(), timeout_ms, b"", b"", None, None, None, None)

    def termination(self) -> bytes:
        """The byte that ends a read; empty if none does."""
        enabled = self.values[ResourceAttribute.termchar_enabled]
        return bytes([self.values[ResourceAttribute.termchar]]) if enabled else b""

    def gap_ms(self) -> int:
        """The length of the silence that ends a read; negative: none."""
        return -1

    def read(self, count: int) -> Tuple[bytes, StatusCode]:
        """Reads up to the end of a message, at most `count` bytes; bytes before a time-out stay queued."""
        suppressed = self.values[ResourceAttribute.suppress_end_enabled]
        limit = max(1, min(count, _LARGEST_READ))
        termination = self.termination()
        gap = -1 if suppressed or termination else self.gap_ms()
        try:
            data, end = self.connection.read_message(limit, termination, not suppressed, gap)
        except kolvane.InstrumentError as error:
            return b"", status_code(error)
        return data, _READ_STATUS[end]

    def write(self, data: bytes) -> Tuple[int, StatusCode]:
        """Sends all of `data`."""
        try:
            self.connection.write_bytes(bytes(data))
        except kolvane.InstrumentError as error:
            return 0, status_code(error)
        return len(data), StatusCode.success

    def clear(self) -> StatusCode:
        """Discards unread input; also clears GPIB and USB instruments."""
        try:
            self.connection.flush()
        except kolvane.InstrumentError as error:
            return status_code(error)
        return StatusCode.success

    def read_stb(self) -> Tuple[int, StatusCode]:
        """The status byte of USB and GPIB instruments; a line or a socket has none."""
        try:
            return self.connection.read_status_byte(), StatusCode.success
        except kolvane.InstrumentError as error:
            missing = error.status == -4
            return 0, StatusCode.error_nonsupported_operation if missing else status_code(error)

    def flush(self, mask: int) -> StatusCode:
        """Output is never buffered, so there is only input to discard."""
        operations = constants.BufferOperation
        received = (
            operations.discard_read_buffer
            | operations.discard_read_buffer_no_io
            | operations.discard_receive_buffer
            | operations.discard_receive_buffer2
        )
        return self.clear() if mask & received else StatusCode.success

    def close(self) -> StatusCode:
        """Disconnects."""
        self.connection.close()
        return StatusCode.success

    def get_attribute(self, attribute: int) -> _Reading:
        """The value, or None and the reason."""
        if attribute not in _attributes_of(self.kind, self.resource_class):
            return None, StatusCode.error_nonsupported_attribute
        if attribute == ResourceAttribute.timeout_value:
            timeout = self.connection.timeout_ms
            return (constants.VI_TMO_INFINITE if timeout == _FOREVER_MS else timeout), StatusCode.success
        if attribute in self.values:
            return self.values[attribute], StatusCode.success
        return self.get_connection_attribute(attribute)

    def get_connection_attribute(self, attribute: int) -> _Reading:
        """The value of an attribute that needs access to the connection."""
        return None, StatusCode.error_nonsupported_attribute

    def set_attribute(self, attribute: int, value: Any) -> StatusCode:
        """An attribute that cannot be set to the value keeps its old one."""
        known = _attributes_of(self.kind, self.resource_class).get(attribute)
        if known is None:
            return StatusCode.error_nonsupported_attribute
        if not known.write:
            return StatusCode.error_attribute_read_only
        if attribute == ResourceAttribute.timeout_value:
            return self.set_timeout(value)
        if attribute == ResourceAttribute.termchar and not 0 <= value <= 255:
            return StatusCode.error_nonsupported_attribute_state
        if attribute in self.settable:
            self.values[attribute] = value
            return StatusCode.success
        if attribute in self.fixed:
            same = value == self.fixed[attribute]
            return StatusCode.success if same else StatusCode.error_nonsupported_attribute_state
        return self.set_connection_attribute(attribute, value)

    def set_connection_attribute(self, attribute: int, value: Any) -> StatusCode:
        """Sets an attribute that affects the connection."""
        return StatusCode.error_nonsupported_attribute

    def set_timeout(self, milliseconds: int) -> StatusCode:
        """Accepts VISA's values for never and at once."""
        if milliseconds == constants.VI_TMO_INFINITE:
            milliseconds = _FOREVER_MS
        if not 0 <= milliseconds <= _FOREVER_MS:
            return StatusCode.error_nonsupported_attribute_state
        self.connection.timeout_ms = int(milliseconds)
        return StatusCode.success


class SocketSession(Session):
    """TCPIP::HOST::PORT::SOCKET."""

    kind = InterfaceType.tcpip
    resource_class = "SOCKET"
    fixed = {
        **Session.fixed,
        ResourceAttribute.tcpip_nodelay: True,
        ResourceAttribute.tcpip_keepalive: True,
    }

    def resource(self) -> str:
        host = self.parsed.host_address  # type: ignore[attr-defined]
        bracketed = f"[{host}]" if ":" in host and not host.startswith("[") else host
        return f"TCPIP::{bracketed}::{self.parsed.port}::SOCKET"  # type: ignore[attr-defined]

    def initial_values(self, name: str) -> Dict[int, Any]:
        host = self.parsed.host_address.strip("[]")  # type: ignore[attr-defined]
        return {
            **super().initial_values(name),
            ResourceAttribute.tcpip_port: _number(self.parsed.port),  # type: ignore[attr-defined]
            ResourceAttribute.tcpip_hostname: host,
            # A stream has no end except the termination character; if False, a silence ends it.
            ResourceAttribute.suppress_end_enabled: True,
        }

    def gap_ms(self) -> int:
        return _GAP_MS

    def get_connection_attribute(self, attribute: int) -> _Reading:
        if attribute != ResourceAttribute.tcpip_address:
            return super().get_connection_attribute(attribute)
        try:
            found = socket.getaddrinfo(self.values[ResourceAttribute.tcpip_hostname], None)
        except OSError:
            return None, StatusCode.error_nonsupported_attribute
        return found[0][4][0], StatusCode.success


class SerialSession(Session):
    """ASRL1::INSTR, ASRL/dev/ttyUSB0::INSTR."""

    kind = InterfaceType.asrl
    settable = Session.settable | {ResourceAttribute.asrl_end_in, ResourceAttribute.asrl_end_out}
    fixed = {
        **Session.fixed,
        ResourceAttribute.asrl_discard_null: False,
        ResourceAttribute.asrl_connected: True,
        ResourceAttribute.asrl_allow_transmit: True,
        ResourceAttribute.asrl_break_state: constants.LineState.unasserted,
        ResourceAttribute.asrl_replace_char: 0,
    }
    _PARITIES = {constants.Parity.none: 0, constants.Parity.even: 1, constants.Parity.odd: 2}
    _FLOWS = {
        constants.ControlFlow.none: 0,
        constants.ControlFlow.xon_xoff: 1,
        constants.ControlFlow.rts_cts: 2,
    }
    _STOP_BITS = {constants.StopBits.one: 1, constants.StopBits.two: 2}
    _LINE: Dict[int, Any] = {
        ResourceAttribute.asrl_baud_rate: 9600,
        ResourceAttribute.asrl_parity: constants.Parity.none,
        ResourceAttribute.asrl_data_bits: 8,
        ResourceAttribute.asrl_stop_bits: constants.StopBits.one,
        ResourceAttribute.asrl_flow_control: constants.ControlFlow.none,
    }

    def resource(self) -> str:
        return f"ASRL{self.parsed.board}::INSTR"  # type: ignore[attr-defined]

    def open(self, timeout_ms: int) -> _kolvane.Connection:
        self.values.update(self._LINE)
        return _kolvane.Connection(self.resource(), timeout_ms, b"", b"", 9600, 0, 8, 1)

    def termination(self) -> bytes:
        if self.values[ResourceAttribute.asrl_end_in] == SerialTermination.termination_char:
            return bytes([self.values[ResourceAttribute.termchar]])
        return super().termination()

    def read(self, count: int) -> Tuple[bytes, StatusCode]:
        data, status = super().read(count)
        ends = self.values[ResourceAttribute.asrl_end_in] == SerialTermination.termination_char
        if ends and status == StatusCode.success_termination_character_read:
            return data, StatusCode.success
        return data, status

    def write(self, data: bytes) -> Tuple[int, StatusCode]:
        if self.values[ResourceAttribute.asrl_end_out] != SerialTermination.termination_char:
            return super().write(data)
        count, status = super().write(bytes(data) + bytes([self.values[ResourceAttribute.termchar]]))
        return min(count, len(data)), status

    def get_connection_attribute(self, attribute: int) -> _Reading:
        if attribute == ResourceAttribute.asrl_avalaible_number:
            return self.connection.bytes_waiting(), StatusCode.success
        return super().get_connection_attribute(attribute)

    def set_attribute(self, attribute: int, value: Any) -> StatusCode:
        ends = (ResourceAttribute.asrl_end_in, ResourceAttribute.asrl_end_out)
        whole = (SerialTermination.none, SerialTermination.termination_char)
        if attribute in ends and value not in whole:
            return StatusCode.error_nonsupported_attribute_state
        return super().set_attribute(attribute, value)

    def set_connection_attribute(self, attribute: int, value: Any) -> StatusCode:
        if attribute not in self._LINE:
            return super().set_connection_attribute(attribute, value)
        wanted = {**{key: self.values[key] for key in self._LINE}, attribute: value}
        try:
            self.connection.set_line(
                wanted[ResourceAttribute.asrl_baud_rate],
                self._PARITIES[wanted[ResourceAttribute.asrl_parity]],
                wanted[ResourceAttribute.asrl_data_bits],
                self._STOP_BITS[wanted[ResourceAttribute.asrl_stop_bits]],
                self._FLOWS[wanted[ResourceAttribute.asrl_flow_control]],
            )
        except (KeyError, TypeError, ValueError):
            return StatusCode.error_nonsupported_attribute_state
        except kolvane.InstrumentError as error:
            refused = error.status == -2
            return StatusCode.error_nonsupported_attribute_state if refused else status_code(error)
        self.values.update(wanted)
        return StatusCode.success


class UsbSession(Session):
    """USB::0xVVVV::0xPPPP::SERIALNUMBER::INSTR."""

    kind = InterfaceType.usb

    def resource(self) -> str:
        return f"USB::{self.parsed.serial_number}::INSTR"  # type: ignore[attr-defined]

    def initial_values(self, name: str) -> Dict[int, Any]:
        parsed: Any = self.parsed
        return {
            **super().initial_values(name),
            ResourceAttribute.usb_serial_number: parsed.serial_number,
            ResourceAttribute.manufacturer_id: _number(parsed.manufacturer_id),
            ResourceAttribute.model_code: _number(parsed.model_code),
            ResourceAttribute.usb_interface_number: _number(parsed.usb_interface_number),
        }


class GpibSession(Session):
    """GPIB0::ADDRESS::INSTR."""

    kind = InterfaceType.gpib
    fixed = {
        **Session.fixed,
        ResourceAttribute.gpib_unadress_enable: False,
        ResourceAttribute.gpib_readdress_enabled: True,
    }

    def resource(self) -> str:
        return f"GPIB0::{self.parsed.primary_address}::INSTR"  # type: ignore[attr-defined]

    def initial_values(self, name: str) -> Dict[int, Any]:
        parsed: Any = self.parsed
        return {
            **super().initial_values(name),
            ResourceAttribute.gpib_primary_address: _number(parsed.primary_address),
            ResourceAttribute.gpib_secondary_address: constants.VI_NO_SEC_ADDR,
        }


def _number(text: Optional[str]) -> int:
    """Decimal or with 0x; 0 for a serial line's path."""
    try:
        return int(text or "0", 0)
    except ValueError:
        return 0


_Attributes = Dict[int, Any]
_attributes_by_resource: Dict[Tuple[InterfaceType, str], _Attributes] = {}


def _attributes_of(kind: InterfaceType, resource_class: str) -> _Attributes:
    key = (kind, resource_class)
    if key not in _attributes_by_resource:
        every = attributes.AttributesByID.items()
        _attributes_by_resource[key] = {number: one for number, one in every if one.in_resource(key)}
    return _attributes_by_resource[key]


SESSIONS: Dict[Tuple[InterfaceType, str], Callable[[str, Any, int], Session]] = {
    (session.kind, session.resource_class): session
    for session in (SocketSession, SerialSession, UsbSession, GpibSession)
}
