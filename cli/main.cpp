#include "cli/command.h"

#include <iostream>

int main(int argc, char** argv) {
    const quench::cli::Arguments arguments(argv + 1, argv + argc);
    return quench::cli::RunCommandLine(arguments, std::cout, std::cerr);
}
