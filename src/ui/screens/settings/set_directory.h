#pragma once

#include "ui/forms/form.h"

class QComboBox;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace norvelis::ui {

/// The picker window: drives, folders, files, and a path to type. With the file list it picks a file, without
/// it a folder.
class setDirectory : public Form {
    Q_OBJECT

  public:
    enum class Picks { File, Folder };
    setDirectory(const ScreenContext& context, Picks picks);

    /// Shows the lists of this folder; no choice is made by it.
    void Begin(const QString& folder);

  signals:
    void FileChosen(const QString& path);
    void FolderChosen(const QString& folder);  ///< At each change of folder, without the file list.

  protected:
    void LoadINISettings() override;
    void SaveINISettings() override;
    QPoint WaitingPlace() override;

  private:
    void Drive1_Change();
    void Dir1_Change(const QListWidgetItem* item);
    void File1_Click(const QListWidgetItem* item);
    void TakeTypedPath();
    void ChangeFolder(const QString& folder);
    void FillDrives(const QString& folder);
    void FillFolders();

    Picks picks_;
    QString folder_;
    QComboBox* Drive1_;
    QListWidget *Dir1_, *File1_;
    QLabel* lblHint_;
    QLineEdit* txtPath_;
};

}  // namespace norvelis::ui
