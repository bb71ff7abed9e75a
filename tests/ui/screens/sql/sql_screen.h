#pragma once

#include <QAbstractButton>
#include <QTableView>
#include <algorithm>

#include "sqlconv/odbc_folder.h"
#include "ui/ui_app.h"

namespace norvelis::ui {

/// The program's real windows beside data sources of the test's own.
struct SqlScreen : ::testing::Test {
    OdbcFolder odbc;
    UiApp ui;
    Form* screen = nullptr;

    void Open(Screen which, const char* entry) {
        if (!ui.frame) ui.Start();
        ui.host.messages.clear();
        ui.Choose(entry);
        screen = ui.frame->Find(which);
        ASSERT_NE(screen, nullptr);
    }
    template <typename T = QWidget>
    T* In(const char* name) const {
        T* found = screen->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void Press(const char* button) {
        In<QAbstractButton>(button)->click();
        UiApp::Settle();
    }
    std::string Words(const char* label) const { return In<QLabel>(label)->text().toStdString(); }
    /// The cells of a grid, a text for each row.
    std::vector<std::string> Rows(const char* grid) const {
        const auto* model = In<QTableView>(grid)->model();
        std::vector<std::string> rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            std::string& cells = rows.emplace_back();
            for (int column = 0; column < model->columnCount(); ++column)
                cells += (column > 0 ? "|" : "") + model->index(row, column).data().toString().toStdString();
        }
        return rows;
    }
    void ClickRow(const char* grid, int row) {
        auto* view = In<QTableView>(grid);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(row, 0)).center());
        UiApp::Settle();
    }
    /// The person presses CANCEL once this is so, in the middle of a command.
    void CancelWhen(const std::function<bool()>& so) {
        ui.host.eachTurn = [this, so] {
            auto* cancel = screen->findChild<QAbstractButton*>("cmdCancel");
            if (cancel->isVisible() && cancel->isEnabled() && so()) cancel->click();
        };
    }
};

}  // namespace norvelis::ui
