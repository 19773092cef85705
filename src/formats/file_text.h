#pragma once
// Whole-file reading and crash-safe writing, and the text encoding of names.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "formats/line_reader.h"

namespace tavilo {

// The bytes of the file at `path`. FileNotFoundError (naming the path) when
// it does not exist, is a directory or cannot be opened; FileAccessError
// when reading fails part way.
std::string ReadFileBytes(const std::string& path);

// A file read in pieces. FileNotFoundError (naming the path) when it does
// not exist, is a directory or cannot be opened.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  // False for a pipe or a device, which can only be read once, in order.
  bool IsRegular() const { return regular_; }
  uint64_t Size() const { return size_; }

  // Up to `size` bytes from `offset` into `data`; fewer only where the file
  // ends. FileAccessError when reading fails.
  size_t ReadAt(char* data, size_t size, uint64_t offset) const;
  // The next bytes of the file read in order, up to `size`; none at its end.
  size_t Read(char* data, size_t size) const;

 private:
  int fd_ = -1;
  bool regular_ = false;
  uint64_t size_ = 0;
  std::string path_;
};

// A file's text piece by piece, for a LineReader.
class FileTextSource : public TextSource {
 public:
  explicit FileTextSource(const InputFile& file, size_t piece = 1 << 20) : file_(file), piece_(piece) {}
  std::string_view More(std::string_view carry) override;
  int LineEndsBefore(uint64_t offset) override;

 private:
  const InputFile& file_;
  size_t piece_;
  uint64_t offset_ = 0;             // of the next piece
  std::unique_ptr<char[]> buffer_;  // left unfilled until read into
  size_t capacity_ = 0;
};

// Writes `bytes` to a temporary file beside `path` and renames it over
// `path`, so the target is either the old file or the complete new one; the
// new one is flushed to disk first. Through a symbolic link the file it
// points to is written, and the link stays.
// FileAccessError (naming the path) when the directory cannot be written.
void WriteFileAtomically(const std::string& path, std::string_view bytes);

// A name as read from a file, held as UTF-8: valid UTF-8 stays as it is;
// anything else is legacy 8-bit text and is read as Windows-1252.
std::string NameFromFileBytes(std::string_view bytes);

bool IsValidUtf8(std::string_view bytes);

}  // namespace tavilo
