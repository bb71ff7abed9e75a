#pragma once

#include <functional>

#include "engine/drawing_engine.h"

namespace norvelis::commands {

/// A drawing as a print preview shows it, whoever made it: a document that is printed by PrintDocument and
/// can do nothing else.
class SheetDocument : public engine::Document {
  public:
    /// Prints these pages, counted from 1, as one job; false when they were not printed.
    using PrintPages = std::function<bool(const std::vector<int>& pages)>;

    SheetDocument(int pageCount, PrintPages print) : pageCount_(pageCount), print_(std::move(print)) {}

    engine::Ref<engine::Pages> Pages() override;
    bool Print() override;
    bool PrintPage(int page) override;

    engine::Ref<engine::Application> Application() override { return nullptr; }
    engine::Ref<engine::Masters> Masters() override { return nullptr; }
    engine::Ref<engine::Fonts> Fonts() override { return nullptr; }
    engine::Ref<engine::Master> Drop(const engine::Ref<engine::Master>&, double, double) override {
        return nullptr;
    }
    engine::SaveResult SaveAs(const std::string&) override { return {}; }
    bool SetFooterLeft(const std::string&) override { return false; }

  private:
    int pageCount_;
    PrintPages print_;
};

}  // namespace norvelis::commands
