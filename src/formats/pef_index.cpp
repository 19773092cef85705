#include "formats/pef_index.h"

#include <algorithm>
#include <cstring>

#include "base/errors.h"
#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/line_reader.h"
#include "strings/string_table.h"

namespace tavilo {

// ---------------------------------------------------------------- PrefixFinder

void PrefixFinder::Clear() {
  entries_.clear();
  groupStarts_.clear();
  tree_.clear();
  positions_.clear();
}

void PrefixFinder::StartGroup() { groupStarts_.push_back(static_cast<uint32_t>(entries_.size())); }

PrefixFinder::Head::Head(std::string_view text) {
  unsigned char bytes[16] = {};
  if (!text.empty()) std::memcpy(bytes, text.data(), std::min<size_t>(text.size(), 16));
  for (int i = 0; i < 8; ++i) high = high << 8 | bytes[i];
  for (int i = 8; i < 16; ++i) low = low << 8 | bytes[i];
}

// Unequal heads order the texts as the texts themselves: a zero of the
// padding only ever stands against a byte of a longer text with the same start.
bool PrefixFinder::TextLess(const Entry& entry, const Head& head, std::string_view text) {
  if (entry.head != head) return entry.head < head;
  return entry.text.compare(text) < 0;
}

bool PrefixFinder::StartsWith(const Entry& entry, const Head& head, std::string_view prefix) {
  if (entry.text.size() < prefix.size()) return false;
  if (prefix.size() > 16) return entry.text.starts_with(prefix);
  const size_t bits = 8 * prefix.size();
  const uint64_t highMask = bits >= 64 ? ~0ULL : bits == 0 ? 0 : ~0ULL << (64 - bits);
  const uint64_t lowMask = bits >= 128 ? ~0ULL : bits <= 64 ? 0 : ~0ULL << (128 - bits);
  return (entry.head.high & highMask) == head.high && (entry.head.low & lowMask) == head.low;
}

void PrefixFinder::Add(std::string_view text) {
  entries_.push_back({Head(text), text, static_cast<uint32_t>(entries_.size())});
}

void PrefixFinder::Build() {
  for (size_t g = 0; g < groupStarts_.size(); ++g) {
    auto begin = entries_.begin() + groupStarts_[g];
    auto end = g + 1 < groupStarts_.size() ? entries_.begin() + groupStarts_[g + 1] : entries_.end();
    std::sort(begin, end, [](const Entry& a, const Entry& b) {
      if (a.head != b.head) return a.head < b.head;
      int order = a.text.compare(b.text);
      return order != 0 ? order < 0 : a.ordinal < b.ordinal;
    });
  }
  const size_t n = entries_.size();
  tree_.assign(2 * n, kNone);
  for (size_t i = 0; i < n; ++i) tree_[n + i] = entries_[i].ordinal;
  for (size_t i = n; i-- > 1;) tree_[i] = std::min(tree_[2 * i], tree_[2 * i + 1]);
  positions_.resize(n);
  for (size_t i = 0; i < n; ++i) positions_[entries_[i].ordinal] = static_cast<uint32_t>(i);
}

uint32_t PrefixFinder::RangeMinimum(size_t begin, size_t end) const {
  const size_t n = entries_.size();
  uint32_t best = kNone;
  for (size_t l = begin + n, r = end + n; l < r; l /= 2, r /= 2) {
    if (l & 1) best = std::min(best, tree_[l++]);
    if (r & 1) best = std::min(best, tree_[--r]);
  }
  return best;
}

uint32_t PrefixFinder::First(size_t group, std::string_view prefix) const {
  if (group >= groupStarts_.size()) return kNone;
  auto begin = entries_.begin() + groupStarts_[group];
  auto end = group + 1 < groupStarts_.size() ? entries_.begin() + groupStarts_[group + 1] : entries_.end();
  // Texts with a common prefix stand together in sorted order, from the
  // first one not below the prefix.
  const Head head(prefix);
  auto low = std::lower_bound(begin, end, prefix,
                              [&head](const Entry& e, std::string_view p) { return TextLess(e, head, p); });
  auto high = std::partition_point(low, end, [&](const Entry& e) { return StartsWith(e, head, prefix); });
  // A key usually matches itself and a few longer keys ("Value10", "Value100"
  // ... "Value109"); only long runs need the tree.
  if (high - low <= 16) {
    uint32_t best = kNone;
    for (auto e = low; e != high; ++e) best = std::min(best, e->ordinal);
    return best;
  }
  return RangeMinimum(static_cast<size_t>(low - entries_.begin()), static_cast<size_t>(high - entries_.begin()));
}

// The entries starting with a prefix stand together in sorted order; from
// one of them the run usually ends within a step or two either way.
uint32_t PrefixFinder::FirstGiven(size_t group, std::string_view prefix, uint32_t ordinal) const {
  const size_t begin = groupStarts_[group];
  const size_t end = group + 1 < groupStarts_.size() ? groupStarts_[group + 1] : entries_.size();
  const Head head(prefix);
  const size_t at = positions_[ordinal];
  uint32_t best = ordinal;
  size_t low = at, high = at + 1;
  for (int steps = 0; low > begin && StartsWith(entries_[low - 1], head, prefix); ++steps) {
    if (steps == 16) return First(group, prefix);
    best = std::min(best, entries_[--low].ordinal);
  }
  for (int steps = 0; high < end && StartsWith(entries_[high], head, prefix); ++steps) {
    if (steps == 16) return First(group, prefix);
    best = std::min(best, entries_[high++].ordinal);
  }
  return best;
}

// ---------------------------------------------------------------- PefIndex

namespace {

// Calls `visit` with every line of `text`; a line ends at LF, CR LF or CR.
template <class Visit>
void ForEachLine(std::string_view text, Visit visit) {
  const char* p = text.data();
  const char* end = p + text.size();
  while (p < end) {
    const char* q = FindLineEnd(p, end);
    visit(std::string_view(p, static_cast<size_t>(q - p)));
    if (q < end && *q == '\r' && q + 1 < end && q[1] == '\n') ++q;
    p = q + 1;
  }
}

}  // namespace

PefIndex::~PefIndex() = default;
PefIndex::PefIndex(PefIndex&&) noexcept = default;
PefIndex& PefIndex::operator=(PefIndex&&) noexcept = default;

// `next(buffer)` gives the text's next piece, empty at its end. A section
// line starts with "[" right after a line end or at the text's start; its
// section's key lines run from its line end to the next section line.
template <class NextPiece>
void PefIndex::Scan(NextPiece next) {
  char before = '\n';   // the byte before the piece
  bool inLine = false;  // a section line goes on into the next piece
  bool sawCr = false, sawLf = false;
  uint64_t offset = 0;
  for (std::string_view piece = next(); !piece.empty(); offset += piece.size(), piece = next()) {
    sawCr = sawCr || piece.find('\r') != std::string_view::npos;
    sawLf = sawLf || piece.find('\n') != std::string_view::npos;
    const char* const start = piece.data();
    const char* const end = start + piece.size();
    const char* p = start;
    while (p < end) {
      if (inLine) {
        const char* q = FindLineEnd(p, end);
        sectionText_.insert(sectionText_.end(), p, q);
        if (q == end) break;
        Section& section = sections_.back();
        section.lineLength = sectionText_.size() - section.lineBegin;
        section.bodyBegin = offset + static_cast<uint64_t>(q - start) + 1;
        section.crEnd = *q == '\r';
        inLine = false;
        p = q + 1;
        continue;
      }
      const char* bracket = static_cast<const char*>(std::memchr(p, '[', static_cast<size_t>(end - p)));
      if (bracket == nullptr) break;
      const char previous = bracket == start ? before : bracket[-1];
      p = bracket + 1;
      if (previous != '\n' && previous != '\r') continue;
      if (!sections_.empty()) sections_.back().bodyEnd = offset + static_cast<uint64_t>(bracket - start);
      sections_.push_back({sectionText_.size(), 0, 0, 0, false});
      sectionText_.push_back('[');
      inLine = true;
    }
    before = end[-1];
  }
  if (inLine) {
    sections_.back().lineLength = sectionText_.size() - sections_.back().lineBegin;
    sections_.back().bodyBegin = offset;
  }
  if (!sections_.empty()) sections_.back().bodyEnd = offset;
  lfOnly_ = sawLf && !sawCr;
  sectionNames_.StartGroup();
  for (uint32_t k = 0; k < sections_.size(); ++k) sectionNames_.Add(SectionLine(k).substr(1));
  sectionNames_.Build();
}

PefIndex::PefIndex(std::string_view text) : text_(text) {
  if (text.size() >= UINT32_MAX) throw OverflowError(std::to_string(text.size()) + " > 4294967294");
  bool given = false;
  Scan([&]() {
    std::string_view piece = given ? std::string_view{} : text;
    given = true;
    return piece;
  });
}

PefIndex PefIndex::OfFile(const std::string& path, size_t piece) {
  PefIndex index;
  index.file_ = std::make_unique<InputFile>(path);
  const InputFile& file = *index.file_;
  if (!file.IsRegular() || file.Size() >= UINT32_MAX)
    throw FileAccessError(Text::PefNotInPieces, FormatResString(Text::PefNotInPieces, Language::English, {path}),
                          {path});
  std::string buffer(static_cast<size_t>(std::clamp<uint64_t>(file.Size() + 1, 1, std::max<size_t>(piece, 1))), '\0');
  uint64_t offset = 0;
  index.Scan([&]() {
    const size_t n = file.ReadAt(buffer.data(), buffer.size(), offset);
    offset += n;
    return std::string_view(buffer.data(), n);
  });
  return index;
}

std::string_view PefIndex::SectionLine(uint32_t section) const {
  return std::string_view(sectionText_.data() + sections_[section].lineBegin, sections_[section].lineLength);
}

void PefIndex::Load(uint32_t section) const {
  if (loaded_ == section) return;
  loaded_ = kNoSection;
  const Section& s = sections_[section];
  std::string_view body;
  if (file_) {
    body_.resize(static_cast<size_t>(s.bodyEnd - s.bodyBegin));
    body_.resize(file_->ReadAt(body_.data(), body_.size(), s.bodyBegin));
    body = std::string_view(body_.data(), body_.size());
  } else {
    body = text_.substr(static_cast<size_t>(s.bodyBegin), static_cast<size_t>(s.bodyEnd - s.bodyBegin));
  }
  // The LF of a CR LF that ended the section line.
  if (s.crEnd && !body.empty() && body.front() == '\n') body.remove_prefix(1);
  keyLines_.Clear();
  keyLineTexts_.clear();
  keyLines_.StartGroup();
  ForEachLine(body, [&](std::string_view line) {
    keyLines_.Add(line);
    keyLineTexts_.push_back(line);
  });
  keyLines_.Build();
  loaded_ = section;
  nextLine_ = 0;
}

uint32_t PefIndex::FindSection(std::string_view section) const {
  uint32_t found = sectionNames_.First(0, section);
  return found == PrefixFinder::kNone ? kNoSection : found;
}

std::optional<std::string_view> PefIndex::FindValue(uint32_t section, std::string_view key) const {
  if (section >= sections_.size()) return std::nullopt;
  Load(section);
  const uint32_t hit = nextLine_ < keyLineTexts_.size() && keyLineTexts_[nextLine_].starts_with(key)
                           ? keyLines_.FirstGiven(0, key, nextLine_)
                           : keyLines_.First(0, key);
  if (hit != PrefixFinder::kNone) {
    nextLine_ = hit + 1;
    return PefValueOfLine(keyLineTexts_[hit], key.size());
  }
  // The line that ends the section is tested for the key before it ends the
  // search, so a key that itself starts with "[" can match it.
  if (section + 1 < sections_.size() && SectionLine(section + 1).starts_with(key))
    return PefValueOfLine(SectionLine(section + 1), key.size());
  return std::nullopt;
}

std::string_view PefValueOfLine(std::string_view line, size_t keyLength) {
  // The key and the one character after it (normally "=") are skipped.
  std::string_view value = keyLength + 1 >= line.size() ? std::string_view{} : line.substr(keyLength + 1);
  // Blanks around the "=" and a doubled "=" are all part of the separator.
  while (!value.empty() && (value.front() == ' ' || value.front() == '=')) value.remove_prefix(1);
  value = TrimTrailingBlanks(value);
  if (!value.empty() && value.back() == '\0') value = TrimTrailingBlanks(value.substr(0, value.size() - 1));
  return value;
}

}  // namespace tavilo
