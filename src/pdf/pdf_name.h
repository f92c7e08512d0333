#pragma once

#include <string>

#include <qpdf/QPDFObjectHandle.hh>

namespace veldra {

/// A name of a document's structure, as "/Type".
inline QPDFObjectHandle name(const std::string& text) {
    return QPDFObjectHandle::newName(text);
}

}  // namespace veldra
