#pragma once

#include <memory>
#include <optional>

#include "cli/command.h"
#include "scheduler/xml.h"

namespace norvelis::cli {

/// When something is to run: at one moment, or by a schedule element.
struct Definition {
    std::optional<DateTime> moment;
    std::optional<XmlNode> schedule;
    bool isRead = false;  ///< The element comes from a file.
};

/// The options of a definition as `next` and `add` take them.
class DefinitionOptions {
  public:
    static std::shared_ptr<DefinitionOptions> AddTo(CLI::App& command);

    /// CLI::ParseError where the options given do not go together.
    void Check() const;

    /// Reads the file, or builds the element as the editor does from what the options choose. Fails with the
    /// reason when the file holds no schedule.
    Definition Read(DateTime now) const;

  private:
    bool HasPattern() const { return days_ || weeks_ || months_; }
    XmlNode ReadElement() const;
    XmlNode BuildElement(DateTime now) const;

    std::optional<std::string> on_, xml_;
    std::optional<int> days_, weeks_, months_;
    std::vector<std::string> onDays_;
    std::optional<int> day_;
    std::optional<std::string> week_, weekday_, at_, interval_, from_, to_, start_, end_;
};

/// A check of options that are dates or times.
CLI::Validator IsMoment();

}  // namespace norvelis::cli
