#pragma once
// Shared by the fuzz targets: the bytes as text, and a byte that answers a drag file's airfoil choice.
#include <cstdint>
#include <string_view>

#include "base/errors.h"
#include "formats/drg.h"

namespace tavilo::fuzz {

inline std::string_view Text(const uint8_t* data, size_t size) { return {reinterpret_cast<const char*>(data), size}; }

// From -8 to 7, so that entries past the list's end are chosen too.
inline AirfoilChoice Answer(uint8_t byte) {
  return [answer = static_cast<int8_t>(byte) % 8](const std::vector<std::string>&) { return answer; };
}

}  // namespace tavilo::fuzz
