#include "windows/forms/frmDarstellungen_observations.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "text/numbers.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

DisplayObservationsPage::DisplayObservationsPage(DisplayContext& page_context, SampleMedium medium,
                                                 QWidget* parent)
    : DisplayPage(page_context,
                  medium == SampleMedium::plot ? DisplayTab::observations_plot
                                               : DisplayTab::observations_screen,
                  parent),
      medium_(medium) {
    static constexpr Frame frames[] = {
        {"frm_terstrecken", "terstrecken", "Strecken, Höhenunterschiede (terr.)", "Signatur&größe:",
         ObservationSample::terrestrial, &Settings::Stquerscr, &Settings::Stquerplo},
        {"fra_gpsstrecken", "gpsstrecken", "GPS-Strecken, GPS-Höhenunterschiede, GPS-Raumvektoren",
         "S&ignaturgröße:", ObservationSample::satellite, &Settings::Stkreuscr,
         &Settings::Stkreuplo},
        {"fra_orientierung", "orientierung", "Orientierungsrichtungen",
         "&Länge:", ObservationSample::orientation, &Settings::lenoriscr, &Settings::lenoriplo}};
    auto* column = new QVBoxLayout(this);
    for (const Frame& frame : frames) {
        column->addWidget(build_frame(frame), 1);
    }
    QPushButton* standard = add_standard_button(medium == SampleMedium::plot
                                                    ? QStringLiteral("cmd_standard_art_plott")
                                                    : QStringLiteral("cmd_standard_art_screen"));
    column->addWidget(standard, 0, Qt::AlignRight);
}

QGroupBox* DisplayObservationsPage::build_frame(const Frame& frame) {
    const bool plot = medium_ == SampleMedium::plot;
    const QString suffix = plot ? QStringLiteral("_plott") : QStringLiteral("_screen");
    const QString stem = QString::fromUtf8(frame.stem);
    const QString title = QString::fromUtf8(frame.title);
    auto* group = new QGroupBox(title, this);
    group->setObjectName(QString::fromUtf8(frame.frame) + suffix);
    auto* grid = new QGridLayout(group);
    auto* picture = new SamplePicture(QStringLiteral("pic_") + stem + suffix,
                                      QStringLiteral("Muster ") + title, group);
    picture->set_room(40, 4);
    const ObservationSample sample = frame.sample;
    picture->set_draw([this, sample](DrawingTarget& target, const SampleSize& size) {
        draw_observation_sample(session(), context().measurer, target, size, medium_, sample);
    });
    pictures_.push_back(picture);
    double Settings::*const value = plot ? frame.plot : frame.screen;
    QLineEdit* box = add_number_box(
        QStringLiteral("txt_") + stem + QStringLiteral("_sig") + suffix, title,
        plot ? "#####0.0##" : "#####0.###", [this, value] { return settings().*value; },
        [this, value](std::string_view text) { settings().*value = zahl_wert(text); });
    QLabel* label = add_buddy(QStringLiteral("lbl_") + stem + QStringLiteral("_sig") + suffix,
                              QString::fromUtf8(frame.label), box);
    give_room(*label, QStringLiteral("Signaturgröße:"));
    grid->addWidget(picture, 0, 0, 2, 1);
    grid->addWidget(label, 0, 1);
    grid->addWidget(box, 0, 2);
    grid->addWidget(new QLabel(plot ? QStringLiteral("mm") : QStringLiteral("Twips"), group), 0, 3);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(0, 1);
    return group;
}

void DisplayObservationsPage::refresh() {
    show_boxes();
    for (SamplePicture* picture : pictures_) {
        picture->update();
    }
}

}  // namespace veldra
