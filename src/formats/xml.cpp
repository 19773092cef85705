#include "formats/xml.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <array>

#include "base/fixed_number.h"
#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/text_output.h"
#include "strings/product.h"

namespace tavilo {

// ---------------------------------------------------------------- writing

namespace {

// Readers of the format take at most this many sets, polars of a set and
// points of a polar. The limit stays, so that a file reads here as every
// other reader of the format reads it, but what it leaves out is told.
constexpr int kMaxItems = 1000;

// One line "<indent><tag>value</tag>" with the value in the fixed pattern of
// `decimals` decimals.
void AppendValueLine(std::string& out, std::string_view open, double value, int decimals, std::string_view close) {
  out.append(open);
  AppendFixedNumber(out, value, decimals);
  AppendLine(out, close);
}

void AppendPoint(std::string& out, const PolarPoint& point) {
  AppendLine(out, "        <datapoint>");
  const std::pair<double, int> values[] = {{point.Alfa, 3}, {point.Cl, 3}, {point.Cd, 5}, {point.Cm, 4},
                                           {point.TU, 3},   {point.TL, 3}, {point.SU, 3}, {point.SL, 3}};
  for (const auto& [value, decimals] : values) AppendValueLine(out, "          <value>", value, decimals, "</value>");
  AppendLine(out, "        </datapoint>");
}

void AppendPolar(std::string& out, const Polar& polar) {
  AppendLine(out, "    <polar>");
  if (polar.Name.empty())
    AppendLine(out, "      <name>Polar</name>");
  else
    AppendLine(out, "      <name>", polar.Name, "</name>");
  AppendValueLine(out, "      <reynoldsnumber>", polar.ReynoldsNumber, 1, "</reynoldsnumber>");
  AppendValueLine(out, "      <machnumber>", polar.MachNumber, 5, "</machnumber>");
  AppendLine(out, "      <variables>");
  for (const char* variable : {"Alpha", "Cl", "Cd", "Cm", "TU", "TL", "SU", "SL"})
    AppendLine(out, "        <variable>", variable, "</variable>");
  AppendLine(out, "      </variables>");
  AppendLine(out, "      <datapoints>");
  for (const PolarPoint& point : polar.Points()) AppendPoint(out, point);
  AppendLine(out, "      </datapoints>");
  AppendLine(out, "    </polar>");
}

void AppendConfiguration(std::string& out, const Configuration& config) {
  AppendLine(out, "  <configuration>");
  if (config.Name.empty())
    AppendLine(out, "    <name>Airfoil Polar</name>");
  else
    AppendLine(out, "    <name>", config.Name, "</name>");
  AppendLine(out, "    <copyright>", kCopyrightNotice, "</copyright>");
  if (config.Origin.empty())
    AppendLine(out, "    <polars origin=\"Tavilo\">");
  else
    AppendLine(out, "    <polars origin=\"", config.Origin, "\">");
  for (int j = 1; j <= config.PolarCount(); ++j) {
    const Polar& polar = *config.Polar(j);
    if (polar.Selected) AppendPolar(out, polar);
  }
  AppendLine(out, "    </polars>");
  AppendLine(out, "  </configuration>");
}

}  // namespace

std::string XmlText(const Airfoil& airfoil) {
  std::string out;
  AppendLine(out, "<?xml version=\"1.0\"?>");
  AppendLine(out, "<polar-exchange-file version=\"1.0\">");
  AppendLine(out, "<comment>");
  AppendLine(out, "The 'Tavilo' application, a polar file converter is available");
  AppendLine(out, "in the software section at:");
  AppendLine(out, kWebAddress);
  AppendLine(out, "</comment>");
  AppendLine(out, "<configurations>");
  AppendLine(out, "  <name>", airfoil.Name, "</name>");
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& config = *airfoil.Configuration(i);
    if (config.Selected()) AppendConfiguration(out, config);
  }
  AppendLine(out, "</configurations>");
  AppendLine(out, "</polar-exchange-file>");
  return out;
}

WriteReport WriteToXML(const Airfoil& airfoil, const std::string& path) {
  WriteFileAtomically(path, XmlText(airfoil));
  WriteReport report;
  // A long XFOIL sweep or a table easily passes the points that readers of
  // the format take; it is written whole, and the user is told.
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& config = *airfoil.Configuration(i);
    for (int j = 1; j <= config.PolarCount(); ++j) {
      const Polar& polar = *config.Polar(j);
      if (polar.Selected && polar.PointCount() > kMaxItems) {
        report.diagnostics.push_back({Severity::Warning, Text::LongPolarWritten, {}, false, path, 0});
        return report;
      }
    }
  }
  return report;
}

// ---------------------------------------------------------------- reading

namespace {

// The tags the reader looks for, with their three search patterns.
struct Tag {
  std::string name, open, openWithAttributes, close;
  int slot;  // first of three memo slots in XmlSearch, -1 for none

  int Slot(int k) const { return slot < 0 ? -1 : slot + k; }
};

Tag MakeTag(std::string_view name, int index) {
  std::string n(name);
  return {n, "<" + n + ">", "<" + n + " ", "</" + n + ">", index < 0 ? -1 : 3 * index};
}

enum TagId {
  kConfigurations,
  kConfiguration,
  kName,
  kPolars,
  kPolar,
  kReynolds,
  kMach,
  kDatapoints,
  kDatapoint,
  kValue,
  kTagCount
};

const Tag& TagOf(TagId id) {
  static const std::array<Tag, kTagCount> tags = {
      MakeTag("configurations", 0), MakeTag("configuration", 1),  MakeTag("name", 2),       MakeTag("polars", 3),
      MakeTag("polar", 4),          MakeTag("reynoldsnumber", 5), MakeTag("machnumber", 6), MakeTag("datapoints", 7),
      MakeTag("datapoint", 8),      MakeTag("value", 9)};
  return tags[id];
}

// Every text the reader searches is a slice of one document. A search asks
// for the first occurrence of a pattern at or after a slice's start; the
// reader walks the document from left to right, so the answer to the
// previous search of the same pattern usually still holds and the document
// is scanned about once per pattern instead of once per element.
class XmlSearch {
 public:
  explicit XmlSearch(std::string_view document) : document_(document) { memos_.fill({0, npos, false}); }

  // First occurrence of `pattern` lying wholly inside `text` (a slice of
  // the document), as an offset into `text`, or npos. `slot` names the
  // pattern's memo; -1 searches without one.
  size_t Find(std::string_view text, std::string_view pattern, int slot = -1) {
    if (text.size() < pattern.size()) return npos;
    const size_t start = static_cast<size_t>(text.data() - document_.data());
    const size_t found = FindInDocument(start, pattern, slot);
    if (found == npos || found + pattern.size() > start + text.size()) return npos;
    return found - start;
  }

 private:
  struct Memo {
    size_t queryStart;
    size_t found;  // first occurrence at or after queryStart, or npos
    bool valid;
  };

  size_t FindInDocument(size_t start, std::string_view pattern, int slot) {
    if (slot < 0) return Scan(start, pattern);
    Memo& memo = memos_[slot];
    if (memo.valid && memo.queryStart <= start && (memo.found == npos || memo.found >= start)) return memo.found;
    memo = {start, Scan(start, pattern), true};
    return memo.found;
  }

  // As document_.find(pattern, start). Markup puts a "<" every few bytes,
  // so candidates are picked by their first two bytes together, sixteen
  // places at a time where the processor offers it; few are other tags.
  size_t Scan(size_t start, std::string_view pattern) const {
    const size_t size = pattern.size();
    if (size < 2 || start > document_.size() || document_.size() - start < size) return document_.find(pattern, start);
    const char* const begin = document_.data();
    const char* const end = begin + document_.size();
    const char* const last = end - size;  // the last place a match can start
    const char* p = begin + start;
    // Tags are short: compared here rather than in a library call.
    auto matches = [&](const char* at) {
      for (size_t k = 2; k < size; ++k)
        if (at[k] != pattern[k]) return false;
      return true;
    };
#if defined(__SSE2__)
    const __m128i first = _mm_set1_epi8(pattern[0]), second = _mm_set1_epi8(pattern[1]);
    for (; end - p >= 17; p += 16) {
      const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1));
      unsigned mask = static_cast<unsigned>(
          _mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi8(here, first), _mm_cmpeq_epi8(next, second))));
      for (; mask != 0; mask &= mask - 1) {
        const char* at = p + __builtin_ctz(mask);
        if (at > last) return npos;
        if (matches(at)) return static_cast<size_t>(at - begin);
      }
    }
#endif
    for (; p <= last; ++p)
      if (p[0] == pattern[0] && p[1] == pattern[1] && matches(p)) return static_cast<size_t>(p - begin);
    return npos;
  }

  static constexpr size_t npos = std::string_view::npos;
  std::string_view document_;
  std::array<Memo, 3 * kTagCount> memos_;
};

std::string_view Extract(XmlSearch& search, std::string_view text, const Tag& tag) {
  size_t p = search.Find(text, tag.open, tag.Slot(0));
  if (p == std::string_view::npos) p = search.Find(text, tag.openWithAttributes, tag.Slot(1));
  if (p == std::string_view::npos) return {};
  size_t q = search.Find(text.substr(p), tag.close, tag.Slot(2));
  if (q == std::string_view::npos) return {};
  return text.substr(p, q + tag.name.size() + 3);
}

std::string_view Extract(XmlSearch& search, std::string_view text, TagId id) {
  return Extract(search, text, TagOf(id));
}

// The content of an element that Extract found by `tag`: its name, read
// from its text, is always the tag itself.
std::string_view Content(XmlSearch& search, std::string_view element, const Tag* tag) {
  if (element.empty() || element[0] != '<') return {};
  size_t g = element.find('>');
  if (g == std::string_view::npos) return {};
  std::string_view name = element.substr(1, g - 1);
  name = name.substr(0, name.find(' '));
  size_t c;
  if (tag && name.size() == tag->name.size() && std::equal(name.begin(), name.end(), tag->name.begin())) {
    c = search.Find(element.substr(g + 1), tag->close, tag->Slot(2));
  } else {
    c = search.Find(element.substr(g + 1), "</" + std::string(name) + ">");
  }
  if (c == std::string_view::npos) return {};
  return element.substr(g + 1, c);
}

std::string_view Content(XmlSearch& search, std::string_view element, TagId id) {
  return Content(search, element, &TagOf(id));
}

// Blanks only, as the format has always trimmed.
std::string_view Trim(std::string_view text) { return TrimBlanks(text); }

std::string_view DropFront(std::string_view text, size_t count) {
  return count >= text.size() ? std::string_view{} : text.substr(count);
}

constexpr std::string_view kEnd = "#END#";

// Which limits a file passed, a warning each.
struct LeftOut {
  bool sets = false, polars = false, points = false;
};

PolarPoint ReadPoint(XmlSearch& search, std::string_view datapoint) {
  PolarPoint point;
  std::string_view v = Trim(Content(search, datapoint, kDatapoint));
  double* fields[] = {&point.Alfa, &point.Cl, &point.Cd, &point.Cm, &point.TU, &point.TL, &point.SU, &point.SL};
  for (int k = 0; k < 8; ++k) {
    std::string_view value = Extract(search, v, kValue);
    // Alfa, Cl and Cd are always assigned (an absent value reads 0); the
    // rest only when a further value is there.
    if (k >= 3 && value.empty()) continue;
    *fields[k] = LeadingNumber(Content(search, value, kValue));
    // The value is dropped by its length from the front, wherever it stood.
    v = DropFront(Trim(v), value.size());
  }
  return point;
}

// Reads the first polar of `text` into `polar`; returns the text after it,
// or "#END#" when there is none.
// Reads the elements `tag` of `text` in turn, at most kMaxItems of them:
// `readOne` fills an item and returns the text after its element, or kEnd
// when none is left; `add` takes each item read. True when an element
// stood beyond the limit.
template <class Item, class ReadOne, class Add>
bool ReadUpToLimit(XmlSearch& search, std::string_view text, TagId tag, ReadOne readOne, Add add) {
  for (int i = 0; i < kMaxItems; ++i) {
    auto item = std::make_shared<Item>();
    std::string_view rest = readOne(text, *item);
    if (rest == kEnd) return false;
    text = rest;
    add(item);
  }
  return !Extract(search, text, tag).empty();
}

std::string_view ReadPolar(XmlSearch& search, std::string_view text, Polar& polar, LeftOut& leftOut) {
  polar.Selected = true;
  std::string_view e = Extract(search, text, kPolar);
  if (e.empty()) return kEnd;
  std::string_view rest = text.substr(search.Find(text, "</polar>") + 8);
  polar.ReynoldsNumber = LeadingNumber(Content(search, Extract(search, e, kReynolds), kReynolds));
  polar.MachNumber = LeadingNumber(Content(search, Extract(search, e, kMach), kMach));
  polar.Name = NameFromFileBytes(Content(search, Extract(search, e, kName), kName));

  std::string_view dp = Trim(Content(search, Extract(search, e, kDatapoints), kDatapoints));
  for (int i = 0;; ++i) {
    std::string_view d = Extract(search, Trim(dp), kDatapoint);
    // Once no data point is left, the remaining passes change nothing.
    if (d.empty()) break;
    if (i == kMaxItems) {
      leftOut.points = true;
      break;
    }
    polar.AddPoint(ReadPoint(search, d));
    dp = Trim(DropFront(dp, d.size()));
  }
  return rest;
}

std::string_view ReadConfiguration(XmlSearch& search, std::string_view text, Configuration& config, LeftOut& leftOut) {
  std::string_view e = Extract(search, text, kConfiguration);
  if (e.empty()) return kEnd;
  std::string_view rest = text.substr(search.Find(text, "</configuration>") + 16);
  config.Name = NameFromFileBytes(Content(search, Extract(search, e, kName), kName));
  leftOut.polars |= ReadUpToLimit<Polar>(
      search, Extract(search, e, kPolars), kPolar,
      [&](std::string_view text, Polar& polar) { return ReadPolar(search, text, polar, leftOut); },
      [&](const PolarPtr& polar) { config.AddPolar(polar); });
  return rest;
}

}  // namespace

ReadReport ReadFromXMLText(Airfoil& airfoil, std::string bytes) {
  // A byte order mark is not part of the text.
  size_t start = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  size_t lineEnd = bytes.find_first_of("\r\n", start);
  std::string_view first =
      std::string_view(bytes).substr(start, lineEnd == std::string::npos ? std::string::npos : lineEnd - start);
  if (first.substr(0, 21) != "<?xml version=\"1.0\"?>") return MessageReport(Text::NoValidXmlFile);
  // The rest of the lines joined with nothing between them: every line end
  // goes, in place, so the document costs no second copy.
  std::string& text = bytes;
  text.erase(0, lineEnd == std::string::npos ? text.size() : lineEnd);
  text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }), text.end());

  XmlSearch search(text);
  std::string_view cfgs = Extract(search, text, kConfigurations);
  std::string_view name = Extract(search, cfgs, kName);
  airfoil.Name = name.empty() ? "unknown airfoil" : NameFromFileBytes(Content(search, name, kName));
  airfoil.ResetConfigurations(0);
  if (cfgs.empty()) return MessageReport(Text::NoDataSets);
  LeftOut leftOut;
  leftOut.sets = ReadUpToLimit<Configuration>(
      search, cfgs, kConfiguration,
      [&](std::string_view text, Configuration& config) { return ReadConfiguration(search, text, config, leftOut); },
      [&](const ConfigurationPtr& config) { airfoil.AddConfiguration(config); });
  ReadReport report;
  for (const auto& [left, id] :
       {std::pair{leftOut.sets, Text::SetsLeftOut}, std::pair{leftOut.polars, Text::PolarsLeftOut},
        std::pair{leftOut.points, Text::PointsLeftOut}})
    if (left) report.diagnostics.push_back({Severity::Warning, id, {}, false, {}, 0});
  return report;
}

ReadReport ReadFromXML(Airfoil& airfoil, const std::string& path) {
  return ReadFromXMLText(airfoil, ReadFileBytes(path)).InFile(path);
}

std::string_view ExtractXmlElement(std::string_view text, std::string_view tag) {
  XmlSearch search(text);
  return Extract(search, text, MakeTag(tag, -1));
}

std::string_view XmlElementContent(std::string_view element) {
  XmlSearch search(element);
  return Content(search, element, nullptr);
}

}  // namespace tavilo
