#pragma once
// A fresh directory under the system's temporary folder, removed with its
// contents when the test ends.

#include <filesystem>
#include <string>
#include <string_view>

namespace tavilo::testing {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // Full path of `name` inside the directory.
  std::string File(std::string_view name) const { return (path_ / name).string(); }
  // Writes `bytes` to `name` and returns its full path.
  std::string Write(std::string_view name, std::string_view bytes) const;
  std::string Read(std::string_view name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace tavilo::testing
