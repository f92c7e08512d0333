#pragma once

#include <QDialog>
#include <array>
#include <cstdint>

class QLabel;
class QPushButton;

namespace veldra {

class SamplePicture;

/// What the line width picker is given and what it gives back.
struct LineWidthChoice {
    std::int16_t strich_wert = 1;          ///< changed by cmd_ok only
    std::int16_t strich_null_erlaubt = 0;  ///< 1: width 0, not drawn at all, may be chosen
    std::int32_t strich_hintergrund = 0;   ///< 0x00BBGGRR
};

/// Picks a pen width from 0 to 6.
class FrmStrichst final : public QDialog {
    Q_OBJECT

 public:
    static constexpr std::size_t width_count = 7;

    /// `choice` outlives the dialog. `caption` is the title of its window.
    FrmStrichst(QWidget* window, LineWidthChoice& choice, const QString& caption);

    /// The width that OK would take; the one that was given until another is chosen.
    [[nodiscard]] std::int16_t held() const { return held_; }

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    void build();
    void build_width(std::size_t i);
    void choose(int i);
    [[nodiscard]] bool is_offered(int i) const;
    void refresh();

    LineWidthChoice& choice_;
    std::int16_t held_;
    std::array<SamplePicture*, width_count> pic_strichst_{};
    std::array<QLabel*, width_count> lbl_strichst_{};
    QPushButton* cmd_ok_ = nullptr;
};

}  // namespace veldra
