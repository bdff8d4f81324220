#include "emulation/emulated_system.h"

#include <gtest/gtest.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstring>

namespace kolvane::emulation {
namespace {

gboolean Complete(UMockdevIoctlClient* client, const DriverResult& result) {
  umockdev_ioctl_client_complete(client, result.value, result.error);
  return TRUE;
}

gboolean OnControl(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer driver) {
  const unsigned long request = umockdev_ioctl_client_get_request(client);
  UMockdevIoctlData* pointer = umockdev_ioctl_client_get_arg(client);
  UMockdevIoctlData* target = nullptr;
  std::span<std::uint8_t> argument;
  if (const std::size_t size = _IOC_SIZE(request); size > 0) {
    target = umockdev_ioctl_data_resolve(pointer, 0, size, nullptr);
    if (target != nullptr) argument = {target->data, size};
  }
  const DriverResult result = static_cast<Driver*>(driver)->Control(request, argument);
  Complete(client, result);
  if (target != nullptr) g_object_unref(target);
  return TRUE;
}

gboolean OnRead(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer driver) {
  UMockdevIoctlData* room = umockdev_ioctl_client_get_arg(client);
  const auto size = static_cast<std::size_t>(room->data_len);
  return Complete(client, static_cast<Driver*>(driver)->Read({reinterpret_cast<char*>(room->data), size}));
}

gboolean OnWrite(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer driver) {
  UMockdevIoctlData* bytes = umockdev_ioctl_client_get_arg(client);
  const auto size = static_cast<std::size_t>(bytes->data_len);
  const std::string_view text(reinterpret_cast<const char*>(bytes->data), size);
  return Complete(client, static_cast<Driver*>(driver)->Write(text));
}

// These requests do not say how long their argument is.
DriverResult ControlBus(UMockdevIoctlClient* client, serial_rs485& bus) {
  UMockdevIoctlData* argument =
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof bus, nullptr);
  if (argument == nullptr) return Refused(EFAULT);
  if (umockdev_ioctl_client_get_request(client) == TIOCGRS485) {
    std::memcpy(argument->data, &bus, sizeof bus);
  } else {
    std::memcpy(&bus, argument->data, sizeof bus);
  }
  g_object_unref(argument);
  return {};
}

// The node is a pseudo terminal, which handles all other requests itself.
gboolean OnLineControl(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer bus) {
  const unsigned long request = umockdev_ioctl_client_get_request(client);
  if (bus != nullptr && (request == TIOCGRS485 || request == TIOCSRS485))
    return Complete(client, ControlBus(client, *static_cast<serial_rs485*>(bus)));
  int error = 0;
  const int value = umockdev_ioctl_client_execute(client, &error, nullptr);
  return Complete(client, {value, error});
}

std::string DeviceFolder(const std::string& bus) { return "/devices/usb1/" + bus; }

std::string NodeFolder(const std::string& bus, const std::string& kind, const std::string& node) {
  return DeviceFolder(bus) + "/" + bus + ":1.0/" + kind + "/" + node;
}

std::string NodeRecord(const std::string& folder, const std::string& kind, const std::string& node) {
  return "P: " + folder + "\nN: " + node + "\nE: DEVNAME=/dev/" + node + "\nE: SUBSYSTEM=" + kind + "\n";
}

}  // namespace

bool IsEmulated() {
  const bool emulated = umockdev_in_mock_environment() != FALSE;
  EXPECT_TRUE(emulated) << "start it through umockdev-wrapper";
  return emulated;
}

EmulatedSystem::EmulatedSystem() : testbed_(umockdev_testbed_new()) {}

EmulatedSystem::~EmulatedSystem() { g_object_unref(testbed_); }

void EmulatedSystem::Add(const std::string& record) {
  GError* error = nullptr;
  umockdev_testbed_add_from_string(testbed_, (record + "\n").c_str(), &error);
  if (error != nullptr) ADD_FAILURE() << error->message;
}

void EmulatedSystem::AddUsb(const std::string& bus, const UsbText& text, const std::string& kind,
                            const std::string& node) {
  Add("P: " + DeviceFolder(bus) +
      "\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\nA: idVendor=0957\\n\nA: serial=" + text.serial +
      "\\n\nA: manufacturer=" + text.maker + "\\n\nA: product=" + text.product + "\\n\n");
  Add("P: " + DeviceFolder(bus) + "/" + bus + ":1.0\nE: DEVTYPE=usb_interface\nE: SUBSYSTEM=usb\n");
  Add(NodeRecord(NodeFolder(bus, kind, node), kind, node) + "L: device=../../../" + bus + ":1.0\n");
}

void EmulatedSystem::AddNode(const std::string& kind, const std::string& node) {
  Add(NodeRecord("/devices/virtual/" + kind + "/" + node, kind, node));
}

void EmulatedSystem::RemoveUsb(const std::string& bus, const std::string& kind, const std::string& node) {
  umockdev_testbed_remove_device(testbed_, ("/sys" + NodeFolder(bus, kind, node)).c_str());
  umockdev_testbed_remove_device(testbed_, ("/sys" + DeviceFolder(bus)).c_str());
}

void EmulatedSystem::Attach(const std::string& node, Driver& driver) {
  UMockdevIoctlBase* handler = umockdev_ioctl_base_new();
  g_signal_connect(handler, "handle-ioctl", G_CALLBACK(OnControl), &driver);
  g_signal_connect(handler, "handle-read", G_CALLBACK(OnRead), &driver);
  g_signal_connect(handler, "handle-write", G_CALLBACK(OnWrite), &driver);
  AttachHandler(node, handler);
}

void EmulatedSystem::AttachLine(const std::string& node, serial_rs485* bus) {
  UMockdevIoctlBase* handler = umockdev_ioctl_base_new();
  g_signal_connect(handler, "handle-ioctl", G_CALLBACK(OnLineControl), bus);
  AttachHandler(node, handler);
}

void EmulatedSystem::AttachHandler(const std::string& node, UMockdevIoctlBase* handler) {
  GError* error = nullptr;
  umockdev_testbed_attach_ioctl(testbed_, ("/dev/" + node).c_str(), handler, &error);
  if (error != nullptr) ADD_FAILURE() << error->message;
  g_object_unref(handler);
}

void EmulatedSystem::Detach(const std::string& node) {
  umockdev_testbed_detach_ioctl(testbed_, ("/dev/" + node).c_str(), nullptr);
}

int EmulatedSystem::LineOf(const std::string& node) const {
  return umockdev_testbed_get_dev_fd(testbed_, ("/dev/" + node).c_str());
}

}  // namespace kolvane::emulation
