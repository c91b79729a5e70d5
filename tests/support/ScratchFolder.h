// A folder of a test's own, made empty and removed with all that is in it.
#pragma once

#include <string>

namespace fexora::test {

class ScratchFolder {
 public:
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  const std::string& path() const { return path_; }
  // The path of `name` in the folder.
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// The whole file; fails the test when it cannot be read.
std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);

}  // namespace fexora::test
