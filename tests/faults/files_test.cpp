// Disks and files that fail under the log, the saved list, the histories and the settings.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "faults/privileges.h"
#include "faults/shim_run.h"
#include "faults/thorough.h"
#include "faults/window_program.h"

namespace kolvane::faults {
namespace {

namespace fs = std::filesystem;

std::string ManyRows() {
  std::string rows =
      "$REPEAT 999\r\nECHO 0123456789 0123456789 0123456789 0123456789 0123456789 012345678\r\n";
  return rows + "$ENDREPEAT\r\n";
}

void ExpectWholeLines(const std::string& log) {
  const std::string line = "ECHO 0123456789 0123456789 0123456789 0123456789 0123456789 012345678\r\n";
  ASSERT_EQ(log.size() % line.size(), 0u) << log.substr(log.size() - log.size() % line.size());
  for (std::size_t at = 0; at < log.size(); at += line.size())
    ASSERT_EQ(log.compare(at, line.size(), line), 0) << at;
}

class Files : public testing::Test {
 protected:
  std::vector<std::string> Words(const std::string& log) {
    base::WriteBytes(folder_.Path("a.CMD"), ManyRows());
    return {"run", folder_.Path("a.CMD"), "--connect", instrument_.Resource(), "--timeout", "20000", "--log",
            log};
  }

  static long CountLines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

  base::TempFolder folder_;
  FaultyInstrument instrument_{Port::kTcp, NoFault};
};

TEST_F(Files, Row23ALogOnTheFullDevice) {
  const app::Outcome outcome = app::RunProgram(Words("/dev/full"));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "kolvane: Die Logdatei „/dev/full“ kann nicht geschrieben werden: Der Datenträger ist voll\n");
  EXPECT_EQ(CountLines(outcome.out), 1000);
}

TEST_F(Files, Row23ALogOnADiskThatFillsUp) {
  if (!CanMount()) GTEST_SKIP() << kCannotMount;
  const std::string disk = folder_.Path("disk");
  const std::string copy = folder_.Path("copy");
  fs::create_directory(disk);
  const std::string script = "mount -t tmpfs -o size=64k none " + disk +
                             " || exit 99; \"$@\"; status=$?; cp " + disk + "/a.LOG " + copy +
                             "; exit $status";
  const app::Outcome outcome =
      app::RunProgram(Words(disk + "/a.LOG"), {.wrapper = {"unshare", "-m", "sh", "-c", script, "sh"}});
  if (outcome.status == 99) GTEST_SKIP() << "no small disk can be mounted";
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(outcome.err.ends_with(" kann nicht geschrieben werden: Der Datenträger ist voll\n"))
      << outcome.err;
  EXPECT_EQ(CountLines(outcome.out), 1000);
  const std::string log = base::ReadBytes(copy);
  EXPECT_GT(log.size(), 60'000u);
  ExpectWholeLines(log);
}

TEST_F(Files, Row24ALogAtTheSizeLimit) {
  const app::Outcome outcome =
      app::RunProgram(Words(folder_.Path("a.LOG")), {.wrapper = {"prlimit", "--fsize=70000"}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.err.ends_with(" kann nicht geschrieben werden: Die Datei würde zu groß\n"))
      << outcome.err;
  const std::string log = base::ReadBytes(folder_.Path("a.LOG"));
  EXPECT_GT(log.size(), 60'000u);
  ExpectWholeLines(log);
}

/// The settings file of a window that was opened and closed, to be damaged by a test.
class Settings : public testing::Test {
 protected:
  Settings() {
    EXPECT_EQ(WindowProgram(folder_.Path("config"), folder_.Path("own")).End().status, 0);
    saved_ = base::ReadBytes(file());
    EXPECT_NE(saved_, "");
  }

  /// A file that lacks a setting is written again, one that holds all of them is left alone.
  void RemoveASetting() {
    const std::size_t at = saved_.find("RSTIMO=");
    ASSERT_NE(at, std::string::npos);
    saved_.erase(at, saved_.find('\n', at) + 1 - at);
    base::WriteBytes(file(), saved_);
  }

  app::Outcome OpenAndClose(app::LaunchOptions options = {}) {
    bool hung = false;
    const app::Outcome outcome =
        WindowProgram(folder_.Path("config"), folder_.Path("own"), std::move(options)).End(&hung);
    EXPECT_FALSE(hung);
    EXPECT_GE(outcome.status, 0) << outcome.err;
    return outcome;
  }

  std::string file() const { return folder_.Path("config/") + kSettingsFile; }

  base::TempFolder folder_;
  std::string saved_;
};

TEST_F(Settings, Row24SettingsAtTheSizeLimit) {
  RemoveASetting();
  OpenAndClose({.wrapper = {"prlimit", "--fsize=100"}});
  EXPECT_EQ(base::ReadBytes(file()), saved_);
}

TEST_F(Settings, Row25AFolderThatCannotBeWritten) {
  if (!CanMount()) GTEST_SKIP() << kCannotMount;
  RemoveASetting();
  fs::create_directory(folder_.Path("own"));
  base::WriteBytes(folder_.Path("own/IPADDR.INI"), "10.0.0.5\r\n");
  const std::string script = "mount --bind " + folder_.Path("") + " " + folder_.Path("") +
                             " && mount -o remount,bind,ro " + folder_.Path("") + " || exit 99; exec \"$@\"";
  const app::Outcome outcome = OpenAndClose({.environment = {{"XDG_DATA_HOME", folder_.Path("data")}},
                                             .wrapper = {"unshare", "-m", "sh", "-c", script, "sh"}});
  if (outcome.status == 99) GTEST_SKIP() << "nothing can be mounted";
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.err.find(kSettingsFile), std::string::npos) << outcome.err;
  EXPECT_EQ(base::ReadBytes(file()), saved_);
  EXPECT_EQ(base::ReadBytes(folder_.Path("own/IPADDR.INI")), "10.0.0.5\r\n");
}

TEST_F(Settings, Row25ASettingsFileThatMayNotBeTouched) {
  RemoveASetting();
  const std::string folder = folder_.Path("config/Kolvane");
  if (std::system(("chattr +i " + file() + " " + folder + " 2>/dev/null").c_str()) != 0)
    GTEST_SKIP() << "chattr +i is not permitted";
  const app::Outcome outcome = OpenAndClose();
  EXPECT_EQ(std::system(("chattr -i " + folder + " " + file()).c_str()), 0);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.err.find(kSettingsFile), std::string::npos) << outcome.err;
  EXPECT_EQ(base::ReadBytes(file()), saved_);
}

TEST_F(Settings, Row25SettingsOfAnotherUser) {
  if (!CanRunAsNobody()) GTEST_SKIP() << kCannotRunAsNobody;
  RemoveASetting();
  fs::permissions(folder_.Path(""), fs::perms(0755));
  const app::Outcome outcome = OpenAndClose({.wrapper = kAsNobody});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.err.find(kSettingsFile), std::string::npos) << outcome.err;
  EXPECT_EQ(base::ReadBytes(file()), saved_);
}

// A truncated value may not be a number: then a message names it, and the program ends.
TEST_F(Settings, Row26ASettingsFileCutAnywhere) {
  const std::size_t step = IsThorough() ? 1 : 97;
  for (std::size_t size = 0; size < saved_.size(); size += step) {
    SCOPED_TRACE(size);
    base::WriteBytes(file(), saved_.substr(0, size));
    const app::Outcome outcome = OpenAndClose();
    EXPECT_LE(outcome.status, 1);
    EXPECT_EQ(outcome.status == 1, outcome.err.find("kann nicht gelesen werden") != std::string::npos);
    if (HasFailure()) return;
  }
}

TEST_F(Settings, Row26KilledWhileSaving) {
  RemoveASetting();
  for (const char* call : {"save", "fsync", "rename"}) {
    bool hit = true;
    for (int nth = 1; hit; ++nth) {
      SCOPED_TRACE(std::string(call) + std::to_string(nth));
      base::WriteBytes(file(), "[OTHER]\nKEPT=1\n" + saved_);
      const std::string before = base::ReadBytes(file());
      const std::string hit_file = folder_.Path("hit");
      fs::remove(hit_file);
      const app::Outcome outcome =
          WindowProgram(folder_.Path("config"), folder_.Path("own"),
                        {.environment = ShimEnvironment({call, "kill"}, nth, hit_file)})
              .End();
      hit = fs::exists(hit_file);
      EXPECT_EQ(outcome.status, hit ? -SIGKILL : 0);
      const std::string after = base::ReadBytes(file());
      EXPECT_NE(after.find("KEPT=1"), std::string::npos);
      EXPECT_NE(after.find("[COMMANDLIST]"), std::string::npos);
      EXPECT_TRUE(hit || nth > 1) << "nothing was saved";
      if (HasFailure()) return;
    }
  }
}

// Values that cannot be read are ignored; a window that changes nothing leaves the files as they are.
TEST_F(Settings, Row35DamagedExtrasAndStateAreNoHindrance) {
  const std::string extras = folder_.Path("config/Kolvane/Extras.ini");
  const std::string state = folder_.Path("config/state/Kolvane/state.ini");
  fs::create_directories(fs::path(state).parent_path());
  const std::string whole =
      "[EXTRAS]\nListen=1\nUtf8=\\xZZ\n[WINDOW]\nGeometry=AdnQywAD\nSplitter=\"696,464\n[SIZES]\nU_Port=-1,"
      "99999999999\n";
  const std::size_t step = IsThorough() ? 1 : 41;
  for (std::size_t size = 0; size <= whole.size() + 1; size += step) {
    SCOPED_TRACE(size);
    const std::string damaged =
        size <= whole.size() ? whole.substr(0, size) : std::string("\xFF\x00[\n=]", 6);
    base::WriteBytes(extras, damaged);
    base::WriteBytes(state, damaged);
    const app::Outcome outcome = OpenAndClose();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err.find("kolvane:"), std::string::npos) << outcome.err;
    EXPECT_EQ(base::ReadBytes(extras), damaged);
    EXPECT_EQ(base::ReadBytes(state), damaged);
    if (HasFailure()) return;
  }
}

class Saving : public testing::TestWithParam<const char*> {
 protected:
  bool IsHistory() const { return GetParam() == std::string("history"); }
  std::string where() const { return IsHistory() ? folder_.Path("") : file(); }
  std::string file() const { return folder_.Path(IsHistory() ? "IPADDR.INI" : "a.file"); }
  // Flags are identified by their names.
  std::string changed() const { return GetParam() == std::string("extras") ? "Blocks" : "NEW"; }
  std::string original() const { return GetParam() == std::string("extras") ? "Listen" : "OLD"; }

  int Save(const std::string& text, const FailingCall& failing = {}, int nth = 0) {
    const auto environment =
        nth == 0 ? std::map<std::string, std::string>{} : ShimEnvironment(failing, nth, folder_.Path("hit"));
    return app::RunProgram({GetParam(), where(), text},
                           {.environment = environment, .program = KOLVANE_SAVE_PROBE})
        .status;
  }

  void FailEachCall(const FailingCall& failing) {
    ASSERT_EQ(Save(original()), 0);
    ASSERT_EQ(Save(changed()), 0);
    const std::string changed_file = base::ReadBytes(file());
    bool hit = true;
    for (int nth = 1; hit; ++nth) {
      SCOPED_TRACE(Describe(failing, nth));
      ASSERT_EQ(Save(original()), 0);
      const std::string original_file = base::ReadBytes(file());
      fs::remove(folder_.Path("hit"));
      const int status = Save(changed(), failing, nth);
      hit = fs::exists(folder_.Path("hit"));
      const std::string now = base::ReadBytes(file());
      EXPECT_TRUE(hit || nth > 1) << "nothing failed";
      EXPECT_TRUE(now == original_file || now == changed_file) << now;
      const bool killed = failing.kind == "kill" || failing.kind == "torn";
      EXPECT_EQ(status == -SIGKILL, killed && hit);
      // The first fsync is that of the file, before it takes the place of the old one.
      if (failing.call == std::string("fsync") && nth == 1) {
        EXPECT_EQ(now, original_file);
      }
      // A refused save leaves no temporary file.
      EXPECT_TRUE(killed || !HasTemporaryFile());
      if (HasFailure()) return;
    }
  }

  bool HasTemporaryFile() const {
    for (const std::string& name : folder_.Names()) {
      if (name.starts_with(".kolvane-")) return true;
    }
    return false;
  }

  base::TempFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Files, Saving, testing::Values("list", "history", "extras", "state"),
                         [](const auto& what) { return std::string(what.param); });

TEST_P(Saving, Row23OnADiskThatIsFull) {
  for (const bool once : {true, false}) {
    for (const char* call : {"save", "open", "fsync", "rename"})
      FailEachCall({call, std::to_string(ENOSPC), once});
  }
}

TEST_P(Saving, Row28WithoutMemory) {
  FailEachCall({"malloc", std::to_string(ENOMEM), true});
  FailEachCall({"malloc", std::to_string(ENOMEM), false});
}

TEST_P(Saving, Row31KilledWhileSaving) {
  for (const char* call : {"save", "open", "fsync", "rename"}) FailEachCall({call, "kill"});
  FailEachCall({"save", "torn"});
}

}  // namespace
}  // namespace kolvane::faults
