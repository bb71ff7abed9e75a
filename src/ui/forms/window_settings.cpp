#include "ui/forms/window_settings.h"

#include <QGuiApplication>
#include <QScreen>

#include "base/ini.h"
#include "base/text.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr auto kMaximized = "2", kNormal = "0";

/// Numbers of one window. Those of the frame and of dialogs have a section of their own; those of forms share
/// one, in which the keys begin with the form's name.
class Section {
  public:
    static Section Of(const QWidget& window, const std::string& ini) {
        return {window.objectName().toStdString(), {}, ini};
    }
    static Section OfForm(const QWidget& form, const std::string& ini) {
        return {"Forms", form.objectName().toStdString(), ini};
    }

    std::string Text(std::string_view key) const {
        return ReadINIValue(name_, prefix_ + std::string(key), ini_);
    }
    void SetText(std::string_view key, const std::string& text) const {
        WriteINIValue(name_, prefix_ + std::string(key), text, ini_);
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

    void SetRect(const QRect& rect) const {
        SetPixels("Left", rect.x());
        SetPixels("Top", rect.y());
        SetPixels("Height", rect.height());
        SetPixels("Width", rect.width());
    }
    /// Nothing unless all four are there and make a rectangle.
    std::optional<QRect> Rect() const {
        const auto left = Pixels("Left"), top = Pixels("Top"), width = Pixels("Width"),
                   height = Pixels("Height");
        if (!left || !top || !width || !height || *width <= 0 || *height <= 0) return std::nullopt;
        return QRect(*left, *top, *width, *height);
    }

  private:
    Section(std::string name, std::string prefix, const std::string& ini)
        : name_(std::move(name)), prefix_(std::move(prefix)), ini_(ini) {}

    std::string name_, prefix_;
    const std::string& ini_;
};

}  // namespace

void SavePosition(const QWidget& window, const std::string& ini) {
    const Section section = Section::Of(window, ini);
    section.SetPixels("Left", window.x());
    section.SetPixels("Top", window.y());
}

std::optional<QPoint> SavedPosition(const QWidget& window, const std::string& ini) {
    const Section section = Section::Of(window, ini);
    const auto left = section.Pixels("Left"), top = section.Pixels("Top");
    if (!left || !top) return std::nullopt;
    return QPoint(*left, *top);
}

void SaveGeometry(const QWidget& window, const std::string& ini) {
    const Section section = Section::Of(window, ini);
    section.SetText("WindowState", window.isMaximized() ? kMaximized : window.isMinimized() ? "1" : kNormal);
    if (!window.isMaximized() && !window.isMinimized()) section.SetRect(QRect(window.pos(), window.size()));
}

void RestoreGeometry(QWidget& window, const std::string& ini) {
    const Section section = Section::Of(window, ini);
    if (const auto saved = section.Rect()) {
        for (const QScreen* screen : QGuiApplication::screens()) {
            const QRect seen = screen->availableGeometry() & *saved;
            if (seen.width() < 100 || seen.height() < 100) continue;
            window.move(saved->topLeft());
            window.resize(saved->size());
            break;
        }
    }
    // A program that starts minimised looks as if it did not start.
    if (section.Text("WindowState") == kMaximized) window.setWindowState(Qt::WindowMaximized);
}

void SaveFormGeometry(const QWidget& form, const FormGeometry& geometry, const std::string& ini) {
    const Section section = Section::OfForm(form, ini);
    section.SetRect(geometry.normal);
    section.SetText("WindowState", geometry.maximized ? kMaximized : kNormal);
}

std::optional<FormGeometry> SavedFormGeometry(const QWidget& form, const std::string& ini) {
    const Section section = Section::OfForm(form, ini);
    const auto normal = section.Rect();
    if (!normal) return std::nullopt;
    return FormGeometry{*normal, section.Text("WindowState") == kMaximized};
}

void ForgetFormGeometry(const QWidget& form, const std::string& ini) {
    if (!SavedFormGeometry(form, ini)) return;  // Nothing is written for a form that was never left.
    const Section section = Section::OfForm(form, ini);
    for (const char* key : {"Left", "Top", "Height", "Width", "WindowState"}) section.SetText(key, {});
}

}  // namespace norvelis::ui
