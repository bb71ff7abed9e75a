#include "commands/sheet_document.h"

#include <numeric>
#include <vector>

namespace norvelis::commands {

namespace {

class CountedPages : public engine::Pages {
  public:
    explicit CountedPages(int count) : count_(count) {}
    int Count() override { return count_; }
    engine::Ref<engine::Page> Item(int) override { return nullptr; }
    engine::Ref<engine::Page> Add() override { return nullptr; }

  private:
    int count_;
};

}  // namespace

engine::Ref<engine::Pages> SheetDocument::Pages() {
    return std::make_shared<CountedPages>(pageCount_);
}

bool SheetDocument::Print() {
    std::vector<int> all(static_cast<std::size_t>(pageCount_));
    std::iota(all.begin(), all.end(), 1);
    return print_(all);
}

bool SheetDocument::PrintPage(int page) {
    return page >= 1 && page <= pageCount_ && print_({page});
}

}  // namespace norvelis::commands
