#pragma once

#include <QByteArray>
#include <QString>

namespace veldra_test {

/// A text as the sources of the tests hold it.
inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

/// The name of a control among its like: "pic_testwert_" and 3 are "pic_testwert_3".
inline QByteArray numbered(const char* stem, int number) {
    return QByteArray(stem) + QByteArray::number(number);
}

}  // namespace veldra_test
