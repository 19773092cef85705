#pragma once
// Import, export and the batch conversion of PEF files to XML, with and
// without the file dialog (the command-line converter names its files).

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "fileio/load.h"
#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

// Adds every set of `imported` to `current` (shared, not copied); `current`
// takes the imported name only when it had no set.
void ImportInto(Airfoil& current, const Airfoil& imported);

// The files File/Import chose (several may be), none on cancel.
std::vector<std::string> ChooseImportFiles(UserInterface& ui);

// Writes the selected polars of `airfoil` to `fileName` in the format its
// extension names (FormatToWrite); what the writer warns of is shown (ShowDiagnostics). An
// unknown extension shows "Unknown File Format!", a line break and the name
// in single quotes, and writes nothing. Returns whether a file was written;
// raises FileAccessError when it cannot be.
bool ExportAirfoil(const Airfoil& airfoil, const std::string& fileName, UserInterface& ui);

// Writes `set` alone, under the airfoil name `airfoilName`, as a PEF file
// to `path` (replacing any file there); how the envelope is kept.
// FileAccessError when it cannot be written.
void WriteSetToPEF(const std::string& airfoilName, const ConfigurationPtr& set, const std::string& path);

// File/Export: asks for a file name and exports to it. False on cancel.
bool ExportFile(const Airfoil& airfoil, UserInterface& ui);

// The XML name for a PEF file name: up to and including the dot of its last
// ".pef" (any case), then "xml" ("wing.PEF" -> "wing.xml").
std::string BatchTargetName(const std::string& pefName);

// The names of the PEF files of `directory` (extension in any case), sorted.
// FileNotFoundError when the directory cannot be listed.
std::vector<std::string> PefFilesOf(const std::string& directory);

// Where a file of a batch run stands.
enum class BatchStage {
  Writing,  // read, about to be written
  Written,  // its XML file is in place
  Failed,   // reading or writing raised, or its report holds an error: not written
};

// The head of the list of a batch run's failures, agreeing in number:
// "1 file could not be converted:", "1 of 3 files ...", "2 of 3 files ...".
std::string BatchFailuresText(int failed, int total, Language language);

// One file of a batch run: its name in the directory, the name of the XML
// file it goes to, what reading it reported (empty when reading raised;
// once written, with what the writer warned of) and how far it got; for a
// failure that raised, the error.
struct BatchStep {
  const std::string& source;
  const std::string& target;
  const ReadReport& report;
  BatchStage stage;
  const std::exception* error = nullptr;
};
using BatchReader = std::function<LoadResult(const std::string& path)>;
// Told of every stage of every file. For a Failed step its answer decides
// whether the run goes on with the next file; otherwise it is not looked at.
using BatchProgress = std::function<bool(const BatchStep& step)>;

// Converts every PEF file of `directory`, in name order, to XML beside it:
// reads each through `read`, reports it through `progress` (Writing), writes
// it and reports it again (Written). A file whose read or write raises, or
// whose report holds an error, is reported as Failed instead; when
// `progress` answers false to that, the run ends there, raising the error
// again if there was one. Returns the number of PEF files in the directory.
// FileNotFoundError when the directory cannot be listed.
int ConvertPefDirectory(const std::string& directory, const BatchReader& read, const BatchProgress& progress);

// ConvertPefDirectory for the converter, `jobs` files at a time: the calling
// thread and jobs - 1 threads of its own each take the next file. `read` is
// called on any of them, for different files at once. `progress` is called
// on the calling thread alone, file by file in name order as each is done
// (Writing, then Written; or Failed), so that what it prints comes out as a
// run of one job prints it. Every file is tried: the answer to a failure is
// not looked at. With one job nothing runs beside the calling thread.
int ConvertPefDirectory(const std::string& directory, const BatchReader& read, const BatchProgress& progress, int jobs);

// The window's batch run, under the busy pointer: each file read as the
// window reads it but without a message box (a file without a polar with a
// point fails: nothing is written for it), then "name -> target" as status
// text, and "Ready." at the end. A file that cannot be read or written is
// passed over; one message at the end names each with what went wrong, and
// lists the warnings (a warning box when nothing failed).
// FileNotFoundError (after "Ready.") when the directory cannot be listed.
void BatchConvertDirectory(const std::string& directory, UserInterface& ui);

// The batch command: asks for any file of the directory to convert. False
// on cancel.
bool BatchConvert(UserInterface& ui);

}  // namespace tavilo
