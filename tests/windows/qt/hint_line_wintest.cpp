#include <QTest>
#include <QTextDocument>

#include "windows/qt/hint_line.h"

using namespace veldra;

namespace {

/// What the toolkit shows of a tool tip.
QString as_shown(const QString& tool_tip) {
    if (!Qt::mightBeRichText(tool_tip)) {
        return tool_tip;
    }
    QTextDocument document;
    document.setHtml(tool_tip);
    return document.toPlainText();
}

}  // namespace

class HintLineTest : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void tool_tip_shows_the_whole_hint_letter_by_letter_data() {
        QTest::addColumn<QString>("hint");
        QTest::newRow("quotes") << QStringLiteral("\"Plotter\" & Drucker gibt A0 nicht her");
        QTest::newRow("markup") << QStringLiteral("<b>Plotter</b> & \"Drucker\" gibt A0 nicht her");
    }
    void tool_tip_shows_the_whole_hint_letter_by_letter() {
        QFETCH(const QString, hint);
        HintLine line(nullptr);
        line.resize(20, 20);
        line.tell(hint);
        QCOMPARE(as_shown(line.toolTip()), hint);
    }
};

QTEST_MAIN(HintLineTest)
#include "hint_line_wintest.moc"
