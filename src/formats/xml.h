#pragma once
// The XML polar exchange file (".xml"). It is read by plain text search in
// a fixed order, not by an XML parser: unknown elements are never looked
// for, and an element ends at the first closing tag of its name.

#include <string>
#include <string_view>

#include "formats/read_report.h"
#include "model/airfoil.h"

namespace tavilo {

// The document of `airfoil`: selected sets and polars only, all points,
// every line ended by CR LF.
std::string XmlText(const Airfoil& airfoil);

// Writes XmlText(airfoil) to `path`, replacing the file atomically. The
// report warns (naming `path`) when a written polar has more than the 1000
// points that readers of the format take; it is written whole all the same.
// FileAccessError when it cannot be written.
WriteReport WriteToXML(const Airfoil& airfoil, const std::string& path);

// Fills `airfoil` from the file at `path`. Reports Text::NoValidXmlFile when
// the first line is not the XML declaration (the airfoil is left unchanged)
// and Text::NoDataSets when there is no `configurations` element. Reads at
// most 1000 sets, polars of a set and points of a polar, and warns of each
// limit passed (Text::SetsLeftOut, PolarsLeftOut, PointsLeftOut). FileNotFoundError for a file that
// cannot be opened; OverflowError for a number beyond the double range.
ReadReport ReadFromXML(Airfoil& airfoil, const std::string& path);

// The same on the bytes of a file already in memory.
ReadReport ReadFromXMLText(Airfoil& airfoil, std::string bytes);

// The first element `tag` of `text`, from its "<tag>" (or, failing that,
// "<tag ") up to and including the first "</tag>" after it; "" if none.
std::string_view ExtractXmlElement(std::string_view text, std::string_view tag);

// The text between the first tag of `element` and its closing tag,
// neither trimmed nor unescaped; "" when `element` does not start with "<"
// or has no closing tag.
std::string_view XmlElementContent(std::string_view element);

}  // namespace tavilo
