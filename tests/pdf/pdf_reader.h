#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

namespace veldra::pdf_test {

/// What the coordinates of a page are rounded by at most, mm.
inline constexpr double rounding = 0.00051;

/// An operator of a content stream with what stands before it. Strings are without parentheses
/// and escapes; the members of arrays stand one by one.
struct Operation {
    std::string name;
    std::vector<std::string> operands;

    [[nodiscard]] double number(std::size_t i) const { return std::stod(operands.at(i)); }
};

class Tokens {
 public:
    explicit Tokens(const std::string& bytes) : bytes_(bytes) {}

    std::vector<Operation> operations() {
        std::vector<Operation> all;
        Operation next;
        while (true) {
            skip_blanks();
            if (place_ == bytes_.size()) {
                return all;
            }
            const char c = bytes_[place_];
            if (c == '(') {
                next.operands.push_back(string());
            } else if (c == '[' || c == ']') {
                ++place_;
            } else {
                const std::string word = take_word();
                const bool is_operand =
                    word[0] == '/' || word[0] == '-' || word[0] == '.' || std::isdigit(word[0]);
                if (is_operand) {
                    next.operands.push_back(word);
                } else {
                    next.name = word;
                    all.push_back(next);
                    next = {};
                }
            }
        }
    }

 private:
    void skip_blanks() {
        while (place_ < bytes_.size() && (bytes_[place_] == ' ' || bytes_[place_] == '\n')) {
            ++place_;
        }
    }
    std::string take_word() {
        const std::size_t end = bytes_.find_first_of(" \n/([]", place_ + 1);
        std::string word = bytes_.substr(place_, end - place_);
        place_ = std::min(end, bytes_.size());
        return word;
    }
    std::string string() {
        std::string text;
        for (++place_; bytes_.at(place_) != ')'; ++place_) {
            if (bytes_[place_] == '\\') {
                ++place_;
            }
            text += bytes_.at(place_);
        }
        ++place_;
        return text;
    }

    const std::string& bytes_;
    std::size_t place_ = 0;
};

struct Point {
    double x = 0;
    double y = 0;
};

struct Pen {
    double width = 0;  ///< mm
    std::vector<double> dash;
    double phase = 0;
    int cap = 0;
    int join = 0;
    std::string colour = "0 ";
    std::string fill = "0 ";
};

/// A path as it was painted; places are mm from the upper left corner of the paper.
struct Path {
    struct Piece {
        Point from;
        Point to;
        std::optional<std::array<Point, 2>> handles;
    };
    std::vector<Piece> pieces;
    std::string painted;  ///< S, s, f, b
    Pen pen;
    std::string layer;
    std::array<Point, 2> clip;  ///< upper left, lower right of the rectangle that clips it
};

struct Text {
    std::string bytes;
    Point base;
    double cosine = 1;
    double sine = 0;
    std::string font;
    double size = 0;  ///< mm
    std::string fill;
    std::string layer;
};

/// What a page shows, with everything in millimetres from the upper left corner of the paper and y
/// downwards.
class ShownPage {
 public:
    explicit ShownPage(QPDFPageObjectHelper page)
        : resources_(page.getAttribute("/Resources", false)) {
        const auto box = page.getAttribute("/MediaBox", false).getArrayAsRectangle();
        QPDFObjectHandle unit = page.getObjectHandle().getKey("/UserUnit");
        unit_ = (unit.isInteger() ? unit.getNumericValue() : 1.0) * 25.4 / 72;
        width = box.urx * unit_;
        height = box.ury * unit_;
        run(contents(page));
    }

    double width = 0;   ///< mm
    double height = 0;  ///< mm
    std::vector<Path> paths;
    std::vector<Text> texts;
    std::optional<std::array<Point, 2>> clip;  ///< of the page: upper left, lower right
    std::size_t operations = 0;

 private:
    struct Matrix {
        double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
    };
    struct State {
        Matrix matrix;
        Pen pen;
        std::string font;
        double size = 0;
        std::array<Point, 2> clip;
    };

    static std::string contents(QPDFPageObjectHelper& page) {
        std::string all;
        for (const auto& stream : page.getPageContents()) {
            all += bytes_of(stream);
        }
        return all;
    }
    static std::string bytes_of(QPDFObjectHandle stream) {
        const auto buffer = stream.getStreamData(qpdf_dl_all);
        return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
    }

    void concatenate(const Matrix& m) {
        const Matrix n = now_.matrix;
        now_.matrix = {m.a * n.a + m.b * n.c,       m.a * n.b + m.b * n.d,
                       m.c * n.a + m.d * n.c,       m.c * n.b + m.d * n.d,
                       m.e * n.a + m.f * n.c + n.e, m.e * n.b + m.f * n.d + n.f};
    }
    [[nodiscard]] Point place(double x, double y) const {
        const Matrix& m = now_.matrix;
        return {(x * m.a + y * m.c + m.e) * unit_, height - (x * m.b + y * m.d + m.f) * unit_};
    }
    [[nodiscard]] double scale() const { return now_.matrix.a * unit_; }

    void run(const std::string& bytes) {
        for (const Operation& op : Tokens(bytes).operations()) {
            ++operations;
            perform(op);
        }
    }

    void perform(const Operation& op) {
        const std::string& n = op.name;
        if (n == "q") {
            stack_.push_back(now_);
        } else if (n == "Q") {
            now_ = stack_.back();
            stack_.pop_back();
        } else if (n == "cm") {
            concatenate({op.number(0), op.number(1), op.number(2), op.number(3), op.number(4),
                         op.number(5)});
        } else if (n == "Do") {
            show_form(op.operands.at(0));
        } else if (n == "BDC") {
            layer_ = resources_.getKey("/Properties")
                         .getKey(op.operands.at(1))
                         .getKey("/Name")
                         .getUTF8Value();
        } else if (n == "EMC") {
            layer_.clear();
        } else if (!perform_state(op) && !perform_path(op) && !perform_text(op)) {
            throw std::runtime_error("unknown operator " + n);
        }
    }

    bool perform_state(const Operation& op) {
        const std::string& n = op.name;
        if (n == "w") {
            now_.pen.width = op.number(0) * scale();
        } else if (n == "J") {
            now_.pen.cap = std::stoi(op.operands.at(0));
        } else if (n == "j") {
            now_.pen.join = std::stoi(op.operands.at(0));
        } else if (n == "d") {
            now_.pen.dash.clear();
            for (std::size_t i = 0; i + 1 < op.operands.size(); ++i) {
                now_.pen.dash.push_back(op.number(i) * scale());
            }
            now_.pen.phase = op.number(op.operands.size() - 1) * scale();
        } else if (n == "G" || n == "RG") {
            now_.pen.colour = joined(op);
        } else if (n == "g" || n == "rg") {
            now_.pen.fill = joined(op);
        } else {
            return false;
        }
        return true;
    }

    static std::string joined(const Operation& op) {
        std::string text;
        for (const std::string& operand : op.operands) {
            text += operand + " ";
        }
        return text;
    }

    bool perform_path(const Operation& op) {
        const std::string& n = op.name;
        if (n == "m") {
            start_ = at_ = place(op.number(0), op.number(1));
        } else if (n == "l") {
            add({at_, place(op.number(0), op.number(1)), std::nullopt});
        } else if (n == "c") {
            add({at_, place(op.number(4), op.number(5)),
                 std::array{place(op.number(0), op.number(1)), place(op.number(2), op.number(3))}});
        } else if (n == "re") {
            now_.clip = {place(op.number(0), op.number(1) + op.number(3)),
                         place(op.number(0) + op.number(2), op.number(1))};
            clip = clip.value_or(now_.clip);
        } else if (n == "S" || n == "s" || n == "f" || n == "b") {
            if (n != "S" &&
                (std::abs(at_.x - start_.x) > 1e-9 || std::abs(at_.y - start_.y) > 1e-9)) {
                add({at_, start_, std::nullopt});
            }
            path_.painted = n;
            path_.pen = now_.pen;
            path_.layer = layer_;
            path_.clip = now_.clip;
            paths.push_back(path_);
            path_ = {};
        } else {
            return n == "W" || n == "n";
        }
        return true;
    }

    void add(const Path::Piece& piece) {
        path_.pieces.push_back(piece);
        at_ = piece.to;
    }

    bool perform_text(const Operation& op) {
        const std::string& n = op.name;
        if (n == "BT") {
            text_ = {};
        } else if (n == "Tf") {
            now_.font = op.operands.at(0);
            now_.size = op.number(1) * scale();
        } else if (n == "Td") {
            text_.base = place(op.number(0), op.number(1));
        } else if (n == "Tm") {
            text_.cosine = op.number(0);
            text_.sine = op.number(1);
            text_.base = place(op.number(4), op.number(5));
        } else if (n == "Tj") {
            text_.bytes = op.operands.at(0);
            text_.font = now_.font;
            text_.size = now_.size;
            text_.fill = now_.pen.fill;
            text_.layer = layer_;
            texts.push_back(text_);
        } else {
            return n == "ET";
        }
        return true;
    }

    void show_form(const std::string& name) {
        const State before = now_;
        run(bytes_of(resources_.getKey("/XObject").getKey(name)));
        now_ = before;
    }

    QPDFObjectHandle resources_;
    double unit_ = 1;
    State now_;
    std::vector<State> stack_;
    std::string layer_;
    Path path_;
    Point start_;
    Point at_;
    Text text_;
};

/// The pages of a document.
inline std::vector<ShownPage> shown_pages(const std::string& path) {
    QPDF pdf;
    pdf.processFile(path.c_str());
    std::vector<ShownPage> pages;
    for (const QPDFPageObjectHelper& page : QPDFPageDocumentHelper(pdf).getAllPages()) {
        pages.emplace_back(page);
    }
    return pages;
}

/// Centres of the circles on a page, mm from the lower left corner of the paper, y upwards. The
/// ends of their arcs are spread evenly around.
inline std::vector<Point> circle_centres(const ShownPage& page) {
    std::vector<Point> centres;
    for (const Path& path : page.paths) {
        const bool curved =
            std::all_of(path.pieces.begin(), path.pieces.end(),
                        [](const Path::Piece& piece) { return piece.handles.has_value(); });
        if (path.pieces.empty() || !curved) {
            continue;
        }
        Point sum;
        for (const Path::Piece& piece : path.pieces) {
            sum = {sum.x + piece.to.x, sum.y + piece.to.y};
        }
        const auto count = static_cast<double>(path.pieces.size());
        centres.push_back({sum.x / count, page.height - sum.y / count});
    }
    return centres;
}

}  // namespace veldra::pdf_test
