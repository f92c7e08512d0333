#include "windows/qt/dialog_controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <QValidator>
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

QString plain_caption(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

QGroupBox* make_frame(const QString& name, const QString& caption, QWidget* parent) {
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(name);
    frame->setAccessibleName(plain_caption(caption));
    return frame;
}

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

QToolButton* make_step_button(const QString& name, const QString& sign, const QString& purpose,
                              QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(sign);
    button->setAccessibleName(purpose);
    button->setToolTip(purpose);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

QComboBox* make_list(const QString& name, const QString& accessible_name,
                     std::span<const std::string_view> entries, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->setAccessibleName(accessible_name);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const std::string_view entry : entries) {
        list->addItem(QString::fromUtf8(entry.data(), static_cast<qsizetype>(entry.size())));
    }
    return list;
}

namespace {

/// Accepts every text and puts it into one line.
class OneLineValidator final : public QValidator {
 public:
    using QValidator::QValidator;

    State validate(QString& input, int& /*position*/) const override {
        std::replace_if(input.begin(), input.end(), breaks_line, QChar(QLatin1Char(' ')));
        return Acceptable;
    }

 private:
    /// Of the upper control characters some stand for bytes of a file, and stay.
    static bool breaks_line(QChar letter) {
        constexpr char16_t first_letter = 0x20;
        constexpr char16_t del = 0x7F;
        const char16_t code = letter.unicode();
        return code < first_letter || code == del || code == QChar::LineSeparator ||
               code == QChar::ParagraphSeparator;
    }
};

}  // namespace

void keep_one_line(QLineEdit& edit) {
    edit.setValidator(new OneLineValidator(&edit));
}

QLineEdit* make_number_edit(const QString& name, const QString& accessible_name, int letters,
                            QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    keep_one_line(*edit);
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

QButtonGroup* make_options(const QString& name, const QString& purpose,
                           std::initializer_list<Option> options, QLayout& layout,
                           QWidget* parent) {
    auto* group = new QButtonGroup(parent);
    group->setObjectName(name);
    for (const Option& option : options) {
        const QString caption = QString::fromUtf8(option.caption);
        QRadioButton* button = make_option(QStringLiteral("%1_%2").arg(name).arg(option.code),
                                           caption, plain_caption(caption), parent);
        button->setAccessibleDescription(purpose);
        group->addButton(button, option.code);
        layout.addWidget(button);
    }
    return group;
}

void check_option(QButtonGroup& options, int code) {
    const QSignalBlocker quiet(options);
    QAbstractButton* const chosen = options.button(code);
    if (chosen != nullptr) {
        chosen->setChecked(true);
    } else {
        options.setExclusive(false);  // an exclusive group keeps one checked
        for (QAbstractButton* const button : options.buttons()) {
            button->setChecked(false);
        }
        options.setExclusive(true);
    }
    lead_tab_to_checked(options.buttons());
}

void lead_tab_to_checked(const QList<QAbstractButton*>& options) {
    const auto checked = std::find_if(options.begin(), options.end(),
                                      [](const auto* one) { return one->isChecked(); });
    const QAbstractButton* const led_to = checked == options.end() ? options.value(0) : *checked;
    for (QAbstractButton* option : options) {
        option->setFocusPolicy(option == led_to ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

EndButtons add_end_buttons(QBoxLayout& column, QWidget* parent, QWidget* beside) {
    EndButtons buttons;
    buttons.cmd_ok =
        make_button(QStringLiteral("cmd_ok"), QStringLiteral("&OK"), QStringLiteral("OK"), parent);
    buttons.cmd_ok->setDefault(true);
    buttons.cmd_abbrechen =
        make_button(QStringLiteral("cmd_abbrechen"), QStringLiteral("&Abbrechen"),
                    QStringLiteral("Abbrechen"), parent);
    auto* row = new QHBoxLayout;
    if (beside == nullptr) {
        row->addStretch();
    } else {
        row->addWidget(beside, 1);
    }
    row->addWidget(buttons.cmd_ok);
    row->addWidget(buttons.cmd_abbrechen);
    column.addLayout(row);
    return buttons;
}

}  // namespace veldra
