#include "platform/qt/dialog_controls.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

namespace veldra {

namespace {

template <typename Button>
Button* make_named(const QString& name, const QString& caption, const QString& accessible_name,
                   QWidget* parent) {
    auto* button = new Button(caption, parent);
    button->setObjectName(name);
    button->setAccessibleName(accessible_name);
    return button;
}

}  // namespace

QRadioButton* make_option(const QString& name, const QString& caption,
                          const QString& accessible_name, QWidget* parent) {
    return make_named<QRadioButton>(name, caption, accessible_name, parent);
}

QCheckBox* make_check_box(const QString& name, const QString& caption,
                          const QString& accessible_name, QWidget* parent) {
    return make_named<QCheckBox>(name, caption, accessible_name, parent);
}

QPushButton* make_button(const QString& name, const QString& caption,
                         const QString& accessible_name, QWidget* parent) {
    return make_named<QPushButton>(name, caption, accessible_name, parent);
}

QLineEdit* make_number_edit(const QString& name, const QString& accessible_name, int letters,
                            QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setAccessibleName(accessible_name);
    edit->setAlignment(Qt::AlignRight);
    const QFontMetrics metrics(edit->font());
    // Room for the frame and the cursor stands in the hint, beside that for its usual letters.
    const int usual = metrics.horizontalAdvance(QLatin1Char('x')) * 17;
    edit->setFixedWidth(edit->sizeHint().width() - usual +
                        metrics.horizontalAdvance(QLatin1Char('0')) * letters);
    return edit;
}

QLabel* make_label(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* make_buddy(const QString& name, const QString& text, QWidget* control, QWidget* parent) {
    QLabel* label = make_label(name, text, parent);
    label->setBuddy(control);
    return label;
}

void lead_tab_to_checked(std::initializer_list<QRadioButton*> group) {
    const auto* const checked =
        std::find_if(group.begin(), group.end(), [](const auto* one) { return one->isChecked(); });
    const QRadioButton* const led_to = checked == group.end() ? *group.begin() : *checked;
    for (QRadioButton* option : group) {
        option->setFocusPolicy(option == led_to ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

EndButtons add_end_buttons(QBoxLayout& column, QWidget* parent) {
    EndButtons buttons;
    buttons.cmd_ok =
        make_button(QStringLiteral("cmd_ok"), QStringLiteral("&OK"), QStringLiteral("OK"), parent);
    buttons.cmd_ok->setDefault(true);
    buttons.cmd_abbrechen =
        make_button(QStringLiteral("cmd_abbrechen"), QStringLiteral("&Abbrechen"),
                    QStringLiteral("Abbrechen"), parent);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(buttons.cmd_ok);
    row->addWidget(buttons.cmd_abbrechen);
    column.addLayout(row);
    return buttons;
}

}  // namespace veldra
