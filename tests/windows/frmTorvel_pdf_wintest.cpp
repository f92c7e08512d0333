// Plots that go into PDF files, by the commands of the main window.
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QListWidget>
#include <QTreeView>

#include "dialog_driver.h"
#include "pdf/pdf_printer.h"
#include "pdf/pdf_reader.h"
#include "scripted_printer.h"
#include "torvel_fixture.h"
#include "windows/qt/qt_print_dialog.h"

using namespace veldra;
using test::text;
using veldra_test::control;
using veldra_test::name_file;
using veldra_test::when_shown;

namespace {

/// The dialog of a desktop where nobody is asked.
class NoDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override {
        ++shown;
        return flags;
    }
    int shown = 0;
};

/// Part A: 1:500 from the zero point (3500000, 5600000), upright, bound at the left, legend at the
/// lower left. Signatures have a radius of 2 mm. "Neu" was never plotted; nor were labels wanted.
constexpr const char* three_parts =
    "NETZTEIL A\r\nMA\xDFSTABGRUNDRISS 500 3500000.0 5600000.0 41\r\n"
    "OBJEKTE 0 1 0 0 0 0 0 1 0 1 0 1 1\r\n"
    "PUNKTSIGNATUR 3500010 5600020 0 0 1 \"1\"\r\n"
    "PUNKTSIGNATUR 3500100 5600100 0 0 0 \"2\"\r\n"
    "NETZTEIL Neu\r\nOBJEKTE 0 1 0 0 0 0 0 1 0 1 0 1 1\r\n"
    "PUNKTSIGNATUR 3501000 5601200 0 0 1 \"5\"\r\n"
    "PUNKTSIGNATUR 3501060 5601240 0 0 0 \"6\"\r\n"
    "NETZTEIL Leer\r\n";

}  // namespace

class FrmTorvelPdfTest : public test::TorvelFixture {
    Q_OBJECT

 private:
    void start_with(Printer& printer) {
        create().use_printer(printer, dialog_);
        window_->load();
        logo()->accept();
        write("netz/ve_teile.dat", three_parts);
        window_->choose_file = [this] { return path("netz/ve_teile.dat"); };
        // The window's first size has come and is followed before anything is compared.
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QTest::qWait(150);
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }
    void start_in_plot_mode() {
        start_with(printer_);
        action("m_plotten_ein")->trigger();
        printer_.calls.clear();
    }
    [[nodiscard]] std::vector<veldra::pdf_test::ShownPage> pages(const char* name) const {
        return veldra::pdf_test::shown_pages(system_path(path(name)));
    }
    static bool is(double value, double wanted) { return std::abs(value - wanted) < 0.01; }
    [[nodiscard]] QStringList files(const char* folder) const {
        return QDir(path(folder)).entryList(QDir::Files);
    }

    test::ScriptedPrinter printer_;
    NoDialog dialog_;

 private Q_SLOTS:
    void init() {
        make_folders();
        printer_ = test::ScriptedPrinter();
        dialog_.shown = 0;
    }
    void cleanup() { close_down(); }

    void command_is_there_as_long_as_the_part_can_be_plotted() {
        create().use_printer(printer_, dialog_);
        window_->load();
        logo()->accept();
        QCOMPARE(action("m_datei_plot")->text().remove(QLatin1Char('&')),
                 text("Plot als PDF speichern..."));
        QVERIFY(!action("m_datei_plot")->isEnabled());
        window_.reset();
        start_with(printer_);
        QVERIFY(!action("m_datei_plot")->isEnabled());
        action("m_plotten_ein")->trigger();
        QVERIFY(action("m_datei_plot")->isEnabled());
        action("m_plotten_aus")->trigger();
        QVERIFY(!action("m_datei_plot")->isEnabled());
        // In a part with nothing to draw there is nothing to plot.
        action("m_plotten_ein")->trigger();
        veldra_test::MessageBoxes boxes;
        control<QListWidget>(*window_, "lst_netzteile").setCurrentRow(2);
        veldra_test::click(control<QPushButton>(*window_, "cmd_anzeigen"));
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QVERIFY(!action("m_torvel_plotten")->isEnabled());
        QVERIFY(!action("m_datei_plot")->isEnabled());
    }

    void file_has_the_sheets_of_the_plot_mode_and_nothing_else_changes() {
        start_in_plot_mode();
        session_.printer.exemplare = 4;
        session_.printer.druck_in_datei = table_true;
        const QImage before = window_->picture().shown();
        const QString entry = action("m_optionen_drucker")->text();
        window_->choose_plot_file = [this](const QString&) { return path("plan.pdf"); };
        action("m_datei_plot")->trigger();
        const auto sheets = pages("plan.pdf");
        // 101 m from the zero point are 202 mm on sheets of 184.5 mm, and 202 mm of 274.5 mm.
        QCOMPARE(sheets.size(), std::size_t{2});
        for (const auto& sheet : sheets) {
            QVERIFY(is(sheet.width, 210) && is(sheet.height, 297));
        }
        const auto first = circle_centres(sheets[0]);
        QCOMPARE(first.size(), std::size_t{1});
        QVERIFY(is(first[0].x, 5 + 15 + 20) && is(first[0].y, 5 + 12 + 40));
        const auto second = circle_centres(sheets[1]);
        QCOMPARE(second.size(), std::size_t{1});
        QVERIFY(is(second[0].x, 5 + 15 + 200 - 184.5) && is(second[0].y, 5 + 12 + 200));
        // The application printer has not been given anything.
        QVERIFY(printer_.documents.empty());
        QCOMPARE(dialog_.shown, 0);
        QCOMPARE(printer_.Orientation(), std::int16_t{1});
        QCOMPARE(printer_.PaperSize(), std::int16_t{9});
        QCOMPARE(printer_.PaperBin(), std::int16_t{7});
        QCOMPARE(action("m_optionen_drucker")->text(), entry);
        QVERIFY(action("m_optionen_drucker")->isEnabled());
        QCOMPARE(session_.printer.exemplare, std::int16_t{4});
        QCOMPARE(session_.printer.druck_in_datei, std::int16_t{table_true});
        QCOMPARE(session_.part.plot.plot_massstab, 1.0 / 500);
        QCOMPARE(session_.part.plot.plot_ausrichtung, std::int16_t{1});
        QCOMPARE(session_.part.plot.plot_heftrand, std::int16_t{2});
        QCOMPARE(session_.part.plot.plot_legendenlage, std::int16_t{2});
        QCOMPARE(session_.part.plot.plot_null_rechts, 3500000.0);
        QCOMPARE(session_.part.plot.plot_null_hoch, 5600000.0);
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        QVERIFY(window_->picture().shown() == before);
    }

    void sheets_that_were_dragged_are_plotted_where_they_are() {
        start_in_plot_mode();
        const double pixel = 15 * session_.view.ansicht_masseinheit;
        drag(QPoint(5, 5), QPoint(5 - 20, 5 + 30));
        window_->choose_plot_file = [this](const QString&) { return path("plan.pdf"); };
        action("m_datei_plot")->trigger();
        const auto circles = circle_centres(pages("plan.pdf").at(0));
        QVERIFY(!circles.empty());
        // A metre is 2 mm. The sheets have gone to the left and down, so the point goes the other
        // way.
        QVERIFY(is(circles[0].x, 5 + 15 + 20 + 20 * pixel * 2));
        QVERIFY(is(circles[0].y, 5 + 12 + 40 + 30 * pixel * 2));
    }

    void chooser_proposes_a_name_beside_the_graphic_file() {
        start_in_plot_mode();
        QString title;
        QString proposed;
        when_shown<QFileDialog>([&](QFileDialog& chooser) {
            title = chooser.windowTitle();
            proposed = chooser.selectedFiles().value(0);
            static_cast<QDialog&>(chooser).accept();
        });
        action("m_datei_plot")->trigger();
        QCOMPARE(title, text("Plot als PDF speichern"));
        QCOMPARE(proposed, path("netz/ve_teile.pdf"));
        QCOMPARE(pages("netz/ve_teile.pdf").size(), std::size_t{2});
    }

    void name_without_an_ending_gets_one() {
        start_in_plot_mode();
        when_shown<QFileDialog>([&](QFileDialog& chooser) {
            name_file(chooser, path("netz/plan"));
            static_cast<QDialog&>(chooser).accept();
        });
        action("m_datei_plot")->trigger();
        QCOMPARE(pages("netz/plan.pdf").size(), std::size_t{2});
    }

    void chooser_shows_whole_columns_and_each_pattern_once() {
        start_in_plot_mode();
        QStringList cut;
        QString types;
        when_shown<QFileDialog>([&](QFileDialog& chooser) {
            for (const QTreeView* list : chooser.findChildren<QTreeView*>()) {
                for (int column = 1; column < list->header()->count(); ++column) {
                    if (list->columnWidth(column) < list->header()->sectionSizeHint(column)) {
                        cut << QString::number(column);
                    }
                }
            }
            types = control<QComboBox>(chooser, "fileTypeCombo").currentText();
            chooser.reject();
        });
        action("m_datei_plot")->trigger();
        QCOMPARE(cut, QStringList());
        QCOMPARE(types, text("PDF-Datei (*.pdf)"));
    }

    void chooser_of_all_files_adds_no_ending() {
        QStringList types;
        QStringList endings;
        when_shown<QFileDialog>([&](QFileDialog& chooser) {
            auto& type = control<QComboBox>(chooser, "fileTypeCombo");
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up}) {
                QTest::keyClick(&type, key);
                types << type.currentText();
                endings << chooser.defaultSuffix();
            }
            name_file(chooser, path("plan"));
            static_cast<QDialog&>(chooser).accept();
        });
        QString folder;
        QCOMPARE(ask_for_output_file(nullptr, {}, folder), path("plan.pdf"));
        QCOMPARE(folder, root_->path());
        QCOMPARE(types, QStringList({text("Alle Dateien (*.*)"), text("PDF-Dateien (*.pdf)")}));
        QCOMPARE(endings, QStringList({QString(), text("pdf")}));
    }

    void cancelled_chooser_changes_nothing() {
        start_in_plot_mode();
        session_.window.undo.undo_art = 4;
        const qint64 shown = window_->picture().shown().cacheKey();
        when_shown<QFileDialog>([](QFileDialog& chooser) { chooser.reject(); });
        action("m_datei_plot")->trigger();
        QVERIFY(printer_.calls.empty());
        QCOMPARE(files("netz"), QStringList{text("ve_teile.dat")});
        QCOMPARE(window_->picture().shown().cacheKey(), shown);
        QCOMPARE(session_.window.undo.undo_art, 4);
        QVERIFY(action("m_datei_plot")->isEnabled());
    }

    void existing_file_is_replaced_only_after_a_yes() {
        start_in_plot_mode();
        write("netz/ve_teile.pdf", "alt");
        const auto answer = [this](QMessageBox::StandardButton button) {
            when_shown<QMessageBox>([button](QMessageBox& box) { box.button(button)->click(); });
            when_shown<QFileDialog>([](QFileDialog& chooser) {
                static_cast<QDialog&>(chooser).accept();
                if (chooser.isVisible()) {
                    chooser.reject();
                }
            });
            action("m_datei_plot")->trigger();
        };
        answer(QMessageBox::No);
        QCOMPARE(read("netz/ve_teile.pdf"), QByteArray("alt"));
        answer(QMessageBox::Yes);
        QCOMPARE(pages("netz/ve_teile.pdf").size(), std::size_t{2});
    }

    void folder_that_takes_no_file_is_told_and_nothing_is_left() {
        start_in_plot_mode();
        write("kein_ordner", "x");
        window_->choose_plot_file = [this](const QString&) { return path("kein_ordner/plan.pdf"); };
        answer_message_box();
        action("m_datei_plot")->trigger();
        QCOMPARE(box_title_, text("VELDRA - Plot als PDF speichern"));
        QCOMPARE(box_icon_, QMessageBox::Critical);
        QCOMPARE(box_text_, path("kein_ordner/plan.pdf") +
                                text(": Datei kann nicht geschrieben werden: ein Teil des Pfades "
                                     "ist kein Verzeichnis"));
        QCOMPARE(files("netz"), QStringList{text("ve_teile.dat")});
        QVERIFY(printer_.documents.empty());
        // And everything goes on.
        window_->choose_plot_file = [this](const QString&) { return path("plan.pdf"); };
        action("m_datei_plot")->trigger();
        QCOMPARE(pages("plan.pdf").size(), std::size_t{2});
    }

    void open_graphic_file_is_never_written_over() {
        start_in_plot_mode();
        const QByteArray before = read("netz/ve_teile.dat");
        window_->choose_plot_file = [this](const QString&) { return path("netz/ve_teile.dat"); };
        answer_message_box();
        action("m_datei_plot")->trigger();
        QCOMPARE(box_text_, path("netz/ve_teile.dat") + text(": ist die geöffnete Graphikdatei"));
        QCOMPARE(read("netz/ve_teile.dat"), before);
        window_->choose_picture_file = [this] { return path("netz/../netz/ve_teile.dat"); };
        box_text_.clear();
        answer_message_box();
        action("m_datei_bild")->trigger();
        QVERIFY(box_text_.endsWith(text(": ist die geöffnete Graphikdatei")));
        QCOMPARE(read("netz/ve_teile.dat"), before);
    }

    /// All marked parts go to the device for documents; one of them has no settings yet.
    void marked_part_never_plotted_before_is_plotted() {
        int asked = 0;
        PdfPrinter pdf([&] {
            ++asked;
            return std::optional(system_path(path("alle.pdf")));
        });
        start_with(pdf);
        auto& parts = control<QListWidget>(*window_, "lst_netzteile");
        parts.setCurrentRow(0);
        veldra_test::click(control<QPushButton>(*window_, "cmd_nicht_plotten"));
        QCOMPARE(session_.netz[2].netz_ausrichtung, std::int16_t{-99});
        action("m_plotten_ein")->trigger();
        veldra_test::MessageBoxes boxes;
        action("m_plotten_alle")->trigger();
        QCOMPARE(boxes.seen.size(), std::size_t{1});  // the question
        QCOMPARE(asked, 1);
        const auto sheets = pages("alle.pdf");
        QCOMPARE(sheets.size(), std::size_t{1});
        // 60 m by 40 m fill a lying sheet at 1:250, the zero point 0.51 m (2.04 mm) before them.
        QVERIFY(is(sheets[0].width, 297) && is(sheets[0].height, 210));
        const auto circles = circle_centres(sheets[0]);
        QCOMPARE(circles.size(), std::size_t{2});
        QVERIFY(is(circles[0].x, 5 + 0.5 + 2.04) && is(circles[0].y, 5 + 12 + 2.04));
        QVERIFY(is(circles[1].x, 5 + 0.5 + 242.04) && is(circles[1].y, 5 + 12 + 162.04));
        QCOMPARE(session_.part.netz_aktuell, 1);
        QCOMPARE(session_.plotmodus, std::int16_t{1});
    }
};

QTEST_MAIN(FrmTorvelPdfTest)
#include "frmTorvel_pdf_wintest.moc"
