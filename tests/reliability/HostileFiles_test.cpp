// What another user of the folder may have put where the store's file belongs.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>

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
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/Command.h"
#include "tests/support/ForwardingFiles.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

namespace fs = std::filesystem;

const std::string kTarget = writePropertyList(Dictionary{{"Fraction", 1}}).bytes;

class HostileFiles : public testing::Test {
 protected:
  HostileFiles() { writeFile(target_, kTarget); }

  // A start, a reload and a save with whatever stands at the file's name. Nothing is taken from it,
  // nothing waits for it, and nothing outside the container changes.
  void meet() {
    struct stat before {};
    ASSERT_EQ(lstat(target_.c_str(), &before), 0);
    const auto begin = std::chrono::steady_clock::now();
    StoreManager store(desktop_.platform);
    store.folderUpdate();
    took_ = std::chrono::steady_clock::now() - begin;
    EXPECT_TRUE(store.ud().empty());
    EXPECT_NE(store.loadProblem().find(container_.file()), std::string::npos);
    EXPECT_EQ(desktop_.log.count("SAVE"), 0);
    store.setFraction(8);
    problem_ = store.saveProblem();
    EXPECT_EQ(store.fraction(), 8);
    if (problem_.empty()) {
      EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(container_.file())));
      EXPECT_NE(readFile(container_.file()).find("<integer>8</integer>"), std::string::npos);
      EXPECT_EQ(asides(), 1U) << "what stood there was kept";
    }
    EXPECT_EQ(readFile(target_), kTarget);
    struct stat after {};
    ASSERT_EQ(lstat(target_.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(std::distance(fs::directory_iterator(outside_.path()), {}), 1);
  }

  std::size_t asides() const {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(container_.path())) {
      count += entry.path().filename().string().starts_with(".fexora-unreadable-") ? 1 : 0;
    }
    return count;
  }
  // Far above what a look at a name takes, far below any wait for another process.
  void expectNoWait() const {
    RecordProperty("microseconds", static_cast<int>(took_ / std::chrono::microseconds(1)));
    EXPECT_LT(took_, std::chrono::seconds(5));
  }

  TestContainer container_;
  ScratchFolder outside_;
  const std::string target_ = outside_ / "target";
  VirtualPlatform desktop_;
  std::chrono::steady_clock::duration took_{};
  std::string problem_;
};

TEST_F(HostileFiles, SymbolicLink_IsNotFollowed) {
  fs::create_symlink(target_, container_.file());
  meet();
  EXPECT_EQ(problem_, "");
}

TEST_F(HostileFiles, DanglingLink_IsNotMissing) {
  fs::create_symlink(outside_ / "nowhere", container_.file());
  meet();
  EXPECT_EQ(problem_, "");
}

TEST_F(HostileFiles, HardLink_OnlyOurNameIsReplaced) {
  fs::create_hard_link(target_, container_.file());
  StoreManager store(desktop_.platform);
  store.setFraction(8);
  EXPECT_EQ(store.saveProblem(), "");
  EXPECT_EQ(readFile(target_), kTarget);
  EXPECT_EQ(fs::hard_link_count(target_), 1U);
}

TEST_F(HostileFiles, Pipe_IsRefusedWithoutAWait) {
  ASSERT_EQ(mkfifo(container_.file().c_str(), 0600), 0);
  meet();
  expectNoWait();
}

TEST_F(HostileFiles, PipeThatSomebodyWrites_IsRefused) {
  ASSERT_EQ(mkfifo(container_.file().c_str(), 0600), 0);
  const int writer = open(container_.file().c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(write(writer, kTarget.data(), kTarget.size()), std::ssize(kTarget));
  meet();
  close(writer);
}

TEST_F(HostileFiles, Socket_IsRefused) {
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  container_.file().copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  meet();
  expectNoWait();
  close(listener);
}

TEST_F(HostileFiles, Folder_IsRefusedAndStays) {
  fs::create_directory(container_.file());
  meet();
  EXPECT_NE(problem_, "");
  EXPECT_TRUE(fs::is_directory(container_.file()));
}

TEST_F(HostileFiles, Device_IsRefusedUnopened) {
  // A terminal-like device and an endless one.
  for (const unsigned minor : {9U, 5U}) {
    fs::remove(container_.file());
    if (mknod(container_.file().c_str(), S_IFCHR | 0600, makedev(1, minor)) != 0) {
      GTEST_SKIP() << "this system lets no device be made: nothing is proven";
    }
    for (const auto& entry : fs::directory_iterator(container_.path())) {
      if (entry.path() != container_.file()) fs::remove(entry.path());
    }
    desktop_.log.lines.clear();
    meet();
    expectNoWait();
  }
}

TEST_F(HostileFiles, GigabyteOfHoles_IsRefusedUnread) {
  writeFile(container_.file(), "");
  fs::resize_file(container_.file(), std::uintmax_t{1} << 30U);
  meet();
  EXPECT_EQ(problem_, "");
}

// Grows whenever somebody reads, as a file does that another process writes on.
class GrowingFiles final : public ForwardingFiles {
 public:
  explicit GrowingFiles(std::string path)
      : ForwardingFiles(Files::process()), path_(std::move(path)) {}
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override {
    largest = std::max(largest, buffer.size());
    fs::resize_file(path_, fs::file_size(path_) + buffer.size());
    return below().read(handle, buffer);
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

TEST_F(HostileFiles, DeepAndExplodingLists_AreRefused) {
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  std::string deep = head + "<plist version=\"1.0\"><dict><key>a</key>";
  for (int i = 0; i < 100'000; ++i) deep += "<array>";
  std::string bomb = head + "<!DOCTYPE plist [<!ENTITY a0 \"aaaaaaaaaa\">";
  for (int i = 1; i < 30; ++i) {
    bomb += "<!ENTITY a" + std::to_string(i) + " \"&a" + std::to_string(i - 1) + ";&a" +
            std::to_string(i - 1) + ";\">";
  }
  bomb += "]><plist version=\"1.0\"><dict><key>a</key><string>&a29;</string></dict></plist>";
  const std::string outside =
      head + "<!DOCTYPE plist [<!ENTITY x SYSTEM \"file://" + target_ +
      "\">]><plist version=\"1.0\"><dict><key>a</key><string>&x;</string></dict></plist>";
  // A binary list of 30 arrays, each of ten references to the next: 10^30 values.
  std::string wide = "bplist00";
  std::string offsets;
  for (int i = 0; i < 30; ++i) {
    offsets += static_cast<char>(wide.size() >> 8U);
    offsets += static_cast<char>(wide.size());
    wide += '\xAA';
    wide.append(10, static_cast<char>(i + 1));
  }
  offsets += static_cast<char>(wide.size() >> 8U);
  offsets += static_cast<char>(wide.size());
  wide += '\x10';
  wide += '\x01';
  const std::size_t table = wide.size();
  wide += offsets;
  wide += std::string(6, '\0') + '\x02' + '\x01';
  for (const std::size_t number : {std::size_t{31}, std::size_t{0}, table}) {
    for (int shift = 56; shift >= 0; shift -= 8)
      wide += static_cast<char>(number >> unsigned(shift));
  }
  for (const std::string& bytes : {deep, bomb, outside, wide}) {
    for (const auto& entry : fs::directory_iterator(container_.path())) fs::remove(entry.path());
    desktop_.log.lines.clear();
    writeFile(container_.file(), bytes);
    meet();
    EXPECT_EQ(problem_, "");
  }
}

TEST_F(HostileFiles, TakenTemporaryNames_AreNeitherFollowedNorChanged) {
  // Somebody takes each name just before it is made, with a link to the target.
  class Racing final : public ForwardingFiles {
   public:
    Racing(const std::string& target, int times)
        : ForwardingFiles(Files::process()), target_(target), times_(times) {}
    FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override {
      if (times_-- > 0) fs::create_symlink(target_, path);
      return below().createExclusive(path, mode);
    }

   private:
    const std::string& target_;
    int times_;
  };
  Racing some(target_, 3);
  EXPECT_FALSE(replaceFile(some, container_.file(), "new", 0600).error);
  EXPECT_EQ(readFile(container_.file()), "new");
  Racing all(target_, 1'000'000);
  const auto refused = replaceFile(all, container_.file(), "newer", 0600);
  EXPECT_EQ(refused.error, std::errc::file_exists);
  EXPECT_EQ(readFile(container_.file()), "new");
  EXPECT_EQ(readFile(target_), kTarget);
}

TEST_F(HostileFiles, TemporariesThatAreLinks_AreNotFollowedByTheClearing) {
  fs::create_symlink(target_, container_.path() + "/.fexora-save-1");
  ASSERT_EQ(mkfifo((container_.path() + "/.fexora-save-2").c_str(), 0600), 0);
  fs::create_directory(container_.path() + "/.fexora-save-3");
  const StoreManager store(desktop_.platform);
  EXPECT_EQ(readFile(target_), kTarget);
  EXPECT_EQ(store.saveProblem(), "");
}

TEST_F(HostileFiles, FolderThatOthersMayWrite_IsUsedAndSaid) {
  ASSERT_EQ(chmod(container_.path().c_str(), 0770), 0);
  StoreManager store(desktop_.platform);
  EXPECT_EQ(store.saveProblem(), "");
  EXPECT_EQ(desktop_.log.count(container_.path() + " may be written by other users"), 1);
}

TEST_F(HostileFiles, FolderOfAnotherUser_IsRefused) {
  class AnotherUser final : public ForwardingFiles {
   public:
    AnotherUser() : ForwardingFiles(Files::process()) {}
    std::uint32_t user() override { return below().user() + 1; }
  } files;
  desktop_.platform.files = &files;
  const auto meetFolder = [this](const std::string& folder, const std::string& line) {
    desktop_.log.lines.clear();
    StoreManager store(desktop_.platform);
    store.setFraction(8);
    EXPECT_EQ(desktop_.log.count(folder + line), 1);
    EXPECT_EQ(desktop_.log.count(folder), 1);
    EXPECT_EQ(store.saveProblem().empty(), !fs::is_empty(folder)) << store.saveProblem();
    return store.saveProblem().empty();
  };
  const std::string refused = " cannot be used: it belongs to another user";
  EXPECT_FALSE(meetFolder(container_.path(), refused));
  // Where the user named it and may write there it is used, but the default place never is.
  const std::string byDefault = outside_ / std::string(kAppGroupIdentifier);
  fs::create_directory(byDefault);
  for (const auto& folder : {container_.path(), byDefault}) {
    ASSERT_EQ(chmod(folder.c_str(), 01777), 0);
  }
  EXPECT_TRUE(meetFolder(container_.path(), " belongs to another user"));
  const EnvironmentVariable unnamed("FEXORA_CONTAINER", std::nullopt);
  const EnvironmentVariable data("XDG_DATA_HOME", outside_.path());
  EXPECT_FALSE(meetFolder(byDefault, refused));
}

// A process with more rights than its user has, whose environment the user wrote.
TEST_F(HostileFiles, SetUserIdProcess_IgnoresTheEnvironment) {
  constexpr uid_t kNobody = 65534;
  const std::string saver = outside_ / "saver";
  fs::copy_file(std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver", saver);
  ASSERT_EQ(chmod(outside_.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(container_.path().c_str(), 0777), 0);
  const bool isSet =
      chown(saver.c_str(), kNobody, kNobody) == 0 && chmod(saver.c_str(), 04755) == 0;
  const auto run = runCommand({saver, "load"});
  // Neither made by somebody else than root nor from a mount without such rights.
  if (!isSet || run.output.starts_with("Fraction")) {
    struct stat status {};
    stat(container_.file().c_str(), &status);
    if (!isSet || status.st_uid != kNobody) {
      GTEST_SKIP() << "this system gives no process such rights: nothing is proven";
    }
  }
  EXPECT_NE(run.errors.find("there is no container folder"), std::string::npos)
      << run.output << run.errors;
  EXPECT_TRUE(fs::is_empty(container_.path()));
}

TEST_F(HostileFiles, WrongTypesUnderEveryKey_GiveTheDefaults) {
  const Value odd[] = {Value(-7),
                       Value(2.5),
                       Value(true),
                       Value("text"),
                       Value(Date(5.0)),
                       Value(Data{1}),
                       Value(Array{1, "a", Array{}}),
                       Value(Array{Dictionary{{"code", 5}, {"rate", "x"}}}),
                       Value(Dictionary{{"code", Array{}}, {"amount", "x"}, {"currency", 5}})};
  const std::string_view keys[] = {"Mode",
                                   "Fraction",
                                   "Seporate",
                                   "NamingInWidget",
                                   "NumberOfCurrenciesInWidget",
                                   "TodayCurrencies",
                                   "TodayConversionMode",
                                   "TodayRelativeCurrency",
                                   kUDUSDRates,
                                   kUDUSDRatesUpdated,
                                   kUDCurrencies,
                                   kUDSourceCurrency};
  for (const std::string_view key : keys) {
    for (const Value& value : odd) {
      Dictionary content;
      content.set(key, value);
      writeFile(container_.file(), writePropertyList(content).bytes);
      StoreManager store(desktop_.platform);
      RateManager rates(desktop_.platform, nullptr, &store);
      EXPECT_EQ(store.ud(), content);
      EXPECT_NE(store.todayRelativeCurrency(), nullptr);
      EXPECT_TRUE(store.mode() == StyleMode::light || store.mode() == StyleMode::dark);
      rates.setLastUpdate(Date(desktop_.loop.wallSeconds()));
      rates.loadRates(std::nullopt, {});
      rates.updated();
      rates.convertAmount(1, Currency::make("EUR"), false);
      store.loadCurrencies();
      store.loadSourceCurrency();
      store.saveSettings();
      EXPECT_EQ(store.saveProblem(), "") << key;
    }
  }
}

}  // namespace
}  // namespace fexora::test
