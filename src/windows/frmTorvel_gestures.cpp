#include "windows/frmTorvel_gestures.h"

#include <QKeyEvent>
#include <cmath>
#include <utility>

#include "text/length_units.h"
#include "view/pointing.h"
#include "view/sheet_moving.h"
#include "view/zoom.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/qt_user_interface.h"

namespace veldra {

namespace {

constexpr int default_pointer = 0;
constexpr int cross_pointer = 2;
constexpr int moving_pointer = 99;
/// Of one notch of the wheel.
constexpr double wheel_factor = 1.25;
constexpr double wheel_notch = 120;
/// Between two notches of one turn, milliseconds.
constexpr quint64 longest_pause = 500;

float twips(double pixels) {
    return static_cast<float>(pixels * twips_per_pixel);
}

}  // namespace

TorvelGestures::TorvelGestures(Session& session, PictureWidget& picture, QLabel& lbl_punubinf,
                               GestureHost host)
    : QObject(&picture),
      session_(session),
      picture_(picture),
      info_(lbl_punubinf),
      host_(std::move(host)) {
    QFont font(QStringLiteral("Courier New"), 10);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    info_.setFont(font);
    info_.setTextFormat(Qt::PlainText);
    info_.setAutoFillBackground(true);
    info_.setFrameStyle(QFrame::Box | QFrame::Plain);
    info_.setMargin(2);
    info_.setStyleSheet(QStringLiteral("background-color: #ffffe1; color: black;"));
    // What lies beneath keeps its mouse.
    info_.setAttribute(Qt::WA_TransparentForMouseEvents);
    wheel_timer_.setSingleShot(true);
    connect(&wheel_timer_, &QTimer::timeout, this, &TorvelGestures::zoom_by_wheel);
    picture_.installEventFilter(this);
    picture_.window()->installEventFilter(this);
}

bool TorvelGestures::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &picture_) {
        const bool escape = event->type() == QEvent::KeyPress &&
                            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        if (escape) {
            give_up();
        }
        return false;
    }
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            press(*static_cast<QMouseEvent*>(event));
            break;
        case QEvent::MouseMove:
            move(*static_cast<QMouseEvent*>(event));
            break;
        case QEvent::MouseButtonRelease:
            release(*static_cast<QMouseEvent*>(event));
            break;
        case QEvent::Wheel:
            wheel(*static_cast<QWheelEvent*>(event));
            break;
        case QEvent::Leave:
            pointer_.reset();
            host_.show_place(std::nullopt);
            return false;
        default:
            return false;
    }
    return true;
}

void TorvelGestures::press(const QMouseEvent& event) {
    if (button_ != Qt::NoButton || !host_.idle()) {
        return;
    }
    const QPointF place = event.position();
    if (event.button() == Qt::RightButton) {
        if (const auto hit = picture_.label_at(place)) {
            show_info(*hit);
        }
    } else if (event.button() == Qt::MiddleButton && is_view_offered()) {
        gesture_ = MovedView{place};
        button_ = Qt::MiddleButton;
        picture_.setCursor(Qt::ClosedHandCursor);
    } else if (event.button() == Qt::LeftButton) {
        press_left(place);
    }
}

void TorvelGestures::press_left(const QPointF& place) {
    if (const auto hit = picture_.label_at(place)) {
        if (can_be_dragged(session_, hit->array, hit->index)) {
            gesture_ = MovedLabel{{hit->array, hit->index, twips(place.x()), twips(place.y())}};
            button_ = Qt::LeftButton;
            drag(std::get<MovedLabel>(gesture_), place);
        }
        return;
    }
    if (session_.plotmodus == 1) {
        const std::optional<QRectF> legend = legend_box();
        host_.perform([this] { begin_sheet_drag(session_); });
        PictureOverlay overlay;
        overlay.sheets = true;
        overlay.legend = legend;
        picture_.set_overlay(overlay);
        picture_.repaint_labels();
        gesture_ = MovedSheets{in_picture(place), place, legend};
        set_pointer(moving_pointer);
    } else {
        gesture_ = RubberBand{to_world(session_.view, in_picture(place)), place};
        set_pointer(cross_pointer);
    }
    button_ = Qt::LeftButton;
}

/// Where the preview shows the legend, logical pixels.
std::optional<QRectF> TorvelGestures::legend_box() const {
    if (!session_.window.lbl_legende_visible) {
        return std::nullopt;
    }
    const Label& legend = session_.lbl_legende;
    return to_logical(session_.view, {legend.left, legend.top, legend.width, legend.height});
}

void TorvelGestures::move(const QMouseEvent& event) {
    if (!host_.idle()) {
        return;
    }
    pointer_ = event.position();
    synchronise();
    if (button_ == Qt::NoButton) {
        move_freely(event);
    } else if ((event.buttons() & button_) != 0) {
        std::visit([&](auto& gesture) { drag(gesture, event.position()); }, gesture_);
    } else {
        cancel();  // the button was released where nobody saw it
    }
}

void TorvelGestures::move_freely(const QMouseEvent& event) {
    // The info label covers the picture and the labels beneath.
    if (info_.isVisible() && info_.geometry().contains(event.position().toPoint())) {
        return;
    }
    if (picture_.label_at(event.position())) {
        set_pointer((event.buttons() & Qt::RightButton) != 0 ? default_pointer : moving_pointer);
    } else {
        info_.hide();
        set_pointer(default_pointer);
    }
}

void TorvelGestures::release(const QMouseEvent& event) {
    if (button_ == Qt::NoButton || event.button() != button_) {
        return;
    }
    const Gesture done = gesture_;
    end();
    if (host_.idle()) {
        std::visit([&](const auto& gesture) { drop(gesture, event.position()); }, done);
    }
}

void TorvelGestures::cancel() {
    info_.hide();
    if (button_ == Qt::NoButton) {
        return;
    }
    const bool sheets = std::holds_alternative<MovedSheets>(gesture_);
    end();
    if (sheets) {
        drop(MovedSheets{}, {});
    }
}

void TorvelGestures::give_up() {
    const bool sheets = std::holds_alternative<MovedSheets>(gesture_);
    cancel();
    if (sheets) {
        host_.perform([this] {
            undo_sheet_move(session_);
            host_.lay_out_sheets();
        });
    }
}

/// Without anything to draw the commands of the view are withdrawn, and each drawing says so.
bool TorvelGestures::is_view_offered() const {
    return session_.window[ToolButton::lupe_minus].enabled;
}

void TorvelGestures::synchronise() {
    if (pointer_ && session_.datei_geladen == 1) {
        host_.show_place(to_world(session_.view, in_picture(*pointer_)));
    }
}

/// The overlay goes and the pointer is the usual one.
void TorvelGestures::end() {
    gesture_ = Nothing{};
    button_ = Qt::NoButton;
    picture_.set_overlay({});
    session_.window.mouse_pointer = default_pointer;
    show_mouse_pointer(picture_, default_pointer);
}

void TorvelGestures::drag(RubberBand& band, const QPointF& place) {
    info_.hide();
    PictureOverlay overlay;
    overlay.rubber_band = QRectF(band.place, place).normalized();
    picture_.set_overlay(overlay);
}

void TorvelGestures::drop(const RubberBand& band, const QPointF& place) {
    const WorldPoint corner = to_world(session_.view, in_picture(place));
    host_.perform([&] {
        if (zoom_to_band(session_, band.start, corner)) {
            host_.redraw();
        }
    });
}

void TorvelGestures::drag(MovedLabel& label, const QPointF& place) {
    info_.hide();
    PictureOverlay overlay;
    overlay.ghost = to_logical(session_.view,
                               ghost_box(session_, label.drag, twips(place.x()), twips(place.y())));
    picture_.set_overlay(overlay);
    set_pointer(moving_pointer);
}

void TorvelGestures::drop(const MovedLabel& label, const QPointF& place) {
    host_.perform([&] {
        drop_label(session_, label.drag, twips(place.x()), twips(place.y()));
        picture_.repaint_labels();
    });
}

void TorvelGestures::drag(MovedSheets& sheets, const QPointF& place) {
    info_.hide();
    const PicturePoint now = in_picture(place);
    move_sheets(session_, static_cast<double>(now.x) - static_cast<double>(sheets.last.x),
                static_cast<double>(now.y) - static_cast<double>(sheets.last.y));
    sheets.last = now;
    PictureOverlay overlay;
    overlay.sheets = true;
    if (sheets.legend) {
        overlay.legend = sheets.legend->translated(place - sheets.start);
    }
    picture_.set_overlay(overlay);
    picture_.update();  // sheets without a legend are another picture, too
}

void TorvelGestures::drop(const MovedSheets& /*sheets*/, const QPointF& /*place*/) {
    host_.perform([this] { host_.lay_out_sheets(); });
}

void TorvelGestures::drag(MovedView& view, const QPointF& place) {
    info_.hide();
    PictureOverlay overlay;
    overlay.shift = place - view.start;
    picture_.set_overlay(overlay);
}

void TorvelGestures::drop(const MovedView& view, const QPointF& place) {
    const QPointF way = place - view.start;
    if (way.isNull()) {
        return;
    }
    host_.perform([&] {
        const double pixel = session_.view.ansicht_masseinheit * twips_per_pixel;
        pan_view(session_, -way.x() * pixel, way.y() * pixel);
        host_.redraw();
    });
}

void TorvelGestures::wheel(const QWheelEvent& event) {
    if (button_ != Qt::NoButton || !host_.idle() || !is_view_offered()) {
        return;
    }
    // The times of the notches are those of the hand, however long a drawing has kept them waiting.
    if (event.timestamp() - wheel_time_ > longest_pause) {
        wheel_paused_ = true;
    }
    wheel_time_ = event.timestamp();
    // A wheel turns faster than a large network is drawn: what has come is done at once.
    wheel_steps_ += event.angleDelta().y() / wheel_notch;
    wheel_place_ = event.position();
    wheel_timer_.start(0);
}

void TorvelGestures::zoom_by_wheel() {
    const double steps = std::exchange(wheel_steps_, 0.0);
    if (steps == 0 || !host_.idle()) {
        return;
    }
    const bool goes_on = turn_goes_on();
    wheel_paused_ = false;
    host_.perform([&] {
        const WorldPoint fixed = to_world(session_.view, in_picture(wheel_place_));
        if (!zoom_about(session_, fixed, std::pow(wheel_factor, steps))) {
            return;
        }
        if (goes_on) {
            join_zooms(session_, turn_->step);
        }
        turn_ = {session_.window.undo, session_.view};
        host_.redraw();
    });
}

/// The notches belong to the turn before, and nothing else has changed the view since.
bool TorvelGestures::turn_goes_on() const {
    const Undo& step = session_.window.undo;
    const Viewport& view = session_.view;
    return turn_ && !wheel_paused_ && step.undo_art == turn_->step.undo_art &&
           step.undo_wert == turn_->step.undo_wert &&
           view.ansicht_rw_min == turn_->view.ansicht_rw_min &&
           view.ansicht_rw_max == turn_->view.ansicht_rw_max &&
           view.ansicht_hw_min == turn_->view.ansicht_hw_min;
}

void TorvelGestures::show_info(const PictureWidget::LabelHit& hit) {
    const bool point = hit.array == LabelArray::lbl_pubez;
    if (!point && !is_node_label(session_, hit.index)) {
        return;
    }
    const std::string caption =
        point ? point_info(session_, hit.index) : district_info(session_, hit.index);
    info_.setText(QString::fromStdString(caption).remove(QLatin1Char('\r')));
    info_.adjustSize();
    const double pixel = session_.view.ansicht_masseinheit * twips_per_pixel;
    const auto width = static_cast<float>(info_.width() * pixel);
    const auto height = static_cast<float>(info_.height() * pixel);
    const PicturePoint corner = point ? place_point_info(session_, hit.index, width, height)
                                      : place_district_info(session_, hit.index, width, height);
    info_.move(to_logical(session_.view, {corner.x, corner.y, width, height}).topLeft().toPoint());
    info_.show();
    set_pointer(default_pointer);
}

PicturePoint TorvelGestures::in_picture(const QPointF& place) const {
    return from_twips(session_.view, place.x() * twips_per_pixel, place.y() * twips_per_pixel);
}

void TorvelGestures::set_pointer(int pointer) {
    if (session_.window.mouse_pointer != pointer) {
        session_.window.mouse_pointer = pointer;
        show_mouse_pointer(picture_, pointer);
    }
}

}  // namespace veldra
