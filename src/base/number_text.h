#pragma once
// Locale-free conversion between numbers and text, shared by every format.
// The period is the only decimal separator whatever the C locale says.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavilo {

// The leading-number rule of every reader: leading blanks and tabs are
// skipped; an optional sign, digits, one period and an exponent introduced
// by E or D (either case) are taken up to the first character that cannot
// continue the number; an embedded blank ends it. No number gives 0.
// OverflowError when the number exceeds the range of a double.
double LeadingNumber(std::string_view text);

// Rounds to a signed 16-bit count, half to even (2.5 -> 2, 3.5 -> 4).
// OverflowError outside -32768..32767 and for NaN.
int16_t RoundToInt16(double value);

// Formats with a digit pattern "0", "00", "0.0", ... "0.00000": at least as
// many integer digits as the pattern has before the period, exactly as many
// decimals as it has after it. The value is rounded as its 15-significant-
// digit decimal text shows it, half away from zero (0.2385 -> "0.239",
// 2.5 -> "3"); a result that rounds to zero has no minus sign.
std::string FormatNumber(double value, std::string_view pattern);

// The general number text: up to 15 significant digits, no trailing zeros,
// a leading blank before a non-negative number (" 1", " 500000", "-2.5").
// Magnitudes from 1e15 and below 1e-4 use an exponent (" 1E+15").
std::string NumberText(double value);

// The shortest text that reads back as exactly `value`, locale-free, with
// an exponent where that is shorter ("2", "0.0065", "-1.25e-05", "2e+05").
std::string ShortestNumberText(double value);

// `value` rounded to `digits` significant digits (1 to 17) in the
// shortest text that reads back as the rounded number ("8" for
// 7.999999999999351 at six, "0.0424", "-1.25e-05").
std::string SignificantNumberText(double value, int digits);

// `text`, blanks around it allowed, read as one whole finite number with
// the period as decimal separator ("1.5", "-2e-3"); none for anything else
// ("", "1,5", "1.5x", "inf").
std::optional<double> WholeNumber(std::string_view text);

// The text after the first blank of `line`, leading blanks removed; "" when
// there is no blank. OverflowError when the first blank lies beyond
// position 32767, the limit of the 16-bit position it is held in.
std::string_view RestAfterFirstBlank(std::string_view line);

// `text` without leading / trailing blanks (spaces only).
std::string_view TrimLeadingBlanks(std::string_view text);
std::string_view TrimTrailingBlanks(std::string_view text);
std::string_view TrimBlanks(std::string_view text);

}  // namespace tavilo
