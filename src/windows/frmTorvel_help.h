#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <string>

#include "model/session.h"
#include "settings/paths.h"

class QWidget;

namespace veldra {

/// The handbook's page about a window, by the window's object name; "" if none is about it.
[[nodiscard]] QString handbook_page(const QString& window_name);

/// The help of the main window and of all dialogs over it: the handbook by F1 or by the menu, and
/// the news of the program.
class TorvelHelp final : public QObject {
    Q_OBJECT

 public:
    /// `session` and `window` outlive this.
    TorvelHelp(QWidget& window, const Session& session);

    /// Opens the handbook at the page about the main window as it stands, or about the tool window
    /// over it that is in use: such windows leave the keys of the main window in force.
    void show_handbook();
    /// Opens the file of news in the program's folder with the system's viewer; without a file, or
    /// without a viewer for it, the handbook's page.
    void show_news(const SystemFolders& folders);

    /// Opens a file with the system's viewer; false if there is none. Tests put their own here.
    std::function<bool(const QString& path)> open_document;

 protected:
    /// F1 in any dialog.
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    /// The handbook belongs to the window that it is opened from: a modal dialog lets no other be
    /// used beside it.
    static void show_page(QWidget& owner, const QString& page);
    [[nodiscard]] QString page_about(const QWidget& window) const;

    QWidget& window_;
    const Session& session_;
};

}  // namespace veldra
