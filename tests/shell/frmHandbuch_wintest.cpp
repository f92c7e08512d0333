#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>

#include "dialog_driver.h"
#include "shell/frmHandbuch.h"
#include "unnamed_controls.h"

using namespace veldra;
using veldra_test::control;

class FrmHandbuchTest : public QObject {
    Q_OBJECT

 private:
    static QString page_text(const QString& page) {
        QFile file(QStringLiteral(":/handbuch/%1.md").arg(page));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    /// Pixels; a page beside the list of pages has no more room for a picture.
    static constexpr int widest_picture = 800;

    static QStringList pages() {
        QFile file(QStringLiteral(":/handbuch/seiten.txt"));
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                   : QStringList();
    }

 private Q_SLOTS:
    void opens_the_first_page() {
        FrmHandbuch handbook(nullptr);
        auto& page = control<QTextBrowser>(handbook, "txt_seite");
        QCOMPARE(page.source(), QUrl(QStringLiteral("qrc:/handbuch/index.md")));
        QVERIFY(page.toPlainText().contains(QStringLiteral("VELDRA")));
    }

    void opens_a_named_page_and_goes_back() {
        FrmHandbuch handbook(nullptr);
        handbook.show_page(QStringLiteral("plotten"));
        auto& page = control<QTextBrowser>(handbook, "txt_seite");
        QCOMPARE(page.source(), QUrl(QStringLiteral("qrc:/handbuch/plotten.md")));
        auto& back = control<QPushButton>(handbook, "cmd_zurueck");
        QVERIFY(back.isEnabled());
        QTest::mouseClick(&back, Qt::LeftButton);
        QCOMPARE(page.source(), QUrl(QStringLiteral("qrc:/handbuch/index.md")));
        QCOMPARE(control<QListWidget>(handbook, "lst_seiten").currentRow(), 0);
    }

    void list_shows_whole_names_and_leaves_room_for_pictures() {
        FrmHandbuch handbook(nullptr);
        handbook.resize(1160, 700);  // what a screen of 1200 pixels leaves
        handbook.show();
        QVERIFY(QTest::qWaitForWindowExposed(&handbook));
        const auto& list = control<QListWidget>(handbook, "lst_seiten");
        QCOMPARE(list.horizontalScrollBar()->maximum(), 0);
        QVERIFY(control<QTextBrowser>(handbook, "txt_seite").viewport()->width() >= widest_picture);
    }

    void an_unknown_page_opens_the_first() {
        FrmHandbuch handbook(nullptr);
        handbook.show_page(QStringLiteral("plotten"));
        handbook.show_page(QStringLiteral("gibt es nicht"));
        QCOMPARE(control<QTextBrowser>(handbook, "txt_seite").source(),
                 QUrl(QStringLiteral("qrc:/handbuch/index.md")));
    }

    void the_search_leaves_the_pages_with_the_text() {
        FrmHandbuch handbook(nullptr);
        QTest::keyClicks(&control<QLineEdit>(handbook, "txt_suche"), QStringLiteral("heftrand"));
        const auto& list = control<QListWidget>(handbook, "lst_seiten");
        const QStringList names = pages();
        QCOMPARE(list.count(), names.size());
        int shown = 0;
        for (int row = 0; row < list.count(); ++row) {
            const bool has_text =
                page_text(names[row]).contains(QStringLiteral("Heftrand"), Qt::CaseInsensitive);
            QCOMPARE(list.item(row)->isHidden(), !has_text);
            shown += has_text ? 1 : 0;
        }
        QVERIFY(shown > 0);
        QVERIFY(shown < list.count());
        QVERIFY(!list.currentItem()->isHidden());
        QCOMPARE(control<QTextBrowser>(handbook, "txt_seite").textCursor().selectedText().toLower(),
                 QStringLiteral("heftrand"));
    }

    void every_control_has_a_name() {
        const FrmHandbuch handbook(nullptr);
        const QStringList unnamed = veldra_test::unnamed_controls(handbook);
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QLatin1Char(' '))));
    }

    void every_page_begins_with_its_heading() {
        const FrmHandbuch handbook(nullptr);
        QVERIFY(!pages().isEmpty());
        for (const QString& page : pages()) {
            QVERIFY2(page_text(page).startsWith(QStringLiteral("# ")), qPrintable(page));
        }
    }

    /// Links and pictures of all pages lead to something that is there.
    void links_and_pictures_are_there() {
        const FrmHandbuch handbook(nullptr);
        static const QRegularExpression link(QStringLiteral(R"(\]\(([^)#]+)(#[^)]*)?\))"));
        for (const QString& page : pages()) {
            auto found = link.globalMatch(page_text(page));
            while (found.hasNext()) {
                const QString target = found.next().captured(1);
                QVERIFY2(QFile::exists(QStringLiteral(":/handbuch/") + target),
                         qPrintable(page + QStringLiteral(": ") + target));
                if (target.endsWith(QStringLiteral(".png"))) {
                    const QImage picture(QStringLiteral(":/handbuch/") + target);
                    QVERIFY2(!picture.isNull(), qPrintable(target));
                    QVERIFY2(picture.width() <= widest_picture, qPrintable(target));
                }
            }
        }
    }
};

QTEST_MAIN(FrmHandbuchTest)
#include "frmHandbuch_wintest.moc"
