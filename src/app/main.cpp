// Tavilo: viewer, editor and converter for airfoil polars.
#include <QApplication>
#include <clocale>

#include "pef_form.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  // Qt sets the C locale from the environment; the number helpers do not
  // depend on it, so German users keep their desktop settings.
  QApplication::setApplicationName("Tavilo");
  QApplication::setOrganizationName("Korvend");
  tavilo::PEFForm window;
  window.show();
  return QApplication::exec();
}
