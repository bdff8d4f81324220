#include <dlfcn.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

#include "devlnk/gpib_stand_in.h"
#include "instrument/partner.h"

namespace kolvane::instrument {
namespace {

using Calls = std::vector<std::string>;

constexpr int kEnd = 0x2000;

struct Gpib : testing::Test {
  void SetUp() override {
    setenv("KOLVANE_GPIB_LIBRARY", GPIB_STAND_IN, 1);
    library = dlopen(GPIB_STAND_IN, RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();
    script = reinterpret_cast<devlnk::GpibScript* (*)()>(dlsym(library, "StandInScript"))();
    *script = {};
  }
  void TearDown() override {
    unsetenv("KOLVANE_GPIB_LIBRARY");
    dlclose(library);
  }

  void* library = nullptr;
  devlnk::GpibScript* script = nullptr;
};

TEST_F(Gpib, TalksToTheAddressInTheName) {
  script->reads = {{"1.5\n", kEnd}};
  {
    Instrument instrument("GPIB0::5::INSTR");
    EXPECT_EQ(instrument.Query("MSV?"), "1.5");
  }
  ASSERT_GE(script->calls.size(), 3u);
  EXPECT_EQ(script->calls.front().substr(0, 8), "dev 0 5 ");
  EXPECT_EQ(script->calls.back().substr(0, 3), "onl");
}

TEST_F(Gpib, EndsAnAnswerWhenTheInstrumentSignalsItsEnd) {
  script->reads = {{"no end of line", kEnd}, {"in two ", 0}, {"pieces", kEnd}, {"", kEnd}, {"next", kEnd}};
  Instrument instrument("GPIB0::5::INSTR");
  EXPECT_EQ(instrument.Read(), "no end of line");
  instrument.SetReadTermination("");
  EXPECT_EQ(instrument.Read(), "in two pieces");
  EXPECT_EQ(instrument.ReadMessage({}).End, MessageEnd::kInstrument);
  EXPECT_EQ(instrument.ReadMessage({}).Bytes, "next");
}

TEST_F(Gpib, HasAStatusByte) {
  script->polls = {{"\x50"}, {"", 0x8000 | 0x4000, 6}};
  Instrument instrument("GPIB0::5::INSTR");
  EXPECT_EQ(instrument.ReadStatusByte(), 0x50);
  EXPECT_EQ(script->calls.back().substr(0, 4), "rsp ");
  EXPECT_EQ(StatusOf([&] { instrument.ReadStatusByte(); }), -30);
}

TEST_F(Gpib, KeepsMessagesApart) {
  script->reads = {{"#13abc\n", kEnd}, {"#13def", kEnd}, {"x", kEnd}};
  Instrument instrument("GPIB0::5::INSTR");
  EXPECT_EQ(instrument.QueryBlock("A"), "abc");
  EXPECT_EQ(instrument.QueryBlock("A"), "def");
  EXPECT_EQ(instrument.Read(), "x");
}

TEST_F(Gpib, WithoutDriverIsNotAvailable) {
  setenv("KOLVANE_GPIB_LIBRARY", "/no/such/library.so", 1);
  EXPECT_EQ(StatusOf([] { Instrument("GPIB0::5::INSTR"); }), -4);
}

TEST(SerialInstrument, UsesItsOwnLine) {
  const base::Pty first;
  const base::Pty second;
  InstrumentOptions options;
  options.Baud = 115200;
  Instrument one("ASRL" + first.node() + "::INSTR", options);
  Instrument two(second.node());
  one.Write("ONE");
  two.Write("TWO");
  char room[8]{};
  EXPECT_EQ(read(first.master(), room, sizeof room), 4);
  EXPECT_STREQ(room, "ONE\n");
  ASSERT_EQ(write(second.master(), "2\r\n", 3), 3);
  ASSERT_EQ(write(first.master(), "1\r\n", 3), 3);
  EXPECT_EQ(one.Read(), "1");
  EXPECT_EQ(two.Read(), "2");
}

TEST(SerialInstrument, ChangesItsRate) {
  const base::Pty line;
  Instrument instrument(line.node());
  termios settings{};
  tcgetattr(line.slave(), &settings);
  EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B9600));
  instrument.SetLine(19200, SerialParity::kNone, 8, 2);
  tcgetattr(line.slave(), &settings);
  EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B19200));
  EXPECT_NE(settings.c_cflag & CSTOPB, 0u);
  instrument.SetLine(19200, SerialParity::kNone, 8, 1, SerialFlow::kXonXoff);
  tcgetattr(line.slave(), &settings);
  EXPECT_EQ(settings.c_iflag & (IXON | IXOFF), static_cast<tcflag_t>(IXON | IXOFF));
  EXPECT_THROW(instrument.SetLine(0, SerialParity::kNone, 8, 1), std::invalid_argument);
}

TEST(SerialInstrument, LineSettingsAreRefusedForOtherInstruments) {
  Partner partner;
  Instrument instrument = partner.Connect();
  EXPECT_EQ(StatusOf([&] { instrument.SetLine(19200, SerialParity::kNone, 8, 1); }),
            InstrumentError::kInvalidArgument);
  EXPECT_EQ(StatusOf([&] { instrument.ReadStatusByte(); }), InstrumentError::kNotAvailable);
}

TEST(SerialInstrument, RefusesALineThatIsInUse) {
  const base::Pty line;
  Instrument one("ASRL" + line.node() + "::INSTR");
  EXPECT_EQ(StatusOf([&] { Instrument("ASRL" + line.node() + "::INSTR"); }), -13);
}

}  // namespace
}  // namespace kolvane::instrument
