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
    friend std::string TypedSource(std::string_view typed, std::string_view before);

    struct Part {
        std::string key, written;  ///< `written` as it was typed, braces included.
    };
    const Part* Find(std::string_view key) const;

    std::vector<Part> parts_;
};

/// A data source, or a connection text without its passwords, for people to see.
std::string ShownSource(std::string_view source);

/// What a person made of a source that was shown: where "***" stands for a password, it is that of the source
/// as it was before.
std::string TypedSource(std::string_view typed, std::string_view before);

}  // namespace norvelis
