#include "dictionary/findings.h"

#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "store/inserter.h"
#include "store/tables.h"

namespace norvelis::dictionary {

namespace {

constexpr int kForm = 1;

constexpr ColumnDefinition kFormColumns[] = {{"tablename"}, {"form"}};
constexpr TableDefinition kForms{"norvelis_forms", kFormColumns, {}};

constexpr ColumnDefinition kFindingColumns[] = {{"schemaname"}, {"severity"}, {"kind"},  {"line"},
                                                {"subject"},    {"reason"},   {"remedy"}};
constexpr TableDefinition kFindings{"norvelis_findings", kFindingColumns, {}};

bool HasTable(Connection& store, const TableDefinition& table) {
    return store.Count("Select count(*) FROM sqlite_master where type = 'table' and name = ?",
                       {table.name}) != 0;
}

// False when there is none.
bool HasFindings(Connection& store) {
    if (!HasTable(store, kFindings)) return false;
    const Recordset row = store.Select("Select * FROM norvelis_forms where tablename = ?", {kFindings.name});
    if (!row.Eof() && Val(row.Text("form")) <= kForm) return true;
    throw RuntimeFailure(FailureNumber::StoreFailure,
                         store.Path() + ": its list of findings was made by a newer Norvelis");
}

void MakeTable(Connection& store) {
    if (!HasTable(store, kForms)) store.Execute(CreationScript(kForms));
    store.Execute(CreationScript(kFindings));
    store.Execute("Insert into norvelis_forms (tablename, form) values (?, ?)",
                  {kFindings.name, std::to_string(kForm)});
}

}  // namespace

void ReplaceFindings(Connection& store, std::string_view schema, const std::vector<FindingRow>& findings) {
    ClearFindings(store, schema);
    if (findings.empty()) return;
    if (!HasFindings(store)) MakeTable(store);
    Inserter rows(store, kFindings.name,
                  {"schemaname", "severity", "kind", "line", "subject", "reason", "remedy"});
    for (const FindingRow& finding : findings) {
        const std::string line = std::to_string(finding.line);
        const std::array<std::optional<std::string_view>, 7> values = {
            finding.schema,  finding.severity, finding.kind,  line,
            finding.subject, finding.reason,   finding.remedy};
        rows.Add(values);
    }
}

std::vector<FindingRow> Findings(Connection& store) {
    std::vector<FindingRow> findings;
    if (!HasFindings(store)) return findings;
    for (Recordset row = store.Select("Select * FROM norvelis_findings"); !row.Eof(); row.MoveNext()) {
        findings.push_back({row.Text("schemaname"), row.Text("severity"), row.Text("kind"),
                            static_cast<std::size_t>(Val(row.Text("line"))), row.Text("subject"),
                            row.Text("reason"), row.Text("remedy")});
    }
    return findings;
}

std::size_t CountWarnings(Connection& store) {
    if (!HasFindings(store)) return 0;
    return static_cast<std::size_t>(
        store.Count("Select count(*) FROM norvelis_findings where severity = ?", {kWarning}));
}

void ClearFindings(Connection& store, const std::optional<std::string_view>& schema) {
    if (!HasFindings(store)) return;
    if (schema) {
        store.Execute("Delete * FROM norvelis_findings where schemaname = ?", {*schema});
    } else {
        store.Execute("Delete * FROM norvelis_findings");
    }
}

Recordset IncompleteRecords(Connection& store) {
    return store.Select("Select * FROM Record_Details where Information is null");
}

}  // namespace norvelis::dictionary
