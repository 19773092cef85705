// Tavilo: viewer, editor and converter for airfoil polars.
#include <QApplication>
#include <QStringList>
#include <iostream>
#include <string>
#include <vector>

#include "command_line.h"
#include "pef_form.h"
#include "settings.h"

namespace {

// The stored language, as the window will use it; a stored value the string
// table does not hold answers in English rather than not at all.
tavilo::Language StoredLanguage() {
  const tavilo::Language language = tavilo::ReadSettings().language;
  return language == tavilo::Language::German ? language : tavilo::Language::English;
}

}  // namespace

int main(int argc, char** argv) {
  // --help and --version answer before Qt looks for a display.
  const tavilo::CommandLine early = tavilo::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
  if (early.action == tavilo::CommandLine::Action::Help || early.action == tavilo::CommandLine::Action::Version)
    return *tavilo::AnswerCommandLine(early, StoredLanguage(), std::cout, std::cerr);

  QApplication app(argc, argv);
  // Qt sets the C locale from the environment; the number helpers do not
  // depend on it, so German users keep their desktop settings.
  QApplication::setApplicationName("Tavilo");
  QApplication::setOrganizationName("Korvend");
  QApplication::setDesktopFileName("org.example.tavilo");

  // Qt has taken its own options (-platform, -style ...) out of the list.
  std::vector<std::string> args;
  const QStringList arguments = QApplication::arguments();
  for (qsizetype i = 1; i < arguments.size(); ++i) args.push_back(arguments[i].toStdString());
  const tavilo::CommandLine line = tavilo::ParseCommandLine(args);
  // Only an answer on the terminal needs the language before the window reads its settings.
  if (line.action != tavilo::CommandLine::Action::Run)
    return *tavilo::AnswerCommandLine(line, StoredLanguage(), std::cout, std::cerr);

  tavilo::PEFForm window;
  window.show();
  tavilo::OpenStartFiles(window, line.files);
  return QApplication::exec();
}
