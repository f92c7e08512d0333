#pragma once

#include <QLabel>
#include <QStatusBar>
#include <optional>

#include "shell/session.h"
#include "view/viewport.h"

namespace veldra {

/// The status line of the main window: place of the pointer, scale of the picture.
class TorvelStatus final : public QStatusBar {
    Q_OBJECT

 public:
    explicit TorvelStatus(QWidget* parent);

    void show_place(const std::optional<WorldPoint>& place);
    /// The scale of the view while a file is loaded.
    void synchronise(const Session& session);

 private:
    QLabel* place_;
    QLabel* scale_;
};

}  // namespace veldra
