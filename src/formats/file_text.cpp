#include "formats/file_text.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "base/errors.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

// Closes a descriptor on every way out.
struct Descriptor {
  int fd = -1;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

// The file that `path` names after following every symbolic link, so that
// writing through a link replaces the file it points to, not the link. A
// link to a file that does not exist yet gives that file's path; a loop of
// links gives `path` itself, which the write then replaces.
std::string ResolvedTarget(const std::string& path) {
  namespace fs = std::filesystem;
  fs::path current = path;
  for (int hops = 0; hops < 40; ++hops) {
    std::error_code error;
    if (!fs::is_symlink(current, error)) return current.string();
    fs::path next = fs::read_symlink(current, error);
    if (error) return current.string();
    current = next.is_absolute() ? next : current.parent_path() / next;
  }
  return path;
}

// A large buffer is asked to come in 2 MB pages where the system offers them
// on request: a file of 60 MB then costs 30 page faults instead of 15,000,
// which is most of a fresh process's reading time. Nothing changes where
// the request is refused.
void PreferLargePages(char* data, size_t size) {
  constexpr uintptr_t kLargePage = 2 << 20;
  if (size < 2 * kLargePage) return;
  const uintptr_t begin = (reinterpret_cast<uintptr_t>(data) + kLargePage - 1) & ~(kLargePage - 1);
  const uintptr_t end = (reinterpret_cast<uintptr_t>(data) + size) & ~(kLargePage - 1);
  if (end > begin) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

// The process's umask, learnt once and never changed. Linux shows it in
// /proc/self/status; elsewhere the only way to read it is to set it and set
// it back, which done while other threads create files would hand them a
// mask of 0 (files anybody may write), so that is done before main runs.
mode_t LearnUmask() {
  const int fd = ::open("/proc/self/status", O_RDONLY | O_CLOEXEC);
  if (fd >= 0) {
    char text[4096];
    const ssize_t n = ::read(fd, text, sizeof text);
    ::close(fd);
    const std::string_view status(text, n > 0 ? static_cast<size_t>(n) : 0);
    const size_t at = status.find("\nUmask:");
    if (at != std::string_view::npos) {
      mode_t mask = 0;
      size_t p = status.find_first_of("01234567", at);
      for (; p < status.size() && status[p] >= '0' && status[p] <= '7'; ++p)
        mask = static_cast<mode_t>(mask * 8 + static_cast<mode_t>(status[p] - '0'));
      return mask & 0777;
    }
  }
  const mode_t mask = ::umask(022);
  ::umask(mask);
  return mask;
}

mode_t ProcessUmask() {
  static const mode_t mask = LearnUmask();
  return mask;
}

[[maybe_unused]] const mode_t kUmaskAtStart = ProcessUmask();

// The error of an action on `path` that the system refused: `messageId` is
// Text::CannotRead, Text::CannotWrite or Text::CannotReplace.
FileAccessError SystemRefused(Text messageId, const std::string& path, int error) {
  const std::string reason = std::strerror(error);
  return FileAccessError(messageId, FormatResString(messageId, Language::English, {path, reason}), {path, reason});
}

}  // namespace

InputFile::InputFile(const std::string& path) : path_(path) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) throw FileNotFoundError(path);
  struct stat info {};
  if (::fstat(fd_, &info) != 0 || S_ISDIR(info.st_mode)) {
    ::close(fd_);
    throw FileNotFoundError(path);
  }
  regular_ = S_ISREG(info.st_mode);
  size_ = regular_ ? static_cast<uint64_t>(info.st_size) : 0;
}

InputFile::~InputFile() { ::close(fd_); }

size_t InputFile::Read(char* data, size_t size) const {
  for (;;) {
    ssize_t n = ::read(fd_, data, size);
    if (n >= 0) return static_cast<size_t>(n);
    if (errno != EINTR) throw SystemRefused(Text::CannotRead, path_, errno);
  }
}

size_t InputFile::ReadAt(char* data, size_t size, uint64_t offset) const {
  size_t filled = 0;
  while (filled < size) {
    ssize_t n = ::pread(fd_, data + filled, size - filled, static_cast<off_t>(offset + filled));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) throw SystemRefused(Text::CannotRead, path_, errno);
    if (n == 0) break;
    filled += static_cast<size_t>(n);
  }
  return filled;
}

std::string_view FileTextSource::More(std::string_view carry) {
  // No larger a piece than the rest of the file, and one byte more to see
  // that it has ended (or grown).
  const uint64_t rest = file_.Size() > offset_ ? file_.Size() - offset_ : 0;
  const size_t piece = static_cast<size_t>(std::min<uint64_t>(piece_, rest + 1));
  if (carry.size() + piece > capacity_) {
    capacity_ = carry.size() + piece;
    auto larger = std::make_unique_for_overwrite<char[]>(capacity_);
    std::copy(carry.begin(), carry.end(), larger.get());
    buffer_ = std::move(larger);
  } else {
    // The carry lies in the buffer itself, behind its front.
    std::copy(carry.begin(), carry.end(), buffer_.get());
  }
  const size_t n = file_.ReadAt(buffer_.get() + carry.size(), piece, offset_);
  offset_ += n;
  return std::string_view(buffer_.get(), carry.size() + n);
}

int FileTextSource::LineEndsBefore(uint64_t offset) {
  std::vector<char> piece(piece_);
  int count = 0;
  for (uint64_t at = 0; at < offset;) {
    const size_t n = file_.ReadAt(piece.data(), static_cast<size_t>(std::min<uint64_t>(piece_, offset - at)), at);
    if (n == 0) break;
    count += CountLineEnds(std::string_view(piece.data(), n));
    // A CR that ends a piece and starts a CR LF was counted as a line end
    // of its own; its LF is counted in the next piece.
    char next = 0;
    if (piece[n - 1] == '\r' && at + n < offset && file_.ReadAt(&next, 1, at + n) == 1 && next == '\n') --count;
    at += n;
  }
  return count;
}

std::string ReadFileBytes(const std::string& path) {
  const InputFile file(path);
  // A regular file is read straight into a buffer of its size; anything
  // else (a pipe, a file that grows meanwhile) in chunks until it ends.
  std::string bytes;
  size_t filled = 0;
  const size_t expected = static_cast<size_t>(file.Size());
  if (expected > 0) {
    bytes.reserve(expected + 1);
    PreferLargePages(bytes.data(), expected + 1);
  }
  bytes.resize(std::max<size_t>(expected + 1, 1 << 16));
  for (;;) {
    if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
    const size_t n = file.Read(bytes.data() + filled, bytes.size() - filled);
    if (n == 0) break;
    filled += n;
  }
  bytes.resize(filled);
  return bytes;
}

void WriteFileAtomically(const std::string& linkOrPath, std::string_view bytes) {
  const std::string path = ResolvedTarget(linkOrPath);
  std::string pattern = path + ".tmp-XXXXXX";
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  Descriptor file{::mkstemp(name.data())};
  if (file.fd < 0) throw SystemRefused(Text::CannotWrite, path, errno);
  const std::string tempPath(name.data());

  auto fail = [&](Text messageId) {
    int error = errno;
    ::unlink(tempPath.c_str());
    throw SystemRefused(messageId, path, error);
  };
  // Keep the permissions of a file being replaced; new files get the usual 0666 & ~umask.
  struct stat old {};
  if (::stat(path.c_str(), &old) == 0) {
    ::fchmod(file.fd, old.st_mode & 07777);
  } else {
    ::fchmod(file.fd, 0666 & ~ProcessUmask());
  }
  const char* p = bytes.data();
  size_t left = bytes.size();
  while (left > 0) {
    ssize_t n = ::write(file.fd, p, left);
    if (n < 0) {
      if (errno == EINTR) continue;
      fail(Text::CannotWrite);
    }
    p += n;
    left -= static_cast<size_t>(n);
  }
  // On disk before it takes the old file's name, so that a crash leaves the
  // old file or the new one, never an empty one.
  if (::fsync(file.fd) != 0) fail(Text::CannotWrite);
  if (::close(file.fd) != 0) {
    file.fd = -1;
    fail(Text::CannotWrite);
  }
  file.fd = -1;
  if (::rename(tempPath.c_str(), path.c_str()) != 0) fail(Text::CannotReplace);
}

bool IsValidUtf8(std::string_view bytes) {
  size_t i = 0;
  const size_t n = bytes.size();
  while (i < n) {
    unsigned char c = static_cast<unsigned char>(bytes[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    int length;
    unsigned minimum;
    unsigned code;
    if ((c & 0xE0) == 0xC0) {
      length = 2, minimum = 0x80, code = c & 0x1F;
    } else if ((c & 0xF0) == 0xE0) {
      length = 3, minimum = 0x800, code = c & 0x0F;
    } else if ((c & 0xF8) == 0xF0) {
      length = 4, minimum = 0x10000, code = c & 0x07;
    } else {
      return false;
    }
    if (i + length > n) return false;
    for (int k = 1; k < length; ++k) {
      unsigned char next = static_cast<unsigned char>(bytes[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
    i += length;
  }
  return true;
}

namespace {

// Windows-1252 code points for 0x80..0x9F; the rest of the upper half maps to
// the same Latin-1 code point. The five unassigned bytes keep their C1 value.
constexpr unsigned kCp1252High[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                      0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, unsigned code) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (code >> 6)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xE0 | (code >> 12)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

}  // namespace

std::string NameFromFileBytes(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return std::string(bytes);
  std::string out;
  out.reserve(bytes.size() * 2);
  for (char ch : bytes) {
    unsigned c = static_cast<unsigned char>(ch);
    AppendUtf8(out, c >= 0x80 && c < 0xA0 ? kCp1252High[c - 0x80] : c);
  }
  return out;
}

}  // namespace tavilo
