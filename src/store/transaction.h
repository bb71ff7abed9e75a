#pragma once

#include "store/connection.h"

namespace norvelis {

/// Several statements as one: the writes of the scope become lasting at Commit, all at once. A scope that is
/// left without it, by a failure or a return, puts the store back to the state before; so does a killed
/// process. One at a time on a connection; the recordsets read within it show its writes.
class Transaction {
  public:
    enum class Purpose {
        Write,  ///< Other programs can read but not write until the end.
        Read,   ///< One picture of the store while others write it; needs no Commit.
    };

    /// RuntimeFailure (StoreFailure) when another program is writing.
    explicit Transaction(Connection& connection, Purpose purpose = Purpose::Write);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Ends the transaction. A failure (disk full) is a RuntimeFailure, and the store is then as it was
    /// before.
    void Commit();

  private:
    Connection& connection_;
    bool isOpen_ = true;
};

}  // namespace norvelis
