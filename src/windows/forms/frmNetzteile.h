#pragma once

#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <cstdint>
#include <functional>

#include "model/session.h"

namespace veldra {

/// "Netzteile": lists the network parts, marks them for plotting and switches the part shown. It
/// stays open beside the main window.
class FrmNetzteile final : public QDialog {
    Q_OBJECT

 public:
    /// What the dialog asks of the main window.
    struct Requests {
        std::function<void(std::int32_t part)> show_part;
        std::function<void(std::int32_t part, bool marked)> mark;
        std::function<void()> close;
    };

    FrmNetzteile(QWidget* window, const Session& session, Requests requests);

    /// Brings list and buttons into line with the session. The table of parts is listed anew when
    /// it is another one.
    void synchronise();

    /// A part (from 1) has been marked for plotting elsewhere, or its mark taken away: a marked
    /// part becomes the selected one.
    void show_mark(std::int32_t part, bool marked);

    /// Every way to close it is a request to the main window.
    void reject() override;

 protected:
    bool event(QEvent* event) override;

 private:
    void build();
    void fill();
    void show_marks();
    void follow_selection();
    void show_selected();
    void mark_selected(bool marked);
    [[nodiscard]] std::int32_t selected_part() const;
    /// The buttons for marking follow a part; the one with the focus passes it to the other.
    void set_buttons(std::int32_t part);

    const Session& session_;
    Requests requests_;
    std::uint32_t load_ = 0;
    std::int32_t buttons_for_ = 0;  ///< part that the buttons for marking stand for
    bool filling_ = false;
    QListWidget* lst_netzteile_ = nullptr;
    QPushButton* cmd_plotten_ = nullptr;
    QPushButton* cmd_nicht_plotten_ = nullptr;
    QPushButton* cmd_anzeigen_ = nullptr;
};

}  // namespace veldra
