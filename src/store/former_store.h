#pragma once

#include <string>

#include "store/connection.h"

// The store as it was before its last change as a whole, kept once beside it.
namespace norvelis {

/// Where the former store of this store is kept.
std::string FormerStorePath(const std::string& store);

/// A copy of a store, taken before a change; it takes the place of the former store when the change has
/// succeeded.
class FormerStore {
  public:
    /// Copies the store, into which its transaction has written nothing yet. RuntimeFailure when that fails.
    explicit FormerStore(Connection& store);
    ~FormerStore();  ///< Removes a copy that was not kept.
    FormerStore(const FormerStore&) = delete;
    FormerStore& operator=(const FormerStore&) = delete;

    void Keep();

  private:
    std::string store_, copy_;
};

/// Exchanges store and former store, so that a second time changes them back; nobody may have the store open.
/// RuntimeFailure 53 when there is no former store, 75 when a program left the store in the middle of a
/// change, which opening it takes back.
void RestoreFormerStore(const std::string& store);

/// Moves a damaged store with its journal out of the place of a new one, to a free name beside it, which is
/// given back.
std::string KeepDamagedStore(const std::string& store);

}  // namespace norvelis
