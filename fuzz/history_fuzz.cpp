// The address histories and the modem script: reading, writing and reading again changes nothing.
#include "device/histories.h"
#include "device/open_sequence.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/scratch_folder.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

constexpr std::uint32_t kInputsPerWrite = 16;

void CheckEntries(const device::AddressHistory& history) {
  for (const std::string& entry : history) {
    Require(IsUtf8(entry));
    Require(entry.find_first_of("\r\n") == std::string::npos);
  }
}

void CheckIp(ScratchFolder& folder, bool write, const std::string& address) {
  device::AddressHistory history = device::LoadIpHistory(folder.path());
  CheckEntries(history);
  for (const std::string& entry : history) Require(entry != "0" && entry != "1");
  if (!write) return;
  const std::size_t before = history.size();
  device::Remember(history, address);
  device::Remember(history, address);
  Require(history.size() <= before + 1);
  if (address == "0" || address == "1") return;
  device::SaveIpHistory(folder.path(), history);
  Require(device::LoadIpHistory(folder.path()) == history);
}

void CheckUsb(ScratchFolder& folder, bool write) {
  const device::AddressHistory history = device::LoadUsbHistory(folder.path());
  CheckEntries(history);
  if (!write) return;
  device::SaveUsbHistory(folder.path(), history);
  Require(device::LoadUsbHistory(folder.path()) == history);
}

void CheckModem(ScratchFolder& folder, bool write) {
  const std::string script = device::LoadModemScript(folder.path());
  Require(IsUtf8(script));
  for (const std::string& command : device::ModemCommands(script))
    Require(!command.empty() && command.find_first_of("\r\n") == std::string::npos);
  if (!write) return;
  device::SaveModemScript(folder.path(), script);
  Require(device::LoadModemScript(folder.path()) == script);
}

}  // namespace
}  // namespace kolvane::fuzz

/// The first byte chooses the file; a history's first line is also remembered as an address.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::ScratchFolder folder;
  fuzz::Input input(data, size);
  const std::uint8_t kind = input.Byte() % 3;
  const std::string_view bytes = input.Rest();
  const bool write = fuzz::Hash(bytes) % fuzz::kInputsPerWrite == 0;
  const char* const files[] = {device::kIpHistoryFile, device::kUsbHistoryFile, device::kModemScriptFile};
  folder.Put(files[kind], bytes);
  if (kind == 0) fuzz::CheckIp(folder, write, std::string(input.Until('\n')));
  if (kind == 1) fuzz::CheckUsb(folder, write);
  if (kind == 2) fuzz::CheckModem(folder, write);
  return 0;
}
