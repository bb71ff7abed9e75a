#include <cstdio>

#include "base/paths.h"
#include "cli/command.h"
#include "core/places.h"
#include "store/connection.h"
#include "store/former_store.h"
#include "store/store_failure.h"

namespace norvelis::cli {

namespace {

// Opening also takes back what a program left in the middle of a change.
bool IsUsable(const std::string& store) {
    try {
        Connection::Open(ConnectionString(store));
        return true;
    } catch (const UnusableStore&) {
        return false;
    }
}

int Create(CommandContext& context) {
    const std::string store = Resolve(context.app->AppPath(places::kStore));
    if (FileExists(store)) {
        if (IsUsable(store))
            return Refuse(store + " is a dictionary store in good order; nothing was created");
        std::printf("The damaged store was kept as %s\n", KeepDamagedStore(store).c_str());
    }
    Connection::CreateStore(store);
    std::printf("An empty dictionary store was created: %s\n", store.c_str());
    return kDone;
}

int Restore(CommandContext& context) {
    const std::string store = Resolve(context.app->AppPath(places::kStore));
    if (FileExists(store)) IsUsable(store);
    RestoreFormerStore(store);
    std::printf("The former dictionary is in its place again: %s\nThe one before is kept as %s\n",
                store.c_str(), FormerStorePath(store).c_str());
    return kDone;
}

}  // namespace

void AddStoreCommands(CLI::App& program, CommandContext& context) {
    auto* store = program.add_subcommand("store", "Create the dictionary store, or restore the former one");
    store->require_subcommand(1);
    store->add_subcommand("create", "Make an empty store; a damaged one is kept under another name")
        ->callback([&context] { context.run = [&context] { return Create(context); }; });
    store->add_subcommand("restore", "Take the dictionary back that the last extraction replaced")
        ->callback([&context] { context.run = [&context] { return Restore(context); }; });
}

}  // namespace norvelis::cli
