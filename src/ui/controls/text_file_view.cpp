#include "ui/controls/text_file_view.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <algorithm>
#include <limits>

#include "base/text.h"
#include "ui/controls/context_menu.h"

namespace norvelis::ui {

namespace {

constexpr int kMargin = 6;

}  // namespace

TextFileModel::TextFileModel(TextBytes bytes, QObject* parent) : QAbstractListModel(parent), bytes_(bytes) {
    connect(&indexing_, &QTimer::timeout, this, &TextFileModel::Step);
}

void TextFileModel::SetFile(const std::string& path) {
    auto lines = std::make_unique<viewer::ReportLines>(path);
    Clear();
    lines_ = std::move(lines);
    Step();
    indexing_.start(0);
}

void TextFileModel::Clear() {
    indexing_.stop();
    beginResetModel();
    lines_.reset();
    shown_ = 0;
    endResetModel();
}

void TextFileModel::Step() {
    if (!lines_->Step()) indexing_.stop();
    const auto count = static_cast<int>(std::min<std::uint64_t>(
        lines_->Count(), static_cast<std::uint64_t>(std::numeric_limits<int>::max() / 64)));
    if (count == shown_) return;
    beginInsertRows({}, shown_, count - 1);
    shown_ = count;
    endInsertRows();
}

int TextFileModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

QVariant TextFileModel::data(const QModelIndex& line, int role) const {
    if (role != Qt::DisplayRole || !line.isValid()) return {};
    const auto read = lines_->Read(static_cast<std::uint64_t>(line.row()), 1);
    if (read.empty()) return {};
    const std::string& text = read.front().text;
    return QString::fromStdString(bytes_ == TextBytes::Utf8 ? text : ToUtf8(text));
}

TextFileView::TextFileView(const QString& name, const QString& spoken, TextBytes bytes, QWidget* parent)
    : LineListView(parent), model_(new TextFileModel(bytes, this)) {
    setObjectName(name);
    setAccessibleName(spoken);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPixelSize(fontInfo().pixelSize());
    setFont(fixed);
    setModel(model_);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] { widest_ = 0; });
    ContextMenu menu(this);
    menu.Add("&Copy line", QKeySequence::Copy,
             [this] { QGuiApplication::clipboard()->setText(currentIndex().data().toString()); });
}

int TextFileView::WidestLine() const {
    return widest_;
}

// How wide a line is shows when it is read, which is when it is painted.
void TextFileView::paintEvent(QPaintEvent* event) {
    LineListView::paintEvent(event);
    int widest = widest_;
    for (QModelIndex line = indexAt({0, 0}); line.isValid() && visualRect(line).top() < viewport()->height();
         line = line.siblingAtRow(line.row() + 1))
        widest = std::max(widest, fontMetrics().horizontalAdvance(line.data().toString()) + kMargin);
    if (widest == widest_) return;
    widest_ = widest;
    scheduleDelayedItemsLayout();
}

}  // namespace norvelis::ui
