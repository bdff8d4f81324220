"""PyVISA's backend: the same scripts receive the same with pyvisa-py and with ours; names, attributes, statuses."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import unittest.mock
import warnings

import pyvisa
import pyvisa_scripts
from amplifier import Amplifier
from pyvisa.constants import InterfaceType, ResourceAttribute, StatusCode

warnings.simplefilter("error", ResourceWarning)


class VisaCase(unittest.TestCase):
    def manager(self, backend="kolvane"):
        manager = pyvisa.ResourceManager("@" + backend)
        self.addCleanup(manager.close)
        return manager

    def amplifier(self, *arguments):
        amplifier = Amplifier(*arguments)
        self.addCleanup(amplifier.close)
        return amplifier

    def instrument(self, *arguments, **options):
        return self.manager().open_resource(self.amplifier(*arguments).resource, **options)

    def status_of(self, call, *arguments):
        with self.assertRaises(pyvisa.VisaIOError) as caught:
            call(*arguments)
        return caught.exception.error_code


class SameScripts(VisaCase):
    def seen(self, script, backend, pty):
        """Runs each script on a new instrument."""
        amplifier = Amplifier(pty)
        manager = pyvisa.ResourceManager("@" + backend)
        try:
            instrument = manager.open_resource(amplifier.resource, read_termination="\r\n", write_termination="\n")
            return script(instrument)
        finally:
            manager.close()
            amplifier.close()

    def test_they_see_the_same(self):
        for pty in (False, True):
            for script in pyvisa_scripts.SCRIPTS:
                with self.subTest(script.__name__, pty=pty):
                    reference, ours = (self.seen(script, backend, pty) for backend in ("py", "kolvane"))
                    self.assertEqual(ours, reference)

    def test_they_find_the_same_attributes(self):
        # The other backend returns texts for these, names no host, and leaves the delay of small packets on.
        differ = {"interface_number", "tcpip_port", "tcpip_hostname", "tcpip_nodelay", "send_end_enabled"}
        for pty in (False, True):
            reference, ours = (self.seen(pyvisa_scripts.attributes, backend, pty) for backend in ("py", "kolvane"))
            self.assertEqual(set(ours), set(reference))
            for name in set(ours) - differ:
                self.assertEqual(ours[name], reference[name], name)


class Resources(VisaCase):
    def test_a_manager_names_itself(self):
        self.assertIn("kolvane", pyvisa.highlevel.list_backends())
        self.assertEqual(str(self.manager()), "Resource Manager of Visa Library at kolvane")

    def test_pyvisa_info_lists_the_backend(self):
        info = subprocess.run(["/usr/bin/pyvisa-info"], capture_output=True, text=True, check=True).stdout
        self.assertIn("TCPIP SOCKET: Available via Kolvane", info)

    def test_what_can_be_listed(self):
        with tempfile.TemporaryDirectory() as system, unittest.mock.patch.dict(os.environ, KOLVANE_SYSFS=system):
            device = pathlib.Path(system, "devices/usb1/1-1")
            for folder in ("1-1:1.0/usbmisc/usbtmc0", "1-1:1.0/tty"):
                (device / folder).mkdir(parents=True)
            for name, text in (("idVendor", "0957"), ("idProduct", "17a6"), ("serial", "MY42"), ("product", "Scope")):
                (device / name).write_text(text + "\n")
            node = device / "1-1:1.0/usbmisc/usbtmc0"
            (node / "uevent").write_text("DEVNAME=usbtmc0\n")
            (node / "device").symlink_to(device / "1-1:1.0")
            listed = pathlib.Path(system, "class/usbmisc")
            listed.mkdir(parents=True)
            (listed / "usbtmc0").symlink_to(node)
            name = "USB0::0x0957::0x17A6::MY42::0::INSTR"
            self.assertEqual(self.manager().list_resources(), (name,))
            self.assertEqual(self.manager().list_resources("ASRL?*"), ())
            info = self.manager().resource_info(name)
            self.assertEqual((info.interface_type, info.resource_class), (InterfaceType.usb, "INSTR"))
            # It exists only in the record, so it cannot be opened.
            self.assertEqual(self.status_of(self.manager().open_resource, name), StatusCode.error_resource_not_found)

    def test_names_that_cannot_be_opened(self):
        manager = self.manager()
        not_found = StatusCode.error_resource_not_found
        for name, status in (
            ("TCPIP::127.0.0.1::1::SOCKET", not_found),
            ("ASRL/no/such/line::INSTR", not_found),
            ("TCPIP::127.0.0.1::INSTR", not_found),
            ("TCPIP::127.0.0.1::70000::SOCKET", StatusCode.error_invalid_resource_name),
            ("ASRL7::INSTR", StatusCode.error_invalid_resource_name),
        ):
            self.assertEqual(self.status_of(manager.open_resource, name), status, name)

    def test_locks_are_refused(self):
        modes = pyvisa.constants.AccessModes
        name = self.amplifier().resource
        for mode in (modes.exclusive_lock, modes.shared_lock):
            refused = self.status_of(lambda: self.manager().open_resource(name, access_mode=mode))
            self.assertEqual(refused, StatusCode.error_invalid_access_mode)

    def test_a_line_has_one_user(self):
        instrument = self.instrument(True)
        busy = self.status_of(self.manager().open_resource, instrument.resource_name)
        self.assertEqual(busy, StatusCode.error_resource_busy)

    def test_a_closed_resource(self):
        manager = self.manager()
        instrument = manager.open_resource(self.amplifier().resource)
        session = instrument.session
        instrument.close()
        self.assertEqual(self.status_of(manager.visalib.read, session, 1), StatusCode.error_invalid_object)
        self.assertEqual(self.status_of(manager.visalib.close, session), StatusCode.error_invalid_object)
        self.assertEqual(self.status_of(manager.visalib.read_stb, session), StatusCode.error_invalid_object)
        self.assertEqual(self.status_of(manager.visalib.unlock, session), StatusCode.error_invalid_object)

    def test_several_at_once(self):
        manager = self.manager()
        instruments = [manager.open_resource(self.amplifier().resource, read_termination="\r\n") for _ in range(3)]
        for number, instrument in enumerate(instruments):
            instrument.write(f"ECHO {number}")
        self.assertEqual([instrument.read() for instrument in instruments], ["0", "1", "2"])


class Statuses(VisaCase):
    def read(self, instrument, count):
        data, status = instrument.visalib.read(instrument.session, count)
        return data, status

    def test_of_reads(self):
        instrument = self.instrument()
        instrument.read_termination = "\n"
        instrument.write("ECHO abc", termination="\n")
        with instrument.ignore_warning(StatusCode.success_max_count_read):
            self.assertEqual(self.read(instrument, 2), (b"ab", StatusCode.success_max_count_read))
        self.assertEqual(self.read(instrument, 20), (b"c\r\n", StatusCode.success_termination_character_read))

    def test_a_silence_ends_a_read_where_ends_are_not_suppressed(self):
        instrument = self.instrument(write_termination="\n")
        instrument.timeout = 200
        instrument.write("ECHO abc")
        self.assertEqual(self.status_of(self.read, instrument, 20), StatusCode.error_timeout)
        instrument.set_visa_attribute(ResourceAttribute.suppress_end_enabled, False)
        # The bytes received so far are still available.
        self.assertEqual(self.read(instrument, 20), (b"abc\r\n", StatusCode.success))

    def test_of_a_lost_connection(self):
        instrument = self.instrument(False, "--close-after", "1", read_termination="\r\n", write_termination="\n")
        self.assertEqual(instrument.query("ECHO last"), "last")
        self.assertEqual(self.status_of(instrument.read), StatusCode.error_connection_lost)

    def test_of_unsupported_operations(self):
        instrument = self.instrument()
        for call in (instrument.read_stb, instrument.assert_trigger, instrument.lock_excl, instrument.unlock):
            self.assertEqual(self.status_of(call), StatusCode.error_nonsupported_operation)


class Attributes(VisaCase):
    def test_of_a_socket(self):
        amplifier = self.amplifier()
        instrument = self.manager().open_resource(amplifier.resource)
        get = instrument.get_visa_attribute
        self.assertEqual(get(ResourceAttribute.tcpip_port), amplifier.port)
        self.assertEqual(get(ResourceAttribute.tcpip_address), "127.0.0.1")
        self.assertEqual(get(ResourceAttribute.resource_manufacturer_name), "Kolvane")
        instrument.set_visa_attribute(ResourceAttribute.tcpip_keepalive, True)
        refused = self.status_of(instrument.set_visa_attribute, ResourceAttribute.tcpip_keepalive, False)
        self.assertEqual(refused, StatusCode.error_nonsupported_attribute_state)

    def test_of_a_serial_line(self):
        instrument = self.instrument(True, baud_rate=57600, read_termination="\r\n", write_termination="\n")
        self.assertEqual((instrument.baud_rate, instrument.query("ECHO fast")), (57600, "fast"))
        for name, value in (
            ("asrl_parity", pyvisa.constants.Parity.mark),
            ("asrl_stop_bits", pyvisa.constants.StopBits.one_and_a_half),
            ("asrl_data_bits", 5),
            ("asrl_flow_control", pyvisa.constants.ControlFlow.dtr_dsr),
            ("asrl_end_in", pyvisa.constants.SerialTermination.last_bit),
        ):
            refused = self.status_of(instrument.set_visa_attribute, ResourceAttribute[name], value)
            self.assertEqual(refused, StatusCode.error_nonsupported_attribute_state, name)
        self.assertEqual(instrument.baud_rate, 57600)
        flow = pyvisa.constants.ControlFlow
        for wanted in (flow.xon_xoff, flow.rts_cts, flow.none):
            instrument.flow_control = wanted
            self.assertEqual((instrument.flow_control, instrument.baud_rate), (wanted, 57600))
        instrument.write("ECHO waits")
        instrument.read_bytes(1)
        self.assertEqual(instrument.bytes_in_buffer, 6)

    def test_a_serial_line_adds_the_end_of_commands(self):
        instrument = self.instrument(True, read_termination="\r\n", write_termination="")
        instrument.set_visa_attribute(
            ResourceAttribute.asrl_end_out, pyvisa.constants.SerialTermination.termination_char
        )
        self.assertEqual(instrument.query("ECHO ended"), "ended")

    def test_of_a_bus(self):
        with unittest.mock.patch.dict(os.environ, KOLVANE_GPIB_LIBRARY=os.environ["KOLVANE_GPIB_STAND_IN"]):
            instrument = self.manager().open_resource("GPIB0::7::INSTR")
            self.assertEqual(instrument.primary_address, 7)
            self.assertEqual(instrument.interface_type, InterfaceType.gpib)
            self.assertEqual(instrument.write("*RST"), 6)
            instrument.timeout = 100
            self.assertEqual(self.status_of(instrument.read), StatusCode.error_timeout)
            self.assertEqual(instrument.read_stb(), 0)
            instrument.clear()


if __name__ == "__main__":
    unittest.main()
