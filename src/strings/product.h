#pragma once
// Fixed texts that the writers put into every file.

#include <string_view>

namespace tavilo {

// Where the application is available; a placeholder until the project has a home.
inline constexpr std::string_view kWebAddress = "https://tavilo.example.org/software/";

// The copyright notice of written sets.
inline constexpr std::string_view kCopyrightNotice = "Copyright (C) 2026 the Tavilo authors";

}  // namespace tavilo
