#include "drawing/display_samples.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/boundaries.h"
#include "drawing/geometry.h"
#include "drawing/layer_frame.h"
#include "drawing/observation_layers.h"
#include "drawing/point_layers.h"
#include "drawing/value_layers.h"
#include "model/paper_text.h"
#include "text/length_units.h"

namespace veldra {

namespace {

constexpr const char* point_text = "1234567890ABCDEF";
constexpr const char* district_text = "12345678";

/// A session with the settings of the live one and nothing to show. One unit of ground is a twip,
/// and at its plot scale paper has its true size.
Session sample_session(const Session& live, const SampleSize& size) {
    Session sample;
    sample.settings = live.settings;
    sample.vektor_massstab = live.vektor_massstab;
    sample.view = {0, 0, size.width, size.height, 1};
    sample.plot.plot_massstab = 0.0254 / twips_per_inch;
    sample.obj.obj_pube = 1;
    sample.obj.obj_pusi = 1;
    return sample;
}

/// Letters larger than this only show a part of themselves in a sample, points.
constexpr double largest_font = 400;

/// A font whose digits have a height in millimetres of paper.
FontSpec paper_font(FontSpec font, float digit_height, TextMeasurer& measurer) {
    const FaceMetrics& face = measurer.face_metrics(font);
    const double line_height = static_cast<double>(digit_height) * line_height_per_digit *
                               twips_per_millimetre / twips_per_point;
    const double height_of_point = static_cast<double>(face.ascent + face.descent);
    font.points = std::clamp(line_height / height_of_point, 0.0, largest_font);
    return font;
}

LayerFrame sample_frame(const Session& sample, TextMeasurer& measurer, SampleMedium medium) {
    LayerFrame frame = screen_frame(sample, measurer);
    if (medium == SampleMedium::screen) {
        return frame;
    }
    const Settings& settings = sample.settings;
    for (std::size_t i = 0; i < frame.punsig.size(); ++i) {
        frame.punsig[i] =
            static_cast<float>(static_cast<double>(settings.punsigplo[i]) * twips_per_millimetre);
    }
    frame.punkt_klein = static_cast<float>(settings.punkt_klein_plot * twips_per_millimetre);
    frame.stquer = settings.Stquerplo * twips_per_millimetre;
    frame.stkreu = settings.Stkreuplo * twips_per_millimetre;
    frame.lenori = settings.lenoriplo * twips_per_millimetre;
    frame.point_font = paper_font(frame.point_font, settings.pubsizplo, measurer);
    frame.district_font = paper_font(frame.district_font, settings.nubsizplo, measurer);
    frame.remote_font = paper_font(frame.remote_font, settings.pubsizplo, measurer);
    frame.width_factor = settings.faktorStrich;
    return frame;
}

PointRow& add_point(Session& sample, double x, double y) {
    return sample.pu[sample.pu.punkt_neu(x, y)];
}

void set_class(PointRow& point, std::size_t klasse) {
    constexpr std::int16_t other_point = 2;
    switch (klasse) {
        case 0:
            break;
        case 1:
            point.pu_art_lage = 1;
            break;
        case 2:
            point.pu_art_lage = 1;
            point.pu_art_hoehe = 2;
            break;
        default:
            point.pu_art_lage = other_point;
            break;
    }
}

/// A line over the middle of the picture, between two points of class 1 near its sides.
LineRow& add_line_across(Session& sample, const SampleSize& size) {
    const double margin = size.width / 10;
    const double y = std::floor(size.height / 2);
    const LineCoordinates ends{margin, y, size.width - margin, y};
    for (const double x : {ends.x1, ends.x2}) {
        PointRow& point = add_point(sample, x, y);
        set_class(point, 1);
        point.pu_signatur = 1;
    }
    sample.pu.close_signature_rows();
    LineRow& row = sample.lin[sample.lin.lin_suchen(ends).index];
    row.lin_klasse_von = 1;
    row.lin_klasse_nach = 1;
    return row;
}

void set_tests(LineRow& row, const TestValues& values) {
    constexpr std::int16_t direction = 11;
    row.lin_typ_hin = row.lin_typ_rueck = direction;
    row.lin_typ_seite = 1;
    row.lin_ev_hin = row.lin_ev_seite = row.lin_ev_rueck = values.ev;
    row.lin_nv_hin = row.lin_nv_seite = row.lin_nv_rueck = values.nv;
    row.lin_ep_hin = row.lin_ep_seite = row.lin_ep_rueck = values.ep;
}

/// A value in the middle of class `number` of limits that stand at 1, 2, 3.
double value_in_class(std::size_t number) {
    return static_cast<double>(number) - 0.5;
}

Label district_label(const LayerFrame& frame, const PointSample& points, const SampleSize& size) {
    Label label;
    label.caption = district_text;
    const LabelSize box = label_size(frame, frame.measurer->face_metrics(frame.district_font),
                                     frame.district_font, label.caption);
    label.width = box.width;
    label.height = box.height;
    label.left = static_cast<float>(points.class_x[0]);
    // In the lower part, below the labels of the points.
    label.top = static_cast<float>(size.height * 0.25) + box.height / 2;
    label.visible = true;
    return label;
}

}  // namespace

PointSample draw_point_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                              const SampleSize& size, SampleMedium medium, std::size_t chosen) {
    Session sample = sample_session(session, size);
    PointSample result;
    result.signatures_y = size.height * 0.68;
    for (std::size_t i = 0; i < result.class_x.size(); ++i) {
        result.class_x[i] = size.width * (0.06 + 0.22 * static_cast<double>(i));
        PointRow& point = add_point(sample, result.class_x[i], result.signatures_y);
        set_class(point, i);
        point.pu_signatur = i == 3 ? -1 : 1;
        point.pu_bez = i == chosen ? point_text : "";
    }
    sample.pu.close_signature_rows();
    const LayerFrame frame = sample_frame(sample, measurer, medium);
    DrawPointSignatures(sample, frame, target);
    DrawPointLabels(sample, frame, target);
    const std::size_t row = chosen + 1;
    if (row < sample.lbl_pubez.size()) {
        result.pubez = sample.lbl_pubez[row];
    }
    result.pubez_font = frame.point_font;
    result.nubez = district_label(frame, result, size);
    result.nubez_font = frame.district_font;
    return result;
}

void draw_observation_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                             const SampleSize& size, SampleMedium medium, ObservationSample kind) {
    constexpr std::int16_t direction = 11;
    constexpr std::int16_t satellite = 2;
    constexpr std::int16_t orientation = 10;
    Session sample = sample_session(session, size);
    LineRow& row = add_line_across(sample, size);
    row.lin_typ_hin = direction;
    switch (kind) {
        case ObservationSample::terrestrial:
            row.lin_typ_seite = 1;
            break;
        case ObservationSample::satellite:
            row.lin_typ_seite = satellite;
            break;
        case ObservationSample::orientation:
            row.lin_typ_seite = orientation;
            row.lin_fernziel.set("Fernziel");
            sample.pu.clear();
            set_class(add_point(sample, size.width / 10, std::floor(size.height / 2)), 1);
            sample.pu[1].pu_signatur = 1;
            sample.pu.close_signature_rows();
            break;
    }
    const LayerFrame frame = sample_frame(sample, measurer, medium);
    if (kind == ObservationSample::orientation) {
        DrawOrientations(sample, frame, target);
    } else {
        DrawObservations(sample, frame, target,
                         kind == ObservationSample::terrestrial ? ObservationForm::horizontal
                                                                : ObservationForm::height_and_gps);
    }
    DrawPointSignatures(sample, frame, target);
}

void draw_vector_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                        const SampleSize& size, std::size_t slot, bool control_point,
                        double value) {
    constexpr std::size_t ellipses = 3;
    constexpr double twips_per_cm = 10 * twips_per_millimetre;
    const bool position = slot <= ellipses;
    Session sample = sample_session(session, size);
    if (value == 0) {
        const double room = (position && slot != ellipses ? size.width : size.height) / 2;
        value = room / twips_per_cm / sample.vektor_massstab[slot];
    }
    const bool centred = slot == ellipses;
    // A height hangs down if it is negative.
    const double foot = value < 0 ? 0.8 : 0.2;
    PointRow& point = add_point(sample, size.width * (centred ? 0.5 : 0.2),
                                size.height * (position ? 0.5 : foot));
    set_class(point, 1);
    point.pu_signatur = control_point ? 1 : -1;
    const auto kind = static_cast<std::int16_t>(slot);
    const auto state = static_cast<std::int16_t>(control_point ? kind : -kind);
    if (slot == ellipses) {
        point.pu_wert_lage = -3;
        point.pu_wert_rechts = value;
        point.pu_wert_hoch = value / 2;
        point.pu_wert_dh = 100;  // gon: the long axis lies along the picture
    } else if (position) {
        point.pu_wert_lage = state;
        point.pu_wert_rechts = value;
    } else {
        point.pu_wert_hoehe = state;
        point.pu_wert_dh = value;
    }
    sample.pu.close_signature_rows();
    const LayerFrame frame = sample_frame(sample, measurer, SampleMedium::screen);
    DrawPointSignatures(sample, frame, target);
    if (slot == ellipses) {
        DrawEllipses(sample, frame, target);
    } else {
        DrawVectors(sample, frame, target, static_cast<int>(slot));
    }
}

void draw_test_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                      const SampleSize& size, std::int16_t statistic, std::size_t number) {
    Session sample = sample_session(session, size);
    // Limits under which every class has values; those in force may leave a class empty.
    sample.settings.stevwert = {0, 1};
    sample.settings.stnvwert = {0, 1, 2, 3};
    sample.settings.stepwert = {0, 1, 2};
    sample.obj.obj_test_beob = table_true;
    sample.obj.obj_test = statistic == 0 ? std::int16_t{1} : statistic;
    TestValues values;
    if (statistic == 1) {
        values.ev = number == 1 ? 2 : 0;  // the first class of EV is the one above the limit
    } else if (statistic == 2) {
        values.nv = value_in_class(number);
    } else if (statistic == 3) {
        values.ep = value_in_class(number);
    }
    set_tests(add_line_across(sample, size), values);
    const LayerFrame frame = sample_frame(sample, measurer, SampleMedium::screen);
    DrawTestObservations(sample, frame, target, ObservationForm::horizontal);
    DrawPointSignatures(sample, frame, target);
}

void draw_boundary_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                          const SampleSize& size, std::size_t level) {
    constexpr std::array<BoundaryCode, 8> codes{
        BoundaryCode::other, BoundaryCode::lnd, BoundaryCode::rbz, BoundaryCode::krs,
        BoundaryCode::gem,   BoundaryCode::so1, BoundaryCode::so2, BoundaryCode::so3};
    const Session sample = sample_session(session, size);
    BoundaryLines lines;
    BoundaryCollector collector(lines);
    collector.header(codes[level]);
    constexpr std::array<std::pair<double, double>, 5> corners{
        {{0.05, 0.3}, {0.25, 0.7}, {0.5, 0.55}, {0.7, 0.75}, {0.95, 0.3}}};
    for (const auto& [x, y] : corners) {
        const PlanePoint vertex{x * size.width, y * size.height};
        if (lines.vertices.empty()) {
            collector.first_vertex(vertex);
        } else {
            collector.next_vertex(vertex);
        }
    }
    draw_boundary_lines(lines, std::nullopt, sample.settings,
                        sample_frame(sample, measurer, SampleMedium::screen), target);
}

}  // namespace veldra
