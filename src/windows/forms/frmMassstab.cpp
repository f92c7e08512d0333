#include "windows/forms/frmMassstab.h"

#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QResizeEvent>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "dialogs/scale_bars.h"
#include "text/length_units.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/plain_tool_tip.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

constexpr int between_frames = static_cast<int>(105 / twips_per_pixel);
constexpr int below_frames = static_cast<int>(15 / twips_per_pixel);
constexpr int picture_letters = 52;
constexpr int picture_lines = 1;

QString text_of(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

void show_text(QLabel& label, const std::string& utf8) {
    label.setText(text_of(utf8));
    label.setToolTip(plain_tool_tip(label.text()));  // a long one may not have room
    label.setVisible(!utf8.empty());
}

}  // namespace

/// The room above a picture for the label of its mark, which stands over the mark's tick but does
/// not leave the picture.
class MarkLabel final : public QWidget {
 public:
    MarkLabel(const QString& name, QWidget* parent)
        : QWidget(parent), label_(new QLabel(QStringLiteral("0"), this)) {
        label_->setObjectName(name);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    void show_mark(const std::optional<ScaleMark>& mark) {
        at_ = mark ? mark->at / twips_per_pixel : 0;
        label_->setText(mark ? text_of(mark->text) : QString());
        place();
    }
    [[nodiscard]] QString text() const { return label_->text(); }
    [[nodiscard]] QSize sizeHint() const override { return {0, fontMetrics().height()}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        place();
    }

 private:
    void place() {
        const int wide = label_->sizeHint().width();
        const int left = static_cast<int>(std::lround(at_ - wide / 2.0));
        label_->setGeometry(std::max(0, std::min(left, width() - wide)), 0, wide, height());
    }

    QLabel* label_;
    double at_ = 0;
};

FrmMassstab::FrmMassstab(QWidget* window, const Session& session)
    // As a tool window it lets the shortcuts of the main window through.
    : QDialog(window, Qt::Tool | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint),
      session_(session),
      area_(new DialogArea(new QWidget(this), this)),
      column_(new QVBoxLayout(area_->widget())) {
    setObjectName(QStringLiteral("frmMaßstab"));
    setWindowTitle(QStringLiteral("Maßstab"));
    setModal(false);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    // The height is that of the frames that are shown; it is not to change before all of them are.
    whole->setSizeConstraint(QLayout::SetNoConstraint);
    whole->addWidget(area_);
    column_->setSpacing(between_frames);
    column_->setContentsMargins(between_frames, between_frames, between_frames, below_frames);
    grundriss_ = add_frame(QStringLiteral("fraGrundriss"), QStringLiteral("picGrundriss"),
                           QStringLiteral("Grundriss"), QStringLiteral("Grundriss:"));
    lage_ = add_frame(QStringLiteral("fraLage"), QStringLiteral("picVektorLage"),
                      QStringLiteral("Lage"), QStringLiteral("Lageänderungen:"));
    add_maximum(lage_, QStringLiteral("AP"), QStringLiteral("Lage"));
    add_maximum(lage_, QStringLiteral("NP"), QStringLiteral("Lage"));
    lfehl_ = add_frame(QStringLiteral("fraLfehl"), QStringLiteral("picVektorElli"),
                       QStringLiteral("Elli"), QStringLiteral("Lagefehlerellipsen:"));
    add_maximum(lfehl_, QStringLiteral("NP"), QStringLiteral("Elli"));
    hoehe_ = add_frame(QStringLiteral("fraHöhe"), QStringLiteral("picVektorHöhe"),
                       QStringLiteral("Höhe"), QStringLiteral("Höhenänderungen:"));
    add_maximum(hoehe_, QStringLiteral("AP"), QStringLiteral("Höhe"));
    add_maximum(hoehe_, QStringLiteral("NP"), QStringLiteral("Höhe"));
    refresh();
}

FrmMassstab::Frame FrmMassstab::add_frame(const QString& group, const QString& picture,
                                          const QString& name, const QString& caption) {
    Frame frame;
    frame.group = new QGroupBox(caption, this);
    frame.group->setObjectName(group);
    auto* column = new QVBoxLayout(frame.group);
    column->setSpacing(0);
    frame.mark = new MarkLabel(QStringLiteral("lblEinheit") + name, frame.group);
    frame.picture = new SamplePicture(picture, QStringLiteral("Maßstab ") + caption, frame.group);
    frame.picture->set_room(picture_letters, picture_lines);
    frame.picture->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    column->addWidget(frame.mark);
    column->addWidget(frame.picture);
    column_->addWidget(frame.group);
    return frame;
}

void FrmMassstab::add_maximum(Frame& frame, const QString& which, const QString& name) {
    auto* maximum = new QLabel(frame.group);
    maximum->setObjectName(QStringLiteral("lblMax") + which + name);
    auto* place = new QLabel(frame.group);
    place->setObjectName(QStringLiteral("lblBei") + which + name);
    for (QLabel* label : {maximum, place}) {
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        frame.group->layout()->addWidget(label);
    }
    (which == QLatin1String("AP") ? frame.max_ap : frame.max_np) = maximum;
    (which == QLatin1String("AP") ? frame.bei_ap : frame.bei_np) = place;
}

void FrmMassstab::show_ground() {
    const auto mark = ground_mark(session_, grundriss_.picture->sample_size().width);
    grundriss_.mark->show_mark(mark);
    grundriss_.picture->setAccessibleDescription(grundriss_.mark->text());
    grundriss_.picture->set_draw([mark](DrawingTarget& target, const SampleSize& size) {
        draw_ground_bar(target, mark, size.height);
    });
}

void FrmMassstab::show_values(const Frame& frame, std::size_t slot, const QString& caption) {
    frame.group->setTitle(caption);
    ValueBars bars = value_bars(session_, slot, frame.picture->sample_size().width);
    if (frame.max_ap != nullptr) {
        show_text(*frame.max_ap, bars.ap.text);
        show_text(*frame.bei_ap, bars.ap.place);
    } else {
        bars.ap = {};
    }
    show_text(*frame.max_np, bars.np.text);
    show_text(*frame.bei_np, bars.np.place);
    frame.mark->show_mark(bars.unit);
    frame.picture->setAccessibleDescription(frame.mark->text());
    frame.picture->set_draw([bars](DrawingTarget& target, const SampleSize& size) {
        draw_value_bars(target, bars, size.width, size.height);
    });
}

void FrmMassstab::show_bars() {
    static constexpr const char* captions[] = {"",
                                               " Lageänderungen: ",
                                               " Lagerestklaffungen: ",
                                               " Lagefehlerellipsen: ",
                                               " Höhenänderungen: ",
                                               " Höhenrestklaffungen: ",
                                               " Mittlere Höhenfehler: "};
    constexpr std::size_t ellipses = 3;
    const std::size_t position = shown_position_slot(session_);
    const std::size_t height = shown_height_slot(session_);
    lage_.group->setVisible(position != 0 && position != ellipses);
    lfehl_.group->setVisible(position == ellipses);
    hoehe_.group->setVisible(height != 0);
    show_ground();
    if (position == ellipses) {
        show_values(lfehl_, position, QStringLiteral("Lagefehlerellipsen:"));
    } else if (position != 0) {
        show_values(lage_, position, QString::fromUtf8(captions[position]));
    }
    if (height != 0) {
        show_values(hoehe_, height, QString::fromUtf8(captions[height]));
    }
    const QColor background = palette().color(QPalette::Window);
    for (const Frame* frame : {&grundriss_, &lage_, &lfehl_, &hoehe_}) {
        frame->picture->set_background(background);
        frame->picture->update();
    }
}

void FrmMassstab::fit_height() {
    column_->activate();
    area_->updateGeometry();
    layout()->activate();
    setMinimumWidth(std::min(column_->totalMinimumSize().width(), layout()->sizeHint().width()));
    const int fitted = layout()->totalSizeHint().height();
    if (fitted == height()) {
        return;
    }
    const QRect before = geometry();
    const int title_bar = before.y() - y();
    setFixedHeight(fitted);
    if (isVisible()) {
        const int top = std::max(title_bar, before.bottom() + 1 - fitted);
        setGeometry(before.x(), top, before.width(), fitted);
    } else {
        resize(width(), fitted);
    }
}

void FrmMassstab::refresh() {
    show_bars();
    fit_height();
}

bool FrmMassstab::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::PaletteChange) {
        refresh();
    }
    return QDialog::event(event);
}

void FrmMassstab::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    refresh();
}

void FrmMassstab::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    show_bars();
}

}  // namespace veldra
