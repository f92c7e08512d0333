#pragma once

#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <cmath>
#include <functional>
#include <utility>

#include "dialog_driver.h"
#include "torvel_fixture.h"
#include "windows/forms/frmNetzteile.h"
#include "windows/frmTorvel_status.h"

namespace veldra::test {

constexpr int many = 1500;  // points: more operations than a drawing does without asking

/// Points along a diagonal, a metre apart, with labels from "1" on.
inline QByteArray diagonal(int count, int from = 0) {
    QByteArray lines;
    for (int i = 0; i < count; ++i) {
        lines += "PUNKTSIGNATUR " + QByteArray::number(3500000 + from + i) + " " +
                 QByteArray::number(5600000 + i) + " 0 0 1 \"" + QByteArray::number(i + 1) +
                 "\"\r\n";
    }
    return lines;
}

inline QByteArray two_parts() {
    return "NETZTEIL Eins\r\nMA\xDFSTABGRUNDRISS 1000\r\nTITEL2 erstes\r\n" + diagonal(many) +
           "DISTANZ 3500000 5600000 3500010 5600010 0\r\n"
           "NETZTEIL Zwei\r\nMA\xDFSTABGRUNDRISS 500\r\n" +
           diagonal(20, 5000);
}

/// Stands between the work and its progress display, and takes its time.
struct SlowWork final : LongWork {
    bool goes_on() override {
        QTest::qSleep(45);  // longer than between two looks at the events
        ++questions;
        LongWork& to = *next;
        to = *this;  // what has been told of the work
        const bool on = next->goes_on();
        if (at_question) {
            at_question();
        }
        return on;
    }
    TorvelProgress* next = nullptr;
    std::function<void()> at_question;
    int questions = 0;
};

/// A main window with work that takes its time.
class WorkFixture : public TorvelFixture {
 protected:
    [[nodiscard]] QProgressBar& bar() const {
        return veldra_test::control<QProgressBar>(*window_, "bar_fortschritt");
    }
    [[nodiscard]] QPushButton& give_up() const {
        return veldra_test::control<QPushButton>(*window_, "cmd_abbrechen");
    }
    [[nodiscard]] FrmNetzteile& parts() const {
        return veldra_test::control<FrmNetzteile>(*window_, "frmNetzteile");
    }

    void open(const char* name, const QByteArray& bytes) {
        write(name, bytes);
        window_->choose_file = [this, name] { return path(name); };
        action("m_datei_beliebig")->trigger();
    }
    void start_with(const QByteArray& bytes) {
        start();
        logo()->accept();
        open("ve_lang.dat", bytes);
        QTest::qWait(150);  // the window's first size has been followed
    }

    /// The next command takes more than its time from its first look at the events on.
    void be_slow(std::function<void()> at_question = {}) {
        slow_ = SlowWork();
        slow_.next = window_->findChild<TorvelProgress*>();
        slow_.at_question = std::move(at_question);
        QTimer::singleShot(0, window_.get(), [this] {
            QTest::qSleep(TorvelProgress::patience + 50);
            session_.work = &slow_;
        });
    }

    void show_part(int row) {
        veldra_test::control<QListWidget>(parts(), "lst_netzteile").setCurrentRow(row);
        veldra_test::control<QPushButton>(parts(), "cmd_anzeigen").click();
    }

    /// Moves the label of the last point, which lies above the others.
    void move_last_label() {
        const Label& label = session_.lbl_pubez.back();
        const double pixel = session_.view.ansicht_masseinheit * 15;
        const QPoint from(
            static_cast<int>(
                std::lround(static_cast<double>(label.left + label.width / 2) / pixel)),
            picture().height() - static_cast<int>(std::lround(
                                     static_cast<double>(label.top - label.height / 2) / pixel)));
        QTest::mousePress(&picture(), Qt::LeftButton, {}, from);
        QTest::mouseRelease(&picture(), Qt::LeftButton, {}, from + QPoint(40, -30));
    }

    SlowWork slow_;
};

}  // namespace veldra::test
