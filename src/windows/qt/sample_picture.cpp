#include "windows/qt/sample_picture.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "text/length_units.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/raster_target.h"

namespace veldra {

namespace {

constexpr int chosen_frame_width = 4;

}  // namespace

SamplePicture::SamplePicture(const QString& name, const QString& accessible_name, QWidget* parent)
    : QWidget(parent), background_(picture_background) {
    setObjectName(name);
    setAccessibleName(accessible_name);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void SamplePicture::set_room(int letters, int lines) {
    letters_ = letters;
    lines_ = lines;
    updateGeometry();
}

void SamplePicture::set_background(const QColor& colour) {
    background_ = colour;
    update();
}

void SamplePicture::set_chosen(bool chosen) {
    chosen_ = chosen;
    update();
}

void SamplePicture::set_choosable(bool choosable) {
    choosable_ = choosable;
    setFocusPolicy(choosable ? Qt::StrongFocus : Qt::NoFocus);
}

SampleSize SamplePicture::sample_size() const {
    return {width() * twips_per_pixel, height() * twips_per_pixel};
}

QSize SamplePicture::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * letters_, metrics.height() * lines_};
}

QSize SamplePicture::minimumSizeHint() const {
    return sizeHint();
}

void SamplePicture::paintEvent(QPaintEvent* /*event*/) {
    const double ratio = devicePixelRatioF();
    const QSize pixels(std::max(1, static_cast<int>(std::lround(width() * ratio))),
                       std::max(1, static_cast<int>(std::lround(height() * ratio))));
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(background_);
    set_logical_resolution(image, ratio);
    if (draw_) {
        const SampleSize size = sample_size();
        RasterTarget target(image, picture_mapping(image, size.width, size.height, ratio));
        draw_(target, size);
    }
    image.setDevicePixelRatio(ratio);
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), image);
    if (chosen_) {
        QPen pen(QColor(0, 0, 255), chosen_frame_width);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.setPen(pen);
        const double half = chosen_frame_width / 2.0;
        painter.drawRect(QRectF(rect()).adjusted(half, half, -half, -half));
    }
    if (hasFocus() && choosable_) {
        QPen pen(palette().color(QPalette::Text), 1, Qt::DotLine);
        painter.setPen(pen);
        const double inset = chosen_frame_width + 1.5;
        painter.drawRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
    }
}

void SamplePicture::mousePressEvent(QMouseEvent* event) {
    if (choosable_ && event->button() == Qt::LeftButton) {
        Q_EMIT chosen();
    } else {
        QWidget::mousePressEvent(event);
    }
}

void SamplePicture::keyPressEvent(QKeyEvent* event) {
    if (choosable_) {
        switch (event->key()) {
            case Qt::Key_Left:
            case Qt::Key_Up:
                Q_EMIT stepped(-1);
                return;
            case Qt::Key_Right:
            case Qt::Key_Down:
                Q_EMIT stepped(1);
                return;
            case Qt::Key_Space:
                Q_EMIT chosen();
                return;
            default:
                break;
        }
    }
    QWidget::keyPressEvent(event);
}

void SamplePicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT resized();
}

QColor to_qcolor(std::int32_t colour) {
    return QColor(to_pixel_colour(colour));
}

std::int32_t from_qcolor(const QColor& colour) {
    return colour.red() + colour.green() * 256 + colour.blue() * 65536;
}

std::int32_t picture_background_colour() {
    return from_qcolor(QColor(picture_background));
}

}  // namespace veldra
