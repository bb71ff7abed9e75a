#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>

#include "testing/report_generator.h"

/// Writes a schema report of the wanted size to a file.
int main(int argc, char** argv) {
    CLI::App app("Writes a schema report of the wanted size.");
    int records = 1000, sets = 2000, fields = 30;
    std::uint64_t seed = 1;
    bool odd = false;
    std::string path;
    app.add_option("file", path, "The report to write")->required();
    app.add_option("--records", records)->capture_default_str()->check(CLI::PositiveNumber);
    app.add_option("--sets", sets)->capture_default_str()->check(CLI::NonNegativeNumber);
    app.add_option("--fields", fields, "Fields in each record")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    app.add_option("--seed", seed)->capture_default_str();
    app.add_flag("--odd", odd, "A small report of oddities instead, by its seed");
    CLI11_PARSE(app, argc, argv);

    std::ofstream file(path, std::ios::binary);
    file << (odd ? norvelis::GenerateOddReport(seed)
                 : norvelis::GenerateSchemaReport(records, sets, fields, seed));
    file.close();
    if (!file) {
        std::cerr << "cannot write " << path << '\n';
        return 1;
    }
}
