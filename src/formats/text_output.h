#pragma once
// Building a text file in memory: every writer ends its lines with CR LF.

#include <string>
#include <string_view>

namespace tavilo {

// Appends the parts, then CR LF.
template <class... Parts>
void AppendLine(std::string& out, const Parts&... parts) {
  (out.append(std::string_view(parts)), ...);
  out.append("\r\n");
}

}  // namespace tavilo
