#include "ui/screens/settings/set_directory.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QStorageInfo>
#include <QStyle>
#include <QStyledItemDelegate>

#include "base/paths.h"
#include "ui/controls/context_menu.h"
#include "ui/forms/window_settings.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr int kPath = Qt::UserRole, kDepth = kPath + 1;

/// Folders inside others are further in, with their pictures.
class Indented : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        constexpr int kStep = 14;
        QStyledItemDelegate::initStyleOption(option, index);
        option->rect.setLeft(option->rect.left() + kStep * index.data(kDepth).toInt());
    }
};

/// The roots of the file system, the person's own folder, and what is plugged in.
QStringList Drives() {
    QStringList drives;
    for (const QFileInfo& root : QDir::drives()) drives << root.absoluteFilePath();
    drives << QDir::homePath();
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const QString root = volume.rootPath();
        if (root.startsWith("/media/") || root.startsWith("/mnt/") || root.startsWith("/run/media/"))
            drives << root;
    }
    drives.removeDuplicates();
    return drives;
}

void AddItem(QListWidget* list, QStyle::StandardPixmap icon, const QString& text, const QString& path,
             int depth = 0) {
    auto* item = new QListWidgetItem(list->style()->standardIcon(icon), text, list);
    item->setData(kPath, path);
    item->setData(kDepth, depth);
}

/// The context menu of a list: its click under this caption, and the path for the clipboard.
void AddMenu(QListWidget* list, const QString& clickCaption) {
    ContextMenu menu(list);
    menu.Add(clickCaption + "\tReturn", [list] {
        if (QListWidgetItem* item = list->currentItem()) emit list->itemActivated(item);
    });
    menu.Add("&Copy path", QKeySequence::Copy, [list] {
        if (const QListWidgetItem* item = list->currentItem())
            QGuiApplication::clipboard()->setText(item->data(kPath).toString());
    });
}

}  // namespace

setDirectory::setDirectory(const ScreenContext& context, Picks picks)
    : Form(context, "setDirectory", picks == Picks::File ? "SELECT IDMS REPORT FILE" : "SELECT VISIO FOLDER",
           QSize(500, 300)),
      picks_(picks) {
    Drive1_ = new QComboBox(this);
    Drive1_->setObjectName("Drive1");
    Drive1_->setAccessibleName("Drives");
    Drive1_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    Dir1_ = new QListWidget(this);
    Dir1_->setObjectName("Dir1");
    Dir1_->setAccessibleName("Folders");
    Dir1_->setItemDelegate(new Indented(Dir1_));
    File1_ = new QListWidget(this);
    File1_->setObjectName("File1");
    File1_->setAccessibleName("Files");
    File1_->setVisible(picks == Picks::File);
    lblHint_ = MakeLabel(this, "lblHint", {});
    lblHint_->setWordWrap(true);
    txtPath_ = new QLineEdit(this);
    txtPath_->setObjectName("txtPath");
    txtPath_->setAccessibleName("Path");
    for (QListWidget* list : {Dir1_, File1_}) list->setIconSize(QSize(16, 16));
    AddMenu(Dir1_, "&Open folder");
    AddMenu(File1_, "&Take this report");
    connect(Drive1_, &QComboBox::activated, this, &setDirectory::Drive1_Change);
    connect(Dir1_, &QListWidget::itemActivated, this, &setDirectory::Dir1_Change);
    connect(File1_, &QListWidget::itemClicked, this, &setDirectory::File1_Click);
    connect(File1_, &QListWidget::itemActivated, this, &setDirectory::File1_Click);
    connect(txtPath_, &QLineEdit::returnPressed, this, &setDirectory::TakeTypedPath);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(18, Body().top() + 12, 18, 12);
    grid->setSpacing(8);
    const int columns = picks == Picks::File ? 1 : 2;  // Of the grid's two, for drives and folders.
    grid->addWidget(Drive1_, 0, 0, 1, columns);
    grid->addWidget(Dir1_, 1, 0, 1, columns);
    if (picks == Picks::File) grid->addWidget(File1_, 0, 1, 2, 1);
    grid->addWidget(lblHint_, 2, 0, 1, 2);
    grid->addWidget(txtPath_, 3, 0, 1, 2);
    for (const int column : {0, 1}) grid->setColumnStretch(column, 1);
}

void setDirectory::LoadINISettings() {
    SetTag2(kPickerTag);
}

void setDirectory::SaveINISettings() {
    SavePosition(*this, App().gLocalIni);
}

QPoint setDirectory::WaitingPlace() {
    return SavedPosition(*this, App().gLocalIni).value_or(Form::WaitingPlace());
}

void setDirectory::Begin(const QString& folder) {
    folder_ = QDir::cleanPath(folder);
    FillDrives(folder_);
    FillFolders();
}

void setDirectory::FillDrives(const QString& folder) {
    Drive1_->clear();
    int longest = -1;
    for (const QString& drive : Drives()) {
        Drive1_->addItem(style()->standardIcon(QStyle::SP_DriveHDIcon), drive);
        const bool holds = folder == drive || folder.startsWith(drive.endsWith('/') ? drive : drive + "/");
        if (holds && (longest < 0 || drive.size() > Drive1_->itemText(longest).size()))
            longest = Drive1_->count() - 1;
    }
    Drive1_->setCurrentIndex(longest);
}

// The folders that lead to the present one, each further in, then the folders it holds.
void setDirectory::FillFolders() {
    Dir1_->clear();
    File1_->clear();
    QStringList path;
    for (QDir dir(folder_);;) {
        path.prepend(dir.absolutePath());
        if (dir.isRoot() || !dir.cdUp()) break;
    }
    int depth = 0;
    for (const QString& step : path) {
        const QString name = QDir(step).isRoot() ? step : QFileInfo(step).fileName();
        AddItem(Dir1_, QStyle::SP_DirOpenIcon, name, step, depth++);
    }
    const int present = Dir1_->count() - 1;
    const QDir here(folder_);
    for (const QFileInfo& folder :
         here.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase))
        AddItem(Dir1_, QStyle::SP_DirIcon, folder.fileName(), folder.absoluteFilePath(), depth);
    for (const QFileInfo& file : here.entryInfoList(QDir::Files, QDir::Name | QDir::IgnoreCase))
        AddItem(File1_, QStyle::SP_FileIcon, file.fileName(), file.absoluteFilePath());
    Dir1_->setCurrentRow(present);
    Dir1_->scrollToItem(Dir1_->item(present), QAbstractItemView::PositionAtTop);
    txtPath_->setText(folder_);
    txtPath_->setToolTip(folder_);
    lblHint_->setText(
        picks_ == Picks::File
            ? "Click the report, or type its path and press Return."
            : "Double click a folder, or type its path and press Return: each choice is kept at "
              "once. Close the window when the path is right.");
}

void setDirectory::Drive1_Change() {
    ChangeFolder(Drive1_->currentText());
}

void setDirectory::Dir1_Change(const QListWidgetItem* item) {
    ChangeFolder(item->data(kPath).toString());
}

// As it is in a message or on another system, too: backslashes, letters in the wrong case.
void setDirectory::TakeTypedPath() {
    const QString typed = QDir(folder_).absoluteFilePath(
        QString::fromStdString(NativePath(txtPath_->text().trimmed().toStdString())));
    const std::string path = Resolve(typed.toStdString());
    if (FolderExists(path)) {
        ChangeFolder(QDir::cleanPath(QString::fromStdString(path)));
    } else if (picks_ == Picks::File && FileExists(path)) {
        emit FileChosen(QString::fromStdString(path));
    } else {
        lblHint_->setText(picks_ == Picks::File ? "There is no such file or folder."
                                                : "There is no such folder.");
        txtPath_->selectAll();
    }
}

void setDirectory::ChangeFolder(const QString& folder) {
    folder_ = folder;
    FillFolders();
    if (picks_ == Picks::Folder) emit FolderChosen(folder.endsWith('/') ? folder : folder + "/");
}

void setDirectory::File1_Click(const QListWidgetItem* item) {
    emit FileChosen(item->data(kPath).toString());
}

}  // namespace norvelis::ui
