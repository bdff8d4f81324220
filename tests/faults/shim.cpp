// Preloaded into a program: makes one chosen call fail, as the environment says.
//
//   FAULT_CALL  read, write, recv, send, poll, connect, open, save, fsync, rename, malloc, clock
//   FAULT_KIND  short, kill (ends the program in the call's place), torn (the same after half a write), back
//               (a clock that goes back an hour at each look), or the number of an errno
//   FAULT_NTH   which of the calls that count is hit first, from 1 on
//   FAULT_LAST  "once", or "on": every further one as well
//   FAULT_FILE  a file that is created at a hit
//
// Calls that count: read, recv, send and poll on sockets and terminals; write to those or, with
// FAULT_CALL=save, to ordinary files, including open, fsync and rename; allocations after main has started.
// EINTR "on" hits every other call, as signals do: a call that can complete at once succeeds when it is
// repeated.

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <ctime>

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
}

namespace {

struct Fault {
  const char* call = "";
  const char* file = nullptr;
  bool is_short = false;
  bool kills = false;
  bool writes_half = false;
  int error = 0;
  long nth = 0;
  bool once = true;
};

std::atomic<bool> main_started = false;
std::atomic<long> calls = 0;
Fault fault;

const char* Word(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// Runs just before main; calls during the start of the libraries do not count.
void ReadFault() {
  const char* kind = Word("FAULT_KIND");
  fault.call = Word("FAULT_CALL");
  fault.file = std::getenv("FAULT_FILE");
  fault.is_short = std::strcmp(kind, "short") == 0;
  fault.kills = std::strcmp(kind, "kill") == 0;
  fault.writes_half = std::strcmp(kind, "torn") == 0;
  fault.error = std::atoi(kind);
  fault.nth = std::atol(Word("FAULT_NTH"));
  fault.once = std::strcmp(Word("FAULT_LAST"), "on") != 0;
}

template <typename Function>
Function Real(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void NoteHit() {
  if (fault.file == nullptr) return;
  static const auto real_open = Real<int (*)(const char*, int, ...)>("open");
  const int fd = real_open(fault.file, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  if (fd >= 0) close(fd);
}

bool Counts(long number) {
  if (fault.once) return number == fault.nth;
  if (fault.error == EINTR) return number >= fault.nth && (number - fault.nth) % 2 == 0;
  return number >= fault.nth;
}

/// Whether this call, one of those that count, is to be hit.
bool Hits(const char* call) {
  if (!main_started || std::strcmp(fault.call, call) != 0 || !Counts(++calls)) return false;
  NoteHit();
  if (fault.kills) kill(getpid(), SIGKILL);
  return true;
}

bool Fails(const char* call) {
  if (fault.is_short || fault.writes_half || !Hits(call)) return false;
  errno = fault.error;
  return true;
}

/// The size that a transfer of `size` bytes is cut to.
std::size_t Cut(const char* call, std::size_t size) {
  return fault.is_short && size > 1 && Hits(call) ? 1 : size;
}

/// Restores errno after a descriptor was examined.
class ErrnoGuard {
 public:
  ~ErrnoGuard() { errno = saved_; }

 private:
  int saved_ = errno;
};

bool IsDevice(int fd) {
  const ErrnoGuard guard;
  struct stat about {};
  return fd > STDERR_FILENO && fstat(fd, &about) == 0 && (S_ISSOCK(about.st_mode) || isatty(fd) != 0);
}

bool IsFile(int fd) {
  const ErrnoGuard guard;
  struct stat about {};
  return fd > STDERR_FILENO && fstat(fd, &about) == 0 && S_ISREG(about.st_mode);
}

using Main = int (*)(int, char**, char**);
Main real_main = nullptr;

int CountedMain(int argc, char** argv, char** environment) {
  ReadFault();
  main_started = true;
  return real_main(argc, argv, environment);
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

int __libc_start_main(Main main, int argc, char** argv, void (*init)(), void (*fini)(), void (*rtld_fini)(),
                      void* stack_end) {
  real_main = main;
  const auto real =
      Real<int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*)>("__libc_start_main");
  return real(CountedMain, argc, argv, init, fini, rtld_fini, stack_end);
}

ssize_t read(int fd, void* buffer, std::size_t size) {
  static const auto real = Real<ssize_t (*)(int, void*, std::size_t)>("read");
  if (!IsDevice(fd)) return real(fd, buffer, size);
  return Fails("read") ? -1 : real(fd, buffer, Cut("read", size));
}

ssize_t recv(int fd, void* buffer, std::size_t size, int flags) {
  static const auto real = Real<ssize_t (*)(int, void*, std::size_t, int)>("recv");
  return Fails("recv") ? -1 : real(fd, buffer, Cut("recv", size), flags);
}

ssize_t send(int fd, const void* buffer, std::size_t size, int flags) {
  static const auto real = Real<ssize_t (*)(int, const void*, std::size_t, int)>("send");
  return Fails("send") ? -1 : real(fd, buffer, Cut("send", size), flags);
}

ssize_t write(int fd, const void* buffer, std::size_t size) {
  static const auto real = Real<ssize_t (*)(int, const void*, std::size_t)>("write");
  const char* call = IsDevice(fd) ? "write" : IsFile(fd) ? "save" : "";
  if (fault.writes_half && Hits(call)) {
    real(fd, buffer, size / 2);
    kill(getpid(), SIGKILL);
  }
  return Fails(call) ? -1 : real(fd, buffer, Cut(call, size));
}

int poll(pollfd* entries, nfds_t count, int timeout) {
  static const auto real = Real<int (*)(pollfd*, nfds_t, int)>("poll");
  return Fails("poll") ? -1 : real(entries, count, timeout);
}

// An interrupted attempt continues in the background, as on a real system.
int connect(int fd, const sockaddr* address, socklen_t size) {
  static const auto real = Real<int (*)(int, const sockaddr*, socklen_t)>("connect");
  const bool fails = Fails("connect");
  if (fails && fault.error != EINTR) return -1;
  const int result = real(fd, address, size);
  if (fails) errno = EINTR;
  return fails ? -1 : result;
}

int open(const char* path, int flags, ...) {
  static const auto real = Real<int (*)(const char*, int, ...)>("open");
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  return writes && Fails("open") ? -1 : real(path, flags, mode);
}

int fsync(int fd) {
  static const auto real = Real<int (*)(int)>("fsync");
  return Fails("fsync") ? -1 : real(fd);
}

int rename(const char* from, const char* to) {
  static const auto real = Real<int (*)(const char*, const char*)>("rename");
  return Fails("rename") ? -1 : real(from, to);
}

int clock_gettime(clockid_t clock, timespec* now) {
  static const auto real = Real<int (*)(clockid_t, timespec*)>("clock_gettime");
  const int result = real(clock, now);
  if (clock == CLOCK_REALTIME && Fails("clock")) now->tv_sec -= 3600 * calls.load();
  return result;
}

time_t time(time_t* where) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  if (where != nullptr) *where = now.tv_sec;
  return now.tv_sec;
}

void* malloc(std::size_t size) { return Fails("malloc") ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) {
  return Fails("malloc") ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* old, std::size_t size) { return Fails("malloc") ? nullptr : __libc_realloc(old, size); }

}  // extern "C"

#pragma GCC visibility pop
