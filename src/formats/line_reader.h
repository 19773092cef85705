#pragma once
// Line-by-line reading of text held in memory or coming in pieces. A line
// ends at LF, CR LF or a lone CR, so files from every platform read alike.

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <cstdint>
#include <string_view>

namespace tavilo {

// Text that comes in pieces, such as a file too large to hold whole.
class TextSource {
 public:
  virtual ~TextSource() = default;
  // `carry` (the unfinished end of the text so far, which may lie in the
  // source's own buffer) followed by the next piece; no longer than `carry`
  // at the end. The view holds until the next call.
  virtual std::string_view More(std::string_view carry) = 0;
  // How many lines end in the first `offset` bytes, which end with a line end.
  virtual int LineEndsBefore(uint64_t offset) = 0;
};

// The first CR or LF from `p` on, or `end`; sixteen bytes at a time where
// the processor can, since lines are long and their ends few.
inline const char* FindLineEnd(const char* p, const char* end) {
#ifdef __SSE2__
  const __m128i cr = _mm_set1_epi8('\r'), lf = _mm_set1_epi8('\n');
  for (; end - p >= 16; p += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const int found = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, cr), _mm_cmpeq_epi8(bytes, lf)));
    if (found != 0) return p + __builtin_ctz(static_cast<unsigned>(found));
  }
#endif
  while (p < end && *p != '\n' && *p != '\r') ++p;
  return p;
}

// The number of lines ending in `text`: a CR LF is one line end, and a CR
// at the very end counts as one.
inline int CountLineEnds(std::string_view text) {
  int count = 0;
  for (size_t k = 0; k < text.size(); ++k)
    if (text[k] == '\n' || (text[k] == '\r' && (k + 1 >= text.size() || text[k + 1] != '\n'))) ++count;
  return count;
}

class LineReader {
 public:
  explicit LineReader(std::string_view text) : text_(text) {}
  // Reads `source` piece by piece; a line given holds until the next Next.
  explicit LineReader(TextSource& source) : source_(&source) {}

  // A reader of the rest of the text at hand, which asks no source for more:
  // for looking ahead.
  LineReader Ahead() const { return LineReader(text_.substr(pos_)); }

  // The next line without its line end, or false at the end of the text. A
  // final line without a line end counts as a line; a final line end does
  // not start another one.
  bool Next(std::string_view& line) {
    const char *begin, *end, *p;
    for (;;) {
      begin = text_.data() + pos_;
      end = text_.data() + text_.size();
      p = FindLineEnd(begin, end);
      // A line is taken whole, and a CR at the end may be half of a CR LF.
      if (source_ == nullptr || sourceEnded_ || (p < end && !(*p == '\r' && p + 1 == end))) break;
      Refill();
    }
    if (begin == end) return false;
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

  // How many lines Next has passed, so the 1-based number of the line it
  // gave last. Counted only when asked (for a diagnostic), not per line.
  int LinesRead() const {
    int count = source_ != nullptr && passed_ > 0 ? source_->LineEndsBefore(passed_) : 0;
    count += CountLineEnds(text_.substr(0, pos_));
    // A last line without a line end was read too.
    if (pos_ > 0 && pos_ == text_.size() && text_[pos_ - 1] != '\n' && text_[pos_ - 1] != '\r') ++count;
    return count;
  }

 private:
  // Keeps the unfinished line and takes the next piece after it.
  void Refill() {
    const std::string_view carry = text_.substr(pos_);
    passed_ += pos_;
    text_ = source_->More(carry);
    pos_ = 0;
    sourceEnded_ = text_.size() <= carry.size();
  }

  std::string_view text_;
  size_t pos_ = 0;
  TextSource* source_ = nullptr;
  uint64_t passed_ = 0;  // bytes of the source before text_
  bool sourceEnded_ = false;
};

}  // namespace tavilo
