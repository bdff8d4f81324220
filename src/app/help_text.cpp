#include "app/options.h"

namespace kolvane::app {

std::string HelpText() {
  return R"(Usage: kolvane [OPTION]...
       kolvane run LIST.CMD [--connect RESOURCE] [OPTION]...
       kolvane send COMMAND... [--connect RESOURCE] [OPTION]...
       kolvane ports
       kolvane help
The command terminal for measurement amplifiers and other line-oriented ASCII instruments.

Without a command it opens the terminal's window:
  --mode N      operating mode: 2 own connection (default); 0 and 1, a host's device, are for hosts alone;
                any other opens the window on no device
  --demo        terminal connected to a simulated amplifier; the user's settings stay untouched
  --folder DIR  folder of histories, templates and help files; with run and send as well
  -h, --help    this text, as does help
  --version     version

run executes a command list without a window, send sends each COMMAND and prints each answer:
  --connect RESOURCE         instead of the stored connection and terminal settings, one of
                             TCPIP::HOST::PORT::SOCKET   ASRL1::INSTR  ASRL2::INSTR
                             ASRL/dev/ttyUSB0::INSTR     ASRL/dev/ttyUSB0::RS485::ADDRESS
                             USB::SERIALNUMBER::INSTR    USB0::0xVVVV::0xPPPP::SERIALNUMBER::INSTR
                             GPIB0::ADDRESS::INSTR       LPT1  LPT2  OFFLINE
  --baud RATE                serial lines; 9600 without it
  --parity none|even|odd     even without it
  --data-bits 7|8, --stop-bits 1|2
  --timeout MS               for connecting and for each answer
  --send-terminator T        LF, CR, CRLF, NONE or a character code
  --receive-terminator T     the same
  --receive-mode MODE        where an answer ends: terminator, auto (at a gap) or count
  --count N                  bytes of an answer, up to 1025
  --binary                   answers as <0D><0A>
  --show-commands            print the commands, too
  --show-times               print the time that each exchange took
  --log FILE                 append each line to FILE
  --verbose                  tell about connecting on standard error

ports lists what can be connected to, one line each: RESOURCE, device node, description.

Exit status: 0 done, 1 stopped (an error in the list, a signal; the window could not be opened), 2 usage,
3 no connection, 4 done but at least one answer failed.
)";
}

}  // namespace kolvane::app
