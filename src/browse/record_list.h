#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "browse/record_details.h"
#include "core/app_state.h"
#include "store/connection.h"

// The list screen as data: schemas, the records of one, and a record between its owners and its members.
// Records and sets are found by the record's name alone, so a name that is in two schemas has the owners and
// the members of both. RuntimeFailure when the store refuses, except in what ReadListedRecord reads.
namespace norvelis {

inline constexpr std::string_view kSchemaListHeading = "DICTIONARY";
inline constexpr std::string_view kRecordListHeading = "RECORD";

/// The schemas by name. Where there is no store a box says so and the list is empty.
std::vector<std::string> LoadSchemaList(AppState& app);

/// The records of one schema by name, VIA records too.
std::vector<std::string> LoadRecordsList(Connection& store, std::string_view schema);

/// A record at the other end of sets of the chosen one.
struct Neighbor {
    std::string name;
    std::vector<std::string> sets;  ///< Names of the sets between the two, each once.
    std::string otherSchema;        ///< The first set's when no set is of the schema on show; else empty.
};

struct ChosenRecord {
    std::vector<Neighbor> owners, members;
    ListedRecord record;
};

/// All that depends on the chosen record, by five statements. An empty schema marks no neighbor as another
/// one's.
ChosenRecord ShowRecord(Connection& store, std::string_view name, std::string_view schema = {});

/// The records chosen one after the other, for going back.
class RecordTrail {
  public:
    static constexpr std::size_t kMost = 100;  ///< Older ones are forgotten.

    void Choose(std::string_view name);
    bool CanGoBack() const { return names_.size() > 1; }
    /// Leaves the present record for the one chosen before it, which is the result; CanGoBack must be true.
    const std::string& Back();

  private:
    std::vector<std::string> names_;
};

}  // namespace norvelis
