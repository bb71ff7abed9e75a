#include "store/transaction.h"

#include "base/failure.h"

namespace norvelis {

Transaction::Transaction(Connection& connection, Purpose purpose) : connection_(connection) {
    connection_.Execute(purpose == Purpose::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

void Transaction::Commit() {
    connection_.Execute("COMMIT");
    isOpen_ = false;
}

Transaction::~Transaction() {
    if (!isOpen_) return;
    try {
        connection_.Execute("ROLLBACK");
    } catch (const RuntimeFailure&) {
        // The connection is closed, or the engine has gone back by itself: the store is as it was before.
    }
}

}  // namespace norvelis
