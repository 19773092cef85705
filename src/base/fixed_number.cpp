#include "base/fixed_number.h"

#include <charconv>
#include <cmath>
#include <cstdint>

#include "base/number_text.h"

namespace tavilo {

namespace {

constexpr double kPowersOfTen[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

std::string Pattern(int decimals) { return decimals == 0 ? "0" : "0." + std::string(decimals, '0'); }

}  // namespace

void AppendFixedNumber(std::string& out, double value, int decimals) {
  // FormatNumber rounds the 15-significant-digit text of the value, not the
  // value itself. Below 1e8 units of the last decimal the two differ by
  // less than 1e-6 of a unit, so the plain product rounds alike unless it
  // lies that close to a half; those few, and large values, take the slow way.
  const double scaled = std::fabs(value) * kPowersOfTen[decimals];
  const double whole = std::floor(scaled);
  const double fraction = scaled - whole;
  if (!(scaled < 1e8) || std::fabs(fraction - 0.5) < 1e-6) {
    out.append(FormatNumber(value, Pattern(decimals)));
    return;
  }
  const uint64_t units = static_cast<uint64_t>(whole) + (fraction > 0.5 ? 1 : 0);
  char digits[24];
  char* end = std::to_chars(digits, digits + sizeof digits, units).ptr;
  int count = static_cast<int>(end - digits);
  if (value < 0 && units != 0) out.push_back('-');
  if (count <= decimals) {
    // At least one integer digit, and leading zeros up to the decimals.
    out.push_back('0');
    if (decimals > 0) out.push_back('.');
    out.append(static_cast<size_t>(decimals - count), '0');
    out.append(digits, end);
    return;
  }
  out.append(digits, digits + (count - decimals));
  if (decimals > 0) {
    out.push_back('.');
    out.append(end - decimals, end);
  }
}

}  // namespace tavilo
