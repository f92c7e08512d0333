#include "commands/write_back.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "commands/file_watch.h"
#include "graphikdatei/memory_writer.h"
#include "graphikdatei/working_copies.h"
#include "graphikdatei/writer.h"
#include "model/hourglass.h"
#include "model/long_work.h"
#include "os/files.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

/// Where the user's changes are when the graphic file could not take them.
struct Rescue {
    std::string path;     ///< "" if there is no working copy
    std::string reasons;  ///< why not, UTF-8
    bool from_memory = false;
};

std::string file_name(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// The copy takes the plot settings and titles as well, if there is room for them and nobody has
/// put another file in its place.
bool complete_copy(Session& session) {
    if (!is_own_copy(session, working_path(session))) {
        return false;
    }
    try {
        write_final_form(session, working_path(session));
    } catch (const FatalError&) {
        return false;  // what has been written stands
    }
    return true;
}

/// Writes a working copy to a path, of a session that may still read the one before.
using CopyWriter = void (*)(Session& session, const std::string& target);

void copy_beside(Session& session, CopyWriter write_copy) {
    const WorkingCopyName next = next_working_copy(session);
    write_copy(session, next.path());
    session.arbeitsdatei_basis = next.base;
    session.arbeitsdatei_suffix = next.suffix;
}

void copy_into(Session& session, const std::string& folder, CopyWriter write_copy) {
    create_folder(folder);
    const std::string base = unused_base(folder, file_name(session.graphikdatei));
    write_copy(session, base + "_1");
    session.arbeitsdatei_basis = base;
    session.arbeitsdatei_suffix = "_1";
}

/// True when the whole state has found a place. A copy without plot settings and titles is better
/// than none: the first of them is kept in mind.
template <typename Attempt>
bool attempt_copy(Session& session, Rescue& rescue, const Attempt& attempt) {
    try {
        attempt();
    } catch (const FatalError& error) {
        // Without the file to copy from, each place fails for the same reason.
        const std::string reason = std::string("\n") + error.what();
        if (!rescue.reasons.ends_with(reason)) {
            rescue.reasons += reason;
        }
        return false;
    }
    const bool complete = complete_copy(session);
    if (complete || rescue.path.empty()) {
        rescue.path = working_path(session);
    }
    return complete;
}

/// The places for a copy in turn: beside the file, where there may be one already, the user's
/// folder, that for temporary files.
void try_places(Session& session, const Desk& desk, WorkingCopy copy, Rescue& rescue,
                CopyWriter write_copy) {
    const auto beside_the_file = [&] {
        if (copy == WorkingCopy::outdated || !is_own_copy(session, working_path(session))) {
            copy_beside(session, write_copy);
        }
    };
    // A folder that goes with the open file keeps nothing.
    if (!session.arbeitsordner && attempt_copy(session, rescue, beside_the_file)) {
        return;
    }
    for (const std::string& folder : {desk.rescue_folder, temporary_directory()}) {
        const auto into_folder = [&] { copy_into(session, folder, write_copy); };
        if (!folder.empty() && attempt_copy(session, rescue, into_folder)) {
            return;
        }
    }
}

/// Puts the changes into a working copy. If there is no file any more that they fit into, the copy
/// is made of what is in memory.
Rescue keep_working_copy(Session& session, const Desk& desk, WorkingCopy copy) {
    Rescue rescue;
    try_places(session, desk, copy, rescue, write_working_copy);
    if (rescue.path.empty()) {
        rescue.from_memory = true;
        try_places(session, desk, WorkingCopy::outdated, rescue, write_from_memory);
    }
    return rescue;
}

/// What the user is told of a file made by write_from_memory.
constexpr const char* memory_holds =
    "was im Speicher war: das angezeigte Netzteil mit seinen Punkten und den "
    "dargestellten Beobachtungen und Werten.";

std::string rescue_text(const Rescue& rescue) {
    if (rescue.path.empty()) {
        return "Auch eine Arbeitskopie konnte nicht geschrieben werden:" + rescue.reasons;
    }
    std::string text = "Ihr Stand bleibt in der Arbeitskopie\n" + rescue.path + "\nerhalten.";
    if (rescue.from_memory) {
        text += std::string(" Sie enthält, ") + memory_holds;
    }
    return text;
}

bool may_overwrite(const Session& session, const Desk& desk, Attendance attendance) {
    if (desk.watch == nullptr || !desk.watch->rewritten()) {
        return true;
    }
    return attendance == Attendance::user &&
           desk.ui.message_box(MessageStyle::question_no_yes, "VELDRA - Graphikdatei geändert",
                               "Ein anderes Programm hat die Graphikdatei\n" +
                                   session.graphikdatei +
                                   "\ngeändert, seit sie gelesen wurde.\n"
                                   "Soll sie mit dem hier gezeigten Stand überschrieben werden?");
}

/// Whom the file is taken from when it is written, as a question.
std::string ownership_question(const std::string& path, const OwnershipLoss& loss) {
    std::string text = "Die Graphikdatei\n" + path +
                       "\nliegt in einem Ordner, in den eine Gruppe schreiben darf. "
                       "Wird sie geschrieben, so behält sie ";
    if (!loss.owner.empty()) {
        text += "ihren Besitzer (" + loss.owner + ")";
    }
    if (!loss.group.empty()) {
        text += std::string(loss.owner.empty() ? "" : " und ") + "ihre Gruppe (" + loss.group + ")";
    }
    text += " nicht; sie gehört dann Ihnen.";
    if (!loss.group.empty()) {
        text += "\nDie Mitglieder der Gruppe dürfen danach nur noch, was alle dürfen.";
    }
    return text + "\n\nTrotzdem schreiben?";
}

/// Asks once for each file of a run. With nobody there the work counts for more.
bool may_become_owner(Session& session, const Desk& desk, Attendance attendance) {
    const OwnershipLoss loss = ownership_loss(session.graphikdatei);
    std::vector<std::string>& agreed = session.besitz_geht_ueber;
    if (!loss.any() || attendance == Attendance::nobody ||
        std::find(agreed.begin(), agreed.end(), session.graphikdatei) != agreed.end()) {
        return true;
    }
    const bool agrees =
        desk.ui.message_box(MessageStyle::question_yes_no, "VELDRA - Graphikdatei schreiben",
                            ownership_question(session.graphikdatei, loss));
    if (agrees) {
        agreed.push_back(session.graphikdatei);
    }
    return agrees;
}

/// Why the graphic file stays as it is.
struct Unwritten {
    const char* title;
    const char* reason;
};

constexpr Unwritten rewritten_elsewhere{
    "VELDRA - Graphikdatei geändert",
    ": Ein anderes Programm hat die Graphikdatei geändert; sie wird nicht überschrieben."};
constexpr Unwritten keeps_its_owner{
    "VELDRA - Graphikdatei schreiben",
    ": Die Graphikdatei wird nicht überschrieben und bleibt, wem sie gehört."};

/// The graphic file stays; the work goes to a copy.
void leave_unwritten(Session& session, const Desk& desk, Attendance attendance,
                     const Unwritten& why) {
    const Rescue rescue = keep_working_copy(session, desk, WorkingCopy::outdated);
    const std::string text = session.graphikdatei + why.reason + "\n\n" + rescue_text(rescue);
    close_document(session);
    if (attendance == Attendance::nobody) {
        throw FatalError(text);
    }
    desk.ui.message_box(MessageStyle::information, why.title, text);
}

/// The current part's state goes into a copy in a folder of its own, which the final form is made
/// from: beside the file there may be no room.
void write_elsewhere(Session& session, const std::string& target, CopyWriter write_copy) {
    const auto folder = std::make_shared<const TemporaryFolder>();
    const std::string base = unused_base(folder->path(), file_name(session.graphikdatei));
    write_copy(session, base + "_1");
    session.arbeitsdatei_basis = base;
    session.arbeitsdatei_suffix = "_1";
    session.arbeitsordner = folder;
    endfassung_schreiben(session, target);
}

/// Writes what is in memory. As long as it has found no place the session goes on reading its file,
/// which holds more and may come back.
void write_memory_elsewhere(Session& session, const Desk& desk, const std::string& target) {
    const std::string base = session.arbeitsdatei_basis;
    const std::string suffix = session.arbeitsdatei_suffix;
    const auto folder = session.arbeitsordner;
    try {
        write_elsewhere(session, target, write_from_memory);
    } catch (const FatalError&) {
        if (session.datei_geladen == 1) {
            session.arbeitsdatei_basis = base;
            session.arbeitsdatei_suffix = suffix;
            session.arbeitsordner = folder;
        }
        throw;
    }
    desk.ui.message_box(MessageStyle::information, "VELDRA - Graphikdatei",
                        "Die Datei\n" + target + "\nenthält, " + memory_holds);
}

/// The state goes into a file of another name; without a file to merge it into, what is in memory.
void save_as(Session& session, const Desk& desk, const std::string& target) {
    if (datei_vorhanden(working_path(session))) {
        write_elsewhere(session, target, write_working_copy);
    } else {
        write_memory_elsewhere(session, desk, target);
    }
}

/// Nothing of the session reaches the file, and no copy stays.
void drop_file(Session& session) {
    try {
        remove_own_copies(session);
    } catch (const FatalError&) {
        // What cannot be deleted is not worth a word: the user wanted to be rid of it.
    }
    close_document(session);
}

std::string question_text(const std::string& reason) {
    return reason +
           "\n\nWiederholen: noch einmal versuchen, die Graphikdatei zu schreiben.\n"
           "Speichern unter...: den gezeigten Stand in eine andere Datei schreiben.\n"
           "Verwerfen: Ihre Änderungen aufgeben.";
}

/// True when the answer has been followed.
bool follow_answer(Session& session, const Desk& desk, const UnwrittenAnswer& answer) {
    switch (answer.choice) {
        case UnwrittenAnswer::Choice::again:
            write_elsewhere(session, session.graphikdatei, write_working_copy);
            return true;
        case UnwrittenAnswer::Choice::elsewhere:
            save_as(session, desk, answer.path);
            return true;
        case UnwrittenAnswer::Choice::discard:
            drop_file(session);
            return true;
        case UnwrittenAnswer::Choice::nobody:
            break;
    }
    return false;
}

void leave_read_only(Session& session, const Desk& desk, Attendance attendance) {
    if (!desk.watch->read_only().has_changed(session)) {
        drop_file(session);
        return;
    }
    const std::string reason = session.graphikdatei + ": Die Graphikdatei ist schreibgeschützt.";
    if (attendance == Attendance::nobody) {
        throw abandon_file(session, desk, reason, WorkingCopy::outdated);
    }
    settle_unwritten(session, desk, reason);
}

void write(Session& session, const Desk& desk, Attendance attendance) {
    constexpr int copy_and_final_form = 2;
    bool copied = false;
    expect_writings(session.work, copy_and_final_form);
    try {
        arbeitskopie_schreiben(session);
        copied = true;
        endfassung_schreiben(session);
    } catch (const FatalError& error) {
        if (session.datei_geladen != 1) {
            throw;  // all is written, but an old copy could not be deleted
        }
        if (attendance == Attendance::user && file_out_of_reach(session)) {
            settle_unwritten(session, desk, error.what());
            return;
        }
        throw abandon_file(session, desk, error.what(),
                           copied ? WorkingCopy::written : WorkingCopy::outdated);
    }
}

}  // namespace

bool file_out_of_reach(const Session& session) {
    return session.datei_geladen == 1 && !ordner_vorhanden(folder_of_file(session.graphikdatei));
}

void settle_unwritten(Session& session, const Desk& desk, std::string reason) {
    for (;;) {
        const UnwrittenAnswer answer =
            desk.ask_unwritten ? desk.ask_unwritten(question_text(reason)) : UnwrittenAnswer();
        try {
            if (!follow_answer(session, desk, answer)) {
                throw abandon_file(session, desk, reason, WorkingCopy::outdated);
            }
            return;
        } catch (const FatalError& error) {
            if (session.datei_geladen != 1) {
                throw;
            }
            reason = error.what();
        }
    }
}

FatalError abandon_file(Session& session, const Desk& desk, const std::string& reason,
                        WorkingCopy copy) {
    if (session.datei_geladen != 1) {
        return FatalError(reason);
    }
    const Rescue rescue = keep_working_copy(session, desk, copy);
    const std::string text = reason + "\n\n" + rescue_text(rescue);
    close_document(session);
    return FatalError(text);
}

void datei_zurueckschreiben(Session& session, const Desk& desk, Attendance attendance) {
    if (session.datei_geladen != 1) {
        return;
    }
    if (desk.watch != nullptr && desk.watch->read_only().is_read_only()) {
        leave_read_only(session, desk, attendance);
        return;
    }
    const bool overwrite = may_overwrite(session, desk, attendance);
    const bool write_it = overwrite && may_become_owner(session, desk, attendance);
    const Hourglass hourglass(session, desk.ui);
    if (write_it) {
        write(session, desk, attendance);
    } else {
        leave_unwritten(session, desk, attendance,
                        overwrite ? keeps_its_owner : rewritten_elsewhere);
    }
}

}  // namespace veldra
