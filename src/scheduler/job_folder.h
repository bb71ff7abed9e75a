#pragma once

#include <optional>
#include <string>

#include "core/app_state.h"

// The folder of a job under \batchjobs, which is named like the job, and who may work in it.
namespace norvelis {

/// The path of the job's folder. RuntimeFailure 76 with the name when that is no name of a single folder, or
/// when something else than a folder is there: a symbolic link would lead out of \batchjobs.
std::string JobFolder(const AppState& app, const std::string& name);

/// The same, and the folder is there afterwards. RuntimeFailure 75 when the disk refuses. What a killed run
/// left half made in it is removed, so only the owner of the claim may call it.
std::string MakeJobFolder(const AppState& app, const std::string& name);

/// The right to run jobs of one name, of which there is one on the machine. It is a lock of the operating
/// system, which ends with this object or with the process, however that ends. Names are the same when their
/// paths are: letter case does not count.
class JobClaim {
  public:
    /// Nothing while somebody else has it, in this process or another one. RuntimeFailure 75 when the machine
    /// refuses the lock.
    static std::optional<JobClaim> Take(const AppState& app, const std::string& name);

    /// Whether somebody has it, without taking it.
    static bool IsTaken(const AppState& app, const std::string& name);

    JobClaim(JobClaim&& other) noexcept;
    JobClaim& operator=(JobClaim&& other) noexcept;
    ~JobClaim();

  private:
    explicit JobClaim(int file) : file_(file) {}
    int file_;
};

}  // namespace norvelis
