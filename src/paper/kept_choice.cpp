#include "paper/kept_choice.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/failure.h"
#include "base/ini.h"
#include "base/text.h"

namespace norvelis::paper {

namespace {

constexpr auto kSetUp = "PrinterSetup", kPrinted = "PrintedDrawings", kSheets = "Sheets",
               kPrinter = "Printer";

struct TurnName {
    std::string_view name;
    Turn turn;
};
constexpr TurnName kTurns[] = {
    {"best", Turn::Best}, {"portrait", Turn::Portrait}, {"landscape", Turn::Landscape}};

std::string FitText(const SheetChoice& choice) {
    switch (choice.fit) {
        case Fit::Grid:
            return fmt::format("grid {}x{}", choice.columns, choice.rows);
        case Fit::Scale:
            return fmt::format("scale {:g}", choice.percent);
        case Fit::OneSheet:
            break;
    }
    return choice.mayEnlarge ? "enlarged" : "one";
}

void ParseFit(std::string_view text, SheetChoice& choice) {
    SheetChoice fit;
    if (text.starts_with("grid ")) {
        ParseGrid(text.substr(5), fit);
    } else if (text.starts_with("scale ") && IsNumeric(text.substr(6))) {
        fit.fit = Fit::Scale;
        fit.percent = std::clamp(Val(text.substr(6)), kLeastPercent, kMostPercent);
    } else if (text == "enlarged") {
        fit.mayEnlarge = true;
    } else if (text != "one") {
        return;
    }
    choice.fit = fit.fit;
    choice.mayEnlarge = fit.mayEnlarge;
    choice.columns = fit.columns;
    choice.rows = fit.rows;
    choice.percent = fit.percent;
}

void ParseTurn(std::string_view text, SheetChoice& choice) {
    for (const auto& [name, turn] : kTurns) {
        if (text == name) choice.turn = turn;
    }
}

/// One "name value". RuntimeFailure 5 for a value that none is.
void ParsePart(std::string_view part, SheetChoice& choice) {
    const auto blank = std::min(part.find(' '), part.size());
    const std::string_view name = part.substr(0, blank), value = Trim(part.substr(blank));
    if (name == "fit") ParseFit(value, choice);
    if (name == "paper") choice.paper = PaperNamed(value);
    if (name == "turn") ParseTurn(value, choice);
    if (name == "overlap") choice.overlap = ParseLength(value);
    if (name == "marks") choice.cropMarks = value == "yes";
    if (name == "footer") choice.footer = value == "yes";
}

/// A key ends at the first equals sign and must not look like another kind of line.
std::string KeyOf(const std::string& drawing) {
    std::string key = drawing;
    std::ranges::replace(key, '=', '_');
    return key;
}

}  // namespace

std::string ChoiceText(const SheetChoice& choice) {
    const auto yes = [](bool on) { return on ? "yes" : "no"; };
    const auto turn = std::ranges::find(kTurns, choice.turn, &TurnName::turn);
    return fmt::format("fit {}, paper {}, turn {}, overlap {:g}, marks {}, footer {}", FitText(choice),
                       choice.paper.name, turn->name, choice.overlap, yes(choice.cropMarks),
                       yes(choice.footer));
}

SheetChoice ParseChoice(std::string_view text, const SheetChoice& otherwise) {
    SheetChoice choice = otherwise;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        try {
            ParsePart(Trim(text.substr(begin, end - begin)), choice);
        } catch (const RuntimeFailure&) {
            // Somebody edited the file; the rest of the line may be good.
        }
        begin = end + 1;
    }
    return choice;
}

SheetChoice SetUpChoice(const std::string& ini) {
    return ParseChoice(ReadINIValue(kSetUp, kSheets, ini), {});
}

void KeepSetUpChoice(const std::string& ini, const SheetChoice& choice) {
    WriteINIValue(kSetUp, kSheets, ChoiceText(choice), ini);
}

SheetChoice ChoiceFor(const std::string& ini, const std::string& drawing) {
    return ParseChoice(ReadINIValue(kPrinted, KeyOf(drawing), ini), SetUpChoice(ini));
}

void KeepChoiceFor(const std::string& ini, const std::string& drawing, const SheetChoice& choice) {
    if (choice != ChoiceFor(ini, drawing)) WriteINIValue(kPrinted, KeyOf(drawing), ChoiceText(choice), ini);
}

std::string KeptPrinter(const std::string& ini) {
    return ReadINIValue(kSetUp, kPrinter, ini);
}

void KeepPrinter(const std::string& ini, const std::string& printer) {
    WriteINIValue(kSetUp, kPrinter, printer, ini);
}

}  // namespace norvelis::paper
