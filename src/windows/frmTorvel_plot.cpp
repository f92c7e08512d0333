// The part of the main window that looks after plotting.
#include <QLabel>
#include <algorithm>
#include <cmath>

#include "commands/plot_job.h"
#include "commands/plot_mode.h"
#include "commands/plot_to_pdf.h"
#include "text/length_units.h"
#include "windows/frmTorvel.h"
#include "windows/qt/picture_image.h"

namespace veldra {

void FrmTorvel::add_plot_commands(std::map<MenuItem, Command>& commands) {
    commands[MenuItem::m_plotten_ein] = [this] {
        perform([this] { plotmodus_ein(session_, desk()); });
    };
    commands[MenuItem::m_plotten_aus] = [this] {
        perform([this] { plotmodus_aus(session_, desk()); });
    };
    commands[MenuItem::m_plotten_aktuell] = [this] {
        perform([this] { plotten_aktuell(session_, desk()); });
    };
    commands[MenuItem::m_datei_plot] = save_command(
        "VELDRA - Plot als PDF speichern",
        [this] {
            return choose_plot_file(proposed_name(session_.graphikdatei, QStringLiteral("pdf")));
        },
        [this](const std::string& path) { plot_als_pdf(session_, path, desk()); });
    commands[MenuItem::m_plotten_alle] = [this] {
        perform([this] { plotten_alle(session_, desk()); });
    };
}

void FrmTorvel::add_plot_commands(std::map<ToolButton, Command>& commands) {
    commands[ToolButton::plot_ein] = [this] {
        perform([this] { plotmodus_ein(session_, desk()); });
    };
    commands[ToolButton::plot_aus] = [this] {
        perform([this] { plotmodus_aus(session_, desk()); });
    };
}

void FrmTorvel::place_legend_control() {
    auto* control = findChild<QLabel*>(QStringLiteral("lbl_legende"));
    control->setVisible(session_.window.lbl_legende_visible);
    if (!session_.window.lbl_legende_visible) {
        return;
    }
    const Label& legend = session_.lbl_legende;
    const double pixel = twips_per_pixel * session_.view.ansicht_masseinheit;
    const double height = session_.view.ansicht_hw_max - session_.view.ansicht_hw_min;
    // A control beyond these is out of sight all the same, and the toolkit takes no larger ones.
    const auto pixels = [pixel](double metres) {
        constexpr double reach = 30000;
        return static_cast<int>(std::lround(std::clamp(metres / pixel, -reach, reach)));
    };
    control->setAttribute(Qt::WA_TransparentForMouseEvents);
    control->setGeometry(
        pixels(static_cast<double>(legend.left)), pixels(height - static_cast<double>(legend.top)),
        pixels(static_cast<double>(legend.width)), pixels(static_cast<double>(legend.height)));
}

}  // namespace veldra
