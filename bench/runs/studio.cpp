#include "runs/studio.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "base/paths.h"
#include "core/places.h"
#include "drawing/automation/create_engine.h"
#include "drawing/package/package.h"
#include "scheduler/jobs.h"
#include "store/connection.h"
#include "testing/report_generator.h"

namespace norvelis::bench {

namespace fs = std::filesystem;

namespace {

void RequireSoundStore(const std::string& path) {
    const auto store = Connection::OpenFile(path);
    Require(store->Select("PRAGMA integrity_check").Text("integrity_check") == "ok", path + " is not sound");
}

}  // namespace

Studio::Studio() {
    fs::create_directories(App());
    for (const char* part : {"INI", "Database", "reportfiles", "Stencils"})
        fs::copy(fs::path(NORVELIS_APP) / part, fs::path(App()) / part, fs::copy_options::recursive);
    for (const char* program : {"norvelis-cli", "norvelis-draw"})
        fs::copy_file(fs::path(NORVELIS_APP) / program, fs::path(App()) / program);
    Connection::CreateStore(Store());
    WriteFile(Larger(), GenerateSchemaReport(200, 300, 5, 1));
}

pid_t Studio::Start(const std::vector<std::string>& arguments) const {
    const pid_t child = fork();
    if (child != 0) return child;
    dup2(open("/dev/null", O_RDWR), STDOUT_FILENO);
    dup2(open("/dev/null", O_RDWR), STDERR_FILENO);
    std::vector<std::string> words = {App() + "/norvelis-cli"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    _exit(127);
}

int Studio::Run(const std::vector<std::string>& arguments) const {
    return WaitFor(Start(arguments));
}

std::int64_t Studio::Book(const std::string& name, const std::string& report) const {
    OwnProgram program(*this);
    Job job;
    job.name = name;
    job.idmsreport = report;
    std::vector<std::int64_t> ids;
    CreateJobs(program.app, job, {"1/1/2020"}, ids);
    return ids.at(0);
}

void Studio::RequireSound() const {
    RequireSoundStore(Store());
    std::error_code none;
    for (const auto& entry : fs::recursive_directory_iterator(App() + "/batchjobs", none)) {
        const std::string path = entry.path().string(), ending = entry.path().extension().string();
        if (ending == ".mdb") RequireSoundStore(path);
        if (ending == ".vsd" || ending == ".vsdx")
            Require(!drawing::ReadPackageFile(path)->pages.empty(), path + " has no page");
    }
}

OwnProgram::OwnProgram(const Studio& studio)
    : app(studio.App(), host, clock, Random(1)),
      engine(drawing::MakeDrawingEngine(
          {app.AppPath(places::kStencils), app.AppPath(places::kSnapshots), nullptr})) {
    app.gConnection = Connection::OpenFile(studio.Store());
}

int WaitFor(pid_t process) {
    int status = 0;
    if (process < 0 || waitpid(process, &status, 0) != process)
        throw std::runtime_error("a program cannot be started");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void Require(bool isTrue, const std::string& what) {
    if (!isTrue) throw std::runtime_error(what);
}

}  // namespace norvelis::bench
