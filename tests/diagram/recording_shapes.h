#pragma once

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "engine/drawing_engine.h"
#include "recorder.h"

// Shapes of a recording engine: their cells, texts and links.
namespace norvelis::recording {

inline std::string Label(const FakeShape& shape) {
    return shape.id == 0 ? "ThePage" : fmt::format("Sheet.{}", shape.id);
}

/// Byte offset of the n-th character.
inline std::size_t Offset(const std::string& utf8, int position) {
    std::size_t at = 0;
    for (int seen = 0; at < utf8.size(); ++at) {
        if ((static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80) continue;
        if (seen++ == position) break;
    }
    return at;
}

class CellHandle : public engine::Cell {
  public:
    CellHandle(R r, std::shared_ptr<FakeShape> shape, std::string name)
        : r_(std::move(r)), shape_(std::move(shape)), name_(std::move(name)) {}
    std::string Path() const { return Label(*shape_) + "!" + name_; }
    bool SetFormula(const std::string& f) override {
        return r_->Do(fmt::format("{}.Formula = {}", Path(), f));
    }
    bool SetFormulaU(const std::string& f) override {
        return r_->Do(fmt::format("{}.FormulaU = {}", Path(), f));
    }
    std::optional<double> ResultIU() override {
        if (!r_->Step("ResultIU")) return std::nullopt;
        if (const auto scripted = r_->values.find(Path()); scripted != r_->values.end())
            return scripted->second;
        const auto written = shape_->values.find(UpperCase(name_));
        return written == shape_->values.end() ? 0.0 : written->second;
    }
    bool SetResultIU(double v) override { return Write("ResultIU", v); }
    bool SetResult(engine::Unit unit, double v) override {
        return Write(fmt::format("Result({})", static_cast<int>(unit)), v);
    }
    bool GlueTo(const engine::Ref<engine::Cell>& cell) override {
        const auto other = std::dynamic_pointer_cast<CellHandle>(cell);
        return r_->Do(fmt::format("{}.GlueTo {}", Path(), other ? other->Path() : "nothing")) && other;
    }

  private:
    bool Write(const std::string& how, double v) {
        if (!r_->Do(fmt::format("{}.{} = {}", Path(), how, v))) return false;
        shape_->values[UpperCase(name_)] = v;
        return true;
    }
    R r_;
    std::shared_ptr<FakeShape> shape_;
    std::string name_;
};

engine::Ref<engine::Document> DrawingOf(const R& r);

class CharactersHandle : public engine::Characters {
  public:
    CharactersHandle(R r, std::shared_ptr<FakeShape> shape)
        : r_(std::move(r)), shape_(std::move(shape)), end_(engine::CharacterCount(shape_->text)) {}
    std::optional<int> Begin() override { return r_->Give("Begin", std::optional(begin_)); }
    std::optional<int> End() override { return r_->Give("End", std::optional(end_)); }
    bool SetBegin(int p) override {
        if (!r_->Do(fmt::format("{}.Begin = {}", Path(), p))) return false;
        begin_ = Clamp(p);
        end_ = std::max(begin_, end_);
        return true;
    }
    bool SetEnd(int p) override {
        if (!r_->Do(fmt::format("{}.End = {}", Path(), p))) return false;
        end_ = Clamp(p);
        begin_ = std::min(begin_, end_);
        return true;
    }
    std::optional<std::string> Text() override {
        if (!r_->Step("Text")) return std::nullopt;
        const auto from = Offset(shape_->text, begin_);
        return shape_->text.substr(from, Offset(shape_->text, end_) - from);
    }
    bool SetText(const std::string& text) override {
        if (!r_->Do(fmt::format("{}.Text = \"{}\"", Path(), text))) return false;
        const auto from = Offset(shape_->text, begin_);
        shape_->text.replace(from, Offset(shape_->text, end_) - from, text);
        end_ = begin_ + engine::CharacterCount(text);
        return true;
    }
    std::optional<int> CharCount() override { return r_->Give("CharCount", std::optional(end_ - begin_)); }
    bool SetCharProps(engine::CharProperty property, int value) override {
        const char* name = property == engine::CharProperty::Font    ? "Font"
                           : property == engine::CharProperty::Color ? "Color"
                           : property == engine::CharProperty::Style ? "Style"
                                                                     : "Size";
        return r_->Do(fmt::format("{}.CharProps {} = {}", Path(), name, value));
    }
    bool SetParaProps(engine::ParaProperty property, int value) override {
        return r_->Do(fmt::format("{}.ParaProps {} = {}", Path(), static_cast<int>(property), value));
    }
    engine::Ref<engine::Document> Document() override { return r_->Give("Document", DrawingOf(r_)); }

  private:
    std::string Path() const { return fmt::format("{}.Characters[{},{}]", Label(*shape_), begin_, end_); }
    int Clamp(int p) const { return std::clamp(p, 0, engine::CharacterCount(shape_->text)); }
    R r_;
    std::shared_ptr<FakeShape> shape_;
    int begin_ = 0, end_ = 0;
};

class HyperlinkHandle : public engine::Hyperlink {
  public:
    HyperlinkHandle(R r, std::string shape) : r_(std::move(r)), shape_(std::move(shape)) {}
    bool SetSubAddress(const std::string& a) override {
        return r_->Do(fmt::format("{}.Hyperlink.SubAddress = {}", shape_, a));
    }
    bool SetAddress(const std::string& a) override {
        return r_->Do(fmt::format("{}.Hyperlink.Address = {}", shape_, a));
    }
    bool SetDescription(const std::string& d) override {
        return r_->Do(fmt::format("{}.Hyperlink.Description = {}", shape_, d));
    }

  private:
    R r_;
    std::string shape_;
};

engine::Ref<engine::Page> PageOf(const R& r);
engine::Ref<engine::Shapes> ShapesOf(const R& r, std::vector<std::shared_ptr<FakeShape>> shapes);

class MasterHandle : public engine::Master {
  public:
    MasterHandle(R r, std::string name) : r_(std::move(r)), name_(std::move(name)) {}
    std::string Name() override { return r_->Give("Name", name_); }
    engine::Ref<engine::Shapes> Shapes() override {
        auto shape = std::make_shared<FakeShape>();
        shape->id = -1;
        return r_->Give("Shapes", ShapesOf(r_, {shape}));
    }
    engine::Ref<engine::Master> Open() override {
        return r_->Do(fmt::format("Master \"{}\".Open", name_)) ? std::make_shared<MasterHandle>(r_, name_)
                                                                : nullptr;
    }
    bool Close() override { return r_->Do(fmt::format("Master \"{}\".Close", name_)); }

  private:
    R r_;
    std::string name_;
};

class ShapeHandle : public engine::Shape {
  public:
    ShapeHandle(R r, std::shared_ptr<FakeShape> shape) : r_(std::move(r)), shape_(std::move(shape)) {}
    const std::string& MasterName() const { return shape_->master; }
    int ID() override { return r_->Give("ID", shape_->id); }
    std::string Name() override { return r_->Give("Name", shape_->name); }
    bool SetName(const std::string& name) override {
        if (!r_->Do(fmt::format("{}.Name = {}", Label(*shape_), name))) return false;
        shape_->name = name;
        return true;
    }
    bool SetText(const std::string& text) override {
        if (!r_->Do(fmt::format("{}.Text = \"{}\"", Label(*shape_), text))) return false;
        shape_->text = text;
        return true;
    }
    engine::Ref<engine::Master> Master() override {
        if (shape_->master.empty() || !r_->Step("Master")) return nullptr;
        return std::make_shared<MasterHandle>(r_, shape_->master);
    }
    engine::Ref<engine::Page> ContainingPage() override { return r_->Give("ContainingPage", PageOf(r_)); }
    engine::Ref<engine::Shapes> Shapes() override {
        std::vector<std::shared_ptr<FakeShape>> inner;
        for (const int id : shape_->subShapes) inner.push_back(r_->Find(id));
        return r_->Give("Shapes", ShapesOf(r_, std::move(inner)));
    }
    engine::Ref<engine::Characters> Characters() override {
        return r_->Step("Characters") ? std::make_shared<CharactersHandle>(r_, shape_) : nullptr;
    }
    engine::Ref<engine::Cell> Cells(const std::string& name) override {
        return r_->Step("Cells") ? std::make_shared<CellHandle>(r_, shape_, name) : nullptr;
    }
    engine::Ref<engine::Cell> CellsU(const std::string& name) override { return Cells(name); }
    engine::Ref<engine::Cell> CellsSRC(const engine::CellAddress& a) override {
        return Cells(fmt::format("{},{},{}", a.section, a.row, a.cell));
    }
    bool CellExistsU(const std::string& name, int) override {
        const auto& cells = r_->existingCells;
        return r_->Step("CellExistsU") && std::find(cells.begin(), cells.end(), name) != cells.end();
    }
    std::optional<int> AddRow(int section, int row, int tag) override {
        if (!r_->Do(fmt::format("{}.AddRow {}, {}, {}", Label(*shape_), section, row, tag)))
            return std::nullopt;
        return row;
    }
    engine::Ref<engine::Hyperlink> AddHyperlink() override {
        if (!r_->Do(Label(*shape_) + ".AddHyperlink")) return nullptr;
        return std::make_shared<HyperlinkHandle>(r_, Label(*shape_));
    }
    bool SendToBack() override {
        if (!r_->Do(Label(*shape_) + ".SendToBack")) return false;
        const auto at = std::find(r_->shapes.begin(), r_->shapes.end(), shape_);
        if (at != r_->shapes.end()) std::rotate(r_->shapes.begin(), at, at + 1);
        return true;
    }

  private:
    R r_;
    std::shared_ptr<FakeShape> shape_;
};

class ShapesHandle : public engine::Shapes {
  public:
    ShapesHandle(R r, std::vector<std::shared_ptr<FakeShape>> shapes)
        : r_(std::move(r)), shapes_(std::move(shapes)) {}
    int Count() override { return r_->Give("Count", static_cast<int>(shapes_.size())); }
    engine::Ref<engine::Shape> Item(int index) override {
        if (index < 1 || index > static_cast<int>(shapes_.size()) || !r_->Step("Shapes.Item")) return nullptr;
        return std::make_shared<ShapeHandle>(r_, shapes_[static_cast<std::size_t>(index - 1)]);
    }
    engine::Ref<engine::Shape> ItemFromID(int id) override {
        for (const auto& shape : shapes_) {
            if (shape->id == id && r_->Step("ItemFromID")) return std::make_shared<ShapeHandle>(r_, shape);
        }
        return nullptr;
    }

  private:
    R r_;
    std::vector<std::shared_ptr<FakeShape>> shapes_;
};

}  // namespace norvelis::recording
