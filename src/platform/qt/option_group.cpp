#include "platform/qt/option_group.h"

#include <QRadioButton>
#include <QSignalBlocker>

namespace veldra {

QGroupBox* make_frame(const char* name, const char* caption, QWidget* parent) {
    auto* frame = new QGroupBox(QString::fromUtf8(caption), parent);
    frame->setObjectName(QString::fromUtf8(name));
    frame->setAccessibleName(plain_caption(frame->title()));
    return frame;
}

QButtonGroup* make_options(const char* name, const QString& purpose,
                           std::initializer_list<Option> options, QLayout& layout,
                           QWidget* parent) {
    auto* group = new QButtonGroup(parent);
    group->setObjectName(QString::fromUtf8(name));
    for (const Option& option : options) {
        auto* button = new QRadioButton(QString::fromUtf8(option.caption), parent);
        button->setObjectName(QStringLiteral("%1_%2").arg(group->objectName()).arg(option.code));
        button->setAccessibleName(plain_caption(button->text()));
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
    // The Tab key goes to the checked option, without one to the first.
    QAbstractButton* const reached = chosen != nullptr ? chosen : options.buttons().value(0);
    for (QAbstractButton* const button : options.buttons()) {
        button->setFocusPolicy(button == reached ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

QString plain_caption(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

}  // namespace veldra
