#pragma once

#include "batch/options.h"
#include "commands/lifecycle.h"
#include "model/session.h"
#include "text/user_interface.h"

namespace veldra::batch {

/// The user interface of a program without windows: messages go to the standard error.
class ConsoleInterface final : public UserInterface {
 public:
    bool message_box(MessageStyle style, const std::string& title,
                     const std::string& text) override;
    void set_mouse_pointer(int /*pointer*/) override {}
};

/// Defaults, then the profile if one is named; throws FatalError if a named profile is missing.
void prepare_session(Session& session, const FileOptions& options);

/// Header and maxima pass over the file; the named part becomes the current one. Throws FatalError
/// if the file or the part is missing.
void read_head(Session& session, const FileOptions& options);

/// The change of the selection that --obj asks for.
[[nodiscard]] SelectionChange selection_change(const FileOptions& options);

/// Number of the part of this name (UTF-8); throws FatalError if there is none.
[[nodiscard]] std::int32_t part_number(const Session& session, const std::string& name);

/// Opens the file up to the first view, without drawing it: the picture has `picture` pixels.
void open_view(Session& session, const FileOptions& options, const PictureOptions& picture,
               TextMeasurer& measurer, UserInterface& ui);

}  // namespace veldra::batch
