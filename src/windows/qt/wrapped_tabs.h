#pragma once

#include <QStyleOptionTab>
#include <QTabBar>
#include <QTabWidget>

namespace veldra {

/// A strip of tabs whose captions are broken into lines, so that many long ones stand side by side.
class WrappedTabBar final : public QTabBar {
    Q_OBJECT

 public:
    using QTabBar::QTabBar;

 protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override;
    void initStyleOption(QStyleOptionTab* option, int index) const override;
};

/// Tabs of a dialog. Ctrl+Tab and Ctrl+Shift+Tab go from one to the next wherever in the dialog the
/// focus is, and a click on a tab leads the focus to its first control.
class WrappedTabs final : public QTabWidget {
    Q_OBJECT

 public:
    explicit WrappedTabs(QWidget* parent);

    /// Wide enough for all tabs.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

 private:
    [[nodiscard]] QSize with_room_for_tabs(const QSize& size) const;
    /// Goes that many tabs on, round the end.
    void step(int by);
    void enter_shown_tab();
};

}  // namespace veldra
