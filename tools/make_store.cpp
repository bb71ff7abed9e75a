// make_store PATH: an empty dictionary store with all its tables.
#include <cstdio>
#include <stdexcept>

#include "store/connection.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_store PATH\n");
        return 2;
    }
    try {
        norvelis::Connection::CreateStore(argv[1]);
        return 0;
    } catch (const std::runtime_error& failure) {
        std::fprintf(stderr, "make_store: %s\n", failure.what());
        return 1;
    }
}
