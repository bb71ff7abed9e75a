#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvelis {

/// What a driver is connected with: "DSN=name;KEY=value;KEY={value with ;}". Keys ignore letter case.
class ConnectionText {
  public:
    /// A text with "=" in it is a connection text as it is; any other is the name of a data source.
    explicit ConnectionText(std::string_view text);

    /// Empty when the key is missing. Braces around a value do not belong to it.
    std::string Value(std::string_view key) const;
    bool Has(std::string_view key) const;
    /// In place of what the key had before, or at the end.
    void Set(std::string_view key, std::string_view value);

    std::string Text() const;
    /// The same for people to see: what is in the places of passwords reads "***".
    std::string Shown() const;

  private:
    struct Part {
        std::string key, written;  ///< `written` as it was typed, braces included.
    };
    const Part* Find(std::string_view key) const;

    std::vector<Part> parts_;
};

}  // namespace norvelis
