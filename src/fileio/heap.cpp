#include "fileio/heap.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tavilo {

namespace {
// Blocks that are allocated for good and never used; held where the
// compiler cannot prove them unused and leave them out.
void* volatile kept[2];
}  // namespace

void PrepareHeapForReading(const std::string& path) {
#if defined(__GLIBC__) && defined(MADV_HUGEPAGE)
  constexpr size_t kLargePage = 2 << 20;
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0 || info.st_size < static_cast<off_t>(kLargePage / 2)) return;
  // The file's bytes and what a reader builds from them take at most a few
  // times the file's size. The heap grows by that much at once, so that it
  // is one region to mark (only what is used of it is ever resident);
  // blocks up to 32 MB come from it rather than being mapped apart, and
  // nothing is handed back while reading.
  const size_t pad = std::min<size_t>(4 * static_cast<size_t>(info.st_size) + 4 * kLargePage, size_t(512) << 20);
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, static_cast<int>(2 * pad));
  mallopt(M_TOP_PAD, static_cast<int>(pad));
  // A block that does not fit the heap makes it grow by the pad. It and a
  // filler up to the first large page past the bookkeeping written behind
  // it stay allocated and untouched, so never resident: everything read
  // later lies beyond, in large pages, which are given only to a range of
  // which nothing was touched before.
  constexpr size_t kProbe = 256 << 10;
  void* const probe = std::malloc(kProbe);
  if (probe == nullptr) return;
  kept[0] = probe;
  const auto probeEnd = reinterpret_cast<uintptr_t>(probe) + kProbe;
  const auto begin = (probeEnd + 64 + kLargePage - 1) & ~(kLargePage - 1);
  const auto end = reinterpret_cast<uintptr_t>(::sbrk(0)) & ~(kLargePage - 1);
  // Under a sanitizer's own allocator the probe lies elsewhere: then the
  // heap is left as it is.
  if (end <= begin || end - begin > pad + 2 * kLargePage) return;
  ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
  kept[1] = std::malloc(begin - probeEnd - 4 * sizeof(size_t));
#else
  (void)path;
#endif
}

}  // namespace tavilo
