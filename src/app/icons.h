#pragma once
// Icons from the desktop's icon theme where it has them, with the
// application's own pictures as the fallback.

#include <QIcon>

namespace tavilo {

// Theme icon `themeName`, or the built-in picture ":/icons/<fallback>.svg".
QIcon ThemedIcon(const char* themeName, const char* fallback);

// The structure tree's node image: a ticked box for an active node, an
// empty box for an inactive one.
QIcon NodeIcon(bool active);

// The application's own icon.
QIcon AppIcon();

}  // namespace tavilo
