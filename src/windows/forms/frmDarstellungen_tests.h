#pragma once

#include <array>

#include "windows/forms/frmDarstellungen_page.h"

class QGroupBox;

namespace veldra {

/// Classes of the test values: their limits, widths and colours.
class DisplayTestsPage final : public DisplayPage {
    Q_OBJECT

 public:
    DisplayTestsPage(DisplayContext& context, QWidget* parent);

    void refresh() override;
    void take_over() override;
    [[nodiscard]] std::size_t chosen() const { return chosen_; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    [[nodiscard]] QGroupBox* build_frame(int number, const char* title, std::size_t first,
                                         std::size_t last);
    [[nodiscard]] SamplePicture* add_sample(std::size_t index, QWidget* parent);
    [[nodiscard]] QLineEdit* add_limit(TestLimit limit);
    [[nodiscard]] QWidget* build_buttons();
    void choose(int index);
    /// Passes the text of a box through its check; a number outside the bounds is answered with a
    /// message and replaced by the bound.
    void check(TestLimit limit);
    void show_limit(TestLimit limit);
    [[nodiscard]] QLineEdit& box(TestLimit limit) {
        return *limits_[static_cast<std::size_t>(limit)];
    }

    std::size_t chosen_ = 0;
    std::array<SamplePicture*, test_class_count> pictures_{};
    std::array<QLabel*, test_class_count> labels_{};
    std::array<QLineEdit*, test_limit_count> limits_{};
    QLabel* lbl_fuer_ = nullptr;
};

}  // namespace veldra
