#pragma once
// Line-by-line reading of text held in memory. A line ends at LF, CR LF or
// a lone CR, so files from every platform read alike.

#include <string_view>

namespace tavilo {

class LineReader {
 public:
  explicit LineReader(std::string_view text) : text_(text) {}

  // True when no line is left. A final line without a line end counts as a
  // line; a final line end does not start another one.
  bool AtEnd() const { return pos_ >= text_.size(); }

  // The next line without its line end, or false at the end of the text.
  bool Next(std::string_view& line) {
    if (AtEnd()) return false;
    const char* begin = text_.data() + pos_;
    const char* end = text_.data() + text_.size();
    const char* p = begin;
    while (p < end && *p != '\n' && *p != '\r') ++p;
    line = std::string_view(begin, static_cast<size_t>(p - begin));
    if (p < end) {
      if (*p == '\r' && p + 1 < end && p[1] == '\n') ++p;  // CR LF is one line end
      ++p;
    }
    pos_ = static_cast<size_t>(p - text_.data());
    return true;
  }

  // Skips `count` lines; false when the text ended first.
  bool Skip(int count) {
    std::string_view ignored;
    for (int i = 0; i < count; ++i) {
      if (!Next(ignored)) return false;
    }
    return true;
  }

  // Reads lines until one that begins with `prefix` (case-sensitive) and
  // returns it; "" when the text ends first.
  std::string_view FindLine(std::string_view prefix) {
    std::string_view line;
    while (Next(line)) {
      if (line.substr(0, prefix.size()) == prefix) return line;
    }
    return {};
  }

  // Byte offset of the next line.
  size_t Position() const { return pos_; }

  // How many lines Next has passed, so the 1-based number of the line it
  // gave last. Counted only when asked (for a diagnostic), not per line.
  int LinesRead() const {
    int count = 0;
    for (size_t k = 0; k < pos_; ++k) {
      if (text_[k] == '\n' || (text_[k] == '\r' && (k + 1 >= text_.size() || text_[k + 1] != '\n'))) ++count;
    }
    // A last line without a line end was read too.
    if (pos_ > 0 && pos_ == text_.size() && text_[pos_ - 1] != '\n' && text_[pos_ - 1] != '\r') ++count;
    return count;
  }

 private:
  std::string_view text_;
  size_t pos_ = 0;
};

}  // namespace tavilo
