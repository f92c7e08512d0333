#pragma once

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/session.h"

namespace veldra::batch {

/// A wrong call that the parser of the arguments could not know; what() is German.
class UsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// What is to be read of a file, and with which settings. Texts are as typed (UTF-8).
struct FileOptions {
    std::string file;                  ///< "-": the standard input
    std::string copy;                  ///< read in its place if it can be read only once, else ""
    std::string name;                  ///< what messages call it then
    std::optional<std::string> part;   ///< --netzteil
    std::vector<std::string> objects;  ///< --obj KEY=VALUE
    std::string profile;               ///< --profil, "" for none
};

/// How a picture is to be made.
struct PictureOptions {
    int width = 1600;        ///< pixels
    int height = 1000;       ///< pixels
    std::string window;      ///< --ausschnitt RW1,HW1,RW2,HW2, "" for the whole part
    bool plotmodus = false;  ///< --plotmodus: the preview of the sheets
};

/// Sets one selection scalar from "obj_beob=2". Throws UsageError for an unknown name or a value
/// out of its range. A boolean takes 0, 1 and -1.
void set_object(ObjectSelection& obj, const std::string& assignment);

/// Four coordinates separated by commas; throws UsageError.
[[nodiscard]] std::array<double, 4> parse_window(const std::string& text);

}  // namespace veldra::batch
