#include "commands/publish_commands.h"

#include <unordered_set>
#include <utility>

#include "base/failure.h"
#include "base/fixed_seed.h"
#include "base/name_key.h"
#include "base/paths.h"
#include "base/text.h"
#include "base/work_folder.h"
#include "diagram/draw_commands.h"
#include "diagram/record_choice.h"
#include "dictionary/findings.h"
#include "dictionary/schema_contents.h"
#include "dictionary/schemas.h"
#include "publish/anchors.h"
#include "publish/publish.h"

namespace norvelis::commands {

namespace {

using dictionary::SchemaContents;

engine::ShapeLinks LinksOf(const DrawingState& drawing, const SchemaContents& schema) {
    engine::ShapeLinks links;
    for (const auto& record : schema.records) {
        if (const auto shape = drawing.gShapeIds.Find(Trim(record.name)))
            links[*shape] = {"#" + publish::RecordAnchor(record.name), "Record " + record.name,
                             publish::BoxAnchor(record.name)};
    }
    std::unordered_set<std::string> sets;
    for (const auto& set : schema.sets) sets.insert(NameKey(set.name));
    for (const DrawnLine& line : drawing.drawnLines) {
        if (sets.contains(NameKey(line.set)))
            links[line.shape] = {"#" + publish::SetAnchor(line.set),
                                 "Set " + line.set + " from " + line.owner + " to " + line.member,
                                 {}};
    }
    return links;
}

/// Draws the schema and takes the drawing as SVG; what it lacks goes to `missing`.
publish::Drawing DrawForPage(AppState& app, const PublishTools& tools, const SchemaContents& schema,
                             std::vector<std::string>& missing) {
    const WorkFolder folder;  // Where the drawing is until it has become part of the page.
    const FixedSeed seed(app.random);
    DrawScreen noScreen;
    DrawingState drawing(app, *app.gConnection, tools.engine, noScreen);
    drawing.options.location = folder.Path();
    drawing.options.background = "";  // The page has its own.
    drawing.options.visible = false;
    drawing.takesSnapshots = false;
    std::vector<std::string> reported;
    drawing.report = [&reported](const std::string& text) { reported.push_back(text); };
    // A name that is no file name cannot be that of the file either.
    const std::string name = schema.name.empty() ? kNameless : schema.name;
    const DrawResult result = schema.name.empty() ? DrawNamelessSchema(drawing, name)
                                                  : DrawVisioDiagramSingle(drawing, name, nullptr);
    if (result != DrawResult::Saved)
        throw RuntimeFailure(FailureNumber::DeviceIoError,
                             "the drawing: " + (reported.empty() ? "it was not made" : reported.front()));
    missing = reported;
    if (!schema.name.empty()) missing.pop_back();  // "Done Drawing", which is no lack.
    const engine::ShapeLinks links = LinksOf(drawing, schema);
    publish::Drawing svg;
    svg.svg = tools.asSvg(NativePath(folder.Path() + "\\" + name + "\\" + name + ".vsd"), links);
    for (const auto& record : schema.records)
        if (drawing.gShapeIds.Find(Trim(record.name))) svg.records.insert(NameKey(record.name));
    return svg;
}

/// The schema that the person means; nothing when there is none, or no answer.
std::optional<std::string> AskSchema(AppState& app) {
    Connection& store = *app.gConnection;
    std::vector<std::string> names;
    for (auto row = dictionary::SchemasOfRecords(store); !row.Eof(); row.MoveNext())
        names.emplace_back(Trim(row.Text("schemaname")));
    if (names.empty()) {
        app.host.MessageBox("There is no schema in the dictionary to publish. Extract a report first.");
        return std::nullopt;
    }
    if (names.size() == 1) return names.front();
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
    const bool isThere = dictionary::StoredSchemaName(store, app.gSchemaName).has_value();
    const auto answer = app.host.InputBox("Schema to publish: " + list, "Publish Schema",
                                          isThere ? app.gSchemaName : names.front());
    if (!answer) return std::nullopt;
    const auto schema = dictionary::StoredSchemaName(store, Trim(*answer));
    if (!schema) app.host.MessageBox("There is no schema " + *answer + " in the dictionary.");
    return schema;
}

/// The chosen folder when it is an edition of the schema, else a folder of its name in it.
std::string FolderFor(const std::string& chosen, const std::string& schema) {
    try {
        if (FileExists(chosen + "\\edition.json")) {
            publish::CheckFolder(chosen, schema);
            return chosen;
        }
    } catch (const RuntimeFailure&) {
        // Then it is a folder like any other.
    }
    const bool isFileName =
        schema.find_first_of("/\\:") == std::string::npos && schema != "." && schema != "..";
    return NativePath(chosen + "\\" + (schema.empty() || !isFileName ? kNameless : schema));
}

}  // namespace

Published PublishSchema(AppState& app, const PublishTools& tools, const std::string& schema,
                        const std::string& folder) {
    Connection& store = *app.gConnection;
    publish::CheckFolder(folder, schema);
    publish::Edition edition;
    edition.schema = dictionary::ReadSchema(store, schema);
    for (auto& finding : dictionary::Findings(store))
        if (SameName(finding.schema, schema)) edition.findings.push_back(std::move(finding));
    Published published;
    edition.drawing = DrawForPage(app, tools, edition.schema, published.missing);
    app.host.SetAfterCancel("The folder of the page is as it was before.");
    app.host.Yield();  // The last turn at which nothing is written yet.
    published.page = publish::Publish(edition, folder);
    return published;
}

std::optional<std::string> mnu_Publish(AppState& app, const PublishTools& tools) {
    const auto schema = AskSchema(app);
    if (!schema) return std::nullopt;
    const auto chosen = app.host.FolderDialog("Folder for the page of schema " + *schema);
    if (!chosen || chosen->empty()) return std::nullopt;
    app.host.OpenScreen(Screen::Treeview, false);  // It shows how far the drawing is.
    Published published;
    try {
        const clsHourglass hourglass(app.host);
        published = PublishSchema(app, tools, *schema, FolderFor(*chosen, *schema));
    } catch (const RuntimeFailure& failure) {
        app.host.MessageBox("Schema " + *schema + " was not published. " + failure.what());
        return std::nullopt;
    }
    std::string words = "Schema " + *schema + " is published:" + std::string(kLineBreak) + published.page;
    for (const std::string& lack : published.missing) words += std::string(kLineBreak) + lack;
    words += std::string(kLineBreak) + "Do you want to see it in your browser?";
    const Answer answer =
        app.host.MessageBox({words, "Publish Schema", Buttons::YesNo, Icon::Information, Answer::Yes});
    return answer == Answer::Yes ? std::optional(published.page) : std::nullopt;
}

}  // namespace norvelis::commands
