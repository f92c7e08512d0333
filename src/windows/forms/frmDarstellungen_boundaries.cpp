#include "windows/forms/frmDarstellungen_boundaries.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>

#include "drawing/display_samples.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

DisplayBoundariesPage::DisplayBoundariesPage(DisplayContext& page_context, QWidget* parent)
    : DisplayPage(page_context, DisplayTab::boundaries, parent) {
    constexpr int rows = 4;
    auto* grid = new QGridLayout(this);
    for (std::size_t level = 1; level <= level_count; ++level) {
        const int place = static_cast<int>(level) - 1;
        grid->addWidget(build_frame(level), place % rows, place / rows);
    }
    grid->addWidget(add_standard_button(QStringLiteral("cmd_standard_verwgrenz")), rows - 1, 1,
                    Qt::AlignRight | Qt::AlignBottom);
    for (int row = 0; row < rows; ++row) {
        grid->setRowStretch(row, 1);
    }
}

PenPlaces DisplayBoundariesPage::places(std::size_t level) {
    return {{&settings().grenzdrw[level]}, {&settings().grenzrgb[level]}};
}

QGroupBox* DisplayBoundariesPage::build_frame(std::size_t level) {
    static constexpr const char* titles[] = {
        "Länder",      "Regierungsbezirke", "Kreise, kreisfreie Städte",
        "Gemeinden",   "sonstige (1)",      "sonstige (2)",
        "sonstige (3)"};
    const QString title = QString::fromUtf8(titles[level - 1]);
    const QString number = QString::number(level);
    auto* group = new QGroupBox(title, this);
    group->setObjectName(QStringLiteral("fra_verwgrenz_") + number);
    auto* grid = new QGridLayout(group);
    auto* picture = new SamplePicture(QStringLiteral("pic_verwgrenz_") + number,
                                      QStringLiteral("Muster ") + title, group);
    picture->set_room(20, 3);
    picture->set_draw([this, level](DrawingTarget& target, const SampleSize& size) {
        draw_boundary_sample(session(), context().measurer, target, size, level);
    });
    pictures_.push_back(picture);
    QPushButton* colour = add_button(QStringLiteral("cmd_verwgrenz_farbe_") + number,
                                     QStringLiteral("Farbe"), QStringLiteral("Farbe ") + title);
    QPushButton* width = add_button(QStringLiteral("cmd_verwgrenz_strich_") + number,
                                    QStringLiteral("Strich"), QStringLiteral("Strich ") + title);
    connect(colour, &QPushButton::clicked, this, [this, level] {
        ask_for_colour(QStringLiteral("dlg_farbe_verwgrenz"), places(level));
    });
    connect(width, &QPushButton::clicked, this, [this, level] {
        ask_for_width(QStringLiteral("Strichstärke Grenzen"), places(level), false);
    });
    grid->addWidget(picture, 0, 0, 2, 1);
    grid->addWidget(colour, 0, 1);
    grid->addWidget(width, 1, 1);
    grid->setColumnStretch(0, 1);
    return group;
}

void DisplayBoundariesPage::refresh() {
    for (SamplePicture* picture : pictures_) {
        picture->update();
    }
}

}  // namespace veldra
