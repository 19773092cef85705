#pragma once
// The language of the user interface. A stored language other than English
// and German is kept as read (and saved back so): looking a text up in it
// addresses resource language * 1000 + id and raises the resource error.

#include <cstdint>

namespace tavilo {

enum class Language : int32_t { English = 1, German = 2 };

}  // namespace tavilo
