#include "windows/qt/wrapped_tabs.h"

#include <QFontMetrics>
#include <QStringList>
#include <QStyle>
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
