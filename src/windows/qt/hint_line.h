#pragma once

#include <QLabel>

namespace veldra {

/// One line at the buttons of a dialog that tells what became of an entry: one that was brought
/// into its limits, or one that was not taken. It needs no answer; screen readers are told of it.
/// What has no room is cut off and shown as tool tip.
class HintLine final : public QLabel {
    Q_OBJECT

 public:
    /// `lbl_hinweis` of its dialog.
    explicit HintLine(QWidget* parent);

    /// Shows a text in place of the one before; "" takes it away.
    void tell(const QString& hint);
    [[nodiscard]] QString hint() const { return hint_; }

 protected:
    void resizeEvent(QResizeEvent* event) override;

 private:
    void show_hint();

    QString hint_;
};

}  // namespace veldra
