#pragma once
// Whole-file reading and crash-safe writing, and the text encoding of names.

#include <string>
#include <string_view>

namespace tavilo {

// The bytes of the file at `path`. FileNotFoundError (naming the path) when
// it does not exist, is a directory or cannot be opened; FileAccessError
// when reading fails part way.
std::string ReadFileBytes(const std::string& path);

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
