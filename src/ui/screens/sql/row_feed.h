#pragma once

#include <QStringList>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sqlconv/table_procedures.h"

namespace norvelis::ui {

/// The rows of a query on their way from the thread that fetches them to the one that shows them.
class RowFeed {
  public:
    /// The end of the thread that fetches.
    RowReceiver Receiver() {
        return {[this](const std::vector<SqlField>& fields) { PutFields(fields); },
                [this](const std::vector<std::optional<std::string>>& row) { PutRow(row); }};
    }

    /// Once, when they have come.
    std::optional<QStringList> TakeHeadings() {
        const std::lock_guard lock(mutex_);
        return std::exchange(headings_, std::nullopt);
    }

    /// Cells of some rows, no more than a screen takes at once; empty when there are none at the moment.
    std::vector<std::string> TakeCells() {
        const std::lock_guard lock(mutex_);
        if (parts_.empty()) return {};
        std::vector<std::string> cells = std::move(parts_.front());
        parts_.pop_front();
        return cells;
    }

  private:
    static constexpr std::size_t kPart = 8'000;  ///< Cells.

    void PutFields(const std::vector<SqlField>& fields) {
        QStringList headings;
        for (const auto& field : fields) headings << QString::fromStdString(field.name);
        const std::lock_guard lock(mutex_);
        headings_ = headings;
    }
    /// Grids have a blank before each text; null is an empty cell.
    void PutRow(const std::vector<std::optional<std::string>>& row) {
        const std::lock_guard lock(mutex_);
        if (parts_.empty() || parts_.back().size() >= kPart) parts_.emplace_back();
        for (const auto& value : row) parts_.back().push_back(value ? " " + *value : std::string());
    }

    std::mutex mutex_;
    std::optional<QStringList> headings_;
    std::deque<std::vector<std::string>> parts_;
};

}  // namespace norvelis::ui
