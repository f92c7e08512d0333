#include "windows/frmTorvel_commands.h"

#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <cstdint>
#include <utility>

namespace veldra {

namespace {

enum class Kind : std::uint8_t { menu, command, entry, separator };

/// A line of the menu: menus and commands stand in the bar, entries and separators in the menu
/// above them.
struct MenuLine {
    const char* name;
    const char* caption;
    MenuItem item;
    Kind kind;
};

constexpr MenuLine menu_lines[] = {
    {"m_torvel_datei", "&Datei", MenuItem::m_torvel_datei, Kind::menu},
    {"m_datei_beliebig", "&Öffnen...", MenuItem::m_datei_beliebig, Kind::entry},
    {"m_datei_bild", "Bild &speichern unter...", MenuItem::m_datei_bild, Kind::entry},
    {"m_datei_plot", "Plot als &PDF speichern...", MenuItem::m_datei_plot, Kind::entry},
    {"m_datei_uebernehmen", "&Einstellungen übernehmen aus...", MenuItem::m_datei_uebernehmen,
     Kind::entry},
    {"m_datei_n1", "", MenuItem::m_datei_n1, Kind::separator},
    {"m_datei_alt_1", "&1: ", MenuItem::m_datei_alt_1, Kind::entry},
    {"m_datei_alt_2", "&2: ", MenuItem::m_datei_alt_2, Kind::entry},
    {"m_datei_alt_3", "&3: ", MenuItem::m_datei_alt_3, Kind::entry},
    {"m_datei_alt_4", "&4: ", MenuItem::m_datei_alt_4, Kind::entry},
    {"m_datei_n3", "", MenuItem::m_datei_n3, Kind::separator},
    {"m_datei_beenden", "&Beenden", MenuItem::m_datei_beenden, Kind::entry},
    {"m_torvel_objekte", "&Objekte", MenuItem::m_torvel_objekte, Kind::command},
    {"m_torvel_ansicht", "&Ansicht", MenuItem::m_torvel_ansicht, Kind::menu},
    {"m_ansicht_undo", "&Rückgängig:", MenuItem::m_ansicht_undo, Kind::entry},
    {"m_ansicht_original", "&Gesamtansicht", MenuItem::m_ansicht_original, Kind::entry},
    {"m_ansicht_halb", "&Verkleinern", MenuItem::m_ansicht_halb, Kind::entry},
    {"m_ansicht_netzteile", "&Netzteile", MenuItem::m_ansicht_netzteile, Kind::entry},
    {"m_ansicht_maßstab", "&Maßstab", MenuItem::m_ansicht_massstab, Kind::entry},
    {"m_torvel_plotten", "&Plotten", MenuItem::m_torvel_plotten, Kind::menu},
    {"m_plotten_ein", "Plotmodus &ein", MenuItem::m_plotten_ein, Kind::entry},
    {"m_plotten_aus", "Plotmodus &aus", MenuItem::m_plotten_aus, Kind::entry},
    {"m_plotten_einstellungen", "Ein&stellungen...", MenuItem::m_plotten_einstellungen,
     Kind::entry},
    {"m_plotten_null", "Plotter&nullpunkt anpassen", MenuItem::m_plotten_null, Kind::entry},
    {"m_plotten_aktuell", "Aktuelles Netzteil &plotten", MenuItem::m_plotten_aktuell, Kind::entry},
    {"m_plotten_alle", "Alle &gekennzeichneten Netzteile plotten", MenuItem::m_plotten_alle,
     Kind::entry},
    {"m_torvel_optionen", "Op&tionen", MenuItem::m_torvel_optionen, Kind::menu},
    {"m_optionen_darstellungen", "&Darstellung Objekte...", MenuItem::m_optionen_darstellungen,
     Kind::entry},
    {"m_optionen_legende", "&Legende...", MenuItem::m_optionen_legende, Kind::entry},
    {"m_optionen_grenzen", "&Verwaltungsgrenzen...", MenuItem::m_optionen_grenzen, Kind::entry},
    {"m_optionen_drucker", "&Anwendungsdrucker: ", MenuItem::m_optionen_drucker, Kind::entry},
    {"m_torvel_hilfe", "&Hilfe", MenuItem::m_torvel_hilfe, Kind::menu},
    {"m_hilfe_handbuch", "&Handbuch", MenuItem::m_hilfe_handbuch, Kind::entry},
    {"m_hilfe_neues", "&Neues in VELDRA", MenuItem::m_hilfe_neues, Kind::entry},
    {"m_hilfe_proginfo", "&Programminfo...", MenuItem::m_hilfe_proginfo, Kind::entry},
};

/// A button of the toolbar. The numbers that the table leaves out are separators.
struct ToolLine {
    ToolButton button;
    const char* key;
    const char* icon;
    const char* tool_tip;
};

constexpr ToolLine tool_lines[] = {
    {ToolButton::datei_oeffnen, "datei_öffnen", "datei_oeffnen", "Graphikdatei öffnen"},
    {ToolButton::rueckgaengig, "rückgängig", "rueckgaengig", "Rückgängig:"},
    {ToolButton::netzteile, "netzteile", "netzteile", "Netzteile"},
    {ToolButton::massstaebe, "maßstäbe", "massstaebe", "Maßstäbe"},
    {ToolButton::lupe_plus, "lupe_plus", "lupe_plus", "Vergrößern"},
    {ToolButton::lupe_minus, "lupe_minus", "lupe_minus", "Verkleinern"},
    {ToolButton::schiebe_rechts, "schiebe_rechts", "schiebe_rechts", "Ausschnitt nach rechts"},
    {ToolButton::schiebe_links, "schiebe_links", "schiebe_links", "Ausschnitt nach links"},
    {ToolButton::schiebe_hoch, "schiebe_hoch", "schiebe_hoch", "Ausschnitt nach oben"},
    {ToolButton::schiebe_runter, "schiebe_runter", "schiebe_runter", "Ausschnitt nach unten"},
    {ToolButton::schiebe_original, "schiebe_original", "schiebe_original", "Gesamtansicht"},
    {ToolButton::plot_ein, "plot_ein", "plot_ein", "Plotmodus ein"},
    {ToolButton::plot_aus, "plot_aus", "plot_aus", "Plotmodus aus"},
    {ToolButton::beenden, "beenden", "beenden", "Programm beenden"},
};

/// Plot mode on and plotting share a key: only one of them is enabled at a time.
const std::map<MenuItem, QList<QKeySequence>>& menu_keys() {
    static const std::map<MenuItem, QList<QKeySequence>> keys{
        {MenuItem::m_datei_beliebig, {Qt::CTRL | Qt::Key_O}},
        {MenuItem::m_datei_bild, {Qt::CTRL | Qt::Key_S}},
        {MenuItem::m_datei_beenden, {Qt::CTRL | Qt::Key_Q}},
        {MenuItem::m_ansicht_undo, {Qt::CTRL | Qt::Key_Z}},
        {MenuItem::m_ansicht_original, {Qt::Key_Home}},
        {MenuItem::m_ansicht_halb, {Qt::Key_Minus, Qt::CTRL | Qt::Key_Minus}},
        {MenuItem::m_plotten_ein, {Qt::CTRL | Qt::Key_P}},
        {MenuItem::m_plotten_aktuell, {Qt::CTRL | Qt::Key_P}},
        {MenuItem::m_hilfe_handbuch, {Qt::Key_F1}},
    };
    return keys;
}

const std::map<ToolButton, QList<QKeySequence>>& tool_keys() {
    static const std::map<ToolButton, QList<QKeySequence>> keys{
        {ToolButton::lupe_plus, {Qt::Key_Plus, Qt::CTRL | Qt::Key_Plus}},
        {ToolButton::schiebe_rechts, {Qt::Key_Right}},
        {ToolButton::schiebe_links, {Qt::Key_Left}},
        {ToolButton::schiebe_hoch, {Qt::Key_Up}},
        {ToolButton::schiebe_runter, {Qt::Key_Down}},
    };
    return keys;
}

template <typename Key>
QList<QKeySequence> keys_of(const std::map<Key, QList<QKeySequence>>& table, Key key) {
    const auto found = table.find(key);
    return found == table.end() ? QList<QKeySequence>() : found->second;
}

constexpr bool is_checkable(MenuItem item) {
    return item == MenuItem::m_ansicht_netzteile || item == MenuItem::m_ansicht_massstab;
}

template <typename Key>
void run_if_there(const std::map<Key, Command>& commands, Key key) {
    const auto found = commands.find(key);
    if (found != commands.end()) {
        found->second();
    }
}

/// Keys of the menu bar. An entry of the bar that opens no menu leaves the keys to whoever had them
/// before, and the arrows to the commands of the window: here they go on moving in the bar.
class MenuBarKeys final : public QObject {
 public:
    explicit MenuBarKeys(QMenuBar& bar) : QObject(&bar), bar_(bar) { bar.installEventFilter(this); }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride && watched == &bar_ && is_arrow(event) &&
            bar_.activeAction() != nullptr) {
            event->accept();
            return true;
        }
        if (event->type() != QEvent::KeyPress) {
            return false;
        }
        give_back();
        watched->event(event);
        take();
        return true;
    }

 private:
    static bool is_arrow(QEvent* event) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up ||
               key == Qt::Key_Down;
    }
    void take() {
        const QAction* const entry = bar_.activeAction();
        if (entry == nullptr || entry->menu() != nullptr || bar_.hasFocus() ||
            QApplication::activePopupWidget() != nullptr) {
            return;
        }
        before_ = bar_.window()->focusWidget();
        bar_.setFocus(Qt::MenuBarFocusReason);
    }
    void give_back() {
        if (before_ != nullptr && bar_.hasFocus()) {
            before_->setFocus(Qt::MenuBarFocusReason);
        }
        before_ = nullptr;
    }

    QMenuBar& bar_;
    QPointer<QWidget> before_;  ///< had the keys
};

}  // namespace

TorvelCommands::TorvelCommands(QMainWindow& window, std::map<MenuItem, Command> menu_commands,
                               std::map<ToolButton, Command> tool_commands)
    : menu_commands_(std::move(menu_commands)), tool_commands_(std::move(tool_commands)) {
    build_menus(window);
    build_toolbar(window);
}

void TorvelCommands::build_menus(QMainWindow& window) {
    QMenu* menu = nullptr;
    auto* keys = new MenuBarKeys(*window.menuBar());
    for (const MenuLine& line : menu_lines) {
        const QString name = QString::fromUtf8(line.name);
        const QString caption = QString::fromUtf8(line.caption);
        QAction* action = nullptr;
        if (line.kind == Kind::menu) {
            menu = window.menuBar()->addMenu(caption);
            menu->setObjectName(name);
            menu->installEventFilter(keys);
            action = menu->menuAction();
        } else {
            action = new QAction(caption, &window);
            action->setObjectName(name);
            action->setSeparator(line.kind == Kind::separator);
            action->setCheckable(is_checkable(line.item));
            action->setMenuRole(QAction::NoRole);
            if (line.kind == Kind::command) {
                window.menuBar()->addAction(action);
            } else if (menu != nullptr) {
                menu->addAction(action);
            }
            const MenuItem item = line.item;
            if (item == MenuItem::m_hilfe_handbuch) {
                window.addAction(action);  // its key works while its menu is hidden
            }
            action->setShortcuts(keys_of(menu_keys(), item));
            QObject::connect(action, &QAction::triggered, &window,
                             [this, item] { run_if_there(menu_commands_, item); });
        }
        menu_[static_cast<std::size_t>(line.item)] = action;
    }
}

void TorvelCommands::build_toolbar(QMainWindow& window) {
    auto* bar = new QToolBar(&window);
    bar->setObjectName(QStringLiteral("tlb_torvel"));
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setIconSize(QSize(24, 24));
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->toggleViewAction()->setVisible(false);
    std::size_t position = 1;
    for (const ToolLine& line : tool_lines) {
        for (; position < static_cast<std::size_t>(line.button); ++position) {
            bar->addSeparator();
        }
        const QString path =
            QStringLiteral(":/veldra/icons/%1.svg").arg(QString::fromUtf8(line.icon));
        QAction* action = bar->addAction(QIcon(path), QString::fromUtf8(line.tool_tip));
        action->setObjectName(QString::fromUtf8(line.key));
        const ToolButton button = line.button;
        action->setShortcuts(keys_of(tool_keys(), button));
        QObject::connect(action, &QAction::triggered, &window,
                         [this, button] { run_if_there(tool_commands_, button); });
        tools_[position++] = action;
    }
    window.addToolBar(Qt::TopToolBarArea, bar);
}

void TorvelCommands::synchronise(const WindowState& state) {
    for (const MenuLine& line : menu_lines) {
        const MenuItemState& item = state[line.item];
        QAction& action = *menu_[static_cast<std::size_t>(line.item)];
        const bool works = line.kind == Kind::menu || menu_commands_.count(line.item) != 0;
        action.setVisible(item.visible);
        action.setEnabled(item.enabled && works);
        if (action.isCheckable()) {
            action.setChecked(item.checked && works);
        }
        if (line.kind != Kind::separator) {
            action.setText(item.caption.empty()
                               ? QString::fromUtf8(line.caption)
                               : menu_caption(QString::fromStdString(item.caption)));
        }
    }
    for (const ToolLine& line : tool_lines) {
        const ToolButtonState& button = state[line.button];
        QAction& action = *tools_[static_cast<std::size_t>(line.button)];
        action.setEnabled(button.enabled && tool_commands_.count(line.button) != 0);
        action.setToolTip(button.tool_tip.empty() ? QString::fromUtf8(line.tool_tip)
                                                  : QString::fromStdString(button.tool_tip));
    }
}

QString menu_caption(const QString& caption) {
    const qsizetype mark = caption.indexOf(QLatin1Char('&'));
    QString rest = caption.mid(mark + 1);
    rest.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return caption.left(mark + 1) + rest;
}

}  // namespace veldra
