#include "ui/screens/viewers/view_help.h"

#include <QFile>
#include <QFileInfo>
#include <QFontInfo>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"
#include "ui/controls/button_row.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/split.h"

namespace norvelis::ui {

namespace {

constexpr int kContentsWidth = 190, kBesidePictures = 60;
constexpr auto kContents = "index.html";

// A screen without a page of its own shows the contents.
constexpr std::pair<Screen, const char*> kPages[] = {
    {Screen::Treeview, "tree.html"},         {Screen::TreeviewMax, "tree.html"},
    {Screen::Listview, "list.html"},         {Screen::IsolateView, "isolate.html"},
    {Screen::Settings, "settings.html"},     {Screen::ConvertSql, "sql.html"},
    {Screen::Scheduler, "scheduler.html"},   {Screen::ReportViewer, "report.html"},
    {Screen::DrawingViewer, "drawing.html"}, {Screen::PrintPreview, "print.html"},
    {Screen::Findings, "findings.html"},     {Screen::Find, "find.html"},
    {Screen::TableProcedures, "sql.html"},   {Screen::Compare, "compare.html"}};

QString PageOf(Screen screen) {
    for (const auto& [each, page] : kPages) {
        if (each == screen) return page;
    }
    return kContents;
}

QString TextOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A page without its head and without the sizes of its pictures.
QString ShownPart(QString page) {
    static const QRegularExpression head("<header>.*</header>",
                                         QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression sizes("(<img[^>]*?) width=\"\\d+\" height=\"\\d+\"");
    return page.remove(head).replace(sizes, "\\1");
}

QString Style(const QPalette& palette) {
    return QString(
               "h1 { font-size: 20px; } h2 { font-size: 16px; } a { color: %1; text-decoration: none; }"
               "td, th { padding: 3px 14px 3px 0; text-align: left; }"
               "code, kbd { font-family: 'Liberation Mono'; } .quote { font-style: italic; }")
        .arg(palette.color(QPalette::Link).name());
}

}  // namespace

HelpBrowser::HelpBrowser(const QString& name, QWidget* parent) : QTextBrowser(parent) {
    setObjectName(name);
    setAccessibleName("Page of help");
    setOpenExternalLinks(true);
    QFont inPoints = font();  // Headings are larger by points, and none can be larger by pixels.
    inPoints.setPointSizeF(QFontInfo(inPoints).pointSizeF());
    setFont(inPoints);
    document()->setDocumentMargin(14);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
    switch (type) {
        case QTextDocument::HtmlResource:
            return ShownPart(TextOf(name.toLocalFile()));
        case QTextDocument::StyleSheetResource:
            return Style(palette());
        case QTextDocument::ImageResource: {
            const QImage picture(source().resolved(name).toLocalFile());
            const int room = viewport()->width() - kBesidePictures;
            return picture.width() > room && room > 0 ? picture.scaledToWidth(room, Qt::SmoothTransformation)
                                                      : picture;
        }
        default:
            return QTextBrowser::loadResource(type, name);
    }
}

ViewHelp::ViewHelp(const ScreenContext& context)
    : Form(context, "ViewHelp", "HELP", QSize(850, 510)),
      lstContents_(new QListWidget(this)),
      webTarget_(new HelpBrowser("webTarget", this)) {
    lstContents_->setObjectName("lstContents");
    lstContents_->setAccessibleName("Contents");
    connect(lstContents_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
        if (item) Show(item->data(Qt::UserRole).toString());
    });
    connect(webTarget_, &QTextBrowser::sourceChanged, this, &ViewHelp::MarkInContents);
    QSplitter* sides =
        Split(Qt::Horizontal, lstContents_, webTarget_, kContentsWidth, Body().width() - kContentsWidth);
    sides->setStretchFactor(1, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addLayout(Buttons());
    column->addWidget(sides, 1);
}

QBoxLayout* ViewHelp::Buttons() {
    auto* row = new ButtonRow(this);
    SkinButton* back =
        row->Add("cmdBack", "BACK", "The page before (Alt+Left)", [this] { webTarget_->backward(); });
    SkinButton* forward =
        row->Add("cmdForward", "FORWARD", "The page after (Alt+Right)", [this] { webTarget_->forward(); });
    for (SkinButton* button : {back, forward}) button->setEnabled(false);
    connect(webTarget_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(webTarget_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    lblFound_ = new ElidedLabel("lblFound", {}, this);
    row->addWidget(lblFound_, 1);
    txtFind_ = new QLineEdit(this);
    txtFind_->setObjectName("txtFind");
    txtFind_->setPlaceholderText("Find in the page");
    txtFind_->setAccessibleName("Text to find in the page");
    txtFind_->setTextMargins(5, 0, 5, 0);
    row->addWidget(txtFind_, 1);
    row->Add("cmdNext", "NEXT", "The next place of the text (F3)", [this] { Find(true); });
    connect(txtFind_, &QLineEdit::returnPressed, this, [this] { Find(true); });
    OnKeys(this, QKeySequence::Find, [this] {
        txtFind_->setFocus(Qt::ShortcutFocusReason);
        txtFind_->selectAll();
    });
    OnKeys(this, Qt::Key_F3, [this] { Find(true); });
    OnKeys(this, Qt::SHIFT | Qt::Key_F3, [this] { Find(false); });
    OnKeys(this, Qt::ALT | Qt::Key_Left, [this] { webTarget_->backward(); });
    OnKeys(this, Qt::ALT | Qt::Key_Right, [this] { webTarget_->forward(); });
    Context().commands.DisableWhileBusy(OnKeys(this, Qt::Key_Escape, &QWidget::close));  // Then it cancels.
    return row;
}

QString ViewHelp::PathOf(const QString& page) const {
    const QFileInfo contents(QString::fromStdString(App().AppPath(places::kHelp)));
    return contents.absolutePath() + '/' + page;
}

void ViewHelp::Take(const ScreenRequest& request) {
    const auto* help = std::get_if<ShowHelp>(&request);
    if (!help) return;
    const std::string contents = App().AppPath(places::kHelp);
    if (!FileExists(contents)) {
        App().host.MessageBox("The help pages are missing:" + std::string(kLineBreak) + contents);
        return;
    }
    App().host.OpenScreen(Screen::Help, false);
    FillContents();
    Show(PageOf(help->about));
    webTarget_->setFocus();
}

/// From the list of the first page, so that there is one.
void ViewHelp::FillContents() {
    if (lstContents_->count() > 0) return;
    static const QRegularExpression entry("<li><a href=\"([^\"]+)\">([^<]+)</a>");
    const QSignalBlocker nothingChosen(lstContents_);
    const auto add = [this](const QString& title, const QString& page) {
        auto* item = new QListWidgetItem(title, lstContents_);
        item->setData(Qt::UserRole, page);
    };
    add("Contents", kContents);
    auto entries = entry.globalMatch(TextOf(PathOf(kContents)));
    while (entries.hasNext()) {
        const QRegularExpressionMatch match = entries.next();
        add(match.captured(2), match.captured(1));
    }
}

void ViewHelp::Show(const QString& page) {
    const QString path = PathOf(page);
    if (!FileExists(path.toStdString())) {
        lblFound_->setText("This page is missing: " + path);
        return;
    }
    const QUrl url = QUrl::fromLocalFile(path);
    if (webTarget_->source() != url) webTarget_->setSource(url);
}

// The browser still names the page before when it reports another one.
void ViewHelp::MarkInContents(const QUrl& url) {
    lblFound_->setText({});
    const QString page = url.fileName();
    const QSignalBlocker shownAlready(lstContents_);
    for (int row = 0; row < lstContents_->count(); ++row) {
        if (lstContents_->item(row)->data(Qt::UserRole) == page) lstContents_->setCurrentRow(row);
    }
}

void ViewHelp::Find(bool forward) {
    const QString text = txtFind_->text();
    if (text.isEmpty()) return txtFind_->setFocus();
    const auto flags = forward ? QTextDocument::FindFlags() : QTextDocument::FindBackward;
    bool found = webTarget_->find(text, flags);
    if (!found) {
        webTarget_->moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
        found = webTarget_->find(text, flags);
    }
    lblFound_->setText(found ? QString() : '"' + text + "\" is not on this page");
}

void ViewHelp::SkinApplied() {
    webTarget_->reload();
}

}  // namespace norvelis::ui
