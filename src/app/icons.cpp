#include "icons.h"

// Resources compiled into a static library must be registered by hand.
static void InitIconResources() { Q_INIT_RESOURCE(icons); }

namespace tavilo {

namespace {

void EnsureResources() {
  static const bool done = (InitIconResources(), true);
  (void)done;
}

}  // namespace

QIcon ThemedIcon(const char* themeName, const char* fallback) {
  EnsureResources();
  return QIcon::fromTheme(QString::fromLatin1(themeName),
                          QIcon(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(fallback))));
}

QIcon NodeIcon(bool active) {
  EnsureResources();
  return QIcon(active ? QStringLiteral(":/icons/active.svg") : QStringLiteral(":/icons/inactive.svg"));
}

QIcon AppIcon() {
  EnsureResources();
  return QIcon(QStringLiteral(":/icons/tavilo.svg"));
}

}  // namespace tavilo
