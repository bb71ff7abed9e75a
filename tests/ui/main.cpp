#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

#include "sqlconv/odbc_folder.h"
#include "ui/skins/skin_style.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName("Norvelis");
    QApplication::setApplicationVersion("1.2.3");
    QApplication::setQuitOnLastWindowClosed(false);
    QFont font = QApplication::font();  // Whatever the machine's is.
    font.setPixelSize(13);
    QApplication::setFont(font);
    norvelis::ui::UseSkinStyle(application);
    const norvelis::OdbcFolder odbc;  // Before any screen asks the driver manager, which remembers its files.
    return RUN_ALL_TESTS();
}
