#pragma once

#include <QLineEdit>
#include <QObject>
#include <QTimer>
#include <functional>

namespace veldra {

/// Watches a box with a value: gaining the focus selects its whole text; Enter or leaving it takes
/// the text over. Another window in front does not count as leaving. While the text is being taken
/// over, a message box may come and go.
class EntryBox final : public QObject {
 public:
    using Commit = std::function<void()>;
    using Leaves = std::function<bool()>;

    /// `control` has the focus and `edit` the text: a combo box and its line, or twice the same
    /// box. `leaves_unread` tells whether a box that loses the focus now is to be left unread.
    EntryBox(QWidget& control, QLineEdit& edit, Commit commit, Leaves leaves_unread);

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void take_over();

    QLineEdit& edit_;
    Commit commit_;
    Leaves leaves_unread_;
    QTimer select_;
    bool busy_ = false;
};

}  // namespace veldra
