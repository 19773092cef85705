// Takes the locale from the environment, as the Qt application does at
// start, so that the suite also runs under a comma-decimal locale.
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
