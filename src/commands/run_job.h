#pragma once

#include <string>
#include <vector>

#include "core/app_state.h"
#include "engine/drawing_engine.h"
#include "scheduler/audit_log.h"
#include "scheduler/job_queue.h"

// The scheduled run: a schema report becomes a diagram on disk with nobody there.
namespace norvelis::commands {

/// Extracts the report into a copy of the store of its own, ApplicationFolder\batchjobs\name\name.mdb, and
/// draws each schema found there beside it. The copy's settings say how it is drawn. Copy and drawings take
/// the place of former ones when they are whole; gConnection is only read.
///
/// A report that is none (Invalid) or is not there (Missing) is answered in the process log. Everything else
/// that keeps a drawing from being whole on disk is a RuntimeFailure: 76 for a name that is no folder's, a
/// store that stays locked, a full disk. The caller has the claim on the folder (JobClaim).
RunEnd RunJob(AppState& app, engine::DrawingEngine& engine, const std::string& name,
              const std::string& reportPath);

/// A due row from its begin to its end in the audit log: runs and marks it. A failure is in the log and goes
/// on to the caller; a run that is canceled has no end there. A row without a report is passed by.
RunEnd RunDueJob(AppState& app, engine::DrawingEngine& engine, JobQueue& jobs, const Job& job);

/// The words of a failure, with its number when it has one.
std::string FailureWords(const std::exception& failure);

}  // namespace norvelis::commands
