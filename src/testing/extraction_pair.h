#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/app_state.h"
#include "store/connection.h"
#include "store/tables.h"
#include "store/transaction.h"
#include "testing/literal_extraction.h"
#include "testing/scripted_host.h"
#include "testing/temporary_folder.h"

namespace norvelis {

/// The extraction beside its yardstick: a store, and the dictionary that it should hold. Reports may follow
/// one another, as in a person's store.
class ExtractionPair {
  public:
    ExtractionPair();

    /// Empties both.
    void Clear();

    /// Extracts on both sides and tells the first difference; empty when there is none.
    std::string Extract(const std::string& report);

  private:
    int ExtractIntoStore(const std::string& report);
    std::string FirstDifference(const TableDefinition& table);

    TemporaryFolder folder_;
    ScriptedHost host_;
    SystemClock clock_;
    AppState app_;
    std::shared_ptr<Connection> connection_;
    std::optional<Transaction> transaction_;
    literal::Dictionary dictionary_;
};

}  // namespace norvelis
