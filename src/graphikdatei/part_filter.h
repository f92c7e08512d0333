#pragma once

#include "graphikdatei/keywords.h"
#include "model/session.h"
#include "text/tokens.h"

namespace veldra {

/// Tells whether the lines read belong to the current network part. A file without parts is one
/// nameless part.
class PartFilter {
 public:
    explicit PartFilter(const Session& session)
        : name_(session.netz[session.netz_aktuell].netz_name), inside_(session.netz_aktuell == 0) {}

    /// To be asked about each line first: true if the line opens a part, and then the line is done.
    bool opens_part(const Record& record) {
        if (record.initial() != 'N' || !record.is(keyword::netzteil)) {
            return false;
        }
        inside_ = record.rest() == name_;
        return true;
    }

    [[nodiscard]] bool inside() const { return inside_; }

 private:
    std::string_view name_;
    bool inside_;
};

}  // namespace veldra
