// norvelis: the desktop program. It has no options; its folder is the application folder.
#include "desktop/application.h"

int main(int argc, char** argv) {
    norvelis::desktop::Application application(argc, argv);
    return application.Run(QCoreApplication::applicationDirPath().toStdString());
}
