#include "ui/screens/registry.h"

#include <array>

#include "ui/screens/about/frm_about.h"
#include "ui/screens/browse/frm_findings.h"
#include "ui/screens/browse/frm_isolateview.h"
#include "ui/screens/browse/frm_treeview.h"
#include "ui/screens/browse/frm_treeviewmax.h"
#include "ui/screens/compare/frm_compare.h"
#include "ui/screens/find/frm_find.h"
#include "ui/screens/list/frm_listview.h"
#include "ui/screens/scheduler/frm_scheduler.h"
#include "ui/screens/settings/frm_colors.h"
#include "ui/screens/sql/frm_convert_sql.h"
#include "ui/screens/sql/table_procedures.h"
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
constexpr std::array<ScreenEntry, 16> kScreens = {{{Screen::Treeview, Make<frm_Treeview>, true},
                                                   {Screen::TreeviewMax, Make<frm_Treeviewmax>, true},
                                                   {Screen::Listview, Make<frm_Listview>, true},
                                                   {Screen::IsolateView, Make<frm_IsolateView>, true},
                                                   {Screen::Settings, Make<frmColors>, false},
                                                   {Screen::ConvertSql, Make<frmConvertSQL>, true},
                                                   {Screen::Scheduler, Make<frm_Scheduler>, false},
                                                   {Screen::ReportViewer, Make<ViewIDMSReport>, false},
                                                   {Screen::DrawingViewer, Make<ViewVisioFile>, false},
                                                   {Screen::About, Make<frmAbout>, false},
                                                   {Screen::Findings, Make<frm_Findings>, true},
                                                   {Screen::Help, Make<ViewHelp>, true},
                                                   {Screen::PrintPreview, Make<PrintPreview>, true},
                                                   {Screen::TableProcedures, Make<TableProcedures>, true},
                                                   {Screen::Find, Make<frmFind>, true},
                                                   {Screen::Compare, Make<frm_Compare>, true}}};

}  // namespace

std::span<const ScreenEntry> AllScreens() {
    return kScreens;
}

}  // namespace norvelis::ui
