#include <QDialog>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

#include "windows/qt/dialog_area.h"

using namespace veldra;

/// Contents of any size on the screen that there is.
class DialogAreaTest : public QObject {
    Q_OBJECT

 private:
    /// A dialog with a box in each corner of contents of a size.
    void open(const QSize& size) {
        dialog_ = std::make_unique<QDialog>();
        auto* contents = new QWidget;
        contents->setMinimumSize(size);
        first_ = new QLineEdit(contents);
        first_->setGeometry(0, 0, 60, 20);
        last_ = new QLineEdit(contents);
        last_->setGeometry(size.width() - 60, size.height() - 20, 60, 20);
        area_ = new DialogArea(contents, dialog_.get());
        auto* column = new QVBoxLayout(dialog_.get());
        column->addWidget(area_);
        dialog_->resize(dialog_->sizeHint());
        dialog_->show();
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
    }
    [[nodiscard]] QString bars() const {
        return (area_->horizontalScrollBar()->maximum() > 0 ? QStringLiteral("across ")
                                                            : QString()) +
               (area_->verticalScrollBar()->maximum() > 0 ? QStringLiteral("down") : QString());
    }
    [[nodiscard]] static QSize screen() {
        return QGuiApplication::primaryScreen()->availableSize();
    }
    [[nodiscard]] bool in_sight(const QWidget& widget) const {
        return area_->viewport()->rect().contains(
            QRect(widget.mapTo(area_->viewport(), QPoint()), widget.size()));
    }

    std::unique_ptr<QDialog> dialog_;
    DialogArea* area_ = nullptr;
    QLineEdit* first_ = nullptr;
    QLineEdit* last_ = nullptr;

 private Q_SLOTS:
    void cleanup() { dialog_.reset(); }

    void contents_that_fit_have_no_bars() {
        open({300, 200});
        QCOMPARE(bars(), QString());
        QCOMPARE(area_->sizeHint(), QSize(300, 200));
    }

    /// One bar must not bring the other one with it.
    void contents_too_wide_have_one_bar() {
        open({screen().width() + 200, 200});
        QCOMPARE(bars(), QStringLiteral("across "));
        QVERIFY(dialog_->width() <= screen().width());
    }

    void contents_too_high_have_one_bar() {
        open({200, screen().height() + 200});
        QCOMPARE(bars(), QStringLiteral("down"));
        QVERIFY(dialog_->height() <= screen().height());
    }

    void contents_too_large_have_both() {
        open(screen() + QSize(200, 200));
        QCOMPARE(bars(), QStringLiteral("across down"));
        QVERIFY(screen().width() >= dialog_->width());
        QVERIFY(screen().height() >= dialog_->height());
    }

    void the_focus_is_followed() {
        open(screen() + QSize(200, 200));
        first_->setFocus();
        QVERIFY(in_sight(*first_));
        QVERIFY(!in_sight(*last_));
        last_->setFocus();
        QVERIFY(in_sight(*last_));
        QVERIFY(!in_sight(*first_));
    }
};

QTEST_MAIN(DialogAreaTest)
#include "dialog_area_wintest.moc"
