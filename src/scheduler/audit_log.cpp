#include "scheduler/audit_log.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"

namespace norvelis {

namespace {

constexpr std::string_view kGap = " ---- ";
constexpr std::array<std::string_view, 4> kResults = {"ok", "invalid", "missing", "failed"};
constexpr off_t kFullAt = 10'000'000;

/// In one line, and without what divides the parts of a line.
std::string Part(std::string_view text) {
    std::string part;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && text.substr(i + 1).starts_with('\n')) continue;
        part += text[i] == '\r' || text[i] == '\n' || text[i] == '\0' ? ' ' : text[i];
    }
    for (auto gap = part.find(kGap); gap != std::string::npos; gap = part.find(kGap))
        part.replace(gap, kGap.size(), " --- ");
    return part;
}

/// The log, open for one line and closed to others meanwhile; a full one has made space.
class OpenLog {
  public:
    explicit OpenLog(const AppState& app) : path_(Resolve(app.AppPath(places::kAuditLog))) {
        CreateFolder(std::filesystem::path(path_).parent_path().string());
        Open();
        if (file_ < 0 || Size() < kFullAt) return;
        std::error_code ignored;
        std::filesystem::rename(path_, Resolve(app.AppPath(places::kFormerAuditLog)), ignored);
        close(file_);
        Open();
    }
    ~OpenLog() {
        if (file_ >= 0) close(file_);
    }
    OpenLog(const OpenLog&) = delete;
    OpenLog& operator=(const OpenLog&) = delete;

    void Append(const std::string& line) const {
        if (file_ < 0) return;
        [[maybe_unused]] const ssize_t written = write(file_, line.data(), line.size());
    }

  private:
    // Another program may have begun a new file between opening and locking.
    void Open() {
        constexpr int kTries = 100;
        for (int i = 0; i < kTries; ++i) {
            file_ = open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
            if (file_ < 0) return;
            flock(file_, LOCK_EX);
            struct stat opened {
            }, named{};
            if (fstat(file_, &opened) == 0 && stat(path_.c_str(), &named) == 0 &&
                opened.st_ino == named.st_ino)
                return;
            close(file_);
        }
        file_ = -1;
    }
    off_t Size() const {
        struct stat status {};
        return fstat(file_, &status) == 0 ? status.st_size : 0;
    }

    std::string path_;
    int file_ = -1;
};

void Append(AppState& app, const std::string& line) {
    OpenLog(app).Append(GeneralDateText(app.clock.Now()) + ": " + line + std::string(kLineBreak));
}

std::vector<std::string_view> PartsOf(std::string_view line) {
    std::vector<std::string_view> parts;
    while (true) {
        const auto gap = line.find(kGap);
        parts.push_back(line.substr(0, gap));
        if (gap == std::string_view::npos) return parts;
        line.remove_prefix(gap + kGap.size());
    }
}

/// What stands between the two texts; nothing when they are not there.
std::optional<std::string_view> Between(std::string_view text, std::string_view before,
                                        std::string_view behind) {
    if (!text.starts_with(before) || !text.ends_with(behind) || text.size() < before.size() + behind.size())
        return std::nullopt;
    return text.substr(before.size(), text.size() - before.size() - behind.size());
}

std::size_t Number(std::string_view text) {
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// "begin" or "end" and the moment before it.
struct LineHead {
    std::string moment;
    std::string_view kind;
};

LineHead HeadOf(std::string_view part) {
    const auto colon = part.rfind(": ");
    if (colon == std::string_view::npos) return {};
    return {std::string(part.substr(0, colon)), part.substr(colon + 2)};
}

std::optional<RunHistory> BeginIn(const std::vector<std::string_view>& parts, const LineHead& head) {
    if (head.kind != "begin" || parts.size() != 5) return std::nullopt;
    const auto comma = parts[4].rfind(", ");
    const auto due = Between(parts[4].substr(0, comma), "due ", "");
    if (comma == std::string_view::npos || !due) return std::nullopt;
    RunHistory run;
    run.begin = head.moment;
    run.scheduleid = parts[1];
    run.name = parts[2];
    run.report = parts[3];
    run.due = *due;
    run.secondsLate = static_cast<long>(Val(parts[4].substr(comma + 2)));
    return run;
}

std::optional<RunEnd> EndIn(const std::vector<std::string_view>& parts, const LineHead& head) {
    if (head.kind != "end" || parts.size() != 7) return std::nullopt;
    RunEnd end;
    for (std::size_t i = 0; i < kResults.size(); ++i) {
        if (kResults[i] == parts[3]) end.result = static_cast<RunResult>(i);
    }
    const std::string_view counts = parts[4];
    const auto first = counts.find(", "), second = counts.rfind(", ");
    if (first == second) return std::nullopt;
    end.records = Number(counts);
    end.sets = Number(counts.substr(first + 2));
    end.drawings = Number(counts.substr(second + 2));
    end.seconds = Val(parts[5]);
    end.words = parts[6];
    return end;
}

void AddRuns(const std::string& log, std::vector<RunHistory>& runs) {
    std::string_view rest = log;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        const auto parts = PartsOf(line.substr(0, line.find('\r')));
        const LineHead head = HeadOf(parts[0]);
        if (auto begun = BeginIn(parts, head)) {
            runs.push_back(*std::move(begun));
        } else if (const auto end = EndIn(parts, head)) {
            // Of the last begin of the row: an earlier one was interrupted.
            const auto run = std::find_if(runs.rbegin(), runs.rend(), [&](const RunHistory& candidate) {
                return candidate.scheduleid == parts[1];
            });
            if (run == runs.rend() || run->ended) continue;
            run->end = head.moment;
            run->ended = *end;
        }
    }
}

}  // namespace

std::string_view NameOf(RunResult result) {
    return kResults[static_cast<std::size_t>(result)];
}

void WriteBegin(AppState& app, const Job& job) {
    constexpr double kSecondsPerDay = 86400;
    const DateTime due = job.nextschedule.value_or(0);
    Append(app, fmt::format("begin ---- {} ---- {} ---- {} ---- due {}, {} s late", job.scheduleid,
                            Part(job.name), Part(job.idmsreport), GeneralDateText(due),
                            std::llround((app.clock.Now() - due) * kSecondsPerDay)));
}

void WriteEnd(AppState& app, const Job& job, const RunEnd& end) {
    Append(app, fmt::format(
                    "end ---- {} ---- {} ---- {} ---- {} records, {} sets, {} drawings ---- {:.1f} s ---- {}",
                    job.scheduleid, Part(job.name), NameOf(end.result), end.records, end.sets, end.drawings,
                    end.seconds, Part(end.words)));
}

std::vector<RunHistory> ReadHistory(const AppState& app) {
    std::vector<RunHistory> runs;
    for (const std::string_view log : {places::kFormerAuditLog, places::kAuditLog}) {
        const std::string path = app.AppPath(log);
        if (FileExists(path)) AddRuns(ReadFile(path), runs);
    }
    return runs;
}

bool ClearAuditLog(const AppState& app) {
    try {
        const std::string path = app.AppPath(places::kAuditLog);
        if (!DeleteFile(app.AppPath(places::kFormerAuditLog))) return false;
        CreateFolder(std::filesystem::path(path).parent_path().string());
        WriteFile(path, "");
        return true;
    } catch (const RuntimeFailure&) {
        return false;
    }
}

}  // namespace norvelis
