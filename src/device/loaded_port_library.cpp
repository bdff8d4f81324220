#include "device/loaded_port_library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "devlnk/devlnk.h"

namespace kolvane::device {
namespace {

struct CloseLibrary {
  void operator()(void* handle) const { dlclose(handle); }
};
using LibraryHandle = std::unique_ptr<void, CloseLibrary>;

// The signatures are those of the port library's own header.
struct Functions {
  decltype(&QDX_OpenPort) open_port;
  decltype(&QDX_SelectDevice) select_device;
  decltype(&QDX_SetTimeout) set_timeout;
  decltype(&QDX_SetGPIBCtrlBlock) set_gpib_control_block;
  decltype(&QDX_EnableNTPortIO) enable_port_io;
  decltype(&QDX_WritePort) write_port;
  decltype(&QDX_ReadPort) read_port;
  decltype(&QDX_FlushInQueue) flush_in_queue;
  decltype(&QDX_ActivateInterpreter) activate_interpreter;
  decltype(&QDX_CloseInterpreterEx) close_interpreter;
  decltype(&QDX_ClosePort) close_port;
  decltype(&QDX_Delay) delay;
  decltype(&USB_GetMaxUsbDevice) max_usb_devices;
  decltype(&USB_ScanUsbDevice) scan_usb_devices;
  // Optional.
  decltype(&QDX_SetNode) set_node;
  decltype(&QDX_SetWaitHandler) set_wait_handler;
  decltype(&QDX_BytesWaiting) bytes_waiting;
  decltype(&QDX_WaitDescriptor) wait_descriptor;
  decltype(&QDX_StatusText) status_text;
  bool is_own;  // it is the one supplied with this program
};

// Looks up functions and keeps the name of the first missing one.
class Resolver {
 public:
  explicit Resolver(void* handle) : handle_(handle) {}

  template <typename Function>
  void Find(const char* name, Function& function) {
    FindOptional(name, function);
    if (function == nullptr && missing_.empty()) missing_ = name;
  }

  template <typename Function>
  void FindOptional(const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(handle_, name));
  }

  const std::string& missing() const { return missing_; }

 private:
  void* handle_;
  std::string missing_;
};

// Returns the name of the first missing function, empty if all exist.
std::string Resolve(void* handle, Functions& functions) {
  Resolver resolver(handle);
  resolver.Find("QDX_OpenPort", functions.open_port);
  resolver.Find("QDX_SelectDevice", functions.select_device);
  resolver.Find("QDX_SetTimeout", functions.set_timeout);
  resolver.Find("QDX_SetGPIBCtrlBlock", functions.set_gpib_control_block);
  resolver.Find("QDX_EnableNTPortIO", functions.enable_port_io);
  resolver.Find("QDX_WritePort", functions.write_port);
  resolver.Find("QDX_ReadPort", functions.read_port);
  resolver.Find("QDX_FlushInQueue", functions.flush_in_queue);
  resolver.Find("QDX_ActivateInterpreter", functions.activate_interpreter);
  resolver.Find("QDX_CloseInterpreterEx", functions.close_interpreter);
  resolver.Find("QDX_ClosePort", functions.close_port);
  resolver.Find("QDX_Delay", functions.delay);
  resolver.Find("USB_GetMaxUsbDevice", functions.max_usb_devices);
  resolver.Find("USB_ScanUsbDevice", functions.scan_usb_devices);
  resolver.FindOptional("QDX_SetNode", functions.set_node);
  resolver.FindOptional("QDX_SetWaitHandler", functions.set_wait_handler);
  resolver.FindOptional("QDX_BytesWaiting", functions.bytes_waiting);
  resolver.FindOptional("QDX_WaitDescriptor", functions.wait_descriptor);
  resolver.FindOptional("QDX_StatusText", functions.status_text);
  functions.is_own = dlsym(handle, "KOLVANE_NewPortSession") != nullptr;
  return resolver.missing();
}

class LoadedPortLibrary final : public PortLibrary {
 public:
  LoadedPortLibrary(LibraryHandle handle, const Functions& functions)
      : handle_(std::move(handle)), call_(functions) {}

  std::int32_t OpenPort(std::int16_t port, std::int32_t baud, const std::string& text, std::int32_t data_bits,
                        std::int16_t stop_bits, std::int16_t receive_buffer) override {
    return call_.open_port(port, baud, text.c_str(), data_bits, stop_bits, receive_buffer);
  }
  std::int32_t SelectDevice(std::int16_t address) override { return call_.select_device(address); }
  [[gnu::hot]] std::int32_t SetTimeout(std::int32_t milliseconds) override {
    return call_.set_timeout(milliseconds);
  }
  std::int32_t SetGpibControlBlock(std::int16_t eoi_on_write, std::int16_t stop_read_on_eos,
                                   std::int16_t eoi_with_eos, std::int16_t eos_char, std::int16_t zero,
                                   std::int16_t repeat_addressing, std::int32_t milliseconds) override {
    return call_.set_gpib_control_block(eoi_on_write, stop_read_on_eos, eoi_with_eos, eos_char, zero,
                                        repeat_addressing, milliseconds);
  }
  std::int32_t EnablePortIo(std::int16_t port) override { return call_.enable_port_io(port); }
  [[gnu::hot]] std::int32_t WritePort(const std::string& text) override {
    return call_.write_port(text.c_str());
  }
  [[gnu::hot]] std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) override {
    std::int32_t second = 0;
    delivered_ = 0;
    return call_.read_port(buffer, count, &delivered_, &second, terminator);
  }
  // The meaning of the counters differs between libraries.
  [[gnu::hot]] std::int32_t Delivered() const override {
    return call_.is_own ? delivered_ : PortLibrary::Delivered();
  }
  std::int32_t FlushInQueue() override { return call_.flush_in_queue(); }
  std::int32_t ActivateInterpreter(std::int16_t value) override { return call_.activate_interpreter(value); }
  std::int32_t CloseInterpreter(std::int16_t port, std::int16_t value) override {
    return call_.close_interpreter(port, value);
  }
  std::int32_t ClosePort() override { return call_.close_port(); }
  std::int32_t Delay(std::int32_t milliseconds) override { return call_.delay(milliseconds); }
  std::int32_t MaxUsbDevices() override { return call_.max_usb_devices(); }
  std::int32_t ScanUsbDevices(std::int32_t slots, char* buffer) override {
    return call_.scan_usb_devices(slots, buffer);
  }
  bool SetWaitHandler(const WaitHandler& handler) override {
    return call_.set_wait_handler != nullptr &&
           call_.set_wait_handler(handler.function, handler.context) >= 0;
  }
  std::int32_t BytesWaiting() override { return call_.bytes_waiting == nullptr ? 0 : call_.bytes_waiting(); }
  std::int32_t WaitDescriptor() override {
    return call_.wait_descriptor == nullptr ? -1 : call_.wait_descriptor();
  }
  std::string StatusText(std::int32_t status) override {
    char text[256] = "";
    if (call_.status_text == nullptr || call_.status_text(status, text, sizeof text) <= 0) return {};
    text[sizeof text - 1] = '\0';
    return text;
  }
  bool TakesNode() const override { return call_.set_node != nullptr; }
  std::int32_t SetNode(std::int16_t port, const std::string& node) override {
    return TakesNode() ? call_.set_node(port, node.c_str()) : PortLibrary::SetNode(port, node);
  }

 private:
  LibraryHandle handle_;
  Functions call_;
  std::int32_t delivered_ = 0;
};

// A name without a folder is searched for by the loader, so only the loader's reason applies.
PortLibraryFailure LoadFailure(const std::string& path, const char* reason) {
  const bool names_a_file = path.find('/') != std::string::npos;
  if (names_a_file && access(path.c_str(), F_OK) != 0) return {PortLibraryFailure::Kind::kNoFile, path, {}};
  return {PortLibraryFailure::Kind::kNotLoadable, path, reason == nullptr ? "" : reason};
}

std::string Reason(const PortLibraryFailure& failure) {
  switch (failure.kind) {
    case PortLibraryFailure::Kind::kNoFile:
      return "Datei nicht gefunden";
    case PortLibraryFailure::Kind::kNotLoadable:
      return failure.detail;
    case PortLibraryFailure::Kind::kMissingFunction:
      return "Funktion " + failure.detail + " fehlt";
  }
  return {};
}

}  // namespace

std::string FailureText(const PortLibraryFailure& failure) {
  return "Die Portbibliothek „" + failure.path + "“ kann nicht benutzt werden: " + Reason(failure) + ".";
}

PortLibraryResult LoadPortLibrary(const std::string& path) {
  LibraryHandle handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (handle == nullptr) return LoadFailure(path, dlerror());
  Functions functions{};
  const std::string missing = Resolve(handle.get(), functions);
  if (!missing.empty()) return PortLibraryFailure{PortLibraryFailure::Kind::kMissingFunction, path, missing};
  return std::make_unique<LoadedPortLibrary>(std::move(handle), functions);
}

namespace {

constexpr char kVariable[] = "KOLVANE_PORT_LIBRARY";

}  // namespace

std::string FolderOfCode(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return ".";
  std::error_code error;
  const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, error);
  // A program found in PATH is known by its bare name only.
  if (error) return std::filesystem::canonical("/proc/self/exe", error).parent_path();
  return file.parent_path();
}

bool IsPortLibraryNamed() {
  const char* chosen = std::getenv(kVariable);
  return chosen != nullptr && *chosen != '\0';
}

std::string PortLibraryPath(const std::string& folder) {
  return IsPortLibraryNamed() ? std::getenv(kVariable) : folder + "/libdevlnk.so";
}

[[gnu::hot]] PortLibrary* LazyPortLibrary::Library() { return library_ != nullptr ? library_.get() : Load(); }

PortLibrary* LazyPortLibrary::Load() {
  PortLibraryResult result = LoadPortLibrary(PortLibraryPath(folder_));
  if (const auto* failure = std::get_if<PortLibraryFailure>(&result)) {
    failure_ = FailureText(*failure);
    return nullptr;
  }
  failure_.clear();
  library_ = std::move(std::get<std::unique_ptr<PortLibrary>>(result));
  SetWaitHandler(handler_);
  return library_.get();
}

void LazyPortLibrary::SetWaitHandler(const WaitHandler& handler) {
  handler_ = handler;
  attended_ = library_ != nullptr && library_->SetWaitHandler(handler_) && handler_.function != nullptr;
}

}  // namespace kolvane::device
