#include "devlnk/partner.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>

#include "devlnk/fake_sysfs.h"

namespace kolvane::devlnk {
namespace {

void Require(bool condition, const char* what) {
  if (!condition) throw std::runtime_error(what);
}

bool Await(int fd, short events) {
  pollfd entry{fd, events, 0};
  int ready = 0;
  do {
    ready = poll(&entry, 1, 20'000);
  } while (ready < 0 && errno == EINTR);
  return ready > 0;
}

class TcpPartner final : public Partner {
 public:
  TcpPartner(int family, const char* address) : listener_(family), address_(address) {}
  ~TcpPartner() override { CloseFd(); }

  std::int32_t Open() override {
    const std::int32_t status = QDX_OpenPort(100, 1, address_, listener_.port(), 1, 512);
    if (status >= 0) {
      CloseFd();
      fd_ = listener_.Accept();
    }
    return status;
  }
  void HangUp() override { CloseFd(); }
  Status loss() const override { return Status::kClosedByPeer; }

 private:
  base::Listener listener_;
  const char* address_;
};

class PtyPartner : public Partner {
 public:
  explicit PtyPartner(std::int16_t port) : port_(port) { fd_ = pty_.master(); }
  std::int32_t Open() override {
    setenv("KOLVANE_COM1", pty_.node().c_str(), 1);
    return QDX_OpenPort(port_, 9600, "n", 8, 1, 512);
  }
  void HangUp() override {
    pty_.CloseMaster();
    fd_ = -1;
  }
  Status loss() const override { return Status::kConnectionLost; }
  void AwaitArrival() override { Require(Await(pty_.slave(), POLLIN), "nothing arrived"); }

 protected:
  base::Pty pty_;

 private:
  std::int16_t port_;
};

class UsbLinePartner final : public PtyPartner {
 public:
  UsbLinePartner() : PtyPartner(200) {
    system_.AddDevice("1-2", {"idVendor", "serial=A50285BI"});
    system_.AddNode("tty", "ttyUSB0", "1-2", pty_.node());
  }
  std::int32_t Open() override {
    setenv("KOLVANE_SYSFS", system_.root().c_str(), 1);
    return QDX_OpenPort(200, 1, "A50285BI", 8, 1, 512);
  }

 private:
  FakeSysfs system_;
};

}  // namespace

void Partner::CloseFd() {
  if (fd_ >= 0) close(fd_);
  fd_ = -1;
}

void Partner::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = write(fd_, bytes.data(), bytes.size());
    if (sent < 0 && errno == EAGAIN) Require(Await(fd_, POLLOUT), "no room");
    Require(sent > 0 || errno == EINTR || errno == EAGAIN, "partner cannot send");
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::string Partner::Receive(std::size_t count) {
  std::string bytes(count, '\0');
  for (std::size_t have = 0; have < count;) {
    Require(Await(fd_, POLLIN), "partner waits in vain");
    const ssize_t got = read(fd_, bytes.data() + have, count - have);
    Require(got > 0 || (got < 0 && errno == EINTR), "partner cannot receive");
    if (got > 0) have += static_cast<std::size_t>(got);
  }
  return bytes;
}

std::unique_ptr<Partner> MakeTcp4() { return std::make_unique<TcpPartner>(AF_INET, "127.0.0.1"); }
std::unique_ptr<Partner> MakeTcp6() { return std::make_unique<TcpPartner>(AF_INET6, "::1"); }
std::unique_ptr<Partner> MakeCom() { return std::make_unique<PtyPartner>(std::int16_t{1}); }
std::unique_ptr<Partner> MakeRs485() { return std::make_unique<PtyPartner>(std::int16_t{10}); }
std::unique_ptr<Partner> MakeUsbLine() { return std::make_unique<UsbLinePartner>(); }

Drip::Drip(Partner& partner, std::string text, int gap_ms)
    : thread_([&partner, text = std::move(text), gap_ms] {
        for (const char byte : text) {
          partner.Send({&byte, 1});
          poll(nullptr, 0, gap_ms);
        }
      }) {}

}  // namespace kolvane::devlnk
