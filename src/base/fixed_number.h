#pragma once
// A fast path of FormatNumber for the writers' fixed patterns, which
// dominate the time of writing a large file.

#include <string>

namespace tavilo {

// Appends FormatNumber(value, pattern) for the pattern "0" (decimals 0) or
// "0." followed by `decimals` zeros (1 to 9): the same text, byte for byte.
void AppendFixedNumber(std::string& out, double value, int decimals);

}  // namespace tavilo
