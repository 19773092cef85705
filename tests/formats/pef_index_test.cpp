#include "formats/pef_index.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "formats/pef.h"
#include "formats/pef_reference_scan.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::ReferencePefValue;
using testing::TempDir;
using namespace std::string_literals;

TEST(PefIndex, IndexAndLiteralScanGiveTheExpectedValueOnQuirks) {
  // clang-format off
  const struct {
    const char* name;
    std::string text, section, key, expected;
  } cases[] = {
      {"BlanksAroundEquals", "[Airfoil]\r\nDescription1 = Clark Y\r\n", "Airfoil", "Description1", "Clark Y"},
      {"DoubledEquals", "[A]\r\nx= = =1\r\n", "A", "x", "1"},
      {"TrailingNulDropped", "[A]\r\nx=Clark Y\0\r\n"s, "A", "x", "Clark Y"},
      {"InnerNulKept", "[A]\r\nx=a\0b\r\n"s, "A", "x", "a\0b"s},
      {"OnlyOneNulDropped", "[A]\r\nx=a\0\0\r\n"s, "A", "x", "a\0"s},
      {"AnyCharacterAfterKeySkipped", "[A]\r\nNumberSetsX5\r\n", "A", "NumberSets", "5"},
      {"PrefixSectionFoundFirst", "[Set10]\r\nn=10\r\n[Set1]\r\nn=1\r\n", "Set1", "n", "10"},
      {"PrefixKeyFoundFirst", "[P]\r\nValue100=1\r\nValue10=2\r\n", "P", "Value10", "1"},
      {"DuplicateKeyFirstWins", "[A]\r\nx=1\r\nx=2\r\n", "A", "x", "1"},
      {"SectionEndsAtBracketLine", "[A]\r\nx=1\r\n[B]\r\ny=2\r\n", "A", "y", ""},
      {"IndentedKeyIsNoKey", "[A]\r\n x=1\r\n", "A", "x", ""},
      {"MixedLineEnds", "[A]\r\nx=1\ny=2\rz=3", "A", "z", "3"},
      {"EmptyKeyTakesNextLine", "[A]\r\nfirst\r\n", "A", "", "irst"},
      {"BracketKeyMatchesClosingLine", "[A]\r\n[B]=7\r\n", "A", "[B", "7"},
      {"MissingSectionHasNoValues", "[A]\r\nx=1\r\n", "B", "x", ""},
  };
  // clang-format on
  for (const auto& c : cases) {
    EXPECT_EQ(ReferencePefValue(c.text, c.section, c.key), c.expected) << c.name << ": literal scan";
    EXPECT_EQ(std::string(PefIndex(c.text).Value(c.section, c.key)), c.expected) << c.name << ": index";
  }
  // A handle past the sections, as a caller may keep one from another file.
  const PefIndex index("[A]\r\nx=1\r\n");
  for (uint32_t section : {1u, 2u, PefIndex::kNoSection}) EXPECT_FALSE(index.FindValue(section, "x")) << section;
}

// PEF-like files from colliding pieces: prefix sections and keys, stray separators, NULs, all line ends.
struct QuirkyPefGenerator {
  std::mt19937 random;

  std::string File() {
    std::string text;
    const std::string lineEnd = Choose<std::string>({"\r\n", "\n", "\r", "mixed"});
    for (int i = 0, lines = Pick(0, 60); i < lines; ++i)
      text += Line() + (lineEnd == "mixed" ? Choose<std::string>({"\r\n", "\n", "\r"}) : lineEnd);
    if (Pick(0, 3) == 0) text += Line();  // no line end after the last line
    return text;
  }

  std::string Line() {
    const int kind = Pick(0, 9);
    if (kind < 3) return "[" + Section() + Choose<std::string>({"]", "]", "", "] ; note", "x]"});
    if (kind == 3) return Choose<std::string>({"", " ", ";comment", "; [Set1]", "[", "=", "\t"});
    return Key() + Separator() + Value();
  }

  std::string Section() {
    return Choose<std::string>({"Airfoil", "Set1", "Set10", "Set1-Polar1", "Set1-Polar10", "Set1-Polar2", "Set2",
                                "Set2-Polar1", "Set", "S", "", "set1", "Set1-Polar1 ", "Set1\0"s,
                                "Set1-Polar1-and-a-long-tail"});
  }

  // clang-format off
  std::string Key() {
    return Choose<std::string>({"Description1", "Description2", "Description", "Origin", "Airfoilname", "NumberSets",
                                "NumberPolars", "NumberPoints", "ReynoldsNumber", "MachNumber", "Value01", "Value1",
                                "Value10", "Value100", "Value", "Values", "Value02", "Value011", "", " Value01",
                                "[Set1", "Value01\0"s, "V\xFFlue", "Value01234567890123"});
  }
  // clang-format on

  std::string Separator() { return Choose<std::string>({"=", "=", " = ", "==", "= =", " ", "", "x", "=\t"}); }

  std::string Value() {
    std::string value = Choose<std::string>(
        {"", "1", "2.5", "Clark Y", "  padded  ", "-3e2 0.1 0.01", "=", "a=b", "x\0"s, "y \0 "s, "\0"s, "[Set1]"});
    if (Pick(0, 4) == 0) value += std::string(static_cast<size_t>(Pick(1, 3)), ' ');
    return value;
  }

  int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

  template <class T>
  T Choose(std::initializer_list<T> options) {
    return *(options.begin() + Pick(0, static_cast<int>(options.size()) - 1));
  }
};

// Vocabulary queries plus prefixes of lines present, at random and in file order.
std::vector<std::pair<std::string, std::string>> Queries(QuirkyPefGenerator& generator, const std::string& text) {
  std::vector<std::pair<std::string, std::string>> queries;
  for (int i = 0; i < 40; ++i) queries.emplace_back(generator.Section(), generator.Key());
  std::vector<std::string> lines;
  LineReader reader(text);
  for (std::string_view line; reader.Next(line);) lines.emplace_back(line);
  auto prefixOfALine = [&](size_t skip) {
    const std::string& line = lines[static_cast<size_t>(generator.Pick(0, static_cast<int>(lines.size()) - 1))];
    std::string rest = line.substr(std::min(skip, line.size()));
    return rest.substr(0, static_cast<size_t>(generator.Pick(0, static_cast<int>(rest.size()))));
  };
  for (int i = 0; i < 20 && !lines.empty(); ++i) queries.emplace_back(prefixOfALine(1), prefixOfALine(0));
  // A reader's way: each section's lines by a prefix of each, in file order.
  std::string section;
  for (const std::string& line : lines) {
    if (!line.empty() && line[0] == '[') section = line.substr(1, static_cast<size_t>(generator.Pick(0, 12)));
    queries.emplace_back(section, line.substr(0, static_cast<size_t>(generator.Pick(0, 9))));
  }
  return queries;
}

// Indexed as read in pieces of a few bytes, so that lines and CR LF pairs fall across their edges.
TEST(PefIndex, AgreesWithTheLiteralScanOnGeneratedFilesInTextAndReadInPieces) {
  QuirkyPefGenerator generator{std::mt19937(20260101)};
  TempDir dir;
  int compared = 0;
  for (int file = 0; file < 4000; ++file) {
    const std::string text = generator.File();
    const size_t piece = std::array<size_t, 8>{1, 2, 3, 5, 8, 13, 64, 4096}[file % 8];
    const PefIndex inText(text), inPieces = PefIndex::OfFile(dir.Write("q.pef", text), piece);
    EXPECT_EQ(inPieces.LfOnly(), IsLfOnlyText(text));
    for (const auto& [section, key] : Queries(generator, text)) {
      const std::string expected = ReferencePefValue(text, section, key);
      ASSERT_EQ(std::string(inText.Value(section, key)) + "|" + std::string(inPieces.Value(section, key)),
                expected + "|" + expected)
          << "file " << file << " in pieces of " << piece << ", section '" << section << "' key '" << key << "'\n"
          << text;
      ++compared;
    }
  }
  EXPECT_GT(compared, 200000);
}

// Long runs of keys sharing a prefix go through the range-minimum tree, not the linear pass.
TEST(PefIndex, FindsTheEarliestLineAmongManyWithTheSamePrefix) {
  std::string text = "[P]\r\n";
  for (int i = 999; i >= 100; --i) text += "Value" + std::to_string(i) + "=" + std::to_string(i) + "\r\n";
  text += "Value10=first ten\r\n";
  PefIndex index(text);
  for (const char* key : {"Value1", "Value10", "Value5", "Value99", "Value100", "Value"})
    EXPECT_EQ(std::string(index.Value("P", key)), ReferencePefValue(text, "P", key)) << key;
  EXPECT_EQ(std::string(index.Value("P", "Value10")), "109");
}

}  // namespace
}  // namespace tavilo
