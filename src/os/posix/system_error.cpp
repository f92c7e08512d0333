#include "os/system_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace veldra {

namespace {

constexpr std::array reasons{
    std::pair{ENOENT, "Datei oder Verzeichnis nicht vorhanden"},
    std::pair{EACCES, "keine Berechtigung"},
    std::pair{EPERM, "keine Berechtigung"},
    std::pair{EROFS, "das Dateisystem ist schreibgeschützt"},
    std::pair{ENOSPC, "auf dem Datenträger ist kein Speicherplatz mehr frei"},
    std::pair{EDQUOT, "der zugeteilte Speicherplatz ist erschöpft"},
    std::pair{EISDIR, "ist ein Verzeichnis"},
    std::pair{ENOTDIR, "ein Teil des Pfades ist kein Verzeichnis"},
    std::pair{ENOTEMPTY, "das Verzeichnis ist nicht leer"},
    std::pair{EIO, "Ein-/Ausgabefehler"},
    std::pair{ENAMETOOLONG, "der Dateiname ist zu lang"},
    std::pair{ELOOP, "zu viele symbolische Verknüpfungen"},
    std::pair{EEXIST, "der Name ist schon vergeben"},
    std::pair{EFBIG, "die Datei würde zu groß"},
    std::pair{EINVAL, "unzulässig an dieser Stelle"},
    std::pair{EPIPE, "der Empfänger nimmt nichts mehr an"},
    std::pair{EBADF, "ist nicht geöffnet"},
    std::pair{EAGAIN, "ist vorübergehend nicht verfügbar"},
    std::pair{EBUSY, "ist in Gebrauch"},
    std::pair{ETXTBSY, "ist ein laufendes Programm"},
    std::pair{EMFILE, "zu viele geöffnete Dateien im Programm"},
    std::pair{ENFILE, "zu viele geöffnete Dateien im System"},
    std::pair{ENOMEM, "der Arbeitsspeicher reicht nicht aus"},
    std::pair{EMLINK, "zu viele Verknüpfungen"},
    std::pair{EXDEV, "liegt in einem anderen Dateisystem"},
    std::pair{ENODEV, "das Gerät ist nicht vorhanden"},
    std::pair{ENXIO, "das Gerät ist nicht vorhanden"},
    std::pair{ENOTSUP, "das ist dort nicht möglich"},
    std::pair{ENOSYS, "das System kann das nicht"},
    std::pair{ESPIPE, "ist keine gewöhnliche Datei"},
    std::pair{EOVERFLOW, "die Datei ist zu groß"},
    std::pair{ESTALE, "die Datei ist auf dem Server nicht mehr vorhanden"},
    std::pair{ETIMEDOUT, "keine Antwort innerhalb der Wartezeit"},
    std::pair{ECONNRESET, "die Verbindung wurde abgebrochen"},
    std::pair{ECONNREFUSED, "die Verbindung wurde abgelehnt"},
    std::pair{EHOSTUNREACH, "der Server ist nicht erreichbar"},
    std::pair{EHOSTDOWN, "der Server ist nicht erreichbar"},
    std::pair{ENOTCONN, "es besteht keine Verbindung"},
    std::pair{ENOLCK, "das System hat keine Sperren mehr"},
    std::pair{EDEADLK, "eine Sperre würde nie frei"},
};

}  // namespace

std::string reason_text(int error) {
    const auto* const known = std::find_if(reasons.begin(), reasons.end(),
                                           [error](const auto& r) { return r.first == error; });
    return known != reasons.end() ? known->second : "Systemfehler " + std::to_string(error);
}

FatalError file_error(const char* what, const std::string& path, int error) {
    return FatalError(path + ": " + what + ": " + reason_text(error));
}

}  // namespace veldra
