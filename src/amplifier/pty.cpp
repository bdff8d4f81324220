#include "amplifier/pty.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace kolvane::amplifier {
namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

base::Descriptor OpenMaster() {
  base::Descriptor master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  if (!master || grantpt(master.get()) != 0 || unlockpt(master.get()) != 0)
    Fail("cannot open a pseudo terminal");
  return master;
}

std::string PathOfSlave(const base::Descriptor& master) {
  std::array<char, 128> path{};
  errno = ptsname_r(master.get(), path.data(), path.size());
  if (errno != 0) Fail("cannot name the pseudo terminal");
  return path.data();
}

// Raw, so that no byte is changed, echoed or taken as a signal before the terminal sets its own mode.
base::Descriptor OpenSlave(const std::string& path) {
  base::Descriptor slave(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios mode{};
  if (!slave || tcgetattr(slave.get(), &mode) != 0) Fail("cannot open " + path);
  cfmakeraw(&mode);
  if (tcsetattr(slave.get(), TCSANOW, &mode) != 0) Fail("cannot set the mode of " + path);
  return slave;
}

// Renames a second link, so that the link exists at every moment.
void PointLink(const std::string& link, const std::string& target) {
  struct stat present {};
  if (lstat(link.c_str(), &present) == 0 && !S_ISLNK(present.st_mode)) {
    errno = EEXIST;
    Fail("cannot make the link " + link);
  }
  const std::string fresh = link + ".new";
  unlink(fresh.c_str());
  if (symlink(target.c_str(), fresh.c_str()) != 0 || std::rename(fresh.c_str(), link.c_str()) != 0)
    Fail("cannot make the link " + link);
}

bool LeadsTo(const std::string& link, const std::string& target) {
  std::array<char, 128> path{};
  const ssize_t size = readlink(link.c_str(), path.data(), path.size());
  return size > 0 && std::string_view(path.data(), static_cast<std::size_t>(size)) == target;
}

}  // namespace

PtyStream::PtyStream(std::string link)
    : link_(std::move(link)),
      master_(OpenMaster()),
      slave_path_(PathOfSlave(master_)),
      slave_(OpenSlave(slave_path_)) {
  PointLink(link_, slave_path_);
}

PtyStream::~PtyStream() {
  if (LeadsTo(link_, slave_path_)) unlink(link_.c_str());
}

Transfer PtyStream::Receive(std::span<char> space) {
  return Transfer::Of(read(descriptor(), space.data(), space.size()));
}

// A hang-up discards data that the terminal has not read, and the kernel passes bytes on to it some time
// after the write; so two checks in a row must find nothing unread.
bool PtyStream::EndOrderly() {
  int unread = 0;
  const bool is_read = ioctl(slave_.get(), FIONREAD, &unread) != 0 || unread == 0;
  return std::exchange(was_read_, is_read) && is_read;
}

Transfer PtyStream::Send(std::string_view bytes) {
  return Transfer::Of(write(descriptor(), bytes.data(), bytes.size()));
}

}  // namespace kolvane::amplifier
