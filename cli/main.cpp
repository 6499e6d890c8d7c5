#include <iostream>
#include <string>
#include <vector>

#include "CommandLine.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return vantrel::runCommandLine(arguments, std::cin, std::cout, std::cerr);
}
