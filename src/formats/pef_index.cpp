#include "formats/pef_index.h"

#include <algorithm>
#include <cstring>

#include "formats/number_text.h"
#include "model/errors.h"

namespace tavilo {

// ---------------------------------------------------------------- PrefixFinder

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

void PrefixFinder::Add(std::string_view text, uint32_t ordinal) {
  entries_.push_back({Head(text), text, ordinal});
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
  auto end = group + 1 < groupStarts_.size() ? entries_.begin() + groupStarts_[group + 1]
                                              : entries_.end();
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
  return RangeMinimum(static_cast<size_t>(low - entries_.begin()),
                      static_cast<size_t>(high - entries_.begin()));
}

// ---------------------------------------------------------------- PefIndex

namespace {

// Calls `visit` with every line of `text`; a line ends at LF, CR LF or CR.
template <class Visit>
void ForEachLine(std::string_view text, Visit visit) {
  const char* p = text.data();
  const char* end = p + text.size();
  while (p < end) {
    const char* q = p;
    while (q < end && *q != '\n' && *q != '\r') ++q;
    visit(std::string_view(p, static_cast<size_t>(q - p)));
    if (q < end && *q == '\r' && q + 1 < end && q[1] == '\n') ++q;
    p = q + 1;
  }
}

}  // namespace

PefIndex::PefIndex(std::string_view text) {
  if (text.size() >= UINT32_MAX) throw OverflowError("file too large for the PEF reader");
  sectionNames_.StartGroup();
  // Growing the tables line by line would copy them over and over and touch
  // fresh memory each time; the line count is known at the cost of a scan.
  size_t lines = static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
  if (lines == 0) lines = static_cast<size_t>(std::count(text.begin(), text.end(), '\r'));
  ++lines;
  keyLines_.Reserve(lines);
  keyLineTexts_.reserve(lines);
  uint32_t lineNumber = 0;
  ForEachLine(text, [&](std::string_view line) {
    if (!line.empty() && line[0] == '[') {
      sectionNames_.Add(line.substr(1), static_cast<uint32_t>(sectionLines_.size()));
      sectionLines_.push_back(line);
      keyLines_.StartGroup();
    } else if (!sectionLines_.empty()) {
      keyLines_.Add(line, lineNumber);
      // Only lines after a section line are ever looked at.
      keyLineTexts_.push_back(line);
      ++lineNumber;
    }
  });
  sectionNames_.Build();
  keyLines_.Build();
}

uint32_t PefIndex::FindSection(std::string_view section) const {
  uint32_t found = sectionNames_.First(0, section);
  return found == PrefixFinder::kNone ? kNoSection : found;
}

std::optional<std::string_view> PefIndex::FindValue(uint32_t section, std::string_view key) const {
  if (section >= sectionLines_.size()) return std::nullopt;
  uint32_t hit = keyLines_.First(section, key);
  if (hit != PrefixFinder::kNone) return PefValueOfLine(keyLineTexts_[hit], key.size());
  // The line that ends the section is tested for the key before it ends the
  // search, so a key that itself starts with "[" can match it.
  if (section + 1 < sectionLines_.size() && sectionLines_[section + 1].starts_with(key))
    return PefValueOfLine(sectionLines_[section + 1], key.size());
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
