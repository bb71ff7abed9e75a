#include "drawing/sheets/print_queue.h"

#include <cups/cups.h>

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>

#include "base/failure.h"
#include "base/text.h"

namespace norvelis::drawing::sheets {

namespace {

constexpr std::chrono::milliseconds kPatience{5000}, kBetweenLooks{100};

[[noreturn]] void Refuse(const std::string& words) {
    throw RuntimeFailure(FailureNumber::DeviceIoError, words);
}

/// The printers as they are now.
class Printers {
  public:
    Printers() : count_(cupsGetDests(&all_)) {}
    ~Printers() { cupsFreeDests(count_, all_); }
    Printers(const Printers&) = delete;
    Printers& operator=(const Printers&) = delete;

    /// Null when there is none; an empty name asks for the default one.
    const cups_dest_t* Find(const std::string& name) const {
        return cupsGetDest(name.empty() ? nullptr : name.c_str(), nullptr, count_, all_);
    }
    std::string Names() const {
        std::string names;
        for (int i = 0; i < count_; ++i) names += (i == 0 ? "" : ", ") + std::string(all_[i].name);
        return names;
    }

  private:
    cups_dest_t* all_ = nullptr;
    int count_;
};

std::string Option(const cups_dest_t& printer, const char* name) {
    const char* value = cupsGetOption(name, printer.num_options, printer.options);
    return value == nullptr ? "" : value;
}

/// The printer's own words for its state, which the list of printers does not have.
std::string StateMessage(const char* printer) {
    std::array<char, HTTP_MAX_URI> address{};
    httpAssembleURIf(HTTP_URI_CODING_ALL, address.data(), static_cast<int>(address.size()), "ipp", nullptr,
                     "localhost", ippPort(), "/printers/%s", printer);
    ipp_t* request = ippNewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, address.data());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
                 "printer-state-message");
    const std::unique_ptr<ipp_t, decltype(&ippDelete)> response(
        cupsDoRequest(CUPS_HTTP_DEFAULT, request, "/"), ippDelete);
    ipp_attribute_t* words = ippFindAttribute(response.get(), "printer-state-message", IPP_TAG_TEXT);
    return words == nullptr ? "" : std::string(Trim(ippGetString(words, 0, nullptr)));
}

/// Why the printer prints nothing at present.
std::optional<std::string> Refusal(const cups_dest_t& printer) {
    const bool rejects = Option(printer, "printer-is-accepting-jobs") == "false";
    const bool stopped = Option(printer, "printer-state") == std::to_string(IPP_PRINTER_STOPPED);
    if (!rejects && !stopped) return std::nullopt;
    const std::string words = StateMessage(printer.name);
    return "the printer " + std::string(printer.name) + (rejects ? " takes no jobs" : " has stopped") +
           (words.empty() ? "" : ": " + words);
}

class Options {
  public:
    ~Options() { cupsFreeOptions(count_, all_); }
    Options() = default;
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void Add(const char* name, const std::string& value) {
        count_ = cupsAddOption(name, value.c_str(), count_, &all_);
    }
    int Count() const { return count_; }
    cups_option_t* All() const { return all_; }

  private:
    cups_option_t* all_ = nullptr;
    int count_ = 0;
};

int Submit(const char* printer, const PrintRequest& request) {
    Options options;
    options.Add("media", request.paper);
    options.Add("print-scaling", "none");  // The sheets have the paper's size: what is on them keeps its own.
    const int job =
        cupsCreateJob(CUPS_HTTP_DEFAULT, printer, request.title.c_str(), options.Count(), options.All());
    const bool sent = job > 0 &&
                      cupsStartDocument(CUPS_HTTP_DEFAULT, printer, job, request.title.c_str(),
                                        CUPS_FORMAT_PDF, 1) == HTTP_STATUS_CONTINUE &&
                      cupsWriteRequestData(CUPS_HTTP_DEFAULT, request.pdf.data(), request.pdf.size()) ==
                          HTTP_STATUS_CONTINUE &&
                      cupsFinishDocument(CUPS_HTTP_DEFAULT, printer) <= IPP_STATUS_OK_CONFLICTING;
    if (!sent)
        Refuse("the printer " + std::string(printer) + " does not take this: " + cupsLastErrorString());
    return job;
}

std::optional<ipp_jstate_t> StateOf(const char* printer, int job) {
    cups_job_t* jobs = nullptr;
    const int count = cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, printer, 1, CUPS_WHICHJOBS_ALL);
    std::optional<ipp_jstate_t> state;
    for (int i = 0; i < count; ++i) {
        if (jobs[i].id == job) state = jobs[i].state;
    }
    cupsFreeJobs(count, jobs);
    return state;
}

/// A job is printed after it was taken, so what goes wrong then shows only in the printer's list. One that
/// takes longer is left to the print system.
void WaitForRefusal(const std::string& printer, int job) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (std::chrono::steady_clock::now() < end) {
        const auto state = StateOf(printer.c_str(), job);
        if (!state || *state == IPP_JSTATE_COMPLETED) return;
        const Printers printers;
        const cups_dest_t* dest = printers.Find(printer);
        const auto refusal = dest == nullptr ? std::nullopt : Refusal(*dest);
        if (refusal) Refuse(*refusal + "; what was sent waits in its list");
        if (*state == IPP_JSTATE_ABORTED || *state == IPP_JSTATE_CANCELED)
            Refuse("the printer " + printer + " gave up: " + StateMessage(printer.c_str()));
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

}  // namespace

std::string SendToPrinter(const PrintRequest& request) {
    const Printers printers;
    const cups_dest_t* printer = printers.Find(request.printer);
    if (printer == nullptr) {
        const std::string known = printers.Names();
        Refuse((request.printer.empty() ? "there is no default printer"
                                        : "there is no printer " + request.printer) +
               (known.empty() ? "; no printer is set up" : "; there are " + known));
    }
    if (const auto refusal = Refusal(*printer)) Refuse(*refusal);
    WaitForRefusal(printer->name, Submit(printer->name, request));
    return printer->name;
}

}  // namespace norvelis::drawing::sheets
