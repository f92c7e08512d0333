#include "windows/qt/picture_widget.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "windows/qt/picture_image.h"
#include "windows/qt/picture_notice.h"

namespace veldra {

namespace {

/// A pointer leads to an image as long as this lives.
class Pointing {
 public:
    Pointing(const QImage*& pointer, const QImage& image) : pointer_(pointer) { pointer_ = &image; }
    ~Pointing() { pointer_ = nullptr; }
    Pointing(const Pointing&) = delete;
    Pointing& operator=(const Pointing&) = delete;

 private:
    const QImage*& pointer_;
};

}  // namespace

PictureWidget::PictureWidget(const Session& session, TextMeasurer& measurer, QWidget* parent)
    : QWidget(parent),
      session_(session),
      measurer_(measurer),
      labels_(measurer),
      given_up_(new PictureNotice(this)) {
    setObjectName(QStringLiteral("pic_torvel"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    // The menu gives the keys back to whoever had them, and keeps Escape for itself otherwise.
    setFocusPolicy(Qt::ClickFocus);
    setMinimumSize(64, 64);
    // Not from within the painting that finds it out.
    resolution_timer_.setSingleShot(true);
    connect(&resolution_timer_, &QTimer::timeout, this, &PictureWidget::resolution_changed);
    connect(given_up_, &PictureNotice::redraw_wanted, this, &PictureWidget::redraw_wanted);
}

QSize PictureWidget::device_size() const {
    const double ratio = devicePixelRatioF();
    return {std::max(1, static_cast<int>(std::lround(width() * ratio))),
            std::max(1, static_cast<int>(std::lround(height() * ratio)))};
}

void PictureWidget::redraw(Session& session, UserInterface& ui, Printer* printer) {
    if (is_drawing()) {
        redraw_missed_ = true;
        return;
    }
    const double ratio = devicePixelRatioF();
    QImage layers = std::exchange(spare_, QImage());
    clear_picture(layers, device_size(), ratio);
    given_up_->hide();
    bool whole = false;
    {
        const Pointing pointing(unfinished_, layers);
        whole = draw_layers(session, measurer_, ui, layers, ratio, printer);
    }
    spare_ = std::exchange(shown_, std::move(layers));
    beneath_labels_.forget();
    ratio_ = ratio;
    paint_labels();
    given_up_->setVisible(!whole);
    if (std::exchange(redraw_missed_, false)) {
        Q_EMIT redraw_missed();
    }
}

void PictureWidget::paint_labels() {
    draw_labels(session_, labels_, shown_, ratio_, &beneath_labels_);
    shown_.setDevicePixelRatio(ratio_);
    update();
}

void PictureWidget::repaint_labels() {
    if (shown_.isNull() || is_drawing()) {
        return;
    }
    shown_.setDevicePixelRatio(1);
    beneath_labels_.give_back(canvas_of(shown_));
    paint_labels();
}

void PictureWidget::show_unfinished() {
    if (!is_drawing()) {
        return;
    }
    copy_picture(*unfinished_, shown_);
    beneath_labels_.forget();
    shown_.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void PictureWidget::clear() {
    given_up_->hide();
    shown_ = QImage();
    beneath_labels_.forget();
    spare_ = QImage();
    update();
}

void PictureWidget::set_overlay(const PictureOverlay& overlay) {
    if (overlay_ != overlay) {
        overlay_ = overlay;
        update();
    }
}

std::optional<PictureWidget::LabelHit> PictureWidget::label_at(const QPointF& place) const {
    if (shown_.isNull() || is_drawing()) {
        return std::nullopt;
    }
    // In metres of ground from the lower left corner, as the labels are.
    const PictureMapping mapping = session_mapping(session_, shown_, ratio_);
    const double x = place.x() * ratio_ / mapping.pixels_per_metre_x;
    const double y = (mapping.height - place.y() * ratio_) / mapping.pixels_per_metre_y;
    const auto holds = [x, y](const Label& label) {
        const double left = static_cast<double>(label.left);
        const double top = static_cast<double>(label.top);
        return label.visible && label.enabled && x >= left &&
               x < left + static_cast<double>(label.width) && y <= top &&
               y > top - static_cast<double>(label.height);
    };
    const auto& placed = session_.lbl_pubez_placed;
    for (std::size_t k = placed.size(); k-- > 0;) {
        const auto i = static_cast<std::size_t>(placed[k]);
        if (i < session_.lbl_pubez.size() && holds(session_.lbl_pubez[i])) {
            return LabelHit{LabelArray::lbl_pubez, placed[k]};
        }
    }
    for (std::size_t i = session_.lbl_nubez.size(); i-- > 1;) {
        if (holds(session_.lbl_nubez[i])) {
            return LabelHit{LabelArray::lbl_nubez, static_cast<std::int32_t>(i)};
        }
    }
    return std::nullopt;
}

void PictureWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QColor background(picture_background);
    if (shown_.isNull()) {
        painter.fillRect(event->rect(), background);
        return;
    }
    const double ratio = shown_.devicePixelRatio();
    if (width() * ratio > shown_.width() || height() * ratio > shown_.height() ||
        !overlay_.shift.isNull()) {
        painter.fillRect(event->rect(), background);
    }
    painter.translate(overlay_.shift);
    painter.drawImage(QPointF(0, 0), shown_);
    paint_overlay(painter, overlay_, session_);
    if (ratio != devicePixelRatioF()) {
        resolution_timer_.start(0);
    }
}

void PictureWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT resized();
}

}  // namespace veldra
