#pragma once

#include <functional>
#include <string>

#include "graphikdatei/hand_work_transfer.h"
#include "model/desk.h"
#include "model/session.h"

namespace veldra {

/// Who asks for a file. The recent file menu sets the object selection back, the others keep it
/// until the part is read. A file dropped on the window or named on the command line has not been
/// picked among graphic files.
enum class OpenedBy { open_command, recent_menu, name };

/// Common tail of every open: writes back the file that was open, takes the new path, and reads
/// and shows its first part. What is no regular file is refused with a message. If another copy of
/// the program has the new file open, or if it is none that leaving it may write anew, the user is
/// asked first, and nothing happens unless they want it nevertheless. Throws FatalError when a file
/// cannot be read or written.
void datei_neu_laden(Session& session, const std::string& path, OpenedBy opened_by,
                     const Desk& desk);

/// Takes the path of the graphic file without reading it: title, suffix, caption.
void datei_setzen(Session& session, const std::string& path);

/// Header pass, maxima pass, first part, first view of the file that has been set.
void datei_lesen(Session& session, const Desk& desk);

/// Another program has rewritten the open file: takes the hand's work over into it, in a working
/// copy, and reads that. Throws FatalError when a file cannot be read or written.
TransferReport datei_erneut_lesen(Session& session, const Desk& desk);

/// Reads the open file anew from its latest working copy, which holds all that counts. The part in
/// view stays if there is still one of its name, and so do the marks for plotting. Throws
/// FatalError when it cannot be read. Until it has been read, no file is loaded.
void arbeitskopie_einlesen(Session& session, const Desk& desk);

/// False for a pipe or a device, which gives what it holds only once and cannot be written back;
/// the user is told.
[[nodiscard]] bool can_be_read_again(const std::string& path, UserInterface& ui);

/// True if no other copy of the program has the file open, or the user wants it nevertheless.
[[nodiscard]] bool may_open(const std::string& path, const Desk& desk);

/// Changes the selection that the file states, before anything is read that depends on it.
using SelectionChange = std::function<void(ObjectSelection&)>;

/// Reads the current part's three kinds of records, with its selection at the defaults first.
void netzteil_daten_lesen(Session& session, const SelectionChange& change = {});

/// Reads the current part, divides it into sheets and settles its reference system.
void netzteil_lesen(Session& session, const Desk& desk, const SelectionChange& change = {});

/// Fits the view to the part and draws it; the file counts as loaded from then on.
void erstansicht(Session& session, const Desk& desk);

/// Leaves the current part for another: its state goes to the working copy and the table, then the
/// new part is read and shown as on the screen, also when the plot mode was on. Nothing happens for
/// the current part. When the reading fails (FatalError) or is given up (WorkCancelled), the former
/// part is still the current one, as it was.
void netzteil_anzeigen(Session& session, std::int32_t part, const Desk& desk);

/// Moves the open file to the top of the recent list and brings the menu into line.
void zuletzt_aktualisieren(Session& session);
/// Removes entry `index` (1 to 4); those below it move up.
void zuletzt_entfernen(Session& session, int index);
/// Captions and enabling of the recent file menu from the list.
void zuletzt_menue(Session& session);

/// After the reading of a file has been given up: no file is loaded, and nothing of it is left.
void forget_file(Session& session);

}  // namespace veldra
