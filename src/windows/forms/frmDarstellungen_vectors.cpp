#include "windows/forms/frmDarstellungen_vectors.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "drawing/display_samples.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

DisplayVectorsPage::DisplayVectorsPage(DisplayContext& page_context, DisplayTab tab,
                                       QWidget* parent)
    : DisplayPage(page_context, tab, parent),
      first_slot_(tab == DisplayTab::vectors_height ? 4 : 1) {
    auto* column = new QVBoxLayout(this);
    for (std::size_t frame = 0; frame < frame_count; ++frame) {
        column->addWidget(build_frame(frame), 1);
    }
    column->addWidget(build_buttons());
}

QString DisplayVectorsPage::either(const char* position, const char* height) const {
    return QString::fromUtf8(is_height() ? height : position);
}

QGroupBox* DisplayVectorsPage::build_frame(std::size_t frame) {
    static constexpr const char* names[] = {"fra_laende", "fra_lrestkl", "fra_lfehl",
                                            "fra_haende", "fra_hrestk",  "fra_hfehl"};
    static constexpr const char* titles[] = {
        "Lageänderungen:",  "Lagerestklaffungen:",  "Lagefehlerellipsen:",
        "Höhenänderungen:", "Höhenrestklaffungen:", "Mittlere Höhenfehler:"};
    constexpr std::size_t ellipses = 3;
    const std::size_t slot = first_slot_ + frame;
    const QString title = QString::fromUtf8(titles[slot - 1]);
    auto* group = new QGroupBox(title, this);
    group->setObjectName(QString::fromUtf8(names[slot - 1]));
    auto* row = new QHBoxLayout(group);
    const bool last = frame == frame_count - 1;
    for (std::size_t index = 2 * frame; index < (last ? vector_item_count : 2 * frame + 2);
         ++index) {
        add_sample(group, index);
        row->addWidget(pictures_[index], 1);
    }
    auto* grid = new QGridLayout;
    QComboBox* combo = add_scale(frame, title.chopped(1));
    const QString number = QString::number(frame + 1);
    grid->addWidget(add_buddy(either("lbl_vekt_mass_lage_", "lbl_vekt_mass_höhe_") + number,
                              QStringLiteral("Maßstab 1:"), combo),
                    0, 0);
    grid->addWidget(combo, 0, 1);
    QLabel* unit =
        add_label(either("lblEinheitLage_", "lblEinheitHöhe_") + number, QStringLiteral("cm"));
    int line = 1;
    for (const bool control_points : {true, false}) {
        if (slot != ellipses || !control_points) {
            grid->addWidget(add_maximum(slot, control_points), line, 0, 1, 2);
            ++line;
        }
    }
    grid->addWidget(unit, 1, 2, line - 1, 1);
    grid->setRowStretch(line, 1);
    row->addLayout(grid);
    return group;
}

void DisplayVectorsPage::add_sample(QWidget* group, std::size_t index) {
    const VectorItem shown = vector_item(first_slot_, index);
    const QString what = QString::fromStdString(vector_caption(shown)).mid(4);
    auto* picture =
        new SamplePicture(either("picVektorLage_", "picVektorHöhe_") + QString::number(index + 1),
                          QStringLiteral("Muster ") + what, group);
    picture->set_room(20, 4);
    picture->set_choosable(true);
    picture->setToolTip(what);
    picture->set_draw([this, shown](DrawingTarget& target, const SampleSize& size) {
        draw_vector_sample(session(), context().measurer, target, size, shown.slot,
                           shown.control_points, vector_maximum(session(), shown));
    });
    connect(picture, &SamplePicture::chosen, this,
            [this, index] { choose(static_cast<int>(index)); });
    connect(picture, &SamplePicture::stepped, this,
            [this, index](int by) { choose(static_cast<int>(index) + by); });
    pictures_[index] = picture;
}

QComboBox* DisplayVectorsPage::add_scale(std::size_t frame, const QString& what) {
    QComboBox* combo = make_scale_combo(
        either("cbo_vekt_mass_lage_", "cbo_vekt_mass_höhe_") + QString::number(frame + 1),
        QStringLiteral("Maßstab ") + what, this);
    for (const std::string& text : offered_vector_scales()) {
        combo->addItem(QString::fromStdString(text));
    }
    const std::size_t slot = first_slot_ + frame;
    ScaleCombo::Rules rules{
        ScaleBox::vector, vector_scale_entry,
        [this, slot] { return vector_scale_text(session().vektor_massstab[slot]); },
        [this, slot](double value) { set_vector_scale(session(), slot, value); }};
    scales_.push_back(std::make_unique<ScaleCombo>(*combo, std::move(rules), context()));
    return combo;
}

QLineEdit* DisplayVectorsPage::add_maximum(std::size_t slot, bool control_points) {
    QLineEdit* box = add_line_edit(
        either("txtMaxwertLage_", "txtMaxwertHöhe_") + QString::number(maxima_.size() + 1),
        QStringLiteral("größter Wert"));
    box->setReadOnly(true);
    box->setFrame(false);
    box->setFocusPolicy(Qt::ClickFocus);
    box->setMinimumWidth(
        QFontMetrics(box->font())
            .horizontalAdvance(QStringLiteral("max. AP: 0000.0 (nicht dargestellt) ")));
    QPalette palette = box->palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    box->setPalette(palette);
    maxima_.push_back({box, slot, control_points});
    return box;
}

QWidget* DisplayVectorsPage::build_buttons() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    lbl_fuer_ = add_label(either("lbl_Für_vekt_lage", "lbl_Für_vekt_höhe"), QString());
    QPushButton* colour = add_button(either("cmd_vekt_farbe_lage", "cmd_vekt_farbe_höhe"),
                                     QStringLiteral("&Farbe"), QStringLiteral("Farbe des Vektors"));
    QPushButton* width =
        add_button(either("cmd_vekt_strich_lage", "cmd_vekt_strich_höhe"),
                   QStringLiteral("S&trich"), QStringLiteral("Strichstärke des Vektors"));
    connect(colour, &QPushButton::clicked, this, [this] {
        ask_for_colour(either("dlg_farbe_vekt_lage", "dlg_farbe_vekt_höhe"),
                       vector_pen_places(settings(), item()));
    });
    connect(width, &QPushButton::clicked, this, [this] {
        ask_for_width(QStringLiteral("Strichstärke"), vector_pen_places(settings(), item()), true);
    });
    row->addWidget(colour);
    row->addWidget(width);
    row->addWidget(lbl_fuer_);
    row->addStretch();
    row->addWidget(add_standard_button(either("cmd_standard_vekt_lage", "cmd_standard_vekt_höhe")));
    return widget;
}

void DisplayVectorsPage::choose(int index) {
    if (index < 0 || index >= static_cast<int>(vector_item_count)) {
        return;
    }
    chosen_ = static_cast<std::size_t>(index);
    pictures_[chosen_]->setFocus();
    refresh();
}

void DisplayVectorsPage::refresh() {
    for (const auto& scale : scales_) {
        scale->show();
    }
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        pictures_[i]->set_chosen(i == chosen_);
    }
    for (const MaximumBox& maximum : maxima_) {
        const std::string text =
            vector_maximum_text(session(), maximum.slot, maximum.control_points);
        maximum.box->setText(QString::fromStdString(text));
        maximum.box->setCursorPosition(0);
    }
    lbl_fuer_->setText(QString::fromStdString(vector_caption(item())));
}

void DisplayVectorsPage::take_over() {
    for (const auto& scale : scales_) {
        scale->leave();
    }
}

bool DisplayVectorsPage::check_scales() {
    for (const auto& scale : scales_) {
        if (!scale->check_on_ok()) {
            return false;
        }
    }
    return true;
}

}  // namespace veldra
