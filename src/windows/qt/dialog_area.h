#pragma once

#include <QScrollArea>

namespace veldra {

/// Holds the contents of a dialog above its row of buttons. It is as large as they ask for; on a
/// screen that is too small for them it scrolls instead of cutting anything off, and follows the
/// keyboard.
class DialogArea final : public QScrollArea {
    Q_OBJECT

 public:
    DialogArea(QWidget* contents, QWidget* parent);
    ~DialogArea() override;
    DialogArea(const DialogArea&) = delete;
    DialogArea& operator=(const DialogArea&) = delete;
    [[nodiscard]] QSize sizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    [[nodiscard]] QSize room_on_screen() const;
    void show_focus(QWidget* focus);
};

}  // namespace veldra
