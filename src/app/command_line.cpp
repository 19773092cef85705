#include "command_line.h"

#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <filesystem>
#include <ostream>

#include "file_browser.h"
#include "pef_form.h"
#include "strings/string_table.h"

namespace tavilo {

CommandLine ParseCommandLine(const std::vector<std::string>& args) {
  CommandLine line;
  bool options = true;
  for (const std::string& arg : args) {
    if (options && arg == "--") {
      options = false;
    } else if (options && (arg == "--help" || arg == "-h")) {
      return {CommandLine::Action::Help, {}, {}};
    } else if (options && arg == "--version") {
      return {CommandLine::Action::Version, {}, {}};
    } else if (options && arg.size() > 1 && arg.front() == '-') {
      if (line.action == CommandLine::Action::Run) {
        line.action = CommandLine::Action::BadOption;
        line.badOption = arg;
      }
    } else {
      line.files.push_back(arg);
    }
  }
  return line;
}

std::optional<int> AnswerCommandLine(const CommandLine& line, Language language, std::ostream& out, std::ostream& err) {
  switch (line.action) {
    case CommandLine::Action::Run: return std::nullopt;
    case CommandLine::Action::Help: out << GetResString(Text::CommandLineUsage, language); return 0;
    case CommandLine::Action::Version:
      out << "tavilo " << TAVILO_VERSION_MAJOR << '.' << TAVILO_VERSION_MINOR << '.' << TAVILO_VERSION_PATCH << '\n';
      return 0;
    case CommandLine::Action::BadOption:
      err << FormatResString(Text::CommandLineUnknownOption, language, {line.badOption}) << '\n';
      return 2;
  }
  return 2;
}

void OpenStartFiles(PEFForm& window, const std::vector<std::string>& files) {
  for (size_t i = 0; i < files.size(); ++i) {
    // The title and the recent files name the file as the file list would:
    // by its full path.
    const QFileInfo file(QString::fromStdString(files[i]));
    const std::string path = QDir::toNativeSeparators(file.absoluteFilePath()).toStdString();
    CommandPtr opened;
    window.Document().Run([&](Document& document) { opened = document.Open(path, window.UserInterfaceImpl()); });
    if (!opened || !opened->Changed()) continue;
    FileBrowser& browser = window.Browser();
    if (browser.SetPath(file.absolutePath())) {
      const QList<QListWidgetItem*> items = browser.Files()->findItems(file.fileName(), Qt::MatchExactly);
      if (!items.isEmpty()) browser.Files()->setCurrentItem(items.first());
    }
    std::vector<std::string> others;
    for (size_t j = i + 1; j < files.size(); ++j)
      others.push_back(
          QDir::toNativeSeparators(QFileInfo(QString::fromStdString(files[j])).absoluteFilePath()).toStdString());
    if (!others.empty()) window.Document().ImportFiles(others);
    return;
  }
}

}  // namespace tavilo
