#include <algorithm>
#include <cstdio>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "cli/command.h"
#include "copybook/copybook.h"
#include "dictionary/schemas.h"

namespace norvelis::cli {

namespace {

using copybook::Copybook;

struct Options {
    std::string schema, record, out;
};

int WriteCopybooks(const std::vector<Copybook>& copybooks, const std::string& folder) {
    if (!CreateFolder(folder)) return Refuse("the folder " + folder + " cannot be made");
    const auto fileOf = [&folder](const Copybook& one) { return NativePath(folder + "\\" + one.FileName()); };
    for (const Copybook& copybook : copybooks) {
        if (FolderExists(fileOf(copybook)))
            return Refuse(fileOf(copybook) + " is a folder; no copybook was written");
    }
    for (const Copybook& copybook : copybooks) {
        WriteFile(fileOf(copybook), copybook.text);
        std::printf("%s\n", fileOf(copybook).c_str());
    }
    return kDone;
}

int MakeCopybooks(CommandContext& context, const Options& options) {
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    const auto schema = dictionary::StoredSchemaName(store, options.schema);
    if (!schema) return Refuse("there is no schema " + options.schema + " in the dictionary");
    std::vector<Copybook> copybooks = copybook::CopybooksOf(dictionary::ReadSchema(store, *schema));
    if (!options.record.empty()) {
        std::erase_if(copybooks,
                      [&options](const Copybook& one) { return !SameName(one.record, options.record); });
        if (copybooks.empty())
            return Refuse("there is no record " + options.record + " in schema " + *schema);
    }
    if (copybooks.empty()) return Refuse("schema " + *schema + " has no records");
    if (!options.out.empty()) return WriteCopybooks(copybooks, AbsolutePath(options.out));
    for (const Copybook& copybook : copybooks) std::printf("%s", copybook.text.c_str());
    return kDone;
}

}  // namespace

void AddCopybook(CLI::App& program, CommandContext& context) {
    const auto named = [](const std::string& name) { return name.empty() ? "the name is empty" : ""; };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("copybook", "Print record layouts as COBOL copybooks");
    command->add_option("SCHEMA", options->schema, "Schema of the dictionary")->required();
    command->add_option("--record", options->record, "This record only")->check(named);
    command
        ->add_option("--out", options->out,
                     "Folder for a file of each record (default: all to standard output)")
        ->check(named);
    command->callback([&context, options] {
        context.run = [&context, options] { return MakeCopybooks(context, *options); };
    });
}

}  // namespace norvelis::cli
