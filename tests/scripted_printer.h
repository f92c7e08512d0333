#pragma once

#include <cmath>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "fake_measurer.h"
#include "plot/printer_adapters.h"
#include "recorded_page.h"

namespace veldra::test {

/// How a printer and its driver behave.
struct ScriptedDevice {
    enum class Refusal { silent, loud };

    std::string name = "Plotter";
    std::set<std::int16_t> orientations{1, 2};  ///< those that the driver takes
    Refusal refusal = Refusal::silent;          ///< how it refuses orientations and papers
    bool has_colour = true;
    bool forgets_paper = true;  ///< whether the end of a document sets the paper back
    std::int16_t own_paper = 9;
    std::int16_t own_bin = 7;
    /// Upright papers by their code, mm: width and height. 256 is always taken.
    std::map<std::int16_t, std::pair<double, double>> papers{{8, {297, 420}}, {9, {210, 297}}};
    double margin = 5;  ///< mm at the sides of upright paper that cannot be printed on
    std::optional<double> margin_ends;  ///< mm at its top and bottom, if not as much
    double pixel = 25.4 / 300;          ///< mm
    bool cancels_jobs = false;          ///< the user gives no file name
    int unreachable_at_page = 0;        ///< page, counted over all documents, that cannot be opened
    std::set<std::string> failing;      ///< members that throw, named as in the list of calls
};

/// A document, sent off or not.
struct ScriptedDocument {
    enum class State { open, sent, aborted };

    JobTitle title;
    std::deque<RecordedPage> pages;
    State state = State::open;
};

/// Printers that do as they are told and remember it. Text sizes are those of FakeMeasurer: a line
/// is as high as the font's size, a letter half as wide.
class ScriptedPrinter final : public Printer {
 public:
    ScriptedPrinter() : ScriptedPrinter(std::vector<ScriptedDevice>{ScriptedDevice()}) {}
    explicit ScriptedPrinter(std::vector<ScriptedDevice> printers) : devices(std::move(printers)) {
        if (!devices.empty()) {
            take(0);
        }
    }

    [[nodiscard]] std::int32_t Count() override {
        return static_cast<std::int32_t>(devices.size());
    }
    [[nodiscard]] std::string DeviceName(std::int32_t index) override {
        return devices.at(static_cast<std::size_t>(index)).name;
    }
    void assign(std::int32_t index) override {
        note("assign", std::to_string(index));
        tracks_default = false;
        take(static_cast<std::size_t>(index));
    }

    [[nodiscard]] std::string DeviceName() override { return device().name; }
    [[nodiscard]] std::int16_t Orientation() override { return orientation_; }
    void set_Orientation(std::int16_t orientation) override {
        note("Orientation", std::to_string(orientation));
        if (accepted(device().orientations.count(orientation) != 0, "Orientation")) {
            orientation_ = orientation;
        }
    }
    [[nodiscard]] std::int16_t PaperSize() override { return paper_; }
    void set_PaperSize(std::int16_t code) override {
        note("PaperSize", std::to_string(code));
        if (accepted(code == user_defined || device().papers.count(code) != 0, "PaperSize")) {
            set_paper(code);
        }
    }
    [[nodiscard]] std::int16_t PaperBin() override { return bin_; }
    void set_PaperBin(std::int16_t code) override {
        note("PaperBin", std::to_string(code));
        bin_ = code;
    }
    [[nodiscard]] float Width() override { return twips(lying() ? height_ : width_); }
    void set_Width(float value) override { set_side("Width", value, lying() ? height_ : width_); }
    [[nodiscard]] float Height() override { return twips(lying() ? width_ : height_); }
    void set_Height(float value) override { set_side("Height", value, lying() ? width_ : height_); }
    [[nodiscard]] float ScaleWidth(std::int16_t scale_mode) override {
        return lying() ? printable_height(scale_mode) : printable_width(scale_mode);
    }
    [[nodiscard]] float ScaleHeight(std::int16_t scale_mode) override {
        return lying() ? printable_width(scale_mode) : printable_height(scale_mode);
    }
    [[nodiscard]] std::int16_t ColorMode() override { return colour_mode_; }
    void set_ColorMode(std::int16_t mode) override {
        note("ColorMode", std::to_string(mode));
        colour_mode_ = device().has_colour ? mode : std::int16_t{1};
    }
    void set_Copies(std::int16_t copies) override { note("Copies", std::to_string(copies)); }
    void set_TrackDefault(bool track) override {
        note("TrackDefault", track ? "true" : "false");
        tracks_default = track;
        if (track) {
            take(default_printer_);
        }
    }

    [[nodiscard]] double TextWidth(std::string_view text, const FontSpec& font) override {
        return printed_size(measurer_.face_metrics(font), font.points, text).width;
    }
    [[nodiscard]] double TextHeight(std::string_view text, const FontSpec& font) override {
        ++heights_measured;
        return printed_size(measurer_.face_metrics(font), font.points, text).height;
    }
    [[nodiscard]] TextMeasurer& measurer() override { return measurer_; }

    bool begin_job(const JobTitle& title) override {
        note("begin_job", title.titel);
        if (device().cancels_jobs) {
            return false;
        }
        documents.push_back({title, {}, ScriptedDocument::State::open});
        return true;
    }
    void begin_sheet(const SheetTitle& title) override {
        note("begin_sheet", title.netzteil + "|" + title.blatt);
        if (++pages_begun == device().unreachable_at_page) {
            throw PrinterError(device().name + ": nicht erreichbar");
        }
        documents.back().pages.emplace_back(title, device().pixel);
    }
    [[nodiscard]] PageTarget& page() override { return documents.back().pages.back(); }
    void NewPage() override { note("NewPage"); }
    void end_job() override {
        note("end_job");
        if (!documents.empty() && documents.back().state == ScriptedDocument::State::open) {
            documents.back().state = ScriptedDocument::State::sent;
        }
    }
    void abort_job() noexcept override {
        calls.emplace_back("abort_job");
        if (!documents.empty() && documents.back().state == ScriptedDocument::State::open) {
            documents.back().state = ScriptedDocument::State::aborted;
        }
    }
    void EndDoc() override {
        note("EndDoc");
        if (!devices.empty() && device().forgets_paper) {
            forget_paper();
        }
    }

    /// The system gets another default printer; the current one follows while it tracks it.
    void set_default(std::size_t index) {
        default_printer_ = index;
        if (tracks_default) {
            take(index);
        }
    }
    [[nodiscard]] ScriptedDevice& device() {
        if (devices.empty()) {
            throw PrinterError("kein Drucker");
        }
        return devices[current_];
    }
    void clear_calls() { calls.clear(); }

    std::vector<ScriptedDevice> devices;
    /// Calls that change something, as "Name" or "Name value".
    std::vector<std::string> calls;
    std::deque<ScriptedDocument> documents;
    bool tracks_default = false;
    int pages_begun = 0;
    int heights_measured = 0;

 private:
    static constexpr std::int16_t user_defined = 256;
    static constexpr double millimetres_per_inch = 25.4;
    static constexpr double twips_per_inch = 1440;

    void note(const std::string& member, const std::string& value = "") {
        calls.push_back(value.empty() ? member : member + " " + value);
        if (!devices.empty() && device().failing.count(member) != 0) {
            throw PrinterError(device().name + ": " + member);
        }
    }
    bool accepted(bool known, const std::string& member) {
        if (!known && device().refusal == ScriptedDevice::Refusal::loud) {
            throw PrinterError(device().name + ": " + member);
        }
        return known;
    }
    void take(std::size_t index) {
        current_ = index;
        orientation_ = 1;
        colour_mode_ = device().has_colour ? 2 : 1;
        forget_paper();
    }
    void forget_paper() {
        bin_ = device().own_bin;
        set_paper(device().own_paper);
    }
    void set_paper(std::int16_t code) {
        paper_ = code;
        if (const auto found = device().papers.find(code); found != device().papers.end()) {
            std::tie(width_, height_) = found->second;
        }
    }
    [[nodiscard]] bool lying() const { return orientation_ == 2; }
    [[nodiscard]] static float twips(double millimetres) {
        return static_cast<float>(millimetres / millimetres_per_inch * twips_per_inch);
    }
    void set_side(const std::string& member, float value, double& side) {
        note(member, std::to_string(std::lround(value)));
        if (accepted(paper_ == user_defined, member)) {
            side = static_cast<double>(value) / twips_per_inch * millimetres_per_inch;
        }
    }
    /// Of the upright paper.
    [[nodiscard]] float printable_width(std::int16_t scale_mode) {
        return in_unit(width_ - 2 * device().margin, scale_mode);
    }
    [[nodiscard]] float printable_height(std::int16_t scale_mode) {
        return in_unit(height_ - 2 * device().margin_ends.value_or(device().margin), scale_mode);
    }
    [[nodiscard]] static float in_unit(double millimetres, std::int16_t scale_mode) {
        return scale_mode == 1 ? twips(millimetres) : static_cast<float>(millimetres);
    }

    FakeMeasurer measurer_;
    std::size_t current_ = 0;
    std::size_t default_printer_ = 0;
    std::int16_t orientation_ = 1;
    std::int16_t colour_mode_ = 2;
    std::int16_t paper_ = 9;
    std::int16_t bin_ = 7;
    double width_ = 210;
    double height_ = 297;
};

}  // namespace veldra::test
