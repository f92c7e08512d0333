#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <initializer_list>
#include <memory>
#include <utility>

#include "dialog_driver.h"
#include "dialog_keys.h"
#include "unnamed_controls.h"

namespace veldra_test {

inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

inline QStringList names(std::initializer_list<const char*> utf8) {
    QStringList list;
    for (const char* name : utf8) {
        list << text(name);
    }
    return list;
}

/// A dialog on the screen without the main window, and its controls by their names.
template <typename Dialog>
class DialogFixture : public QObject {
 protected:
    /// Makes the dialog in place of the one before and waits until it takes the keyboard.
    template <typename... Arguments>
    Dialog& show_dialog(Arguments&&... arguments) {
        dialog_ = std::make_unique<Dialog>(std::forward<Arguments>(arguments)...);
        dialog_->show();
        if (!QTest::qWaitForWindowActive(dialog_.get())) {
            qFatal("the dialog does not become the active window");
        }
        return *dialog_;
    }

    [[nodiscard]] QWidget& widget(const char* name) const { return control(*dialog_, name); }
    [[nodiscard]] QComboBox& combo(const char* name) const {
        return control<QComboBox>(*dialog_, name);
    }
    [[nodiscard]] QLineEdit& box(const char* name) const {
        return control<QLineEdit>(*dialog_, name);
    }
    [[nodiscard]] QRadioButton& option(const char* name) const {
        return control<QRadioButton>(*dialog_, name);
    }
    [[nodiscard]] QCheckBox& check(const char* name) const {
        return control<QCheckBox>(*dialog_, name);
    }
    [[nodiscard]] QAbstractButton& button(const char* name) const {
        return control<QAbstractButton>(*dialog_, name);
    }
    [[nodiscard]] QString label(const char* name) const {
        return control<QLabel>(*dialog_, name).text();
    }
    /// What a label, button, box or frame says, without the mark of its shortcut.
    [[nodiscard]] QString caption(const char* name) const {
        const QVariant said = widget(name).property("text");
        return plain((said.isValid() ? said : widget(name).property("title")).toString());
    }

    /// Names for screen readers on all controls, no shortcut twice, and the controls that Tab
    /// reaches from `first` on.
    void verify_controls_can_be_reached(const char* first, const QStringList& by_tab) {
        QCOMPARE(unnamed_controls(*dialog_), QStringList());
        QCOMPARE(shared_mnemonics(*dialog_), QStringList());
        widget(first).setFocus();
        QCOMPARE(tab_chain(*dialog_), by_tab);
        QCOMPARE(default_buttons(*dialog_), names({"cmd_ok"}));
    }

    /// `open` shows the dialog; with letters twice as large no control is cut off.
    template <typename Open>
    void verify_room_for_large_letters(Open&& open) {
        const QFont usual = QApplication::font();
        QFont large = usual;
        large.setPointSizeF(usual.pointSizeF() * 2);
        QApplication::setFont(large);
        open();
        QApplication::setFont(usual);
        for (const QWidget* one : dialog_->template findChildren<QWidget*>()) {
            if (one->isVisible() && is_control(*one) && !is_inner_part(*one) &&
                qobject_cast<QComboBox*>(one->parentWidget()) == nullptr) {
                const bool fits = one->width() >= one->minimumSizeHint().width() &&
                                  one->height() >= one->minimumSizeHint().height();
                QVERIFY2(fits, qPrintable(one->objectName()));
            }
        }
    }

    std::unique_ptr<Dialog> dialog_;
};

}  // namespace veldra_test
