// What another user of the folder may have put where the store's file belongs.
#include <chrono>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include "fexora/fexora.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/PosixFiles.h"
#include "fexora/platform/files/ReadFile.h"

#include "tests/support/Command.h"
#include "tests/support/StoreWorld.h"

namespace fexora::test {
namespace {

namespace fs = std::filesystem;

const std::string kTarget = writePropertyList(Dictionary{{"Fraction", 1}}).bytes;

class HostileFiles : public testing::Test, protected StoreWorld {
 protected:
  HostileFiles() { writeFile(target_, kTarget); }

  // A start, a reload and a save with whatever stands at the file's name; the save's problem.
  // Nothing is taken from it, nothing waits for it, and nothing outside the container changes.
  std::string meet() {
    struct stat before {};
    EXPECT_EQ(lstat(target_.c_str(), &before), 0);
    const auto begin = std::chrono::steady_clock::now();
    start().folderUpdate();
    // Far above what a look at a name takes, far below any wait for another process.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
    EXPECT_TRUE(store->ud().empty());
    EXPECT_NE(store->loadProblem().find(container.file()), std::string::npos);
    EXPECT_EQ(desktop.log.count("SAVE"), 0);
    store->setFraction(8);
    EXPECT_EQ(store->fraction(), 8);
    if (store->saveProblem().empty()) {
      EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(container.file())));
      EXPECT_EQ(fraction(), 8);
      EXPECT_EQ(names(".fexora-unreadable-").size(), 1U) << "what stood there was kept";
    }
    EXPECT_EQ(readFile(target_), kTarget);
    struct stat after {};
    EXPECT_EQ(lstat(target_.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(std::distance(fs::directory_iterator(outside_.path()), {}), 1);
    return store->saveProblem();
  }

  const ScratchFolder outside_;
  const std::string target_ = outside_ / "target";
};

// Puts a thing at a path; the descriptor that goes with it, 0 for none, -1 where it cannot be.
int put(const std::string& thing, const std::string& path, const std::string& target) {
  const char* const name = path.c_str();
  if (thing == "Link") return symlink(target.c_str(), name);
  if (thing == "DanglingLink") return symlink((target + "-not").c_str(), name);
  if (thing == "Pipe") return mkfifo(name, 0600);
  if (thing == "Folder") return mkdir(name, 0700);
  if (thing == "LoggingDevice") return mknod(name, S_IFCHR | 0600, makedev(1, 9));
  if (thing == "EndlessDevice") return mknod(name, S_IFCHR | 0600, makedev(1, 5));
  if (thing == "PipeThatSomebodyWrites") {
    mkfifo(name, 0600);
    const int writer = open(name, O_RDWR | O_CLOEXEC);
    return write(writer, kTarget.data(), kTarget.size()) > 0 ? writer : -1;
  }
  if (thing == "Socket") {
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const auto* const general = reinterpret_cast<const sockaddr*>(&address);
    return bind(listener, general, sizeof address) == 0 ? listener : -1;
  }
  if (thing == "ListThatLeadsOutside") {
    writeFile(path, "<!DOCTYPE plist [<!ENTITY x SYSTEM \"file://" + target +
                        "\">]><plist version=\"1.0\"><dict><key>a</key><string>&x;</string>"
                        "</dict></plist>");
    return 0;
  }
  writeFile(path, "");
  return truncate(name, off_t{1} << 30);
}

class AtTheFilesName : public HostileFiles, public testing::WithParamInterface<const char*> {};

TEST_P(AtTheFilesName, IsNeitherFollowedNorWaitedForNorLost) {
  const int made = put(GetParam(), container.file(), target_);
  if (made < 0) GTEST_SKIP() << "this system lets none be made: nothing is proven";
  const auto status = fs::symlink_status(container.file());
  const bool isFolder = fs::is_directory(status);
  if (fs::is_symlink(status)) {
    // Also one that is put there after the look at it.
    EXPECT_EQ(Files::process().openForReading(container.file()).error(),
              std::errc::too_many_symbolic_link_levels);
  }
  EXPECT_EQ(meet().empty(), !isFolder);
  EXPECT_EQ(fs::is_directory(container.file()), isFolder);
  if (made > 0) close(made);
}

INSTANTIATE_TEST_SUITE_P(Things, AtTheFilesName,
                         testing::Values("Link", "DanglingLink", "Pipe", "PipeThatSomebodyWrites",
                                         "Socket", "Folder", "LoggingDevice", "EndlessDevice",
                                         "ListThatLeadsOutside", "GigabyteOfHoles"),
                         [](const auto& thing) { return std::string(thing.param); });

TEST_F(HostileFiles, HardLink_OnlyOurNameIsReplaced) {
  fs::create_hard_link(target_, container.file());
  start().setFraction(8);
  EXPECT_EQ(store->saveProblem(), "");
  EXPECT_EQ(readFile(target_), kTarget);
  EXPECT_EQ(fs::hard_link_count(target_), 1U);
}

// Grows whenever somebody reads, as a file does that another process writes on.
class GrowingFiles final : public PosixFiles {
 public:
  explicit GrowingFiles(std::string path) : path_(std::move(path)) {}
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override {
    largest = std::max(largest, buffer.size());
    fs::resize_file(path_, fs::file_size(path_) + buffer.size());
    return PosixFiles::read(handle, buffer);
  }
  std::size_t largest = 0;

 private:
  std::string path_;
};

TEST_F(HostileFiles, GrowingWhileRead_EndsAtTheLimit) {
  constexpr std::size_t kLimit = std::size_t{1} << 20U;
  writeFile(target_, "x");
  GrowingFiles files(target_);
  const auto whole = readWholeFile(files, target_, kLimit);
  EXPECT_EQ(whole.error(), std::errc::file_too_large);
  EXPECT_LE(fs::file_size(target_), 2 * kLimit + std::size_t{131072});
  EXPECT_LE(files.largest, kLimit);
}

// Somebody takes each name just before it is made, with a link to the target.
class Racing final : public PosixFiles {
 public:
  Racing(const std::string& target, int times) : target_(target), times_(times) {}
  FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override {
    if (times_-- > 0) fs::create_symlink(target_, path);
    return PosixFiles::createExclusive(path, mode);
  }

 private:
  const std::string& target_;
  int times_;
};

TEST_F(HostileFiles, TakenTemporaryNames_AreNeitherFollowedNorChanged) {
  Racing some(target_, 3);
  EXPECT_FALSE(replaceFile(some, container.file(), "new", 0600).error);
  EXPECT_EQ(readFile(container.file()), "new");
  Racing all(target_, 1'000'000);
  const auto rejected = replaceFile(all, container.file(), "newer", 0600);
  EXPECT_EQ(rejected.error, std::errc::file_exists);
  EXPECT_EQ(readFile(container.file()), "new");
  EXPECT_EQ(readFile(target_), kTarget);
}

TEST_F(HostileFiles, TemporariesThatAreLinks_AreNotFollowedByTheClearing) {
  fs::create_symlink(target_, container.path() + "/.fexora-save-1");
  ASSERT_EQ(mkfifo((container.path() + "/.fexora-save-2").c_str(), 0600), 0);
  fs::create_directory(container.path() + "/.fexora-save-3");
  start();
  EXPECT_EQ(readFile(target_), kTarget);
  EXPECT_EQ(store->saveProblem(), "");
}

TEST_F(HostileFiles, FolderThatOthersMayWrite_IsUsedAndSaid) {
  ASSERT_EQ(chmod(container.path().c_str(), 0770), 0);
  start();
  EXPECT_EQ(store->saveProblem(), "");
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
  if (!isSet || run.output.starts_with("Fraction")) {
    struct stat status {};
    stat(container.file().c_str(), &status);
    if (!isSet || status.st_uid != kNobody) {
      GTEST_SKIP() << "this system gives no process such rights: nothing is proven";
    }
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
  // Those of the settings as they are saved, those of the cached data.
  start().saveSettings();
  std::vector<std::string> keys;
  for (const auto& [key, value] : store->ud()) keys.push_back(key);
  for (const auto key : {kUDUSDRates, kUDUSDRatesUpdated, kUDCurrencies, kUDSourceCurrency}) {
    keys.emplace_back(key);
  }
  ASSERT_EQ(keys.size(), 12U);
  for (const std::string& key : keys) {
    for (const Value& value : odd) {
      const Dictionary content{{key, value}};
      write(content);
      start();
      RateManager rates(desktop.platform, nullptr, store.get());
      EXPECT_EQ(store->ud(), content);
      EXPECT_NE(store->todayRelativeCurrency(), nullptr);
      EXPECT_TRUE(store->mode() == StyleMode::light || store->mode() == StyleMode::dark);
      rates.setLastUpdate(Date(desktop.loop.wallSeconds()));
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
