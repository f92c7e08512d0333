#include "windows/forms/frmDarstellungen_points.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "dialogs/display_fonts.h"
#include "drawing/fonts.h"
#include "drawing/recording_target.h"
#include "text/codepage.h"
#include "text/length_units.h"
#include "text/numbers.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/qt_font.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

constexpr double largest_sample_font = 400;  // points; more would only show parts of letters

constexpr const char* screen_radius_mask = "####0.###";
constexpr const char* plot_size_mask = "####0.0##";
constexpr const char* offset_mask = "####0.0##";

QString utf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

DisplayPointsPage::DisplayPointsPage(DisplayContext& page_context, SampleMedium medium,
                                     QWidget* parent)
    : DisplayPage(
          page_context,
          medium == SampleMedium::plot ? DisplayTab::points_plot : DisplayTab::points_screen,
          parent),
      medium_(medium) {
    build();
}

QString DisplayPointsPage::name(const char* stem) const {
    return QString::fromUtf8(stem) +
           (is_plot() ? QStringLiteral("_plott") : QStringLiteral("_screen"));
}

void DisplayPointsPage::build() {
    auto* grid = new QGridLayout(this);
    build_sample();
    QLabel* hint = add_label(name("lbl_auswahl_pa"),
                             QStringLiteral("weitere Auswahl Punktart durch Pfeiltasten"));
    grid->addWidget(picture_, 0, 0, 1, 2);
    grid->addWidget(hint, 1, 0, 1, 2);
    grid->addWidget(build_boxes(), 2, 0, Qt::AlignTop);
    grid->addWidget(build_fonts(), 2, 1, Qt::AlignTop);
    grid->setHorizontalSpacing(2 * fontMetrics().averageCharWidth() + grid->horizontalSpacing());
    QPushButton* standard =
        add_standard_button(is_plot() ? QStringLiteral("cmd_standard_bezpun_plott")
                                      : QStringLiteral("cmd_standard_bezpun_screen"));
    grid->addWidget(standard, 3, 1, Qt::AlignRight);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
}

void DisplayPointsPage::build_sample() {
    picture_ = new SamplePicture(
        name("pic_pubez"), QStringLiteral("Muster der Punktsignaturen und Bezeichnungen"), this);
    picture_->set_room(60, 9);
    picture_->set_choosable(true);
    picture_->set_draw([this](DrawingTarget& target, const SampleSize& size) {
        draw_point_sample(session(), context().measurer, target, size, medium_, chosen_);
    });
    connect(picture_, &SamplePicture::stepped, this,
            [this](int by) { choose(static_cast<int>(chosen_) + by); });
    connect(picture_, &SamplePicture::resized, this, &DisplayPointsPage::place_labels);
    const auto sample_label = [this](const char* stem, const char* text) {
        auto* label = new QLabel(QString::fromUtf8(text), picture_);
        label->setObjectName(name(stem));
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        return label;
    };
    lbl_pubez_ = sample_label("lbl_pubez", "1234567890ABCDEF");
    lbl_nubez_ = sample_label("lbl_nubez", "12345678");
    for (std::size_t i = 0; i < class_count; ++i) {
        auto* label = new QLabel(utf8(point_class_name(i)), picture_);
        label->setObjectName(name("lbl_pa") + QStringLiteral("_%1").arg(i));
        label->setCursor(Qt::PointingHandCursor);
        label->installEventFilter(this);
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, Qt::black);  // as on the picture's own background
        label->setPalette(palette);
        lbl_pa_[i] = label;
    }
}

float& DisplayPointsPage::radius() {
    return is_plot() ? settings().punsigplo[chosen_] : settings().punsigscr[chosen_];
}

QWidget* DisplayPointsPage::build_boxes() {
    auto* frame = new QWidget(this);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    const auto add_row = [&](QLabel* label, QLineEdit* box, const char* unit) {
        grid->addWidget(label, row, 0);
        grid->addWidget(box, row, 1);
        grid->addWidget(new QLabel(QString::fromUtf8(unit), frame), row, 2);
        ++row;
    };
    const char* const size_unit = is_plot() ? "mm" : "Twips";
    const char* const size_mask = is_plot() ? plot_size_mask : screen_radius_mask;
    txt_punktradius_ = add_number_box(
        name("txt_punktradius"), QStringLiteral("Radius der Punktsignatur"), size_mask,
        [this] { return static_cast<double>(radius()); },
        [this](std::string_view text) { radius() = float_value(text); });
    lbl_punktradius_ = add_buddy(name("lbl_punktradius"), QString(), txt_punktradius_);
    add_row(lbl_punktradius_, txt_punktradius_, size_unit);
    QLineEdit* rechts = add_number_box(
        name("txt_offset_rechts"), QStringLiteral("Standard Offset Text rechts"), offset_mask,
        [this] { return settings().stanplt; },
        [this](std::string_view text) { settings().stanplt = zahl_wert(text); });
    add_row(add_buddy(name("lbl_offset_rechts"), QStringLiteral("Standard Offset Text &rechts:"),
                      rechts),
            rechts, "% der Schrifthöhe");
    QLineEdit* hoch = add_number_box(
        name("txt_offset_hoch"), QStringLiteral("Standard Offset Text hoch"), offset_mask,
        [this] { return settings().stanptp; },
        [this](std::string_view text) { settings().stanptp = zahl_wert(text); });
    add_row(add_buddy(name("lbl_offset_hoch"), QStringLiteral("Standard Offset Text &hoch:"), hoch),
            hoch, "% der Schrifthöhe");
    grid->setColumnStretch(0, 1);
    return frame;
}

QWidget* DisplayPointsPage::build_fonts() {
    auto* frame = new QWidget(this);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    const auto add_font = [&](int row, bool districts, const char* caption) {
        const QString what =
            districts ? QStringLiteral("Nummerierungsbezirke") : QStringLiteral("Bezeichnungen");
        if (is_plot()) {
            QLineEdit* box = add_number_box(
                name(districts ? "txt_nubez_schrift" : "txt_pubez_schrift"),
                QStringLiteral("Schrifthöhe ") + what, plot_size_mask,
                [this, districts] {
                    return static_cast<double>(districts ? settings().nubsizplo
                                                         : settings().pubsizplo);
                },
                [this, districts](std::string_view text) {
                    set_plot_height(session(), usable_printer(session(), context().printer),
                                    districts, text);
                });
            QLabel* label =
                add_buddy(name(districts ? "lbl_nubez_schrift" : "lbl_pubez_schrift"),
                          QStringLiteral("Schrifthöhe ") + what + QLatin1Char(':'), box);
            grid->addWidget(label, row, 0);
            grid->addWidget(box, row, 1);
            grid->addWidget(new QLabel(QStringLiteral("mm (genähert)"), frame), row, 2);
        } else {
            grid->addWidget(new QLabel(what + QLatin1Char(':'), frame), row, 0);
        }
        QPushButton* button =
            add_button(name(districts ? "cmd_nubez_schrift" : "cmd_pubez_schrift"),
                       QString::fromUtf8(caption), QStringLiteral("Schrift ") + what);
        const QString dialog = name(districts ? "dlg_nubez" : "dlg_pubez");
        connect(button, &QPushButton::clicked, this,
                [this, dialog, districts] { choose_font(dialog, districts); });
        grid->addWidget(button, row, 3);
    };
    add_font(0, false, "Schrif&t");
    add_font(1, true, "Schr&ift");
    if (is_plot()) {
        lbl_druckerda_ =
            add_label(QStringLiteral("lbl_druckerda"),
                      QStringLiteral("Drucker nicht verfügbar! Schrifthöhe nur in mm einzugeben."));
        lbl_druckerda_->setWordWrap(true);
        grid->addWidget(lbl_druckerda_, 2, 0, 1, 4);
    }
    grid->setColumnStretch(0, 1);
    return frame;
}

void DisplayPointsPage::choose(int klasse) {
    if (klasse < 0 || klasse >= static_cast<int>(class_count)) {
        return;
    }
    DisplayPage::take_over();  // what was typed belongs to the class before
    chosen_ = static_cast<std::size_t>(klasse);
    refresh();
}

bool DisplayPointsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto found = std::find(lbl_pa_.begin(), lbl_pa_.end(), watched);
        if (found != lbl_pa_.end()) {
            choose(static_cast<int>(found - lbl_pa_.begin()));
            picture_->setFocus();
            return true;
        }
    }
    return DisplayPage::eventFilter(watched, event);
}

void DisplayPointsPage::choose_font(const QString& dialog, bool districts) {
    Printer* const printer = usable_printer(session(), context().printer);
    const FontChoice before =
        is_plot() ? plot_font(session(), printer, districts) : screen_font(settings(), districts);
    const auto chosen = context().choosers.font(window(), dialog, before);
    if (!chosen) {
        return;
    }
    if (is_plot()) {
        set_plot_font(session(), printer, districts, *chosen);
    } else {
        set_screen_font(settings(), districts, *chosen);
    }
    context().refresh_all();
}

void DisplayPointsPage::refresh() {
    lbl_punktradius_->setText(QString::fromStdString(point_radius_label(chosen_)));
    for (std::size_t i = 0; i < class_count; ++i) {
        QFont font = lbl_pa_[i]->font();
        font.setBold(i == chosen_);
        font.setUnderline(i == chosen_);
        lbl_pa_[i]->setFont(font);
    }
    picture_->setAccessibleDescription(QStringLiteral("gewählte Punktart: ") +
                                       utf8(point_class_name(chosen_)));
    show_boxes();
    if (lbl_druckerda_ != nullptr) {
        lbl_druckerda_->setVisible(usable_printer(session(), context().printer) == nullptr);
    }
    place_labels();
    picture_->update();
}

void DisplayPointsPage::place_label(QLabel& label, const Label& box, const FontSpec& font,
                                    std::int32_t colour) {
    FontSpec shown = font;
    shown.points = std::min(font.points, largest_sample_font);
    label.setFont(text_font(shown));
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, to_qcolor(colour));
    label.setPalette(palette);
    label.adjustSize();
    const auto height = static_cast<double>(picture_->height());
    label.move(
        static_cast<int>(std::lround(static_cast<double>(box.left) / twips_per_pixel)),
        static_cast<int>(std::lround(height - static_cast<double>(box.top) / twips_per_pixel)));
    label.setVisible(box.visible);
}

void DisplayPointsPage::place_labels() {
    RecordingTarget target;
    const SampleSize size = picture_->sample_size();
    const PointSample sample =
        draw_point_sample(session(), context().measurer, target, size, medium_, chosen_);
    place_label(*lbl_pubez_, sample.pubez, sample.pubez_font, settings().pubcolor);
    place_label(*lbl_nubez_, sample.nubez, sample.nubez_font, settings().nubcolor);
    for (std::size_t i = 0; i < class_count; ++i) {
        QLabel& label = *lbl_pa_[i];
        label.adjustSize();
        const double centre = sample.class_x[i] / twips_per_pixel;
        label.move(std::max(2, static_cast<int>(std::lround(centre - label.width() / 2.0))), 2);
    }
}

}  // namespace veldra
