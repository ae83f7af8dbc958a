#pragma once

namespace quench::cli {

// Grows the heap once to hold a whole command and asks the kernel to back it with large pages.
// Harmless where large pages are off or the heap is not the system's.
void PrepareLargePageHeap();

} // namespace quench::cli
