#include "batch/protocol_json.h"

#include <nlohmann/json.hpp>

namespace veldra::batch {

namespace {

using Json = nlohmann::ordered_json;

Json count_json(const KindCount& count) {
    return {{"gelesen", count.read},        {"gezeichnet", count.drawn},
            {"ausgeblendet", count.hidden}, {"ausserhalb", count.outside},
            {"abgewiesen", count.refused},  {"ersetzt", count.replaced}};
}

Json counts_json(const PartProtocol& protocol) {
    Json kinds = Json::object();
    for (std::size_t i = 0; i < object_kinds; ++i) {
        if (protocol.kinds[i].read > 0) {
            kinds[kind_name(static_cast<ObjectKind>(i))] = count_json(protocol.kinds[i]);
        }
    }
    return kinds;
}

Json refused_json(const PartProtocol& protocol) {
    Json refused = Json::array();
    for (const RefusedRecord& record : protocol.refused) {
        refused.push_back(
            {{"zeile", record.line}, {"art", kind_name(record.kind)}, {"grund", record.reason}});
    }
    return refused;
}

Json replaced_json(const PartProtocol& protocol) {
    Json replaced = Json::array();
    for (const ReplacedRecord& record : protocol.replaced) {
        replaced.push_back({{"zeile", record.line}, {"art", kind_name(record.kind)}});
    }
    return replaced;
}

Json lines_json(const LineLedger& ledger) {
    Json kinds = Json::object();
    for (const auto& [kind, count] : ledger.kinds) {
        kinds[kind] = count;
    }
    return {{"anzahl", ledger.lines}, {"arten", std::move(kinds)}};
}

Json unknown_json(const LineLedger& ledger) {
    Json unknown = Json::array();
    for (const UnknownLine& line : ledger.unknown) {
        unknown.push_back({{"zeile", line.line}, {"wort", line.word}});
    }
    return unknown;
}

Json odd_coordinates_json(const LineLedger& ledger) {
    Json odd = Json::array();
    for (const OddCoordinate& coordinate : ledger.odd_coordinates) {
        odd.push_back({{"zeile", coordinate.line},
                       {"art", coordinate.kind},
                       {"angabe", coordinate.token},
                       {"text", coordinate.text}});
    }
    return odd;
}

Json part_json(const PlottedPart& part) {
    Json json{{"netzteil", part.name}, {"leer", part.empty}};
    if (!part.failure.empty()) {
        json["fehler"] = part.failure;
        return json;
    }
    if (!part.empty) {
        json["massstab"] = part.denominator;
        json["blaetter"] = {{"rechts", part.sheets.columns}, {"hoch", part.sheets.rows}};
        if (part.protocol) {
            json["leere_blaetter"] = part.empty_sheets;
        }
    }
    if (part.protocol) {
        json["arten"] = counts_json(*part.protocol);
        json["abgewiesen"] = refused_json(*part.protocol);
        json["ersetzt"] = replaced_json(*part.protocol);
    }
    return json;
}

Json file_json(const FileResult& result) {
    Json json{{"datei", result.file}};
    json["ausgabe"] = result.output.empty() ? Json() : Json(result.output);
    json["fehler"] = result.failure.empty() ? Json() : Json(result.failure);
    if (result.plotted.ledger) {
        json["zeilen"] = lines_json(*result.plotted.ledger);
        json["unbekannt"] = unknown_json(*result.plotted.ledger);
        json["koordinaten"] = odd_coordinates_json(*result.plotted.ledger);
    }
    json["netzteile"] = Json::array();
    for (const PlottedPart& part : result.plotted.parts) {
        json["netzteile"].push_back(part_json(part));
    }
    return json;
}

}  // namespace

std::string protocol_json(const std::vector<FileResult>& results) {
    Json files = Json::array();
    for (const FileResult& result : results) {
        files.push_back(file_json(result));
    }
    const Json protocol{{"dateien", std::move(files)}};
    return protocol.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace veldra::batch
