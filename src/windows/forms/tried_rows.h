#pragma once

#include <QComboBox>
#include <QList>
#include <QString>
#include <algorithm>

namespace veldra {

// Lists whose rows a device may refuse, such as those of its papers.

/// The row that a key of a closed list leads to, and the way in which it goes on from there: 1
/// down, -1 up, 0 if it is no such key.
struct ListStep {
    int row = 0;
    int by = 0;
};

inline ListStep list_step(const QComboBox& list, int key) {
    const int row = list.currentIndex();
    switch (key) {
        case Qt::Key_Down:
            return {row + 1, 1};
        case Qt::Key_Up:
            return {row - 1, -1};
        case Qt::Key_PageDown:
            return {std::min(row + list.maxVisibleItems(), list.count() - 1), 1};
        case Qt::Key_PageUp:
            return {std::max(row - list.maxVisibleItems(), 0), -1};
        case Qt::Key_Home:
            return {0, 1};
        case Qt::Key_End:
            return {list.count() - 1, -1};
        default:
            return {};
    }
}

/// Tries the rows from one on, in one direction or only that one (0), until one is taken; gives
/// those that were not.
template <typename Take>
QList<int> refused_rows(const QComboBox& list, int row, int by, Take&& take) {
    QList<int> refused;
    while (row >= 0 && row < list.count() && !take(row)) {
        refused << row;
        if (by == 0) {
            break;
        }
        row += by;
    }
    return refused;
}

/// What to tell of them, in one line; "" if there are none.
inline QString refusal(const QComboBox& list, const QList<int>& rows) {
    if (rows.isEmpty()) {
        return {};
    }
    const QString first = list.itemText(rows.constFirst());
    return rows.size() == 1 ? QStringLiteral("Nimmt das Gerät nicht: %1").arg(first)
                            : QStringLiteral("Nimmt das Gerät nicht: %1 und %2 weitere")
                                  .arg(first)
                                  .arg(rows.size() - 1);
}

}  // namespace veldra
