#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "model/target.h"
#include "model/text_measurer.h"

namespace veldra {

/// A call on the printer failed: the queue is out of reach, the file cannot be written. what() is
/// UTF-8 and names device or file and the reason.
class PrinterError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// Values of `Printer::Orientation` and `Printer::ColorMode`.
constexpr std::int16_t hochformat = 1;
constexpr std::int16_t querformat = 2;
constexpr std::int16_t print_monochrome = 1;
constexpr std::int16_t print_colour = 2;

/// Kinds of objects on a page, in the order in which they are drawn. A document with layers lets
/// its reader switch each on and off.
enum class PageLayer : std::uint8_t {
    frame,         ///< corner marks, foot lines, legend
    boundaries,    ///< administrative boundaries
    districts,     ///< numbering district lines and their numbers
    observations,  ///< observation lines, orientation stubs and names of remote targets
    signatures,    ///< point signatures
    values,        ///< vectors, bars, error ellipses
    labels         ///< point and epoch labels
};

/// A point in the user coordinates of a page.
struct PagePoint {
    double x = 0;
    double y = 0;
};

/// The page that is being drawn. Coordinates are user coordinates: those of `Scale`, or, after
/// `scale_millimetres`, millimetres from the upper left corner of the printable area with y
/// downwards. Pen widths are device pixels of the printer.
class PageTarget : public DrawingTarget {
 public:
    /// User coordinates of the upper left and the lower right corner of the printable area.
    virtual void Scale(double left, double top, double right, double bottom) = 0;
    virtual void scale_millimetres() = 0;
    /// Millimetres of paper a device pixel.
    [[nodiscard]] virtual double pixel_size() const = 0;
    /// A text of one line (Windows-1252) with the upper left corner of its box at (x, y).
    virtual void Print(std::string_view text, double x, double y, const FontSpec& font,
                       std::int32_t colour) = 0;
    /// A polygon filled in `colour`, without an outline.
    virtual void Polygon(std::span<const PagePoint> corners, std::int32_t colour) = 0;
    /// What follows belongs to this kind of object.
    virtual void begin_layer(PageLayer layer) = 0;
};

/// What a document says of itself; Windows-1252.
struct JobTitle {
    std::string titel;
};

/// Where a sheet stands in its document, for bookmarks.
struct SheetTitle {
    std::string netzteil;  ///< name of the network part, Windows-1252
    std::string blatt;     ///< the sheet within the part, Windows-1252
};

/// Units of a printer's measures.
inline constexpr std::int16_t scale_twips = 1;
inline constexpr std::int16_t scale_millimetres = 6;

/// The printers of the system, one of which is the current one: the application printer. Calls
/// throw PrinterError where the device refuses them loudly; a driver may also ignore a value that
/// is written, so whoever depends on it reads it back.
class Printer {
 public:
    virtual ~Printer() = default;

    /// Number of printers installed.
    [[nodiscard]] virtual std::int32_t Count() = 0;
    /// Name of printer `index`, from 0; UTF-8.
    [[nodiscard]] virtual std::string DeviceName(std::int32_t index) = 0;
    /// Makes printer `index` the current one, with its own paper settings.
    virtual void assign(std::int32_t index) = 0;

    // The current printer.
    [[nodiscard]] virtual std::string DeviceName() = 0;
    [[nodiscard]] virtual std::int16_t Orientation() = 0;  ///< 1 Hochformat, 2 Querformat
    virtual void set_Orientation(std::int16_t orientation) = 0;
    [[nodiscard]] virtual std::int16_t PaperSize() = 0;  ///< paper code; 256 is user-defined
    virtual void set_PaperSize(std::int16_t code) = 0;
    [[nodiscard]] virtual std::int16_t PaperBin() = 0;
    virtual void set_PaperBin(std::int16_t code) = 0;
    /// Whole paper in twips, as it lies; writable only while PaperSize is 256.
    [[nodiscard]] virtual float Width() = 0;
    virtual void set_Width(float twips) = 0;
    [[nodiscard]] virtual float Height() = 0;
    virtual void set_Height(float twips) = 0;
    /// Printable area as the paper lies, in the unit of the mode.
    [[nodiscard]] virtual float ScaleWidth(std::int16_t scale_mode) = 0;
    [[nodiscard]] virtual float ScaleHeight(std::int16_t scale_mode) = 0;
    [[nodiscard]] virtual std::int16_t ColorMode() = 0;  ///< 1 monochrome, 2 colour
    virtual void set_ColorMode(std::int16_t mode) = 0;
    virtual void set_Copies(std::int16_t copies) = 0;
    /// True: the current printer is the system's default printer. False: it stays.
    virtual void set_TrackDefault(bool track) = 0;

    /// Size of a text of one line in the font, millimetres of paper.
    [[nodiscard]] virtual double TextWidth(std::string_view text, const FontSpec& font) = 0;
    [[nodiscard]] virtual double TextHeight(std::string_view text, const FontSpec& font) = 0;
    /// The metrics behind these sizes.
    [[nodiscard]] virtual TextMeasurer& measurer() = 0;

    /// Prepares a document; false if the user, asked for a file name, did not give one.
    virtual bool begin_job(const JobTitle& title) = 0;
    /// Opens a new page of the document.
    virtual void begin_sheet(const SheetTitle& title) = 0;
    /// The page that begin_sheet has opened.
    [[nodiscard]] virtual PageTarget& page() = 0;
    /// Ends the page.
    virtual void NewPage() = 0;
    /// Ends the document, as far as there is one, and sends it off; what was prepared without
    /// pages leaves no document. Throws PrinterError when it did not get through.
    virtual void end_job() = 0;
    /// Drops the document.
    virtual void abort_job() noexcept = 0;
    /// Ends a document with pages and lets the driver forget its paper settings. A job that has
    /// been prepared waits on for its first page.
    virtual void EndDoc() = 0;
};

}  // namespace veldra
