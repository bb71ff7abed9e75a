#include "ui/forms/drawing_tools.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

#include "browse/set_details.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_control.h"

namespace norvelis::ui {

namespace {

/// A drawing is in the folder of its schema.
std::string SchemaOf(const DrawingControl2& drawing) {
    return QFileInfo(drawing.Src()).dir().dirName().toStdString();
}

void TellOfSet(DrawingControl2& drawing, const ScreenContext& context, const drawing::walk::SetLine& line) {
    SetDetails set;
    if (context.app.gConnection)
        set = DescribeSet(*context.app.gConnection, SchemaOf(drawing), line.set, line.owner, line.member);
    else
        set.missing = "There is no dictionary to ask.";
    if (!set.missing.empty()) set.items = {{"From", line.owner}, {"To", line.member}, {"", set.missing}};
    drawing.Tell("Set " + QString::fromStdString(line.set), set.items);
}

void Export(const DrawingControl2& drawing, const ScreenContext& context, const commands::ExportForm& form) {
    const commands::ShownDrawing shown{drawing.Src().toStdString(), drawing.PageNumber() + 1,
                                       drawing.PageCount() > 1 ? drawing.PageName().toStdString() : ""};
    const auto out = commands::ChooseExport(context.app.host, shown, form);
    if (!out) return;
    context.commands.Run({"Export", Screen::Treeview}, [&] {
        commands::ExportDrawing(context.app.host, shown, *out, context.exportDrawing);
    });
}

}  // namespace

void AddDrawingTools(DrawingControl2& drawing, const ScreenContext& context) {
    DrawingControl2* control = &drawing;
    QObject::connect(
        control, &DrawingControl2::LineClicked, control,
        [control, &context](const drawing::walk::SetLine& line) { TellOfSet(*control, context, line); });
    auto* forms = new QMenu(control);
    for (const commands::ExportForm& form : commands::ExportForms()) {
        QAction* action =
            forms->addAction(QString("%1 (.%2)...").arg(QString(form.name), QString(form.ending)));
        action->setObjectName(QString("mnuExport_") + form.ending);
        QObject::connect(action, &QAction::triggered, control,
                         [control, &context, &form] { Export(*control, context, form); });
    }
    ContextMenu menu(control);
    menu.AddLine();
    QAction* submenu = menu.Add("E&xport as", [] {});
    submenu->setMenu(forms);
    context.commands.DisableWhileBusy(submenu);
}

}  // namespace norvelis::ui
