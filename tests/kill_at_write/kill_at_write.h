#pragma once

// A library that a test loads into a program (LD_PRELOAD). It counts the calls that change files: write,
// writev, pwrite, fsync, fdatasync, ftruncate, rename and unlink, whatever thread makes them. What the C
// library writes for a FILE* is not seen.
namespace norvelis {

/// At the call of this number (from 1) the program dies by SIGKILL. A call that writes has then written the
/// first half of its bytes; any other has done nothing.
inline constexpr const char* kKillAtVariable = "NORVELIS_KILL_AT_WRITE";

/// The file that gets the number of calls when the program ends by itself.
inline constexpr const char* kCountFileVariable = "NORVELIS_WRITE_COUNT_FILE";

}  // namespace norvelis
