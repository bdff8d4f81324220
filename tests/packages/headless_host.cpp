// The smallest host: the compiler needs only pkg-config's output.
#include <kolvane/CommandRun.h>
#include <kolvane/MainClass.h>

#include <cstdio>

int main() {
  std::puts(kolvane::MainClass::OwnFolder().c_str());
  kolvane::CommandRunOptions options;
  options.Connect = "TCPIP::127.0.0.1::1::SOCKET";
  // Port 1 refuses; the test is that the port library is found.
  return static_cast<int>(kolvane::SendCommands({"*IDN?"}, options));
}
