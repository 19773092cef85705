#include "fileio/clipboard.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "base/errors.h"
#include "formats/file_text.h"
#include "formats/line_reader.h"
#include "formats/pef.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

// A private scratch file for the clipboard text, deleted however the copy
// or paste ends.
class ScratchFile {
 public:
  ScratchFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tavilo-clipboard-XXXXXX").string();
    int fd = ::mkstemp(pattern.data());
    if (fd < 0) {
      const std::string reason = std::strerror(errno);
      throw FileAccessError(Text::NoClipboardFile, FormatResString(Text::NoClipboardFile, Language::English, {reason}),
                            {reason});
    }
    ::close(fd);
    path_ = pattern;
  }
  ~ScratchFile() { ::unlink(path_.c_str()); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

void CopyPolar(const Polar& polar, UserInterface& ui) {
  ScratchFile scratch;
  WriteFileAtomically(scratch.Path(), PolarPefText(polar, 1, 1));
  // Read back line by line, each line ended by CR LF.
  const std::string bytes = ReadFileBytes(scratch.Path());
  std::string text;
  LineReader lines(bytes);
  std::string_view line;
  while (lines.Next(line)) {
    text.append(line);
    text.append("\r\n");
  }
  ui.SetClipboardText(text);
}

PolarPtr PolarFromClipboard(UserInterface& ui) {
  ScratchFile scratch;
  WriteFileAtomically(scratch.Path(), ui.ClipboardText());
  auto polar = std::make_shared<Polar>();
  ReadPolarFromPEF(*polar, scratch.Path(), 1, 1);
  // A clipboard without a polar of at least one point adds nothing.
  if (polar->PointCount() < 1) return nullptr;
  return polar;
}

}  // namespace tavilo
