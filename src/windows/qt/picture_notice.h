#pragma once

#include <QFrame>

namespace veldra {

/// Says over the upper left of the picture that its drawing was given up, and offers to draw it
/// anew. Hidden at first.
class PictureNotice final : public QFrame {
    Q_OBJECT

 public:
    explicit PictureNotice(QWidget* picture);

 Q_SIGNALS:
    void redraw_wanted();

 protected:
    void hideEvent(QHideEvent* event) override;
};

}  // namespace veldra
