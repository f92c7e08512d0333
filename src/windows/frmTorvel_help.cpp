#include "windows/frmTorvel_help.h"

#include <QApplication>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QUrl>

#include "os/files.h"
#include "windows/forms/frmHandbuch.h"
#include "windows/qt/qt_user_interface.h"

namespace veldra {

namespace {

struct WindowPage {
    const char* window;
    const char* page;
};

constexpr WindowPage window_pages[] = {
    {"frmTorvel", "index"},           {"frmLogo", "hauptfenster"},
    {"frmObjekte", "objekte"},        {"frmNetzteile", "netzteile"},
    {"frmMaßstab", "massstab"},       {"frmDarstellungen", "darstellungen"},
    {"frmStrichst", "darstellungen"}, {"frmLegende", "legende"},
    {"frmVerwopt", "grenzen"},        {"frmPlotten", "plotten"},
    {"frmDrucker", "drucker"},
};

bool is_help_key(const QEvent& event) {
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

/// The window that a control belongs to for its user: a menu or the list of a combo box is only a
/// part of one.
QWidget& window_of(QWidget& control) {
    QWidget* window = control.window();
    while ((window->windowFlags() & Qt::WindowType_Mask) == Qt::Popup &&
           window->parentWidget() != nullptr) {
        window = window->parentWidget()->window();
    }
    return *window;
}

void close_popups() {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        if (popup == QApplication::activePopupWidget()) {
            return;
        }
    }
}

}  // namespace

QString handbook_page(const QString& window_name) {
    for (const WindowPage& entry : window_pages) {
        if (window_name == QString::fromUtf8(entry.window)) {
            return QString::fromLatin1(entry.page);
        }
    }
    return {};
}

TorvelHelp::TorvelHelp(QWidget& window, const Session& session)
    : QObject(&window),
      open_document(
          [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }),
      window_(window),
      session_(session) {
    QApplication::instance()->installEventFilter(this);
}

void TorvelHelp::show_handbook() {
    const QWidget* active = QApplication::activeWindow();
    show_page(window_, page_about(active == nullptr ? window_ : *active));
}

void TorvelHelp::show_news(const SystemFolders& folders) {
    const std::string path = news_file(folders);
    if (!datei_vorhanden(path) || !open_document(path_text(path))) {
        show_page(window_, QStringLiteral("neues"));
    }
}

bool TorvelHelp::eventFilter(QObject* watched, QEvent* event) {
    auto* const control = qobject_cast<QWidget*>(watched);
    if (control == nullptr || !is_help_key(*event) ||
        qobject_cast<FrmHandbuch*>(control->window()) != nullptr) {
        return QObject::eventFilter(watched, event);
    }
    QWidget& owner = window_of(*control);
    close_popups();
    show_page(owner, page_about(owner));
    return true;
}

void TorvelHelp::show_page(QWidget& owner, const QString& page) {
    auto* handbook = owner.findChild<FrmHandbuch*>(QString(), Qt::FindDirectChildrenOnly);
    if (handbook == nullptr) {
        handbook = new FrmHandbuch(&owner);
    }
    handbook->show_page(page);
    handbook->show();
    handbook->raise();
    handbook->activateWindow();
}

/// A message over a dialog is explained by the page about the dialog.
QString TorvelHelp::page_about(const QWidget& window) const {
    for (const QWidget* about = &window; about != nullptr; about = about->parentWidget()) {
        if (about == &window_ && session_.plotmodus == 1) {
            return QStringLiteral("plotten");
        }
        QString page = handbook_page(about->objectName());
        if (!page.isEmpty()) {
            return page;
        }
    }
    return QStringLiteral("index");
}

}  // namespace veldra
