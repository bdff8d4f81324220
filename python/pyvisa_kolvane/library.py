"""The functions of VISA that PyVISA calls."""

import itertools
import os
import pathlib
from typing import Any, Dict, Iterable, List, Optional, Tuple, Union

import kolvane
from pyvisa import constants, highlevel, rname
from pyvisa.constants import StatusCode
from pyvisa.typing import VISARMSession, VISASession
from pyvisa.util import LibraryPath

from .sessions import SESSIONS, Session, status_code


def _usb_name(node: str, serial_number: str) -> Optional[str]:
    """The VISA name of an instrument on its message driver's node; None for a serial adapter."""
    system = pathlib.Path(os.environ.get("KOLVANE_SYSFS") or "/sys")
    device = (system / "class/usbmisc" / pathlib.Path(node).name / "device").resolve().parent
    try:
        maker, model = ((device / name).read_text().strip() for name in ("idVendor", "idProduct"))
    except OSError:
        return None
    return f"USB0::0x{maker.upper()}::0x{model.upper()}::{serial_number}::0::INSTR"


def _visa_name(port: kolvane.Port) -> Optional[str]:
    """A name that PyVISA can parse; None if there is none."""
    if port.resource.startswith("USB::"):
        return _usb_name(port.node, port.resource[len("USB::") : -len("::INSTR")])
    return port.resource if port.resource.startswith("ASRL") else None


class KolvaneLibrary(highlevel.VisaLibraryBase):
    """Resources of the classes TCPIP SOCKET, ASRL INSTR, USB INSTR and GPIB INSTR."""

    sessions: Dict[int, Optional[Session]]
    _numbers: "itertools.count[int]"

    @staticmethod
    def get_library_paths() -> Iterable[LibraryPath]:
        """There is no library file to name: one entry represents the package."""
        return (LibraryPath("kolvane"),)

    @staticmethod
    def get_debug_info() -> Dict[str, Union[str, List[str], Dict[str, str]]]:
        """For pyvisa-info."""
        kinds = {f"{kind.name.upper()} {name}": "Available via Kolvane" for kind, name in SESSIONS}
        return {"Version": kolvane.__version__, **kinds}

    def _init(self) -> None:
        self.sessions = {}
        self._numbers = itertools.count(1)

    def _register(self, session: Optional[Session]) -> int:
        number = next(self._numbers)
        self.sessions[number] = session
        return number

    def _session(self, number: int) -> Session:
        session = self.sessions.get(number)
        if session is None:
            self.handle_return_value(None, StatusCode.error_invalid_object)
        assert session is not None
        return session

    def open_default_resource_manager(self) -> Tuple[VISARMSession, StatusCode]:
        """viOpenDefaultRM."""
        number = VISARMSession(self._register(None))
        return number, self.handle_return_value(number, StatusCode.success)

    def list_resources(self, session: VISARMSession, query: str = "?*::INSTR") -> Tuple[str, ...]:
        """viFindRsrc: serial lines and USB instruments. Devices on a network or a GPIB bus cannot be listed."""
        names = (_visa_name(port) for port in kolvane.list_ports())
        return rname.filter([name for name in names if name is not None], query)

    def open(
        self,
        session: VISARMSession,
        resource_name: str,
        access_mode: constants.AccessModes = constants.AccessModes.no_lock,
        open_timeout: int = constants.VI_TMO_IMMEDIATE,
    ) -> Tuple[VISASession, StatusCode]:
        """viOpen. Locks are not supported: a line or USB instrument has only one user anyway."""
        if access_mode & (constants.AccessModes.exclusive_lock | constants.AccessModes.shared_lock):
            return VISASession(0), self.handle_return_value(None, StatusCode.error_invalid_access_mode)
        try:
            parsed = rname.parse_resource_name(resource_name)
            kind = SESSIONS[parsed.interface_type_const, parsed.resource_class]
        except rname.InvalidResourceName:
            return VISASession(0), self.handle_return_value(None, StatusCode.error_invalid_resource_name)
        except KeyError:
            return VISASession(0), self.handle_return_value(None, StatusCode.error_resource_not_found)
        try:
            opened = kind(resource_name, parsed, int(open_timeout))
        except ValueError:
            return VISASession(0), self.handle_return_value(None, StatusCode.error_invalid_resource_name)
        except kolvane.InstrumentError as error:
            return VISASession(0), self.handle_return_value(None, status_code(error))
        number = VISASession(self._register(opened))
        return number, self.handle_return_value(number, StatusCode.success)

    def close(self, session: Any) -> StatusCode:
        """viClose."""
        if session not in self.sessions:
            return self.handle_return_value(None, StatusCode.error_invalid_object)
        closed = self.sessions.pop(session)
        return self.handle_return_value(session, closed.close() if closed else StatusCode.success)

    def read(self, session: VISASession, count: int) -> Tuple[bytes, StatusCode]:
        """viRead."""
        data, status = self._session(session).read(count)
        return data, self.handle_return_value(session, status)

    def write(self, session: VISASession, data: bytes) -> Tuple[int, StatusCode]:
        """viWrite."""
        count, status = self._session(session).write(data)
        return count, self.handle_return_value(session, status)

    def buffer_read(self, session: VISASession, count: int) -> Tuple[bytes, StatusCode]:
        """viBufRead."""
        return self.read(session, count)

    def buffer_write(self, session: VISASession, data: bytes) -> Tuple[int, StatusCode]:
        """viBufWrite."""
        return self.write(session, data)

    def clear(self, session: VISASession) -> StatusCode:
        """viClear."""
        return self.handle_return_value(session, self._session(session).clear())

    def flush(self, session: VISASession, mask: constants.BufferOperation) -> StatusCode:
        """viFlush."""
        return self.handle_return_value(session, self._session(session).flush(mask))

    def get_attribute(self, session: Any, attribute: Any) -> Tuple[Any, StatusCode]:
        """viGetAttribute."""
        value, status = self._session(session).get_attribute(attribute)
        return value, self.handle_return_value(session, status)

    def set_attribute(self, session: VISASession, attribute: Any, attribute_state: Any) -> StatusCode:
        """viSetAttribute."""
        status = self._session(session).set_attribute(attribute, attribute_state)
        return self.handle_return_value(session, status)

    def _unsupported(self, session: Any) -> StatusCode:
        self._session(session)
        return self.handle_return_value(session, StatusCode.error_nonsupported_operation)

    def read_stb(self, session: VISASession) -> Tuple[int, StatusCode]:
        """viReadSTB: for USB and GPIB instruments; with most others, query *STB?."""
        status_byte, status = self._session(session).read_stb()
        return status_byte, self.handle_return_value(session, status)

    def assert_trigger(self, session: VISASession, protocol: constants.TriggerProtocol) -> StatusCode:
        """viAssertTrigger: not supported; *TRG triggers most instruments."""
        return self._unsupported(session)

    def lock(
        self,
        session: VISASession,
        lock_type: constants.Lock,
        timeout: int,
        requested_key: Optional[str] = None,
    ) -> Tuple[str, StatusCode]:
        """viLock: not supported."""
        return "", self._unsupported(session)

    def unlock(self, session: VISASession) -> StatusCode:
        """viUnlock: not supported."""
        return self._unsupported(session)

    # PyVISA disables events whenever a resource is closed.

    def disable_event(self, session: VISASession, event_type: Any, mechanism: Any) -> StatusCode:
        """viDisableEvent: there are none."""
        return StatusCode.success

    def discard_events(self, session: VISASession, event_type: Any, mechanism: Any) -> StatusCode:
        """viDiscardEvents: there are none."""
        return StatusCode.success
