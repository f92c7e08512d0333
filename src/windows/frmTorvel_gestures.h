#pragma once

#include <QLabel>
#include <QMouseEvent>
#include <QObject>
#include <QTimer>
#include <QWheelEvent>
#include <functional>
#include <optional>
#include <variant>

#include "model/session.h"
#include "view/label_moving.h"
#include "view/viewport.h"
#include "windows/frmTorvel_commands.h"
#include "windows/qt/picture_widget.h"

namespace veldra {

/// What the gestures ask of the window.
struct GestureHost {
    std::function<bool()> idle;                   ///< a picture stands and no command runs
    std::function<void(const Command&)> perform;  ///< runs a command to its end
    std::function<void()> redraw;                 ///< draws the picture anew
    std::function<void()> lay_out_sheets;         ///< puts the texts on the sheets' edges anew
    std::function<void(const std::optional<WorldPoint>&)> show_place;  ///< of the pointer
};

/// The mouse over the picture: rubber band, moving of labels, sheets and view, wheel, pointing.
/// While a button is held only the overlay changes.
class TorvelGestures final : public QObject {
    Q_OBJECT

 public:
    TorvelGestures(Session& session, PictureWidget& picture, QLabel& lbl_punubinf,
                   GestureHost host);

    /// Ends what is under way; the info label goes too. Sheets stay where they have come to.
    void cancel();
    /// The ground beneath the pointer may have become another one.
    void synchronise();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Nothing {};
    struct RubberBand {
        WorldPoint start;
        QPointF place;
    };
    struct MovedLabel {
        LabelDrag drag;
    };
    struct MovedSheets {
        PicturePoint last;
        QPointF start;
        std::optional<QRectF> legend;  ///< where its box was at first
    };
    struct MovedView {
        QPointF start;
    };
    /// A turn of the wheel, as far as it has been shown.
    struct Turn {
        Undo step;      ///< back to the view before it
        Viewport view;  ///< that it has led to
    };
    using Gesture = std::variant<Nothing, RubberBand, MovedLabel, MovedSheets, MovedView>;

    /// The user gives up what is under way: sheets go back to where they were.
    void give_up();
    [[nodiscard]] bool is_view_offered() const;
    void press(const QMouseEvent& event);
    void press_left(const QPointF& place);
    [[nodiscard]] std::optional<QRectF> legend_box() const;
    void move(const QMouseEvent& event);
    void move_freely(const QMouseEvent& event);
    void release(const QMouseEvent& event);
    void wheel(const QWheelEvent& event);
    void zoom_by_wheel();
    [[nodiscard]] bool turn_goes_on() const;
    void end();

    void drag(RubberBand& band, const QPointF& place);
    void drag(MovedLabel& label, const QPointF& place);
    void drag(MovedSheets& sheets, const QPointF& place);
    void drag(MovedView& view, const QPointF& place);
    void drag(Nothing& /*nothing*/, const QPointF& /*place*/) {}
    void drop(const RubberBand& band, const QPointF& place);
    void drop(const MovedLabel& label, const QPointF& place);
    void drop(const MovedSheets& sheets, const QPointF& place);
    void drop(const MovedView& view, const QPointF& place);
    void drop(const Nothing& /*nothing*/, const QPointF& /*place*/) {}

    void show_info(const PictureWidget::LabelHit& hit);
    [[nodiscard]] PicturePoint in_picture(const QPointF& place) const;
    void set_pointer(int pointer);

    Session& session_;
    PictureWidget& picture_;
    QLabel& info_;
    GestureHost host_;
    Gesture gesture_;
    Qt::MouseButton button_ = Qt::NoButton;  ///< that the gesture began with
    double wheel_steps_ = 0;                 ///< turned and not yet shown
    QPointF wheel_place_;
    quint64 wheel_time_ = 0;     ///< of the last notch, milliseconds of the system
    bool wheel_paused_ = false;  ///< before the notches that are not yet shown
    std::optional<Turn> turn_;
    std::optional<QPointF> pointer_;  ///< where it was last, as long as it is over the picture
    QTimer wheel_timer_;
};

}  // namespace veldra
