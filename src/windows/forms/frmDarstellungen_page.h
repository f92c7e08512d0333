#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/display_options.h"
#include "model/session.h"
#include "model/text_measurer.h"
#include "windows/qt/choosers.h"

class QLabel;
class QPushButton;

namespace veldra {

class Printer;
class SamplePicture;

/// What the tabs of the dialog share. It lives as long as the dialog.
struct DisplayContext {
    Session& session;
    TextMeasurer& measurer;
    Printer* printer = nullptr;  ///< null: none is known
    Choosers choosers;
    /// Shows a message box over the dialog.
    std::function<void(const DisplayMessage&)> say;
    /// Tells in one line of the dialog what became of an entry; "" takes it away.
    std::function<void(const QString&)> hint;
    /// A box that loses the focus need not be read: the dialog is being left.
    std::function<bool()> leaves_unread;
    /// Brings the whole dialog into line with the session.
    std::function<void()> refresh_all;
};

/// A box that edits a number of the settings. It has no limits.
class NumberBox {
 public:
    /// `store` is given the typed text.
    NumberBox(QLineEdit& edit, std::string mask, std::function<double()> value,
              std::function<void(std::string_view)> store);

    /// Shows the value.
    void show();
    /// Stores the text if it is another than the one shown. True if it was.
    bool take_over();
    /// What is to be told of the text stored last.
    [[nodiscard]] const QString& hint() const { return hint_; }
    [[nodiscard]] QLineEdit& edit() const { return edit_; }

 private:
    QLineEdit& edit_;
    std::string mask_;
    std::function<double()> value_;
    std::function<void(std::string_view)> store_;
    QString shown_;
    QString hint_;
};

/// A combo box with a scale or factor, offered or typed.
class ScaleCombo {
 public:
    struct Rules {
        ScaleBox box;
        ScaleEntry (*check)(std::string_view text);
        std::function<std::string()> text;        ///< of the value in force; "" if there is none
        std::function<void(double value)> store;  ///< a valid value
    };
    ScaleCombo(QComboBox& combo, Rules rules, const DisplayContext& context);

    void show();
    /// Stores what was typed if it is another than the text shown. A wrong entry is answered with
    /// `message` and stays. False if it is wrong.
    bool take_over(const DisplayMessage& message);
    [[nodiscard]] bool take_over() { return take_over(scale_message(rules_.box)); }
    /// The same when the tab is left, for what has not been answered yet.
    void leave();
    [[nodiscard]] bool check_on_ok() { return take_over(scale_message_on_ok(rules_.box)); }

 private:
    void show_text(const QString& text);

    QComboBox& combo_;
    Rules rules_;
    const DisplayContext& context_;
    QString shown_;
    QString refused_;  ///< the wrong entry that was answered last
};

/// A tab of the dialog.
class DisplayPage : public QWidget {
    Q_OBJECT

 public:
    DisplayPage(DisplayContext& context, DisplayTab tab, QWidget* parent);

    /// Brings controls and samples into line with the session.
    virtual void refresh() = 0;
    /// Reads the boxes that have not been read yet.
    virtual void take_over();
    /// Checks the scales of the tab, as OK does; false after a message.
    [[nodiscard]] virtual bool check_scales() { return true; }

 protected:
    [[nodiscard]] Session& session() { return context_.session; }
    [[nodiscard]] Settings& settings() { return context_.session.settings; }
    [[nodiscard]] DisplayContext& context() { return context_; }

    QPushButton* add_button(const QString& name, const QString& caption,
                            const QString& accessible_name);
    /// The tab's button "Standard".
    QPushButton* add_standard_button(const QString& name);
    /// A box and its number; Enter and leaving it store the number and show the tab anew.
    QLineEdit* add_number_box(const QString& name, const QString& accessible_name,
                              const std::string& mask, std::function<double()> value,
                              std::function<void(std::string_view)> store);
    QLineEdit* add_line_edit(const QString& name, const QString& accessible_name);
    QLabel* add_label(const QString& name, const QString& text);
    /// A label that leads to a box.
    QLabel* add_buddy(const QString& name, const QString& text, QWidget* box);

    /// Colour dialog and line width picker for a pen.
    void ask_for_colour(const QString& name, const PenPlaces& places);
    void ask_for_width(const QString& caption, const PenPlaces& places, bool may_be_nothing);

    void show_boxes();

 private:
    /// Takes one of the boxes over and tells what became of it. True if its text was another one.
    bool take_over(NumberBox& box);

    DisplayContext& context_;
    DisplayTab tab_;
    std::vector<std::unique_ptr<NumberBox>> boxes_;
};

/// Gives labels that stand one above the other in frames of their own the room for a text.
void give_room(QLabel& label, const QString& text);

/// Makes a combo box for typed and offered texts.
[[nodiscard]] QComboBox* make_scale_combo(const QString& name, const QString& accessible_name,
                                          QWidget* parent);

}  // namespace veldra
