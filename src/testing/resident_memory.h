#pragma once

#include <unistd.h>

#include <fstream>

namespace norvelis {

/// How much memory this process holds now.
inline double ResidentMegabytes() {
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

}  // namespace norvelis
