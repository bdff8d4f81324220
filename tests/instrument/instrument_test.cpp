#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <memory>
#include <thread>

#include "amplifier/server.h"
#include "instrument/partner.h"

namespace kolvane::instrument {
namespace {

std::string ResourceOf(const amplifier::ServerThread& amplifier) {
  return "TCPIP::127.0.0.1::" + std::to_string(amplifier.Port()) + "::SOCKET";
}

TEST(Instrument, AsksTheAmplifier) {
  const amplifier::ServerThread amplifier;
  Instrument instrument(ResourceOf(amplifier));
  EXPECT_TRUE(instrument.IsOpen());
  EXPECT_EQ(instrument.Resource(), ResourceOf(amplifier));
  EXPECT_NE(instrument.Query("*IDN?").find("KOLVANE"), std::string::npos) << instrument.Query("*IDN?");
  EXPECT_FALSE(instrument.QueryValues("MSV? 1").empty());
}

TEST(Instrument, AcceptsShortFormsOfNames) {
  const amplifier::ServerThread amplifier({.echo = true});
  Instrument instrument("127.0.0.1:" + std::to_string(amplifier.Port()));
  EXPECT_EQ(instrument.Query("hello"), "hello");
}

TEST(Instrument, RefusesInvalidResourceNames) {
  EXPECT_THROW(Instrument("nonsense"), std::invalid_argument);
  EXPECT_THROW(Instrument("OFFLINE"), std::invalid_argument);
  InstrumentOptions options;
  options.TimeoutMs = -1;
  EXPECT_THROW(Instrument("ASRL1::INSTR", options), std::invalid_argument);
  options = {.Baud = 0};
  EXPECT_THROW(Instrument("ASRL1::INSTR", options), std::invalid_argument);
  options = {.DataBits = 9};
  EXPECT_THROW(Instrument("ASRL1::INSTR", options), std::invalid_argument);
  options = {.StopBits = 3};
  EXPECT_THROW(Instrument("ASRL1::INSTR", options), std::invalid_argument);
}

TEST(Instrument, ReportsWhatFailedAndWhere) {
  const base::Listener not_listening(AF_INET, base::Listener::kNotListening);
  const std::string name = "TCPIP::127.0.0.1::" + std::to_string(not_listening.port()) + "::SOCKET";
  try {
    Instrument instrument(name);
    FAIL() << "connected";
  } catch (const InstrumentError& error) {
    EXPECT_EQ(error.status(), -22);
    EXPECT_EQ(error.what(), name + ": Verbindung abgelehnt (-22)");
  }
}

TEST(Instrument, SendsCommandsAndBytes) {
  Partner partner;
  Instrument instrument = partner.Connect({.WriteTermination = "\r\n"});
  instrument.Write("A");
  instrument.SetWriteTermination("");
  instrument.Write("B");
  instrument.WriteBytes(std::string("\0\xFF", 2));
  EXPECT_EQ(partner.Receive(6), std::string("A\r\nB\0\xFF", 6));
  EXPECT_EQ(instrument.WriteTermination(), "");
  EXPECT_EQ(instrument.ReadTermination(), "\r\n");
}

TEST(Instrument, StaysConnectedWhenAForkedProcessDropsItsCopy) {
  const amplifier::ServerThread amplifier({.echo = true});
  Instrument closed(ResourceOf(amplifier));
  auto dropped = std::make_unique<Instrument>(ResourceOf(amplifier));
  const pid_t child = fork();
  if (child == 0) {
    dropped.reset();
    closed.Close();
    _exit(closed.IsOpen() ? 1 : 0);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(dropped->Query("still"), "still");
  EXPECT_EQ(closed.Query("here"), "here");
}

TEST(Instrument, FlushesReceivedBytes) {
  Partner partner;
  Instrument instrument = partner.Connect();
  partner.Send("late\r\nnow\r\n");
  EXPECT_EQ(instrument.Read(), "late");
  EXPECT_EQ(instrument.BytesWaiting(), 5u);
  EXPECT_EQ(instrument.Flush(), 5u);
  EXPECT_EQ(instrument.BytesWaiting(), 0u);
}

TEST(Instrument, IsNotOpenAfterClosing) {
  Partner partner;
  Instrument instrument = partner.Connect();
  instrument.Close();
  instrument.Close();
  EXPECT_FALSE(instrument.IsOpen());
  EXPECT_EQ(StatusOf([&] { instrument.Write("A"); }), InstrumentError::kNotOpen);
  EXPECT_EQ(StatusOf([&] { instrument.Read(); }), InstrumentError::kNotOpen);
  EXPECT_EQ(instrument.BytesWaiting(), 0u);
}

TEST(Instrument, ReportsTheLossOfItsConnection) {
  Partner partner;
  Instrument instrument = partner.Connect();
  partner.Send("whole\r\npart");
  partner.HangUp();
  EXPECT_EQ(instrument.Read(), "whole");
  EXPECT_EQ(StatusOf([&] { instrument.Read(); }), -40);
}

TEST(Instrument, ChangesItsTimeout) {
  Partner partner;
  Instrument instrument = partner.Connect();
  EXPECT_EQ(instrument.TimeoutMs(), 3000);
  instrument.SetTimeoutMs(0);
  EXPECT_EQ(StatusOf([&] { instrument.Read(); }), InstrumentError::kReadTimeout);
  EXPECT_THROW(instrument.SetTimeoutMs(-1), std::invalid_argument);
  EXPECT_EQ(instrument.TimeoutMs(), 0);
}

TEST(Instrument, GivesUpWhenAskedTo) {
  Partner partner;
  std::atomic<int> asked = 0;
  const std::thread::id caller = std::this_thread::get_id();
  InstrumentOptions options{.TimeoutMs = 600'000};
  options.GiveUp = [&] {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    return ++asked == 2;
  };
  Instrument instrument = partner.Connect(options);
  partner.Send("pa");
  EXPECT_EQ(StatusOf([&] { instrument.Read(); }), InstrumentError::kGivenUp);
  EXPECT_EQ(asked, 2);
  partner.Send("rt\r\n");
  EXPECT_EQ(instrument.Read(), "part");
}

TEST(Instrument, PassesOnExceptionsThrownWhileWaiting) {
  Partner partner;
  InstrumentOptions options{.TimeoutMs = 600'000};
  options.GiveUp = []() -> bool { throw std::out_of_range("enough"); };
  Instrument instrument = partner.Connect(options);
  EXPECT_THROW(instrument.Read(), std::out_of_range);
  partner.Send("on\r\n");
  EXPECT_EQ(instrument.Read(), "on");
}

TEST(Instrument, ClosedByAnotherThreadGivesUpItsWait) {
  Partner partner;
  std::atomic<bool> waits = false;
  InstrumentOptions options{.TimeoutMs = 600'000};
  options.GiveUp = [&] {
    waits = true;
    waits.notify_one();
    return false;
  };
  Instrument instrument = partner.Connect(options);
  std::int32_t status = 0;
  std::thread reader([&] { status = StatusOf([&] { instrument.Read(); }); });
  waits.wait(false);
  // The settings are available while the other thread waits.
  instrument.SetTimeoutMs(instrument.TimeoutMs() / 2);
  instrument.Close();
  reader.join();
  EXPECT_EQ(status, InstrumentError::kGivenUp);
}

TEST(Instrument, SharesNothingWithOthers) {
  constexpr int kInstruments = 16;
  constexpr int kQueries = 200;
  const amplifier::ServerThread amplifier({.echo = true});
  std::atomic<int> right = 0;
  std::vector<std::thread> threads;
  for (int number = 0; number < kInstruments; ++number) {
    threads.emplace_back([&, number] {
      Instrument instrument(ResourceOf(amplifier));
      for (int query = 0; query < kQueries; ++query) {
        const std::string text = std::to_string(number) + "/" + std::to_string(query);
        if (instrument.Query(text) == text) ++right;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, kInstruments * kQueries);
}

TEST(Instrument, GivesEachThreadItsOwnAnswer) {
  constexpr int kThreads = 8;
  constexpr int kQueries = 200;
  const amplifier::ServerThread amplifier({.echo = true});
  Instrument instrument(ResourceOf(amplifier));
  std::atomic<int> right = 0;
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      for (int query = 0; query < kQueries; ++query) {
        const std::string text = std::to_string(number) + "/" + std::to_string(query);
        if (instrument.Query(text) == text) ++right;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, kThreads * kQueries);
}

TEST(Instrument, CanBeMoved) {
  Partner partner;
  Instrument first = partner.Connect();
  Instrument second = std::move(first);
  partner.Send("a\r\n");
  EXPECT_EQ(second.Read(), "a");
}

}  // namespace
}  // namespace kolvane::instrument
