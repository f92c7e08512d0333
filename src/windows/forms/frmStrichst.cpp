#include "windows/forms/frmStrichst.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "drawing/pen.h"
#include "text/length_units.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

constexpr double line_start = 360;  // twips from the left edge
constexpr double between = 6;       // pixels around the text of a width

/// A colour that can be read on another.
QColor text_colour_on(const QColor& background) {
    return background.lightness() < 128 ? Qt::white : Qt::black;
}

}  // namespace

FrmStrichst::FrmStrichst(QWidget* window, LineWidthChoice& choice, const QString& caption)
    : QDialog(window), choice_(choice), held_(choice.strich_wert) {
    setObjectName(QStringLiteral("frmStrichst"));
    setWindowTitle(caption.isEmpty() ? QStringLiteral("Strich") : caption);
    setModal(true);
    build();
    refresh();
}

void FrmStrichst::build() {
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    for (std::size_t i = 0; i < width_count; ++i) {
        build_width(i);
        shown->addWidget(pic_strichst_[i]);
    }
    auto* column = new QVBoxLayout(this);
    column->addWidget(new DialogArea(contents, this), 1);
    const EndButtons buttons = add_end_buttons(*column, this);
    cmd_ok_ = buttons.cmd_ok;
    connect(cmd_ok_, &QPushButton::clicked, this, [this] {
        choice_.strich_wert = held_;
        accept();
    });
    connect(buttons.cmd_abbrechen, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmStrichst::build_width(std::size_t i) {
    const auto number = static_cast<int>(i);
    const QString text =
        i == 0 ? QStringLiteral("(nicht dargestellt)") : QStringLiteral("%1 p").arg(number);
    auto* picture = new SamplePicture(QStringLiteral("pic_strichst_%1").arg(number),
                                      QStringLiteral("Strichstärke ") + text, this);
    picture->set_room(30, 2);
    auto* label = new QLabel(text, picture);
    label->setObjectName(QStringLiteral("lbl_strichst_%1").arg(number));
    // The picture behind it takes the mouse.
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* over_picture = new QHBoxLayout(picture);
    over_picture->setContentsMargins(static_cast<int>(between), 0, 0, 0);
    over_picture->addWidget(label);
    over_picture->addStretch();
    pic_strichst_[i] = picture;
    lbl_strichst_[i] = label;
    if (i > 0) {
        picture->set_draw([label, number](DrawingTarget& target, const SampleSize& size) {
            // Beside its label, also where large letters need more room.
            const double start =
                std::max(line_start, (label->sizeHint().width() + 2 * between) * twips_per_pixel);
            target.DrawStyle(0);
            target.DrawWidth(static_cast<std::int16_t>(number));
            target.ForeColor(pen::black);
            target.Line(static_cast<float>(start), static_cast<float>(size.height / 2),
                        static_cast<float>(size.width), static_cast<float>(size.height / 2));
        });
    }
    connect(picture, &SamplePicture::chosen, this, [this, number] { choose(number); });
    connect(picture, &SamplePicture::stepped, this,
            [this, number](int by) { choose(number + by); });
}

bool FrmStrichst::is_offered(int i) const {
    return i < static_cast<int>(width_count) &&
           (i > 0 || (i == 0 && choice_.strich_null_erlaubt == 1));
}

void FrmStrichst::choose(int i) {
    if (is_offered(i)) {
        held_ = static_cast<std::int16_t>(i);
        pic_strichst_[static_cast<std::size_t>(i)]->setFocus();
        refresh();
    }
}

void FrmStrichst::refresh() {
    const QColor background = to_qcolor(choice_.strich_hintergrund);
    for (std::size_t i = 0; i < width_count; ++i) {
        const bool offered = is_offered(static_cast<int>(i));
        SamplePicture& picture = *pic_strichst_[i];
        QLabel& label = *lbl_strichst_[i];
        picture.set_background(background);
        picture.set_chosen(held_ == static_cast<std::int16_t>(i));
        picture.set_choosable(offered);
        QPalette palette = label.palette();
        const QColor text = text_colour_on(background);
        palette.setColor(QPalette::Active, QPalette::WindowText, text);
        palette.setColor(QPalette::Inactive, QPalette::WindowText, text);
        label.setPalette(palette);
        label.setEnabled(offered);
    }
}

void FrmStrichst::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    if (held_ >= 0 && is_offered(held_)) {
        pic_strichst_[static_cast<std::size_t>(held_)]->setFocus();
    } else {
        cmd_ok_->setFocus();
    }
}

}  // namespace veldra
