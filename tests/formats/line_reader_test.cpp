#include "formats/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/file_text.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::TempDir;

// Pieces may end inside a line, between CR and LF, or after a final CR.
TEST(LineReader, AcceptsEveryLineEndWholeAndReadInPieces) {
  using V = std::vector<std::string>;
  // clang-format off
  const std::pair<std::string, V> cases[] = {
      {"a\nb\n", {"a", "b"}}, {"a\r\nb\r\n", {"a", "b"}}, {"a\rb\r", {"a", "b"}}, {"a\r\n\r\nb", {"a", "", "b"}},
      {"a\n\rb", {"a", "", "b"}}, {"", {}}, {"\n", {""}}, {"\r", {""}},
      {"long line one\r\n\r\nline three\rfour\nfive\r\n\r\r\nend without a line end",
       {"long line one", "", "line three", "four", "five", "", "", "end without a line end"}}};
  // clang-format on
  TempDir dir;
  for (const auto& [text, expected] : cases) {
    const InputFile file(dir.Write("t.txt", text));
    for (size_t piece : {0, 1, 2, 3, 5, 64}) {
      FileTextSource source(file, piece == 0 ? 1 : piece);
      LineReader reader = piece == 0 ? LineReader(text) : LineReader(source);
      V lines;
      for (std::string_view line; reader.Next(line);) {
        lines.emplace_back(line);
        EXPECT_EQ(reader.LinesRead(), static_cast<int>(lines.size())) << text << " in pieces of " << piece;
      }
      EXPECT_EQ(lines, expected) << text << " in pieces of " << piece << " (0: whole)";
    }
  }
}

}  // namespace
}  // namespace tavilo
