#pragma once

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <vector>

namespace veldra_test {

/// A message box that appeared.
struct SeenMessage {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QString title;
    QString text;
};

/// Presses the first button of each message box that appears, and remembers what it said.
class MessageBoxes final : public QObject {
 public:
    MessageBoxes() {
        connect(&look_, &QTimer::timeout, this, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr || !box->isVisible()) {
                return;
            }
            seen.push_back({box->icon(), box->windowTitle(), box->text()});
            if (at_box) {
                at_box();
            }
            box->buttons().constFirst()->click();
        });
        look_.start(5);
    }

    std::vector<SeenMessage> seen;
    /// Looks at what stands behind the box.
    std::function<void()> at_box;

 private:
    QTimer look_;
};

/// A control by its name, UTF-8; the test fails if the window has none.
template <typename Control = QWidget>
Control& control(const QWidget& window, const char* name) {
    auto* const found = window.findChild<Control*>(QString::fromUtf8(name));
    if (found == nullptr) {
        qFatal("no control %s", name);
    }
    return *found;
}

/// Replaces the text of a box as a user would, without leaving it.
inline void type(QLineEdit& box, const char* text) {
    box.setFocus();
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    for (const QChar character : QString::fromUtf8(text)) {
        if (character.unicode() < 0x80) {
            QTest::keyClicks(&box, character);
        } else {
            box.insert(character);  // the toolkit's tests have no keys for others
        }
    }
}

inline void type_and_enter(QLineEdit& box, const char* text) {
    type(box, text);
    QTest::keyClick(&box, Qt::Key_Return);
}

inline void type(QComboBox& box, const char* text) {
    box.setFocus();
    box.lineEdit()->selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClicks(&box, QString::fromUtf8(text));
}

inline void type_and_enter(QComboBox& box, const char* text) {
    type(box, text);
    QTest::keyClick(&box, Qt::Key_Return);
}

/// Clicks with the mouse, so that the focus moves as it would.
inline void click(QWidget& widget) {
    QTest::mouseClick(&widget, Qt::LeftButton);
}

/// Puts a path into the name box of a file dialog. The dialog's own way leaves the box alone once
/// the keyboard has come to it.
inline void name_file(QFileDialog& chooser, const QString& path) {
    control<QLineEdit>(chooser, "fileNameEdit").setText(path);
}

/// Runs `act` as soon as a dialog of class `Dialog` is the active modal one.
template <typename Dialog>
void when_shown(std::function<void(Dialog&)> act) {
    auto* look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, look, [look, act = std::move(act)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->isVisible()) {
            look->stop();
            look->deleteLater();
            act(*dialog);
        }
    });
    look->start(5);
}

}  // namespace veldra_test
