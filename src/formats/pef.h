#pragma once
// The keyed-text polar exchange file (".pef"), laid out like an
// initialisation file: "[Section]" lines, "Key=Value" lines and ";" comments.
// Every value is found by section and key (see formats/pef_index.h), so the
// lines of a section may stand in any order.

#include <string>
#include <string_view>

#include "formats/read_report.h"
#include "model/airfoil.h"

namespace tavilo {

// The file of `airfoil`: a comment header, the "[Airfoil]" section, then the
// selected sets and their selected polars, numbered 1, 2, ... among the
// written ones. Re and Mach are written as integers. Every line ends with
// CR LF; the text ends with an empty line.
std::string PefText(const Airfoil& airfoil);

// Writes PefText(airfoil) to `path`, replacing the file atomically.
// FileAccessError when it cannot be written.
void WriteToPEF(const Airfoil& airfoil, const std::string& path);

// One polar as a block of the file: an empty line, "[Set<setNumber>-Polar
// <polarNumber>]", its keys and its points (all points, selected or not).
std::string PolarPefText(const Polar& polar, int setNumber, int polarNumber);

// What reading does with a file whose lines end in LF alone.
enum class LfOnlyFile {
  Rewrite,          // rewrites it with CR LF first, as the window always has
  ConvertInMemory,  // reads it converted and leaves the file as it stands
};

// Fills `airfoil` from the file at `path`: its name ("Description1", else
// "Airfoilname", else "unknown airfoil") and "NumberSets" sets. A file whose
// lines end in LF alone is first rewritten with CR LF (ConvertLfOnlyFile)
// unless `lfOnly` says otherwise; when it cannot be rewritten it is read as
// it is. Reports Text::NoDataSets when "NumberSets" is missing, 0 or
// negative (the name is kept, no set is read), a stop at the missing-item
// limit below as stoppedEarly, and a set section, polar section or point
// key that the counts ask for but the file lacks (read empty, as always)
// with the quiet warning Text::ShortOfCounts.
// FileNotFoundError, before anything changes, for a file that cannot be
// opened; OverflowError for a count beyond 16 bits, a number beyond the
// double range or a point value whose first blank lies beyond column 32767
// (what was read so far is kept). Every polar read is selected.
ReadReport ReadFromPEF(Airfoil& airfoil, const std::string& path, LfOnlyFile lfOnly = LfOnlyFile::Rewrite);

// The same on the bytes of a file already in memory (nothing is rewritten).
ReadReport ReadFromPEFText(Airfoil& airfoil, std::string_view bytes);

// How many polars without a section and points without a key one file may
// ask for. They cost nothing in the file but memory and time in the model:
// "NumberSets=32767" with "NumberPolars=32767" in every set asks for 10^9
// polars. Up to this many are read exactly (32 polars of 32767 missing
// points, far beyond any real file); past it the file is taken as broken and
// reading stops there, keeping what was read, as at any structural error.
inline constexpr long kPefMissingItemLimit = 1L << 20;

// ReadFromPEFText with another limit of missing items.
ReadReport ReadFromPEFText(Airfoil& airfoil, std::string_view bytes, long missingItemLimit);

// Reads polar `polarNumber` of set `setNumber` (section "[Set1-Polar1]" for
// 1, 1) and appends its points to `polar`; the polar is marked selected.
// A missing section gives a polar with no points. FileNotFoundError for a
// file that cannot be opened.
void ReadPolarFromPEF(Polar& polar, const std::string& path, int setNumber, int polarNumber);
void ReadPolarFromPEFText(Polar& polar, std::string_view bytes, int setNumber, int polarNumber);

// The value of the first line starting with `key` in the first section whose
// name starts with `section`, as formats/pef_index.h describes; "" when there
// is none. Converts an LF-only file first, like the readers.
std::string ReadPefValue(std::string_view section, std::string_view key, const std::string& path);

// Rewrites the file at `path` with CR LF line ends when it has line feeds
// but no carriage return at all; such a file gains one empty last line.
// The new text replaces the file atomically, so it is never left truncated.
// A file marked read-only is left alone. FileNotFoundError for a file that
// cannot be opened, FileAccessError when it cannot be replaced.
void ConvertLfOnlyFile(const std::string& path);

// True when `bytes` has a line feed and no carriage return.
bool IsLfOnlyText(std::string_view bytes);

// `bytes` with every LF turned into CR LF and one CR LF appended.
std::string CrLfText(std::string_view bytes);

}  // namespace tavilo
