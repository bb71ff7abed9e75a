#pragma once

#include <memory>
#include <string>

namespace norvelis::drawing {

/// Widths of one font's characters, as fractions of its size.
class FontFace {
  public:
    virtual ~FontFace() = default;
    virtual double Advance(char32_t character) = 0;
    double Ascent() const { return ascent_; }    ///< Above the base line.
    double Descent() const { return descent_; }  ///< Below it, positive.

  protected:
    double ascent_ = 0.9, descent_ = 0.2;
};

/// The family that is used in place of a name: for the three classic families those with exactly their
/// widths.
std::string SubstituteFamily(const std::string& name);

/// The fonts of the machine, loaded when first asked for. A font that is not there is replaced by the nearest
/// that is; on a machine without fonts every character is half as wide as its size. Not for use by several
/// threads.
class FontLibrary {
  public:
    FontLibrary();
    ~FontLibrary();
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;

    FontFace& Face(const std::string& family, bool bold, bool italic);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace norvelis::drawing
