// take_pictures APPLICATION-FOLDER OUT-FOLDER: a picture of every screen in every skin, for the documentation.
#include <QAbstractButton>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>

#include "core/paths.h"
#include "desktop/application.h"
#include "ui/child_area.h"
#include "ui/form.h"
#include "ui/frm_colors.h"
#include "ui/mdi_main_menu.h"
#include "ui/set_directory.h"
#include "ui/skin_colors.h"
#include "ui/skins_and_colors.h"
#include "ui/start_up.h"

using namespace norvelis;
using namespace norvelis::ui;

namespace {

/// Says nothing and agrees.
class SilentHost : public QtHost {
  public:
    Answer MessageBox(const Message& message) override {
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
    }
};

void LetPaint() {
    QEventLoop loop;
    QTimer::singleShot(150, &loop, &QEventLoop::quit);
    loop.exec();
}

class Photographer {
  public:
    Photographer(mdiMainMenu& frame, QString folder) : frame_(frame), folder_(std::move(folder)) {}

    void TakeAll() {
        for (const std::string& skin : InstalledSkins(frame_.App())) {
            ChangeSkin(frame_, skin);
            const QString name = QString::fromStdString(skin).toLower();
            TakeScreen(Screen::Treeview, "tree-" + name);
            TakeScreen(Screen::Settings, "settings-" + name);
            TakePicker(name);
            frame_.mnu_about();
            Take(frame_, "about-" + name);
            frame_.Area().Active()->close();
        }
    }

  private:
    void Take(QWidget& widget, const QString& name) {
        LetPaint();
        widget.grab().save(folder_ + "/" + name + ".png");
    }
    void TakeScreen(Screen screen, const QString& name) {
        frame_.OpenScreen(screen, false);
        Take(frame_, name);
        if (screen != Screen::Treeview) frame_.Find(screen)->close();
    }
    void TakePicker(const QString& skin) {
        setDirectory picker(frame_, setDirectory::Picks::File);
        picker.Load();
        picker.Begin(QString::fromStdString(frame_.App().AppPath("\\reportfiles")));
        picker.show();
        Take(picker, "picker-" + skin);
    }

    mdiMainMenu& frame_;
    QString folder_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: take_pictures APPLICATION-FOLDER OUT-FOLDER\n");
        return 2;
    }
    desktop::Application application(argc, argv);
    SilentHost host;
    SystemClock clock;
    AppState app(argv[1], host, clock, Random(1));
    mdiMainMenu frame(app, [](const std::exception& failure) {
        std::fprintf(stderr, "take_pictures: %s\n", failure.what());
        std::exit(1);
    });
    host.SetDisplay(&frame);
    QTimer::singleShot(0, &frame, [&] {
        frame.Run([&] { SubMain(app, frame); });
        frame.resize(1100, 720);
        frame.Find(Screen::Treeview)->findChild<QAbstractButton*>("ExpandAll")->click();
        Photographer(frame, argv[2]).TakeAll();
        QApplication::quit();
    });
    return QApplication::exec();
}
