#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "base/errors.h"

namespace tavilo {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Roughly the power of ten of a number out of the double range: only its
// sign matters, to tell underflow from overflow.
long DecimalMagnitude(std::string_view mantissa, std::string_view exponent) {
  long magnitude = 0;
  size_t period = mantissa.find('.');
  size_t firstNonZero = mantissa.find_first_not_of("0.");
  if (firstNonZero == std::string_view::npos) return -1;
  if (period == std::string_view::npos) period = mantissa.size();
  magnitude =
      firstNonZero < period ? static_cast<long>(period - firstNonZero) : -static_cast<long>(firstNonZero - period);
  long power = 0;
  bool negative = !exponent.empty() && exponent[0] == '-';
  for (char c : exponent) {
    if (IsDigit(c) && power < 100000000) power = power * 10 + (c - '0');
  }
  return magnitude + (negative ? -power : power);
}

// Integers of up to 15 digits and powers of ten up to 10^15 are exact doubles.
constexpr double kExactPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

}  // namespace

double LeadingNumber(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
    negative = text[i] == '-';
    ++i;
  }
  const size_t mantissaStart = i;
  // The digits as one integer, exact up to 15 of them (it wraps harmlessly
  // beyond), and the decimals.
  uint64_t whole = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i) whole = whole * 10 + uint64_t(text[i] - '0');
  const size_t integerDigits = i - mantissaStart;
  size_t decimals = 0;
  if (i < text.size() && text[i] == '.') {
    const size_t fractionStart = ++i;
    for (; i < text.size() && IsDigit(text[i]); ++i) whole = whole * 10 + uint64_t(text[i] - '0');
    decimals = i - fractionStart;
  }
  const size_t digits = integerDigits + decimals;
  if (digits == 0) return 0.0;
  const std::string_view mantissa = text.substr(mantissaStart, i - mantissaStart);
  std::string_view exponent;
  if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
    size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
    size_t start = j;
    while (j < text.size() && IsDigit(text[j])) ++j;
    // An exponent without digits is not part of the number.
    if (j > start) exponent = text.substr(i + 1, j - i - 1);
  }
  // The usual number, a few digits without an exponent: an exact integer
  // over an exact power of ten is one correctly rounded operation,
  // so the value is that of from_chars, at a fraction of its cost.
  if (digits <= 15 && exponent.empty()) {
    const double value = double(whole) / kExactPowersOfTen[decimals];
    return negative ? -value : value;
  }
  // from_chars wants "e" for the exponent; the usual short number is copied
  // to the stack rather than the heap.
  std::string number;
  char stack[64] = {};
  char* buffer = stack;
  const size_t length = mantissa.size() + (exponent.empty() ? 0 : exponent.size() + 1);
  if (length > sizeof stack) {
    number.resize(length);
    buffer = number.data();
  }
  std::copy(mantissa.begin(), mantissa.end(), buffer);
  if (!exponent.empty()) {
    buffer[mantissa.size()] = 'e';
    std::copy(exponent.begin(), exponent.end(), buffer + mantissa.size() + 1);
  }
  double value = 0.0;
  auto [end, error] = std::from_chars(buffer, buffer + length, value);
  if (error == std::errc::result_out_of_range) {
    // Underflow is a harmless zero; a magnitude past the double range is not.
    if (DecimalMagnitude(mantissa, exponent) < 0) return 0.0;
    throw OverflowError(std::string(text.substr(mantissaStart, length)));
  }
  if (error != std::errc()) return 0.0;
  return negative ? -value : value;
}

int16_t RoundToInt16(double value) {
  double rounded = std::nearbyint(value);  // the default rounding mode is half to even
  if (!(rounded >= INT16_MIN && rounded <= INT16_MAX)) throw OverflowError(ShortestNumberText(value) + " > 32767");
  return static_cast<int16_t>(rounded);
}

namespace {

// The 15 significant decimal digits of |value| and the decimal exponent of
// the first one: |value| = 0.d1d2...d15 * 10^(exponent + 1).
struct DecimalDigits {
  std::array<char, 15> digits{};
  int exponent = 0;
};

DecimalDigits SignificantDigits(double magnitude) {
  char buffer[64];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, 14);
  DecimalDigits d;
  const char* p = buffer;
  size_t n = 0;
  for (; p < result.ptr && *p != 'e'; ++p) {
    if (IsDigit(*p) && n < d.digits.size()) d.digits[n++] = *p;
  }
  int exponent = 0;
  if (p < result.ptr) std::from_chars(p + (p[1] == '+' ? 2 : 1), result.ptr, exponent);
  d.exponent = exponent;
  return d;
}

}  // namespace

std::string FormatNumber(double value, std::string_view pattern) {
  size_t periodPos = pattern.find('.');
  const int integerDigits = static_cast<int>(periodPos == std::string_view::npos ? pattern.size() : periodPos);
  const int decimals = periodPos == std::string_view::npos ? 0 : static_cast<int>(pattern.size() - periodPos - 1);

  if (!std::isfinite(value)) return std::isnan(value) ? "NaN" : (value < 0 ? "-Infinity" : "Infinity");

  // Digits of the result as a plain decimal integer scaled by 10^decimals.
  std::string scaled;
  if (value != 0.0) {
    DecimalDigits d = SignificantDigits(std::fabs(value));
    const int kept = d.exponent + 1 + decimals;  // digits before the rounding position
    if (kept >= 0) {
      std::string digits(d.digits.begin(), d.digits.end());
      if (kept < static_cast<int>(digits.size())) {
        bool roundUp = digits[kept] >= '5';
        digits.resize(kept);
        if (roundUp) {
          int k = kept - 1;
          while (k >= 0 && digits[k] == '9') digits[k--] = '0';
          if (k >= 0)
            ++digits[k];
          else
            digits.insert(digits.begin(), '1');
        }
      } else {
        digits.append(kept - digits.size(), '0');
      }
      scaled = digits;
    }
  }
  size_t firstNonZero = scaled.find_first_not_of('0');
  const bool zero = firstNonZero == std::string::npos;
  scaled = zero ? "" : scaled.substr(firstNonZero);
  if (static_cast<int>(scaled.size()) < integerDigits + decimals)
    scaled.insert(0, integerDigits + decimals - scaled.size(), '0');

  std::string text;
  if (value < 0 && !zero) text.push_back('-');
  text.append(scaled, 0, scaled.size() - decimals);
  if (decimals > 0) {
    text.push_back('.');
    text.append(scaled, scaled.size() - decimals, decimals);
  }
  return text;
}

std::string NumberText(double value) {
  if (!std::isfinite(value)) return std::isnan(value) ? "NaN" : (value < 0 ? "-Infinity" : " Infinity");
  std::string text = value < 0 ? "-" : " ";
  if (value == 0.0) return " 0";
  DecimalDigits d = SignificantDigits(std::fabs(value));
  std::string digits(d.digits.begin(), d.digits.end());
  digits.erase(digits.find_last_not_of('0') + 1);
  if (d.exponent >= 15 || d.exponent < -4) {
    text += digits.substr(0, 1);
    if (digits.size() > 1) text += "." + digits.substr(1);
    text += d.exponent < 0 ? "E-" : "E+";
    int e = std::abs(d.exponent);
    if (e < 10) text.push_back('0');
    text += std::to_string(e);
  } else if (d.exponent < 0) {
    text += "0." + std::string(-d.exponent - 1, '0') + digits;
  } else {
    const size_t integerDigits = d.exponent + 1;
    if (digits.size() <= integerDigits) {
      text += digits + std::string(integerDigits - digits.size(), '0');
    } else {
      text += digits.substr(0, integerDigits) + "." + digits.substr(integerDigits);
    }
  }
  return text;
}

std::string ShortestNumberText(double value) {
  char buffer[32];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string SignificantNumberText(double value, int digits) {
  char buffer[32];
  return std::string(
      buffer,
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, std::clamp(digits, 1, 17)).ptr);
}

std::string_view RestAfterFirstBlank(std::string_view line) {
  // A field is a few characters long: a plain loop beats a call to memchr.
  size_t p = 0;
  while (p < line.size() && line[p] != ' ') ++p;
  if (p == line.size()) return {};
  if (p >= 32767) throw OverflowError(std::to_string(p) + " > 32766");
  return TrimLeadingBlanks(line.substr(p));
}

std::string_view TrimLeadingBlanks(std::string_view text) {
  size_t p = 0;
  while (p < text.size() && text[p] == ' ') ++p;
  return text.substr(p);
}

std::string_view TrimTrailingBlanks(std::string_view text) {
  size_t p = text.find_last_not_of(' ');
  return p == std::string_view::npos ? std::string_view{} : text.substr(0, p + 1);
}

std::string_view TrimBlanks(std::string_view text) { return TrimTrailingBlanks(TrimLeadingBlanks(text)); }

std::optional<double> WholeNumber(std::string_view text) {
  text = TrimBlanks(text);
  // from_chars takes no leading "+" but would take "inf" and "nan".
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

}  // namespace tavilo
