#include "cli/sql_rows.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "sqlconv/table_procedures.h"

namespace norvelis::cli {

namespace {

using Row = std::vector<std::optional<std::string>>;

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

Row NamesOf(const std::vector<SqlField>& fields) {
    Row names;
    for (const auto& field : fields) names.emplace_back(field.name);
    return names;
}

class PlainPrinter : public RowPrinter {
  public:
    void Fields(const std::vector<SqlField>& fields) override { Row(NamesOf(fields)); }
    void Row(const cli::Row& row) override {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) line += '\t';
            // A row is one line, whatever its values hold.
            for (const char c : ShownValue(row[i].value_or("")))
                line += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
        }
        Print(line + '\n');
    }
};

class CsvPrinter : public RowPrinter {
  public:
    void Fields(const std::vector<SqlField>& fields) override { Row(NamesOf(fields)); }
    void Row(const cli::Row& row) override { Print(CsvLine(row)); }
};

class JsonPrinter : public RowPrinter {
  public:
    void Fields(const std::vector<SqlField>& fields) override {
        Print("{\"fields\": " + Array(NamesOf(fields)) + ", \"rows\": [");
        begun_ = true;
    }
    void Row(const cli::Row& row) override {
        Print((first_ ? "\n  " : ",\n  ") + Array(row));
        first_ = false;
    }
    void End() override {
        if (begun_) Print("\n]}\n");
    }

  private:
    static std::string Array(const cli::Row& row) {
        nlohmann::json array = nlohmann::json::array();
        for (const auto& value : row) array.push_back(value ? nlohmann::json(*value) : nlohmann::json());
        return array.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }

    bool begun_ = false, first_ = true;
};

}  // namespace

std::unique_ptr<RowPrinter> MakeRowPrinter(bool csv, bool json) {
    if (csv) return std::make_unique<CsvPrinter>();
    if (json) return std::make_unique<JsonPrinter>();
    return std::make_unique<PlainPrinter>();
}

}  // namespace norvelis::cli
