#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "model/label.h"
#include "model/session.h"
#include "text/user_interface.h"
#include "windows/qt/covered_tiles.h"
#include "windows/qt/label_painter.h"
#include "windows/qt/picture_overlay.h"

namespace veldra {

class PictureNotice;
class Printer;

/// The picture of the main window: the drawn layers with the session's labels painted over them. It
/// keeps what is beneath the labels, so that they can be painted anew.
class PictureWidget final : public QWidget {
    Q_OBJECT

 public:
    PictureWidget(const Session& session, TextMeasurer& measurer, QWidget* parent);

    /// A label under the mouse.
    struct LabelHit {
        LabelArray array = LabelArray::lbl_pubez;
        std::int32_t index = 0;
        bool operator==(const LabelHit&) const = default;
    };

    /// Draws the layers and labels of `session`, which is the one the picture was made with. The
    /// preview looks at the application printer, if there is one.
    ///
    /// Events may be served meanwhile. What is being drawn belongs to this call alone, so nothing
    /// can take it away; a call that comes meanwhile draws nothing and is told by `redraw_missed`
    /// at the end.
    ///
    /// A drawing that the user gives up leaves what it has drawn, and a notice over it that offers
    /// to draw anew, until the next drawing.
    void redraw(Session& session, UserInterface& ui, Printer* printer = nullptr);
    [[nodiscard]] bool is_drawing() const { return unfinished_ != nullptr; }
    /// Paints the labels anew over the layers that are there; not while a drawing is under way.
    void repaint_labels();
    /// Shows the layers drawn so far, without labels, while a drawing is under way; otherwise the
    /// picture stays.
    void show_unfinished();
    /// Shows nothing but the background.
    void clear();

    /// What the user drags over the picture; costs no drawing of layers or labels.
    void set_overlay(const PictureOverlay& overlay);
    [[nodiscard]] const PictureOverlay& overlay() const { return overlay_; }

    /// The topmost visible and enabled label at a place in logical pixels.
    [[nodiscard]] std::optional<LabelHit> label_at(const QPointF& place) const;

    /// The picture as shown; null if there is none.
    [[nodiscard]] const QImage& shown() const { return shown_; }

 Q_SIGNALS:
    void resized();
    /// A redraw was asked for while another one was under way, which is over now.
    void redraw_missed();
    /// The user wants the picture that was given up drawn anew.
    void redraw_wanted();
    /// The window has moved to a screen of another resolution.
    void resolution_changed();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    [[nodiscard]] QSize device_size() const;
    void paint_labels();

    const Session& session_;
    TextMeasurer& measurer_;
    LabelPainter labels_;
    QImage shown_;                        ///< layers and labels; null: nothing
    CoveredTiles beneath_labels_;         ///< of `shown_`
    QImage spare_;                        ///< memory of the picture before, for the next one
    const QImage* unfinished_ = nullptr;  ///< being drawn
    bool redraw_missed_ = false;
    PictureOverlay overlay_;
    PictureNotice* given_up_;  ///< shown over a picture that is not whole
    double ratio_ = 1;
    QTimer resolution_timer_;
};

}  // namespace veldra
