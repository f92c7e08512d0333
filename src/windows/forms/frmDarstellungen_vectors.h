#pragma once

#include <array>
#include <memory>
#include <vector>

#include "windows/forms/frmDarstellungen_page.h"

class QGroupBox;

namespace veldra {

/// Vectors of positions (slots 1 to 3) or of heights (slots 4 to 6).
class DisplayVectorsPage final : public DisplayPage {
    Q_OBJECT

 public:
    /// `tab` is one of the two tabs of vectors.
    DisplayVectorsPage(DisplayContext& context, DisplayTab tab, QWidget* parent);

    void refresh() override;
    void take_over() override;
    bool check_scales() override;
    [[nodiscard]] std::size_t chosen() const { return chosen_; }

 private:
    static constexpr std::size_t frame_count = 3;

    struct MaximumBox {
        QLineEdit* box;
        std::size_t slot;
        bool control_points;
    };

    [[nodiscard]] bool is_height() const { return first_slot_ > 1; }
    /// One of two names, by the tab.
    [[nodiscard]] QString either(const char* position, const char* height) const;
    [[nodiscard]] QGroupBox* build_frame(std::size_t frame);
    void add_sample(QWidget* group, std::size_t index);
    [[nodiscard]] QComboBox* add_scale(std::size_t frame, const QString& what);
    QLineEdit* add_maximum(std::size_t slot, bool control_points);
    [[nodiscard]] QWidget* build_buttons();
    void choose(int index);
    [[nodiscard]] VectorItem item() const { return vector_item(first_slot_, chosen_); }

    std::size_t first_slot_;
    std::size_t chosen_ = 0;
    std::array<SamplePicture*, vector_item_count> pictures_{};
    std::vector<MaximumBox> maxima_;
    std::vector<std::unique_ptr<ScaleCombo>> scales_;
    QLabel* lbl_fuer_ = nullptr;
};

}  // namespace veldra
