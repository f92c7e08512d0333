#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <string_view>

#include "text/user_interface.h"

namespace veldra {

/// Message boxes and mouse pointer of the desktop.
class QtUserInterface final : public UserInterface {
 public:
    /// `window` owns the boxes, `picture` bears the mouse pointer; both may be null.
    QtUserInterface(QWidget* window, QWidget* picture);

    bool message_box(MessageStyle style, const std::string& title,
                     const std::string& text) override;
    void set_mouse_pointer(int pointer) override;

    /// Called before a box appears, so that the window behind it shows how far things are.
    std::function<void()> before_message;
    /// Called when a box has been answered.
    std::function<void()> after_message;
    /// Nobody is there any more, and the program is to end: no box appears and no event is served.
    /// Messages go to the standard error, questions are answered by No.
    bool unattended = false;

 private:
    QPointer<QWidget> window_;
    QPointer<QWidget> picture_;
};

/// Serves the window system's events, but no input, until it has shown the window: only then is it
/// known where the window stands. Waits a second at most, and no longer than `goes_on`.
void wait_until_shown(const QWidget& window, const std::function<bool()>& goes_on);

/// Shows the reason why the program cannot go on.
void show_fatal_error(QWidget* window, const std::string& message);

/// What a file dialog says. `filter` is in pairs of text and pattern with "|" between them, UTF-8.
struct FileQuestion {
    QString name;  ///< of the dialog
    QString title;
    std::string_view filter;
};

/// Asks for a file that exists; "" if the user gave up. The dialog begins in `folder`, or in the
/// current one if there is none of that name, and leaves there the folder of the choice.
[[nodiscard]] QString ask_for_existing_file(QWidget* window, const FileQuestion& question,
                                            QString& folder);

/// Asks for the name of a file to be written, which may exist: the user is then asked once more. ""
/// if the user gave up. `proposed` is the name that stands in the dialog at first, "" for none; a
/// name without an ending gets that of the filter. `folder` as above.
[[nodiscard]] QString ask_for_new_file(QWidget* window, const FileQuestion& question,
                                       const QString& proposed, QString& folder);

/// "plan.pdf" for the graphic file "plan.dat"; "" for no file.
[[nodiscard]] QString proposed_name(const std::string& graphic_file, const QString& ending);

/// The pointer shape of a platform number: 0 default, 2 cross, 11 hourglass, 99 moving.
void show_mouse_pointer(QWidget& widget, int pointer);

/// The filter in the toolkit's form: each text as it is, with its pattern behind it. "*.*" means
/// every file, also one without a point in its name.
[[nodiscard]] QStringList to_name_filters(std::string_view filter);

/// A path of the system as the toolkit's text, and back.
[[nodiscard]] QString path_text(const std::string& path);
[[nodiscard]] std::string system_path(const QString& path);

}  // namespace veldra
