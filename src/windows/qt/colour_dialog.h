#pragma once

#include <QDialog>
#include <cstdint>

class QColorDialog;

namespace veldra {

/// The toolkit's choice of a colour above buttons of the program's own. On a screen that is too
/// small for it it scrolls, and OK and Abbrechen stay in sight.
class ColourDialog final : public QDialog {
    Q_OBJECT

 public:
    /// Colours are 0x00BBGGRR.
    ColourDialog(QWidget* parent, const QString& name, std::int32_t colour);

    [[nodiscard]] std::int32_t colour() const;
    void set_colour(std::int32_t colour);

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    QColorDialog* colours_;
};

}  // namespace veldra
