#pragma once

#include <QButtonGroup>
#include <QGroupBox>
#include <QLayout>
#include <QString>
#include <initializer_list>

namespace veldra {

/// An option of a group: its code and its caption (UTF-8, "&" before the letter of its shortcut).
struct Option {
    int code;
    const char* caption;
};

/// A frame with a caption, named as the control `name`.
[[nodiscard]] QGroupBox* make_frame(const char* name, const char* caption, QWidget* parent);

/// Radio buttons of one choice, added to a layout from the first to the last. Each is named after
/// the group and its code ("opt_beob_1"); its accessible description is `purpose`.
[[nodiscard]] QButtonGroup* make_options(const char* name, const QString& purpose,
                                         std::initializer_list<Option> options, QLayout& layout,
                                         QWidget* parent);

/// Chooses the option of a code; none if there is no such code. Nothing is signalled.
void check_option(QButtonGroup& options, int code);

/// A caption without the mark of its shortcut.
[[nodiscard]] QString plain_caption(QString caption);

}  // namespace veldra
