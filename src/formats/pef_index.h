#pragma once
// The keyed lookup of a polar exchange file (PEF), built once per file.
//
// A value is found the way the format has always found it, by reading the
// file line by line: first the section, the first line that starts with "["
// followed by the section name as a prefix (so "Set1" also finds "[Set10]"
// when that comes first); then, among the following lines, the first one that
// starts with the key (again a prefix: "Value10" also finds a "Value100" line
// standing before it); a line starting with "[" ends the section. Walking the
// text anew for each value made reading a polar quadratic in its point count;
// the index answers every lookup with the same result in logarithmic time.
// It indexes the lines of one section at a time, the one asked of last:
// a reader goes through the sections one after another.
//
// Lines end at LF, CR LF or a lone CR.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavilo {

// The first entry, in insertion order, whose text starts with a prefix,
// within one group of entries. Built once; each query costs a binary search
// and a range-minimum query, or a look at a few neighbours when the caller
// knows an entry that matches.
class PrefixFinder {
 public:
  static constexpr uint32_t kNone = UINT32_MAX;

  // Opens a new group; later entries belong to it.
  void StartGroup();
  // Adds an entry to the current group; its ordinal is the number of
  // entries added before it.
  void Add(std::string_view text);
  // Sorts the groups; call once, after the last Add.
  void Build();
  // Forgets every group and entry, keeping the room they took.
  void Clear();

  // The smallest ordinal in `group` (0-based, in the order of StartGroup)
  // whose text starts with `prefix`, or kNone.
  uint32_t First(size_t group, std::string_view prefix) const;
  // First, given that the entry of `ordinal`, in `group`, starts with `prefix`.
  uint32_t FirstGiven(size_t group, std::string_view prefix, uint32_t ordinal) const;

 private:
  uint32_t RangeMinimum(size_t begin, size_t end) const;

  // The first 16 bytes of the text, big-endian and padded with zeros, so that
  // most comparisons are settled without touching the text itself.
  struct Head {
    uint64_t high = 0, low = 0;
    explicit Head(std::string_view text);
    auto operator<=>(const Head&) const = default;
  };
  struct Entry {
    Head head;
    std::string_view text;
    uint32_t ordinal;
  };
  static bool TextLess(const Entry& entry, const Head& head, std::string_view text);
  static bool StartsWith(const Entry& entry, const Head& head, std::string_view prefix);
  std::vector<Entry> entries_;         // sorted by text within each group after Build
  std::vector<uint32_t> groupStarts_;  // first entry of each group
  std::vector<uint32_t> tree_;         // min-segment tree over the ordinals
  std::vector<uint32_t> positions_;    // of each ordinal's entry in entries_
};

class InputFile;

class PefIndex {
 public:
  static constexpr uint32_t kNoSection = UINT32_MAX;

  // Indexes `text`, which must outlive the index.
  explicit PefIndex(std::string_view text);
  // Indexes the file at `path`, read in pieces of `piece` bytes. Only its
  // section lines are kept; the lines of a section are read again from the
  // file when a value of the section is asked for, so that a large file is
  // never held whole. FileNotFoundError / FileAccessError as ReadFileBytes.
  static PefIndex OfFile(const std::string& path, size_t piece = 1 << 20);
  ~PefIndex();
  PefIndex(PefIndex&&) noexcept;
  PefIndex& operator=(PefIndex&&) noexcept;

  // True when the text has a line feed and no carriage return anywhere.
  bool LfOnly() const { return lfOnly_; }

  // The first section line matching `section`, as a handle for FindValue,
  // or kNoSection.
  uint32_t FindSection(std::string_view section) const;

  // The value of `key` in the section found by FindSection: the rest of the
  // first matching line after Len(key) + 1 characters, with leading blanks
  // and "=" signs dropped, trailing blanks dropped, and a final NUL dropped
  // with the blanks before it. Nothing when the key or the section is
  // missing. The view points into the indexed text; for a file it holds
  // until a value of another section is asked for.
  std::optional<std::string_view> FindValue(uint32_t section, std::string_view key) const;

  // FindValue, with "" for a missing key or section.
  std::string_view Value(uint32_t section, std::string_view key) const {
    return FindValue(section, key).value_or(std::string_view{});
  }
  std::string_view Value(std::string_view section, std::string_view key) const {
    return Value(FindSection(section), key);
  }

 private:
  struct Section {
    size_t lineBegin, lineLength;  // its line, "[" included, in sectionText_
    uint64_t bodyBegin, bodyEnd;   // its key lines, in the text or the file
    bool crEnd;                    // its line ended at a CR, maybe of a CR LF
  };
  PefIndex() = default;
  // Reads the section lines of the text given in pieces.
  template <class NextPiece>
  void Scan(NextPiece next);
  std::string_view SectionLine(uint32_t section) const;
  void Load(uint32_t section) const;

  std::string_view text_;            // the text indexed, unless it is a file
  std::unique_ptr<InputFile> file_;  // the file indexed
  // Vectors, not strings, so that views into them survive a move.
  std::vector<char> sectionText_;  // every line starting with "[", in file order
  std::vector<Section> sections_;
  PrefixFinder sectionNames_;  // one group: section lines without the "["
  bool lfOnly_ = false;

  // The key lines of the section a value was asked of last.
  mutable uint32_t loaded_ = kNoSection;
  mutable std::vector<char> body_;                      // read from the file
  mutable PrefixFinder keyLines_;                       // one group
  mutable std::vector<std::string_view> keyLineTexts_;  // by ordinal
  // The line after the one found last: a reader asks for the keys in the
  // order the file has them, so it is usually the next one found.
  mutable uint32_t nextLine_ = 0;
};

// The value part of `line` found for a key of `keyLength` characters.
std::string_view PefValueOfLine(std::string_view line, size_t keyLength);

}  // namespace tavilo
