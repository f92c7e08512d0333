#pragma once

#include <QColor>
#include <QWidget>
#include <cstdint>
#include <functional>

#include "drawing/display_samples.h"
#include "model/target.h"

namespace veldra {

/// A small picture that shows how something will be drawn. It can be chosen among its like by a
/// click or the space bar; the arrow keys ask for the one before or after.
class SamplePicture final : public QWidget {
    Q_OBJECT

 public:
    /// Draws on a target whose coordinates are twips from the lower left corner.
    using Draw = std::function<void(DrawingTarget& target, const SampleSize& size)>;

    SamplePicture(const QString& name, const QString& accessible_name, QWidget* parent);

    void set_draw(Draw draw) { draw_ = std::move(draw); }
    /// Least size, in lines and letters of the font.
    void set_room(int letters, int lines);
    void set_background(const QColor& colour);
    /// Marks the picture as the chosen one by a frame.
    void set_chosen(bool chosen);
    [[nodiscard]] bool is_chosen() const { return chosen_; }
    /// The user cannot choose this picture.
    void set_choosable(bool choosable);

    [[nodiscard]] SampleSize sample_size() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
    void chosen();
    /// An arrow key: -1 to the one before, 1 to the one after.
    void stepped(int by);
    void resized();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    Draw draw_;
    QColor background_;
    int letters_ = 24;
    int lines_ = 3;
    bool chosen_ = false;
    bool choosable_ = false;
};

/// A colour 0x00BBGGRR as the toolkit's, and back.
[[nodiscard]] QColor to_qcolor(std::int32_t colour);
[[nodiscard]] std::int32_t from_qcolor(const QColor& colour);

/// Background of the picture, 0x00BBGGRR.
[[nodiscard]] std::int32_t picture_background_colour();

}  // namespace veldra
