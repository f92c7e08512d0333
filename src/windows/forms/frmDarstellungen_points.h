#pragma once

#include <array>

#include "drawing/display_samples.h"
#include "windows/forms/frmDarstellungen_page.h"

namespace veldra {

/// Point signatures and labels, on the screen or in the plot.
class DisplayPointsPage final : public DisplayPage {
    Q_OBJECT

 public:
    DisplayPointsPage(DisplayContext& context, SampleMedium medium, QWidget* parent);

    void refresh() override;
    [[nodiscard]] std::size_t chosen() const { return chosen_; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    static constexpr std::size_t class_count = 4;

    [[nodiscard]] bool is_plot() const { return medium_ == SampleMedium::plot; }
    /// The control's name with the suffix of the medium.
    [[nodiscard]] QString name(const char* stem) const;
    void build();
    void build_sample();
    [[nodiscard]] QWidget* build_boxes();
    [[nodiscard]] QWidget* build_fonts();
    [[nodiscard]] float& radius();
    void choose(int klasse);
    void choose_font(const QString& dialog, bool districts);
    void place_labels();
    void place_label(QLabel& label, const Label& box, const FontSpec& font, std::int32_t colour);

    SampleMedium medium_;
    std::size_t chosen_ = 0;
    SamplePicture* picture_ = nullptr;
    QLabel* lbl_pubez_ = nullptr;
    QLabel* lbl_nubez_ = nullptr;
    std::array<QLabel*, class_count> lbl_pa_{};
    QLabel* lbl_punktradius_ = nullptr;
    QLineEdit* txt_punktradius_ = nullptr;
    QLabel* lbl_druckerda_ = nullptr;
};

}  // namespace veldra
