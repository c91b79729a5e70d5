// What another user of the folder may have put where the store's file belongs.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "fexora/fexora.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/PosixFiles.h"
#include "fexora/platform/files/ReadFile.h"

#include "tests/support/Command.h"
#include "tests/support/FaultyFiles.h"
#include "tests/support/StoreWorld.h"

namespace fexora::test {
namespace {

namespace fs = std::filesystem;

const std::string kTarget = writePropertyList(Dictionary{{"Fraction", 1}}).bytes;

class HostileFiles : public testing::Test, protected StoreWorld {
 protected:
  HostileFiles() { writeFile(target_, kTarget); }
  void SetUp() override { before_ = *Files::process().statusOf(target_); }
  void TearDown() override {
    EXPECT_EQ(readFile(target_), kTarget);
    EXPECT_TRUE(*Files::process().statusOf(target_) == before_) << "nothing outside changes";
  }

  const ScratchFolder outside_;
  const std::string target_ = outside_ / "target";
  FileStatus before_;
};

// Something, and what makes it of $1; $2 is the target.
struct Thing {
  const char* name;
  const char* line;
  friend void PrintTo(const Thing& thing, std::ostream* out) { *out << thing.name; }
};
const Thing kThings[] = {
    {"Link", "ln -s $2 $1"},
    {"DanglingLink", "ln -s $2-not $1"},
    {"Pipe", "mkfifo $1"},
    {"PipeThatSomebodyWrites", "mkfifo $1"},
    {"Socket",
     FEXORA_TEST_PYTHON " -c 'import socket as s, sys; s.socket(s.AF_UNIX).bind(sys.argv[1])' $1"},
    {"Folder", "mkdir -m 700 $1"},
    {"LoggingDevice", "mknod -m 600 $1 c 1 9"},
    {"EndlessDevice", "mknod -m 600 $1 c 1 5"},
    {"ListThatLeadsOutside",
     "echo '<!DOCTYPE plist [<!ENTITY x SYSTEM \"file://'$2'\">]><plist version=\"1.0\"><dict>"
     "<key>a</key><string>&x;</string></dict></plist>' > $1"},
    {"GigabyteOfHoles", "truncate -s 1G $1"},
};

class AtTheFilesName : public HostileFiles, public testing::WithParamInterface<Thing> {};

// A start, a reload and a save with it at the file's name: nothing is taken from it.
TEST_P(AtTheFilesName, IsNeitherFollowedNorWaitedForNorLost) {
  const int made =
      std::system(("set " + container.file() + " " + target_ + "; " + GetParam().line).c_str());
  if (made != 0) GTEST_SKIP() << "this system lets none be made: nothing is proven";
  std::fstream writer;
  if (std::string_view(GetParam().name) == "PipeThatSomebodyWrites") {
    writer.open(container.file());
    writer << kTarget << std::flush;
  }
  const bool isFolder = fs::is_directory(fs::symlink_status(container.file()));
  if (fs::is_symlink(container.file())) {
    // Also one that is put there after the look at it.
    EXPECT_EQ(Files::process().openForReading(container.file()).error(),
              std::errc::too_many_symbolic_link_levels);
  }
  const auto begin = std::chrono::steady_clock::now();
  start().folderUpdate();
  // Far above what a look at a name takes, far below any wait for another process.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  EXPECT_TRUE(store->ud().empty());
  EXPECT_NE(store->loadProblem().find(container.file()), std::string::npos);
  EXPECT_EQ(desktop.log.count("SAVE"), 0);
  store->setFraction(8);
  EXPECT_EQ(store->fraction(), 8);
  EXPECT_EQ(store->saveProblem().empty(), !isFolder);
  const auto left = fs::symlink_status(container.file()).type();
  EXPECT_EQ(left, isFolder ? fs::file_type::directory : fs::file_type::regular);
  EXPECT_TRUE(isFolder || fraction() == 8);
  EXPECT_EQ(names(".fexora-unreadable-").size(), isFolder ? 0U : 1U) << "what stood there was kept";
  EXPECT_EQ(std::distance(fs::directory_iterator(outside_.path()), {}), 1);
}

INSTANTIATE_TEST_SUITE_P(Things, AtTheFilesName, testing::ValuesIn(kThings),
                         [](const auto& thing) { return std::string(thing.param.name); });

TEST_F(HostileFiles, HardLink_OnlyOurNameIsReplaced) {
  fs::create_hard_link(target_, container.file());
  start().setFraction(8);
  EXPECT_EQ(store->saveProblem(), "");
}

// It grows whenever somebody reads, as a file does that another process writes on.
TEST_F(HostileFiles, GrowingWhileRead_EndsAtTheLimit) {
  constexpr std::size_t kLimit = std::size_t{1} << 20U;
  constexpr std::size_t kGrowth = std::size_t{1} << 16U;
  writeFile(container.file(), "x");
  FaultyFiles files(Files::process());
  files.fail(0, [](std::size_t, const auto& call) {
    if (call.operation == "read") fs::resize_file(call.path, fs::file_size(call.path) + kGrowth);
    return false;
  });
  EXPECT_EQ(readWholeFile(files, container.file(), kLimit).error(), std::errc::file_too_large);
  EXPECT_LE(fs::file_size(container.file()), 2 * kLimit + kGrowth);
}

// Somebody takes each name just before it is made, with a link to the target.
TEST_F(HostileFiles, TakenTemporaryNames_AreNeitherFollowedNorChanged) {
  FaultyFiles files(Files::process());
  const auto replace = [&](int times) {
    files.fail(0, [&, times](std::size_t, const auto& call) mutable {
      if (call.operation == "createExclusive" && times-- > 0)
        fs::create_symlink(target_, call.path);
      return false;
    });
    return replaceFile(files, container.file(), std::to_string(times), 0600).error;
  };
  EXPECT_FALSE(replace(3));
  EXPECT_EQ(replace(1'000'000), std::errc::file_exists);
  EXPECT_EQ(readFile(container.file()), "3");
}

TEST_F(HostileFiles, TemporariesThatAreLinks_AreNotFollowedByTheClearing) {
  fs::create_symlink(target_, container.path() + "/.fexora-save-1");
  ASSERT_EQ(mkfifo((container.path() + "/.fexora-save-2").c_str(), 0600), 0);
  fs::create_directory(container.path() + "/.fexora-save-3");
  EXPECT_EQ(start().saveProblem(), "");
}

TEST_F(HostileFiles, FolderThatOthersMayWrite_IsUsedAndSaid) {
  ASSERT_EQ(chmod(container.path().c_str(), 0770), 0);
  EXPECT_EQ(start().saveProblem(), "");
  EXPECT_EQ(desktop.log.count(container.path() + " may be written by other users"), 1);
}

TEST_F(HostileFiles, FolderOfAnotherUser_IsRejected) {
  class AnotherUser final : public PosixFiles {
    std::uint32_t user() override { return PosixFiles::user() + 1; }
  } files;
  desktop.platform.files = &files;
  const auto meetFolder = [this](const std::string& folder, const std::string& line) {
    desktop.log.lines.clear();
    start().setFraction(8);
    EXPECT_EQ(desktop.log.count(folder + line), 1);
    EXPECT_EQ(desktop.log.count(folder), 1);
    EXPECT_EQ(store->saveProblem().empty(), !fs::is_empty(folder)) << store->saveProblem();
    return store->saveProblem().empty();
  };
  const std::string rejected = " cannot be used: it belongs to another user";
  EXPECT_FALSE(meetFolder(container.path(), rejected));
  // Where the user named it and may write there it is used, but the default place never is.
  const std::string byDefault = outside_ / std::string(kAppGroupIdentifier);
  fs::create_directory(byDefault);
  for (const auto& folder : {container.path(), byDefault}) {
    ASSERT_EQ(chmod(folder.c_str(), 01777), 0);
  }
  EXPECT_TRUE(meetFolder(container.path(), " belongs to another user"));
  const EnvironmentVariable unnamed("FEXORA_CONTAINER", std::nullopt);
  const EnvironmentVariable data("XDG_DATA_HOME", outside_.path());
  EXPECT_FALSE(meetFolder(byDefault, rejected));
  store.reset();  // before its files
}

// A process with more rights than its user has, whose environment the user wrote.
TEST_F(HostileFiles, SetUserIdProcess_IgnoresTheEnvironment) {
  constexpr uid_t kNobody = 65534;
  const std::string saver = outside_ / "saver";
  fs::copy_file(std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver", saver);
  ASSERT_EQ(chmod(outside_.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(container.path().c_str(), 0777), 0);
  const bool isSet =
      chown(saver.c_str(), kNobody, kNobody) == 0 && chmod(saver.c_str(), 04755) == 0;
  const auto run = runCommand({saver, "load"});
  // Neither made by somebody else than root nor from a mount without such rights.
  if (!isSet || (run.output.starts_with("Fraction") &&
                 Files::process().statusOf(container.file())->owner != kNobody)) {
    GTEST_SKIP() << "this system gives no process such rights: nothing is proven";
  }
  EXPECT_NE(run.errors.find("there is no container folder"), std::string::npos)
      << run.output << run.errors;
  EXPECT_TRUE(fs::is_empty(container.path()));
}

TEST_F(HostileFiles, WrongTypesUnderEveryKey_GiveTheDefaults) {
  const Array odd{-7,
                  2.5,
                  true,
                  "text",
                  Date(5.0),
                  Data{1},
                  Array{1, "a", Array{}},
                  Array{Dictionary{{"code", 5}, {"rate", "x"}}},
                  Dictionary{{"code", Array{}}, {"amount", "x"}, {"currency", 5}}};
  start().saveUSDRates({}, false);
  store->saveCurrencies({});
  store->saveSourceCurrency(Currency::make("EUR"), 1, true);
  store->saveSettings();
  const Dictionary all = store->ud();
  ASSERT_EQ(all.size(), 12U);
  for (const auto& [key, fit] : all) {
    for (const Value& value : odd) {
      const Dictionary content{{key, value}};
      write(content);
      start();
      EXPECT_EQ(store->ud(), content);
      EXPECT_NE(store->todayRelativeCurrency(), nullptr);
      EXPECT_TRUE(store->mode() == StyleMode::light || store->mode() == StyleMode::dark);
      RateManager rates(desktop.platform, nullptr, store.get());
      rates.loadRates(std::nullopt, {});
      rates.updated();
      rates.convertAmount(1, Currency::make("EUR"), false);
      store->loadCurrencies();
      store->loadSourceCurrency();
      store->saveSettings();
      EXPECT_EQ(store->saveProblem(), "") << key;
    }
  }
}

}  // namespace
}  // namespace fexora::test
