#include "tests/reliability/SystemCallTrace.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/Command.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

// The bytes of a text that was written with every byte as \xHH, in its quotes.
std::string unescaped(std::string_view text) {
  std::string bytes;
  for (std::size_t at = 1; at + 4 < text.size() + 1 && text[at] == '\\'; at += 4) {
    bytes.push_back(static_cast<char>(std::stoi(std::string(text.substr(at + 2, 2)), nullptr, 16)));
  }
  return bytes;
}

// `4</the/path>` has the path in hexadecimal bytes, too.
std::string pathOfDescriptor(std::string_view text) {
  const auto begin = text.find('<');
  if (begin == std::string_view::npos) return {};
  return unescaped(text.substr(begin, text.rfind('>') - begin + 1));
}

std::vector<std::string> splitArguments(std::string_view text) {
  std::vector<std::string> all;
  std::string current;
  int depth = 0;
  bool isQuoted = false;
  for (const char c : text) {
    if (c == '"') isQuoted = !isQuoted;
    if (!isQuoted && (c == '{' || c == '[' || c == '<')) ++depth;
    if (!isQuoted && (c == '}' || c == ']' || c == '>')) --depth;
    if (!isQuoted && depth == 0 && c == ',') {
      all.push_back(std::exchange(current, {}));
    } else if (c != ' ' || !current.empty()) {
      current.push_back(c);
    }
  }
  if (!current.empty()) all.push_back(current);
  return all;
}

std::optional<SystemCall> parsed(const std::string& line) {
  const auto open = line.find('(');
  const auto close = line.rfind(") = ");
  if (open == std::string::npos || close == std::string::npos || line.starts_with("+++")) {
    return std::nullopt;
  }
  // With -f each line begins with the process's number.
  const auto name = line.find_last_of(' ', open);
  const std::size_t begin = name == std::string::npos ? 0 : name + 1;
  return SystemCall{line.substr(begin, open - begin),
                    splitArguments(std::string_view(line).substr(open + 1, close - open - 1)),
                    line.substr(close + 4)};
}

class Player {
 public:
  Player(const std::string& folder, CrashDisk& disk,
         const std::function<void(std::string_view)>& said)
      : folder_(folder), disk_(disk), said_(said) {}

  void play(const SystemCall& call) {
    if (call.name == "write" && call.arguments[0].starts_with("2<")) {
      said_(unescaped(call.arguments[1]));
    } else if (call.name == "writev" && call.arguments[0].starts_with("2<")) {
      said_(vectorText(call.arguments[1]));
    } else if (touches(call) && !call.result.starts_with("-1 ")) {
      playOnFolder(call);
    }
  }

 private:
  // [{iov_base="…", iov_len=N}, …]
  static std::string vectorText(std::string_view parts) {
    std::string all;
    for (auto at = parts.find("iov_base="); at != std::string_view::npos;
         at = parts.find("iov_base=", at + 1)) {
      const auto quote = parts.find('"', at);
      all += unescaped(parts.substr(quote, parts.find('"', quote + 1) - quote + 1));
    }
    return all;
  }

  std::vector<std::string> pathsOf(const SystemCall& call) const {
    std::vector<std::string> paths;
    for (const std::string& argument : call.arguments) {
      std::string path =
          argument.starts_with('"') ? unescaped(argument) : pathOfDescriptor(argument);
      if (path.ends_with("/.")) path.resize(path.size() - 2);
      // The folder above holds the folder's own name.
      const bool isAbove = path == folder_.substr(0, folder_.rfind('/'));
      if (isAbove || path == folder_ || path.starts_with(folder_ + "/")) {
        paths.push_back(std::move(path));
      }
    }
    return paths;
  }
  bool touches(const SystemCall& call) const { return !pathsOf(call).empty(); }

  void playOnFolder(const SystemCall& call) {
    static constexpr std::array kHarmless = {
        "newfstatat", "fstat",      "lstat",      "stat",   "statx",
        "read",       "flock",      "getdents64", "fcntl",  "inotify_add_watch",
        "access",     "faccessat2", "lseek",      "fchmod", "readlink"};
    const auto paths = pathsOf(call);
    const std::string& path = paths.front();
    const int descriptor = std::atoi(call.arguments.front().c_str());
    if (call.name == "mkdir" || call.name == "mkdirat") {
      done(disk_.makeFolder(path, 0700));
    } else if (call.name == "openat") {
      open(call, path);
    } else if (call.name == "write") {
      const std::string bytes = unescaped(call.arguments[1]);
      const auto count = static_cast<std::size_t>(std::atoi(call.result.c_str()));
      EXPECT_LE(count, bytes.size()) << "strace cut the bytes";
      done(disk_.write(handles_.at(descriptor), bytes.substr(0, count)).error());
    } else if (call.name == "fsync") {
      done(disk_.flush(handles_.at(descriptor)));
    } else if (call.name == "close") {
      done(disk_.close(handles_.at(descriptor)));
      handles_.erase(descriptor);
    } else if (call.name == "rename" || call.name == "renameat") {
      done(disk_.rename(path, paths.at(1)));
    } else if (call.name == "link" || call.name == "linkat") {
      done(disk_.link(path, paths.at(1)));
    } else if (call.name == "unlink" || call.name == "unlinkat") {
      done(disk_.remove(path));
    } else {
      EXPECT_NE(std::find(kHarmless.begin(), kHarmless.end(), call.name), kHarmless.end())
          << call.name << " touches " << path << " and is not known to the play";
    }
  }

  void open(const SystemCall& call, const std::string& path) {
    const std::string& flags = call.arguments.at(2);
    const int descriptor = std::atoi(call.result.c_str());
    const bool makes = flags.find("O_CREAT") != std::string::npos;
    EXPECT_TRUE(!makes || flags.find("O_EXCL") != std::string::npos) << flags;
    EXPECT_EQ(flags.find("O_TRUNC"), std::string::npos) << flags;
    auto handle = makes ? disk_.createExclusive(path, 0600) : disk_.openForReading(path);
    done(handle.error());
    handles_[descriptor] = *handle;
  }

  static void done(const std::error_code& error) { EXPECT_FALSE(error) << error.message(); }

  const std::string& folder_;
  CrashDisk& disk_;
  const std::function<void(std::string_view)>& said_;
  std::map<int, Files::Handle> handles_;
};

}  // namespace

bool canTrace() {
  return runCommand({"/usr/bin/strace", "-o", "/dev/null", "/bin/true"}).exitCode == 0;
}

std::optional<std::vector<SystemCall>> traceOf(const std::vector<std::string>& command) {
  const ScratchFolder scratch;
  const std::string log = scratch / "trace";
  // All bytes, in hexadecimal; descriptors with their paths.
  std::vector<std::string> words{"/usr/bin/strace",   "-f", "-y", "-xx", "-s", "1000000", "-e",
                                 "trace=%file,%desc", "-o", log};
  if (!canTrace()) return std::nullopt;
  words.insert(words.end(), command.begin(), command.end());
  const auto run = runCommand(words);
  EXPECT_EQ(run.exitCode, 0) << run.errors;
  std::vector<SystemCall> calls;
  std::istringstream lines(readFile(log));
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(line.find("unfinished ..."), std::string::npos) << "more than one thread";
    if (auto call = parsed(line)) calls.push_back(*std::move(call));
  }
  return calls;
}

void play(const std::vector<SystemCall>& calls, const std::string& folder, CrashDisk& disk,
          const std::function<void(std::string_view)>& said) {
  Player player(folder, disk, said);
  for (const SystemCall& call : calls) player.play(call);
}

}  // namespace fexora::test
