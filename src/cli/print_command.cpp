#include <cstdio>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "cli/drawing_commands.h"
#include "commands/print_commands.h"
#include "drawing/render/open.h"
#include "drawing/sheets/print_queue.h"
#include "drawing/sheets/sheet_job.h"

namespace norvelis::cli {

namespace {

using drawing::render::Scene;
using drawing::sheets::SheetJob;
using paper::CountedSheets;
using paper::Fit;
using paper::Footer;
using paper::SheetChoice;
using paper::Turn;

struct Options {
    std::string drawing, pdf, printer;
    SheetChoice choice;
    int page = 0;  ///< 0 is all.
    std::vector<int> only;
    bool yes = false;
};

std::string NameOf(const std::string& path) {
    return std::filesystem::path(path).stem().string();
}

Footer FooterOf(CommandContext& context, const std::string& drawing) {
    try {
        context.OpenStore();
    } catch (const RuntimeFailure&) {
        // A drawing can be printed without a dictionary.
    }
    return commands::FooterOf(*context.app, drawing);
}

std::vector<Scene> PagesOf(const std::string& drawing, int page) {
    auto pages = drawing::render::OpenPages(drawing);
    if (page == 0) return pages;
    if (page > static_cast<int>(pages.size()))
        throw RuntimeFailure(FailureNumber::SubscriptOutOfRange,
                             "the drawing has " + std::to_string(pages.size()) + " page(s)");
    return {std::move(pages[static_cast<std::size_t>(page) - 1])};
}

bool MayPrint(CommandContext& context, std::size_t sheets, bool yes) {
    std::fprintf(stderr, "%s\n", CountedSheets(sheets).c_str());
    if (yes) context.host.AnswerTo(commands::PrintQuestion(sheets), Answer::Yes);
    return commands::MayPrint(context.host, sheets);
}

/// A folder gets a file named after the drawing.
std::string PdfPath(const std::string& out, const std::string& drawing) {
    const std::string path = AbsolutePath(out);
    return FolderExists(path) ? (std::filesystem::path(path) / (NameOf(drawing) + ".pdf")).string() : path;
}

int PrintDrawing(CommandContext& context, const Options& options) {
    const std::string drawing = Resolve(AbsolutePath(options.drawing));
    const std::vector<Scene> pages = PagesOf(drawing, options.page);
    std::vector<const Scene*> printed;
    for (const Scene& page : pages) printed.push_back(&page);
    const SheetJob job(std::move(printed), options.choice, FooterOf(context, drawing));
    const std::vector<int> sheets = commands::ChosenSheets(options.only, job.Count());
    if (!MayPrint(context, sheets.size(), options.yes))
        return Refuse("nothing is printed; --yes prints that many sheets");
    if (!options.pdf.empty()) {
        const std::string out = PdfPath(options.pdf, drawing);
        commands::WritePdf(drawing, out, job.Pdf(sheets));
        std::printf("%s\n", out.c_str());
        return kDone;
    }
    const std::string printer = drawing::sheets::SendToPrinter(
        {options.printer, NameOf(drawing), options.choice.paper.name, job.Pdf(sheets)});
    std::printf("%s sent to %s\n", CountedSheets(sheets.size()).c_str(), printer.c_str());
    return kDone;
}

/// Takes an option's text as `parse` reads it; what it can not read is wrong usage.
template <typename Parse>
CLI::Option* AddText(CLI::App& command, const std::string& name, const std::string& words, Parse parse) {
    return command.add_option_function<std::string>(
        name,
        [name, parse](const std::string& text) {
            try {
                parse(text);
            } catch (const RuntimeFailure& failure) {
                throw CLI::ValidationError(name, failure.what());
            }
        },
        words);
}

void AddSheetOptions(CLI::App& command, const std::shared_ptr<Options>& options) {
    auto* fit = command.add_flag_callback(
        "--fit", [options] { options->choice.fit = Fit::OneSheet; },
        "On one sheet, no larger than life (this is the default)");
    auto* sheets = AddText(command, "--sheets", "On as many columns and rows of sheets, such as 3x2",
                           [options](const auto& text) { ParseGrid(text, options->choice); });
    auto* scale = command
                      .add_option_function<double>(
                          "--scale",
                          [options](double percent) {
                              options->choice.fit = Fit::Scale;
                              options->choice.percent = percent;
                          },
                          "In this per cent of life size, on as many sheets as that takes")
                      ->check(CLI::Range(paper::kLeastPercent, paper::kMostPercent));
    sheets->excludes(fit)->excludes(scale);
    scale->excludes(fit);
    AddText(command, "--paper", "A4 (the default), A3, A2, A1, A0 or Letter",
            [options](const auto& text) { options->choice.paper = paper::PaperNamed(text); });
    auto* portrait = command.add_flag_callback(
        "--portrait", [options] { options->choice.turn = Turn::Portrait; },
        "Sheets are higher than wide (default: what takes fewer sheets)");
    command
        .add_flag_callback(
            "--landscape", [options] { options->choice.turn = Turn::Landscape; },
            "Sheets are wider than high")
        ->excludes(portrait);
    AddText(command, "--overlap", "What two neighbor sheets both show (default 10mm)",
            [options](const auto& text) { options->choice.overlap = paper::ParseLength(text); });
}

}  // namespace

void AddPrint(CLI::App& program, CommandContext& context) {
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("print", "Print a drawing, on one sheet or cut into several");
    command->add_option("DRAWING", options->drawing, "Drawing file")->required();
    auto* pdf = command->add_option("--pdf", options->pdf,
                                    "PDF file to write, or a folder for one named after the drawing");
    command->add_option("--printer", options->printer, "Name of the printer (default: the default printer)")
        ->excludes(pdf);
    AddSheetOptions(*command, options);
    command->add_option("--page", options->page, "This page of the drawing alone, from 1")
        ->check(CLI::Range(1, 1'000'000));
    AddText(*command, "--only", "These sheets alone, such as 3,5-6",
            [options](const auto& text) { options->only = paper::ParseSheetNumbers(text); });
    command->add_flag("--yes", options->yes, "Print more than 50 sheets without a question");
    command->callback([&context, options] {
        context.run = [&context, options] { return PrintDrawing(context, *options); };
    });
}

}  // namespace norvelis::cli
