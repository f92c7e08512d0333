#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>

#include "dialogs/display_fonts.h"
#include "windows/qt/choosers.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QListWidget;
class QPushButton;

namespace veldra {

/// Chooses face, style and underline of a font, and its size and colour if that is asked for. The
/// styles are the four that a font is kept with, whatever styles the system has of a face and
/// whatever language their names are in; a face that the system lacks stands in the list too. So OK
/// gives what is shown as chosen, and what was not touched is given back as it came.
class FontDialog final : public QDialog {
    Q_OBJECT

 public:
    struct Parts {
        bool size = true;
        bool colour = true;
    };

    FontDialog(QWidget* parent, const QString& name, const FontChoice& choice, const Parts& parts);

    /// What is chosen now. A size that is none leaves the one that was set.
    [[nodiscard]] FontChoice choice() const;
    /// The dialog for the colour.
    Choosers::Colour choose_colour;

    /// Refuses a size that is none, with a message.
    void accept() override;

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    void build(const Parts& parts);
    void build_lists(QGridLayout& grid);
    void build_size(QGridLayout& grid);
    [[nodiscard]] QLabel* build_sample();
    void build_colour(QBoxLayout& row);
    void fill_faces();
    [[nodiscard]] std::string chosen_face() const;
    /// None if the text is no size from 1 to 1638 points.
    [[nodiscard]] std::optional<double> typed_points() const;
    void show_colour();
    void show_sample();

    FontChoice before_;
    std::int32_t colour_;
    int row_before_ = 0;  ///< of the face that was set
    QString size_before_;
    QListWidget* lst_schriftart_ = nullptr;
    QListWidget* lst_schriftstil_ = nullptr;
    QComboBox* cbo_groesse_ = nullptr;  ///< null if no size is asked for
    QCheckBox* chk_unterstrichen_ = nullptr;
    QPushButton* cmd_farbe_ = nullptr;  ///< null if no colour is asked for
    QLabel* lbl_muster_ = nullptr;
};

}  // namespace veldra
