#include "devlnk/host_lookup.h"

#include <utility>

#include "devlnk/background_work.h"

namespace kolvane::devlnk {
namespace {

addrinfo Hints(int flags) {
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICSERV | flags;
  return hints;
}

/// The result of getaddrinfo: its code, and the list where that is 0.
struct Lookup {
  int code = EAI_AGAIN;
  AddressList addresses;
};

Lookup Resolve(const std::string& host, const std::string& service, int flags) {
  const addrinfo hints = Hints(flags);
  addrinfo* found = nullptr;
  const int code = getaddrinfo(host.c_str(), service.c_str(), &hints, &found);
  return {code, AddressList(code == 0 ? found : nullptr)};
}

FoundHost AskNameService(const std::string& host, const std::string& service, Deadline& deadline) {
  std::optional<Lookup> answer =
      RunWithDeadline(deadline, [host, service] { return Resolve(host, service, 0); });
  if (!answer) return {Status::kLookupFailed, nullptr};
  if (answer->code != 0) return {StatusFromLookup(answer->code), nullptr};
  return {Status::kOk, std::move(answer->addresses)};
}

}  // namespace

Status StatusFromLookup(int code) {
  switch (code) {
    case EAI_NONAME:
    case EAI_NODATA:
    case EAI_ADDRFAMILY:
      return Status::kHostNotFound;
    case EAI_MEMORY:
      return Status::kOutOfResources;
    default:
      return Status::kLookupFailed;
  }
}

FoundHost FindHost(const std::string& host, std::uint16_t port, Deadline& deadline) {
  const std::string service = std::to_string(port);
  Lookup figures = Resolve(host, service, AI_NUMERICHOST);
  if (figures.code == 0) return {Status::kOk, std::move(figures.addresses)};
  return AskNameService(host, service, deadline);
}

}  // namespace kolvane::devlnk
