#include "ui/forms/window_settings.h"

#include <QGuiApplication>
#include <QScreen>

#include "base/ini.h"
#include "base/text.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

class Section {
  public:
    Section(const QWidget& window, const std::string& ini)
        : name_(window.objectName().toStdString()), ini_(ini) {}

    std::string Text(std::string_view key) const { return ReadINIValue(name_, key, ini_); }
    void SetText(std::string_view key, const std::string& text) const {
        WriteINIValue(name_, key, text, ini_);
    }

    std::optional<int> Pixels(std::string_view key) const {
        const std::string text = Text(key);
        if (!IsNumeric(text)) return std::nullopt;
        return static_cast<int>(std::clamp(Val(text) / kTwipsPerPixel, -1e5, 1e5));
    }
    void SetPixels(std::string_view key, int pixels) const {
        const auto twips = static_cast<float>(pixels * kTwipsPerPixel);
        SetText(key, QString::number(static_cast<double>(twips), 'g', 7).toStdString());
    }

  private:
    std::string name_;
    const std::string& ini_;
};

}  // namespace

void SavePosition(const QWidget& window, const std::string& ini) {
    const Section section(window, ini);
    section.SetPixels("Left", window.x());
    section.SetPixels("Top", window.y());
}

std::optional<QPoint> SavedPosition(const QWidget& window, const std::string& ini) {
    const Section section(window, ini);
    const auto left = section.Pixels("Left"), top = section.Pixels("Top");
    if (!left || !top) return std::nullopt;
    return QPoint(*left, *top);
}

void SaveGeometry(const QWidget& window, const std::string& ini) {
    const Section section(window, ini);
    section.SetText("WindowState", window.isMaximized() ? "2" : window.isMinimized() ? "1" : "0");
    if (window.isMaximized() || window.isMinimized()) return;
    SavePosition(window, ini);
    section.SetPixels("Height", window.height());
    section.SetPixels("Width", window.width());
}

void RestoreGeometry(QWidget& window, const std::string& ini) {
    const Section section(window, ini);
    const auto place = SavedPosition(window, ini);
    const auto width = section.Pixels("Width"), height = section.Pixels("Height");
    if (place && width && height && *width > 0 && *height > 0) {
        const QRect saved(*place, QSize(*width, *height));
        for (const QScreen* screen : QGuiApplication::screens()) {
            const QRect seen = screen->availableGeometry() & saved;
            if (seen.width() < 100 || seen.height() < 100) continue;
            window.move(saved.topLeft());
            window.resize(saved.size());
            break;
        }
    }
    // A program that starts minimised looks as if it did not start.
    if (section.Text("WindowState") == "2") window.setWindowState(Qt::WindowMaximized);
}

}  // namespace norvelis::ui
