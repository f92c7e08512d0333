#include "windows/qt/paper_symbol.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>

namespace veldra {

namespace {

constexpr double short_side = 0.62;  // of the symbol's height, and the long side
constexpr double long_side = 0.88;
constexpr double folded = 0.22;

}  // namespace

PaperSymbol::PaperSymbol(const QString& name, Lies lies, bool chosen, QWidget* parent)
    : QWidget(parent), lies_(lies), chosen_(chosen) {
    setObjectName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PaperSymbol::sizeHint() const {
    const int side = QFontMetrics(font()).height() * 2;
    return {side, side};
}

void PaperSymbol::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = height();
    const double width = unit * (lies_ == Lies::upright ? short_side : long_side);
    const double height = unit * (lies_ == Lies::upright ? long_side : short_side);
    const double fold = unit * folded;
    painter.translate((QWidget::width() - width) / 2, (QWidget::height() - height) / 2);
    const QPolygonF sheet({{0, 0}, {width - fold, 0}, {width, fold}, {width, height}, {0, height}});
    const bool strong = chosen_ && isEnabled();
    const QColor ink =
        palette().color(strong ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    painter.setPen(QPen(ink, strong ? unit / 18 : unit / 36));
    painter.setBrush(strong ? palette().color(QPalette::Base) : QColor(Qt::transparent));
    painter.drawPolygon(sheet);
    painter.drawPolyline(QPolygonF({{width - fold, 0}, {width - fold, fold}, {width, fold}}));
}

}  // namespace veldra
