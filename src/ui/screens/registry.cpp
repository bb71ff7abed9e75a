#include "ui/screens/registry.h"

#include <array>

#include "ui/screens/about/frm_about.h"
#include "ui/screens/browse/frm_findings.h"
#include "ui/screens/browse/frm_isolateview.h"
#include "ui/screens/browse/frm_treeview.h"
#include "ui/screens/browse/frm_treeviewmax.h"
#include "ui/screens/list/frm_listview.h"
#include "ui/screens/scheduler/frm_scheduler.h"
#include "ui/screens/settings/frm_colors.h"
#include "ui/screens/viewers/print_preview.h"
#include "ui/screens/viewers/view_help.h"
#include "ui/screens/viewers/view_idms_report.h"
#include "ui/screens/viewers/view_visio_file.h"

namespace norvelis::ui {

namespace {

template <typename T>
Form* Make(const ScreenContext& context) {
    return new T(context);
}

// A new screen gets its line here.
constexpr std::array<ScreenEntry, 13> kScreens = {
    {{Screen::Treeview, "Record Treeview", Make<frm_Treeview>, true},
     {Screen::TreeviewMax, "Record Treeview Max", Make<frm_Treeviewmax>, true},
     {Screen::Listview, "Record Listview", Make<frm_Listview>, true},
     {Screen::IsolateView, "Isolate View", Make<frm_IsolateView>, true},
     {Screen::Settings, "Setting", Make<frmColors>, false},
     {Screen::ConvertSql, "IDMS to SQL", nullptr, true},
     {Screen::Scheduler, "Scheduler", Make<frm_Scheduler>, false},
     {Screen::ReportViewer, "View IDMS Report File", Make<ViewIDMSReport>, false},
     {Screen::DrawingViewer, "Drawing Viewer", Make<ViewVisioFile>, false},
     {Screen::About, "About", Make<frmAbout>, false},
     {Screen::Findings, "Findings", Make<frm_Findings>, true},
     {Screen::Help, "Help", Make<ViewHelp>, true},
     {Screen::PrintPreview, "Print Preview", Make<PrintPreview>, true}}};

}  // namespace

std::span<const ScreenEntry> AllScreens() {
    return kScreens;
}

}  // namespace norvelis::ui
