#include "fexora/platform/watch/InotifyPath.h"

#include <algorithm>
#include <climits>
#include <utility>

#include <sys/inotify.h>

#include "fexora/platform/text/TakeUntil.h"

namespace fexora {
namespace {

// What happens to a watched folder itself.
constexpr std::uint32_t kSelf = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t kGone = kSelf | IN_UNMOUNT | IN_IGNORED;
constexpr std::uint32_t kEntries =
    IN_CREATE | IN_DELETE | IN_MOVED_TO | IN_MOVED_FROM | IN_CLOSE_WRITE;
// While the folder is there, its name in the folder above: a removed folder that somebody holds
// open does not report its own end.
constexpr std::uint32_t kNameGoes = IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
// While it is not; a change of its rights may let us in, too.
constexpr std::uint32_t kNameComes = IN_CREATE | IN_MOVED_TO | IN_ATTRIB;

bool isShortage(const std::error_code& error) {
  return error == std::errc::no_space_on_device || error == std::errc::not_enough_memory ||
         error == std::errc::too_many_files_open ||
         error == std::errc::too_many_files_open_in_system;
}

// What no call takes, or would take for another path. The parts of a long one would each be kept
// with all parts above.
std::error_code errorOfName(std::string_view folder) {
  if (folder.size() >= PATH_MAX) return std::make_error_code(std::errc::filename_too_long);
  const bool isName = !folder.empty() && folder.find('\0') == std::string_view::npos;
  return isName ? std::error_code() : std::make_error_code(std::errc::invalid_argument);
}

// "/a/b" gives the paths "/", "/a", "/a/b" and the names "a", "b"; "a" gives ".", "a" and "a".
void split(std::string_view folder, std::vector<std::string>& paths,
           std::vector<std::string>& names) {
  const bool isAbsolute = folder.starts_with('/');
  paths.emplace_back(isAbsolute ? "/" : ".");
  std::string path = isAbsolute ? "/" : "";
  while (!folder.empty()) {
    const std::string_view name = takeUntil(folder, '/');
    if (name.empty()) continue;
    path += name;
    paths.push_back(path);
    names.emplace_back(name);
    path += '/';
  }
}

}  // namespace

InotifyPath::InotifyPath(std::string_view folder, std::string ignoredPrefix)
    : ignoredPrefix_(std::move(ignoredPrefix)), error_(queue_.error()) {
  if (!error_) error_ = errorOfName(folder);
  if (error_) return;
  std::vector<std::string> paths;
  std::vector<std::string> names;
  split(folder, paths, names);
  arm(paths, names);
}

// From the root down, so that nothing that happens meanwhile above is missed.
void InotifyPath::arm(const std::vector<std::string>& paths,
                      const std::vector<std::string>& names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool isLast = i + 1 == names.size();
    std::error_code error;
    const int watch = queue_.add(paths[i], kSelf | (isLast ? kNameGoes : 0U), error);
    // A folder above that may be passed but not read cannot be watched.
    if (watch >= 0) above_.push_back({watch, names[i]});
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) {
      missing_ = error;
      if (i > 0) waitFor(paths[i - 1], paths[i], names[i - 1]);
      return;
    }
  }
  folderWatch_ = queue_.add(paths.back(), kEntries | kSelf, missing_);
  if (isThere()) return;
  if (isShortage(missing_)) {
    error_ = missing_;
  } else if (!names.empty()) {
    waitFor(paths[names.size() - 1], paths.back(), names.back());
  }
}

// `path` is the first one that is missing, `above` the folder that lacks `name`.
void InotifyPath::waitFor(const std::string& above, const std::string& path,
                          const std::string& name) {
  std::error_code error;
  const int watch = queue_.add(above, kNameComes | kSelf, error);
  if (watch < 0) {
    if (isShortage(error)) error_ = error;
    return;
  }
  above_.push_back({watch, name});
  // When it came between the two looks, its coming was not reported.
  waits_ = queue_.add(path, kSelf, error) < 0;
}

InotifyPath::Finding InotifyPath::read() {
  Finding most = Finding::nothing;
  error_ = queue_.drain(
      [this, &most](const InotifyQueue::Event& event) { most = std::max(most, judge(event)); });
  return error_ ? Finding::path : most;
}

InotifyPath::Finding InotifyPath::judge(const InotifyQueue::Event& event) const {
  if ((event.mask & IN_Q_OVERFLOW) != 0) return Finding::overflow;
  if ((event.mask & kGone) != 0) return Finding::path;
  for (const Above& above : above_) {
    if (above.watch == event.watch && above.name == event.name) return Finding::path;
  }
  const bool isEntry = event.watch == folderWatch_ && !event.name.starts_with(ignoredPrefix_);
  return isEntry ? Finding::entry : Finding::nothing;
}

}  // namespace fexora
