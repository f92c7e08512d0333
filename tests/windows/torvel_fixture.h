#pragma once

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

#include "control_names.h"
#include "windows/frmTorvel.h"
#include "windows/qt/qt_user_interface.h"

namespace veldra::test {

constexpr int short_wait = 300;  // milliseconds that the logo waits here

/// Four points of a square of 100 m and two observations.
constexpr const char* square_network =
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600000.000  0  0 1 \"2\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600100.000  1  0 0 \"3\"\r\n"
    "PUNKTSIGNATUR  3500000.000  5600100.000  1  0 0 \"4\"\r\n"
    "RICHTUNG  3500000.000  5600000.000  3500100.000  5600000.000    0.0\r\n"
    "DISTANZ  3500000.000  5600000.000  3500100.000  5600100.000    0.0\r\n";

using veldra_test::text;

/// A main window with folders of its own.
class TorvelFixture : public QObject {
 protected:
    void make_folders() {
        root_ = std::make_unique<QTemporaryDir>();
        for (const char* folder : {"dokumente", "windows", "programm"}) {
            QVERIFY(QDir().mkpath(path(folder)));
        }
        folders_ = {system_path(path("dokumente")), system_path(path("windows")),
                    system_path(path("programm"))};
        session_ = Session();
        box_title_.clear();
        box_text_.clear();
    }

    void close_down() {
        window_.reset();
        root_.reset();
    }

    [[nodiscard]] QString path(const char* name) const { return root_->filePath(text(name)); }

    void write(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        QDir().mkpath(QFileInfo(path(name)).path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    [[nodiscard]] QByteArray read(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    FrmTorvel& create(const char* befehlszeile = "") {
        window_ = std::make_unique<FrmTorvel>(session_, folders_, befehlszeile, short_wait);
        return *window_;
    }

    FrmTorvel& start(const char* befehlszeile = "") {
        create(befehlszeile).load();
        return *window_;
    }

    /// A plain start with the logo out of the way and a file opened.
    void start_and_open(const char* name) {
        start();
        logo()->accept();
        window_->choose_file = [file = path(name)] { return file; };
        action("m_datei_beliebig")->trigger();
    }
    /// The same with a network, that of the square unless told otherwise.
    void start_with_network(const QByteArray& network = square_network) {
        write("ve_quadrat.dat", network);
        start_and_open("ve_quadrat.dat");
    }

    [[nodiscard]] QAction* action(const char* name) const {
        if (auto* menu = window_->findChild<QMenu*>(text(name))) {
            return menu->menuAction();
        }
        return window_->findChild<QAction*>(text(name));
    }

    [[nodiscard]] FrmLogo* logo() const { return window_->findChild<FrmLogo*>(text("frmLogo")); }

    template <typename Control>
    [[nodiscard]] Control* of_logo(const char* name) const {
        return logo()->findChild<Control*>(text(name));
    }

    /// Presses OK on the next message box and keeps what it said.
    void answer_message_box() {
        auto* look = new QTimer(this);
        connect(look, &QTimer::timeout, this, [this, look] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) {
                return;
            }
            look->deleteLater();
            box_title_ = box->windowTitle();
            box_text_ = box->text();
            box_icon_ = box->icon();
            box->buttons().constFirst()->click();
        });
        look->start(10);
    }

    /// Presses the n-th button of the next box.
    void answer(int nth) {
        auto* look = new QTimer(this);
        connect(look, &QTimer::timeout, this, [this, look, nth] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) {
                return;
            }
            look->deleteLater();
            box_title_ = box->windowTitle();
            box_text_ = box->text();
            default_button_ =
                box->defaultButton() == nullptr ? QString() : box->defaultButton()->text();
            box->buttons().at(nth)->click();
        });
        look->start(10);
    }

    // The mouse over the picture; places are logical pixels.
    [[nodiscard]] PictureWidget& picture() const { return window_->picture(); }
    void mouse(QEvent::Type type, const QPoint& place, Qt::MouseButton button,
               Qt::MouseButtons buttons) {
        QMouseEvent event(type, place, picture().mapToGlobal(QPointF(place)), button, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(&picture(), &event);
    }
    void press(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonPress, place, button, button);
    }
    void move(const QPoint& place, Qt::MouseButtons buttons = Qt::NoButton) {
        mouse(QEvent::MouseMove, place, Qt::NoButton, buttons);
    }
    void release(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton);
    }
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton) {
        press(from, button);
        move((from + to) / 2, button);
        move(to, button);
        release(to, button);
    }

    std::unique_ptr<QTemporaryDir> root_;
    SystemFolders folders_;
    Session session_;
    std::unique_ptr<FrmTorvel> window_;
    QString box_title_;
    QString box_text_;
    QMessageBox::Icon box_icon_ = QMessageBox::NoIcon;

    // Buttons of a question.
    static constexpr int yes = 0;
    static constexpr int no = 1;
    QString default_button_;
};

}  // namespace veldra::test
