#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "drawing/label.h"
#include "platform/qt/label_painter.h"
#include "platform/qt/picture_overlay.h"
#include "shell/session.h"
#include "shell/user_interface.h"

namespace veldra {

class Printer;

/// The picture of the main window. It keeps the drawn layers as an image and paints the session's
/// labels over it.
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
    void redraw(Session& session, UserInterface& ui, Printer* printer = nullptr);
    /// Paints the labels anew over the layers that are there.
    void repaint_labels();
    /// While a drawing is under way: shows the layers drawn so far, without labels.
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
    /// The window has moved to a screen of another resolution.
    void resolution_changed();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    [[nodiscard]] QSize device_size() const;

    const Session& session_;
    TextMeasurer& measurer_;
    LabelPainter labels_;
    QImage layers_;  ///< null: nothing is shown
    QImage shown_;   ///< layers and labels
    PictureOverlay overlay_;
    double ratio_ = 1;
    bool drawing_ = false;
    QTimer resolution_timer_;
};

}  // namespace veldra
