#pragma once

#include <QRect>
#include <QWidget>
#include <optional>
#include <string>

// Positions of windows in Local.Ini: section named after the window, numbers in twips as the text of a
// single-precision number.
namespace norvelis::ui {

/// Left and Top alone, for small dialogs.
void SavePosition(const QWidget& window, const std::string& ini);
std::optional<QPoint> SavedPosition(const QWidget& window, const std::string& ini);

/// WindowState (0 normal, 1 minimised, 2 maximised) and, in the normal state, place and size.
void SaveGeometry(const QWidget& window, const std::string& ini);
/// Where a person left a screen inside the main frame.
struct FormGeometry {
    QRect normal;  ///< When it is not maximised.
    bool maximized;
};
/// In section "Forms", with keys that begin with the screen's name; forgotten ones have empty values.
void SaveFormGeometry(const QWidget& form, const FormGeometry& geometry, const std::string& ini);
std::optional<FormGeometry> SavedFormGeometry(const QWidget& form, const std::string& ini);
void ForgetFormGeometry(const QWidget& form, const std::string& ini);

/// Leaves the window as it is when nothing was saved or the place is on no screen any more.
void RestoreGeometry(QWidget& window, const std::string& ini);

}  // namespace norvelis::ui
