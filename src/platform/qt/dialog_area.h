#pragma once

#include <QScrollArea>

namespace veldra {

/// Holds the contents of a dialog. It is as large as they ask for; on a screen that is too small
/// for them it scrolls instead of cutting anything off.
class DialogArea final : public QScrollArea {
    Q_OBJECT

 public:
    DialogArea(QWidget* contents, QWidget* parent);
    [[nodiscard]] QSize sizeHint() const override;
};

}  // namespace veldra
