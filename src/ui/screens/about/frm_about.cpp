#include "ui/screens/about/frm_about.h"

#include <QApplication>
#include <QHBoxLayout>

#include "ui/controls/picture_controls.h"
#include "ui/skins/art/skin_files.h"
#include "ui/skins/program_icon.h"
#include "ui/skins/skin_style.h"

namespace norvelis::ui {

frmAbout::frmAbout(const ScreenContext& context)
    : Form(context, "frmAbout", "ABOUT NORVELIS", QSize(500, 300)) {
    auto* picture = MakeLabel(this, "imgAbout", {});
    picture->setPixmap(ProgramIcon().pixmap(72, 72));
    auto* name = MakeLabel(this, "lblProduct", "Norvelis");
    QFont font = name->font();
    font.setPixelSize(qRound(24 * TextScale()));
    font.setWeight(QFont::DemiBold);
    name->setFont(font);
    auto* version = MakeLabel(this, "lblVersion", "Version " + QApplication::applicationVersion());
    auto* text =
        MakeLabel(this, "lblDescription",
                  "Draws and shows IDMS schema diagrams: reads a schema report into a dictionary, lets you "
                  "walk its records, sets and indexes, and draws Bachman diagrams as Visio drawings.");
    text->setWordWrap(true);
    auto* ok = new SkinButton("cmdOK", "OK", this);
    connect(ok, &QPushButton::clicked, this, &QWidget::close);

    auto* words = new QVBoxLayout;
    words->setSpacing(6);
    words->addWidget(name);
    words->addWidget(version);
    words->addSpacing(10);
    words->addWidget(text);
    words->addStretch();
    words->addWidget(ok, 0, Qt::AlignRight);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Body().left() + 28, Body().top() + 26, 28, 22);
    row->setSpacing(26);
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(words, 1);
    setLayout(row);
}

void frmAbout::Place() {
    MoveTo(parentWidget()->rect().center() - rect().center());
}

void frmAbout::LoadINISettings() {
    SetTag2(kPickerTag);
}

}  // namespace norvelis::ui
