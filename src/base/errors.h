#pragma once
// The run-time errors the core raises. Each user action catches them once, at
// its boundary, and shows "Tavilo: Error" with the message in the user's
// language (ErrorText in strings/string_table.h); what() is the English text.

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavilo {

// String ids of the errors' texts, each with one argument for the detail.
inline constexpr int kFileNotFoundText = 104;
inline constexpr int kSubscriptText = 105;
inline constexpr int kOverflowText = 106;
inline constexpr int kDivisionByZeroText = 107;
inline constexpr int kUnexpectedText = 110;
inline constexpr int kResourceText = 118;
// File access errors of our own, each with the path ("%1") and the
// system's reason ("%2"), which stays in the system's words.
inline constexpr int kCannotReadText = 258;
inline constexpr int kCannotWriteText = 259;
inline constexpr int kCannotReplaceText = 260;
inline constexpr int kNoClipboardFileText = 261;  // the reason alone
inline constexpr int kPefNotInPiecesText = 262;   // the path alone

class RuntimeError : public std::runtime_error {
 public:
  // `english` is the text's English form before its one argument, used for what().
  RuntimeError(int messageId, const std::string& english, const std::string& detail)
      : std::runtime_error(english + detail), messageId_(messageId), arguments_{detail} {}
  explicit RuntimeError(const std::string& what) : RuntimeError(kUnexpectedText, "", what) {}
  // A text of several arguments; `what` is its English form.
  RuntimeError(int messageId, const std::string& what, std::initializer_list<std::string> arguments)
      : std::runtime_error(what), messageId_(messageId), arguments_(arguments) {
    if (arguments_.empty()) arguments_.emplace_back();
  }

  // The string id of the error's text and the arguments that fill it ("%1",
  // "%2" ...: a path, an index, a number, the system's reason).
  int MessageId() const { return messageId_; }
  const std::vector<std::string>& Arguments() const { return arguments_; }
  // The first argument.
  const std::string& Detail() const { return arguments_.front(); }
  // The file the error is about, where the action that met it knows one
  // that the arguments do not name already; "" otherwise.
  const std::string& File() const { return file_; }
  void SetFile(const std::string& file) {
    if (!file_.empty()) return;
    for (const std::string& argument : arguments_)
      if (argument.find(file) != std::string::npos) return;
    file_ = file;
  }

 private:
  int messageId_;
  std::vector<std::string> arguments_;
  std::string file_;
};

// Runs `action` and returns what it returns; a run-time error it raises
// goes on marked as being about `file`.
template <class Action>
decltype(auto) AboutFile(const std::string& file, Action&& action) {
  try {
    return action();
  } catch (RuntimeError& error) {
    error.SetFile(file);
    throw;
  }
}

// An index outside a list's bounds.
class SubscriptError : public RuntimeError {
 public:
  explicit SubscriptError(const std::string& what) : RuntimeError(kSubscriptText, "Subscript out of range: ", what) {}
};

// A 16-bit count or index past its range, or a number too large for its target.
class OverflowError : public RuntimeError {
 public:
  explicit OverflowError(const std::string& what) : RuntimeError(kOverflowText, "Overflow: ", what) {}
};

// A file that does not exist or cannot be opened; the message names the path.
class FileNotFoundError : public RuntimeError {
 public:
  explicit FileNotFoundError(const std::string& path) : RuntimeError(kFileNotFoundText, "File not found: ", path) {}
  const std::string& Path() const { return Detail(); }
};

// A division by zero; a caller that knows the cause better names its own text.
class DivisionByZeroError : public RuntimeError {
 public:
  explicit DivisionByZeroError(const std::string& what, int messageId = kDivisionByZeroText)
      : RuntimeError(messageId, "Division by zero: ", what) {}
};

// A file that could be opened but not read or written completely: one of
// the texts kCannotReadText ... with its arguments; `english` is the text's
// English form with the arguments in place.
class FileAccessError : public RuntimeError {
 public:
  FileAccessError(int messageId, const std::string& english, std::initializer_list<std::string> arguments)
      : RuntimeError(messageId, english, arguments) {}
};

// A string id with no entry in the string table.
class ResourceError : public RuntimeError {
 public:
  explicit ResourceError(const std::string& what) : RuntimeError(kResourceText, "Resource not found: ", what) {}
};

}  // namespace tavilo
