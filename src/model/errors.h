#pragma once
// The run-time errors the core raises. Each user action catches them once, at
// its boundary, and shows "Tavilo: Error" with the message.

#include <stdexcept>
#include <string>

namespace tavilo {

class RuntimeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An index outside a list's bounds.
class SubscriptError : public RuntimeError {
 public:
  explicit SubscriptError(const std::string& what) : RuntimeError("Subscript out of range: " + what) {}
};

// A 16-bit count or index past its range, or a number too large for its target.
class OverflowError : public RuntimeError {
 public:
  explicit OverflowError(const std::string& what) : RuntimeError("Overflow: " + what) {}
};

// A file that does not exist or cannot be opened; the message names the path.
class FileNotFoundError : public RuntimeError {
 public:
  explicit FileNotFoundError(const std::string& path)
      : RuntimeError("File not found: " + path), path_(path) {}
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class DivisionByZeroError : public RuntimeError {
 public:
  explicit DivisionByZeroError(const std::string& what) : RuntimeError("Division by zero: " + what) {}
};

// A file that could be opened but not read or written completely.
class FileAccessError : public RuntimeError {
 public:
  explicit FileAccessError(const std::string& what) : RuntimeError("File access error: " + what) {}
};

// A string id with no entry in the string table.
class ResourceError : public RuntimeError {
 public:
  explicit ResourceError(const std::string& what) : RuntimeError("Resource not found: " + what) {}
};

}  // namespace tavilo
