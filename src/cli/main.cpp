#include <iostream>
#include <string>
#include <vector>

#include "cli/converter.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  return tavilo::RunConverter(args, std::cout, std::cerr);
}
