// The field-stepping rule shared by the text readers.

#include <gtest/gtest.h>

#include <string>

#include "formats/number_text.h"
#include "model/errors.h"

namespace tavilo {
namespace {

TEST(RestAfterFirstBlank, StepsToTheNextField) {
  const std::pair<std::string, std::string> cases[] = {
      {"4.000   0.812   0.00912", "0.812   0.00912"},
      {"0.812   0.00912", "0.00912"},
      {"0.00912", ""},
      {"", ""},
      {" leading", "leading"},
      {"a\tb c", "c"},  // only a blank separates
      {"trailing   ", ""},
  };
  for (const auto& [line, rest] : cases) EXPECT_EQ(RestAfterFirstBlank(line), rest) << line;
}

TEST(RestAfterFirstBlank, FirstBlankBeyondSixteenBitsOverflows) {
  EXPECT_EQ(RestAfterFirstBlank(std::string(32766, 'x') + " y"), "y");
  EXPECT_THROW(RestAfterFirstBlank(std::string(32767, 'x') + " y"), OverflowError);
  EXPECT_EQ(RestAfterFirstBlank(std::string(40000, 'x')), "");  // no blank at all
}

}  // namespace
}  // namespace tavilo
