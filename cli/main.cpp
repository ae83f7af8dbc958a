#include "cli/command.h"
#include "cli/large_page_heap.h"

#include <iostream>

int main(int argc, char** argv) {
    quench::cli::PrepareLargePageHeap();
    const quench::cli::Arguments arguments(argv + 1, argv + argc);
    return quench::cli::RunCommandLine(arguments, std::cout, std::cerr);
}
