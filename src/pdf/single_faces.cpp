#include "pdf/single_faces.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <fmt/format.h>
#include <fontconfig/fontconfig.h>

namespace veldra {

namespace {

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

/// What the toolkit tells faces apart by: family, weight, slant, width.
using FaceKey = std::tuple<std::string, double, int, double>;

/// A face in a file of the system. The index has named instances in its upper half.
struct FaceFile {
    std::string path;
    int index = 0;

    bool operator==(const FaceFile& other) const {
        return path == other.path && index == other.index;
    }
};

std::string text_of(FcPattern* pattern, const char* key) {
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, key, 0, &value) == FcResultMatch
               ? reinterpret_cast<const char*>(value)
               : std::string();
}

FaceFile file_of(FcPattern* pattern) {
    FaceFile file{text_of(pattern, FC_FILE)};
    FcPatternGetInteger(pattern, FC_INDEX, 0, &file.index);
    return file;
}

/// False for what has no single place among the faces: bitmaps, and the whole of a variable font.
bool read_key(FcPattern* pattern, FaceKey& key) {
    auto& [family, weight, slant, width] = key;
    family = text_of(pattern, FC_FAMILY);
    FcBool scalable = FcFalse;
    return FcPatternGetBool(pattern, FC_SCALABLE, 0, &scalable) == FcResultMatch &&
           scalable == FcTrue &&
           FcPatternGetDouble(pattern, FC_WEIGHT, 0, &weight) == FcResultMatch &&
           FcPatternGetInteger(pattern, FC_SLANT, 0, &slant) == FcResultMatch &&
           FcPatternGetDouble(pattern, FC_WIDTH, 0, &width) == FcResultMatch;
}

using FilesOfFaces = std::map<FaceKey, std::vector<FaceFile>>;

FilesOfFaces files_of_faces(FcConfig* configuration) {
    FilesOfFaces files;
    const FcFontSet* const fonts = FcConfigGetFonts(configuration, FcSetSystem);
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
        FaceKey key;
        if (read_key(fonts->fonts[i], key)) {
            files[key].push_back(file_of(fonts->fonts[i]));
        }
    }
    return files;
}

/// The file that a question for this very face gets.
FaceFile answer_for(FcConfig* configuration, const FaceKey& key) {
    const auto& [family, weight, slant, width] = key;
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddDouble(wanted.get(), FC_WEIGHT, weight);
    FcPatternAddInteger(wanted.get(), FC_SLANT, slant);
    FcPatternAddDouble(wanted.get(), FC_WIDTH, width);
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(configuration, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern best(FcFontMatch(configuration, wanted.get(), &result));
    return best ? file_of(best.get()) : FaceFile{};
}

std::string in_xml(const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
    }
    return result;
}

std::string rejection(const FaceFile& file) {
    return fmt::format(
        "<pattern><patelt name=\"file\"><string>{}</string></patelt>"
        "<patelt name=\"index\"><int>{}</int></patelt></pattern>\n",
        in_xml(file.path), file.index);
}

/// Rules that take away the files of a face but the one that is asked for; if a rule of the
/// system's leads the question elsewhere, the first one stays.
std::string rejections(FcConfig* configuration, const FilesOfFaces& files) {
    std::string rules;
    for (const auto& [key, of_face] : files) {
        if (of_face.size() < 2) {
            continue;
        }
        const FaceFile answer = answer_for(configuration, key);
        const bool known = std::find(of_face.begin(), of_face.end(), answer) != of_face.end();
        for (const FaceFile& file : of_face) {
            if (!(file == (known ? answer : of_face.front()))) {
                rules += rejection(file);
            }
        }
    }
    return rules;
}

}  // namespace

void keep_one_file_of_each_face() {
    FcConfig* const configuration = FcConfigGetCurrent();
    if (configuration == nullptr) {
        return;  // no fonts at all, which is told where one is needed
    }
    const std::string rules = rejections(configuration, files_of_faces(configuration));
    if (rules.empty()) {
        return;
    }
    const std::string document = "<?xml version=\"1.0\"?>\n<fontconfig><selectfont><rejectfont>\n" +
                                 rules + "</rejectfont></selectfont></fontconfig>\n";
    if (FcConfigParseAndLoadFromMemory(
            configuration, reinterpret_cast<const FcChar8*>(document.c_str()), FcTrue) == FcTrue) {
        FcConfigBuildFonts(configuration);
    }
}

}  // namespace veldra
