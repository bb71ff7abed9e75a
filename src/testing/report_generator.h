#pragma once

#include <cstdint>
#include <string>

// Schema reports made to measure, for benchmarks and tests. Equal arguments give equal bytes on every
// machine.
namespace norvelis {

/// A report as a schema compiler prints it: numbered pages of 132 columns, a section for each record, then
/// the sets; lines end with LF. The first sets tie each record to one before it, so that the schema is
/// connected when there are at least `records` - 1; a third of the others are indexes of one to three keys.
/// No name is the beginning of another. At least one record.
std::string GenerateSchemaReport(int records, int sets, int fieldsPerRecord, std::uint64_t seed);

/// A small report full of what listings should not hold but do: names that begin other names, names of 16 to
/// 18 characters, records and sets that are there twice, parts that are missing, out of order or at odd
/// columns, limits passed, foreign line ends, 8-bit bytes, and cuts in the middle of a line.
std::string GenerateOddReport(std::uint64_t seed);

}  // namespace norvelis
