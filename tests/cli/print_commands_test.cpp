#include <gmock/gmock.h>

#include <array>
#include <memory>

#include "cli/gray_picture.h"
#include "cli/program.h"
#include "drawing/sheets/print_system.h"

namespace norvelis {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

std::string OutputOf(const std::string& command) {
    std::string output;
    std::array<char, 4096> buffer{};
    std::FILE* pipe = popen(command.c_str(), "r");
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), count);
    pclose(pipe);
    return output;
}

std::string TextOf(const std::string& pdf, int page = 0) {
    const std::string number = std::to_string(page);
    return OutputOf("pdftotext -layout " + (page == 0 ? "" : "-f " + number + " -l " + number) + " '" + pdf +
                    "' -");
}

int PagesOf(const std::string& pdf) {
    return std::atoi(OutputOf("pdfinfo '" + pdf + "' | sed -n 's/^Pages: *//p'").c_str());
}

/// "595.3 x 841.9 pts (A4)"
std::string SizeOf(const std::string& pdf, int page = 1) {
    const std::string number = std::to_string(page);
    return OutputOf("pdfinfo -f " + number + " -l " + number + " '" + pdf + "' | grep 'size:'");
}

/// The sample schema, extracted and drawn once for all tests.
class PrintCommands : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        program_ = std::make_unique<Program>();
        program_->Run("extract " + program_->App() + "/reportfiles/empschm.text");
        program_->Run("draw EMPSCHM");
    }
    static void TearDownTestSuite() { program_.reset(); }

    static Program::Result Print(const std::string& drawing, const std::string& options) {
        return program_->Run("print '" + drawing + "' " + options);
    }
    static std::string Drawing() { return program_->App() + "/visio files/EMPSCHM/EMPSCHM.vsd"; }
    static std::string Path(const std::string& name) { return program_->Path(name); }

    static std::unique_ptr<Program> program_;
};
std::unique_ptr<Program> PrintCommands::program_;

TEST_F(PrintCommands, SheetsCutAtTheirMarksAreTheWholePicture) {
    constexpr int kDotsPerInch = 100;
    constexpr int kReach = static_cast<int>(0.5 / 25.4 * kDotsPerInch);
    constexpr int kAcrossMarks = static_cast<int>(8.5 / 25.4 * kDotsPerInch);  // From the paper's edge.
    const std::string sheets = Path("sheets.pdf"), whole = Path("whole.pdf");
    const auto printed = Print(Drawing(), "--pdf " + sheets + " --sheets 3x2 --overlap 15mm --paper A3");
    ASSERT_EQ(printed.status, 0) << printed.error;
    EXPECT_EQ(printed.out, sheets + "\n");
    EXPECT_EQ(printed.error, "6 sheets\n");
    ASSERT_EQ(PagesOf(sheets), 6);
    EXPECT_THAT(TextOf(sheets, 3), HasSubstr("sheet 3 of 6, row 1 column 3"));

    std::vector<std::string> rows;
    GrayPicture joined;
    for (int row = 0; row < 2; ++row) {
        std::vector<std::string> lines;
        for (int column = 0; column < 3; ++column) {
            const int page = row * 3 + column + 1;
            const auto sheet = GrayPicture::OfPage(sheets, page, "-r " + std::to_string(kDotsPerInch));
            const auto x = sheet.DarkInRow(kAcrossMarks), y = sheet.DarkInColumn(kAcrossMarks);
            ASSERT_EQ(x.size(), 2u) << "page " << page;
            ASSERT_EQ(y.size(), 2u) << "page " << page;
            if (column == 0) lines.assign(static_cast<std::size_t>(y[1] - y[0]), {});
            ASSERT_NEAR(static_cast<double>(lines.size()), y[1] - y[0], 1);
            for (std::size_t i = 0; i < lines.size(); ++i)
                lines[i] += sheet.pixels.substr(
                    (static_cast<std::size_t>(y[0]) + i) * static_cast<std::size_t>(sheet.width) +
                        static_cast<std::size_t>(x[0]),
                    static_cast<std::size_t>(x[1] - x[0]));
        }
        for (const auto& line : lines) rows.push_back(line);
    }
    joined.height = static_cast<int>(rows.size());
    joined.width = static_cast<int>(rows.front().size());
    for (auto& row : rows) {
        row.resize(rows.front().size(), '\xff');
        joined.pixels += row;
    }

    ASSERT_EQ(program_->Run("export '" + Drawing() + "' " + whole).status, 0);
    const auto picture = GrayPicture::OfPage(
        whole, 1,
        "-scale-to-x " + std::to_string(joined.width) + " -scale-to-y " + std::to_string(joined.height));
    EXPECT_LT(joined.DifferenceTo(picture, kReach), 0.01);
    EXPECT_LT(picture.DifferenceTo(joined, kReach), 0.01);
    EXPECT_GT(
        picture.DifferenceTo({joined.width, joined.height, std::string(joined.pixels.size(), '\xff')}, 0),
        0.02)
        << "there is something to compare";
}

TEST_F(PrintCommands, EveryRecordIsOnASheetOfThePaperChosen) {
    const std::string names = program_->Run("list --schema EMPSCHM").out;
    for (const auto& [options, sheets, size] : {std::tuple{"", 1, "A4"},
                                                {"--fit --paper A0 --portrait", 1, "A0"},
                                                {"--sheets 2x1 --paper letter", 2, "letter"},
                                                {"--scale 60 --landscape --overlap 0", 0, "A4"}}) {
        const std::string out = Path("out.pdf");
        ASSERT_EQ(Print(Drawing(), "--pdf " + out + " " + options).status, 0) << options;
        if (sheets > 0) {
            EXPECT_EQ(PagesOf(out), sheets) << options;
        }
        EXPECT_THAT(SizeOf(out), HasSubstr(size)) << options;
        const std::string text = TextOf(out);
        std::istringstream records(names);
        for (std::string name; std::getline(records, name);) EXPECT_THAT(text, HasSubstr(name)) << options;
    }
}

TEST_F(PrintCommands, TheFooterSaysWhatIsKnownOfTheDrawing) {
    const std::string folder = Path("elsewhere");
    CreateFolder(folder);
    ASSERT_EQ(Print(Drawing(), "--pdf " + folder).out, folder + "/EMPSCHM.pdf\n");
    const std::string known = TextOf(folder + "/EMPSCHM.pdf");
    EXPECT_THAT(known, HasSubstr("schema version 1"));
    EXPECT_THAT(known, HasSubstr("report of 03/14/24"));
    EXPECT_THAT(known, HasSubstr("printed "));
    EXPECT_THAT(known, HasSubstr("sheet 1 of 1, row 1 column 1"));
    WriteFile(folder + "/copy.vsd", ReadFile(Drawing()));
    Print(folder + "/copy.vsd", "--pdf " + folder);
    EXPECT_THAT(TextOf(folder + "/copy.pdf"), Not(HasSubstr("schema version")));
}

TEST_F(PrintCommands, SingleSheetsAndManySheets) {
    const std::string out = Path("some.pdf");
    ASSERT_EQ(Print(Drawing(), "--pdf " + out + " --sheets 3x2 --only 5-6,3").status, 0);
    ASSERT_EQ(PagesOf(out), 3);
    EXPECT_THAT(TextOf(out, 1), HasSubstr("sheet 5 of 6, row 2 column 2"));
    EXPECT_THAT(TextOf(out, 3), HasSubstr("sheet 3 of 6, row 1 column 3"));
    DeleteFile(out);
    const std::string many = "--pdf " + out + " --sheets 10x6";
    const auto asked = Print(Drawing(), many);
    EXPECT_EQ(asked.status, 1);
    EXPECT_THAT(asked.error, HasSubstr("60 sheets\nAre you sure you want to print 60 sheets? No\n"));
    EXPECT_FALSE(FileExists(out));
    EXPECT_EQ(Print(Drawing(), many + " --yes").status, 0);
    EXPECT_EQ(PagesOf(out), 60);
}

TEST_F(PrintCommands, WhatCanNotBePrintedIsRefusedInWords) {
    const std::string out = Path("none.pdf");
    for (const auto& [options, words] :
         {std::pair{"--sheets 2x1 --only 3", "there is no sheet 3 of 2"},
          {"--page 2", "the drawing has 1 page(s)"},
          {"--scale 1000 --paper A4 --only 999999", "there is no sheet 999999"}}) {
        const auto refused = Print(Drawing(), "--pdf " + out + " " + options);
        EXPECT_EQ(refused.status, 1) << options;
        EXPECT_THAT(refused.error, HasSubstr(words));
    }
    for (const char* options : {"--sheets 3", "--scale 0", "--paper B5", "--overlap 10miles", "--only x",
                                "--portrait --landscape", "--fit --scale 50", "--page 0", "--printer own"})
        EXPECT_EQ(Print(Drawing(), "--pdf " + out + " " + options).status, 2) << options;
    EXPECT_THAT(Print(Path("missing.vsd"), "--pdf " + out).error, HasSubstr("File not found"));
    EXPECT_FALSE(FileExists(out));
    const auto unwritable = Print(Drawing(), "--pdf " + Path("no-folder/out.pdf"));
    EXPECT_EQ(unwritable.status, 1);
    EXPECT_THAT(unwritable.error, HasSubstr("no-folder/out.pdf"));
    const auto over = Print(Drawing(), "--pdf '" + Drawing() + "'");
    EXPECT_EQ(over.status, 1);
    EXPECT_THAT(over.error, HasSubstr("would replace the drawing"));
}

TEST_F(PrintCommands, PrintersTakeSheetsOrSayWhyNot) {
    const PrintSystem printers;
    ASSERT_TRUE(printers.Runs());
    const auto sent = Print(Drawing(), "--paper A3 --sheets 2x1 --landscape");
    EXPECT_EQ(sent.status, 0) << sent.error;
    EXPECT_EQ(sent.out, "2 sheets sent to own\n");
    ASSERT_TRUE(FileExists(printers.JobFile(1)));
    EXPECT_EQ(PagesOf(printers.JobFile(1)), 2);
    EXPECT_THAT(SizeOf(printers.JobFile(1)), HasSubstr("A3"));
    EXPECT_THAT(TextOf(printers.JobFile(1)), HasSubstr("MAKER"));
    for (const auto& [printer, words] :
         {std::pair{"nobody", "there is no printer nobody; there are closed, own, stopping"},
          {"closed", "the printer closed takes no jobs: being repaired"},
          {"stopping", "the printer stopping has stopped: out of paper; what was sent waits in its list"}}) {
        const auto refused = Print(Drawing(), std::string("--printer ") + printer);
        EXPECT_EQ(refused.status, 1) << printer;
        EXPECT_EQ(refused.out, "");
        EXPECT_THAT(refused.error, HasSubstr(words));
    }
}

TEST_F(PrintCommands, WithoutAPrintSystemTheWordsSaySo) {
    const auto refused = program_->Run("print '" + Drawing() + "'", "CUPS_SERVER=" + Path("no-socket") + " ");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, EndsWith("there is no default printer; no printer is set up\n"));
}

}  // namespace
}  // namespace norvelis
