#pragma once
// A fresh directory under the system's temporary folder, removed with its
// contents when the test ends.

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavilo::testing {

class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tavilo-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot create a temporary directory");
    path_ = pattern;
  }
  ~TempDir() {
    namespace fs = std::filesystem;
    std::error_code ignored;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // Full path of `name` inside the directory.
  std::string File(std::string_view name) const { return (path_ / name).string(); }
  // Writes `bytes` to `name` and returns its full path.
  std::string Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(File(name), std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    return File(name);
  }
  std::string Read(std::string_view name) const {
    std::ifstream in(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tavilo::testing
