#include "windows/forms/frmDarstellungen_page.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "text/text_forms.h"
#include "windows/forms/frmStrichst.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/entry_box.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

constexpr int box_letters = 9;

}  // namespace

NumberBox::NumberBox(QLineEdit& edit, std::string mask, std::function<double()> value,
                     std::function<void(std::string_view)> store)
    : edit_(edit), mask_(std::move(mask)), value_(std::move(value)), store_(std::move(store)) {}

void NumberBox::show() {
    shown_ = QString::fromStdString(number_text(value_(), mask_));
    edit_.setText(shown_);
}

bool NumberBox::take_over() {
    if (edit_.text() == shown_) {
        return false;
    }
    const std::string typed = edit_.text().toStdString();
    store_(typed);
    show();
    hint_ = QString::fromStdString(taken_otherwise(typed, shown_.toStdString()));
    return true;
}

ScaleCombo::ScaleCombo(QComboBox& combo, Rules rules, const DisplayContext& context)
    : combo_(combo), rules_(std::move(rules)), context_(context) {
    const auto commit = [this] { static_cast<void>(take_over()); };
    new EntryBox(combo, *combo.lineEdit(), commit, context.leaves_unread);
    // The toolkit reports an offered text that was typed as a choice too, at the loss of the focus.
    QObject::connect(&combo, &QComboBox::activated, &combo, [this, commit] {
        if (!context_.leaves_unread()) {
            commit();
        }
    });
}

void ScaleCombo::show() {
    show_text(QString::fromStdString(rules_.text()));
}

void ScaleCombo::show_text(const QString& text) {
    shown_ = text;
    refused_ = text;
    combo_.setCurrentIndex(combo_.findText(text));  // where the arrow keys go on from
    combo_.setEditText(text);
}

bool ScaleCombo::take_over(const DisplayMessage& message) {
    const QString typed = combo_.currentText();
    if (typed.isEmpty() && shown_.isEmpty()) {
        return true;  // no scale is set, and none was given
    }
    const ScaleEntry entry = rules_.check(typed.toStdString());
    if (!entry.valid) {
        refused_ = typed;
        context_.say(message);
        return false;
    }
    if (typed != shown_) {
        rules_.store(entry.value);
        show_text(QString::fromStdString(entry.text));
        context_.refresh_all();
    }
    return true;
}

void ScaleCombo::leave() {
    const QString typed = combo_.currentText();
    if (typed != shown_ && typed != refused_) {
        static_cast<void>(take_over());
    }
}

DisplayPage::DisplayPage(DisplayContext& context, DisplayTab tab, QWidget* parent)
    : QWidget(parent), context_(context), tab_(tab) {}

void DisplayPage::take_over() {
    bool changed = false;
    for (const auto& box : boxes_) {
        changed = take_over(*box) || changed;
    }
    if (changed) {
        refresh();
    }
}

bool DisplayPage::take_over(NumberBox& box) {
    const bool changed = box.take_over();
    if (changed) {
        context_.hint(box.hint());
    }
    return changed;
}

void DisplayPage::show_boxes() {
    for (const auto& box : boxes_) {
        box->show();
    }
}

QPushButton* DisplayPage::add_button(const QString& name, const QString& caption,
                                     const QString& accessible_name) {
    return make_button(name, caption, accessible_name, this);
}

QPushButton* DisplayPage::add_standard_button(const QString& name) {
    auto* button = add_button(name, QStringLiteral("&Standard"), QStringLiteral("Standard"));
    connect(button, &QPushButton::clicked, this, [this] {
        display_standard(session(), tab_);
        context_.refresh_all();
    });
    return button;
}

QLineEdit* DisplayPage::add_line_edit(const QString& name, const QString& accessible_name) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(name);
    edit->setAccessibleName(accessible_name);
    edit->setMinimumWidth(QFontMetrics(edit->font()).averageCharWidth() * box_letters);
    edit->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return edit;
}

QLineEdit* DisplayPage::add_number_box(const QString& name, const QString& accessible_name,
                                       const std::string& mask, std::function<double()> value,
                                       std::function<void(std::string_view)> store) {
    QLineEdit* edit = add_line_edit(name, accessible_name);
    edit->setAlignment(Qt::AlignRight);
    boxes_.push_back(std::make_unique<NumberBox>(*edit, mask, std::move(value), std::move(store)));
    NumberBox* box = boxes_.back().get();
    new EntryBox(
        *edit, *edit,
        [this, box] {
            if (take_over(*box)) {
                refresh();
            }
        },
        context_.leaves_unread);
    return edit;
}

QLabel* DisplayPage::add_label(const QString& name, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    return label;
}

QLabel* DisplayPage::add_buddy(const QString& name, const QString& text, QWidget* box) {
    QLabel* label = add_label(name, text);
    label->setBuddy(box);
    return label;
}

void DisplayPage::ask_for_colour(const QString& name, const PenPlaces& places) {
    const auto chosen = context_.choosers.colour(window(), name, places.colour());
    if (chosen) {
        places.set_colour(*chosen);
        refresh();
    }
}

void DisplayPage::ask_for_width(const QString& caption, const PenPlaces& places,
                                bool may_be_nothing) {
    LineWidthChoice choice;
    choice.strich_wert = places.width();
    choice.strich_null_erlaubt = may_be_nothing ? 1 : 0;
    choice.strich_hintergrund = picture_background_colour();
    FrmStrichst dialog(window(), choice, caption);
    if (dialog.exec() == QDialog::Accepted) {
        places.set_width(choice.strich_wert);
        refresh();
    }
}

void give_room(QLabel& label, const QString& text) {
    label.setMinimumWidth(label.fontMetrics().horizontalAdvance(text));
}

QComboBox* make_scale_combo(const QString& name, const QString& accessible_name, QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    combo->setAccessibleName(accessible_name);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    combo->lineEdit()->setAccessibleName(accessible_name);
    return combo;
}

}  // namespace veldra
