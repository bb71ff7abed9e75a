#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace norvelis {

class Database;
struct StatementText;

/// A keyset cursor. Selecting fixes which rows there are; reading a row reads its present values, and writing
/// touches only the columns set, so a walk may stay open while others update its rows. Only "Select * FROM
/// one table" can be written through; the rows of other statements (distinct, count) are a fixed copy.
///
/// Column names ignore letter case. A column that the table lacks reads as null when it is one of the
/// optional ones (Hyperlink, Hyperlinkname, comments, duration) and is a RuntimeFailure otherwise.
class Recordset {
  public:
    /// Made by Connection::Select.
    Recordset(std::shared_ptr<Database> database, const StatementText& text,
              std::initializer_list<std::string_view> values);
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    bool Eof() const;
    void MoveNext();
    std::size_t RecordCount() const;

    /// The present value of the current row; nothing for null.
    std::optional<std::string> Value(std::string_view column) const;
    /// The same with null as empty text.
    std::string Text(std::string_view column) const;

    /// Starts a new row; Set and Update then write it. The new row joins the rows of the cursor and is
    /// current.
    void AddNew();
    void Set(std::string_view column, std::string_view value);
    void Update();

  private:
    struct State;
    void Read() const;

    std::unique_ptr<State> state_;
};

}  // namespace norvelis
