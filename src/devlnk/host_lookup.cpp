#include "devlnk/host_lookup.h"

#include <signal.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

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
struct Answer {
  int code = EAI_AGAIN;
  AddressList addresses;
};

Answer Resolve(const std::string& host, const std::string& service, int flags) {
  const addrinfo hints = Hints(flags);
  addrinfo* found = nullptr;
  const int code = getaddrinfo(host.c_str(), service.c_str(), &hints, &found);
  return {code, AddressList(code == 0 ? found : nullptr)};
}

/// Where the thread that waits for the name service leaves its answer; it may come after nobody waits any
/// more.
struct Lookup {
  std::mutex mutex;
  std::condition_variable answered;
  bool done = false;
  Answer answer;
};

void Work(const std::shared_ptr<Lookup>& lookup, const std::string& host, const std::string& service) {
  Answer answer = Resolve(host, service, 0);
  const std::lock_guard lock(lookup->mutex);
  lookup->answer = std::move(answer);
  lookup->done = true;
  lookup->answered.notify_one();
}

// The caller's signals are none of the thread's business. A name service cannot be asked to hurry, so the
// thread is left to itself; the library stays loaded once it was (-z nodelete).
void StartWork(const std::shared_ptr<Lookup>& lookup, const std::string& host, const std::string& service) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  try {
    std::thread([lookup, host, service] { Work(lookup, host, service); }).detach();
  } catch (const std::system_error&) {
    lookup->answer.code = EAI_MEMORY;
    lookup->done = true;
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

FoundHost AskNameService(const std::string& host, const std::string& service, Deadline& deadline) {
  const auto lookup = std::make_shared<Lookup>();
  StartWork(lookup, host, service);
  std::unique_lock lock(lookup->mutex);
  const std::chrono::milliseconds left(deadline.RemainingMs());
  if (!lookup->answered.wait_for(lock, left, [&] { return lookup->done; }))
    return {Status::kLookupFailed, nullptr};
  if (lookup->answer.code != 0) return {StatusFromLookup(lookup->answer.code), nullptr};
  return {Status::kOk, std::move(lookup->answer.addresses)};
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
  Answer figures = Resolve(host, service, AI_NUMERICHOST);
  if (figures.code == 0) return {Status::kOk, std::move(figures.addresses)};
  return AskNameService(host, service, deadline);
}

}  // namespace kolvane::devlnk
