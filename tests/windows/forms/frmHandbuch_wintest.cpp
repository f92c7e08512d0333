#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <cmath>

#include "dialog_driver.h"
#include "unnamed_controls.h"
#include "windows/forms/frmHandbuch.h"

using namespace veldra;
using veldra_test::control;
using veldra_test::type;

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

    void return_in_the_search_goes_from_place_to_place() {
        FrmHandbuch handbook(nullptr);
        handbook.show_page(QStringLiteral("plotten"));
        handbook.show();
        auto& search = control<QLineEdit>(handbook, "txt_suche");
        auto& page = control<QTextBrowser>(handbook, "txt_seite");
        QTest::keyClicks(&search, QStringLiteral("heftrand"));
        const QString first_page = page.source().fileName();
        const qsizetype places =
            page.toPlainText().count(QStringLiteral("heftrand"), Qt::CaseInsensitive);
        QVERIFY(places > 1);
        int before = page.textCursor().position();
        for (qsizetype i = 1; i < places; ++i) {
            QTest::keyClick(&search, Qt::Key_Return);
            QCOMPARE(page.source().fileName(), first_page);
            QVERIFY(page.textCursor().position() > before);
            before = page.textCursor().position();
        }
        QTest::keyClick(&search, Qt::Key_Return);
        QVERIFY(page.source().fileName() != first_page);
        QCOMPARE(page.textCursor().selectedText().toLower(), QStringLiteral("heftrand"));
        QVERIFY(handbook.isVisible());
        type(search, "gibtesnirgends");
        QTest::keyClick(&search, Qt::Key_Return);
        QVERIFY(handbook.isVisible());
    }

    void return_presses_the_button_with_the_focus() {
        FrmHandbuch handbook(nullptr);
        handbook.show_page(QStringLiteral("plotten"));
        handbook.show();
        auto& back = control<QPushButton>(handbook, "cmd_zurueck");
        back.setFocus();
        QTest::keyClick(&back, Qt::Key_Return);
        QCOMPARE(control<QTextBrowser>(handbook, "txt_seite").source(),
                 QUrl(QStringLiteral("qrc:/handbuch/index.md")));
        auto& list = control<QListWidget>(handbook, "lst_seiten");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Return);
        QVERIFY(handbook.isVisible());
        auto& close = control<QPushButton>(handbook, "cmd_schliessen");
        close.setFocus();
        QTest::keyClick(&close, Qt::Key_Return);
        QVERIFY(!handbook.isVisible());
    }

    void headings_are_not_cut_off_in_the_list() {
        FrmHandbuch handbook(nullptr);
        handbook.resize(handbook.sizeHint().boundedTo(QSize(700, 200)));
        handbook.show();
        const auto& list = control<QListWidget>(handbook, "lst_seiten");
        QVERIFY(list.viewport()->width() >= list.sizeHintForColumn(0));
    }

    void pages_have_room_for_their_pictures() {
        FrmHandbuch handbook(nullptr);
        handbook.resize(handbook.sizeHint());
        handbook.show();
        const auto& page = control<QTextBrowser>(handbook, "txt_seite");
        for (const QString& name : pages()) {
            handbook.show_page(name);
            QApplication::processEvents();
            QVERIFY2(page.horizontalScrollBar()->maximum() == 0, qPrintable(name));
        }
    }

    /// What a screen of 1366 pixels with 150 percent leaves for the handbook, and less.
    void pictures_stay_within_a_narrow_page() {
        FrmHandbuch handbook(nullptr);
        handbook.show_page(QStringLiteral("bildschirm"));
        handbook.resize(870, 430);
        handbook.show();
        const auto& page = control<QTextBrowser>(handbook, "txt_seite");
        QVERIFY(page.viewport()->width() < widest_picture);
        for (const int width : {870, 640, 1000, 700}) {
            handbook.resize(width, 430);
            QTRY_COMPARE(page.horizontalScrollBar()->maximum(), 0);
        }
        for (const QString& name : pages()) {
            handbook.show_page(name);
            QApplication::processEvents();
            // An example's lines are not broken.
            if (!page_text(name).contains(QStringLiteral("```"))) {
                QVERIFY2(page.horizontalScrollBar()->maximum() == 0, qPrintable(name));
            }
        }
    }

    void a_new_width_keeps_the_place_on_the_page() {
        FrmHandbuch handbook(nullptr);
        handbook.show_page(QStringLiteral("bildschirm"));
        handbook.resize(1000, 430);
        handbook.show();
        const auto& bar = *control<QTextBrowser>(handbook, "txt_seite").verticalScrollBar();
        QVERIFY(bar.maximum() > 1000);
        control<QTextBrowser>(handbook, "txt_seite")
            .verticalScrollBar()
            ->setValue(bar.maximum() / 2);
        const int before = bar.maximum();
        handbook.resize(600, 430);
        QTRY_VERIFY(bar.maximum() < before);
        QTest::qWait(100);
        QVERIFY(std::abs(bar.value() / double(bar.maximum()) - 0.5) < 0.05);
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

    /// Each picture stands on a page as it is at 100 and at 150 percent.
    void pictures_are_there_at_both_scales() {
        const FrmHandbuch handbook(nullptr);
        QString all_pages;
        for (const QString& page : pages()) {
            all_pages += page_text(page);
        }
        const QDir folder(QStringLiteral(":/handbuch/bilder"));
        const QStringList files = folder.entryList({QStringLiteral("*.png")}, QDir::Files);
        QVERIFY(files.size() >= 20);
        QCOMPARE(QDir(folder.filePath(QStringLiteral("150"))).entryList(QDir::Files), files);
        for (const QString& file : files) {
            const QSize usual = QImage(folder.filePath(file)).size();
            const QSize enlarged = QImage(folder.filePath(QStringLiteral("150/") + file)).size();
            QVERIFY2(std::abs(enlarged.width() - 1.5 * usual.width()) <= 3, qPrintable(file));
            QVERIFY2(std::abs(enlarged.height() - 1.5 * usual.height()) <= 3, qPrintable(file));
            for (const char* place : {"(bilder/%1)", "(bilder/150/%1)"}) {
                QVERIFY2(all_pages.contains(QString::fromLatin1(place).arg(file)),
                         qPrintable(file));
            }
        }
    }

    /// Samples stand on the ground that the program draws on, not on the paper's white.
    void the_line_widths_are_shown_on_the_programs_own_ground() {
        const FrmHandbuch handbook(nullptr);
        for (const char* place : {"strich.png", "150/strich.png"}) {
            const QImage picture(QStringLiteral(":/handbuch/bilder/") + QLatin1String(place));
            QVERIFY(!picture.isNull());
            int ground = 0;
            int white = 0;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    ground += picture.pixel(x, y) == qRgb(255, 250, 240) ? 1 : 0;
                    white += picture.pixel(x, y) == qRgb(255, 255, 255) ? 1 : 0;
                }
            }
            const int pixels = picture.width() * picture.height();
            QVERIFY2(ground > pixels / 10, place);
            QVERIFY2(white < pixels / 100, place);
        }
    }

    void a_fine_screen_gets_the_pictures_made_for_it() {
        constexpr int widest = 760;
        const FrmHandbuch handbook(nullptr);
        const QString usual = QStringLiteral(":/handbuch/bilder/drucker.png");
        const QString enlarged = QStringLiteral(":/handbuch/bilder/150/drucker.png");
        const QImage picture = handbook_picture(usual, 1, widest);
        QCOMPARE(picture, QImage(usual));
        for (const double ratio : {1.25, 1.5, 2.0}) {
            const QImage fine = handbook_picture(usual, ratio, widest);
            QCOMPARE(fine.size(), QImage(enlarged).size());
            const QSizeF size = fine.deviceIndependentSize();
            QVERIFY(std::abs(size.width() - picture.width()) <= 2);
            QVERIFY(std::abs(size.height() - picture.height()) <= 2);
        }
        // The page about large screens shows its pictures pixel by pixel.
        QCOMPARE(handbook_picture(enlarged, 1, widest).devicePixelRatio(), 1.0);
        QCOMPARE(handbook_picture(enlarged, 1, widest).size(), QImage(enlarged).size());
        QCOMPARE(handbook_picture(enlarged, 1.5, widest).devicePixelRatio(), 1.5);
        // One that is wider than a page is made to fit.
        const QString wide = QStringLiteral(":/handbuch/bilder/150/hauptfenster.png");
        QCOMPARE(QImage(wide).size(), QSize(1140, 870));
        QCOMPARE(handbook_picture(wide, 1, widest).size(), QSize(760, 580));
        QCOMPARE(handbook_picture(wide, 1.5, widest).size(), QSize(1140, 870));
        const QString missing = QStringLiteral(":/handbuch/bilder/fehlt.png");
        QVERIFY(handbook_picture(missing, 1, widest).isNull());
    }

    /// A narrow page has smaller pictures, with all the pixels that its screen has for them.
    void pictures_are_no_wider_than_their_room() {
        const FrmHandbuch handbook(nullptr);
        const QString usual = QStringLiteral(":/handbuch/bilder/hauptfenster.png");
        QCOMPARE(QImage(usual).size(), QSize(760, 580));
        QCOMPARE(handbook_picture(usual, 1, 380).size(), QSize(380, 290));
        const QImage fine = handbook_picture(usual, 1.5, 380);
        QCOMPARE(fine.size(), QSize(570, 435));
        QCOMPARE(fine.devicePixelRatio(), 1.5);
        const QString enlarged = QStringLiteral(":/handbuch/bilder/150/hauptfenster.png");
        QCOMPARE(handbook_picture(enlarged, 1.5, 380).size(), QSize(570, 435));
        // One that fits stays as it is.
        QCOMPARE(handbook_picture(usual, 1, 760), QImage(usual));
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
                    const bool enlarged = target.contains(QStringLiteral("/150/"));
                    QVERIFY2(picture.width() <= (enlarged ? 1.5 : 1.0) * widest_picture,
                             qPrintable(target));
                }
            }
        }
    }
};

QTEST_MAIN(FrmHandbuchTest)
#include "frmHandbuch_wintest.moc"
