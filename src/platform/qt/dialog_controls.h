#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <initializer_list>

class QBoxLayout;
class QPushButton;
class QRadioButton;
class QCheckBox;

namespace veldra {

// Controls as the dialogs have them: each with its name in the program and a name for those who
// have the screen read out.

[[nodiscard]] QRadioButton* make_option(const QString& name, const QString& caption,
                                        const QString& accessible_name, QWidget* parent);
[[nodiscard]] QCheckBox* make_check_box(const QString& name, const QString& caption,
                                        const QString& accessible_name, QWidget* parent);
/// A box wide enough for `letters` digits, its text on the right.
[[nodiscard]] QLineEdit* make_number_edit(const QString& name, const QString& accessible_name,
                                          int letters, QWidget* parent);
[[nodiscard]] QLabel* make_label(const QString& name, const QString& text, QWidget* parent);
/// A label that leads to a control.
[[nodiscard]] QLabel* make_buddy(const QString& name, const QString& text, QWidget* control,
                                 QWidget* parent);
/// A button that Return presses while it has the focus.
[[nodiscard]] QPushButton* make_button(const QString& name, const QString& caption,
                                       const QString& accessible_name, QWidget* parent);

/// Lets Tab come to the checked option of a group, or to its first one; the arrow keys reach the
/// others.
void lead_tab_to_checked(std::initializer_list<QRadioButton*> group);

/// The two buttons at the end of a dialog: `cmd_ok`, which Return presses from elsewhere, and
/// `cmd_abbrechen`.
struct EndButtons {
    QPushButton* cmd_ok = nullptr;
    QPushButton* cmd_abbrechen = nullptr;
};
/// Makes them as a row at the end of `column`; connecting them is left to the dialog.
[[nodiscard]] EndButtons add_end_buttons(QBoxLayout& column, QWidget* parent);

}  // namespace veldra
