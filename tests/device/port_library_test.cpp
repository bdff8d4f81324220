#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "base/temp_folder.h"
#include "device/fake_port_library.h"
#include "device/loaded_port_library.h"
#include "device/port_library_contract.h"

namespace kolvane::device {
namespace {

namespace fs = std::filesystem;

class PortLibraryFile : public testing::Test {
 protected:
  PortLibraryFile() { unsetenv("KOLVANE_PORT_LIBRARY"); }

  static PortLibraryFailure FailureOf(const std::string& path) {
    PortLibraryResult result = LoadPortLibrary(path);
    return std::get<PortLibraryFailure>(result);
  }

  const base::TempFolder folder;
};

using FailureKind = PortLibraryFailure::Kind;

std::string Log(PortLibrary& library) {
  std::string text(400, ' ');
  library.ReadPort(text.data(), 400, 10);
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

TEST_F(PortLibraryFile, PassesEveryArgumentOn) {
  PortLibraryResult result = LoadPortLibrary(KOLVANE_COMPLETE_LIBRARY);
  PortLibrary& library = *std::get<std::unique_ptr<PortLibrary>>(result);
  library.OpenPort(100, 1, "host", -1, 2, 512);
  library.SelectDevice(3);
  library.SetTimeout(70000);
  library.SetGpibControlBlock(1, 2, 3, 4, 0, 5, 6000);
  library.EnablePortIo(90);
  library.WritePort("A\xE4\n");
  library.FlushInQueue();
  library.ActivateInterpreter(200);
  library.CloseInterpreter(488, 1);
  library.ClosePort();
  library.Delay(50);
  library.MaxUsbDevices();
  char record[] = "?";
  library.ScanUsbDevices(8, record);
  EXPECT_TRUE(library.TakesNode());
  library.SetNode(10, "/dev/x");
  EXPECT_EQ(Log(library),
            "open host 100 1 -1 2 512;select 3;timeout 70000;gpib 1 2 3 4 0 5 6000;enable 90;A\xE4\n;flush;"
            "activate 200;close interpreter 488 1;close;delay 50;usb;scan 8;node /dev/x 10;read 400 10;");
  EXPECT_EQ(record[0], 'S');
}

TEST_F(PortLibraryFile, ReturnsTheStatus) {
  PortLibraryResult result = LoadPortLibrary(KOLVANE_COMPLETE_LIBRARY);
  PortLibrary& library = *std::get<std::unique_ptr<PortLibrary>>(result);
  Log(library);
  EXPECT_EQ(library.FlushInQueue(), 6);
  EXPECT_EQ(library.ClosePort(), 12);
}

TEST_F(PortLibraryFile, OfAnotherMakerDoesNotReportWhatItDelivered) {
  PortLibraryResult result = LoadPortLibrary(KOLVANE_COMPLETE_LIBRARY);
  PortLibrary& library = *std::get<std::unique_ptr<PortLibrary>>(result);
  char buffer[400] = "";
  library.ReadPort(buffer, sizeof buffer, 10);
  EXPECT_LT(library.Delivered(), 0);
}

TEST_F(PortLibraryFile, MayLackTheOptionalFunctions) {
  PortLibraryResult result = LoadPortLibrary(KOLVANE_PLAIN_LIBRARY);
  PortLibrary& library = *std::get<std::unique_ptr<PortLibrary>>(result);
  EXPECT_FALSE(library.TakesNode());
  EXPECT_LT(library.SetNode(1, "/dev/x"), 0);
  EXPECT_EQ(Log(library), "read 400 10;");
}

TEST_F(PortLibraryFile, IsRefusedForAMissingFunction) {
  const PortLibraryFailure failure = FailureOf(KOLVANE_INCOMPLETE_LIBRARY);
  EXPECT_EQ(failure.kind, FailureKind::kMissingFunction);
  EXPECT_EQ(failure.detail, "QDX_ReadPort");
  EXPECT_EQ(FailureText(failure), std::string("Die Portbibliothek „") + KOLVANE_INCOMPLETE_LIBRARY +
                                      "“ kann nicht benutzt werden: Funktion QDX_ReadPort fehlt.");
}

TEST_F(PortLibraryFile, IsRefusedIfMissing) {
  const PortLibraryFailure failure = FailureOf(folder.Path("lib.so"));
  EXPECT_EQ(failure.kind, FailureKind::kNoFile);
  EXPECT_EQ(FailureText(failure), "Die Portbibliothek „" + folder.path() +
                                      "/lib.so“ kann nicht benutzt werden: Datei nicht gefunden.");
}

TEST_F(PortLibraryFile, IsRefusedForTheSystemsReason) {
  const std::string path = folder.Path("lib.so");
  std::ofstream(path) << "no library";
  const PortLibraryFailure failure = FailureOf(path);
  EXPECT_EQ(failure.kind, FailureKind::kNotLoadable);
  EXPECT_FALSE(failure.detail.empty());
  EXPECT_EQ(FailureText(failure),
            "Die Portbibliothek „" + path + "“ kann nicht benutzt werden: " + failure.detail + ".");
  EXPECT_EQ(FailureOf("kolvane-no-such-library.so").kind, FailureKind::kNotLoadable);
}

TEST_F(PortLibraryFile, IsBesideTheComponentUnlessNamed) {
  EXPECT_EQ(PortLibraryPath("/a/b"), "/a/b/libdevlnk.so");
  setenv("KOLVANE_PORT_LIBRARY", "", 1);
  EXPECT_EQ(PortLibraryPath("/a/b"), "/a/b/libdevlnk.so");
  setenv("KOLVANE_PORT_LIBRARY", "/c/other.so", 1);
  EXPECT_EQ(PortLibraryPath("/a/b"), "/c/other.so");
  unsetenv("KOLVANE_PORT_LIBRARY");
}

int CodeOfThisProgram() { return 0; }

TEST_F(PortLibraryFile, KnowsTheFolderOfCode) {
  const fs::path program = fs::canonical("/proc/self/exe");
  EXPECT_EQ(FolderOfCode(reinterpret_cast<const void*>(&CodeOfThisProgram)), program.parent_path());
}

TEST_F(PortLibraryFile, IsLoadedAtFirstUseAndOnce) {
  LazyPortLibrary source(folder.path());
  fs::create_symlink(KOLVANE_COMPLETE_LIBRARY, folder.Path("libdevlnk.so"));
  PortLibrary* library = source.Library();
  ASSERT_NE(library, nullptr);
  fs::remove(folder.Path("libdevlnk.so"));
  EXPECT_EQ(source.Library(), library);
  EXPECT_EQ(source.Failure(), "");
}

TEST_F(PortLibraryFile, IsTriedAgainAfterAFailure) {
  LazyPortLibrary source(folder.path());
  EXPECT_EQ(source.Library(), nullptr);
  EXPECT_EQ(source.Failure(), "Die Portbibliothek „" + folder.path() +
                                  "/libdevlnk.so“ kann nicht benutzt werden: Datei nicht gefunden.");
  fs::create_symlink(KOLVANE_COMPLETE_LIBRARY, folder.Path("libdevlnk.so"));
  EXPECT_NE(source.Library(), nullptr);
  EXPECT_EQ(source.Failure(), "");
}

std::shared_ptr<PortLibrary> Loaded(const char* path) {
  PortLibraryResult result = LoadPortLibrary(path);
  return std::get<std::unique_ptr<PortLibrary>>(std::move(result));
}

std::shared_ptr<PortLibrary> Fake() {
  auto fake = std::make_shared<FakePortLibrary>();
  fake->replies = {{"1234567890\n"}};
  return fake;
}

INSTANTIATE_TEST_SUITE_P(
    Libraries, PortLibraryContract,
    testing::Values(PortLibraryCase{"Complete", [] { return Loaded(KOLVANE_COMPLETE_LIBRARY); }},
                    PortLibraryCase{"Plain", [] { return Loaded(KOLVANE_PLAIN_LIBRARY); }},
                    PortLibraryCase{"Fake", Fake}),
    NameOfLibrary);

}  // namespace
}  // namespace kolvane::device
