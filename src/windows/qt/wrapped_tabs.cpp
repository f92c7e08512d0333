#include "windows/qt/wrapped_tabs.h"

#include <QFontMetrics>
#include <QShortcut>
#include <QStringList>
#include <QStyle>
#include <QTimer>
#include <algorithm>

namespace veldra {

namespace {

constexpr int wanted_letters = 14;

/// Breaks a caption at its blanks as soon as a line would get longer than `width` pixels.
QString wrapped(const QString& caption, const QFontMetrics& metrics, int width) {
    QStringList lines;
    for (const QString& word : caption.split(QLatin1Char(' '))) {
        const bool fits =
            !lines.isEmpty() &&
            metrics.horizontalAdvance(lines.constLast() + QLatin1Char(' ') + word) <= width;
        if (fits) {
            lines.last() += QLatin1Char(' ') + word;
        } else {
            lines << word;
        }
    }
    return lines.join(QLatin1Char('\n'));
}

QString wrapped(const QString& caption, const QFontMetrics& metrics) {
    return wrapped(caption, metrics, metrics.averageCharWidth() * wanted_letters);
}

}  // namespace

QSize WrappedTabBar::tabSizeHint(int index) const {
    const QFontMetrics metrics(font());
    const QSize room(style()->pixelMetric(QStyle::PM_TabBarTabHSpace, nullptr, this),
                     style()->pixelMetric(QStyle::PM_TabBarTabVSpace, nullptr, this));
    QSize size(0, 0);
    for (int i = 0; i < count(); ++i) {
        const QSize text = metrics.size(Qt::TextShowMnemonic, wrapped(tabText(i), metrics));
        size.setHeight(std::max(size.height(), text.height()));
        if (i == index) {
            size.setWidth(text.width());
        }
    }
    return size + room;
}

QSize WrappedTabBar::minimumTabSizeHint(int index) const {
    return tabSizeHint(index);
}

void WrappedTabBar::initStyleOption(QStyleOptionTab* option, int index) const {
    QTabBar::initStyleOption(option, index);
    option->text = wrapped(tabText(index), QFontMetrics(font()));
}

WrappedTabs::WrappedTabs(QWidget* parent) : QTabWidget(parent) {
    auto* bar = new WrappedTabBar(this);
    bar->setObjectName(QStringLiteral("tab_bar"));
    setTabBar(bar);
    setElideMode(Qt::ElideNone);
    setUsesScrollButtons(false);
    connect(new QShortcut(Qt::CTRL | Qt::Key_Tab, this), &QShortcut::activated, this,
            [this] { step(1); });
    // The toolkit has a key of its own for Tab with Shift.
    for (const Qt::Key back : {Qt::Key_Tab, Qt::Key_Backtab}) {
        connect(new QShortcut(Qt::CTRL | Qt::SHIFT | back, this), &QShortcut::activated, this,
                [this] { step(-1); });
    }
    // The click comes before the tab is shown, and what the focus leaves may answer with a message.
    connect(bar, &QTabBar::tabBarClicked, this, [this](int tab) {
        if (tab >= 0) {
            QTimer::singleShot(0, this, &WrappedTabs::enter_shown_tab);
        }
    });
}

void WrappedTabs::step(int by) {
    if (count() > 0) {
        setCurrentIndex((currentIndex() + by + count()) % count());
        enter_shown_tab();
    }
}

void WrappedTabs::enter_shown_tab() {
    QWidget* const page = currentWidget();
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
        if (page->isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
            (next->focusPolicy() & Qt::TabFocus) != 0 && next->focusProxy() == nullptr) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QSize WrappedTabs::with_room_for_tabs(const QSize& size) const {
    return size.expandedTo(QSize(tabBar()->sizeHint().width(), 0));
}

QSize WrappedTabs::sizeHint() const {
    return with_room_for_tabs(QTabWidget::sizeHint());
}

QSize WrappedTabs::minimumSizeHint() const {
    return with_room_for_tabs(QTabWidget::minimumSizeHint());
}

}  // namespace veldra
