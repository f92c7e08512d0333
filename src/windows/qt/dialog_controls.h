#pragma once

#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QString>
#include <initializer_list>
#include <span>
#include <string_view>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLayout;
class QPushButton;
class QRadioButton;
class QToolButton;

namespace veldra {

// Controls as the dialogs have them: each with its name in the program and a name for those who
// have the screen read out. In captions "&" stands before the letter of the shortcut.

/// A caption without the mark of its shortcut.
[[nodiscard]] QString plain_caption(QString caption);

/// A frame, named by its caption.
[[nodiscard]] QGroupBox* make_frame(const QString& name, const QString& caption, QWidget* parent);

[[nodiscard]] QRadioButton* make_option(const QString& name, const QString& caption,
                                        const QString& accessible_name, QWidget* parent);
[[nodiscard]] QCheckBox* make_check_box(const QString& name, const QString& caption,
                                        const QString& accessible_name, QWidget* parent);
/// A list to choose from (UTF-8), as wide as its longest entry.
[[nodiscard]] QComboBox* make_list(const QString& name, const QString& accessible_name,
                                   std::span<const std::string_view> entries, QWidget* parent);
/// What gets into the box by pasting or otherwise has blanks for its line ends and other control
/// characters.
void keep_one_line(QLineEdit& edit);
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
/// A small button that goes on stepping while it is held down; its tip tells what it does.
[[nodiscard]] QToolButton* make_step_button(const QString& name, const QString& sign,
                                            const QString& purpose, QWidget* parent);

/// An option of a group: its code and its caption (UTF-8).
struct Option {
    int code;
    const char* caption;
};

/// Radio buttons of one choice, added to a layout from the first to the last. Each is named after
/// the group and its code ("opt_beob_1"); its accessible description is `purpose`.
[[nodiscard]] QButtonGroup* make_options(const QString& name, const QString& purpose,
                                         std::initializer_list<Option> options, QLayout& layout,
                                         QWidget* parent);

/// Chooses the option of a code; none if there is no such code. Nothing is signalled.
void check_option(QButtonGroup& options, int code);

/// Lets Tab come to the checked option of a group, or to its first one; the arrow keys reach the
/// others.
void lead_tab_to_checked(const QList<QAbstractButton*>& options);

/// The two buttons at the end of a dialog: `cmd_ok`, which Return presses from elsewhere, and
/// `cmd_abbrechen`.
struct EndButtons {
    QPushButton* cmd_ok = nullptr;
    QPushButton* cmd_abbrechen = nullptr;
};
/// Makes them as a row at the end of `column`; connecting them is left to the dialog. `beside`, if
/// there is one, has the room left of them.
[[nodiscard]] EndButtons add_end_buttons(QBoxLayout& column, QWidget* parent,
                                         QWidget* beside = nullptr);

}  // namespace veldra
