#pragma once

namespace veldra {

/// A dialog that edits the session while it is open.
class SessionEditor {
 public:
    SessionEditor() = default;
    virtual ~SessionEditor() = default;
    SessionEditor(const SessionEditor&) = delete;
    SessionEditor& operator=(const SessionEditor&) = delete;

    /// What giving the dialog up leaves of its edits in the session, when the display is gone: no
    /// window, font or printer is touched. Nothing happens if the dialog has been left.
    virtual void give_up_edits() = 0;
};

}  // namespace veldra
