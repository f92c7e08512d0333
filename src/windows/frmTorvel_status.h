#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <functional>
#include <optional>

#include "model/long_work.h"
#include "model/session.h"
#include "view/viewport.h"

namespace veldra {

/// The status line of the main window: place of the pointer, scale of the picture.
class TorvelStatus final : public QStatusBar {
    Q_OBJECT

 public:
    explicit TorvelStatus(QWidget* parent);

    void show_place(const std::optional<WorldPoint>& place);
    /// The scale of the view while a file is loaded, and whether that file is read-only.
    void synchronise(const Session& session, bool read_only);

 private:
    QLabel* place_;
    QLabel* read_only_;
    QLabel* scale_;
};

/// Follows the work of a command: from half a second on it shows in the status line how far the
/// work is, keeps the window alive and, where the work may be given up, offers that.
class TorvelProgress final : public QObject, public LongWork {
    Q_OBJECT

 public:
    explicit TorvelProgress(QStatusBar& status);

    /// A command starts or ends.
    void begin();
    void end();
    bool goes_on() override;
    /// The time that the user took for an answer was no work.
    void wait_anew();
    /// As "Abbrechen": the work ends, if it may be given up.
    void give_up();
    /// The same for all that the command still has to do.
    void give_up_command();
    /// From now on the work shows how far it is and serves no events: the program ends, and nothing
    /// else is to come between.
    void serve_no_more();

    /// The work may be given up as long as this lives.
    class MayCancel {
     public:
        explicit MayCancel(TorvelProgress& progress)
            : progress_(progress), before_(progress.may_cancel_) {
            progress_.may_cancel_ = true;
        }
        ~MayCancel() {
            progress_.may_cancel_ = before_;
            progress_.cancelled_ = false;
        }
        MayCancel(const MayCancel&) = delete;
        MayCancel& operator=(const MayCancel&) = delete;

     private:
        TorvelProgress& progress_;
        bool before_;
    };

    /// Called each time before the window serves its events.
    std::function<void()> before_events;
    /// Milliseconds before anything is shown.
    static constexpr int patience = 500;

 private:
    void show_itself();
    void serve();
    /// A writing is never given up.
    [[nodiscard]] bool may_be_given_up() const;

    QStatusBar& status_;
    QProgressBar* bar_;
    QPushButton* cmd_abbrechen_;
    QElapsedTimer since_start_;
    QElapsedTimer since_events_;
    bool may_cancel_ = false;
    bool cancelled_ = false;
    bool command_given_up_ = false;
    bool serves_events_ = true;
};

}  // namespace veldra
