#pragma once
// The run-time errors the core raises. Each user action catches them once, at
// its boundary, and shows "Tavilo: Error" with the message in the user's
// language (ErrorText in strings/string_table.h); what() is the English text.

#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavilo {

// The string table's texts are named in strings/text_ids.h, a layer above
// this one, so the type is only declared here: an error raised above the
// string table carries the text it is given, while the errors raised below
// it name their kind, which ErrorText (strings/string_table.h) maps to its
// text. Either way no number stands for a text here.
enum class Text : int16_t;

// The errors of the layers below the string table, each a text with one
// argument for the detail; `Named` for an error that carries its own text.
enum class ErrorKind : int16_t { Unexpected, FileNotFound, Subscript, Overflow, DivisionByZero, Resource, Named };

class RuntimeError : public std::runtime_error {
 public:
  // `english` is the text's English form before its one argument, used for what().
  RuntimeError(ErrorKind kind, const std::string& english, const std::string& detail)
      : std::runtime_error(english + detail), kind_(kind), arguments_{detail} {}
  RuntimeError(Text text, const std::string& english, const std::string& detail)
      : std::runtime_error(english + detail), kind_(ErrorKind::Named), text_(text), arguments_{detail} {}
  explicit RuntimeError(const std::string& what) : RuntimeError(ErrorKind::Unexpected, "", what) {}
  // A text of several arguments; `what` is its English form.
  RuntimeError(Text text, const std::string& what, std::initializer_list<std::string> arguments)
      : std::runtime_error(what), kind_(ErrorKind::Named), text_(text), arguments_(arguments) {
    if (arguments_.empty()) arguments_.emplace_back();
  }

  // What the error's text is: its kind, and for ErrorKind::Named the text it
  // carries (MessageText in strings/string_table.h gives the text of either).
  ErrorKind Kind() const { return kind_; }
  Text NamedText() const { return text_; }
  // The arguments that fill the text ("%1", "%2" ...: a path, an index, a
  // number, the system's reason).
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
  ErrorKind kind_;
  Text text_{};
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
  explicit SubscriptError(const std::string& what)
      : RuntimeError(ErrorKind::Subscript, "Subscript out of range: ", what) {}
};

// A 16-bit count or index past its range, or a number too large for its target.
class OverflowError : public RuntimeError {
 public:
  explicit OverflowError(const std::string& what) : RuntimeError(ErrorKind::Overflow, "Overflow: ", what) {}
};

// A file that does not exist or cannot be opened; the message names the path.
class FileNotFoundError : public RuntimeError {
 public:
  explicit FileNotFoundError(const std::string& path)
      : RuntimeError(ErrorKind::FileNotFound, "File not found: ", path) {}
  const std::string& Path() const { return Detail(); }
};

// A division by zero; a caller that knows the cause better names its own text.
class DivisionByZeroError : public RuntimeError {
 public:
  explicit DivisionByZeroError(const std::string& what)
      : RuntimeError(ErrorKind::DivisionByZero, "Division by zero: ", what) {}
  DivisionByZeroError(const std::string& what, Text text) : RuntimeError(text, "Division by zero: ", what) {}
};

// A file that could be opened but not read or written completely: one of
// the texts Text::CannotRead ... with its arguments; `english` is the text's
// English form with the arguments in place.
class FileAccessError : public RuntimeError {
 public:
  FileAccessError(Text text, const std::string& english, std::initializer_list<std::string> arguments)
      : RuntimeError(text, english, arguments) {}
};

// A text id with no entry in the string table.
class ResourceError : public RuntimeError {
 public:
  explicit ResourceError(const std::string& what) : RuntimeError(ErrorKind::Resource, "Resource not found: ", what) {}
};

}  // namespace tavilo
