#pragma once

#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "base/loopback.h"
#include "kolvane/Instrument.h"

namespace kolvane::instrument {

/// The far end of one instrument's connection: the test chooses what it sends and examines what it receives.
class Partner {
 public:
  std::string resource() const {
    return "TCPIP::127.0.0.1::" + std::to_string(listener_.port()) + "::SOCKET";
  }
  /// Connects to it.
  Instrument Connect(const InstrumentOptions& options = {}) {
    Instrument instrument(resource(), options);
    fd_ = base::Descriptor(listener_.Accept());
    return instrument;
  }
  /// `bytes` must fit into the socket's buffer.
  void Send(std::string_view bytes) const { send(fd_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL); }
  void SendAll(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t sent = send(fd_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent <= 0) return;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
  }
  std::string Receive(std::size_t count) const {
    std::string bytes(count, '\0');
    recv(fd_.get(), bytes.data(), count, MSG_WAITALL);
    return bytes;
  }
  void HangUp() { fd_ = {}; }

 private:
  base::Listener listener_;
  base::Descriptor fd_;
};

/// The status that `call` fails with; 0 if it succeeds.
template <typename Call>
std::int32_t StatusOf(Call call) {
  try {
    call();
    return 0;
  } catch (const InstrumentError& error) {
    return error.status();
  }
}

}  // namespace kolvane::instrument
