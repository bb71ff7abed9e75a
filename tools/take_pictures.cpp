// take_pictures APPLICATION-FOLDER OUT-FOLDER: a picture of every screen in every skin, for the
// documentation.
#include <QAbstractButton>
#include <QEventLoop>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>
#include <QTimer>
#include <cstdio>

#include "core/paths.h"
#include "desktop/application.h"
#include "desktop/drawing_tools.h"
#include "ui/c_tree_view.h"
#include "ui/child_area.h"
#include "ui/drawing_control.h"
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
            TakeBrowsing(name);
            TakeScreen(Screen::Settings, "settings-" + name);
            TakePicker(name);
            frame_.mnu_about();
            Take(frame_, "about-" + name);
            frame_.Area().Active()->close();
        }
    }

  private:
    void Take(QWidget& widget, const QString& name) {
        LetShow();
        QPixmap picture = widget.grab();
        QPainter painter(&picture);
        for (auto* tip : frame_.findChildren<QWidget*>(QRegularExpression("^frmToolTip"))) {
            if (tip->isVisible()) painter.drawPixmap(tip->pos() - widget.mapToGlobal(QPoint()), tip->grab());
        }
        painter.end();
        picture.save(folder_ + "/" + name + ".png");
    }
    void LetShow() {
        for (const auto* drawing : frame_.findChildren<DrawingControl2*>()) {
            while (drawing->Loading()) LetPaint();
        }
        LetPaint();
    }
    void TakeScreen(Screen screen, const QString& name) {
        frame_.OpenScreen(screen, false);
        Take(frame_, name);
        if (screen != Screen::Treeview) frame_.Find(screen)->close();
    }
    /// The way through the browsing screens: the tree with the drawing of its first schema, a search, the
    /// mouse over a record, that record on its own and drawn, its drawing in the larger window, the larger
    /// tree.
    void TakeBrowsing(const QString& skin) {
        Form& screen = *frame_.Find(Screen::Treeview);
        auto& Tview = *screen.findChild<cTreeView*>("Tview");
        const RecordTree tree = Tview.Tree();
        NodeIndex record = 2;  // The first member of an entry record.
        while (tree.Level(record) < 3) ++record;
        const auto hover = [&](NodeIndex node) {
            const QModelIndex line = Tview.model()->index(static_cast<int>(node), 0);
            emit Tview.NodeHovered(node, QPoint(130, Tview.visualRect(line).center().y()));
        };
        hover(0);
        hover(kNoNode);
        TakeScreen(Screen::Treeview, "tree-" + skin);
        screen.findChild<QLineEdit*>("Text1")->setText(QString::fromStdString(tree.Text(record)));
        for (int i = 0; i < 2; ++i) Press(screen, "cmdSearch");
        hover(Tview.SelectedNode());
        Take(frame_, "hover-" + skin);
        hover(kNoNode);
        emit Tview.NodeClicked(record);
        Form& isolate = *frame_.Find(Screen::IsolateView);
        Press(isolate, "cmdDraw");
        Take(frame_, "isolate-" + skin);
        hover(0);
        hover(kNoNode);
        Press(screen, "Label1");
        LetShow();
        for (int i = 0; i < 3; ++i) Press(*frame_.Find(Screen::DrawingViewer), "cmdZoomIn");
        Take(frame_, "viewer-" + skin);
        frame_.Find(Screen::DrawingViewer)->close();
        Press(screen, "Max");
        Take(frame_, "treemax-" + skin);
        frame_.Find(Screen::TreeviewMax)->close();
        isolate.close();
    }
    static void Press(Form& form, const char* button) { form.findChild<QAbstractButton*>(button)->click(); }
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
    const auto engine = desktop::GiveDrawingTools(frame);
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
