#include <cstdio>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "cli/drawing_commands.h"
#include "dictionary/schemas.h"
#include "drawing/render/open.h"
#include "drawing/sheets/print_queue.h"
#include "drawing/sheets/sheet_job.h"

namespace norvelis::cli {

namespace {

using drawing::sheets::Fit;
using drawing::sheets::Footer;
using drawing::sheets::SheetChoice;
using drawing::sheets::SheetJob;
using drawing::sheets::Turn;

constexpr int kSheetsWithoutQuestion = 50;

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

/// Version and date of the report, when the drawing is in the folder of a schema of the dictionary.
void AddSchemaWords(CommandContext& context, const std::string& drawing, Footer& footer) {
    try {
        context.OpenStore();
        const std::string folder = std::filesystem::path(drawing).parent_path().filename().string();
        const auto schema = dictionary::SchemaHeader(*context.app->gConnection, folder);
        if (schema.Eof()) return;
        footer.schemaVersion = Trim(schema.Text("schemaversion"));
        footer.reportDate = Trim(schema.Text("schemadate"));
    } catch (const RuntimeFailure&) {
        // A drawing can be printed without a dictionary.
    }
}

Footer FooterOf(CommandContext& context, const std::string& drawing) {
    Footer footer;
    footer.name = NameOf(drawing);
    AddSchemaWords(context, drawing, footer);
    footer.printDate = GeneralDateText(std::floor(context.clock.Now()));
    return footer;
}

std::vector<drawing::render::Scene> PagesOf(const std::string& drawing, int page) {
    auto pages = drawing::render::OpenPages(drawing);
    if (page == 0) return pages;
    if (page > static_cast<int>(pages.size()))
        throw RuntimeFailure(FailureNumber::SubscriptOutOfRange,
                             "the drawing has " + std::to_string(pages.size()) + " page(s)");
    return {std::move(pages[static_cast<std::size_t>(page) - 1])};
}

std::vector<int> SheetsOf(const SheetJob& job, const std::vector<int>& only) {
    std::vector<int> sheets = only;
    for (const int sheet : only) {
        if (sheet > job.Count())
            throw RuntimeFailure(
                FailureNumber::SubscriptOutOfRange,
                "there is no sheet " + std::to_string(sheet) + " of " + std::to_string(job.Count()));
    }
    for (int sheet = 1; only.empty() && sheet <= job.Count(); ++sheet) sheets.push_back(sheet);
    return sheets;
}

std::string Counted(std::size_t sheets) {
    return std::to_string(sheets) + (sheets == 1 ? " sheet" : " sheets");
}

bool MayPrint(CommandContext& context, std::size_t sheets, bool yes) {
    std::fprintf(stderr, "%s\n", Counted(sheets).c_str());
    if (sheets <= kSheetsWithoutQuestion) return true;
    const std::string question = "Are you sure you want to print " + Counted(sheets) + "?";
    if (yes) context.host.AnswerTo(question, Answer::Yes);
    return context.host.MessageBox({question, {}, Buttons::YesNo, Icon::Question, Answer::No}) == Answer::Yes;
}

/// A folder gets a file named after the drawing.
std::string PdfPath(const std::string& out, const std::string& drawing) {
    const std::string path = AbsolutePath(out);
    return FolderExists(path) ? (std::filesystem::path(path) / (NameOf(drawing) + ".pdf")).string() : path;
}

int PrintDrawing(CommandContext& context, const Options& options) {
    const std::string drawing = Resolve(AbsolutePath(options.drawing));
    const SheetJob job(PagesOf(drawing, options.page), options.choice, FooterOf(context, drawing));
    const std::vector<int> sheets = SheetsOf(job, options.only);
    if (!MayPrint(context, sheets.size(), options.yes))
        return Refuse("nothing is printed; --yes prints that many sheets");
    if (!options.pdf.empty()) {
        const std::string out = PdfPath(options.pdf, drawing);
        WriteFile(out, job.Pdf(sheets));
        std::printf("%s\n", out.c_str());
        return kDone;
    }
    const std::string printer = drawing::sheets::SendToPrinter(
        {options.printer, NameOf(drawing), options.choice.paper.name, job.Pdf(sheets)});
    std::printf("%s sent to %s\n", Counted(sheets.size()).c_str(), printer.c_str());
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
                      ->check(CLI::Range(drawing::sheets::kLeastPercent, drawing::sheets::kMostPercent));
    sheets->excludes(fit)->excludes(scale);
    scale->excludes(fit);
    AddText(command, "--paper", "A4 (the default), A3, A2, A1, A0 or Letter",
            [options](const auto& text) { options->choice.paper = drawing::sheets::PaperNamed(text); });
    auto* portrait = command.add_flag_callback(
        "--portrait", [options] { options->choice.turn = Turn::Portrait; },
        "Sheets are higher than wide (default: what takes fewer sheets)");
    command
        .add_flag_callback(
            "--landscape", [options] { options->choice.turn = Turn::Landscape; },
            "Sheets are wider than high")
        ->excludes(portrait);
    AddText(command, "--overlap", "What two neighbor sheets both show (default 10mm)",
            [options](const auto& text) { options->choice.overlap = drawing::sheets::ParseLength(text); });
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
            [options](const auto& text) { options->only = drawing::sheets::ParseSheetNumbers(text); });
    command->add_flag("--yes", options->yes, "Print more than 50 sheets without a question");
    command->callback([&context, options] {
        context.run = [&context, options] { return PrintDrawing(context, *options); };
    });
}

}  // namespace norvelis::cli
