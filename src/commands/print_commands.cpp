#include "commands/print_commands.h"

#include <cmath>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "dictionary/schemas.h"
#include "paper/sheet_choice.h"

namespace norvelis::commands {

namespace {

void AddReport(Connection& store, const std::string& drawing, paper::Footer& footer) {
    const std::string folder = std::filesystem::path(drawing).parent_path().filename().string();
    const auto schema = dictionary::SchemaHeader(store, folder);
    if (schema.Eof()) return;
    footer.schemaVersion = Trim(schema.Text("schemaversion"));
    footer.reportDate = Trim(schema.Text("schemadate"));
}

}  // namespace

bool HasDrawing(Host& host, const std::string& file, const std::string& nothingToPrint) {
    if (!Trim(file).empty() && FileExists(file)) return true;
    host.MessageBox(nothingToPrint);
    return false;
}

paper::Footer FooterOf(AppState& app, const std::string& drawing) {
    paper::Footer footer;
    footer.name = std::filesystem::path(drawing).stem().string();
    footer.printDate = GeneralDateText(std::floor(app.clock.Now()));
    try {
        if (app.gConnection) AddReport(*app.gConnection, drawing, footer);
    } catch (const RuntimeFailure&) {
        // A drawing can be printed without a dictionary.
    }
    return footer;
}

std::vector<int> ChosenSheets(const std::vector<int>& only, int count) {
    std::vector<int> sheets = only;
    for (const int sheet : only) {
        if (sheet > count)
            throw RuntimeFailure(
                FailureNumber::SubscriptOutOfRange,
                "there is no sheet " + std::to_string(sheet) + " of " + std::to_string(count));
    }
    for (int sheet = 1; only.empty() && sheet <= count; ++sheet) sheets.push_back(sheet);
    return sheets;
}

std::string PrintQuestion(std::size_t sheets) {
    return "Are you sure you want to print " + paper::CountedSheets(sheets) + "?";
}

bool MayPrint(Host& host, std::size_t sheets) {
    if (sheets <= paper::kSheetsWithoutQuestion) return true;
    return host.MessageBox({PrintQuestion(sheets), {}, Buttons::YesNo, Icon::Question, Answer::No}) ==
           Answer::Yes;
}

bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code none;
    return std::filesystem::equivalent(Resolve(path), Resolve(other), none);
}

void WritePdf(const std::string& drawing, const std::string& path, std::string_view pdf) {
    if (IsSameFile(path, drawing))
        throw RuntimeFailure(FailureNumber::PathFileAccess,
                             path + ": the PDF file would replace the drawing");
    WriteFile(path, pdf);
}

}  // namespace norvelis::commands
