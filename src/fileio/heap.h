#pragma once
// The process heap's layout for reading one large file.

#include <string>

namespace tavilo {

// Readies the heap for what reading the file at `path` will build, when the
// file is large: its memory is asked to come in 2 MB pages where the system
// offers them on request. A fresh process otherwise takes a page fault for
// every 4 kB of polar points and tables it fills, which costs as much as the
// reading itself. Changes nothing for a small or missing file, or where the
// request is refused; call it before reading, once per process.
void PrepareHeapForReading(const std::string& path);

}  // namespace tavilo
