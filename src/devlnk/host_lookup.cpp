#include "devlnk/host_lookup.h"

#include <ctime>
#include <utility>
#include <vector>

namespace kolvane::devlnk {
namespace {

/// A lookup that the system works on in a thread of its own; it must stay where it is until that is done.
struct Request {
  Request(std::string host_name, std::string port) : host(std::move(host_name)), service(std::move(port)) {
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICSERV;
    block.ar_name = host.c_str();
    block.ar_service = service.c_str();
    block.ar_request = &hints;
  }
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  ~Request() {
    if (block.ar_result != nullptr) freeaddrinfo(block.ar_result);
  }

  std::string host;
  std::string service;
  addrinfo hints{};
  gaicb block{};
};

/// Requests that were given up while the system still worked on them. Never destroyed: the system may write
/// to them until the process ends.
std::vector<std::unique_ptr<Request>>& Abandoned() {
  static auto* const list = new std::vector<std::unique_ptr<Request>>;
  return *list;
}

void FreeFinishedRequests() {
  std::erase_if(Abandoned(),
                [](const auto& request) { return gai_error(&request->block) != EAI_INPROGRESS; });
}

void WaitUntilDone(gaicb& block, Deadline& deadline) {
  const gaicb* const list[] = {&block};
  int result = EAI_INTR;
  while (result == EAI_INTR) {
    const std::int32_t left = deadline.RemainingMs();
    const timespec wait{left / 1000, (left % 1000) * 1'000'000L};
    result = gai_suspend(list, 1, &wait);
  }
}

FoundHost AskNameService(std::unique_ptr<Request> request, Deadline& deadline) {
  FreeFinishedRequests();
  Abandoned().reserve(Abandoned().size() + 1);
  gaicb* list[] = {&request->block};
  if (getaddrinfo_a(GAI_NOWAIT, list, 1, nullptr) != 0) return {Status::kOutOfResources, nullptr};
  WaitUntilDone(request->block, deadline);
  const int code = gai_error(&request->block);
  if (code == EAI_INPROGRESS) {
    if (gai_cancel(&request->block) != EAI_CANCELED) Abandoned().push_back(std::move(request));
    return {Status::kLookupFailed, nullptr};
  }
  if (code != 0) return {StatusFromLookup(code), nullptr};
  return {Status::kOk, AddressList(std::exchange(request->block.ar_result, nullptr))};
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
  auto request = std::make_unique<Request>(host, std::to_string(port));
  addrinfo figures = request->hints;
  figures.ai_flags |= AI_NUMERICHOST;
  addrinfo* found = nullptr;
  if (getaddrinfo(host.c_str(), request->service.c_str(), &figures, &found) == 0)
    return {Status::kOk, AddressList(found)};
  return AskNameService(std::move(request), deadline);
}

}  // namespace kolvane::devlnk
