#pragma once

#include <QIcon>

namespace norvelis::ui {

/// The program's icon: an owner record and its members.
QIcon ProgramIcon();

}  // namespace norvelis::ui
