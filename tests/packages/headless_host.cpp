// The smallest host: what pkg-config gives a compiler is enough for it.
#include <kolvane/CommandRun.h>
#include <kolvane/MainClass.h>

#include <cstdio>

int main() {
  std::puts(kolvane::MainClass::OwnFolder().c_str());
  kolvane::CommandRunOptions options;
  options.Connect = "TCPIP::127.0.0.1::1::SOCKET";
  // Port 1 refuses: what counts is that the port library was found.
  return static_cast<int>(kolvane::SendCommands({"*IDN?"}, options));
}
